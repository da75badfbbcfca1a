#pragma once

#include "logbook/acts.h"
#include "logbook/filledlist.h"
#include "platform/database.h"
#include "platform/grid/flexgrid.h"
#include "platform/screen/screen.h"
#include "platform/screen/ticktimer.h"

#include <QElapsedTimer>

#include <functional>
#include <vector>

class QAction;
class QActionGroup;
class QLabel;
class QMenu;
class QVBoxLayout;

namespace benthor::look {
class FaultFrame;
}

namespace benthor::platform {
class Mailer;
}

namespace benthor::logbook {

class ListFoot;
class ListToolBar;
class OtherStoreBand;
class PublishPanel;
class SummaryStrip;

/// The dive list: one row for each dive, the chosen one in numbers below, and what can be done with a dive.
/// A blue row is a chosen one; several can be. Rows count from 1, columns are display columns.
class rbmain : public platform::Screen {
    Q_OBJECT

public:
    rbmain();

    /// Reads all dives afresh in the order of the key in hand, checks each, and chooses the first. While the
    /// screen can be seen it is painted meanwhile, ticks wait, and input other than closing a window is
    /// dropped. Ends early when the screen is unloaded. The grid's property "filled" is true when all is
    /// there.
    void filldivelist();

    /// Why the store that `storepath` named is not the one of the list; empty when it is.
    QString refusedStore() const { return refusedStore_; }

    /// Path of the store that the list stands on, where it is not the program's own; else empty. Its dives
    /// are looked at: they are neither deleted nor sent, and only one that is the own store's, too, is
    /// opened.
    QString otherStore() const { return otherStore_; }

    /// What happens before dives are deleted: `keeper` stores what is being typed of them and returns why a
    /// dive must stay, or nothing.
    void setKeeper(std::function<QString(const QStringList& dives)> keeper) { keeper_ = std::move(keeper); }

    /// What happens before an act is taken back or done again: `keeper` stores what is being typed of any
    /// dive and returns why that failed, or nothing.
    void setTypedKeeper(std::function<QString()> keeper) { typedKeeper_ = std::move(keeper); }
    /// Shows in the menu what can be taken back by now.
    void takeActs();

    /// Does what a click on the row of that dive does; nothing where the list has none.
    void chooseDive(const QString& diveid);
    /// Scrolls to the one of those dives that began last, and leaves the choice as it is.
    void scrollToNewest(const QStringList& dives);
    /// Shows depths in the unit in hand, where the list does not; the choice and the order stay.
    void takeUnit();
    /// Shows what the store has of that dive by now; the choice and the order stay. `save`: of its details.
    void takeTextsOf(const QString& diveid, const platform::StoreSpan& save = {});

    /// An act has changed the store: the next list need not read more than those dives anew.
    void follow(const platform::StoreSpan& act, const QStringList& dives) { list_.follow(act, dives); }
    /// What the next list can be filled from; this one is about to go and shows nothing from here on.
    FilledList handOver();
    /// Before it is loaded: what the list before it has handed over.
    void takeOver(FilledList list) { list_ = std::move(list); }

    /// A line of the list's own, until the next choice.
    void tell(const QString& quietLine);

signals:
    void diveOpened();   ///< `currentdiveid` is to be shown; the list goes
    void reloadWanted(); ///< the list is to be unloaded and shown afresh
    /// The same, behind an act that was taken back or done again; `word` is the quiet line of the new list.
    void actTurned(const TurnedAct& turned, const QString& word);
    void trashWanted();
    void mergeWanted();
    void exportWanted(const QStringList& dives); ///< these are to leave in an open format
    void linkWanted();
    void mainWanted();

protected:
    void loading() override;
    void unloading() override;
    void keeping() override;
    QSize firstSize() const override { return {1366, 768}; }
    void changeEvent(QEvent* event) override;

private:
    // layout
    void buildMenus();
    QMenu* buildMenu(const QString& name, const QString& caption);
    QAction* addEntry(QMenu* menu, const char* name, const QString& caption, void (rbmain::*act)());
    void buildSortMenu();
    void buildPopup();
    void buildBody();
    void connectControls();
    void setUpGrid();
    void takeTheme();

