#include "platform/grid/flexgrid.h"

#include <QHeaderView>
#include <QPainter>
#include <QtTest>

using namespace benthor::platform;

namespace {

const QColor blue(0, 0, 255);
const QColor red(255, 0, 0);
const QColor yellow(255, 255, 0);

void show(FlexGrid& grid) {
    grid.show();
    QVERIFY(QTest::qWaitForWindowExposed(&grid));
    QCoreApplication::processEvents(); // the queued telling of changes
}

QImage cellPicture(FlexGrid& grid, int row, int col) {
    return grid.viewport()->grab(grid.visualRect(grid.model()->index(row - 1, col))).toImage();
}

/// The first and last column of a picture, without its last two (the grid line), that hold ink; -1 without
/// ink.
std::pair<int, int> inkColumns(const QImage& picture) {
    const QRgb ground = picture.pixel(1, 1);
    std::pair<int, int> ink(-1, -1);
    for (int x = 0; x < picture.width() - 2; ++x) {
        for (int y = 0; y < picture.height() - 2; ++y) {
            if (picture.pixel(x, y) == ground)
                continue;
            ink.first = ink.first < 0 ? x : ink.first;
            ink.second = x;
        }
    }
    return ink;
}

RowSign redSign(int row) {
    if (row != 2)
        return {};
    QPixmap square(16, 16);
    square.fill(red);
    return {QIcon(square), "faulty"};
}

} // namespace

class TestFlexGridLook : public QObject {
    Q_OBJECT

private slots:
    void contrastPicksBlackOrWhite_data();
    void contrastPicksBlackOrWhite();
    void aToldForeColourStaysOnAToldBackColour();
    void aToldBackColourIsSeenInTheCurrentRow();
    void theGridsOwnColoursFollowTheTheme();
    void widthZeroHides();
    void aToldWidthIsKeptWhereItSuffices();
    void aColumnIsWidenedForItsHeading();
    void aHeadingOfTwoWordsNeedsTheLongerOnly();
    void aColumnIsWidenedForItsCells();
    void aColumnIsWidenedForARowScrolledTo();
    void aVeryLongTextIsCut();
    void hiddenColumnsAreNotWidened();
    void rowsAre28HighUntilTold();
    void theHeadingIs36High();
    void numbersStandRight();
    void theCurrentCellIsOutlined();
    void onlySortableHeadingsLeaveRoomForTheArrow();
    void theArrowShowsTheSortedColumn();
    void theGutterIsOffUntilSignsAreGiven();
    void theGutterCarriesTheSignOfItsRow();
    void theGutterScrollsWithTheRows();
    void signsHaveANameToRead();
    void theColoursThatAreSeenAreGivenByRole();
    void theEmptyTextShowsWhileThereAreNoRows();
    void fontSizeReachesCells();
    void figuresTakeTheirFontInNumberColumns();
};

void TestFlexGridLook::contrastPicksBlackOrWhite_data() {
    QTest::addColumn<QColor>("back");
    QTest::addColumn<QColor>("fore");
    QTest::newRow("blue") << blue << QColor(Qt::white);
    QTest::newRow("red") << red << QColor(Qt::black);
    QTest::newRow("yellow") << yellow << QColor(Qt::black);
    QTest::newRow("white") << QColor(Qt::white) << QColor(Qt::black);
    QTest::newRow("dark grey") << QColor(0x16, 0x21, 0x2D) << QColor(Qt::white);
}

void TestFlexGridLook::contrastPicksBlackOrWhite() {
    QFETCH(QColor, back);
    QFETCH(QColor, fore);
    FlexGrid grid;
    grid.setCols(1);
    grid.setRows(2);
    grid.setBackColour(1, 0, back);
    QCOMPARE(grid.paintedColours(1, 0).fore, fore);
    QVERIFY(!grid.foreColour(1, 0).isValid()); // painting alone picks it
}

