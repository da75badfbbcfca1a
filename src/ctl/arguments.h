#pragma once

#include "ctl/selection.h"
#include "exports/exportdives.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace benthor::ctl {

// What was typed behind `benthorctl`, understood or refused.

/// The formats of the command `export`.
using ExportFormat = exports::DiveFormat;

struct Arguments {
    bool help = false;
    bool version = false;
    bool json = false;
    QString folder;  ///< empty: the program's own
    QString command; ///< empty with `help` and `version` alone

    Selection selection; ///< list, check, export, dataset
    QString id;          ///< show, samples
    QStringList files;   ///< import, verify
    QString path;        ///< dataset, merge
    QString output;      ///< export; "-" is standard output
    QString logbook;     ///< dataset; empty where it was not given
    bool force = false;  ///< export
    bool dryRun = false; ///< merge
    ExportFormat format = ExportFormat::Json;
};

struct Understood {
    Arguments arguments;
    QString error; ///< what is wrong with the words, for a person; empty where nothing is
};

/// `words`: all that stands behind the program's name. The options --folder and --json may stand in front of
/// the command and behind it.
Understood readArguments(const QStringList& words);

/// The commands, in the order in which the help tells of them.
QStringList commandNames();

} // namespace benthor::ctl
