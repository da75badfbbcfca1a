#include "platform/grid/flexmodel.h"

#include "platform/look/contrast.h"

#include <QBrush>

#include <algorithm>

namespace benthor::platform {

FlexModel::FlexModel(QObject* parent)
    : QAbstractTableModel(parent)
    , texts_(1) {}

void FlexModel::setRows(int count) {
    count = std::max(count, 1);
    const int before = rows();
    if (count > before) {
        beginInsertRows({}, before - 1, count - 2);
        texts_.resize(static_cast<size_t>(count));
        endInsertRows();
    } else if (count < before) {
        beginRemoveRows({}, count - 1, before - 2);
        texts_.resize(static_cast<size_t>(count));
        rowColours_.removeIf([count](const auto& entry) { return entry.key() >= count; });
        endRemoveRows();
    }
}

int FlexModel::freeSlot() const {
    std::vector<bool> taken(columns_.size() + 1);
    for (const FlexColumn& column : columns_) {
        if (static_cast<size_t>(column.slot) < taken.size())
            taken[static_cast<size_t>(column.slot)] = true;
    }
    return static_cast<int>(std::find(taken.begin(), taken.end(), false) - taken.begin());
}

void FlexModel::setCols(int count) {
    count = std::max(count, 0);
    const int before = cols();
    if (count > before) {
        beginInsertColumns({}, before, count - 1);
        while (cols() < count) {
            FlexColumn column;
            column.slot = freeSlot();
            column.source = cols();
            columns_.push_back(column);
        }
        endInsertColumns();
    } else if (count < before) {
        beginRemoveColumns({}, count, before - 1);
        std::vector<int> freed;
        for (int col = count; col < before; ++col)
            freed.push_back(column(col).slot);
        columns_.resize(static_cast<size_t>(count));
        // A slot is used again by the next new column, which must find it empty.
        for (QStringList& row : texts_) {
            for (const int slot : freed) {
                if (slot < row.size())
                    row[slot] = QString();
            }
        }
        for (RowColours& row : rowColours_) {
            for (const int slot : freed)
                row.cells.remove(slot);
        }
        endRemoveColumns();
    }
}

QString FlexModel::text(int row, int col) const {
    if (!hasRow(row) || !hasColumn(col))
        return {};
    const FlexColumn& at = column(col);
    const QStringList& told = texts_[static_cast<size_t>(row)];
    if (at.slot < told.size() && !told[at.slot].isNull())
        return told[at.slot];
    if (row > 0 && textFunction_)
        return textFunction_(row, at.source);
    return {};
}

void FlexModel::setText(int row, int col, const QString& text) {
    if (!hasRow(row) || !hasColumn(col))
        return;
    QStringList& told = texts_[static_cast<size_t>(row)];
    const int slot = column(col).slot;
    while (told.size() <= slot)
        told.append(QString());
    told[slot] = text.isNull() ? QString::fromLatin1("") : text; // a told text is never null
    touch(row, row);
}

void FlexModel::setRowTexts(int row, QStringList texts) {
    if (!hasRow(row))
        return;
    bool plain = true;
    for (int col = 0; col < cols(); ++col)
        plain = plain && column(col).slot == col;
    if (texts.size() > cols())
        texts.resize(cols());
    QStringList& told = texts_[static_cast<size_t>(row)];
    if (plain) {
        told = std::move(texts);
    } else {
        told.fill({}, cols());
        for (int col = 0; col < texts.size(); ++col) {
            const int slot = column(col).slot;
            while (told.size() <= slot)
                told.append(QString());
            told[slot] = texts[col];
        }
    }
    touch(row, row);
}

void FlexModel::setTextFunction(std::function<QString(int, int)> function) {
    textFunction_ = std::move(function);
    for (int col = 0; col < cols(); ++col)
        column(col).source = col;
    touch(0, rows() - 1);
}

std::vector<int> FlexModel::rowsWithColours() const {
    std::vector<int> rows;
    rows.reserve(static_cast<size_t>(rowColours_.size()));
    for (auto told = rowColours_.cbegin(); told != rowColours_.cend(); ++told) {
        if (told.key() > 0)
            rows.push_back(told.key());
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

CellColours FlexModel::colours(int row, int col) const {
    const auto found = rowColours_.constFind(row);
    if (found == rowColours_.cend() || !hasColumn(col))
        return {};
    const auto cell = found->cells.constFind(column(col).slot);
    return cell == found->cells.cend() ? found->whole : *cell;
}

void FlexModel::setColours(int row, int col, const CellColours& told) {
    if (!hasRow(row) || !hasColumn(col) || colours(row, col) == told)
        return;
    RowColours& at = rowColours_[row];
    if (told == at.whole)
        at.cells.remove(column(col).slot);
    else
        at.cells.insert(column(col).slot, told);
    if (at.cells.isEmpty() && at.whole.isDefault())
        rowColours_.remove(row);
    touch(row, row);
}

void FlexModel::setRowColours(int row, const CellColours& told) {
    if (!hasRow(row))
        return;
    if (told.isDefault())
        rowColours_.remove(row);
    else
        rowColours_[row] = {told, {}};
    touch(row, row);
}

void FlexModel::clearColours() {
    rowColours_.clear();
    touch(0, rows() - 1);
}

void FlexModel::setOwnColours(const CellColours& own) {
    own_ = own;
    touch(0, rows() - 1);
}

CellColours FlexModel::paintedColours(int row, int col) const {
    CellColours painted = colours(row, col);
    if (!painted.fore.isValid())
        painted.fore = painted.back.isValid() ? look::readableOn(painted.back) : own_.fore;
    if (!painted.back.isValid())
        painted.back = own_.back;
    return painted;
}

void FlexModel::setSignFunction(std::function<RowSign(int)> function) {
    signFunction_ = std::move(function);
    touch(0, rows() - 1);
}

RowSign FlexModel::sign(int row) const {
    return signFunction_ && row > 0 && hasRow(row) ? signFunction_(row) : RowSign();
}

void FlexModel::moveColumn(int from, int to) {
    if (!hasColumn(from) || !hasColumn(to) || from == to)
        return;
    const auto first = columns_.begin();
    if (from < to)
        std::rotate(first + from, first + from + 1, first + to + 1);
    else
        std::rotate(first + to, first + from, first + from + 1);
    touch(0, rows() - 1);
}

void FlexModel::touch(int first, int last) {
    if (touchedFirst_ < 0) {
        touchedFirst_ = first;
        touchedLast_ = last;
        QMetaObject::invokeMethod(this, &FlexModel::flush, Qt::QueuedConnection);
        return;
    }
    touchedFirst_ = std::min(touchedFirst_, first);
    touchedLast_ = std::max(touchedLast_, last);
}

void FlexModel::flush() {
    const int first = std::exchange(touchedFirst_, -1);
    const int last = std::min(touchedLast_, rows() - 1);
    if (cols() == 0)
        return;
    if (first == 0)
        emit headerDataChanged(Qt::Horizontal, 0, cols() - 1);
    if (last >= 1)
        emit dataChanged(index(std::max(first, 1) - 1, 0), index(last - 1, cols() - 1));
}

int FlexModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows() - 1;
}

int FlexModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : cols();
}

QVariant FlexModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return text(index.row() + 1, index.column());
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(column(index.column()).alignment | Qt::AlignVCenter);
    case Qt::AccessibleDescriptionRole:
        return sign(index.row() + 1).name;
    case Qt::BackgroundRole:
        return QBrush(paintedColours(index.row() + 1, index.column()).back);
    case Qt::ForegroundRole:
        return QBrush(paintedColours(index.row() + 1, index.column()).fore);
    default:
        return {};
    }
}

QVariant FlexModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Horizontal && (role == Qt::DisplayRole || role == Qt::AccessibleTextRole))
        return text(0, section);
    if (orientation == Qt::Vertical && (role == Qt::ToolTipRole || role == Qt::AccessibleTextRole))
        return sign(section + 1).name;
    return {};
}

} // namespace benthor::platform
