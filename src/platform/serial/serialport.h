#pragma once

#include "platform/serialline.h"

#include <QObject>
#include <QSerialPort>
#include <optional>

namespace benthor::platform {

/// Bits a second, parity, data bits and stop bits.
struct LineSettings {
    qint32 baud = 9600;
    QSerialPort::Parity parity = QSerialPort::NoParity;
    QSerialPort::DataBits dataBits = QSerialPort::Data8;
    QSerialPort::StopBits stopBits = QSerialPort::OneStop;
    bool operator==(const LineSettings&) const = default;
};

/// "9600,N,8,1"; the parity's letter in either case. Nothing for a text that is no such setting.
std::optional<LineSettings> lineSettings(const QString& text);

/// Why a port is not open.
enum class PortFault { None, Missing, Busy, NoRights, Other };

/// What a user without rights on the device at `path` can do, in words: its group, and the command to join
/// it.
QString rightsHint(int number, const QString& path, const QString& group);

/// The same where another program holds the device.
QString busyHint(int number, const QString& path);

/// A port of this machine. A device that vanishes closes it; it can be opened again when the device is back.
class SerialPort : public QObject, public SerialLine {
    Q_OBJECT

public:
    explicit SerialPort(QObject* parent = nullptr);
    ~SerialPort() override;

    int CommPort() const override { return number_; }
    void setCommPort(int number) override { number_ = number; }
    void setSettings(const QString& settings) override;
    void setInputLen(int bytes) override { inputLen_ = bytes; }
    void setRThreshold(int bytes) override { threshold_ = bytes; }
    bool PortOpen() const override { return port_.isOpen(); }
    bool setPortOpen(bool open) override;
    bool reopen() override;
    QByteArray Input() override;
    qsizetype InBufferCount() const override;
    /// What the system keeps for the line counts as waiting, too: it goes out at the line's own speed, so its
    /// end is known without asking, and no more than told still leaves once a routine has stopped writing. A
    /// cut is told as such until the port is opened again or closed by the program.
    Written Output(QByteArrayView bytes) override;
    void waitForInput(std::chrono::microseconds longest) override;

    /// Of the last opening.
    PortFault fault() const { return fault_; }
    /// What can be done about it; empty where nothing can be said.
    QString faultHint() const { return hint_; }

signals:
    /// The receive event: at least as many bytes wait as the threshold says. Never emitted from within Input,
    /// Output or waitForInput.
    void received();

private:
    bool openPort();
    std::chrono::nanoseconds lineTime(qint64 bytes) const;
    qint64 waiting() const;
    bool handOver();
    void awaitLine();
    bool failed(PortFault fault);
    static bool isOurs(const QString& device);
    void pump();
    void arrived();
    void broken(QSerialPort::SerialPortError error);

    mutable QSerialPort port_;
    QByteArray taken_; ///< read by a wait and not yet by Input
    LineSettings settings_;
    std::chrono::steady_clock::time_point carried_; ///< when the line has carried all that it was given
    QString device_;                                ///< where the port was open last
    int number_ = 0;
    int inputLen_ = 0;
    int threshold_ = 0;
    bool held_ = false; ///< no receive event now
    bool cut_ = false;  ///< the device went away from under the open port
    PortFault fault_ = PortFault::None;
    QString hint_;
};

} // namespace benthor::platform
