#include "divefiles/importnote.h"
#include "logbook/actfile.h"
#include "platform/clock.h"
#include "platform/storefile.h"
#include "store/backup.h"
#include "tests/logbook/actworld.h"
#include "tests/support/asnobody.h"

#include <QCryptographicHash>

#include <map>

using namespace benthor;
using namespace benthor::logbook;
using platform::StoreError;
using tests::ActWorld;
using State = TurnedAct::State;

namespace {

/// Bytes of a file of acts with one deleted dive.
QByteArray fileWithADelete(const ActWorld& world) {
    world.addDive(1);
    world.addDive(2);
    world.del({2});
    return platform::readFile(world.actsFile()).value();
}

void put(const ActWorld& world, const QByteArray& bytes) {
    QFile file(world.actsFile());
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(file.write(bytes), bytes.size());
}

/// As files of the first form have it: of each row its table, then name, type and value of each field that
/// is not Null, by name; texts behind their lengths.
QByteArray firstFormDigest(const TableRows& rows) {
    using Type = platform::StoredValue::Type;
    QByteArray all;
    const auto number = [&all](auto value) {
        all += QByteArray(reinterpret_cast<const char*>(&value), sizeof value);
    };
    const auto text = [&](const QByteArray& bytes) {
        number(static_cast<quint32>(bytes.size()));
        all += bytes;
    };
    for (const TableRow& row : rows) {
        std::map<QByteArray, platform::StoredValue> byName;
        for (const auto& [name, value] : row.row.fields) {
            byName[name.toLower()] = value;
        }
        byName.erase("diveid");
        text(row.table);
        for (const auto& [name, value] : byName) {
            if (value.isNull()) {
                continue;
            }
            text(name);
            number(static_cast<quint8>(value.type));
            if (value.type == Type::Integer) {
                number(value.integer);
            } else if (value.type == Type::Real) {
                number(value.real);
            } else {
                text(value.bytes);
            }
        }
        number(quint32{0});
    }
    return QCryptographicHash::hash(all, QCryptographicHash::Sha256);
}

QByteArray scribbled(QByteArray bytes) {
    for (qsizetype at = 4096; at < bytes.size(); at += 512) {
        bytes.replace(at, 200, QByteArray(200, '\xa5'));
    }
    return bytes;
}

/// The delete goes on as told, and the record says why it cannot be taken back.
void deleteWithoutActs(const ActWorld& world, int number, const QString& reason) {
    const ActRecord record = world.del({number});
    QVERIFY(!record.kept);
    QVERIFY2(record.fault.contains(reason), qPrintable(record.fault));
    QVERIFY(!world.dives().contains(world.id(number)));
    const auto left = world.rows().read("SELECT COUNT(*) FROM gas WHERE diveid = ?1", {world.id(number)});
    QCOMPARE(left.front().at(0).integer, 0);
}

} // namespace

class TestActFile : public QObject {
    Q_OBJECT

private slots:
    void aMissingFileIsMadeAndHasTheStoresRights();
    void aStoreWithoutActsIsLookedAtWithoutAFile();
    void theStoreOpensAloneElsewhere();
    void theStartsMaintenanceLeavesTheFileAlone();
    void aStoreThatIsLookedAtOrOnlyReadHasNoActs();
    void aDamagedFileMakesWayAndTheNextActIsKept_data();
    void aDamagedFileMakesWayAndTheNextActIsKept();
    void aFileOfALaterVersionOrAnotherProgramsIsLeftAsItIs_data();
    void aFileOfALaterVersionOrAnotherProgramsIsLeftAsItIs();
    void aFolderOrAFileWithoutRightsInItsPlaceEndsNoDelete();
    void anotherProgramThatHoldsTheFileEndsNoDelete();
    void aKeptRowThatWasDamagedIsNotBroughtBack();
    void aDigestOfTheFirstFormStillTells();
    void theFileIsNotAttachedBetweenActs();
    void withinAnOpenTransactionNothingIsKept();
    void whatAWorkThrowsPassesAndNothingIsKept();
    void deletedDivesOutliveTheirActs();
    void moreThanFiftyDeletesLieInTheTrash();
    void afterThirtyDaysDivesGoByThemselves();
    void whatIsDeletedForGoodLeavesNoByteBehind();
    void undoneDeletesAreNotInTheTrash();
    void aSecondConnectionDoesNotDisturb();
    void theFileOfADeletedDiveIsNoLeftoverOfAnImport();
};

