#include "store/readjet/limits.h"

#include <csignal>
#include <sys/prctl.h>
#include <sys/resource.h>

#if defined(__SANITIZE_ADDRESS__)
// The library keeps what it has read to the end, and looking for that takes a process, which is forbidden
// here.
extern "C" const char* __asan_default_options() { // NOLINT: the sanitizer's own name
    return "detect_leaks=0";
}
#endif

namespace benthor::readjet {

namespace {

bool limit(decltype(RLIMIT_CPU) what, rlim_t most) {
    const rlimit both{most, most};
    return setrlimit(what, &both) == 0;
}

} // namespace

bool limitMyself() {
    constexpr rlim_t kSeconds = 600;
    constexpr rlim_t kOpenFiles = 32;
    bool done = limit(RLIMIT_CPU, kSeconds) && limit(RLIMIT_CORE, 0) && limit(RLIMIT_FSIZE, 0) &&
                limit(RLIMIT_NOFILE, kOpenFiles) && limit(RLIMIT_NPROC, 0);
#if !defined(__SANITIZE_ADDRESS__) // it maps memory by the terabyte
    constexpr rlim_t kMemory = rlim_t{1} << 30;
    done = done && limit(RLIMIT_AS, kMemory);
#endif
    return done && prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && prctl(PR_SET_PDEATHSIG, SIGKILL) == 0;
}

} // namespace benthor::readjet
