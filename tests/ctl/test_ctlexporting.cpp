#include "platform/instancelock.h"
#include "tests/ctl/ctlpipe.h"
#include "tests/ctl/ctlstage.h"
#include "tests/support/asnobody.h"

#include <QXmlStreamReader>

using namespace benthor;
using tests::Pipe;
using tests::Ran;
using tests::ToolFolder;

namespace {

const QStringList kFormats{QStringLiteral("uddf"), QStringLiteral("json"), QStringLiteral("csv"),
                           QStringLiteral("zxu")};

/// How many dives a file of that format holds, as another program would count them; -1 where it is broken.
qsizetype divesIn(const QString& format, const QByteArray& bytes) {
    if (format == QLatin1String("json")) {
        const QJsonDocument document = QJsonDocument::fromJson(bytes);
        return document.isObject() ? document[QLatin1String("dives")].toArray().size() : -1;
    }
    if (format == QLatin1String("uddf")) {
        QXmlStreamReader xml(bytes);
        qsizetype dives = 0;
        while (!xml.atEnd()) {
            dives += xml.readNext() == QXmlStreamReader::StartElement && xml.name() == QLatin1String("dive");
        }
        return xml.hasError() ? -1 : dives;
    }
    if (format == QLatin1String("csv")) {
        QSet<QByteArray> ids;
        for (const QByteArray& line : bytes.split('\n').mid(1)) {
            if (!line.isEmpty()) {
                ids += line.split(',').first();
            }
        }
        return bytes.startsWith("id,time_s,") ? ids.size() : -1;
    }
    return bytes.count("ZDH|") == bytes.count("ZDT|") ? bytes.count("ZDH|") : -1;
}

QStringList exportWords(const QString& format, const QString& output, const QStringList& more) {
    return QStringList{QStringLiteral("export"), QStringLiteral("--format"), format,
                       QStringLiteral("--output"), output} +
           more;
}

QStringList allIn(const QString& folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

} // namespace

/// `export` and `dataset`, by the tool itself.
class TestCtlExporting : public QObject {
    Q_OBJECT

private slots:
    void init() { place_ = std::make_unique<QTemporaryDir>(); }

    void everyFormatGoesIntoAFile_data() { formats(); }
    void everyFormatGoesIntoAFile();
    void everyFormatGoesToStandardOutput_data() { formats(); }
    void everyFormatGoesToStandardOutput();
    void theReportIsADocument();
    void aFileThatIsThereStaysUnlessForced();
    void aDeviceAndAPipeAreWrittenInPlace();
    void aFullDiskLeavesNothing_data() { formats(); }
    void aFullDiskLeavesNothing();
    void aReaderThatGoesAwayOrAnInterruptionIsAFault_data() { formats(); }
    void aReaderThatGoesAwayOrAnInterruptionIsAFault();
    void anInterruptedFileIsNotThere();
    void aFolderThatCannotBeWritten();
    void divesThatAreNotThere();
    void aSelectionGoesOut();
    void exportingChangesNoByteOfTheFolder();
    void aDataset();
    void aDatasetOnAFullDisk();

private:
    static void formats() {
        QTest::addColumn<QString>("format");
        for (const QString& format : kFormats) {
            QTest::newRow(qPrintable(format)) << format;
        }
    }
    QString path(const char* name) const { return place_->filePath(QLatin1String(name)); }

