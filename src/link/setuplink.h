#pragma once

#include "link/linkstatus.h"

#include <QByteArray>

namespace benthor::link {

/// What the link is about to send as the body of a setup, without the ESC that the sending puts behind it.
struct SetupBody {
    QString text;
    bool fromFile = false; ///< of a file that the user chose for sending; else the text shown for sending
};

/// What the link offers to the gas screen beside its status.
class SetupLink : public LinkStatus {
public:
    /// The receive view, `Text4`.
    virtual QByteArray receivedText() const = 0;
    /// Whether `Timer2` is enabled: the directory or the setup is being waited for.
    virtual bool waitsForDirectory() const = 0;
    /// `Text7`, the text shown for sending.
    virtual void setTextToSend(const QString& text) = 0;
    /// Selects the fields of the command Setup and shows the face for sending.
    virtual void prepareSetup() = 0;
    /// Sends the process's `uploadtext` as a setup, in one write; nothing while the port is closed.
    virtual void sendSetup() = 0;
    /// Asks the device for its directory and setup anew.
    virtual void refreshDirectory() = 0;
};

} // namespace benthor::link
