#include "tests/logbook/listworld.h"

using namespace benthor;
using namespace benthor::tests;

class TestRbmainRows : public QObject {
    Q_OBJECT

private slots:
    void clickChoosesTheRowAndRefreshesTheStrip();
    void arrowKeysMoveTheChoice();
    void pageAndEndKeysMoveTheChoice();
    void shiftWithArrowsStretchesTheBlueRows();
    void shiftWithArrowsBackShrinksThem();
    void shiftWithEndReachesTheLastRow();
    void controlWithArrowsLeavesABlueTrail();
    void controlClickAddsAndTakesAway();
    void shiftClickChoosesABlock();
    void dragChoosesABlock();
    void arrowKeyBehindABlockChoosesOneRowAgain();
    void redOfAFaultyRowComesBackWithAFreshFill();
    void keysStopAtTheEnds();
    void plainKeyLeavesExactlyOneBlueRow_data();
    void plainKeyLeavesExactlyOneBlueRow();
    void otherKeysLeaveTheBlueRows();
    void stripShowsTheBlueRowClickedLast();
    void stripGoesBackToTheBlueRowClickedBefore();
    void stripShowsTheFirstBlueRowWhenNoneWasClicked();
    void stripShowsTheCurrentRowWhenNoneIsBlue();
    void controlAChoosesAll();
    void aSecondClickOnAHeadingTurnsItsOrderRound();
    void theDirectionOutlivesTheListAndTheKeyStaysOneLetter();
    void theMenuOrdersUpward();
    void choosingADiveDoesWhatAClickDoes();
    void scrollingToTheNewestLeavesTheChoice();
    void anotherUnitReachesTheListAndLeavesTheChoice();
};

namespace {

void addDives(int count) {
    for (int number = 1; number <= count; ++number) {
        ListWorld::addDive(diveNumber(number));
    }
}

} // namespace

void TestRbmainRows::clickChoosesTheRowAndRefreshesTheStrip() {
    ListWorld world;
    addDives(4);
    world.show();
    world.click(3);
    QCOMPARE(world.blueRows(), QList<int>{3});
    QCOMPARE(world.grid().foreColour(3, 0), QColor(Qt::white));
    QVERIFY(!world.grid().foreColour(1, 0).isValid());
    QCOMPARE(world.labelText("txtdiveid"), diveNumber(3));
    QCOMPARE(world.labelText("txtlocation"), QStringLiteral("Dive03.txt"));
}

void TestRbmainRows::arrowKeysMoveTheChoice() {
    ListWorld world;
    addDives(4);
    world.show();
    world.key(Qt::Key_Down);
    world.key(Qt::Key_Down);
    QCOMPARE(world.blueRows(), QList<int>{3});
    QCOMPARE(world.labelText("txtdiveid"), diveNumber(3));
    world.key(Qt::Key_Up);
    QCOMPARE(world.blueRows(), QList<int>{2});
    QCOMPARE(world.labelText("txtdiveid"), diveNumber(2));
}

void TestRbmainRows::pageAndEndKeysMoveTheChoice() {
    ListWorld world;
    addDives(4);
    world.show();
    world.key(Qt::Key_End);
    QCOMPARE(world.blueRows(), QList<int>{4});
    world.key(Qt::Key_PageUp);
    QCOMPARE(world.blueRows(), QList<int>{1});
    world.key(Qt::Key_PageDown);
    QCOMPARE(world.blueRows(), QList<int>{4});
    world.key(Qt::Key_Home);
    QCOMPARE(world.blueRows(), QList<int>{1});
}

