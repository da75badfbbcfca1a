#pragma once

#include "simulator/freeterminal.h"

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QStringList>
#include <QtTest>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>
#include <utility>

namespace benthor::tests {

/// The far end of a serial line: what is written here arrives at the device `path()`.
class PseudoTerminal {
public:
    PseudoTerminal() {
        fd_ = simulator::openTerminal();
        if (fd_ < 0) {
            qFatal("no pseudo-terminal");
        }
        path_ = QString::fromLocal8Bit(::ptsname(fd_));
        // Raw from the start, so that bytes that come before the device is opened come as they are.
        termios settings{};
        ::tcgetattr(fd_, &settings);
        ::cfmakeraw(&settings);
        ::tcsetattr(fd_, TCSANOW, &settings);
    }
    ~PseudoTerminal() { vanish(); }
    PseudoTerminal(const PseudoTerminal&) = delete;
    PseudoTerminal& operator=(const PseudoTerminal&) = delete;

    QString path() const { return path_; }
    /// Becomes port `number` of the program folder `root`.
    void link(const QString& root, int number) {
        const QString name = root + QStringLiteral("/ports/com%1").arg(number);
        QFile::remove(name);
        if (!QFile::link(path_, name)) {
            qFatal("no link %s", qPrintable(name));
        }
        links_ << name;
    }
    void send(const QByteArray& bytes) const {
        if (::write(fd_, bytes.constData(), static_cast<size_t>(bytes.size())) != bytes.size()) {
            qFatal("the line takes no more");
        }
    }
    /// What has come since the last time.
    QByteArray received() const {
        QByteArray bytes(65536, '\0');
        const ssize_t length = ::read(fd_, bytes.data(), static_cast<size_t>(bytes.size()));
        return length > 0 ? bytes.first(length) : QByteArray();
    }
    /// Opens the near end beside whoever works it, so that it can be filled later: an open port keeps others
    /// out.
    void keepNear() {
        near_ = ::open(QFile::encodeName(path_).constData(), O_WRONLY | O_NOCTTY | O_NONBLOCK);
        if (near_ < 0) {
            qFatal("the near end can't be opened");
        }
    }
    /// Puts as much on the near end's way out as the line holds, so that it takes nothing more until some of
    /// it is read here. Behind keepNear().
    void fill() const {
        const QByteArray filler(4096, kFiller);
        // What was taken moves on by itself for a moment and leaves room behind.
        for (int refused = 0; refused < 20;) {
            const bool whole = ::write(near_, filler.constData(), static_cast<size_t>(filler.size())) > 0;
            const bool one = !whole && ::write(near_, filler.constData(), 1) > 0;
            refused = whole || one ? 0 : refused + 1;
            ::poll(nullptr, 0, refused > 0 ? 10 : 0);
        }
    }
    static constexpr char kFiller = '\xFE';

    /// The links stay and lead nowhere: whoever tries them meanwhile comes neither upon the next terminal
    /// that is given this number nor, for want of a link, upon a port of the machine.
    void vanish() {
        for (const QString& name : std::exchange(links_, {})) {
            const QString nowhere = name + QStringLiteral(".gone");
            if (QFile::symLinkTarget(name) == path_ && QFile::link(QStringLiteral("/nowhere"), nowhere)) {
                ::rename(QFile::encodeName(nowhere).constData(), QFile::encodeName(name).constData());
            }
        }
        if (fd_ >= 0) {
            ::close(fd_);
            fd_ = -1;
        }
        if (near_ >= 0) {
            ::close(near_);
            near_ = -1;
        }
    }

private:
    int fd_ = -1;
    int near_ = -1;
    QString path_;
    QStringList links_;
};

} // namespace benthor::tests
