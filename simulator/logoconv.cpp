// A converter of logos for the demonstration and for tests: it stands where the converter of the device's
// maker stands, and writes the form that the simulated device reads.

#include "simulator/logo.h"

#include <QCoreApplication>
#include <QFile>
#include <QSaveFile>
#include <QTextStream>

using namespace benthor::simulator;

namespace {

const char* const kHelp =
    "Usage: logoconv <bitmap>\n"
    "Turns a monochrome bitmap (BMP) of 102 by 64 pixels into a logo for the simulated device. The text "
    "stands\n"
    "beside the bitmap; in its name the last five characters of the bitmap's give way to \"a.bmt\".\n"
    "\n"
    "The form of the text is this program's own. A real device does not know it: its logos need the "
    "converter\n"
    "of its maker.\n";

/// Empty when the text stands.
QString convert(const QString& bitmap) {
    QFile file(bitmap);
    if (!file.open(QIODevice::ReadOnly)) {
        return file.errorString();
    }
    constexpr qint64 kMost = 1 << 20; // far more than a logo has
    QString error;
    const std::optional<Logo> logo = readBitmap(file.read(kMost), error);
    if (!logo) {
        return error;
    }
    const std::optional<QString> path = logoTextPath(bitmap);
    if (!path) {
        return QStringLiteral("its name leaves no name for the text");
    }
    QSaveFile text(*path);
    if (!text.open(QIODevice::WriteOnly) || text.write(logoText(*logo)) < 0 || !text.commit()) {
        return *path + QLatin1String(": ") + text.errorString();
    }
    return {};
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    if (arguments == QStringList(QStringLiteral("--help"))) {
        QTextStream(stdout) << kHelp;
        return 0;
    }
    if (arguments.size() != 1) {
        QTextStream(stderr) << kHelp;
        return 1;
    }
    const QString error = convert(arguments.first());
    if (!error.isEmpty()) {
        QTextStream(stderr) << "logoconv: " << arguments.first() << ": " << error << '\n';
        return 1;
    }
    return 0;
}
