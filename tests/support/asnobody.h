#pragma once

#include <QtGlobal>

#include <functional>
#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

namespace benthor::tests {

/// Whoever runs the tests, from here on this process may do what a user without rights may. No way back.
inline void becomeNobody() {
    constexpr gid_t kNoGroup = 65534;
    constexpr uid_t kNobody = 65534;
    if (geteuid() == 0 && (setgroups(0, nullptr) != 0 || setgid(kNoGroup) != 0 || setuid(kNobody) != 0)) {
        qFatal("the rights cannot be given up");
    }
}

/// Runs `work` in a process of its own without rights: for root, who may write anything, no file is
/// read-only. Returns what work returns (0 to 99), or 100 when it threw or was killed. No store may be open
/// here.
inline int runAsNobody(const std::function<int()>& work) {
    constexpr int kNotDone = 100;
    const pid_t child = fork();
    if (child == 0) {
        becomeNobody();
        int result = kNotDone;
        try {
            result = work();
        } catch (const std::exception& error) {
            qWarning("%s", error.what());
        }
        _exit(result);
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child) {
        qFatal("no child");
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : kNotDone;
}

} // namespace benthor::tests
