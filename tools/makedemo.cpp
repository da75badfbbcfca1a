// Lays the files of a demonstration into a program folder: a store that skips the guide, dives that wait in
// `new`, and images of firmware with their check list in `Reprog`. Usage: benthor-makedemo <program folder>

#include "platform/files.h"
#include "simulator/demodives.h"
#include "simulator/firmwareimage.h"
#include "store/schema.h"

#include <QDir>
#include <QTextStream>

using namespace benthor;

namespace {

/// In whole records, so that a send leaves none of it behind.
constexpr int kUnits = 115;

/// An image for each type of device, and the list of their check values. Empty, or why they can't be written.
QString writeImages(const QString& folder) {
    struct {
        const char* name;
        simulator::FirmwareType type;
    } const images[]{{"bpcsp2shchk.sog", simulator::FirmwareType::Rb},
                     {"hdckd3chk.sog", simulator::FirmwareType::Kd}};
    QByteArray list;
    std::uint32_t seed = 1;
    for (const auto& [name, type] : images) {
        const QByteArray image = simulator::firmwareImage(type, kUnits, seed++);
        list += simulator::checkListLine(QLatin1String(name), *simulator::receivedCheck(image));
        const auto written = platform::writeFileWhole(folder + u'/' + QLatin1String(name), image);
        if (!written) {
            return written.error;
        }
    }
    const auto written = platform::writeFileWhole(folder + QLatin1String("/chklst.txt"), list);
    return written ? QString() : written.error;
}

} // namespace

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
        const QString error = writeImages(root + QLatin1String("/Reprog"));
        if (!error.isEmpty()) {
            out << error << '\n';
            return 1;
        }
    } catch (const std::exception& error) {
        out << error.what() << '\n';
        return 1;
    }
    return 0;
}
