#pragma once

#include "logbook/actrecorder.h"
#include "platform/database.h"
#include "platform/programfolder.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <array>
#include <vector>

namespace benthor::logbook {

// What the dive list shows and does, without its grid. A column's number is its field's position in main
// until the columns are moved; the display column is its place afterwards.

// The sort numbers: by what the dives are ordered.
inline constexpr int kSortByIdentifier = 0;
inline constexpr int kSortByName = 1; ///< `location`
inline constexpr int kSortByMaxDepth = 2;
inline constexpr int kSortByDate = 3;
inline constexpr int kSortBySite = 4;

/// Of the first of "s", "m", "l", "d" that the key holds; by identifier where it holds none.
int sortnumber(QStringView sortkey);

/// A key that stands for the order of the dives' identifiers.
inline QString identifierkey() {
    return QStringLiteral("i");
}

/// All dives in the order of a sort number, the last one first where that is wanted.
platform::Query listquery(int sortnumber, bool downward = false);

/// The words of such a query from "ORDER BY" on.
std::string orderof(const platform::Query& listquery);

/// Of those dives the one that began last; empty where the store has none of them.
QString newestof(platform::Database& database, const QStringList& diveids);

/// The key kept in dsort.txt between runs; "" when there is none.
QString readsortkey(const platform::ProgramFolder& folder);
platform::FileResult writesortkey(const platform::ProgramFolder& folder, const QString& sortkey);

/// Width of the column at a field position, in twips (15 to a pixel); 0 is hidden.
int columnwidth(int position);

/// Header of the column of a field.
QString headertext(const QString& fieldname);

/// What a cell shows. `depthunit`: "Feet", anything else is metres.
QString celltext(int position, const platform::Value& value, QStringView depthunit);

/// Field positions in the order shown, for a list of `columns` columns.
std::vector<int> columnorder(int columns);

/// A box of the summary strip and the display column that fills it.
struct StripBox {
    int displaycolumn;
    const char* name;
};
inline constexpr std::array<StripBox, 9> kStripBoxes{{{0, "txtdiveid"},
                                                      {1, "txtduration"},
                                                      {2, "txtmaxdepth"},
                                                      {3, "txttimedown"},
                                                      {4, "txtlocation"},
                                                      {6, "txtstackhour"},
                                                      {17, "txtinterval"},
                                                      {18, "txtotu"},
                                                      {22, "txtatmospheric"}}};

/// Removes the rows of one dive: gas, tissue, main.
void deletedive(platform::Database& database, const QString& diveid);

/// Removes the rows whose identifier is literally "*".
void deletestarrows(platform::Database& database);

/// Deletes the dives of the selected rows: each with a file of its name that waits in `new`, then the counter
/// is put right, then the star rows go. The files in `old` and `dbtxt` stay. One dive is one transaction, and
/// all of them are one act that can be taken back; the record says why where they cannot. StoreError where a
/// dive cannot be deleted: those before it are, and can be taken back.
ActRecord deletedives(platform::Database& database, const platform::ProgramFolder& folder,
                      const QStringList& diveids);

/// Behind a delete: removes the file of that name that waits in `new`, once its bytes stand in `old`.
void takewaitingfile(const platform::ProgramFolder& folder, const QString& name);

} // namespace benthor::logbook
