#pragma once

#include <QString>
#include <memory>

class QTemporaryDir;

namespace benthor::platform {

/// What a store is opened for.
enum class StoreAccess {
    Change, ///< for reading and changing; for reading alone where its file or its folder allows no more
    Look,   ///< for reading alone: no byte of it, nor of anything beside it, changes
};

/// Why the store at `path` can only be read: its file or its folder may not be written. Empty when it can be
/// changed.
QString whyReadOnly(const QString& path);

/// A private copy of a store, gone with this.
struct StoreCopy {
    std::unique_ptr<QTemporaryDir> folder;
    QString path;
};

/// Whether reading the store would need a change: another program, or a crash, left unfinished work beside
/// it, or it keeps its changes beside it as a rule.
bool needsCopyToLook(const QString& path);

/// Copies the store and the unfinished work beside it. StoreError, also when the store changes meanwhile.
StoreCopy copyToLook(const QString& path);

} // namespace benthor::platform
