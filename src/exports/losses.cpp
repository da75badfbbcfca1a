#include "exports/losses.h"

#include "exports/samplecolumns.h"

#include <algorithm>
#include <array>

namespace benthor::exports {

namespace {

using P = profile::DiveProfile;

struct KindOfColumns {
    ColumnKind kind;
    const char* name;
    std::array<ColumnArray, 10> columns; ///< behind the last of them null
};
constexpr std::array<KindOfColumns, 7> kKinds{
    {{ColumnKind::Cells, "oxygen cells", {&P::cella, &P::cellb, &P::cellc}},
     {ColumnKind::Marks, "marks", {&P::mark}},
     {ColumnKind::Filter, "filter", {&P::filterpct}},
     {ColumnKind::Batteries, "battery volts", {&P::bat1, &P::bat2}},
     {ColumnKind::Co2, "CO2", {&P::co2, &P::co2adjust1, &P::co2adjust2}},
     {ColumnKind::Thermistors,
      "thermistors",
      {&P::tpm1, &P::tpm2, &P::tpm3, &P::tpm4, &P::tpm5, &P::tpm6, &P::tpm7, &P::tpm8, &P::tpmpcta,
       &P::tpmpctb}},
     {ColumnKind::Extra,
      "extra columns",
      {&P::extrao, &P::extrap, &P::extraq, &P::extrar, &P::extrav, &P::extrat, &P::extraf}}}};

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

} // namespace

void addLostColumns(const WholeDive& dive, std::span<const ColumnKind> kinds, LostKinds& lost) {
    for (const KindOfColumns& kind : kKinds) {
        const bool isAsked = std::find(kinds.begin(), kinds.end(), kind.kind) != kinds.end();
        if (isAsked && std::any_of(kind.columns.begin(), kind.columns.end(), [&dive](ColumnArray column) {
                return column != nullptr && isRecorded(dive, column);
            })) {
            lost.insert(QLatin1String(kind.name));
        }
    }
}

void addLostFields(const WholeDive& dive, std::span<const char* const> held, LostKinds& lost) {
    const auto isHeld = [held](const QString& field) {
        return std::any_of(held.begin(), held.end(), [&field](const char* name) {
            return field.compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
        });
    };
    for (const auto& [field, value] : dive.store) {
        if (isTold(value) && !isHeld(field) && !isRepeated(dive, field, *value)) {
            lost.insert(QStringLiteral("field ") + field);
        }
    }
}

void addLostTissues(const WholeDive& dive, LostKinds& lost) {
    if (!dive.tissues.empty()) {
        lost.insert(QStringLiteral("tissues"));
    }
}

void addLostGasStates(const WholeDive& dive, LostKinds& lost) {
    for (const StoreFields& gas : dive.gases) {
        if (isTold(fieldOf(gas, u"Gasstat"))) {
            lost.insert(QStringLiteral("gases on or off"));
        }
    }
}

LostKinds csvLosses(const WholeDive& dive) {
    static constexpr std::array<const char*, 2> kHeld{"DiveID", "Interval"};
    LostKinds lost;
    addLostFields(dive, kHeld, lost);
    addLostTissues(dive, lost);
    if (!dive.gases.empty()) {
        lost.insert(QStringLiteral("gases")); // the samples tell their numbers alone
    }
    if (!dive.buddies.isEmpty()) {
        lost.insert(QStringLiteral("buddies"));
    }
    return lost;
}

LostKinds zxuLosses(const WholeDive& dive) {
    static constexpr std::array<const char*, 6> kHeld{"DiveID",   "Interval", "startdate", "finisheddate",
                                                      "MaxDepth", "Duration"}; // the last two by the samples
    static constexpr std::array<ColumnKind, 7> kColumns{
        ColumnKind::Cells, ColumnKind::Marks,       ColumnKind::Filter, ColumnKind::Batteries,
        ColumnKind::Co2,   ColumnKind::Thermistors, ColumnKind::Extra};
    LostKinds lost;
    addLostColumns(dive, kColumns, lost);
    addLostFields(dive, kHeld, lost);
    addLostTissues(dive, lost);
    addLostGasStates(dive, lost);
    if (!dive.buddies.isEmpty()) {
        lost.insert(QStringLiteral("buddies"));
    }
    std::array<bool, profile::kMostGases> breathed{};
    for (int sample = profile::kFirstSample; sample <= dive.lastsample(); ++sample) {
        const float gas = dive.profile.gasnum[sample - 1];
        if (gas >= 0 && gas < profile::kMostGases) {
            breathed[static_cast<size_t>(gas)] = true;
        }
    }
    const auto all = static_cast<qsizetype>(dive.gases.size());
    if (std::count(breathed.begin(), breathed.end(), true) < all) {
        lost.insert(QStringLiteral("gases that were not breathed"));
    }
    return lost;
}

} // namespace benthor::exports
