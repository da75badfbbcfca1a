#pragma once

#include "platform/query.h"
#include "store/jet/pipe.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace benthor::store {

/// A field of a table in a Jet file.
struct JetField {
    std::string name; ///< UTF-8
    pipe::Kind kind = pipe::Kind::Text;
    std::uint32_t size = 0; ///< most characters of a text; 0 where nothing limits it
};

struct JetTable {
    std::string name;       ///< UTF-8
    std::uint64_t rows = 0; ///< as the table's own definition page counts them
    std::vector<JetField> fields;
};

struct JetHead {
    std::vector<JetTable> tables;
    std::vector<std::string> elsewhere; ///< tables that are named in the file and lie in another
    std::uint64_t rows() const;         ///< of all tables together
};

/// Null, or the bytes of a value as its field's kind says (pipe.h).
using JetValue = std::optional<std::string_view>;

/// The user has stopped it; nothing was changed.
class JetStopped : public platform::StoreError {
public:
    JetStopped()
        : StoreError(QStringLiteral("It was stopped.")) {}
};

/// The rows of a Jet file, table by table. Every fault is a StoreError that says what is wrong.
class JetRowSource {
public:
    JetRowSource() = default;
    virtual ~JetRowSource() = default;
    JetRowSource(const JetRowSource&) = delete;
    JetRowSource& operator=(const JetRowSource&) = delete;

    /// The tables; the first of them is then in hand.
    virtual const JetHead& head() = 0;
    /// The next row of the table in hand, a value for each field; the bytes last until the next call. False
    /// behind its last row: the next table of the head is then in hand.
    virtual bool nextRow(std::vector<JetValue>& row) = 0;
    /// Behind the last table: whether the source came to a good end. Fails where it did not.
    virtual void finish() = 0;
};

} // namespace benthor::store
