#pragma once

#include "platform/database.h"

#include <QString>

namespace benthor::store {

// The totals of the main screen's panel, in the two steps in which they are shown.

/// How many dives the store has.
int countdives(platform::Database& database);

/// Start of the last dive, "dd/mm/yyyy hh:nn:ss"; "" when no dive has one. A store without dives is a
/// StoreError.
QString lastdive(platform::Database& database);

/// The text of `lbltotaldive`: the count, and the line that is added to it.
QString counttext(int dives);
QString lastdivetext(const QString& lastdive);

} // namespace benthor::store
