#include "exports/wholedive.h"

#include "divefiles/owedprofiles.h"
#include "divefiles/validators.h"
#include "platform/filename.h"
#include "platform/textformat.h"
#include "profile/decoder.h"

#include <QRegularExpression>
#include <QSet>

#include <cmath>

namespace benthor::exports {

using platform::Recordset;
using platform::sqlWith;

namespace {

constexpr qsizetype kLongestToken = 255;

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
    const QStringView trimmed = text.trimmed();
    const auto isOfNumbers = [](QChar letter) { // the library takes words for numbers, too
        return (letter >= u'0' && letter <= u'9') || QStringView(u"+-.eE").contains(letter);
    };
    bool ok = false;
    const double number =
        std::all_of(trimmed.begin(), trimmed.end(), isOfNumbers) ? trimmed.toDouble(&ok) : 0.0;
    return ok && std::isfinite(number) ? std::optional(number) : std::nullopt;
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
    , bound_(database)
    , folder_(folder) {
    Recordset tables = database.openRecordset("SELECT lower(name) FROM sqlite_master WHERE type = 'table'");
    for (; !tables.eof(); tables.moveNext()) {
        tables_ += tables.value(0).text();
    }
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

/// The number of the dive's row in main; a text, as queries take values. Every other row of the dive is found
/// from there: an identifier of a damaged store may be a text that no query takes.
std::optional<QString> DiveReader::rowOf(const QString& id) {
    const auto found =
        bound_.read("SELECT rowid FROM main.main WHERE DiveID = ?1 ORDER BY rowid LIMIT 1", {id});
    return found.empty() ? std::nullopt : std::optional(QString::number(found.front().at(0).integer));
}

Recordset DiveReader::rowsOf(const char* select, const QString& row) {
    return database_.openRecordset(sqlWith(select, " = (SELECT DiveID FROM main WHERE rowid = '", row, "')"));
}

DiveFigures DiveReader::figuresAt(const StoreFields& main, const QString& row) {
    DiveFigures figures = figuresOf(main);
    Recordset all = rowsOf("SELECT * FROM main WHERE DiveID", row);
    figures.faults = divefiles::mainfaults(all);
    return figures;
}

std::vector<StoreFields> DiveReader::checkedRows(const char* table, const QString& row, QStringList& faults) {
    std::vector<StoreFields> all;
    const bool isGas = qstrcmp(table, "gas") == 0;
    if (!hasTable(table)) {
        return all;
    }
    Recordset rows =
        rowsOf(isGas ? "SELECT * FROM gas WHERE diveid" : "SELECT * FROM tissue WHERE diveid", row);
    for (; !rows.eof(); rows.moveNext()) {
        all.push_back(fieldsOfRow(rows));
    }
    if (!all.empty()) {
        rows.moveFirst();
    }
    faults += isGas ? divefiles::gasfaults(rows) : divefiles::tissuefaults(rows);
    return all;
}

std::optional<StoreFields> DiveReader::mainAt(const QString& row) {
    const Recordset main = database_.openRecordset(sqlWith("SELECT * FROM main WHERE rowid = '", row, "'"));
    return main.eof() ? std::nullopt : std::optional(fieldsOfRow(main));
}

std::optional<DiveFigures> DiveReader::figures(const QString& id) {
    const platform::SteadyReading steady(database_);
    const std::optional<QString> row = rowOf(id);
    const std::optional<StoreFields> main = row ? mainAt(*row) : std::nullopt;
    if (!main) {
        return std::nullopt;
    }
    DiveFigures figures = figuresAt(*main, *row);
    for (const char* const table : {"gas", "tissue"}) {
        checkedRows(table, *row, figures.faults);
    }
    return figures;
}

std::optional<WholeDive> DiveReader::read(const QString& id) {
    std::optional<WholeDive> dive = readRows(id);
    if (dive) {
        readProfile(*dive);
    }
    return dive;
}

std::optional<WholeDive> DiveReader::readRows(const QString& id) {
    const platform::SteadyReading steady(database_);
    const std::optional<QString> row = rowOf(id);
    std::optional<StoreFields> main = row ? mainAt(*row) : std::nullopt;
    if (!main) {
        return std::nullopt;
    }
    WholeDive dive;
    dive.store = std::move(*main);
    dive.figures = figuresAt(dive.store, *row);
    dive.gases = checkedRows("gas", *row, dive.figures.faults);
    dive.tissues = checkedRows("tissue", *row, dive.figures.faults);
    if (hasTable("buddylist")) {
        Recordset buddies = rowsOf("SELECT * FROM buddylist WHERE diveid", *row);
        for (; !buddies.eof(); buddies.moveNext()) {
            dive.buddies += buddies.value(u"buddylist").text();
        }
    }
    profile::readgaslist(gasRowsOf(dive.gases), false, dive.gasArrays);
    dive.fileName = fieldOf(dive.store, u"dbtxtname").value_or(QString());
    if (platform::isFileName(dive.fileName)) {
        dive.filePath = divefiles::findprofile(folder_, database_, dive.fileName);
    }
    return dive;
}

void DiveReader::readProfile(WholeDive& dive) {
    if (dive.fileName.isEmpty()) {
        dive.withoutSamples = QStringLiteral("The store names no file for it.");
        return;
    }
    if (!dive.filePath.isEmpty()) {
        dive.file = platform::readFile(dive.filePath);
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
