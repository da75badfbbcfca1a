// Files and paper: what leaves the dive screen.

#include "platform/chart/chart.h"
#include "platform/clock.h"
#include "platform/filename.h"
#include "platform/files.h"
#include "platform/grid/flexgrid.h"
#include "platform/grid/gridprint.h"
#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"
#include "platform/screen/printing.h"
#include "platform/screen/savepath.h"
#include "platform/screen/ticktimer.h"
#include "platform/skiperrors.h"
#include "platform/textformat.h"
#include "shell/process.h"
#include "viewer/danexport.h"
#include "viewer/decoder.h"
#include "viewer/fullexport.h"
#include "viewer/screens/chartpicture.h"
#include "viewer/screens/divehead.h"
#include "viewer/screens/divepaper.h"
#include "viewer/screens/rbinterface.h"
#include "viewer/screens/timelabels.h"

#include <QAction>
#include <QFile>
#include <QPrinter>
#include <QProgressDialog>
#include <QSignalBlocker>

namespace benthor::viewer {

using platform::dialogs;
using platform::skipErrors;

namespace {

const QString kSaveTitle = QStringLiteral("Save as");
const QString kPictures = QStringLiteral("PNG (*.png)|*.png|SVG (*.svg)|*.svg|PDF (*.pdf)|*.pdf");

/// For the exports whose name is written as it was chosen.
QString askToldFile(QWidget* parent, const QString& filter) {
    return dialogs().saveFile(parent, kSaveTitle, platform::ProgramFolder::current().path(QString()), filter);
}

/// For those of our own, which get the ending that was not typed. `suggested`: without an ending, so that the
/// type that is picked in the dialog gives it.
QString askOwnFile(QWidget* parent, const QString& filter, const QString& suggested) {
    const QString name = platform::isFileName(suggested) ? suggested : QString();
    return platform::askSavePath(parent, kSaveTitle, platform::ProgramFolder::current().path(name), filter);
}

} // namespace

/// The grid's current cell goes to its headings; the sample shown stays.
void rbinterface::headGrid() {
    const QSignalBlocker quiet(MSFlexGrid1);
    MSFlexGrid1->setRow(0);
}

/// A line for each gas of the dive shown; without a gas there is no first line to go to, and the file ends
/// behind its headings without a word. The filter is set behind the dialog, so it holds from the next one on.
void rbinterface::cmdSave_click() {
    const QString path = askToldFile(this, dialogfilter_);
    dialogfilter_ = QStringLiteral("Text Files (*.csv)|*.csv|All Files (*.*)|*.*");
    if (path.isEmpty()) {
        return;
    }
    skipErrors([&] {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
            return;
        }
        headGrid();
        process().depthunit = resolveDisplay();
        const std::vector<ExportRow> gases = gasRowsOfDive();
        const QByteArray text = csvText(gases, isFeet(process().depthunit));
        if (file.write(text) == text.size() && file.flush() && !gases.empty()) {
            dialogs().message(this, QStringLiteral("Dive Record save as file ") + path);
        }
    });
}

/// From here on the unit word is "metre" until the screen is loaded again.
void rbinterface::Command4_click() {
    dialogfilter_ = QStringLiteral("Text Files (*.zxu)|*.zxu|All Files (*.*)|*.*");
    const QString path = askToldFile(this, dialogfilter_);
    if (path.isEmpty()) {
        dialogs().message(this, QStringLiteral("Data is not saved to a file....!!"));
        return;
    }
    headGrid();
    skipErrors([&] {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
            return;
        }
        const std::vector<ExportRow> gases = gasRowsOfDive();
        const DanHead head = head_->danHead();
        if (dateOfBox(head.start).isValid()) {
            process().depthunit = unitword_ = QStringLiteral("metre");
        }
        file.write(danText(head, gases, gases));
    });
}

void rbinterface::cmdsavegraph_click() {
    const std::shared_ptr<QPrinter> printer = dialogs().printer(this);
    if (printer == nullptr) {
        return;
    }
    mnuSpread->setChecked(true);
    repaint();
    platform::printWidget(*printer, *this);
}

