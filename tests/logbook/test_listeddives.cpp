// The list's dives are read once and its rows judged in one pass: both must give what asking for each dive by
// itself gives.

#include "divefiles/validators.h"
#include "logbook/divelist.h"
#include "logbook/listfill.h"
#include "logbook/soundrows.h"
#include "platform/faultpoint.h"
#include "session/process.h"
#include "store/access.h"
#include "tests/support/programfixture.h"

#include <QRandomGenerator>

using namespace benthor;

namespace {

QString diveid(int number) {
    return QStringLiteral("D%1").arg(number, 7, 10, QLatin1Char('0'));
}

void insert(const char* table, const QString& identifier, const QStringList& texts) {
    platform::Recordset rows = process().database.openForAdding(table);
    rows.addNew();
    rows.set(0, identifier);
    for (int i = 0; i < texts.size(); ++i) {
        if (texts.at(i) != QLatin1String("(null)")) {
            rows.set(i + 1, texts.at(i));
        }
    }
    rows.update();
}

/// A dive with rows that are good, or not, or written in an unusual way.
class Chance {
public:
    explicit Chance(quint32 seed)
        : random_(seed) {}

    QString oneOf(std::initializer_list<const char*> good, std::initializer_list<const char*> others) {
        const auto& from = random_.bounded(12) == 0 ? others : good;
        return QString::fromUtf8(from.begin()[random_.bounded(static_cast<int>(from.size()))]);
    }
    int below(int most) { return random_.bounded(most); }

    void addDive(int number) {
        const QString own = diveid(number);
        const QString odd =
            QStringList{own,        own,       own.toLower(), own + u' ',      u' ' + own,
                        own.mid(1), QString(), own + u'\'',   own + u'\u00e9', diveid(number + 1)}
                .at(below(40) < 30 ? 0 : below(10));
        platform::Recordset dives = process().database.openForAdding("main");
        dives.addNew();
        dives.set(u"DiveID", odd);
        dives.set(u"Location", oneOf({"a.txt", "b.txt", "c.txt"}, {"", "A.TXT"}));
        dives.set(u"site", oneOf({"Mole", "Reef"}, {"mole", ""}));
        if (below(20) > 0) {
            dives.set(u"startdate",
                      QStringLiteral("2017-09-%1 03:34:38").arg(1 + below(9), 2, 10, QLatin1Char('0')));
        }
        dives.set(u"finisheddate", QStringLiteral("2017-09-27 04:15:45"));
        dives.set(u"MaxDepth", oneOf({"12.300", "9.500", "45.10"}, {"123456789", "deep"}));
        dives.set(u"Version", oneOf({"V3.12", "Null"}, {"V", "", "V3.12.1.1"}));
        dives.set(u"Interval", oneOf({"10", "1.5"}, {"1000", "x", "", " 5", "5\r"}));
        dives.update();
        for (int i = below(30) == 0 ? 1 : 0; i < 2; ++i) {
            insert("gas",
                   below(25) == 0   ? own.toLower()
                   : below(25) == 0 ? own + u' '
                                    : own,
                   {oneOf({"0001", "0002"}, {"1", "00x1"}), oneOf({"79", "0"}, {"7900", "x", "", "+5"}),
                    oneOf({"0"}, {"1234", "(null)"}), oneOf({"660"}, {"66000", ""}),
                    oneOf({"1\r", "0"}, {"\r", "12345", "-1\r",
                                         "\xC2\xA0"
                                         "1"})});
        }
        for (int i = below(30) == 0 ? 2 : 0; i < 2; ++i) {
            insert("tissue", own,
                   {oneOf({"0001"}, {"1", ""}), oneOf({"79"}, {"1234", "x", " 7 "}),
                    oneOf({"0\r", "12"}, {"12345", "", "(null)"})});
        }
    }

private:
    QRandomGenerator random_;
};

QStringList oneByOne(const logbook::ListedDives& dives) {
    QStringList problems;
    for (int number = 1; number <= dives.count(); ++number) {
        process().currentdiveid = dives.diveid(number);
        try {
            divefiles::checkdive(process().database);
        } catch (const platform::StoreError& error) {
            process().problemtext += QLatin1Char('\r') + error.text();
        }
        problems += process().problemtext;
    }
    return problems;
}

QStringList together(const logbook::ListedDives& dives, const platform::ProgramFolder& folder) {
    QStringList problems;
    logbook::checkdives(process().database, folder, dives,
                        {[&problems](int, bool good) {
                             problems += good ? QString() : process().problemtext;
                             return true;
                         },
                         {}});
    return problems;
}

} // namespace

