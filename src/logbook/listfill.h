#pragma once

#include "logbook/listeddives.h"
#include "platform/database.h"
#include "platform/programfolder.h"

#include <functional>
#include <vector>

namespace benthor::logbook {

// The second step of filling the list: its dives are checked while they stand on the screen.

/// Who follows the checks. False ends them.
struct CheckWatch {
    /// Behind each dive, in their order, with whether it is good.
    std::function<bool(int number, bool good)> checked;
    /// Now and then before that, while the rows of gases and tissues are read; the number is how far that is.
    std::function<bool(int number)> between;
};

/// Checks all dives. Each faulty one stands in `currentdiveid`, and its messages in `problemtext`, when it is
/// told; its file is copied from `old` to `corrupt`, and a copy that fails is passed over. Behind the last
/// dive `problemtext` is that dive's. False where the checks were ended.
/// `sound`, by number, its first entry unused: the dives that are certainly good. Where it is empty all
/// tables are read for it, and it is kept there.
bool checkdives(platform::Database& database, const platform::ProgramFolder& folder, const ListedDives& dives,
                const CheckWatch& watch, std::vector<bool>& sound);
bool checkdives(platform::Database& database, const platform::ProgramFolder& folder, const ListedDives& dives,
                const CheckWatch& watch);

} // namespace benthor::logbook
