#include "platform/database.h"
#include "store/divetime.h"
#include "tests/store/jet/framewriter.h"
#include "tests/store/jet/jetfolder.h"

#include <QProcess>
#include <QtEndian>

#include <sys/stat.h>

using namespace benthor;
using namespace benthor::tests;
using namespace std::chrono_literals;

namespace {

constexpr int kPage = 4096;

/// A place for a file that is read, and for what came of it.
class Place {
public:
    QString jet() const { return folder_.filePath(QStringLiteral("older.mdb")); }
    QString made() const { return folder_.filePath(QStringLiteral("new.mdb")); }

    store::JetCounts take(const QString& path,
                          std::chrono::milliseconds patience = store::kJetPatience) const {
        const auto source = store::readjet(path, {}, patience);
        return store::convertjet(*source, made());
    }
    /// What is wrong with a file of these bytes; empty where it came over. Nothing else may be there then.
    QString faultOf(const QByteArray& bytes) const {
        if (!platform::writeFileWhole(jet(), bytes)) {
            qFatal("no file");
        }
        try {
            take(jet());
            return QFile::remove(made()) ? QString() : QStringLiteral("nothing was made");
        } catch (const platform::StoreError& error) {
            const bool clean = QDir(folder_.path()).entryList(QDir::Files) == QStringList{"older.mdb"} &&
                               platform::readFile(jet()) == bytes;
            return clean ? error.text() : QStringLiteral("something was left or changed");
        }
    }
    /// What becomes of a reading program that does this.
    QString faultOfReader(const QByteArray& script, std::chrono::milliseconds patience = 20s) const {
        const QString program = folder_.filePath(QStringLiteral("reader"));
        if (!platform::writeFileWhole(program, "#!/bin/sh\n" + script) ||
            !QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner)) {
            qFatal("no reader");
        }
        store::setjetreader(program);
        QString fault;
        try {
            take(jet(), patience);
        } catch (const platform::StoreError& error) {
            fault = error.text();
        }
        store::setjetreader({});
        return QFile::exists(made()) ? QStringLiteral("something was made") : fault;
    }
    platform::Database& opened() {
        database_.open(made());
        return database_;
    }

private:
    QTemporaryDir folder_;
    platform::Database database_;
};

/// The script that writes these bytes.
QByteArray printing(const std::string& bytes) {
    QByteArray script = "printf '";
    for (const char c : bytes) {
        script += "\\" + QByteArray::number(static_cast<unsigned char>(c), 8).rightJustified(3, '0');
    }
    return script + "'\n";
}

qsizetype pageOfTable(const QByteArray& bytes, quint32 rows, quint16 columns) {
    for (qsizetype at = 0; at < bytes.size(); at += kPage) {
        if (bytes.at(at) == 2 && qFromLittleEndian<quint32>(bytes.constData() + at + 16) == rows &&
            qFromLittleEndian<quint16>(bytes.constData() + at + 45) == columns) {
            return at;
        }
    }
    qFatal("no such table");
}

} // namespace

class TestReadJet : public QObject {
    Q_OBJECT

private slots:
    void everyDiveComesOver_data();
    void everyDiveComesOver();
    void theTwoFilesTellTheSameDives();
    void whatTheFilesHoldComesLetterByLetter();
    void nullStaysNullAndEmptyEmpty();
    void aRowThatOutgrewItsPageIsFoundWhereItLies();

    void anEncryptedFileIsNamed();
    void aFileThatIsCutIsNamed();
    void aCountThatDoesNotAgreeIsNamed();
    void scribbledFilesNeverHurt();
    void aTextThatCannotBeDecodedIsNamed();
    void whatIsNoJetFileIsNamed();

    void aReaderThatFailsIsAFaultAndNothingElse();
    void aReaderThatIsNotThereIsNamed();
    void aReaderThatSaysNothingIsGivenUp();
    void aStopEndsTheReader();
    void theReaderHasItsLimits();
};

void TestReadJet::everyDiveComesOver_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("dives");
    QTest::newRow("dates") << "older-store-dates.mdb" << 30;
    QTest::newRow("text") << "older-store-text.mdb" << 12;
}

