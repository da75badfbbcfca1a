#include "platform/look/widgets/faultframe.h"
#include "tests/logbook/listworld.h"

#include <QAction>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>

using namespace benthor;
using namespace benthor::tests;
using logbook::rbmain;

class TestRbmainActions : public QObject {
    Q_OBJECT

private slots:
    void goodDiveOpens_data();
    void goodDiveOpens();
    void openReadsTheDiveAndItsSystem();
    void openingWithoutABlueCurrentRowTakesTheClickedOne();
    void faultyMainRowIsRefused();
    void gasFaultOpens();
    void tissueFaultOpens();
    void emptyIdentifierGivesD0000001();
    void diveThatIsGoneIsRefused();
    void deleteWithoutABlueRowAsksToReselect();
    void deleteAsksAndNoKeepsEverything();
    void theQuestionSaysHowManyAndWhichAndReturnIsNo();
    void aBlockThatAKeyEndedIsNotDeleted();
    void yesDeletesTheRowsOfAllBlueDives();
    void deleteRemovesTheWaitingFileAndLeavesTheOthers();
    void deletePutsTheCounterRight();
    void deleteCleansTheStarRows();
    void deleteOfADiveWithoutANameDeletesNoFile();
    void errorEntryShowsTheFaultsOfTheCurrentRow();
    void theFrameNamesItsDiveAndGreysWhenAnotherWasAsked();
    void errorEntryEmptiesTheTextFirst();
    void errorEntryOnAGoodDiveLeavesTheFrameAlone();
    void faultFrameIsClosedByItsButton();
    void escapeClosesTheFaultFrame();
    void rightButtonOpensThePopupOnTheRowUnderIt();
    void rightButtonOnABlueRowKeepsTheOthersBlue();
    void waysOutTellTheHouse();
    void closingUnloads_data();
    void closingUnloads();
};

void TestRbmainActions::goodDiveOpens_data() {
    QTest::addColumn<int>("by");
    QTest::newRow("Return") << 0;
    QTest::newRow("double click") << 1;
    QTest::newRow("cmdgo") << 2;
    QTest::newRow("Picture1") << 3;
    QTest::newRow("mnuOpenDive") << 4;
    QTest::newRow("mnupopprofile") << 5;
}

void TestRbmainActions::goodDiveOpens() {
    QFETCH(int, by);
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    ListWorld::addDive(diveNumber(2));
    world.show();
    QSignalSpy opened(&world.list.get(), &rbmain::diveOpened);
    world.click(2);
    switch (by) {
    case 0:
        world.key(Qt::Key_Return);
        break;
    case 1:
        QTest::mouseDClick(world.grid().viewport(), Qt::LeftButton, {}, world.cell(2));
        break;
    case 2:
        QTest::mouseClick(world.control<QPushButton>("cmdgo"), Qt::LeftButton, {},
                          world.control<QPushButton>("cmdgo")->rect().center() + QPoint(16, 0));
        break;
    case 3:
        QTest::mouseClick(world.control<QWidget>("Picture1"), Qt::LeftButton);
        break;
    case 4:
        world.trigger("mnuOpenDive");
        break;
    default:
        world.trigger("mnupopprofile");
    }
    QCOMPARE(opened.size(), 1);
    QCOMPARE(process().currentdiveid, diveNumber(2));
    QVERIFY(world.dialogs.messages().isEmpty());
}

void TestRbmainActions::openReadsTheDiveAndItsSystem() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1), {{QStringLiteral("systemid"), QStringLiteral("Other")}});
    world.trigger("mnuOpenDive");
    QCOMPARE(process().divesystem, QStringLiteral("Other"));
    QCOMPARE(process().problemtext, QString());
}