void TestActFile::aMissingFileIsMadeAndHasTheStoresRights() {
    const ActWorld world;
    world.addDive(1);
    QFile::setPermissions(world.storePath(), QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup);
    world.reopen();
    QVERIFY(world.del({1}).kept);
    QCOMPARE(QFile::permissions(world.actsFile()), QFile::permissions(world.storePath()));
    QVERIFY(QFile::remove(world.actsFile()));
    QCOMPARE(world.undoWords(), QString());
    world.addDive(2);
    QVERIFY(world.del({2}).kept);
    QCOMPARE(world.undo().state, State::Done);
}

void TestActFile::aStoreWithoutActsIsLookedAtWithoutAFile() {
    const ActWorld world;
    QCOMPARE(world.undoWords(), QString());
    QCOMPARE(trasheddives(process().database).size(), 0U);
    tidyacts(process().database, world.folder);
    QVERIFY(!QFile::exists(world.actsFile()));
    platform::Database closed;
    QCOMPARE(actsinhand(closed).undo.what, QString());
    QVERIFY(!QFile::exists(QStringLiteral("rb-acts.db")));
}

void TestActFile::theStoreOpensAloneElsewhere() {
    const ActWorld world;
    world.addDive(1);
    world.addDive(2);
    world.del({2});
    process().database.close();
    const QTemporaryDir elsewhere;
    const QString copy = elsewhere.filePath(QStringLiteral("rb.mdb"));
    QVERIFY(QFile::copy(world.storePath(), copy));
    QVERIFY(store::examinestore(copy).sound());
    process().database.open(copy);
    QCOMPARE(world.dives(), QStringList{"D0000001"});
    QCOMPARE(world.undoWords(), QString());
    store::newdive(QStringLiteral("V1"));
    QCOMPARE(QDir(elsewhere.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"rb.mdb"});
}

void TestActFile::theStartsMaintenanceLeavesTheFileAlone() {
    const ActWorld world;
    world.addDive(1);
    world.addDive(2);
    world.del({2});
    process().database.close();
    const QByteArray before = platform::readFile(world.actsFile()).value();
    for (int run = 0; run < 3; ++run) {
        QCOMPARE(store::maintainstore(world.folder).setAside, QString());
    }
    QCOMPARE(platform::readFile(world.actsFile()).value(), before);
    world.openStore();
    QCOMPARE(world.undo().state, State::Done); // the packing gave the rows other numbers
    QCOMPARE(world.dives().size(), 2);
}

void TestActFile::aStoreThatIsLookedAtOrOnlyReadHasNoActs() {
    const ActWorld world;
    fileWithADelete(world);
    platform::Database look;
    look.open(world.storePath(), platform::StoreAccess::Look);
    QCOMPARE(actsinhand(look).undo.what, QString());
    QCOMPARE(trasheddives(look).size(), 0U);
    process().database.setReadOnly(QStringLiteral("So it is."));
    QCOMPARE(world.undoWords(), QString());
    QVERIFY_EXCEPTION_THROWN(world.del({1}), StoreError);
    process().database.setReadOnly(QString());
    QCOMPARE(world.undoWords(), "delete of 1 dive");
    QCOMPARE(world.dives(), QStringList{"D0000001"});
}

void TestActFile::aDamagedFileMakesWayAndTheNextActIsKept_data() {
    QTest::addColumn<QByteArray>("bytes");
    const ActWorld world;
    const QByteArray good = fileWithADelete(world);
    QTest::newRow("no file of acts at all") << QByteArray(5000, 'x');
    QTest::newRow("torn off") << good.first(good.size() / 2);
    QTest::newRow("scribbled over") << scribbled(good);
    {
        platform::StoredRows rows = world.rows();
        rows.attach(world.actsFile(), "other");
        rows.change("DROP INDEX other.rbacts_item_act");
        rows.detach("other");
    }
    QTest::newRow("without a part of it") << platform::readFile(world.actsFile()).value();
}

