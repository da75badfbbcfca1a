#pragma once

#include <QStyledItemDelegate>

namespace benthor::firmware {

/// A row of the list of programs: the name at the left, the id quiet at the right, in figures of one width,
/// and a mark at this program's own row.
class ProcessDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    // Beside the id (Qt::UserRole) an item keeps:
    static constexpr int beganRole = Qt::UserRole + 1; ///< start time, quint64
    static constexpr int ownRole = Qt::UserRole + 2;   ///< bool: this program

    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace benthor::firmware
