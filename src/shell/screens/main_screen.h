#pragma once

#include "platform/screen/screen.h"
#include "shell/infopanel.h"

#include <QHash>
#include <functional>
#include <memory>

class QAction;
class QBoxLayout;
class QHBoxLayout;
class QLabel;
class QListWidget;
class QMenu;
class QProgressBar;
class QPushButton;
class QStackedWidget;
class QTemporaryDir;

namespace benthor::look {
class ClickableLabel;
class EntryRow;
class LampDot;
class OverlayCard;
class ToldButton;
class NoticeBand;
class TotalsLabel;
} // namespace benthor::look

namespace benthor::divefiles {
struct ImportState;
}

namespace benthor::platform {
class TickTimer;
}

namespace benthor::shell {

class Neighbours;
class TipsPanel;
class UnsavedNote;

/// The screen `main`, which stays for the whole run: its entries lead to everything else, its timers watch
/// the folder of waiting dives and the link, and it runs the importer.
class MainScreen : public platform::Screen {
    Q_OBJECT

public:
    explicit MainScreen(Neighbours& neighbours);
    ~MainScreen() override;

    int infochoice() const { return infochoice_; }
    int filewatchcount() const { return filewatchcount_; }

    void Timer1_tick();
    void Timer2_tick();
    void Timer4_tick();

    // What the link asks of the main screen.

    /// The entry for importing.
    void lblmdu_click();
    /// The entry for reprogramming. An import in hand ends after its file.
    void mnuReprogIR_click();
    /// Shows a hint in the place of the totals.
    void showHint(const QString& hint);
    /// Takes over the link's caption and colour.
    void showLinkStatus();
    /// The tip in hand is another one: the panel, where it is open, shows it.
    void showTip();
    /// The logbook has dives that no import brought: the words for an empty one go.
    void divesCame();

protected:
    void loading() override;
    void unloading() override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;

private:
    // main_screen_layout.cpp
    void buildLayout();
    QWidget* buildEntries();
    QWidget* buildFoot();
    QWidget* buildTips();
    look::EntryRow* entry(QWidget* column, int choice, const QString& caption, const QString& captionName,
                          const QString& pictureName, const QString& icon, bool quiet);
    void hiddenButton(const char* name, void (MainScreen::*act)());
    QPushButton* footButton(int choice, const QString& name, const QString& caption, const QString& icon,
                            const QString& words);

    // main_screen_cards.cpp
    QWidget* buildPanel();
    QWidget* buildTotals();
    QWidget* buildHint(const QString& text, const char* name, const QList<QPushButton*>& buttons);
    QPushButton* entryButton(const char* name, int choice, const char* icon);
    QWidget* buildFirstDive();
    QWidget* buildNextDive();
    QWidget* buildLinkCard();
    QWidget* buildImportCard();
    QHBoxLayout* makeProgressHead();
    void buildProgress(QWidget* area);

    // main_screen_menus.cpp
    void buildMenus();
    void buildFileMenus();
    void buildUnitsMenu();
    void buildLinkMenus();
    QMenu* menuHeading(QWidget* parent, const char* name, const char* caption);
    QAction* menuEntry(QMenu* menu, const char* name, const char* caption,
                       const std::function<void()>& act = {});

    // main_screen.cpp
    void buildTimers();
    // main_screen_store.cpp
    bool storeIsThere();
    void bringOlderBackup();
    bool offerOlderBackups(const QString& reason);
    void openStore();
    std::unique_ptr<QTemporaryDir> copyOlderStore(const QString& path);
    static QString copiedStore(const QTemporaryDir& folder);
    void lookAtStore();
    void showStoreNote(const QString& fault);
    void storetimer_tick();

    // main_screen.cpp, on
    void readUnits();
    void chooseUnits(const QString& word);
    void takeUnits(const QString& word);
    void showUnits();
    void showinfopanel();
    void showTotals();
    void showFoot();
    void fillPanel();
    void showPanelPicture();
    void selectEntry(int choice);
    void entryClicked(int choice);
    void fitCards();
    void fitLeastSize();