void TestReadJet::everyDiveComesOver() {
    REQUIRE_JET_FILES();
    const OurReader reader;
    QFETCH(QString, name);
    QFETCH(int, dives);
    Place place;
    const QByteArray before = jetBytes(qPrintable(name));
    const store::JetCounts counts = place.take(jetFile(qPrintable(name)));
    QCOMPARE(counts.dives, static_cast<quint64>(dives));
    QCOMPARE(counts.gases, static_cast<quint64>(dives) * 10);
    QCOMPARE(counts.tissues, static_cast<quint64>(dives) * 16);
    QVERIFY(counts.buddies > 0);
    QCOMPARE(jetBytes(qPrintable(name)), before);
    platform::Database& database = place.opened();
    platform::Recordset rows = database.openRecordset("SELECT * FROM main ORDER BY DiveID");
    QCOMPARE(rows.recordCount(), dives);
    for (int dive = 1; !rows.eof(); rows.moveNext(), ++dive) {
        const QString id = QStringLiteral("D%1").arg(dive, 7, 10, QLatin1Char('0'));
        QCOMPARE(rows.value(u"DiveID").text(), id);
        // The code counts the seconds of the same moment: two ways to one date.
        QCOMPARE(rows.value(u"startdate").text(), store::codetodatetime(rows.value(u"Startcode").text())
                                                      .toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
        QCOMPARE(database.openRecordset(platform::sqlWith("SELECT * FROM gas WHERE diveid = '", id, "'"))
                     .recordCount(),
                 10);
        platform::Recordset tissues =
            database.openRecordset(platform::sqlWith("SELECT * FROM tissue WHERE diveid = '", id, "'"));
        QCOMPARE(tissues.recordCount(), 16);
        for (; !tissues.eof(); tissues.moveNext()) {
            QVERIFY(tissues.value(u"TissueHe").text().endsWith(QLatin1Char('\r')));
        }
    }
    QCOMPARE(database.openRecordset("SELECT * FROM Display").value(0).text(), "Feet");
    QCOMPARE(database.openRecordset("SELECT * FROM serialno").value(u"getstarted").text(), "Close");
    const QStringList names = database.fieldNames(QStringLiteral("main"));
    QCOMPARE(names.at(26), "dbtxtname");
    QCOMPARE(names.mid(27), (QStringList{"spare1", "Extra Field"}));
}

/// One holds its dates as date-times, the other as texts.
void TestReadJet::theTwoFilesTellTheSameDives() {
    REQUIRE_JET_FILES();
    const OurReader reader;
    Place dates;
    Place texts;
    dates.take(jetFile("older-store-dates.mdb"));
    texts.take(jetFile("older-store-text.mdb"));
    platform::Database& one = dates.opened();
    platform::Database& other = texts.opened();
    const char* const sql =
        "SELECT DiveID, startdate, finisheddate, Duration, divenote, site FROM main ORDER BY "
        "DiveID LIMIT 12";
    platform::Recordset left = one.openRecordset(sql);
    platform::Recordset right = other.openRecordset(sql);
    QCOMPARE(right.recordCount(), 12);
    for (; !right.eof(); left.moveNext(), right.moveNext()) {
        for (int field = 0; field < 6; ++field) {
            QVERIFY(left.value(field) == right.value(field));
        }
    }
}

void TestReadJet::whatTheFilesHoldComesLetterByLetter() {
    REQUIRE_JET_FILES();
    const OurReader reader;
    Place place;
    place.take(jetFile("older-store-dates.mdb"));
    platform::Database& database = place.opened();
    const platform::Recordset dive = database.openRecordset("SELECT * FROM main WHERE DiveID = 'D0000001'");
    QCOMPARE(dive.value(u"divenote").text(),
             "Visibility 12 m; \"quoted\" 'single' line one\r\nline two — naïve café 1");
    QCOMPARE(dive.value(u"Extra Field").text(), "x1");
    QCOMPARE(dive.value(u"Duration").text(), "72:44");
    QCOMPARE(database.openRecordset("SELECT * FROM main WHERE DiveID = 'D0000002'").value(u"site").text(),
             "Île d'Yeu");
    QCOMPARE(database.openRecordset("SELECT * FROM buddylist WHERE diveid = 'D0000003'").value(1).text(),
             "Jörg");
    QCOMPARE(database.openRecordset("SELECT * FROM gas WHERE diveid = 'D0000001'").value(u"Gasstat").text(),
             "0\r");
}

void TestReadJet::nullStaysNullAndEmptyEmpty() {
    REQUIRE_JET_FILES();
    const OurReader reader;
    Place place;
    place.take(jetFile("older-store-dates.mdb"));
    platform::Database& database = place.opened();
    const auto count = [&](const platform::Query& query) {
        return database.openRecordset(query).value(0).text().toInt();
    };
    QCOMPARE(count("SELECT count(*) FROM main WHERE spare1 IS NULL"), 30);
    QVERIFY(count("SELECT count(*) FROM main WHERE weather IS NULL") > 0);
    QVERIFY(count("SELECT count(*) FROM main WHERE divenote IS NULL") > 0);
    QVERIFY(count("SELECT count(*) FROM main WHERE Coments = ''") > 0);
    QCOMPARE(count("SELECT count(*) FROM main WHERE Coments IS NULL"), 0);
}

/// Jet leaves a pointer in the place of a row that no longer fits its page.
void TestReadJet::aRowThatOutgrewItsPageIsFoundWhereItLies() {
    REQUIRE_JET_FILES();
    const OurReader reader;
    Place place;
    QByteArray bytes = jetBytes("older-store-dates.mdb");
    const auto definition = static_cast<quint32>(pageOfTable(bytes, 300, 6) / kPage);
    qsizetype page = 0;
    while (!(bytes.at(page) == 1 && qFromLittleEndian<quint32>(bytes.constData() + page + 4) == definition)) {
        page += kPage;
    }
    const auto at = [&](qsizetype offset) { return qFromLittleEndian<quint16>(bytes.constData() + offset); };
    const quint16 start = at(page + 14);
    const QByteArray row = bytes.mid(page + start, kPage - start);
    // The row moves to a page of its own, in a slot that counts as deleted.
    QByteArray there(kPage, '\0');
    there.replace(0, 14, bytes.mid(page, 14));
    qToLittleEndian<quint16>(1, there.data() + 12);
    qToLittleEndian<quint16>(static_cast<quint16>(kPage - row.size()) | 0x8000, there.data() + 14);
    there.replace(kPage - row.size(), row.size(), row);
    qToLittleEndian<quint32>(static_cast<quint32>(bytes.size() / kPage) << 8, bytes.data() + page + start);
    qToLittleEndian<quint16>(start | 0x4000, bytes.data() + page + 14);
    bytes += there;
    QVERIFY(platform::writeFileWhole(place.jet(), bytes));
    QCOMPARE(place.take(place.jet()).gases, 300U);
    Place untouched;
    untouched.take(jetFile("older-store-dates.mdb"));
    platform::Database& one = place.opened();
    platform::Database& other = untouched.opened();
    platform::Recordset left = one.openRecordset("SELECT * FROM gas");
    platform::Recordset right = other.openRecordset("SELECT * FROM gas");
    for (; !right.eof(); left.moveNext(), right.moveNext()) {
        for (int field = 0; field < 6; ++field) {
            QVERIFY(left.value(field) == right.value(field));
        }
    }
}

void TestReadJet::anEncryptedFileIsNamed() {
    REQUIRE_JET_FILES();
    const OurReader reader;
    const Place place;
    QByteArray bytes = jetBytes("older-store-dates.mdb");
    bytes[0x3e] = static_cast<char>(bytes.at(0x3e) ^ 0x5a); // the key to its pages
    const QString fault = place.faultOf(bytes);
    QVERIFY2(fault.contains(QLatin1String("encrypted")), qPrintable(fault));
    // Another cipher leaves the key as it is, and no page can be read.
    bytes = jetBytes("older-store-dates.mdb");
    for (qsizetype at = kPage; at < bytes.size(); ++at) {
        bytes[at] = static_cast<char>(bytes.at(at) ^ (at * 7 + 0x91));
    }
    const QString other = place.faultOf(bytes);
    QVERIFY2(other.contains(QLatin1String("encrypted")), qPrintable(other));
}

void TestReadJet::aFileThatIsCutIsNamed() {
    REQUIRE_JET_FILES();
    const OurReader reader;
    const Place place;
    const QByteArray bytes = jetBytes("older-store-text.mdb");
    for (const qsizetype size :
         {qsizetype{32}, qsizetype{kPage + 1}, bytes.size() / 2 + 100, bytes.size() - 1}) {
        const QString fault = place.faultOf(bytes.first(size));
        QVERIFY2(fault.contains(QLatin1String("cut off")), qPrintable(fault));
    }
    // At the end of a page the pages behind it are missed as soon as something points to them.
    for (qsizetype pages = 0; pages < bytes.size() / kPage / 2; pages += 3) {
        QVERIFY(!place.faultOf(bytes.first(pages * kPage)).isEmpty());
    }
}

void TestReadJet::aCountThatDoesNotAgreeIsNamed() {
    REQUIRE_JET_FILES();
    const OurReader reader;
    const Place place;
    for (const quint32 other : {299U, 301U, 0U}) {
        QByteArray bytes = jetBytes("older-store-dates.mdb");
        qToLittleEndian(other, bytes.data() + pageOfTable(bytes, 300, 6) + 16);
        QCOMPARE(place.faultOf(bytes),
                 QStringLiteral("The table \"gas\" has %1 rows by its own count, and %2 were found.")
                     .arg(QString::number(other), other < 300 ? "more" : "300"));
    }
}

/// What comes of them is the same contents, others (Jet has no check sums), or a fault that is named; never
/// anything else.
void TestReadJet::scribbledFilesNeverHurt() {
    REQUIRE_JET_FILES();
    const OurReader reader;
    const Place place;
    const QByteArray good = jetBytes("older-store-text.mdb");
    quint32 seed = 12345;
    const auto next = [&seed](quint32 below) {
        seed = seed * 1664525 + 1013904223;
        return (seed >> 8) % below;
    };
    int faults = 0;
    for (int round = 0; round < 60; ++round) {
        QByteArray bytes = good;
        for (quint32 i = 0; i < 1 + next(round < 30 ? 4 : 400); ++i) {
            bytes[32 + next(static_cast<quint32>(bytes.size()) - 32)] = static_cast<char>(next(256));
        }
        const QString fault = place.faultOf(bytes);
        QVERIFY2(!fault.startsWith(QLatin1String("something was left")), qPrintable(fault));
        QVERIFY2(!fault.contains(QLatin1String("cannot be understood")), qPrintable(fault));
        faults += fault.isEmpty() ? 0 : 1;
    }
    QVERIFY(faults > 10);
}

void TestReadJet::aTextThatCannotBeDecodedIsNamed() {
    REQUIRE_JET_FILES();
    const OurReader reader;
    const Place place;
    QByteArray bytes = jetBytes("older-store-dates.mdb");
    const QByteArray dash("\x14\x20", 2); // stands in notes, two bytes a letter
    const QByteArray word = QByteArray("l\0i\0n\0e\0 \0t\0w\0o\0 \0", 18) + dash;
    QVERIFY(bytes.contains(word));
    bytes.replace(word, word.chopped(2) + QByteArray("\x14\xd8", 2)); // half of a pair
    const QString fault = place.faultOf(bytes);
    QVERIFY2(fault.contains(QLatin1String("cannot be decoded")) && fault.contains(QLatin1String("divenote")),
             qPrintable(fault));
}

void TestReadJet::whatIsNoJetFileIsNamed() {
    const OurReader reader;
    const Place place;
    QCOMPARE(place.faultOf("SQLite format 3" + QByteArray(9000, '\0')), "It is no Jet file.");
    QVERIFY(place.faultOf(QByteArray(3 * kPage, '\0')).contains(QLatin1String("no Jet file")));
    QVERIFY_EXCEPTION_THROWN(place.take(QStringLiteral("/no such file")), platform::StoreError);
}

void TestReadJet::aReaderThatFailsIsAFaultAndNothingElse() {
    const Place place;
    const std::string head = FrameWriter('J')
                                 .number<std::uint16_t>(1)
                                 .number<std::uint16_t>(1)
                                 .name("main")
                                 .number<std::uint64_t>(1)
                                 .number<std::uint16_t>(1)
                                 .number<std::uint8_t>(1)
                                 .number<std::uint32_t>(8)
                                 .name("DiveID")
                                 .number<std::uint16_t>(0)
                                 .frame();
    const QString broke = QStringLiteral("The program that reads Jet files broke down over it.");
    const QString early = QStringLiteral("The program that reads Jet files ended before the file did.");
    QCOMPARE(place.faultOfReader("kill -SEGV $$"), broke);
    QCOMPARE(place.faultOfReader(printing(head) + "kill -SEGV $$"),
             "It is no dive store: it has no table \"gas\".");
    QCOMPARE(place.faultOfReader("exit 0"), early);
    QCOMPARE(place.faultOfReader("exit 3"), early);
    QCOMPARE(place.faultOfReader(printing(FrameWriter('F').text("It is broken.").frame())), "It is broken.");
    QVERIFY(place.faultOfReader("echo what is this").contains(QLatin1String("cannot be understood")));
    QVERIFY(place.faultOfReader("cat /dev/zero").contains(QLatin1String("cannot be understood")));

    std::string store;
    FrameWriter three('J');
    three.number<std::uint16_t>(1).number<std::uint16_t>(3);
    for (const char* const name : {"main", "gas", "tissue"}) {
        three.name(name).number<std::uint64_t>(1).number<std::uint16_t>(1).number<std::uint8_t>(1);
        three.number<std::uint32_t>(8).name("DiveID");
        store +=
            FrameWriter('R').value("D0000001").frame() + FrameWriter('E').number<std::uint64_t>(1).frame();
    }
    store = three.number<std::uint16_t>(0).frame() + store;
    const std::string end = FrameWriter('Z').frame();
    QCOMPARE(place.faultOfReader(printing(store)), early);
    QCOMPARE(place.faultOfReader(printing(store.substr(0, store.size() - 3))), early);
    QCOMPARE(place.faultOfReader(printing(store + end) + "exit 1"), early);
    QCOMPARE(place.faultOfReader(printing(store + end) + "kill -KILL $$"), broke);
    QCOMPARE(place.faultOfReader(printing(store + end)), "something was made");
}

void TestReadJet::aReaderThatIsNotThereIsNamed() {
    store::setjetreader(QStringLiteral("/no such reader"));
    try {
        store::readjet(QStringLiteral("any.mdb"), {});
        QFAIL("was read");
    } catch (const platform::StoreError& error) {
        QCOMPARE(error.text(), "The program that reads Jet files is missing: /no such reader");
    }
    store::setjetreader({});
}

void TestReadJet::aReaderThatSaysNothingIsGivenUp() {
    const Place place;
    QCOMPARE(place.faultOfReader("exec sleep 60", 50ms),
             "The program that reads Jet files came to no end with it.");
}

void TestReadJet::aStopEndsTheReader() {
    const Place place;
    const QString program = QFileInfo(place.jet()).absolutePath() + QStringLiteral("/slow");
    QVERIFY(platform::writeFileWhole(program, "#!/bin/sh\nexec sleep 60\n"));
    QVERIFY(QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner));
    store::setjetreader(program);
    QVERIFY_EXCEPTION_THROWN(store::readjet(place.jet(), [](auto, auto) { return false; }),
                             store::JetStopped);
    store::setjetreader({});
}

