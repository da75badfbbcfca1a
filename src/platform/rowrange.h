#pragma once

namespace benthor::platform {

/// A stretch of the x axis in rows, from `first` at the left edge to `last` at the right one.
struct RowRange {
    double first = 0;
    double last = 1;
    double span() const { return last - first; }
    bool operator==(const RowRange&) const = default;
};

} // namespace benthor::platform
