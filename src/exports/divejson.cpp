#include "exports/divejson.h"

#include "exports/numbertext.h"
#include "exports/samplecolumns.h"
#include "exports/samplerows.h"
#include "platform/textformat.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace benthor::exports {

namespace {

QJsonValue valueOf(const std::optional<QString>& text) {
    return text ? QJsonValue(*text) : QJsonValue();
}

QJsonValue valueOf(std::optional<double> number) {
    return number ? QJsonValue(*number) : QJsonValue();
}

QJsonValue valueOf(const QDateTime& moment) {
    return moment.isValid() ? QJsonValue(momentText(moment)) : QJsonValue();
}

QJsonObject rowObject(const StoreFields& row) {
    QJsonObject object;
    for (const auto& [name, value] : row) {
        object.insert(name, valueOf(value));
    }
    return object;
}

QJsonArray rowsArray(const std::vector<StoreFields>& rows) {
    QJsonArray array;
    for (const StoreFields& row : rows) {
        array.append(rowObject(row));
    }
    return array;
}

QByteArray compact(const QJsonArray& array) {
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

QJsonArray columnsArray() {
    QJsonArray columns{QJsonObject{{"name", "time_s"}, {"unit", "s"}}};
    for (const SampleColumn& column : sampleColumns()) {
        columns.append(
            QJsonObject{{"name", QLatin1String(column.name)}, {"unit", QLatin1String(column.unit)}});
    }
    columns.append(QJsonObject{{"name", "alarms"}, {"unit", ""}});
    return columns;
}

} // namespace

QString momentText(const QDateTime& moment) {
    return platform::formatDate(moment, u"yyyy-mm-ddThh:nn:ss");
}

QByteArray jsonText(const QString& text) {
    return compact(QJsonArray{text}).chopped(1).sliced(1);
}

QJsonObject diveObject(const DiveFigures& figures) {
    return {{"id", figures.id},
            {"name", valueOf(figures.name)},
            {"site", valueOf(figures.site)},
            {"start", valueOf(figures.start)},
            {"end", valueOf(figures.end)},
            {"duration_s", valueOf(figures.duration)},
            {"max_depth_m", valueOf(figures.maxdepth)},
            {"interval_s", valueOf(figures.interval)},
            {"otu", valueOf(figures.otu)},
            {"serial", valueOf(figures.serial)},
            {"version", valueOf(figures.version)},
            {"faults", QJsonArray::fromStringList(figures.faults)}};
}

QJsonObject showObject(const WholeDive& dive) {
    return {{"dive", diveObject(dive.figures)},
            {"store", rowObject(dive.store)},
            {"gases", rowsArray(dive.gases)},
            {"tissues", rowsArray(dive.tissues)},
            {"buddies", QJsonArray::fromStringList(dive.buddies)}};
}

QByteArray samplesJson(const WholeDive& dive) {
    QByteArray json;
    appendSamplesJson(json, dive, 0);
    return json;
}

void appendSamplesJson(QByteArray& json, const WholeDive& dive, qsizetype behind) {
    static const QByteArray columns = compact(columnsArray());
    json += "{\"id\":" + jsonText(dive.figures.id) + ",\"interval_s\":" +
            (dive.figures.interval ? numberText(*dive.figures.interval) : QByteArray("null")) +
            ",\"columns\":" + columns + ",\"rows\":[";
    const SampleRows rows(dive, "null");
    rows.reserve(json, 0, behind);
    for (int sample = profile::kFirstSample; sample <= dive.lastsample(); ++sample) {
        if (sample != profile::kFirstSample) {
            json += ',';
        }
        json += '[';
        rows.append(json, sample);
        const QStringList tokens = alarmTokens(dive.profile, sample);
        json += ',';
        if (tokens.isEmpty()) {
            json += "[]]";
        } else {
            json += compact(QJsonArray::fromStringList(tokens)) + ']';
        }
    }
    json += "]}";
}

} // namespace benthor::exports
