#pragma once

#include <QIODevice>
#include <QString>
#include <QXmlStreamWriter>

namespace benthor::exports {

/// The elements of a UDDF file as bytes, handed on in pieces of some tens of kilobytes. Every function throws
/// ExportError when the device does not take them.
class UddfXml {
public:
    /// `device` must be open, and outlive it.
    explicit UddfXml(QIODevice& device);

    void begin(); ///< the declaration and the root
    void end();   ///< closes the root; the device has all bytes then

    void open(const QString& name) { writer_.writeStartElement(name); }
    /// Of the element opened last. `value` holds nothing that XML does not.
    void attribute(const QString& name, const QString& value) { writer_.writeAttribute(name, value); }
    void close();

    /// An element of nothing but `value`, which holds nothing that XML does not.
    void leaf(const QString& name, const QString& value) { writer_.writeTextElement(name, value); }
    /// The same with any text whatever: characters that XML cannot hold stand as U+FFFD.
    void text(const QString& name, const QString& value);
    /// The same with an attribute, and an element that has nothing but one.
    void leaf(const QString& name, const QString& attribute, const QString& of, const QString& value);
    void mark(const QString& name, const QString& attribute, const QString& of);
    /// <link ref="...">
    void link(const QString& ref) { mark(QStringLiteral("link"), QStringLiteral("ref"), ref); }

    /// Whether text() replaced characters since the last call.
    bool takeReplaced() { return std::exchange(replaced_, false); }

private:
    void drain();

    QIODevice& device_;
    QString text_; ///< not yet handed on
    QXmlStreamWriter writer_;
    bool replaced_ = false;
};

/// `text` with U+FFFD for what XML 1.0 cannot hold: control characters, halves of surrogate pairs, U+FFFE and
/// U+FFFF; `replaced` is set then. Tabs and line feeds stay, and a carriage return becomes a line feed, as
/// any reader would have it.
QString xmlText(const QString& text, bool& replaced);

/// What is more than this is no measure of anything, and not every reader takes so many digits.
constexpr double kMostOfAll = 1e9;

/// The shortest decimal that reads back as the same number, without an exponent; what is less than a
/// millionth is 0. The value is kMostOfAll at most.
QString decimalText(double value);
QString decimalText(float value);
/// Whole pascals.
QString pascalText(double pascal);
/// Kelvin to a hundredth.
QString kelvinText(double celsius);

} // namespace benthor::exports
