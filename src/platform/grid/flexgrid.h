#pragma once

#include "platform/grid/flexmodel.h"
#include "platform/grid/textwidths.h"

#include <QTableView>

#include <optional>

namespace benthor::platform {

/// The colours of a grid where no cell was told its own.
struct GridColours {
    QColor surface{0xFF, 0xFF, 0xFF};
    QColor text{0x14, 0x20, 0x2B};
    QColor header{0xF4, 0xF7, 0xF9};
    QColor headerText{0x55, 0x67, 0x7A};
    QColor line{0xD5, 0xDE, 0xE6};
    QColor accent{0x0B, 0x72, 0x85}; ///< outline of the current cell
    bool operator==(const GridColours&) const = default;
};

/// A table addressed by cell. Row 0 is the header row, shown as the column headings; data rows count from 1.
/// Columns count from 0 in the order shown. Writing outside the grid is ignored, reading there gives "" or an
/// invalid colour.
///
/// The grid paints no selection of its own: a screen marks rows by their colours, the grid outlines the
/// current cell.
class FlexGrid : public QTableView {
    Q_OBJECT

public:
    explicit FlexGrid(QWidget* parent = nullptr);

    /// Counted with the header row; at least 1. A current row that is cut off becomes the last one left.
    int rows() const { return cells_->rows(); }
    void setRows(int count);
    int cols() const { return cells_->cols(); }
    void setCols(int count);

    QString text(int row, int col) const { return cells_->text(row, col); }
    void setText(int row, int col, const QString& text) { cells_->setText(row, col, text); }
    /// All texts of a row at once, in the order shown: the quick way to fill many rows.
    void setRowTexts(int row, QStringList texts) { cells_->setRowTexts(row, std::move(texts)); }
    /// Gives the texts of data cells that were not told any, when they are looked at; the function may be
    /// asked at any time and often. `col` is the number that the column has at this call; it keeps it when it
    /// is moved later.
    void setTextFunction(std::function<QString(int row, int col)> function);

    /// What the text function gives for a row is another now.
    void textsChanged(int row) { cells_->touch(row, row); }

    /// An invalid colour means the grid's own, read and written.
    QColor backColour(int row, int col) const { return cells_->colours(row, col).back; }
    void setBackColour(int row, int col, const QColor& colour);
    QColor foreColour(int row, int col) const { return cells_->colours(row, col).fore; }
    void setForeColour(int row, int col, const QColor& colour);
    /// Data rows in which a cell was told a colour; they ascend.
    std::vector<int> rowsWithColours() const { return cells_->rowsWithColours(); }
    /// Cells `firstCol` to the last of a row.
    void setRowColours(int row, const QColor& back, const QColor& fore, int firstCol = 0);
    void clearColours() { cells_->clearColours(); }
    /// What a cell is painted with: its told colours; where the fore colour is the grid's own and the back
    /// colour is not, black or white by contrast.
    CellColours paintedColours(int row, int col) const;

    /// Told width in twips, 15 to a pixel; 0 hides the column. It is the least width: a column is drawn wider
    /// where its heading or a cell seen so far would be cut, up to maximumFit pixels.
    int columnWidthTwips(int col) const;
    void setColumnWidthTwips(int col, int twips);
    static constexpr int maximumFit = 560;
    /// AlignLeft (the default), AlignRight or AlignHCenter, for the heading as well.
    void setColumnAlignment(int col, Qt::Alignment alignment);
    /// Moves a column with all it holds so that it then stands at `to`; those between make room.
    void moveColumn(int from, int to);

    /// Never less than the font needs. Without a height told a row is 28 px high.
    void setRowHeightTwips(int row, int twips) { setRowHeightPx(row, (twips + 7) / 15); }
    void setRowHeightPx(int row, int pixels);
    void setDefaultRowHeightPx(int pixels);
    /// Size of cells and headings in points.
    void setFontSize(double points);
    /// A font whose figures have one width, for the columns aligned right. Its size is that of the grid.
    void setFigureFont(const QFont& font);
    /// The font of a column's cells.
    QFont cellFont(int col) const { return cellWidths(col).font(); }
    /// The widths of texts in it; of no use behind the next event.
    const TextWidths& cellWidths(int col) const;

