#include "platform/chart/chart.h"
#include "platform/grid/flexgrid.h"
#include "platform/look/look.h"
#include "platform/look/widgets/card.h"
#include "platform/look/widgets/clickablelabel.h"
#include "viewer/screens/alarmstripview.h"
#include "viewer/screens/divehead.h"
#include "viewer/screens/footbar.h"
#include "viewer/screens/gasstripview.h"
#include "viewer/screens/instrumentpanel.h"
#include "viewer/screens/legendstrip.h"
#include "viewer/screens/playbar.h"
#include "viewer/screens/rbinterface.h"
#include "viewer/screens/seriescolumn.h"
#include "viewer/screens/timelabels.h"
#include "viewer/screens/tipbox.h"
#include "viewer/screens/widths.h"
#include "viewer/screens/zoombar.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QSplitter>
#include <QStackedWidget>
#include <QWidgetAction>

namespace benthor::viewer {

namespace {

constexpr int kEmptyTextWidth = 460;

int sideWidth(int windowWidth) {
    return look::scaled(isNarrow(windowWidth) ? 166 : (isWide(windowWidth) ? 196 : 172));
}

} // namespace

QWidget* rbinterface::makeHead() {
    head_ = new DiveHead;
    connect(head_, &DiveHead::acted, this, [this](DiveHead::Act act) {
        switch (act) {
        case DiveHead::Act::Leave:
            leave();
            break;
        case DiveHead::Act::Details:
            handOver(&rbinterface::detailsWanted);
            break;
        case DiveHead::Act::Gases:
            handOver(&rbinterface::gasWanted);
            break;
        case DiveHead::Act::SaveCsv:
            cmdSave_click();
            break;
        case DiveHead::Act::Print:
            cmdsavegraph_click();
            break;
        case DiveHead::Act::Capture:
            handOver(&rbinterface::captureWanted);
            break;
        case DiveHead::Act::Dan:
            Command4_click();
            break;
        }
    });
    return head_;
}

QWidget* rbinterface::makeSide() {
    side_ = new QWidget;
    auto* column = new QVBoxLayout(side_);
    column->setContentsMargins({});
    column->setSpacing(look::spaceBase);
    series_ = new SeriesColumn;
    connect(series_, &SeriesColumn::changed, this, &rbinterface::plotgraph);
    column->addWidget(series_, 1);

    unitsCard_ = new look::Card;
    unitsCard_->body()->setContentsMargins(look::spaceBase, look::spaceSmall, look::spaceBase,
                                           look::spaceSmall);
    gaslistCheck = new QCheckBox(QStringLiteral("Gas list"));
    gaslistCheck->setObjectName(QStringLiteral("gaslistCheck"));
    connect(gaslistCheck, &QCheckBox::toggled, this, &rbinterface::gaslistCheck_click);
    unitsCard_->body()->addWidget(gaslistCheck);
    auto* row = new QHBoxLayout;
    Option2 = new QRadioButton(QStringLiteral("metres"));
    Option2->setObjectName(QStringLiteral("Option2"));
    Option1 = new QRadioButton(QStringLiteral("Feet"));
    Option1->setObjectName(QStringLiteral("Option1"));
    connect(Option1, &QRadioButton::clicked, this, &rbinterface::Option1_click);
    connect(Option2, &QRadioButton::clicked, this, [this] { chooseunit(QStringLiteral("metre")); });
    row->addWidget(Option2, 1);
    row->addWidget(Option1);
    unitsCard_->body()->addLayout(row);
    column->addWidget(unitsCard_);
    return side_;
}

QWidget* rbinterface::makeChartCard() {
    auto* card = new look::Card;
    card->body()->setContentsMargins(1, look::spaceSmall, 1, 1);
    card->body()->setSpacing(0);

    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins({});
    column->setSpacing(0);
    MSChart1 = new platform::Chart;
    MSChart1->setObjectName(QStringLiteral("MSChart1"));
    MSChart1->setAccessibleName(QStringLiteral("Chart of the dive"));
    MSChart1->hide();
    connect(MSChart1, &platform::Chart::pressed, this, &rbinterface::MSChart1_MouseDown);
    connect(MSChart1, &platform::Chart::released, this, &rbinterface::MSChart1_MouseUp);
    connect(MSChart1, &platform::Chart::hovered, this, [this](double x) { showHover(x); });
    connect(MSChart1, &platform::Chart::hoverEnded, this, &rbinterface::hideHover);
    connect(MSChart1, &platform::Chart::wheelTurned, this, &rbinterface::zoomFreely);
    connect(MSChart1, &platform::Chart::dragged, this, &rbinterface::moveFreely);
    connect(MSChart1, &platform::Chart::doubleClicked, this, &rbinterface::MSChart1_DblClick);
    MSChart1->setFocusPolicy(Qt::StrongFocus);
    hover_ = new QLabel(MSChart1);
    hover_->setObjectName(QStringLiteral("hoverText"));
    hover_->setFont(look::numbers(11));
    hover_->setAttribute(Qt::WA_TransparentForMouseEvents);
    hover_->hide();
    txtGas = new GasStripView(*MSChart1);
    txtGas->setObjectName(QStringLiteral("txtGas"));
    connect(txtGas, &GasStripView::clicked, this, [this](double x) { stripClicked(StripKind::Gases, x); });
    times_ = new TimeLabels(*MSChart1);
    Picture1 = new AlarmStripView(*MSChart1);
    Picture1->setObjectName(QStringLiteral("Picture1"));
    connect(Picture1, &AlarmStripView::clicked, this,
            [this](double x) { stripClicked(StripKind::Alarms, x); });
    legend_ = new LegendStrip;
    legend_->setObjectName(QStringLiteral("legend"));
    column->addWidget(txtGas);
    column->addWidget(MSChart1, 1);
    column->addWidget(times_);
    column->addWidget(Picture1);
    column->addWidget(legend_);
    column->addSpacing(look::spaceTight);

    chartPages_ = new QStackedWidget;
    chartPages_->addWidget(page);
    chartPages_->addWidget(makeEmptyPage());
    card->body()->addWidget(chartPages_, 1);
    card->body()->addWidget(new look::Rule);
    card->body()->addWidget(makeFoot());
    card->setMinimumHeight(look::scaled(280));
    return card;
}

QWidget* rbinterface::makeFoot() {
    playbar_ = new PlayBar;
    zoombar_ = new ZoomBar(mnuSpread);
    connect(zoombar_, &ZoomBar::pressed, this, &rbinterface::Command2_click);
    auto* foot = new FootBar(playbar_, zoombar_);

    auto* menu = new QMenu(zoombar_->more());
    auto* Command5 = new QPushButton(QStringLiteral("Command5"));
    Command5->setObjectName(QStringLiteral("Command5"));
    Command5->setToolTip(
        QStringLiteral("An exercise of the chart with numbers at random; the dive stays as it is"));
    connect(Command5, &QPushButton::clicked, this, [this, menu] {
        menu->close();
        Command5_click();
    });
    auto* entry = new QWidgetAction(menu);
    entry->setDefaultWidget(Command5);
    menu->addAction(mnuLegend);
    menu->addAction(mnuFoldTip);
    menu->addAction(mnuOwnScale);
    menu->addAction(mnuColorGrey);
    menu->addAction(mnuRD);
    menu->addSeparator();
    menu->addAction(entry);
    connect(zoombar_->more(), &look::ClickableLabel::clicked, this, [this, menu] {
        const QWidget* more = zoombar_->more();
        menu->popup(more->mapToGlobal(QPoint(0, -menu->sizeHint().height())));
    });
    return foot;
}

/// Instruments, and below them, on wide windows, the list of gases.
QWidget* rbinterface::makeRight() {
    right_ = new QWidget;
    auto* column = new QVBoxLayout(right_);
    column->setContentsMargins({});
    column->setSpacing(look::spaceBase);
    panelView_ = new InstrumentPanel;
    column->addWidget(panelView_, 1);
    return right_;
}

QWidget* rbinterface::makeGasList() {
    gasCard_ = new look::Card;
    gasCard_->body()->setContentsMargins(look::spaceBase, look::spaceSmall, look::spaceBase,
                                         look::spaceSmall);
    auto* title = look::makeCaption(QStringLiteral("Gas list"));
    title->setFont(look::strong(look::caption()));
    gasCard_->body()->addWidget(title);
    gasList = new QLabel;
    gasList->setObjectName(QStringLiteral("gasList"));
    gasList->setTextFormat(Qt::PlainText);
    gasList->setFont(look::caption());
    gasCard_->body()->addWidget(gasList);
    gasCard_->hide();
    return gasCard_;
}

/// Under the instruments where there is the room, otherwise above the units.
void rbinterface::placeGasList() {
    const bool wide = isWide(width());
    QWidget* column = wide ? right_ : side_;
    if (gasCard_->parentWidget() != column) {
        auto* layout = static_cast<QVBoxLayout*>(column->layout());
        const bool shown = gaslistCheck->isChecked();
        layout->insertWidget(wide ? layout->count() : 1, gasCard_);
        gasCard_->setVisible(shown);
    }
}

QWidget* rbinterface::makeEmptyPage() {
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setSpacing(look::spaceBase);
    column->addStretch();
    auto* title = look::makeHeading(QStringLiteral("No profile to show"));
    title->setAlignment(Qt::AlignHCenter);
    column->addWidget(title);
    emptyText_ = new QLabel;
    emptyText_->setWordWrap(true);
    emptyText_->setAlignment(Qt::AlignHCenter);
    emptyText_->setFixedWidth(look::scaled(kEmptyTextWidth));
    look::setInk(emptyText_, look::Ink::Quiet);
    auto* middle = new QHBoxLayout;
    middle->addStretch();
    middle->addWidget(emptyText_);
    middle->addStretch();
    column->addLayout(middle);
    auto* back = new QPushButton(look::icon("back"), QStringLiteral("Back to the dive list"));
    connect(back, &QPushButton::clicked, this, &rbinterface::leave);
    column->addWidget(back, 0, Qt::AlignHCenter);
    column->addStretch();
    return page;
}

QWidget* rbinterface::makeGridCard() {
    gridCard_ = new look::Card;
    gridCard_->body()->setContentsMargins(1, 1, 1, 1);
    MSFlexGrid1 = new platform::FlexGrid;
    MSFlexGrid1->setObjectName(QStringLiteral("MSFlexGrid1"));
    MSFlexGrid1->setAccessibleName(QStringLiteral("Samples of the dive"));
    MSFlexGrid1->setEmptyText(QStringLiteral("No samples"));
    connect(MSFlexGrid1, &platform::FlexGrid::rowSelectionChanged, this, &rbinterface::MSFlexGrid1_SelChange);
    gridCard_->body()->addWidget(MSFlexGrid1);
    gridCard_->setMinimumHeight(look::scaled(120));
    gridCard_->hide();
    return gridCard_;
}

void rbinterface::fitToWidth() {
    const bool narrow = isNarrow(width());
    series_->setDense(narrow);
    side_->setFixedWidth(
        std::max({sideWidth(width()), series_->neededWidth(), unitsCard_->sizeHint().width()}));
    head_->fit(width());
    const bool wide = isWide(width());
    panelView_->setNumberSize(narrow ? 26 : (wide ? 40 : 32));
    right_->setFixedWidth(
        std::max(look::scaled(narrow ? 244 : (wide ? 320 : 272)), panelView_->minimumSizeHint().width()));
    placeGasList();
}

void rbinterface::takeColours() {
    const look::Tokens& token = look::tokens();
    const look::Tokens& chart = look::tokens(chartTheme());
    const QColor backdrop = scheme_ == ChartScheme::Grey    ? QColor(240, 240, 240)
                            : scheme_ == ChartScheme::White ? QColor(255, 255, 255)
                                                            : token.surface;
    MSChart1->setColours({.backdrop = backdrop,
                          .grid = chart.line,
                          .axis = chart.edge,
                          .axisText = chart.textquiet,
                          .cursor = chart.text});
    times_->setBackdrop(scheme_ == ChartScheme::Theme ? QColor() : backdrop);
    legend_->setColours(scheme_ == ChartScheme::Theme ? QColor() : backdrop, chart.textquiet);
    MSChart1->setAxisFont(look::numbers(11));
    takeSeriesStyles();
    showLegend();
    MSFlexGrid1->setGridColours({.surface = token.surface,
                                 .text = token.text,
                                 .header = token.ground,
                                 .headerText = token.textquiet,
                                 .line = token.line,
                                 .accent = token.accent});
    MSFlexGrid1->setFont(look::numbers(12));
}

} // namespace benthor::viewer
