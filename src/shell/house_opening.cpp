#include "shell/house_opening.h"

#include "firmware/session.h"
#include "platform/activationtoken.h"
#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"
#include "platform/storewait.h"
#include "session/process.h"
#include "shell/house_rooms.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QThread>

#include <algorithm>

namespace benthor::shell {

using namespace std::chrono_literals;
using platform::CallAnswer;
using How = platform::CallAnswer::How;

namespace {

constexpr int kLook = 100; // milliseconds
constexpr auto kAnswerPatience = 10s;
constexpr auto kLockPatience = 3s;

QString root() {
    return platform::ProgramFolder::current().root();
}

/// Whether events run inside something else: a box, a menu, a busy loop, a store that waits.
bool isBusy() {
    return platform::TickHold::active() || platform::Screen::anyAtWork() || platform::isWaiting() ||
           QApplication::activeModalWidget() != nullptr || QApplication::activePopupWidget() != nullptr;
}

/// Dives come, or the directory and the setup of a device that answers. A search for one is no talk.
bool talks(const link::PC_Link_1& link) {
    const bool answers = link.caption() == QLatin1String("Connected");
    return link.isDownloading() || link.refreshRests() || (answers && link.waitsForDirectory());
}

} // namespace

FileOpening::FileOpening(Rooms& rooms)
    : rooms_(rooms)
    , token_(rooms.lock.held() ? QByteArray() : platform::takeActivationToken())
    , timer_(QStringLiteral("opening"), kLook, platform::TickTimer::Start::Disabled, nullptr) {
    QObject::connect(&timer_, &platform::TickTimer::tick, &timer_, [this] { tick(); });
}

void FileOpening::listen() {
    door_ = std::make_unique<platform::CallDoor>(
        root(), [this](const QString& file, const QByteArray& token) { return called(file, token); });
}

void FileOpening::open(const QString& path) {
    waiting_ += path;
    timer_.setEnabled(true);
}

CallAnswer FileOpening::handOver(const QString& path) {
    if (path.toUtf8().size() > platform::kLongestPath) {
        return {How::Refused, QStringLiteral("The path of the file is too long.")};
    }
    for (const QDeadlineTimer end(kLockPatience);;) {
        const CallAnswer answer = platform::callInstance(root(), path, kAnswerPatience, token_);
        if (answer.how != How::Nobody || rooms_.lock.tryAgain() || end.hasExpired()) {
            return answer;
        }
        QThread::msleep(20); // the other one is at its start or at its end
    }
}

/// Where nobody can be reached: another user has the folder open, or another machine, or a program without a
/// window.
QString FileOpening::callFirstCopy() {
    const CallAnswer answer = platform::callInstance(root(), {}, kAnswerPatience, token_);
    if (answer.how == How::Taken) {
        return QStringLiteral("Benthor is already open on this program folder. Its window comes to "
                              "the front; this copy closes.");
    }
    return rooms_.lock.holder() == "benthorctl"
               ? QStringLiteral(
                     "The command benthorctl works on this program folder just now. Start Benthor again "
                     "when it is through; this copy closes.")
               : QStringLiteral("Benthor is already open on this program folder; this copy closes.");
}

/// Inside whatever runs just now: nothing is opened here.
CallAnswer FileOpening::called(const QString& file, const QByteArray& token) {
    if (rooms_.end.isNear() || platform::withoutDialogs()) {
        return {How::Nobody, {}}; // the folder is free in a moment
    }
    if (file.isEmpty()) {
        comeToFront(token);
        return {How::Taken, {}};
    }
    const Moment moment = momentFor(file);
    if (moment.when == Moment::When::Refused) {
        return {How::Refused, moment.words};
    }
    comeToFront(token);
    open(file);
    return {How::Taken, moment.words};
}

FileOpening::Moment FileOpening::momentFor(const QString& path) const {
    using When = Moment::When;
    if (rooms_.ReProg_Link.isLoaded()) {
        return momentAtFirmware(path);
    }
    if (rooms_.PC_Link_1.isLoaded()) {
        const link::PC_Link_1& link = rooms_.PC_Link_1.loaded();
        if (talks(link)) {
            return {When::Refused,
                    QStringLiteral("Benthor is talking to the device just now. Open the file when "
                                   "that is over.")};
        }
    }
    if (process().importing) {
        return {When::Later, QStringLiteral("The file opens when the import is over.")};
    }
    if (isBusy()) {
        return {When::Later,
                QStringLiteral("The file opens when Benthor is through with what it does or asks "
                               "just now.")};
    }
    if (!rooms_.main.isVisible()) {
        return {When::Later, QStringLiteral("The file opens when the start is over.")};
    }
    return {};
}

/// The port is that screen's alone: the gas screen would have the link look for the device.
FileOpening::Moment FileOpening::momentAtFirmware(const QString& path) const {
    using When = Moment::When;
    if (kindOf(path) == FileKind::Setup) {
        return {When::Refused,
                QStringLiteral("The firmware screen is open. Leave it with Home, and open the file "
                               "then.")};
    }
    if (!firmware::takesimage(rooms_.ReProg_Link.loaded().state())) {
        return {When::Refused,
                QStringLiteral("A device is being reprogrammed, or waits for its restart. Open the "
                               "file when that is over.")};
    }
    return isBusy() ? Moment{When::Later,
                             QStringLiteral("The file opens when Benthor is through with what it does or "
                                            "asks just now.")}
                    : Moment{};
}

platform::Screen* FileOpening::frontScreen() const {
    const std::array<platform::Screen*, 4> inOrder{rooms_.ReProg_Link.ifVisible(), rooms_.main.ifVisible(),
                                                   rooms_.frmGetS.ifVisible(), rooms_.frmSplash.ifVisible()};
    const auto* const found =
        std::find_if(inOrder.begin(), inOrder.end(), [](auto* one) { return one != nullptr; });
    return found == inOrder.end() ? nullptr : *found;
}

/// Where the desktop keeps windows where they are, it marks this one. The leave is for one window, the one
/// that takes the keys.
void FileOpening::comeToFront(const QByteArray& token) const {
    platform::Screen* screen = frontScreen();
    QWidget* box = QApplication::activeModalWidget();
    if (screen != nullptr) {
        const platform::LeaveToActivate leave(box == nullptr ? token : QByteArray());
        screen->bringToFront();
    }
    if (box != nullptr) {
        const platform::LeaveToActivate leave(token);
        box->raise();
        box->activateWindow();
    }
    QApplication::alert(box != nullptr ? box : screen);
}

void FileOpening::tick() {
    if (waiting_.isEmpty() || rooms_.end.isNear()) {
        timer_.setEnabled(false);
        return;
    }
    if (momentFor(waiting_.first()).when == Moment::When::Now) {
        openNow(waiting_.takeFirst());
    }
}

void FileOpening::openNow(const QString& path) {
    const QString refusal = whyNotOpened(path);
    if (!refusal.isEmpty()) {
        comeToFront();
        platform::dialogs().message(frontScreen(), refusal, platform::BoxKind::Warning);
    } else if (kindOf(path) == FileKind::Setup) {
        openSetup(path);
    } else {
        openImage(path);
    }
}

void FileOpening::openSetup(const QString& path) {
    before_ = !listSeen_;
    rooms_.GasBlend.showInFront();
    rooms_.GasBlend.get().openFile(path);
}

/// Closing a screen keeps what was typed there. The gas screen is the exception: opened again it has the
/// gases and not the settings, and the user who opened a file may have forgotten it.
bool FileOpening::mayCloseTheOthers(const QString& path) {
    if (!rooms_.GasBlend.isLoaded() || !rooms_.GasBlend.loaded().holdsTyped()) {
        return true;
    }
    rooms_.GasBlend.showInFront();
    return platform::dialogs().confirm(
        &rooms_.GasBlend.get(),
        QStringLiteral("The firmware screen opens for %1, and this screen closes. Of what was typed here the "
                       "gases come back with it, the settings do not. Go on?")
            .arg(QFileInfo(path).fileName()),
        QStringLiteral("Benthor"), platform::BoxKind::Warning, true,
        QStringLiteral("Save in the menu File keeps all of it."));
}

/// As the main screen's entry for reprogramming does, but that the gas screen stores its text first: it asks
/// for the link, which would look for the device at the port of the firmware screen.
void FileOpening::openImage(const QString& path) {
    if (rooms_.ReProg_Link.isLoaded()) {
        rooms_.ReProg_Link.showInFront();
        rooms_.ReProg_Link.get().openImage(path);
        return;
    }
    if (!mayCloseTheOthers(path)) {
        return;
    }
    const Handover handover(rooms_.end);
    rooms_.GasBlend.unload();
    if (rooms_.PC_Link_1.isLoaded()) {
        rooms_.PC_Link_1.get().closePorts();
    }
    rooms_.firmwareAsks.giveImage(path);
    rooms_.ReProg_Link.showInFront();
    rooms_.main.unload();
}

void FileOpening::listShown() {
    listSeen_ = true;
    if (std::exchange(before_, false) && rooms_.GasBlend.isVisible()) {
        rooms_.GasBlend.get().bringToFront();
    }
}

} // namespace benthor::shell
