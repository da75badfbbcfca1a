// What must stand in a file that dives went out into.

#include "platform/files.h"
#include "tests/walk/model.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace benthor::tests {

namespace {

/// The identifiers of the dives in a file, in its order.
QStringList divesIn(const QString& path, const QByteArray& bytes) {
    QStringList ids;
    const QString text = QString::fromUtf8(bytes);
    if (path.endsWith(QLatin1String(".csv"))) {
        for (const QString& line : text.split(QStringLiteral("\r\n")).mid(1)) {
            if (const QString id = line.section(u',', 0, 0); !id.isEmpty() && !ids.endsWith(id)) {
                ids += id;
            }
        }
        return ids;
    }
    static const QRegularExpression uddf(QStringLiteral("<dive id=\"d-([^\"]*)\""));
    static const QRegularExpression dl7(QStringLiteral("(?<=\n)ZDH\\|\\d+\\|(\\d+)\\|"));
    auto found = (path.endsWith(QLatin1String(".uddf")) ? uddf : dl7).globalMatch(text);
    while (found.hasNext()) {
        ids += found.next().captured(1);
    }
    return ids;
}

/// As DL7 has it: the last four digits.
QString dl7Number(const QString& id) {
    return QString::number(id.right(4).toInt());
}

/// What of a dive in the document differs from what the disk holds of it; empty when nothing does.
QString wrongIn(const QJsonObject& out, const QString& id, const Snapshot& now) {
    const StoredDive& dive = now.dives[id];
    const QJsonObject show = out.value(QStringLiteral("show")).toObject();
    QMap<QString, QString> fields;
    const QJsonObject store = show.value(QStringLiteral("store")).toObject();
    for (auto field = store.begin(); field != store.end(); ++field) {
        fields.insert(field.key().toLower(),
                      field->toString().replace(QLatin1String("\r\n"), QLatin1String("\n")));
    }
    for (auto field = dive.device.begin(); field != dive.device.end(); ++field) {
        if (fields.value(field.key()) != *field) {
            return QStringLiteral("%1 is \"%2\"").arg(field.key(), fields.value(field.key()));
        }
    }
    for (const QString& field : diverFields()) {
        if (fields.value(field.toLower()) != dive.diver.value(field)) {
            return QStringLiteral("%1 is \"%2\"").arg(field, fields.value(field.toLower()));
        }
    }
    QStringList buddies;
    for (const QJsonValue& buddy : show.value(QStringLiteral("buddies")).toArray()) {
        buddies += buddy.toString();
    }
    if (buddies != dive.buddies) {
        return QStringLiteral("the buddies are ") + buddies.join(u'|');
    }
    if (show.value(QStringLiteral("gases")).toArray().size() != dive.gases.size() ||
        show.value(QStringLiteral("tissues")).toArray().size() != dive.tissues.size()) {
        return QStringLiteral("gases or tissues are missing");
    }
    if (now.forviewer.contains(dive.dbtxtname)) {
        const QJsonObject file = out.value(QStringLiteral("file")).toObject();
        const QString base64 = file.value(QStringLiteral("base64")).toString();
        const QByteArray bytes = base64.isEmpty() ? file.value(QStringLiteral("text")).toString().toUtf8()
                                                  : QByteArray::fromBase64(base64.toLatin1());
        if (bytes != now.forviewer.value(dive.dbtxtname)) {
            return QStringLiteral("the profile is of another dive");
        }
    }
    return {};
}

} // namespace

QString Model::checkOpenFile(const Snapshot& now) {
    const QString& path = expected.openFile;
    if (path.isEmpty()) {
        return {};
    }
    const std::optional<QByteArray> bytes = platform::readFile(path);
    if (!bytes) {
        ++met_[QStringLiteral("nothing went out")];
        return expected.exportTold ? QString() : QStringLiteral("nothing went out, and no box says why");
    }
    QStringList wanted;
    for (const QString& id : expected.exported) {
        if (now.dives.contains(id)) {
            wanted += path.endsWith(QLatin1String(".zxu")) ? dl7Number(id) : id;
        }
    }
    ++met_[QStringLiteral("dives went out")];
    if (!path.endsWith(QLatin1String(".json"))) {
        const QStringList found = divesIn(path, *bytes);
        const bool isTable = path.endsWith(QLatin1String(".csv")); // where dives without samples have no row
        const bool isRight = isTable ? std::all_of(found.begin(), found.end(),
                                                   [&](const QString& id) { return wanted.contains(id); })
                                     : found == wanted;
        return isRight ? QString()
                       : QStringLiteral("%1 went out and not %2").arg(found.join(u' '), wanted.join(u' '));
    }
    const QJsonArray dives =
        QJsonDocument::fromJson(*bytes).object().value(QStringLiteral("dives")).toArray();
    if (dives.size() != wanted.size()) {
        return QStringLiteral("%1 dives went out and not %2").arg(dives.size()).arg(wanted.size());
    }
    for (qsizetype i = 0; i < wanted.size(); ++i) {
        if (const QString wrong = wrongIn(dives[i].toObject(), wanted[i], now); !wrong.isEmpty()) {
            return QStringLiteral("%1 went out wrong: %2").arg(wanted[i], wrong);
        }
    }
    return {};
}

} // namespace benthor::tests
