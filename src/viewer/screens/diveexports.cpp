#include "viewer/screens/diveexports.h"

#include "exports/danexport.h"
#include "exports/fullexport.h"
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
#include "profile/decoder.h"
#include "profile/header.h"
#include "session/process.h"
#include "viewer/screens/chartcard.h"
#include "viewer/screens/divehead.h"
#include "viewer/screens/divepaper.h"
#include "viewer/screens/diverecord.h"

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

QString pictureTitle(const profile::HeaderBoxes& header) {
    return QStringLiteral("%1   %2   %3 %4")
        .arg(header.txtdiveid, header.txttimedown, header.txtmaxdepth, header.lblmaxdepth);
}

} // namespace

void DiveExports::act(DiveAct act) {
    switch (act) {
    case DiveAct::SaveCsv:
        return saveCsv();
    case DiveAct::SaveDan:
        return saveDan();
    case DiveAct::SaveFullZxu:
        return saveFullProfile(true);
    case DiveAct::SaveFullCsv:
        return saveFullProfile(false);
    case DiveAct::SaveChart:
        return saveChart();
    case DiveAct::PrintScreen:
        return printScreen();
    case DiveAct::PrintGrid:
        return printGrid();
    case DiveAct::PrintDive:
        return printDivePage();
    case DiveAct::PrintSamples:
        return printSamplePages();
    default:
        return;
    }
}

/// The dive once more in metres, for a screen that shows it in feet. Returns why it cannot be read, or
/// nothing: the file may be gone, or another one under its name.
QString DiveExports::readMetric(profile::DiveProfile& profile) const {
    const std::optional<QByteArray> bytes = diveFile(session().header().divefilename);
    if (!bytes) {
        return QStringLiteral("The file of this dive, %1, is not in the folder dbtxt.")
            .arg(session().header().divefilename);
    }
    profile = profile::decodeProfile(*bytes, false);
    if (profile.lastsample - 1 != session().lastsample() ||
        !(profile.depthpos == session().profile().depthpos)) {
        return QStringLiteral("The file of this dive, %1, is no longer the one that is shown. Open the dive "
                              "again.")
            .arg(session().header().divefilename);
    }
    return {};
}

/// The grid's current cell goes to its headings; the sample shown stays.
void DiveExports::headGrid() {
    const QSignalBlocker quiet(parts_.grid);
    parts_.grid.setRow(0);
}

/// A line for each gas of the dive shown; without a gas there is no first line to go to, and the file ends
/// behind its headings without a word. The filter is set behind the dialog, so it holds from the next one on.
void DiveExports::saveCsv() {
    const QString path = askToldFile(&parts_.screen, dialogfilter_);
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
        const std::vector<exports::ExportRow> gases = gasRowsOfDive(session().header().txtdiveid);
        const QByteArray text = exports::csvText(gases, profile::isFeet(process().depthunit));
        if (file.write(text) == text.size() && file.flush() && !gases.empty()) {
            dialogs().message(&parts_.screen, QStringLiteral("Dive Record save as file ") + path);
        }
    });
}

/// From here on the unit word is "metre" until the screen is loaded again.
void DiveExports::saveDan() {
    dialogfilter_ = QStringLiteral("Text Files (*.zxu)|*.zxu|All Files (*.*)|*.*");
    const QString path = askToldFile(&parts_.screen, dialogfilter_);
    if (path.isEmpty()) {
        dialogs().message(&parts_.screen, QStringLiteral("Data is not saved to a file....!!"));
        return;
    }
    headGrid();
    skipErrors([&] {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
            return;
        }
        const std::vector<exports::ExportRow> gases = gasRowsOfDive(session().header().txtdiveid);
        const exports::DanHead head = parts_.head.danHead();
        if (exports::dateOfBox(head.start).isValid()) {
            process().depthunit = QStringLiteral("metre");
            session().setUnitword(process().depthunit);
        }
        file.write(exports::danText(head, gases, gases));
    });
}

