#pragma once

#include "firmware/reprogstate.h"

#include <array>

namespace benthor::firmware {

// What the screen tells beside the session's own words: what a send is about to put on the line, why a lamp
// shows what it shows, and which key comes next. Nothing here has any effect on the session.

/// What a send of an image of that length puts on the line. The loop over the records ends as soon as it has
/// counted more than the length, so the last bytes of a file stay behind unless its length is a multiple of
/// 128 or one more.
struct SendPlan {
    qint64 records = 0; ///< of 128 bytes, behind the single byte
    qint64 leaving = 0; ///< bytes of the file that go out
    qint64 staying = 0; ///< bytes at its end that do not
    qint64 onLine = 0;  ///< bytes on the line: with the mark ahead and the zeros of a last record
    int seconds = 0;    ///< that the line needs for them
};
SendPlan sendplan(qint64 length, bool baud9600);

/// "219 008": a number with its thousands set apart.
QString grouped(qint64 number);

/// Words that deserve a second look, or not.
struct Notice {
    QString words;
    bool grave = false;
    bool operator==(const Notice&) const = default;
};

/// File, length, how long it takes, and what the fields of the advanced keyboard put ahead of it.
Notice imagewords(const ReprogState& state);
/// The check value, where it came from, and whether list and file agree.
Notice valuewords(const ReprogState& state);

/// A quiet line for each lamp: why it shows what it shows, and nothing else.
std::array<QString, 5> lampreasons(const ReprogState& state, bool portopen);

enum class NextKey { None, Choose, Refresh, Enter, Send, Restart };
struct NextStep {
    QString words;
    NextKey key = NextKey::None;
};
/// In the words of whatever frame and lamps show, with where a transfer broke off ahead of it. `hint`: what
/// can be done about a port that may not be opened; empty where nothing is known.
NextStep nextstep(const ReprogState& state, bool portopen, const QString& hint = {});

} // namespace benthor::firmware