    // main_screen_actions.cpp
    void Command1_click();
    void Command2_click();
    void Command3_click();
    void Command4_click();
    void Command5_click();
    void Command6_click();
    void cmdNextTip_click();
    void Label6_click();
    void cmdclose_click();
    void cmdcommandsend_click();
    void mnuconnectdevice_click();
    void mnucurrentmain_click();
    void mnuGets_click();
    void mnuTips_click();
    void mnuOpen_click();
    void showMerge();
    void showSetupAndGas();
    void showTipsPanel(bool shown);

    // main_screen_import.cpp
    class Progress;
    void showCommand4(bool green, bool enabled);
    void showWaiting(int waiting);
    int readNewFolder();
    void stopImport();
    void showListBehindImport();
    void showProgress(int done, int files);
    void movetocorrupt_click();

    Neighbours& neighbours_;
    int infochoice_ = kNoEntry;
    int filewatchcount_ = 0;
    std::unique_ptr<divefiles::ImportState> import_;
    QString passedby_; ///< what of the folder `new` no import takes
    QString panelPicture_;
    std::unique_ptr<QTemporaryDir> olderCopy_; ///< of the older store that the list shows

    QHash<int, look::EntryRow*> entries_;
    QHash<int, QWidget*> feet_;
    look::ClickableLabel* Picture9_ = nullptr;
    look::ClickableLabel* Label6_ = nullptr;
    look::ClickableLabel* Label10_ = nullptr; ///< Label10(0)
    QLabel* Picture12_ = nullptr;
    look::NoticeBand* storenote_ = nullptr;
    UnsavedNote* unsavednote_ = nullptr;
    bool fromBackup_ = false; ///< the load has put a backup in the missing store's place
    bool storeHeld_ = false;  ///< another program holds the store: it is looked at again
    QLabel* Label7_ = nullptr;
    QLabel* Label9_ = nullptr;
    QLabel* Lbldetails_ = nullptr;
    QWidget* panelentry_ = nullptr; ///< picture and words of the chosen entry
    QWidget* firstdive_ = nullptr;  ///< how the first dive gets in
    QWidget* nextdive_ = nullptr;   ///< where the dives are
    QAction* mnubringdives_ = nullptr;
    QPushButton* firstmerge_ = nullptr;
    look::TotalsLabel* lbltotaldive_ = nullptr;
    QStackedWidget* foot_ = nullptr;
    QBoxLayout* cards_ = nullptr;
    int entriesWidth_ = 0; ///< of the column at the left
    look::LampDot* lblstatus_ = nullptr;
    QLabel* Text14_ = nullptr;
    QLabel* waiting_ = nullptr;
    QWidget* folderRow_ = nullptr;
    QLabel* folderNotice_ = nullptr;
    QPushButton* movetocorrupt_ = nullptr;
    look::ToldButton* Command4_ = nullptr;
    TipsPanel* Frame4_ = nullptr;

    look::OverlayCard* Frame2_ = nullptr;
    QProgressBar* importbar_ = nullptr;
    bool stopped_ = false; ///< the last run was stopped, and files wait since
    QLabel* lblprogress_ = nullptr;
    QLabel* lblcopying_ = nullptr;
    QLabel* lblcurrentfile_ = nullptr;
    QLabel* lbltotalfiles_ = nullptr;
    QLabel* lbltotalsizes_ = nullptr;
    QListWidget* List1_ = nullptr;
    QPushButton* stopimport_ = nullptr;

    QMenu* mnuUnits_ = nullptr;
    QAction* mnuMeters_ = nullptr;
    QAction* mnuFeet_ = nullptr;

    platform::TickTimer* storetimer_ = nullptr;
    platform::TickTimer* Timer1_ = nullptr;
    platform::TickTimer* Timer2_ = nullptr;
    platform::TickTimer* Timer3_ = nullptr;
    platform::TickTimer* Timer4_ = nullptr;
};

} // namespace benthor::shell
