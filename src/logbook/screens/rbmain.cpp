#include "logbook/screens/rbmain.h"

#include "divefiles/validators.h"
#include "logbook/chosenrows.h"
#include "logbook/divelist.h"
#include "logbook/screens/listtoolbar.h"
#include "logbook/screens/picturebutton.h"
#include "logbook/screens/publishpanel.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/faultframe.h"
#include "platform/screen/dialogs.h"
#include "shell/process.h"
#include "store/access.h"
#include "store/diveinhand.h"

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
    publish_->sheetPicture()->show();
    mnuSaveSpread_->setVisible(true);
    publish_->sheetLabel()->show();
    sortkey_ = readsortkey(ProgramFolder::current());
    openstore();
    runSort(sortnumber(sortkey_));
    if (divecount_ == 0) {
        Timer3_.setEnabled(true);
    }
}

void rbmain::unloading() {
    foldPublish(false);
    // An order that cannot be kept is no reason to hold the user.
    static_cast<void>(writesortkey(ProgramFolder::current(), sortkey_));
}

/// The store chosen for the list alone leaves the process's own where it is. One that cannot be shown is
/// refused, and the list stands on the process's own.
void rbmain::openstore() {
    try {
        if (!process().storepath.isEmpty()) {
            chosenStore_.open(process().storepath);
            chosenStore_.fieldCount(QStringLiteral("main"));
            ownStore_ = true;
        }
    } catch (const StoreError& error) {
        chosenStore_.close();
        process().storepath.clear();
        refusedStore_ = error.text();
    }
    setWindowTitle(ownStore_ ? QStringLiteral("My Dives - ") + process().storepath
                             : QStringLiteral("My Dives"));
    try {
        if (!ownStore_ && !process().database.isOpen()) {
            process().database.open(ProgramFolder::current().root() + QStringLiteral("/rb.mdb"));
        }
    } catch (const StoreError& error) {
        storeFault_ = error.text();
    }
}

platform::Database& rbmain::store() {
    return ownStore_ ? chosenStore_ : process().database;
}

void rbmain::Timer3_tick() {
    const Routine routine(*this);
    Timer3_.setEnabled(false);
    QString text = QStringLiteral("No dives in database. Please download dives using Download to PC Window.");
    if (!storeFault_.isEmpty()) {
        text += QStringLiteral("\n\n") + storeFault_;
    }
    platform::dialogs().message(this, text);
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
        store::openmain(
            store(), platform::sqlWith("SELECT * FROM main WHERE DiveID = '", process().currentdiveid, "'"));
        process().divesystem = process().mainrecordset.value(kSystemId).text();
        divefiles::checkdive(store());
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
    for (int row = 1; row <= divecount_; ++row) {
        if (isBlue(row)) {
            dives += MSFlexGrid1_->text(row, 0);
        }
    }
    return dives;
}

/// What goes, by name; a dive without one by its identifier.
QString rbmain::chosenNames() const {
    QStringList names;
    for (int row = 1; row <= divecount_; ++row) {
        if (isBlue(row)) {
            const QString name = MSFlexGrid1_->text(row, kNameColumn);
            names += name.trimmed().isEmpty() ? MSFlexGrid1_->text(row, 0) : name;
        }
    }
    return deletedDivesText(names);
}

void rbmain::cmdelete_click() {
    const Routine routine(*this);
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
        deletedives(store(), ProgramFolder::current(), dives);
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
        return;
    }
    showFaults(QStringLiteral("%1 cannot be read whole: download it again").arg(diveid),
               process().problemtext);
}

} // namespace benthor::logbook
