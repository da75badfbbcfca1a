// What the screen shows of the selected sample.

#include "platform/chart/chart.h"
#include "platform/grid/flexgrid.h"
#include "platform/screen/toldqcolor.h"
#include "platform/textformat.h"
#include "viewer/gridcells.h"
#include "viewer/screens/alarmstripview.h"
#include "viewer/screens/instrumentpanel.h"
#include "viewer/screens/rbinterface.h"
#include "viewer/screens/seriescolumn.h"
#include "viewer/screens/tipbox.h"

namespace benthor::viewer {

namespace {

constexpr int kTipDrop = 20;     ///< pixels from the depth down to the box
constexpr int kTipGapPixels = 8; ///< clear of the cursor's ring

/// The chart's width in twips, of which the plot area is a ninth less.
double chartTwips(const platform::Chart& chart) {
    return chart.xTwips(chart.width());
}

/// Where a box of this length begins that wants to begin at `from`: within the chart, or, longer than that,
/// within the window.
int beside(int from, int length, int chartFrom, int chartLength, int window) {
    const int within = length > chartLength ? from : std::clamp(from, chartFrom, chartFrom + chartLength - length);
    return std::clamp(within, 0, std::max(0, window - length));
}

/// The cells of the second grid's row, which are 0 where they hold no number.
Thermistors thermistorsOf(const platform::FlexGrid& grid, int row) {
    Thermistors readings{};
    for (std::size_t cell = 0; cell < readings.size(); ++cell) {
        const QString text = grid.text(row, static_cast<int>(cell) + 1);
        readings[cell] = platform::isNumeric(text) ? platform::leadingNumber(QStringView(text)) : 0.0;
    }
    return readings;
}

} // namespace

TipChoice rbinterface::tipChoice() const {
    return {series_->boxes(), series_->check(3)->isEnabled(), unitword_, feet_};
}

void rbinterface::showpoint(int row) {
    for (int column = 0; column < kSampleColumns; ++column) {
        MSFlexGrid1->setBackColour(row, column, platform::toQColor(platform::kToldBlue));
    }
    viewer::showpoint(panel_, {.profile = profile_,
                               .row = row,
                               .cell = [this, row](int column) { return MSFlexGrid1->text(row, column); },
                               .thermistors = thermistorsOf(*MSFlexGrid2, row),
                               .feet = feet_,
                               .check12 = series_->check(12)->isEnabled()});
}

void rbinterface::showpointtip(int row) {
    selectedrow_ = row;
    if (row < 1 || row > lastsample_) {
        return; // no sample: panel and tip box keep what they show
    }
    showpoint(row);
    currentrow_ = row;
    drawstrip();
    const TipChoice choice = tipChoice();
    const PointTip tip = pointTip(profile_, gases_, gasname_, row, choice);
    if (!choice.check3) {
        showComputedPpo2(panel_, computedPpo2(profile_, gases_, row, feet_).metric);
    }
    Text8->setTip(tip, platform::toQColor(panel_.tipback));
    panelView_->showState(panel_, feet_);
}

/// The strip; a page or a free view that the sample has left follows it.
void rbinterface::drawstrip() {
    if (free_) {
        if (const RowRange view = followed(*free_, currentrow_, lastsample_); view != *free_) {
            takeFreeView(view);
        }
        Picture1->setStrip(freeStrip(profile_, lastsample_, currentrow_, *free_));
        return;
    }
    Strip strip = viewer::drawstrip(profile_, lastsample_, currentrow_, zoom_);
    if (zoom_.zoomed() && !strip.found && turnPage(zoom_, currentrow_, lastsample_)) {
        showZoom();
        plotgraph();
        strip = viewer::drawstrip(profile_, lastsample_, currentrow_, zoom_);
    }
    Picture1->setStrip(std::move(strip));
}

/// Beside the cursor, on its other side where the chart ends. Within the chart where that is high enough,
/// otherwise over what lies around it, but always whole.
void rbinterface::placeTip(int row) {
    const bool outside = free_ && (row < free_->first || row > free_->last);
    if (row < 1 || row > lastsample_ || MSChart1->row() < 1 || outside) {
        Text8->hide();
        return;
    }
    const QSize ground = Text8->parentWidget()->size();
    const QRect chart(MSChart1->mapTo(Text8->parentWidget(), QPoint()), MSChart1->size());
    const QSize size = Text8->neededSize(ground.height());
    const double width =
        MSChart1->xTwips(MSChart1->plotLeft() + size.width()) - platform::Chart::plotLeftTwips;
    const double limit = std::min(kTipRightLimit, chartTwips(*MSChart1));
    const ZoomState view = free_ ? ZoomState() : zoom_;
    const int place = free_ ? qRound(row - free_->first) : row;
    const int places = free_ ? qRound(free_->span()) : lastsample_;
    const bool fits = tipLeft(place, places, view, width, limit) ==
                      tipLeft(place, places, view, width, std::numeric_limits<double>::infinity());
    const int cursor = qRound(MSChart1->cursorX());
    const int x = chart.left() + (fits ? cursor + kTipGapPixels : cursor - kTipGapPixels - size.width());
    const bool drawn = series_->check(1)->isChecked();
    const int y =
        chart.top() + (drawn ? qRound(MSChart1->yOfValue(profile_.depthneg[row - 1],
                                                         platform::ChartAxis::Right)) +
                                   kTipDrop
                             : 0);
    Text8->showAt({beside(x, size.width(), chart.left(), chart.width(), ground.width()),
                   beside(y, size.height(), chart.top(), chart.height(), ground.height())},
                  ground.height());
}

} // namespace benthor::viewer
