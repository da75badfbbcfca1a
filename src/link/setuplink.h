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
    /// Whether the device has said that its firmware is of the third version: its setup cannot be read.
    virtual bool hidesSetup() const = 0;
    /// Whether a directory has come and no setup since: what was reported before may be another device's.
    virtual bool owesSetup() const = 0;
    /// `Text7`, the text shown for sending.
    virtual void setTextToSend(const QString& text) = 0;
    /// Selects the fields of the command Setup and shows the face for sending.
    virtual void prepareSetup() = 0;
    /// Sends the process's `uploadtext` as a setup, in one write; nothing while the port is closed or a dive
    /// comes. False where it did not leave whole.
    virtual bool sendSetup() = 0;
    /// Whether a run is under way that nothing must be asked beside: the link's own Refresh rests as well.
    virtual bool refreshRests() const = 0;
    /// Asks the device for its directory and setup anew. Nothing while that rests.
    virtual void refreshDirectory() = 0;
};

} // namespace benthor::link
