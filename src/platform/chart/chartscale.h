#pragma once

#include "platform/chart/chartmatrix.h"
#include "platform/chart/chartstyle.h"

#include <functional>
#include <initializer_list>

namespace benthor::platform {

/// One value axis: its range, and the values at which it is labelled, lowest label first.
struct ChartScale {
    double lower = 0;
    double upper = 1;
    double step = 0;            ///< between labels; 0 = no labels
    std::vector<double> labels; ///< none while nothing is drawn by this axis

    double share(double value) const { return (value - lower) / (upper - lower); }
};

/// What is written at an axis that is so and so high.
struct AxisNotes {
    std::vector<double> labels; ///< the values that are labelled, lowest first
    double unit = 0;            ///< where the unit stands, in the place of a label where there is one
};

/// The least of `factors` times a power of ten that divides `extent` into at most `intervals` parts.
double niceStep(double extent, int intervals, std::initializer_list<double> factors = {1, 2, 5});

/// From the first full label that is clear of the deepest value (lower) to 0 (upper); labels at each step.
/// Nothing drawn, or nothing below 0: the range -1 to 0, labelled only in the second case.
ChartScale downwardScale(const ChartMatrix& matrix, const std::function<ChartAxis(int series)>& axisOf);

/// The decimals that a label needs where labels stand `step` apart.
int decimalsOf(double step);

/// For one of the axes that count up. From 0, or the lowest value where that is below 0, to 2.5 times the
/// largest value, so that these lines lie low; labelled up to the first step that is not below the largest
/// value. Only zeros: to 1.
ChartScale upwardScale(const ChartMatrix& matrix, const std::function<ChartAxis(int series)>& axisOf,
                       ChartAxis axis = ChartAxis::Left);

/// The labels of `scale` that do not touch each other on an axis of `height`, where each is `lineHeight`
/// high, both in pixels: all of them, or every second, fifth, tenth and so on, counted from 0. The unit keeps
/// clear of them: for the axis that counts down it stands above the last label (at its end, where the axis
/// goes on so far, and in the place of the label before where they stand close), for the others above the
/// highest.
AxisNotes axisNotes(const ChartScale& scale, double height, double lineHeight, ChartAxis axis);

} // namespace benthor::platform
