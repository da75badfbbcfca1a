#pragma once

#include "gas/gasplan.h"

#include <QStringView>

#include <optional>

namespace benthor::gas {

// How the cells of a gas follow each other. A routine that changes a cell runs what belongs to the change of
// that cell, as it would for a user's typing; a cell that gets the text it has does nothing.

/// The number of a cell, nothing for a text that is none.
std::optional<double> cellnumber(QStringView text);
/// The same as a whole number, ties to even.
std::optional<long long> cellwhole(QStringView text);
/// A number as plain decimal text, at most 15 significant digits.
QString generaltext(double value);

/// PPO2 in bar at a depth.
double ppo2atmod(double oxygen, double mod, double depthperbar);
/// The depth at which a gas reaches `maxppo2`, cut so that it never comes out deeper than the gas allows.
double modfromppo2(double oxygen, double maxppo2, double depthperbar);
/// Equivalent air narcotic depth, in whole units towards zero.
long long eand(double oxygen, double helium, double mod, double depthperbar);
/// Top of the helium bar, which stands on the foot of the column.
constexpr int heliumtop(int columntop, int columnheight, int helium) {
    return columntop + columnheight - helium;
}

void setO2(GasPlan& plan, int row, const QString& text, const Say& say);
void setHe(GasPlan& plan, int row, const QString& text, const Say& say);
void setMOD(GasPlan& plan, int row, const QString& text);
void setPPO2(GasPlan& plan, int row, const QString& text);
void setmaxppo2(GasPlan& plan, const QString& text, const Say& say);

/// Makes a row the one in hand: narcotic depth, bars.
void showgasrow(GasPlan& plan, int row);
/// MOD and PPO2 of every gas from the greatest PPO2. False where a cell ended it: the rows before are done,
/// those behind are owed it, and the gas block is as it was.
bool recalcmods(GasPlan& plan, const Say& say);

/// A click on a row's active box, which has its new value already.
void activeclicked(GasPlan& plan, int row, const Say& say);
/// A click on a starting gas.
void startclicked(GasPlan& plan, int row);
/// Metres or feet. Sets the process's `depthunit`. Letters in the greatest PPO2 end it behind that: no depth
/// is computed, and the heads, the lists of stops and the scales stay those of the unit before.
void chooseunits(GasPlan& plan, bool feet, const Say& say);

/// The steppers: 0 setpoint, 1 screen saver, 2 home, 3 oxygen, 4 helium of the gas in hand. `up`: plus.
void stepperclicked(GasPlan& plan, int index, bool up, const Say& say);
/// The sliders of the gas in hand: 0 oxygen, 1 helium.
void sliderscrolled(GasPlan& plan, int index, int value, const Say& say);

/// Builds the gas block from the table. A cell that is no number of its kind, or does not fit its place,
/// keeps the characters that stood there last. Without an active gas, which is told, or without any such
/// characters, nothing changes.
bool buildgasblock(GasPlan& plan, const Say& say);

} // namespace benthor::gas
