#include "guides/webarchive.h"

namespace benthor::guides {

namespace {

constexpr char kBoundary[] = "----benthor-part----";
constexpr qsizetype kLine = 76;

/// The value of a header line; empty where there is none.
QByteArray headerValue(const QByteArray& head, const QByteArray& name) {
    for (const QByteArray& line : head.split('\n')) {
        if (line.toLower().startsWith(name.toLower() + ':')) {
            return line.mid(name.size() + 1).trimmed();
        }
    }
    return {};
}

} // namespace

QByteArray packArchive(const QByteArray& title, const QList<ArchivePart>& parts) {
    QByteArray archive =
        "From: <Saved by Benthor>\r\nSubject: " + title +
        "\r\nMIME-Version: 1.0\r\nContent-Type: multipart/related; type=\"text/html\"; boundary=\"" +
        QByteArray(kBoundary) + "\"\r\n\r\n";
    for (const ArchivePart& part : parts) {
        archive += "--" + QByteArray(kBoundary) + "\r\nContent-Type: " + part.type +
                   "\r\nContent-Transfer-Encoding: base64\r\nContent-Location: " + part.location + "\r\n\r\n";
        const QByteArray encoded = part.bytes.toBase64();
        for (qsizetype at = 0; at < encoded.size(); at += kLine) {
            archive += encoded.mid(at, kLine) + "\r\n";
        }
    }
    return archive + "--" + QByteArray(kBoundary) + "--\r\n";
}

QList<ArchivePart> unpackArchive(const QByteArray& archive) {
    QList<ArchivePart> parts;
    const QByteArray opening = "--" + QByteArray(kBoundary) + "\r\n";
    qsizetype at = archive.indexOf(opening);
    while (at >= 0) {
        const qsizetype from = at + opening.size();
        const qsizetype gap = archive.indexOf("\r\n\r\n", from);
        const qsizetype end = archive.indexOf("--" + QByteArray(kBoundary), from);
        if (gap < 0 || end < gap) {
            return {};
        }
        const QByteArray head = archive.mid(from, gap - from);
        QByteArray body = archive.mid(gap + 4, end - gap - 4);
        parts += ArchivePart{headerValue(head, "Content-Location"), headerValue(head, "Content-Type"),
                             QByteArray::fromBase64(body.replace("\r\n", ""))};
        at = archive.indexOf(opening, end);
    }
    return parts;
}

} // namespace benthor::guides
