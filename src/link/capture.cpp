#include "link/body.h"
#include "link/directory.h"
#include "link/divefile.h"
#include "link/download.h"
#include "link/textfile.h"
#include "platform/files.h"

namespace benthor::link {

namespace {
const QByteArray kProfile = QByteArrayLiteral("Profile");
const QByteArray kEnd = QByteArrayLiteral("End");
} // namespace

void Command1_click(LinkState& link, LinkHost& host) {
    if (link.Timer3) {
        return; // one dive at a time
    }
    QByteArray command;
    try {
        command = diverequest(link.download.startdivenum);
    } catch (const DownloadError&) {
        host.message(downloadfailed());
        return;
    }
    enddirectorywait(link);
    if (host.MSComm1().PortOpen()) {
        host.MSComm1().Input();
    }
    link.rxbuf.clear();
    link.capturemode = true;
    link.Text4.assign(command);
    link.divesaved = false;
    link.download.divecommand = command;
    putrequest(link, host, command, requestfordives());
}

void Command9_click(LinkState& link, LinkHost& host) {
    if (link.Timer3) {
        return;
    }
    setstartdivenum(link, QStringLiteral("0"));
    Command1_click(link, host);
}

void Command3_click(LinkState& link, LinkHost& host) {
    const QString path = host.saveFile(textfilter(), QStringLiteral("new"));
    if (path.isEmpty()) {
        return;
    }
    const platform::FileResult written = platform::writeFileWhole(path, link.Text4.bytes() + "\r\n");
    if (!written) {
        host.message(QStringLiteral("The dive's text can't be stored: ") + written.error);
    }
}

void capturestep(LinkState& link, LinkHost& host) {
    link.Text4.follow(link.rxbuf);
    link.download.Command3Enabled = link.Text4.holds(kProfile);
    link.download.downloadingdive.visible = true;
    link.download.Text1 = QString::number(link.Text4.size());
    if (!link.divesaved && link.Text4.holds(kEnd)) {
        try {
            savedivefile(link, host);
            requestcurrentrow(link, host);
            ++link.download.divesreceived;
            link.download.DiveCount = QString::number(link.download.divesreceived);
        } catch (const DownloadError&) {
            // Told once: the text stays in the view, from where it can be stored under another name.
            link.capturemode = false;
            host.message(downloadfailed());
        }
    }
    link.divesaved = false;
    link.silentticks = 0;
}

} // namespace benthor::link
