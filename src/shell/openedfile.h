#pragma once

#include <QString>

namespace benthor::shell {

/// Which screen a file from outside belongs to.
enum class FileKind {
    Setup, ///< ".mit": the gas screen
    Image, ///< ".sog": the firmware screen
    Other
};

/// By the file's name, whatever the case of its ending.
FileKind kindOf(const QString& path);

/// Why a file from outside cannot be opened, for a person to read; empty where it can.
QString whyNotOpened(const QString& path);

} // namespace benthor::shell
