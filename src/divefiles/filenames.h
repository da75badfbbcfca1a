#pragma once

#include <QDateTime>
#include <QString>

namespace benthor::divefiles {

/// The mark of one import run, in upper-case hexadecimal: the same in every file name that the run makes.
QString importstamp(const QDateTime& moment);

/// The stamp behind `stamp`, for a run whose own would give its copies names that others bear.
QString nextstamp(const QString& stamp);

/// Name of a file's copy in dbtxt: the stamp and the last 20 characters of the name.
QString copyname(const QString& stamp, const QString& name);

/// The name that the store keeps for the viewer. Up to 29 characters it is that of the copy. A longer one is
/// walked (afresh behind each "\", to the first "."), cut at 34 characters and given ".txt": no file bears
/// that name, and the viewer refuses the dive.
QString dbtxtname(const QString& stamp, const QString& name);

} // namespace benthor::divefiles