    /// The current cell. Row 0: none yet, or the header. A row or column that does not exist is ignored.
    int row() const { return row_; }
    int col() const { return col_; }
    /// Makes `row` the current and only row of the range. Does not scroll.
    void setRow(int row);
    void setCol(int col);
    /// The other end of the range that began at row(), which a drag or Shift moves; else the same as row().
    int rowSel() const { return rowSel_; }
    void setRowSel(int row);
    /// The uppermost row in view, from 1. Setting it scrolls as far as the rows reach.
    int topRow() const;
    void setTopRow(int row);
    /// Scrolls as little as brings the row into view.
    void showRow(int row);

    /// Only these headings look as if they could be sorted.
    void setSortableColumns(const QList<int>& columns);
    /// Draws the arrow; -1 for none. It stays with its column when that is moved.
    void setSortIndicator(int col, bool ascending);
    /// The column with the arrow, or -1.
    int sortColumn() const;
    bool sortAscending() const { return sortAscending_; }

    /// A strip of 24 px left of the rows that shows the sign of each; off until a function is given.
    void setRowSigns(std::function<RowSign(int row)> function);
    /// To be called when the signs have changed.
    void refreshSigns();
    static constexpr int gutterWidth = 24;

    /// What a screen reader calls a row; "Row 3" where nothing was told.
    void setRowNames(std::function<QString(int row)> function) { rowNames_ = std::move(function); }
    QString rowName(int row) const;
    /// What the row's sign and its told colour say, in words; empty where they say nothing.
    QString rowWords(int row) const;
    /// A blue row is a selected one.
    bool isMarkedSelected(int row) const;
    /// What a screen reader does to a cell: press is a plain click, "Open" a double click, and so on. Row 0
    /// is the headings.
    void actAt(int row, int col, const QString& action);

    /// Shown in the middle while there are no data rows.
    void setEmptyText(const QString& text);
    QString emptyText() const { return emptyText_; }

    const GridColours& gridColours() const { return colours_; }
    void setGridColours(const GridColours& colours);
    const FlexModel& cells() const { return *cells_; }

signals:
    /// row() has changed, by the user or by code.
    void rowSelectionChanged();
    /// A left click, told on its release, before mouseReleased. `row` is the row that was pressed, never the
    /// header.
    void cellClicked(int row, int col, Qt::KeyboardModifiers modifiers);
    /// The left button was released behind a press on a data row. A plain or Control click makes the pressed
    /// row both ends; a drag, or a click with Shift, leaves `row` and moves `rowSel`.
    void mouseReleased(int row, int rowSel, Qt::KeyboardModifiers modifiers);
    /// Never for the header.
    void doubleClicked(int row);
    /// `row` is 0 where no row lies. The key for the context menu counts as well.
    void rightClicked(int row, const QPoint& globalPos);
    void headerClicked(int col);
    /// Before the grid looks at a key. A receiver that accepts the event has taken the key.
    void keyPressed(QKeyEvent* event);
    void returnPressed(int row);
    /// A plain key for moving (an arrow, Home, End, a Page key, without Shift and Control) has done its work.
    /// Told where there is no way left, too, when rowSelectionChanged is not.
    void movedByKey();

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void setUpHeaders();
    void gutterClicked(int row);
    void refit();
    void fitColumns();
    void fitHeadings();
    void fitRow(int row);
    void applyColumn(int col);
    void applyColumns();
    void applyHeights();
    void forgetFit();
    void cellsChanged(int firstRow, int lastRow);
    void moveTo(int row, int col);
    bool moveBy(int key, bool extend);
    void moveByKey(int row, bool extend);
    void moveColumnByKey(int step);
    void syncCurrent();
    int rowsPerPage() const;

    FlexModel* cells_;
    GridColours colours_;
    int row_ = 0;
    int col_ = 0;
    int rowSel_ = 0;

    struct Press {
        bool armed = false;
        bool dragging = false;
        QPoint at;
        int row = 0;
        int col = 0;
    } press_;

    std::vector<bool> fitted_; // rows whose texts the widths already know
    bool headingsFitted_ = false;
    bool applying_ = false; // sizes set by the grid, not dragged by the user
    int rowHeight_ = 28;
    QFont figureFont_;
    bool hasFigureFont_ = false;
    mutable std::optional<TextWidths> widths_;       // in the grid's font; made when it is asked for
    mutable std::optional<TextWidths> figureWidths_; // in the other
    int sortSlot_ = -1;
    bool sortAscending_ = true;
    QString emptyText_;
    std::function<QString(int)> rowNames_;
    bool ring_ = false; // shows the focus where no cell is current
};

} // namespace benthor::platform
