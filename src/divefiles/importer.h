#pragma once

#include "platform/programfolder.h"

#include <QString>
#include <QStringList>

namespace benthor::divefiles {

/// What the importer shows and asks of the screen that it runs for. Each call is one step of the screen, in
/// the order in which they come here. What a run does not need, a test may leave out.
class ImportScreen {
public:
    ImportScreen() = default;
    ImportScreen(const ImportScreen&) = delete;
    ImportScreen& operator=(const ImportScreen&) = delete;
    virtual ~ImportScreen() = default;

    virtual void runbegins() {} ///< Picture9 hidden, Command4 disabled, Frame2 shown, field counter cleared
    virtual void nofiles() {}   ///< Command4 red and disabled
    virtual void copying(int /*number*/, int /*files*/) {} ///< the first pass comes to a file (from 1)
    virtual void paint() {}                             ///< often in long work: painting, no keys, no ticks
    virtual void filelisted(const QString& /*name*/) {} ///< into List1, which runbegins emptied
    virtual void totals(int /*files*/, qint64 /*bytes*/) {} ///< lbltotalfiles, lbltotalsizes; Timer4 disabled
    virtual void repaint() {}
    virtual void filebegins(int /*number*/, const QString& /*text*/) {
    }                             ///< lblcurrentfile (from 1), lblprogress
    virtual void yield() {}       ///< once for each file: events may run, no row is open and no file half-way
    virtual void stopenabled() {} ///< stopimport enabled
    /// A message box with an informative text; returns when it is closed.
    virtual void message(const QString& /*text*/, const QString& /*below*/) {}
    virtual void lastfiledone() {} ///< lblprogress emptied; the end message follows
    virtual void showdives() {}    ///< lbltotaldive shown, the dive list unloaded and shown afresh
    virtual void runbroke() {} ///< a run that ended before its time: a list in sight shows the store as it is
    virtual void runends() {}  ///< Frame2 hidden, stopimport disabled; at every end of a run
};

/// One run at a time. `keepimporting` is for the screen to clear: the run then ends after the file in hand.
struct ImportState {
    bool keepimporting = false;
    QString importstamp;
    int divecounter = 0;  ///< how often "Profile" was met in this run
    QStringList imported; ///< identifiers of the dives that this run has stored
    QString unreadable;   ///< the file without version and interval at which the run ended; it waits still
};

enum class ImportEnd {
    AlreadyRunning,
    NoFiles,
    Done,           ///< at the end of the list, or stopped; the end message was shown
    VersionMissing, ///< its message was shown; the file stays in new
    TooManyFields,  ///< its message was shown; what was read is stored and the file copied to corrupt
    Failed,         ///< a fault of disk or store, told in a message; the file in hand stays in new
};

/// Moves the dive files that wait in the folder `new` into the process's store. Every file is first copied to
/// `old` and `dbtxt`, on the disk; other bytes under its name in `old` are kept under another, and none in
/// `dbtxt` are written over, as the run takes a stamp that gives it names of its own. A copy into `dbtxt`
/// that fails is owed (owedprofiles.h); one into `old` ends the run. The rows of one file are one
/// transaction, and the file leaves `new` only when they are committed and they and its copy in `old` read
/// back: whatever kills the program, each dive is in the store, or its file is still in `new`. (Killed
/// between the two, it is in both, and the next run makes a second dive of it.) What was removed stays so
/// before a next run begins. `only`: the file of `new` that is moved, where the others are to go on waiting;
/// empty for all.
ImportEnd importdives(const platform::ProgramFolder& folder, ImportState& state, ImportScreen& screen,
                      const QString& only = {});

/// The file that the user picked by hand is copied into `new` under its name. A file with other contents that
/// waits there under that name is first copied to `old`, under a free name. Returns the message to show, or
/// "" when the import may run.
QString takemanualfile(const platform::ProgramFolder& folder, const QString& path);

} // namespace benthor::divefiles
