#pragma once

#include "exports/wholedive.h"

#include <functional>

namespace benthor::exports {

/// What a run did, in files.
struct DatasetCounts {
    qsizetype written = 0;
    qsizetype unchanged = 0;
    qsizetype removed = 0;
    QStringList withoutSamples; ///< "D0000001: reason": dives that have a row and no file of samples
};

/// Told before each dive how many of how many are done. What it throws ends the run; the files that are
/// written by then stay, each of them whole.
using DatasetProgress = std::function<void(qsizetype done, qsizetype of)>;

/// Writes dives as comma-separated files that engines with Hive partitions read in place:
///
///   DIR/dives/logbook=NAME/year=YYYY/dives.csv          a row a dive
///   DIR/samples/logbook=NAME/year=YYYY/DIVEID.csv       a row a sample
///
/// YYYY is the year of the start, __HIVE_DEFAULT_PARTITION__ for a dive without one. Names are encoded so
/// that no text leads out of the folder. Folders are made where they are missing.
///
/// The dataset holds what was selected in this run and in those before it: a dive of the store that is not
/// selected keeps its file and its row as they are, and one that is no longer in the store loses both. Of the
/// files that stand there only those go that are named as this writes them and begin with its header. A file
/// that holds what it is to hold is not touched.
///
/// `selection`: identifiers; one that the store has not is passed over. ExportError where the disk refuses
/// something; StoreError.
DatasetCounts writeDataset(const QString& dir, const QString& logbookName, DiveReader& reader,
                           const QStringList& selection, const DatasetProgress& progress = {});

/// A text as a part of a path: letters, digits and "-" stand for themselves, every other byte of its UTF-8 as
/// "%" and two hexadecimal digits; "%" alone for an empty text. One that would be longer than 150 characters
/// is cut there, and "%" with a digest of the whole follows.
QString datasetName(const QString& text);

/// The header line of dives.csv, and the line of a dive; both with their line ends.
QByteArray divesCsvHeader();
QByteArray divesCsvLine(const DiveFigures& figures);

} // namespace benthor::exports
