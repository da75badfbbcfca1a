#include "firmware/finalphase.h"

#include "firmware/session.h"

#include <optional>

namespace benthor::firmware {

using namespace std::chrono_literals;

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

/// A wait in which only painting is served. False when the screen was closed.
bool waitforverdict(ReprogHost& host) {
    if (!host.pause(kHalfOfTheWait)) {
        return false;
    }
    host.MSComm1().Output("&");
    host.MSComm1().Output("&");
    return host.pause(kHalfOfTheWait);
}

bool rounds(ReprogState& state, ReprogHost& host) {
    for (int round = 0; round < kRounds; ++round) {
        host.MSComm1().waitForInput(kRoundWait);
        takereply(state, host);
        if (!host.repaint()) {
            return false;
        }
    }
    return true;
}

enum class Verdict { Good, Bad, Closed };

Verdict askforsum(ReprogState& state, ReprogHost& host) {
    for (int attempt = 1; attempt <= kTries; ++attempt) {
        if (istoldsumgood(state.Text4.bytes(), state.sum)) {
            return Verdict::Good;
        }
        state.sendstate = -2;
        host.MSComm1().Output("&");
        for (int times = 0; times < 3; ++times) {
            if (!host.repaint()) {
                return Verdict::Closed;
            }
        }
        takereply(state, host);
        if (!rounds(state, host)) {
            return Verdict::Closed;
        }
        if (attempt >= kTryWithMore) {
            host.MSComm1().Output("&");
            if (!host.repaint()) {
                return Verdict::Closed;
            }
            takereply(state, host);
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
    host.MSComm1().Output("&");
    host.MSComm1().Output("&");
    takereply(state, host);
    if (!waitforverdict(host)) {
        return false;
    }
    takereply(state, host);
    state.Label5Visible = false;
    switch (askforsum(state, host)) {
    case Verdict::Good:
        host.MSComm1().Output("y");
        state.Label5Visible = true;
        if (!host.pause(kAMoment)) {
            return false;
        }
        state.sendstate = 2;
        return true;
    case Verdict::Bad:
        host.MSComm1().Output("n");
        state.sendstate = 0;
        host.message(QStringLiteral("Problem probably due to leaving KD too long before clicking Download OK!"
                                    "\r\nNot reprogrammed! Click refresh, and try again."),
                     {});
        return true;
    case Verdict::Closed:
        break;
    }
    return false;
}

} // namespace benthor::firmware
