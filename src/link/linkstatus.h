#pragma once

#include "platform/toldcolour.h"

#include <QString>

namespace benthor::link {

/// What the link offers to the rooms above it: how the conversation with the device stands.
class LinkStatus {
public:
    virtual ~LinkStatus();

    /// Text of `AFLabel3`.
    virtual QString caption() const = 0;
    virtual platform::ToldColour captionColour() const = 0;
    /// Whether the link screen can be seen. It may well be loaded and hidden.
    virtual bool isOnScreen() const = 0;
    /// Whether `TXTWait(1)` is enabled: a download runs.
    virtual bool isDownloading() const = 0;
    /// Closes the working port and all search ports that are open.
    virtual void closePorts() = 0;
};

} // namespace benthor::link
