#pragma once

#include "profile/gaslist.h"
#include "profile/header.h"
#include "viewer/chartdata.h"
#include "viewer/freeview.h"
#include "viewer/gasstrip.h"
#include "viewer/playback.h"
#include "viewer/pointpanel.h"
#include "viewer/pointtip.h"
#include "viewer/selection.h"
#include "viewer/strip.h"
#include "viewer/zoom.h"

#include <functional>

namespace benthor::viewer {

/// What a change of the view asks of the chart.
enum class ViewChange {
    None,
    Moved, ///< the rows that fill the plot are others; the curves stay
    Plot   ///< the chart is to be plotted anew
};

/// What the panel reads of a sample besides its arrays.
struct PanelSource {
    std::function<QString(int column)> cell; ///< text of a column of the data grid, 0 to 40
    Thermistors thermistors{};               ///< cells 1 to 8 of the second grid
    bool check3 = true;                      ///< Check3 can be chosen: the device has logged the PO2
    bool check12 = false;                    ///< Check12 can be chosen
};

/// One opened dive: what was read of it, which sample is selected, and which of its rows are shown. There are
/// two views, the whole dive and one tenth of it, and beside them the free one that wheel and drag make.
/// Everything that the dive screen shows comes from here. Rows and samples count from 1; row r shows
/// sample r.
class DiveSession {
public:
    /// Begins anew with the head of a dive, in the unit of the word.
    void open(const QString& diveid, const profile::DiveRow& row, const QString& unitword);
    /// The rows of the table gas; returns the words of a box to show, or nothing.
    QString takeGases(const std::vector<profile::GasRow>& rows);
    void takeProfile(profile::DiveProfile profile);
    /// When profile and gases are in: from here on lastsample() is the last row. Returns the rows that the
    /// data grid has, its headings among them.
    int settle();

    const profile::HeaderBoxes& header() const { return header_; }
    const profile::DiveProfile& profile() const { return profile_; }
    const profile::GasArrays& gases() const { return gases_; }
    const profile::GasNames& gasNames() const { return gasname_; }
    const PanelState& panel() const { return panel_; }
    const ZoomState& zoom() const { return zoom_; }
    const std::optional<RowRange>& freeView() const { return free_; }
    const QDateTime& startdate() const { return startdate_; }
    const QDateTime& finisheddate() const { return finisheddate_; }
    /// The word behind a depth: the one in force at the load, or what an export made of it.
    const QString& unitword() const { return unitword_; }
    void setUnitword(const QString& word) { unitword_ = word; }
    /// Whether lengths were read in feet.
    bool feet() const { return feet_; }
    int lastsample() const { return lastsample_; } ///< 0 without a dive
    int currentrow() const { return currentrow_; }
    int playspeed() const { return playspeed_; }
    /// Seconds between samples as recorded.
    double interval() const;
    /// Text of a cell of the data grid.
    QString cell(int row, int column) const;

    // The selected sample.

    /// What the selection of a row asks of grid and chart. The row before the first has nothing to show; it
    /// is kept, so that the next step goes on from there.
    RowSelection select(int row);
    /// Reads a row into the panel and makes it the current one. False when there is no such sample.
    bool show(int row, const PanelSource& source);
    PointTip tip(const SeriesBoxes& boxes, bool check3) const;
    /// Turns the page, or moves the free view, to the current row where that has left it.
    ViewChange follow();

    /// Rows that the ways through the dive lead to; nothing where a way leads nowhere.
    std::optional<int> stepped(int by);
    std::optional<int> walked(SampleStep way) const;
    std::optional<int> alarmAhead() const;
    std::optional<int> markAhead() const;
    int played() const { return playStep(selectedrow_, playspeed_, lastsample_); }
    void setPlayspeed(int playspeed) { playspeed_ = playspeed; }

    // The view.

    /// The rows of the dive that fill the plot.
    RowRange shownRows() const;
    /// The row under a place in twips across the chart.
    int rowUnder(double xTwips) const;
    /// The row under a click on a strip, `share` of its width.
    int rowOnStrip(StripKind kind, double share) const;
    /// Row of the chart where the cursor of the current row stands; 0 where it is not in the view.
    int cursorPlace() const;
    /// Whether the tip box of the current row fits to the right of its cursor: `width` of the box and `limit`
    /// of the chart in twips.
    bool tipFitsRight(double width, double limit) const;

    bool pressZoom(ZoomButton button);
    ViewChange zoomFreely(double xTwips, double factor);
    /// By a share of what is shown.
    ViewChange moveFreely(double share);
    ViewChange leaveFreeView();
    void takeView(const ZoomState& zoom, const std::optional<RowRange>& free);

    /// The matrix of the view: that of the whole dive, or its page.
    ChartMatrix matrix(const SeriesBoxes& boxes);
    Strip strip() const;
    /// With the rows over which its runs are spread, as the runs count them.
    GasStrip gasStrip(RowRange& spread) const;
    /// `interval`: seconds between samples as the axis has them.
    std::array<QString, 5> timeLabels(double interval) const;

private:
    ViewChange takeFreeView(RowRange view);

    profile::HeaderBoxes header_;
    profile::DiveProfile profile_;
    profile::GasArrays gases_;
    profile::GasNames gasname_;
    GasRowNames gasrownames_;
    QDateTime startdate_, finisheddate_;
    QString unitword_;
    PanelState panel_;
    ZoomState zoom_;
    std::optional<RowRange> free_;
    bool feet_ = false;
    int lastsample_ = 0;
    int currentrow_ = 1;
    int selectedrow_ = 1;
    int playspeed_ = 1;
};

} // namespace benthor::viewer
