#pragma once

#include <QByteArray>
#include <QString>

namespace benthor::platform {

// A change of two files at once leaves, where the process dies within it, a journal beside each, and both
// name a third file by its path: while that is there the change is to be rolled back, once it is gone the
// change is done.

/// The path that the journal names; empty where it names none, or is none.
QByteArray fileNamedBy(const QString& journal);

/// Takes the name out of a journal, which then is to be rolled back.
void dropName(const QString& journal);

/// For a folder that was moved, or is mounted elsewhere by now: where the path that the journal of `file`
/// names leads nowhere, and a file of that name lies in `folder`, the journal is to be rolled back.
void settleMovedJournal(const QString& file, const QString& folder);

/// Removes files that journals named from the folder of `store`. Nothing while the store or `other` has a
/// journal.
void removeNamedFiles(const QString& store, const QString& other);

} // namespace benthor::platform
