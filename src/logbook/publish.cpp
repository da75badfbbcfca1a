#include "logbook/publish.h"

#include "platform/filename.h"
#include "platform/textformat.h"

namespace benthor::logbook {

namespace {

using platform::ProgramFolder;

constexpr qsizetype kEnding = 3;

QString divefile(const ProgramFolder& folder, const QString& location) {
    if (platform::isFileName(location)) {
        for (const char* where : {"old", "corrupt"}) {
            const QString path = folder.path(QString::fromLatin1(where), location);
            if (platform::isFile(path)) {
                return path;
            }
        }
    }
    return {};
}

/// The captures of a dive: by the name that they are saved under, which is the text file's, and by the dive's
/// name where that gives none.
QStringList pictures(const ProgramFolder& folder, const PublishedDive& dive) {
    for (const QString& name : {dive.dbtxtname, dive.location}) {
        if (!platform::isFileName(name)) {
            continue;
        }
        const QString base = name.chopped(std::min(kEnding, name.size()));
        QStringList found;
        for (const char* ending : {"jpg", "d.jpg"}) {
            const QString path = folder.path(u"jpg", base + QLatin1String(ending));
            if (platform::isFile(path)) {
                found += path;
            }
        }
        if (!found.isEmpty()) {
            return found;
        }
    }
    return {};
}

} // namespace

QString publishtext(const PublishedDive& dive) {
    QString text = QStringLiteral("    This message contains dive attachments.\n") + dive.note +
                   QStringLiteral("\nThis dive was sent by Benthor. \n");
    for (qsizetype col = 0; col < dive.headers.size(); ++col) {
        text += dive.headers.at(col) + QLatin1Char(' ') + dive.cells.value(col) + QLatin1Char('\n');
    }
    return text;
}

Publication publishdive(const ProgramFolder& folder, const PublishedDive& dive) {
    Publication result;
    const QString file = divefile(folder, dive.location);
    if (file.isEmpty()) {
        result.refusal = QStringLiteral(
            "Sorry, could not find dive file.\nThe location name should be the name of the file. However, if "
            "this "
            "has been changed, then the software can not automatically find the file.\nPlease try and locate "
            "manually if you can remember what the file name was originally, and send using your email "
            "software.");
        return result;
    }
    result.message = {dive.recipient, QStringLiteral("Publish My Dive"), publishtext(dive),
                      QStringList(file) + pictures(folder, dive)};
    return result;
}

QByteArray spreadsheetheader(const QStringList& headers) {
    QString text;
    for (const QString& header : headers.first(std::min(kSheetColumns, headers.size()))) {
        text += header + QLatin1Char(',');
    }
    return (text + QLatin1String("\r\n")).toUtf8();
}

QByteArray spreadsheetrow(const QStringList& cells) {
    QString text;
    for (const QString& cell : cells.first(std::min(kSheetColumns, cells.size()))) {
        const QString trimmed = platform::trimBlanks(cell);
        text += (trimmed.isEmpty() ? QStringLiteral("NA") : trimmed) + QLatin1Char(',');
    }
    return (text + QLatin1String("\r\n")).toUtf8();
}

} // namespace benthor::logbook
