#pragma once

#include "platform/serialline.h"

#include <QString>
#include <chrono>

namespace benthor::firmware {

/// What a reprogramming session asks of the machine and of the screens around it. The firmware screen
/// answers; a test may.
class ReprogHost {
public:
    virtual ~ReprogHost() = default;

    virtual platform::SerialLine& MSComm1() = 0;
    /// The number of the port that is remembered, as a text; empty when none is.
    virtual QString rememberedPort() = 0;
    virtual void rememberPort(const QString& number) = 0;
    /// What the user can do where a port is there and may not be opened; empty where nothing is known.
    virtual QString portHint() = 0;

    virtual void message(const QString& text, const QString& title) = 0;
    virtual bool confirm(const QString& text, const QString& title) = 0;
    /// Path of the file, or empty when cancelled. `filter` is "Words (*.txt)|*.txt|All Files (*.*)|*.*",
    /// `place` a folder or a file that is suggested.
    virtual QString openFile(const QString& filter, const QString& place) = 0;
    virtual QString saveFile(const QString& filter, const QString& name) = 0;

    /// Paints what has changed; no input and no tick is served. False when the screen was closed: the routine
    /// then ends, and nothing more is written to the line.
    virtual bool repaint() = 0;
    /// The same for so long.
    virtual bool pause(std::chrono::milliseconds time) = 0;

    virtual bool blinkVisible() = 0;
    virtual void showBlink() = 0;
    virtual void hideBlink() = 0;
    virtual void unloadBlink() = 0;
};

} // namespace benthor::firmware
