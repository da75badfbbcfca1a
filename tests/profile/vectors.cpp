#include "vectors.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocale>

namespace benthor::profile {

namespace {

std::vector<DiveVector> vectorsOf(const QJsonObject& entry) {
    std::vector<DiveVector> result;
    const QString file = entry["file"].toString();
    for (const bool feet : {false, true}) {
        const QString unit = feet ? QStringLiteral("feet") : QStringLiteral("metric");
        const QJsonObject expected = entry[unit].toObject();
        if (expected.contains("records")) {
            result.push_back({(file + ' ' + unit).toLatin1(), bytesOfTestData("dives/" + file), feet,
                              entry["header"]["dives"][0].toObject(), expected});
        }
    }
    return result;
}

std::optional<QString> fieldOf(const QJsonObject& row, const QString& name) {
    return row.contains(name) && !row[name].isNull() ? std::optional(row[name].toString()) : std::nullopt;
}

QDateTime dateOf(const QJsonObject& row, const QString& name) {
    return QLocale::c().toDateTime(row[name].toString(), QStringLiteral("MMM/dd/yyyy HH:mm:ss"));
}

} // namespace

QByteArray bytesOfTestData(const QString& name) {
    QFile file(QStringLiteral(BENTHOR_TEST_DATA "/") + name);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("%s is missing", qPrintable(file.fileName()));
    }
    return file.readAll();
}

QJsonObject jsonOfTestData(const QString& name) {
    return QJsonDocument::fromJson(bytesOfTestData(name)).object();
}

const std::vector<DiveVector>& diveVectors() {
    static const std::vector<DiveVector> vectors = [] {
        std::vector<DiveVector> result;
        for (const QJsonValueConstRef entry : jsonOfTestData("dives/expected.json")["cases"].toArray()) {
            const std::vector<DiveVector> units = vectorsOf(entry.toObject());
            result.insert(result.end(), units.begin(), units.end());
        }
        return result;
    }();
    return vectors;
}

const std::vector<DiveVector>& largeDiveVectors() {
    static const std::vector<DiveVector> vectors =
        vectorsOf(jsonOfTestData("dives/expected.json")["large"].toObject());
    return vectors;
}

DiveRow diveRow(const QJsonObject& stored) {
    const QJsonObject row = stored["main"].toObject();
    DiveRow result;
    result.duration = fieldOf(row, "Duration");
    result.dbtxtname = fieldOf(row, "dbtxtname");
    result.interval = fieldOf(row, "Interval");
    result.version = fieldOf(row, "Version");
    result.otu = fieldOf(row, "otu");
    result.datmos = fieldOf(row, "datmos");
    result.dusage = fieldOf(row, "dusage");
    result.maxdepth = fieldOf(row, "MaxDepth");
    result.location = fieldOf(row, "Location");
    result.startdate = dateOf(row, "startdate");
    result.finisheddate = dateOf(row, "finisheddate");
    return result;
}

std::vector<GasRow> gasRows(const QJsonObject& stored) {
    std::vector<GasRow> rows;
    for (const QJsonValueConstRef entry : stored["gas"].toArray()) {
        GasRow row{stored["main"]["DiveID"].toString()};
        for (const QJsonValueConstRef field : entry.toArray()) {
            row.push_back(field.isNull() ? std::nullopt : std::optional(field.toString()));
        }
        rows.push_back(row);
    }
    return rows;
}

} // namespace benthor::profile