void TestRbmainActions::openingWithoutABlueCurrentRowTakesTheClickedOne() {
    ListWorld world;
    for (int number = 1; number <= 3; ++number) {
        ListWorld::addDive(diveNumber(number));
    }
    world.show();
    world.click(2);
    world.click(2, Qt::ControlModifier); // no longer blue
    world.grid().setRow(0);
    world.trigger("mnuOpenDive");
    QCOMPARE(process().currentdiveid, diveNumber(2));
}

void TestRbmainActions::faultyMainRowIsRefused() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1), {{QStringLiteral("Interval"), QStringLiteral("1000")}});
    QSignalSpy opened(&world.list.get(), &rbmain::diveOpened);
    world.trigger("mnuOpenDive");
    QCOMPARE(opened.size(), 0);
    QCOMPARE(world.dialogs.messages(),
             QStringList{QStringLiteral("System cannot open Dive Profile, Dive contains error !")});
    QVERIFY(world.list.isLoaded());
}

void TestRbmainActions::gasFaultOpens() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    process().database.execute("DELETE FROM gas");
    QSignalSpy opened(&world.list.get(), &rbmain::diveOpened);
    world.trigger("mnuOpenDive");
    QCOMPARE(opened.size(), 1);
    QCOMPARE(process().problemtext, QStringLiteral("\rGas Profile not found !"));
}

void TestRbmainActions::tissueFaultOpens() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1), {{QStringLiteral("Interval"), QStringLiteral("1000")}});
    process().database.execute("DELETE FROM tissue");
    QSignalSpy opened(&world.list.get(), &rbmain::diveOpened);
    world.trigger("mnuOpenDive");
    QCOMPARE(opened.size(), 1);
    QVERIFY(process().problemtext.endsWith(QStringLiteral("\rTissue Profile not found !")));
}

void TestRbmainActions::emptyIdentifierGivesD0000001() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    ListWorld::addRow(process().database, "main", {{QStringLiteral("DiveID"), QString::fromLatin1("")}});
    QCOMPARE(world.grid().text(1, 0), QString());
    QSignalSpy opened(&world.list.get(), &rbmain::diveOpened);
    world.trigger("mnuOpenDive");
    QCOMPARE(process().currentdiveid, diveNumber(1));
    QCOMPARE(opened.size(), 1);
}

void TestRbmainActions::diveThatIsGoneIsRefused() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    QSignalSpy opened(&world.list.get(), &rbmain::diveOpened);
    process().database.execute("DELETE FROM main");
    world.trigger("mnuOpenDive");
    QCOMPARE(opened.size(), 0);
    QCOMPARE(world.dialogs.messages().size(), 1);
    QVERIFY(world.dialogs.messages().constFirst().startsWith(
        QStringLiteral("System cannot open Dive Profile, Dive contains error !")));
}

void TestRbmainActions::deleteWithoutABlueRowAsksToReselect() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    world.show();
    world.click(1, Qt::ControlModifier);
    QCOMPARE(world.blueRows(), QList<int>());
    world.trigger("mnuDeleteDive");
    QCOMPARE(world.dialogs.messages(), QStringList{QStringLiteral("Please reselect message to delete.")});
    QCOMPARE(world.dialogs.asked().size(), 1);
    QCOMPARE(ListWorld::count("SELECT COUNT(*) FROM main"), 1);
}

void TestRbmainActions::deleteAsksAndNoKeepsEverything() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    world.put(u"new", QStringLiteral("Dive01.txt"), "waiting");
    QSignalSpy reload(&world.list.get(), &rbmain::reloadWanted);
    world.dialogs.answer(false);
    QTest::mouseClick(world.control<QPushButton>("cmdelete"), Qt::LeftButton);
    QCOMPARE(world.dialogs.asked().size(), 1);
    const auto asked = world.dialogs.asked().constFirst();
    QCOMPARE(asked.kind, QStringLiteral("confirm"));
    QCOMPARE(asked.text, QStringLiteral("Are you sure you want to deleted the selected record(s)?"));
    QCOMPARE(asked.title, QStringLiteral("Comfirmation"));
    QCOMPARE(ListWorld::count("SELECT COUNT(*) FROM main"), 1);
    QVERIFY(world.isThere(u"new", QStringLiteral("Dive01.txt")));
    QCOMPARE(reload.size(), 0);
    QCOMPARE(world.blueRows(), QList<int>{1});
}