void TestFlexGridLook::aToldForeColourStaysOnAToldBackColour() {
    FlexGrid grid;
    grid.setCols(1);
    grid.setRows(2);
    grid.setBackColour(1, 0, blue);
    grid.setForeColour(1, 0, red);
    QCOMPARE(grid.paintedColours(1, 0).fore, red);
    QCOMPARE(grid.paintedColours(1, 0).back, blue);
}

void TestFlexGridLook::aToldBackColourIsSeenInTheCurrentRow() {
    FlexGrid grid;
    grid.resize(400, 200);
    grid.setCols(2);
    grid.setRows(3);
    grid.setRowColours(1, blue, Qt::white);
    grid.setRow(1);
    show(grid);
    QCOMPARE(cellPicture(grid, 1, 0).pixelColor(20, 10), blue); // the current cell
    QCOMPARE(cellPicture(grid, 1, 1).pixelColor(20, 10), blue);
    QCOMPARE(cellPicture(grid, 2, 0).pixelColor(20, 10), grid.gridColours().surface);
}

void TestFlexGridLook::theGridsOwnColoursFollowTheTheme() {
    FlexGrid grid;
    grid.resize(400, 200);
    grid.setCols(1);
    grid.setRows(2);
    show(grid);
    GridColours dark;
    dark.surface = QColor(0x16, 0x21, 0x2D);
    dark.text = QColor(0xE7, 0xEE, 0xF4);
    grid.setGridColours(dark);
    QCOMPARE(cellPicture(grid, 1, 0).pixelColor(20, 10), dark.surface);
    QCOMPARE(grid.paintedColours(1, 0).fore, dark.text);
    QCOMPARE(grid.viewport()->grab().toImage().pixelColor(390, 150), dark.surface);
}

void TestFlexGridLook::widthZeroHides() {
    FlexGrid grid;
    grid.setCols(2);
    grid.setColumnWidthTwips(1, 0);
    QVERIFY(grid.isColumnHidden(1));
    QCOMPARE(grid.columnWidthTwips(1), 0);
    grid.setColumnWidthTwips(1, 1500);
    QVERIFY(!grid.isColumnHidden(1));
    QCOMPARE(grid.columnWidth(1), 100);
}

void TestFlexGridLook::aToldWidthIsKeptWhereItSuffices() {
    FlexGrid grid;
    grid.setCols(1);
    grid.setRows(2);
    grid.setColumnWidthTwips(0, 1800);
    grid.setRowTexts(0, {"Time"});
    grid.setRowTexts(1, {"short"});
    show(grid);
    QCOMPARE(grid.columnWidth(0), 120);
    QCOMPARE(grid.columnWidthTwips(0), 1800);
}

void TestFlexGridLook::aColumnIsWidenedForItsHeading() {
    FlexGrid grid;
    grid.setCols(1);
    grid.setColumnWidthTwips(0, 150);
    grid.setText(0, 0, "Atmospheric");
    show(grid);
    QVERIFY(grid.columnWidth(0) > grid.fontMetrics().horizontalAdvance("Atmospheric"));
    QCOMPARE(grid.columnWidthTwips(0), 150);
}

void TestFlexGridLook::aHeadingOfTwoWordsNeedsTheLongerOnly() {
    FlexGrid grid;
    grid.setCols(1);
    grid.setColumnWidthTwips(0, 150);
    grid.setText(0, 0, "Usage hours");
    show(grid);
    QVERIFY(grid.columnWidth(0) > grid.fontMetrics().horizontalAdvance("Usage"));
    QVERIFY(grid.columnWidth(0) < grid.fontMetrics().horizontalAdvance("Usage hours"));
}

void TestFlexGridLook::aColumnIsWidenedForItsCells() {
    FlexGrid grid;
    grid.setCols(1);
    grid.setRows(3);
    grid.setColumnWidthTwips(0, 150);
    show(grid);
    const QString text = "27/07/2017 09:50:02";
    grid.setText(2, 0, text);
    QTRY_VERIFY(grid.columnWidth(0) > grid.fontMetrics().horizontalAdvance(text));
}

