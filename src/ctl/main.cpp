#include "ctl/interruption.h"
#include "ctl/run.h"

#include <QCoreApplication>

#include <fcntl.h>
#include <unistd.h>

namespace {

/// A file that is opened must not become a standard stream that the caller has closed: what is written there
/// would end in it.
void fillStandardStreams() {
    for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(number, F_GETFD) < 0) {
            // For reading, so that what is written there fails.
            static_cast<void>(::open("/dev/null", O_RDONLY));
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    fillStandardStreams();
    const QCoreApplication application(argc, argv);
    benthor::ctl::catchSignals();
    return benthor::ctl::run(QCoreApplication::arguments().mid(1));
}