void TestRbmainActions::theQuestionSaysHowManyAndWhichAndReturnIsNo() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1),
                       {{QStringLiteral("Location"), QStringLiteral("<b>Wreck</b>\nof 1912")}});
    ListWorld::addDive(diveNumber(2), {{QStringLiteral("Location"), QStringLiteral("(null)")}});
    for (int number = 3; number <= 7; ++number) {
        ListWorld::addDive(diveNumber(number));
    }
    world.show();
    world.click(1);
    world.trigger("mnuDelete");
    world.key(Qt::Key_End, Qt::ShiftModifier);
    world.trigger("mnuDelete");
    QCOMPARE(world.dialogs.asked().size(), 2);
    for (const auto& asked : world.dialogs.asked()) {
        QCOMPARE(asked.text, QStringLiteral("Are you sure you want to deleted the selected record(s)?"));
        QCOMPARE(asked.title, QStringLiteral("Comfirmation"));
        QVERIFY(asked.noIsDefault);
    }
    QCOMPARE(world.dialogs.asked()[0].below, QStringLiteral("1 dive:\n<b>Wreck</b> of 1912"));
    QCOMPARE(world.dialogs.asked()[1].below,
             QStringLiteral("7 dives:\n<b>Wreck</b> of 1912\nD0000002\nDive03.txt\nDive04.txt\nDive05.txt\n"
                            "and 2 more"));
    QCOMPARE(ListWorld::count("SELECT COUNT(*) FROM main"), 7);
}

void TestRbmainActions::aBlockThatAKeyEndedIsNotDeleted() {
    ListWorld world;
    for (int number = 1; number <= 8; ++number) {
        ListWorld::addDive(diveNumber(number));
    }
    world.show();
    world.click(1);
    world.key(Qt::Key_End, Qt::ShiftModifier);
    world.key(Qt::Key_Home);
    world.dialogs.answer(true);
    world.list.get().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&world.list.get()));
    world.key(Qt::Key_Delete);
    QCOMPARE(world.dialogs.asked().size(), 1);
    QCOMPARE(ListWorld::count("SELECT COUNT(*) FROM main"), 7);
}

void TestRbmainActions::yesDeletesTheRowsOfAllBlueDives() {
    ListWorld world;
    for (int number = 1; number <= 4; ++number) {
        ListWorld::addDive(diveNumber(number));
    }
    world.show();
    QSignalSpy reload(&world.list.get(), &rbmain::reloadWanted);
    world.click(1);
    world.click(3, Qt::ControlModifier);
    world.dialogs.answer(true);
    world.trigger("mnuDelete");
    for (const char* table : {"main", "gas", "tissue"}) {
        const platform::Recordset rows = process().database.openRecordset(
            platform::Query(qstrcmp(table, "main") == 0  ? "SELECT diveid FROM main ORDER BY diveid"
                            : qstrcmp(table, "gas") == 0 ? "SELECT diveid FROM gas ORDER BY diveid"
                                                         : "SELECT diveid FROM tissue ORDER BY diveid"));
        QCOMPARE(rows.recordCount(), 2);
        QCOMPARE(rows.value(0).text(), diveNumber(2));
    }
    QCOMPARE(reload.size(), 1);
}

void TestRbmainActions::deleteRemovesTheWaitingFileAndLeavesTheOthers() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    for (const char16_t* where : {u"new", u"old", u"dbtxt"}) {
        world.put(where, QStringLiteral("Dive01.txt"), "dive");
    }
    world.put(u"new", QStringLiteral("Other.txt"), "another");
    world.dialogs.answer(true);
    world.trigger("mnuDeleteDive");
    QVERIFY(!world.isThere(u"new", QStringLiteral("Dive01.txt")));
    QVERIFY(world.isThere(u"new", QStringLiteral("Other.txt")));
    QVERIFY(world.isThere(u"old", QStringLiteral("Dive01.txt")));
    QVERIFY(world.isThere(u"dbtxt", QStringLiteral("Dive01.txt")));
}

