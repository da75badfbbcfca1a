#include "logbook/acts.h"
#include "platform/instancelock.h"
#include "tests/ctl/ctlstage.h"

using namespace benthor;
using tests::goodDive;
using tests::Ran;
using tests::ToolFolder;

namespace {

QJsonObject resultOf(const QJsonArray& imported, const QJsonArray& refused) {
    return {{"imported", imported}, {"refused", refused}};
}

QJsonObject importedAs(const QString& file, const QStringList& ids) {
    return {{"file", file}, {"ids", QJsonArray::fromStringList(ids)}};
}

} // namespace

/// The tool's commands that write.
class TestCtlWriting : public QObject {
    Q_OBJECT

private slots:
    void init() { files_ = std::make_unique<QTemporaryDir>(); }

    void anImportMakesTheCopiesThatAnImportMakes();
    void anImportForPeople();
    void whatIsNoDiveIsRefusedAndLeavesNothing_data();
    void whatIsNoDiveIsRefusedAndLeavesNothing();
    void theFilesThatWaitGoOnWaiting();
    void anotherFileOfTheNameThatWaitsIsNotWrittenOver();
    void aFileThatWaitsItselfIsMoved();
    void oneNameTwiceIsTwoDives();
    void aFaultyLineLeavesWhatStandsBeforeIt();
    void aMergeBringsWhatIsNew();
    void aMergeCanBeTakenBack();
    void aRehearsalOfAMergeWritesNothing();
    void aMergeOfNothingNewWritesNoBackup();
    void writingIsRefusedBesideARunningProgram();

private:
    QString put(const QString& name, const QByteArray& bytes) const {
        const QString path = files_->filePath(name);
        QDir().mkpath(QFileInfo(path).absolutePath());
        if (!platform::writeFileWhole(path, bytes)) {
            qFatal("no file");
        }
        return path;
    }

    std::unique_ptr<QTemporaryDir> files_;
};

void TestCtlWriting::anImportMakesTheCopiesThatAnImportMakes() {
    const ToolFolder world;
    world.close();
    const QString file = put(QStringLiteral("Reef.TXT"), goodDive("700000000"));
    const QString second = put(QStringLiteral("Reef2.txt"), goodDive("700100000"));
    const Ran ran = world.run({"import", "--json", file, second});
    QVERIFY2(ran.status == 0, ran.err.constData());
    QCOMPARE(ran.err, QByteArray());
    QCOMPARE(ran.json(), resultOf({importedAs(file, {QStringLiteral("D0000004")}),
                                   importedAs(second, {QStringLiteral("D0000005")})},
                                  {}));
    QCOMPARE(platform::readFile(file).value(), goodDive("700000000")); // it stays
    QCOMPARE(world.bytesOf(QStringLiteral("old"), QStringLiteral("Reef.TXT")), goodDive("700000000"));
    QCOMPARE(world.names(QStringLiteral("new")), QStringList());
    world.openStore();
    const QStringList rows =
        ToolFolder::rows("SELECT Location, Startcode, dbtxtname FROM main WHERE DiveID = 'D0000004'");
    QCOMPARE(rows.size(), 1);
    QVERIFY(rows.first().startsWith(QStringLiteral("Reef.TXT|700000000|")));
    QCOMPARE(world.bytesOf(QStringLiteral("dbtxt"), rows.first().section(QLatin1Char('|'), 2)),
             goodDive("700000000"));
    QVERIFY(!QFile::exists(world.folder.path(u"import.note")));
}

void TestCtlWriting::anImportForPeople() {
    const ToolFolder world(ToolFolder::kNoDives);
    world.close();
    const QString file = put(QStringLiteral("a.txt"), goodDive());
    const QString none = files_->filePath(QStringLiteral("none.txt"));
    const Ran ran = world.run({"import", file, none});
    QCOMPARE(ran.status, 1);
    QCOMPARE(ran.lines(),
             QStringList({file + ": imported as D0000001", none + ": refused. There is no such file."}));
}

void TestCtlWriting::whatIsNoDiveIsRefusedAndLeavesNothing_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("reason");
    QTest::newRow("another ending") << "dive.csv" << goodDive() << "File Extention is wrong !";
    QTest::newRow("no ending") << "dive" << goodDive() << "File Extention is wrong !";
    QTest::newRow("hidden") << ".dive.txt" << goodDive() << "Its name begins with a point.";
    QTest::newRow("no version") << "dive.txt" << QByteArray("Start,1\r\n")
                                << "Version or Interval not found !";
    QTest::newRow("no dive") << "dive.txt" << QByteArray("Dear diary\r\n") << "There is no dive in it.";
    QTest::newRow("nothing") << "dive.txt" << QByteArray() << "There is no dive in it.";
    QTest::newRow("a folder") << "folder/inner.txt" << goodDive() << "It is no regular file.";
}

