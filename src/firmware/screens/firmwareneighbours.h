#pragma once

#include <QByteArray>
#include <QString>

namespace benthor::firmware {

/// What the firmware screen asks of the other screens. The house answers; a test may.
class FirmwareNeighbours {
public:
    virtual ~FirmwareNeighbours() = default;

    /// The main screen, loaded again; this one goes.
    virtual void leaveToMain() = 0;
    virtual void showRunningPrograms() = 0;

    /// The image chosen last, for as long as the program runs.
    virtual QString lastImage() = 0;
    virtual void setLastImage(const QString& path) = 0;
    /// The image that the screen is opened for from outside, once; empty where the user opens it.
    virtual QString takeGivenImage() { return {}; }

    virtual bool blinkVisible() = 0;
    virtual void showBlink() = 0;
    virtual void hideBlink() = 0;
    virtual void unloadBlink() = 0;

    /// A simulated device that waits to be reprogrammed, on a port of its own, at that speed of the line; its
    /// type is "kd" or else "rb". Returns the port's number, or 0 with the reason in `error`.
    virtual int startRehearsal(bool kd, int baud, QString& error) = 0;
    /// What that device reports once it holds an image: four hexadecimal digits; empty: a value of its own.
    virtual void rehearsalReports(const QByteArray& checkvalue) = 0;
    virtual void stopRehearsal() = 0;
};

} // namespace benthor::firmware
