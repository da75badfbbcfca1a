// What was done to the logbook is taken back and done again.

#include "logbook/screens/rbmain.h"
#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"
#include "platform/storewait.h"
#include "session/process.h"

#include <QAction>
#include <QMenu>

namespace benthor::logbook {

using platform::BoxKind;
using platform::StoreError;

namespace {

void showAct(QAction& entry, const QString& verb, const QString& what, bool can) {
    entry.setText(what.isEmpty() ? verb : verb + QLatin1Char(' ') + what);
    entry.setEnabled(can && !what.isEmpty());
}

} // namespace

void rbmain::buildEditMenu() {
    QMenu* edit = buildMenu(QStringLiteral("mnuEdit"), QStringLiteral("&Edit"));
    mnuundo_ = addEntry(edit, "mnuundo", QStringLiteral("&Undo"), &rbmain::mnuundo_click);
    mnuundo_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Z));
    mnuredo_ = addEntry(edit, "mnuredo", QStringLiteral("&Redo"), &rbmain::mnuredo_click);
    mnuredo_->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z));
    edit->addSeparator();
    mnutrash_ = addEntry(edit, "mnutrash", QStringLiteral("&Trash"), &rbmain::mnutrash_click);
    mnutrash_->setToolTip(QStringLiteral("Deleted dives, for thirty days"));
}

/// Of another store that is looked at nothing was done here.
void rbmain::takeActs() {
    acts_ = isElsewhere() ? ActsInHand() : actsinhand(process().database);
    showAct(*mnuundo_, QStringLiteral("&Undo"), acts_.undo.what, !isElsewhere());
    showAct(*mnuredo_, QStringLiteral("&Redo"), acts_.redo.what, !isElsewhere());
    mnuundo_->setToolTip(acts_.fault); // empty: the caption
    mnuredo_->setToolTip(acts_.fault);
    mnutrash_->setEnabled(!isElsewhere());
    mnuexport_->setEnabled(!isElsewhere());
    mnuexportall_->setEnabled(!isElsewhere());
    mnumerge_->setEnabled(!isElsewhere() && process().database.readOnlyReason().isEmpty());
}

void rbmain::mnuundo_click() {
    turnAct(true);
}

void rbmain::mnuredo_click() {
    turnAct(false);
}

void rbmain::mnumerge_click() {
    emit mergeWanted();
}

void rbmain::mnutrash_click() {
    emit trashWanted();
}

/// What is typed in open details is an act of its own, and the last one once it is stored: nothing else than
/// the menu said is then taken back. False where that ends it.
bool rbmain::storesTyped(const ActInHand& meant, bool undo) {
    const QString stays = typedKeeper_ ? typedKeeper_() : QString();
    if (!stays.isEmpty()) {
        platform::dialogs().message(this, QStringLiteral("Nothing was changed.\n\n") + stays,
                                    BoxKind::Warning);
        return false;
    }
    takeActs();
    if ((undo ? acts_.undo : acts_.redo).id == meant.id) {
        return true;
    }
    platform::dialogs().message(
        this,
        QStringLiteral("What was typed in the details was stored first, and can be taken back now. Nothing "
                       "else was changed."));
    return false;
}

void rbmain::turnAct(bool undo) {
    const Routine routine(*this);
    const ActInHand meant = undo ? acts_.undo : acts_.redo;
    if (meant.id == 0 || isElsewhere() || platform::isWaiting()) {
        return;
    }
    if (process().importing) {
        platform::dialogs().message(this,
                                    QStringLiteral("Dives are being imported. Try again when that is done."));
        return;
    }
    if (!storesTyped(meant, undo) || isUnloaded()) {
        return;
    }
    try {
        const auto& folder = platform::ProgramFolder::current();
        const TurnedAct turned = undo ? undoact(process().database, folder, meant.id)
                                      : redoact(process().database, folder, meant.id);
        follow(turned.span, turned.changed);
        const QString word = undo ? QStringLiteral("Taken back: ") : QStringLiteral("Done again: ");
        emit actTurned(turned, turned.state == TurnedAct::State::Done ? word + turned.what : QString());
    } catch (const StoreError& error) {
        platform::dialogs().message(
            this,
            QStringLiteral("Nothing was changed: the %1 stays as it is.\n\n").arg(meant.what) + error.text(),
            BoxKind::Warning);
        takeActs();
    }
}

void rbmain::tellNotTakenBack(const ActRecord& record) {
    if (!record.fault.isEmpty()) {
        platform::dialogs().message(
            this, QStringLiteral("What was deleted cannot be taken back.\n\n") + record.fault,
            BoxKind::Warning);
    }
}

} // namespace benthor::logbook
