#include "viewer/pointpanel.h"

#include "platform/textformat.h"
#include "profile/diveprofile.h"

#include <algorithm>

namespace benthor::viewer {

using platform::formatNumber;
using platform::isNumeric;
using platform::leadingNumber;

namespace {

constexpr double kFullCell = 1.4;     ///< bar
constexpr double kFullCylinder = 210; ///< bar
constexpr double kPsiPerBar = 14.7;
constexpr int kShortestCaption = 3;

double numberOf(const QString& text) {
    return leadingNumber(QStringView(text));
}

QString wholeText(const QString& text) {
    return platform::floatText(static_cast<float>(platform::wholePart(numberOf(text))));
}

/// "HH:MM:SS" in minutes.
QString minutesOf(const QString& time) {
    const QStringList parts = time.split(u':');
    const double hours = numberOf(parts.value(0));
    const double minutes = numberOf(parts.value(1));
    return formatNumber(hours > 0 ? hours * 60 + minutes : minutes, u"#0");
}

/// A bare mixture is told what it is.
QString gasCaption(const QString& name) {
    if (name.contains(u'N')) {
        return name;
    }
    if (name.size() == 4 || name.size() == 5) {
        return name + QLatin1String("TX");
    }
    return name.size() == 2 ? name + QLatin1String("NX") : name;
}

void showAverage(PanelState& panel, double bar) {
    panel.Shape8[4] = true;
    panel.Shape12 = kBaseBar | gaugeBars(bar / kFullCell + 0.01);
}

void showPo2(PanelState& panel, const QString& text) {
    panel.Lbldppo2 = text;
    panel.lblppo2avg = text;
    const bool shown = text.size() >= 2;
    panel.Label21[0] = shown;
    panel.lblppo2avgVisible = shown;
    if (!text.isEmpty()) {
        showAverage(panel, numberOf(text));
    }
}

void showCeiling(PanelState& panel, const PanelPoint& point) {
    const QString text = point.cell(4);
    panel.Text6Visible = isNumeric(text) && numberOf(text) >= 1;
    if (!text.isEmpty()) {
        panel.Lbldceiling =
            QLatin1String(" ^") +
            platform::floatText(static_cast<float>(platform::wholePart(numberOf(text) * 10) / 10));
    }
    showTissueStress(panel, text, point.cell(1));
}

void showCylinder(QString& caption, GaugeBars& gauge, const QString& text, bool feet) {
    if (text.isEmpty()) {
        return;
    }
    caption = wholeText(text);
    gauge = kBaseBar | gaugeBars(numberOf(text) / (feet ? kPsiPerBar : 1) / kFullCylinder);
}

void showCell(PanelState& panel, std::size_t base, QString& caption, GaugeBars& gauge, const QString& text) {
    if (text.isEmpty()) {
        return;
    }
    caption = formatNumber(numberOf(text), u"#0.00");
    panel.Shape8[base] = true;
    gauge = kBaseBar | gaugeBars(numberOf(text) / kFullCell);
}

void showThermistors(PanelState& panel, const Thermistors& up) {
    Thermistors down = up;
    std::reverse(down.begin(), down.end());
    panel.tpmpercent = tpmestimatea(down);
    panel.tpmspread = tpmspread(down);
    panel.Text9[0] = platform::floatText(static_cast<float>(panel.tpmspread));
    panel.tpmpercent = tpmestimateb(up, panel.tpmpercent);
    panel.Text9[1] = platform::floatText(static_cast<float>(panel.tpmpercent));
}

void showAlarms(PanelState& panel, const PanelPoint& point) {
    panel.alarmback = platform::kToldWhite;
    panel.tipback = platform::kToldWhite;
    panel.Alarm_Text.clear();
    if (point.profile.alarmcount[point.row - 1] > 0) {
        panel.Alarm_Text = QStringLiteral("\r\n") + point.profile.alarmtext(point.row);
        if (point.profile.alarmpoint(point.row)) {
            panel.alarmback = platform::kToldRed;
            panel.tipback = platform::kToldRed;
        }
    }
    if (point.profile.mark[point.row - 1] > 0) {
        panel.alarmback = platform::kToldBlue;
        panel.tipback = platform::kToldWhite;
    }
}

} // namespace

GaugeBars gaugeBars(double value, double factor) {
    const double lit = std::clamp(platform::wholePart(value * factor), 0.0, static_cast<double>(kGaugeBars));
    return ((GaugeBars{1} << (static_cast<int>(lit) + 1)) - 1) & ~kBaseBar;
}

void showTissueStress(PanelState& panel, const QString& ceiling, const QString& depth) {
    if (ceiling.isEmpty()) {
        return;
    }
    if (!isNumeric(ceiling)) {
        if (panel.Lbldceiling.size() < kShortestCaption) {
            panel.Lbldceiling.clear();
            panel.Label21[1] = panel.Text7Visible = panel.Shape8[0] = panel.Shape6Visible = false;
        }
        return;
    }
    panel.Label21[1] = panel.Text7Visible = panel.Shape8[0] = panel.Shape6Visible = true;
    panel.Frame4[1] = false;
    const double metres = numberOf(depth);
    if (metres == 0) {
        return; // no ratio at the surface: gauge and text stay
    }
    const double stress = numberOf(ceiling) / metres;
    panel.Shape6 = kBaseBar;
    if (stress > 0.1) {
        panel.Text7 = formatNumber(stress, u"0%");
        panel.Shape6 |= gaugeBars(stress, 12);
    }
}

void showComputedPpo2(PanelState& panel, double metric) {
    panel.lblppo2avg = formatNumber(metric, u"#0.00");
    showAverage(panel, metric);
}

void showpoint(PanelState& panel, const PanelPoint& point) {
    showThermistors(panel, point.thermistors);
    showAlarms(panel, point);
    const int place = point.row - 1;
    panel.Lbldtime = minutesOf(point.cell(0));
    panel.Lbldepth = formatNumber(numberOf(point.cell(1)), u"#") +
                     (point.feet ? QLatin1String("ft") : QLatin1String("m "));
    panel.lbldgas = gasCaption(point.cell(2));
    showPo2(panel, point.cell(3));
    showCeiling(panel, point);
    panel.Lbldtemp = wholeText(point.cell(5));
    panel.lbltempf = point.feet ? QStringLiteral("F") : QStringLiteral("C");
    panel.Frame4[3] = false;
    if (point.check12) {
        panel.lbldstack = platform::floatText(point.profile.filterpct[place]);
        panel.Frame4[4] = false;
    }
    showCylinder(panel.lblhpddip, panel.Shape7, point.cell(10), point.feet);
    showCylinder(panel.Lbldhpo2, panel.Shape5, point.cell(11), point.feet);
    showCell(panel, 1, panel.Lbldcella, panel.Shape9, point.cell(12));
    showCell(panel, 2, panel.Lbldcellb, panel.Shape10, point.cell(14));
    showCell(panel, 3, panel.Lbldcellc, panel.Shape11, point.cell(15));
    panel.Lbldsetpoint = formatNumber(point.profile.setpoint[place], u"#0.00");
    panel.currentsetpoint = point.profile.setpoint[place];
}

} // namespace benthor::viewer
