#pragma once

#include "logbook/actrecorder.h"
#include "platform/programfolder.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace benthor::logbook {

// Taking back what was done to the logbook, and doing it again: the last 50 acts, in their order, those of
// earlier runs too. A deleted dive is also kept in the trash, for thirty days, however many acts follow.

/// The act that a command of the menu means.
struct ActInHand {
    qint64 id = 0; ///< 0: there is none
    QString what;  ///< "delete of 3 dives"
};

struct ActsInHand {
    ActInHand undo;
    ActInHand redo;
    QString fault; ///< why the file of the acts cannot be read; empty when it can, or when there is none
};

/// What can be taken back and done again. None for a store that is closed or can only be read.
ActsInHand actsinhand(platform::Database& database);

/// How the taking back, the doing again or the putting back ended.
struct TurnedAct {
    enum class State {
        Nothing,    ///< the act is not the next one any more
        Done,       ///< the store holds it, and the dives' files are back
        DoesNotFit, ///< the store is another one by now: nothing of it was changed, and the act is gone
    };
    struct Renamed {
        QString from;
        QString to;
    };
    State state = State::Nothing;
    QString what;
    QString reason;               ///< why it does not fit
    std::vector<Renamed> renamed; ///< dives that came back under a new number
    QStringList back;             ///< dives that came into the store, under their numbers now
    QStringList files;            ///< that came back into the folder `new`, by their names there
    QString fileFault;            ///< why a file did not; it is tried again later
    QStringList changed{};        ///< all dives whose row in main came, went or changed, by all their numbers
    platform::StoreSpan span{};   ///< of the store, around all of it
};

/// Takes the act back, which must be the one that undo means, or does it again. All of it in one transaction,
/// with the counter of dives put right behind it; StoreError where the store or the file of the acts fails,
/// and nothing has changed then.
TurnedAct undoact(platform::Database& database, const platform::ProgramFolder& folder, qint64 act);
TurnedAct redoact(platform::Database& database, const platform::ProgramFolder& folder, qint64 act);

/// What the user is to be told of it; empty where all is as the menu said.
QString turnedText(const TurnedAct& turned);

/// A deleted dive.
struct TrashedDive {
    qint64 id = 0;
    QString diveid;
    QString name;
    QString started; ///< as the store has it
    QString gone;    ///< "yyyy-mm-dd hh:mm:ss", when it was deleted
};

/// The one deleted last first. StoreError.
std::vector<TrashedDive> trasheddives(platform::Database& database);

/// Names in `dbtxt` of dives that can come back into the store: they are nobody's leftovers. StoreError.
QStringList awayfiles(platform::Database& database);

/// Puts them back into the logbook, each in one transaction; no redo takes them away again. `reason` names
/// those that do not fit; they stay in the trash. StoreError: some may be back by then.
TurnedAct putback(platform::Database& database, const platform::ProgramFolder& folder,
                  const std::vector<qint64>& dives);

/// Forgets them for good. Their files in `dbtxt` and `old` stay. StoreError.
void deleteforgood(platform::Database& database, const std::vector<qint64>& dives);

/// Forgets dives that were deleted more than thirty days ago, and brings files into `new` that a crash or a
/// full disk kept out of it. Failures are passed over: the next call may do better.
void tidyacts(platform::Database& database, const platform::ProgramFolder& folder);

} // namespace benthor::logbook