void rbinterface::mnuPrintspreadsheet_click() {
    if (const std::shared_ptr<QPrinter> printer = dialogs().printer(this)) {
        platform::printGrid(*printer, *MSFlexGrid1);
    }
}

/// Every sample; always metric, so a dive shown in feet is read from its file once more.
void rbinterface::saveFullProfile(bool zxu) {
    if (lastsample_ < 1) {
        return;
    }
    DiveProfile metric;
    if (const QString reason = feet_ ? readMetric(metric) : QString(); !reason.isEmpty()) {
        dialogs().message(this, QStringLiteral("The profile was not saved.\n") + reason,
                          platform::BoxKind::Warning);
        return;
    }
    const QString ending = zxu ? QStringLiteral("zxu") : QStringLiteral("csv");
    const QString path = askOwnFile(
        this, QStringLiteral("Profiles (*.%1)|*.%1|All Files (*.*)|*.*").arg(ending), header_.txtdiveid);
    if (path.isEmpty()) {
        return;
    }
    const FullDive dive{feet_ ? metric : profile_,
                        gases_, // their shares are the same in any unit
                        lastsample_,
                        header_.txtdiveid,
                        recordedInterval(),
                        startdate_,
                        finisheddate_,
                        platform::now()};
    const QByteArray text = zxu ? fullZxu(dive) : fullCsv(dive);
    const platform::FileResult written = platform::writeFileWhole(path, text);
    dialogs().message(
        this,
        written.ok() ? QStringLiteral("The profile was saved as %1.").arg(path)
                     : QStringLiteral("The profile could not be saved as %1.\n%2").arg(path, written.error),
        written.ok() ? platform::BoxKind::Information : platform::BoxKind::Warning);
}

ChartPictureParts rbinterface::chartPictureParts() {
    return {.title =
                QStringLiteral("%1   %2   %3 %4")
                    .arg(header_.txtdiveid, header_.txttimedown, header_.txtmaxdepth, header_.lblmaxdepth),
            .chart = *MSChart1,
            .gases = *txtGas,
            .alarms = *Picture1,
            .legend = *legend_,
            .times = times_->texts()};
}

void rbinterface::printDivePage() {
    if (lastsample_ < 1) {
        return;
    }
    if (const std::shared_ptr<QPrinter> printer = dialogs().printer(this)) {
        const platform::LightTheme light;
        printDive(*printer, header_.caption, head_->values(), chartPictureParts());
    }
}

void rbinterface::printSamplePages() {
    const std::shared_ptr<QPrinter> printer = lastsample_ < 1 ? nullptr : dialogs().printer(this);
    if (printer == nullptr) {
        return;
    }
    const Routine routine(*this);
    const platform::TickHold hold;
    QProgressDialog progress(QStringLiteral("Printing the samples"), QStringLiteral("Stop"), 0, 0, this);
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(0);
    printSamples(*printer,
                 {.title = header_.txtdiveid + QStringLiteral("  ") + header_.txttimedown,
                  .profile = profile_,
                  .gasname = gasname_,
                  .interval = recordedInterval(),
                  .lastsample = lastsample_},
                 [this, &progress](int done, int pages) {
                     progress.setMaximum(pages);
                     progress.setValue(done); // lets events run, those of the way out too
                     return !progress.wasCanceled() && !isUnloaded();
                 });
}

void rbinterface::saveChart() {
    if (lastsample_ < 1) {
        return;
    }
    const QString path = askOwnFile(this, kPictures, header_.txtdiveid);
    if (path.isEmpty()) {
        return;
    }
    if (const platform::FileResult saved = saveChartPicture(path, chartPictureParts())) {
        dialogs().message(this, QStringLiteral("The chart was saved as %1.").arg(path),
                          platform::BoxKind::Information);
    } else {
        dialogs().message(this,
                          QStringLiteral("The chart could not be saved as %1.\n%2").arg(path, saved.error),
                          platform::BoxKind::Warning);
    }
}

} // namespace benthor::viewer