void TestFlexGridLook::aColumnIsWidenedForARowScrolledTo() {
    FlexGrid grid;
    grid.resize(300, 200);
    grid.setCols(1);
    grid.setRows(10001);
    grid.setColumnWidthTwips(0, 150);
    const QString text = "a text that is wider than the rest";
    grid.setTextFunction([text](int row, int) { return row == 7001 ? text : QString("x"); });
    show(grid);
    const int before = grid.columnWidth(0);
    grid.setTopRow(6999);
    QVERIFY(grid.columnWidth(0) > before);
    QVERIFY(grid.columnWidth(0) > grid.fontMetrics().horizontalAdvance(text));
}

void TestFlexGridLook::aVeryLongTextIsCut() {
    FlexGrid grid;
    grid.setCols(1);
    grid.setRows(2);
    grid.setText(1, 0, QString(2000, 'm'));
    show(grid);
    QTRY_COMPARE(grid.columnWidth(0), FlexGrid::maximumFit);
}

void TestFlexGridLook::hiddenColumnsAreNotWidened() {
    FlexGrid grid;
    grid.setCols(2);
    grid.setRows(2);
    grid.setColumnWidthTwips(0, 0);
    grid.setRowTexts(0, {"a heading", "b"});
    grid.setRowTexts(1, {"a long text in a hidden column", "b"});
    show(grid);
    QVERIFY(grid.isColumnHidden(0));
    QCOMPARE(grid.columnWidth(0), 0);
}

void TestFlexGridLook::rowsAre28HighUntilTold() {
    FlexGrid grid;
    grid.setFontSize(8);
    grid.setCols(1);
    grid.setRows(4);
    QCOMPARE(grid.rowHeight(0), 28);
    grid.setRowHeightTwips(2, 300);
    QCOMPARE(grid.rowHeight(1), 20);
    QCOMPARE(grid.rowHeight(0), 28);
    grid.setRowHeightPx(3, 2);
    QCOMPARE(grid.rowHeight(2), grid.fontMetrics().height());
    grid.setDefaultRowHeightPx(34);
    QCOMPARE(grid.rowHeight(0), 34);
}

void TestFlexGridLook::theHeadingIs36High() {
    FlexGrid grid;
    grid.setFontSize(8);
    grid.setCols(1);
    show(grid);
    QCOMPARE(grid.horizontalHeader()->height(), 36);
    grid.setFontSize(24);
    QTRY_VERIFY(grid.horizontalHeader()->height() >= 2 * grid.fontMetrics().lineSpacing());
    QVERIFY(grid.verticalHeader()->defaultSectionSize() >= grid.fontMetrics().height());
}

void TestFlexGridLook::numbersStandRight() {
    FlexGrid grid;
    grid.resize(500, 200);
    grid.setCols(2);
    grid.setRows(2);
    for (const int col : {0, 1})
        grid.setColumnWidthTwips(col, 3000);
    grid.setColumnAlignment(1, Qt::AlignRight);
    grid.setRowTexts(1, {"12", "12"});
    show(grid);
    const auto left = inkColumns(cellPicture(grid, 1, 0));
    const auto right = inkColumns(cellPicture(grid, 1, 1));
    QVERIFY(left.first >= 0 && left.first < 20 && left.second < 60);
    QVERIFY(right.first > 140 && right.second > 180);
}

