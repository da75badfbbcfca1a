#pragma once

#include "link/setuplink.h"
#include "platform/serialline.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace benthor::link {

/// What the link's logic asks of the machine and of the screens around it. The link screen answers; a test
/// may.
class LinkHost {
public:
    virtual ~LinkHost() = default;

    virtual platform::SerialLine& MSComm1() = 0;
    /// Search port, 0 to 31.
    virtual platform::SerialLine& MSComm2(int index) = 0;

    /// `below`: what stands under the text in smaller words.
    virtual void message(const QString& text, const QString& below = {}) = 0;
    virtual bool confirm(const QString& text, const QString& title) = 0;
    /// Path of the file, or empty when cancelled. `filter` is "Words (*.txt)|*.txt|All Files (*.*)|*.*".
    virtual QString openFile(const QString& filter, const QString& name) = 0;
    virtual QString saveFile(const QString& filter, const QString& name) = 0;

    /// Starts a program that lives on by itself, with `folder` as its working folder. False when it does not
    /// start.
    virtual bool startProgram(const QString& program, const QStringList& arguments,
                              const QString& folder) = 0;

    /// Paints what has changed; no input and no tick is served. False when the screen was closed: the routine
    /// then ends, and nothing more is written to the line.
    virtual bool repaint() = 0;
    virtual void setHourglass(bool on) = 0;

    /// The hint goes into the main screen's panel as well.
    virtual void hintOnMain(const QString& text) = 0;
    virtual bool tipsShowing() = 0;
    virtual void showTips() = 0;
    /// The main screen's entry for reprogramming.
    virtual void openFirmware() = 0;
    /// The device's setup has come.
    virtual void setupReceived(const QByteArray& text) = 0;
    /// Whether this may leave as the body of a setup. Asked before the first byte of it, or of its command,
    /// is written; where it may not, the user has been told why, and the gas screen is in front.
    virtual bool setupMayGo(const SetupBody& body) = 0;
    /// The update of the gas screen, which sends what that screen shows.
    virtual void updateSetup() = 0;
    /// The main screen's import entry.
    virtual void runImport() = 0;
    /// Unloads the link screen, brings the main screen forward and runs its import entry.
    virtual void leaveAndImport() = 0;
};

} // namespace benthor::link
