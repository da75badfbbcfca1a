#include "viewer/screens/rbinterface.h"

#include "platform/screen/ticktimer.h"
#include "session/process.h"
#include "viewer/screens/chartcard.h"
#include "viewer/screens/diveexports.h"
#include "viewer/screens/divemenus.h"
#include "viewer/screens/instrumentpanel.h"
#include "viewer/screens/playbar.h"
#include "viewer/screens/samplekeys.h"

#include <QEvent>
#include <QKeyEvent>
#include <QMenuBar>

namespace benthor::viewer {

using platform::TickTimer;

rbinterface::rbinterface()
    : Screen(QStringLiteral("rbinterface"))
    , menus_(new DiveMenus(menuBar(), this)) {
    setWindowTitle(QStringLiteral("RB Profile"));
    makeParts();
    // The first two have no work of their own.
    new TickTimer(QStringLiteral("Timer1"), 500, TickTimer::Start::Disabled, this);
    new TickTimer(QStringLiteral("Timer2"), 100, TickTimer::Start::Disabled, this);
    Timer3 = new TickTimer(QStringLiteral("Timer3"), 1000, TickTimer::Start::Disabled, this);
    exports_ = std::make_unique<DiveExports>(DiveExports::Parts{
        *this, session_, *head_, *chart_, *MSFlexGrid1, [this] { menus_->mnuSpread->setChecked(true); }});
    connectParts();
    takeColours();
    fitToWidth();
}

rbinterface::~rbinterface() = default;

void rbinterface::unloading() {
    process().diveviewopen = false;
}

void rbinterface::changeEvent(QEvent* event) {
    Screen::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && MSFlexGrid1 != nullptr) {
        takeColours();
    }
}

void rbinterface::resizeEvent(QResizeEvent* event) {
    Screen::resizeEvent(event);
    fitToWidth();
}

/// The instruments are given more room when a number needs it, and keep it: a dive that is played would else
/// push the chart to and fro.
bool rbinterface::eventFilter(QObject* watched, QEvent* event) {
    if (watched == panelView_ && event->type() == QEvent::LayoutRequest &&
        panelView_->minimumSizeHint().width() > right_->width()) {
        fitToWidth();
    }
    return Screen::eventFilter(watched, event);
}

void rbinterface::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        chart_->leaveFreeView();
    } else {
        Screen::keyPressEvent(event);
    }
}

} // namespace benthor::viewer
