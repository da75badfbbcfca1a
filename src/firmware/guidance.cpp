#include "firmware/guidance.h"

#include "firmware/session.h"
#include "firmware/sessionfacts.h"
#include "link/console.h"

#include <QFileInfo>
#include <algorithm>

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
            text ? QStringLiteral("text comes from the device") : QStringLiteral("no text comes from the device"),
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

} // namespace benthor::firmware
