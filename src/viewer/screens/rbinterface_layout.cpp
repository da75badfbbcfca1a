#include "platform/chart/chart.h"
#include "platform/grid/flexgrid.h"
#include "platform/look/look.h"
#include "platform/look/widgets/card.h"
#include "viewer/screens/gasstripview.h"
#include "viewer/screens/headnumber.h"
#include "viewer/screens/rbinterface.h"
#include "viewer/screens/seriescolumn.h"
#include "viewer/screens/timelabels.h"
#include "viewer/screens/zoombar.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QSplitter>
#include <QStackedWidget>

namespace benthor::viewer {

namespace {

constexpr int kHeadHeight = 60;
constexpr int kNarrow = 1200; ///< below this the bar's buttons are pictures and the head is small
constexpr int kWide = 1600;
constexpr int kEmptyTextWidth = 460;

int sideWidth(int windowWidth) {
    return windowWidth < kNarrow ? 166 : (windowWidth < kWide ? 172 : 196);
}

} // namespace

QWidget* rbinterface::makeHead() {
    auto* head = new look::Pane(Qt::BottomEdge);
    head->setFixedHeight(look::scaled(kHeadHeight));
    headRow_ = new QHBoxLayout(head);
    headRow_->setContentsMargins(look::spaceBase, 0, look::spaceBase, 1);

    auto* cmdclose = new QPushButton(look::icon("back"), {});
    cmdclose->setObjectName(QStringLiteral("cmdclose"));
    cmdclose->setProperty("quiet", true);
    cmdclose->setToolTip(QStringLiteral("Back to the dive list"));
    cmdclose->setAccessibleName(cmdclose->toolTip());
    connect(cmdclose, &QPushButton::clicked, this, &rbinterface::leave);
    headRow_->addWidget(cmdclose);

    const auto add = [this](const char* name, const char* caption, const char* unit = "") {
        auto* number = new HeadNumber(QLatin1String(name), QLatin1String(caption), QLatin1String(unit));
        headRow_->addWidget(number);
        headNumbers_ += number;
        return number;
    };
    txtdiveid = add("txtdiveid", "Dive");
    txttimedown = add("txttimedown", "Start");
    txtduration = add("txtduration", "Duration");
    txtmaxdepth = add("txtmaxdepth", "Max depth");
    txtmaxdepth->unit()->setObjectName(QStringLiteral("lblmaxdepth"));
    txtinterval = add("txtinterval", "Interval", "secs");
    txtotu = add("txtotu", "OTU");
    txtatmos = add("txtatmos", "Surface", "mBar");
    txtdusageh = add("txtdusageh", "Usage", "secs");
    txtversion = add("txtversion", "Version");
    headRow_->addStretch();
    return head;
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
    Text8 = new QFrame(MSChart1);
    Text8->setObjectName(QStringLiteral("Text8"));
    Text8->setAutoFillBackground(true);
    Text8->setBackgroundRole(QPalette::WindowText);
    Text8->setAttribute(Qt::WA_TransparentForMouseEvents);
    Text8->hide();
    txtGas = new GasStripView(*MSChart1);
    txtGas->setObjectName(QStringLiteral("txtGas"));
    times_ = new TimeLabels(*MSChart1);
    column->addWidget(txtGas);
    column->addWidget(MSChart1, 1);
    column->addWidget(times_);
    column->addSpacing(look::spaceSmall);

    chartPages_ = new QStackedWidget;
    chartPages_->addWidget(page);
    chartPages_->addWidget(makeEmptyPage());
    card->body()->addWidget(chartPages_, 1);
    card->body()->addWidget(new look::Rule);
    zoombar_ = new ZoomBar(mnuSpread);
    connect(zoombar_, &ZoomBar::pressed, this, &rbinterface::Command2_click);
    card->body()->addWidget(zoombar_);
    card->setMinimumHeight(look::scaled(280));
    return card;
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

/// What belongs to the instrument panel, which this screen shows only when it has the room of its own.
void rbinterface::makeHiddenParts() {
    auto* holder = new QWidget(this);
    holder->hide();
    for (size_t i = 0; i < Frame4.size(); ++i) {
        Frame4[i] = new QWidget(holder);
        Frame4[i]->setObjectName(QStringLiteral("Frame4(%1)").arg(i));
        Frame4[i]->show();
    }
    gasList = new QLabel(holder);
    gasList->setObjectName(QStringLiteral("gasList"));
}

void rbinterface::fitToWidth() {
    const bool narrow = width() < look::scaled(kNarrow);
    series_->setDense(narrow);
    side_->setFixedWidth(
        std::max({look::scaled(sideWidth(width())), series_->neededWidth(), unitsCard_->sizeHint().width()}));
    headRow_->setSpacing(narrow ? look::spaceBase : look::spaceRoom);
    for (HeadNumber* number : std::as_const(headNumbers_)) {
        number->setNumberSize(narrow ? 13 : 16);
    }
    zoombar_->setCompact(narrow);
}

void rbinterface::takeColours() {
    const look::Tokens& token = look::tokens();
    MSChart1->setColours({.backdrop = token.surface,
                          .grid = token.line,
                          .axis = token.edge,
                          .axisText = token.textquiet,
                          .cursor = token.text});
    MSChart1->setAxisFont(look::numbers(11));
    takeSeriesStyles();
    MSFlexGrid1->setGridColours({.surface = token.surface,
                                 .text = token.text,
                                 .header = token.ground,
                                 .headerText = token.textquiet,
                                 .line = token.line,
                                 .accent = token.accent});
    MSFlexGrid1->setFont(look::numbers(12));
}

} // namespace benthor::viewer
