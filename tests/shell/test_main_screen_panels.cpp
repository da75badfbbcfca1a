// What the main screen adds around its entries: the tips panel, another store for the list, the leftovers.

#include "platform/look/widgets/clickablelabel.h"
#include "tests/shell/mainstage.h"

#include <QLabel>
#include <QPushButton>

using benthor::process;
using namespace benthor::tests;

namespace {

/// The tip that the panel shows: its only text that begins so.
QString tipInPanel(MainStage& stage) {
    for (QLabel* label : stage.control("Frame4")->findChildren<QLabel*>()) {
        if (label->text().startsWith(QLatin1String("Tip "))) {
            return label->text();
        }
    }
    return {};
}

} // namespace

class TestMainScreenPanels : public QObject {
    Q_OBJECT

private slots:
    void theTipsPanelOpensStepsAndCloses();
    void theTipsPanelFollowsTheTipInHand();
    void theTipsSignStaysAndStepsOnWhereTheTipsAreOpen();
    void anotherStoreIsOpenedForTheList();
    void aCancelledStoreChangesNothing();
    void aStoreThatCannotBeShownIsNamed();
    void theHiddenCompactionClosesTheQueriesAndEnds();
    void aJournalThatWasLeftDoesNotGetIntoTheBackup();
};

void TestMainScreenPanels::theTipsPanelOpensStepsAndCloses() {
    MainStage stage;
    stage.main->showScreen();
    QVERIFY(!stage.control("Frame4")->isVisible());
    stage.click("Label10(0)");
    QVERIFY(stage.control("Frame4")->isVisible());
    QCOMPARE(tipInPanel(stage), "Tip 1:   \nthe text");
    stage.click("cmdNextTip");
    QCOMPARE(tipInPanel(stage), "Tip 2:   \nthe text");
    stage.click("Label10(1)");
    QCOMPARE(tipInPanel(stage), "Tip 3:   \nthe text");
    emit stage.control<benthor::look::ClickableLabel>("Image4")->clicked();
    QCOMPARE(tipInPanel(stage), "Tip 4:   \nthe text");
    QCOMPARE(stage.control<QPushButton>("cmdNextTip")->text(), "&Next Tip");
    stage.main->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(stage.main));
    stage.control("cmdNextTip")->setFocus();
    QTest::keyClick(stage.control("cmdNextTip"), Qt::Key_Escape);
    QTRY_VERIFY(!stage.control("Frame4")->isVisible());
    stage.click("Label6");
    QVERIFY(stage.control("Frame4")->isVisible());
}

void TestMainScreenPanels::theTipsPanelFollowsTheTipInHand() {
    MainStage stage;
    stage.main->showScreen();
    stage.click("Label10(0)");
    stage.neighbours.tip = 9;
    stage.main->showTip();
    QCOMPARE(tipInPanel(stage), "Tip 9:   \nthe text");
}

void TestMainScreenPanels::theTipsSignStaysAndStepsOnWhereTheTipsAreOpen() {
    MainStage stage;
    stage.main->showScreen();
    stage.click("Label6");
    QCOMPARE(tipInPanel(stage), "Tip 1:   \nthe text");
    QVERIFY(stage.control("Label6")->isVisible());
    QVERIFY(!stage.control("Label10(0)")->isVisible());
    stage.click("Label6");
    QCOMPARE(tipInPanel(stage), "Tip 2:   \nthe text");
}

void TestMainScreenPanels::anotherStoreIsOpenedForTheList() {
    MainStage stage;
    stage.main->showScreen();
    stage.neighbours.asked.clear();
    stage.dialogs.answerFile(QStringLiteral("/media/stick/rb.mdb"));
    stage.action("mnuOpen")->trigger();
    QCOMPARE(stage.dialogs.asked().size(), 1);
    QCOMPARE(stage.dialogs.asked().first().title, "Open");
    QCOMPARE(stage.dialogs.asked().first().folder, "/");
    QCOMPARE(stage.dialogs.asked().first().filter, "mdb (*.mdb)|*.mdb|All Files (*.*)|*.*");
    QCOMPARE(process().storepath, "/media/stick/rb.mdb");
    QCOMPARE(stage.neighbours.asked, QStringList{"reopenDiveList"});
    QCOMPARE(process().database.path(), stage.folder.path("rb.mdb"));
}

void TestMainScreenPanels::aCancelledStoreChangesNothing() {
    MainStage stage;
    stage.main->showScreen();
    stage.neighbours.asked.clear();
    stage.action("mnuOpen")->trigger();
    QCOMPARE(process().storepath, "");
    QCOMPARE(stage.neighbours.asked, QStringList());
}

void TestMainScreenPanels::aStoreThatCannotBeShownIsNamed() {
    MainStage stage;
    stage.main->showScreen();
    stage.neighbours.listFault = QStringLiteral("it is a letter");
    stage.dialogs.answerFile(QStringLiteral("/media/stick/letter.mdb"));
    stage.action("mnuOpen")->trigger();
    QCOMPARE(stage.dialogs.messages().size(), 1);
    QVERIFY(stage.dialogs.messages().first().contains(QLatin1String("/media/stick/letter.mdb")));
    QVERIFY(stage.dialogs.messages().first().contains(QLatin1String("it is a letter")));
}

void TestMainScreenPanels::theHiddenCompactionClosesTheQueriesAndEnds() {
    MainStage stage;
    stage.main->showScreen();
    QVERIFY(!stage.control("Command5")->isVisible());
    process().mainrecordset = process().database.openRecordset("SELECT * FROM Display ");
    process().countrecordset = process().database.openRecordset("SELECT COUNT(*) FROM main ");
    const QByteArray before = benthor::platform::readFile(stage.folder.path("rb.mdb")).value();
    stage.control<QPushButton>("Command5")->click();
    QVERIFY(!process().mainrecordset.isOpen());
    QVERIFY(!process().countrecordset.isOpen());
    QCOMPARE(benthor::platform::readFile(stage.folder.path("rb.mdb")).value(), before);
    QVERIFY(process().database.isOpen());
    QCOMPARE(stage.dialogs.asked().size(), 0);
}

void TestMainScreenPanels::aJournalThatWasLeftDoesNotGetIntoTheBackup() {
    MainStage stage(TestFolder::Store::Missing);
    benthor::store::createStore(stage.folder.path("backup.mdb"));
    QVERIFY(benthor::platform::writeFileWhole(stage.folder.path("rb.mdb-journal"), "of another store"));
    stage.dialogs.answer(true);
    stage.main->showScreen();
    QVERIFY(!stage.folder.has("rb.mdb-journal"));
    QVERIFY(process().database.isOpen());
}

QTEST_MAIN(TestMainScreenPanels)
#include "test_main_screen_panels.moc"
