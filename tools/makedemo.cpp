// Lays the files of a demonstration into a program folder: a store that skips the guide, and dives that wait
// in `new`. Usage: benthor-makedemo <program folder>

#include "platform/files.h"
#include "simulator/demodives.h"
#include "store/schema.h"

#include <QDir>
#include <QTextStream>

using namespace benthor;

int main(int argc, char** argv) {
    QTextStream out(stderr);
    if (argc != 2) {
        out << "usage: benthor-makedemo <program folder>\n";
        return 2;
    }
    const QString root = QString::fromLocal8Bit(argv[1]);
    try {
        for (const char* folder : {"new", "old", "corrupt", "dbtxt", "jpg", "Reprog", "ports"}) {
            QDir().mkpath(root + u'/' + QLatin1String(folder));
        }
        store::createStore(root + QLatin1String("/rb.mdb"), QStringLiteral("Close"));
        for (const auto& dive : simulator::demoDives()) {
            const auto written =
                platform::writeFileWhole(root + QLatin1String("/new/") + dive.filename, dive.text);
            if (!written) {
                out << written.error << '\n';
                return 1;
            }
        }
    } catch (const std::exception& error) {
        out << error.what() << '\n';
        return 1;
    }
    return 0;
}
