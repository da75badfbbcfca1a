#include "divefiles/importer.h"
#include "divefiles/owedprofiles.h"
#include "exports/samplecolumns.h"
#include "exports/wholedive.h"
#include "tests/support/programfixture.h"

#include <QRandomGenerator>
#include <QRegularExpression>

#include <cmath>

using namespace benthor;
using namespace benthor::exports;
using tests::ProgramFixture;

namespace {

/// A folder with the dive of tests::goodDive(), imported.
class World : public ProgramFixture {
public:
    World() {
        putWaiting(QStringLiteral("Dive000001.txt"), tests::goodDive());
        divefiles::ImportState state;
        divefiles::ImportScreen screen;
        process().database.execute("UPDATE serialno SET serial_no = 'D0000000'");
        if (divefiles::importdives(folder, state, screen) != divefiles::ImportEnd::Done) {
            qFatal("the test's dive was not imported");
        }
    }
    std::optional<WholeDive> read(const QString& id = QStringLiteral("D0000001")) const {
        return DiveReader(process().database, folder).read(id);
    }
    static void set(const char* sql) { process().database.execute(sql); }
};

} // namespace

class TestWholeDive : public QObject {
    Q_OBJECT

private slots:
    void numbersAreNumbersAndNothingElse_data();
    void numbersAreNumbersAndNothingElse();
    void numbersHaveOneForm();
    void durations_data();
    void durations();
    void allOfADiveIsRead();
    void nullStaysNullAndNoNumberIsNone();
    void theFirstOfTwoRowsIsTheDives();
    void aDiveThatIsNotThere();
    void anIdentifierMayBeAnyText();
    void aMissingFileAndOneWithoutSamplesAreTold();
    void aNameThatLeadsElsewhereIsNoFile();
    void anOwedProfileIsReadWhereItLies();
    void aStoreOfAnOlderFormIsRead();
    void divesComeByTheirStart();
    void columnsThatHoldNothingAreNotRecorded();
    void alarmTokensAreWholeButNotWithoutEnd();
};

void TestWholeDive::numbersAreNumbersAndNothingElse_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("number"); // NaN: none
    QTest::newRow("whole") << "12" << 12.0;
    QTest::newRow("padded depth") << "23.400" << 23.4;
    QTest::newRow("blanks and a line end") << " 7 \r" << 7.0;
    QTest::newRow("signs") << "-0.5" << -0.5;
    QTest::newRow("exponent") << "1e2" << 100.0;
    for (const char* const none : {"", " ", "12a", "0x10", "1,5", "nan", "inf", "1e999", ".", "-", "12 3"}) {
        QTest::newRow(none) << QString::fromLatin1(none) << qQNaN();
    }
}

void TestWholeDive::numbersAreNumbersAndNothingElse() {
    QFETCH(QString, text);
    QFETCH(double, number);
    const std::optional<double> read = plainNumber(text);
    QCOMPARE(read.has_value(), !qIsNaN(number));
    if (read) {
        QCOMPARE(*read, number);
    }
}

/// Against the form of a number, spelled out.
void TestWholeDive::numbersHaveOneForm() {
    const QRegularExpression form(QStringLiteral(R"(^[+-]?(\d+\.?\d*|\.\d+)([eE][+-]?\d+)?$)"));
    const QString letters = QStringLiteral("0123456789012345+-..eE ,infax'_");
    QRandomGenerator random(20261123);
    int numbers = 0;
    for (int i = 0; i < 20000; ++i) {
        QString text;
        for (int letter = random.bounded(1, 6); letter > 0; --letter) {
            text += letters[random.bounded(letters.size())];
        }
        const bool isNumber = form.match(text.trimmed()).hasMatch() && std::isfinite(text.toDouble());
        QVERIFY2(plainNumber(text).has_value() == isNumber, qPrintable(text));
        if (isNumber) {
            QCOMPARE(*plainNumber(text), text.trimmed().toDouble());
            ++numbers;
        }
    }
    QVERIFY(numbers > 1000);
}

void TestWholeDive::durations_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("seconds");
    QTest::newRow("usual") << "41:7" << 2467.0;
    QTest::newRow("under a minute") << ":7" << 7.0;
    QTest::newRow("padded") << "05:09" << 309.0;
    for (const char* const none : {"", "41", "41:", ":", "1:2:3", "-1:2", "a:b"}) {
        QTest::newRow(none) << QString::fromLatin1(none) << qQNaN();
    }
}

void TestWholeDive::durations() {
    QFETCH(QString, text);
    QFETCH(double, seconds);
    const std::optional<double> read = durationSeconds(text);
    QCOMPARE(read.has_value(), !qIsNaN(seconds));
    if (read) {
        QCOMPARE(*read, seconds);
    }
}

