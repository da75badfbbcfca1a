#include "platform/serial/serialport.h"
#include "platform/serial/portnames.h"

#include <QDeadlineTimer>
#include <QFileInfo>
#include <QScopedValueRollback>
#include <QStringList>
#include <cerrno>
#include <ctime>
#include <poll.h>
#include <sys/ioctl.h>
#include <thread>
#include <unistd.h>

namespace benthor::platform {

using namespace std::chrono_literals;

namespace {

constexpr qint64 kMostWaiting = 512; ///< bytes that Output() leaves behind
constexpr auto kStuck = 2s;
constexpr auto kTurn = 1ms; ///< between two looks at how much a full line has taken

bool hungUp(int handle) {
    pollfd state{handle, 0, 0};
    return ::poll(&state, 1, 0) > 0 && (state.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

} // namespace

std::optional<LineSettings> lineSettings(const QString& text) {
    const QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() != 4) {
        return std::nullopt;
    }
    LineSettings settings;
    bool number = false;
    settings.baud = parts[0].toInt(&number);
    const QString parity = parts[1].toLower();
    if (!number || settings.baud <= 0 || parity.size() != 1 || !QStringLiteral("neo").contains(parity)) {
        return std::nullopt;
    }
    settings.parity = parity == QLatin1String("e")   ? QSerialPort::EvenParity
                      : parity == QLatin1String("o") ? QSerialPort::OddParity
                                                     : QSerialPort::NoParity;
    const int data = parts[2].toInt();
    if (data < QSerialPort::Data5 || data > QSerialPort::Data8) {
        return std::nullopt;
    }
    settings.dataBits = static_cast<QSerialPort::DataBits>(data);
    if (parts[3] == QLatin1String("2")) {
        settings.stopBits = QSerialPort::TwoStop;
    } else if (parts[3] != QLatin1String("1")) {
        return std::nullopt;
    }
    return settings;
}

QString rightsHint(int number, const QString& path, const QString& group) {
    return QStringLiteral("Port %1 (%2) may be used by the group %3 only. To join it: "
                          "sudo usermod -a -G %3 $USER, then log in anew.")
        .arg(number)
        .arg(path, group);
}

QString busyHint(int number, const QString& path) {
    return QStringLiteral("Port %1 (%2) is held by another program. Close that program.")
        .arg(number)
        .arg(path);
}

namespace {

/// All ports of this process, so that one is told from another program's.
QList<const SerialPort*>& allPorts() {
    static QList<const SerialPort*> ports;
    return ports;
}

} // namespace

SerialPort::SerialPort(QObject* parent)
    : QObject(parent) {
    allPorts().append(this);
    connect(&port_, &QSerialPort::readyRead, this, &SerialPort::arrived);
    connect(&port_, &QSerialPort::errorOccurred, this, &SerialPort::broken);
}

SerialPort::~SerialPort() {
    allPorts().removeOne(this);
    port_.disconnect(this);
}

void SerialPort::setSettings(const QString& settings) {
    settings_ = lineSettings(settings).value_or(settings_);
    if (port_.isOpen()) {
        port_.setBaudRate(settings_.baud);
        port_.setParity(settings_.parity);
        port_.setDataBits(settings_.dataBits);
        port_.setStopBits(settings_.stopBits);
    }
}

bool SerialPort::failed(PortFault fault) {
    fault_ = fault;
    port_.close();
    return false;
}

bool SerialPort::setPortOpen(bool open) {
    cut_ = cut_ && open;
    if (open == port_.isOpen()) {
        return true;
    }
    taken_.clear();
    carried_ = {};
    if (!open) {
        port_.close();
        return true;
    }
    return openPort();
}

/// Two numbers may lead to one device.
bool SerialPort::isOurs(const QString& device) {
    return std::ranges::any_of(
        allPorts(), [&](const SerialPort* port) { return port->port_.isOpen() && port->device_ == device; });
}

bool SerialPort::openPort() {
    fault_ = PortFault::None;
    hint_.clear();
    const QString path = portPath(number_);
    // The device itself, not a link to it: by its path others are kept from opening it a second time.
    const QString device = QFileInfo(path).canonicalFilePath();
    if (device.isEmpty()) {
        return failed(PortFault::Missing);
    }
    if (::access(QFile::encodeName(device).constData(), R_OK | W_OK) != 0 && errno == EACCES) {
        hint_ = rightsHint(number_, device, QFileInfo(device).group());
        return failed(PortFault::NoRights);
    }
    port_.setPortName(device);
    port_.setBaudRate(settings_.baud);
    port_.setParity(settings_.parity);
    port_.setDataBits(settings_.dataBits);
    port_.setStopBits(settings_.stopBits);
    if (!port_.open(QIODevice::ReadWrite)) {
        switch (port_.error()) {
        case QSerialPort::DeviceNotFoundError:
            return failed(PortFault::Missing);
        case QSerialPort::PermissionError: // rights are there, so another holds it
            hint_ = isOurs(device) ? QString() : busyHint(number_, device);
            return failed(PortFault::Busy);
        default:
            return failed(PortFault::Other);
        }
    }
    cut_ = false;
    device_ = device;
    return true;
}

/// A number counts the ports of the moment: while the adapter is out another one may stand at it. A link
/// names one and the same, wherever that turns up again.
bool SerialPort::reopen() {
    if (!port_.isOpen() && !isLinkedPort(number_) &&
        QFileInfo(portPath(number_)).canonicalFilePath() != device_) {
        return false;
    }
    return setPortOpen(true);
}

QByteArray SerialPort::Input() {
    if (!port_.isOpen()) {
        return {};
    }
    pump();
    const qsizetype most = inputLen_ > 0 ? inputLen_ : taken_.size();
    QByteArray bytes = taken_.first(std::min(most, taken_.size()));
    taken_.remove(0, bytes.size());
    return bytes;
}

qsizetype SerialPort::InBufferCount() const {
    return port_.isOpen() ? taken_.size() + port_.bytesAvailable() : 0;
}

/// Takes over what the port has, without a receive event.
void SerialPort::pump() {
    const QScopedValueRollback<bool> hold(held_, true);
    while (port_.isOpen() && port_.waitForReadyRead(0)) {
        taken_ += port_.readAll();
    }
    if (port_.isOpen()) {
        taken_ += port_.readAll();
    }
}

std::chrono::nanoseconds SerialPort::lineTime(qint64 bytes) const {
    constexpr qint64 kNanoseconds = 1'000'000'000;
    const int parity = settings_.parity == QSerialPort::NoParity ? 0 : 1;
    const int stop = settings_.stopBits == QSerialPort::TwoStop ? 2 : 1;
    const qint64 bits = bytes * (1 + settings_.dataBits + parity + stop);
    return std::chrono::nanoseconds(bits * kNanoseconds / settings_.baud);
}

/// Until no more than so many bytes are on their way. What comes meanwhile is taken.
void SerialPort::awaitLine() {
    const auto latest = carried_ - lineTime(kMostWaiting);
    for (auto now = std::chrono::steady_clock::now(); port_.isOpen() && now < latest;
         now = std::chrono::steady_clock::now()) {
        const auto left = latest - now;
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(left);
        const timespec time{seconds.count(), (left - seconds).count()};
        pollfd coming{port_.handle(), POLLIN, 0};
        if (::ppoll(&coming, 1, &time, nullptr) > 0) {
            pump();
        }
    }
}

/// What has not left yet, as far as the system tells it.
qint64 SerialPort::waiting() const {
    int inSystem = 0;
    return port_.bytesToWrite() + (::ioctl(port_.handle(), TIOCOUTQ, &inSystem) == 0 ? inSystem : 0);
}

/// Until the system has taken all of it and no more than told waits there. False when nothing left for so
/// long. What comes meanwhile is taken.
bool SerialPort::handOver() {
    port_.flush(); // a short text leaves now, not at the next turn of the event loop
    QDeadlineTimer stuck(kStuck);
    for (qint64 before = waiting(); port_.isOpen();) {
        const qint64 left = waiting();
        if (port_.bytesToWrite() == 0 && left <= kMostWaiting) {
            return true;
        }
        if (left < before) {
            stuck.setRemainingTime(kStuck);
        } else if (stuck.hasExpired()) {
            return false;
        }
        before = left;
        // Not a wait for room: a full line may tell of some and then take nothing after all.
        std::this_thread::sleep_for(kTurn);
        pump();
        if (port_.isOpen()) {
            port_.flush();
        }
    }
    return true;
}

Written SerialPort::Output(QByteArrayView bytes) {
    const QScopedValueRollback<bool> hold(held_, true);
    if (!port_.isOpen()) {
        return cut_ ? Written::Cut : Written::Closed;
    }
    port_.write(bytes.data(), bytes.size());
    if (!handOver()) {
        port_.clear(QSerialPort::Output);
        carried_ = {};
        return Written::Stuck;
    }
    carried_ = std::max(carried_, std::chrono::steady_clock::now()) + lineTime(bytes.size());
    awaitLine();
    return port_.isOpen() ? Written::Whole : Written::Cut;
}

void SerialPort::waitForInput(std::chrono::microseconds longest) {
    if (!port_.isOpen() || InBufferCount() > 0) {
        return;
    }
    pollfd waiting{port_.handle(), POLLIN, 0};
    const timespec time{longest.count() / 1'000'000, longest.count() % 1'000'000 * 1000};
    if (::ppoll(&waiting, 1, &time, nullptr) > 0) {
        pump();
    }
}

void SerialPort::arrived() {
    if (!held_ && threshold_ > 0 && InBufferCount() >= threshold_) {
        emit received();
    }
}

/// A device that is gone shows as an error of reading, or as a resource that failed, or only as a line that
/// was hung up.
void SerialPort::broken(QSerialPort::SerialPortError error) {
    if (error == QSerialPort::NoError || !port_.isOpen()) {
        return;
    }
    // A line that is full just now is told as a resource that failed, too.
    if (hungUp(port_.handle())) {
        cut_ = true;
        port_.close();
        taken_.clear();
    }
}

} // namespace benthor::platform