void TestActFile::aDamagedFileMakesWayAndTheNextActIsKept() {
    QFETCH(QByteArray, bytes);
    const ActWorld world;
    fileWithADelete(world);
    put(world, bytes);
    world.addDive(3);
    QVERIFY(!actsinhand(process().database).fault.isEmpty());
    deleteWithoutActs(world, 1, QStringLiteral("rb-acts-damaged.db"));
    QCOMPARE(platform::readFile(world.folder.path(u"rb-acts-damaged.db")).value(), bytes);
    QVERIFY(world.del({3}).kept);
    QCOMPARE(world.undo().state, State::Done);
    QCOMPARE(world.undo().state, State::Nothing);
}

void TestActFile::aFileOfALaterVersionOrAnotherProgramsIsLeftAsItIs_data() {
    QTest::addColumn<QByteArray>("pragma");
    QTest::addColumn<QString>("reason");
    QTest::newRow("later") << QByteArray("user_version = 2") << "later version";
    QTest::newRow("another's") << QByteArray("application_id = 7") << "no file of this program";
}

void TestActFile::aFileOfALaterVersionOrAnotherProgramsIsLeftAsItIs() {
    QFETCH(QByteArray, pragma);
    QFETCH(QString, reason);
    const ActWorld world;
    fileWithADelete(world);
    {
        platform::StoredRows rows = world.rows();
        rows.attach(world.actsFile(), "other");
        rows.change("PRAGMA other." + pragma);
        rows.detach("other");
    }
    const QByteArray before = platform::readFile(world.actsFile()).value();
    deleteWithoutActs(world, 1, reason);
    QCOMPARE(platform::readFile(world.actsFile()).value(), before);
    QVERIFY(!QFile::exists(world.folder.path(u"rb-acts-damaged.db")));
    QVERIFY_EXCEPTION_THROWN(trasheddives(process().database), StoreError);
    QVERIFY(actsinhand(process().database).fault.contains(reason));
}

