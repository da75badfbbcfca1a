#include "shell/house_dives.h"

#include "exports/screens/exportbox.h"
#include "platform/look/widgets/passingnote.h"
#include "platform/screen/dialogs.h"
#include "platform/skiperrors.h"
#include "session/process.h"
#include "shell/house_handover.h"

#include <QApplication>
#include <QPointer>

namespace benthor::shell {

using platform::skipErrors;
using store::DiveIdentity;

namespace {

constexpr int kSystemId = 18;

/// Whether a dive that stood in the store no longer does. A store that cannot be asked does not say so.
bool isGone(const DiveIdentity& dive) {
    bool gone = false;
    const bool stoodThere = dive.row != 0;
    skipErrors([&] { gone = stoodThere && !store::finddive(process().database, dive); });
    return gone;
}

void tellGone(viewer::rbinterface& screen, const DiveIdentity& dive) {
    platform::dialogs().message(
        &screen, QStringLiteral("The dive %1 that is shown here is no longer in the store.").arg(dive.diveid),
        platform::BoxKind::Warning);
}

/// As the list puts a dive in hand that is opened from it.
void takeInHand(const DiveIdentity& dive) {
    process().currentdiveid = dive.diveid;
    skipErrors([&dive] {
        if (const auto row = store::finddive(process().database, dive)) {
            process().divesystem = row->value(kSystemId).text();
        }
    });
}

} // namespace

DiveScreens::DiveScreens(DiveHost& host)
    : ScrSavForm1([this] {
        auto* screen = new guides::ScrSavForm1;
        host_.watchEnd(*screen);
        return screen;
    })
    , rbinterface([this] { return makeDiveView(); })
    , rbdetails([this] { return makeDetails(); })
    , rbmain([this] { return makeList(); })
    , trash([this] { return makeTrash(); })
    , mergelogbook([this] { return makeMerge(); })
    , host_(host) {}

logbook::rbmain* DiveScreens::makeList() {
    auto* screen = new logbook::rbmain;
    host_.watchEnd(*screen);
    screen->takeOver(std::exchange(filled_, {}));
    screen->setKeeper([this](const QStringList& dives) { return storeDetailsOf(dives); });
    QObject::connect(screen, &logbook::rbmain::diveOpened, screen, [this] {
        openedFrom_ = rbmain.get().otherStore();
        openDive();
    });
    QObject::connect(screen, &logbook::rbmain::reloadWanted, screen, [this] {
        const Handover handover(host_);
        const QString word = closeWhatIsDeleted();
        showListAfresh();
        if (!word.isEmpty() && rbmain.isLoaded()) {
            rbmain.get().tell(word);
        }
        showOtherActs();
    });
    screen->setTypedKeeper([this] { return storeTyped(); });
    QObject::connect(
        screen, &logbook::rbmain::actTurned, screen,
        [this](const logbook::TurnedAct& turned, const QString& word) { takeTurn(turned, word); });
    QObject::connect(screen, &logbook::rbmain::trashWanted, screen, [this] { trash.showInFront(); });
    QObject::connect(screen, &logbook::rbmain::mergeWanted, screen, [this] { mergelogbook.showInFront(); });
    QObject::connect(screen, &logbook::rbmain::exportWanted, screen,
                     [this, screen](const QStringList& dives) { exportDives(*screen, dives); });
    QObject::connect(screen, &logbook::rbmain::linkWanted, screen, [this] { host_.showDownload(); });
    QObject::connect(screen, &logbook::rbmain::mainWanted, screen, [this] { host_.showMain(); });
    return screen;
}

viewer::rbinterface* DiveScreens::makeDiveView() {
    auto* screen = new viewer::rbinterface;
    host_.watchEnd(*screen);
    if (const auto state = std::exchange(resumed_, std::nullopt)) {
        screen->resume(*state);
    }
    using viewer::rbinterface;
    QObject::connect(screen, &rbinterface::diveListWanted, screen, [this] { showList(); });
    QObject::connect(screen, &rbinterface::reloadWanted, screen, [this] { reloadDiveView(false); });
    QObject::connect(screen, &rbinterface::detailsWanted, screen, [this] { showDetails(); });
    QObject::connect(screen, &rbinterface::gasWanted, screen, [this] { host_.showGas(); });
    QObject::connect(screen, &rbinterface::captureWanted, screen, [this] { captureDiveView(); });
    QObject::connect(screen, &rbinterface::exportWanted, screen, [this] { exportShownDive(); });
    return screen;
}

logbook::rbdetails* DiveScreens::makeDetails() {
    auto* screen = new logbook::rbdetails;
    host_.watchEnd(*screen);
    QObject::connect(screen, &logbook::rbdetails::captureWanted, screen, [this] { captureDiveView(); });
    QObject::connect(screen, &logbook::rbdetails::saved, screen, [this](const platform::StoreSpan& save) {
        if (rbmain.isLoaded() && rbmain.get().otherStore().isEmpty()) {
            rbmain.get().takeTextsOf(rbdetails.get().dive().diveid, save);
            rbmain.get().takeActs();
        }
    });
    QObject::connect(screen, &logbook::rbdetails::diveViewWanted, screen, [this] { leaveDetails(); });
    return screen;
}

/// The dive in hand, loaded anew whatever was open; the list goes.
void DiveScreens::openDive() {
    const Handover handover(host_);
    rbmain.unload();
    rbinterface.unload();
    rbinterface.showInFront();
}

/// Back from the dive screen: a list that stood beside it is filled anew, too.
void DiveScreens::showList() {
    const Handover handover(host_);
    const QString lookedAt = rbinterface.isLoaded() ? rbinterface.get().dive().diveid : QString();
    rbinterface.unload();
    showListAfresh();
    if (rbmain.isLoaded()) {
        rbmain.get().chooseDive(lookedAt);
    }
}

/// What the list has read it hands on to the next one.
void DiveScreens::unloadList() {
    if (rbmain.isLoaded()) {
        filled_ = rbmain.get().handOver();
        rbmain.unload();
    }
}

void DiveScreens::showListAfresh() {
    unloadList();
    rbmain.showInFront();
    filled_ = {};
}

QString DiveScreens::reopenList() {
    const Handover handover(host_);
    rbmain.unload();
    rbmain.showInFront();
    return rbmain.isLoaded() ? rbmain.get().refusedStore() : QString();
}

/// The dive that is shown, once more. Where the user is elsewhere meanwhile, his window stays in front.
void DiveScreens::reloadDiveView(bool keepsView) {
    const viewer::rbinterface& before = rbinterface.get();
    const Handover handover(host_);
    const QPointer<QWidget> active = QApplication::activeWindow();
    const bool elsewhere = keepsView && active != nullptr && active != &before;
    const Qt::WindowStates window = before.windowState() & ~Qt::WindowActive;
    if (isGone(before.dive())) {
        showList();
        return;
    }
    process().currentdiveid = before.dive().diveid;
    process().divesystem = before.divesystem();
    if (keepsView) {
        resumed_ = before.state();
    }
    rbinterface.unload();
    rbinterface.get();
    if (!rbinterface.isLoaded()) {
        return;
    }
    rbinterface.get().setAttribute(Qt::WA_ShowWithoutActivating, elsewhere);
    rbinterface.show();
    rbinterface.get().setWindowState(window);
    if (!elsewhere && !rbinterface.get().isMinimized()) {
        rbinterface.get().bringToFront();
    } else if (active != nullptr) {
        active->raise();
        active->activateWindow();
    }
}

void DiveScreens::unitChosen() {
    if (rbmain.isLoaded()) {
        rbmain.get().takeUnit();
    }
    if (mergelogbook.isLoaded()) {
        mergelogbook.get().takeUnit();
    }
    if (rbinterface.isLoaded() &&
        profile::isFeet(process().depthunit) != rbinterface.get().session().feet()) {
        reloadDiveView(true);
        return;
    }
    unitMayHaveChanged();
}

/// What another screen has made of the unit is the choice of this run from then on, or the fresh load would
/// take it back.
void DiveScreens::unitMayHaveChanged() {
    if (rbmain.isLoaded()) {
        rbmain.get().takeUnit();
    }
    if (mergelogbook.isLoaded()) {
        mergelogbook.get().takeUnit();
    }
    if (rbinterface.isLoaded() && rbinterface.get().hasOtherUnit()) {
        process().unitoverride = process().depthunit;
        reloadDiveView(true);
    }
}

/// Details left open for another dive are stored and make way.
void DiveScreens::showDetails() {
    const DiveIdentity dive = rbinterface.get().dive();
    if (!openedFrom_.isEmpty() && openedFrom_ == process().storepath) {
        platform::dialogs().message(
            &rbinterface.get(),
            QStringLiteral(
                "The dive was opened from another dive store: %1\n\nDetails are written in your own "
                "logbook alone. \"Back to my logbook\" in the dive list shows it.")
                .arg(openedFrom_));
        return;
    }
    if (isGone(dive)) {
        tellGone(rbinterface.get(), dive);
        return;
    }
    if (rbdetails.isLoaded() && !(rbdetails.get().dive() == dive)) {
        const Handover handover(host_);
        rbdetails.unload();
        process().currentdiveid = dive.diveid;
    }
    rbdetails.showInFront();
}

/// What is typed in open details belongs to the dive that goes out.
void DiveScreens::exportDives(platform::Screen& from, const QStringList& dives) {
    if (const QString stays = storeTyped(); !stays.isEmpty()) {
        platform::dialogs().message(&from, QStringLiteral("Nothing was exported.\n\n") + stays,
                                    platform::BoxKind::Warning);
        return;
    }
    exports::exportwithbox(&from, process().database, dives,
                           dives.size() == 1 ? dives.first() : QStringLiteral("dives"));
}

void DiveScreens::exportShownDive() {
    const DiveIdentity dive = rbinterface.get().dive();
    if (isGone(dive)) {
        tellGone(rbinterface.get(), dive);
        return;
    }
    exportDives(rbinterface.get(), {dive.diveid});
}

/// Back to the dive of the details. A dive screen that shows it stays as it is; any other makes way, and so
/// does the list.
void DiveScreens::leaveDetails() {
    const Handover handover(host_);
    const DiveIdentity dive = rbdetails.get().dive();
    rbdetails.unload();
    if (dive.isEmpty() || (rbinterface.isLoaded() && rbinterface.get().dive() == dive)) {
        rbinterface.showInFront();
        return;
    }
    if (isGone(dive)) { // deleted while the picture was taken
        if (!rbinterface.isVisible() && !rbmain.isVisible()) {
            rbmain.showInFront();
        }
        return;
    }
    takeInHand(dive);
    openedFrom_.clear();
    openDive();
}

/// Without a dive screen there is nothing to capture.
void DiveScreens::captureDiveView() {
    if (rbinterface.isLoaded()) {
        const Handover handover(host_);
        look::PassingNote::clear(rbinterface.get());
        ScrSavForm1.get().setDiveScreen(&rbinterface.get(),
                                        rbinterface.get().session().header().divefilename);
        ScrSavForm1.get().cmdCapture_click();
        const QString savedAs = ScrSavForm1.isLoaded() ? ScrSavForm1.get().savedAs() : QString();
        ScrSavForm1.unload();
        if (!savedAs.isEmpty() && rbinterface.isLoaded()) {
            look::PassingNote::tell(rbinterface.get(), QStringLiteral("Picture saved: ") + savedAs);
        }
    }
}

/// What is typed of a dive stands in the store before the dive goes; where it cannot, the dive stays.
QString DiveScreens::storeDetailsOf(const QStringList& dives) {
    if (!rbdetails.isLoaded()) {
        return {};
    }
    const DiveIdentity dive = rbdetails.get().dive();
    if (!dives.contains(dive.diveid, Qt::CaseInsensitive) || isGone(dive)) {
        return {};
    }
    const QString fault = rbdetails.get().saveQuietly();
    return fault.isEmpty() ? QString()
                           : QStringLiteral("The details of %1 are open and cannot be stored.\n%2")
                                 .arg(dive.diveid, fault);
}

/// Returns a line about it, or nothing.
QString DiveScreens::closeWhatIsDeleted() {
    QString word;
    if (rbdetails.isLoaded() && isGone(rbdetails.get().dive())) {
        word = QStringLiteral("The details of %1 were stored and closed").arg(rbdetails.get().dive().diveid) +
               rbdetails.get().besides();
        rbdetails.get().closeForDeletion();
    }
    if (rbinterface.isLoaded() && isGone(rbinterface.get().dive())) {
        rbinterface.unload();
    }
    return word;
}

} // namespace benthor::shell