    // events, named for their controls
    void Timer3_tick();
    void cmdgo_click();
    void cmdelete_click();
    void cmdclose_click();
    void Command1_click();
    void mnuerrorcode_click();
    void mnusdate_click();
    void mnuslocation_click();
    void mnusmd_click();
    void mnussite_click();
    void MSFlexGrid1_SelChange();
    void MSFlexGrid1_MouseUp(int row, int rowSel, Qt::KeyboardModifiers modifiers);
    void MSFlexGrid1_RightClick(int row, const QPoint& globalPos);
    void MSFlexGrid1_KeyDown(QKeyEvent* event);
    void MSFlexGrid1_MovedByKey();
    void MSFlexGrid1_HeaderClick(int col);

    // taking back
    void buildEditMenu();
    void mnuundo_click();
    void mnuredo_click();
    void mnutrash_click();
    void mnumerge_click();
    void mnuexport_click();
    void mnuexportall_click();
    void exportDives(const QStringList& dives);
    void turnAct(bool undo);
    bool storesTyped(const ActInHand& meant, bool undo);
    void tellNotTakenBack(const ActRecord& record);

    // publishing
    void Picture5_click(int index);
    void foldPublish(bool open);
    void publishDive();
    void connectMailer();
    void cmdSave_click();
    bool writeSheet(const QString& path);

    // store
    platform::Database& store();
    void openstore();
    void openOwnStore();
    void leaveOtherStore();
    bool isElsewhere() const { return !otherStore_.isEmpty(); }
    bool refuseElsewhere(const QString& deed);
    bool isOwnDive(const QString& diveid);

    // filling
    void mnusdiveid_click();
    void sortBy(const QString& key, bool downward = false);
    void runSort(int sortnumber);
    bool wantedDownward() const;
    void showSort();
    enum class Shown { None, Some, Ended };
    Shown showDives();
    bool showFilled();
    void showRows();
    void askForTexts();
    bool showEarly();
    bool checkDives();
    bool paintPending(const std::function<void()>& before);
    void noteFault(const QString& diveid);
    void showFaults(const QString& title, const QString& problemtext);

    // rows
    bool isBlue(int row) const;
    std::vector<int> blueRows() const;
    void markBlue(int row);
    void unmark(int row);
    void unmarkAll();
    void chooseAll();
    int rowOf(const QString& diveid) const;
    void chooseOnly(int row);
    void chooseBlock(int from, int to);
    void addToChosen(int row);
    void moveCurrentTo(int row);
    int keyTarget(int key) const;
    int rowMeant() const;
    void showStrip();
    void refreshStrip();
    platform::RowSign signOf(int row) const;
    QStringList chosenDives() const;
    QStringList dives() const;
    QString chosenNames() const;

    ListToolBar* bar_ = nullptr;
    OtherStoreBand* storeBand_ = nullptr;
    platform::FlexGrid* MSFlexGrid1_;
    look::FaultFrame* Frame2_ = nullptr;
    QLabel* Label16_ = nullptr;
    PublishPanel* publish_ = nullptr;
    platform::Mailer* mailer_ = nullptr;
    int grownBy_ = 0; ///< pixels that the window grew by when the panel was opened
    SummaryStrip* strip_ = nullptr;
    ListFoot* foot_ = nullptr;
    QMenu* mnupopup_ = nullptr;
    QAction* mnuSaveSpread_ = nullptr;
    QAction* mnuerrorcode_ = nullptr;
    QActionGroup* sortEntries_ = nullptr;
    QAction* mnuundo_ = nullptr;
    QAction* mnuredo_ = nullptr;
    QAction* mnutrash_ = nullptr;
    QAction* mnumerge_ = nullptr;
    QAction* mnuexport_ = nullptr;
    QAction* mnuexportall_ = nullptr;
    ActsInHand acts_; ///< that the menu shows
    platform::TickTimer Timer3_;

    platform::Database chosenStore_; ///< open only while `storepath` names one
    QString otherStore_;             ///< path of the chosen store while the list stands on it
    QString refusedStore_;
    std::function<QString(const QStringList& dives)> keeper_;
    std::function<QString()> typedKeeper_;
    QString storeFault_; ///< why the store cannot be read; empty when it can
    QString sortkey_;
    bool downward_ = false; ///< the last dive of the order stands first
    QString unit_;          ///< that the depths are shown in
    FilledList list_;
    int divecount_ = 0;
    int clickedRow_ = 0;      ///< row under the last click
    std::vector<int> clicks_; ///< rows clicked, the last one at the end
    std::vector<bool> faulty_;
    QStringList faultyDives_;
    bool filling_ = false;
    QElapsedTimer sincePainting_;
    bool moving_ = false; ///< the current row is moved by code, not by the user
    QIcon chosenSign_;
    QIcon faultSign_;
};

} // namespace benthor::logbook
