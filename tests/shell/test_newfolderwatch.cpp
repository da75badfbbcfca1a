#include "shell/newfolderwatch.h"

#include <QtTest>

using namespace benthor::shell;

class TestNewFolderWatch : public QObject {
    Q_OBJECT

private slots:
    void divesWaitWhileTheUserIsAtAConnectedLinkScreen_data();
    void divesWaitWhileTheUserIsAtAConnectedLinkScreen();
    void onlyARiseStartsAnImport_data();
    void onlyARiseStartsAnImport();
    void whatCouldNotStartAnImportIsStillNewAtTheNextTick();
    void theCardCountsInWords();
    void theCardNamesWhatNoImportTakes();
    void aLongNameIsShownWithoutItsMiddle();
};

void TestNewFolderWatch::divesWaitWhileTheUserIsAtAConnectedLinkScreen_data() {
    QTest::addColumn<QString>("caption");
    QTest::addColumn<bool>("onScreen");
    QTest::addColumn<bool>("may");
    QTest::newRow("connected, in front") << "Connected" << true << false;
    QTest::newRow("connected, hidden") << "Connected" << false << true;
    QTest::newRow("searching, in front") << "Searching.." << true << true;
    QTest::newRow("search in any case") << "RESEARCH" << true << true;
    QTest::newRow("not connected, in front") << "Not Connected" << true << false;
}

void TestNewFolderWatch::divesWaitWhileTheUserIsAtAConnectedLinkScreen() {
    QFETCH(QString, caption);
    QFETCH(bool, onScreen);
    QFETCH(bool, may);
    QCOMPARE(mayImport(caption, onScreen), may);
}

void TestNewFolderWatch::onlyARiseStartsAnImport_data() {
    QTest::addColumn<int>("waiting");
    QTest::addColumn<int>("watched");
    QTest::addColumn<bool>("starts");
    QTest::newRow("nothing waits") << 0 << 0 << false;
    QTest::newRow("the first file") << 1 << 0 << true;
    QTest::newRow("one was left behind, none came") << 1 << 1 << false;
    QTest::newRow("one was left behind, one came") << 2 << 1 << true;
    QTest::newRow("three waited, one is left") << 1 << 3 << false;
}

void TestNewFolderWatch::onlyARiseStartsAnImport() {
    QFETCH(int, waiting);
    QFETCH(int, watched);
    QFETCH(bool, starts);
    QCOMPARE(startsImport(waiting, watched), starts);
}

void TestNewFolderWatch::whatCouldNotStartAnImportIsStillNewAtTheNextTick() {
    QCOMPARE(watchedNext(3, 1, true), 3);
    QCOMPARE(watchedNext(3, 1, false), 1);
    QCOMPARE(watchedNext(0, 1, false), 0);
}

void TestNewFolderWatch::theCardCountsInWords() {
    QCOMPARE(waitingText(0), "No files wait");
    QCOMPARE(waitingText(1), "1 file waits");
    QCOMPARE(waitingText(7), "7 files wait");
}

void TestNewFolderWatch::theCardNamesWhatNoImportTakes() {
    QCOMPARE(folderNotice({}, {}), QString());
    QCOMPARE(folderNotice({}, QStringLiteral("x is passed by")), "x is passed by");
    const QString both = folderNotice(QStringLiteral("a.txt"), QStringLiteral("x is passed by"));
    QCOMPARE(both,
             "\"a.txt\" has neither a version nor an interval: each import ends there.\nx is passed by");
}

void TestNewFolderWatch::aLongNameIsShownWithoutItsMiddle() {
    QCOMPARE(shortenedName(QStringLiteral("a.txt")), "a.txt");
    const QString name = shortenedName(QStringLiteral("begin") + QString(200, u'x') + QStringLiteral(".txt"));
    QCOMPARE(name.size(), 39);
    QVERIFY(name.startsWith(QLatin1String("begin")) && name.endsWith(QLatin1String(".txt")));
    QVERIFY(folderNotice(QString(255, u'x'), {}).size() < 120);
}

QTEST_GUILESS_MAIN(TestNewFolderWatch)
#include "test_newfolderwatch.moc"
