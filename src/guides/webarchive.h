#pragma once

#include <QByteArray>
#include <QList>

namespace benthor::guides {

// A page with its pictures in one file (a MIME message of the kind multipart/related, as browsers save
// pages): the first part is the page.

struct ArchivePart {
    QByteArray location; ///< by which the page names it
    QByteArray type;     ///< "text/html", "image/png", ...
    QByteArray bytes;
    bool operator==(const ArchivePart&) const = default;
};

/// The archive's bytes. Every part is in base64, so nothing in it can be taken for the boundary.
QByteArray packArchive(const QByteArray& title, const QList<ArchivePart>& parts);

/// The parts of an archive as packArchive() makes it; none for anything else.
QList<ArchivePart> unpackArchive(const QByteArray& archive);

} // namespace benthor::guides
