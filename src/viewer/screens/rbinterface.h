#pragma once

#include "platform/look/tokens.h"
#include "platform/screen/screen.h"
#include "store/diveidentity.h"
#include "viewer/chartdata.h"
#include "viewer/csvexport.h"
#include "viewer/diveprofile.h"
#include "viewer/freeview.h"
#include "viewer/gaslist.h"
#include "viewer/header.h"
#include "viewer/playback.h"
#include "viewer/pointpanel.h"
#include "viewer/pointtip.h"
#include "viewer/screens/viewerstate.h"
#include "viewer/zoom.h"

class QAction;
class QCheckBox;
class QLabel;
class QMenu;
class QRadioButton;
class QSplitter;
class QStackedWidget;

namespace benthor::look {
class Card;
}

namespace benthor::platform {
class Chart;
class FlexGrid;
class TickTimer;
} // namespace benthor::platform

namespace benthor::viewer {

class AlarmStripView;
class DiveHead;
class GasStripView;
class InstrumentPanel;
class LegendStrip;
class PlayBar;
class SeriesColumn;
class TimeLabels;
class TipBox;
class ZoomBar;
struct ChartPictureParts;

/// One dive: what the store tells of it in the head, the chart of its samples, and the grid that holds them.
/// Shows the dive of `currentdiveid` when the screen loads, in the units of that moment; both are its own
/// from then on, whatever is in hand elsewhere. Other units are a fresh load. Before it hands over to another
/// screen its dive is in hand again.
class rbinterface : public platform::Screen {
    Q_OBJECT

public:
    rbinterface();
    ~rbinterface() override;

    /// Name of the dive's text file.
    QString divefilename() const { return header_.divefilename; }

    /// The dive that is shown. One that the store does not have has its identifier alone.
    const store::DiveIdentity& dive() const { return dive_; }
    /// The system that the dive was opened with.
    QString divesystem() const { return divesystem_; }
    /// Whether the samples were read in feet.
    bool feet() const { return feet_; }
    /// The unit in force is no longer the one that the screen shows, and the screen has not changed it.
    bool hasOtherUnit() const;

    ViewerState state() const;
    /// Told before the screen loads: what it takes over behind its load.
    void resume(const ViewerState& state) { resumed_ = state; }

signals:
    /// The user leaves for the dive list.
    void diveListWanted();
    /// The screen is to be unloaded and shown again: the units have changed.
    void reloadWanted();
    void detailsWanted();
    void gasWanted();
    /// A picture of this screen is to be saved beside the dive.
    void captureWanted();

protected:
    void loading() override;
    void unloading() override;
    QSize firstSize() const override { return {1366, 768}; }
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // rbinterface_layout.cpp
    QWidget* makeHead();
    QWidget* makeSide();
    QWidget* makeChartCard();
    QWidget* makeEmptyPage();
    QWidget* makeGridCard();
    QWidget* makeFoot();
    QWidget* makeRight();
    QWidget* makeGasList();
    void placeGasList();
    void fitToWidth();
    void takeColours();

    // rbinterface_resume.cpp
    void handOver(void (rbinterface::*wanted)());
    void takeState(const ViewerState& state);
    void takeBoxes(const ViewerState& state);

    // rbinterface_menus.cpp
    void makeMenus();
    void makeFileMenu();
    void makeViewMenu();
    void makeZoomMenu();
    void makePlayMenu();
    void makeUnitsMenu();
    QAction* addEntry(QMenu* menu, const char* name, const QString& caption);
    void mnuColorGrey_click();
    void mnuRD_click();
    void giveOwnScale();
    void foldTip(bool folded);
    void gaslistCheck_click(bool shown);
    void leave();
    void mnuSpread_toggled(bool shown);
    void Option1_click();
    void chooseunit(const QString& word);
    void Command2_click(ZoomButton button);
    void showZoom();
    void checkUnit();

    // rbinterface_load.cpp
    void resetControls();
    void adoptLastDive();
    DiveRow readDiveRow();
    QString resolveDisplay();
    void readgaslist();
    std::vector<GasRow> gasRowsOfDive();
    QString readMetric(DiveProfile& profile);
    void Command_textfind();
    void showMissingFile();
    void showDive();
    void prepareGrid();

    // rbinterface_chart.cpp
    void determinexaxis();
    void plotgraph();
    void plotgasstrip();
    void endExercise();
    void showLegend();
    void takeSeriesStyles();
    look::Theme chartTheme() const;
    double recordedInterval() const;

