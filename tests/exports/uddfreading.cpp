#include "tests/exports/uddfreading.h"

#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <algorithm>

namespace benthor::tests {

namespace {

constexpr double kPascalPerBar = 100000;

Element readElement(QXmlStreamReader& xml) {
    Element element;
    element.name = xml.name().toString();
    for (const QXmlStreamAttribute& attribute : xml.attributes()) {
        element.attributes[attribute.name().toString()] = attribute.value().toString();
    }
    QString text;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            element.children.push_back(readElement(xml));
        } else if (xml.isCharacters()) {
            text += xml.text();
        } else if (xml.isEndElement()) {
            break;
        }
    }
    element.text = element.children.empty() ? text : QString();
    return element;
}

template <typename Visit> void visitAll(const Element& element, const Visit& visit) {
    visit(element);
    for (const Element& child : element.children) {
        visitAll(child, visit);
    }
}

QStringList attributesNamed(const Element& root, const QString& name) {
    QStringList found;
    visitAll(root, [&](const Element& element) {
        if (element.attributes.contains(name)) {
            found += element.attributes[name];
        }
    });
    return found;
}

} // namespace

const Element& Element::operator[](const char* child) const {
    static const Element none;
    const auto found = std::find_if(children.begin(), children.end(), [child](const Element& element) {
        return element.name == QLatin1String(child);
    });
    return found == children.end() ? none : *found;
}

std::vector<const Element*> Element::all(const char* child) const {
    std::vector<const Element*> found;
    for (const Element& element : children) {
        if (element.name == QLatin1String(child)) {
            found.push_back(&element);
        }
    }
    return found;
}

QStringList Element::texts(const char* child) const {
    QStringList found;
    for (const Element* const element : all(child)) {
        found += element->text;
    }
    return found;
}

double Element::number() const {
    bool ok = false;
    const double value = text.toDouble(&ok);
    if (!ok) {
        qFatal("%s is no number: '%s'", qPrintable(name), qPrintable(text));
    }
    return value;
}

Element readXml(const QByteArray& bytes, QString& error) {
    QXmlStreamReader xml(bytes);
    Element root;
    if (xml.readNextStartElement()) {
        root = readElement(xml);
    }
    while (!xml.atEnd()) {
        xml.readNext();
    }
    error = xml.errorString();
    return root;
}

QStringList identifiersOf(const Element& root) {
    return attributesNamed(root, QStringLiteral("id"));
}

QStringList referencesOf(const Element& root) {
    return attributesNamed(root, QStringLiteral("ref"));
}

QString brokenReferences(const Element& root) {
    static const QRegularExpression form(QStringLiteral("^[A-Za-z_][A-Za-z0-9._-]*\\z"));
    QSet<QString> known;
    for (const QString& id : identifiersOf(root)) {
        if (!form.match(id).hasMatch()) {
            return QStringLiteral("'%1' is no identifier").arg(id);
        }
        if (known.contains(id)) {
            return id + QStringLiteral(" stands twice");
        }
        known += id;
    }
    for (const QString& ref : referencesOf(root)) {
        if (!known.contains(ref)) {
            return QStringLiteral("nothing is called ") + ref;
        }
    }
    return {};
}

std::vector<const Element*> divesOf(const Element& root) {
    std::vector<const Element*> dives;
    for (const Element* const group : root["profiledata"].all("repetitiongroup")) {
        const auto ofGroup = group->all("dive");
        dives.insert(dives.end(), ofGroup.begin(), ofGroup.end());
    }
    return dives;
}

std::vector<ReadSample> samplesOf(const Element& dive) {
    std::vector<ReadSample> samples;
    QString mix;
    QString mode;
    for (const Element* const waypoint : dive["samples"].all("waypoint")) {
        ReadSample& sample = samples.emplace_back();
        sample.depth = (*waypoint)["depth"].number();
        sample.time = (*waypoint)["divetime"].number();
        const auto bar = [waypoint](const char* element) {
            return waypoint->has(element) ? (*waypoint)[element].number() / kPascalPerBar : 0;
        };
        sample.po2 = bar("calculatedpo2");
        sample.setpoint = bar("setpo2");
        sample.ceiling = (*waypoint)["decostop"].attributes.value(QStringLiteral("decodepth")).toDouble();
        if (waypoint->has("temperature")) {
            sample.celsius = (*waypoint)["temperature"].number() - 273.15;
        }
        for (const Element* const cell : waypoint->all("measuredpo2")) {
            const QString ref = cell->attributes[QStringLiteral("ref")];
            sample.cells[ref.back().unicode() - u'a'] = cell->number() / kPascalPerBar;
        }
        for (const Element* const tank : waypoint->all("tankpressure")) {
            const bool isOxygen = tank->attributes[QStringLiteral("ref")] == QLatin1String("tank-o2");
            (isOxygen ? sample.oxygen : sample.diluent) = tank->number() / kPascalPerBar;
        }
        mix = (*waypoint)["switchmix"].attributes.value(QStringLiteral("ref"), mix);
        mode = (*waypoint)["divemode"].attributes.value(QStringLiteral("type"), mode);
        sample.mix = mix;
        sample.mode = mode;
        sample.alarms = waypoint->texts("alarm");
        sample.marker = (*waypoint)["setmarker"].text;
    }
    return samples;
}

QString invalid(const QByteArray& bytes, const QString& schema) {
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("dives.uddf")));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        return QStringLiteral("the file for xmllint cannot be written");
    }
    file.close();
    QProcess xmllint;
    xmllint.setProcessChannelMode(QProcess::MergedChannels);
    xmllint.start(QStringLiteral("xmllint"), {QStringLiteral("--noout"), QStringLiteral("--nonet"),
                                              QStringLiteral("--schema"), schema, file.fileName()});
    if (!xmllint.waitForStarted() || !xmllint.waitForFinished(60000)) {
        return QStringLiteral("xmllint does not run (package libxml2-utils): ") + xmllint.errorString();
    }
    const QString output = QString::fromUtf8(xmllint.readAll());
    return xmllint.exitStatus() == QProcess::NormalExit && xmllint.exitCode() == 0 ? QString()
                                                                                   : output.left(3000);
}

} // namespace benthor::tests
