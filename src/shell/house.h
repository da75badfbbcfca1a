#pragma once

#include "link/screens/linklines.h"

#include <QObject>
#include <QString>
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

    /// What became of a file that the program was started with.
    struct Opened {
        enum class How {
            Here,   ///< it is opened once the start is over
            There,  ///< the copy that is open on the program folder has taken it
            Nowhere ///< that copy did not
        };
        How how = How::Here;
        QString words; ///< what that copy said to it, or why it could not be asked; may be empty
    };
    /// To be called before start(), which must not follow unless it is Here.
    Opened open(const QString& path);

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
