#include "platform/grid/flexgrid.h"
#include "platform/look/look.h"
#include "platform/look/widgets/card.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/screen/ticktimer.h"
#include "viewer/screens/chartcard.h"
#include "viewer/screens/divehead.h"
#include "viewer/screens/divemenus.h"
#include "viewer/screens/footbar.h"
#include "viewer/screens/instrumentpanel.h"
#include "viewer/screens/rbinterface.h"
#include "viewer/screens/samplekeys.h"
#include "viewer/screens/seriescolumn.h"
#include "viewer/screens/sidecolumn.h"
#include "viewer/screens/widths.h"
#include "viewer/screens/zoombar.h"

#include <QAction>
#include <QHBoxLayout>
#include <QMenu>
#include <QPushButton>
#include <QSplitter>
#include <QWidgetAction>

namespace benthor::viewer {

namespace {

constexpr int kNarrowPanel = 244; ///< least width of the instruments, however large the font

} // namespace

void rbinterface::makeParts() {
    auto* ground = new QWidget;
    head_ = new DiveHead;
    side_ = new SideColumn;
    chart_ = new ChartCard(session_,
                           {.boxes = [this] { return side_->series().boxes(); },
                            .interval = [this] { return head_->interval(); }},
                           ground, makeFoot());
    splitter_ = new QSplitter(Qt::Vertical);
    splitter_->setHandleWidth(look::spaceBase);
    splitter_->setChildrenCollapsible(false);
    splitter_->addWidget(chart_);
    makeGrid();
    splitter_->addWidget(gridCard_);
    splitter_->setStretchFactor(0, 1);
    right_ = new QWidget; // the instruments, and below them, on wide windows, the list of gases
    auto* instruments = new QVBoxLayout(right_);
    instruments->setContentsMargins({});
    instruments->setSpacing(look::spaceBase);
    panelView_ = new InstrumentPanel;
    panelView_->installEventFilter(this);
    instruments->addWidget(panelView_, 1);

    auto* row = new QHBoxLayout;
    row->setContentsMargins(look::spaceBase, look::spaceBase, look::spaceBase, look::spaceBase);
    row->setSpacing(look::spaceBase);
    row->addWidget(side_);
    row->addWidget(splitter_, 1);
    row->addWidget(right_);
    auto* column = new QVBoxLayout(ground);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addWidget(head_);
    column->addLayout(row, 1);
    setContents(ground);
    ground->setFocusPolicy(Qt::ClickFocus);
    ground->setFocus(); // no control is marked until the user takes the keyboard
}

QWidget* rbinterface::makeFoot() {
    playbar_ = new PlayBar;
    zoombar_ = new ZoomBar(menus_->mnuSpread);
    auto* foot = new FootBar(playbar_, zoombar_);
    auto* menu = new QMenu(zoombar_->more());
    auto* Command5 = new QPushButton(QStringLiteral("Command5"));
    Command5->setObjectName(QStringLiteral("Command5"));
    Command5->setToolTip(
        QStringLiteral("An exercise of the chart with numbers at random; the dive stays as it is"));
    connect(Command5, &QPushButton::clicked, this, [this, menu] {
        menu->close();
        chart_->exercise();
    });
    auto* entry = new QWidgetAction(menu);
    entry->setDefaultWidget(Command5);
    menu->addActions(
        {menus_->mnuLegend, menus_->mnuFoldTip, menus_->mnuOwnScale, menus_->mnuColorGrey, menus_->mnuRD});
    menu->addSeparator();
    menu->addAction(entry);
    connect(zoombar_->more(), &look::ClickableLabel::clicked, this, [this, menu] {
        const QWidget* more = zoombar_->more();
        menu->popup(more->mapToGlobal(QPoint(0, -menu->sizeHint().height())));
    });
    return foot;
}

void rbinterface::makeGrid() {
    gridCard_ = new look::Card;
    gridCard_->body()->setContentsMargins(1, 1, 1, 1);
    MSFlexGrid1 = new platform::FlexGrid;
    MSFlexGrid1->setObjectName(QStringLiteral("MSFlexGrid1"));
    MSFlexGrid1->setAccessibleName(QStringLiteral("Samples of the dive"));
    MSFlexGrid1->setRowNames([](int row) { return QStringLiteral("Sample %1").arg(row); });
    MSFlexGrid1->setEmptyText(QStringLiteral("No samples"));
    gridCard_->body()->addWidget(MSFlexGrid1);
    MSFlexGrid2 = new platform::FlexGrid(this);
    MSFlexGrid2->setObjectName(QStringLiteral("MSFlexGrid2"));
    MSFlexGrid2->hide();
    gridCard_->setMinimumHeight(look::scaled(120));
    gridCard_->hide();
}

void rbinterface::connectParts() {
    connect(head_, &DiveHead::acted, this, &rbinterface::act);
    connect(menus_, &DiveMenus::acted, this, &rbinterface::act);
    connect(menus_, &DiveMenus::played, this, &rbinterface::play);
    connect(playbar_, &PlayBar::acted, this, &rbinterface::play);
    connect(zoombar_, &ZoomBar::pressed, this, &rbinterface::Command2_click);
    connect(chart_, &ChartCard::picked, this, &rbinterface::selectrow);
    connect(chart_, &ChartCard::leaveWanted, this, [this] { act(DiveAct::Leave); });
    connect(&side_->series(), &SeriesColumn::changed, chart_, &ChartCard::plot);
    connect(side_, &SideColumn::feetClicked, this, [this] {
        if (!session_.feet() || !profile::isFeet(session_.unitword())) {
            act(DiveAct::Feet);
        }
    });
    connect(side_, &SideColumn::metresClicked, this, [this] { act(DiveAct::Metres); });
    connect(MSFlexGrid1, &platform::FlexGrid::rowSelectionChanged, this, &rbinterface::MSFlexGrid1_SelChange);
    connect(Timer3, &platform::TickTimer::tick, this, &rbinterface::Timer3_tick);
    connect(new SampleKeys(this), &SampleKeys::walked, this,
            [this](SampleStep way) { goTo(session_.walked(way)); });

    connect(menus_->mnuSpread, &QAction::toggled, this, &rbinterface::mnuSpread_toggled);
    connect(menus_->mnuLegend, &QAction::toggled, chart_, &ChartCard::setLegendShown);
    connect(menus_->mnuFoldTip, &QAction::toggled, chart_, &ChartCard::setTipFolded);
    connect(menus_->mnuOwnScale, &QAction::toggled, chart_, &ChartCard::setOwnScale);
    connect(menus_->mnuRD, &QAction::triggered, &side_->series(), &SeriesColumn::setResearch);
    // The grey scheme and the white one, which is for printing; until it is touched the chart goes by the
    // theme.
    connect(menus_->mnuColorGrey, &QAction::triggered, this,
            [this](bool grey) { chart_->setScheme(grey ? ChartScheme::Grey : ChartScheme::White); });
}

void rbinterface::fitToWidth() {
    const bool narrow = isNarrow(width());
    const bool wide = isWide(width());
    head_->fit(width());
    panelView_->setNumberSize(narrow ? 26 : (wide ? 40 : 32));
    right_->setFixedWidth(std::max(narrow ? kNarrowPanel : look::scaled(wide ? 320 : 272),
                                   panelView_->minimumSizeHint().width()));
    side_->fit(width(), static_cast<QBoxLayout*>(right_->layout()));
}

void rbinterface::takeColours() {
    const look::Tokens& token = look::tokens();
    chart_->takeColours();
    MSFlexGrid1->setGridColours({.surface = token.surface,
                                 .text = token.text,
                                 .header = token.ground,
                                 .headerText = token.textquiet,
                                 .line = token.line,
                                 .accent = token.accent});
    MSFlexGrid1->setFont(look::numbers(12));
}

} // namespace benthor::viewer
