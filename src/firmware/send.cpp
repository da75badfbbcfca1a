// The send: what belongs to a command, then the image in records of 128 bytes, or a text.

#include "firmware/finalphase.h"
#include "firmware/lostline.h"
#include "firmware/sendtext.h"
#include "firmware/session.h"
#include "link/console.h"

#include <QFile>

namespace benthor::firmware {

using platform::Written;

namespace {

constexpr qint64 kRecord = 128;
constexpr int kRecordsBetweenLooks = 50;
constexpr char kStar = 42;
constexpr char kMark = 38; ///< "&"

QString badfile() {
    return QStringLiteral("Bad input file. Make sure correct file is selected!");
}

/// How a look at the line, or the file, ends the loop over the image.
enum class Turn {
    GoOn,
    AtEnd,   ///< to the final phase
    Stopped, ///< the device has had enough, or the file is no image
    Lost,    ///< the line gave up
    Closed,  ///< the screen was closed: nothing more is written
};

/// The image on its way.
struct Transfer {
    QFile file;
    qint64 limit = 0;
    int records = 0;
    QByteArray dots = "   .";
    QByteArray reply;                 ///< received since the first look
    Written written = Written::Whole; ///< how the last write ended

    /// False where it did not leave whole.
    bool put(ReprogHost& host, QByteArrayView bytes) {
        written = host.MSComm1().Output(bytes);
        return written == Written::Whole;
    }
};

void beginsend(ReprogState& state) {
    state.SendCh[kKeyRestart] = {false, kButtonGrey};
    state.Label4[kLampResult] = {QStringLiteral("KD Not Programmed"), platform::kToldRed};
    lockcontrols(state);
    state.sending = true;
    state.pollflag = false;
    // Neither the mark nor the value of a send before this one may speak for it.
    state.sentmark = false;
    state.sendstate = 0;
    state.counted = 0;
    state.sum = 0;
    state.sent = 0;
    state.brokenoff = {};
    state.Text14.clear();
    state.Text14Colour = kButtonGrey;
}

Written sendfields(ReprogState& state, ReprogHost& host) {
    filldata(state.fields);
    const QString rest = restofcommand(state.fields);
    return rest.isEmpty() ? Written::Whole : host.MSComm1().Output(rest.toLatin1());
}

void showsending(ReprogState& state) {
    state.Label5Visible = true;
    state.Label4[kLampReady] = {QStringLiteral("Sending. This can take 10mins+.."), platform::kToldYellow};
}

/// An image of another name brings its mark along.
Turn sendfirstbyte(ReprogState& state, ReprogHost& host, Transfer& transfer) {
    char first = 0;
    if (!transfer.file.getChar(&first)) {
        return Turn::AtEnd;
    }
    const bool sog =
        state.Text5.contains(QLatin1String(".SOG")) || state.Text5.contains(QLatin1String(".sog"));
    if (!sog && first != kMark) {
        host.message(badfile(), {});
        return Turn::Stopped;
    }
    if (sog && first == kStar && !transfer.put(host, "&")) {
        return Turn::Lost;
    }
    if (!sog || first == kStar) {
        showsending(state);
    }
    if (!transfer.put(host, QByteArrayView(&first, 1))) {
        return Turn::Lost;
    }
    state.sum += static_cast<unsigned char>(first);
    state.sent = 1;
    return Turn::GoOn;
}

Turn sendrecord(ReprogState& state, ReprogHost& host, Transfer& transfer) {
    QByteArray record = transfer.file.read(kRecord);
    if (record.isEmpty()) {
        return Turn::AtEnd;
    }
    const qsizetype length = record.size();
    record.append(kRecord - length, '\0');
    for (const char byte : record) {
        state.sum += static_cast<unsigned char>(byte);
    }
    if (!transfer.put(host, record)) {
        return Turn::Lost;
    }
    state.sent += length;
    return Turn::GoOn;
}

bool endedearly(const QByteArray& reply) {
    return reply.contains("MEMORY") || reply.contains("oooo") || reply.contains("OOOO");
}

bool droppedout(const QByteArray& reply) {
    return reply.contains("REPROG MODE") || reply.contains("Status check") || reply.contains(" to ");
}

/// What was counted of a transfer that the device has ended is worth nothing; where it ended is kept.
Turn stop(ReprogState& state, const Transfer& transfer) {
    const auto how = endedearly(transfer.reply) ? BrokenOff::How::EndedEarly : BrokenOff::How::DroppedOut;
    state.brokenoff = {how, state.sent, transfer.limit};
    state.counted = 0;
    state.sum = 0;
    state.blinkcount = 0;
    return Turn::Stopped;
}

/// The first look shows what has come and judges nothing of it: that is the end of the page before.
Turn look(ReprogState& state, ReprogHost& host, Transfer& transfer) {
    transfer.dots += '.';
    sayinplace(state, "Sending data byte: " + QByteArray::number(state.counted) + transfer.dots);
    if (transfer.records == 1) {
        takereply(state, host);
        return Turn::GoOn;
    }
    state.Text4.append(transfer.reply);
    transfer.reply += takereply(state, host);
    return endedearly(transfer.reply) || droppedout(transfer.reply) ? stop(state, transfer) : Turn::GoOn;
}

/// On for two looks, off for one.
void blink(ReprogState& state, ReprogHost& host) {
    --state.blinkcount;
    if (!host.blinkVisible()) {
        state.Timer1 = false;
        state.blinkcount = 2;
        host.showBlink();
    } else if (state.blinkcount < 1) {
        host.hideBlink();
    }
}

Turn sendone(ReprogState& state, ReprogHost& host, Transfer& transfer) {
    const Turn sent =
        state.counted > 0 ? sendrecord(state, host, transfer) : sendfirstbyte(state, host, transfer);
    if (sent != Turn::GoOn) {
        return sent;
    }
    state.counted += kRecord;
    ++transfer.records;
    const bool looks = transfer.records % kRecordsBetweenLooks == 1;
    if (looks && look(state, host, transfer) == Turn::Stopped) {
        return Turn::Stopped;
    }
    if (!host.repaint()) {
        return Turn::Closed;
    }
    if (state.counted > transfer.limit) {
        return Turn::AtEnd;
    }
    state.ProgressBar1 = {static_cast<int>(state.counted), static_cast<int>(transfer.limit)};
    if (looks) {
        blink(state, host);
    }
    return Turn::GoOn;
}

Turn sendimage(ReprogState& state, ReprogHost& host, Transfer& transfer) {
    Turn turn = Turn::GoOn;
    while (turn == Turn::GoOn) {
        turn = transfer.file.atEnd() ? Turn::AtEnd : sendone(state, host, transfer);
    }
    return turn;
}

void endsend(ReprogState& state, ReprogHost& host) {
    state.Timer1 = true;
    if (host.blinkVisible()) {
        host.unloadBlink();
    }
    freecontrols(state);
}

void sendfile(ReprogState& state, ReprogHost& host, Transfer& transfer) {
    if (state.fields.option == link::kChoiceBook) {
        if (sendtext(state, host, transfer.file)) {
            freecontrols(state);
        }
        return;
    }
    transfer.limit = transfer.file.size();
    switch (sendimage(state, host, transfer)) {
    case Turn::AtEnd:
        if (finalphase(state, host, transfer.limit, transfer.reply)) {
            endsend(state, host);
        }
        break;
    case Turn::Lost:
        state.brokenoff = {BrokenOff::How::Lost, state.sent, transfer.limit};
        telllost(host, transfer.written, LostAt::Image, state.sent);
        endsend(state, host);
        break;
    case Turn::Stopped:
        endsend(state, host);
        break;
    case Turn::GoOn:
    case Turn::Closed:
        break;
    }
}

} // namespace

void Command5_click(ReprogState& state, ReprogHost& host) {
    // Ahead of all else: what is known of the image that went before stays known.
    if (!host.MSComm1().PortOpen()) {
        telllost(host, Written::Closed,
                 state.fields.option == link::kChoiceBook ? LostAt::Command : LostAt::Start);
        return;
    }
    beginsend(state);
    if (telllost(host, sendfields(state, host), LostAt::Command) || state.Text5.isEmpty()) {
        freecontrols(state);
        return;
    }
    Transfer transfer;
    transfer.file.setFileName(state.Text5);
    if (!transfer.file.open(QIODevice::ReadOnly)) {
        host.message(badfile() + QStringLiteral("\r\n%1: %2").arg(state.Text5, transfer.file.errorString()),
                     {});
        freecontrols(state);
        return;
    }
    sendfile(state, host, transfer);
}

} // namespace benthor::firmware
