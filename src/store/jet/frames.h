#pragma once

#include "store/jet/jetrows.h"

#include <string>

namespace benthor::store {

// The reader's side of the pipe: plain functions over bytes that anybody may have sent. What is not as pipe.h
// says is a StoreError; no length is believed before it is checked.

struct JetFrame {
    char mark = 0;
    std::string_view body;
};

/// The frame that `bytes` begin with; nothing while a part of it is still to come. A mark that is none, and a
/// length beyond what its mark allows, fail at once.
std::optional<JetFrame> firstframe(std::string_view bytes);

JetHead readhead(std::string_view body);
/// A value for each field; they point into `body`.
void readrow(std::string_view body, const std::vector<JetField>& fields, std::vector<JetValue>& row);
std::uint64_t readtableend(std::string_view body);
/// The sentence of a fault, without control characters.
QString readfault(std::string_view body);

/// Puts the frames together into rows, whatever the pieces in which the bytes come.
class FrameStream {
public:
    enum class Event { NeedsMore, Head, Row, TableEnd, End };

    void add(std::string_view bytes);
    /// The next event in the bytes added so far. A fault that the sender tells, and a frame where it has no
    /// place, fail.
    Event next();

    const JetHead& head() const { return head_; }
    /// Of the last event, if it was a row. The bytes last until the next call of either function.
    const std::vector<JetValue>& row() const { return row_; }

private:
    Event take(const JetFrame& frame);
    Event takeTableEnd(std::string_view body);

    std::string buffer_;
    std::size_t begin_ = 0; ///< of what is not yet taken
    JetHead head_;
    bool hasHead_ = false;
    bool ended_ = false;
    std::size_t table_ = 0;  ///< the one in hand
    std::uint64_t rows_ = 0; ///< of it, so far
    std::vector<JetValue> row_;
};

} // namespace benthor::store
