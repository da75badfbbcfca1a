#include "link/screens/pc_link_1.h"

#include "link/console.h"
#include "link/directory.h"
#include "link/download.h"
#include "link/linklife.h"
#include "link/screens/commandcard.h"
#include "link/screens/commandlist.h"
#include "link/screens/directorycard.h"
#include "link/screens/downloadpanel.h"
#include "link/screens/drawer.h"
#include "link/screens/hudcard.h"
#include "link/screens/linkhead.h"
#include "link/screens/pc_link_1_host.h"
#include "link/screens/showing.h"
#include "link/screens/waitcard.h"
#include "link/supervision.h"
#include "platform/look/look.h"
#include "platform/look/widgets/commandbutton.h"
#include "platform/look/widgets/status.h"
#include "platform/programfolder.h"
#include "platform/screen/ticktimer.h"
#include "session/process.h"

#include <QImage>
#include <QMenuBar>
#include <QShowEvent>
#include <QStackedWidget>

namespace benthor::link {

namespace {

QString firstHint() {
    return QStringLiteral(
        "Put the device into PC Link mode. It is looked for on all ports, so nothing need be "
        "chosen.");
}

QString searching() {
    return QStringLiteral(
        "The device is looked for on all ports. Switch it on and put it into PC Link mode.");
}

QString nothingHeard() {
    return QStringLiteral(
        "Nothing is heard from the device. Check that it is switched on and in PC Link mode, "
        "that the infra-red adapter faces it or the cable is plugged in, and that the adapter "
        "is connected to this computer.");
}

} // namespace

PC_Link_1::PC_Link_1(LinkLines lines)
    : Screen(QStringLiteral("PC_Link_1"))
    , host_(std::make_unique<Host>(*this, std::move(lines))) {
    buildTimers();
    buildBody();
    buildMenus();
    connectControls();
    link_.AFLabel3.text = QStringLiteral("Not Connected");
    link_.infotext = firstHint();
    link_.AFShape1.fill(kLightBlue);
    layFace();
}

PC_Link_1::~PC_Link_1() = default;

void PC_Link_1::loading() {
    commands_->setSaverPicture(QImage(platform::ProgramFolder::current().path(u"screensave2.bmp")));
    loadlink(link_, *host_);
    layFace();
}

void PC_Link_1::unloading() {
    unloadlink(link_, *host_);
    link_.download.TXTWaitVisible = false;
    host_->setHourglass(false);
}

void PC_Link_1::keeping() {
    if (!link_.ComNum.isEmpty()) {
        remembercomport(link_);
    }
}

void PC_Link_1::closePorts() {
    closeallports(link_, *host_);
}

void PC_Link_1::setTextToSend(const QString& text) {
    perform([this, &text] { link_.console.Text7 = text; });
}

void PC_Link_1::prepareSetup() {
    perform([this] { dooptioncheck(link_); });
}

bool PC_Link_1::sendSetup() {
    bool left = false;
    perform([this, &left] {
        // It would fall into the dive, and the device might take neither.
        if (awaitsdive(link_)) {
            host_->message(
                QStringLiteral("A dive is being downloaded. Send the setup when the download is over."), {});
            return;
        }
        left = send_data(link_, *host_) == platform::Written::Whole;
    });
    return left;
}

/// From the first request of a run on, before its first tick has laid the wait frame.
bool PC_Link_1::refreshRests() const {
    return link_.Timer3 || link_.download.TXTWaitVisible || !link_.cmdstoreEnabled;
}

void PC_Link_1::refreshDirectory() {
    if (!refreshRests()) {
        perform([this] { cmdstore_click(link_, *host_); });
    }
}

void PC_Link_1::takeReadings(const std::optional<Readings>& readings) {
    if (readings) {
        emit readingsArrived(*readings);
    }
}

/// All columns of the directory, in the desktop's font.
QSize PC_Link_1::firstSize() const {
    return {look::scaled(1180), look::scaled(760)};
}

void PC_Link_1::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) {
        layFace();
    }
    Screen::showEvent(event);
}