void DiveExports::printScreen() {
    const std::shared_ptr<QPrinter> printer = dialogs().printer(&parts_.screen);
    if (printer == nullptr) {
        return;
    }
    parts_.showGrid();
    parts_.screen.repaint();
    platform::printWidget(*printer, parts_.screen);
}

void DiveExports::printGrid() {
    if (const std::shared_ptr<QPrinter> printer = dialogs().printer(&parts_.screen)) {
        platform::printGrid(*printer, parts_.grid);
    }
}

/// Every sample; always metric, so a dive shown in feet is read from its file once more.
void DiveExports::saveFullProfile(bool zxu) {
    if (session().lastsample() < 1) {
        return;
    }
    profile::DiveProfile metric;
    if (const QString reason = session().feet() ? readMetric(metric) : QString(); !reason.isEmpty()) {
        dialogs().message(&parts_.screen, QStringLiteral("The profile was not saved.\n") + reason,
                          platform::BoxKind::Warning);
        return;
    }
    const QString ending = zxu ? QStringLiteral("zxu") : QStringLiteral("csv");
    const QString path =
        askOwnFile(&parts_.screen, QStringLiteral("Profiles (*.%1)|*.%1|All Files (*.*)|*.*").arg(ending),
                   session().header().txtdiveid);
    if (path.isEmpty()) {
        return;
    }
    const exports::FullDive dive{session().feet() ? metric : session().profile(),
                                 session().gases(), // their shares are the same in any unit
                                 session().lastsample(),
                                 session().header().txtdiveid,
                                 session().interval(),
                                 session().startdate(),
                                 session().finisheddate(),
                                 platform::now()};
    const QByteArray text = zxu ? exports::fullZxu(dive) : exports::fullCsv(dive);
    const platform::FileResult written = platform::writeFileWhole(path, text);
    dialogs().message(
        &parts_.screen,
        written.ok() ? QStringLiteral("The profile was saved as %1.").arg(path)
                     : QStringLiteral("The profile could not be saved as %1.\n%2").arg(path, written.error),
        written.ok() ? platform::BoxKind::Information : platform::BoxKind::Warning);
}

void DiveExports::printDivePage() {
    if (session().lastsample() < 1) {
        return;
    }
    if (const std::shared_ptr<QPrinter> printer = dialogs().printer(&parts_.screen, QPageLayout::Landscape)) {
        const platform::LightTheme light;
        printDive(*printer, session().header().caption, parts_.head.values(),
                  parts_.chart.pictureParts(pictureTitle(session().header())));
    }
}

void DiveExports::printSamplePages() {
    const std::shared_ptr<QPrinter> printer =
        session().lastsample() < 1 ? nullptr : dialogs().printer(&parts_.screen);
    if (printer == nullptr) {
        return;
    }
    const platform::TickHold hold;
    QProgressDialog progress(QStringLiteral("Printing the samples"), QStringLiteral("Stop"), 0, 0,
                             &parts_.screen);
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(0);
    printSamples(
        *printer,
        {.title = session().header().txtdiveid + QStringLiteral("  ") + session().header().txttimedown,
         .profile = session().profile(),
         .gasname = session().gasNames(),
         .interval = session().interval(),
         .lastsample = session().lastsample()},
        [this, &progress](int done, int pages) {
            progress.setMaximum(pages);
            progress.setValue(done); // lets events run, those of the way out too
            return !progress.wasCanceled() && !parts_.screen.isUnloaded();
        });
}

void DiveExports::saveChart() {
    if (session().lastsample() < 1) {
        return;
    }
    const QString path = askOwnFile(&parts_.screen, kPictures, session().header().txtdiveid);
    if (path.isEmpty()) {
        return;
    }
    if (const platform::FileResult saved =
            saveChartPicture(path, parts_.chart.pictureParts(pictureTitle(session().header())))) {
        dialogs().message(&parts_.screen, QStringLiteral("The chart was saved as %1.").arg(path),
                          platform::BoxKind::Information);
    } else {
        dialogs().message(&parts_.screen,
                          QStringLiteral("The chart could not be saved as %1.\n%2").arg(path, saved.error),
                          platform::BoxKind::Warning);
    }
}

} // namespace benthor::viewer
