#pragma once

#include "platform/faultpoint.h"

#include <QtGlobal>

#include <csignal>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

namespace benthor::tests {

/// Runs `work` in a process of its own that is killed (SIGKILL) at its step number `last`, counted from 1
/// over the points at which the disk may fail. False when it came to its end. No store may be open here.
/// `fault`: what else is wrong with that disk.
inline bool isKilledAt(int last, const std::function<void()>& work, const platform::FaultHook& fault = {}) {
    const pid_t child = fork();
    if (child == 0) {
        int step = 0;
        const platform::FaultInjection kill([&](std::string_view name) {
            if (++step == last) {
                raise(SIGKILL);
            }
            return fault ? fault(name) : 0;
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
