#pragma once

#include <QDateTime>
#include <QString>

namespace benthor::store {

// A device counts time in seconds since the start of 31 December 1991 and writes the count as a decimal text,
// the code.

/// The moment of a code. Invalid when it lies beyond the year 9999.
QDateTime codetodatetime(const QString& code);

/// The same as text, "mmm/dd/yyyy hh:mm:ss"; "" beyond the year 9999. The two differ in the routines that use
/// them, not in their result.
QString startcodetodate(const QString& code);
QString finishcodetodate(const QString& code);

/// The time from the code `start` to the code `finish`: minutes, ":" and seconds without padding. Under a
/// minute there are no minutes: ":7".
QString durationtext(const QString& start, const QString& finish);

/// A depth for the store: blanks taken off, 4 characters padded with "00", 5 with "0".
QString padded(const QString& depth);

} // namespace benthor::store
