#include "exports/csvlines.h"
#include "exports/dataset.h"
#include "exports/samplescsv.h"
#include "platform/faultpoint.h"
#include "tests/exports/exportworld.h"
#include "tests/support/smalldisk.h"

#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>

using namespace benthor;
using namespace benthor::exports;

namespace {

class DatasetWorld : public tests::ExportWorld {
public:
    DatasetCounts write(const QStringList& selection, const QString& logbook = "KD1",
                        const DatasetProgress& progress = {}) const {
        DiveReader reader(process().database, folder);
        return writeDataset(dir(), logbook, reader, selection, progress);
    }
    DatasetCounts writeAll() const { return write(DiveReader(process().database, folder).identifiers()); }
    QString refusal(const QStringList& selection) const {
        try {
            write(selection);
        } catch (const ExportError& error) {
            return error.text();
        }
        return {};
    }

    QString dir() const { return target_.filePath("data"); }
    QString path(const QString& name) const { return dir() + u'/' + name; }
    QByteArray get(const QString& name) const { return platform::readFile(path(name)).value_or("(no file)"); }
    void putThere(const QString& name, const QByteArray& bytes) const {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    /// All files, hidden ones too, and folders without anything.
    QStringList tree() const {
        QStringList files;
        QDirIterator all(target_.path(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
        while (all.hasNext()) {
            const QString path = all.next();
            if (!QFileInfo(path).isDir() ||
                QDir(path).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)) {
                files += QDir(target_.filePath("data")).relativeFilePath(path);
            }
        }
        files.sort();
        return files;
    }
    /// Field `field` of the rows of a year's dives.csv.
    QStringList dives(const QString& year, int field = 0, const QString& logbook = "KD1") const {
        const QByteArray bytes = get(QStringLiteral("dives/logbook=%1/year=%2/dives.csv").arg(logbook, year));
        QStringList fields;
        CsvLines lines(bytes);
        for (lines.next(); lines.next();) {
            fields += lines.field(field);
        }
        return fields;
    }

private:
    QTemporaryDir target_;
};

const QString kNone = QStringLiteral("__HIVE_DEFAULT_PARTITION__");

/// A sample at 9.38 m with this PO2 and cells, in hundredths of a bar.
QByteArray record(int po2, int a, int b, int c) {
    return QByteArray("100,0,%1,M0,T20,A500,F%2,G%3,H%4")
        .replace("%1", QByteArray::number(po2))
        .replace("%2", QByteArray::number(a))
        .replace("%3", QByteArray::number(b))
        .replace("%4", QByteArray::number(c));
}

} // namespace

class TestDataset : public QObject {
    Q_OBJECT

private slots:
    void divesAndSamplesLieInTheirPartitions() {
        const DatasetWorld world;
        world.addDive("D0000001", "2017-09-27 01:02:03");
        world.addDive("D0000002", "2018-01-02 03:04:05");
        world.addDive("D0000003", "2017-01-01 00:00:00");
        world.addDive("D0000004", "");
        const DatasetCounts counts = world.writeAll();
        QCOMPARE(counts.written, 7);
        QCOMPARE(counts.unchanged, 0);
        QCOMPARE(world.tree(), (QStringList{"dives/logbook=KD1/year=2017/dives.csv",
                                            "dives/logbook=KD1/year=2018/dives.csv",
                                            "dives/logbook=KD1/year=" + kNone + "/dives.csv",
                                            "samples/logbook=KD1/year=2017/D0000001.csv",
                                            "samples/logbook=KD1/year=2017/D0000003.csv",
                                            "samples/logbook=KD1/year=2018/D0000002.csv",
                                            "samples/logbook=KD1/year=" + kNone + "/D0000004.csv"}));
        QCOMPARE(
            world.get("dives/logbook=KD1/year=2018/dives.csv"),
            QByteArray(
                "id,name,site,start,end,duration_s,max_depth_m,interval_s,otu,serial,version,faults\r\n") +
                "D0000002,,,2018-01-02T03:04:05,,2467,23.4,10,,KD00123,," +
                csvField(world.dive("D0000002").figures.faults.join("; ")) + "\r\n");
        QCOMPARE(world.dives("2017"), (QStringList{"D0000003", "D0000001"})); // by their start
        QCOMPARE(world.get("samples/logbook=KD1/year=2017/D0000001.csv"),
                 samplesCsvHeader(SampleIds::First) + samplesCsvLines(world.dive(), SampleIds::First));
    }

