#include "guides/screens/comealong.h"
#include "platform/look/widgets/status.h"
#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"
#include "platform/screen/ticktimer.h"
#include "platform/skiperrors.h"
#include "platform/textformat.h"
#include "session/process.h"
#include "shell/screens/main_screen.h"
#include "store/backup.h"
#include "store/identifiers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QTemporaryDir>

#include <utility>

namespace benthor::shell {

using platform::ProgramFolder;
using platform::skipErrors;
using platform::StoreError;

namespace {

QString heldByAnother() {
    return QStringLiteral("Another program holds it open.");
}

QString didNotComeAlong() {
    return QStringLiteral("It is an older one (a Jet file) that has not come along; the next start tries it again.");
}

} // namespace

/// Looks for the store, and offers the newest backup in its place when it is missing. False when the user
/// would rather not: the program then ends.
bool MainScreen::storeIsThere() {
    const ProgramFolder& folder = ProgramFolder::current();
    if (folder.listFiles(QString(), QStringLiteral("rb.mdb")).contains(QLatin1String("rb.mdb"))) {
        return true;
    }
    const bool yes = platform::dialogs().confirm(
        this,
        QStringLiteral("Main Database not found, Would you like to duplicate from the backup database?"),
        QStringLiteral("Comfirmation"), platform::BoxKind::Critical, true);
    if (yes) {
        const platform::FileResult copied = store::restorebackup(folder);
        fromBackup_ = copied.ok() || offerOlderBackups(copied.error);
    }
    return yes;
}

/// The newest backup is not there or cannot be copied: the older ones are offered, the newest of them first.
/// Without any of them the load goes on, and the store can't be opened. Whether one was copied.
bool MainScreen::offerOlderBackups(const QString& reason) {
    const ProgramFolder& folder = ProgramFolder::current();
    QString happened = QFile::exists(folder.path(store::backupname(1)))
                           ? QStringLiteral("The backup database could not be duplicated. ") + reason
                           : QStringLiteral("There is no backup database backup.mdb in the program folder.");
    bool offered = false;
    for (int number = 2; number <= store::kBackups; ++number) {
        const QString path = folder.path(store::backupname(number));
        if (!store::isjetfile(path) && !store::examinestore(path).sound()) {
            continue;
        }
        offered = true;
        const QString when = platform::formatDate(QFileInfo(path).lastModified(), u"dd/mm/yyyy hh:nn:ss");
        if (!platform::dialogs().confirm(
                this,
                happened + QStringLiteral("\n\nWould you like to duplicate from the older %1 of %2?")
                               .arg(store::backupname(number), when),
                QStringLiteral("Comfirmation"), platform::BoxKind::Critical, true)) {
            continue;
        }
        const platform::FileResult copied = store::restorebackup(folder, number);
        if (copied) {
            return true;
        }
        happened =
            QStringLiteral("%1 could not be duplicated. %2").arg(store::backupname(number), copied.error);
    }
    if (!offered) {
        platform::dialogs().message(
            this,
            happened +
                QStringLiteral("\n\nNo older backup (backup2.mdb to backup9.mdb) can be read there "
                               "either. The program goes on without a dive store; every dive file that "
                               "ever came in is in the folder \"old\"."),
            platform::BoxKind::Warning);
    }
    return false;
}

/// A backup from before the program's own stores comes along like any older store, though the start has
/// looked for one already.
void MainScreen::bringOlderBackup() {
    if (std::exchange(fromBackup_, false) && store::isjetfile(ProgramFolder::current().path(u"rb.mdb"))) {
        guides::bringolderstore(this);
    }
}

/// The place of an older store's copy in its folder.
QString MainScreen::copiedStore(const QTemporaryDir& folder) {
    return folder.filePath(QStringLiteral("store.mdb"));
}

/// Reads an older store into a folder of its own, and tells how that went. Nothing where it did not: then
/// nothing has changed.
std::unique_ptr<QTemporaryDir> MainScreen::copyOlderStore(const QString& path) {
    auto folder = std::make_unique<QTemporaryDir>();
    const QString name = QDir::toNativeSeparators(path);
    try {
        if (!folder->isValid()) {
            throw StoreError(folder->errorString());
        }
        const store::JetCounts counts =
            store::copyjet(path, copiedStore(*folder), guides::comealongprogress(path));
        if (!isLoaded()) {
            return nullptr;
        }
        platform::dialogs().message(
            this,
            QStringLiteral("The older dive store %1 is shown; the file stays as it is. %2")
                .arg(name, guides::readwithoutfault(counts)),
            platform::BoxKind::Information);
        return folder;
    } catch (const StoreError& error) {
        if (isLoaded()) {
            platform::dialogs().message(
                this,
                QStringLiteral("The older dive store %1 can't be shown; nothing was changed.\n\n%2")
                    .arg(name, error.text()),
                platform::BoxKind::Warning);
        }
        return nullptr;
    }
}

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
        const bool older = store::isjetfile(ProgramFolder::current().path(u"rb.mdb"));
        showStoreNote(storeHeld_ ? heldByAnother() : older ? didNotComeAlong() : error.text());
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
    mnubringdives_->setEnabled(storenote_->isHidden());
    firstmerge_->setEnabled(storenote_->isHidden());
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
