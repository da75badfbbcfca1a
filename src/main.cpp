#include "link/screens/seriallines.h"
#include "platform/look/look.h"
#include "platform/programfolder.h"
#include "platform/screen/application.h"
#include "platform/screen/dialogs.h"
#include "platform/screen/sessionend.h"
#include "platform/standardstreams.h"
#include "shell/commandline.h"
#include "shell/house.h"

#include <QDir>

#include <cstdio>
#include <optional>
#include <unistd.h>

using namespace benthor;

namespace {

// The statuses that are no success, as the help tells them.
constexpr int kNotTaken = 1;
constexpr int kUsage = 2;
constexpr int kNoFolder = 3;

QStringList wordsOf(int argc, char** argv) {
    QStringList words;
    for (int i = 1; i < argc; ++i) {
        words += QString::fromLocal8Bit(argv[i]);
    }
    return words;
}

bool print(std::FILE* stream, const QString& text) {
    const QByteArray bytes = text.toLocal8Bit();
    return std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream) ==
               static_cast<size_t>(bytes.size()) &&
           std::fflush(stream) == 0;
}

void complain(const QString& text) {
    print(stderr, QStringLiteral("benthor: ") + text + u'\n');
}

/// On the terminal, and in a box where nobody looks at one and a box can be seen.
void complainAloud(const QString& text) {
    complain(text);
    const QString display = QGuiApplication::platformName();
    if (::isatty(STDERR_FILENO) == 0 && display != QLatin1String("offscreen") &&
        display != QLatin1String("minimal")) {
        platform::dialogs().message(nullptr, text, platform::BoxKind::Warning);
    }
}

int refuse(const QString& error) {
    complain(error + QStringLiteral(" Try benthor --help."));
    return kUsage;
}

/// What can be answered without a display: the status to end with, or nothing where the program starts.
std::optional<int> answered(const QStringList& words) {
    const shell::CommandLine line = shell::readCommandLine(words);
    const bool known = line.error.isEmpty();
    const bool toolkits = !known && shell::mayHoldToolkitWords(words);
    if (!known && !toolkits) {
        return refuse(line.error);
    }
    if (line.help || line.version) {
        return print(stdout, line.help ? shell::helpText() : shell::versionText()) ? 0 : kNotTaken;
    }
    return std::nullopt;
}

platform::ProgramFolder folderFor(const shell::CommandLine& line, platform::FileResult& error) {
    const platform::FolderPlaces places = platform::folderPlaces();
    return line.folder.isEmpty() ? platform::locateProgramFolder(places, error)
                                 : platform::takeProgramFolder(line.folder, places, error);
}

/// Until the last screen is gone.
int live(shell::House& house, const platform::Application& application) {
    // Not quit(): that would ask the windows first, and the end has been decided.
    QObject::connect(
        &house, &shell::House::ended, &application, [] { QCoreApplication::exit(0); }, Qt::QueuedConnection);
    const platform::SessionEnd session;
    house.follow(session);
    house.start();
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    platform::fillStandardStreams();
    if (const std::optional<int> status = answered(wordsOf(argc, argv))) {
        return *status;
    }
    platform::Application application(argc, argv);
    const shell::CommandLine line = shell::readCommandLine(QCoreApplication::arguments().mid(1));
    if (!line.error.isEmpty()) {
        return refuse(line.error);
    }
    look::apply(application);

    platform::FileResult made;
    const platform::ProgramFolder folder = folderFor(line, made);
    if (!made) {
        complainAloud(made.error);
        return kNoFolder;
    }
    platform::ProgramFolder::setCurrent(folder);
    QDir::setCurrent(folder.root());

    shell::House house(link::serialLines());
    if (!line.file.isEmpty()) {
        using How = shell::House::Opened::How;
        const shell::House::Opened opened = house.open(line.file);
        if (opened.how == How::Nowhere) {
            complainAloud(opened.words);
            return kNotTaken;
        }
        if (opened.how == How::There) {
            if (!opened.words.isEmpty()) {
                complain(opened.words);
            }
            return 0;
        }
    }
    return live(house, application);
}
