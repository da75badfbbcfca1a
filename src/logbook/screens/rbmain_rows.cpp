// Choosing rows by mouse and keys. A chosen row is one that is blue: its colours are the only record of it.

#include "logbook/chosenrows.h"
#include "logbook/divelist.h"
#include "logbook/screens/rbmain.h"
#include "logbook/screens/summarystrip.h"
#include "platform/screen/toldqcolor.h"
#include "platform/skiperrors.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QScopedValueRollback>

namespace benthor::logbook {

namespace {

QColor blue() {
    return platform::toQColor(platform::kToldBlue);
}

} // namespace

bool rbmain::isBlue(int row) const {
    return row > 0 && MSFlexGrid1_->backColour(row, 0) == blue();
}

/// They ascend. No more rows are looked at than have colours of their own.
std::vector<int> rbmain::blueRows() const {
    std::vector<int> rows = MSFlexGrid1_->rowsWithColours();
    std::erase_if(rows, [this](int row) { return row > divecount_ || !isBlue(row); });
    return rows;
}

void rbmain::markBlue(int row) {
    MSFlexGrid1_->setRowColours(row, blue(), platform::toQColor(platform::kToldWhite));
}

/// The red of a faulty row comes back with the next fill; its sign in the gutter stays.
void rbmain::unmark(int row) {
    MSFlexGrid1_->setRowColours(row, {}, {});
}

void rbmain::unmarkAll() {
    for (const int row : blueRows()) {
        unmark(row);
    }
}

void rbmain::moveCurrentTo(int row) {
    const QScopedValueRollback moving(moving_, true);
    MSFlexGrid1_->setRow(row);
}

void rbmain::chooseOnly(int row) {
    if (row < 1 || row > divecount_) {
        return;
    }
    unmarkAll();
    moveCurrentTo(row);
    markBlue(row);
    clicks_ = {row};
    refreshStrip();
}

int rbmain::rowOf(const QString& diveid) const {
    const std::vector<int> numbers = list_.dives.numbersOf({diveid});
    if (!numbers.empty() && numbers.front() <= divecount_) {
        return numbers.front();
    }
    // One that the store holds as no plain text.
    for (int row = 1; row <= divecount_; ++row) {
        if (MSFlexGrid1_->text(row, 0).compare(diveid, Qt::CaseInsensitive) == 0) {
            return row;
        }
    }
    return 0;
}

void rbmain::chooseDive(const QString& diveid) {
    if (const int row = rowOf(diveid); row > 0) {
        clickedRow_ = row;
        chooseOnly(row);
        MSFlexGrid1_->showRow(row);
    }
}

void rbmain::scrollToNewest(const QStringList& dives) {
    QString newest;
    platform::skipErrors([&] { newest = newestof(store(), dives); });
    if (const int row = rowOf(newest); row > 0) {
        MSFlexGrid1_->showRow(row);
    }
}

/// The current row stays the one it was, and the strip with it.
void rbmain::chooseAll() {
    for (int row = 1; row <= divecount_; ++row) {
        markBlue(row);
    }
    refreshStrip();
}

/// `from` stays the current row.
void rbmain::chooseBlock(int from, int to) {
    unmarkAll();
    for (int row = std::min(from, to); row <= std::max(from, to); ++row) {
        markBlue(row);
    }
    refreshStrip();
}

void rbmain::addToChosen(int row) {
    moveCurrentTo(row);
    markBlue(row);
    noteClick(clicks_, row); // Control and a key stand for a click
    refreshStrip();
}

/// The row that the strip and the mail mean.
int rbmain::rowMeant() const {
    return rowInHand(clicks_, blueRows(), MSFlexGrid1_->row());
}

void rbmain::showStrip() {
    QStringList cells;
    const int row = rowMeant();
    for (int col = 0; row > 0 && row <= divecount_ && col < MSFlexGrid1_->cols(); ++col) {
        cells += MSFlexGrid1_->text(row, col);
    }
    strip_->showCells(cells);
}

void rbmain::refreshStrip() {
    showStrip();
    MSFlexGrid1_->refreshSigns();
    tell(QString());
}

platform::RowSign rbmain::signOf(int row) const {
    if (static_cast<size_t>(row) < faulty_.size() && faulty_[static_cast<size_t>(row)]) {
        return {faultSign_, isBlue(row) ? QStringLiteral("Chosen dive, cannot be read whole")
                                        : QStringLiteral("Cannot be read whole: download it again")};
    }
    if (isBlue(row)) {
        return {chosenSign_, QStringLiteral("Chosen dive")};
    }
    return {};
}

/// The current row was moved by a press of the mouse or by an arrow key.
void rbmain::MSFlexGrid1_SelChange() {
    if (moving_ || filling_) {
        return;
    }
    if (QGuiApplication::keyboardModifiers() & Qt::ControlModifier) {
        return; // the release of the button decides
    }
    chooseOnly(MSFlexGrid1_->row());
}

/// A plain key leaves one blue row, wherever it leads and where it leads nowhere.
void rbmain::MSFlexGrid1_MovedByKey() {
    chooseOnly(MSFlexGrid1_->row());
}

void rbmain::MSFlexGrid1_MouseUp(int row, int rowSel, Qt::KeyboardModifiers modifiers) {
    if (row < 1) {
        return;
    }
    if (row != rowSel) {
        chooseBlock(row, rowSel);
    } else if (!(modifiers & Qt::ControlModifier)) {
        chooseOnly(row);
    } else if (isBlue(row)) {
        unmark(row);
        refreshStrip();
    } else {
        addToChosen(row);
    }
}

void rbmain::MSFlexGrid1_RightClick(int row, const QPoint& globalPos) {
    if (row > 0) {
        clickedRow_ = row;
        if (isBlue(row)) {
            noteClick(clicks_, row);
            moveCurrentTo(row);
            refreshStrip();
        } else {
            chooseOnly(row);
        }
    }
    mnupopup_->popup(globalPos);
}

/// The row that a key leads to from the last one of the block, or 0.
int rbmain::keyTarget(int key) const {
    const int from = MSFlexGrid1_->rowSel();
    const int page =
        std::max(1, MSFlexGrid1_->viewport()->height() / std::max(1, MSFlexGrid1_->rowHeight(0)) - 1);
    switch (key) {
    case Qt::Key_Up:
        return std::max(1, from - 1);
    case Qt::Key_Down:
        return std::min(divecount_, from + 1);
    case Qt::Key_PageUp:
        return std::max(1, from - page);
    case Qt::Key_PageDown:
        return std::min(divecount_, from + page);
    case Qt::Key_Home:
        return 1;
    case Qt::Key_End:
        return divecount_;
    default:
        return 0;
    }
}

/// Shift stretches the block of blue rows from the current row; Control leads on and leaves a blue trail, so
/// that several blocks can be blue. All other keys are the grid's.
void rbmain::MSFlexGrid1_KeyDown(QKeyEvent* event) {
    const bool shift = event->modifiers() & Qt::ShiftModifier;
    const bool control = event->modifiers() & Qt::ControlModifier;
    if (control && !shift && event->key() == Qt::Key_A) {
        event->accept();
        chooseAll();
        return;
    }
    const int target = shift || control ? keyTarget(event->key()) : 0;
    if (target < 1) {
        return;
    }
    event->accept();
    if (shift) {
        chooseBlock(std::max(1, MSFlexGrid1_->row()), target);
        MSFlexGrid1_->setRowSel(target);
    } else {
        addToChosen(target);
    }
    MSFlexGrid1_->showRow(target);
}

} // namespace benthor::logbook
