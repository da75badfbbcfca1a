#pragma once

#include "platform/database.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>
#include <span>
#include <string_view>

namespace benthor::divefiles {

// The checks of one dive's rows. A dive that came over an unreliable link is stored all the same; these say
// what is wrong with it.

/// The messages for the rows of main, gas or tissue of one dive, from the current row to the last: the first
/// fault of each row, or the message for no rows at all.
QStringList mainfaults(platform::Recordset& rows);
QStringList gasfaults(platform::Recordset& rows);
QStringList tissuefaults(platform::Recordset& rows);

/// A field as it lies in the store, UTF-8; nothing for Null.
using FieldText = std::optional<std::string_view>;

/// Whether none of these fields of one row, from position 0 on, has a fault.
bool mainrowisgood(std::span<const FieldText> fields);
bool gasrowisgood(std::span<const FieldText> fields);
bool tissuerowisgood(std::span<const FieldText> fields);
/// Fields behind these positions have no test.
inline constexpr int kTestedMainFields = 17;
inline constexpr int kTestedGasFields = 6;
inline constexpr int kTestedTissueFields = 4;

/// The validators: each opens the rows of `currentdiveid` (where that is empty, of the first dive of
/// `divesystem`) in the process's main recordset and appends its messages to `problemtext`, each behind a CR.
/// `database` is the store that is looked at. Callers empty `problemtext` first.
void checkmain(platform::Database& database);
void checkgas(platform::Database& database);
void checktissue(platform::Database& database);

/// Empties `problemtext` and runs the three in their order; an empty `problemtext` afterwards means a good
/// dive.
void checkdive(platform::Database& database);

/// Whether a dive with this `problemtext` is shown by the viewer, which deals with faults of gas and tissue
/// rows.
bool diveopens(QStringView problemtext);

} // namespace benthor::divefiles