void TestFlexGridLook::theCurrentCellIsOutlined() {
    FlexGrid grid;
    grid.resize(400, 200);
    grid.setCols(2);
    grid.setRows(3);
    grid.setRow(2);
    grid.setCol(1);
    show(grid);
    grid.activateWindow();
    grid.setFocus();
    QTRY_VERIFY(grid.hasFocus());
    const QColor accent = grid.gridColours().accent;
    QCOMPARE(cellPicture(grid, 2, 1).pixelColor(0, 10), accent);
    QCOMPARE(cellPicture(grid, 2, 1).pixelColor(1, 10), accent);
    QVERIFY(cellPicture(grid, 2, 0).pixelColor(1, 10) != accent);
    QVERIFY(cellPicture(grid, 1, 1).pixelColor(1, 10) != accent);
    grid.setBackColour(2, 1, blue);
    QCOMPARE(cellPicture(grid, 2, 1).pixelColor(1, 10), QColor(Qt::white));
}

void TestFlexGridLook::onlySortableHeadingsLeaveRoomForTheArrow() {
    FlexGrid grid;
    grid.setCols(2);
    grid.setRowTexts(0, {"startdate", "startdate"});
    for (const int col : {0, 1})
        grid.setColumnWidthTwips(col, 150);
    grid.setSortableColumns({1});
    show(grid);
    QVERIFY(grid.columnWidth(1) >= grid.columnWidth(0) + 12);
}

void TestFlexGridLook::theArrowShowsTheSortedColumn() {
    FlexGrid grid;
    grid.resize(500, 200);
    grid.setCols(2);
    grid.setRowTexts(0, {"site", "site"});
    for (const int col : {0, 1})
        grid.setColumnWidthTwips(col, 2250);
    show(grid);
    const auto heading = [&grid](int col) {
        return grid.horizontalHeader()->grab(QRect(col * 150, 0, 150, 35)).toImage();
    };
    QCOMPARE(inkColumns(heading(0)).second, inkColumns(heading(1)).second);
    grid.setSortIndicator(1, true);
    QCOMPARE(grid.sortColumn(), 1);
    QVERIFY(inkColumns(heading(1)).second >= inkColumns(heading(0)).second + 8);
    const QImage up = heading(1);
    grid.setSortIndicator(1, false);
    QVERIFY(heading(1) != up);
    grid.setSortIndicator(-1, true);
    QCOMPARE(grid.sortColumn(), -1);
    QCOMPARE(inkColumns(heading(0)).second, inkColumns(heading(1)).second);
}

void TestFlexGridLook::theGutterIsOffUntilSignsAreGiven() {
    FlexGrid grid;
    QVERIFY(grid.verticalHeader()->isHidden());
    grid.setRowSigns(redSign);
    QVERIFY(!grid.verticalHeader()->isHidden());
    grid.setRowSigns({});
    QVERIFY(grid.verticalHeader()->isHidden());
}

void TestFlexGridLook::theGutterCarriesTheSignOfItsRow() {
    FlexGrid grid;
    grid.resize(300, 200);
    grid.setCols(1);
    grid.setRows(4);
    grid.setRowSigns(redSign);
    show(grid);
    QCOMPARE(grid.verticalHeader()->width(), FlexGrid::gutterWidth);
    const QImage gutter = grid.verticalHeader()->grab().toImage();
    QCOMPARE(gutter.pixelColor(12, 28 + 14), red);
    QCOMPARE(gutter.pixelColor(12, 14), grid.gridColours().surface);
    QCOMPARE(gutter.pixelColor(12, 56 + 14), grid.gridColours().surface);
}

void TestFlexGridLook::theGutterScrollsWithTheRows() {
    FlexGrid grid;
    grid.resize(300, 200);
    grid.setCols(1);
    grid.setRows(200);
    grid.setRowSigns(redSign);
    show(grid);
    grid.setTopRow(2);
    QCOMPARE(grid.verticalHeader()->grab().toImage().pixelColor(12, 14), red);
    grid.setTopRow(50);
    QCOMPARE(grid.verticalHeader()->grab().toImage().pixelColor(12, 14), grid.gridColours().surface);
}