    std::unique_ptr<QTemporaryDir> place_;
};

void TestCtlExporting::everyFormatGoesIntoAFile() {
    QFETCH(QString, format);
    const ToolFolder world;
    world.close();
    const Ran ran = world.run(exportWords(format, path("out"), {"--all"}));
    QVERIFY2(ran.status == 0, ran.err.constData());
    QCOMPARE(ran.out, QByteArray());
    QVERIFY(ran.err.startsWith("3 dives written\n"));
    QCOMPARE(divesIn(format, platform::readFile(path("out")).value()), 3);
    QCOMPARE(allIn(place_->path()), QStringList{QStringLiteral("out")});
}

void TestCtlExporting::everyFormatGoesToStandardOutput() {
    QFETCH(QString, format);
    const ToolFolder world;
    world.close();
    const Ran ran = world.run(exportWords(format, QStringLiteral("-"), {"--all"}));
    QCOMPARE(ran.status, 0);
    QCOMPARE(divesIn(format, ran.out), 3);
    // The dives alone stand there, even where the report is a document.
    const Ran both = world.run(exportWords(format, QStringLiteral("-"), {"--all", "--json"}));
    QCOMPARE(divesIn(format, both.out), 3);
    QCOMPARE(QJsonDocument::fromJson(both.err)[QLatin1String("dives")].toInt(), 3);
}

void TestCtlExporting::theReportIsADocument() {
    const ToolFolder world;
    QVERIFY(QFile::remove(world.folder.path(
        u"dbtxt", ToolFolder::rows("SELECT dbtxtname FROM main WHERE DiveID = 'D0000002'").first())));
    world.close();
    for (const QString& format : kFormats) {
        const Ran ran = world.run(exportWords(format, path("out"), {"--all", "--json", "--force"}));
        QCOMPARE(ran.status, 0);
        QCOMPARE(ran.err, QByteArray());
        QCOMPARE(ran.json().keys(), QStringList({"dives", "lost", "musts", "without_samples"}));
        QCOMPARE(ran.json().value(QLatin1String("dives")).toInt(), 3);
        const QJsonArray without = ran.json().value(QLatin1String("without_samples")).toArray();
        QCOMPARE(without.size(), 1);
        QVERIFY(without[0].toString().startsWith(QStringLiteral("D0000002: ")));
    }
}

void TestCtlExporting::aFileThatIsThereStaysUnlessForced() {
    const ToolFolder world;
    world.close();
    QVERIFY(platform::writeFileWhole(path("out"), "mine").ok());
    for (const QString& format : kFormats) {
        const Ran ran = world.run(exportWords(format, path("out"), {"--all"}));
        QCOMPARE(ran.status, 2);
        QVERIFY(ran.err.startsWith("benthorctl: "));
        QCOMPARE(platform::readFile(path("out")).value(), QByteArray("mine"));
    }
    QCOMPARE(world.run(exportWords(QStringLiteral("csv"), path("out"), {"--all", "--force"})).status, 0);
    QCOMPARE(divesIn(QStringLiteral("csv"), platform::readFile(path("out")).value()), 3);
    QCOMPARE(allIn(place_->path()), QStringList{QStringLiteral("out")});
    QCOMPARE(world.run(exportWords(QStringLiteral("csv"), place_->path(), {"--all", "--force"})).status, 4);
}

void TestCtlExporting::aDeviceAndAPipeAreWrittenInPlace() {
    const ToolFolder world;
    world.close();
    QCOMPARE(world.run(exportWords(QStringLiteral("json"), QStringLiteral("/dev/null"), {"--all"})).status,
             0);
    QVERIFY(!QFileInfo(QStringLiteral("/dev/null")).isFile());
    const Pipe pipe;
    const Ran ran = world.run(exportWords(QStringLiteral("json"), pipe.path(), {"--all"}));
    QCOMPARE(ran.status, 0);
    QVERIFY(pipe.waiting() > 1000);
    QVERIFY(!QFileInfo(pipe.path()).isFile());
}

void TestCtlExporting::aFullDiskLeavesNothing() {
    QFETCH(QString, format);
    const ToolFolder world;
    world.close();
    const Ran ran = world.run(exportWords(format, path("out"), {"--all"}), tests::smallDisk(200));
    QCOMPARE(ran.status, 4);
    QCOMPARE(ran.out, QByteArray());
    QVERIFY(ran.err.startsWith("benthorctl: "));
    QCOMPARE(allIn(place_->path()), QStringList());
    QVERIFY(platform::writeFileWhole(path("out"), "mine").ok());
    QCOMPARE(world.run(exportWords(format, path("out"), {"--all", "--force"}), tests::smallDisk(200)).status,
             4);
    QCOMPARE(platform::readFile(path("out")).value(), QByteArray("mine"));
    QCOMPARE(allIn(place_->path()), QStringList{QStringLiteral("out")});
    QCOMPARE(world.run(exportWords(format, QStringLiteral("/dev/full"), {"--all"})).status, 4);
}

void TestCtlExporting::aReaderThatGoesAwayOrAnInterruptionIsAFault() {
    QFETCH(QString, format);
    const ToolFolder world(ToolFolder::kNoDives);
    world.importDive(tests::longDive());
    world.close();
    const QStringList words = world.words(exportWords(format, QStringLiteral("-"), {"--all"}));
    const Ran closed = tests::runUntilFull(words, [](QProcess&, Pipe& pipe) { pipe.closeReader(); });
    QCOMPARE(closed.status, 4);
    QVERIFY2(closed.err.contains("Broken pipe"), closed.err.constData());
    const Ran ended = tests::runUntilFull(
        words, [](QProcess& process, Pipe&) { ::kill(static_cast<pid_t>(process.processId()), SIGTERM); });
    QCOMPARE(ended.status, 4);
    QCOMPARE(ended.err, QByteArray("benthorctl: Interrupted.\n"));
}

/// The pipe that the report goes to is full, so that the tool is found at a place that is known: the file is
/// not yet there, and its draft is gone behind it.
void TestCtlExporting::anInterruptedFileIsNotThere() {
    QList<QByteArray> codes;
    constexpr int kDives = 400;
    for (int i = 0; i < kDives; ++i) {
        codes += QByteArray::number(700000000 + i * 10000);
    }
    const ToolFolder world(codes);
    world.close();
    // The signal comes as soon as the draft is seen; a machine that is busy elsewhere may be late with it
    // once.
    Ran ran;
    constexpr int kMostTimes = 20;
    for (int times = 0; ran.status != 4 && times < kMostTimes; ++times) {
        QFile::remove(path("out"));
        QProcess tool;
        tests::startTool(tool, world.words(exportWords(QStringLiteral("json"), path("out"), {"--all"})));
        const QDeadlineTimer limit(60000);
        while (allIn(place_->path()).isEmpty() && !limit.hasExpired()) {
            QThread::usleep(100);
        }
        ::kill(static_cast<pid_t>(tool.processId()), SIGINT);
        ran = tests::resultOf(tool);
    }
    QCOMPARE(ran.status, 4);
    QCOMPARE(ran.err, QByteArray("benthorctl: Interrupted.\n"));
    QCOMPARE(allIn(place_->path()), QStringList());
}

void TestCtlExporting::aFolderThatCannotBeWritten() {
    const ToolFolder world;
    world.close();
    for (const QString& folder : {place_->path(), world.folder.root()}) {
        QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther |
                                                  QFile::ExeOther));
    }
    QVERIFY(QFile::setPermissions(world.storePath(), QFile::ReadOwner | QFile::ReadOther));
    const auto asNobody = [] { tests::becomeNobody(); };
    for (const QStringList& words :
         {exportWords(QStringLiteral("uddf"), path("out"), {"--all"}), {"dataset", path("set"), "--all"}}) {
        const Ran ran = world.run(words, asNobody);
        QCOMPARE(ran.status, 4);
        QVERIFY2(ran.err.contains("Permission denied") || ran.err.contains("cannot be made"),
                 ran.err.constData());
    }
    for (const QString& folder : {place_->path(), world.folder.root()}) {
        QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }
    QCOMPARE(allIn(place_->path()), QStringList());
}

