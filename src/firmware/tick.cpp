// The tick: what the device said, which keys make sense, the lamps, the final wait.

#include "firmware/session.h"

#include <algorithm>

namespace benthor::firmware {

namespace {

constexpr qsizetype kShortestPrompt = 50;
constexpr qsizetype kShortestImage = 5; ///< a path of fewer characters is none
constexpr int kTicksBetweenRequests = 20;
constexpr int kMostTicks = 20000;

const QByteArray kPrompt = "R, Enter";
const QByteArray kReprogMode = "REPROG MODE";

void takeifcollecting(ReprogState& state, ReprogHost& host) {
    if (state.pollflag || state.idleflag) {
        takereply(state, host);
    }
    state.Command3Enabled = state.Text4.holds("Profile");
}

/// At the prompt only the keys that lead into the mode make sense; in the mode all but that one.
void enablekeys(ReprogState& state) {
    const bool waits = state.Text4.holds(kPrompt) || !state.idleflag;
    for (size_t key = 0; key < kKeys; ++key) {
        const bool leads = key == kKeyRefresh || key == kKeyQuit || key == kKeyEnter;
        state.SendCh[key].enabled = waits ? leads : key != kKeyEnter;
    }
    Button& enter = state.SendCh[kKeyEnter];
    if (waits) {
        enter.colour = platform::kToldYellow;
        state.Command7Colour = kButtonGrey;
    } else if (enter.colour == platform::kToldYellow) {
        enter.colour = kButtonGrey;
        if (state.Text5.size() < kShortestImage - 1) {
            state.Command7Colour = platform::kToldGreen;
        }
    }
    state.Command2.enabled = state.Text4.holds(kReprogMode) && state.noanswer < kTooLate;
}

bool programmed(const QByteArray& text, char memory) {
    const QByteArray name = QByteArray("MEMORY ") + memory;
    return text.lastIndexOf(name + " Programmed") > text.lastIndexOf(name + " Erased");
}

bool isexpected(const ReprogState& state) {
    return state.Text14 == state.check.Text13 || state.Text14 == state.check.Text15;
}

/// The progress words: whatever was erased last must have been programmed since.
void judgememories(ReprogState& state) {
    Lamp& result = state.Label4[kLampResult];
    Button& restart = state.SendCh[kKeyRestart];
    result = {QStringLiteral("KD Not Programmed"), platform::kToldRed};
    restart = {false, kButtonGrey};
    const QByteArray& text = state.Text4.bytes();
    const bool all = programmed(text, 'A') && programmed(text, 'B') && programmed(text, 'C');
    if (!all || !state.idleflag) {
        return;
    }
    restart.enabled = true;
    if (state.sentmark && isexpected(state)) {
        result = {QStringLiteral("OK to Restart"), platform::kToldGreen};
        restart.colour = platform::kToldYellow;
    } else {
        result = {QStringLiteral("Not sent new code"), platform::kToldYellow};
    }
}

void showlamps(ReprogState& state, bool portopen) {
    const auto lamp = [&state](size_t index, bool good) {
        state.Label4[index] = good ? Lamp{QStringLiteral("OK"), platform::kToldGreen}
                                   : Lamp{QStringLiteral("??"), platform::kToldRed};
    };
    const bool prompt = state.idleflag && state.Text4.holds(kPrompt) && state.Text4.size() >= kShortestPrompt;
    lamp(kLampPort, state.idleflag && portopen);
    lamp(kLampLink, state.heard && !state.Text4.isEmpty());
    lamp(kLampPrompt, prompt);
    state.Label4[kLampReady] =
        prompt ? Lamp{QStringLiteral("Ready to Send"), platform::kToldGreen}
               : Lamp{state.Text5.size() < kShortestImage ? QStringLiteral("Choose File")
                                                          : QStringLiteral("KD not Ready"),
                      platform::kToldRed};
}

/// The value stands at a fixed place behind its word. Digits alone lose their leading zeros.
void readvalue(ReprogState& state) {
    constexpr qsizetype kBehind = 29;
    constexpr qsizetype kDigits = 4;
    const qsizetype word = state.Text4.find("shell:");
    if (word < 0 || state.Text4.size() < word + kBehind + kDigits) {
        return;
    }
    state.Text14 = QString::fromLatin1(state.Text4.bytes().mid(word + kBehind, kDigits));
    const bool digits = std::all_of(state.Text14.begin(), state.Text14.end(),
                                    [](QChar one) { return one >= u'0' && one <= u'9'; });
    if (digits) {
        state.Text14 = QString::number(state.Text14.toInt(nullptr, 16), 16).toUpper();
    }
    const bool same = state.Text14.contains(state.check.Text13) || state.Text14.contains(state.check.Text15);
    state.Text14Colour = same ? platform::kToldGreen : platform::kToldRed;
    if (!same && !state.check.Text13.isEmpty()) {
        state.Label4[kLampResult] = {QStringLiteral("KD Not same Check sum as chosen file"),
                                     platform::kToldRed};
    }
}

void requeststatus(ReprogState& state, ReprogHost& host) {
    if (state.autorefresh && ++state.noanswer > kTicksBetweenRequests) {
        state.noanswer = 0;
        presskey(state, host, kKeyRefresh);
    }
}

/// All went well and the prompt is gone: the device is led back to it, for the next one.
void endsession(ReprogState& state, ReprogHost& host) {
    const bool good = state.Label4[kLampResult].colour == platform::kToldGreen;
    if (!state.filechosen && good && state.Label4[kLampPrompt].colour == platform::kToldRed) {
        presskey(state, host, kKeyEnter);
        state.Text5.clear();
        state.lastimage.clear();
    }
}

/// The stock image goes by the type that the device tells.
void choosebytype(ReprogState& state) {
    if (state.filechosen || state.Label4[kLampPrompt].colour != platform::kToldGreen ||
        state.Text14.isEmpty()) {
        return;
    }
    const bool rb = state.Text4.holds("rb");
    const bool kd = state.Text4.holds("kd");
    if (rb || kd) {
        state.Text5 = stockimage(state, kd ? kStockImageKd : kStockImage);
        refreshchecksums(state);
        state.ProgressBar1.value = 0;
    }
}

/// The device has had its time and still does not report the value: it may be at it again, or ask for it.
void waitfurther(ReprogState& state, ReprogHost& host) {
    state.sendstate = kWaitOver;
    state.Frame6Visible = !isexpected(state) && !state.recoveryflag;
    if (isexpected(state)) {
        return;
    }
    if (state.Frame6Visible) {
        state.ProgressBar3.value = std::min(state.ProgressBar3.value + 1, state.ProgressBar3.maximum);
    }
    if (state.Text4.holds("OOOO")) {
        state.Frame6Visible = false;
        state.ProgressBar3.value = 0;
        if (host.confirm(QStringLiteral("Data not the same\r\nTry again?"), QStringLiteral("Reprog bad"))) {
            Command2_click(state, host);
        } else {
            state.sendstate = 0;
        }
    }
}

void finalwait(ReprogState& state, ReprogHost& host) {
    if (state.sendstate >= 2 && state.sendstate < kMostTicks) {
        ++state.sendstate;
    }
    const bool waits = state.sendstate >= 1 && state.sendstate < kWaitOver;
    state.Frame5Visible = waits && !state.advanced;
    if (state.sendstate < kWaitOver) {
        state.Frame6Visible = false;
        state.ProgressBar3.value = 0;
    }
    if (waits) {
        state.ProgressBar2.value = state.sendstate;
        state.recoveryflag = state.recoveryflag || state.Text4.holds("8:f");
    } else if (state.sendstate >= kWaitOver) {
        waitfurther(state, host);
    }
}

} // namespace

void showstatus(ReprogState& state, bool portopen) {
    judgememories(state);
    showlamps(state, portopen);
    readvalue(state);
}

void Timer1_tick(ReprogState& state, ReprogHost& host) {
    if (state.Text5.isEmpty()) {
        state.Text5 = stockimage(state, kStockImage);
        refreshchecksums(state);
    }
    takeifcollecting(state, host);
    enablekeys(state);
    showstatus(state, host.MSComm1().PortOpen());
    requeststatus(state, host);
    endsession(state, host);
    choosebytype(state);
    finalwait(state, host);
}

} // namespace benthor::firmware
