#pragma once

#include "platform/rowrange.h"

#include <QColor>
#include <QList>
#include <QPen>
#include <QString>

namespace benthor::platform {

/// The left axis counts up from 0 at the bottom; the right axis counts down from 0 at the top, its values
/// come negated. The inner one counts up as the left one does, by a scale of its own that is labelled within
/// the plot at its left edge.
enum class ChartAxis { Left, Right, Inner };

enum class SeriesFill { None, ToBottom, ToTop };

struct SeriesStyle {
    QColor colour;
    double width = 1.5;
    QList<qreal> dashes; ///< strokes and gaps in line widths; empty = solid
    bool step = false;   ///< a value holds until the next row
    SeriesFill fillTo = SeriesFill::None;
    QColor fill;
    ChartAxis axis = ChartAxis::Left;
};

enum class MarkerStyle { Circle, Square, Diamond, Triangle };

/// A sign on every point of a series (one for each pixel column where points stand closer).
struct SeriesMarker {
    bool visible = false;
    double size = 6; ///< in pixels
    MarkerStyle style = MarkerStyle::Circle;
    QColor fill;
};

struct ChartColours {
    QColor backdrop{0xFF, 0xFF, 0xFF};
    QColor grid{0xD5, 0xDE, 0xE6};
    QColor axis{0x7C, 0x8E, 0xA0};
    QColor axisText{0x55, 0x67, 0x7A};
    QColor cursor{0x14, 0x20, 0x2B};
};

/// What a series looks like until it is told otherwise: 1 and 4 by the right axis, 1 filled below, 4 stepped
/// and filled above, the others by the left axis in colours and dashes that can be told apart.
SeriesStyle defaultSeriesStyle(int series);

QPen seriesPen(const SeriesStyle& style);

} // namespace benthor::platform
