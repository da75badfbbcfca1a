#pragma once

#include "firmware/screens/blinkform.h"
#include "firmware/screens/reprog_link.h"
#include "firmware/screens/runprog.h"
#include "gas/screens/gasblend.h"
#include "guides/screens/frmabout.h"
#include "guides/screens/frmgets.h"
#include "guides/screens/frmsplash.h"
#include "guides/screens/frmtip.h"
#include "guides/screens/maintaining.h"
#include "link/screens/pc_link_1.h"
#include "platform/instancelock.h"
#include "platform/screen/screenslot.h"
#include "platform/screen/storewaitwindow.h"
#include "shell/house.h"
#include "shell/house_dives.h"
#include "shell/house_end.h"
#include "shell/house_firmware.h"
#include "shell/house_gas.h"
#include "shell/house_link.h"
#include "shell/house_logbook.h"
#include "shell/house_main.h"
#include "shell/house_opening.h"
#include "shell/house_tips.h"
#include "shell/screens/main_screen.h"

namespace benthor::shell {

/// All screens, and who answers what they ask of each other. Each hand-over has a file of its own.
class Rooms {
public:
    Rooms(House& owner, link::LinkLines serialLines);

    /// Makes a screen whose end is noticed.
    template <class T, class... Arguments> T* make(Arguments&&... arguments) {
        auto* screen = new T(std::forward<Arguments>(arguments)...);
        end.watch(*screen);
        return screen;
    }

    House& house;
    link::LinkLines lines;
    platform::InstanceLock lock;
    platform::StoreWaitWindow storeWait;
    guides::StoreStart storeStart;

    HouseEnd end{*this};                  ///< the last screen goes, or the session
    LinkHandover linkSays{*this};         ///< what the link screen says to the others
    GasHandover gasAsks{*this};           ///< what the gas screen asks
    LogbookHandover logbookAsks{*this};   ///< what list, dive and details ask
    FirmwareHandover firmwareAsks{*this}; ///< what the firmware screen asks
    TipsHandover tips{*this};             ///< the tips, on their own screen and on the main one
    MainHandover mainAsks{*this};         ///< what the main screen asks
    FileOpening opening{*this};           ///< files that are opened from outside

    /// While the splash is up: what the end of the start would have the user wait for.
    void prepareStart();

    // Made from the top of the layers down, so that the ones below go last.
    platform::ScreenSlot<link::PC_Link_1> PC_Link_1{[this] { return linkSays.makeLink(); }};
    platform::ScreenSlot<gas::GasBlend> GasBlend{
        [this] { return make<gas::GasBlend>(static_cast<gas::GasNeighbours&>(gasAsks)); }};
    DiveScreens dives{logbookAsks};
    platform::ScreenSlot<viewer::rbinterface>& rbinterface = dives.rbinterface;
    platform::ScreenSlot<logbook::rbdetails>& rbdetails = dives.rbdetails;
    platform::ScreenSlot<logbook::rbmain>& rbmain = dives.rbmain;
    platform::ScreenSlot<firmware::ReProg_Link> ReProg_Link{[this] {
        return make<firmware::ReProg_Link>(static_cast<firmware::FirmwareNeighbours&>(firmwareAsks), lines);
    }};
    platform::ScreenSlot<firmware::RunProg> RunProg{[this] { return make<firmware::RunProg>(); }};
    platform::ScreenSlot<firmware::BlinkForm> BlinkForm{[this] { return make<firmware::BlinkForm>(); }};
    platform::ScreenSlot<guides::frmSplash> frmSplash{[this] { return makeSplash(); }};
    platform::ScreenSlot<guides::frmGetS> frmGetS{[this] { return makeGuide(); }};
    platform::ScreenSlot<guides::frmTip> frmTip{[this] { return tips.makeTips(); }};
    platform::ScreenSlot<guides::frmAbout> frmAbout{[this] { return make<guides::frmAbout>(); }};
    platform::ScreenSlot<MainScreen> main{
        [this] { return make<MainScreen>(static_cast<Neighbours&>(mainAsks)); }};

private:
    // The start chain: splash, guide, main.
    guides::frmSplash* makeSplash();
    guides::frmGetS* makeGuide();
};

} // namespace benthor::shell
