#pragma once

#include "platform/serialline.h"

#include <QString>
#include <functional>
#include <memory>

class QObject;

namespace benthor::link {

/// Where the link screen gets its serial lines from.
struct LinkLines {
    /// A closed line. `received` is called at each receive event of it, outside any other event. `owner`
    /// outlives the line.
    std::function<std::unique_ptr<platform::SerialLine>(QObject* owner, std::function<void()> received)> make;
    /// What the user can do where a port is there and may not be opened; empty when all is well. May be null.
    std::function<QString()> portHint;

    /// A line from `make`; one that never opens where there is none.
    std::unique_ptr<platform::SerialLine> line(QObject* owner, std::function<void()> received = {}) const;
};

} // namespace benthor::link
