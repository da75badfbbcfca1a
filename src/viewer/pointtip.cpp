#include "viewer/pointtip.h"

#include "platform/textformat.h"
#include "profile/header.h"
#include "store/depthunits.h"

#include <cmath>

namespace benthor::viewer {

using platform::floatText;
using platform::formatNumber;

namespace {

/// Collects the lines and what they add to the box's height.
class TipLines {
public:
    explicit TipLines(PointTip& tip)
        : tip_(tip) {}
    void add(const QString& line, double height = kTipLineHeight) {
        tip_.lines << line;
        tip_.height += static_cast<int>(height);
    }
    void add(const char* label, double value, QStringView pattern, const QString& unit,
             double height = kTipLineHeight) {
        add(QLatin1String(label) + formatNumber(value, pattern) + unit, height);
    }

private:
    PointTip& tip_;
};

double co2Shown(const profile::DiveProfile& profile, int place, bool ambient) {
    const double co2 = profile.co2[place];
    return ambient ? co2 * (static_cast<double>(profile.depthpos[place]) * 0.1 + 1.01) : co2;
}

void addOxygen(TipLines& lines, const profile::DiveProfile& profile, const profile::GasArrays& gases, int row,
               const TipChoice& choice) {
    if (!choice.check3) {
        lines.add("PPO2: ", computedPpo2(profile, gases, row, choice.inFeet()).shown, u"#0.00",
                  QStringLiteral("bar"));
    } else if (choice.boxes.check.test(3)) {
        lines.add("PPO2: ", profile.po2[row - 1], u"#0.00", QStringLiteral("bar"));
    }
}

void addScrubber(TipLines& lines, const profile::DiveProfile& profile, int place, const TipChoice& choice) {
    const auto& checked = choice.boxes.check;
    if (checked.test(12)) {
        lines.add("Filter: ", profile.filterpct[place], u"#0", QStringLiteral("%"));
    }
    const double ceiling = -static_cast<double>(profile.ceilingneg[place]);
    if (checked.test(11) && ceiling > 0) {
        lines.add("Ceiling: ", ceiling, u"#0.0", choice.depthunit);
    }
    if (checked.test(14)) {
        lines.add("CO2: ", co2Shown(profile, place, checked.test(13)), u"#0.00", QStringLiteral("mB"));
    }
}

void addCells(TipLines& lines, const profile::DiveProfile& profile, int place, const TipChoice& choice) {
    const auto& checked = choice.boxes.check;
    if (checked.test(9)) {
        const QString bar = QStringLiteral("bar");
        lines.add("Cella: ", profile.cella[place], u"#0.00", bar);
        lines.add("Cellb: ", profile.cellb[place], u"#0.00", bar);
        lines.add("Cellc: ", profile.cellc[place], u"#0.00", bar);
    }
    if (checked.test(10)) {
        lines.add("Setpoint: ", profile.setpoint[place], u"#0.00", QStringLiteral("bar "));
    }
}

void addSupplies(TipLines& lines, const profile::DiveProfile& profile, int place, const TipChoice& choice) {
    const auto& checked = choice.boxes.check;
    const bool feet = choice.inFeet();
    if (checked.test(5)) {
        lines.add("Water Temp: ", profile.temp[place], u"#0",
                  feet ? QStringLiteral("F") : QStringLiteral("C"));
    }
    if (checked.test(8)) {
        const QString unit = feet ? QStringLiteral("psi") : QStringLiteral("bar");
        lines.add("HP Dil: ", profile.hpdil[place], u"#", unit);
        lines.add("HP o2: ", profile.hpo2[place], u"#", unit, 0);
    }
    if (checked.test(7)) {
        lines.add("Bat1: ", profile.bat1[place], u"#0.00", QStringLiteral("V"));
        lines.add("Bat2: ", profile.bat2[place], u"#0.00", QStringLiteral("V"), 0);
    }
}

} // namespace

bool TipChoice::inFeet() const {
    return feet.value_or(profile::isFeet(depthunit));
}

QString PointTip::text() const {
    const QString lineEnd = QStringLiteral("\r\n");
    return alarms.isEmpty() ? lines.join(lineEnd) : lines.join(lineEnd) + lineEnd + alarms;
}

ComputedPpo2 computedPpo2(const profile::DiveProfile& profile, const profile::GasArrays& gases, int row,
                          bool feet) {
    const double depth = -static_cast<double>(profile.depthneg[row - 1]);
    const int gas = platform::toWhole(profile.gasnum[row - 1]);
    const int oxygen = gas >= 0 && gas < profile::kMostGases ? gases.gaso2[static_cast<std::size_t>(gas)] : 0;
    const double metric = (depth * 0.1 + 1.0) * oxygen * 0.01;
    return {feet ? (depth * 0.1 / store::kSampleFeetPerMetre + 1.0) * oxygen * 0.01 : metric, metric};
}

PointTip pointTip(const profile::DiveProfile& profile, const profile::GasArrays& gases,
                  const profile::GasNames& gasname, int row, const TipChoice& choice) {
    PointTip tip;
    const int place = row - 1;
    tip.lines << floatText(std::abs(profile.depthneg[place])) + choice.depthunit;
    TipLines lines(tip);
    lines.add(QStringLiteral("Gas: ") + profile::gasNameAt(profile, gasname, row));
    if (profile.mark[place] > 0) {
        lines.add(QStringLiteral("! MARK !"));
    }
    addOxygen(lines, profile, gases, row, choice);
    addScrubber(lines, profile, place, choice);
    addCells(lines, profile, place, choice);
    addSupplies(lines, profile, place, choice);
    if (const QString alarms = profile.alarmtext(row); alarms.size() > 1) {
        tip.alarms = alarms;
        tip.height += static_cast<int>(profile.alarmcount[place] * kTipLineHeight);
    }
    return tip;
}

double tipLeft(int row, int lastsample, const ZoomState& zoom, double width, double limit) {
    // The plot area is what a ninth less than the chart's width leaves.
    constexpr double kPlotWidth = 10065;
    constexpr double kFirstLeft = 585;
    const double span = static_cast<double>(lastsample) / std::max(zoom.zoomfactor, 1);
    double left = span > 0 ? kPlotWidth * row / span + kFirstLeft : kFirstLeft;
    if (zoom.zoomed()) {
        left -= kPlotWidth * (zoom.zoompage - 1);
    }
    return left + width > limit ? left - width : left;
}

} // namespace benthor::viewer
