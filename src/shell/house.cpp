#include "shell/house.h"

#include "firmware/screens/blinkform.h"
#include "firmware/screens/reprog_link.h"
#include "firmware/screens/runprog.h"
#include "gas/screens/gasblend.h"
#include "guides/screens/frmabout.h"
#include "guides/screens/frmgets.h"
#include "guides/screens/frmsplash.h"
#include "guides/screens/frmtip.h"
#include "guides/screens/scrsavform1.h"
#include "link/screens/pc_link_1.h"
#include "logbook/screens/rbdetails.h"
#include "logbook/screens/rbmain.h"
#include "platform/instancelock.h"
#include "platform/programfolder.h"
#include "platform/screen/screenslot.h"
#include "shell/house_rehearsal.h"
#include "shell/process.h"
#include "shell/screens/main_screen.h"
#include "shell/screens/neighbours.h"
#include "viewer/screens/rbinterface.h"

#include <QCoreApplication>

namespace benthor::shell {

using platform::Screen;
using platform::ScreenSlot;

struct House::Rooms : Neighbours, gas::GasNeighbours, firmware::FirmwareNeighbours {
    Rooms(House& owner, link::LinkLines serialLines)
        : house(owner)
        , lines(std::move(serialLines))
        , lock(platform::ProgramFolder::current().root()) {}

    House& house;
    link::LinkLines lines;
    platform::InstanceLock lock;
    bool ending = false; ///< the main screen goes: nothing shows it again
    bool ended = false;
    int handovers = 0;
    QString lastimage; ///< firmware image chosen last
    Rehearsal rehearsal;
    guides::frmTip::Opened tipsOpened =
        guides::frmTip::Opened::ByUser; ///< how the next tips screen is opened

    /// One screen goes and the next is about to come: the moment without a window between them ends nothing.
    class Handover {
    public:
        explicit Handover(Rooms& rooms)
            : rooms_(rooms) {
            ++rooms_.handovers;
        }
        ~Handover() {
            --rooms_.handovers;
            rooms_.lookForTheEndLater();
        }
        Handover(const Handover&) = delete;
        Handover& operator=(const Handover&) = delete;

    private:
        Rooms& rooms_;
    };

    /// Makes a screen whose end is noticed: the process ends with the last one that can be seen.
    template <class T, class... Arguments> T* make(Arguments&&... arguments) {
        auto* screen = new T(std::forward<Arguments>(arguments)...);
        QObject::connect(screen, &Screen::unloaded, &house, [this] { lookForTheEndLater(); });
        return screen;
    }

    // Made from the top of the layers down, so that the ones below go last.
    ScreenSlot<link::PC_Link_1> PC_Link_1{[this] { return makeLink(); }};
    ScreenSlot<gas::GasBlend> GasBlend{
        [this] { return make<gas::GasBlend>(static_cast<gas::GasNeighbours&>(*this)); }};
    ScreenSlot<viewer::rbinterface> rbinterface{[this] { return makeDiveView(); }};
    ScreenSlot<logbook::rbdetails> rbdetails{[this] { return makeDetails(); }};
    ScreenSlot<logbook::rbmain> rbmain{[this] { return makeDiveList(); }};
    ScreenSlot<firmware::ReProg_Link> ReProg_Link{[this] {
        return make<firmware::ReProg_Link>(static_cast<firmware::FirmwareNeighbours&>(*this), lines);
    }};
    ScreenSlot<firmware::RunProg> RunProg{[this] { return make<firmware::RunProg>(); }};
    ScreenSlot<firmware::BlinkForm> BlinkForm{[this] { return make<firmware::BlinkForm>(); }};
    ScreenSlot<guides::frmSplash> frmSplash{[this] { return makeSplash(); }};
    ScreenSlot<guides::frmGetS> frmGetS{[this] { return makeGuide(); }};
    ScreenSlot<guides::frmTip> frmTip{[this] { return make<guides::frmTip>(tipsOpened); }};
    ScreenSlot<guides::frmAbout> frmAbout{[this] { return make<guides::frmAbout>(); }};
    ScreenSlot<guides::ScrSavForm1> ScrSavForm1{[this] { return make<guides::ScrSavForm1>(); }};
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

