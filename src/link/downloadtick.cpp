#include "link/divefile.h"
#include "link/download.h"
#include "platform/textformat.h"
#include "session/process.h"

namespace benthor::link {

namespace {

constexpr int kBarMaximum = 300;

const QByteArray kEnd = QByteArrayLiteral("End");
const QByteArray kBackupEnd = QByteArrayLiteral("backsenddone");
const QByteArray kVersion = QByteArrayLiteral("ver=");

void enablebuttons(LinkState& link, bool enabled) {
    link.cmdstoreEnabled = enabled;
    link.downloadbuttons = enabled;
}

void showwaiting(LinkState& link) {
    enablebuttons(link, false);
    link.download.TXTWaitVisible = true;
    link.download.TXTWait = QStringLiteral("Downloading\nPlease wait..\n");
    const qsizetype length = link.rxbuf.size();
    link.download.ProgressBar1 = downloadprogress(length);
    link.download.lblBytes = QString::number(length) + QLatin1String("  Bytes received");
}

void takereceived(LinkState& link) {
    link.Text4.follow(link.rxbuf);
    link.download.lastdivetext.follow(link.rxbuf);
}

QString received(int dives) {
    return QString::number(dives) + QLatin1String("  Dives Downloaded.");
}

void offerimport(LinkState& link, LinkHost& host) {
    host.message(received(link.download.divesreceived), shortcomings(link.download));
    if (host.confirm(QStringLiteral("It is advised to import downloaded dives into database now. Proceed?"),
                     QStringLiteral("Import to database"))) {
        host.leaveAndImport();
    } else {
        host.message(QStringLiteral("To put dives into database manually, close this PC_Link window. Dives "
                                    "will not be updated while link screen is open!"));
    }
    link.silentticks = 0;
    link.txtstatus2Visible = false;
}

void nextdive(LinkState& link, LinkHost& host) {
    const int row = nextselectedrow(link);
    if (row > 0) {
        process().servedrow = row;
        requestcurrentrow(link, host);
    } else {
        offerimport(link, host);
    }
}

void countdive(Download& run, const QString& dive, bool stored) {
    if (!stored) {
        run.notstored << dive;
        return;
    }
    ++run.stored;
    if (run.cut) {
        run.patched << dive;
    }
}

/// Of a back-up only the number of dives is known beforehand, where their directory has come.
QString backupshortcomings(const Download& run, int files) {
    QStringList words;
    if (files < run.chosen) {
        words << QStringLiteral("Listed by the device: %1, stored: %2.").arg(run.chosen).arg(files);
    }
    if (run.cut) {
        words << QStringLiteral("The line was cut while they came, so that one may have a hole.");
    }
    return words.join(u' ');
}

void divetick(LinkState& link, LinkHost& host) {
    const bool whole = link.rxbuf.holds(kEnd);
    if (!whole && !link.rxbuf.holds(divebeacon())) {
        return; // a run lasts until one of the two marks arrives
    }
    link.Timer3 = false;
    enablebuttons(link, true);
    link.download.TXTWaitVisible = false;
    takereceived(link);
    ++link.download.divesreceived;
    link.download.DiveCount = QString::number(link.download.divesreceived);
    const bool saves = !process().linkidle && whole;
    if (saves) {
        savedivefile(link, host);
    }
    const int row = process().servedrow;
    if (row >= 0 && row < link.Mgrid.rowCount()) {
        DirectoryRow& dive = link.Mgrid.rows[static_cast<std::size_t>(row)];
        dive.mark = RowMark::None;
        countdive(link.download, dive.cells[0], saves);
    }
    link.download.moreselected = nextselectedrow(link) > 0;
    if (!process().linkidle) {
        nextdive(link, host);
    }
}

void backuptick(LinkState& link, LinkHost& host) {
    if (!link.rxbuf.holds(divebeacon()) && !link.rxbuf.holds(kBackupEnd)) {
        return;
    }
    link.Timer3 = false;
    link.download.backupmode = false;
    link.download.moreselected = false;
    process().linkidle = false;
    link.Text4.follow(link.rxbuf);
    if (!link.Text4.holds(kVersion)) {
        return;
    }
    int files = 0;
    for (const QByteArray& dive : divesinrow(link.rxbuf.bytes())) {
        ++files;
        writewaitingfile(QStringLiteral("backdive%1.txt").arg(files), dive);
        link.capturemode = false;
        link.divesaved = true;
        host.repaint();
    }
    host.message(received(files), backupshortcomings(link.download, files));
    link.download.TXTWaitVisible = false;
    host.leaveAndImport();
}

} // namespace

int downloadprogress(qsizetype length) {
    double steps = platform::roundToEven(static_cast<double>(length) / 1000.0);
    if (steps > kBarMaximum) {
        steps = platform::roundToEven(steps / 5);
    }
    return static_cast<int>(std::min<double>(steps, kBarMaximum));
}

void Timer3_tick(LinkState& link, LinkHost& host) {
    try {
        takereceived(link);
        showwaiting(link);
        if (link.download.backupmode) {
            backuptick(link, host);
        } else {
            divetick(link, host);
        }
    } catch (const DownloadError&) {
        host.message(downloadfailed());
    }
}

} // namespace benthor::link
