#include "platform/look/widgets/status.h"
#include "platform/programfolder.h"
#include "platform/screen/ticktimer.h"
#include "platform/skiperrors.h"
#include "shell/process.h"
#include "shell/screens/main_screen.h"
#include "store/identifiers.h"

#include <QLabel>

namespace benthor::shell {

using platform::skipErrors;
using platform::StoreError;

namespace {

QString heldByAnother() {
    return QStringLiteral("Another program holds it open.");
}

} // namespace

/// A store that another program holds is read for as long as that lasts, where it lets itself be read.
void MainScreen::openStore() {
    storeHeld_ = false;
    platform::Database& store = process().database;
    try {
        store.open(platform::ProgramFolder::current().path(u"rb.mdb"));
        if (store.readOnlyReason().isEmpty() && !store.waitToChange()) {
            storeHeld_ = true;
            store.setReadOnly(heldByAnother());
        }
    } catch (const StoreError& error) {
        storeHeld_ = error.busy();
        showStoreNote(storeHeld_ ? heldByAnother() : error.text());
        throw;
    }
    showStoreNote({});
}

/// `fault`: why the store could not be opened.
void MainScreen::showStoreNote(const QString& fault) {
    const QString reason = process().database.readOnlyReason();
    if (!fault.isEmpty()) {
        storenote_->label()->setText(QStringLiteral("The dive store cannot be opened. ") + fault);
    } else {
        storenote_->label()->setText(
            QStringLiteral("The dive store is shown for reading only, nothing is stored in it. ") + reason);
    }
    storenote_->setVisible(!fault.isEmpty() || !reason.isEmpty());
    storetimer_->setEnabled(storeHeld_);
}

/// The store may be free by now.
void MainScreen::storetimer_tick() {
    if (process().importing) {
        return;
    }
    if (process().database.isOpen() && !process().database.canChangeNow()) {
        return;
    }
    skipErrors([this] { lookAtStore(); });
}

/// What the start would have done.
void MainScreen::lookAtStore() {
    openStore();
    if (!storeHeld_) {
        skipErrors([] { store::syncserialno(); });
        skipErrors([this] {
            if (process().unitoverride.isEmpty()) {
                readUnits();
            } else {
                takeUnits(process().unitoverride);
            }
        });
    }
    showinfopanel();
}

} // namespace benthor::shell
