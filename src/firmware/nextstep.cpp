// Which key comes next, in the words of the frames and lamps.

#include "firmware/guidance.h"
#include "firmware/sessionfacts.h"

#include <optional>

namespace benthor::firmware {

namespace {

NextStep portstep(const ReprogState& state, const QString& hint) {
    if (state.Text6.isEmpty()) {
        return {QStringLiteral(
            "Open PC Link once with the device connected: it finds the port and remembers it.")};
    }
    return {hint.isEmpty() ? QStringLiteral("Plug the adapter in, then press Refresh.")
                           : hint + QStringLiteral(" Then press Refresh."),
            NextKey::Refresh};
}

/// While something is under way that takes its time.
std::optional<NextStep> waitstep(const ReprogState& state) {
    const bool good = state.Label4[kLampResult].text == QLatin1String("OK to Restart");
    if (!state.awaited.isEmpty()) {
        return NextStep{QStringLiteral("Waiting for the device to answer %1: ten seconds at most.")
                            .arg(quoted(state.awaited))};
    }
    if (state.sending) {
        return NextStep{QStringLiteral("Hands off until the image is through.")};
    }
    if (state.Frame6Visible) {
        return NextStep{
            QStringLiteral("Wait. If the device stays silent for five minutes: Continue, then Retry.")};
    }
    if (good && state.Frame5Visible) {
        return NextStep{QStringLiteral(
            "The device reports the expected value. Once the final tasks are over, press Restart KD.")};
    }
    if (good) {
        return NextStep{QStringLiteral("Press Restart KD."), NextKey::Restart};
    }
    if (state.sendstate > 0 && state.sendstate < kWaitOver) {
        return NextStep{QStringLiteral("Wait until the device has finished.")};
    }
    return std::nullopt;
}

/// In the mode the prompt is gone, and the lamps that go by it are red.
NextStep modestep(const ReprogState& state) {
    if (willberefused(state)) {
        return {QStringLiteral("Choose the image to send."), NextKey::Choose};
    }
    if (state.noanswer >= kTooLate) {
        return {QStringLiteral("The device has not answered for long. Press Refresh to ask how it stands."),
                NextKey::Refresh};
    }
    return hasprompt(state)
               ? NextStep{QStringLiteral("Check file and value, then press Send to KD."), NextKey::Send}
               : NextStep{QStringLiteral("The device has left its prompt for the reprog mode. Check file and "
                                         "value, then press Send to KD."),
                          NextKey::Send};
}

NextStep idlestep(const ReprogState& state) {
    if (inreprogmode(state)) {
        return modestep(state);
    }
    if (hasprompt(state)) {
        return {QStringLiteral("Press Enter Reprog Mode."), NextKey::Enter};
    }
    if (state.sentmark && state.sendstate == 0) {
        return {QStringLiteral(
                    "Press Refresh, enter the mode again and send once more. Where the device does not "
                    "answer: Continue, then Retry."),
                NextKey::Refresh};
    }
    return {QStringLiteral("Press Refresh to ask the device how it stands."), NextKey::Refresh};
}

/// "The device dropped out of the transfer after 12 801 of 40 000 bytes. "; empty where none broke off.
QString brokenofflead(const ReprogState& state) {
    QString words = brokenoffwords(state.brokenoff);
    if (words.isEmpty()) {
        return words;
    }
    words[0] = words[0].toUpper();
    return words + QStringLiteral(". ");
}

} // namespace

NextStep nextstep(const ReprogState& state, bool portopen, const QString& hint) {
    if (state.Text6.isEmpty() || !portopen) {
        NextStep step = portstep(state, hint);
        step.words.prepend(brokenofflead(state));
        return step;
    }
    if (const std::optional<NextStep> step = waitstep(state)) {
        return *step;
    }
    if (isrestarting(state)) {
        return {
            QStringLiteral("The device restarts with what it holds. Home leads back to the main screen.")};
    }
    NextStep step = idlestep(state);
    step.words.prepend(brokenofflead(state));
    return step;
}

} // namespace benthor::firmware
