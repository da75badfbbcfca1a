#include "exports/wholedive.h"

#include "divefiles/owedprofiles.h"
#include "divefiles/validators.h"
#include "platform/filename.h"
#include "platform/textformat.h"
#include "profile/decoder.h"

#include <QRegularExpression>
#include <QSet>

#include <cmath>
#include <malloc.h>
#include <mutex>

namespace benthor::exports {

using platform::Recordset;
using platform::sqlWith;

namespace {

constexpr qsizetype kLongestToken = 255;

/// The arrays of a profile take and free one or two megabytes a dive. The heap would hand them back to the
/// system each time, and to get and clear them anew took most of the time in which many dives are read.
void keepFreedMemory() {
    constexpr int kKept = 32 * 1024 * 1024;
    static std::once_flag once;
    std::call_once(once, [] { mallopt(M_TRIM_THRESHOLD, kKept); });
}

StoreFields fieldsOfRow(const Recordset& rows) {
    StoreFields fields;
    fields.reserve(static_cast<size_t>(rows.fieldCount()));
    for (int i = 0; i < rows.fieldCount(); ++i) {
        const platform::Value value = rows.value(i);
        fields.emplace_back(rows.fieldName(i), value.isNull() ? std::nullopt : std::optional(value.text()));
    }
    return fields;
}

QDateTime momentOf(const StoreFields& row, QStringView name) {
    const std::optional<QString> text = fieldOf(row, name);
    return text ? platform::Value(text->trimmed()).dateTime() : QDateTime();
}

std::optional<double> numberOf(const StoreFields& row, QStringView name) {
    const std::optional<QString> text = fieldOf(row, name);
    return text ? plainNumber(*text) : std::nullopt;
}

std::vector<profile::GasRow> gasRowsOf(const std::vector<StoreFields>& gases) {
    std::vector<profile::GasRow> rows;
    for (const StoreFields& gas : gases) {
        profile::GasRow& row = rows.emplace_back();
        for (const auto& [name, value] : gas) {
            row.push_back(value);
        }
    }
    return rows;
}

} // namespace

std::optional<QString> fieldOf(const StoreFields& row, QStringView name) {
    for (const auto& [field, value] : row) {
        if (name.compare(field, Qt::CaseInsensitive) == 0) {
            return value;
        }
    }
    return std::nullopt;
}

std::optional<double> plainNumber(QStringView text) {
    static const QRegularExpression form(QStringLiteral(R"(^[+-]?(\d+\.?\d*|\.\d+)([eE][+-]?\d+)?$)"));
    const QString trimmed = text.trimmed().toString();
    bool ok = false;
    const double number = trimmed.toDouble(&ok);
    return ok && std::isfinite(number) && form.match(trimmed).hasMatch() ? std::optional(number)
                                                                         : std::nullopt;
}

std::optional<double> durationSeconds(QStringView text) {
    static const QRegularExpression form(QStringLiteral(R"(^(\d{0,7}):(\d{1,7})$)"));
    const QRegularExpressionMatch match = form.match(text.trimmed().toString());
    if (!match.hasMatch()) {
        return std::nullopt;
    }
    return match.capturedView(1).toInt() * 60.0 + match.capturedView(2).toInt();
}

DiveFigures figuresOf(const StoreFields& row) {
    DiveFigures figures;
    figures.id = fieldOf(row, u"DiveID").value_or(QString());
    figures.name = fieldOf(row, u"Location");
    figures.site = fieldOf(row, u"site");
    figures.serial = fieldOf(row, u"Suit");
    figures.version = fieldOf(row, u"Version");
    figures.start = momentOf(row, u"startdate");
    figures.end = momentOf(row, u"finisheddate");
    if (const std::optional<QString> duration = fieldOf(row, u"Duration")) {
        figures.duration = durationSeconds(*duration);
    }
    figures.maxdepth = numberOf(row, u"MaxDepth");
    figures.interval = numberOf(row, u"Interval");
    figures.otu = numberOf(row, u"otu");
    return figures;
}

QStringList alarmTokens(const profile::DiveProfile& profile, int sample) {
    return profile.alarms.words(sample, kLongestToken);
}

DiveReader::DiveReader(platform::Database& database, const platform::ProgramFolder& folder)
    : database_(database)
    , folder_(folder) {
    keepFreedMemory();
    Recordset tables = database.openRecordset("SELECT lower(name) FROM sqlite_master WHERE type = 'table'");
    for (; !tables.eof(); tables.moveNext()) {
        tables_ += tables.value(0).text();
    }
}

std::vector<StoreFields> DiveReader::rows(const platform::Query& query) {
    std::vector<StoreFields> all;
    for (Recordset rows = database_.openRecordset(query); !rows.eof(); rows.moveNext()) {
        all.push_back(fieldsOfRow(rows));
    }
    return all;
}

QStringList DiveReader::identifiers() {
    QStringList all;
    QSet<QString> known;
    Recordset rows = database_.openRecordset("SELECT DiveID FROM main ORDER BY startdate, DiveID");
    for (; !rows.eof(); rows.moveNext()) {
        const QString id = rows.value(0).text();
        if (const QString folded = id.toCaseFolded(); !known.contains(folded)) {
            known += folded;
            all += id;
        }
    }
    return all;
}

/// As the list of dives checks them, table by table.
QStringList DiveReader::faultsOf(const QString& id) {
    Recordset main = database_.openRecordset(sqlWith("SELECT * FROM main  where DiveID = '", id, "'"));
    QStringList faults = divefiles::mainfaults(main);
    if (hasTable("gas")) {
        Recordset gas = database_.openRecordset(sqlWith("SELECT * FROM GAS  where DiveID = '", id, "'"));
        faults += divefiles::gasfaults(gas);
    }
    if (hasTable("tissue")) {
        Recordset tissue =
            database_.openRecordset(sqlWith("SELECT * FROM tissue  where DiveID = '", id, "'"));
        faults += divefiles::tissuefaults(tissue);
    }
    return faults;
}

std::optional<DiveFigures> DiveReader::figures(const QString& id) {
    const Recordset row = database_.openRecordset(sqlWith("SELECT * FROM main where DiveID = '", id, "'"));
    if (row.eof()) {
        return std::nullopt;
    }
    DiveFigures figures = figuresOf(fieldsOfRow(row));
    figures.faults = faultsOf(id);
    return figures;
}

std::optional<WholeDive> DiveReader::read(const QString& id) {
    const Recordset row = database_.openRecordset(sqlWith("SELECT * FROM main where DiveID = '", id, "'"));
    if (row.eof()) {
        return std::nullopt;
    }
    WholeDive dive;
    dive.store = fieldsOfRow(row);
    dive.figures = figuresOf(dive.store);
    dive.figures.faults = faultsOf(id);
    if (hasTable("gas")) {
        dive.gases = rows(sqlWith("SELECT * FROM gas where diveid = '", id, "'"));
    }
    if (hasTable("tissue")) {
        dive.tissues = rows(sqlWith("SELECT * FROM tissue where diveid = '", id, "'"));
    }
    if (hasTable("buddylist")) {
        for (const StoreFields& buddy : rows(sqlWith("SELECT * FROM buddylist where diveid = '", id, "'"))) {
            dive.buddies += fieldOf(buddy, u"buddylist").value_or(QString());
        }
    }
    profile::readgaslist(gasRowsOf(dive.gases), false, dive.gasArrays);
    readFile(dive);
    return dive;
}

void DiveReader::readFile(WholeDive& dive) {
    dive.fileName = fieldOf(dive.store, u"dbtxtname").value_or(QString());
    if (dive.fileName.isEmpty()) {
        dive.withoutSamples = QStringLiteral("The store names no file for it.");
        return;
    }
    if (platform::isFileName(dive.fileName)) {
        dive.file = platform::readFile(divefiles::findprofile(folder_, database_, dive.fileName));
    }
    if (!dive.file) {
        dive.withoutSamples = QStringLiteral("Its file %1 is not in the folder dbtxt.").arg(dive.fileName);
        return;
    }
    dive.profile = profile::decodeProfile(*dive.file, false);
    if (dive.samples() < 1) {
        dive.withoutSamples = QStringLiteral("Its file %1 holds no sample.").arg(dive.fileName);
    }
}

} // namespace benthor::exports
