#include "viewer/timeaxis.h"

#include "profile/elapsed.h"

namespace benthor::viewer {

std::array<QString, 5> determinexaxis(double interval, int lastsample, const ZoomState& zoom) {
    const double total = interval * lastsample;
    if (!zoom.zoomed()) {
        return {QStringLiteral("00:00:00"), profile::formatelapsedWhole(total / 4.0),
                profile::formatelapsedWhole((total - 0.499) / 2.0),
                profile::formatelapsedWhole((total - 0.499) / 4.0 * 3.0), profile::formatelapsedWhole(total)};
    }
    const double width = total / kPages;
    const double start = width * (zoom.zoompage - 1);
    return {profile::formatelapsed(start), profile::formatelapsedWhole(start + width / 4.0),
            profile::formatelapsedWhole(start + width / 2.0),
            profile::formatelapsedWhole(start + width * 3.0 / 4.0),
            profile::formatelapsedWhole(start + width)};
}

} // namespace benthor::viewer
