#pragma once

#include "platform/database.h"
#include "platform/programfolder.h"

#include <QStringList>

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

/// Checks the dive of a row, leaving it in `currentdiveid` and its messages in `problemtext`. The file of a
/// faulty one is copied from `old` to `corrupt`; a copy that fails is passed over. False for a faulty dive.
bool checklisteddive(platform::Database& database, const platform::ProgramFolder& folder,
                     const QString& diveid, const QString& location);

/// One dive of the list.
struct ListRow {
    QStringList cells;   ///< by display column
    QString problemtext; ///< empty for a good dive; any other is shown red
};

struct DiveList {
    QStringList headers;     ///< by display column
    std::vector<int> widths; ///< by display column, in twips
    std::vector<ListRow> rows;
    QString
        problemtext; ///< of the last faulty dive, as it stands in Label16 behind the fill; empty without one
};

/// Reads and checks all dives. The file of a faulty one is copied from `old` to `corrupt`; a copy that fails
/// is passed over. No rows: the store is empty. Leaves `currentdiveid` as it was, and `problemtext` as the
/// last check left it.
DiveList filldivelist(platform::Database& database, const platform::ProgramFolder& folder, int sortnumber,
                      QStringView depthunit);

} // namespace benthor::logbook
