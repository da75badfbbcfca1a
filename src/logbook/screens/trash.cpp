#include "logbook/screens/trash.h"

#include "logbook/chosenrows.h"
#include "platform/look/look.h"
#include "platform/look/widgets/card.h"
#include "platform/look/widgets/stretchedcolumn.h"
#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"
#include "platform/storewait.h"
#include "platform/textformat.h"
#include "session/process.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QTreeWidget>

namespace benthor::logbook {

using platform::BoxKind;
using platform::dialogs;
using platform::StoreError;

namespace {

enum Column { Number, Name, Dived, Deleted };
constexpr int kItemRole = Qt::UserRole;
constexpr int kRowHeight = 28;  ///< as in the dive list
constexpr int kLeastName = 100; ///< of the names' column

/// As the dive list writes a moment.
QString shownMoment(const QString& stored) {
    const QDateTime moment = platform::Value(stored).dateTime();
    return moment.isValid() ? platform::formatDate(moment, u"mmm/dd/yyyy hh:mm:ss") : stored;
}

} // namespace

trash::trash()
    : Screen(QStringLiteral("trash")) {
    setWindowTitle(QStringLiteral("Trash"));
    buildLayout();
    connect(new QShortcut(QKeySequence(Qt::Key_Escape), this), &QShortcut::activated, this, &trash::unload);
}

void trash::buildLayout() {
    auto* ground = new QWidget;
    auto* around = new QVBoxLayout(ground);
    around->setContentsMargins(look::spaceBase, look::spaceBase, look::spaceBase, look::spaceBase);
    auto* card = new look::Card;
    around->addWidget(card);
    treetrash_ = new QTreeWidget;
    treetrash_->setObjectName(QStringLiteral("treetrash"));
    treetrash_->setAccessibleName(QStringLiteral("Deleted dives"));
    treetrash_->setHeaderLabels({QStringLiteral("DiveID"), QStringLiteral("Dive Name"),
                                 QStringLiteral("Dived"), QStringLiteral("Deleted")});
    treetrash_->setRootIsDecorated(false);
    treetrash_->setUniformRowHeights(true);
    treetrash_->setAllColumnsShowFocus(true);
    treetrash_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    treetrash_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    new look::StretchedColumn(treetrash_, Name, kLeastName);
    connect(treetrash_, &QTreeWidget::itemSelectionChanged, this, &trash::showChoice);
    connect(treetrash_, &QTreeWidget::itemActivated, this, &trash::cmdputback_click);
    lbltrash_ = new QLabel;
    lbltrash_->setObjectName(QStringLiteral("lbltrash"));
    lbltrash_->setWordWrap(true);
    look::setInk(lbltrash_, look::Ink::Quiet);
    card->body()->addWidget(look::makeHeading(QStringLiteral("Deleted dives")));
    card->body()->addWidget(lbltrash_);
    card->body()->addWidget(treetrash_, 1);
    card->body()->addWidget(new look::Rule);
    card->body()->addWidget(buildFoot());
    setContents(ground);
    setMinimumSize(520, 360);
    treetrash_->setFocus();
}

QPushButton* trash::button(const char* name, const QString& caption, void (trash::*act)()) {
    auto* made = new QPushButton(caption);
    made->setObjectName(QLatin1String(name));
    made->setAutoDefault(true);
    connect(made, &QPushButton::clicked, this, act);
    return made;
}

QWidget* trash::buildFoot() {
    cmdputback_ = button("cmdputback", QStringLiteral("&Put back"), &trash::cmdputback_click);
    cmdputback_->setToolTip(QStringLiteral("Puts the chosen dives back into the logbook"));
    cmddeleteforgood_ =
        button("cmddeleteforgood", QStringLiteral("&Delete for good"), &trash::cmddeleteforgood_click);
    cmddeleteforgood_->setProperty("danger", true);
    auto* foot = new QWidget;
    auto* across = new QHBoxLayout(foot);
    across->setContentsMargins({});
    across->addWidget(cmdputback_);
    across->addWidget(cmddeleteforgood_);
    across->addStretch(1);
    across->addWidget(button("cmdclosetrash", QStringLiteral("&Close"), &trash::cmdclosetrash_click));
    return foot;
}

void trash::loading() {
    tidyacts(process().database, platform::ProgramFolder::current());
    takeDives();
}

void trash::takeDives() {
    const std::vector<qint64> before = chosen();
    treetrash_->clear();
    QString note =
        QStringLiteral("A deleted dive stays here for thirty days and then goes by itself. Its files in "
                       "the folders \"old\" and \"dbtxt\" stay in any case.");
    try {
        for (const TrashedDive& dive : trasheddives(process().database)) {
            auto* row = new QTreeWidgetItem(
                treetrash_, {dive.diveid, dive.name, shownMoment(dive.started), shownMoment(dive.gone)});
            row->setData(Number, kItemRole, dive.id);
            row->setToolTip(Name, dive.name);
            row->setSizeHint(Name, {0, std::max(kRowHeight, treetrash_->fontMetrics().height() + 8)});
            row->setSelected(std::find(before.begin(), before.end(), dive.id) != before.end());
        }
        if (const QString reason = process().database.readOnlyReason(); !reason.isEmpty()) {
            note = QStringLiteral("The dive store can only be read: nothing is put back. ") + reason;
        } else if (treetrash_->topLevelItemCount() == 0) {
            note = QStringLiteral("No dive was deleted within the last thirty days.");
        }
    } catch (const StoreError& error) {
        note = QStringLiteral("What was deleted cannot be read. ") + error.text();
    }
    lbltrash_->setText(note);
    showChoice();
}

std::vector<qint64> trash::chosen() const {
    std::vector<qint64> ids;
    for (int row = 0; row < treetrash_->topLevelItemCount(); ++row) {
        const QTreeWidgetItem* item = treetrash_->topLevelItem(row);
        if (item->isSelected()) {
            ids.push_back(item->data(Number, kItemRole).toLongLong());
        }
    }
    return ids;
}

void trash::showChoice() {
    const bool some = !treetrash_->selectedItems().isEmpty();
    cmdputback_->setEnabled(some);
    cmddeleteforgood_->setEnabled(some);
}

void trash::cmdputback_click() {
    const Routine routine(*this);
    const std::vector<qint64> dives = chosen();
    if (dives.empty() || platform::isWaiting()) {
        return;
    }
    if (process().importing) {
        dialogs().message(this, QStringLiteral("Dives are being imported. Try again when that is done."));
        return;
    }
    try {
        const TurnedAct turned = putback(process().database, platform::ProgramFolder::current(), dives);
        takeDives();
        emit divesPutBack(turned);
        if (const QString text = turnedText(turned); !text.isEmpty()) {
            dialogs().message(this, text);
        }
    } catch (const StoreError& error) {
        dialogs().message(this, QStringLiteral("Not all of the dives could be put back.\n\n") + error.text(),
                          BoxKind::Warning);
        takeDives();
        emit divesPutBack({});
    }
}

void trash::cmddeleteforgood_click() {
    const Routine routine(*this);
    const std::vector<qint64> dives = chosen();
    QStringList names;
    for (const QTreeWidgetItem* item : treetrash_->selectedItems()) {
        names += item->text(Name).trimmed().isEmpty() ? item->text(Number) : item->text(Name);
    }
    if (dives.empty() || platform::isWaiting() ||
        !dialogs().confirm(this, QStringLiteral("Delete for good? Nothing brings them back then."),
                           QStringLiteral("Trash"), BoxKind::Question, true, deletedDivesText(names)) ||
        isUnloaded()) {
        return;
    }
    try {
        deleteforgood(process().database, dives);
    } catch (const StoreError& error) {
        dialogs().message(this, QStringLiteral("Nothing was deleted.\n\n") + error.text(), BoxKind::Warning);
    }
    takeDives();
    emit actsChanged();
}

void trash::cmdclosetrash_click() {
    unload();
}

} // namespace benthor::logbook
