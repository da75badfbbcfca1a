#include "firmware/screens/processdelegate.h"
#include "platform/look/look.h"
#include "tests/firmware/runprogstage.h"

#include <QProcess>
#include <QScrollBar>

#include <csignal>

using namespace benthor;
using namespace benthor::firmware;
using namespace benthor::tests;
using platform::Ending;
using platform::RunningProcess;

namespace {

QString refusal() {
    return QStringLiteral("You can't Kill This Process, Maybe because it's important for System");
}

} // namespace

class TestRunProg : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { look::apply(*qApp); }

    void eachProcessHasALineWithItsIdBesideIt() {
        RunProgStage stage;
        stage.screen->showScreen();
        QCOMPARE(stage.screen->windowTitle(), "Running Programs");
        QCOMPARE(stage.names(), QStringList({"editor", "Editor", "zip"}));
        QCOMPARE(stage.ids(), QList<int>({9, 12, 7}));
        QCOMPARE(stage.count(), "3 programs");
        QCOMPARE(stage.chosen(), 0);
    }

    void theNameListIsEmptiedAtOpeningAndGrowsWithEachReading() {
        RunProgStage stage;
        process().processnames = QStringLiteral("of another time");
        stage.screen->showScreen();
        QCOMPARE(process().processnames, "editor\nEditor\nzip\n");
        stage.running.resize(1);
        stage.screen->FillList();
        QCOMPARE(process().processnames, "editor\nEditor\nzip\nzip\n");
    }

    void theListIsReadAgainByItsButtonOnly() {
        RunProgStage stage;
        stage.screen->showScreen();
        stage.running.push_back({50, 500, "newer"});
        QCOMPARE(stage.list()->count(), 3);
        stage.click("Command1");
        QCOMPARE(stage.names(), QStringList({"editor", "Editor", "newer", "zip"}));
        QCOMPARE(stage.count(), "4 programs");
    }

    void aClickOnARowLetsItBeClosed() {
        RunProgStage stage;
        stage.screen->showScreen();
        QVERIFY(!stage.canClose());
        stage.clickRow(1);
        QVERIFY(stage.canClose());
        QCOMPARE(stage.chosen(), 12);
    }

    void theKeysChooseARowToo() {
        RunProgStage stage;
        stage.screen->showScreen();
        stage.list()->setFocus();
        QVERIFY(!stage.canClose());
        QTest::keyClick(stage.list(), Qt::Key_Return);
        QVERIFY(stage.canClose());
        QCOMPARE(stage.chosen(), 9);
        QTest::keyClick(stage.list(), Qt::Key_Down);
        QCOMPARE(stage.chosen(), 12);
        QVERIFY(stage.canClose());
    }

    void anArrowChoosesTheRowInHandWhereNoneIsChosen() {
        RunProgStage stage;
        stage.screen->showScreen();
        QTest::keyClick(stage.list(), Qt::Key_Down);
        QCOMPARE(stage.chosen(), 9);
        stage.clickRow(1);
        stage.click("Command2");
        QCOMPARE(stage.chosen(), 0);
        QTest::keyClick(stage.list(), Qt::Key_Down);
        QCOMPARE(stage.chosen(), 7); // it has taken the place of the one that was closed
        QVERIFY(stage.canClose());
    }

    void theChosenProcessIsEndedWithoutAQuestion() {
        RunProgStage stage;
        stage.screen->showScreen();
        stage.clickRow(1);
        stage.click("Command2");
        QVERIFY(stage.dialogs.asked().isEmpty());
        QCOMPARE(stage.asked.size(), std::size_t(1));
        QCOMPARE(stage.asked.front().id, 12);
        QCOMPARE(stage.asked.front().began, quint64(120)); // not whoever has the id by then
        QCOMPARE(stage.names(), QStringList({"editor", "zip"}));
        QVERIFY(!stage.canClose());
        QCOMPARE(stage.chosen(), 0);
    }

    void whatCannotBeEndedIsTold_data() {
        QTest::addColumn<Ending>("answer");
        QTest::newRow("refused") << Ending::Refused;
        QTest::newRow("gone") << Ending::Gone;
    }

    void whatCannotBeEndedIsTold() {
        QFETCH(Ending, answer);
        RunProgStage stage;
        stage.screen->showScreen();
        stage.answer = answer;
        stage.clickRow(0);
        stage.running.erase(stage.running.begin()); // one more proof that the list is read anew
        stage.click("Command2");
        QCOMPARE(stage.dialogs.messages(), QStringList(refusal()));
        QCOMPARE(stage.names(), QStringList({"editor", "Editor"}));
        QVERIFY(!stage.canClose());
    }

    void behindAnAttemptTheSameRowIsChosenByClickOrKey() {
        RunProgStage stage;
        stage.screen->showScreen();
        stage.answer = Ending::Refused;
        stage.clickRow(2);
        stage.click("Command2");
        QCOMPARE(stage.chosen(), 7);
        QVERIFY(!stage.canClose());
        stage.clickRow(2);
        QVERIFY(stage.canClose());
        stage.click("Command2");
        QVERIFY(!stage.canClose());
        QTest::keyClick(stage.list(), Qt::Key_Space);
        QVERIFY(stage.canClose());
    }

    void eventsThatWaitRunBeforeTheListIsReadAnew() {
        RunProgStage stage;
        stage.screen->showScreen();
        stage.clickRow(0);
        QMetaObject::invokeMethod(
            stage.screen,
            [&stage] {
                stage.running.push_back({99, 990, "late"});
            },
            Qt::QueuedConnection);
        stage.click("Command2");
        QVERIFY(stage.names().contains(QStringLiteral("late")));
    }

    void aScreenClosedUnderTheMessageReadsNothingMore() {
        RunProgStage stage;
        stage.screen->showScreen();
        stage.answer = Ending::Gone;
        stage.clickRow(0);
        process().processnames.clear();
        stage.dialogs.during([&stage] { stage.screen->unload(); });
        stage.click("Command2");
        QCOMPARE(process().processnames, "");
        QTRY_VERIFY(stage.screen.isNull());
    }

    void choiceAndPlaceOutliveARefresh() {
        RunProgStage stage;
        stage.runMany();
        stage.screen->showScreen();
        stage.clickRow(105);
        stage.list()->verticalScrollBar()->setValue(100);
        QCOMPARE(stage.topmost(), 201);
        stage.running.erase(stage.running.begin(), stage.running.begin() + 20);
        stage.click("Command1");
        QCOMPARE(stage.topmost(), 201);
        QCOMPARE(stage.chosen(), 206);
        QVERIFY(stage.canClose());
    }

    void whereTheTopmostIsGoneTheNextTakesItsPlace() {
        RunProgStage stage;
        stage.runMany();
        stage.screen->showScreen();
        stage.list()->verticalScrollBar()->setValue(100);
        stage.running.erase(stage.running.begin() + 90, stage.running.begin() + 102);
        stage.click("Command1");
        QCOMPARE(stage.topmost(), 203);
    }

    void anIdThatIsAnothersByNowIsNotChosenAnyMore() {
        RunProgStage stage;
        stage.screen->showScreen();
        stage.clickRow(1);
        stage.running[1].began += 1;
        stage.click("Command1");
        QCOMPARE(stage.chosen(), 0);
        QVERIFY(!stage.canClose());
    }

    void theFilterHidesRowsOnly() {
        RunProgStage stage;
        stage.screen->showScreen();
        QTest::keyClicks(stage.filter(), QStringLiteral("EDI"));
        QCOMPARE(stage.list()->count(), 3);
        QCOMPARE(stage.count(), "2 of 3 programs");
        QVERIFY(stage.list()->item(2)->isHidden());
        QVERIFY(!stage.list()->item(0)->isHidden());
        stage.click("Command1");
        QCOMPARE(stage.count(), "2 of 3 programs");
        stage.filter()->clear();
        QCOMPARE(stage.count(), "3 programs");
        QVERIFY(!stage.list()->item(2)->isHidden());
    }

    void aRowThatIsHiddenIsNotTheRowInHand() {
        RunProgStage stage;
        stage.screen->showScreen(); // editor, Editor, zip: the first one is in hand
        stage.filter()->setText(QStringLiteral("zip"));
        QCOMPARE(stage.list()->currentRow(), 2);
        QCOMPARE(stage.chosen(), 0);
        QTest::keyClick(stage.list(), Qt::Key_Return);
        QCOMPARE(stage.chosen(), 7);
        stage.filter()->setText(QStringLiteral("edi")); // none behind it: the one before
        QCOMPARE(stage.list()->currentRow(), 1);
        QCOMPARE(stage.chosen(), 0);
        QTest::keyClick(stage.list(), Qt::Key_Down);
        QCOMPARE(stage.chosen(), 12);
        stage.filter()->setText(QStringLiteral("no such program"));
        QCOMPARE(stage.list()->currentRow(), -1);
        stage.filter()->clear();
        QCOMPARE(stage.list()->currentRow(), 0);
        QTest::keyClick(stage.list(), Qt::Key_Return);
        QVERIFY(stage.canClose());
    }

    void aRowThatIsHiddenCannotBeClosed() {
        RunProgStage stage;
        stage.screen->showScreen();
        stage.clickRow(2);
        stage.filter()->setText(QStringLiteral("edi"));
        QCOMPARE(stage.chosen(), 0);
        QVERIFY(!stage.canClose());
        QTest::keyClick(stage.list(), Qt::Key_Return); // takes one that can be seen
        QCOMPARE(stage.chosen(), 12);
        QVERIFY(!stage.list()->currentItem()->isHidden());
    }

    void thisProgramsRowIsMarked() {
        RunProgStage stage;
        stage.running.push_back({static_cast<int>(QCoreApplication::applicationPid()), 1, "benthor"});
        stage.screen->showScreen();
        for (int row = 0; row < stage.list()->count(); ++row) {
            const QListWidgetItem* item = stage.list()->item(row);
            QCOMPARE(item->data(ProcessDelegate::ownRole).toBool(), item->text() == QLatin1String("benthor"));
        }
    }

    void escapeClosesIt() {
        RunProgStage stage;
        stage.screen->showScreen();
        QVERIFY(QTest::qWaitForWindowActive(stage.screen));
        QTest::keyClick(stage.screen, Qt::Key_Escape);
        QTRY_VERIFY(stage.screen.isNull());
    }

    void everythingFitsTheSmallestWindow() {
        RunProgStage stage;
        stage.runMany();
        stage.screen->showScreen();
        stage.screen->resize(420, 360);
        QVERIFY(QTest::qWaitForWindowExposed(stage.screen));
        QCOMPARE(stage.screen->size(), QSize(420, 360));
        for (const char* name : {"List1", "Command1", "Command2", "filter", "count"}) {
            auto* control = stage.control<QWidget>(name);
            const QRect place(control->mapTo(stage.screen, QPoint()), control->size());
            QVERIFY2(stage.screen->rect().contains(place), name);
            QVERIFY2(control->width() >= control->minimumSizeHint().width(), name);
        }
        QVERIFY(stage.list()->viewport()->height() >=
                3 * stage.list()->visualItemRect(stage.list()->item(0)).height());
    }

    void aRealProcessIsListedAndEnded() {
        const TestSettings settings;
        const TestFolder folder(TestFolder::Store::Missing);
        ScriptedDialogs dialogs;
        QProcess child;
        child.start(QStringLiteral("sleep"), {QStringLiteral("1000")});
        QVERIFY(child.waitForStarted());
        const auto id = static_cast<int>(child.processId());
        RunProg screen;
        screen.showScreen();
        auto* list = screen.findChild<QListWidget*>(QStringLiteral("List1"));
        QListWidgetItem* row = nullptr;
        for (int i = 0; i < list->count(); ++i) {
            row = list->item(i)->data(Qt::UserRole).toInt() == id ? list->item(i) : row;
        }
        QVERIFY(row != nullptr);
        QCOMPARE(row->text(), "sleep");
        list->setCurrentItem(row);
        QTest::mouseClick(screen.findChild<QPushButton*>(QStringLiteral("Command2")), Qt::LeftButton);
        QTRY_COMPARE(child.state(), QProcess::NotRunning);
        QCOMPARE(child.exitStatus(), QProcess::CrashExit);
        QCOMPARE(child.exitCode(), SIGTERM);
        QVERIFY(dialogs.asked().isEmpty());
    }
};

QTEST_MAIN(TestRunProg)
#include "test_runprog.moc"
