#include "simulator/kdport.h"

#include "simulator/freeterminal.h"
#include "simulator/linepace.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <mutex>
#include <poll.h>
#include <stdexcept>
#include <termios.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace benthor::simulator {

namespace {

using std::chrono::steady_clock;

constexpr int kTurnMilliseconds = 5;
constexpr char kGarbage = 0x35; ///< bits that a wrong speed turns

/// Puts the line into the form in which bytes go through as they are. Opening and closing the near end also
/// marks it as hung up until the program opens it: what is sent to nobody is lost, as on a real line.
void prepare(int master) {
    const int near = ::open(::ptsname(master), O_RDWR | O_NOCTTY);
    termios settings{};
    if (near < 0 || ::tcgetattr(near, &settings) != 0) {
        throw std::runtime_error("the pseudo-terminal can't be prepared");
    }
    ::cfmakeraw(&settings);
    ::tcsetattr(near, TCSANOW, &settings);
    ::close(near);
}

speed_t speedOf(int baud) {
    return baud == 38400 ? B38400 : baud == 9600 ? B9600 : B0;
}

QByteArray garbled(QByteArray bytes) {
    for (char& byte : bytes) {
        byte = static_cast<char>(byte ^ kGarbage);
    }
    return bytes;
}

} // namespace

struct KdPort::Line {
    Line(const QString& programFolder, int portNumber, Kd kd, int speed)
        : link(programFolder + QStringLiteral("/ports/com%1").arg(portNumber))
        , device(std::move(kd))
        , bytesPerSecond(speed) {}

    void open() {
        master = openTerminal();
        if (master < 0) {
            throw std::runtime_error("there is no pseudo-terminal");
        }
        prepare(master);
        const QString path = QString::fromLocal8Bit(::ptsname(master));
        QDir().mkpath(QFileInfo(link).path());
        if (QFileInfo(link).isSymLink()) {
            QFile::remove(link); // of a device that is gone
        }
        if (!QFile::link(path, link)) {
            throw std::runtime_error("the port's link can't be made: " + link.toStdString());
        }
    }

    void close() {
        QFile::remove(link);
        if (master >= 0) {
            ::close(master);
            master = -1;
        }
    }

    void run() {
        QElapsedTimer clock;
        clock.start();
        qint64 last = 0;
        lastLook = steady_clock::now();
        while (running) {
            await();
            const qint64 now = clock.elapsed();
            const std::lock_guard guard(mutex);
            // What has come is heard now, at the end of the time that has passed.
            pass(static_cast<int>(now - last));
            take();
            if (waiting.isEmpty()) {
                say(device.advance(0));
            }
            // Asked once its bytes are taken: a program that came meanwhile must get its answer.
            if (isHungUp(0)) {
                waiting.clear();
            } else {
                put(now - last);
            }
            last = now;
        }
    }

    /// Until something comes, for a turn at most.
    void await() {
        // What waits for its time to be taken would end the wait at once, and so does a hung-up line.
        if (isHungUp(busy || held ? 0 : POLLIN, kTurnMilliseconds)) {
            std::this_thread::sleep_for(std::chrono::milliseconds(kTurnMilliseconds));
        }
    }

    /// No program is there. Waits so long for it, or for one of `events`.
    bool isHungUp(short events, int milliseconds = 0) const {
        pollfd state{master, events, 0};
        ::poll(&state, 1, milliseconds);
        return (state.revents & POLLHUP) != 0;
    }

    void pass(int milliseconds) {
        if (waiting.isEmpty()) {
            say(device.advance(milliseconds));
        } else {
            device.hold(milliseconds);
        }
    }

    void say(const QByteArray& bytes) { waiting = isWrongSpeed() ? garbled(bytes) : bytes; }

