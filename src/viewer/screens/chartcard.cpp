#include "viewer/screens/chartcard.h"

#include "platform/chart/chart.h"
#include "platform/look/access/access.h"
#include "platform/look/look.h"
#include "viewer/screens/alarmstripview.h"
#include "viewer/screens/curvestyle.h"
#include "viewer/screens/gasstripview.h"
#include "viewer/screens/legendstrip.h"
#include "viewer/screens/timelabels.h"
#include "viewer/screens/tipbox.h"

#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace benthor::viewer {

namespace {

constexpr int kEmptyTextWidth = 460;
constexpr int kLeastPlotWidth = 480;
constexpr int kLeastHeight = 280;

} // namespace

ChartCard::ChartCard(DiveSession& session, Around around, QWidget* ground, QWidget* foot)
    : session_(session)
    , around_(std::move(around))
    , pages_(new QStackedWidget)
    , Text8(new TipBox(ground)) {
    Text8->setObjectName(QStringLiteral("Text8"));
    body()->setContentsMargins(1, look::spaceSmall, 1, 1);
    body()->setSpacing(0);
    pages_->addWidget(makePage());
    pages_->addWidget(makeEmptyPage());
    body()->addWidget(pages_, 1);
    body()->addWidget(new look::Rule);
    body()->addWidget(foot);
    setMinimumHeight(look::scaled(kLeastHeight));
    connectChart();
}

QWidget* ChartCard::makePage() {
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins({});
    column->setSpacing(0);
    MSChart1 = new platform::Chart;
    MSChart1->setObjectName(QStringLiteral("MSChart1"));
    MSChart1->setAccessibleName(QStringLiteral("Chart of the dive"));
    look::setReaderRole(MSChart1, QAccessible::Chart);
    MSChart1->setFocusPolicy(Qt::StrongFocus);
    MSChart1->setEdgeCursor(true); // for the samples behind the last page
    MSChart1->hide();
    hover_ = new QLabel(MSChart1);
    hover_->setObjectName(QStringLiteral("hoverText"));
    hover_->setFont(look::numbers(11));
    hover_->setAttribute(Qt::WA_TransparentForMouseEvents);
    hover_->hide();
    txtGas = new GasStripView(*MSChart1);
    txtGas->setObjectName(QStringLiteral("txtGas"));
    times_ = new TimeLabels(*MSChart1);
    Picture1 = new AlarmStripView(*MSChart1);
    Picture1->setObjectName(QStringLiteral("Picture1"));
    legend_ = new LegendStrip;
    legend_->setObjectName(QStringLiteral("legend"));
    column->addWidget(txtGas);
    column->addWidget(MSChart1, 1);
    column->addWidget(times_);
    column->addWidget(Picture1);
    column->addWidget(legend_);
    column->addSpacing(look::spaceTight);
    // The margins of the plot are shares of the width: the numbers of a large font need more of it.
    if (look::fontScale() > 1) {
        page->setMinimumWidth(look::scaled(kLeastPlotWidth));
    }
    return page;
}

QWidget* ChartCard::makeEmptyPage() {
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
    emptyText_->setFixedWidth(kEmptyTextWidth); // with a large font it has more lines
    look::setInk(emptyText_, look::Ink::Quiet);
    auto* middle = new QHBoxLayout;
    middle->addStretch();
    middle->addWidget(emptyText_);
    middle->addStretch();
    column->addLayout(middle);
    auto* back = new QPushButton(look::icon("back"), QStringLiteral("Back to the dive list"));
    connect(back, &QPushButton::clicked, this, &ChartCard::leaveWanted);
    column->addWidget(back, 0, Qt::AlignHCenter);
    column->addStretch();
    return page;
}

void ChartCard::showEmpty(const QString& words) {
    emptyText_->setText(words);
    pages_->setCurrentIndex(1);
}

void ChartCard::showChart() {
    MSChart1->show();
}

/// A click on the chart, on the strip of alarms or on that of gases goes to the sample under it.
void ChartCard::connectChart() {
    using platform::Chart;
    connect(MSChart1, &Chart::pressed, this, &ChartCard::mouseDown);
    connect(MSChart1, &Chart::released, this, &ChartCard::mouseUp);
    connect(MSChart1, &Chart::doubleClicked, this, &ChartCard::mouseDoubled);
    connect(MSChart1, &Chart::hovered, this, [this](double x) { showHover(x); });
    connect(MSChart1, &Chart::hoverEnded, hover_, &QWidget::hide);
    connect(MSChart1, &Chart::wheelTurned, this,
            [this](double x, double factor) { show(session_.zoomFreely(x, factor)); });
    connect(MSChart1, &Chart::dragged, this, [this](double pixels) {
        if (MSChart1->plotWidth() > 0) {
            show(session_.moveFreely(-pixels / MSChart1->plotWidth()));
        }
    });
    const auto clicked = [this](StripKind kind, double share) {
        if (session_.lastsample() > 0) {
            emit picked(session_.rowOnStrip(kind, share));
        }
    };
    connect(txtGas, &GasStripView::clicked, this, [clicked](double x) { clicked(StripKind::Gases, x); });
    connect(Picture1, &AlarmStripView::clicked, this, [clicked](double x) { clicked(StripKind::Alarms, x); });
    MSChart1->installEventFilter(this);
}

/// The tip box keeps to its sample when the chart takes another size.
bool ChartCard::eventFilter(QObject* watched, QEvent* event) {
    if (watched == MSChart1 && event->type() == QEvent::Resize && isTipShown() && !Text8->isPointer()) {
        placeTip();
    }
    return Card::eventFilter(watched, event);
}

void ChartCard::takeColours() {
    const look::Tokens& token = look::tokens();
    const look::Tokens& chart = look::tokens(chartTheme());
    const QColor backdrop = scheme_ == ChartScheme::Grey    ? QColor(240, 240, 240)
                            : scheme_ == ChartScheme::White ? QColor(255, 255, 255)
                                                            : token.surface;
    const QColor told = scheme_ == ChartScheme::Theme ? QColor() : backdrop;
    MSChart1->setColours({.backdrop = backdrop,
                          .grid = chart.line,
                          .axis = chart.edge,
                          .axisText = chart.textquiet,
                          .cursor = chart.text});
    times_->setBackdrop(told);
    legend_->setColours(told, chart.textquiet);
    MSChart1->setAxisFont(look::numbers(11));
    for (int column = 1; column < ChartMatrix::columns; ++column) {
        MSChart1->setSeriesStyle(column, curveStyle(column, chartTheme(), ownScale_));
    }
    showLegend();
}

/// On a light backdrop the curves are those of the light theme.
look::Theme ChartCard::chartTheme() const {
    return scheme_ == ChartScheme::Theme ? look::theme() : look::Theme::Light;
}

void ChartCard::setScheme(ChartScheme scheme) {
    scheme_ = scheme;
    takeColours();
}

void ChartCard::setOwnScale(bool own) {
    ownScale_ = own;
    takeColours();
    const bool tip = isTipShown();
    plot();
    if (tip) {
        placeCursor();
    }
}

void ChartCard::setTipFolded(bool folded) {
    Text8->setFolded(folded);
    if (isTipShown() && !Text8->isPointer()) {
        placeTip();
    }
}

void ChartCard::setLegendShown(bool shown) {
    legend_->setVisible(shown);
}

ChartPictureParts ChartCard::pictureParts(const QString& title) {
    return {.title = title,
            .chart = *MSChart1,
            .gases = *txtGas,
            .alarms = *Picture1,
            .legend = *legend_,
            .times = times_->texts()};
}

} // namespace benthor::viewer