void PC_Link_1::layFace() {
    const bool dive = process().screenmode == QLatin1String("Dive");
    setWindowTitle(dive ? QStringLiteral("Dive Download") : QStringLiteral("Setup Utilities"));
    head_->layFace(dive);
    foot_->layFace(dive);
    left_->setCurrentIndex(dive ? 0 : 1);
    middle_->setCurrentIndex(dive ? 0 : 1);
    // The face that cannot be seen does not hold the window wider than a small display.
    for (int page = 0; page < middle_->count(); ++page) {
        const bool seen = page == middle_->currentIndex();
        middle_->widget(page)->setSizePolicy(seen ? QSizePolicy::Expanding : QSizePolicy::Ignored,
                                             QSizePolicy::Expanding);
    }
    raw_ = !dive;
    if (dive) {
        download_->series()->setFocus();
        download_->series()->selectAll();
    }
    sync();
}

void PC_Link_1::sync() {
    const Download& run = link_.download;
    syncTimers();
    syncMenus();
    syncCover();
    head_->sync(link_);
    head_->setDownloading(covered_);
    showEnabled(menuBar(), !covered_);
    foot_->sync(link_);
    download_->sync(link_);
    directory_->sync(link_.Mgrid);
    showEnabled(directory_->refresh(), link_.cmdstoreEnabled);
    commands_->sync(link_.console);
    command_->sync(link_.console);
    hud_->sync(link_.console);
    drawer_->sync(link_, raw_);
    if (link_.Text14Visible) {
        const QString cut = cutWords();
        const QString hint = host_->portHint();
        const bool young = cut.isEmpty() && hint.isEmpty() && searchisyoung(link_);
        const QString words = !cut.isEmpty() ? cut : young ? searching() : nothingHeard();
        hintBox_->setCalm(young);
        showText(hintBox_->label(), hint.isEmpty() ? words : words + u'\n' + hint);
    }
    showVisible(hintBox_, link_.Text14Visible);
    wait_->setWords(run.TXTWait);
    wait_->setPlace(runplace(run));
    wait_->setShown(run.TXTWaitVisible);
}

/// What the user can do about a pulled cable; empty while the port is open, or closed on purpose.
QString PC_Link_1::cutWords() const {
    return portcut(link_, *host_)
               ? QStringLiteral("The adapter of port %1 is gone. Plug it in again; its port "
                                "is opened by itself.")
                     .arg(link_.ComNum)
               : QString();
}

/// While dives come no key reaches what the wait frame covers, not in the moments either in which it is not
/// up: behind the click and between two dives. The way out and the foot stay.
void PC_Link_1::syncCover() {
    const bool covers = link_.Timer3 || link_.download.TXTWaitVisible;
    if (covers == covered_) {
        return;
    }
    covered_ = covers;
    const QWidget* area = wait_->parentWidget();
    QWidget* now = focusWidget();
    if (covers && now != nullptr && area->isAncestorOf(now)) {
        beforeCover_ = now;
        now->clearFocus(); // else it would go on to the way out
    }
    for (QWidget* part : area->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        part->setEnabled(part == wait_ || !covers);
    }
    if (!covers) {
        if (beforeCover_ != nullptr && focusWidget() == nullptr) {
            beforeCover_->setFocus(Qt::OtherFocusReason);
        }
        beforeCover_.clear();
    }
}

void PC_Link_1::syncTimers() {
    if (!isLoaded()) {
        return;
    }
    for (const auto& [name, enabled] : {std::pair{"Timer2", link_.Timer2}, std::pair{"Timer3", link_.Timer3},
                                        std::pair{"Timer5", link_.Timer5}, std::pair{"Timer6", link_.Timer6},
                                        std::pair{"Timer8", link_.Timer8}}) {
        timers_.value(QLatin1String(name))->setEnabled(enabled);
    }
}

} // namespace benthor::link
