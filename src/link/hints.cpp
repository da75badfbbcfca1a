#include "link/supervision.h"
#include "platform/clock.h"
#include "platform/textformat.h"

#include <array>

namespace benthor::link {

const QString& hint(int step) {
    static const std::array<QString, 5> hints{
        QStringLiteral("Choose the name of the dive under which the dives will be saved, by typing in the "
                       "name of the series on the dive series box."),
        QStringLiteral(
            "Items highlighted in yellow in the Dive list indicate the Dive was found in the database "
            "already, so does not need to be downloaded. However, you can choose to download again, and "
            "another copy of it will appear in database."),
        QStringLiteral("Get selected dives - Download the highlighted Dives"),
        QStringLiteral("Get all dives - Downloaded all the Dives"),
        QStringLiteral(
            "Ensure KD or Morvalien is in PC Link mode and connected to PC serial port using Infra-Red or "
            "direct cable system. See Accesories list on the web site for part number abd price")};
    return hints.at(static_cast<std::size_t>(step - 1));
}

void Timer4_tick(LinkState& link, bool screenVisible) {
    constexpr int kHints = 5;
    link.hintstep = link.hintstep % kHints + 1;
    link.infotext = hint(link.hintstep);
    if (screenVisible) {
        link.Label20 = platform::formatDate(platform::now(), u"mmm dd yyyy  hh:nn:ss");
    }
}

} // namespace benthor::link