    void take() {
        std::array<char, 4096> bytes{};
        const bool paced = takesPerSecond != unpaced;
        const std::size_t most = paced ? std::min(bytes.size(), carried()) : bytes.size();
        if (most == 0 || held) {
            return;
        }
        const ssize_t length = ::read(master, bytes.data(), most);
        busy = paced && length > 0;
        if (length > 0) {
            takeCredit.spend(length);
            hear(QByteArray(bytes.data(), length));
        }
    }

    /// Bytes that the line has carried by now, if there were as many.
    std::size_t carried() {
        const auto now = steady_clock::now();
        takeCredit.pass(now - std::exchange(lastLook, now));
        if (!busy) {
            takeCredit.idle();
        }
        return static_cast<std::size_t>(takeCredit.bytes());
    }

    void hear(const QByteArray& came) {
        const auto now = steady_clock::now();
        times = Times{times ? times->first : now, now};
        const QByteArray bytes = isWrongSpeed() ? garbled(came) : came;
        received.append(bytes);
        device.receive(bytes);
    }

    bool isWrongSpeed() const {
        termios settings{};
        return baud != 0 && ::tcgetattr(master, &settings) == 0 && ::cfgetospeed(&settings) != speedOf(baud);
    }

    /// As many bytes as the line carries in that time.
    void put(qint64 milliseconds) {
        credit = std::min(credit + static_cast<double>(milliseconds) * bytesPerSecond / 1000.0,
                          std::max<double>(64, bytesPerSecond / 20.0));
        const qsizetype most = bytesPerSecond == unpaced
                                   ? waiting.size()
                                   : std::min<qsizetype>(waiting.size(), static_cast<qsizetype>(credit));
        if (most < 1 || held) {
            return;
        }
        const ssize_t written = ::write(master, waiting.constData(), static_cast<size_t>(most));
        if (written > 0) {
            waiting.remove(0, written);
            credit -= static_cast<double>(written);
        }
    }

    QString link;
    Kd device;
    int bytesPerSecond;
    int master = -1;
    QByteArray waiting; ///< for the line to carry it
    double credit = 0;
    int takesPerSecond = unpaced;
    int baud = 0;
    LineCredit takeCredit{unpaced};
    std::atomic<bool> held = false;
    bool busy = false; ///< what it takes is paced, and the last look found something
    steady_clock::time_point lastLook;
    QByteArray received;
    std::optional<Times> times;
    std::mutex mutex;
    std::atomic<bool> running = false;
    std::thread thread;
};

KdPort::KdPort(const QString& programFolder, int number, Kd device, int bytesPerSecond)
    : line_(std::make_unique<Line>(programFolder, number, std::move(device), bytesPerSecond)) {}

KdPort::~KdPort() {
    stop();
}

void KdPort::start() {
    if (line_->running) {
        return;
    }
    try {
        line_->open();
    } catch (const std::runtime_error&) {
        line_->close();
        throw;
    }
    line_->running = true;
    line_->thread = std::thread([this] { line_->run(); });
}

void KdPort::stop() {
    if (!line_->running) {
        return;
    }
    line_->running = false;
    line_->thread.join();
    line_->close();
    line_->waiting.clear();
    line_->busy = false;
}

void KdPort::paceReceived(int bytesPerSecond) {
    const std::lock_guard guard(line_->mutex);
    line_->takesPerSecond = bytesPerSecond;
    line_->takeCredit = LineCredit(bytesPerSecond);
    line_->busy = false;
    line_->lastLook = steady_clock::now();
}

void KdPort::hold(bool held) {
    const std::lock_guard guard(line_->mutex);
    line_->held = held;
}

void KdPort::setBaud(int baud) {
    const std::lock_guard guard(line_->mutex);
    line_->baud = baud;
}

void KdPort::with(const std::function<void(Kd&)>& work) {
    const std::lock_guard guard(line_->mutex);
    work(line_->device);
}

QByteArray KdPort::received() const {
    const std::lock_guard guard(line_->mutex);
    return line_->received;
}

std::optional<KdPort::Times> KdPort::receivedTimes() const {
    const std::lock_guard guard(line_->mutex);
    return line_->times;
}

} // namespace benthor::simulator
