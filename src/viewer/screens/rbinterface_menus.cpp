#include "platform/look/look.h"
#include "platform/look/widgets/card.h"
#include "platform/screen/dialogs.h"
#include "shell/process.h"
#include "store/units.h"
#include "viewer/screens/rbinterface.h"
#include "viewer/screens/zoombar.h"

#include <QActionGroup>
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
    QMenu* dive = menuBar()->addMenu(QStringLiteral("&Dive"));
    QAction* mnudiveexit = addEntry(dive, "mnudiveexit", QStringLiteral("&Back to the dive list"));
    mnudiveexit->setShortcut(QKeySequence(QStringLiteral("Ctrl+W")));
    connect(mnudiveexit, &QAction::triggered, this, &rbinterface::leave);

    QMenu* view = menuBar()->addMenu(QStringLiteral("&View"));
    mnuSpread = addEntry(view, "mnuSpread", QStringLiteral("Data &grid"));
    mnuSpread->setCheckable(true);
    mnuSpread->setShortcut(QKeySequence(QStringLiteral("Ctrl+G")));
    connect(mnuSpread, &QAction::toggled, this, &rbinterface::mnuSpread_toggled);

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

void rbinterface::leave() {
    emit diveListWanted();
}

void rbinterface::mnuSpread_toggled(bool shown) {
    gridCard_->setVisible(shown);
    if (shown && splitter_->sizes().value(1) == 0) {
        const int grid = look::scaled(kGridHeight);
        splitter_->setSizes({std::max(1, splitter_->height() - grid), grid});
    }
}

void rbinterface::Option1_click() {
    if (!isFeet(process().depthunit)) {
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
    emit reloadWanted();
}

void rbinterface::checkUnit() {
    (feet_ ? Option1 : Option2)->setChecked(true);
    (feet_ ? mnuunitsfeet : mnuunitsmeters)->setChecked(true);
}

void rbinterface::Command2_click(ZoomButton button) {
    if (pressZoom(zoom_, button, lastsample_)) {
        showZoom();
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
