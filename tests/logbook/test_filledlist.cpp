// A list that is handed on and brought up to date must be what a list that is read afresh is, whatever was
// done to the store; and it must say so where it cannot be.

#include "logbook/filledlist.h"
#include "logbook/listfill.h"
#include "logbook/sheetlines.h"
#include "tests/logbook/actworld.h"

#include <QRandomGenerator>

using namespace benthor;
using namespace benthor::tests;
using logbook::FilledList;
using platform::StoredValue;

namespace {

constexpr int kDives = 40;

struct ListWorld : ActWorld {
    ListWorld() {
        for (int number = 1; number <= kDives; ++number) {
            addDive(number);
        }
        // Many of a kind, so that equals meet, and some that are missing.
        process().database.execute(
            "UPDATE main SET startdate = '2017-07-' || (10 + rowid % 7), Location = 'Dive' || "
            "(rowid % 5), MaxDepth = CASE rowid % 4 WHEN 0 THEN NULL ELSE rowid % 4 "
            "END, site = CASE rowid % 3 WHEN 0 THEN 'Reef' ELSE 'reef' END");
    }

    FilledList filled(int sortnumber, bool downward) const {
        FilledList list;
        list.sortnumber = sortnumber;
        list.downward = downward;
        list.dives = logbook::readdives(process().database, sortnumber, downward);
        logbook::checkdives(process().database, folder, list.dives, plain(), list.sound);
        list.stamp = process().database.stamp();
        return list;
    }

    static logbook::CheckWatch plain() {
        return {[](int, bool) { return true; }, [](int) { return true; }};
    }

    /// All cells, and which dives are faulty.
    QStringList shown(const logbook::ListedDives& dives, std::vector<bool>& sound) const {
        QStringList all;
        for (int number = 1; number <= dives.count(); ++number) {
            QStringList cells;
            for (int col = 0; col < dives.columns().headers.size(); ++col) {
                cells += dives.cell(number, col, u"metre");
            }
            all += cells.join(QLatin1Char('|'));
        }
        logbook::checkdives(process().database, folder, dives,
                            {[&all](int number, bool good) {
                                 all[number - 1] += good ? QLatin1String(" good") : QLatin1String(" faulty");
                                 return true;
                             },
                             [](int) { return true; }},
                            sound);
        return all;
    }

    QStringList shownAfresh(int sortnumber, bool downward) const {
        std::vector<bool> none;
        return shown(logbook::readdives(process().database, sortnumber, downward), none);
    }
};

/// One act by chance, followed by the list.
void actByChance(const ListWorld& world, QRandomGenerator& random, FilledList& list) {
    const QStringList there = ListWorld::dives();
    const auto some = [&] { return there.at(random.bounded(static_cast<int>(there.size()))); };
    const int kind = random.bounded(5);
    if (kind == 0 && there.size() > 5) {
        QStringList gone{some(), some(), some()};
        gone.removeDuplicates();
        list.follow(logbook::deletedives(process().database, world.folder, gone).span, gone);
    } else if (kind <= 1 && there.size() > 5) {
        const QString gone = some();
        list.follow(logbook::deletedives(process().database, world.folder, {gone}).span, {gone});
    } else if (kind == 2) {
        const QString diveid = some();
        const logbook::SavedDetails saved =
            ListWorld::save(diveid.mid(1).toInt(), QStringLiteral("note %1").arg(random.bounded(100)), {},
                            QStringLiteral("site %1").arg(random.bounded(9)));
        list.follow(saved.span, {diveid});
    } else if (kind == 3 && !ListWorld::undoWords().isEmpty()) {
        const logbook::TurnedAct turned = world.undo();
        list.follow(turned.span, turned.changed);
    } else if (kind == 4 && !ListWorld::redoWords().isEmpty()) {
        const logbook::TurnedAct turned = world.redo();
        list.follow(turned.span, turned.changed);
    }
}

} // namespace

class TestFilledList : public QObject {
    Q_OBJECT

private slots:
    void actsOfAnyKindLeaveTheListThatWouldBeRead_data();
    void actsOfAnyKindLeaveTheListThatWouldBeRead();
    void aDivePutBackFromTheTrashComesToItsPlace();
    void whatElseHappensInTheStoreEndsTheUse_data();
    void whatElseHappensInTheStoreEndsTheUse();
    void anotherOrderIsReadAfresh();
    void aNumberThatTwoDivesBearIsReadAfresh();
    void aDiveThatIsNoLongerSoundIsFaultyInTheListHandedOn();
    void linesOfASheetAreThoseOfTheCells();
};