    void aSecondRunWritesOnlyWhatIsNew() {
        const DatasetWorld world;
        world.addDive("D0000001", "2017-09-27 01:02:03");
        world.addDive("D0000002", "2018-01-02 03:04:05");
        world.writeAll();
        const QString kept = world.path("samples/logbook=KD1/year=2017/D0000001.csv");
        const QDateTime old({2020, 1, 1}, {0, 0});
        QFile file(kept);
        QVERIFY(file.open(QIODevice::ReadWrite) && file.setFileTime(old, QFileDevice::FileModificationTime));
        file.close();
        const DatasetCounts again = world.writeAll();
        QCOMPARE(again.written, 0);
        QCOMPARE(again.unchanged, 4);
        world.set("UPDATE main SET site = 'Reef' WHERE DiveID = 'D0000002'");
        world.addDive("D0000003", "2018-01-03 03:04:05");
        const DatasetCounts third = world.writeAll();
        QCOMPARE(third.written, 2); // the rows of 2018, and the new dive's samples
        QCOMPARE(third.unchanged, 3);
        QCOMPARE(third.removed, 0);
        QCOMPARE(QFileInfo(kept).lastModified(), old);
        QCOMPARE(world.dives("2018", 2), (QStringList{"Reef", ""}));
    }

    void aSelectionLeavesTheOthers() {
        const DatasetWorld world;
        world.addDive("D0000001", "2017-09-27 01:02:03");
        world.addDive("D0000002", "2017-09-28 01:02:03");
        world.addDive("D0000003", "2017-09-29 01:02:03");
        world.write({"D0000001", "D0000002"});
        world.set("UPDATE main SET site = 'Reef'");
        const DatasetCounts counts = world.write({"D0000002"});
        QCOMPARE(counts.removed, 0);
        QCOMPARE(world.dives("2017"), (QStringList{"D0000001", "D0000002"}));
        QCOMPARE(world.dives("2017", 2), (QStringList{"", "Reef"})); // the other one as it was
        QVERIFY(world.tree().contains("samples/logbook=KD1/year=2017/D0000001.csv"));
        QVERIFY(!world.tree().contains("samples/logbook=KD1/year=2017/D0000003.csv"));
    }

    void divesThatAreGoneGo() {
        const DatasetWorld world;
        world.addDive("D0000001", "2017-09-27 01:02:03");
        world.addDive("D0000002", "2017-09-28 01:02:03");
        world.addDive("D0000003", "2019-09-28 01:02:03");
        world.writeAll();
        world.set("DELETE FROM main WHERE DiveID <> 'D0000001'");
        const DatasetCounts counts = world.write({});
        QCOMPARE(counts.removed, 3);
        QCOMPARE(world.tree(), (QStringList{"dives/logbook=KD1/year=2017/dives.csv",
                                            "samples/logbook=KD1/year=2017/D0000001.csv"}));
        QCOMPARE(world.dives("2017"), QStringList{"D0000001"});
    }

    void aDiveThatMovesToAnotherYearLeavesNothingBehind() {
        const DatasetWorld world;
        world.addDive("D0000001", "2017-09-27 01:02:03");
        world.writeAll();
        world.set("UPDATE main SET startdate = '2018-09-27 01:02:03'");
        world.writeAll();
        QCOMPARE(world.tree(), (QStringList{"dives/logbook=KD1/year=2018/dives.csv",
                                            "samples/logbook=KD1/year=2018/D0000001.csv"}));
    }

    void onlyFilesOfOursGoAndOnlyOfThisLogbook() {
        const DatasetWorld world;
        world.addDive("D0000001", "2017-09-27 01:02:03");
        world.addDive("D0000002", "2017-09-28 01:02:03");
        world.writeAll();
        world.write({"D0000002"}, "other");
        world.putThere("samples/logbook=KD1/year=2017/mine.csv", "my,own\r\n1,2\r\n");
        world.putThere("samples/logbook=KD1/year=2017/notes.txt", samplesCsvHeader(SampleIds::First));
        world.putThere("dives/logbook=KD1/year=1999/dives.csv", "my,own\r\n");
        world.putThere("readme.md", "mine");
        world.set("DELETE FROM main WHERE DiveID = 'D0000002'");
        QCOMPARE(world.writeAll().removed, 1);
        const QStringList left = world.tree();
        for (const char* const kept :
             {"samples/logbook=KD1/year=2017/mine.csv", "samples/logbook=KD1/year=2017/notes.txt",
              "dives/logbook=KD1/year=1999/dives.csv", "readme.md",
              "samples/logbook=other/year=2017/D0000002.csv", "dives/logbook=other/year=2017/dives.csv",
              "samples/logbook=KD1/year=2017/D0000001.csv"}) {
            QVERIFY2(left.contains(kept), kept);
        }
        QVERIFY(!left.contains("samples/logbook=KD1/year=2017/D0000002.csv"));
    }

    void aDiveWithoutSamplesHasARowAndNoFile() {
        const DatasetWorld world;
        world.addDive("D0000001", "2017-09-27 01:02:03", tests::diveFile({}));
        const DatasetCounts counts = world.writeAll();
        QCOMPARE(world.tree(), QStringList{"dives/logbook=KD1/year=2017/dives.csv"});
        QCOMPARE(counts.withoutSamples, QStringList{"D0000001: Its file 1.txt holds no sample."});
    }

