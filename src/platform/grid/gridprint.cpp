#include "platform/grid/gridprint.h"

#include "platform/grid/flexgrid.h"

#include <QPainter>
#include <QPrinter>

#include <algorithm>
#include <vector>

namespace benthor::platform {

namespace {

constexpr int kLinePadding = 4;   // of a row, in units of the layout
constexpr int kColumnPadding = 6; // left and right of a text

/// Widths of the shown columns, in units of the layout, so that no heading or cell is cut.
struct Sheet {
    std::vector<int> columns;
    std::vector<int> widths;
    int width = 0;
    int rowHeight = 0;
};

Sheet sheetOf(const FlexGrid& grid, const QFontMetrics& metrics) {
    Sheet sheet;
    sheet.rowHeight = metrics.height() + kLinePadding;
    for (int column = 0; column < grid.cols(); ++column) {
        if (grid.columnWidthTwips(column) == 0) {
            continue;
        }
        int width = metrics.horizontalAdvance(grid.text(0, column));
        for (int row = 1; row < grid.rows(); ++row) {
            width = std::max(width, metrics.horizontalAdvance(grid.text(row, column)));
        }
        sheet.columns.push_back(column);
        sheet.widths.push_back(width + 2 * kColumnPadding);
        sheet.width += sheet.widths.back();
    }
    return sheet;
}

class SheetPainter {
public:
    SheetPainter(QPainter& painter, const FlexGrid& grid, const Sheet& sheet)
        : painter_(painter)
        , grid_(grid)
        , sheet_(sheet) {}

    void drawRow(int row, int top) {
        int left = 0;
        for (std::size_t at = 0; at < sheet_.columns.size(); ++at) {
            const QRect cell(left, top, sheet_.widths[at], sheet_.rowHeight);
            drawCell(row, sheet_.columns[at], cell);
            left += sheet_.widths[at];
        }
    }

private:
    void drawCell(int row, int column, const QRect& cell) {
        QColor ink = Qt::black;
        if (row > 0 && grid_.backColour(row, column).isValid()) {
            const CellColours colours = grid_.paintedColours(row, column);
            painter_.fillRect(cell, colours.back);
            ink = colours.fore;
        }
        painter_.setPen(QColor(Qt::lightGray));
        painter_.drawRect(cell);
        painter_.setPen(ink);
        painter_.drawText(cell, Qt::AlignCenter | Qt::TextSingleLine, grid_.text(row, column));
    }

    QPainter& painter_;
    const FlexGrid& grid_;
    const Sheet& sheet_;
};

} // namespace

bool printGrid(QPrinter& printer, const FlexGrid& grid) {
    QPainter painter;
    if (!painter.begin(&printer)) {
        return false;
    }
    QFont font = grid.font();
    font.setPixelSize(12);
    const Sheet sheet = sheetOf(grid, QFontMetrics(font));
    const QRectF page = printer.pageRect(QPrinter::DevicePixel);
    const double unit = printer.logicalDpiX() / 96.0;
    const double scale = sheet.width > 0 ? std::min(unit, page.width() / sheet.width) : unit;
    painter.scale(scale, scale);
    painter.setFont(font);
    SheetPainter rows(painter, grid, sheet);
    const int rowsOfPage = std::max(1, static_cast<int>(page.height() / scale / sheet.rowHeight) - 1);
    rows.drawRow(0, 0);
    for (int row = 1; row < grid.rows(); ++row) {
        const int line = (row - 1) % rowsOfPage;
        if (line == 0 && row > 1) {
            printer.newPage();
            rows.drawRow(0, 0);
        }
        rows.drawRow(row, (line + 1) * sheet.rowHeight);
    }
    return painter.end();
}

} // namespace benthor::platform
