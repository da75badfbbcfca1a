#include "platform/standardstreams.h"

#include <fcntl.h>
#include <unistd.h>

namespace benthor::platform {

void fillStandardStreams() {
    for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(number, F_GETFD) < 0) {
            // For reading, so that what is written there fails.
            static_cast<void>(::open("/dev/null", O_RDONLY));
        }
    }
}

} // namespace benthor::platform
