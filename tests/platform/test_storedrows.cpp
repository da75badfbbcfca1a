#include "platform/storedrows.h"

#include <QTemporaryDir>
#include <QtTest>
#include <SQLiteCpp/SQLiteCpp.h>

using namespace benthor;
using platform::Database;
using platform::StoredCells;
using platform::StoredRow;
using platform::StoredRows;
using platform::StoredStatement;
using platform::StoredValue;
using platform::StoreError;
using Type = StoredValue::Type;

namespace {

/// A store with one table that holds a value of every type.
class Store {
public:
    explicit Store(const char* encoding = "UTF-8") {
        SQLite::Database made(path().toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        made.exec(std::string("PRAGMA encoding = '") + encoding + "'");
        made.exec("CREATE TABLE t (number, word TEXT, rest)");
        made.exec("INSERT INTO t VALUES (1, 'one', NULL), (2, '', 0.5), (3, 'd\u00e9j\u00e0', x'00ff01')");
    }
    QString path() const { return folder_.filePath(QStringLiteral("rb.mdb")); }

private:
    QTemporaryDir folder_;
};

StoredValue real(double number) {
    StoredValue value;
    value.type = Type::Real;
    value.real = number;
    return value;
}

} // namespace

class TestStoredRows : public QObject {
    Q_OBJECT

private slots:
    void cellsAreWhatRowsAre_data();
    void cellsAreWhatRowsAre();
    void namesFollowATableThatIsWidened();
    void aCopyTakesEveryTypeButWhatIsReplaced();
    void aCopyThatFailsLeavesBothTextsReady();
    void aSteadyReadingSeesOneStateOfTheStore();
    void aChangeBesideASteadyReadingIsSeenBehindIt();
};

void TestStoredRows::cellsAreWhatRowsAre_data() {
    QTest::addColumn<QByteArray>("encoding");
    QTest::newRow("as usual") << QByteArray("UTF-8");
    QTest::newRow("texts in another encoding") << QByteArray("UTF-16le");
}

void TestStoredRows::cellsAreWhatRowsAre() {
    QFETCH(QByteArray, encoding);
    const Store store(encoding.constData());
    Database database;
    database.open(store.path());
    StoredRows rows(database);
    const std::vector<StoredRow> read = rows.read("SELECT * FROM t ORDER BY number");
    const QList<QList<StoredValue>> wanted{
        {StoredValue(qint64{1}), StoredValue(QStringLiteral("one")), StoredValue()},
        {StoredValue(qint64{2}), StoredValue(QString()), real(0.5)},
        {StoredValue(qint64{3}), StoredValue(QStringLiteral("d\u00e9j\u00e0")),
         StoredValue::blob(QByteArray("\x00\xff\x01", 3))}};
    StoredStatement statement = rows.prepare("SELECT * FROM t WHERE number >= ?1 ORDER BY number");
    size_t row = 0;
    statement.each({StoredValue(qint64{1})}, [&](const StoredCells& cells) {
        QCOMPARE(cells.count(), size_t{3});
        QVERIFY(cells.valueOf("WORD") == cells.value(1));
        QVERIFY(cells.valueOf("words").isNull());
        for (size_t i = 0; i < cells.count(); ++i) {
            const StoredValue& value = wanted.at(static_cast<qsizetype>(row)).at(static_cast<qsizetype>(i));
            QVERIFY(cells.value(i) == value);
            QVERIFY(read.at(row).at(i) == value);
            QCOMPARE(cells.name(i), read.at(row).fields.at(i).first);
        }
        ++row;
    });
    QCOMPARE(row, size_t{3});
}

void TestStoredRows::namesFollowATableThatIsWidened() {
    const Store store;
    Database database;
    database.open(store.path());
    StoredRows rows(database);
    StoredStatement statement = rows.prepare("SELECT * FROM t WHERE number = 1");
    const auto names = [&statement] {
        QByteArrayList all;
        statement.each({}, [&all](const StoredCells& row) {
            for (size_t i = 0; i < row.count(); ++i) {
                all += row.name(i);
            }
        });
        return all;
    };
    QCOMPARE(names(), (QByteArrayList{"number", "word", "rest"}));
    rows.change("ALTER TABLE t ADD COLUMN more");
    QCOMPARE(names(), (QByteArrayList{"number", "word", "rest", "more"}));
    QVERIFY(rows.read("SELECT * FROM t").front().at(3).isNull());
}

void TestStoredRows::aCopyTakesEveryTypeButWhatIsReplaced() {
    const Store store;
    Database database;
    database.open(store.path());
    StoredRows rows(database);
    rows.change("CREATE TABLE u (number, word TEXT, rest)");
    StoredStatement from = rows.prepare("SELECT * FROM main.t ORDER BY number");
    StoredStatement to = rows.prepare("INSERT INTO u VALUES (?1, ?2, ?3)");
    const int copied = from.copyTo(to, {}, [](const StoredCells& row, StoredStatement::Replaced& replaced) {
        const std::optional<size_t> place = row.placeOf("WORD");
        QVERIFY(place.has_value());
        QVERIFY(!row.placeOf("words").has_value());
        if (row.integer(0) == 2) {
            replaced.emplace_back(*place, QStringLiteral("two"));
        }
    });
    QCOMPARE(copied, 3);
    std::vector<StoredRow> wanted = rows.read("SELECT * FROM t ORDER BY number");
    wanted.at(1).fields.at(1).second = StoredValue(QStringLiteral("two"));
    const std::vector<StoredRow> there = rows.read("SELECT * FROM u ORDER BY rowid");
    QCOMPARE(there.size(), wanted.size());
    for (size_t i = 0; i < there.size(); ++i) {
        QVERIFY(there[i].fields == wanted[i].fields);
    }
}

void TestStoredRows::aCopyThatFailsLeavesBothTextsReady() {
    const Store store;
    Database database;
    database.open(store.path());
    StoredRows rows(database);
    rows.change("CREATE TABLE u (number UNIQUE, word TEXT, rest)");
    rows.change("INSERT INTO u VALUES (2, 'here', NULL)");
    StoredStatement from = rows.prepare("SELECT * FROM t WHERE number >= ?1 ORDER BY number");
    StoredStatement to = rows.prepare("INSERT INTO u VALUES (?1, ?2, ?3)");
    const auto asItIs = [](const StoredCells&, StoredStatement::Replaced&) {};
    QVERIFY_EXCEPTION_THROWN(from.copyTo(to, {StoredValue(qint64{1})}, asItIs), StoreError);
    QCOMPARE(from.copyTo(to, {StoredValue(qint64{3})}, asItIs), 1);
    QCOMPARE(rows.read("SELECT number FROM u ORDER BY number").size(), size_t{3});
}

void TestStoredRows::aSteadyReadingSeesOneStateOfTheStore() {
    const Store store;
    Database database;
    database.open(store.path(), platform::StoreAccess::Look);
    StoredRows rows(database);
    const platform::SteadyReading steady(database);
    QCOMPARE(rows.read("SELECT * FROM t").size(), size_t{3});
    SQLite::Database other(store.path().toStdString(), SQLite::OPEN_READWRITE);
    other.setBusyTimeout(0);
    QVERIFY_EXCEPTION_THROWN(other.exec("DELETE FROM t"), SQLite::Exception);
    QCOMPARE(rows.read("SELECT * FROM t").size(), size_t{3});
}

void TestStoredRows::aChangeBesideASteadyReadingIsSeenBehindIt() {
    const Store store;
    Database database;
    database.open(store.path(), platform::StoreAccess::Look);
    StoredRows rows(database);
    {
        const platform::SteadyReading steady(database);
        QCOMPARE(rows.read("SELECT * FROM t").size(), size_t{3});
    }
    SQLite::Database other(store.path().toStdString(), SQLite::OPEN_READWRITE);
    other.exec("DELETE FROM t WHERE number = 1");
    QCOMPARE(rows.read("SELECT * FROM t").size(), size_t{2});
}

QTEST_GUILESS_MAIN(TestStoredRows)
#include "test_storedrows.moc"
