#include "link/divefile.h"
#include "divefiles/keptfiles.h"
#include "platform/textformat.h"

namespace benthor::link {

namespace {
constexpr const char* kLineEnd = "\r\n";
/// What follows the last dive is at most that long: the beacon, a closing word.
constexpr qsizetype kTail = 50;

QString withSlashes(QString name) {
    return name.replace(QLatin1Char('\\'), QLatin1Char('/'));
}

void demand(const platform::FileResult& result) {
    if (!result) {
        throw DownloadError(result.error.toStdString());
    }
}
} // namespace

const QByteArray& divebeacon() {
    static const QByteArray beacon = QByteArrayLiteral("PPPPPPPP");
    return beacon;
}

QString requestfordives() {
    return QStringLiteral("The request for dives");
}

QString downloadfailed() {
    return QStringLiteral("Error downloading.. Click Refresh and try again!");
}

QString waitingpath(const QString& name) {
    return platform::ProgramFolder::current().path(u"new", withSlashes(name));
}

void writewaitingfile(const QString& name, QByteArrayView text) {
    if (name.contains(QChar::Null)) {
        throw DownloadError("no legal file name");
    }
    const QByteArray contents = text.toByteArray() + kLineEnd;
    const QString path = waitingpath(name);
    if (platform::readFile(path) != contents) {
        demand(divefiles::keepinold(platform::ProgramFolder::current(), withSlashes(name)));
    }
    demand(platform::writeFileWhole(path, contents));
}

QString divefilename(const QString& series, const QString& number) {
    return series + QString::number(platform::toWhole(platform::leadingNumber(number))) +
           QLatin1String(".txt");
}

void savedivefile(LinkState& link, LinkHost& host) {
    host.repaint();
    writewaitingfile(divefilename(link.download.DiveSeriesName, link.download.startdivenum),
                     link.rxbuf.bytes());
    link.capturemode = false;
    link.divesaved = true;
}

std::vector<QByteArray> divesinrow(const QByteArray& text) {
    std::vector<QByteArray> dives;
    qsizetype at = 0;
    while (at + 1 < text.size() - kTail) {
        const qsizetype begin = text.indexOf("ver", at);
        const qsizetype end = begin < 0 ? -1 : text.indexOf("End", begin);
        if (end < 0) {
            break;
        }
        at = end + 3;
        dives.push_back(text.mid(begin, at - begin));
    }
    return dives;
}

} // namespace benthor::link
