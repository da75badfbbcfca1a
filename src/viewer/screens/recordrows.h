#pragma once

#include "platform/recordset.h"
#include "profile/gaslist.h"

namespace benthor::viewer {

/// All rows of a recordset from its first on, by position; no value is Null.
inline std::vector<profile::GasRow> rowsOf(platform::Recordset& source) {
    std::vector<profile::GasRow> rows;
    if (source.recordCount() == 0) {
        return rows;
    }
    for (source.moveFirst(); !source.eof(); source.moveNext()) {
        profile::GasRow& row = rows.emplace_back();
        for (int position = 0; position < source.fieldCount(); ++position) {
            const platform::Value value = source.value(position);
            row.push_back(value.isNull() ? std::nullopt : std::optional(value.text()));
        }
    }
    return rows;
}

} // namespace benthor::viewer
