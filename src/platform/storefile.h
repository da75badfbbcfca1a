#pragma once

#include "platform/query.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace benthor::platform {

// A store as a file: packed, judged, and parted from what the engine keeps beside it.

/// Makes a store at `path`, where no file may be, out of the texts in `schema`, then runs `change`. Its owner
/// alone may read it. StoreError; the file may then be there in part.
void createDatabase(const QString& path, const char* schema, const Query& change);

/// What a store's file was at one moment.
struct StoreMark {
    QByteArray head; ///< of the file: the engine counts there how often the store was changed; empty: unknown
    qint64 bytes = 0;
    qint64 written = 0; ///< nanoseconds since 1970

    bool isKnown() const { return !head.isEmpty(); }
    /// Whether no program that knows the engine has changed the store from the one to the other. Not every
    /// file system tells one time of writing twice.
    bool tellsTheSameChanges(const StoreMark& other) const {
        return isKnown() && head == other.head && bytes == other.bytes;
    }
    /// Nor whatever else.
    bool operator==(const StoreMark&) const = default;
};

/// The mark of a store that no other program holds, once a change that a crash left unfinished is rolled
/// back. StoreError.
StoreMark markOf(const QString& path);

/// Whether a store is waited for that another program holds.
enum class WhenHeld { Wait, Fail };

/// Writes what the store at `from` holds, packed, into a new file `to`. A change that a crash left unfinished
/// in `from` is rolled back first. `to` must not be there, and has the rights of `from`. The file is not yet
/// on the disk: moveFile() puts it there. Returns what `from` was. StoreError; `to` may then be there in
/// part.
StoreMark compactDatabase(const QString& from, const QString& to, WhenHeld whenHeld = WhenHeld::Wait);

/// Opens the store, which rolls back a change that a crash left unfinished, and closes it. StoreError.
void settleDatabase(const QString& path);

struct StoreVerdict {
    enum class State {
        Sound,
        Damaged, ///< read, and not what it should be
        Unknown, ///< could not be read: locked, no rights, the disk fails
    };
    State state = State::Unknown;
    QString reason; ///< empty when sound
    bool sound() const { return state == State::Sound; }
};

/// Reads the whole store, without changing a byte of it or of what stands beside it, and says whether its
/// structure holds and each of `tables` is a table: no view, nor one whose rows are made by code.
StoreVerdict examineDatabase(const QString& path, const QStringList& tables);

/// The part of that verdict that speaks of the tables; the store's structure is not looked at.
StoreVerdict findTables(const QString& path, const QStringList& tables);

/// Asked while a store is worked on, from several threads. False ends the work, which then fails.
using StoreGoOn = std::function<bool()>;

/// The same verdict of a store that nobody else has open, sooner: a large one is read on two threads.
/// `beside` runs on one of them meanwhile.
StoreVerdict examineDatabaseTogether(const QString& path, const QStringList& tables, const StoreGoOn& goOn,
                                     const std::function<void()>& beside);

/// Removes the journal and the like that belong to a store at `path` that stands there no more: they would
/// be played into the next one of that name.
void removeJournals(const QString& path);

/// The names, behind the store's own, under which the engine keeps an unfinished change.
QStringList journalSuffixes();

} // namespace benthor::platform
