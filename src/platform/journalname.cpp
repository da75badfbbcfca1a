#include "platform/journalname.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <algorithm>

namespace benthor::platform {

namespace {

// At the end of the journal: name, its length, its sum, a mark.
constexpr qsizetype kNumbers = 8;
constexpr qsizetype kMarkSize = 8;

QByteArray mark() {
    return QByteArray::fromHex("d9d505f920a163d7");
}

QString journalOf(const QString& file) {
    return file + QStringLiteral("-journal");
}

} // namespace

QByteArray fileNamedBy(const QString& journal) {
    constexpr qint64 kLongest = 64 << 10;
    QFile file(journal);
    if (!file.open(QIODevice::ReadOnly) || !file.seek(std::max<qint64>(0, file.size() - kLongest))) {
        return {};
    }
    const QByteArray tail = file.readAll();
    if (!tail.endsWith(mark()) || tail.size() < kMarkSize + kNumbers) {
        return {};
    }
    const qsizetype end = tail.size() - kMarkSize - kNumbers;
    const qsizetype length = qFromBigEndian<quint32>(tail.constData() + end);
    return length > 0 && length <= end ? tail.mid(end - length, length) : QByteArray();
}

void dropName(const QString& journal) {
    QFile file(journal);
    if (file.open(QIODevice::ReadWrite)) {
        file.resize(file.size() - kMarkSize);
    }
}

void settleMovedJournal(const QString& file, const QString& folder) {
    const QString journal = journalOf(file);
    if (!QFileInfo(journal).isFile()) {
        return;
    }
    const QString named = QFile::decodeName(fileNamedBy(journal));
    if (!named.isEmpty() && !QFileInfo::exists(named) &&
        QFileInfo(folder + QLatin1Char('/') + QFileInfo(named).fileName()).isFile()) {
        dropName(journal);
    }
}

void removeNamedFiles(const QString& store, const QString& other) {
    const QFileInfo place(store);
    QDir folder(place.absolutePath());
    // Listed first: one that a commit under way needs has its journals by now.
    const QStringList names =
        folder.entryList({place.fileName() + QStringLiteral("-mj*")}, QDir::Files | QDir::Hidden);
    if (QFileInfo::exists(journalOf(store)) || QFileInfo::exists(journalOf(other))) {
        return;
    }
    for (const QString& name : names) {
        folder.remove(name);
    }
}

} // namespace benthor::platform
