#include "link/console.h"
#include "link/supervision.h"
#include "platform/textformat.h"
#include "shell/process.h"

namespace benthor::link {

using namespace std::chrono_literals;

namespace {

constexpr char kEscape = 27;
constexpr int kPolls = 100000; ///< about ten seconds on a silent line
constexpr auto kPollWait = 100us;
// The window is painted every so often; each time costs the line a little.
constexpr int kPollsBetweenPaints = 500;
constexpr int kCharactersBetweenPaints = 256;

/// What follows the last separator of a path, and of that what follows the last point.
QString extension(const QString& path) {
    QString name = path;
    name.replace(QLatin1Char('/'), QLatin1Char('\\'));
    return name.section(QLatin1Char('\\'), -1).section(QLatin1Char('.'), -1).toUpper();
}

enum class Reply { Came, Missing, Closed };

/// Each poll takes what waits in place of what came before. Nothing of it reaches `rxbuf`.
Reply awaitreply(LinkState& link, LinkHost& host) {
    const QByteArray expected = link.console.Text6.toLatin1();
    for (int poll = 1; poll <= kPolls; ++poll) {
        host.MSComm1().waitForInput(kPollWait);
        link.Text4.assign(host.MSComm1().Input());
        if (link.Text4.holds(expected)) {
            return Reply::Came;
        }
        if (poll % kPollsBetweenPaints == 0 && !host.repaint()) {
            return Reply::Closed;
        }
    }
    return Reply::Missing;
}

/// False when the screen was closed: nothing more is written then.
bool sendbody(LinkHost& host, const QByteArray& body, bool book, double index) {
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
        host.MSComm1().Output(QByteArrayView(&character, 1));
        if (++written % kCharactersBetweenPaints == 0 && !host.repaint()) {
            return false;
        }
    }
    return true;
}

} // namespace

void sendcommand(LinkState& link, LinkHost& host) {
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
    if (host.MSComm1().PortOpen()) {
        host.MSComm1().Output((console.Text3 + console.Text11 + console.Text9 + console.Text10).toLatin1());
    }
}

void Command2_click(LinkState& link, LinkHost& host) {
    Console& console = link.console;
    if (console.option == kChoiceLogo && extension(console.Text5.text) != QLatin1String("BMT")) {
        host.message(QStringLiteral("Wrong file format. BMT format required"));
        return;
    }
    if (console.option == kChoiceIntervalSend && !platform::isNumeric(console.Text9) &&
        !console.Frame4Visible) {
        host.message(QStringLiteral("Wrong data format, only numeric accepted"));
    }
    link.silentticks = 0;
    link.updatedticks = 0;
    link.AFLabel3 = {QStringLiteral("Checking.."), platform::kToldYellow};
    sendcommand(link, host);
    if (console.Text6.isEmpty()) {
        Command5_click(link, host);
        return;
    }
    switch (awaitreply(link, host)) {
    case Reply::Came:
        Command5_click(link, host);
        break;
    case Reply::Missing:
        host.message(QStringLiteral("No Response - Check Connection"));
        link.silentticks = 100;
        link.AFLabel3 = {QStringLiteral("Not Connected"), platform::kToldYellow};
        break;
    case Reply::Closed:
        break;
    }
}

void Command5_click(LinkState& link, LinkHost& host) {
    const Console& console = link.console;
    const bool book = console.option == kChoiceBook;
    const double index = book ? platform::leadingNumber(console.Text12.text) : 0;
    if (!console.Text5.visible || console.Text5.text.isEmpty()) {
        return;
    }
    // The text stays so lengthened: sent again without being read anew, it ends in two.
    process().uploadtext += QLatin1Char(kEscape);
    if (!sendbody(host, process().uploadtext.toLatin1(), book, index)) {
        return;
    }
    if (book) {
        host.MSComm1().Output(" * * ");
        link.Text4.clear();
    }
}

void send_data(LinkState& link, LinkHost& host) {
    Q_UNUSED(link)
    if (host.MSComm1().PortOpen()) {
        host.MSComm1().Output("G   " + process().uploadtext.toLatin1() + kEscape + "\r\n");
    }
}

void Label19_click(LinkState& link, LinkHost& host, int index) {
    Console& console = link.console;
    console.option = index;
    if (index == kChoiceIntervalSend) {
        if (host.MSComm1().PortOpen() && !console.Text16[0].isEmpty()) {
            host.MSComm1().Output(("S" + console.Text16[0] + "F\r\n").toLatin1());
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
    link.console.Text9 = link.console.Text16[0];
    Label19_click(link, host, index);
}

} // namespace benthor::link
