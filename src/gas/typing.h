#pragma once

#include "gas/setuplook.h"

namespace benthor::gas {

// What the diver does to the plan, control by control. Each marks the plan as typed into, so that what
// replaces it can keep it to be brought back.

/// A number as it was typed: a decimal comma is a point.
QString typednumber(const QString& text);

/// A cell of a row, or a box of the settings, gets a text.
void typecell(GasPlan& plan, Cell cell, int row, const QString& text, const Say& say);
/// The controls of the settings form, their texts included.
void typesettings(GasPlan& plan, const Settings& settings);
void clickactive(GasPlan& plan, int row, bool active, const Say& say);
void clickstart(GasPlan& plan, int row);
/// A stepper (0 to 4) or a slider (0, 1) of the screen.
void clickstepper(GasPlan& plan, int index, bool up, const Say& say);
void moveslider(GasPlan& plan, int index, int value, const Say& say);

/// Holds what was typed while something else takes its place, and keeps it in the plan if it did. `by` says
/// what it is: "the device's setup".
class Replacing {
public:
    Replacing(GasPlan& plan, const QString& by);
    ~Replacing();
    Replacing(const Replacing&) = delete;
    Replacing& operator=(const Replacing&) = delete;

private:
    GasPlan& plan_;
    std::optional<TypedPlan> before_;
};

/// Puts back what was replaced, with the unit that it was typed in; nothing where nothing was. Sets the
/// process's `depthunit`.
void bringback(GasPlan& plan);

} // namespace benthor::gas
