#include "shell/house.h"

#include "firmware/screens/blinkform.h"
#include "firmware/screens/reprog_link.h"
#include "firmware/screens/runprog.h"
#include "gas/screens/gasblend.h"
#include "gas/setuplook.h"
#include "guides/screens/frmabout.h"
#include "guides/screens/frmgets.h"
#include "guides/screens/frmsplash.h"
#include "guides/screens/frmtip.h"
#include "link/screens/pc_link_1.h"
#include "platform/instancelock.h"
#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"
#include "platform/screen/screenslot.h"
#include "platform/screen/sessionend.h"
#include "platform/screen/storewaitwindow.h"
#include "platform/skiperrors.h"
#include "shell/house_dives.h"
#include "shell/house_rehearsal.h"
#include "shell/process.h"
#include "shell/screens/main_screen.h"
#include "shell/screens/neighbours.h"

#include <QApplication>

namespace benthor::shell {

using platform::Screen;
using platform::ScreenSlot;

struct House::Rooms : Neighbours, DiveHost, gas::GasNeighbours, firmware::FirmwareNeighbours {
    Rooms(House& owner, link::LinkLines serialLines)
        : house(owner)
        , lines(std::move(serialLines))
        , lock(platform::ProgramFolder::current().root()) {}

    House& house;
    link::LinkLines lines;
    platform::InstanceLock lock;
    platform::StoreWaitWindow storeWait;
    bool ending = false; ///< the main screen goes: nothing shows it again
    bool ended = false;
    int handovers = 0;
    QString lastimage; ///< firmware image chosen last
    Rehearsal rehearsal;
    std::unique_ptr<platform::NoDialogs> quiet; ///< there once the session has ended
    guides::Tips tips;                          ///< of the main screen's panel and of the tips screen
    guides::frmTip::Opened tipsOpened =
        guides::frmTip::Opened::ByUser; ///< how the next tips screen is opened

    /// One screen goes and the next is about to come: the moment without a window between them ends nothing.
    class Handover {
    public:
        explicit Handover(Rooms& rooms)
            : rooms_(rooms) {
            rooms_.handoverBegins();
        }
        ~Handover() { rooms_.handoverEnds(); }
        Handover(const Handover&) = delete;
        Handover& operator=(const Handover&) = delete;

    private:
        Rooms& rooms_;
    };

    /// Makes a screen whose end is noticed: the process ends with the last one that can be seen.
    template <class T, class... Arguments> T* make(Arguments&&... arguments) {
        auto* screen = new T(std::forward<Arguments>(arguments)...);
        watchEnd(*screen);
        return screen;
    }

    // Made from the top of the layers down, so that the ones below go last.
    ScreenSlot<link::PC_Link_1> PC_Link_1{[this] { return makeLink(); }};
    ScreenSlot<gas::GasBlend> GasBlend{
        [this] { return make<gas::GasBlend>(static_cast<gas::GasNeighbours&>(*this)); }};
    DiveScreens dives{static_cast<DiveHost&>(*this)};
    ScreenSlot<viewer::rbinterface>& rbinterface = dives.rbinterface;
    ScreenSlot<logbook::rbdetails>& rbdetails = dives.rbdetails;
    ScreenSlot<logbook::rbmain>& rbmain = dives.rbmain;
    ScreenSlot<firmware::ReProg_Link> ReProg_Link{[this] {
        return make<firmware::ReProg_Link>(static_cast<firmware::FirmwareNeighbours&>(*this), lines);
    }};
    ScreenSlot<firmware::RunProg> RunProg{[this] { return make<firmware::RunProg>(); }};
    ScreenSlot<firmware::BlinkForm> BlinkForm{[this] { return make<firmware::BlinkForm>(); }};
    ScreenSlot<guides::frmSplash> frmSplash{[this] { return makeSplash(); }};
    ScreenSlot<guides::frmGetS> frmGetS{[this] { return makeGuide(); }};
    ScreenSlot<guides::frmTip> frmTip{[this] { return makeTips(); }};
    ScreenSlot<guides::frmAbout> frmAbout{[this] { return make<guides::frmAbout>(); }};
    ScreenSlot<MainScreen> main{[this] { return make<MainScreen>(static_cast<Neighbours&>(*this)); }};

    // --- the start chain: splash, guide, main

    guides::frmSplash* makeSplash() {
        auto* screen = make<guides::frmSplash>(lock.held());
        QObject::connect(screen, &guides::frmSplash::handedOver, &house, [this] {
            const Handover handover(*this);
            frmSplash.unload();
            QCoreApplication::processEvents();
            frmGetS.showInFront();
        });
        return screen;
    }

    guides::frmGetS* makeGuide() {
        auto* screen = make<guides::frmGetS>(lock.held());
        QObject::connect(screen, &Screen::unloaded, &house, [this] {
            if (!ending) {
                const Handover handover(*this);
                main.showInFront();
            }
        });
        return screen;
    }

    // --- what the screens of the logbook ask

