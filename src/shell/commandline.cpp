#include "shell/commandline.h"

#include <QCommandLineParser>
#include <QDir>

#include <algorithm>
#include <array>

namespace benthor::shell {

namespace {

/// The options that the toolkit takes out of the words by itself; a session manager starts a program anew
/// with one of them.
constexpr std::array<QLatin1String, 20> kToolkits{QLatin1String("platform"),
                                                  QLatin1String("platformpluginpath"),
                                                  QLatin1String("platformtheme"),
                                                  QLatin1String("plugin"),
                                                  QLatin1String("qwindowgeometry"),
                                                  QLatin1String("geometry"),
                                                  QLatin1String("qwindowicon"),
                                                  QLatin1String("icon"),
                                                  QLatin1String("qwindowtitle"),
                                                  QLatin1String("title"),
                                                  QLatin1String("name"),
                                                  QLatin1String("reverse"),
                                                  QLatin1String("session"),
                                                  QLatin1String("style"),
                                                  QLatin1String("stylesheet"),
                                                  QLatin1String("widgetcount"),
                                                  QLatin1String("display"),
                                                  QLatin1String("dograb"),
                                                  QLatin1String("nograb"),
                                                  QLatin1String("qmljsdebugger")};

QString valueOf(const QCommandLineParser& parser, const QString& option, QString& error) {
    const QStringList values = parser.values(option);
    if (values.size() > 1) {
        error = QStringLiteral("--%1 stands there twice.").arg(option);
    } else if (!values.isEmpty() &&
               (values.first().isEmpty() || values.first().startsWith(QLatin1String("--")))) {
        error = QStringLiteral("--%1 wants a value.").arg(option);
    }
    return values.value(0);
}

} // namespace

CommandLine readCommandLine(const QStringList& words) {
    const QString folder = QStringLiteral("folder");
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.addOption(QCommandLineOption(QStringLiteral("help")));
    parser.addOption(QCommandLineOption(QStringLiteral("version")));
    parser.addOption(QCommandLineOption(folder, {}, folder));

    CommandLine line;
    const bool understood = parser.parse(QStringList(QStringLiteral("benthor")) + words);
    line.help = parser.isSet(QStringLiteral("help"));
    line.version = parser.isSet(QStringLiteral("version"));
    const QStringList files = parser.positionalArguments();
    line.folder = valueOf(parser, folder, line.error);
    if (!understood) {
        line.error = parser.errorText();
    } else if (files.size() > 1) {
        line.error = QStringLiteral("One file can be opened, not %1.").arg(files.size());
    } else if (files.size() == 1 && files.first().isEmpty()) {
        line.error = QStringLiteral("The name of the file is empty.");
    } else if (files.size() == 1) {
        line.file = QDir::current().absoluteFilePath(files.first());
    }
    return line;
}

bool mayHoldToolkitWords(const QStringList& words) {
    const auto end = std::find(words.begin(), words.end(), QLatin1String("--"));
    return std::any_of(words.begin(), end, [](const QString& word) {
        const qsizetype dashes = word.startsWith(QLatin1String("--")) ? 2 : word.startsWith(u'-') ? 1 : 0;
        const QString name = word.mid(dashes).section(u'=', 0, 0);
        return dashes > 0 && std::find(kToolkits.begin(), kToolkits.end(), name) != kToolkits.end();
    });
}

QString helpText() {
    return QStringLiteral(R"(Usage: benthor [--folder DIR] [FILE]

Keeps the dives of KD dive computers, and looks after their gases, settings
and firmware.

FILE is opened on the screen that it belongs to, and nothing is sent:
  *.mit  a setup, on "Gas and System Settings"
  *.sog  a firmware image, on "KD Reprogramming Link"
Where Benthor is open on the program folder already, it takes the file over.

Options:
  --folder DIR  the program folder; without it, the folder of the executable
                where that holds a store or can be written, otherwise the
                folder Benthor in the user's data folder ($XDG_DATA_HOME).
                One that is not there, or is empty, is made ready for use
  --help        this text
  --version     the version

Exit status: 0 done, or the file was handed over; 1 the open program did not
take the file; 2 wrong usage; 3 the program folder cannot be used.
)");
}

QString versionText() {
    return QStringLiteral("benthor " BENTHOR_VERSION "\n");
}

} // namespace benthor::shell