void TestCtlWriting::whatIsNoDiveIsRefusedAndLeavesNothing() {
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, reason);
    const ToolFolder world;
    world.close();
    QString file = put(name, bytes);
    if (name.contains(QLatin1Char('/'))) {
        file = files_->filePath(QStringLiteral("folder"));
    }
    world.run({"import", QStringLiteral("none")}); // makes the file of the lock
    const QStringList before = world.snapshot();
    const Ran ran = world.run({"import", "--json", file});
    QCOMPARE(ran.status, 1);
    QCOMPARE(ran.json(), resultOf({}, {QJsonObject{{"file", file}, {"reason", reason}}}));
    QCOMPARE(world.snapshot(), before);
}

void TestCtlWriting::theFilesThatWaitGoOnWaiting() {
    const ToolFolder world(ToolFolder::kNoDives);
    world.close();
    world.putWaiting(QStringLiteral("a.txt"), "Start,1\r\n");
    world.putWaiting(QStringLiteral("z.txt"), goodDive());
    const Ran ran = world.run({"import", put(QStringLiteral("m.txt"), goodDive("700000000"))});
    QCOMPARE(ran.status, 0);
    QCOMPARE(world.names(QStringLiteral("new")), QStringList({"a.txt", "z.txt"}));
    QCOMPARE(world.names(QStringLiteral("old")), QStringList{QStringLiteral("m.txt")});
}

void TestCtlWriting::anotherFileOfTheNameThatWaitsIsNotWrittenOver() {
    const ToolFolder world(ToolFolder::kNoDives);
    world.close();
    world.putWaiting(QStringLiteral("a.txt"), goodDive("700000000"));
    const Ran ran = world.run({"import", put(QStringLiteral("a.txt"), goodDive())});
    QCOMPARE(ran.status, 1);
    QVERIFY(ran.out.contains("Another file of its name waits"));
    QCOMPARE(world.bytesOf(QStringLiteral("new"), QStringLiteral("a.txt")), goodDive("700000000"));
    // The same file is imported and waits no more: it would be a second dive of it.
    QCOMPARE(world.run({"import", put(QStringLiteral("a.txt"), goodDive("700000000"))}).status, 0);
    QCOMPARE(world.names(QStringLiteral("new")), QStringList());
}

void TestCtlWriting::aFileThatWaitsItselfIsMoved() {
    const ToolFolder world(ToolFolder::kNoDives);
    world.close();
    world.putWaiting(QStringLiteral("a.txt"), goodDive());
    const Ran ran = world.run({"import", "--json", world.folder.path(u"new", u"a.txt")});
    QCOMPARE(ran.status, 0);
    QCOMPARE(world.names(QStringLiteral("new")), QStringList());
    QCOMPARE(world.bytesOf(QStringLiteral("old"), QStringLiteral("a.txt")), goodDive());
}

void TestCtlWriting::oneNameTwiceIsTwoDives() {
    const ToolFolder world(ToolFolder::kNoDives);
    world.close();
    const Ran ran = world.run({"import", put(QStringLiteral("x/a.txt"), goodDive()),
                               put(QStringLiteral("y/a.txt"), goodDive("700000000"))});
    QCOMPARE(ran.status, 0);
    QCOMPARE(world.names(QStringLiteral("old")).size(), 2);
    QCOMPARE(world.names(QStringLiteral("dbtxt")).size(), 2);
}

void TestCtlWriting::aFaultyLineLeavesWhatStandsBeforeIt() {
    const ToolFolder world(ToolFolder::kNoDives);
    world.close();
    const QString file = put(QStringLiteral("a.txt"),
                             goodDive().replace("Gas0001,68,0,465,1", "Gas0001,68,0,465,1,2,3,4,5,6"));
    const Ran ran = world.run({"import", "--json", file});
    QCOMPARE(ran.status, 1);
    QCOMPARE(ran.json().value(QLatin1String("imported")).toArray(),
             QJsonArray{importedAs(file, {QStringLiteral("D0000001")})});
    const QJsonArray refused = ran.json().value(QLatin1String("refused")).toArray();
    QCOMPARE(refused.size(), 1);
    QVERIFY(refused[0][QLatin1String("reason")].toString().startsWith(QStringLiteral("Errors Gas - ")));
    QCOMPARE(world.names(QStringLiteral("corrupt")), QStringList{QStringLiteral("a.txt")});
    QCOMPARE(world.names(QStringLiteral("new")), QStringList());
}

