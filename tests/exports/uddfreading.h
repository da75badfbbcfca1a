#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

#include <vector>

namespace benthor::tests {

/// An element of an XML file with all that is in it.
struct Element {
    QString name;
    QMap<QString, QString> attributes;
    QString text; ///< of the element itself, white space between children left out
    std::vector<Element> children;

    /// The first child of this name; an element without a name where there is none.
    const Element& operator[](const char* child) const;
    std::vector<const Element*> all(const char* child) const;
    /// The texts of the children of this name.
    QStringList texts(const char* child) const;
    bool has(const char* child) const { return !(*this)[child].name.isEmpty(); }
    double number() const; ///< of the text; fails the program when it is none
};

/// The root. `error` tells why the bytes are no well-formed file.
Element readXml(const QByteArray& bytes, QString& error);

/// Every identifier of the file, in its order.
QStringList identifiersOf(const Element& root);
/// Every identifier that something refers to.
QStringList referencesOf(const Element& root);
/// What is wrong with them: one that is not valid, stands twice, or is not there. Empty when all is well.
QString brokenReferences(const Element& root);

/// Every dive of the file, over all groups.
std::vector<const Element*> divesOf(const Element& root);

/// What a file says of one moment, in the units that the program computes with.
struct ReadSample {
    double time = 0, depth = 0, ceiling = 0, po2 = 0, setpoint = 0;
    double cells[3]{};
    double oxygen = 0, diluent = 0; ///< bar
    double celsius = qQNaN();       ///< none told
    QString mix;                    ///< that is breathed, its identifier
    QString mode;
    QStringList alarms;
    QString marker;
};

/// The waypoints of a dive; mix and mode of each as the last change left them.
std::vector<ReadSample> samplesOf(const Element& dive);

/// What xmllint finds against the schema; empty when the file is valid.
QString invalid(const QByteArray& bytes, const QString& schema);

} // namespace benthor::tests
