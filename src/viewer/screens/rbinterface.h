#pragma once

#include "platform/screen/screen.h"
#include "viewer/diveprofile.h"
#include "viewer/gaslist.h"
#include "viewer/gasstrip.h"
#include "viewer/header.h"
#include "viewer/zoom.h"

class QAction;
class QBoxLayout;
class QFrame;
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
} // namespace benthor::platform

namespace benthor::viewer {

class GasStripView;
class HeadNumber;
class SeriesColumn;
class TimeLabels;
class ZoomBar;

/// One dive: what the store tells of it in the head, the chart of its samples, and the grid that holds them.
/// Shows the dive of `currentdiveid`, read when the screen loads; the units are those of that moment, so
/// other units are a fresh load.
class rbinterface : public platform::Screen {
    Q_OBJECT

public:
    rbinterface();
    ~rbinterface() override;

signals:
    /// The user leaves for the dive list.
    void diveListWanted();
    /// The screen is to be unloaded and shown again: the units have changed.
    void reloadWanted();
    void detailsWanted();
    void gasWanted();

protected:
    void loading() override;
    void unloading() override;
    QSize firstSize() const override { return {1366, 768}; }
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    // rbinterface_layout.cpp
    QWidget* makeHead();
    QWidget* makeSide();
    QWidget* makeChartCard();
    QWidget* makeEmptyPage();
    QWidget* makeGridCard();
    void makeHiddenParts();
    void fitToWidth();
    void takeColours();

    // rbinterface_menus.cpp
    void makeMenus();
    QAction* addEntry(QMenu* menu, const char* name, const QString& caption);
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
    void showHeader();
    void readgaslist();
    void Command_textfind();
    void showMissingFile();
    void showDive();
    void prepareGrid();

    // rbinterface_chart.cpp
    void determinexaxis();
    void plotgraph();
    void plotgasstrip();
    void takeSeriesStyles();
    double interval() const;

    // rbinterface_select.cpp
    void MSChart1_MouseDown(double x, double y);
    void MSChart1_MouseUp(double x);
    void MSFlexGrid1_SelChange();
    void selectrow(int row);
    void showpointtip(int row);
    void placeCursor(int row);

    // The dive session.
    DiveProfile profile_;
    GasArrays gases_;
    GasNames gasname_;
    GasRowNames gasrownames_;
    HeaderBoxes header_;
    ZoomState zoom_;
    bool feet_ = false;
    int lastsample_ = 0; ///< the last grid row; 0 without a dive
    int currentrow_ = 1;
    bool diveloadfailed_ = false;

    QAction* mnuSpread = nullptr;
    QAction* mnudivezoom = nullptr;
    QAction* mnuzoompan = nullptr;
    QAction* mnuzoompan2 = nullptr;
    QAction* mnuunitsfeet = nullptr;
    QAction* mnuunitsmeters = nullptr;
    QRadioButton* Option1 = nullptr;
    QRadioButton* Option2 = nullptr;

    QList<HeadNumber*> headNumbers_;
    HeadNumber* txtdiveid = nullptr;
    HeadNumber* txttimedown = nullptr;
    HeadNumber* txtduration = nullptr;
    HeadNumber* txtmaxdepth = nullptr;
    HeadNumber* txtinterval = nullptr;
    HeadNumber* txtotu = nullptr;
    HeadNumber* txtatmos = nullptr;
    HeadNumber* txtdusageh = nullptr;
    HeadNumber* txtversion = nullptr;

    QBoxLayout* headRow_ = nullptr;
    QWidget* side_ = nullptr;
    SeriesColumn* series_ = nullptr;
    look::Card* unitsCard_ = nullptr;
    GasStripView* txtGas = nullptr;
    QFrame* Text8 = nullptr; ///< the pointer at the pressed place
    platform::Chart* MSChart1 = nullptr;
    TimeLabels* times_ = nullptr;
    ZoomBar* zoombar_ = nullptr;
    QStackedWidget* chartPages_ = nullptr;
    QLabel* emptyText_ = nullptr;
    QSplitter* splitter_ = nullptr;
    look::Card* gridCard_ = nullptr;
    platform::FlexGrid* MSFlexGrid1 = nullptr;
    QLabel* gasList = nullptr;
    std::array<QWidget*, 6> Frame4{};
};

} // namespace benthor::viewer