class TestListedDives : public QObject {
    Q_OBJECT

private slots:
    void init() { program_ = std::make_unique<tests::ProgramFixture>(); }
    void cleanup() { program_.reset(); }

    void rowsAndOrderAreThoseOfTheWholeQuery_data();
    void rowsAndOrderAreThoseOfTheWholeQuery();
    void onePassFindsWhatTheValidatorsFindDiveByDive();
    void rowsOfAnotherTypeAreLeftToTheValidators();
    void usualDivesAreJudgedWithoutAskingForEach();
    void aCheckEndsWhereItIsTold();
    void theFirstScreenfulIsThereBeforeTheRest();
    void textsOfOneDiveAreTakenAfresh();
    void aTableThatIsMissingFailsTheReading();

private:
    void fill(int dives, quint32 seed) {
        platform::Transaction transaction(process().database);
        Chance chance(seed);
        for (int number = 1; number <= dives; ++number) {
            chance.addDive(number);
        }
        transaction.commit();
    }
    std::unique_ptr<tests::ProgramFixture> program_;
};

void TestListedDives::rowsAndOrderAreThoseOfTheWholeQuery_data() {
    QTest::addColumn<int>("sort");
    QTest::addColumn<bool>("downward");
    for (int sort = 0; sort <= 4; ++sort) {
        QTest::addRow("%d upward", sort) << sort << false;
        QTest::addRow("%d downward", sort) << sort << true;
    }
}

void TestListedDives::rowsAndOrderAreThoseOfTheWholeQuery() {
    QFETCH(int, sort);
    QFETCH(bool, downward);
    fill(2500, 1); // more than one step of the reading
    process().database.execute("DELETE FROM main WHERE rowid % 7 = 3");
    const logbook::ListedDives dives = logbook::readdives(process().database, sort, downward);
    platform::Recordset rows = process().database.openRecordset(logbook::listquery(sort, downward));
    QCOMPARE(dives.count(), rows.recordCount());
    for (int number = 1; !rows.eof(); rows.moveNext(), ++number) {
        const std::vector<int> order = logbook::columnorder(rows.fieldCount());
        for (size_t col = 0; col < order.size(); ++col) {
            QCOMPARE(dives.cell(number, static_cast<int>(col), u"metre"),
                     logbook::celltext(order[col], rows.value(order[col]), u"metre"));
        }
    }
}

void TestListedDives::onePassFindsWhatTheValidatorsFindDiveByDive() {
    fill(1500, 7);
    const logbook::ListedDives dives = logbook::readdives(process().database, 3);
    const QStringList expected = oneByOne(dives);
    QVERIFY(expected.count(QString()) > 100 && expected.count(QString()) < 1400);
    const QString lastQuery = process().querytext;
    QCOMPARE(together(dives, program_->folder), expected);
    QCOMPARE(process().problemtext, expected.last());
    QCOMPARE(process().querytext, lastQuery);
}

void TestListedDives::rowsOfAnotherTypeAreLeftToTheValidators() {
    process().database.execute("DROP TABLE gas");
    process().database.execute("CREATE TABLE gas (diveid, Gastype, GasN2, GasHe, gasmod, Gasstat)");
    fill(50, 3);
    process().database.execute("UPDATE gas SET diveid = CAST(diveid AS BLOB) WHERE rowid % 5 = 0");
    process().database.execute("UPDATE main SET DiveID = CAST(DiveID AS BLOB) WHERE rowid % 9 = 0");
    const logbook::ListedDives dives = logbook::readdives(process().database, 0);
    const QStringList expected = oneByOne(dives);
    QCOMPARE(together(dives, program_->folder), expected);
    std::vector<bool> sound;
    QVERIFY(logbook::findsounddives(process().database, dives, {}, sound));
    QVERIFY(std::none_of(sound.begin(), sound.end(), [](bool good) { return good; }));
}

