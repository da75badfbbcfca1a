// The session's beginning and end, and what its steps share.

#include "firmware/session.h"

namespace benthor::firmware {

namespace {

constexpr int kInputAtOnce = 200;
constexpr int kNoCommand = 10;

} // namespace

QString portsettings(const ReprogState& state) {
    return state.baud9600 ? QStringLiteral("9600,n,8,1") : QStringLiteral("38400,n,8,1");
}

QString stockimage(const ReprogState& state, const char* name) {
    return state.reprogfolder + u'/' + QLatin1String(name);
}

void refreshchecksums(ReprogState& state) {
    state.check = readchecksums(state.Text5, state.reprogfolder);
    state.Command2.colour = state.check.listed ? platform::kToldGreen : platform::kToldYellow;
}

void lockcontrols(ReprogState& state) {
    state.idleflag = false;
}

void freecontrols(ReprogState& state) {
    state.idleflag = true;
    state.sending = false;
    state.pollflag = true;
    state.Label5Visible = false;
}

QByteArray takereply(ReprogState& state, ReprogHost& host) {
    QByteArray came;
    while (host.MSComm1().PortOpen() && host.MSComm1().InBufferCount() > 0) {
        const QByteArray piece = host.MSComm1().Input();
        if (piece.isEmpty()) {
            break;
        }
        came += piece;
    }
    state.Text4.append(came);
    state.heard = state.heard || !came.isEmpty();
    return came;
}

void sayinplace(ReprogState& state, const QByteArray& words) {
    state.Text4.assign(words);
    state.heard = false;
}

bool openport(ReprogState& state, ReprogHost& host, const QString& number) {
    platform::SerialLine& port = host.MSComm1();
    port.setPortOpen(false);
    port.setCommPort(number.toInt());
    port.setSettings(portsettings(state));
    port.setInputLen(kInputAtOnce);
    port.setRThreshold(0);
    state.Text6 = number;
    return port.setPortOpen(true);
}

void openreprog(ReprogState& state, ReprogHost& host, const QString& programfolder, const QString& image) {
    const QString last = state.lastimage;
    state = ReprogState();
    state.reprogfolder = programfolder + QStringLiteral("/Reprog");
    state.lastimage = last;
    state.Text5 = last.isEmpty() ? stockimage(state, kStockImage) : last;
    if (image.isEmpty()) {
        refreshchecksums(state);
    } else {
        chooseimage(state, image);
    }
    host.message(QStringLiteral("CLOSE ALL OTHER PROGRAMS FOR MOST RELIABLE LINK. "
                                "DO NOT USE MOUSE OR KEYBOARD WHEN UNIT IS PROGRAMMING."),
                 {});
    Option1_click(state, kNoCommand);
    host.MSComm1().setInputLen(kInputAtOnce);
    beginrun(state, host, host.rememberedPort(), false,
             image.isEmpty() ? FirstRequest::AtOnce : FirstRequest::None);
}

void beginrun(ReprogState& state, ReprogHost& host, const QString& number, bool rehearsal,
              FirstRequest request) {
    state.rehearsal = rehearsal;
    state.sendstate = 0;
    state.sentmark = false;
    state.recoveryflag = false;
    state.noanswer = 0;
    state.counted = 0;
    state.sent = 0;
    state.brokenoff = {};
    state.Text14.clear();
    state.Text14Colour = kButtonGrey;
    state.Text6 = number;
    sayinplace(state, {});
    if (number.isEmpty()) {
        lockcontrols(state);
    } else {
        openport(state, host, number);
        freecontrols(state);
        if (request == FirstRequest::AtOnce) {
            SendCh_click(state, host, kKeyRefresh);
        }
    }
    showstatus(state, host.MSComm1().PortOpen()); // no lamp speaks of the port before
}

void closereprog(ReprogState& state, ReprogHost& host) {
    if (host.MSComm1().PortOpen()) {
        host.MSComm1().setPortOpen(false);
    }
    if (!state.Text6.isEmpty() && !state.rehearsal) {
        host.rememberPort(state.Text6);
    }
    if (host.blinkVisible()) {
        host.unloadBlink();
    }
}

} // namespace benthor::firmware
