#include "link/supervision.h"
#include "platform/files.h"
#include "platform/programfolder.h"

#include <QFile>
#include <QtEndian>

namespace benthor::link {

namespace {

constexpr qsizetype kLengthBytes = 2;
constexpr qint64 kRecord = 128;

QString path() {
    return platform::ProgramFolder::current().path(u"comport.txt");
}

QByteArray record() {
    return platform::readFile(path(), kRecord).value_or(QByteArray());
}

} // namespace

QString readcomport() {
    if (!QFile::exists(path())) {
        platform::writeFileWhole(path(), {}); // a folder that takes no file gives an empty number as well
    }
    const QByteArray bytes = record();
    if (bytes.size() < kLengthBytes) {
        return {};
    }
    return QString::fromLatin1(bytes.mid(kLengthBytes, qFromLittleEndian<quint16>(bytes.constData())));
}

void writecomport(const QString& text) {
    const QByteArray number = text.toLatin1();
    QByteArray bytes(kLengthBytes, '\0');
    qToLittleEndian(static_cast<quint16>(number.size()), bytes.data());
    bytes += number;
    // What lies behind in a longer record stays.
    bytes += record().mid(bytes.size());
    platform::writeFileWhole(path(), bytes);
}

void remembercomport(const LinkState& link) {
    if (!link.ComNum.isEmpty() && readcomport() != link.ComNum) {
        writecomport(link.ComNum);
    }
}

} // namespace benthor::link
