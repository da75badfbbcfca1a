#include "platform/look/series.h"

namespace benthor::look {

namespace {

QColor pick(Theme theme, QRgb light, QRgb dark) {
    return QColor(theme == Theme::Dark ? dark : light);
}

SeriesStyle dashed(const QColor& colour, const QVector<qreal>& pattern, double width) {
    return {.colour = colour,
            .fill = {},
            .dash = Qt::CustomDashLine,
            .pattern = pattern,
            .width = width,
            .step = false};
}

SeriesStyle solid(const QColor& colour, double width) {
    return {
        .colour = colour, .fill = {}, .dash = Qt::SolidLine, .pattern = {}, .width = width, .step = false};
}

/// The eight sticks along the scrubber, from cool to warm; every second one is dashed, so that neighbours
/// differ.
SeriesStyle stick(int number, Theme theme) {
    static constexpr QRgb light[] = {0x3D3B9E, 0x2462B0, 0x16789E, 0x1B8272,
                                     0x637B1A, 0x96700B, 0xB8570F, 0xAD2B1D};
    static constexpr QRgb dark[] = {0x9C9BF2, 0x7FB0F5, 0x62C8EA, 0x5FD7B8,
                                    0xB4D65C, 0xEDCB55, 0xF5A35C, 0xF5796B};
    const QColor colour = pick(theme, light[number], dark[number]);
    return number % 2 == 0 ? solid(colour, 1.5) : dashed(colour, {5, 2}, 1.5);
}

} // namespace

QPen SeriesStyle::pen() const {
    QPen result(colour, width, dash, Qt::FlatCap, Qt::RoundJoin);
    if (dash == Qt::CustomDashLine) {
        result.setDashPattern(pattern);
    }
    return result;
}

static SeriesStyle usualStyle(Series series, Theme theme) {
    switch (series) {
    case Series::Depth: {
        SeriesStyle style = solid(pick(theme, 0x1B4965, 0x8EC5E8), 2);
        style.fill = pick(theme, 0xDFE8EE, 0x1D3242);
        return style;
    }
    case Series::Ceiling: {
        SeriesStyle style = solid(pick(theme, 0xB87F00, 0xE69F00), 1.5);
        style.fill = pick(theme, 0xFBEED0, 0x3A2F16);
        style.step = true;
        return style;
    }
    case Series::PO2:
        return solid(pick(theme, 0xD55E00, 0xF07A2B), 2);
    case Series::CellA:
        return solid(pick(theme, 0x0072B2, 0x4FA8DE), 1);
    case Series::CellB:
        return dashed(pick(theme, 0x00855F, 0x25C49A), {8, 3}, 1);
    case Series::CellC:
        return dashed(pick(theme, 0xB5598A, 0xE29BC4), {4, 3}, 1);
    case Series::Setpoint: {
        SeriesStyle style = dashed(pick(theme, 0x000000, 0xFFFFFF), {4, 2.5}, 1.5);
        style.step = true;
        return style;
    }
    case Series::Temperature:
        return dashed(pick(theme, 0x2E8BC0, 0x56B4E9), {1.5, 1.5}, 1.5);
    case Series::GasNumber: {
        SeriesStyle style = solid(pick(theme, 0x55677A, 0x9DB0C2), 1);
        style.step = true;
        return style;
    }
    case Series::Filter:
        return dashed(pick(theme, 0x7A5230, 0xC9A67E), {6, 2, 1.5, 2}, 1.5);
    case Series::Bat1:
        return dashed(pick(theme, 0x46586B, 0xAFC0D0), {7, 2, 2, 2}, 1.5);
    case Series::Bat2:
        return dashed(pick(theme, 0x46586B, 0xAFC0D0), {7, 2, 2, 2, 2, 2}, 1.5);
    case Series::HPdil:
        return dashed(pick(theme, 0x5B4FA8, 0xB3A6F2), {3, 1.5}, 1.5);
    case Series::HPo2:
        return dashed(pick(theme, 0x1670A0, 0x6FC3EE), {3, 1.5, 1, 1.5}, 1.5);
    case Series::CO2:
        return dashed(pick(theme, 0x6B7A00, 0xC3D14A), {1, 2}, 2);
    default:
        return stick(static_cast<int>(series) - static_cast<int>(Series::Tpm1), theme);
    }
}

SeriesStyle seriesStyle(Series series, Theme theme) {
    SeriesStyle style = usualStyle(series, theme);
    if (contrast() == Contrast::High) { // numbers are written in these colours, too
        style.colour = legibleOn(style.colour, tokens(theme).surface);
        style.width += 0.5;
    }
    return style;
}

QColor markcolour() {
    return {0, 0, 255};
}

} // namespace benthor::look