    void hostileNamesStayInTheFolder_data() {
        QTest::addColumn<QString>("id");
        for (const char* const id :
             {"../../../x", "/etc/x", ".", "..", "", "a/b\\c", "x\r\n,\"y", "_hidden", "%2e", "a=b"}) {
            QTest::newRow(id) << QString::fromLatin1(id);
        }
        QTest::newRow("long") << QString(400, u'D');
        QTest::newRow("long and strange") << QString(400, u'\u00e4');
    }
    void hostileNamesStayInTheFolder() {
        QFETCH(QString, id);
        const DatasetWorld world;
        world.addDive(id, "2017-09-27 01:02:03");
        world.addDive("D0000001", "2017-09-28 01:02:03");
        world.write({id, "D0000001"}, id);
        const QStringList tree = world.tree();
        QCOMPARE(tree.size(), 3);
        for (const QString& name : tree) {
            QVERIFY2(name.startsWith("dives/logbook=") || name.startsWith("samples/logbook="),
                     qPrintable(name));
            QCOMPARE(name.count(u'/'), 3);
            QVERIFY(!name.section(u'/', 3).startsWith(u'.') && !name.section(u'/', 3).startsWith(u'_'));
        }
        const QString logbook = id.isEmpty() ? kNone : datasetName(id);
        QCOMPARE(world.dives("2017", 0, logbook), (QStringList{id, "D0000001"}));
        QCOMPARE(world.write({id}, id).unchanged, 2); // found again, and the other one's row kept
        QCOMPARE(world.tree(), tree);
        world.set("DELETE FROM main WHERE DiveID <> 'D0000001'");
        QCOMPARE(world.write({"D0000001"}, id).removed, 1);
        QCOMPARE(world.tree().size(), 2);
    }

    void namesThatDifferStayApart() {
        QSet<QString> names;
        const QStringList ids{"",
                              "%",
                              "a",
                              "a.",
                              "a/",
                              "a%2F",
                              "\u00e4",
                              QString(200, u'a'),
                              QString(201, u'a'),
                              QString(149, u'a') + u'/'};
        for (const QString& id : ids) {
            names += datasetName(id);
            QVERIFY(datasetName(id).size() < 250);
        }
        QCOMPARE(names.size(), ids.size());
        QCOMPARE(datasetName("KD 00/123"), QStringLiteral("KD%2000%2F123"));
    }

    void anIdentifierInOtherLettersIsTheSameDive() {
        const DatasetWorld world;
        world.addDive("D0000001a", "2017-09-27 01:02:03");
        world.write({"d0000001A", "D0000001a", "D9999999"});
        QCOMPARE(world.dives("2017"), QStringList{"D0000001a"});
        QCOMPARE(world.tree().size(), 2);
    }

    void aFullDiskLeavesWholeFiles() {
        const DatasetWorld world;
        world.addDive("D0000001", "2017-09-27 01:02:03");
        world.addDive("D0000002", "2017-09-28 01:02:03",
                      tests::diveFile(QByteArrayList(300, "100,0,70,M0,T20,A500")));
        {
            const tests::SmallDisk disk(2000);
            QVERIFY(world.refusal({"D0000001", "D0000002"}).contains("File too large"));
        }
        QCOMPARE(world.tree(), QStringList{"samples/logbook=KD1/year=2017/D0000001.csv"});
        QCOMPARE(world.get(world.tree().first()),
                 samplesCsvHeader(SampleIds::First) + samplesCsvLines(world.dive(), SampleIds::First));
        QCOMPARE(world.writeAll().unchanged, 1);
    }

    void everyStepThatFailsLeavesWholeFiles() {
        const DatasetWorld world;
        world.addDive("D0000001", "2017-09-27 01:02:03");
        world.addDive("D0000002", "2018-09-27 01:02:03");
        world.writeAll();
        QStringList before;
        for (const QString& name : world.tree()) {
            before += world.get(name);
        }
        DiveReader reader(process().database, world.folder);
        for (int failing = 1;; ++failing) {
            process().database.execute(
                platform::sqlWith("UPDATE main SET \"Interval\" = '", QString::number(10 + failing), "'"));
            int step = 0;
            bool failed = false;
            {
                const platform::FaultInjection fault(
                    [&](std::string_view) { return ++step == failing ? EIO : 0; });
                try {
                    writeDataset(world.dir(), "KD1", reader, {"D0000001", "D0000002"});
                } catch (const ExportError&) {
                    failed = true;
                }
            }
            QCOMPARE(world.tree().size(), 4); // nothing half done beside them
            if (!failed) {
                QVERIFY(failing > 10);
                break;
            }
        }
        for (const QString& name : world.tree()) {
            QVERIFY(!before.contains(world.get(name)));
        }
        QCOMPARE(world.writeAll().unchanged, 4);
    }

