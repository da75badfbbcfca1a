#pragma once

#include <QtGlobal>

#include <csignal>
#include <cstring>
#include <functional>
#include <sqlite3.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace benthor::tests {

/// Stands between the engine and the disk in this process, from its making on: each step by which a file on
/// the disk becomes another (a write, a sync, a cut, a removal, the making of a file) is told first, those
/// within a COMMIT as well. For a child process alone: there is no way back.
class WatchedDisk {
public:
    /// `step` gets "write rb.mdb", "remove rb.mdb-journal" and the like; false fails it as a full disk would.
    explicit WatchedDisk(std::function<bool(const std::string& step)> step) {
        hook() = std::move(step);
        real() = sqlite3_vfs_find(nullptr);
        static sqlite3_vfs shim = *real();
        shim.szOsFile = static_cast<int>(sizeof(File)) + real()->szOsFile;
        shim.zName = "watched";
        shim.xOpen = &WatchedDisk::open;
        shim.xDelete = &WatchedDisk::remove;
        sqlite3_vfs_register(&shim, 1);
    }

private:
    struct File {
        sqlite3_file base;
        sqlite3_file* inner;
        const char* name;
    };

    static std::function<bool(const std::string&)>& hook() {
        static std::function<bool(const std::string&)> step;
        return step;
    }
    static sqlite3_vfs*& real() {
        static sqlite3_vfs* disk = nullptr;
        return disk;
    }
    static File* self(sqlite3_file* file) { return reinterpret_cast<File*>(file); }
    static sqlite3_file* inner(sqlite3_file* file) { return self(file)->inner; }
    static bool pass(const char* what, const char* path) {
        const std::string whole = path == nullptr ? "a file without a name" : path;
        return hook()(std::string(what) + ' ' + whole.substr(whole.rfind('/') + 1));
    }
    static bool pass(const char* what, sqlite3_file* file) { return pass(what, self(file)->name); }

    static int open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* out) {
        File* const made = self(file);
        made->base.pMethods = nullptr;
        made->name = name;
        made->inner = reinterpret_cast<sqlite3_file*>(reinterpret_cast<char*>(file) + sizeof(File));
        if ((flags & SQLITE_OPEN_CREATE) && name != nullptr && access(name, F_OK) != 0 &&
            !pass("make", name)) {
            return SQLITE_CANTOPEN;
        }
        const int result = real()->xOpen(real(), name, made->inner, flags, out);
        if (made->inner->pMethods != nullptr) {
            made->base.pMethods = &methods();
        }
        return result;
    }
    static int remove(sqlite3_vfs*, const char* name, int sync) {
        return pass("remove", name) ? real()->xDelete(real(), name, sync) : SQLITE_IOERR_DELETE;
    }
    static int write(sqlite3_file* file, const void* bytes, int size, sqlite3_int64 at) {
        return pass("write", file) ? inner(file)->pMethods->xWrite(inner(file), bytes, size, at)
                                   : SQLITE_FULL;
    }
    static int cut(sqlite3_file* file, sqlite3_int64 size) {
        return pass("cut", file) ? inner(file)->pMethods->xTruncate(inner(file), size)
                                 : SQLITE_IOERR_TRUNCATE;
    }
    static int sync(sqlite3_file* file, int flags) {
        return pass("sync", file) ? inner(file)->pMethods->xSync(inner(file), flags) : SQLITE_IOERR_FSYNC;
    }

    static sqlite3_io_methods& methods() {
        static sqlite3_io_methods all = [] {
            sqlite3_io_methods made{};
            made.iVersion = 1;
            made.xClose = [](sqlite3_file* f) { return inner(f)->pMethods->xClose(inner(f)); };
            made.xRead = [](sqlite3_file* f, void* to, int size, sqlite3_int64 at) {
                return inner(f)->pMethods->xRead(inner(f), to, size, at);
            };
            made.xWrite = &WatchedDisk::write;
            made.xTruncate = &WatchedDisk::cut;
            made.xSync = &WatchedDisk::sync;
            made.xFileSize = [](sqlite3_file* f, sqlite3_int64* size) {
                return inner(f)->pMethods->xFileSize(inner(f), size);
            };
            made.xLock = [](sqlite3_file* f, int lock) { return inner(f)->pMethods->xLock(inner(f), lock); };
            made.xUnlock = [](sqlite3_file* f, int lock) {
                return inner(f)->pMethods->xUnlock(inner(f), lock);
            };
            made.xCheckReservedLock = [](sqlite3_file* f, int* out) {
                return inner(f)->pMethods->xCheckReservedLock(inner(f), out);
            };
            made.xFileControl = [](sqlite3_file* f, int op, void* arg) {
                return inner(f)->pMethods->xFileControl(inner(f), op, arg);
            };
            made.xSectorSize = [](sqlite3_file* f) { return inner(f)->pMethods->xSectorSize(inner(f)); };
            made.xDeviceCharacteristics = [](sqlite3_file* f) {
                return inner(f)->pMethods->xDeviceCharacteristics(inner(f));
            };
            return made;
        }();
        return all;
    }
};

/// Runs `work` in a process of its own that is killed before the engine's step number `last` on the disk,
/// counted from 1. False when it came to its end. No store may be open here.
inline bool isKilledAtDisk(int last, const std::function<void()>& work) {
    const pid_t child = fork();
    if (child == 0) {
        int step = 0;
        const WatchedDisk disk([&](const std::string&) {
            if (++step == last) {
                raise(SIGKILL);
            }
            return true;
        });
        work();
        _exit(0);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child) {
        qFatal("no child");
    }
    return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
}

} // namespace benthor::tests
