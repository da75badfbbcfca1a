#pragma once

#include "link/screens/linklines.h"

#include <QObject>
#include <memory>

namespace benthor::platform {
class SessionEnd;
}

namespace benthor::shell {

class Rooms;

/// The one place that makes screens, hands interfaces over and connects signals: how screens follow each
/// other is read in the files beside this one, `house_rooms.h` first. Lives from the start of the process to
/// its end.
class House : public QObject {
    Q_OBJECT

public:
    /// Takes the lock of the current program folder. `lines`: the serial lines of the link; none by default.
    explicit House(link::LinkLines lines = {});
    ~House() override;

    /// Shows the first screen; the rest follows from it.
    void start();

    /// When the session is about to end all that closing the screens would store is stored; when it ends they
    /// are closed. Neither shows a box.
    void follow(const platform::SessionEnd& session);
    void keepSession();
    void endSession();

signals:
    /// The last screen is gone, or the user left the program.
    void ended();

private:
    std::unique_ptr<Rooms> rooms_;
};

} // namespace benthor::shell