void TestCtlWriting::aMergeBringsWhatIsNew() {
    const ToolFolder other({"812345678", "700000000", "710000000"});
    process().database.execute("UPDATE main SET site = 'other' WHERE Startcode = '812345678'");
    QVERIFY(QFile::remove(other.folder.path(
        u"dbtxt", ToolFolder::rows("SELECT dbtxtname FROM main WHERE Startcode = '710000000'").first())));
    other.close();
    const QStringList theirs = other.snapshot();
    const ToolFolder world({"812345678"});
    world.close();
    const Ran ran = world.run({"merge", "--json", other.folder.root()});
    QVERIFY2(ran.status == 0, ran.err.constData());
    QCOMPARE(ran.json().keys(), QStringList({"came", "problems", "stayed"}));
    QCOMPARE(ran.json().value(QLatin1String("came")).toInt(), 2);
    QCOMPARE(ran.json().value(QLatin1String("stayed")).toInt(), 1);
    const QJsonArray problems = ran.json().value(QLatin1String("problems")).toArray();
    QCOMPARE(problems.size(), 1);
    QVERIFY(problems[0].toString().endsWith(QStringLiteral("is missing there; it came without a profile.")));
    QCOMPARE(other.snapshot(), theirs);
    QVERIFY(QFile::exists(world.folder.path(u"rb-before-merge.mdb")));
    world.openStore();
    // Details of the dive that was here already stay as they are.
    QCOMPARE(
        ToolFolder::rows("SELECT DiveID, Startcode, site FROM main ORDER BY DiveID"),
        QStringList({"D0000001|812345678|(null)", "D0000002|700000000|(null)", "D0000003|710000000|(null)"}));
    QCOMPARE(world.names(QStringLiteral("dbtxt")).size(), 2);
    world.close();
    const QStringList lines = world.run({"merge", other.folder.root()}).lines();
    QCOMPARE(lines, QStringList{QStringLiteral("No dive is new here; nothing was changed.")});
}

void TestCtlWriting::aMergeCanBeTakenBack() {
    const ToolFolder other({"700000000"});
    other.close();
    const ToolFolder world({"812345678"});
    world.close();
    QCOMPARE(world.run({"merge", other.storePath()}).status, 0); // the store stands for its folder
    world.openStore();
    QCOMPARE(ToolFolder::rows("SELECT DiveID FROM main").size(), 2);
    const logbook::ActsInHand acts = logbook::actsinhand(process().database);
    QVERIFY(acts.undo.id != 0);
    QCOMPARE(logbook::undoact(process().database, world.folder, acts.undo.id).state,
             logbook::TurnedAct::State::Done);
    QCOMPARE(ToolFolder::rows("SELECT Startcode FROM main"), QStringList{QStringLiteral("812345678")});
}

void TestCtlWriting::aRehearsalOfAMergeWritesNothing() {
    const ToolFolder other({"812345678", "700000000"});
    QVERIFY(QFile::remove(other.folder.path(
        u"dbtxt", ToolFolder::rows("SELECT dbtxtname FROM main WHERE Startcode = '700000000'").first())));
    other.close();
    const ToolFolder world({"812345678"});
    world.close();
    const QStringList before = world.snapshot();
    const Ran ran = world.run({"merge", "--dry-run", "--json", other.folder.root()});
    QCOMPARE(ran.status, 0);
    QCOMPARE(ran.json().value(QLatin1String("came")).toInt(), 1);
    QCOMPARE(ran.json().value(QLatin1String("stayed")).toInt(), 1);
    QCOMPARE(ran.json().value(QLatin1String("problems")).toArray().size(), 1);
    const QStringList lines = world.run({"merge", "--dry-run", other.folder.root()}).lines();
    QCOMPARE(lines.mid(0, 2), QStringList({"Would come: 1", "Would stay: 1"}));
    QCOMPARE(world.snapshot(), before);
}

void TestCtlWriting::aMergeOfNothingNewWritesNoBackup() {
    const ToolFolder other({"812345678"});
    other.close();
    const ToolFolder world({"812345678"});
    world.close();
    const Ran ran = world.run({"merge", "--json", other.folder.root()});
    QCOMPARE(ran.json(), QJsonObject({{"came", 0}, {"stayed", 1}, {"problems", QJsonArray()}}));
    QVERIFY(!QFile::exists(world.folder.path(u"rb-before-merge.mdb")));
}

void TestCtlWriting::writingIsRefusedBesideARunningProgram() {
    const ToolFolder other({"700000000"});
    other.close();
    const ToolFolder world({"812345678"});
    world.close();
    const QString file = put(QStringLiteral("a.txt"), goodDive());
    {
        const platform::InstanceLock lock(world.folder.root());
        const QStringList before = world.snapshot();
        for (const QStringList& words : {QStringList{"import", file}, {"merge", other.folder.root()}}) {
            const Ran ran = world.run(words);
            QCOMPARE(ran.status, 3);
            QCOMPARE(ran.out, QByteArray());
            QVERIFY(ran.err.startsWith("benthorctl: Benthor is open on the folder "));
        }
        QCOMPARE(world.snapshot(), before);
    }
    QCOMPARE(world.run({"import", file}).status, 0);
}

QTEST_GUILESS_MAIN(TestCtlWriting)
#include "test_ctlwriting.moc"
