#pragma once

#include "logbook/listeddives.h"
#include "logbook/publish.h"

#include <array>
#include <string>
#include <unordered_map>

namespace benthor::logbook {

/// Makes the lines of a list's spreadsheet from the dives as they lie in memory, byte for byte what
/// spreadsheetrow() makes of the cells as they are shown. A value that many dives have is made into its text
/// once.
class SheetLines {
public:
    /// The dives outlive this. `depthunit`: as celltext() knows it.
    SheetLines(const ListedDives& dives, const QString& depthunit);

    /// Appends the line of a dive, in UTF-8.
    void add(int number, std::string& lines);

private:
    void addCell(size_t column, const divefiles::FieldText& field, std::string& lines);
    bool addMoment(std::string_view text, std::string& lines) const;

    const ListedDives& dives_;
    QString depthunit_;
    std::array<std::string, 12> months_; ///< as a moment's text begins in each
    std::array<std::unordered_map<std::string, std::string>, kSheetColumns>
        made_; ///< by what lies in the store
};

} // namespace benthor::logbook
