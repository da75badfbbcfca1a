#include "firmware/finalphase.h"

#include "firmware/lostline.h"
#include "firmware/session.h"

#include <optional>

namespace benthor::firmware {

using namespace std::chrono_literals;
using platform::Written;

namespace {

constexpr auto kHalfOfTheWait = 2s;
constexpr auto kAMoment = 250ms;
constexpr auto kRoundWait = 10ms;
constexpr int kTries = 10;
constexpr int kRounds = 101;
constexpr int kTryWithMore = 6; ///< from this one on the device is asked twice
constexpr qint64 kMostShort = 2000;
constexpr char kMark = '&'; ///< its code counts in the device's sum
constexpr qsizetype kSumAhead = 10;
constexpr qsizetype kSumDigits = 8;
const QByteArray kProg = "Prog";

/// The eight hexadecimal digits that begin ten characters ahead of that word, as a 32-bit number with a sign.
std::optional<qint64> sumahead(const QByteArray& text, qsizetype word) {
    const QByteArray digits = text.mid(word - kSumAhead, kSumDigits);
    for (const char one : digits) {
        if (std::isxdigit(static_cast<unsigned char>(one)) == 0) {
            return std::nullopt;
        }
    }
    return static_cast<qint32>(digits.toUInt(nullptr, 16));
}

enum class Verdict { Good, Bad, Closed, Lost };

/// A wait in which only painting is served. Nothing where it came to its end.
std::optional<Verdict> waitforverdict(ReprogHost& host, Written& written) {
    if (!host.pause(kHalfOfTheWait)) {
        return Verdict::Closed;
    }
    for (int mark = 0; mark < 2; ++mark) {
        written = host.MSComm1().Output("&");
        if (written != Written::Whole) {
            return Verdict::Lost;
        }
    }
    return host.pause(kHalfOfTheWait) ? std::nullopt : std::optional(Verdict::Closed);
}

std::optional<Verdict> rounds(ReprogState& state, ReprogHost& host) {
    for (int round = 0; round < kRounds; ++round) {
        host.MSComm1().waitForInput(kRoundWait);
        takereply(state, host);
        if (!host.repaint()) {
            return Verdict::Closed;
        }
        if (!host.MSComm1().PortOpen()) {
            break; // the next mark finds out, unless the device has told all before
        }
    }
    return std::nullopt;
}

/// Once more: the mark, so many paintings, and what has come.
std::optional<Verdict> ask(ReprogState& state, ReprogHost& host, int paintings, Written& written) {
    written = host.MSComm1().Output("&");
    if (written != Written::Whole) {
        return Verdict::Lost;
    }
    for (int times = 0; times < paintings; ++times) {
        if (!host.repaint()) {
            return Verdict::Closed;
        }
    }
    takereply(state, host);
    return std::nullopt;
}

Verdict askforsum(ReprogState& state, ReprogHost& host, Written& written) {
    for (int attempt = 1; attempt <= kTries; ++attempt) {
        if (istoldsumgood(state.Text4.bytes(), state.sum)) {
            return Verdict::Good;
        }
        state.sendstate = -2;
        std::optional<Verdict> ended = ask(state, host, 3, written);
        if (!ended) {
            ended = rounds(state, host);
        }
        if (!ended && attempt >= kTryWithMore) {
            ended = ask(state, host, 1, written);
        }
        if (ended) {
            return *ended;
        }
    }
    return Verdict::Bad;
}

} // namespace

bool istoldsumgood(const QByteArray& text, qint64 sum) {
    qsizetype word = text.indexOf(kProg);
    if (word >= 0 && word < kSumAhead) {
        word = text.indexOf(kProg, kSumAhead);
    }
    for (int searches = 0; searches < 2 && word >= 0; ++searches) {
        if (const std::optional<qint64> told = sumahead(text, word)) {
            return *told >= sum + kMark;
        }
        word = text.indexOf(kProg, word + 1);
    }
    return false;
}

namespace {

/// What the device received, as far as it tells it.
Verdict hearverdict(ReprogState& state, ReprogHost& host, Written& written) {
    for (int mark = 0; mark < 2; ++mark) {
        written = host.MSComm1().Output("&");
        if (written != Written::Whole) {
            return Verdict::Lost;
        }
    }
    takereply(state, host);
    if (const std::optional<Verdict> ended = waitforverdict(host, written)) {
        return *ended;
    }
    takereply(state, host);
    state.Label5Visible = false;
    return askforsum(state, host, written);
}

/// False when the screen was closed.
bool confirmimage(ReprogState& state, ReprogHost& host) {
    if (telllost(host, host.MSComm1().Output("y"), LostAt::Confirming)) {
        state.sendstate = 0;
        return true;
    }
    state.Label5Visible = true;
    if (!host.pause(kAMoment)) {
        return false;
    }
    state.sendstate = 2;
    return true;
}

void refuseimage(ReprogState& state, ReprogHost& host) {
    state.sendstate = 0;
    if (!telllost(host, host.MSComm1().Output("n"), LostAt::Verdict)) {
        host.message(QStringLiteral("Problem probably due to leaving KD too long before clicking Download OK!"
                                    "\r\nNot reprogrammed! Click refresh, and try again."),
                     {});
    }
}

} // namespace

bool finalphase(ReprogState& state, ReprogHost& host, qint64 limit, const QByteArray& reply) {
    const bool cut = limit - state.counted > kMostShort;
    state.Command2.colour = cut ? platform::kToldRed : platform::kToldYellow;
    state.sendstate = cut ? -1 : 1;
    state.recoveryflag = cut && state.recoveryflag;
    state.Timer1 = true;
    if (host.blinkVisible()) {
        host.hideBlink();
    }
    state.Text4.assign(reply);
    state.heard = !reply.isEmpty();
    takereply(state, host);
    state.sentmark = true;
    Written written = Written::Whole;
    switch (hearverdict(state, host, written)) {
    case Verdict::Good:
        return confirmimage(state, host);
    case Verdict::Bad:
        refuseimage(state, host);
        return true;
    case Verdict::Lost:
        state.sendstate = 0;
        telllost(host, written, LostAt::Verdict);
        return true;
    case Verdict::Closed:
        break;
    }
    return false;
}

} // namespace benthor::firmware
