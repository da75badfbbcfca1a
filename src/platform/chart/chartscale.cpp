#include "platform/chart/chartscale.h"

namespace benthor::platform {

namespace {

constexpr int mostDownwardSteps = 8;
constexpr int upwardSteps = 4;
constexpr double headroom = 2.5;
constexpr double footroom = 1.02; // a line at the lowest value stays clear of the frame

struct Extent {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();
    bool isEmpty() const { return low > high; }
};

Extent extentOf(const ChartMatrix& matrix, const std::function<ChartAxis(int)>& axisOf, ChartAxis axis) {
    Extent extent;
    for (int series = 1; series < ChartMatrix::columns; ++series) {
        if (axisOf(series) != axis)
            continue;
        double low = extent.low;
        double high = extent.high;
        for (const double value : matrix.series(series)) {
            low = value < low ? value : low; // written so that NaN changes nothing
            high = value > high ? value : high;
        }
        extent = {low, high};
    }
    return extent;
}

/// Labels `from` to `to` times `step`: counted in whole steps, so that 0 is 0 exactly.
std::vector<double> labelsBetween(double step, int from, int to) {
    std::vector<double> labels;
    for (int count = from; count <= to; ++count)
        labels.push_back(count * step);
    return labels;
}

/// Every how manieth label is written: one, two, five, ten and so on, so that their distance is round.
int labelStride(double apart, double lineHeight) {
    int stride = 1;
    for (int decade = 1; stride * apart < lineHeight && decade <= 1000; decade *= 10) {
        for (const int factor : {1, 2, 5}) {
            stride = factor * decade;
            if (stride * apart >= lineHeight)
                break;
        }
    }
    return stride;
}

double downwardUnit(const ChartScale& scale, const std::vector<double>& labels, double perPixel,
                    double lineHeight) {
    if (labels.size() < 2 || labels.front() - scale.lower >= lineHeight * perPixel)
        return scale.lower;
    const double gap = labels[1] - labels[0];
    return gap >= 2 * lineHeight * perPixel ? labels[0] + gap / 2 : labels[1];
}

} // namespace

double niceStep(double extent, int intervals, std::initializer_list<double> factors) {
    const double least = extent / intervals;
    const double decade = std::pow(10.0, std::floor(std::log10(least)));
    for (const double factor : factors) {
        if (factor * decade * (1 + 1e-9) >= least)
            return factor * decade;
    }
    return 10 * decade;
}

int decimalsOf(double step) {
    return step > 0 ? std::max(0, -static_cast<int>(std::floor(std::log10(step) + 1e-9))) : 0;
}

ChartScale downwardScale(const ChartMatrix& matrix, const std::function<ChartAxis(int)>& axisOf) {
    const Extent extent = extentOf(matrix, axisOf, ChartAxis::Right);
    if (extent.isEmpty())
        return {-1, 0, 0, {}};
    if (extent.low >= 0)
        return {-1, 0, 1, {-1, 0}};
    const double step = niceStep(-extent.low, mostDownwardSteps);
    const int steps = static_cast<int>(std::ceil(-extent.low * footroom / step));
    return {-steps * step, 0, step, labelsBetween(step, -steps, 0)};
}

ChartScale upwardScale(const ChartMatrix& matrix, const std::function<ChartAxis(int)>& axisOf,
                       ChartAxis axis) {
    const Extent extent = extentOf(matrix, axisOf, axis);
    if (extent.isEmpty())
        return {};
    const double largest = std::max(extent.high, 0.0);
    const double lower = std::min(extent.low, 0.0);
    const double upper = largest > 0 ? headroom * largest : std::max(1.0, -lower);
    const double labelled = largest > 0 ? largest : upper;
    const double step = niceStep(labelled, upwardSteps, {1, 2, 4, 5});
    const int last = static_cast<int>(std::ceil(labelled / step - 1e-9));
    const int first = static_cast<int>(std::ceil(lower / step - 1e-9));
    return {lower, upper, step, labelsBetween(step, first, last)};
}

AxisNotes axisNotes(const ChartScale& scale, double height, double lineHeight, ChartAxis axis) {
    AxisNotes notes;
    if (scale.labels.empty() || scale.step <= 0 || height <= 0)
        return notes;
    const double perPixel = (scale.upper - scale.lower) / height;
    const int stride = labelStride(scale.step / perPixel, lineHeight);
    for (const double value : scale.labels) {
        if (std::lround(value / scale.step) % stride == 0)
            notes.labels.push_back(value);
    }
    if (axis == ChartAxis::Right)
        notes.unit = downwardUnit(scale, notes.labels, perPixel, lineHeight);
    else if (!notes.labels.empty())
        notes.unit = notes.labels.back() + std::max(0.6 * scale.step, lineHeight * perPixel);
    return notes;
}

} // namespace benthor::platform
