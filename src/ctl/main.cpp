#include "ctl/interruption.h"
#include "ctl/run.h"
#include "platform/standardstreams.h"

#include <QCoreApplication>

int main(int argc, char** argv) {
    benthor::platform::fillStandardStreams();
    const QCoreApplication application(argc, argv);
    benthor::ctl::catchSignals();
    return benthor::ctl::run(QCoreApplication::arguments().mid(1));
}
