// What the exports of a whole dive share with the segments of DL7: numbers and gases of a dive.

#include "exports/fullexport.h"
#include "exports/zxusegments.h"
#include "platform/textformat.h"

#include <algorithm>

namespace benthor::exports {

using platform::formatNumber;

namespace {

constexpr double kBarPerAta = 1.01325;

/// `value` as three digits.
QString threeDigits(double value) {
    return formatNumber(std::clamp(platform::roundToEven(value), 0.0, 999.0), u"000");
}

} // namespace

QString danMinutes(double minutes) {
    constexpr qsizetype kMostCharacters = 6;
    return formatNumber(minutes, u"0.0###").left(kMostCharacters);
}

QString danGas(const profile::GasArrays& gases, int gas, double setpoint) {
    constexpr int kMostOxygen = 99; // the table has two digits for it
    if (gas < 0 || gas >= profile::kMostGases) {
        return {};
    }
    const auto at = static_cast<std::size_t>(gas);
    const int nitrogen = gases.gasn2[at];
    const int oxygen = gases.gaso2[at];
    const double helium = gases.gashe[at];
    const double inert = nitrogen + helium;
    if (oxygen < 0 || (oxygen == 0 && inert <= 0)) {
        return {};
    }
    const QString share = threeDigits(inert > 0 && helium >= 1 ? nitrogen / inert * 100 : 100);
    if (setpoint > 0) {
        const QString code = helium < 1     ? QStringLiteral("13.")
                             : nitrogen > 0 ? QStringLiteral("8.")
                                            : QStringLiteral("15.");
        return code + threeDigits(setpoint / kBarPerAta * 100) + share;
    }
    if (helium < 1) {
        return nitrogen == 79 ? QStringLiteral("1")
                              : QStringLiteral("2.") + formatNumber(std::min(oxygen, kMostOxygen), u"00");
    }
    return QStringLiteral("6.") + threeDigits(oxygen * 10) + share;
}

QString danNumber(const QString& diveid) {
    constexpr qsizetype kMostDigits = 4;
    QString digits;
    std::copy_if(diveid.begin(), diveid.end(), std::back_inserter(digits),
                 [](QChar character) { return character >= u'0' && character <= u'9'; });
    return QString::number(digits.right(kMostDigits).toInt());
}

QByteArray fullZxu(const FullDive& dive) {
    ZxuGroups groups;
    QByteArray group;
    groups.next(zxuGroup(dive), [&group](QByteArrayView bytes) { group += bytes; });
    return zxuHead(dive.written) + groups.warnings() + group;
}

} // namespace benthor::exports
