#pragma once

#include <QHeaderView>
#include <QStyledItemDelegate>

namespace benthor::platform {

class FlexGrid;

inline constexpr int cellMarginLeft = 5;
inline constexpr int cellMarginRight = 6;
inline constexpr int headerHeight = 36;
inline constexpr int sortArrowWidth = 12;

/// Draws a cell straight from the grid, without the style.
class CellDelegate final : public QStyledItemDelegate {
public:
    explicit CellDelegate(FlexGrid* grid);
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    /// Tells the whole text of a cell that is cut.
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

private:
    FlexGrid* grid_;
};

/// Headings of up to two lines, with the sort arrow.
class HeadingBar final : public QHeaderView {
public:
    explicit HeadingBar(FlexGrid* grid);
    QSize sizeHint() const override;
    /// The width in which the heading is not cut.
    int neededWidth(int col) const;

protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    QFont headingFont(int col) const;
    FlexGrid* grid_;
};

/// The gutter: the sign of each row.
class SignBar final : public QHeaderView {
public:
    explicit SignBar(FlexGrid* grid);

protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
    void paintEvent(QPaintEvent* event) override;

private:
    FlexGrid* grid_;
};

} // namespace benthor::platform