void TestWholeDive::allOfADiveIsRead() {
    const World world;
    world.set("INSERT INTO buddylist VALUES ('D0000001', 'Anna')");
    world.set("INSERT INTO buddylist VALUES ('D0000001', 'Ben')");
    world.set("UPDATE main SET site = 'Blue Hole'");
    const std::optional<WholeDive> dive = world.read();
    QVERIFY(dive.has_value());
    QCOMPARE(dive->figures.id, QStringLiteral("D0000001"));
    QCOMPARE(dive->figures.name, QStringLiteral("Dive000001.txt"));
    QCOMPARE(dive->figures.site, QStringLiteral("Blue Hole"));
    QCOMPARE(dive->figures.serial, QStringLiteral("KD00123"));
    QCOMPARE(dive->figures.version, QStringLiteral("V3.12"));
    // 812345678 and 812348145 seconds from the start of 31 December 1991
    const QDateTime epoch({1991, 12, 31}, {0, 0}, Qt::UTC);
    QCOMPARE(dive->figures.start, epoch.addSecs(812345678));
    QCOMPARE(dive->figures.end, epoch.addSecs(812348145));
    QCOMPARE(dive->figures.duration, 41 * 60.0 + 7);
    QCOMPARE(dive->figures.maxdepth, 23.4);
    QCOMPARE(dive->figures.interval, 10.0);
    QCOMPARE(dive->figures.otu, 12.0);
    QCOMPARE(dive->figures.faults, QStringList());
    QCOMPARE(dive->store.size(), size_t{27});
    QCOMPARE(fieldOf(dive->store, u"DATMOS"), QStringLiteral("1013"));
    QCOMPARE(dive->gases.size(), size_t{2});
    QCOMPARE(fieldOf(dive->gases[1], u"gasn2"), QStringLiteral("68"));
    QCOMPARE(dive->gasArrays.gaso2[1], int16_t{32});
    QCOMPARE(dive->tissues.size(), size_t{2});
    QCOMPARE(dive->buddies, (QStringList{"Anna", "Ben"}));
    QCOMPARE(dive->file, tests::goodDive());
    QCOMPARE(dive->withoutSamples, QString());
    QCOMPARE(dive->samples(), 1);
    QCOMPARE(dive->lastsample(), 4);
    QCOMPARE(dive->timeOf(4), 40.0);
}

void TestWholeDive::nullStaysNullAndNoNumberIsNone() {
    const World world;
    world.set(
        "UPDATE main SET Location = NULL, Suit = '', MaxDepth = 'deep', Duration = NULL, \"Interval\" = "
        "'fast', startdate = 'tomorrow'");
    const std::optional<WholeDive> dive = world.read();
    QVERIFY(dive.has_value());
    QVERIFY(!dive->figures.name.has_value());
    QCOMPARE(dive->figures.serial, QString());
    QVERIFY(!dive->figures.maxdepth && !dive->figures.duration && !dive->figures.interval);
    QVERIFY(!dive->figures.start.isValid());
    QVERIFY(!dive->timeOf(4).has_value());
    QCOMPARE(fieldOf(dive->store, u"MaxDepth"), QStringLiteral("deep"));
    QCOMPARE(dive->figures.faults, QStringList{QStringLiteral("Main Profile - Error in interval number!")});
}

void TestWholeDive::theFirstOfTwoRowsIsTheDives() {
    const World world;
    world.set("INSERT INTO main (DiveID, Location) VALUES ('D0000001', 'second')");
    QCOMPARE(world.read()->figures.name, QStringLiteral("Dive000001.txt"));
    QCOMPARE(DiveReader(process().database, world.folder).identifiers(), QStringList{"D0000001"});
}

void TestWholeDive::aDiveThatIsNotThere() {
    const World world;
    QVERIFY(!world.read(QStringLiteral("D0000002")).has_value());
    QVERIFY(!DiveReader(process().database, world.folder).figures(QString()).has_value());
}

void TestWholeDive::anIdentifierMayBeAnyText() {
    const World world;
    world.set("UPDATE main SET DiveID = 'O''Hara'");
    world.set("UPDATE gas SET diveid = 'O''Hara'");
    world.set("INSERT INTO buddylist VALUES ('o''hara', 'Anna')");
    const std::optional<WholeDive> dive = world.read(QStringLiteral("O'HARA"));
    QVERIFY(dive.has_value());
    QCOMPARE(dive->figures.id, QStringLiteral("O'Hara"));
    QCOMPARE(dive->gases.size(), size_t{2});
    QCOMPARE(dive->buddies, QStringList{"Anna"});
    QCOMPARE(dive->samples(), 1);
    QCOMPARE(dive->figures.faults.first(), QStringLiteral("Main Profile - Error in Main DiveID format !"));
    QCOMPARE(dive->figures.faults.last(), QStringLiteral("Tissue Profile not found !"));
    QCOMPARE(DiveReader(process().database, world.folder).figures(QStringLiteral("O'Hara"))->faults,
             dive->figures.faults);
}