void TestFilledList::actsOfAnyKindLeaveTheListThatWouldBeRead_data() {
    QTest::addColumn<int>("sort");
    QTest::addColumn<bool>("downward");
    for (int sort = 0; sort <= 4; ++sort) {
        for (const bool downward : {false, true}) {
            QTest::addRow("sort %d %s", sort, downward ? "down" : "up") << sort << downward;
        }
    }
}

void TestFilledList::actsOfAnyKindLeaveTheListThatWouldBeRead() {
    QFETCH(int, sort);
    QFETCH(bool, downward);
    const ListWorld world;
    QRandomGenerator random(static_cast<quint32>(2 * sort + (downward ? 1 : 0) + 1));
    FilledList list = world.filled(sort, downward);
    for (int round = 0; round < 25; ++round) {
        for (int act = random.bounded(3); act >= 0; --act) {
            actByChance(world, random, list);
        }
        QVERIFY(list.takeChanges(process().database, sort, downward));
        QCOMPARE(world.shown(list.dives, list.sound), world.shownAfresh(sort, downward));
        QVERIFY(list.takeChanges(process().database, sort, downward)); // and once more, with nothing to do
    }
}

void TestFilledList::aDivePutBackFromTheTrashComesToItsPlace() {
    const ListWorld world;
    FilledList list = world.filled(logbook::kSortByDate, false);
    list.follow(world.del({7, 8}).span, {ListWorld::id(7), ListWorld::id(8)});
    const auto trashed = logbook::trasheddives(process().database);
    const logbook::TurnedAct turned =
        logbook::putback(process().database, world.folder, {trashed.at(0).id, trashed.at(1).id});
    QCOMPARE(turned.back.size(), 2);
    list.follow(turned.span, turned.changed);
    QVERIFY(list.takeChanges(process().database, logbook::kSortByDate, false));
    QCOMPARE(list.dives.count(), kDives);
    QCOMPARE(world.shown(list.dives, list.sound), world.shownAfresh(logbook::kSortByDate, false));
}

void TestFilledList::whatElseHappensInTheStoreEndsTheUse_data() {
    QTest::addColumn<QString>("sql");
    QTest::addColumn<bool>("byAnother");
    QTest::newRow("a row by ourselves")
        << "UPDATE main SET site = 'another' WHERE DiveID = 'D0000003'" << false;
    QTest::newRow("a row by another program")
        << "UPDATE main SET site = 'another' WHERE DiveID = 'D0000003'" << true;
    QTest::newRow("a row of gases") << "UPDATE gas SET GasN2 = 'another' WHERE diveid = 'D0000003'" << true;
    QTest::newRow("a field") << "ALTER TABLE main ADD COLUMN another" << false;
}

void TestFilledList::whatElseHappensInTheStoreEndsTheUse() {
    QFETCH(QString, sql);
    QFETCH(bool, byAnother);
    const ListWorld world;
    for (const bool before : {true, false}) { // than the act that the list follows
        FilledList list = world.filled(0, false);
        FilledList untouched = world.filled(0, false);
        QVERIFY(untouched.takeChanges(process().database, 0, false));
        platform::Database another;
        another.open(process().database.path());
        const auto happens = [&] {
            const QByteArray text =
                QString(sql)
                    .replace(QLatin1String("another"), before ? QLatin1String("one") : QLatin1String("two"))
                    .toUtf8();
            platform::StoredRows(byAnother ? another : process().database).change(text);
        };
        if (before) {
            happens();
        }
        list.follow(world.del({before ? 11 : 12}).span, {ListWorld::id(before ? 11 : 12)});
        if (!before) {
            happens();
        }
        QVERIFY(!list.takeChanges(process().database, 0, false));
        QVERIFY(!untouched.takeChanges(process().database, 0, false));
        world.reopen();
    }
    FilledList list = world.filled(0, false);
    world.reopen();
    QVERIFY(!list.takeChanges(process().database, 0, false));
}

