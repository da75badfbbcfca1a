#include "firmware/guidance.h"

#include "firmware/session.h"
#include "link/console.h"

#include <QFileInfo>
#include <algorithm>
#include <optional>

namespace benthor::firmware {

namespace {

constexpr qint64 kRecord = 128;
constexpr int kBytesASecond = 960; // ten bits each, at 9600 baud
constexpr int kFaster = 4;

QString duration(int seconds) {
    constexpr int kMinute = 60;
    return seconds < 2 * kMinute ? QStringLiteral("%1 s").arg(seconds)
                                 : QStringLiteral("%1 min").arg((seconds + kMinute / 2) / kMinute);
}

bool inreprogmode(const ReprogState& state) {
    const QByteArray& text = state.Text4.bytes();
    return text.lastIndexOf("REPROG MODE") > text.lastIndexOf("R, Enter");
}

/// Nothing is known of a device that was asked to restart.
bool isrestarting(const ReprogState& state) {
    return state.Text4.bytes().startsWith("restarting...");
}

bool hasprompt(const ReprogState& state) {
    return state.Label4[kLampPrompt].colour == platform::kToldGreen;
}

bool issog(const QString& path) {
    return path.contains(QLatin1String(".SOG")) || path.contains(QLatin1String(".sog"));
}

bool willberefused(const ReprogState& state) {
    return state.check.length < 0 || (!issog(state.Text5) && state.check.firstbyte != '&');
}

QString memories(const ReprogState& state) {
    QStringList erased;
    QStringList untold;
    const QByteArray& text = state.Text4.bytes();
    for (const char memory : {'A', 'B', 'C'}) {
        const QByteArray name = QByteArray("MEMORY ") + memory;
        const qsizetype erasing = text.lastIndexOf(name + " Erased");
        const qsizetype programming = text.lastIndexOf(name + " Programmed");
        if (erasing > programming) {
            erased += QChar::fromLatin1(memory);
        } else if (programming < 0) {
            untold += QChar::fromLatin1(memory);
        }
    }
    if (!erased.isEmpty()) {
        return QStringLiteral("erased: memory %1").arg(erased.join(QLatin1String(", ")));
    }
    return untold.size() == 3 ? QStringLiteral("the device told of no programmed memory")
           : untold.isEmpty()
               ? QStringLiteral("all memories told, the controls rest")
               : QStringLiteral("not told of: memory %1").arg(untold.join(QLatin1String(", ")));
}

/// Where the last image ended ahead of its end; empty where it did not.
QString brokenoffwords(const BrokenOff& broken) {
    const QString at = QStringLiteral(" after %1 of %2 bytes").arg(grouped(broken.sent), grouped(broken.of));
    switch (broken.how) {
    case BrokenOff::How::EndedEarly:
        return QStringLiteral("the device ended the transfer") + at;
    case BrokenOff::How::DroppedOut:
        return QStringLiteral("the device dropped out of the transfer") + at;
    case BrokenOff::How::Lost:
        return QStringLiteral("the line was lost") + at;
    case BrokenOff::How::Not:
        break;
    }
    return {};
}

QString portreason(const ReprogState& state, bool portopen) {
    if (state.Text6.isEmpty()) {
        return QStringLiteral("no port is remembered");
    }
    const QString port =
        state.rehearsal ? QStringLiteral("simulated device") : QStringLiteral("com %1").arg(state.Text6);
    if (!portopen) {
        return port + QStringLiteral(" can't be opened");
    }
    if (!state.idleflag && !state.sending) {
        return port + QStringLiteral(", the controls rest");
    }
    return port + (state.baud9600 ? QStringLiteral(", 9600 baud") : QStringLiteral(", 38400 baud"));
}

/// Digits alone are told without their zeros, and then differ from the file's value though they are the same.
bool samebutzeros(const ReprogState& state) {
    const QString& expected = state.check.Text13;
    return !state.Text14.isEmpty() && state.Text14.size() < expected.size() &&
           state.Text14.rightJustified(expected.size(), u'0') == expected;
}

QString resultreason(const ReprogState& state) {
    const QString& verdict = state.Label4[kLampResult].text;
    if (verdict == QLatin1String("OK to Restart")) {
        return state.Text14.isEmpty() ? QStringLiteral("the device told no value, and none is expected")
                                      : QStringLiteral("device reports the expected value");
    }
    if (verdict == QLatin1String("KD Not same Check sum as chosen file")) {
        return samebutzeros(state)
                   ? QStringLiteral("%1 is %2 without its zeros").arg(state.Text14, state.check.Text13)
                   : QStringLiteral("device reports %1, not %2").arg(state.Text14, state.check.Text13);
    }
    if (verdict == QLatin1String("Not sent new code")) {
        const QString broken = brokenoffwords(state.brokenoff);
        return !broken.isEmpty() ? broken
               : state.sentmark  ? QStringLiteral("the device has not told the expected value")
                                 : QStringLiteral("it runs what it had; nothing was sent");
    }
    if (state.sending) {
        return QStringLiteral("an image is on its way");
    }
    if (!isrestarting(state) && state.brokenoff.how != BrokenOff::How::Not) {
        return brokenoffwords(state.brokenoff);
    }
    if (state.sendstate > 0 && state.sendstate < kWaitOver) {
        return QStringLiteral("the device is still at it");
    }
    return isrestarting(state) ? QStringLiteral("the device was asked to restart") : memories(state);
}

QString quoted(QString bytes) {
    constexpr qsizetype kMost = 14;
    bytes.replace(QLatin1String("\r\n"), QStringLiteral("↵"));
    return u'"' + (bytes.size() > kMost ? bytes.left(kMost) + u'…' : bytes) + u'"';
}

/// What the keyboard's fields put on the line ahead of the file; empty for nothing.
QString aheadwords(const SendFields& fields) {
    const QString rest = restofcommand(fields);
    QStringList parts;
    if (!fields.Text3.isEmpty()) {
        parts += quoted(fields.Text3);
    }
    const QString& reply = fields.Text8;
    if (!reply.isEmpty()) {
        parts += rest.isEmpty() ? QStringLiteral("and %1 must come back").arg(quoted(reply))
                                : QStringLiteral("then, once %1 has come back").arg(quoted(reply));
    }
    if (!rest.isEmpty()) {
        parts += quoted(rest);
    }
    return parts.isEmpty() ? QString()
                           : QStringLiteral(" Ahead of it goes what the advanced keyboard holds: %1.")
                                 .arg(parts.join(QLatin1String(", ")));
}

Notice withahead(const ReprogState& state, const QString& words, bool grave) {
    const QString ahead = aheadwords(state.fields);
    return {words + ahead, grave || !ahead.isEmpty()};
}

} // namespace

QString grouped(qint64 number) {
    QString text = QString::number(number);
    for (qsizetype at = text.size() - 3; at > 0; at -= 3) {
        text.insert(at, QChar(0x202F));
    }
    return text;
}

SendPlan sendplan(qint64 length, bool baud9600) {
    SendPlan plan;
    if (length < 1) {
        return plan;
    }
    plan.records = std::min(length / kRecord, (length - 1 + kRecord - 1) / kRecord);
    plan.leaving = std::min(length, 1 + kRecord * plan.records);
    plan.staying = length - plan.leaving;
    plan.onLine = 2 + kRecord * plan.records;
    const int speed = baud9600 ? kBytesASecond : kFaster * kBytesASecond;
    plan.seconds = static_cast<int>((plan.onLine + speed - 1) / speed);
    return plan;
}

Notice imagewords(const ReprogState& state) {
    const QString name = QFileInfo(state.Text5).fileName();
    if (state.check.length < 0) {
        return {QStringLiteral("%1 is not there, or can't be read. Choose a file.").arg(name), true};
    }
    if (state.check.length == 0) {
        return {QStringLiteral("%1 is empty. Choose another file.").arg(name), true};
    }
    if (state.fields.option == link::kChoiceBook) {
        return withahead(
            state,
            QStringLiteral("Send to KD sends %1 as a book, not as an image: Book Upload is chosen "
                           "on the advanced keyboard.")
                .arg(name),
            true);
    }
    if (willberefused(state)) {
        return {QStringLiteral("%1 does not begin as an image does, and will be refused.").arg(name), true};
    }
    const SendPlan plan = sendplan(state.check.length, state.baud9600);
    QString words = QStringLiteral("Send to KD sends %1: %2 bytes in %3 records, about %4 at %5 baud.")
                        .arg(name, grouped(state.check.length), grouped(plan.records), duration(plan.seconds),
                             state.baud9600 ? QStringLiteral("9600") : QStringLiteral("38400"));
    if (plan.staying > 0) {
        words += QStringLiteral(" Its last %1 bytes fill no record and stay behind.").arg(plan.staying);
    }
    if (issog(state.Text5) && state.check.firstbyte != '*') {
        return withahead(state, words + QStringLiteral(" It does not begin with a star, as images do."),
                         true);
    }
    return withahead(state, words, false);
}

Notice valuewords(const ReprogState& state) {
    const CheckValues& check = state.check;
    if (check.Text13.isEmpty()) {
        return {
            QStringLiteral("No check value is known: the file holds none and the check list does not name "
                           "it. What the device reports can't be compared."),
            true};
    }
    if (check.stored4.isEmpty()) {
        return {
            QStringLiteral("The value comes from the check list; the file's length leaves no room for one "
                           "of its own."),
            false};
    }
    if (!check.listed) {
        return {QStringLiteral("The value is the one stored in the file; the check list does not name it."),
                false};
    }
    if (check.listed4.compare(check.stored4, Qt::CaseInsensitive) == 0) {
        return {QStringLiteral("File and check list agree on the value."), false};
    }
    return {QStringLiteral("File and check list differ: the file holds %1, which counts, the list says %2.")
                .arg(check.stored4, check.listed4),
            true};
}

std::array<QString, 5> lampreasons(const ReprogState& state, bool portopen) {
    const bool text = state.Label4[kLampLink].colour == platform::kToldGreen;
    const bool prompt = hasprompt(state);
    const bool mode = inreprogmode(state);
    const bool sends = mode && state.noanswer < kTooLate;
    return {portreason(state, portopen),
            text ? QStringLiteral("text comes from the device") : QStringLiteral("nothing heard since"),
            prompt                          ? QStringLiteral("R, Enter seen")
            : mode                          ? QStringLiteral("left for the reprog mode")
            : state.Text4.holds("R, Enter") ? QStringLiteral("R, Enter seen, but not the whole page")
                                            : QStringLiteral("R, Enter not seen"),
            !state.idleflag                  ? QStringLiteral("the controls rest")
            : sends                          ? QStringLiteral("in reprog mode: Send to KD is open")
            : prompt && willberefused(state) ? QStringLiteral("device waits; the image can't be sent")
            : prompt                         ? QStringLiteral("image chosen, device waits")
            : mode                           ? QStringLiteral("no answer for too long: Refresh asks again")
                                             : QStringLiteral("the device has not asked for anything"),
            resultreason(state)};
}

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
