// A KD device in software, on a pseudo-terminal that stands as a serial port of a program folder. For people
// who work on the program, and for the demonstration.

#include "simulator/demodives.h"
#include "simulator/kdport.h"
#include "simulator/logo.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QTextStream>
#include <QThread>
#include <QTime>

#include <algorithm>
#include <csignal>
#include <ctime>
#include <map>
#include <optional>

using namespace benthor::simulator;

namespace {

volatile std::sig_atomic_t stopped = 0;

void stop(int) {
    stopped = 1;
}

struct Options {
    QString folder;
    int port = 3;
    int speed = KdPort::lineSpeed;
    int takes = KdPort::unpaced;
    int baud = 0;
    std::optional<FirmwareType> loader;
    bool large = false;
    LoaderFaults loaderFaults;
    int dives = -1;
    QByteArray version = "V2.31";
    QByteArray product = "KD3";
    QString keep;
    int vanishAfter = 0;
    int unasked = 0;
    Faults faults;
};

const QCommandLineOption kPort("port", "Stands as port <n> of the folder (3).", "n", "3");
const QCommandLineOption kUnpaced("unpaced", "Sends as fast as it can, not at 9600 baud.");
const QCommandLineOption kDives("dives", "Has logged only the newest <n> of its dives; 0 for none at all.",
                                "n");
const QCommandLineOption kThird("third-version",
                                "Has firmware of the third version, without a setup to read.");
const QCommandLineOption kProduct("product",
                                  "Says that it is a KD3, KDX, 2010, HALV or TRAX (KD3); \"\" for a device "
                                  "that does not tell.",
                                  "word", "KD3");
const QCommandLineOption kKeep(
    "keep",
    "Keeps what it was sent, and a list of what it heard, in <folder>, and begins with what lies there.",
    "folder");
const QCommandLineOption kUnasked("unasked",
                                  "Sends a line of live readings every <ms> milliseconds, unasked.", "ms");
const QCommandLineOption kSilent("silent", "Hears nothing and says nothing.");
const QCommandLineOption kBreak("break-off", "Ends each dive after <n> bytes in the beacon.", "n");
const QCommandLineOption kDrop("drop", "Loses every <n>th byte that it sends.", "n");
const QCommandLineOption kFlip("flip", "Turns the lowest bit of every <n>th byte that it sends.", "n");
const QCommandLineOption kPieces("pieces", "Sends replies in pieces of <n> bytes with a pause between them.",
                                 "n");
const QCommandLineOption kDelay("delay", "Waits <ms> milliseconds before each reply.", "ms");
const QCommandLineOption kVanish("vanish",
                                 "Goes off the line every <s> seconds, and comes back after as many.", "s");

const QCommandLineOption kLoader(
    "loader",
    "Begins in its loader, as a device of the type rb or kd, and takes what it is sent at the line's pace.",
    "type");
const QCommandLineOption kLarge("large-beacon", "Its loader is of the kind whose beacon is OOOOOOOOO.");
const QCommandLineOption kBaud(
    "baud",
    "Talks at 9600 or 38400 baud, and hears and says garbage at any other speed. Without it any speed will "
    "do, and an image comes at the pace of 38400. At 9600 a program that does not wait for the last byte "
    "may be done 21 s ahead of the device.",
    "speed");
const QCommandLineOption kLoaderFault("loader-fault",
                                      "What its loader does wrong: drop-out, early-end, wrong-sum, erased, "
                                      "wrong-check, silent-end, silent-after-y or second-go.",
                                      "fault");

bool number(const QCommandLineParser& parser, const QCommandLineOption& option, int& value) {
    if (!parser.isSet(option) && option.defaultValues().isEmpty()) {
        return true;
    }
    bool good = false;
    const int given = parser.value(option).toInt(&good);
    if (good && given >= 0) {
        value = given;
    }
    return good && given >= 0;
}

bool readFault(const QString& name, LoaderFaults& faults) {
    constexpr int kSomeBytes = 3000; // of an image
    const std::map<QString, LoaderFaults> known{{"", {}},
                                                {"drop-out", {.dropOutAfter = kSomeBytes}},
                                                {"early-end", {.endEarlyAfter = kSomeBytes}},
                                                {"wrong-sum", {.wrongSums = LoaderFaults::always}},
                                                {"erased", {.leftErased = 'B'}},
                                                {"wrong-check", {.wrongCheck = true}},
                                                {"silent-end", {.silentEnd = true}},
                                                {"silent-after-y", {.silentAfterY = true}},
                                                {"second-go", {.secondGo = true}}};
    const auto found = known.find(name);
    if (found != known.end()) {
        faults = found->second;
    }
    return found != known.end();
}

bool readLoader(const QCommandLineParser& parser, Options& options) {
    const QString type = parser.value(kLoader);
    const QString baud = parser.value(kBaud);
    if (!(type.isEmpty() || type == u"rb" || type == u"kd") ||
        !(baud.isEmpty() || baud == u"9600" || baud == u"38400")) {
        return false;
    }
    if (!type.isEmpty()) {
        options.loader = type == u"rb" ? FirmwareType::Rb : FirmwareType::Kd;
    }
    options.baud = baud.toInt();
    if (!parser.isSet(kUnpaced)) {
        options.speed = baud == u"38400" ? KdPort::fastLineSpeed : KdPort::lineSpeed;
        const int takes = baud == u"9600" ? KdPort::lineSpeed : KdPort::fastLineSpeed;
        options.takes = options.loader ? takes : KdPort::unpaced;
    }
    options.large = parser.isSet(kLarge);
    return readFault(parser.value(kLoaderFault), options.loaderFaults);
}

bool read(const QCommandLineParser& parser, Options& options) {
    if (parser.positionalArguments().size() != 1) {
        return false;
    }
    options.folder = QDir(parser.positionalArguments().first()).absolutePath();
    options.speed = parser.isSet(kUnpaced) ? KdPort::unpaced : KdPort::lineSpeed;
    options.version = parser.isSet(kThird) ? "V3.12" : "V2.31";
    options.product = parser.value(kProduct).toLatin1();
    options.keep = parser.value(kKeep);
    options.faults.silent = parser.isSet(kSilent);
    return readLoader(parser, options) && number(parser, kPort, options.port) &&
           number(parser, kDives, options.dives) && number(parser, kBreak, options.faults.breakOffAfter) &&
           number(parser, kDrop, options.faults.dropEvery) &&
           number(parser, kFlip, options.faults.flipEvery) &&
           number(parser, kPieces, options.faults.pieces) &&
           number(parser, kDelay, options.faults.delayMilliseconds) &&
           number(parser, kUnasked, options.unasked) && number(parser, kVanish, options.vanishAfter);
}

// --- what the device was sent, as files that a person can look at

QByteArray load(const QString& folder, const char* name, const QByteArray& otherwise) {
    QFile file(folder + QLatin1Char('/') + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : otherwise;
}

/// At one stroke: who looks finds the bytes of before or all of these.
void save(const QString& folder, const char* name, const QByteArray& bytes) {
    QSaveFile file(folder + QLatin1Char('/') + QLatin1String(name));
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size()) {
        file.commit();
    }
}

void append(const QString& folder, const char* name, const QByteArray& bytes) {
    QFile file(folder + QLatin1Char('/') + QLatin1String(name));
    if (file.open(QIODevice::Append)) {
        file.write(bytes);
    }
}

void loadMemory(const QString& folder, KdMemory& memory) {
    memory.interval = load(folder, "interval.txt", QByteArray::number(memory.interval)).trimmed().toInt();
    memory.username = load(folder, "name.txt", memory.username);
    memory.setup = load(folder, "setup.txt", memory.setup);
    memory.book = load(folder, "book.txt", memory.book);
    memory.logo = load(folder, "logo.txt", memory.logo);
    memory.image = load(folder, "image.bin", memory.image);
}

void saveMemory(const QString& folder, const Kd& device) {
    QDir().mkpath(folder);
    save(folder, "interval.txt", QByteArray::number(device.memory.interval));
    save(folder, "name.txt", device.memory.username);
    save(folder, "setup.txt", device.memory.setup);
    save(folder, "book.txt", device.memory.book);
    save(folder, "logo.txt", device.memory.logo);
    if (const std::optional<Logo> logo = readLogo(device.memory.logo)) {
        save(folder, "logo.pbm", logoPbm(*logo));
    } else {
        QFile::remove(folder + QLatin1String("/logo.pbm"));
    }
    if (!device.image().isEmpty()) {
        save(folder, "image.bin", device.image());
    }
}

Kd makeDevice(const Options& options) {
    std::vector<QByteArray> dives = deviceDives();
    if (options.dives >= 0) {
        dives.resize(std::min(dives.size(), static_cast<std::size_t>(options.dives)));
    }
    Kd device(std::move(dives), options.version);
    device.productWord = options.product;
    device.unaskedMilliseconds = options.unasked;
    device.faults = options.faults;
    if (options.loader) {
        device.loader.emplace(*options.loader);
        device.loader->large = options.large;
        device.loader->faults = options.loaderFaults;
    }
    if (!options.keep.isEmpty()) {
        loadMemory(options.keep, device.memory);
    }
    return device;
}

/// Prints what was heard since the last time, with the time of day, and keeps it beside what was sent.
void tell(QTextStream& out, KdPort& port, std::size_t& told, const QString& keep) {
    port.with([&](Kd& device) {
        if (told == device.log().size()) {
            return;
        }
        const QByteArray time = QTime::currentTime().toString(QStringLiteral("hh:mm:ss.zzz")).toLatin1();
        QByteArray lines;
        for (; told < device.log().size(); ++told) {
            lines += time + " heard " + device.log()[told] + '\n';
        }
        if (const auto logo = readLogo(device.memory.logo); logo && lines.contains(" heard logo ")) {
            out << QString::fromUtf8(logoPicture(*logo));
        }
        out << lines << Qt::flush;
        if (!keep.isEmpty()) {
            saveMemory(keep, device);
            append(keep, "commands.txt", lines);
        }
    });
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kdsim"));
    QCoreApplication::setApplicationVersion(QStringLiteral(BENTHOR_VERSION));
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("A KD device in software. It stands as a serial port of a program folder (the link "
                       "ports/com<n> there)\n"
                       "until it is interrupted, and prints each command that it hears, with its time."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("folder"), QStringLiteral("The program folder."));
    parser.addOptions({kPort, kUnpaced, kDives, kThird, kProduct, kKeep, kSilent, kBreak, kDrop, kFlip,
                       kPieces, kDelay, kVanish, kUnasked, kLoader, kLarge, kBaud, kLoaderFault});
    parser.process(application);
    Options options;
    QTextStream out(stdout);
    QTextStream err(stderr);
    if (!read(parser, options)) {
        err << parser.helpText();
        return 2;
    }
    std::signal(SIGINT, stop);
    std::signal(SIGTERM, stop);
    try {
        KdPort port(options.folder, options.port, makeDevice(options), options.speed);
        port.setBaud(options.baud);
        port.paceReceived(options.takes);
        port.start();
        out << "a device stands as port " << options.port << " of " << options.folder << Qt::endl;
        std::size_t told = 0;
        const std::time_t began = std::time(nullptr);
        bool there = true;
        while (stopped == 0) {
            QThread::msleep(100);
            tell(out, port, told, options.keep);
            const auto passed = static_cast<int>(std::time(nullptr) - began);
            const bool wanted = options.vanishAfter == 0 || passed / options.vanishAfter % 2 == 0;
            if (wanted != there) {
                wanted ? port.start() : port.stop();
                there = wanted;
                out << (there ? "back on the line" : "off the line") << Qt::endl;
            }
        }
    } catch (const std::runtime_error& error) {
        err << error.what() << Qt::endl;
        return 1;
    }
    return 0;
}
