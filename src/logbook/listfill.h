#pragma once

#include "platform/database.h"
#include "platform/programfolder.h"

#include <QStringList>

#include <functional>
#include <vector>

namespace benthor::logbook {

// Filling the list in two steps, so that it stands on the screen while its dives are still being checked.

/// The dives of a store as the list shows them. Columns are display columns.
struct ListedDives {
    QStringList headers;
    std::vector<int> widths;   ///< in twips, 15 to a pixel; 0 is hidden
    std::vector<bool> figures; ///< whether the column holds numbers
    std::vector<QStringList> rows;
};

/// Reads all dives in the order of a sort number; checks none. A failing store is a StoreError.
ListedDives readdives(platform::Database& database, int sortnumber, QStringView depthunit,
                      bool downward = false);

/// A dive of the list.
struct ListedDive {
    QString diveid;
    QString location;
};

/// Checks the dives 1 to `count` one after the other. Each, as `dive` gives it, stands in `currentdiveid`,
/// and its messages in `problemtext`; the file of a faulty one is copied from `old` to `corrupt`, and a copy
/// that fails is passed over. Behind each comes `checked` with whether it is good; false ends the checks.
/// False where they were ended.
bool checkdives(platform::Database& database, const platform::ProgramFolder& folder, int count,
                const std::function<ListedDive(int number)>& dive,
                const std::function<bool(int number, bool good)>& checked);

} // namespace benthor::logbook
