#pragma once

#include "divefiles/validators.h"
#include "platform/storedrows.h"

#include <QStringList>

#include <memory>
#include <span>
#include <vector>

namespace benthor::logbook {

// The dives of a store as the list shows them: held as they lie in the store, one text behind the other, and
// turned into the text of a cell when that is asked for.

/// The columns of the list. All of it by display column.
struct ListColumns {
    QStringList headers;
    std::vector<int> widths;   ///< in twips, 15 to a pixel; 0 is hidden
    std::vector<bool> figures; ///< whether the column holds numbers
};

/// Takes the entries of those numbers out, which ascend; the first entry has the number `first`.
template <class Entry>
void removenumbers(std::vector<Entry>& entries, const std::vector<int>& numbers, int first) {
    auto gone = numbers.begin();
    size_t kept = 0;
    for (size_t at = 0; at < entries.size(); ++at) {
        if (gone != numbers.end() && *gone == static_cast<int>(at) + first) {
            ++gone;
        } else {
            entries[kept++] = entries[at];
        }
    }
    entries.resize(kept);
}

/// Numbers count from 1, as the rows of the list.
class ListedDives {
public:
    const ListColumns& columns() const { return columns_; }
    int count() const { return static_cast<int>(places_.size()); }
    /// Whether the dive has been read by now; until then its cells are empty.
    bool isRead(int number) const { return number >= 1 && number <= count() && place(number).block >= 0; }

    /// What a cell shows. `depthunit`: "Feet", anything else is metres.
    QString cell(int number, int displaycolumn, QStringView depthunit) const;
    QString diveid(int number) const;
    QString location(int number) const;
    /// The field at a position of `main`, as it lies in the store.
    divefiles::FieldText field(int number, int position) const;
    /// The field position that a display column shows.
    int position(int displaycolumn) const { return order_[static_cast<size_t>(displaycolumn)]; }
    /// The fields of the first display columns, as many as there is room for, in one pass over the row.
    /// Returns how many there are; those of a dive that has not been read are Null.
    size_t takeFields(int number, std::span<divefiles::FieldText> fields) const;
    /// Says that a dive's fields are wanted soon. Rows lie as they were read, which need not be their order:
    /// whoever goes through all of them would wait for the memory at each.
    void fetch(int number) const;
    /// Whether the dive's row of `main` has no fault.
    bool mainIsGood(int number) const;
    /// Whether its identifier lies in the store as a text, in the field of that name.
    bool hasTextIdentifier(int number) const;

    /// Takes over what the store has of that dive by now; its place stays. Returns its number; several where
    /// rows share the identifier, nothing where the store has none. A failing store is a StoreError.
    std::vector<int> takeText(platform::Database& database, const QString& diveid);

    /// Numbers of the dives of those identifiers, without regard to the case of plain letters; they ascend.
    std::vector<int> numbersOf(const QStringList& diveids) const;
    /// The number of the dive's row in the store.
    qint64 rowNumber(int number) const { return place(number).row; }
    /// Takes dives out; their numbers ascend.
    void remove(const std::vector<int>& numbers);
    /// Puts a row of the store in; those from that number on move up.
    void insert(int number, const platform::StoredCells& row, qint64 rowNumber);

private:
    friend class DiveReading;
    struct Place {
        qint64 row = 0;
        int block = -1;
        unsigned identifier = 0; // hashed, so that one can be looked for without a look at each row
        unsigned offset : 31 = 0;
        bool textIdentifier : 1 = false;
    };
    const Place& place(int number) const { return places_[static_cast<size_t>(number) - 1]; }
    void keep(int number, const platform::StoredCells& row, qint64 rowNumber);
    void setColumns(platform::Database& database);
    const char* start(const Place& place) const;

    ListColumns columns_;
    std::vector<int> order_;          // field position of each display column
    std::vector<int> columnOf_;       // the display column of each field position
    std::vector<std::string> blocks_; // of each row all fields, each behind its length
    std::vector<Place> places_;       // by number
    size_t bytes_ = 0;
};

/// Reads the dives of a store in steps, all of them as they stood at the first. Failures are a StoreError.
class DiveReading {
public:
    /// Reads how many there are, and the columns. What is read goes into `dives`, which outlives this.
    DiveReading(platform::Database& database, int sortnumber, bool downward, ListedDives& dives);
    ~DiveReading();
    DiveReading(const DiveReading&) = delete;
    DiveReading& operator=(const DiveReading&) = delete;

    /// The first of their order.
    void readFirst(int count);
    /// Some more, wherever they stand in the order. False when all are read.
    bool readMore();

private:
    struct Rank {
        qint64 row;
        int number;
    };
    void readOrder();

    platform::SteadyReading steady_;
    platform::StoredRows rows_;
    std::string order_; // the query's own words for it
    ListedDives& dives_;
    std::vector<Rank> ranks_; // by row
    size_t next_ = 0;
    std::unique_ptr<platform::StoredStatement> batch_;
};

/// All of them at once.
ListedDives readdives(platform::Database& database, int sortnumber, bool downward = false);

} // namespace benthor::logbook
