#include "link/linklife.h"

#include "link/commandmenu.h"
#include "link/console.h"
#include "link/directory.h"
#include "link/supervision.h"
#include "session/process.h"

#include <QFile>

namespace benthor::link {

namespace {

constexpr int kLastSearchPort = 31;
constexpr qint64 kMostToSend = 500;

QString texttosend() {
    QFile file(QStringLiteral("gdata.txt"));
    return file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.read(kMostToSend)) : QString();
}

} // namespace

void loadlink(LinkState& link, LinkHost& host) {
    closesearchports(host, kLastSearchPort);
    process().linkidle = true;
    Console& console = link.console;
    console.username = QStringLiteral("Insert your namehere. Max 32char");
    console.uploadfile = QStringLiteral("shark2aa.txt");
    console.filenameshown = QStringLiteral("Find file to open using File menu");
    link.Text14Visible = true;
    // As the menu's Quit does, but for its hint: no one asked for that.
    console.option = kChoiceQuit;
    preparecommand(link);
    console.checkedEntry = commandEntry(kChoiceQuit)->name;
    setcomnum(link, host, readcomport());
    link.silentticks = 100;
    link.rxcount = 0;
    console.Command2.text = QStringLiteral("Quit");
    if (process().screenmode.size() >= 2) {
        senddirectorycommand(link, host);
    }
    resetgridheader(link);
    MSComm1_received(link, host);
    link.rxbuf.clear();
    console.Text7 = texttosend();
    mnuFindKD_click(link, host);
}

void unloadlink(LinkState& link, LinkHost& host) {
    if (!link.ComNum.isEmpty()) {
        remembercomport(link);
    }
    process().screenmode.clear();
    closeallports(link, host);
}

void closeallports(LinkState& link, LinkHost& host) {
    link.portheld = false;
    link.scanheld.fill(false);
    if (host.MSComm1().PortOpen()) {
        host.MSComm1().setPortOpen(false);
    }
    closesearchports(host, kLastSearchPort);
}

} // namespace benthor::link
