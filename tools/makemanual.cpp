// Makes the manual: packs a page, read from standard input, with the pictures that it shows into one file.

#include "guides/webarchive.h"
#include "platform/files.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTextStream>

#include <cstdio>

using benthor::guides::ArchivePart;

namespace {

// Wide enough to read a picture, narrow enough for any window.
constexpr char kPictureWidth[] = "720";
constexpr char kPlace[] = "file:///benthor/manual/";

constexpr char kStyle[] =
    "body{font:16px/1.5 sans-serif;color:#14202B;background:#F4F7F9;max-width:46em;margin:2em auto;padding:0 "
    "1em}"
    "h1,h2,h3{line-height:1.2;color:#12344A}h2{margin-top:2.2em;border-bottom:1px solid #D5DEE6}"
    "img{max-width:100%;height:auto;border:1px solid #D5DEE6}"
    "table{border-collapse:collapse}td,th{border:1px solid #D5DEE6;padding:.3em .7em;text-align:left}"
    "code{background:#E9EEF3}";

} // namespace

int main(int argc, char** argv) {
    QTextStream err(stderr);
    if (argc != 3) {
        err << "usage: benthor-makemanual <folder of the page's pictures> <archive> < page" << Qt::endl;
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly)) {
        return 1;
    }
    QString page = QString::fromUtf8(input.readAll());
    QList<ArchivePart> pictures;
    static const QRegularExpression picture(QStringLiteral("<img src=\"([^\"]+)\""));
    for (auto found = picture.globalMatch(page); found.hasNext();) {
        const QString name = found.next().captured(1);
        const auto bytes = benthor::platform::readFile(folder.filePath(name));
        if (!bytes) {
            err << "no picture " << folder.filePath(name) << Qt::endl;
            return 1;
        }
        pictures += ArchivePart{kPlace + name.toUtf8(), "image/png", *bytes};
    }
    page.replace(QLatin1String("<img src=\""),
                 QStringLiteral("<img width=\"%1\" src=\"").arg(QLatin1String(kPictureWidth)));
    const QByteArray html =
        "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\"><title>Benthor</title><style>" +
        QByteArray(kStyle) + "</style></head><body>\n" + page.toUtf8() + "</body></html>\n";
    const QList<ArchivePart> parts =
        QList<ArchivePart>{{QByteArray(kPlace) + "index.html", "text/html; charset=utf-8", html}} + pictures;
    const auto written = benthor::platform::writeFileWhole(QString::fromLocal8Bit(argv[2]),
                                                           benthor::guides::packArchive("Benthor", parts));
    if (!written) {
        err << written.error << Qt::endl;
        return 1;
    }
    return 0;
}
