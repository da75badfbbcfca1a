// What of the dive the chart shows.

#include "platform/chart/chart.h"
#include "platform/look/look.h"
#include "platform/screen/toldqcolor.h"
#include "platform/textformat.h"
#include "profile/elapsed.h"
#include "profile/gridcells.h"
#include "viewer/screens/alarmstripview.h"
#include "viewer/screens/chartcard.h"
#include "viewer/screens/gasstripview.h"
#include "viewer/screens/legendstrip.h"
#include "viewer/screens/timelabels.h"
#include "viewer/screens/tipbox.h"

#include <QLabel>
#include <QMap>
#include <QRandomGenerator>

namespace benthor::viewer {

namespace {

constexpr size_t kMostRowLines = 60; ///< more changes of gas than that would hide the chart
constexpr int kTipDrop = 20;         ///< pixels from the depth down to the box
constexpr int kTipGapPixels = 8;     ///< clear of the cursor's ring
constexpr double kTwipsPerPixel = 15;

/// The chart's width in twips, of which the plot area is a ninth less.
double chartTwips(const platform::Chart& chart) {
    return chart.xTwips(chart.width());
}

/// Where a box of this length begins that wants to begin at `from`: within the chart, or, longer than that,
/// within the window.
int beside(int from, int length, int chartFrom, int chartLength, int window) {
    const int within =
        length > chartLength ? from : std::clamp(from, chartFrom, chartFrom + chartLength - length);
    return std::clamp(within, 0, std::max(0, window - length));
}

} // namespace

void ChartCard::determinexaxis() {
    times_->setTexts(session_.timeLabels(around_.interval()));
}

void ChartCard::plot() {
    determinexaxis();
    if (!MSChart1->title().isEmpty()) {
        endExercise();
    }
    const SeriesBoxes boxes = around_.boxes();
    MSChart1->setData(session_.matrix(boxes));
    const std::pair page(session_.zoom().zoomfactor, session_.zoom().zoompage);
    if (std::exchange(page_, page) != page) {
        MSChart1->beginMove();
    }
    MSChart1->setView(session_.freeView());
    MSChart1->setUnits(session_.feet() ? QStringLiteral("ft") : QStringLiteral("m"),
                       leftAxisUnit(boxes, session_.feet(), ownScale_),
                       ownScale_ ? QStringLiteral("bar") : QString());
    Text8->hide();
    MSChart1->setCurrentRow(0);
    plotgasstrip();
    showLegend();
}

void ChartCard::show(ViewChange change) {
    if (change == ViewChange::None) {
        return;
    }
    if (change == ViewChange::Plot) {
        plot();
    } else {
        MSChart1->setView(session_.freeView());
        determinexaxis();
        plotgasstrip();
    }
    showStrip();
    placeCursor();
}

void ChartCard::leaveFreeView() {
    show(session_.leaveFreeView());
}

void ChartCard::plotgasstrip() {
    platform::RowRange spread;
    GasStrip strip = session_.gasStrip(spread);
    QList<int> changes;
    if (strip.runs.size() <= kMostRowLines) {
        for (size_t i = 1; i < strip.runs.size(); ++i) {
            changes += strip.runs[i].firstRow;
        }
    }
    MSChart1->setRowLines(changes);
    txtGas->setStrip(std::move(strip), spread);
}

void ChartCard::showStrip() {
    Picture1->setStrip(session_.strip());
}

void ChartCard::showLegend() {
    const SeriesBoxes boxes = around_.boxes();
    QMap<int, LegendEntry> entries; // by column: of several boxes that write one, the last is seen
    for (const SeriesSource& source : kSeriesTable) {
        if (isChecked(boxes, source)) {
            const QString heading = profile::gridHeading(source.column);
            entries[source.column] = {heading.isEmpty() ? QLatin1String(source.caption) : heading,
                                      seriesUnit(source, session_.feet()),
                                      MSChart1->seriesStyle(source.column)};
        }
    }
    legend_->setEntries(entries.values());
}

/// A small pointer marks the place while the button is held.
void ChartCard::mouseDown(double x, double y) {
    keepsSample_ = false;
    MSChart1->setCurrentRow(0);
    const QPoint place(qRound(MSChart1->xOfTwips(x)), qRound(y / kTwipsPerPixel));
    Text8->showPointer(MSChart1->mapTo(Text8->parentWidget(), place));
}

void ChartCard::mouseUp(double x) {
    Text8->hide();
    if (std::exchange(keepsSample_, false)) {
        placeCursor();
    } else if (session_.lastsample() > 0) {
        emit picked(session_.rowUnder(x));
    }
}

/// Out of the free view. The sample that the first click has picked stays: what comes to lie under the
/// pointer is another one.
void ChartCard::mouseDoubled() {
    keepsSample_ = session_.freeView().has_value();
    leaveFreeView();
}

/// The sample under the pointer, in the corner of the plot.
void ChartCard::showHover(double xTwips) {
    const double share = plotShare(xTwips);
    if (session_.lastsample() < profile::kFirstSample || share < 0 || share > 1) {
        hover_->hide();
        return;
    }
    const int row = session_.rowUnder(xTwips);
    const QString depth = platform::floatText(std::abs(session_.profile().depthneg[row - 1]));
    hover_->setText(QStringLiteral("%1   %2 %3   %4")
                        .arg(profile::formatelapsed(row * session_.interval()), depth,
                             session_.feet() ? QStringLiteral("ft") : QStringLiteral("m"),
                             profile::gasNameAt(session_.profile(), session_.gasNames(), row)));
    hover_->adjustSize();
    hover_->move(MSChart1->plotLeft() + look::spaceSmall,
                 MSChart1->plotArea().bottom() - hover_->height() - look::spaceTight);
    hover_->show();
}

void ChartCard::setTip(const PointTip& tip) {
    Text8->setTip(tip, platform::toQColor(session_.panel().tipback));
}

void ChartCard::hideTip() {
    Text8->hide();
}

void ChartCard::hideCursor() {
    MSChart1->setCurrentRow(0);
    Text8->hide();
}

bool ChartCard::isTipShown() const {
    return Text8->isVisibleTo(Text8->parentWidget());
}

void ChartCard::placeCursor() {
    MSChart1->setCurrentRow(session_.cursorPlace());
    placeTip();
}

/// Beside the cursor, on its other side where the chart ends. Within the chart where that is high enough,
/// otherwise over what lies around it, but always whole.
void ChartCard::placeTip() {
    const int row = session_.currentrow();
    if (row > session_.lastsample() || MSChart1->row() < 1) {
        Text8->hide();
        return;
    }
    const QSize ground = Text8->parentWidget()->size();
    const QRect chart(MSChart1->mapTo(Text8->parentWidget(), QPoint()), MSChart1->size());
    const QSize size = Text8->neededSize(ground.height());
    const double width =
        MSChart1->xTwips(MSChart1->plotLeft() + size.width()) - platform::Chart::plotLeftTwips;
    const bool right = session_.tipFitsRight(width, std::min(kTipRightLimit, chartTwips(*MSChart1)));
    const int cursor = qRound(MSChart1->cursorX());
    const int x = chart.left() + (right ? cursor + kTipGapPixels : cursor - kTipGapPixels - size.width());
    int y = chart.top();
    if (around_.boxes().check.test(1)) {
        const double depth = session_.profile().depthneg[row - 1];
        y += qRound(MSChart1->yOfValue(depth, platform::ChartAxis::Right)) + kTipDrop;
    }
    Text8->showAt({beside(x, size.width(), chart.left(), chart.width(), ground.width()),
                   beside(y, size.height(), chart.top(), chart.height(), ground.height())},
                  ground.height());
}

void ChartCard::exercise() {
    constexpr int kRows = 8;
    constexpr int kSeries = 5;
    constexpr double kMarkerSize = 20;
    ChartMatrix matrix(kRows);
    for (int row = 1; row <= kRows; ++row) {
        for (int series = 1; series <= kSeries; ++series) {
            const double sign = series == kDepthColumn || series == kCeilingColumn ? -1 : 1;
            matrix.set(row, series, sign * QRandomGenerator::global()->bounded(100.0));
        }
    }
    MSChart1->setView(std::nullopt);
    MSChart1->setCurrentRow(0);
    MSChart1->setData(std::move(matrix));
    for (int series = 1; series < ChartMatrix::columns; ++series) {
        MSChart1->setMarker(series, {.visible = true,
                                     .size = kMarkerSize,
                                     .style = platform::MarkerStyle::Diamond,
                                     .fill = QColor(0, 0, 255)});
    }
    MSChart1->setTitle(QStringLiteral("lasdasdasd"));
}

/// Takes away what the exercise has left on the chart.
void ChartCard::endExercise() {
    MSChart1->setTitle({});
    for (int series = 1; series < ChartMatrix::columns; ++series) {
        MSChart1->setMarker(series, {});
    }
}

} // namespace benthor::viewer
