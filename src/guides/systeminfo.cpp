#include "guides/systeminfo.h"

#include <QStandardPaths>

#include <array>

namespace benthor::guides {

std::optional<SystemInfoTool> findSystemInfoTool() {
    struct Known {
        const char* program;
        const char* argument; ///< none when null
    };
    static constexpr std::array<Known, 8> kKnown{{
        {"kinfocenter", nullptr},
        {"gnome-control-center", "info-overview"},
        {"cinnamon-settings", "info"},
        {"mate-system-monitor", "--show-system-tab"},
        {"xfce4-about", nullptr},
        {"lxqt-about", nullptr},
        {"hardinfo2", nullptr},
        {"hardinfo", nullptr},
    }};
    for (const Known& known : kKnown) {
        const QString path = QStandardPaths::findExecutable(QLatin1String(known.program));
        if (!path.isEmpty()) {
            return SystemInfoTool{
                path, known.argument == nullptr ? QStringList() : QStringList(QLatin1String(known.argument))};
        }
    }
    return std::nullopt;
}

} // namespace benthor::guides
