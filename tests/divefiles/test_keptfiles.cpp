#include "divefiles/importer.h"
#include "divefiles/keptfiles.h"
#include "logbook/divelist.h"
#include "tests/support/programfixture.h"

using namespace benthor;

class TestKeptFiles : public QObject {
    Q_OBJECT

private slots:
    void aWaitingFileIsKeptUnderItsName();
    void anotherFileOfThatNameIsNotWrittenOver();
    void aFileThatIsKeptAlreadyIsNotKeptTwice();
    void nothingWaitsNothingIsKept();
    void aManualFileDoesNotDestroyOneThatWaits();
    void aDeletedDiveDoesNotTakeAWaitingFileWithIt();
};

void TestKeptFiles::aWaitingFileIsKeptUnderItsName() {
    tests::ProgramFixture program;
    program.putWaiting(QStringLiteral("a.txt"), "one");
    QVERIFY(divefiles::keepinold(program.folder, QStringLiteral("a.txt")));
    QCOMPARE(program.bytesOf(QStringLiteral("old"), QStringLiteral("a.txt")), "one");
    QCOMPARE(program.bytesOf(QStringLiteral("new"), QStringLiteral("a.txt")), "one");
}

void TestKeptFiles::anotherFileOfThatNameIsNotWrittenOver() {
    tests::ProgramFixture program;
    program.put(QStringLiteral("old"), QStringLiteral("a.txt"), "first");
    program.put(QStringLiteral("old"), QStringLiteral("a-2.txt"), "second");
    program.putWaiting(QStringLiteral("a.txt"), "third");
    QVERIFY(divefiles::keepinold(program.folder, QStringLiteral("a.txt")));
    QCOMPARE(program.bytesOf(QStringLiteral("old"), QStringLiteral("a.txt")), "first");
    QCOMPARE(program.bytesOf(QStringLiteral("old"), QStringLiteral("a-2.txt")), "second");
    QCOMPARE(program.bytesOf(QStringLiteral("old"), QStringLiteral("a-3.txt")), "third");
}

void TestKeptFiles::aFileThatIsKeptAlreadyIsNotKeptTwice() {
    tests::ProgramFixture program;
    program.put(QStringLiteral("old"), QStringLiteral("a.txt"), "one");
    program.putWaiting(QStringLiteral("a.txt"), "one");
    QVERIFY(divefiles::keepinold(program.folder, QStringLiteral("a.txt")));
    QCOMPARE(program.folder.listFiles(QStringLiteral("old"), QStringLiteral("*.txt")), QStringList{"a.txt"});
}

void TestKeptFiles::nothingWaitsNothingIsKept() {
    tests::ProgramFixture program;
    QVERIFY(divefiles::keepinold(program.folder, QStringLiteral("a.txt")));
    QVERIFY(program.folder.listFiles(QStringLiteral("old"), QStringLiteral("*.txt")).isEmpty());
}

void TestKeptFiles::aManualFileDoesNotDestroyOneThatWaits() {
    tests::ProgramFixture program;
    program.putWaiting(QStringLiteral("a.txt"), "waits");
    program.put(QStringLiteral("old"), QStringLiteral("a.txt"), "chosen");
    QCOMPARE(divefiles::takemanualfile(program.folder, program.folder.path(u"old", u"a.txt")), QString());
    QCOMPARE(program.bytesOf(QStringLiteral("new"), QStringLiteral("a.txt")), "chosen");
    QCOMPARE(program.bytesOf(QStringLiteral("old"), QStringLiteral("a-2.txt")), "waits");
}

void TestKeptFiles::aDeletedDiveDoesNotTakeAWaitingFileWithIt() {
    tests::ProgramFixture program;
    process().database.execute("INSERT INTO main (DiveID, Location) VALUES ('D0000001', 'a.txt')");
    program.put(QStringLiteral("old"), QStringLiteral("a.txt"), "the deleted dive");
    program.putWaiting(QStringLiteral("a.txt"), "a dive that was never imported");
    logbook::deletedives(process().database, program.folder, {QStringLiteral("D0000001")});
    QVERIFY(program.folder.listFiles(QStringLiteral("new"), QStringLiteral("*.txt")).isEmpty());
    QCOMPARE(program.bytesOf(QStringLiteral("old"), QStringLiteral("a-2.txt")),
             "a dive that was never imported");
}

QTEST_GUILESS_MAIN(TestKeptFiles)
#include "test_keptfiles.moc"
