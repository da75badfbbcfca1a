#include "divefiles/importer.h"
#include "exports/exportdives.h"
#include "exports/losses.h"
#include "exports/outputfile.h"
#include "tests/exports/madedives.h"
#include "tests/support/programfixture.h"

#include <QBuffer>

using namespace benthor;
using namespace benthor::exports;
using tests::MadeDive;
using tests::ProgramFixture;

namespace {

constexpr std::array<DiveFormat, 4> kAll{DiveFormat::Uddf, DiveFormat::Json, DiveFormat::Csv,
                                         DiveFormat::Zxu};

/// A folder with `dives` good dives, imported.
class World : public ProgramFixture {
public:
    explicit World(int dives) {
        for (int number = 1; number <= dives; ++number) {
            putWaiting(QStringLiteral("Dive%1.txt").arg(number, 6, 10, QLatin1Char('0')),
                       tests::goodDive(QByteArray::number(812345678 + number * 86400)));
        }
        divefiles::ImportState state;
        divefiles::ImportScreen screen;
        process().database.execute("UPDATE serialno SET serial_no = 'D0000000'");
        if (divefiles::importdives(folder, state, screen) != divefiles::ImportEnd::Done) {
            qFatal("the test's dives were not imported");
        }
    }
    static QString id(int number) { return QStringLiteral("D%1").arg(number, 7, 10, QLatin1Char('0')); }
    static QStringList ids(int dives) {
        QStringList all;
        for (int number = 1; number <= dives; ++number) {
            all += id(number);
        }
        return all;
    }
};

} // namespace

class TestExportDives : public QObject {
    Q_OBJECT

private slots:
    void formatsAreNamedByTheirEndings();
    void everyFormatTakesTheDives();
    void whatIsNotThereIsToldAndWhatStandsTwiceGoesOnce();
    void theProgressIsToldAndCanEndIt();
    void aStoppedExportLeavesNoFile();
    void aDiveWithoutItsFileGoesOutAndIsNamed();
    void whatATableOfSamplesLeavesOutIsTold();
    void whatDl7LeavesOutIsTold();
    void aDiveThatFitsLosesNothing();
    void theReportCountsDivesByKind();
};

void TestExportDives::formatsAreNamedByTheirEndings() {
    QCOMPARE(formatNamed(u"uddf"), DiveFormat::Uddf);
    QCOMPARE(formatNamed(u"Json"), DiveFormat::Json);
    QCOMPARE(formatNamed(u"CSV"), DiveFormat::Csv);
    QCOMPARE(formatNamed(u"zxu"), DiveFormat::Zxu);
    QCOMPARE(formatNamed(u""), std::nullopt);
    QCOMPARE(formatNamed(u".uddf"), std::nullopt);
}

void TestExportDives::everyFormatTakesTheDives() {
    const World world(3);
    DiveReader reader(process().database, world.folder);
    const QList<QByteArray> begins{"<?xml", "{", "id,time_s,", "FSH|"};
    const QList<QByteArray> ends{"</uddf>", "}", "\n", "|"};
    for (size_t i = 0; i < kAll.size(); ++i) {
        QBuffer file;
        QVERIFY(file.open(QIODevice::WriteOnly));
        const LossReport losses = exportdives(kAll.at(i), file, reader, world.ids(3));
        QCOMPARE(losses.dives, 3);
        QVERIFY(losses.withoutSamples.isEmpty());
        const QByteArray text = file.data();
        QVERIFY(text.startsWith(begins.at(static_cast<qsizetype>(i))));
        const QByteArray end = ends.at(static_cast<qsizetype>(i));
        QVERIFY2(end == "\n" || text.trimmed().endsWith(end), text.right(20).constData());
    }
}

void TestExportDives::whatIsNotThereIsToldAndWhatStandsTwiceGoesOnce() {
    const World world(2);
    DiveReader reader(process().database, world.folder);
    for (const DiveFormat format : kAll) {
        QBuffer file;
        QVERIFY(file.open(QIODevice::WriteOnly));
        QStringList notThere;
        const LossReport losses = exportdives(
            format, file, reader, {world.id(2), world.id(9), world.id(1), world.id(2)}, {}, &notThere);
        QCOMPARE(losses.dives, 2);
        QCOMPARE(notThere, QStringList{world.id(9)});
    }
}

void TestExportDives::theProgressIsToldAndCanEndIt() {
    const World world(3);
    DiveReader reader(process().database, world.folder);
    QBuffer file;
    QVERIFY(file.open(QIODevice::WriteOnly));
    QList<int> told;
    exportdives(DiveFormat::Csv, file, reader, world.ids(3), [&told](int done, int of) {
        told += done;
        return of == 3;
    });
    QCOMPARE(told, (QList<int>{0, 1, 2, 3}));
    for (int last = 0; last <= 3; ++last) {
        QVERIFY_EXCEPTION_THROWN(exportdives(DiveFormat::Json, file, reader, world.ids(3),
                                             [last](int done, int) { return done < last; }),
                                 ExportStopped);
    }
}