/// Looked at from outside, while it waits for a file that nobody fills.
void TestReadJet::theReaderHasItsLimits() {
    const QTemporaryDir folder;
    const QString pipe = folder.filePath(QStringLiteral("pipe.mdb"));
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QProcess process;
    process.start(QStringLiteral(BENTHOR_READJET), {pipe});
    QVERIFY(process.waitForStarted());
    const auto told = [&process](const char* file) {
        QFile facts(QStringLiteral("/proc/%1/%2").arg(process.processId()).arg(QLatin1String(file)));
        return facts.open(QIODevice::ReadOnly) ? QString::fromLatin1(facts.readAll()).simplified()
                                               : QString();
    };
    QTRY_VERIFY(told("status").contains(QLatin1String("NoNewPrivs: 1")));
    const QString limits = told("limits");
    for (const char* const limit : {"Max cpu time 600 600", "Max file size 0 0", "Max core file size 0 0",
                                    "Max processes 0 0", "Max open files 32 32"}) {
        QVERIFY2(limits.contains(QLatin1String(limit)), qPrintable(limits));
    }
#if !defined(__SANITIZE_ADDRESS__)
    QVERIFY2(limits.contains(QLatin1String("Max address space 1073741824 1073741824")), qPrintable(limits));
#endif
    process.kill();
    QVERIFY(process.waitForFinished());
}

QTEST_GUILESS_MAIN(TestReadJet)
#include "test_readjet.moc"
