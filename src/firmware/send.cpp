// The send: what belongs to a command, then the image in records of 128 bytes, or a text.

#include "firmware/finalphase.h"
#include "firmware/session.h"
#include "link/console.h"
#include "platform/files.h"
#include "platform/textformat.h"

#include <QFile>

namespace benthor::firmware {

namespace {

constexpr qint64 kRecord = 128;
constexpr int kRecordsBetweenLooks = 50;
constexpr qint64 kMostOfText = 30000;
constexpr qint64 kTextBetweenCounts = 5000;
constexpr int kShortestName = 32; ///< of a user
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
    Closed,  ///< the screen was closed: nothing more is written
};

/// The image on its way.
struct Transfer {
    QFile file;
    qint64 limit = 0;
    int records = 0;
    QByteArray dots = "   .";
    QByteArray reply; ///< received since the first look
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
    state.Text14.clear();
    state.Text14Colour = kButtonGrey;
}

void sendfields(ReprogState& state, ReprogHost& host) {
    SendFields& fields = state.fields;
    if (fields.option == link::kChoiceUserId) {
        fields.Text9 = fields.Text9.leftJustified(kShortestName);
    } else if (fields.option == link::kChoiceIntervalSend) {
        fields.Text9 = fields.Text9.rightJustified(3, u'0');
    }
    if (!fields.Text9.isEmpty()) {
        host.MSComm1().Output((fields.Text11 + fields.Text9 + fields.Text10).toLatin1());
    } else if (!fields.Text10.isEmpty()) {
        host.MSComm1().Output((fields.Text11 + fields.Text10).toLatin1());
    }
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
    if (sog && first == kStar) {
        host.MSComm1().Output("&");
    }
    if (!sog || first == kStar) {
        showsending(state);
    }
    host.MSComm1().Output(QByteArrayView(&first, 1));
    state.sum += static_cast<unsigned char>(first);
    return Turn::GoOn;
}

Turn sendrecord(ReprogState& state, ReprogHost& host, Transfer& transfer) {
    QByteArray record = transfer.file.read(kRecord);
    if (record.isEmpty()) {
        return Turn::AtEnd;
    }
    record.append(kRecord - record.size(), '\0');
    for (const char byte : record) {
        state.sum += static_cast<unsigned char>(byte);
    }
    host.MSComm1().Output(record);
    return Turn::GoOn;
}

bool endedearly(const QByteArray& reply) {
    return reply.contains("MEMORY") || reply.contains("oooo") || reply.contains("OOOO");
}

bool droppedout(const QByteArray& reply) {
    return reply.contains("REPROG MODE") || reply.contains("Status check") || reply.contains(" to ");
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
    return endedearly(transfer.reply) || droppedout(transfer.reply) ? Turn::Stopped : Turn::GoOn;
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

Turn linecut(ReprogHost& host, const Transfer& transfer) {
    host.message(QStringLiteral("Not reprogrammed! The line to the device was cut after %1 bytes.\r\n"
                                "Plug it in again, click Refresh, and try again.")
                     .arg(transfer.file.pos()),
                 {});
    return Turn::Stopped;
}

Turn sendone(ReprogState& state, ReprogHost& host, Transfer& transfer) {
    const bool open = host.MSComm1().PortOpen();
    const Turn sent =
        state.counted > 0 ? sendrecord(state, host, transfer) : sendfirstbyte(state, host, transfer);
    if (sent != Turn::GoOn) {
        return sent;
    }
    state.counted += kRecord;
    ++transfer.records;
    if (open && !host.MSComm1().PortOpen()) {
        return linecut(host, transfer);
    }
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

void offertokeeprest(ReprogHost& host, QFile& file) {
    if (!host.confirm(QStringLiteral("Not all text sent. Do you want to save remaining text in new file?"),
                      QStringLiteral("Save Text"))) {
        return;
    }
    const QString path =
        host.saveFile(QStringLiteral("Text Files (*.txt)|*.txt|All Files (*.*)|*.*"), QString());
    if (path.isEmpty()) {
        return;
    }
    const platform::FileResult written = platform::writeFileWhole(path, file.readAll());
    if (!written) {
        host.message(QStringLiteral("The rest of the text can't be saved: ") + written.error, {});
    }
}

/// A book goes out as it is, byte by byte. False when the screen was closed.
bool sendtext(ReprogState& state, ReprogHost& host, QFile& file) {
    const qint64 limit = static_cast<qint64>(platform::leadingNumber(state.fields.Text12)) + kMostOfText;
    qint64 sent = 0;
    char byte = 0;
    while (sent < limit && file.getChar(&byte)) {
        host.MSComm1().Output(QByteArrayView(&byte, 1));
        ++sent;
        if (sent % kTextBetweenCounts == 0) {
            sayinplace(state, QByteArray::number(sent));
        }
        if (sent % kRecord == 0 && !host.repaint()) {
            return false;
        }
    }
    host.MSComm1().Output(" * * ");
    if (sent == limit && !file.atEnd()) {
        offertokeeprest(host, file);
    }
    return true;
}

void endsend(ReprogState& state, ReprogHost& host) {
    state.Timer1 = true;
    if (host.blinkVisible()) {
        host.unloadBlink();
    }
    freecontrols(state);
}

} // namespace

void Command5_click(ReprogState& state, ReprogHost& host) {
    beginsend(state);
    sendfields(state, host);
    if (state.Text5.isEmpty()) {
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
    case Turn::Stopped:
        endsend(state, host);
        break;
    case Turn::GoOn:
    case Turn::Closed:
        break;
    }
}

} // namespace benthor::firmware
