#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <chrono>

namespace benthor::platform {

/// How a write ended.
enum class Written {
    Whole,  ///< all of it is on its way
    Stuck,  ///< the line took nothing for two seconds; what still waited was thrown away, the port is open
    Cut,    ///< the device went away, under this write or before it
    Closed, ///< no port is open: nothing was written
};

/// A serial line as the link works it. Bytes go through as they are, in both directions; none is converted.
class SerialLine {
public:
    virtual ~SerialLine() = default;

    /// Number of the port, from 1. Setting it counts for the next opening.
    virtual int CommPort() const = 0;
    virtual void setCommPort(int number) = 0;
    /// "9600,n,8,1": bits a second, parity (n, e, o), data bits, stop bits.
    virtual void setSettings(const QString& settings) = 0;
    /// Bytes that one Input() takes at most; 0: all.
    virtual void setInputLen(int bytes) = 0;
    /// Bytes that must wait before the receive event comes; 0: it never comes.
    virtual void setRThreshold(int bytes) = 0;

    virtual bool PortOpen() const = 0;
    /// Opens or closes. False when it could not be opened: it then stays closed, at once and without harm.
    virtual bool setPortOpen(bool open) = 0;

    /// Opens again the port that was open last, where it was cut: the same one, not what now has its number.
    /// False as long as it is not back.
    virtual bool reopen() { return setPortOpen(true); }

    /// Takes what has come; empty on a closed port.
    virtual QByteArray Input() = 0;
    virtual qsizetype InBufferCount() const = 0;
    /// Puts the bytes on the line; returns once at most 512 of them still wait. Nothing on a closed port.
    /// Where it does not end whole some of the bytes may have left: whoever has more of them to send ends
    /// there, since the device must not take what follows for what is missing.
    virtual Written Output(QByteArrayView bytes) = 0;

    /// Waits for something to come, for at most that long, without running events.
    virtual void waitForInput(std::chrono::microseconds longest) = 0;
};

} // namespace benthor::platform
