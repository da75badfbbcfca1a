#include "gas/gascalc.h"
#include "platform/textformat.h"

namespace benthor::gas {

namespace {

/// One of the boxes of seconds: up or down by 30, from 0 to 300.
void stepSeconds(QString& text, bool up) {
    constexpr int kStep = 30;
    constexpr int kMost = 300;
    const long long value = cellwhole(text).value_or(0) + (up ? kStep : -kStep);
    text = value > kMost ? QStringLiteral("300") : value < 0 ? QStringLiteral("000") : QString::number(value);
}

void stepSetpoint(QString& text, bool up) {
    constexpr double kStep = 0.05;
    constexpr double kLeast = 0.4;
    constexpr double kMost = 1.6;
    const double value = cellnumber(text).value_or(0) + (up ? kStep : -kStep);
    text = platform::formatNumber(value, u"0.00");
    const double shown = cellnumber(text).value_or(0);
    if (shown > kMost) {
        text = QStringLiteral("1.60");
    } else if (shown < kLeast) {
        text = QStringLiteral("0.40");
    }
}

} // namespace

void stepperclicked(GasPlan& plan, int index, bool up, const Say& say) {
    const int row = plan.currentgasrow;
    const auto stepped = [up](const QString& text) {
        return QString::number(cellwhole(text).value_or(0) + (up ? 1 : -1));
    };
    switch (index) {
    case 0:
        stepSetpoint(plan.settings.sptext, up);
        break;
    case 1:
        stepSeconds(plan.settings.ScreenSaveText, up);
        break;
    case 2:
        stepSeconds(plan.settings.HomeText, up);
        break;
    case 3:
        if (row > 0) {
            setO2(plan, row, stepped(plan.rows[static_cast<size_t>(row)].O2), say);
        }
        break;
    case 4:
        if (row > 0) {
            setHe(plan, row, stepped(plan.rows[static_cast<size_t>(row)].He), say);
        }
        break;
    default:
        break;
    }
}

void sliderscrolled(GasPlan& plan, int index, int value, const Say& say) {
    const int row = plan.currentgasrow;
    if (row > 0) {
        index == 0 ? setO2(plan, row, QString::number(value), say)
                   : setHe(plan, row, QString::number(value), say);
    }
}

} // namespace benthor::gas
