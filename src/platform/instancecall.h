#pragma once

#include <QByteArray>
#include <QString>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

class QSocketNotifier;

namespace benthor::platform {

// What a start of the program says to the copy that works in the same program folder already. They meet at an
// address of the machine that the folder's identity and the user make, so nothing is left in the folder, and
// no other user's program and none of another machine is heard or answered.

/// What became of a call.
struct CallAnswer {
    enum class How {
        Taken,   ///< done, or soon to be
        Refused, ///< not now
        Silent,  ///< the copy is there and does not answer
        Nobody   ///< no copy of this user can be reached
    };
    How how = How::Nobody;
    QString words; ///< why it was refused, or what it waits for; may be empty
};

/// A file's path of up to this many bytes can be handed over.
inline constexpr qsizetype kLongestPath = 4096;

/// Hands `file` (an absolute path) to the copy that works in `folder`; with an empty one it is only asked to
/// come to the front. Waits for its answer, `patience` at most. `token`: this start's leave to do that
/// (platform/activationtoken.h), or empty.
CallAnswer callInstance(const QString& folder, const QString& file, std::chrono::milliseconds patience,
                        const QByteArray& token = {});

/// The name of that address behind its zero byte; empty where the folder is not there.
QByteArray callAddress(const QString& folder);

/// Where the copy that works in a folder hears those calls, inside busy loops that let events run as well.
class CallDoor {
public:
    /// Gets the path, or an empty one, and the caller's leave to come to the front, or an empty one. It must
    /// neither let events run nor throw. `Silent` is no answer.
    using Answer = std::function<CallAnswer(const QString& file, const QByteArray& token)>;

    CallDoor(const QString& folder, Answer answer);
    ~CallDoor();
    CallDoor(const CallDoor&) = delete;
    CallDoor& operator=(const CallDoor&) = delete;

    /// False where the address could not be had: nobody can call then.
    bool isOpen() const { return listener_ >= 0; }

private:
    struct Caller {
        int socket;
        std::chrono::steady_clock::time_point until; ///< it is not waited for longer
    };

    void look();
    void takeCallers();
    bool serve(const Caller& caller);

    Answer answer_;
    int listener_ = -1;
    std::vector<Caller> callers_;
    std::unique_ptr<QSocketNotifier> notifier_;
    QTimer timer_; ///< looks where lines are held back, and after callers that have said nothing yet
};

} // namespace benthor::platform
