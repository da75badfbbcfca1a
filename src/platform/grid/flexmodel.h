#pragma once

#include <QAbstractTableModel>
#include <QColor>
#include <QHash>
#include <QIcon>
#include <QStringList>

#include <functional>
#include <vector>

namespace benthor::platform {

/// The colours a cell was told. An invalid colour means the grid's own.
struct CellColours {
    QColor back;
    QColor fore;
    bool operator==(const CellColours&) const = default;
    bool isDefault() const { return !back.isValid() && !fore.isValid(); }
};

/// What stands in the gutter of a row: a picture, and the word for it, shown as tool tip and read out.
struct RowSign {
    QIcon icon;
    QString name;
};

/// A column as it stands in the grid; it keeps all of this when it is moved.
struct FlexColumn {
    int slot = 0;    ///< where its texts and colours lie in the rows
    int source = 0;  ///< the number by which the text function knows it
    int twips = 960; ///< told width, 15 to a pixel; 0 hides
    int needed = 0;  ///< widest content seen so far, in pixels
    int chosen = 0;  ///< width that the user dragged it to, in pixels; 0 = none
    Qt::Alignment alignment = Qt::AlignLeft;
    bool sortable = false;
};

/// The cells of a FlexGrid. Row 0 is the header, data rows follow from 1; columns count from 0 in the order
/// shown. A row or column outside the grid is ignored when written and empty when read. Columns are moved by
/// re-numbering, so a move costs nothing for the rows.
class FlexModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    explicit FlexModel(QObject* parent = nullptr);

    /// Rows with the header; at least 1.
    int rows() const { return static_cast<int>(texts_.size()); }
    void setRows(int count);
    int cols() const { return static_cast<int>(columns_.size()); }
    void setCols(int count);

    /// The told text, else what the text function gives, else "".
    QString text(int row, int col) const;
    void setText(int row, int col, const QString& text);
    /// All texts of a row in the order shown; a null text leaves that cell to the text function.
    void setRowTexts(int row, QStringList texts);
    /// Asked for data rows only, when a cell is looked at. `col` is the number that the column has now: a
    /// column that is moved later goes on asking by that number.
    void setTextFunction(std::function<QString(int row, int col)> function);

    CellColours colours(int row, int col) const;
    void setColours(int row, int col, const CellColours& colours);
    /// Every cell of the row; two invalid colours give the row back to the grid's own.
    void setRowColours(int row, const CellColours& colours);
    /// Data rows that have a colour of their own; they ascend.
    std::vector<int> rowsWithColours() const;
    /// Every row back to the grid's own colours.
    void clearColours();
    /// What a cell has where it was told nothing: the colours of the theme.
    void setOwnColours(const CellColours& own);
    /// The colours that the eye sees; also given by the roles for back- and foreground.
    CellColours paintedColours(int row, int col) const;

    void setSignFunction(std::function<RowSign(int row)> function);
    RowSign sign(int row) const;

    const FlexColumn& column(int col) const { return columns_[static_cast<size_t>(col)]; }
    FlexColumn& column(int col) { return columns_[static_cast<size_t>(col)]; }
    bool hasColumn(int col) const { return col >= 0 && col < cols(); }
    bool hasRow(int row) const { return row >= 0 && row < rows(); }
    /// Takes the column out and puts it in so that it then stands at `to`.
    void moveColumn(int from, int to);
    /// Tells the view that rows `first` to `last` changed, once for all changes until events run.
    void touch(int first, int last);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct RowColours {
        CellColours whole;
        QHash<int, CellColours> cells; // by slot
    };

    void flush();
    int freeSlot() const;

    std::vector<QStringList> texts_; // by row, then slot; null = not told
    std::vector<FlexColumn> columns_;
    CellColours own_;
    QHash<int, RowColours> rowColours_; // only rows that differ from the grid's own
    std::function<QString(int, int)> textFunction_;
    std::function<RowSign(int)> signFunction_;
    int touchedFirst_ = -1;
    int touchedLast_ = -1;
};

} // namespace benthor::platform
