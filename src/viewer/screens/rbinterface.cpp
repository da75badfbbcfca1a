#include "viewer/screens/rbinterface.h"

#include "platform/chart/chart.h"
#include "platform/grid/flexgrid.h"
#include "platform/look/look.h"
#include "platform/look/widgets/card.h"
#include "shell/process.h"
#include "viewer/screens/samplekeys.h"
#include "viewer/screens/tipbox.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QSplitter>

namespace benthor::viewer {

rbinterface::rbinterface()
    : Screen(QStringLiteral("rbinterface")) {
    setWindowTitle(QStringLiteral("RB Profile"));
    makeMenus();
    auto* ground = new QWidget;
    Text8 = new TipBox(ground);
    Text8->setObjectName(QStringLiteral("Text8"));
    auto* column = new QVBoxLayout(ground);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addWidget(makeHead());
    auto* row = new QHBoxLayout;
    row->setContentsMargins(look::spaceBase, look::spaceBase, look::spaceBase, look::spaceBase);
    row->setSpacing(look::spaceBase);
    row->addWidget(makeSide());
    splitter_ = new QSplitter(Qt::Vertical);
    splitter_->setHandleWidth(look::spaceBase);
    splitter_->setChildrenCollapsible(false);
    splitter_->addWidget(makeChartCard());
    splitter_->addWidget(makeGridCard());
    splitter_->setStretchFactor(0, 1);
    row->addWidget(splitter_, 1);
    row->addWidget(makeRight());
    column->addLayout(row, 1);
    setCentralWidget(ground);
    ground->setFocusPolicy(Qt::ClickFocus);
    ground->setFocus(); // no control is marked until the user takes the keyboard
    static_cast<QVBoxLayout*>(side_->layout())->insertWidget(1, makeGasList());
    MSFlexGrid2 = new platform::FlexGrid(this);
    MSFlexGrid2->setObjectName(QStringLiteral("MSFlexGrid2"));
    MSFlexGrid2->hide();
    makeTimers();
    MSChart1->installEventFilter(this);
    connect(new SampleKeys(this), &SampleKeys::walked, this, &rbinterface::walk);
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

/// The tip box keeps to its sample when the chart takes another size.
bool rbinterface::eventFilter(QObject* watched, QEvent* event) {
    if (watched == MSChart1 && event->type() == QEvent::Resize && !Text8->isHidden() && !Text8->isPointer()) {
        placeTip(currentrow_);
    }
    return Screen::eventFilter(watched, event);
}

} // namespace benthor::viewer