void TestCtlExporting::divesThatAreNotThere() {
    const ToolFolder world;
    world.close();
    const Ran some = world.run(exportWords(QStringLiteral("csv"), path("out"), {"1", "77"}));
    QCOMPARE(some.status, 1);
    QVERIFY(some.err.contains("There is no dive D0000077."));
    QCOMPARE(divesIn(QStringLiteral("csv"), platform::readFile(path("out")).value()), 1);
    const Ran none = world.run(exportWords(QStringLiteral("csv"), path("other"), {"77"}));
    QCOMPARE(none.status, 1);
    QVERIFY(none.err.contains("Nothing was written."));
    QVERIFY(!QFile::exists(path("other")));
}

void TestCtlExporting::aSelectionGoesOut() {
    const ToolFolder world;
    process().database.execute("UPDATE main SET startdate = '2008-07-15 08:55:17' WHERE DiveID = 'D0000002'");
    world.close();
    for (const QString& format : kFormats) {
        const Ran ran =
            world.run(exportWords(format, QStringLiteral("-"), {"--since", "2008", "--until", "2008"}));
        QCOMPARE(ran.status, 0);
        QCOMPARE(divesIn(format, ran.out), 1);
        // No dive at all makes a file all the same: that is what the conditions come to.
        QCOMPARE(
            divesIn(format, world.run(exportWords(format, QStringLiteral("-"), {"--until", "1990"})).out), 0);
    }
}

