#include "platform/look/contrast.h"

#include <algorithm>
#include <cmath>

namespace benthor::look {

namespace {

double linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour) {
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

} // namespace

double contrastRatio(const QColor& one, const QColor& other) {
    const double a = luminance(one);
    const double b = luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

QColor readableOn(const QColor& ground) {
    return contrastRatio(ground, Qt::black) >= contrastRatio(ground, Qt::white) ? Qt::black : Qt::white;
}

QColor legibleOn(const QColor& ink, const QColor& ground, double ratio) {
    if (contrastRatio(ink, ground) >= ratio) {
        return ink;
    }
    const QColor goal = readableOn(ground);
    for (int percent = 5; percent < 100; percent += 5) {
        const QColor step = mixed(ink, goal, percent / 100.0);
        if (contrastRatio(step, ground) >= ratio) {
            return step;
        }
    }
    return goal;
}

QColor mixed(const QColor& under, const QColor& over, double share) {
    const auto channel = [share](int a, int b) { return static_cast<int>(std::lround(a + (b - a) * share)); };
    return {channel(under.red(), over.red()), channel(under.green(), over.green()),
            channel(under.blue(), over.blue())};
}

} // namespace benthor::look
