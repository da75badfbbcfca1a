#include "platform/look/look.h"
#include "platform/look/widgets/card.h"
#include "platform/screen/dialogs.h"
#include "shell/process.h"
#include "store/units.h"
#include "viewer/screens/alarmstripview.h"
#include "viewer/screens/legendstrip.h"
#include "viewer/screens/playbar.h"
#include "viewer/screens/rbinterface.h"
#include "viewer/screens/seriescolumn.h"
#include "viewer/screens/tipbox.h"
#include "viewer/screens/zoombar.h"
#include "viewer/strip.h"

#include <QActionGroup>
#include <QCheckBox>
#include <QMenuBar>
#include <QRadioButton>
#include <QSplitter>

namespace benthor::viewer {

namespace {
constexpr int kGridHeight = 242;
}

QAction* rbinterface::addEntry(QMenu* menu, const char* name, const QString& caption) {
    QAction* entry = menu->addAction(caption);
    entry->setObjectName(QLatin1String(name));
    return entry;
}

void rbinterface::makeMenus() {
    makeFileMenu();
    makeViewMenu();
    makeZoomMenu();
    makePlayMenu();
    makeUnitsMenu();
}

void rbinterface::makeFileMenu() {
    QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
    const auto add = [this, file](const char* name, const char* caption, const auto& work) {
        QAction* entry = addEntry(file, name, QLatin1String(caption));
        connect(entry, &QAction::triggered, this, work);
        return entry;
    };
    add("mnudiveinfo", "Dive &details", [this] { handOver(&rbinterface::detailsWanted); });
    file->addSeparator();
    add("mnudivesavecsv", "Save as &CSV...", [this] {
        cmdSave_click();
    })->setShortcut(QKeySequence(QKeySequence::Save));
    add("mnudivedan", "Save for &DAN (.zxu)...", [this] { Command4_click(); });
    file->addSeparator();
    add("mnufullzxu", "Export full profile (.&zxu)...", [this] { saveFullProfile(true); });
    add("mnufullcsv", "Export &full profile (.csv)...", [this] { saveFullProfile(false); });
    add("mnusavechart", "Save c&hart...", [this] { saveChart(); });
    file->addSeparator();
    add("mnudiveprint", "&Print screen...", [this] {
        cmdsavegraph_click();
    })->setShortcut(QKeySequence(QKeySequence::Print));
    add("mnuPrintspreadsheet", "Print data &grid...", [this] { mnuPrintspreadsheet_click(); });
    add("mnuprintdive", "Pr&int dive...", [this] { printDivePage(); });
    add("mnuprintsamples", "Print sa&mples...", [this] { printSamplePages(); });
    add("mnuScrSave", "Sa&ve picture of this screen", [this] { handOver(&rbinterface::captureWanted); });
    file->addSeparator();
    add("mnudiveexit", "&Back to the dive list", [this] {
        leave();
    })->setShortcut(QKeySequence(QStringLiteral("Ctrl+W")));
}

void rbinterface::makeViewMenu() {
    QMenu* view = menuBar()->addMenu(QStringLiteral("&View"));
    mnuSpread = addEntry(view, "mnuSpread", QStringLiteral("Data &grid"));
    mnuSpread->setCheckable(true);
    mnuSpread->setShortcut(QKeySequence(QStringLiteral("Ctrl+G")));
    connect(mnuSpread, &QAction::toggled, this, &rbinterface::mnuSpread_toggled);
    mnuLegend = addEntry(view, "mnuLegend", QStringLiteral("&Legend"));
    mnuLegend->setCheckable(true);
    mnuLegend->setChecked(true);
    connect(mnuLegend, &QAction::toggled, this, [this](bool shown) { legend_->setVisible(shown); });
    mnuFoldTip = addEntry(view, "mnuFoldTip", QStringLiteral("Sh&ort tip box"));
    mnuFoldTip->setCheckable(true);
    mnuFoldTip->setShortcut(QKeySequence(QStringLiteral("Ctrl+T")));
    connect(mnuFoldTip, &QAction::toggled, this, &rbinterface::foldTip);
    mnuOwnScale = addEntry(view, "mnuOwnScale", QStringLiteral("Own scale for PO&2"));
    mnuOwnScale->setCheckable(true);
    connect(mnuOwnScale, &QAction::toggled, this, &rbinterface::giveOwnScale);
    view->addSeparator();
    mnuColorGrey = addEntry(view, "mnuColorGrey", QStringLiteral("Gre&y chart"));
    mnuColorGrey->setCheckable(true);
    connect(mnuColorGrey, &QAction::triggered, this, &rbinterface::mnuColorGrey_click);
    mnuRD = addEntry(view, "mnuRD", QStringLiteral("&Research boxes"));
    mnuRD->setCheckable(true);
    connect(mnuRD, &QAction::triggered, this, &rbinterface::mnuRD_click);
}

void rbinterface::makeZoomMenu() {
    QMenu* zoom = menuBar()->addMenu(QStringLiteral("&Zoom"));
    mnudivezoom = addEntry(zoom, "mnudivezoom", QStringLiteral("Zoom 1"));
    mnudivezoom->setShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+Z")));
    mnuzoompan = addEntry(zoom, "mnuzoompan", QStringLiteral("pan <"));
    mnuzoompan->setShortcut(QKeySequence(QStringLiteral("Alt+Left")));
    mnuzoompan2 = addEntry(zoom, "mnuzoompan2", QStringLiteral("pan >"));
    mnuzoompan2->setShortcut(QKeySequence(QStringLiteral("Alt+Right")));
    connect(mnudivezoom, &QAction::triggered, this, [this] { Command2_click(ZoomButton::Zoom); });
    connect(mnuzoompan, &QAction::triggered, this, [this] { Command2_click(ZoomButton::PanBack); });
    connect(mnuzoompan2, &QAction::triggered, this, [this] { Command2_click(ZoomButton::PanOn); });
    mnuzoompan->setEnabled(false);
    mnuzoompan2->setEnabled(false);
}

void rbinterface::makePlayMenu() {
    QMenu* play = menuBar()->addMenu(QStringLiteral("&Play"));
    const auto add = [this, play](const char* caption, const char* keys, PlayBar::Act act) {
        QAction* entry = play->addAction(QLatin1String(caption));
        entry->setShortcut(QKeySequence(QLatin1String(keys)));
        connect(entry, &QAction::triggered, this, [this, act] { emit playbar_->acted(act); });
    };
    add("&Play", "F5", PlayBar::Act::Play);
    add("&Stop", "Shift+F5", PlayBar::Act::Stop);
    play->addSeparator();
    add("&Next point", "Ctrl+Right", PlayBar::Act::Next);
    add("Pre&vious point", "Ctrl+Left", PlayBar::Act::Previous);
    add("&Faster", "Ctrl+Up", PlayBar::Act::Faster);
    add("S&lower", "Ctrl+Down", PlayBar::Act::Slower);
    play->addSeparator();
    add("Next &alarm", "F8", PlayBar::Act::NextAlarm);
    add("Next &mark", "F9", PlayBar::Act::NextMark);
}

void rbinterface::makeUnitsMenu() {
    QMenu* units = menuBar()->addMenu(QStringLiteral("&Units"));
    mnuunitsmeters = addEntry(units, "mnuunitsmeters", QStringLiteral("&Metres"));
    mnuunitsfeet = addEntry(units, "mnuunitsfeet", QStringLiteral("&Feet"));
    auto* group = new QActionGroup(this);
    for (QAction* entry : {mnuunitsmeters, mnuunitsfeet}) {
        entry->setCheckable(true);
        group->addAction(entry);
    }
    connect(mnuunitsmeters, &QAction::triggered, this, [this] { chooseunit(QStringLiteral("metre")); });
    connect(mnuunitsfeet, &QAction::triggered, this, [this] { chooseunit(QStringLiteral("Feet")); });
}

/// The grey scheme and the white one, which is for printing; until it is touched the chart goes by the theme.
void rbinterface::mnuColorGrey_click() {
    scheme_ = mnuColorGrey->isChecked() ? ChartScheme::Grey : ChartScheme::White;
    takeColours();
}

/// The oxygen pressures by a scale of their own, beside whose curves a temperature would press them flat.
/// Cursor and tip box stay.
void rbinterface::giveOwnScale() {
    takeSeriesStyles();
    const bool tip = Text8->isVisibleTo(this);
    plotgraph();
    if (tip) {
        showStripAndCursor();
    }
}

/// Folded, the box shows the depth alone and hides less of the chart.
void rbinterface::foldTip(bool folded) {
    Text8->setFolded(folded);
    if (Text8->isVisibleTo(this) && !Text8->isPointer()) {
        placeTip(currentrow_);
    }
}

/// Off, it takes all boxes of the research away; on, it brings back two of the sticks alone.
void rbinterface::mnuRD_click() {
    const bool on = mnuRD->isChecked();
    for (const int index : {1, 2}) {
        series_->check15(index)->setEnabled(on);
    }
    if (!on) {
        series_->check15(0)->setEnabled(false);
        series_->check(13)->setEnabled(false);
    }
}

void rbinterface::gaslistCheck_click(bool shown) {
    gasCard_->setVisible(shown);
}

void rbinterface::leave() {
    handOver(&rbinterface::diveListWanted);
}

void rbinterface::mnuSpread_toggled(bool shown) {
    gridCard_->setVisible(shown);
    if (shown && splitter_->sizes().value(1) == 0) {
        const int grid = look::scaled(kGridHeight);
        splitter_->setSizes({std::max(1, splitter_->height() - grid), grid});
    }
}

void rbinterface::Option1_click() {
    if (!feet_ || !isFeet(unitword_)) {
        chooseunit(QStringLiteral("Feet"));
    }
}

void rbinterface::chooseunit(const QString& word) {
    try {
        store::writeunit(word);
    } catch (const platform::StoreError& error) {
        checkUnit();
        platform::dialogs().message(
            this,
            QStringLiteral("The units stay as they are: they could not be saved.\n%1").arg(error.text()),
            platform::BoxKind::Warning);
        return;
    }
    process().unitoverride = word;
    handOver(&rbinterface::reloadWanted);
}

void rbinterface::checkUnit() {
    (feet_ ? Option1 : Option2)->setChecked(true);
    (feet_ ? mnuunitsfeet : mnuunitsmeters)->setChecked(true);
}

void rbinterface::Command2_click(ZoomButton button) {
    const bool wasFree = std::exchange(free_, std::nullopt).has_value();
    if (pressZoom(zoom_, button, lastsample_)) {
        showZoom();
        plotgraph();
        Picture1->setStrip(viewer::drawstrip(profile_, lastsample_, currentrow_, zoom_));
    } else if (wasFree) {
        plotgraph();
    }
}

void rbinterface::showZoom() {
    zoombar_->showState(zoom_);
    mnuzoompan->setEnabled(zoom_.mnuzoompan);
    mnuzoompan2->setEnabled(zoom_.mnuzoompan2);
    if (!zoom_.caption.isEmpty()) {
        mnudivezoom->setText(zoom_.caption);
    }
}

} // namespace benthor::viewer
