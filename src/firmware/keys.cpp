// What the user does: keys of the device, the choice of an image, commands by hand.

#include "firmware/lostline.h"
#include "firmware/session.h"
#include "link/commandfields.h"
#include "link/console.h"
#include "link/replypoll.h"
#include "link/textfile.h"
#include "platform/files.h"

namespace benthor::firmware {

using platform::Written;

namespace {

constexpr int kNines = 21;
constexpr int kRestarts = 200;

/// One byte after the other, so that the device's own pace shows in the count.
Written restart(ReprogState& state, ReprogHost& host) {
    for (int press = 1; press <= kRestarts; ++press) {
        const Written written = host.MSComm1().Output("Q");
        if (written != Written::Whole) {
            return written;
        }
        sayinplace(state, "restarting...  " + QByteArray::number(press));
        if (!host.repaint()) {
            break;
        }
    }
    return Written::Whole;
}

Written refresh(ReprogState& state, ReprogHost& host) {
    if (!host.MSComm1().PortOpen() && !state.Text6.isEmpty() && openport(state, host, state.Text6)) {
        freecontrols(state);
    }
    const Written written = host.MSComm1().Output(bytesofkey(kKeyRefresh));
    sayinplace(state, {});
    return written;
}

/// Each poll adds what waits, until the reply is in the text.
link::Reply awaitreply(ReprogState& state, ReprogHost& host) {
    const QByteArray expected = state.fields.Text8.toLatin1();
    return link::pollforreply(
        host.MSComm1(), link::kPolls + 1,
        [&] {
            takereply(state, host);
            return expected.isEmpty() || state.Text4.holds(expected);
        },
        [&] { return host.repaint(); });
}

} // namespace

QByteArray bytesofkey(size_t key) {
    switch (key) {
    case kKeyYes:
        return "Y";
    case kKeyNo:
        return "N";
    case kKeyErase:
        return "&";
    case kKeyRefresh:
        return "1";
    case kKeyContinue:
        return "2";
    case kKeyQuit:
        return "Q";
    case kKeyEnter:
        return "R1";
    case kKeyRetry:
        return QByteArray(kNines, '9') + '&';
    case kKeyRestart:
        return QByteArray().fill('Q', kRestarts);
    default:
        return {};
    }
}

Written presskey(ReprogState& state, ReprogHost& host, size_t key) {
    state.ProgressBar1.value = 0;
    state.pollflag = true;
    if (key == kKeyRefresh) {
        return refresh(state, host);
    }
    if (key == kKeyRestart) {
        return restart(state, host);
    }
    for (const char one : bytesofkey(key)) {
        const Written written = host.MSComm1().Output(QByteArrayView(&one, 1));
        if (written != Written::Whole) {
            return written;
        }
    }
    return Written::Whole;
}

void SendCh_click(ReprogState& state, ReprogHost& host, size_t key) {
    const Written written = presskey(state, host, key);
    if (written != Written::Closed) {
        telllost(host, written, LostAt::Command);
    }
}

void chooseimage(ReprogState& state, const QString& path) {
    state.Text5 = path;
    state.lastimage = path;
    state.filechosen = true;
    refreshchecksums(state);
}

bool takesimage(const ReprogState& state) {
    return !state.sending && state.awaited.isEmpty() && state.sendstate <= 0;
}

void Command7_click(ReprogState& state, ReprogHost& host) {
    const QString path = host.openFile(QStringLiteral("Text Files (*.sog)|*.sog|All Files (*.*)|*.*"),
                                       state.Text5.isEmpty() ? stockimage(state, kStockImage) : state.Text5);
    if (!path.isEmpty()) {
        chooseimage(state, path);
    }
}

void Check1_click(ReprogState& state, ReprogHost& host, bool checked) {
    state.baud9600 = checked;
    host.MSComm1().setSettings(portsettings(state));
}

/// The count begins anew, so that none that stood still keeps the send locked.
void mnuAutoRefresh_click(ReprogState& state, bool checked) {
    state.autorefresh = checked;
    state.noanswer = 0;
}

void Option1_click(ReprogState& state, int option) {
    SendFields fields;
    fields.option = option;
    const link::CommandFields* known = link::commandfields(option);
    if (known != nullptr && option != link::kChoiceQuit) {
        fields.Text3 = QLatin1String(known->command);
        fields.Text8 = QLatin1String(known->expected);
        fields.Text11 = QLatin1String(known->prefix.value_or(""));
        fields.Text9 = QLatin1String(known->data);
        fields.Text9MaxLength = known->dataLimit;
        fields.Text10 = QLatin1String(known->trailer);
    }
    state.fields = fields;
}

void filldata(SendFields& fields) {
    constexpr int kShortestName = 32; // of a user
    constexpr int kIntervalDigits = 3;
    if (fields.option == link::kChoiceUserId) {
        fields.Text9 = fields.Text9.leftJustified(kShortestName);
    } else if (fields.option == link::kChoiceIntervalSend) {
        fields.Text9 = fields.Text9.rightJustified(kIntervalDigits, u'0');
    }
}

QString restofcommand(SendFields fields) {
    filldata(fields);
    return fields.Text9.isEmpty() && fields.Text10.isEmpty() ? QString()
                                                             : fields.Text11 + fields.Text9 + fields.Text10;
}

bool Command4_click(ReprogState& state, ReprogHost& host) {
    state.pollflag = true;
    return state.fields.Text3.isEmpty() ||
           !telllost(host, host.MSComm1().Output(state.fields.Text3.toLatin1()), LostAt::Command);
}

void Command2_click(ReprogState& state, ReprogHost& host) {
    state.ProgressBar1.value = 0;
    if (!Command4_click(state, host)) {
        return;
    }
    state.awaited = state.fields.Text8;
    const bool seen = state.awaited.isEmpty() || host.repaint();
    const link::Reply reply = seen ? awaitreply(state, host) : link::Reply::Closed;
    state.awaited.clear();
    if (reply == link::Reply::Came) {
        Command5_click(state, host);
    } else if (reply == link::Reply::Missing) {
        host.message(QStringLiteral("No Response - Check Connection"), QStringLiteral("No Response"));
    }
}

void Command3_click(ReprogState& state, ReprogHost& host) {
    const QString path = host.saveFile(link::textfilter(), QStringLiteral("new"));
    if (path.isEmpty()) {
        return;
    }
    const platform::FileResult written = platform::writeFileWhole(path, state.Text4.bytes());
    if (!written) {
        host.message(QStringLiteral("The text can't be saved: ") + written.error, {});
    }
}

} // namespace benthor::firmware
