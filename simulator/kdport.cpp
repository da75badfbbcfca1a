#include "simulator/kdport.h"

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

namespace benthor::simulator {

namespace {

constexpr int kTurnMilliseconds = 5;

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
        while (running) {
            pollfd state{master, POLLIN, 0};
            ::poll(&state, 1, kTurnMilliseconds);
            const bool heard = (state.revents & POLLHUP) == 0;
            if (!heard) {
                std::this_thread::sleep_for(std::chrono::milliseconds(kTurnMilliseconds));
            }
            const qint64 now = clock.elapsed();
            const std::lock_guard guard(mutex);
            if ((state.revents & POLLIN) != 0) {
                take();
            }
            const auto passed = static_cast<int>(now - last);
            if (waiting.isEmpty()) {
                waiting = device.advance(passed);
            } else {
                device.hold(passed);
            }
            if (heard) {
                put(now - last);
            } else {
                waiting.clear();
            }
            last = now;
        }
    }

    void take() {
        char bytes[4096];
        const ssize_t length = ::read(master, bytes, sizeof bytes);
        if (length > 0) {
            received.append(bytes, length);
            device.receive(QByteArrayView(bytes, length));
        }
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
    QByteArray received;
    double credit = 0;
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
}

void KdPort::with(const std::function<void(Kd&)>& work) {
    const std::lock_guard guard(line_->mutex);
    work(line_->device);
}

QByteArray KdPort::received() const {
    const std::lock_guard guard(line_->mutex);
    return line_->received;
}

} // namespace benthor::simulator
