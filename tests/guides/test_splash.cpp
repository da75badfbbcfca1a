#include "guides/screens/frmsplash.h"
#include "platform/look/look.h"
#include "platform/screen/ticktimer.h"
#include "tests/guides/guidestage.h"

#include <QPushButton>
#include <QtTest>

using namespace benthor;
using namespace benthor::guides;
using namespace benthor::tests;

namespace {

template <class S> using Stage = GuideStage<S>;

QString restoreQuestion() {
    return QStringLiteral(
        "Fix Database?\nRestore backup database file to fix database corruption. Note, most recent "
        "planned dives willbe lost! Backup2.mdb is most recent backup file");
}

} // namespace

class TestSplash : public QObject {
    Q_OBJECT

private slots:
    void fixDatabaseAsksAndRestores();
    void aRefusedQuestionChangesNothing();
    void aCancelledFileChangesNothing();
    void aFileThatIsNoStoreIsNamedAndNotTaken();
    void aFileOfAnotherEndingIsNotTaken();
    void theTimerStandsWhileTheQuestionIsUpAndRunsOn();
    void aRepairIsToldBeforeItAsks();
    void aSecondCopyRestoresNothing();
    void returnGoesOnAndDoesNotRepair();
};

void TestSplash::fixDatabaseAsksAndRestores() {
    Stage<frmSplash> stage(true);
    store::createStore(stage.folder.path("backup3.mdb"), QStringLiteral("Close"));
    const QByteArray before = platform::readFile(stage.folder.path("rb.mdb")).value();
    stage.dialogs.answer(true);
    stage.dialogs.answerFile(stage.folder.path("backup3.mdb"));
    stage.screen->showScreen();
    QCOMPARE(stage.control<QPushButton>("Command1")->text(), "FIX DATABASE");
    stage.click("Command1");
    QCOMPARE(stage.dialogs.asked().size(), 3);
    const QString word = stage.dialogs.asked().at(2).text;
    QVERIFY2(word.contains(stage.folder.path("backup3.mdb")) &&
                 word.contains(stage.folder.path("rb-replaced.mdb")),
             qPrintable(word));
    QCOMPARE(stage.dialogs.asked().at(0).text, restoreQuestion());
    QCOMPARE(stage.dialogs.asked().at(0).title, "Restore backup database");
    QCOMPARE(stage.dialogs.asked().at(1).kind, "open");
    QCOMPARE(stage.dialogs.asked().at(1).filter, "*.mdb | *.mdb");
    QVERIFY(platform::sameContents(stage.folder.path("rb.mdb"), stage.folder.path("backup3.mdb")));
    QCOMPARE(platform::readFile(stage.folder.path("rb-replaced.mdb")).value(), before);
    QVERIFY(!stage.control<QPushButton>("Command1")->isEnabled());
    QVERIFY(stage.control<platform::TickTimer>("Timer1")->isEnabled());
}

void TestSplash::aRefusedQuestionChangesNothing() {
    Stage<frmSplash> stage(true);
    stage.dialogs.answer(false);
    stage.screen->showScreen();
    stage.click("Command1");
    QCOMPARE(stage.dialogs.asked().size(), 1);
    QVERIFY(!stage.folder.has("rb-replaced.mdb"));
    QVERIFY(stage.control<QPushButton>("Command1")->isEnabled());
    QVERIFY(stage.control<platform::TickTimer>("Timer1")->isEnabled());
}

void TestSplash::aCancelledFileChangesNothing() {
    Stage<frmSplash> stage(true);
    stage.dialogs.answer(true);
    stage.screen->showScreen();
    stage.click("Command1");
    QCOMPARE(stage.dialogs.messages(), QStringList());
    QVERIFY(!stage.folder.has("rb-replaced.mdb"));
    QVERIFY(stage.control<QPushButton>("Command1")->isEnabled());
    QVERIFY(stage.control<platform::TickTimer>("Timer1")->isEnabled());
}

void TestSplash::aFileThatIsNoStoreIsNamedAndNotTaken() {
    Stage<frmSplash> stage(true);
    const QByteArray before = platform::readFile(stage.folder.path("rb.mdb")).value();
    QVERIFY(platform::writeFileWhole(stage.folder.path("letter.mdb"), "dear diver"));
    stage.dialogs.answer(true);
    stage.dialogs.answerFile(stage.folder.path("letter.mdb"));
    stage.screen->showScreen();
    stage.click("Command1");
    QCOMPARE(stage.dialogs.messages().size(), 1);
    QVERIFY(stage.dialogs.messages().first().contains(stage.folder.path("letter.mdb")));
    QCOMPARE(platform::readFile(stage.folder.path("rb.mdb")).value(), before);
    QVERIFY(stage.control<QPushButton>("Command1")->isEnabled());
}

void TestSplash::aFileOfAnotherEndingIsNotTaken() {
    Stage<frmSplash> stage(true);
    store::createStore(stage.folder.path("backup.old"));
    stage.dialogs.answer(true);
    stage.dialogs.answerFile(stage.folder.path("backup.old"));
    stage.screen->showScreen();
    stage.click("Command1");
    QCOMPARE(stage.dialogs.messages(), QStringList());
    QVERIFY(!stage.folder.has("rb-replaced.mdb"));
    QVERIFY(stage.control<QPushButton>("Command1")->isEnabled());
}

void TestSplash::theTimerStandsWhileTheQuestionIsUpAndRunsOn() {
    Stage<frmSplash> stage(true);
    QSignalSpy handedOver(stage.screen.data(), &frmSplash::handedOver);
    stage.screen->showScreen();
    bool stood = false;
    stage.dialogs.during([&] { stood = !stage.control<platform::TickTimer>("Timer1")->isEnabled(); });
    stage.click("Command1");
    QVERIFY(stood);
    QCOMPARE(handedOver.count(), 0);
    QTRY_COMPARE_WITH_TIMEOUT(handedOver.count(), 1, 5000);
}

/// Whoever works on the store has let go of it by the time at which a file can be chosen.
void TestSplash::aRepairIsToldBeforeItAsks() {
    Stage<frmSplash> stage(true);
    QSignalSpy begins(stage.screen.data(), &frmSplash::repairBegins);
    int toldBefore = 0;
    stage.dialogs.during([&] { toldBefore = static_cast<int>(begins.count()); });
    stage.dialogs.answer(false);
    stage.screen->showScreen();
    QCOMPARE(begins.count(), 0);
    stage.click("Command1");
    QCOMPARE(toldBefore, 1);
    QCOMPARE(begins.count(), 1);
}

void TestSplash::aSecondCopyRestoresNothing() {
    Stage<frmSplash> stage(false);
    stage.screen->showScreen();
    stage.click("Command1");
    QCOMPARE(stage.dialogs.messages().size(), 1);
    QVERIFY(stage.dialogs.messages().first().contains(QLatin1String("Another copy")));
    QVERIFY(stage.control<platform::TickTimer>("Timer1")->isEnabled());
}

void TestSplash::returnGoesOnAndDoesNotRepair() {
    Stage<frmSplash> stage(true);
    QSignalSpy handedOver(stage.screen.data(), &frmSplash::handedOver);
    stage.screen->showScreen();
    QVERIFY(!stage.control<QPushButton>("Command1")->hasFocus());
    QTest::keyClick(stage.screen->focusWidget(), Qt::Key_Return);
    QCOMPARE(handedOver.count(), 1);
    QCOMPARE(stage.dialogs.asked().size(), 0);
}

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    look::apply(application);
    TestSplash test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_splash.moc"
