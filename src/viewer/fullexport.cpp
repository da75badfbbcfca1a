#include "viewer/fullexport.h"

#include "platform/textformat.h"
#include "viewer/elapsed.h"
#include "viewer/gridcells.h"

#include <algorithm>
#include <cmath>

namespace benthor::viewer {

using platform::floatText;
using platform::formatNumber;

namespace {

const QByteArray kLineEnd = QByteArrayLiteral("\r\n");
constexpr double kBarPerAta = 1.01325;
constexpr double kFastAscent = 10; ///< metres a minute
constexpr int kGasColumn = 2;
constexpr int kDepthColumnOfGrid = 1;

/// Heading and unit of a column of the grid that the file gives; nothing for columns without a name.
struct CsvColumn {
    int column;
    const char* heading;
};

constexpr std::array<CsvColumn, 37> kCsvColumns{{
    {1, "Depth (m)"},
    {2, "Gas"},
    {3, "PO2 (bar)"},
    {4, "Ceiling (m)"},
    {5, "Temp (C)"},
    {7, "Filter (%)"},
    {8, "Bat1 (V)"},
    {9, "Bat2 (V)"},
    {10, "HPdil (bar)"},
    {11, "HPo2 (bar)"},
    {12, "Cella (bar)"},
    {13, "Cellb (bar)"},
    {14, "Cellc (bar)"},
    {15, "Setpoint (bar)"},
    {16, "CO2 (mB)"},
    {17, "CO2 adjusted 1"},
    {18, "CO2 adjusted 2"},
    {20, "Mark"},
    {21, "O"},
    {22, "P"},
    {23, "Q"},
    {24, "R"},
    {25, "TPM1"},
    {26, "TPM2"},
    {27, "TPM3"},
    {28, "TPM4"},
    {29, "TPM5"},
    {30, "TPM6"},
    {31, "TPM7"},
    {32, "TPM8"},
    {33, "TPM%a"},
    {34, "TPM%b"},
    {36, "v"},
    {37, "t"},
    {39, "f"},
    {6, "Alarms"},
    {0, "Alarm text"},
}};

bool holdsData(const FullDive& dive, int column) {
    if (column == kDepthColumnOfGrid || column == kGasColumn) {
        return true;
    }
    // The alarm texts go with their count.
    const SampleArray* array = gridArray(dive.profile, column == 0 ? 6 : column);
    for (int sample = kFirstSample; array != nullptr && sample <= dive.lastsample; ++sample) {
        if ((*array)[sample - 1] != 0.0F) {
            return true;
        }
    }
    return false;
}

QString alarmWords(const DiveProfile& profile, int sample) {
    QStringList words = profile.alarmtext(sample).split(QStringLiteral("\r\n"));
    words.removeAll(QString());
    return words.join(QStringLiteral("; "));
}

QString csvCell(const FullDive& dive, const GasNames& names, int sample, int column) {
    return column == 0 ? alarmWords(dive.profile, sample)
                       : cellText(dive.profile, names, dive.interval, sample, column);
}

QByteArray danMoment(const QDateTime& moment) {
    return platform::formatDate(moment, u"yyyymmddhhnnss").toLatin1();
}

/// Two decimals at most.
QString shortNumber(double value) {
    return floatText(static_cast<float>(platform::roundToEven(value * 100) / 100));
}

bool atConstantPo2(const FullDive& dive, int sample) {
    return dive.profile.setpoint[sample - 1] > 0;
}

bool everAtConstantPo2(const FullDive& dive) {
    for (int sample = kFirstSample; sample <= dive.lastsample; ++sample) {
        if (atConstantPo2(dive, sample)) {
            return true;
        }
    }
    return false;
}

int gasOf(const FullDive& dive, int sample) {
    return platform::toWhole(dive.profile.gasnum[sample - 1]);
}

QString flag(bool set) {
    return set ? QStringLiteral("T") : QStringLiteral("F");
}

/// The fields of one sample line, from the third on written only where the device recorded them.
class ZxuLines {
public:
    explicit ZxuLines(const FullDive& dive)
        : dive_(dive) {}

    QByteArray line(int sample) {
        const DiveProfile& profile = dive_.profile;
        const int place = sample - 1;
        const double depth = profile.depthpos[place];
        const double minutes = (sample - kFirstSample) * dive_.interval / 60;
        const double ceiling = -static_cast<double>(profile.ceilingneg[place]);
        const QString gas = danGas(dive_.gases, gasOf(dive_, sample), atConstantPo2(dive_, sample));
        const bool supplies = profile.enabled.test(8);
        const QStringList fields{danMinutes(minutes),
                                 shortNumber(depth),
                                 gas == gas_ ? QString() : gas,
                                 profile.enabled.test(3) ? shortNumber(profile.po2[place] / kBarPerAta)
                                                         : QString(),
                                 flag(isFast(sample, depth)),
                                 flag(ceiling > 0 && depth < ceiling),
                                 ceiling > 0 ? shortNumber(ceiling) : QString(),
                                 profile.enabled.test(5) ? floatText(profile.temp[place]) : QString(),
                                 QString(),
                                 supplies ? floatText(profile.hpo2[place]) : QString(),
                                 supplies ? floatText(profile.hpdil[place]) : QString()};
        gas_ = gas;
        return (u'|' + fields.join(u'|') + u'|').toLatin1() + kLineEnd;
    }

private:
    bool isFast(int sample, double depth) const {
        if (sample == kFirstSample || dive_.interval <= 0) {
            return false;
        }
        const double before = dive_.profile.depthpos[sample - 2];
        return (before - depth) / (dive_.interval / 60) > kFastAscent;
    }

