#pragma once

#include "gas/gasplan.h"

#include <QDateTime>
#include <QList>

namespace benthor::link {
struct SetupBody;
}

namespace benthor::gas {

// The look before a setup leaves: to the device by an update or by the link screen's sending, or into a file.
// What the screen shows is what goes out, or nothing goes out and the reason is told.

/// A cell that can be written into: of a row of the table, or a box of the settings.
enum class Cell { O2, He, MOD, PPO2, Maximum, SetPoint, ScreenSaver, Home };

struct WrongCell {
    Cell cell = Cell::O2;
    int row = -1; ///< of the table, else -1
    QString name; ///< as the screen calls it: "Gas 3, O2"
    QString why;  ///< what it holds and what it must hold
    bool operator==(const WrongCell&) const = default;
};

/// The cells that are no number of their kind or do not fit their places, the table first. A helium cell with
/// a point that fits is none of them: the guards of the sending refuse it. An empty greatest PPO2 is none
/// either, one that a change of unit waits for is.
QList<WrongCell> wrongcells(const GasPlan& plan);

/// Why the screen's text may not leave; empty: it may.
QString refusalof(const GasPlan& plan, const QString& text, const QDateTime& now);
/// The same for a save, which writes the text of the last tick: the cells and the text's own places.
QString saverefusal(const GasPlan& plan);
/// Why nothing of the screen would go out if it were sent now; empty: what textof() makes does.
QString whynothing(const GasPlan& plan, const QDateTime& now);
/// The same for a text without a screen. Line ends and ESC behind it do not count.
QString textrefusal(const QString& text);
/// The same for a body that the link is about to send: against the screen while that can be seen.
QString bodyrefusal(const GasPlan& plan, const link::SetupBody& body, bool visible, const QDateTime& now);

} // namespace benthor::gas
