// Writes the list of all screens' controls. Usage: benthor-listscreens <file>

#include "platform/files.h"
#include "platform/look/look.h"
#include "tests/screens/screenlist.h"

#include <QApplication>
#include <QTextStream>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    if (argc != 2) {
        QTextStream(stderr) << "usage: benthor-listscreens <file>\n";
        return 2;
    }
    benthor::look::apply(application);
    const auto written = benthor::platform::writeFileWhole(QString::fromLocal8Bit(argv[1]),
                                                           benthor::tests::screenList().toUtf8());
    if (!written) {
        QTextStream(stderr) << written.error << '\n';
        return 1;
    }
    return 0;
}
