#pragma once

#include "platform/screen/screen.h"
#include "store/diveidentity.h"
#include "viewer/divesession.h"
#include "viewer/screens/diveact.h"
#include "viewer/screens/playbar.h"
#include "viewer/screens/viewerstate.h"

#include <memory>

class QSplitter;

namespace benthor::look {
class Card;
}

namespace benthor::platform {
class FlexGrid;
class TickTimer;
} // namespace benthor::platform

namespace benthor::viewer {

class ChartCard;
class DiveExports;
class DiveHead;
class DiveMenus;
class InstrumentPanel;
class SideColumn;
class ZoomBar;

/// One dive: what the store tells of it in the head, the chart of its samples, and the grid that holds them.
/// Shows the dive of `currentdiveid` when the screen loads, in the units of that moment; both are its own
/// from then on, whatever is in hand elsewhere. Other units are a fresh load. Before it hands over to another
/// screen its dive is in hand again.
///
/// The dive and what is selected and shown of it lie in the session; the screen reads it in, hands it to the
/// parts that show it, and passes on what the user does.
class rbinterface : public platform::Screen {
    Q_OBJECT

public:
    rbinterface();
    ~rbinterface() override;

    /// What is shown of the dive, and in which unit.
    const DiveSession& session() const { return session_; }
    /// The dive that is shown. One that the store does not have has its identifier alone.
    const store::DiveIdentity& dive() const { return dive_; }
    /// The system that the dive was opened with.
    QString divesystem() const { return divesystem_; }
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
    /// The dive is to leave in an open format.
    void exportWanted();

protected:
    void loading() override;
    void unloading() override;
    QSize firstSize() const override { return {1366, 768}; }
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    // rbinterface_layout.cpp
    void makeParts();
    QWidget* makeFoot();
    void makeGrid();
    void connectParts();
    void fitToWidth();
    void takeColours();

    // rbinterface_acts.cpp
    void act(DiveAct act);
    void handOver(void (rbinterface::*wanted)());
    void chooseunit(const QString& word);
    void Command2_click(ZoomButton button);
    void showZoom();
    void mnuSpread_toggled(bool shown);
    void takeState(const ViewerState& state);

    // rbinterface_load.cpp
    void Command_textfind();
    void showMissingFile();
    void showDive();
    void checkUnit();

    // rbinterface_point.cpp
    void selectrow(int row);
    void MSFlexGrid1_SelChange();
    void showpointtip(int row);
    void goTo(std::optional<int> row);
    void play(PlayBar::Act act);
    void PlayDive_click();
    void StopPlayDive_click();
    void Timer3_tick();

    DiveSession session_;
    store::DiveIdentity dive_;
    QString divesystem_;
    std::optional<ViewerState> resumed_;
    bool playbusy_ = false;
    bool diveloadfailed_ = false;
    std::unique_ptr<DiveExports> exports_;

    DiveMenus* menus_;
    DiveHead* head_ = nullptr;
    SideColumn* side_ = nullptr;
    ChartCard* chart_ = nullptr;
    PlayBar* playbar_ = nullptr;
    ZoomBar* zoombar_ = nullptr;
    InstrumentPanel* panelView_ = nullptr;
    QWidget* right_ = nullptr;
    QSplitter* splitter_ = nullptr;
    look::Card* gridCard_ = nullptr;
    platform::FlexGrid* MSFlexGrid1 = nullptr;
    platform::FlexGrid* MSFlexGrid2 = nullptr; ///< of the thermistors; nothing fills it
    platform::TickTimer* Timer3 = nullptr;
};

} // namespace benthor::viewer
