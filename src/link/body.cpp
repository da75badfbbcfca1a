#include "link/body.h"

#include "link/commandmenu.h"
#include "platform/textformat.h"
#include "session/process.h"

#include <QFileInfo>

namespace benthor::link {

using platform::Written;

namespace {

constexpr char kEscape = 27;
constexpr int kNoCommand = 100; ///< ticks since the last command that make the caption fall
// The window is painted every so often; each time costs the line a little.
constexpr int kCharactersBetweenPaints = 256;

/// False when it did not leave whole, or the screen was closed: nothing more is written then.
bool sendcharacters(LinkState& link, LinkHost& host, const QByteArray& body, const Sent& sent) {
    const bool book = link.console.option == kChoiceBook;
    const double index = book ? platform::leadingNumber(link.console.Text12.text) : 0;
    double passed = 0;
    int written = 0;
    for (char character : body) {
        if (book && passed < index) {
            ++passed;
            continue;
        }
        if (book && (character == ';' || character == '*')) {
            character = ':';
        }
        if (put(link, host, QByteArray(1, character), sent) != Written::Whole) {
            return false;
        }
        if (++written % kCharactersBetweenPaints == 0 && !host.repaint()) {
            return false;
        }
    }
    return true;
}

/// The setup that is shown, with an ESC behind it for each time that it was sent. What another screen has put
/// in its place since the last tick does not go.
const QString& setupinhand(const Console& console) {
    QString& text = process().uploadtext;
    const bool shown = text.startsWith(console.Text7) &&
                       QStringView(text).mid(console.Text7.size()).count(QLatin1Char(kEscape)) ==
                           text.size() - console.Text7.size();
    if (!shown) {
        text = console.Text7;
    }
    return text;
}

/// The letter that begins a setup, with nothing to follow it: the device would wait for one.
bool isloneletter(const Console& console) {
    return wire(console) == QLatin1String("G") && bodyinhand(console).kind == Body::Kind::None;
}

void showlost(LinkState& link) {
    link.silentticks = kNoCommand;
    link.AFLabel3 = {QStringLiteral("Not Connected"), platform::kToldYellow};
}

/// One write, and whether the box about a stuck line is due.
struct Attempt {
    Written written;
    bool tells;
};

Attempt attempt(LinkState& link, LinkHost& host, const QByteArray& bytes) {
    const Written written = host.MSComm1().Output(bytes);
    const bool told = link.stucktold;
    if (written == Written::Stuck) {
        link.stucktold = true;
    } else if (written == Written::Whole && !bytes.isEmpty()) {
        link.stucktold = false;
    }
    return {written, written == Written::Stuck && !(told && link.asksitself > 0)};
}

} // namespace

void telllost(LinkState& link, LinkHost& host, const QString& words) {
    host.message(words);
    showlost(link);
}

Sent sentcommand() {
    return {QStringLiteral("The command")};
}

Sent sentsetup() {
    return {QStringLiteral("The setup"), QStringLiteral(": what the device holds now is not known.")};
}

Written put(LinkState& link, LinkHost& host, const QByteArray& bytes, const Sent& sent) {
    const bool open = host.MSComm1().PortOpen();
    const auto [written, tells] = attempt(link, host, bytes);
    if (tells) {
        telllost(link, host,
                 sent.what +
                     QStringLiteral(" was not sent whole: the line to the device took nothing for two "
                                    "seconds.\r\nCheck adapter and cable, and send it again") +
                     sent.behind);
    } else if (written == Written::Stuck) {
        showlost(link);
    } else if (written == Written::Cut && open) {
        telllost(link, host,
                 sent.what +
                     QStringLiteral(" was not sent whole: the line to the device was cut.\r\nPlug it in "
                                    "again, and send it again") +
                     sent.behind);
    } else if (written == Written::Cut) {
        telllost(link, host,
                 sent.what +
                     QStringLiteral(" was not sent: the line to the device is cut.\r\nPlug it in again, "
                                    "and send it again."));
    }
    return written;
}

void putrequest(LinkState& link, LinkHost& host, const QByteArray& bytes, const QString& what) {
    if (attempt(link, host, bytes).tells) {
        host.message(what + QStringLiteral(" was not sent whole: the line to the device took nothing for two "
                                           "seconds, and no answer will come.\r\nCheck adapter and cable, "
                                           "leave by Menu Screen, and try again."));
    }
}

bool bodymaygo(const LinkState& link, LinkHost& host) {
    const Console& console = link.console;
    const Body body = bodyinhand(console);
    const bool setup = console.option == kChoiceSetup || console.Text3 == QLatin1String("G");
    if (setup && body.kind == Body::Kind::File) {
        return host.setupMayGo({QString::fromLatin1(body.file), true});
    }
    return body.kind != Body::Kind::Setup || host.setupMayGo({setupinhand(console), false});
}

bool tellmissing(const LinkState& link, LinkHost& host) {
    if (bodyinhand(link.console).kind != Body::Kind::Missing) {
        return false;
    }
    const QString& name = link.console.Text5.text;
    host.message((name.isEmpty() ? QStringLiteral("No file is chosen, and nothing was sent.")
                                 : name + QStringLiteral(" was not opened, and nothing was sent.")) +
                 QStringLiteral("\r\nOpen the file to send, then send again."));
    return true;
}

void sendbody(LinkState& link, LinkHost& host) {
    Console& console = link.console;
    const Body body = bodyinhand(console);
    if (body.kind != Body::Kind::File && body.kind != Body::Kind::Setup) {
        return;
    }
    const bool file = body.kind == Body::Kind::File;
    const Sent sent = file ? Sent{QFileInfo(console.chosenfile.path).fileName()} : sentsetup();
    // The text stays so lengthened: sent again without being read anew, it ends in two.
    if (file) {
        console.chosenfile.bytes += kEscape;
    } else {
        static_cast<void>(setupinhand(console));
        process().uploadtext += QLatin1Char(kEscape);
    }
    const QByteArray bytes = file ? body.file + kEscape : process().uploadtext.toLatin1();
    if (!sendcharacters(link, host, bytes, sent) || console.option != kChoiceBook) {
        return;
    }
    if (put(link, host, " * * ", sent) == Written::Whole) {
        link.Text4.clear();
    }
}

QString wire(const Console& console) {
    return console.Text3 + console.Text11 + console.Text9 + console.Text10;
}

bool isupdate(const Console& console) {
    const bool byMenu =
        console.option == kChoiceSetup && console.checkedEntry == commandEntry(kChoiceSetup)->name;
    return byMenu || isloneletter(console);
}

QString typedinterval(const Console& console) {
    const bool seen = console.option == kChoiceIntervalSend && !console.Text9Visible;
    return seen && console.intervaltyped ? console.Text16[0] : QString();
}

} // namespace benthor::link
