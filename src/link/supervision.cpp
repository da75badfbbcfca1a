#include "link/supervision.h"
#include "link/body.h"
#include "link/console.h"
#include "link/directory.h"
#include "link/download.h"
#include "platform/textformat.h"

namespace benthor::link {

namespace {

constexpr int kMostSilentTicks = 100;
constexpr int kCommandTicks = 51; ///< 25 s: a command is no longer waited for
constexpr int kUpdateShows = 5;
constexpr int kStallTicks = 12; ///< 6 s without an arrival: a beacon in the text counts no longer
constexpr int kSweepTicks = 40;
constexpr int kTickGuard = 20000;
constexpr int kReceive = 1; ///< bytes per receive event
constexpr double kIntervalStep = 0.1;
constexpr double kIntervalKnown = 1.0;

const QByteArray kBeacon = QByteArrayLiteral("PPP");
const QByteArray kSaving = QByteArrayLiteral("Wait..");
const QByteArray kSetupUpdated = QByteArrayLiteral("+=+");

void setstatus(LinkState& link, const char* caption, platform::ToldColour colour) {
    link.AFLabel3 = {QLatin1String(caption), colour};
}

bool holdsUpdateMark(const MarkedText& text) {
    return text.holds("+^+") || text.holds("+++") || text.holds(kSetupUpdated);
}

/// The interval is asked for until a real value has come, ten times at most: the box counts in tenths.
void askforinterval(LinkState& link, LinkHost& host) {
    const QString before = link.console.Text16[1];
    const bool number = platform::isNumeric(before);
    const double value = platform::leadingNumber(before);
    if (number && value >= kIntervalKnown) {
        return;
    }
    Label19_click(link, host, kChoiceIntervalGet);
    link.console.Text16[1] =
        number ? QString::number(value + kIntervalStep, 'g', 15) : QString::number(kIntervalStep);
}

/// Not while a dive comes: the request would fall into it, and what has come would be gone. And not while the
/// cable is out: nothing leaves, and a try would be used up.
bool mayask(const LinkState& link, LinkHost& host) {
    return host.MSComm1().PortOpen() && !awaitsdive(link);
}

void connected(LinkState& link, LinkHost& host) {
    setstatus(link, "Connected", platform::kToldGreen);
    ++link.tickcount;
    if (mayask(link, host)) {
        askforinterval(link, host);
        if (link.Mgrid.rowCount() < 2) {
            cmdstore_click(link, host);
        }
    }
    link.downloadbuttons = true;
}

/// The order of these tests is what the caption means.
void judge(LinkState& link, LinkHost& host) {
    if (link.updatedticks < kUpdateShows && holdsUpdateMark(link.Text4)) {
        ++link.updatedticks;
        setstatus(link, "Data Updated", platform::kToldCyan);
        if (link.console.option == kChoiceIntervalSend && mayask(link, host)) {
            Label19_click(link, host, kChoiceIntervalGet);
        }
        ++link.tickcount;
    } else if (link.stallticks < kStallTicks && link.Text4.holds(kBeacon)) {
        connected(link, host);
    } else if (link.Text4.holds(kSaving)) {
        setstatus(link, "Saving..", platform::kToldYellow);
    } else if (link.silentticks < kCommandTicks) {
        setstatus(link, "Command Sent..", platform::kToldBlue);
        ++link.tickcount;
    } else {
        setstatus(link, "Not Connected", platform::kToldYellow);
        link.downloadbuttons = false;
    }
}

void showhintbox(LinkState& link, LinkHost& host) {
    if (link.AFLabel3.text == QLatin1String("Connected")) {
        link.Text14Visible = false;
        if (link.Text4.holds(kSetupUpdated) && mayask(link, host)) {
            cmdstore_click(link, host);
        }
    } else if (link.AFLabel3.text == QLatin1String("Command Sent..")) {
        link.Text14Visible = false;
    } else {
        link.Text14Visible = !link.download.TXTWaitVisible;
    }
}

/// Nothing was sent where no port is open, and no verdict follows.
void endchecking(LinkState& link) {
    if (link.AFLabel3.text != QLatin1String("Checking..")) {
        return;
    }
    if (!link.ComNum.isEmpty()) {
        setstatus(link, "Not Connected", platform::kToldYellow);
    } else {
        setstatus(link, link.Timer8 ? "Searching.." : "Choose Com Port:", kLightRed);
    }
    link.downloadbuttons = false;
}

/// What has come stays, and so does all that waits for more: the verdict alone falls and rises.
void reopencut(LinkState& link, LinkHost& host) {
    if (portcut(link, host)) {
        link.download.cut = link.download.cut || !link.rxbuf.holds("End");
        if (host.MSComm1().reopen()) {
            link.stucktold = false;
        }
    }
}

} // namespace

bool portcut(const LinkState& link, LinkHost& host) {
    return link.portheld && !host.MSComm1().PortOpen();
}

void setcomnum(LinkState& link, LinkHost& host, const QString& text) {
    if (link.ComNum != text) {
        link.ComNum = text;
        opencomport(link, host);
    }
}

void opencomport(LinkState& link, LinkHost& host) {
    platform::SerialLine& port = host.MSComm1();
    link.portheld = false;
    if (port.PortOpen()) {
        port.setPortOpen(false);
    }
    if (link.ComNum.isEmpty()) {
        setstatus(link, "Choose Com Port:", kLightRed);
        link.ComNumColour = kLightRed;
        return;
    }
    port.setCommPort(platform::toWhole(platform::leadingNumber(link.ComNum)));
    port.setSettings(QStringLiteral("9600,N,8,1"));
    port.setInputLen(0);
    if (!port.setPortOpen(true)) {
        return;
    }
    link.portheld = true;
    link.stucktold = false;
    port.setRThreshold(kReceive);
    link.capturemode = false;
    link.linkwatch = true;
    link.console.Command2.enabled = true;
    link.AFLabel3.text = QStringLiteral("Connecting..");
    link.ComNumColour = kLightGreen;
}

void MSComm1_received(LinkState& link, LinkHost& host) {
    constexpr unsigned char kFirstPrintable = 33;
    constexpr unsigned char kBehindLastPrintable = 192;
    platform::SerialLine& port = host.MSComm1();
    while (port.InBufferCount() > 0) {
        link.rxbuf.append(port.Input());
        const QByteArray& bytes = link.rxbuf.bytes();
        const auto last = static_cast<unsigned char>(bytes.isEmpty() ? '\0' : bytes.back());
        if (last >= kFirstPrintable && last < kBehindLastPrintable) {
            ++link.rxcount;
        }
    }
}

void Timer1_tick(LinkState& link, LinkHost& host) {
    const AsksItself itself(link);
    reopencut(link, host);
    link.console.intervalasked = false;
    const bool open = host.MSComm1().PortOpen();
    if (link.capturemode && open) {
        capturestep(link, host);
    } else {
        link.download.downloadingdive.visible = false;
        if (link.tickcount > kTickGuard) {
            link.tickcount = 0;
        }
    }
    ++link.tickcount;
    if (link.linkwatch && (open || link.portheld)) {
        link.Text4.follow(link.rxbuf);
        link.silentticks = std::min(link.silentticks + 1, kMostSilentTicks);
        judge(link, host);
        linkstatuspaint(link);
    } else if (!open) {
        endchecking(link);
    }
    refreshtexttosend(link);
    link.stallticks = link.rxcount == link.rxcountlast ? link.stallticks + 1 : 0;
    link.rxcountlast = link.rxcount;
    replyecho(link);
    if (!link.console.intervalasked) {
        readinterval(link); // to what this tick has asked no answer can have come
    }
    if (link.Mgrid.rowCount() < 2) {
        link.downloadbuttons = false;
    }
    showhintbox(link, host);
}

void linkstatuspaint(LinkState& link) {
    const int t = link.tickcount;
    for (int lamp = 0; lamp < static_cast<int>(link.AFShape1.size()); ++lamp) {
        const bool rising = t < kSweepTicks / 2;
        const double front = rising ? t / 2.0 : (kSweepTicks - 1 - t) / 2.0;
        const bool behind = front < lamp || t >= 100;
        link.AFShape1[static_cast<std::size_t>(lamp)] = behind == rising ? kLightBlue : platform::kToldGreen;
    }
    if (t > kSweepTicks) {
        link.tickcount = 0;
    }
}

} // namespace benthor::link
