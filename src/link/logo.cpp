#include "link/logo.h"

#include "platform/filename.h"
#include "platform/programfolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace benthor::link {

namespace {

/// Head and palette of 62 bytes, 64 rows of 16.
constexpr qint64 kBitmapBytes = 1086;
constexpr qsizetype kCharactersDropped = 5;

/// -1 for a file that cannot be opened.
qint64 lengthOf(const QString& path) {
    QFile file(path);
    return platform::isFile(path) && file.open(QIODevice::ReadOnly) ? file.size() : -1;
}

/// A converter that does not run is no matter for a box: the user may still convert by other means.
QString startConverter(LinkHost& host, const QString& name) {
    const QString converter = findConverter();
    if (converter.isEmpty()) {
        return QStringLiteral("No logo converter was found beside the program or on the path, so the "
                              "converted file will not be there.");
    }
    // A name must not pass for an option.
    const QString bitmap = name.startsWith(u'-') ? QStringLiteral("./") + name : name;
    if (!host.startProgram(converter, {bitmap}, platform::ProgramFolder::current().root())) {
        return QStringLiteral(
                   "The logo converter can't be started, so the converted file will not be there: ") +
               converter;
    }
    return {};
}

} // namespace

std::optional<QString> convertedName(const QString& name) {
    if (name.size() < kCharactersDropped) {
        return std::nullopt;
    }
    return name.chopped(kCharactersDropped) + QLatin1String("a.bmt");
}

QString findConverter() {
    const QFileInfo beside(platform::ProgramFolder::current().path(u"logoconv.exe"));
    if (beside.isFile() && beside.isExecutable()) {
        return beside.absoluteFilePath();
    }
    return QStandardPaths::findExecutable(QStringLiteral("logoconv"));
}

void mnuLogoConv_click(LinkState& link, LinkHost& host) {
    const QStringList lines{
        QStringLiteral("Bitmap to convert must be the following specification:"),
        QStringLiteral("102 pixels wide x 64 pixels high. Monochrome Bitmap."),
        QStringLiteral("The file must be in the same folder as logoconv.exe: ") +
            QDir::toNativeSeparators(platform::ProgramFolder::current().root()),
        QStringLiteral("File sharka.bmp supplied as example."),
    };
    host.message(lines.join(QLatin1Char('\n')));
    Command8_click(link, host);
}

void Command8_click(LinkState& link, LinkHost& host) {
    const QString path =
        host.openFile(QStringLiteral("Bitmap Files (*.bmp)|*.bmp|All Files (*.*)|*.*"), QString());
    if (path.isEmpty()) {
        return;
    }
    if (lengthOf(path) != kBitmapBytes) {
        host.message(QStringLiteral("Wrong file size. Check bitmap type and size!"));
        return;
    }
    const QString name = QFileInfo(path).fileName();
    if (const QString hint = startConverter(host, name); !hint.isEmpty()) {
        link.infotext = hint;
    }
    if (const std::optional<QString> text = convertedName(name)) {
        link.console.convertedlogo = *text;
        host.message(QStringLiteral("Created file: ") + *text);
    }
}

} // namespace benthor::link
