#pragma once

#include "logbook/listeddives.h"

#include <functional>
#include <vector>

namespace benthor::logbook {

/// Which of the dives are good, found in one pass over the tables of gases and tissues. True is certain: the
/// validators would find no fault. False is not: the dive has a fault, or its identifier or its rows are of a
/// kind that only the validators can judge. `goOn` is asked now and then with the number of the dive that the
/// pass is at; false ends it. `sound` is by number, its first entry unused. False where it was ended.
bool findsounddives(platform::Database& database, const ListedDives& dives,
                    const std::function<bool(int number)>& goOn, std::vector<bool>& sound);

} // namespace benthor::logbook