void TestListedDives::usualDivesAreJudgedWithoutAskingForEach() {
    for (int number = 1; number <= 60; ++number) {
        insert("main", diveid(number), {});
        insert("gas", diveid(number), {"0001", number % 10 == 0 ? "7900" : "79", "0", "660", "1\r"});
        insert("tissue", diveid(number), {"0001", "79", "0\r"});
    }
    process().database.execute(
        "UPDATE main SET startdate = '2017-09-27 03:34:38', "
        "finisheddate = '2017-09-27 04:15:45', MaxDepth = '12.300', Version = 'V3.12', \"Interval\" = '10'");
    const logbook::ListedDives dives = logbook::readdives(process().database, 0);
    std::vector<bool> sound;
    QVERIFY(logbook::findsounddives(process().database, dives, {}, sound));
    for (int number = 1; number <= dives.count(); ++number) {
        QCOMPARE(bool(sound[static_cast<size_t>(number)]), number % 10 != 0);
    }
}

void TestListedDives::aCheckEndsWhereItIsTold() {
    fill(20, 5);
    const logbook::ListedDives dives = logbook::readdives(process().database, 0);
    int asked = 0;
    QVERIFY(!logbook::checkdives(process().database, program_->folder, dives,
                                 {[](int, bool) { return true; }, [&](int) { return ++asked < 2; }}));
    QCOMPARE(asked, 2);
    int checked = 0;
    QVERIFY(!logbook::checkdives(process().database, program_->folder, dives,
                                 {[&](int number, bool) { return checked = number, number < 3; }, {}}));
    QCOMPARE(checked, 3);
}

void TestListedDives::theFirstScreenfulIsThereBeforeTheRest() {
    fill(40, 2);
    logbook::ListedDives dives;
    logbook::DiveReading reading(process().database, 0, true, dives);
    QCOMPARE(dives.count(), 40);
    QVERIFY(!dives.isRead(1));
    QCOMPARE(dives.cell(1, 0, u"metre"), QString());
    reading.readFirst(5);
    const logbook::ListedDives all = logbook::readdives(process().database, 0, true);
    for (int number = 1; number <= 40; ++number) {
        QCOMPARE(dives.isRead(number), number <= 5);
        QCOMPARE(dives.diveid(number), number <= 5 ? all.diveid(number) : QString());
    }
    while (reading.readMore()) {
        QVERIFY(dives.isRead(1));
    }
    QCOMPARE(dives.diveid(40), all.diveid(40));
}

void TestListedDives::textsOfOneDiveAreTakenAfresh() {
    fill(3, 100);
    process().database.execute("UPDATE main SET DiveID = 'D000000' || rowid");
    logbook::ListedDives dives = logbook::readdives(process().database, 0);
    process().database.execute("UPDATE main SET Location = 'new ' || rowid");
    QCOMPARE(dives.takeText(process().database, QStringLiteral("D0000002")), std::vector{2});
    QCOMPARE(dives.location(2), QStringLiteral("new 2"));
    QVERIFY(!dives.location(1).startsWith(QLatin1String("new")));
    QCOMPARE(dives.takeText(process().database, QStringLiteral("D0000009")), std::vector<int>());
    QCOMPARE(dives.count(), 3);
}

void TestListedDives::aTableThatIsMissingFailsTheReading() {
    process().database.execute("DROP TABLE main");
    QVERIFY_EXCEPTION_THROWN(logbook::readdives(process().database, 0), platform::StoreError);
}

QTEST_GUILESS_MAIN(TestListedDives)
#include "test_listeddives.moc"
