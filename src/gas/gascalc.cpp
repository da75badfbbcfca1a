#include "gas/gascalc.h"

#include "gas/setupfields.h"
#include "platform/textformat.h"
#include "session/process.h"

#include <cmath>

namespace benthor::gas {

namespace {

constexpr double kRoundGuard = 0.4999;
constexpr double kPpo2Hundred = 100.0000001;
constexpr double kAirNitrogen = 79;
constexpr double kHighestPpo2 = 2.0;
constexpr int kBarPerCent = 24;

GasRow& rowOf(GasPlan& plan, int row) {
    return plan.rows[static_cast<size_t>(row)];
}

QString enterNumbersOnly() {
    return QStringLiteral("Enter numbers only!");
}

void computePpo2(GasPlan& plan, int row) {
    const GasRow& gas = rowOf(plan, row);
    const auto oxygen = cellnumber(gas.O2);
    const auto mod = cellnumber(gas.MOD);
    if (oxygen && mod) {
        setPPO2(plan, row, generaltext(ppo2atmod(*oxygen, *mod, plan.depthperbar)));
    }
}

/// Helium that leaves no room gives way; oxygen is never cut.
bool heliumFits(const GasRow& gas) {
    return cellnumber(gas.O2).value_or(0) + cellnumber(gas.He).value_or(0) <= 100;
}

void O2Changed(GasPlan& plan, int row, const Say& say) {
    GasRow& gas = rowOf(plan, row);
    const auto oxygen = cellnumber(gas.O2);
    if (!oxygen || *oxygen < 0) {
        if (!gas.O2.isEmpty()) {
            say(enterNumbersOnly());
            setO2(plan, row, QStringLiteral("0"), say);
        }
        return;
    }
    computePpo2(plan, row);
    if (heliumFits(gas)) {
        gas.HeColour = kLightYellow;
    } else {
        setHe(plan, row, QStringLiteral("0"), say);
    }
    showgasrow(plan, row);
}

void HeChanged(GasPlan& plan, int row, const Say& say) {
    GasRow& gas = rowOf(plan, row);
    if (gas.He.isEmpty()) {
        return;
    }
    const auto helium = cellnumber(gas.He);
    if (!helium || *helium < 0) {
        say(enterNumbersOnly());
        setHe(plan, row, QStringLiteral("0"), say);
        return;
    }
    computePpo2(plan, row);
    if (gas.He == QLatin1String("0")) {
        gas.HeColour = kLightCyan;
    } else if (heliumFits(gas)) {
        gas.HeColour = kLightYellow;
    } else {
        setHe(plan, row, QStringLiteral("0"), say);
    }
    showgasrow(plan, row);
}

void PPO2Changed(GasPlan& plan, int row) {
    GasRow& gas = rowOf(plan, row);
    const auto ppo2 = cellnumber(gas.PPO2);
    if (!ppo2) {
        return;
    }
    gas.PPO2 = platform::formatNumber(*ppo2, u"#.00");
    // Orange for a PPO2 above the greatest one is overtaken by what follows, and so never seen.
    gas.pressureColour = *ppo2 >= kHighestPpo2 ? platform::kToldRed : kLightCyan;
    showgasrow(plan, row);
}

/// The gases as they went into the text last; empty where none did.
QString lastgases(const GasPlan& plan) {
    return plan.gasblock.size() == kGasBlock              ? plan.gasblock
           : misplaced(plan.Text7, Part::Gases).isEmpty() ? plan.Text7.first(kGasBlock)
                                                          : QString();
}

/// Each depth has to be computed anew; who comes to do it takes the mark away.
void oweDepths(GasPlan& plan) {
    for (GasRow& row : plan.rows) {
        row.owed = true;
    }
}

/// False where the oxygen is 0 or no number.
bool recalcmod(GasPlan& plan, int row) {
    const auto oxygen = cellnumber(rowOf(plan, row).O2);
    if (!oxygen || *oxygen == 0) {
        return false;
    }
    const double mod = modfromppo2(*oxygen, plan.maxppo2, plan.depthperbar);
    setMOD(plan, row, generaltext(mod));
    setPPO2(plan, row, generaltext(plan.maxppo2));
    const double rounded = platform::roundToEven(*oxygen * (mod / plan.depthperbar + kSurfacePressure));
    setPPO2(plan, row, generaltext(rounded / 100));
    GasRow& gas = rowOf(plan, row); // computed, though it may have come out as it was
    gas.changed = true;
    gas.owed = false;
    gas.MODread = false;
    gas.MODtyped = false;
    showgasrow(plan, row);
    return true;
}

} // namespace

std::optional<double> cellnumber(QStringView text) {
    if (!platform::isNumeric(text)) {
        return std::nullopt;
    }
    return platform::leadingNumber(text);
}

std::optional<long long> cellwhole(QStringView text) {
    const auto number = cellnumber(text);
    if (!number || std::abs(*number) > 1e15) {
        return std::nullopt;
    }
    return std::llround(platform::roundToEven(*number));
}

QString generaltext(double value) {
    const QString text = QString::number(value, 'g', 15);
    return text.contains(QLatin1Char('e')) ? platform::formatNumber(value, u"0.####################") : text;
}

double ppo2atmod(double oxygen, double mod, double depthperbar) {
    return oxygen * (mod / depthperbar + kSurfacePressure) / 100;
}

double modfromppo2(double oxygen, double maxppo2, double depthperbar) {
    const double pressure = maxppo2 * kPpo2Hundred / oxygen - kSurfacePressure;
    return platform::roundToEven(pressure * depthperbar - kRoundGuard);
}

long long eand(double oxygen, double helium, double mod, double depthperbar) {
    const double depth = (mod + depthperbar) * (100 - oxygen - helium) / kAirNitrogen - depthperbar;
    return static_cast<long long>(std::trunc(depth));
}

void setO2(GasPlan& plan, int row, const QString& text, const Say& say) {
    if (rowOf(plan, row).O2 != text) {
        rowOf(plan, row).O2 = text;
        rowOf(plan, row).changed = true;
        O2Changed(plan, row, say);
    }
}

void setHe(GasPlan& plan, int row, const QString& text, const Say& say) {
    if (rowOf(plan, row).He != text) {
        rowOf(plan, row).He = text;
        rowOf(plan, row).changed = true;
        HeChanged(plan, row, say);
    }
}

void setMOD(GasPlan& plan, int row, const QString& text) {
    GasRow& gas = rowOf(plan, row);
    if (gas.MOD == text) {
        return;
    }
    gas.MOD = text;
    gas.changed = true;
    gas.owed = false;
    gas.MODread = false;
    gas.MODtyped = false;
    computePpo2(plan, row);
    if (cellwhole(gas.MOD).value_or(0) < 0) {
        gas.pressureColour = platform::kToldRed;
    }
    showgasrow(plan, row);
}

void setPPO2(GasPlan& plan, int row, const QString& text) {
    if (rowOf(plan, row).PPO2 != text) {
        rowOf(plan, row).PPO2 = text;
        PPO2Changed(plan, row);
    }
}

void setmaxppo2(GasPlan& plan, const QString& text, const Say& say) {
    if (plan.Text5 == text) {
        return;
    }
    plan.Text5 = text;
    const auto maximum = cellnumber(text);
    if (!text.isEmpty() && !maximum) {
        return; // letters: nothing is told and nothing changes
    }
    if (maximum && (*maximum > kHighestPpo2 || *maximum < 0)) {
        say(QStringLiteral("enter number less than 2.0"));
        return;
    }
    if (maximum) {
        oweDepths(plan);
    }
    recalcmods(plan, say);
    plan.headfeet = plan.feet(); // rows that it did not reach are owed
}

void showgasrow(GasPlan& plan, int row) {
    GasRow& gas = rowOf(plan, row);
    const auto oxygen = cellnumber(gas.O2);
    const auto helium = cellnumber(gas.He);
    const auto mod = cellnumber(gas.MOD);
    if (oxygen && helium && mod) {
        gas.EAND = QString::number(eand(*oxygen, *helium, *mod, plan.depthperbar));
    }
    plan.bars.oxygen = static_cast<int>(platform::roundToEven(oxygen.value_or(0) * kBarPerCent));
    plan.bars.helium = static_cast<int>(platform::roundToEven(helium.value_or(0) * kBarPerCent));
    plan.bars.label = QStringLiteral("G\nA\nS\n%1").arg(row);
    plan.currentgasrow = row;
}

bool recalcmods(GasPlan& plan, const Say& say) {
    if (!plan.Text5.isEmpty()) {
        const auto maximum = cellnumber(plan.Text5);
        if (!maximum) {
            return false;
        }
        plan.maxppo2 = *maximum;
        for (int i = 0; i < kGases; ++i) {
            if (!recalcmod(plan, i)) {
                return false;
            }
        }
    }
    plan.headfeet = plan.feet();
    if (!plan.Text5.isEmpty()) {
        buildgasblock(plan, say);
    }
    showgasrow(plan, plan.start);
    return true;
}

void activeclicked(GasPlan& plan, int row, const Say& say) {
    GasRow& gas = rowOf(plan, row);
    gas.cellsEnabled = gas.active;
    if (process().producttype == QLatin1String("HALV") && plan.activecount() < 2) {
        say(QStringLiteral("Halverin must have one Dil and one OCB selected"));
        gas.active = true;
        gas.cellsEnabled = true;
    }
    showgasrow(plan, row);
}

void startclicked(GasPlan& plan, int row) {
    plan.start = row;
    showgasrow(plan, row);
}

void chooseunits(GasPlan& plan, bool feet, const Say& say) {
    if (feet != plan.feet()) {
        oweDepths(plan);
    }
    plan.depthperbar = feet ? kFeetPerBar : kMetresPerBar;
    process().depthunit = feet ? QStringLiteral("Feet") : QStringLiteral("metre");
    if (!plan.Text5.isEmpty() && !cellnumber(plan.Text5)) {
        return; // letters end the change here: heads, lists and scales stay
    }
    recalcmods(plan, say);
    plan.headfeet = feet;
}

bool buildgasblock(GasPlan& plan, const Say& say) {
    if (plan.activecount() == 0) {
        say(QStringLiteral("Please check at least one gas to be active"));
        return false;
    }
    const std::optional<QString> block = gasblockof(plan, lastgases(plan));
    if (!block) {
        return false;
    }
    plan.gasblock = *block;
    plan.Text6 = *block + QLatin1String("K\x1b");
    process().uploadtext = *block;
    return true;
}

} // namespace benthor::gas
