#pragma once

#include "platform/look/tokens.h"

#include <QPen>
#include <QVector>

namespace benthor::look {

/// The curves of a chart, by the name under which a screen draws them.
enum class Series {
    Depth,
    Ceiling,
    PO2,
    CellA,
    CellB,
    CellC,
    Setpoint,
    Temperature,
    GasNumber,
    Filter,
    Bat1,
    Bat2,
    HPdil,
    HPo2,
    CO2,
    Tpm1,
    Tpm2,
    Tpm3,
    Tpm4,
    Tpm5,
    Tpm6,
    Tpm7,
    Tpm8,
};

inline constexpr int seriesCount = static_cast<int>(Series::Tpm8) + 1;

struct SeriesStyle {
    QColor colour;
    QColor fill;                       ///< of the area that belongs to the curve; invalid where there is none
    Qt::PenStyle dash = Qt::SolidLine; ///< CustomDashLine where `pattern` holds
    QVector<qreal> pattern; ///< in units of the width, as QPen takes it; empty but for CustomDashLine
    double width = 1.5;
    bool step = false; ///< values hold until the next sample

    QPen pen() const;
};

/// Each series differs from the others by dash as well as by colour, so that nobody has to tell colours
/// apart.
SeriesStyle seriesStyle(Series series, Theme theme);

/// Marks are diamonds of this colour, the same in both themes and edged white.
QColor markcolour();

} // namespace benthor::look
