#include "logbook/screens/rbmain.h"

#include "divefiles/validators.h"
#include "logbook/chosenrows.h"
#include "logbook/divelist.h"
#include "logbook/screens/listfoot.h"
#include "logbook/screens/listtoolbar.h"
#include "logbook/screens/otherstoreband.h"
#include "logbook/screens/picturebutton.h"
#include "logbook/screens/publishpanel.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/faultframe.h"
#include "platform/screen/dialogs.h"
#include "platform/skiperrors.h"
#include "session/process.h"
#include "store/access.h"
#include "store/backup.h"
#include "store/diveidentity.h"
#include "store/diveinhand.h"

#include <QFileInfo>
#include <QLabel>
#include <QPushButton>

namespace benthor::logbook {

using platform::BoxKind;
using platform::ProgramFolder;
using platform::StoreError;

namespace {

constexpr int kTimer3Milliseconds = 1000;
constexpr int kSystemId = 18;
constexpr int kNameColumn = 4;

/// Links and other spellings of the path lead to it, too.
bool isOwnStore(const QString& path) {
    const QString own = QFileInfo(ProgramFolder::current().path(u"rb.mdb")).canonicalFilePath();
    return !own.isEmpty() && QFileInfo(path).canonicalFilePath() == own;
}

/// Where the list closes for want of dives, the deleted ones are out of its reach.
bool hasTrash() {
    bool some = false;
    platform::skipErrors([&some] { some = !trasheddives(process().database).empty(); });
    return some;
}

QString cannotOpen() {
    return QStringLiteral("System cannot open Dive Profile, Dive contains error !");
}

} // namespace

rbmain::rbmain()
    : Screen(QStringLiteral("rbmain"))
    , MSFlexGrid1_(new platform::FlexGrid)
    , Timer3_(QStringLiteral("Timer3"), kTimer3Milliseconds, platform::TickTimer::Start::Disabled, this) {
    setWindowTitle(QStringLiteral("My Dives"));
    buildMenus();
    buildPopup();
    buildBody();
    connectControls();
}

void rbmain::loading() {
    Label16_->setText(QStringLiteral("t"));
    bar_->spreadsheet()->show();
    foot_->sheetPicture()->show();
    mnuSaveSpread_->setVisible(true);
    foot_->sheetLabel()->show();
    sortkey_ = readsortkey(ProgramFolder::current());
    openstore();
    if (!isElsewhere()) {
        tidyacts(process().database, ProgramFolder::current());
    }
    takeActs();
    sortBy(QString(sortkey_), wantedDownward());
    if (divecount_ == 0 && !isUnloaded()) {
        Timer3_.setEnabled(true);
    }
}

void rbmain::unloading() {
    foldPublish(false);
    keeping();
}

/// An order that cannot be kept is no reason to hold the user.
void rbmain::keeping() {
    static_cast<void>(writesortkey(ProgramFolder::current(), sortkey_));
}

/// The store chosen for the list alone leaves the process's own where it is. One that cannot be shown is
/// refused, and the list stands on the process's own. The program's own store is no other one, by whatever
/// name it was chosen.
void rbmain::openstore() {
    const QString path = process().storepath;
    const bool older = !process().storecopy.isEmpty(); // read from a copy, shown under its own name
    const QString read = older ? process().storecopy : path;
    try {
        if (!path.isEmpty() && (older || !isOwnStore(path))) {
            store::requireDiveStore(read);
            chosenStore_.open(read, platform::StoreAccess::Look);
            chosenStore_.fieldCount(QStringLiteral("main"));
            otherStore_ = path;
        }
    } catch (const StoreError& error) {
        chosenStore_.close();
        process().storepath.clear();
        process().storecopy.clear();
        refusedStore_ = error.text();
    }
    setWindowTitle(isElsewhere() ? QStringLiteral("My Dives - ") + path : QStringLiteral("My Dives"));
    storeBand_->showStore(otherStore_);
    if (!refusedStore_.isEmpty()) {
        storeBand_->showRefused(path);
    }
    if (!isElsewhere()) {
        openOwnStore();
    }
}

void rbmain::openOwnStore() {
    try {
        if (!process().database.isOpen()) {
            process().database.open(ProgramFolder::current().root() + QStringLiteral("/rb.mdb"));
        }
    } catch (const StoreError& error) {
        storeFault_ = error.text();
    }
}

void rbmain::leaveOtherStore() {
    process().storepath.clear();
    process().storecopy.clear();
    emit reloadWanted();
}

/// True where the list stands on another store; the user has then been told that nothing is done there.
bool rbmain::refuseElsewhere(const QString& deed) {
    if (isElsewhere()) {
        platform::dialogs().message(
            this, QStringLiteral(
                      "Another dive store is shown: %1\n\n%2 \"Back to my logbook\" shows your own dives.")
                      .arg(otherStore_, deed));
    }
    return isElsewhere();
}

/// Whether the own store has under that identifier the dive that the chosen store has there. Of a dive of
/// which neither the device nor an import has said anything, nobody knows.
bool rbmain::isOwnDive(const QString& diveid) {
    const store::DiveIdentity dive = store::identifydive(chosenStore_, diveid);
    return dive.isKnown() && store::finddive(process().database, dive);
}

platform::Database& rbmain::store() {
    return isElsewhere() ? chosenStore_ : process().database;
}

void rbmain::Timer3_tick() {
    const Routine routine(*this);
    Timer3_.setEnabled(false);
    QString text = QStringLiteral("No dives in database. Please download dives using Download to PC Window.");
    if (!storeFault_.isEmpty()) {
        text += QStringLiteral("\n\n") + storeFault_;
    }
    if (isElsewhere()) {
        text += QStringLiteral(
                    "\n\nThe store that was opened is empty: %1\nMy Dives goes back to your own logbook.")
                    .arg(otherStore_);
        process().storepath.clear();
        process().storecopy.clear();
    }
    const bool toTrash = !isElsewhere() && storeFault_.isEmpty() && hasTrash();
    if (toTrash) {
        text += QStringLiteral("\n\nDeleted dives can be put back from the trash, which opens now.");
    }
    platform::dialogs().message(this, text);
    if (toTrash && !isUnloaded()) {
        emit trashWanted();
    }
    unload();
}

void rbmain::cmdgo_click() {
    const Routine routine(*this);
    process().problemtext.clear();
    int row = MSFlexGrid1_->row();
    if (!isBlue(row) && clickedRow_ > 0) {
        row = clickedRow_;
    }
    MSFlexGrid1_->setCol(0);
    const QString diveid = row > 0 ? MSFlexGrid1_->text(row, 0) : QString();
    // A dive that is refused leaves the one in hand that other screens have opened.
    store::DiveInHand inHand(diveid.isEmpty() ? QStringLiteral("D0000001") : diveid);
    try {
        if (isElsewhere() && !isOwnDive(process().currentdiveid)) {
            refuseElsewhere(
                QStringLiteral("Its dive %1 is not the one of that number in your own logbook and cannot be "
                               "opened from here.")
                    .arg(process().currentdiveid));
            return;
        }
        // What is opened is the own store's.
        store::openmain(process().database, platform::sqlWith("SELECT * FROM main WHERE DiveID = '",
                                                              process().currentdiveid, "'"));
        process().divesystem = process().mainrecordset.value(kSystemId).text();
        divefiles::checkdive(process().database);
    } catch (const StoreError& error) {
        platform::dialogs().message(this, cannotOpen() + QStringLiteral("\n\n") + error.text());
        return;
    }
    if (divefiles::diveopens(process().problemtext)) {
        inHand.keep();
        emit diveOpened();
        return;
    }
    platform::dialogs().message(this, cannotOpen());
}

QStringList rbmain::chosenDives() const {
    QStringList dives;
    for (const int row : blueRows()) {
        dives += MSFlexGrid1_->text(row, 0);
    }
    return dives;
}

/// Of all rows.
QStringList rbmain::dives() const {
    QStringList all;
    for (int row = 1; row <= divecount_; ++row) {
        all += MSFlexGrid1_->text(row, 0);
    }
    return all;
}

/// What goes, by name; a dive without one by its identifier.
QString rbmain::chosenNames() const {
    QStringList names;
    for (const int row : blueRows()) {
        const QString name = MSFlexGrid1_->text(row, kNameColumn);
        names += name.trimmed().isEmpty() ? MSFlexGrid1_->text(row, 0) : name;
    }
    return deletedDivesText(names);
}

void rbmain::cmdelete_click() {
    const Routine routine(*this);
    if (refuseElsewhere(QStringLiteral("No dive is deleted there."))) {
        return;
    }
    const QStringList dives = chosenDives();
    if (dives.isEmpty()) {
        platform::dialogs().message(this, QStringLiteral("Please reselect message to delete."));
        return;
    }
    if (!platform::dialogs().confirm(
            this, QStringLiteral("Are you sure you want to deleted the selected record(s)?"),
            QStringLiteral("Comfirmation"), BoxKind::Question, true, chosenNames()) ||
        isUnloaded()) {
        return;
    }
    if (const QString stays = keeper_ ? keeper_(dives) : QString(); !stays.isEmpty()) {
        platform::dialogs().message(this, QStringLiteral("No dive was deleted.\n\n") + stays,
                                    BoxKind::Warning);
        return;
    }
    try {
        const ActRecord record = deletedives(store(), ProgramFolder::current(), dives);
        follow(record.span, dives + QStringList{QStringLiteral("*")});
        tellNotTakenBack(record);
    } catch (const StoreError& error) {
        platform::dialogs().message(this, QStringLiteral("Not all of the dives could be deleted.\n\n") +
                                              error.text());
    }
    emit reloadWanted();
}

void rbmain::cmdclose_click() {
    unload();
}

void rbmain::Command1_click() {
    const bool hadFocus = Frame2_->closeButton()->hasFocus();
    Frame2_->hide();
    if (hadFocus) {
        MSFlexGrid1_->setFocus();
    }
}

void rbmain::mnuerrorcode_click() {
    process().problemtext.clear();
    const int row = MSFlexGrid1_->row();
    if (row < 1) {
        return;
    }
    const QString diveid = MSFlexGrid1_->text(row, 0);
    const store::DiveInHand inHand(diveid);
    try {
        divefiles::checkdive(store());
    } catch (const StoreError& error) {
        process().problemtext += QLatin1Char('\r') + error.text();
    }
    if (process().problemtext.isEmpty()) {
        tell(QStringLiteral("No errors found in %1").arg(diveid));
        Frame2_->setStale(true); // it speaks of another dive
        return;
    }
    showFaults(QStringLiteral("%1 cannot be read whole: download it again").arg(diveid),
               process().problemtext);
}

} // namespace benthor::logbook