    // --- the dive list and the dive screen replace each other

    logbook::rbmain* makeDiveList() {
        auto* screen = make<logbook::rbmain>();
        QObject::connect(screen, &logbook::rbmain::diveOpened, &house, [this] {
            const Handover handover(*this);
            rbmain.unload();
            rbinterface.showInFront();
        });
        QObject::connect(screen, &logbook::rbmain::reloadWanted, &house, [this] {
            const Handover handover(*this);
            rbmain.unload();
            rbmain.showInFront();
        });
        QObject::connect(screen, &logbook::rbmain::linkWanted, &house, [this] { showDownload(); });
        QObject::connect(screen, &logbook::rbmain::mainWanted, &house, [this] { main.showInFront(); });
        return screen;
    }

    viewer::rbinterface* makeDiveView() {
        auto* screen = make<viewer::rbinterface>();
        QObject::connect(screen, &viewer::rbinterface::diveListWanted, &house, [this] {
            const Handover handover(*this);
            rbinterface.unload();
            rbmain.showInFront();
        });
        QObject::connect(screen, &viewer::rbinterface::reloadWanted, &house, [this] {
            const Handover handover(*this);
            rbinterface.unload();
            rbinterface.showInFront();
        });
        QObject::connect(screen, &viewer::rbinterface::detailsWanted, &house, [this] { showDetails(); });
        QObject::connect(screen, &viewer::rbinterface::gasWanted, &house, [this] { GasBlend.showInFront(); });
        QObject::connect(screen, &viewer::rbinterface::captureWanted, &house, [this] { captureDiveView(); });
        return screen;
    }

    logbook::rbdetails* makeDetails() {
        auto* screen = make<logbook::rbdetails>();
        QObject::connect(screen, &logbook::rbdetails::captureWanted, &house, [this] { captureDiveView(); });
        QObject::connect(screen, &logbook::rbdetails::diveViewWanted, &house, [this] {
            const Handover handover(*this);
            rbdetails.unload();
            rbinterface.showInFront();
        });
        return screen;
    }

    /// Details left open for another dive are stored and make way.
    void showDetails() {
        if (rbdetails.isLoaded() && rbdetails.get().diveid() != process().currentdiveid) {
            const Handover handover(*this);
            rbdetails.unload();
        }
        rbdetails.showInFront();
    }

    /// Without a dive screen there is nothing to capture.
    void captureDiveView() {
        if (rbinterface.isLoaded()) {
            const Handover handover(*this);
            ScrSavForm1.get().setDiveScreen(&rbinterface.get(), rbinterface.get().divefilename());
            ScrSavForm1.get().cmdCapture_click();
            ScrSavForm1.unload();
        }
    }

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

    /// An import and the link write into the same folder: one waits for the other.
    void showDownload() {
        if (!process().importing) {
            process().screenmode = QStringLiteral("Dive");
            showLink();
        }
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
    QString reopenDiveList() override {
        const Handover handover(*this);
        rbmain.unload();
        rbmain.showInFront();
        return rbmain.isLoaded() ? rbmain.get().refusedStore() : QString();
    }
    bool isDiveListOnScreen() override { return rbmain.isVisible(); }
    void showDiveView() override { rbinterface.showInFront(); }
    void unloadDiveView() override { rbinterface.unload(); }

    void showGuide() override { frmGetS.showInFront(); }
    void showTips() override { showTips(guides::frmTip::Opened::ByUser); }
    void showTips(guides::frmTip::Opened opened) {
        const Handover handover(*this);
        tipsOpened = opened;
        frmTip.showInFront();
        tipsOpened = guides::frmTip::Opened::ByUser;
    }
    QString tipText() override { return frmTip.get().tipText(); }
    void nextTip() override { frmTip.get().DoNextTip(); }
    bool isTipsLoaded() override { return frmTip.isLoaded(); }
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
                          ScrSavForm1.isVisible();
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

} // namespace benthor::shell