void TestFlexGridLook::signsHaveANameToRead() {
    FlexGrid grid;
    grid.setCols(1);
    grid.setRows(3);
    grid.setRowSigns(redSign);
    QCOMPARE(grid.model()->headerData(1, Qt::Vertical, Qt::ToolTipRole).toString(), "faulty");
    QCOMPARE(grid.model()->index(1, 0).data(Qt::AccessibleDescriptionRole).toString(), "faulty");
    QCOMPARE(grid.model()->headerData(0, Qt::Vertical, Qt::ToolTipRole).toString(), "");
}

void TestFlexGridLook::theColoursThatAreSeenAreGivenByRole() {
    FlexGrid grid;
    grid.setCols(2);
    grid.setRows(3);
    grid.setBackColour(1, 1, Qt::blue);
    grid.setRowColours(2, Qt::yellow, Qt::red);
    show(grid);
    for (const bool dark : {false, true}) {
        GridColours theme = grid.gridColours();
        theme.surface = dark ? QColor(20, 20, 20) : QColor(250, 250, 250);
        theme.text = dark ? QColor(230, 230, 230) : QColor(10, 10, 10);
        QSignalSpy told(grid.model(), &QAbstractItemModel::dataChanged);
        grid.setGridColours(theme);
        QTRY_VERIFY(!told.isEmpty());
        for (int row = 0; row < 2; ++row) {
            for (int col = 0; col < 2; ++col) {
                const QModelIndex cell = grid.model()->index(row, col);
                // Behind the text, beside the frame of the current cell: what a person sees there.
                const QPoint corner = grid.visualRect(cell).bottomRight() - QPoint(3, 3);
                const QColor seen = grid.viewport()->grab().toImage().pixelColor(corner);
                QCOMPARE(cell.data(Qt::BackgroundRole).value<QBrush>().color(), seen);
            }
        }
        const auto ink = [&grid](int row, int col) {
            return grid.model()->index(row, col).data(Qt::ForegroundRole).value<QBrush>().color();
        };
        QCOMPARE(ink(0, 0), theme.text);
        QCOMPARE(ink(0, 1), QColor(Qt::white)); // readable on the blue
        QCOMPARE(ink(1, 0), QColor(Qt::red));
    }
}

void TestFlexGridLook::theEmptyTextShowsWhileThereAreNoRows() {
    FlexGrid grid;
    grid.resize(400, 200);
    grid.setCols(1);
    grid.setEmptyText("No dives yet");
    show(grid);
    const auto inkAt = [&grid](int top, int height) {
        return inkColumns(grid.viewport()->grab(QRect(120, top, 200, height)).toImage()).first;
    };
    QVERIFY(inkAt(10, 60) >= 0);
    QCOMPARE(inkAt(70, 100), -1); // a box in the middle of the window hides nothing of it
    grid.setRows(2);
    grid.setColumnWidthTwips(0, 300);
    QCOMPARE(inkAt(10, 60), -1);
}

void TestFlexGridLook::fontSizeReachesCells() {
    FlexGrid grid;
    grid.setCols(1);
    grid.setFontSize(8);
    QCOMPARE(grid.cellFont(0).pointSizeF(), 8.0);
    QCOMPARE(grid.horizontalHeader()->font().pointSizeF(), 8.0);
}

void TestFlexGridLook::figuresTakeTheirFontInNumberColumns() {
    FlexGrid grid;
    grid.setCols(2);
    grid.setFontSize(8);
    grid.setColumnAlignment(1, Qt::AlignRight);
    grid.setFigureFont(QFont("DejaVu Sans Mono", 20));
    QCOMPARE(grid.cellFont(1).family(), "DejaVu Sans Mono");
    QCOMPARE(grid.cellFont(1).pointSizeF(), 8.0);
    QVERIFY(grid.cellFont(0).family() != "DejaVu Sans Mono");
}

QTEST_MAIN(TestFlexGridLook)
#include "test_flexgridlook.moc"