void TestExportDives::aStoppedExportLeavesNoFile() {
    const World world(3);
    DiveReader reader(process().database, world.folder);
    const QStringList before = QDir(world.folder.root()).entryList(QDir::AllEntries | QDir::Hidden);
    for (const DiveFormat format : kAll) {
        try {
            OutputFile file(world.folder.path(u"dives.out"), false);
            exportdives(format, file.device(), reader, world.ids(3), [](int done, int) { return done < 2; });
            file.commit();
            QFAIL("it was not stopped");
        } catch (const ExportStopped&) {
        }
        QCOMPARE(QDir(world.folder.root()).entryList(QDir::AllEntries | QDir::Hidden), before);
    }
}

void TestExportDives::aDiveWithoutItsFileGoesOutAndIsNamed() {
    const World world(2);
    DiveReader reader(process().database, world.folder);
    QVERIFY(QFile::remove(world.folder.path(u"dbtxt", reader.read(world.id(2))->fileName)));
    for (const DiveFormat format : kAll) {
        QBuffer file;
        QVERIFY(file.open(QIODevice::WriteOnly));
        const LossReport losses = exportdives(format, file, reader, world.ids(2));
        QCOMPARE(losses.dives, 2);
        QCOMPARE(losses.withoutSamples.size(), 1);
        QVERIFY(losses.withoutSamples.first().startsWith(QLatin1String("D0000002: Its file ")));
    }
}

namespace {

/// A dive with something in every place that a dive has.
MadeDive fullDive() {
    return MadeDive()
        .records(
            {",1,0,70,M1,T2,A500,B300,C600,D100,E90,F70,G71,H72,I70,J2,O1,P2,Q3,R4,S1,T2,x3,z200,v1,t2,f3",
             ",1,2,70,M0,T2,A1,LOW"})
        .gas("79")
        .gas("40", "30")
        .gas("50")
        .buddy("Anna")
        .set("Location", "A name")
        .set("divenote", "A note")
        .set("weather", " ") // says nothing
        .set("otu", "12");
}

WholeDive withTissues(WholeDive dive) {
    dive.tissues.push_back({{QStringLiteral("tissuenumber"), QStringLiteral("1")}});
    return dive;
}

LostKinds both(LostKinds some, const LostKinds& others) {
    some.insert(others.begin(), others.end());
    return some;
}

} // namespace

void TestExportDives::whatATableOfSamplesLeavesOutIsTold() {
    const LostKinds fields{"field Location", "field MaxDepth", "field Suit", "field Version",
                           "field datmos",   "field divenote", "field otu",  "field startdate",
                           "field systemid", "field Duration"};
    QCOMPARE(csvLosses(withTissues(fullDive().whole())), both(fields, {"tissues", "gases", "buddies"}));
    QCOMPARE(
        csvLosses(fullDive().set("UserName", "another").set("finisheddate", "2004-09-03 12:00:00").whole()),
        both(fields, {"gases", "buddies", "field UserName", "field finisheddate"}));
}

void TestExportDives::whatDl7LeavesOutIsTold() {
    const LostKinds expected{"oxygen cells",
                             "marks",
                             "filter",
                             "battery volts",
                             "CO2",
                             "thermistors",
                             "extra columns",
                             "tissues",
                             "buddies",
                             "field Location",
                             "gases on or off",
                             "gases that were not breathed",
                             "field datmos",
                             "field divenote",
                             "field otu",
                             "field Version",
                             "field systemid",
                             "field Suit"};
    QCOMPARE(zxuLosses(withTissues(fullDive().whole())), expected);
}

void TestExportDives::aDiveThatFitsLosesNothing() {
    MadeDive dive;
    for (const char* const field : {"UserName", "Suit", "Version", "systemid", "datmos"}) {
        dive.set(field, std::nullopt);
    }
    dive.records({",100,0,70,M0,T20,C6,I70,LOW"});
    QCOMPARE(zxuLosses(dive.whole()), LostKinds());
    for (const char* const field : {"startdate", "finisheddate", "Duration", "MaxDepth"}) {
        dive.set(field, std::nullopt);
    }
    QCOMPARE(csvLosses(dive.whole()), LostKinds());
}

void TestExportDives::theReportCountsDivesByKind() {
    const World world(3);
    process().database.execute("UPDATE main SET divenote = 'Seen: a wreck' WHERE DiveID <> 'D0000002'");
    DiveReader reader(process().database, world.folder);
    for (const DiveFormat format : {DiveFormat::Csv, DiveFormat::Zxu}) {
        QBuffer file;
        QVERIFY(file.open(QIODevice::WriteOnly));
        const LossReport losses = exportdives(format, file, reader, world.ids(3));
        QCOMPARE(losses.lost.at("field divenote"), 2);
        QCOMPARE(losses.lost.at("field Suit"), 3);
    }
    QBuffer file;
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(exportdives(DiveFormat::Json, file, reader, world.ids(3)).isEmpty());
}

QTEST_GUILESS_MAIN(TestExportDives)
#include "test_exportdives.moc"
