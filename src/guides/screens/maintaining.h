#pragma once

#include "store/backup.h"

#include <memory>

namespace benthor::guides {

/// A start's work on the store, on a thread of its own. What of it changes nothing may begin while the splash
/// is up; the rest is done behind a window. On the screens' thread.
class StoreStart {
public:
    StoreStart();
    ~StoreStart();
    StoreStart(const StoreStart&) = delete;
    StoreStart& operator=(const StoreStart&) = delete;

    /// Begins what changes nothing, where the store of `folder` is one of the program's own. Until end() or
    /// drop() nobody else may open its file.
    void begin(const platform::ProgramFolder& folder);
    /// Whether it has begun with the store as it stands there. What was begun with another is dropped.
    bool isUnderWay();
    /// As if it had not begun.
    void drop();
    /// All of it, or what is left; begun for no other folder.
    store::Maintenance end(const platform::ProgramFolder& folder);

private:
    class Work;
    std::unique_ptr<Work> work_;
};

/// Puts the store of `folder` right on a thread of its own, with a window that says so where that lasts, and
/// returns when it is done. The window is painted throughout; it can be stopped, the store and its backups
/// then stay whole, and what was not done is left to the next start.
store::Maintenance maintainbehindwindow(const platform::ProgramFolder& folder);

} // namespace benthor::guides
