#pragma once

#include "logbook/diverows.h"

#include <QByteArray>
#include <QCryptographicHash>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace benthor::logbook {

/// What rows hold, as a few bytes: equal for rows that hold the same, whatever the dive's number and the
/// rows' numbers. Fields that are Null do not count: a store that is given more of them holds the same as
/// before. Row by row, in the order in which the rows count.
class RowsDigest {
public:
    void add(const QByteArray& table, const platform::StoredRow& row);
    void add(const QByteArray& table, const platform::StoredCells& row);
    /// Of the rows so far; the next row begins anew.
    QByteArray take();
    /// Whether that is `digest`, which may be one of the first form.
    bool takeIs(const QByteArray& digest);

private:
    template <class Row> void addRow(const QByteArray& table, const Row& row);
    /// A field that counts.
    struct Field {
        size_t place = 0; ///< in the row
        QByteArray name;
        std::string head; ///< the name as it stands before the value
    };
    /// The fields of a table's rows.
    struct Form {
        std::vector<QByteArray> names; ///< as they stand in the row
        std::vector<Field> order;      ///< as they count
    };
    QByteArray hashed(QCryptographicHash::Algorithm algorithm) const;
    template <class Row> const Form& formOf(const QByteArray& table, const Row& row);

    std::string bytes_;
    std::map<QByteArray, Form> forms_;
};

/// Reads what dives hold, one dive behind the other, without a copy of their rows.
class DiveDigests {
public:
    explicit DiveDigests(platform::StoredRows& store);

    struct Found {
        bool hasMain = false;
        DiveKey key;
        QByteArray digest; ///< digestof() of the whole dive's rows
    };
    Found of(const QString& diveid);

private:
    std::vector<std::pair<QByteArray, platform::StoredStatement>> tables_;
    RowsDigest digest_;
};

} // namespace benthor::logbook
