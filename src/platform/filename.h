#pragma once

#include <QStringView>

class QString;

namespace benthor::platform {

/// Whether `name` is the name of a file in a folder and no way to somewhere else: not empty, without "/" and
/// a zero character, not "." or "..". Whoever joins a name that comes from a store, a device or a file to a
/// folder asks this first.
bool isFileName(QStringView name);

/// Whether a regular file stands there, or a link to one. A folder is none, and a pipe that would keep its
/// reader waiting is none.
bool isFile(const QString& path);

} // namespace benthor::platform
