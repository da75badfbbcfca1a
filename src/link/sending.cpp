#include "link/body.h"
#include "link/replypoll.h"
#include "platform/textformat.h"
#include "session/process.h"

namespace benthor::link {

using platform::Written;

namespace {

constexpr char kEscape = 27;

/// What follows the last separator of a path, and of that what follows the last point.
QString extension(const QString& path) {
    QString name = path;
    name.replace(QLatin1Char('/'), QLatin1Char('\\'));
    return name.section(QLatin1Char('\\'), -1).section(QLatin1Char('.'), -1).toUpper();
}

/// Each poll takes what waits in place of what came before. Nothing of it reaches `rxbuf`.
Reply awaitreply(LinkState& link, LinkHost& host) {
    const QByteArray expected = link.console.Text6.toLatin1();
    return pollforreply(
        host.MSComm1(), kPolls,
        [&] {
            link.Text4.assign(host.MSComm1().Input());
            return link.Text4.holds(expected);
        },
        [&] { return host.repaint(); });
}

/// What can be seen is what goes. False, and told, where what was typed has no room.
bool takeinterval(Console& console, LinkHost& host) {
    const QString typed = typedinterval(console);
    if (typed.size() > console.Text9MaxLength) {
        host.message(QStringLiteral("%1 is no interval: at most %2 digits can be sent. Nothing was sent.")
                         .arg(typed)
                         .arg(console.Text9MaxLength));
        return false;
    }
    if (!typed.isEmpty()) {
        console.Text9 = typed;
    }
    return true;
}

} // namespace

Written sendcommand(LinkState& link, LinkHost& host) {
    Console& console = link.console;
    if (host.MSComm1().PortOpen()) {
        host.MSComm1().Input();
    }
    link.rxbuf.clear();
    link.Text4.clear();
    link.capturemode = false;
    link.linkwatch = true;
    link.Text4.assign(console.Text3.toLatin1());
    if (console.option == kChoiceUserId && console.Text9MaxLength == 32) {
        console.Text9 = console.Text9.leftJustified(console.Text9MaxLength);
    }
    if (console.option == kChoiceIntervalSend) {
        console.Text9 = console.Text9.rightJustified(console.Text9MaxLength, QLatin1Char('0'));
    }
    return put(link, host, wire(console).toLatin1(), sentcommand());
}

void Command2_click(LinkState& link, LinkHost& host) {
    Console& console = link.console;
    if (isupdate(console)) {
        host.updateSetup();
        return;
    }
    if (console.option == kChoiceLogo && extension(console.Text5.text) != QLatin1String("BMT")) {
        host.message(QStringLiteral("Wrong file format. BMT format required"));
        return;
    }
    if (tellmissing(link, host) || !takeinterval(console, host)) {
        return;
    }
    if (console.option == kChoiceIntervalSend && !platform::isNumeric(console.Text9) &&
        !console.Frame4Visible) {
        host.message(QStringLiteral("Wrong data format, only numeric accepted"));
    }
    if (!bodymaygo(link, host)) {
        return;
    }
    link.silentticks = 0;
    link.updatedticks = 0;
    link.AFLabel3 = {QStringLiteral("Checking.."), platform::kToldYellow};
    const Written written = sendcommand(link, host);
    if (written == Written::Stuck || written == Written::Cut) {
        return;
    }
    if (console.Text6.isEmpty()) {
        sendbody(link, host);
        return;
    }
    switch (awaitreply(link, host)) {
    case Reply::Came:
        sendbody(link, host);
        break;
    case Reply::Missing:
        telllost(link, host, QStringLiteral("No Response - Check Connection"));
        break;
    case Reply::Closed:
        break;
    }
}

void Command5_click(LinkState& link, LinkHost& host) {
    if (!tellmissing(link, host) && bodymaygo(link, host)) {
        sendbody(link, host);
    }
}

Written send_data(LinkState& link, LinkHost& host) {
    const QByteArray setup = "G   " + process().uploadtext.toLatin1() + kEscape + "\r\n";
    return put(link, host, setup, sentsetup());
}

void Label19_click(LinkState& link, LinkHost& host, int index) {
    Console& console = link.console;
    console.option = index;
    if (index == kChoiceIntervalSend) {
        const QByteArray interval = console.Text16[0].toLatin1();
        preparecommand(link); // no Send that bears another command is left behind it
        console.Command2.visible = false;
        if (!interval.isEmpty()) {
            put(link, host, "S" + interval + "F\r\n", sentcommand());
        }
        return;
    }
    if (index == kChoiceReadings) {
        link.Timer6 = true;
    }
    preparecommand(link);
    if (index == kChoiceQuit) {
        if (host.confirm(QStringLiteral("Are you sure you want to restart KD/Tolby"),
                         QStringLiteral("Restart?"))) {
            Command2_click(link, host);
        }
        return;
    }
    const bool byItself = index == kChoiceIntervalGet || index == kChoiceReadings;
    console.Command2.visible = !byItself && index != kChoiceSetup;
    if (byItself) {
        const QString& caption = link.AFLabel3.text;
        if (caption.contains(QLatin1String("Command ")) || caption.contains(QLatin1String("Data ")) ||
            process().deviceconnected == 1) {
            Command2_click(link, host);
        }
        console.intervalread = false;
        console.intervalasked = true;
    }
}

void Picture14_click(LinkState& link, LinkHost& host, int index) {
    const QString value = link.console.Text16[0];
    link.console.Text9 = value;
    Label19_click(link, host, index);
    if (index == kChoiceIntervalSend) {
        link.console.Text9 = value;
    }
}

} // namespace benthor::link