    void watchEnd(platform::Screen& screen) override {
        QObject::connect(&screen, &Screen::unloaded, &house, [this] { lookForTheEndLater(); });
    }
    void handoverBegins() override { ++handovers; }
    void handoverEnds() override {
        --handovers;
        lookForTheEndLater();
    }
    void showDownload() override {
        // An import and the link write into the same folder: one waits for the other.
        if (!process().importing) {
            process().screenmode = QStringLiteral("Dive");
            showLink();
        }
    }
    void showMain() override { main.showInFront(); }
    void showGas() override { GasBlend.showInFront(); }

    // --- the link screen: its other face, the way back, the tips

    link::PC_Link_1* makeLink() {
        auto* screen = make<link::PC_Link_1>(lines);
        screen->setTipsQuery([this] { return frmTip.isVisible(); });
        QObject::connect(screen, &link::PC_Link_1::swapWanted, &house, [this](const QString& screenmode) {
            const Handover handover(*this);
            PC_Link_1.unload();
            process().screenmode = screenmode;
            PC_Link_1.showInFront();
        });
        QObject::connect(screen, &link::PC_Link_1::menuWanted, &house, [this] {
            const Handover handover(*this);
            PC_Link_1.unload();
            main.showInFront();
        });
        QObject::connect(screen, &link::PC_Link_1::tipsWanted, &house,
                         [this] { showTips(guides::frmTip::Opened::ByItself); });
        connectLinkToMain(screen);
        connectLinkToGas(screen);
        return screen;
    }

    /// What the device says of its setup and its readings stands on the gas screen, seen or not.
    void connectLinkToGas(link::PC_Link_1* screen) {
        QObject::connect(screen, &link::PC_Link_1::setupArrived, &house,
                         [this](const QByteArray& text) { GasBlend.get().receiveSetup(text); });
        QObject::connect(
            screen, &link::PC_Link_1::readingsArrived, &house,
            [this](const link::Readings& readings) { GasBlend.get().receiveReadings(readings); });
        QObject::connect(screen, &link::PC_Link_1::setupUpdateWanted, &house,
                         [this] { GasBlend.get().Command1_click(); });
        screen->setSetupLook([this](const link::SetupBody& body) { return setupMayGo(body); });
    }

    /// A gas screen that is not there is not loaded to be asked: its start writes into the text in hand.
    bool setupMayGo(const link::SetupBody& body) {
        if (GasBlend.isLoaded()) {
            return GasBlend.get().setupMayGo(body);
        }
        const QString refusal = gas::textrefusal(body.text);
        if (!refusal.isEmpty()) {
            GasBlend.showInFront();
            GasBlend.get().say(refusal);
        }
        return refusal.isEmpty();
    }

    void connectLinkToMain(link::PC_Link_1* screen) {
        QObject::connect(screen, &link::PC_Link_1::firmwareWanted, &house, [this] {
            const Handover handover(*this);
            main.get().mnuReprogIR_click();
        });
        QObject::connect(screen, &link::PC_Link_1::importWanted, &house,
                         [this] { main.get().lblmdu_click(); });
        QObject::connect(screen, &link::PC_Link_1::importAfterLeaving, &house, [this] {
            const Handover handover(*this);
            PC_Link_1.unload();
            main.showInFront();
            main.get().lblmdu_click();
        });
        QObject::connect(screen, &link::PC_Link_1::hintForMain, &house, [this](const QString& hint) {
            if (main.isLoaded()) {
                main.get().showHint(hint);
            }
        });
        QObject::connect(screen, &link::PC_Link_1::statusPainted, &house, [this] {
            // One that is on its way out is not addressed: that would load another.
            if (main.isLoaded() && PC_Link_1.isLoaded()) {
                main.get().showLinkStatus();
            }
        });
    }

    // --- what the gas screen asks

    link::SetupLink& setupLink() override { return PC_Link_1.get(); }
    void showLinkForSending() override {
        process().screenmode = QStringLiteral("Command");
        PC_Link_1.showInFront();
        PC_Link_1.get().layFace();
    }

    // --- what the firmware screen asks

    void leaveToMain() override {
        const Handover handover(*this);
        main.showInFront(); // it closes the firmware screen as it loads
        ReProg_Link.unload();
    }
    void showRunningPrograms() override { RunProg.showInFront(); }
    QString lastImage() override { return lastimage; }
    void setLastImage(const QString& path) override { lastimage = path; }
    bool blinkVisible() override { return BlinkForm.isVisible(); }
    void showBlink() override { BlinkForm.show(); }
    void hideBlink() override {
        if (BlinkForm.isLoaded()) {
            BlinkForm.get().hide();
        }
    }
    void unloadBlink() override { BlinkForm.unload(); }
    int startRehearsal(bool kd, int baud, QString& error) override {
        return rehearsal.start(kd, baud, error);
    }
    void rehearsalReports(const QByteArray& checkvalue) override { rehearsal.report(checkvalue); }
    void stopRehearsal() override { rehearsal.stop(); }

    // --- what the main screen asks

    link::LinkStatus& linkStatus() override { return PC_Link_1.get(); }
    void showLink() override { PC_Link_1.showInFront(); }
    void showGasBlend() override { GasBlend.showInFront(); }

