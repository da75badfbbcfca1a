#include "link/download.h"
#include "divefiles/keptfiles.h"
#include "link/divefile.h"
#include "platform/textformat.h"
#include "shell/process.h"

#include <algorithm>

namespace benthor::link {

namespace {

constexpr int kCodeOfDiveZero = 47;
constexpr int kLargestCode = 255;
constexpr qsizetype kDiveWord = 4; ///< "Dive" ahead of the number in column 0

void beginrun(LinkState& link) {
    link.download.divesreceived = 0;
    link.download.selectedcount = 0;
    process().linkidle = false;
}

/// A click has no tick around it to catch a request that can't be made.
void request(LinkState& link, LinkHost& host) {
    try {
        requestcurrentrow(link, host);
    } catch (const DownloadError&) {
        host.message(downloadfailed());
    }
}

/// What comes back is waited for at each tick until one of its end marks has come.
void sendandwait(LinkState& link, LinkHost& host, const QByteArray& command) {
    link.Text4.clear();
    link.rxbuf.clear();
    link.silentticks = 1;
    link.download.divecommand = command;
    link.Timer3 = true;
    if (host.MSComm1().PortOpen()) {
        host.MSComm1().Output(command);
    }
}

void getrows(LinkState& link, LinkHost& host, bool storedToo) {
    beginrun(link);
    for (std::size_t row = 1; row < link.Mgrid.rows.size(); ++row) {
        DirectoryRow& dive = link.Mgrid.rows[row];
        if (storedToo || dive.mark != RowMark::Stored) {
            dive.mark = RowMark::Selected;
        }
    }
    process().servedrow = 1;
    request(link, host);
    link.download.selectedcount = link.Mgrid.rowCount() - 1;
    link.Timer5 = true;
}

} // namespace

int nextselectedrow(const LinkState& link) {
    const auto& rows = link.Mgrid.rows;
    const auto found = std::find_if(rows.begin() + 1, rows.end(),
                                    [](const DirectoryRow& dive) { return dive.mark == RowMark::Selected; });
    return found == rows.end() ? 0 : static_cast<int>(found - rows.begin());
}

void cmddownload_click(LinkState& link, LinkHost& host) {
    beginrun(link);
    const auto& rows = link.Mgrid.rows;
    link.download.selectedcount =
        static_cast<int>(std::count_if(rows.begin() + 1, rows.end(), [](const DirectoryRow& dive) {
            return dive.mark == RowMark::Selected;
        }));
    const int first = nextselectedrow(link);
    link.download.moreselected = first > 0;
    if (link.download.moreselected) {
        process().servedrow = first;
        request(link, host);
    } else {
        host.message(QStringLiteral("No dive(s) selected"));
    }
    link.Timer5 = true;
}

void cmddownloadall_click(LinkState& link, LinkHost& host) {
    getrows(link, host, true);
}

/// Only row 1 is looked at for the first request: it holds the device's newest dive, and when that one is
/// stored there is nothing new.
void cmddownloadnew_click(LinkState& link, LinkHost& host) {
    getrows(link, host, false);
}

void setstartdivenum(LinkState& link, const QString& number) {
    link.download.startdivenum = number;
    link.download.downloadingdive.text = number;
}

void requestcurrentrow(LinkState& link, LinkHost& host) {
    const int row = process().servedrow;
    if (row < 1 || row >= link.Mgrid.rowCount() ||
        link.Mgrid.rows[static_cast<std::size_t>(row)].mark != RowMark::Selected) {
        return;
    }
    link.Mgrid.row = row;
    link.Mgrid.col = 0;
    setstartdivenum(link, link.Mgrid.rows[static_cast<std::size_t>(row)].cells[0].mid(kDiveWord));
    senddiverequest(link, host);
    link.silentticks = 0;
    link.divesaved = false;
}

QByteArray diverequest(const QString& number) {
    const int code = kCodeOfDiveZero + platform::toWhole(platform::leadingNumber(number));
    if (code < 0 || code > kLargestCode) {
        throw DownloadError("the dive's number has no code");
    }
    return QByteArray("D") + static_cast<char>(code);
}

void senddiverequest(LinkState& link, LinkHost& host) {
    sendandwait(link, host, diverequest(link.download.startdivenum));
}

void mnubackdive_click(LinkState& link, LinkHost& host) {
    if (link.AFLabel3.text != QLatin1String("Connected")) {
        host.message(QStringLiteral("KD not connected\nCheck connection tips"));
        return;
    }
    link.download.backupmode = true;
    sendandwait(link, host, "Dy");
}

void Timer5_tick(LinkState& link) {
    const QStringList files =
        platform::ProgramFolder::current().listFiles(QStringLiteral("new"), QStringLiteral("*.txt"));
    if (link.download.selectedcount >= 1 && files.size() == link.download.selectedcount) {
        link.Timer5 = false;
    }
}

} // namespace benthor::link
