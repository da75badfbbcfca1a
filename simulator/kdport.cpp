#include "simulator/kdport.h"

#include "simulator/linepace.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <atomic>
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
constexpr qsizetype kMostIncoming = 1024; ///< that wait for the device when it is paced
constexpr char kGarbage = 0x35;           ///< bits that a wrong speed turns

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
    Line(QString programFolder, int portNumber, Kd kd, int speed)
        : link(programFolder + QStringLiteral("/ports/com%1").arg(portNumber))
        , device(std::move(kd))
        , bytesPerSecond(speed) {}

    void open() {
        master = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
        if (master < 0 || ::grantpt(master) != 0 || ::unlockpt(master) != 0) {
            throw std::runtime_error("there is no pseudo-terminal");
        }
        prepare(master);
        if (takesPerSecond != unpaced) {
            held = std::make_unique<HeldEnd>(::ptsname(master));
            takeCredit = LineCredit(takesPerSecond);
        }
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
        held.reset();
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
            const short events = await();
            const qint64 now = clock.elapsed();
            const std::lock_guard guard(mutex);
            // What has come is heard now, at the end of the time that has passed.
            pass(static_cast<int>(now - last));
            if (held || (events & POLLIN) != 0) {
                take();
            }
            if (waiting.isEmpty()) {
                say(device.advance(0));
            }
            if (isHeard(events)) {
                put(now - last);
            } else {
                waiting.clear();
            }
            last = now;
        }
    }

    /// Until something comes, for a turn at most; what poll tells of it.
    short await() {
        const bool room = incoming.size() < kMostIncoming;
        if (held) {
            held->let(room);
        }
        pollfd state{master, static_cast<short>(room ? POLLIN : 0), 0};
        ::poll(&state, 1, kTurnMilliseconds);
        if ((state.revents & POLLHUP) != 0) {
            std::this_thread::sleep_for(std::chrono::milliseconds(kTurnMilliseconds));
        }
        return state.revents;
    }

    /// A program is there. Asked once its bytes are taken: one that came meanwhile must get its answer.
    bool isHeard(short events) { return held ? held->inUse() : (events & POLLHUP) == 0; }

    void pass(int milliseconds) {
        if (waiting.isEmpty()) {
            say(device.advance(milliseconds));
        } else {
            device.hold(milliseconds);
        }
    }

    void say(const QByteArray& bytes) { waiting = isWrongSpeed() ? garbled(bytes) : bytes; }

    void take() {
        char bytes[4096];
        ssize_t length = 0;
        while ((length = ::read(master, bytes, sizeof bytes)) > 0) {
            incoming.append(bytes, length);
            if (!held) {
                break;
            }
            held->let(incoming.size() < kMostIncoming);
        }
        hear(held ? allowed() : incoming.size());
    }

    /// Of what has come, as many bytes as the line has carried by now.
    qsizetype allowed() {
        const auto now = steady_clock::now();
        takeCredit.pass(now - std::exchange(lastLook, now));
        const qsizetype length = std::min(takeCredit.bytes(), incoming.size());
        takeCredit.spend(length);
        if (length == incoming.size()) {
            takeCredit.idle();
        }
        return length;
    }

    void hear(qsizetype length) {
        if (length < 1) {
            return;
        }
        const QByteArray came = incoming.first(length);
        const QByteArray bytes = isWrongSpeed() ? garbled(came) : came;
        incoming.remove(0, length);
        const auto now = steady_clock::now();
        times = Times{times ? times->first : now, now};
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
        if (most < 1) {
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
    std::unique_ptr<HeldEnd> held; ///< when what it takes is paced
    LineCredit takeCredit{unpaced};
    steady_clock::time_point lastLook;
    QByteArray incoming; ///< for the device to hear it
    QByteArray received;
    std::optional<Times> times;
    std::mutex mutex;
    std::atomic<bool> running = false;
    std::thread thread;
};

KdPort::KdPort(QString programFolder, int number, Kd device, int bytesPerSecond)
    : line_(std::make_unique<Line>(std::move(programFolder), number, std::move(device), bytesPerSecond)) {}

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
    line_->incoming.clear();
}

void KdPort::paceReceived(int bytesPerSecond) {
    const std::lock_guard guard(line_->mutex);
    line_->takesPerSecond = bytesPerSecond;
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
