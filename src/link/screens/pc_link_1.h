#pragma once

#include "link/linkstate.h"
#include "link/readings.h"
#include "link/screens/linklines.h"
#include "link/setuplink.h"
#include "platform/screen/screen.h"

#include <QHash>
#include <QPointer>

class QAbstractButton;
class QAction;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QMenu;
class QStackedWidget;

namespace benthor::look {
class NoticeBand;
}

namespace benthor::platform {
class TickTimer;
}

namespace benthor::link {

class CommandCard;
class CommandList;
class DirectoryCard;
class DownloadPanel;
class Drawer;
class HudCard;
class LinkFoot;
class LinkHead;
class WaitCard;

/// The link screen. Its controls show a LinkState; each event hands that to the link's logic and paints what
/// has changed. It has two faces, "Dive Download" and "Setup Utilities"; process().screenmode says which is
/// wanted whenever it is shown.
class PC_Link_1 : public platform::Screen, public SetupLink {
    Q_OBJECT

public:
    explicit PC_Link_1(LinkLines lines = {});
    ~PC_Link_1() override;

    QString caption() const override { return link_.AFLabel3.text; }
    platform::ToldColour captionColour() const override { return link_.AFLabel3.colour; }
    bool isOnScreen() const override { return isVisible(); }
    bool isDownloading() const override { return link_.download.TXTWaitVisible; }
    void closePorts() override;
    QByteArray receivedText() const override { return link_.Text4.bytes(); }
    bool waitsForDirectory() const override { return link_.Timer2; }
    bool hidesSetup() const override { return link_.hidessetup; }
    bool owesSetup() const override { return link_.owessetup; }
    void setTextToSend(const QString& text) override;
    void prepareSetup() override;
    bool sendSetup() override;
    bool refreshRests() const override;
    void refreshDirectory() override;

    QSize firstSize() const override;
    /// Lays the face that is wanted.
    void layFace();
    /// Who knows whether the connection tips can be seen.
    void setTipsQuery(std::function<bool()> showing) { tipsShowing_ = std::move(showing); }
    /// Who looks at a setup before it leaves; false keeps it back.
    void setSetupLook(std::function<bool(const SetupBody&)> look) { setupLook_ = std::move(look); }
    const LinkState& state() const { return link_; }

signals:
    /// The other face is wanted: unload, then show anew with this as `screenmode`.
    void swapWanted(const QString& screenmode);
    void menuWanted();         ///< unload; the main screen comes forward
    void tipsWanted();         ///< the connection tips
    void firmwareWanted();     ///< the main screen's entry for reprogramming
    void importWanted();       ///< the main screen's import entry
    void importAfterLeaving(); ///< unload, the main screen comes forward, its import entry
    void setupArrived(const QByteArray& text);
    void setupUpdateWanted();                                      ///< the gas screen's update
    void readingsArrived(const benthor::link::Readings& readings); ///< a line of live readings
    void hintForMain(const QString& text);                         ///< for `lbltotaldive` of the main screen
    void statusPainted(); ///< the status label of the main screen may follow

protected:
    void loading() override;
    void unloading() override;
    void keeping() override;
    void showEvent(QShowEvent* event) override;

private:
    class Host;

    // pc_link_1.cpp
    void sync() override;
    void syncTimers();
    void syncCover();
    QString cutWords() const;

    // pc_link_1_layout.cpp
    void buildBody();
    QWidget* buildMiddle();

    // pc_link_1_menus.cpp
    void buildMenus();
    QMenu* menu(const char* name, const char* caption);
    QAction* entry(QMenu* menu, const char* name, const char* caption, const std::function<void()>& work);
    void buildCommandMenu();
    void buildViewMenu();
    void showDetails(bool shown);
    void syncMenus();

    // pc_link_1_events.cpp
    void buildTimers();
    void connectControls();
    void connectButtons();
    void connectBoxes();
    void connectDirectory();
    void onClick(const QAbstractButton* button, const std::function<void()>& work);
    void onEdit(const QLineEdit* box, const std::function<void(const QString&)>& work);
    void Timer1_tick();
    void Timer3_tick();
    void takeReadings(const std::optional<Readings>& readings);
    void Label13_click();
    void Label11_click();
    void DiveSeriesName_change(const QString& text);
    void Mgrid_keydown(QKeyEvent* event);

    LinkState link_;
    std::unique_ptr<Host> host_;
    std::function<bool()> tipsShowing_;
    std::function<bool(const SetupBody&)> setupLook_;
    bool raw_ = false; ///< the raw text boxes are wanted
    bool covered_ = false;
    QPointer<QWidget> beforeCover_; ///< had the keyboard when a run began

    LinkHead* head_ = nullptr;
    LinkFoot* foot_ = nullptr;
    QStackedWidget* left_ = nullptr;
    QStackedWidget* middle_ = nullptr;
    DownloadPanel* download_ = nullptr;
    DirectoryCard* directory_ = nullptr;
    CommandList* commands_ = nullptr;
    CommandCard* command_ = nullptr;
    HudCard* hud_ = nullptr;
    Drawer* drawer_ = nullptr;
    look::NoticeBand* hintBox_ = nullptr; ///< `Text14` is its label
    WaitCard* wait_ = nullptr;
    QHash<QString, QAction*> commandActions_;
    QAction* mnuEdit_ = nullptr;
    QAction* mnuHud_ = nullptr;
    QAction* mnuAdvancedOption_ = nullptr;
    QAction* mnuDetOn_ = nullptr;
    QAction* mnuDetOff_ = nullptr;
    QHash<QString, platform::TickTimer*> timers_;
};

} // namespace benthor::link