    // rbinterface_select.cpp
    void MSChart1_MouseDown(double x, double y);
    void MSChart1_MouseUp(double x);
    void MSChart1_DblClick();
    void MSFlexGrid1_SelChange();
    void selectrow(int row);
    void placeCursor(int row);
    void stripClicked(StripKind kind, double share);

    // rbinterface_point.cpp
    void showpointtip(int row);
    void showpoint(int row);
    void drawstrip();
    void placeTip(int row);
    TipChoice tipChoice() const;

    // rbinterface_play.cpp
    void makeTimers();
    void PlayDive_click();
    void StopPlayDive_click();
    void Timer3_tick();
    void step(int by);
    void walk(SampleStep way);
    void jumpTo(int row);
    void Command5_click();

    // rbinterface_free.cpp
    void zoomFreely(double xTwips, double factor);
    void moveFreely(double pixels);
    void leaveFreeView();
    void takeFreeView(RowRange view);
    void showStripAndCursor();
    RowRange shownRows() const;
    int rowUnder(double xTwips) const;
    void showHover(double xTwips);
    void hideHover();

    // rbinterface_export.cpp
    void headGrid();
    void cmdSave_click();
    void Command4_click();
    void cmdsavegraph_click();
    void mnuPrintspreadsheet_click();
    void saveFullProfile(bool zxu);
    void saveChart();
    void printDivePage();
    void printSamplePages();
    ChartPictureParts chartPictureParts();

    // The dive session.
    store::DiveIdentity dive_;
    QString divesystem_;
    QString
        unitword_; ///< that stands behind a depth: the one in force at the load, or what an export made of it
    std::optional<ViewerState> resumed_;
    DiveProfile profile_;
    GasArrays gases_;
    GasNames gasname_;
    GasRowNames gasrownames_;
    HeaderBoxes header_;
    QDateTime startdate_, finisheddate_;
    ZoomState zoom_;
    bool feet_ = false;
    int lastsample_ = 0; ///< the last grid row; 0 without a dive
    int currentrow_ = 1;
    int selectedrow_ = 1;
    int playspeed_ = 1;
    bool playbusy_ = false;
    PanelState panel_;
    std::optional<RowRange> free_; ///< the view moved by wheel and drag, beside the two told ones
    QString dialogfilter_;         ///< of the save dialog; the table's export sets its own behind the dialog
    ChartScheme scheme_ = ChartScheme::Theme;
    bool keepsSample_ = false; ///< the release that follows a double click picks no sample
    bool diveloadfailed_ = false;

    QAction* mnuSpread = nullptr;
    QAction* mnuColorGrey = nullptr;
    QAction* mnuRD = nullptr;
    QAction* mnuLegend = nullptr;
    QAction* mnuFoldTip = nullptr;
    QAction* mnuOwnScale = nullptr;
    QAction* mnudivezoom = nullptr;
    QAction* mnuzoompan = nullptr;
    QAction* mnuzoompan2 = nullptr;
    QAction* mnuunitsfeet = nullptr;
    QAction* mnuunitsmeters = nullptr;
    QRadioButton* Option1 = nullptr;
    QRadioButton* Option2 = nullptr;

    DiveHead* head_ = nullptr;
    QWidget* side_ = nullptr;
    SeriesColumn* series_ = nullptr;
    look::Card* unitsCard_ = nullptr;
    GasStripView* txtGas = nullptr;
    TipBox* Text8 = nullptr;
    QLabel* hover_ = nullptr;
    AlarmStripView* Picture1 = nullptr;
    LegendStrip* legend_ = nullptr;
    PlayBar* playbar_ = nullptr;
    InstrumentPanel* panelView_ = nullptr;
    platform::TickTimer* Timer3 = nullptr;
    platform::Chart* MSChart1 = nullptr;
    TimeLabels* times_ = nullptr;
    ZoomBar* zoombar_ = nullptr;
    QStackedWidget* chartPages_ = nullptr;
    QLabel* emptyText_ = nullptr;
    QSplitter* splitter_ = nullptr;
    look::Card* gridCard_ = nullptr;
    platform::FlexGrid* MSFlexGrid1 = nullptr;
    platform::FlexGrid* MSFlexGrid2 = nullptr; ///< of the thermistors; nothing fills it
    QWidget* right_ = nullptr;
    look::Card* gasCard_ = nullptr;
    QLabel* gasList = nullptr;
    QCheckBox* gaslistCheck = nullptr;
};

} // namespace benthor::viewer
