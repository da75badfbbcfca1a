#include "link/download.h"
#include "link/body.h"
#include "link/directory.h"
#include "link/divefile.h"
#include "platform/programfolder.h"
#include "platform/textformat.h"
#include "session/process.h"

#include <algorithm>

namespace benthor::link {

namespace {

constexpr int kCodeOfDiveZero = 47;
constexpr int kLargestCode = 255;
constexpr qsizetype kDiveWord = 4; ///< "Dive" ahead of the number in column 0

constexpr qsizetype kMostNamed = 10;

void begincount(LinkState& link, int chosen) {
    Download& run = link.download;
    run.chosen = chosen;
    run.stored = 0;
    run.notstored.clear();
    run.patched.clear();
}

/// A single dive that never came is no longer waited for either: what comes from now on is stored once.
void beginrun(LinkState& link) {
    enddirectorywait(link);
    link.capturemode = false;
    link.download.divesreceived = 0;
    link.download.selectedcount = 0;
    process().linkidle = false;
}

int selectedrows(const LinkState& link) {
    const auto& rows = link.Mgrid.rows;
    return static_cast<int>(std::count_if(rows.begin() + 1, rows.end(), [](const DirectoryRow& dive) {
        return dive.mark == RowMark::Selected;
    }));
}

QString named(const QStringList& dives) {
    const QString names = dives.mid(0, kMostNamed).join(QLatin1String(", "));
    const qsizetype more = dives.size() - kMostNamed;
    return more > 0 ? names + QStringLiteral(" and %1 more.").arg(more) : names + u'.';
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
    link.download.cut = false;
    link.Timer3 = true;
    putrequest(link, host, command, requestfordives());
}

void getrows(LinkState& link, LinkHost& host, bool storedToo) {
    if (link.Timer3) {
        return; // a dive is on its way: the ticks have not yet taken the buttons away
    }
    beginrun(link);
    for (std::size_t row = 1; row < link.Mgrid.rows.size(); ++row) {
        DirectoryRow& dive = link.Mgrid.rows[row];
        if (storedToo || dive.mark != RowMark::Stored) {
            dive.mark = RowMark::Selected;
        }
    }
    begincount(link, selectedrows(link));
    process().servedrow = 1;
    request(link, host);
    link.download.selectedcount = link.Mgrid.rowCount() - 1;
    link.Timer5 = true;
}

} // namespace

bool awaitsdive(const LinkState& link) {
    // The beacon alone says that a single dive does not come; a run's own tick sees to its end.
    return link.Timer3 || (link.capturemode && !link.rxbuf.holds(divebeacon()));
}

QString shortcomings(const Download& run) {
    QStringList words;
    if (run.stored < run.chosen) {
        words << QStringLiteral("Chosen: %1, stored: %2.").arg(run.chosen).arg(run.stored);
    }
    if (!run.notstored.isEmpty()) {
        words << QStringLiteral("Not stored, to be fetched again: ") + named(run.notstored);
    }
    if (!run.patched.isEmpty()) {
        words << QStringLiteral("The line was cut while they came, so that they may have a hole: ") +
                     named(run.patched);
    }
    return words.join(u' ');
}

QString runplace(const Download& run) {
    const int now = run.divesreceived + 1;
    return run.backupmode || now > run.chosen ? QString()
                                              : QStringLiteral("Dive %1 of %2").arg(now).arg(run.chosen);
}

int nextselectedrow(const LinkState& link) {
    const auto& rows = link.Mgrid.rows;
    const auto found = std::find_if(rows.begin() + 1, rows.end(),
                                    [](const DirectoryRow& dive) { return dive.mark == RowMark::Selected; });
    return found == rows.end() ? 0 : static_cast<int>(found - rows.begin());
}

void cmddownload_click(LinkState& link, LinkHost& host) {
    if (link.Timer3) {
        return;
    }
    beginrun(link);
    link.download.selectedcount = selectedrows(link);
    begincount(link, link.download.selectedcount);
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
    if (link.Timer3) {
        return;
    }
    if (link.AFLabel3.text != QLatin1String("Connected")) {
        host.message(QStringLiteral("KD not connected\nCheck connection tips"));
        return;
    }
    enddirectorywait(link);
    begincount(link, link.Mgrid.rowCount() - 1);
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
