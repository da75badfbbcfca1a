#include "exports/uddflosses.h"

#include "exports/samplecolumns.h"

#include <QRegularExpression>

namespace benthor::exports {

namespace {

struct LostColumns {
    const char* names; ///< of columns, each between blanks
    const char* kind;
};

constexpr std::array<LostColumns, 5> kLostColumns{{
    {" filterpct ", "filter"},
    {" bat1 bat2 ", "battery volts"},
    {" co2 co2adjust1 co2adjust2 ", "CO2"},
    {" tpm1 tpm2 tpm3 tpm4 tpm5 tpm6 tpm7 tpm8 tpmpcta tpmpctb ", "thermistors"},
    {" extrao extrap extraq extrar extrav extrat extraf ", "extra columns"},
}};

/// Fields of the table main that the file holds, wholly or as far as they can be read; the file's own name is
/// no fact of a dive.
constexpr QStringView kHeldFields =
    u" diveid site startdate duration maxdepth suit divenote sitenote coments "
    u"version interval systemid datmos dbtxtname ";

bool isAmong(QStringView names, QStringView name) {
    return names.contains(QString(u' ' + name.toString().toLower() + u' '));
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
        if (isTold(value) && !isAmong(kHeldFields, field) && !isRepeated(dive, field, *value)) {
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
        for (const LostColumns& none : kLostColumns) {
            const QString name = QLatin1String(column.name);
            if (isAmong(QString::fromLatin1(none.names), name) && isRecorded(dive, column)) {
                lost.insert(QLatin1String(none.kind));
            }
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
