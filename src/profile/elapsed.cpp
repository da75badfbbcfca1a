#include "profile/elapsed.h"

#include "platform/textformat.h"

#include <cmath>

namespace benthor::profile {

namespace {

QString twoDigits(double number) {
    const QString text = QString::number(number, 'f', 0);
    return number < 10.0 ? QLatin1Char('0') + text : text;
}

} // namespace

QString formatelapsed(double seconds) {
    return formatelapsedWhole(platform::leadingNumber(platform::formatNumber(seconds, u"#0")));
}

QString formatelapsedWhole(double seconds) {
    const double whole = std::isfinite(seconds) ? platform::wholePart(seconds) : 0.0;
    double minutes = platform::wholePart(whole / 60.0);
    const double rest = whole - 60.0 * minutes;
    double hours = 0.0;
    if (minutes > 59.0) {
        hours = platform::wholePart(minutes / 60.0);
        minutes -= 60.0 * hours;
    }
    return twoDigits(hours) + QLatin1Char(':') + twoDigits(minutes) + QLatin1Char(':') + twoDigits(rest);
}

} // namespace benthor::profile
