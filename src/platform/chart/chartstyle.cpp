#include "platform/chart/chartstyle.h"

#include <array>

namespace benthor::platform {

namespace {
// Told apart by colour-blind readers; the dashes tell the rest.
const std::array<QColor, 7> palette = {
    QColor(0xD5, 0x5E, 0x00), QColor(0x00, 0x72, 0xB2), QColor(0x00, 0x85, 0x5F), QColor(0xB5, 0x59, 0x8A),
    QColor(0x2E, 0x8B, 0xC0), QColor(0x8A, 0x5A, 0x1F), QColor(0x5B, 0x67, 0x78)};
const std::array<QList<qreal>, 4> dashes = {QList<qreal>{}, QList<qreal>{8, 3}, QList<qreal>{3, 2},
                                            QList<qreal>{7, 2, 2, 2}};
} // namespace

SeriesStyle defaultSeriesStyle(int series) {
    SeriesStyle style;
    if (series == 1) {
        style.colour = QColor(0x1B, 0x49, 0x65);
        style.width = 2;
        style.fillTo = SeriesFill::ToBottom;
        style.fill = QColor(0xDF, 0xE8, 0xEE);
        style.axis = ChartAxis::Right;
    } else if (series == 4) {
        style.colour = QColor(0xB8, 0x7F, 0x00);
        style.step = true;
        style.fillTo = SeriesFill::ToTop;
        style.fill = QColor(0xFB, 0xEE, 0xD0);
        style.axis = ChartAxis::Right;
    } else {
        const auto number = static_cast<size_t>(std::max(series, 0));
        style.colour = palette[number % palette.size()];
        style.dashes = dashes[number / palette.size() % dashes.size()];
    }
    return style;
}

QPen seriesPen(const SeriesStyle& style) {
    QPen pen(style.colour, style.width, Qt::SolidLine, Qt::FlatCap, Qt::BevelJoin);
    if (!style.dashes.isEmpty())
        pen.setDashPattern(style.dashes);
    return pen;
}

} // namespace benthor::platform
