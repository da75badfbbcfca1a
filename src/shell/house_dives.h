#pragma once

#include "guides/screens/scrsavform1.h"
#include "logbook/screens/mergelogbook.h"
#include "logbook/screens/rbdetails.h"
#include "logbook/screens/rbmain.h"
#include "logbook/screens/trash.h"
#include "platform/screen/screenslot.h"
#include "viewer/screens/rbinterface.h"

#include <optional>

namespace benthor::shell {

/// What the screens of the logbook need of the house around them.
class DiveHost {
public:
    virtual ~DiveHost() = default;

    /// Looks after the end of a screen that was made.
    virtual void watchEnd(platform::Screen& screen) = 0;
    /// Between these two the moment without a window ends nothing.
    virtual void handoverBegins() = 0;
    virtual void handoverEnds() = 0;

    virtual void showDownload() = 0;
    virtual void showMain() = 0;
    virtual void showGas() = 0;
    /// Dives have come from another logbook.
    virtual void divesCame() = 0;
};

/// The dive list, the dive screen, the details and the capture: which of them goes when another comes, and
/// which dive each of them shows. Dive screen and details keep the dive that they were loaded with; a dive
/// that is deleted leaves both.
class DiveScreens {
public:
    explicit DiveScreens(DiveHost& host);

    /// The list afresh and in front, on the store that `storepath` names. Returns what kept that store from
    /// being opened.
    QString reopenList();
    /// The unit in force is another one by now, chosen or not: an open dive is shown in it, at the same
    /// place.
    void unitChosen();
    void unitMayHaveChanged();

    // In the order in which they go at the end.
    platform::ScreenSlot<guides::ScrSavForm1> ScrSavForm1;
    platform::ScreenSlot<viewer::rbinterface> rbinterface;
    platform::ScreenSlot<logbook::rbdetails> rbdetails;
    platform::ScreenSlot<logbook::rbmain> rbmain;
    platform::ScreenSlot<logbook::trash> trash;
    platform::ScreenSlot<logbook::mergelogbook> mergelogbook;

private:
    class Handover;

    logbook::rbmain* makeList();
    viewer::rbinterface* makeDiveView();
    logbook::rbdetails* makeDetails();
    logbook::trash* makeTrash();
    logbook::mergelogbook* makeMerge();

    void openDive();
    void unloadList();
    void showListAfresh();
    void showList();
    void reloadDiveView(bool keepsView);
    void showDetails();
    void leaveDetails();
    void captureDiveView();
    QString storeDetailsOf(const QStringList& dives);
    QString closeWhatIsDeleted();
    QString storeTyped();
    void exportDives(platform::Screen& from, const QStringList& dives);
    void exportShownDive();
    void takeTurn(const logbook::TurnedAct& turned, const QString& word);
    void takeMerge(const logbook::MergeResult& result);
    void takePutBack(const logbook::TurnedAct& turned);
    void showOtherActs();

    DiveHost& host_;
    QString openedFrom_; ///< the other store whose list the dive on the screen was opened from; empty: the
                         ///< own one
    logbook::FilledList filled_;                 ///< of the list that has just gone, for the one that comes
    std::optional<viewer::ViewerState> resumed_; ///< of the dive screen that is about to be loaded anew
};

} // namespace benthor::shell