    const FullDive& dive_;
    QString gas_;
};

QByteArray closingSegment(const FullDive& dive) {
    double deepest = 0;
    double coldest = 0;
    for (int sample = kFirstSample; sample <= dive.lastsample; ++sample) {
        const double temperature = dive.profile.temp[sample - 1];
        deepest = std::max<double>(deepest, dive.profile.depthpos[sample - 1]);
        coldest = sample == kFirstSample ? temperature : std::min(coldest, temperature);
    }
    const QByteArray temperature =
        dive.profile.enabled.test(5) ? floatText(static_cast<float>(coldest)).toLatin1() : QByteArray();
    return "ZDT|1|" + danNumber(dive.diveid).toLatin1() + "|" + shortNumber(deepest).toLatin1() + "|" +
           danMoment(dive.finish) + "|" + temperature + "|" + kLineEnd;
}

} // namespace

QByteArray csvQuoted(const QString& field) {
    QByteArray text = field.toUtf8();
    const bool special =
        text.contains(',') || text.contains('"') || text.contains('\r') || text.contains('\n');
    return special ? '"' + text.replace('"', "\"\"") + '"' : text;
}

QByteArray fullCsv(const FullDive& dive) {
    std::vector<CsvColumn> columns;
    std::copy_if(kCsvColumns.begin(), kCsvColumns.end(), std::back_inserter(columns),
                 [&dive](const CsvColumn& column) { return holdsData(dive, column.column); });
    QByteArray text = "Time";
    for (const CsvColumn& column : columns) {
        text += ',' + csvQuoted(QLatin1String(column.heading));
    }
    text += kLineEnd;
    const GasNames names = gasNames(dive.gases);
    for (int sample = kFirstSample; sample <= dive.lastsample; ++sample) {
        text += formatelapsed(sample * dive.interval).toLatin1();
        for (const CsvColumn& column : columns) {
            text += ',' + csvQuoted(csvCell(dive, names, sample, column.column));
        }
        text += kLineEnd;
    }
    return text;
}

QString danMinutes(double minutes) {
    constexpr qsizetype kMostCharacters = 6;
    return formatNumber(minutes, u"0.0###").left(kMostCharacters);
}

QString danGas(const GasArrays& gases, int gas, bool po2mode) {
    if (gas < 0 || gas >= kMostGases) {
        return {};
    }
    const auto at = static_cast<std::size_t>(gas);
    const int nitrogen = gases.gasn2[at];
    const double helium = gases.gashe[at];
    if (po2mode) {
        return helium < 1 ? QStringLiteral("13") : nitrogen > 0 ? QStringLiteral("8") : QStringLiteral("15");
    }
    if (helium < 1) {
        return nitrogen == 79 ? QStringLiteral("1")
                              : QStringLiteral("2.") + formatNumber(gases.gaso2[at], u"00");
    }
    return QStringLiteral("6.") + formatNumber(gases.gaso2[at] * 10, u"000") +
           formatNumber(nitrogen * 10, u"000");
}

QString danNumber(const QString& diveid) {
    constexpr qsizetype kMostDigits = 4;
    QString digits;
    std::copy_if(diveid.begin(), diveid.end(), std::back_inserter(digits),
                 [](QChar character) { return character >= u'0' && character <= u'9'; });
    return QString::number(digits.right(kMostDigits).toInt());
}

QByteArray fullZxu(const FullDive& dive) {
    const QByteArray start = danMoment(dive.start);
    const bool po2mode = everAtConstantPo2(dive);
    const QString diluent =
        dive.lastsample >= kFirstSample ? danGas(dive.gases, gasOf(dive, kFirstSample), false) : QString();
    QByteArray text = "FSH|^~<>{}|KDBN01|ZXU|" + start + "|" + kLineEnd;
    text += "ZRH|^~<>{}|KD32RB|000000000000|MSWG|ThM|C|bar|L|" + kLineEnd;
    text += "ZAR{}" + kLineEnd;
    text += "ZDH|1|" + danNumber(dive.diveid).toLatin1() + "|I|Q" +
            formatNumber(dive.interval, u"0").toLatin1() + "S|" + start + "|||" +
            (po2mode ? "PO2|" + diluent.toLatin1() : QByteArray("|")) + "|" + kLineEnd;
    text += "ZDP{" + kLineEnd;
    ZxuLines lines(dive);
    for (int sample = kFirstSample; sample <= dive.lastsample; ++sample) {
        text += lines.line(sample);
    }
    return text + "ZDP}" + kLineEnd + closingSegment(dive);
}

} // namespace benthor::viewer