void TestRbmainRows::shiftWithArrowsStretchesTheBlueRows() {
    ListWorld world;
    addDives(5);
    world.show();
    world.click(2);
    world.key(Qt::Key_Down, Qt::ShiftModifier);
    world.key(Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(world.blueRows(), (QList<int>{2, 3, 4}));
}

void TestRbmainRows::shiftWithArrowsBackShrinksThem() {
    ListWorld world;
    addDives(5);
    world.show();
    world.click(3);
    world.key(Qt::Key_Down, Qt::ShiftModifier);
    world.key(Qt::Key_Up, Qt::ShiftModifier);
    QCOMPARE(world.blueRows(), QList<int>{3});
    world.key(Qt::Key_Up, Qt::ShiftModifier);
    QCOMPARE(world.blueRows(), (QList<int>{2, 3}));
}

void TestRbmainRows::shiftWithEndReachesTheLastRow() {
    ListWorld world;
    addDives(5);
    world.show();
    world.click(3);
    world.key(Qt::Key_End, Qt::ShiftModifier);
    QCOMPARE(world.blueRows(), (QList<int>{3, 4, 5}));
}

void TestRbmainRows::controlWithArrowsLeavesABlueTrail() {
    ListWorld world;
    addDives(5);
    world.show();
    world.click(2);
    world.click(5, Qt::ControlModifier);
    world.key(Qt::Key_Up, Qt::ControlModifier);
    QCOMPARE(world.blueRows(), (QList<int>{2, 4, 5}));
    QCOMPARE(world.grid().row(), 4);
    QCOMPARE(world.labelText("txtdiveid"), diveNumber(4));
}

void TestRbmainRows::controlClickAddsAndTakesAway() {
    ListWorld world;
    addDives(4);
    world.show();
    world.click(3, Qt::ControlModifier);
    QCOMPARE(world.blueRows(), (QList<int>{1, 3}));
    world.click(1, Qt::ControlModifier);
    QCOMPARE(world.blueRows(), QList<int>{3});
    QVERIFY(!world.grid().backColour(1, 0).isValid());
}

void TestRbmainRows::shiftClickChoosesABlock() {
    ListWorld world;
    addDives(5);
    world.show();
    world.click(4);
    world.click(2, Qt::ShiftModifier);
    QCOMPARE(world.blueRows(), (QList<int>{2, 3, 4}));
}

void TestRbmainRows::dragChoosesABlock() {
    ListWorld world;
    addDives(5);
    world.show();
    QWidget* cells = world.grid().viewport();
    QTest::mousePress(cells, Qt::LeftButton, {}, world.cell(2));
    QMouseEvent move(QEvent::MouseMove, world.cell(4), cells->mapToGlobal(world.cell(4)), Qt::NoButton,
                     Qt::LeftButton, {});
    QCoreApplication::sendEvent(cells, &move);
    QTest::mouseRelease(cells, Qt::LeftButton, {}, world.cell(4));
    QCOMPARE(world.blueRows(), (QList<int>{2, 3, 4}));
}

void TestRbmainRows::arrowKeyBehindABlockChoosesOneRowAgain() {
    ListWorld world;
    addDives(5);
    world.show();
    world.click(2);
    world.click(4, Qt::ShiftModifier);
    world.key(Qt::Key_Down);
    QCOMPARE(world.blueRows().size(), 1);
    QCOMPARE(world.blueRows().constFirst(), world.grid().row());
}

void TestRbmainRows::redOfAFaultyRowComesBackWithAFreshFill() {
    ListWorld world;
    addDives(3);
    ListWorld::addGas(diveNumber(2), QStringLiteral("7900"));
    world.show();
    QVERIFY(world.isRow(2, platform::kToldRed));
    world.click(2);
    QCOMPARE(world.blueRows(), QList<int>{2});
    world.click(3);
    QVERIFY(!world.grid().backColour(2, 0).isValid());
    QVERIFY(!world.grid().cells().sign(2).icon.isNull());
    world.list.get().filldivelist();
    QVERIFY(world.isRow(2, platform::kToldRed));
}

void TestRbmainRows::keysStopAtTheEnds() {
    ListWorld world;
    addDives(2);
    world.show();
    for (int i = 0; i < 3; ++i) {
        world.key(Qt::Key_Down, Qt::ShiftModifier);
    }
    QCOMPARE(world.blueRows(), (QList<int>{1, 2}));
    for (int i = 0; i < 3; ++i) {
        world.key(Qt::Key_Up, Qt::ControlModifier);
    }
    QCOMPARE(world.grid().row(), 1);
    QVERIFY(!world.grid().backColour(0, 0).isValid());
}

void TestRbmainRows::plainKeyLeavesExactlyOneBlueRow_data() {
    QTest::addColumn<int>("clicked");
    QTest::addColumn<Qt::Key>("stretch");
    QTest::addColumn<Qt::Key>("plain");
    QTest::addColumn<int>("left");
    QTest::newRow("Home on the first") << 1 << Qt::Key_End << Qt::Key_Home << 1;
    QTest::newRow("Up on the first") << 1 << Qt::Key_End << Qt::Key_Up << 1;
    QTest::newRow("Page Up on the first") << 1 << Qt::Key_End << Qt::Key_PageUp << 1;
    QTest::newRow("End on the last") << 8 << Qt::Key_Home << Qt::Key_End << 8;
    QTest::newRow("Down on the last") << 8 << Qt::Key_Home << Qt::Key_Down << 8;
    QTest::newRow("Page Down on the last") << 8 << Qt::Key_Home << Qt::Key_PageDown << 8;
    QTest::newRow("Left") << 3 << Qt::Key_Down << Qt::Key_Left << 3;
    QTest::newRow("Right") << 3 << Qt::Key_Down << Qt::Key_Right << 3;
    QTest::newRow("Down in the middle") << 3 << Qt::Key_Up << Qt::Key_Down << 4;
}

void TestRbmainRows::plainKeyLeavesExactlyOneBlueRow() {
    QFETCH(int, clicked);
    QFETCH(Qt::Key, stretch);
    QFETCH(Qt::Key, plain);
    QFETCH(int, left);
    ListWorld world;
    addDives(8);
    world.show();
    world.click(clicked);
    world.key(stretch, Qt::ShiftModifier);
    QVERIFY(world.blueRows().size() > 1);
    world.key(plain);
    QCOMPARE(world.blueRows(), QList<int>{left});
    QCOMPARE(world.labelText("txtdiveid"), diveNumber(left));
    // The same where no row was blue.
    world.click(left, Qt::ControlModifier);
    QCOMPARE(world.blueRows(), QList<int>());
    world.key(Qt::Key_Left);
    QCOMPARE(world.blueRows(), QList<int>{left});
}

void TestRbmainRows::otherKeysLeaveTheBlueRows() {
    ListWorld world;
    addDives(4);
    world.show();
    world.click(1);
    world.click(3, Qt::ControlModifier);
    for (const Qt::Key key : {Qt::Key_Shift, Qt::Key_Control, Qt::Key_A, Qt::Key_Escape}) {
        world.key(key);
        QCOMPARE(world.blueRows(), (QList<int>{1, 3}));
    }
}

void TestRbmainRows::stripShowsTheBlueRowClickedLast() {
    ListWorld world;
    addDives(5);
    world.show();
    world.click(2);
    world.click(4, Qt::ShiftModifier);
    QCOMPARE(world.blueRows(), (QList<int>{2, 3, 4}));
    QCOMPARE(world.labelText("txtdiveid"), diveNumber(4));
}

void TestRbmainRows::stripGoesBackToTheBlueRowClickedBefore() {
    ListWorld world;
    addDives(5);
    world.show();
    world.click(1);
    world.click(2, Qt::ControlModifier);
    world.click(4, Qt::ControlModifier);
    world.click(4, Qt::ControlModifier); // no longer blue
    QCOMPARE(world.blueRows(), (QList<int>{1, 2}));
    QCOMPARE(world.labelText("txtdiveid"), diveNumber(2));
    QCOMPARE(world.labelText("txtlocation"), QStringLiteral("Dive02.txt"));
}

void TestRbmainRows::stripShowsTheFirstBlueRowWhenNoneWasClicked() {
    ListWorld world;
    addDives(5);
    world.show();
    world.click(5);
    world.key(Qt::Key_Home);
    world.key(Qt::Key_Down);
    world.key(Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(world.blueRows(), (QList<int>{2, 3}));
    QCOMPARE(world.labelText("txtdiveid"), diveNumber(2));
}

void TestRbmainRows::stripShowsTheCurrentRowWhenNoneIsBlue() {
    ListWorld world;
    addDives(3);
    world.show();
    world.click(2);
    world.click(2, Qt::ControlModifier);
    QCOMPARE(world.blueRows(), QList<int>());
    QCOMPARE(world.labelText("txtdiveid"), diveNumber(2));
}

void TestRbmainRows::controlAChoosesAll() {
    ListWorld world;
    addDives(4);
    world.show();
    world.click(2);
    world.key(Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(world.blueRows(), (QList<int>{1, 2, 3, 4}));
    QCOMPARE(world.labelText("txtdiveid"), diveNumber(2));
    world.key(Qt::Key_Down); // a plain key leaves one
    QCOMPARE(world.blueRows(), QList<int>{3});
}

void TestRbmainRows::aSecondClickOnAHeadingTurnsItsOrderRound() {
    ListWorld world;
    addDives(3);
    ListWorld::addDive(diveNumber(4), {{QStringLiteral("site"), QStringLiteral("A reef")}});
    world.show();
    const QStringList upward{diveNumber(1), diveNumber(2), diveNumber(3), diveNumber(4)};
    emit world.grid().headerClicked(5);
    QCOMPARE(world.column(0).first(), diveNumber(4));
    QVERIFY(world.grid().sortAscending());
    emit world.grid().headerClicked(5);
    QCOMPARE(world.column(0).last(), diveNumber(4));
    QCOMPARE(world.grid().sortColumn(), 5);
    QVERIFY(!world.grid().sortAscending());
    emit world.grid().headerClicked(0);
    QCOMPARE(world.column(0), upward);
    QVERIFY(world.grid().sortAscending());
    emit world.grid().headerClicked(0);
    QCOMPARE(world.column(0), QStringList(upward.rbegin(), upward.rend()));
    QCOMPARE(world.blueRows(), QList<int>{1});
}

void TestRbmainRows::theDirectionOutlivesTheListAndTheKeyStaysOneLetter() {
    ListWorld world;
    addDives(2);
    ListWorld::addDive(diveNumber(3), {{QStringLiteral("MaxDepth"), QStringLiteral("90.000")}});
    world.show();
    emit world.grid().headerClicked(2);
    emit world.grid().headerClicked(2);
    QCOMPARE(world.column(0).first(), diveNumber(3));
    world.list.unload();
    QCOMPARE(world.bytesOf(u"", "dsort.txt"), "m\r\n");
    QCOMPARE(world.column(0).first(), diveNumber(3));
    world.trigger("mnusdate");
    world.list.unload();
    QVERIFY(world.grid().sortAscending());
}

void TestRbmainRows::theMenuOrdersUpward() {
    ListWorld world;
    addDives(3);
    world.show();
    emit world.grid().headerClicked(0);
    emit world.grid().headerClicked(0);
    world.trigger("mnusdiveid");
    QCOMPARE(world.column(0).first(), diveNumber(1));
    QVERIFY(world.control<QAction>("mnusdiveid")->isChecked());
}

void TestRbmainRows::choosingADiveDoesWhatAClickDoes() {
    ListWorld world;
    addDives(80);
    world.show();
    world.list.get().chooseDive(diveNumber(70));
    QCOMPARE(world.blueRows(), QList<int>{70});
    QCOMPARE(world.grid().row(), 70);
    QCOMPARE(world.labelText("txtdiveid"), diveNumber(70));
    QVERIFY(world.grid().viewport()->rect().contains(world.cell(70)));
    world.list.get().chooseDive(diveNumber(99)); // not there
    QCOMPARE(world.blueRows(), QList<int>{70});
}

void TestRbmainRows::scrollingToTheNewestLeavesTheChoice() {
    ListWorld world;
    addDives(80);
    ListWorld::addDive(diveNumber(81),
                       {{QStringLiteral("startdate"), QStringLiteral("2019-01-01 00:00:00")}});
    ListWorld::addDive(diveNumber(82),
                       {{QStringLiteral("startdate"), QStringLiteral("2018-01-01 00:00:00")}});
    world.show();
    world.trigger("mnusdiveid");
    world.list.get().scrollToNewest({diveNumber(81), diveNumber(82)});
    QVERIFY(world.grid().viewport()->rect().contains(world.cell(81)));
    QCOMPARE(world.blueRows(), QList<int>{1});
    world.list.get().scrollToNewest({diveNumber(5)});
    QVERIFY(world.grid().viewport()->rect().contains(world.cell(5)));
}

void TestRbmainRows::anotherUnitReachesTheListAndLeavesTheChoice() {
    ListWorld world;
    addDives(4);
    world.show();
    world.click(2);
    world.click(3, Qt::ControlModifier);
    QCOMPARE(world.grid().text(3, 2), "22m");
    process().depthunit = QStringLiteral("Feet");
    world.list.get().takeUnit();
    QCOMPARE(world.column(2), QStringList(4, "73ft"));
    QCOMPARE(world.blueRows(), (QList<int>{2, 3}));
    QCOMPARE(world.labelText("txtmaxdepth"), "73ft");
}

QTEST_MAIN(TestRbmainRows)
#include "test_rbmain_rows.moc"
