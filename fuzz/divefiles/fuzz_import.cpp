#include "divefiles/headerscan.h"
#include "divefiles/importer.h"
#include "divefiles/validators.h"
#include "fuzz/divefiles/divemutator.h"
#include "logbook/divelist.h"
#include "logbook/listfill.h"
#include "tests/divefiles/recordingscreen.h"
#include "tests/support/programfixture.h"

using namespace benthor;

namespace {

constexpr quint32 kSeed = 20260;
constexpr int kScans = 20000;
constexpr int kBatches = 40;
constexpr int kFilesOfABatch = 80;

QByteArrayList goodTexts() {
    QByteArrayList texts{tests::goodDive()};
    const QDir vectors(QStringLiteral(BENTHOR_TEST_DATA "/dives"));
    for (const QString& name : vectors.entryList({QStringLiteral("*.txt")}, QDir::Files, QDir::Name)) {
        if (const auto bytes = platform::readFile(vectors.filePath(name)); bytes && bytes->size() < 5000) {
            texts += *bytes;
        }
    }
    return texts;
}

/// What holds of every scan, whatever the bytes.
void verifyScan(const QByteArray& file) {
    const divefiles::HeaderScan scan = divefiles::scanheader(file);
    if (scan.outcome == divefiles::ScanOutcome::VersionMissing) {
        QVERIFY(scan.actions.empty());
    }
    if (!scan.actions.empty()) {
        QVERIFY(std::holds_alternative<divefiles::NewDive>(scan.actions.front()));
    }
    QVERIFY(scan.profiles <= 1000 / 7);
    QVERIFY(scan.actions.size() <= 1000);
    for (const divefiles::HeaderAction& action : scan.actions) {
        if (const auto* const gas = std::get_if<divefiles::AddGas>(&action)) {
            QVERIFY(std::all_of(gas->fields.begin(), gas->fields.end(),
                                [](const QByteArray& field) { return field.size() <= 10; }));
        }
    }
}

} // namespace

class FuzzImport : public QObject {
    Q_OBJECT

private slots:
    void anyBytesAreScannedToAnEnd();
    void anyFilesAreImportedAndNoSourceIsLost();
};

void FuzzImport::anyBytesAreScannedToAnEnd() {
    fuzz::DiveMutator mutator(kSeed, goodTexts());
    for (int i = 0; i < kScans; ++i) {
        const QByteArray file = mutator.next();
        verifyScan(file);
        if (QTest::currentTestFailed()) {
            QFAIL(qPrintable(QStringLiteral("file %1: %2").arg(i).arg(QString::fromLatin1(file.toHex()))));
        }
    }
}

void FuzzImport::anyFilesAreImportedAndNoSourceIsLost() {
    fuzz::DiveMutator mutator(kSeed + 1, goodTexts());
    int imported = 0;
    for (int batch = 0; batch < kBatches; ++batch) {
        const tests::ProgramFixture program;
        std::map<QString, QByteArray> files;
        for (int i = 0; i < kFilesOfABatch; ++i) {
            const QString name = QStringLiteral("%1 it's.txt").arg(i, 3, 10, QLatin1Char('0'));
            files[name] = mutator.next();
            program.putWaiting(name, files[name]);
        }
        divefiles::ImportState state;
        tests::RecordingScreen screen;
        while (!program.names(QStringLiteral("new")).isEmpty()) {
            const qsizetype before = program.names(QStringLiteral("new")).size();
            const divefiles::ImportEnd end = divefiles::importdives(program.folder, state, screen);
            QVERIFY2(end != divefiles::ImportEnd::Failed, qPrintable(screen.messages.last()));
            if (end == divefiles::ImportEnd::VersionMissing) {
                // It would end every run to come: the user moves it away.
                QVERIFY(
                    QFile::remove(program.folder.path(u"new", program.names(QStringLiteral("new")).first())));
            }
            QVERIFY(program.names(QStringLiteral("new")).size() < before);
        }
        for (const auto& [name, bytes] : files) {
            QCOMPARE(program.bytesOf(QStringLiteral("old"), name), bytes);
        }
        QCOMPARE(tests::ProgramFixture::rows("PRAGMA integrity_check"), QStringList("ok"));
        const logbook::ListedDives dives = logbook::readdives(process().database, 0);
        qsizetype all = 0;
        for (int number = 1; number <= dives.count(); ++number) {
            for (int column = 0; column < static_cast<int>(dives.columns().headers.size()); ++column) {
                all += dives.cell(number, column, u"Feet").size();
            }
        }
        QVERIFY(all >= 8 * dives.count()); // an identifier in each row
        QVERIFY(logbook::checkdives(process().database, program.folder, dives,
                                    {[](int, bool) { return true; }, [](int) { return true; }}));
        imported += dives.count();
    }
    QVERIFY(imported > kBatches * kFilesOfABatch / 2);
}

QTEST_GUILESS_MAIN(FuzzImport)
#include "fuzz_import.moc"
