#pragma once

#include "platform/look/tokens.h"
#include "platform/look/widgets/card.h"
#include "viewer/divesession.h"
#include "viewer/divewords.h"
#include "viewer/screens/chartpicture.h"
#include "viewer/screens/viewerstate.h"

#include <functional>

class QLabel;
class QStackedWidget;

namespace benthor::platform {
class Chart;
}

namespace benthor::viewer {

class TimeLabels;
class TipBox;

/// The card of the chart: strip of gases, chart with tip box and cursor, time labels, strip of alarms and
/// legend, or, for a dive without a file, words in their place. Shows what the session says and tells which
/// sample the mouse has picked.
class ChartCard : public look::Card {
    Q_OBJECT

public:
    /// What the card asks the controls around it for.
    struct Around {
        std::function<SeriesBoxes()> boxes; ///< which series are checked
        std::function<double()> interval;   ///< seconds between samples, as the head shows them
    };

    /// `ground`: what the tip box lies over; `foot`: the bar below the chart.
    ChartCard(DiveSession& session, Around around, QWidget* ground, QWidget* foot);

    /// Plots the view anew; cursor and tip box go.
    void plot();
    void determinexaxis();
    /// What a change of the view has left to be shown, with strip, cursor and tip box of the sample.
    void show(ViewChange change);
    void showStrip();
    /// The chart says the dive in sentences to those who do not see it, and the current row as its value.
    void tellDive();
    void tellSample();
    /// The same row said aloud: the user has gone there.
    void announceSample();
    /// The alarms of the current row said aloud, where the row before had others.
    void announceAlarms();
    /// Cursor and tip box at the current row.
    void placeCursor();
    void setTip(const PointTip& tip);
    void hideTip();
    /// Neither cursor nor tip box: the row that was picked has no sample.
    void hideCursor();
    bool isTipShown() const;
    /// Back to the view that the free one was made from.
    void leaveFreeView();
    /// The chart, which is hidden until a dive is there.
    void showChart();
    void showEmpty(const QString& words);
    /// Numbers at random with large markers; the next plot brings the dive back.
    void exercise();

    ChartScheme scheme() const { return scheme_; }
    void setScheme(ChartScheme scheme);
    /// The oxygen pressures by a scale of their own, beside whose curves a temperature would press them flat.
    void setOwnScale(bool own);
    void setTipFolded(bool folded);
    void setLegendShown(bool shown);
    ChartPictureParts pictureParts(const QString& title);
    void takeColours();

signals:
    void picked(int row);
    void leaveWanted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* makePage();
    QWidget* makeEmptyPage();
    void connectChart();
    void mouseDown(double x, double y);
    void mouseUp(double x);
    void mouseDoubled();
    void showHover(double xTwips);
    void plotgasstrip();
    void showLegend();
    void endExercise();
    ToldDive toldDive() const;
    void placeTip();
    look::Theme chartTheme() const;

    DiveSession& session_;
    Around around_;
    ChartScheme scheme_ = ChartScheme::Theme;
    bool ownScale_ = false;
    QString alarmsTold_;
    std::pair<int, int> page_{1, 1}; ///< zoomfactor and zoompage that were plotted last
    bool keepsSample_ = false; ///< the release that follows a double click picks no sample

    QStackedWidget* pages_;
    QLabel* emptyText_ = nullptr;
    GasStripView* txtGas = nullptr;
    platform::Chart* MSChart1 = nullptr;
    QLabel* hover_ = nullptr;
    TipBox* Text8;
    TimeLabels* times_ = nullptr;
    AlarmStripView* Picture1 = nullptr;
    LegendStrip* legend_ = nullptr;
};

} // namespace benthor::viewer
