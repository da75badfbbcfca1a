#include "firmware/screens/runprog.h"

#include "firmware/processlist.h"
#include "firmware/screens/processdelegate.h"
#include "platform/look/look.h"
#include "platform/look/widgets/card.h"
#include "platform/screen/dialogs.h"
#include "session/process.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalBlocker>

namespace benthor::firmware {

using platform::RunningProcess;

namespace {

bool same(const RunningProcess& one, const RunningProcess& other) {
    return one.id == other.id && one.began == other.began;
}

} // namespace

RunProg::RunProg(ProcessSource source)
    : Screen(QStringLiteral("RunProg"))
    , source_(std::move(source)) {
    setWindowTitle(QStringLiteral("Running Programs"));
    buildLayout();
    connect(new QShortcut(QKeySequence(Qt::Key_Escape), this), &QShortcut::activated, this, &RunProg::unload);
}

void RunProg::buildLayout() {
    auto* ground = new QWidget;
    auto* around = new QVBoxLayout(ground);
    around->setContentsMargins(look::spaceBase, look::spaceBase, look::spaceBase, look::spaceBase);
    auto* card = new look::Card;
    around->addWidget(card);
    auto* purpose =
        new QLabel(QStringLiteral("Other programs can disturb a device while it is programmed. What is "
                                  "not needed can be closed here."));
    purpose->setWordWrap(true);
    look::setInk(purpose, look::Ink::Quiet);
    filter_ = new QLineEdit;
    filter_->setObjectName(QStringLiteral("filter"));
    filter_->setPlaceholderText(QStringLiteral("Name or number"));
    filter_->setAccessibleName(QStringLiteral("Show only programs of this name or number"));
    connect(filter_, &QLineEdit::textChanged, this, &RunProg::showFilter);
    count_ = look::makeCaption(QString());
    count_->setObjectName(QStringLiteral("count"));
    buildList();
    auto* head = new QHBoxLayout;
    head->addWidget(look::makeHeading(windowTitle()), 1);
    head->addWidget(count_, 0, Qt::AlignBottom);
    card->body()->addLayout(head);
    card->body()->addWidget(purpose);
    card->body()->addWidget(filter_);
    card->body()->addWidget(List1_, 1);
    card->body()->addWidget(new look::Rule);
    card->body()->addWidget(buildFoot());
    setContents(ground);
    setMinimumSize(420, 360);
    List1_->setFocus();
}

void RunProg::buildList() {
    List1_ = new QListWidget;
    List1_->setObjectName(QStringLiteral("List1"));
    List1_->setAccessibleName(QStringLiteral("Running programs"));
    List1_->setItemDelegate(new ProcessDelegate(List1_));
    List1_->setUniformItemSizes(true);
    List1_->setMouseTracking(true);
    List1_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    List1_->installEventFilter(this);
    connect(List1_, &QListWidget::itemClicked, this, &RunProg::List1_click);
    connect(List1_, &QListWidget::itemSelectionChanged, this, &RunProg::List1_click);
}

QWidget* RunProg::buildFoot() {
    const auto button = [this](const char* name, const char* caption, void (RunProg::*act)()) {
        auto* made = new QPushButton(QLatin1String(caption));
        made->setObjectName(QLatin1String(name));
        made->setAutoDefault(true);
        connect(made, &QPushButton::clicked, this, act);
        return made;
    };
    Command1_ = button("Command1", "Show the running Processes", &RunProg::FillList);
    Command2_ = button("Command2", "Close Process", &RunProg::Command2_click);
    Command2_->setProperty("danger", true);
    Command2_->setEnabled(false);
    auto* foot = new QWidget;
    auto* across = new QHBoxLayout(foot);
    across->setContentsMargins({});
    across->addWidget(Command1_);
    across->addStretch(1);
    across->addWidget(Command2_);
    return foot;
}

void RunProg::loading() {
    process().processnames.clear();
    FillList();
}

void RunProg::FillList() {
    const int before = selectedRow();
    const RunningProcess chosen = before < 0 ? RunningProcess() : processAt(before);
    const int place = List1_->currentRow();
    const std::vector<RunningProcess> inSight = fromTheTopmost();

    const QSignalBlocker quiet(List1_);
    List1_->clear();
    const std::vector<RunningProcess> processes = inListOrder(source_.list());
    process().processnames += processNames(processes);
    for (const RunningProcess& one : processes) {
        addRow(one);
    }
    // Where the chosen one is gone the keys go on from its place, but nothing is chosen.
    if (const int now = before < 0 ? -1 : rowOf(chosen); now >= 0) {
        List1_->setCurrentRow(now);
    } else {
        List1_->setCurrentRow(std::min(std::max(place, 0), List1_->count() - 1),
                              QItemSelectionModel::NoUpdate);
    }
    showFilter();
    List1_->doItemsLayout();
    const auto top = std::find_if(inSight.begin(), inSight.end(),
                                  [this](const RunningProcess& one) { return rowOf(one) >= 0; });
    if (top != inSight.end()) {
        List1_->scrollToItem(List1_->item(rowOf(*top)), QAbstractItemView::PositionAtTop);
    }
}

void RunProg::addRow(const RunningProcess& running) {
    auto* item = new QListWidgetItem(running.name, List1_);
    item->setData(Qt::UserRole, running.id);
    item->setData(ProcessDelegate::beganRole, running.began);
    item->setData(ProcessDelegate::ownRole, running.id == QCoreApplication::applicationPid());
    item->setData(Qt::AccessibleTextRole, QStringLiteral("%1, %2").arg(running.name).arg(running.id));
}

RunningProcess RunProg::processAt(int row) const {
    const QListWidgetItem* item = List1_->item(row);
    return {item->data(Qt::UserRole).toInt(), item->data(ProcessDelegate::beganRole).toULongLong(),
            item->text()};
}

int RunProg::rowOf(const RunningProcess& running) const {
    for (int row = 0; row < List1_->count(); ++row) {
        if (same(processAt(row), running)) {
            return row;
        }
    }
    return -1;
}

int RunProg::selectedRow() const {
    const QList<QListWidgetItem*> selected = List1_->selectedItems();
    return selected.isEmpty() ? -1 : List1_->row(selected.first());
}

/// What stands in the list from the topmost row in sight on.
std::vector<RunningProcess> RunProg::fromTheTopmost() const {
    std::vector<RunningProcess> processes;
    const QListWidgetItem* top = List1_->itemAt(List1_->viewport()->rect().topLeft());
    for (int row = top != nullptr ? List1_->row(top) : List1_->count(); row < List1_->count(); ++row) {
        processes.push_back(processAt(row));
    }
    return processes;
}

/// What cannot be seen is not chosen: it could be closed by mistake.
void RunProg::showFilter() {
    int shown = 0;
    for (int row = 0; row < List1_->count(); ++row) {
        const bool fits = fitsFilter(processAt(row), filter_->text());
        List1_->setRowHidden(row, !fits);
        shown += fits ? 1 : 0;
        if (!fits && List1_->item(row)->isSelected()) {
            List1_->clearSelection();
        }
    }
    count_->setText(programCount(List1_->count(), shown));
    takeShownRow();
    if (selectedRow() < 0) {
        Command2_->setEnabled(false);
    }
}

/// The keys work the row in hand: one that can be seen, the next one where the filter hides it, else the one
/// before.
void RunProg::takeShownRow() {
    const int current = List1_->currentRow();
    if (current < 0 ? List1_->count() == 0 : !List1_->isRowHidden(current)) {
        return;
    }
    const auto shownFrom = [this](int row, int step) {
        while (row >= 0 && row < List1_->count() && List1_->isRowHidden(row)) {
            row += step;
        }
        return row < List1_->count() ? row : -1;
    };
    const int next = shownFrom(std::max(current, 0), 1);
    List1_->setCurrentRow(next >= 0 ? next : shownFrom(current, -1), QItemSelectionModel::NoUpdate);
}

void RunProg::List1_click() {
    Command2_->setEnabled(selectedRow() >= 0);
}

/// Return or Space on the row in hand is a choice as a click is; where none is chosen, so is an arrow.
bool RunProg::eventFilter(QObject* watched, QEvent* event) {
    if (watched == List1_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        const bool arrow = key == Qt::Key_Up || key == Qt::Key_Down;
        const bool choice = key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space;
        const int row = List1_->currentRow();
        if ((choice || (arrow && selectedRow() < 0)) && row >= 0 && !List1_->isRowHidden(row)) {
            List1_->setCurrentRow(row, QItemSelectionModel::ClearAndSelect);
            List1_click();
            return true;
        }
    }
    return Screen::eventFilter(watched, event);
}

void RunProg::Command2_click() {
    const Routine routine(*this);
    const int row = selectedRow();
    const RunningProcess chosen = row < 0 ? RunningProcess() : processAt(row);
    if (source_.end(chosen) != platform::Ending::Asked) {
        platform::dialogs().message(
            this, QStringLiteral("You can't Kill This Process, Maybe because it's important for System"));
    }
    if (!yieldEvents()) {
        return;
    }
    FillList();
    Command2_->setEnabled(false);
    List1_->setFocus();
}

} // namespace benthor::firmware
