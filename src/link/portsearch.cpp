#include "link/directory.h"
#include "link/download.h"
#include "link/supervision.h"

namespace benthor::link {

namespace {

constexpr int kLastSearched = 16;
constexpr int kLastPort = 31;
constexpr int kTicksUntilAnew = 10;

const QByteArray kBeacon = QByteArrayLiteral("PPP");
const QByteArray kLoaderSmall = QByteArrayLiteral("ooooooooooo");
const QByteArray kLoaderLarge = QByteArrayLiteral("OOOOOOOOO");

enum class Heard { Nothing, Device, Loader };

Heard heard(const QByteArray& text) {
    if (text.contains(kBeacon)) {
        return Heard::Device;
    }
    return text.contains(kLoaderSmall) || text.contains(kLoaderLarge) ? Heard::Loader : Heard::Nothing;
}

void takefound(LinkState& link, LinkHost& host, int port, Heard what) {
    host.MSComm2(port).setPortOpen(false);
    link.Timer8 = false;
    link.Label8.clear();
    link.scanheld.fill(false);
    closesearchports(host, kLastSearched);
    const QString number = QString::number(port);
    if (link.ComNum != number || !host.MSComm1().PortOpen()) {
        link.ComNum = number; // typed already, it could not be opened while the search held it
        opencomport(link, host);
    }
    remembercomport(link);
    if (what == Heard::Loader) {
        host.openFirmware();
    }
}

/// A port whose adapter was pulled and is back goes on listening; what it heard before stays.
void reopencut(const LinkState& link, LinkHost& host, int number) {
    if (link.scanheld[static_cast<std::size_t>(number)] && !host.MSComm2(number).PortOpen()) {
        host.MSComm2(number).reopen();
    }
}

void searchon(LinkState& link, LinkHost& host) {
    link.Label8 = QStringLiteral("Scanning..");
    ++link.scanticks;
    if (link.scanticks <= kTicksUntilAnew || awaitsdive(link)) {
        return; // a number beyond the searched ones was typed, and a dive comes there
    }
    mnuFindKD_click(link, host);
    link.searchedlong = true;
    if (!host.tipsShowing() && !link.tipshown) {
        link.tipshown = true;
        host.showTips();
    }
}

} // namespace

bool searchisyoung(const LinkState& link) {
    constexpr int kFirstTicks = 2; // ten seconds: each port has been looked at twice
    return link.Timer8 && !link.searchedlong && link.scanticks < kFirstTicks &&
           link.AFLabel3.text == QLatin1String("Searching..");
}

void closesearchports(LinkHost& host, int last) {
    for (int index = 1; index <= last; ++index) {
        if (host.MSComm2(index).PortOpen()) {
            host.MSComm2(index).setPortOpen(false);
        }
    }
}

void MSComm2_received(LinkState& link, LinkHost& host, int index) {
    platform::SerialLine& port = host.MSComm2(index);
    while (port.InBufferCount() > 0) {
        link.scanbuf[static_cast<std::size_t>(index)] += port.Input();
    }
}

void mnuFindKD_click(LinkState& link, LinkHost& host) {
    cleardirectory(link);
    closesearchports(host, kLastPort);
    setcomnum(link, host, QString());
    for (int number = 1; number <= kLastSearched; ++number) {
        link.scanbuf[static_cast<std::size_t>(number)].clear();
        link.scanheld[static_cast<std::size_t>(number)] = false;
        platform::SerialLine& port = host.MSComm2(number);
        port.setCommPort(number);
        if (!port.setPortOpen(true)) {
            continue; // no such port
        }
        port.setPortOpen(false);
        port.setSettings(QStringLiteral("9600,n,8,1"));
        port.setInputLen(0);
        link.scanheld[static_cast<std::size_t>(number)] = port.setPortOpen(true);
    }
    link.Timer8 = true;
    link.searchedlong = false;
    link.AFLabel3.text = QStringLiteral("Searching..");
    link.Text4.clear();
    link.rxbuf.clear();
    link.scanticks = 0;
}

void Timer8_tick(LinkState& link, LinkHost& host) {
    try {
        for (int number = 1; number <= kLastSearched; ++number) {
            QByteArray& text = link.scanbuf[static_cast<std::size_t>(number)];
            reopencut(link, host, number);
            if (host.MSComm2(number).PortOpen()) {
                text += host.MSComm2(number).Input();
            }
            // A port that has closed meanwhile has still said what it said.
            const Heard what = heard(text);
            if (what != Heard::Nothing) {
                takefound(link, host, number, what);
                return;
            }
        }
        searchon(link, host);
    } catch (const std::exception&) {
        link.scanheld.fill(false);
        closesearchports(host, kLastSearched);
    }
}

} // namespace benthor::link