void TestWholeDive::aMissingFileAndOneWithoutSamplesAreTold() {
    const World world;
    const QString name = world.read()->fileName;
    world.put(QStringLiteral("dbtxt"), name, "ver=V3.12\r\nProfile\r\nEnd\r\n");
    QCOMPARE(world.read()->withoutSamples, QStringLiteral("Its file %1 holds no sample.").arg(name));
    QVERIFY(world.read()->file.has_value());
    QFile::remove(world.folder.path(u"dbtxt", name));
    QCOMPARE(world.read()->withoutSamples,
             QStringLiteral("Its file %1 is not in the folder dbtxt.").arg(name));
    QCOMPARE(world.read()->samples(), 0);
    world.set("UPDATE main SET dbtxtname = NULL");
    QCOMPARE(world.read()->withoutSamples, QStringLiteral("The store names no file for it."));
}

void TestWholeDive::aNameThatLeadsElsewhereIsNoFile() {
    const World world;
    world.put(QString(), QStringLiteral("secret.txt"), tests::goodDive());
    world.set("UPDATE main SET dbtxtname = '../secret.txt'");
    QVERIFY(!world.read()->file.has_value());
}

void TestWholeDive::anOwedProfileIsReadWhereItLies() {
    const World world;
    const QString name = world.read()->fileName;
    const auto owed = divefiles::owedprofile(world.folder, name, world.names(QStringLiteral("old")).first());
    QVERIFY(owed.has_value());
    divefiles::noteowed(process().database, *owed);
    QVERIFY(QFile::remove(world.folder.path(u"dbtxt", name)));
    QCOMPARE(world.read()->samples(), 1);
    QVERIFY(!QFile::exists(world.folder.path(u"dbtxt", name)));
    QCOMPARE(divefiles::owedprofiles(process().database).size(), size_t{1});
}

void TestWholeDive::aStoreOfAnOlderFormIsRead() {
    const World world;
    world.set("DROP TABLE buddylist");
    world.set("DROP TABLE tissue");
    world.set("ALTER TABLE main DROP COLUMN otu");
    const std::optional<WholeDive> dive = world.read();
    QVERIFY(dive.has_value());
    QVERIFY(!dive->figures.otu.has_value());
    QVERIFY(dive->tissues.empty() && dive->buddies.isEmpty());
    QCOMPARE(dive->samples(), 1);
}

void TestWholeDive::divesComeByTheirStart() {
    const World world;
    world.set("INSERT INTO main (DiveID, startdate) VALUES ('D0000002', '1999-01-01 10:00:00'), "
              "('D0000003', NULL), ('D0000000', '1999-01-01 10:00:00')");
    QCOMPARE(DiveReader(process().database, world.folder).identifiers(),
             (QStringList{"D0000003", "D0000000", "D0000002", "D0000001"}));
}

void TestWholeDive::columnsThatHoldNothingAreNotRecorded() {
    const World world;
    const std::optional<WholeDive> dive = world.read();
    QStringList recorded;
    for (const SampleColumn& column : sampleColumns()) {
        if (isRecorded(*dive, column.array)) {
            recorded += QLatin1String(column.name);
        }
    }
    // Its only record: depth 10, gas 0, PO2 0.70, mark 0, 20 degrees, filter 500
    QCOMPARE(recorded, (QStringList{"depthpos", "gasnum", "po2", "temp", "filterpct"}));
    WholeDive none;
    QVERIFY(!isRecorded(none, sampleColumns().front().array));
    QCOMPARE(sampleColumns().size(), size_t{36});
    QCOMPARE(QLatin1String(sampleColumns().back().name), QLatin1String("extraf"));
}

void TestWholeDive::alarmTokensAreWholeButNotWithoutEnd() {
    profile::DiveProfile profile;
    profile.alarms.add(4, "LOW PO2");
    profile.alarms.add(4, "DECO");
    profile.alarms.add(5, QByteArray(100000, 'x'));
    QCOMPARE(alarmTokens(profile, 4), (QStringList{"LOW PO2", "DECO"}));
    QCOMPARE(alarmTokens(profile, 5), QStringList{QString(255, u'x')});
    QCOMPARE(alarmTokens(profile, 6), QStringList());
}

QTEST_GUILESS_MAIN(TestWholeDive)
#include "test_wholedive.moc"
