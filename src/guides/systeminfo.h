#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace benthor::guides {

struct SystemInfoTool {
    QString program; ///< its path
    QStringList arguments;
};

/// The desktop's own tool that tells about the machine: the first one that is installed.
std::optional<SystemInfoTool> findSystemInfoTool();

} // namespace benthor::guides