void TestActFile::aFolderOrAFileWithoutRightsInItsPlaceEndsNoDelete() {
    const ActWorld world;
    world.addDive(1);
    world.addDive(2);
    QVERIFY(QDir().mkpath(world.actsFile()));
    deleteWithoutActs(world, 1, QStringLiteral("is no file"));
    QVERIFY(QDir().rmdir(world.actsFile()));
    world.addDive(3);
    world.del({3});
    process().database.close();
    QVERIFY(QFile::setPermissions(world.actsFile(), QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
    const auto all = QFile::Permissions(0x7777);
    QVERIFY(QFile::setPermissions(world.storePath(), all));
    QVERIFY(QFile::setPermissions(world.folder.root(), all));
    const int result = tests::runAsNobody([&world] {
        world.openStore();
        const ActRecord record = world.del({2});
        return !record.kept && !record.fault.isEmpty() && world.dives().isEmpty() ? 7 : 1;
    });
    QCOMPARE(result, 7);
    world.openStore();
    QCOMPARE(world.dives(), QStringList());
    QCOMPARE(world.undo().back, QStringList{"D0000003"});
}

void TestActFile::anotherProgramThatHoldsTheFileEndsNoDelete() {
    const ActWorld world;
    fileWithADelete(world);
    platform::Database other; // as a program that copies the file away
    other.open(world.actsFile());
    platform::Transaction held(other);
    other.execute("UPDATE rbacts_act SET label = 'x'");
    deleteWithoutActs(world, 1, QStringLiteral("locked"));
}

void TestActFile::aKeptRowThatWasDamagedIsNotBroughtBack() {
    const ActWorld world;
    fileWithADelete(world);
    {
        platform::StoredRows rows = world.rows();
        rows.attach(world.actsFile(), "other");
        // One letter of the note, as a flipped bit would leave it.
        auto item = rows.read("SELECT id, rows FROM other.rbacts_item").front();
        QByteArray bytes = item.at(1).bytes;
        bytes.replace("lines", "lanes");
        QVERIFY(bytes != item.at(1).bytes);
        rows.change("UPDATE other.rbacts_item SET rows = ?2 WHERE id = ?1",
                    {item.at(0), platform::StoredValue::blob(bytes)});
        rows.detach("other");
    }
    const TurnedAct undone = world.undo();
    QCOMPARE(undone.state, State::DoesNotFit);
    QVERIFY(undone.reason.contains(QLatin1String("damaged")));
    QCOMPARE(world.dives(), QStringList{"D0000001"});
}

void TestActFile::aDigestOfTheFirstFormStillTells() {
    const ActWorld world;
    world.addDive(1);
    world.addDive(2);
    const QByteArray before = world.snapshot();
    for (const bool isRight : {true, false}) {
        QVERIFY(world.del({2}).kept);
        platform::StoredRows rows = world.rows();
        rows.attach(world.actsFile(), "other");
        const auto item =
            rows.read("SELECT id, rows FROM other.rbacts_item ORDER BY id DESC LIMIT 1").front();
        QByteArray digest = firstFormDigest(decoderows(item.at(1).bytes));
        digest[31] = static_cast<char>(digest[31] ^ (isRight ? 0 : 1));
        rows.change("UPDATE other.rbacts_item SET digest = ?2 WHERE id = ?1",
                    {item.at(0), platform::StoredValue::blob(digest)});
        rows.detach("other");
        const TurnedAct undone = world.undo();
        QCOMPARE(undone.state, isRight ? State::Done : State::DoesNotFit);
        QCOMPARE(world.snapshot() == before, isRight);
    }
}

void TestActFile::theFileIsNotAttachedBetweenActs() {
    const ActWorld world;
    fileWithADelete(world);
    world.undo();
    trasheddives(process().database);
    actsinhand(process().database);
    QCOMPARE(world.rows().read("PRAGMA database_list").size(), 1U);
    put(world, QByteArray(5000, 'x'));
    world.del({1});
    QCOMPARE(world.rows().read("PRAGMA database_list").size(), 1U);
}

void TestActFile::withinAnOpenTransactionNothingIsKept() {
    const ActWorld world;
    world.addDive(1);
    world.del({1}); // the file is there
    world.addDive(2);
    {
        platform::Transaction outer(process().database);
        deleteWithoutActs(world, 2, QStringLiteral("cannot join a transaction"));
        outer.commit();
    }
    QCOMPARE(world.undo().back, QStringList{"D0000001"});
}

void TestActFile::whatAWorkThrowsPassesAndNothingIsKept() {
    const ActWorld world;
    world.addDive(1);
    const QByteArray before = world.snapshot();
    int runs = 0;
    QVERIFY_EXCEPTION_THROWN(recordact(process().database, ActKind::Merge,
                                       [&](ActRecorder& act) {
                                           ++runs;
                                           world.addDive(2);
                                           act.diveCame(world.id(2));
                                           throw std::runtime_error("stopped");
                                       }),
                             std::runtime_error);
    QCOMPARE(runs, 1);
    QCOMPARE(world.snapshot(), before);
    QCOMPARE(world.undoWords(), QString());
}

void TestActFile::deletedDivesOutliveTheirActs() {
    const ActWorld world;
    world.addDive(1);
    world.addDive(2);
    world.del({2});
    for (int note = 0; note < 50; ++note) {
        world.save(1, QString::number(note));
    }
    int undone = 0;
    for (; world.undo().state == State::Done; ++undone) {
    }
    QCOMPARE(undone, 50);
    QCOMPARE(world.dives(), QStringList{"D0000001"});
    const auto trashed = trasheddives(process().database);
    QCOMPARE(trashed.size(), 1U);
    const TurnedAct back = putback(process().database, world.folder, {trashed.front().id});
    QCOMPARE(back.back, QStringList{"D0000002"});
    QCOMPARE(trasheddives(process().database).size(), 0U);
}

void TestActFile::moreThanFiftyDeletesLieInTheTrash() {
    const ActWorld world;
    for (int number = 1; number <= 54; ++number) {
        world.addDive(number);
    }
    const QByteArray before = world.snapshot(false);
    for (int number = 1; number <= 54; ++number) {
        world.del({number});
    }
    const auto trashed = trasheddives(process().database);
    QCOMPARE(trashed.size(), 54U);
    QCOMPARE(trashed.front().diveid, world.id(54));
    std::vector<qint64> ids;
    for (const TrashedDive& dive : trashed) {
        ids.push_back(dive.id);
    }
    QCOMPARE(putback(process().database, world.folder, ids).back.size(), 54);
    QCOMPARE(world.snapshot(false).size(), before.size());
    QCOMPARE(world.undoWords(), QString());
}

void TestActFile::afterThirtyDaysDivesGoByThemselves() {
    const ActWorld world;
    world.addDive(1);
    world.addDive(2);
    world.addDive(3);
    const QDateTime first(QDate(2026, 1, 1), QTime(12, 0));
    {
        const platform::FixedClock clock(first);
        world.del({1});
    }
    {
        const platform::FixedClock clock(first.addDays(10));
        world.save(3, QStringLiteral("n"));
        world.del({2});
    }
    {
        const platform::FixedClock clock(first.addDays(30));
        tidyacts(process().database, world.folder);
        QCOMPARE(trasheddives(process().database).size(), 2U);
    }
    const platform::FixedClock clock(first.addDays(30).addSecs(1));
    tidyacts(process().database, world.folder);
    QCOMPARE(trasheddives(process().database).size(), 1U);
    QCOMPARE(world.undo().back, QStringList{"D0000002"});
    QCOMPARE(world.undoWords(), "details of D0000003");
    world.undo();
    QCOMPARE(world.undoWords(), QString()); // the delete went with its dive
}

void TestActFile::whatIsDeletedForGoodLeavesNoByteBehind() {
    const ActWorld world;
    fileWithADelete(world);
    QVERIFY(platform::readFile(world.actsFile()).value().contains("Dive2.txt"));
    deleteforgood(process().database, {trasheddives(process().database).front().id});
    QVERIFY(!platform::readFile(world.actsFile()).value().contains("Dive2.txt"));
    QCOMPARE(world.undo().state, State::Nothing);
}

void TestActFile::undoneDeletesAreNotInTheTrash() {
    const ActWorld world;
    fileWithADelete(world);
    world.undo();
    QCOMPARE(trasheddives(process().database).size(), 0U);
    world.redo();
    QCOMPARE(trasheddives(process().database).size(), 1U);
    world.undo();
    world.save(1, QStringLiteral("n"));
    QCOMPARE(trasheddives(process().database).size(), 0U);
    QVERIFY(world.dives().contains(QStringLiteral("D0000002")));
}

/// As the import has one, to read back what it wrote.
void TestActFile::aSecondConnectionDoesNotDisturb() {
    const ActWorld world;
    world.addDive(1);
    platform::Database other;
    other.open(world.storePath());
    QCOMPARE(other.openRecordset("SELECT * FROM main").recordCount(), 1);
    world.del({1});
    QCOMPARE(other.openRecordset("SELECT * FROM main").recordCount(), 0);
    QCOMPARE(undoact(other, world.folder, actsinhand(other).undo.id).state, State::Done);
    QCOMPARE(world.dives(), QStringList{"D0000001"});
    QCOMPARE(world.redo().state, State::Done);
}

/// A dive that an import stored before it was killed, and that was deleted before the next start.
void TestActFile::theFileOfADeletedDiveIsNoLeftoverOfAnImport() {
    const ActWorld world;
    world.addDive(1);
    const QByteArray bytes = tests::goodDive();
    const QString dbtxt = QStringLiteral("dbtxt");
    process().database.execute("UPDATE main SET dbtxtname = '11A2B3CDive1.txt'");
    for (const char* const name : {"11A2B3CDive1.txt", "11A2B3CDive2.txt"}) {
        world.put(dbtxt, QLatin1String(name), bytes);
    }
    world.put(QStringLiteral("old"), QStringLiteral("Dive1.txt"), bytes);
    world.put(QString(), QStringLiteral("import.note"), "11A2B3C\n");
    QVERIFY(world.del({1}).kept);
    process().database.close();
    const QByteArray acts = platform::readFile(world.actsFile()).value();
    put(world, scribbled(acts));
    divefiles::tidydbtxt(world.folder, awayfiles); // what is not known is left for the next start
    QCOMPARE(world.names(dbtxt).size(), 2);
    put(world, acts);
    divefiles::tidydbtxt(world.folder, awayfiles);
    QCOMPARE(world.names(dbtxt), QStringList{QStringLiteral("11A2B3CDive1.txt")});
    QVERIFY(divefiles::notedstamps(world.folder).isEmpty());
    world.openStore();
    QCOMPARE(world.undo().state, State::Done);
    QCOMPARE(world.bytesOf(dbtxt, QStringLiteral("11A2B3CDive1.txt")), bytes);
}

QTEST_GUILESS_MAIN(TestActFile)
#include "test_actfile.moc"
