#pragma once

#include "logbook/actrecorder.h"
#include "logbook/diverows.h"
#include "platform/storedrows.h"

#include <memory>
#include <vector>

namespace benthor::logbook {

// The file beside the store that keeps the acts: its form, and its rows as plain values.

inline constexpr int kMostActs = 50;    ///< how many can be taken back
inline constexpr int kDaysInTrash = 30; ///< for that long a deleted dive is kept

/// The file cannot be used; the store is not at fault.
class ActError : public platform::StoreError {
public:
    ActError(const QString& text, int code, bool damaged = false)
        : StoreError(text, code)
        , damaged_(damaged) {}
    static ActError of(const platform::StoreError& error); ///< of the engine, while it worked on the file
    /// Reading it again will not help: it does not hold what it should.
    bool damaged() const { return damaged_; }

private:
    bool damaged_;
};

struct Act {
    qint64 id = 0; ///< the later the act, the greater
    ActKind kind = ActKind::Delete;
    bool done = true; ///< false: it was taken back and can be redone
    QString label;    ///< what the details were saved of
    int dives = 0;    ///< that it deleted or brought
};

/// One thing that an act did. It is either here, in the store, or away, in this file.
struct ActItem {
    enum class Kind {
        Dive,  ///< all rows of a dive; `rows` while it is away
        Edit,  ///< rows of a dive in main and buddylist: `rows` is what stands there when the act is turned
        Entry, ///< a row of a pick list: `rows` in both states
    };
    qint64 id = 0;
    qint64 act = 0; ///< 0: the act is no longer kept, the dive is
    Kind kind = Kind::Dive;
    bool here = false;
    QString diveid;
    DiveKey key;
    QByteArray digest; ///< of what is here, or of `rows` where it is away
    int twins = 0;     ///< counttwins() when it went
    QByteArray rows;   ///< encoderows()
    // of deleted dives
    QString name;
    QString started;
    QString gone;      ///< when it was deleted, "yyyy-mm-dd hh:mm:ss" of the local clock
    QString fileName;  ///< of the file that waited in `new`; empty: there was none
    QByteArray file;   ///< its bytes
    bool owed = false; ///< the file is to be put into `new` again
};

/// The file, attached to the store for as long as this lives. Each call but the first two throws ActError.
class ActFile {
public:
    /// Makes the file where it is missing. No transaction may be open. ActError.
    explicit ActFile(platform::Database& database);
    /// The same where there is a file, else nothing.
    static std::unique_ptr<ActFile> ifThere(platform::Database& database);
    ~ActFile();
    ActFile(const ActFile&) = delete;
    ActFile& operator=(const ActFile&) = delete;

    /// Within the first transaction that writes: makes the tables of a fresh file.
    void makeTables();
    bool isFresh() const { return fresh_; }

    std::vector<Act> acts(); ///< the earliest first
    /// Adds an act that is done: what could be redone goes, and of the others the earliest beyond kMostActs.
    qint64 add(ActKind kind, const QString& label);
    void setDone(qint64 act, bool done);
    /// The act goes; dives that it deleted stay in the trash.
    void drop(qint64 act);

    std::vector<qint64> itemIds(qint64 act); ///< in the order in which they were done
    std::vector<ActItem> trashed();          ///< the last one first; without `rows` and `file`
    std::vector<ActItem> owed();
    QStringList awayNames(); ///< `dbtxtname` of the dives that are away
    ActItem item(qint64 id); ///< one that is not there has the id 0
    void addItem(const ActItem& item);
    void saveItem(const ActItem& item);
    /// Items that are done with; an act that has no other goes with them.
    void removeItems(const std::vector<qint64>& ids);
    /// Deleted dives that went before that moment.
    void removeTrashBefore(const QString& moment);

    platform::StoredRows& store() { return rows_; }

private:
    std::vector<ActItem> read(const QByteArray& where, const std::vector<platform::StoredValue>& values,
                              bool whole);
    std::vector<platform::StoredRow> rows(const QByteArray& sql,
                                          const std::vector<platform::StoredValue>& values = {});
    void change(const QByteArray& sql, const std::vector<platform::StoredValue>& values = {});
    void requireOurs();
    void dropEmptyActs();

    platform::StoredRows rows_;
    QString path_;
    bool fresh_ = false;
};

/// A dive as an item that is away: its rows and, where the store owes it a profile, the note of that; the
/// file that a delete takes from `new`. StoreError.
ActItem itemGoing(platform::StoredRows& store, const QString& diveid, const TableRows& rows);
void takeWaitingFile(ActItem& item, const platform::ProgramFolder& folder);
/// The moment for ActItem::gone.
QString momentText(const QDateTime& moment);

/// A damaged file makes way under a name of its own, so that later acts can be kept. Returns that name, or
/// nothing.
QString setActsAside(const platform::Database& database);

} // namespace benthor::logbook