    void anInterruptionLeavesWholeFiles() {
        const DatasetWorld world;
        world.addDive("D0000001", "2017-09-27 01:02:03");
        world.addDive("D0000002", "2018-09-27 01:02:03");
        QList<std::pair<qsizetype, qsizetype>> told;
        QVERIFY_THROWS_EXCEPTION(
            std::logic_error, world.write({"D0000001", "D0000002"}, "KD1", [&](qsizetype done, qsizetype of) {
                told.append({done, of});
                if (done == 1) {
                    throw std::logic_error("enough");
                }
            }));
        QCOMPARE(told, (QList<std::pair<qsizetype, qsizetype>>{{0, 2}, {1, 2}}));
        QCOMPARE(world.tree(), QStringList{"samples/logbook=KD1/year=2017/D0000001.csv"});
    }

    void aFolderThatCannotBeWritten() {
        const DatasetWorld world;
        world.addDive("D0000001", "2017-09-27 01:02:03");
        world.putThere("file", "mine");
        DiveReader reader(process().database, world.folder);
        QVERIFY_THROWS_EXCEPTION(ExportError, writeDataset(world.path("file"), "KD1", reader, {"D0000001"}));
        // where not even root may make a folder
        QVERIFY_THROWS_EXCEPTION(ExportError, writeDataset("/proc/benthor", "KD1", reader, {"D0000001"}));
        QCOMPARE(world.tree(), QStringList{"file"});
    }

    void theQueriesOfTheDocumentAnswer() {
        const DatasetWorld world;
        world.addDive("D0000001", "2017-09-27 01:02:03",
                      tests::diveFile(
                          {record(130, 120, 130, 150), record(150, 140, 150, 150), record(141, 140, 0, 150)}),
                      "007");
        world.addDive("D0000002", "2018-09-27 01:02:03", tests::diveFile({record(150, 100, 110, 120)}),
                      "a, \"b\"");
        world.addDive("D0000003", "2018-09-28 01:02:03", tests::diveFile({"100,0,70,M0,T20,A500"}), "007");
        world.addDive("D0000004", "", tests::diveFile({}), "");
        world.write({"D0000001", "D0000002", "D0000003", "D0000004"}, "KD 1/2");
        QProcess node;
        node.start("node", {QStringLiteral(BENTHOR_TEST_DATA "/../exports/queries.mjs"),
                            QStringLiteral(BENTHOR_TEST_DATA "/../../docs/formats.md"), world.dir()});
        if (!node.waitForStarted()) {
            QSKIP("node is not installed: the queries of docs/formats.md were not run");
        }
        node.waitForFinished(-1);
        constexpr int kNoEngine = 77;
        const QByteArray errors = node.readAllStandardError();
        if (node.exitCode() == kNoEngine) {
            QSKIP("DuckDB (npm @duckdb/node-api) is not installed: the queries of docs/formats.md were not "
                  "run");
        }
        QVERIFY2(node.exitCode() == 0, errors);
        const QJsonArray results = QJsonDocument::fromJson(node.readAllStandardOutput()).array();
        QCOMPARE(results.size(), 5); // two views, three queries
        const double hours = 2467.0 / 3600;
        const QJsonArray years = results[2].toArray();
        QCOMPARE(years[0], QJsonValue(QJsonArray{2017, "1", hours, 23.4}));
        QCOMPARE(years[1], QJsonValue(QJsonArray{2018, "2", 2 * hours, 23.4}));
        QCOMPARE(years[2], QJsonValue(QJsonArray{QJsonValue(), "1", hours, 23.4}));
        const QJsonArray spreads = results[3].toArray();
        QCOMPARE(spreads.size(), 2);
        QCOMPARE(spreads[0].toArray()[0], QJsonValue("007"));
        QVERIFY(qAbs(spreads[0].toArray()[1].toDouble() - 0.2) <
                1e-9); // of 0.3 and 0.1; the third lacks a cell
        QCOMPARE(spreads[1].toArray()[0], QJsonValue("a, \"b\""));
        QVERIFY(qAbs(spreads[1].toArray()[1].toDouble() - 0.2) < 1e-9);
        const QJsonArray minutes = results[4].toArray();
        QCOMPARE(minutes.size(), 2);
        QCOMPARE(minutes[0], QJsonValue(QJsonArray{"KD 1/2", "D0000001", 20.0 / 60}));
        QCOMPARE(minutes[1], QJsonValue(QJsonArray{"KD 1/2", "D0000002", 10.0 / 60}));
    }
};

QTEST_GUILESS_MAIN(TestDataset)
#include "test_dataset.moc"