    void showDiveList() override { rbmain.show(); }
    void bringDiveListToFront() override { rbmain.get().bringToFront(); }
    void unloadDiveList() override { rbmain.unload(); }
    QString reopenDiveList() override { return dives.reopenList(); }
    bool isDiveListOnScreen() override { return rbmain.isVisible(); }
    void showDiveView() override { rbinterface.showInFront(); }
    void unloadDiveView() override { rbinterface.unload(); }
    void unitChosen() override { dives.unitChosen(); }
    void unitMayHaveChanged() override { dives.unitMayHaveChanged(); }

    void showGuide() override { frmGetS.showInFront(); }
    void showTips() override { showTips(guides::frmTip::Opened::ByUser); }
    void showTips(guides::frmTip::Opened opened) {
        const Handover handover(*this);
        tipsOpened = opened;
        frmTip.show();
        // What comes by itself takes the keys from nobody.
        if (frmTip.isLoaded() && opened == guides::frmTip::Opened::ByUser) {
            frmTip.get().bringToFront();
        }
        if (main.isVisible()) {
            placeTips(main.get().frameGeometry(), main.get().isMinimized());
        }
        tipsOpened = guides::frmTip::Opened::ByUser;
    }
    guides::frmTip* makeTips() {
        auto* screen = make<guides::frmTip>(tipsOpened, tips);
        QObject::connect(screen, &guides::frmTip::tipChanged, &house, [this] {
            if (main.isLoaded()) {
                main.get().showTip();
            }
        });
        return screen;
    }
    QString tipText() override {
        if (tips.isEmpty()) {
            tips.open(platform::ProgramFolder::current().path(guides::tipsfile()));
        }
        return tips.text();
    }
    void nextTip() override {
        if (frmTip.isLoaded()) {
            frmTip.get().DoNextTip();
        } else {
            tips.DoNextTip();
        }
    }
    void showAbout() override { frmAbout.showInFront(); }
    void placeTips(const QRect& mainScreen, bool minimized) override {
        // A tips screen that is not open stays so: nothing is placed beside the main screen.
        if (frmTip.isVisible() && !minimized) {
            frmTip.get().placeBeside(mainScreen);
        }
    }

    void showFirmware() override { ReProg_Link.showInFront(); }
    void unloadFirmware() override { ReProg_Link.unload(); }

    bool isSecondCopy() override { return !lock.held(); }

    void unloadOthers() override {
        ending = !ReProg_Link.isLoaded();
        PC_Link_1.unload();
        rbdetails.unload();
        rbmain.unload();
        rbinterface.unload();
        GasBlend.unload();
        PC_Link_1.unload();
        frmTip.unload();
        frmGetS.unload();
        frmAbout.unload();
        frmSplash.unload();
        BlinkForm.unload();
        RunProg.unload();
    }

    void keepAll() {
        const platform::NoDialogs noBoxes;
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (auto* screen = qobject_cast<Screen*>(window)) {
                platform::skipErrors([screen] { screen->keep(); });
            }
        }
    }

    /// Without the main screen (a firmware session, the start) the others are closed one by one.
    void endAll() {
        quiet = std::make_unique<platform::NoDialogs>(); // a routine on the stack may still have a word
        ending = true;
        platform::skipErrors([this] { main.unload(); });
        platform::skipErrors([this] { unloadOthers(); });
        platform::skipErrors([this] { ReProg_Link.unload(); });
        endProcess();
    }

    void endProcess() override {
        ending = true;
        if (!ended) {
            ended = true;
            emit house.ended();
        }
    }

    void lookForTheEndLater() {
        QMetaObject::invokeMethod(
            &house, [this] { endWithTheLastScreen(); }, Qt::QueuedConnection);
    }

    void endWithTheLastScreen() {
        const bool seen = main.isVisible() || rbmain.isVisible() || rbinterface.isVisible() ||
                          rbdetails.isVisible() || PC_Link_1.isVisible() || GasBlend.isVisible() ||
                          ReProg_Link.isVisible() || RunProg.isVisible() || frmSplash.isVisible() ||
                          frmGetS.isVisible() || frmTip.isVisible() || frmAbout.isVisible() ||
                          dives.ScrSavForm1.isVisible();
        if (!seen && handovers == 0) {
            endProcess();
        }
    }
};

House::House(link::LinkLines lines)
    : rooms_(std::make_unique<Rooms>(*this, std::move(lines))) {}

House::~House() {
    rooms_->ending = true;
    rooms_.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void House::start() {
    rooms_->frmSplash.showInFront();
}

void House::follow(const platform::SessionEnd& session) {
    connect(&session, &platform::SessionEnd::saveWanted, this, &House::keepSession);
    connect(&session, &platform::SessionEnd::ending, this, &House::endSession);
    connect(qApp, &QCoreApplication::aboutToQuit, this, &House::endSession);
}

void House::keepSession() {
    rooms_->keepAll();
}

void House::endSession() {
    rooms_->endAll();
    // At once: a box that is up ends with its loop, before the window that it hangs on is gone.
    QCoreApplication::exit(0);
}

} // namespace benthor::shell
