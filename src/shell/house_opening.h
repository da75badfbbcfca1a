#pragma once

#include "platform/instancecall.h"
#include "platform/screen/ticktimer.h"
#include "shell/openedfile.h"

#include <QStringList>

#include <memory>

namespace benthor::platform {
class Screen;
}

namespace benthor::shell {

class Rooms;

/// Files that are opened from outside: the one that this copy was started with, and those that later starts
/// hand over to it. Each waits for a moment in which nothing else is under way, and is refused where it would
/// wait for the device. Nothing of it sends a byte.
class FileOpening {
public:
    explicit FileOpening(Rooms& rooms);

    /// From now on later starts are heard; called by the copy that holds the folder's lock.
    void listen();
    void open(const QString& path);
    /// To the copy that holds the folder's lock. Where that ends meanwhile this copy takes its place, and the
    /// file is its own: `Nobody` with the lock held.
    platform::CallAnswer handOver(const QString& path);
    /// Asks that copy to come to the front. Returns what this one tells the user.
    QString callFirstCopy();
    /// The dive list has come up, by itself or not: what was opened before it stays in front, once.
    void listShown();

private:
    struct Moment {
        enum class When { Now, Later, Refused };
        When when = When::Now;
        QString words;
    };

    platform::CallAnswer called(const QString& file, const QByteArray& token);
    Moment momentFor(const QString& path) const;
    Moment momentAtFirmware(const QString& path) const;
    platform::Screen* frontScreen() const;
    void comeToFront(const QByteArray& token = {}) const;
    void tick();
    void openNow(const QString& path);
    void openSetup(const QString& path);
    void openImage(const QString& path);
    bool mayCloseTheOthers(const QString& path);

    Rooms& rooms_;
    QByteArray token_; ///< this start's leave to come to the front, while another copy holds the lock
    QStringList waiting_;
    bool listSeen_ = false;
    bool before_ = false; ///< a setup was opened before the list came up
    platform::TickTimer timer_;
    std::unique_ptr<platform::CallDoor> door_;
};

} // namespace benthor::shell