void TestRbmainActions::deletePutsTheCounterRight() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    ListWorld::addDive(diveNumber(2));
    world.show();
    world.click(2);
    world.dialogs.answer(true);
    world.trigger("mnuDeleteDive");
    QCOMPARE(process().database.openRecordset("SELECT * FROM SERIALNO").value(u"serial_no").text(),
             diveNumber(1));
}

void TestRbmainActions::deleteCleansTheStarRows() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    ListWorld::addDive(diveNumber(2));
    for (const char* table : {"main", "gas", "tissue"}) {
        ListWorld::addRow(process().database, table, {{QStringLiteral("diveid"), QStringLiteral("*")}});
    }
    world.show();
    QCOMPARE(world.grid().text(2, 0), diveNumber(1)); // "*" stands before "D"
    world.click(2);
    world.dialogs.answer(true);
    world.trigger("mnuDeleteDive");
    QCOMPARE(ListWorld::count("SELECT COUNT(*) FROM main"), 1);
    QCOMPARE(ListWorld::count("SELECT COUNT(*) FROM gas WHERE diveid = '*'"), 0);
    QCOMPARE(ListWorld::count("SELECT COUNT(*) FROM tissue WHERE diveid = '*'"), 0);
}

void TestRbmainActions::deleteOfADiveWithoutANameDeletesNoFile() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1), {{QStringLiteral("Location"), QStringLiteral("(null)")}});
    world.put(u"new", QStringLiteral("Other.txt"), "another");
    world.dialogs.answer(true);
    world.trigger("mnuDeleteDive");
    QVERIFY(world.isThere(u"new", QStringLiteral("Other.txt")));
    QCOMPARE(ListWorld::count("SELECT COUNT(*) FROM main"), 0);
}

void TestRbmainActions::errorEntryShowsTheFaultsOfTheCurrentRow() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    ListWorld::addDive(diveNumber(2), {{QStringLiteral("Version"), QStringLiteral("1")}});
    ListWorld::addDive(diveNumber(3), {{QStringLiteral("Interval"), QStringLiteral("x")}});
    ListWorld::addGas(diveNumber(2), QStringLiteral("7900"));
    world.show();
    world.click(2);
    world.control<QPushButton>("Command1")->click();
    world.trigger("mnuerrorcode");
    QVERIFY(world.control<QWidget>("Frame2")->isVisible());
    QCOMPARE(world.labelText("Label16"), QStringLiteral("\rMain Profile - Error in version format !"
                                                        "\rGas Profile - Error in Gas Type2 format !"));
}

void TestRbmainActions::theFrameNamesItsDiveAndGreysWhenAnotherWasAsked() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    ListWorld::addDive(diveNumber(2), {{QStringLiteral("Version"), QStringLiteral("1")}});
    world.show();
    world.click(2);
    world.trigger("mnuerrorcode");
    auto* frame = world.control<look::FaultFrame>("Frame2");
    QVERIFY(frame->title()->text().startsWith(diveNumber(2)));
    QVERIFY(!frame->isStale());
    world.click(1);
    world.trigger("mnuerrorcode");
    QVERIFY(frame->isVisible() && frame->isStale());
    QVERIFY(frame->title()->text().startsWith(diveNumber(2)));
    QCOMPARE(world.labelText("quietline"), QStringLiteral("No errors found in ") + diveNumber(1));
    world.click(2);
    world.trigger("mnuerrorcode");
    QVERIFY(!frame->isStale());
}

