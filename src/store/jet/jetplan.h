#pragma once

#include "store/jet/jetrows.h"

namespace benthor::store {

// Where the tables and fields of a Jet file go in a store of ours: by their names, without regard to case.

/// What becomes of a field's values.
enum class JetTurn : std::uint8_t {
    Keep,     ///< texts and numbers as they are
    MaybeDate ///< a text "mmm/dd/yyyy hh:mm:ss" becomes a date; any other stays
};

struct JetTablePlan {
    std::string table;                ///< its name in our store
    std::vector<std::string> prepare; ///< SQL that makes room for it
    std::string insert;               ///< SQL that adds a row, the fields in the order of the Jet file
    std::vector<JetTurn> turns;       ///< one for each field
};

/// A table of our store and its fields.
struct KnownTable {
    std::string name;
    std::vector<std::string> fields;
};

/// Fields that we do not know come behind the ones we know; a table that we do not know comes under its own
/// name. StoreError where two fields have one name.
JetTablePlan plantable(const JetTable& table, const std::vector<KnownTable>& known);

/// Fails with what is missing where the tables are not those of a dive store.
void requiredivetables(const JetHead& head);

/// The texts that make our tables, with as much room for a serial as the older store's field had.
std::string schemafor(const JetHead& head);

/// Whether the two names are one, without regard to the case of ASCII letters.
bool samename(std::string_view one, std::string_view other);

} // namespace benthor::store
