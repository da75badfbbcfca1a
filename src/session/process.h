#pragma once

#include "platform/database.h"

#include <QString>

namespace benthor {

/// The process-wide values: one set for the process, read and written by every room. All the rest of the
/// program's state belongs to a screen or to a routine.
struct Process {
    QString currentdiveid; ///< identifier of the dive in hand, "D" and 7 digits, or empty
    QString problemtext;   ///< messages of the validators, each behind a CR
    QString depthunit;     ///< "Feet" or "metre": mirror of the table Display
    QString unitoverride;  ///< unit chosen beside the table in this run; empty at start
    QString divesystem;    ///< system whose first dive stands in for an empty identifier
    QString producttype = QStringLiteral("OTHER"); ///< type of the device, once it is known
    QString screenmode;                            ///< "Dive", "Command" or empty: face of the link screen
    QString storepath;         ///< store chosen for the dive list; empty means the default
    QString storecopy;         ///< what is read in its stead, where it is an older one; else empty
    QString uploadtext;        ///< body of an upload to the device
    QString processnames;      ///< a line for each program that the list of running ones has read
    int deviceconnected = 0;   ///< 1 while the link's caption is exactly "Connected"
    int servedrow = 0;         ///< row of the device's directory that is being served
    bool importing = false;    ///< an import runs; the main screen's timers pause
    bool diveviewopen = false; ///< the dive screen is open
    bool linkidle = true;      ///< no download runs
    bool firststart = false;   ///< the main screen has looked for the store once

    // One handle of each kind, shared by all routines: a query that one of them opens replaces the rows of
    // the last, and whoever reads a recordset sees what ran last. So no routine holds its rows across a call
    // that may run a query.
    platform::Database database;        ///< the open store
    platform::Recordset mainrecordset;  ///< rows of the last query for rows
    platform::Recordset countrecordset; ///< row of the last query for a count
    QString querytext;                  ///< text of the last query
};

Process& process();

} // namespace benthor