void TestFilledList::anotherOrderIsReadAfresh() {
    const ListWorld world;
    QVERIFY(!world.filled(0, false).takeChanges(process().database, 0, true));
    QVERIFY(!world.filled(0, false).takeChanges(process().database, logbook::kSortByDate, false));
}

void TestFilledList::aNumberThatTwoDivesBearIsReadAfresh() {
    const ListWorld world;
    process().database.execute("INSERT INTO main (DiveID, Startcode) VALUES ('d0000005', '1')");
    FilledList list = world.filled(0, false);
    list.follow(world.del({5}).span, {ListWorld::id(5)});
    QVERIFY(!list.takeChanges(process().database, 0, false));
}

void TestFilledList::aDiveThatIsNoLongerSoundIsFaultyInTheListHandedOn() {
    const ListWorld world;
    FilledList list = world.filled(0, false);
    const platform::StoreStamp before = process().database.stamp();
    process().database.execute("DELETE FROM gas WHERE diveid = 'D0000004'");
    list.follow({before, process().database.stamp()}, {ListWorld::id(4)});
    QVERIFY(list.takeChanges(process().database, 0, false));
    QVERIFY(world.shown(list.dives, list.sound).at(3).endsWith(QLatin1String("faulty")));
}

/// Values as devices write them, as divers write them, and damaged ones.
void TestFilledList::linesOfASheetAreThoseOfTheCells() {
    const ListWorld world;
    QRandomGenerator random(7);
    const QStringList values{QStringLiteral("2017-09-27 03:34:38"),
                             QStringLiteral("2017-02-29 03:34:38"),
                             QStringLiteral("2016-02-29 23:59:59"),
                             QStringLiteral("1971-12-01 24:00:00"),
                             QStringLiteral("0000-01-01 00:00:00"),
                             QStringLiteral("0001-01-31 10:60:00"),
                             QStringLiteral("2017-13-01 00:00:00"),
                             QStringLiteral("2017-9-27 3:34:38"),
                             QStringLiteral("41:7"),
                             QStringLiteral("23.500"),
                             QStringLiteral("-0.4"),
                             QStringLiteral(" 12"),
                             QStringLiteral("1e3"),
                             QStringLiteral("5400"),
                             QStringLiteral("  two words  "),
                             QStringLiteral("a,b"),
                             QStringLiteral("R\u00e9union \u2603"),
                             QString(),
                             QStringLiteral("   "),
                             QStringLiteral("\tx\r\n")};
    const QStringList fields{QStringLiteral("DiveID"),   QStringLiteral("Duration"),
                             QStringLiteral("MaxDepth"), QStringLiteral("startdate"),
                             QStringLiteral("Location"), QStringLiteral("site"),
                             QStringLiteral("dusage"),   QStringLiteral("UserName")};
    for (int row = 1; row <= 300; ++row) {
        platform::Recordset dives = process().database.openForAdding("main");
        dives.addNew();
        for (const QString& field : fields) {
            if (random.bounded(8) > 0) {
                dives.set(field, values.at(random.bounded(static_cast<int>(values.size()))));
            }
        }
        dives.update();
    }
    for (int month = 1; month <= 12; ++month) {
        platform::StoredRows(process().database)
            .change("INSERT INTO main (DiveID, startdate) VALUES ('D1', ?1)",
                    {StoredValue(QStringLiteral("2001-%1-17 01:02:03").arg(month, 2, 10, QLatin1Char('0')))});
    }
    // What no text of ours is.
    process().database.execute(
        "INSERT INTO main (DiveID, site) VALUES (CAST(x'44ff31' AS TEXT), CAST(x'c328' AS TEXT))");
    const logbook::ListedDives dives = logbook::readdives(process().database, 0);
    for (const QString& unit : {QStringLiteral("metre"), QStringLiteral("Feet")}) {
        logbook::SheetLines sheet(dives, unit);
        for (int number = 1; number <= dives.count(); ++number) {
            QStringList cells;
            for (int col = 0; col < logbook::kSheetColumns; ++col) {
                cells += dives.cell(number, col, unit);
            }
            std::string line;
            sheet.add(number, line);
            QCOMPARE(QByteArray::fromStdString(line), logbook::spreadsheetrow(cells));
        }
    }
}

QTEST_GUILESS_MAIN(TestFilledList)
#include "test_filledlist.moc"
