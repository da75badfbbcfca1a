#pragma once

#include <QtGlobal>

#include <csignal>
#include <sys/resource.h>

namespace benthor::tests {

/// For as long as this lives no file of the process grows beyond `most` bytes: the write that would is
/// refused by the system, as on a full disk, and those before it have left their part.
class SmallDisk {
public:
    explicit SmallDisk(unsigned most)
        : signal_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit less{most, before_.rlim_max};
        if (setrlimit(RLIMIT_FSIZE, &less) != 0) {
            qFatal("no limit for files");
        }
    }
    ~SmallDisk() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, signal_);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

private:
    void (*signal_)(int);
    rlimit before_{};
};

} // namespace benthor::tests
