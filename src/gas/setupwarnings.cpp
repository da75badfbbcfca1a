#include "gas/setupwarnings.h"

#include "gas/gascalc.h"
#include "gas/setupchanges.h"
#include "gas/setupfields.h"
#include "platform/textformat.h"
#include "session/process.h"

namespace benthor::gas {

namespace {

constexpr double kHighestMaximum = 2.0;
constexpr double kLeastSetpoint = 0.40;
constexpr double kMostSetpoint = 1.60;

QString unitWord(bool feet) {
    return feet ? QStringLiteral("feet") : QStringLiteral("metres");
}

/// The greatest PPO2 as it stands in its box; nothing where it is none that is taken.
std::optional<double> maximumOf(const GasPlan& plan) {
    const auto maximum = cellnumber(plan.Text5);
    return maximum && *maximum >= 0 && *maximum <= kHighestMaximum ? maximum : std::nullopt;
}

double twoPlaces(double value) {
    return platform::leadingNumber(platform::formatNumber(value, u"0.00"));
}

bool exceeds(const GasPlan& plan, const GasRow& row, double maximum) {
    const auto oxygen = cellnumber(row.O2);
    const auto mod = cellnumber(row.MOD);
    return oxygen && mod && twoPlaces(ppo2atmod(*oxygen, *mod, plan.depthperbar)) > maximum;
}

/// Of the rows that the diver changed, or whose depth a change of unit or of the greatest PPO2 computed or
/// owes.
QStringList pressureWarnings(const GasPlan& plan) {
    const auto maximum = maximumOf(plan);
    QStringList warnings;
    QStringList owed;
    QStringList unjudged;
    for (const GasRow& row : plan.rows) {
        if (row.owed) {
            owed += row.name;
        } else if (row.changed && !maximum) {
            unjudged += row.name;
        } else if (row.changed && exceeds(plan, row, *maximum)) {
            const double ppo2 = ppo2atmod(*cellnumber(row.O2), *cellnumber(row.MOD), plan.depthperbar);
            warnings += QStringLiteral("%1: PPO2 %2 at its MOD %3 exceeds the Max PPO2 %4.")
                            .arg(row.name, platform::formatNumber(ppo2, u"0.00"), row.MOD, plan.Text5);
        }
    }
    const QString comma = QStringLiteral(", ");
    if (!owed.isEmpty()) {
        warnings += QStringLiteral("%1: the MOD was not computed anew for the unit and the Max PPO2 shown.")
                        .arg(owed.join(comma));
    }
    if (!unjudged.isEmpty()) {
        warnings +=
            QStringLiteral("%1: without a Max PPO2 from 0 to 2.0 the PPO2 at the MOD cannot be judged.")
                .arg(unjudged.join(comma));
    }
    return warnings;
}

QString readDepthsWarning(const GasPlan& plan) {
    QStringList rows;
    for (const GasRow& row : plan.rows) {
        if (row.MODread) {
            rows += row.name;
        }
    }
    return !plan.feet() || rows.isEmpty()
               ? QString()
               : QStringLiteral(
                     "MOD of %1: read from a setup and not typed since. In feet each reading and sending "
                     "makes it 3.2 times shallower.")
                     .arg(rows.join(QStringLiteral(", ")));
}

QString deviceWarning(const DeviceSetup& device) {
    if (!isReport(device.reported)) {
        return device.unreadable
                   ? QString()
                   : QStringLiteral("The device's own settings have not been read: these are the "
                                    "program's.");
    }
    const bool devicefeet = settingin(device.reported, u'S') != QLatin1String("1");
    const bool feet = process().depthunit != QLatin1String("metre");
    return devicefeet == feet ? QString()
                              : QStringLiteral("Units: the device works in %1, this setup sets it to %2.")
                                    .arg(unitWord(devicefeet), unitWord(feet));
}

} // namespace

QStringList setupwarnings(const GasPlan& plan, const DeviceSetup& device) {
    QStringList warnings = pressureWarnings(plan);
    for (const GasRow& row : plan.rows) {
        if (row.active && cellnumber(row.O2) == 0.0) {
            warnings += QStringLiteral("%1: it is active and has no oxygen.").arg(row.name);
        }
    }
    const auto setpoint = cellnumber(plan.settings.sptext);
    if (setpoint && (*setpoint < kLeastSetpoint || *setpoint > kMostSetpoint)) {
        warnings += QStringLiteral("PPO2 Set Point: %1 is outside 0.40 to 1.60.").arg(plan.settings.sptext);
    }
    warnings += readDepthsWarning(plan);
    warnings += deviceWarning(device);
    warnings.removeAll(QString());
    return warnings;
}

QString agreementof(const QString& text, const QStringList& warnings, const DeviceSetup& device) {
    constexpr int kStamp = 11;
    return text.first(std::min<qsizetype>(kGasBlock, text.size())) + text.mid(kGasBlock + kStamp) +
           warnings.join(QLatin1Char('\n')) + device.reported;
}

} // namespace benthor::gas
