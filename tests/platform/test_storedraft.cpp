#include "platform/files.h"
#include "platform/storedraft.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>
#include <SQLiteCpp/SQLiteCpp.h>

using namespace benthor;
using platform::StoreDraft;
using platform::StoreError;
using Cell = StoreDraft::Cell;

class TestStoreDraft : public QObject {
    Q_OBJECT

private slots:
    void nullEmptyTextAndBytesAreFour();
    void nothingIsThereBeforeTheCommit();
    void aFileThatIsThereIsNotTaken();
    void theWorkEndsWhenItIsNotToGoOn();
    void aNameMayHoldWhatItLikes();
};

void TestStoreDraft::nullEmptyTextAndBytesAreFour() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("draft"));
    {
        StoreDraft draft(path);
        draft.run("CREATE TABLE t (a TEXT, d DATETIME)");
        draft.rowsGo("INSERT INTO t VALUES (?1, ?2)");
        const std::string text("a\0b", 3);
        for (const Cell& cell : {Cell{}, Cell{Cell::Form::Text, {}}, Cell{Cell::Form::Text, text},
                                 Cell{Cell::Form::Bytes, "007"}}) {
            draft.addRow({cell, cell});
        }
        draft.commit();
        draft.checkStructure();
        QCOMPARE(draft.countRows("t"), 4U);
    } // it holds its file for itself
    SQLite::Database database(path.toStdString());
    SQLite::Statement rows(database, "SELECT typeof(a), hex(a), typeof(d), hex(d) FROM t");
    QStringList found;
    while (rows.executeStep()) {
        found += QStringLiteral("%1 %2 %3 %4")
                     .arg(QString::fromStdString(rows.getColumn(0).getString()),
                          QString::fromStdString(rows.getColumn(1).getString()),
                          QString::fromStdString(rows.getColumn(2).getString()),
                          QString::fromStdString(rows.getColumn(3).getString()));
    }
    QCOMPARE(found, (QStringList{"null  null ", "text  text ", "text 610062 text 610062",
                                 "blob 303037 blob 303037"}));
}

void TestStoreDraft::nothingIsThereBeforeTheCommit() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("draft"));
    {
        StoreDraft draft(path);
        draft.run("CREATE TABLE t (a TEXT)");
        QCOMPARE(draft.fieldNames("t"), std::vector<std::string>{"a"});
        QCOMPARE(draft.fieldNames("none"), std::vector<std::string>{});
    }
    SQLite::Database database(path.toStdString());
    QVERIFY(!database.tableExists("t"));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"draft"});
}

void TestStoreDraft::aFileThatIsThereIsNotTaken() {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("draft"));
    QVERIFY(platform::writeFileWhole(path, "the diver's"));
    QVERIFY_EXCEPTION_THROWN(StoreDraft{path}, StoreError);
    QCOMPARE(platform::readFile(path), "the diver's");
}

void TestStoreDraft::theWorkEndsWhenItIsNotToGoOn() {
    const QTemporaryDir folder;
    bool goesOn = true;
    StoreDraft draft(folder.filePath(QStringLiteral("draft")), [&goesOn] { return goesOn; });
    draft.run("CREATE TABLE t (a INTEGER)");
    const char* const many =
        "INSERT INTO t WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 100000) "
        "SELECT i FROM n";
    draft.run(many);
    goesOn = false;
    QVERIFY_EXCEPTION_THROWN(draft.run(many), StoreError);
}

void TestStoreDraft::aNameMayHoldWhatItLikes() {
    const QTemporaryDir folder;
    StoreDraft draft(folder.filePath(QStringLiteral("draft")));
    const std::string name = "a \"b\" 'c'; --";
    draft.run("CREATE TABLE " + platform::inQuotes(name) + " (" + platform::inQuotes(name) + " TEXT)");
    QCOMPARE(draft.fieldNames(name), std::vector<std::string>{name});
    QCOMPARE(draft.countRows(name), 0U);
}

QTEST_GUILESS_MAIN(TestStoreDraft)
#include "test_storedraft.moc"
