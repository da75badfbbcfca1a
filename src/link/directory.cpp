#include "link/directory.h"
#include "link/body.h"
#include "link/console.h"
#include "platform/textformat.h"
#include "session/process.h"

#include <algorithm>

namespace benthor::link {

namespace {

constexpr const char* kQuery = "SELECT * FROM main WHERE startcode = '";

const QByteArray kEnd = QByteArrayLiteral("End");
const QByteArray kFirstGas = QByteArrayLiteral("A079"); ///< gas 0 is air: 79 % nitrogen
const QByteArray kLastSetting = QByteArrayLiteral("Y");

/// Devices of the third version have no command that reads their setup. A text that begins with the mark does
/// not count.
bool isThirdVersion(const QByteArray& directory) {
    return QString::fromLatin1(directory).indexOf(QLatin1String("V3."), 0, Qt::CaseInsensitive) >= 1;
}

void takedirectory(LinkState& link, LinkHost& host) {
    link.Timer2 = false;
    host.setHourglass(true);
    parsedirectory(link);
    host.setHourglass(false);
    markstoreddives(link);
    link.hidessetup = isThirdVersion(link.Text4.bytes());
    link.owessetup = true; // what came before may be another device's
    if (link.hidessetup) {
        return;
    }
    putrequest(link, host, "H", QStringLiteral("The request for the setup"));
    link.rxbuf.clear();
    link.Text4.clear();
    link.Timer2 = true;
}

void takesetup(LinkState& link, LinkHost& host) {
    const QByteArray setup = link.Text4.bytes();
    link.console.Text7 = QString::fromLatin1(setup);
    link.Timer2 = false;
    link.owessetup = false;
    host.setupReceived(setup);
    Label19_click(link, host, kChoiceIntervalGet);
    link.rxbuf.clear();
    link.Text4.clear();
}

} // namespace

void cleardirectory(LinkState& link) {
    link.Mgrid.rows.assign(1, {});
    link.Mgrid.cols = 1;
    link.Mgrid.row = 0;
    link.Mgrid.col = 0;
}

void cmdstore_click(LinkState& link, LinkHost& host) {
    if (link.Timer3) {
        return; // "M" would fall into the dive that comes, and what has come of it would be gone
    }
    cleardirectory(link);
    senddirectorycommand(link, host);
    resetgridheader(link);
    link.Timer2 = true;
}

void senddirectorycommand(LinkState& link, LinkHost& host) {
    Console& console = link.console;
    console.option = kChoiceSummaries;
    preparecommand(link);
    console.Text5 = {{}, false};
    console.Command2.visible = false;
    console.filenameshown.clear();
    Command2_click(link, host);
}

void resetgridheader(LinkState& link) {
    static const std::array<QString, DirectoryRow::columns> headers{
        QStringLiteral("Dive No"),    QStringLiteral("Start Code"), QStringLiteral("Start Date"),
        QStringLiteral("End Date"),   QStringLiteral("Duration"),   QStringLiteral("Interval"),
        QStringLiteral("MaxDepth"),   QStringLiteral("Status"),     QStringLiteral("OTU"),
        QStringLiteral("DecendProb"), QStringLiteral("HPCylinder"), QStringLiteral("DAtmos")};
    link.Mgrid.cols = DirectoryRow::columns;
    link.Mgrid.rows.front().cells = headers;
}

void Timer2_tick(LinkState& link, LinkHost& host) {
    const AsksItself itself(link);
    link.Text4.follow(link.rxbuf);
    if (link.Text4.holds(kEnd)) {
        takedirectory(link, host);
        return;
    }
    if (link.Text4.holds(kFirstGas) && link.Text4.holds(kLastSetting)) {
        takesetup(link, host);
    }
}

void enddirectorywait(LinkState& link) {
    link.Timer2 = false;
}

void markstoreddives(LinkState& link) {
    try {
        for (std::size_t row = 1; row < link.Mgrid.rows.size(); ++row) {
            DirectoryRow& dive = link.Mgrid.rows[row];
            const QString code = platform::trimBlanks(dive.cells[1]);
            // In rows of its own: a device is heard in the background, beside whoever holds the shared ones.
            if (!process().database.openRecordset(platform::sqlWith(kQuery, code, "' ")).eof()) {
                dive.mark = RowMark::Stored;
            }
        }
    } catch (const platform::StoreError&) {
        // The rows that are left stay unmarked: a dive can be downloaded without the store.
    }
}

void Mgrid_mouseup(LinkState& link, int row, int rowsel, int shift) {
    constexpr int kShift = 1;
    constexpr int kControl = 2;
    auto& rows = link.Mgrid.rows;
    const int last = link.Mgrid.rowCount() - 1;
    if (process().servedrow == 0 || row < 0 || rowsel < 0 || row > last || rowsel > last) {
        return;
    }
    const auto paint = [&rows](int at) { rows[static_cast<std::size_t>(at)].mark = RowMark::Selected; };
    switch (shift & 7) {
    case kShift:
        for (int at = std::min(row, rowsel); at <= std::max(row, rowsel); ++at) {
            paint(at);
        }
        break;
    case kControl:
        if (row == rowsel) {
            paint(row);
        }
        break;
    case 0:
        for (DirectoryRow& dive : rows) {
            dive.mark = RowMark::None;
        }
        paint(row);
        link.Mgrid.row = row;
        link.Mgrid.col = 1;
        break;
    default:
        break;
    }
}

} // namespace benthor::link
