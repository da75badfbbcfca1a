#include "exports/uddflosses.h"

#include "exports/samplecolumns.h"

#include <QRegularExpression>

namespace benthor::exports {

namespace {

/// What a column of the profile is counted as; nothing for one that the file holds.
QString lostKind(QLatin1String column) {
    static const QHash<QString, QString> kinds = [] {
        const std::pair<const char*, const char*> all[]{
            {"filter", "filterpct"},
            {"battery volts", "bat1 bat2"},
            {"CO2", "co2 co2adjust1 co2adjust2"},
            {"thermistors", "tpm1 tpm2 tpm3 tpm4 tpm5 tpm6 tpm7 tpm8 tpmpcta tpmpctb"},
            {"extra columns", "extrao extrap extraq extrar extrav extrat extraf"}};
        QHash<QString, QString> byColumn;
        for (const auto& [kind, columns] : all) {
            for (const QString& name : QString::fromLatin1(columns).split(u' ')) {
                byColumn.insert(name, QLatin1String(kind));
            }
        }
        return byColumn;
    }();
    return kinds.value(column);
}

/// Fields of the table main that the file holds, wholly or as far as they can be read.
bool isHeld(QStringView field) {
    static constexpr std::array<const char*, 13> kHeld{
        "DiveID",   "site",    "startdate", "Duration", "MaxDepth", "Suit",  "divenote",
        "sitenote", "Coments", "Version",   "Interval", "systemid", "datmos"};
    return std::any_of(kHeld.begin(), kHeld.end(), [field](const char* held) {
        return field.compare(QLatin1String(held), Qt::CaseInsensitive) == 0;
    });
}

bool isTold(const std::optional<QString>& value) {
    return value && !value->trimmed().isEmpty();
}

QDateTime endOf(const DiveFigures& figures) {
    return figures.start.addMSecs(static_cast<qint64>(figures.duration.value_or(0) * 1000));
}

/// What another field, or the format, says just as well.
bool isRepeated(const WholeDive& dive, QStringView field, const QString& value) {
    const DiveFigures& figures = dive.figures;
    if (field.compare(u"dbtxtname", Qt::CaseInsensitive) == 0) {
        return true; // the program's own name for the file
    }
    if (field.compare(u"UserName", Qt::CaseInsensitive) == 0) {
        return value == figures.serial;
    }
    if (field.compare(u"finisheddate", Qt::CaseInsensitive) == 0) {
        return figures.start.isValid() && figures.duration && figures.end == endOf(figures);
    }
    if (field.compare(u"Startcode", Qt::CaseInsensitive) == 0) {
        static const QDateTime first({1991, 12, 31}, {0, 0}, Qt::UTC);
        const std::optional<double> code = plainNumber(value);
        return code && figures.start.isValid() &&
               figures.start == first.addSecs(static_cast<qint64>(std::clamp(*code, -1e12, 1e12)));
    }
    return false;
}

void addLostFields(const WholeDive& dive, LostKinds& lost) {
    for (const auto& [field, value] : dive.store) {
        if (isTold(value) && !isHeld(field) && !isRepeated(dive, field, *value)) {
            lost.insert(QStringLiteral("field ") + field);
        }
    }
    const std::optional<QString> pressure = fieldOf(dive.store, u"datmos");
    if (isTold(pressure) && !isUddfPressure(plainNumber(*pressure).value_or(0))) {
        lost.insert(QStringLiteral("field datmos"));
    }
}

} // namespace

bool isUddfPressure(double millibar) {
    constexpr double kLeast = 0.01;
    return millibar >= kLeast && millibar <= kMostOfAll;
}

void addUddfLosses(const WholeDive& dive, LostKinds& lost) {
    for (const SampleColumn& column : sampleColumns()) {
        const QString kind = lostKind(QLatin1String(column.name));
        if (!kind.isEmpty() && isRecorded(dive, column)) {
            lost.insert(kind);
        }
    }
    addLostFields(dive, lost);
    if (!dive.tissues.empty()) {
        lost.insert(QStringLiteral("tissues"));
    }
    if (dive.gases.size() > profile::kMostGases) {
        lost.insert(QStringLiteral("gases beyond number 30"));
    }
    for (const StoreFields& gas : dive.gases) {
        if (isTold(fieldOf(gas, u"Gasstat"))) {
            lost.insert(QStringLiteral("gases on or off"));
        }
    }
}

void forEachNote(const WholeDive& dive, LostKinds& lost, const std::function<void(const QString&)>& line) {
    static const QRegularExpression picture(QStringLiteral("^Imageplz[012]"));
    for (const char16_t* const field : {u"divenote", u"sitenote", u"Coments"}) {
        const QString text = fieldOf(dive.store, field).value_or(QString());
        const auto isEnd = [](QChar letter) { return letter == u'\r' || letter == u'\n'; };
        for (auto from = text.begin(); from != text.end();) {
            const auto to = std::find_if(from, text.end(), isEnd);
            const QString note(from, to - from);
            if (picture.match(note).hasMatch()) {
                lost.insert(QStringLiteral("pictures"));
            } else if (!note.trimmed().isEmpty()) {
                line(note);
            }
            from = to == text.end() ? to : to + 1;
        }
    }
}

} // namespace benthor::exports
