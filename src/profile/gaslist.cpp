#include "profile/gaslist.h"

#include "platform/textformat.h"
#include "store/depthunits.h"

#include <algorithm>
#include <limits>

namespace benthor::profile {

namespace {

int16_t toWhole16(double value) {
    constexpr int kLeast = std::numeric_limits<int16_t>::min();
    constexpr int kMost = std::numeric_limits<int16_t>::max();
    return static_cast<int16_t>(std::clamp(platform::toWhole(value), kLeast, kMost));
}

double numberAt(const GasRow& row, size_t position) {
    return position < row.size() ? platform::leadingNumber(gasFieldText(row[position])) : 0.0;
}

QString numberText(double value) {
    return platform::floatText(static_cast<float>(value));
}

} // namespace

QString gasFieldText(const std::optional<QString>& field) {
    const QString text = field.value_or(QString());
    const double value = platform::leadingNumber(text);
    return value > 0.0 && value < 1.0 ? QLatin1Char('0') + text : text;
}

QString readgaslist(const std::vector<GasRow>& rows, bool feet, GasArrays& gases) {
    if (rows.empty()) {
        return QStringLiteral("Bad record. Use Delete to remove");
    }
    const size_t count = std::min(rows.size(), static_cast<size_t>(kMostGases));
    for (size_t k = 0; k < count; ++k) {
        double nitrogen = numberAt(rows[k], 2);
        const double helium = numberAt(rows[k], 3);
        double mod = numberAt(rows[k], 4);
        if (nitrogen > 100.0 || helium > 100.0 || nitrogen < 0.0 || helium < 0.0) {
            nitrogen = 79.0;
            mod = 660.0;
        }
        gases.gasn2[k] = toWhole16(nitrogen);
        gases.gashe[k] = helium;
        gases.gaso2[k] = toWhole16(100.0 - gases.gasn2[k] - helium);
        gases.gasactive[k] = platform::toWhole(numberAt(rows[k], 5));
        gases.gasmod[k] = platform::toWhole(feet ? mod / 10.0 * store::kFeetPerMetre : mod / 10.0);
    }
    return {};
}

QString gasName(const GasArrays& gases, int gas) {
    const auto k = static_cast<size_t>(gas);
    if (gases.gashe[k] >= 1.0) {
        return QStringLiteral("TX%1/%2").arg(gases.gaso2[k]).arg(numberText(gases.gashe[k]));
    }
    if (gases.gasn2[k] == 79) {
        return QStringLiteral("Air");
    }
    return QStringLiteral("NX%1").arg(gases.gaso2[k]);
}

GasNames gasNames(const GasArrays& gases) {
    GasNames names;
    for (int gas = 0; gas < kNamedGases; ++gas) {
        names[static_cast<size_t>(gas)] = gasName(gases, gas);
    }
    return names;
}

QString gasListText(const GasArrays& gases, bool feet) {
    QString text;
    for (int gas = 0; gas < kNamedGases; ++gas) {
        const auto k = static_cast<size_t>(gas);
        text += QStringLiteral("%1: %2  %3%4  %5\r\n")
                    .arg(QString::number(gas), gasName(gases, gas), QString::number(gases.gasmod[k]),
                         feet ? QStringLiteral("ft") : QStringLiteral("m"),
                         gases.gasactive[k] == 1 ? QStringLiteral("On") : QStringLiteral("Off"));
    }
    return text;
}

} // namespace benthor::profile