void TestCtlExporting::exportingChangesNoByteOfTheFolder() {
    const ToolFolder world;
    world.close();
    const platform::InstanceLock lock(world.folder.root()); // a running program
    const QStringList before = world.snapshot();
    for (const QString& format : kFormats) {
        QCOMPARE(world.run(exportWords(format, path("out"), {"--all", "--force"})).status, 0);
    }
    QCOMPARE(world.run({"dataset", path("set"), "--all"}).status, 0);
    QCOMPARE(world.snapshot(), before);
}

void TestCtlExporting::aDataset() {
    const ToolFolder world;
    process().database.execute("UPDATE main SET startdate = NULL WHERE DiveID = 'D0000003'");
    process().database.execute("UPDATE main SET Suit = NULL WHERE DiveID = 'D0000001'");
    process().database.execute("UPDATE main SET Suit = 'KD/7' WHERE DiveID = 'D0000002'");
    world.close();
    const Ran first = world.run({"dataset", path("set"), "--all", "--json"});
    QVERIFY2(first.status == 0, first.err.constData());
    // Two years of dives, and three dives; the name is the first serial that there is.
    QCOMPARE(first.json(), QJsonObject({{"written", 5}, {"unchanged", 0}}));
    QVERIFY(QFile::exists(path("set/dives/logbook=KD%2F7/year=2017/dives.csv")));
    QVERIFY(QFile::exists(path("set/samples/logbook=KD%2F7/year=2017/D0000001.csv")));
    QVERIFY(QFile::exists(path("set/samples/logbook=KD%2F7/year=__HIVE_DEFAULT_PARTITION__/D0000003.csv")));
    QCOMPARE(world.run({"dataset", path("set"), "--all", "--json"}).json(),
             QJsonObject({{"written", 0}, {"unchanged", 5}}));
    QCOMPARE(world.run({"dataset", path("set"), "--all", "--logbook", "anna"}).lines(),
             QStringList({"Files written: 5", "Files unchanged: 0", "Files removed: 0"}));
    QVERIFY(QFile::exists(path("set/dives/logbook=anna/year=2017/dives.csv")));
    QCOMPARE(world.run({"dataset", path("set"), "77"}).status, 1);
}

void TestCtlExporting::aDatasetOnAFullDisk() {
    const ToolFolder world;
    world.close();
    const Ran ran = world.run({"dataset", path("set"), "--all"}, tests::smallDisk(50));
    QCOMPARE(ran.status, 4);
    QCOMPARE(ran.out, QByteArray());
    QDirIterator files(path("set"), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    QVERIFY2(!files.hasNext(), qPrintable(files.next()));
}

QTEST_GUILESS_MAIN(TestCtlExporting)
#include "test_ctlexporting.moc"