void TestRbmainActions::errorEntryEmptiesTheTextFirst() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1), {{QStringLiteral("Version"), QStringLiteral("1")}});
    for (int round = 0; round < 2; ++round) {
        world.trigger("mnuerrorcode");
        QCOMPARE(world.labelText("Label16"), QStringLiteral("\rMain Profile - Error in version format !"));
    }
}

void TestRbmainActions::errorEntryOnAGoodDiveLeavesTheFrameAlone() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    process().problemtext = QStringLiteral("of another dive");
    world.trigger("mnuerrorcode");
    QVERIFY(world.control<QWidget>("Frame2")->isHidden());
    QCOMPARE(world.labelText("Label16"), QStringLiteral("t"));
    QCOMPARE(process().problemtext, QString());
}

void TestRbmainActions::faultFrameIsClosedByItsButton() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1), {{QStringLiteral("Version"), QStringLiteral("1")}});
    world.show();
    QVERIFY(world.control<QWidget>("Frame2")->isVisible());
    QTest::mouseClick(world.control<QPushButton>("Command1"), Qt::LeftButton);
    QVERIFY(!world.control<QWidget>("Frame2")->isVisible());
}

void TestRbmainActions::escapeClosesTheFaultFrame() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1), {{QStringLiteral("Version"), QStringLiteral("1")}});
    world.show();
    world.list.get().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&world.list.get()));
    world.key(Qt::Key_Escape);
    QVERIFY(!world.control<QWidget>("Frame2")->isVisible());
    QVERIFY(world.list.isLoaded());
}

void TestRbmainActions::rightButtonOpensThePopupOnTheRowUnderIt() {
    ListWorld world;
    for (int number = 1; number <= 3; ++number) {
        ListWorld::addDive(diveNumber(number));
    }
    world.show();
    QTest::mouseClick(world.grid().viewport(), Qt::RightButton, {}, world.cell(3));
    auto* popup = world.control<QMenu>("mnupopup");
    QVERIFY(popup->isVisible());
    popup->close();
    QCOMPARE(world.blueRows(), QList<int>{3});
    QCOMPARE(world.grid().row(), 3);
}

void TestRbmainActions::rightButtonOnABlueRowKeepsTheOthersBlue() {
    ListWorld world;
    for (int number = 1; number <= 3; ++number) {
        ListWorld::addDive(diveNumber(number));
    }
    world.show();
    world.click(1);
    world.click(2, Qt::ShiftModifier);
    QTest::mouseClick(world.grid().viewport(), Qt::RightButton, {}, world.cell(2));
    world.control<QMenu>("mnupopup")->close();
    QCOMPARE(world.blueRows(), (QList<int>{1, 2}));
    QCOMPARE(world.grid().row(), 2);
}

void TestRbmainActions::waysOutTellTheHouse() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    world.show();
    QSignalSpy link(&world.list.get(), &rbmain::linkWanted);
    QSignalSpy main(&world.list.get(), &rbmain::mainWanted);
    QTest::mouseClick(world.control<QWidget>("Label8"), Qt::LeftButton);
    QCOMPARE(link.size(), 1);
    QTest::keyClick(world.control<QWidget>("Label11"), Qt::Key_Return);
    QCOMPARE(main.size(), 1);
    QVERIFY(world.list.isLoaded());
}

void TestRbmainActions::closingUnloads_data() {
    QTest::addColumn<QString>("by");
    for (const char* by : {"cmdclose", "Picture4", "mnuExit"}) {
        QTest::newRow(by) << QString::fromLatin1(by);
    }
}

void TestRbmainActions::closingUnloads() {
    QFETCH(QString, by);
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    world.show();
    if (by == QLatin1String("mnuExit")) {
        world.trigger("mnuExit");
    } else {
        QTest::mouseClick(world.list.get().findChild<QWidget*>(by), Qt::LeftButton);
    }
    QVERIFY(!world.list.isLoaded());
}

QTEST_MAIN(TestRbmainActions)
#include "test_rbmain_actions.moc"
