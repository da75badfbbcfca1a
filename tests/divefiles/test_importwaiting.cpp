#include "divefiles/waitingfiles.h"
#include "tests/divefiles/importstage.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace benthor;
using divefiles::ImportEnd;
using tests::goodDive;
using tests::RecordingScreen;

/// What waits in `new`, how it comes there, and the first pass over it.
class TestImportWaiting : public QObject, private tests::ImportStage {
    Q_OBJECT

private slots:
    void init() { begin(); }
    void cleanup() { end(); }

    void filesAreTakenByNameWithoutRegardToCase();
    void aFileThatArrivesDuringARunWaitsForTheNext();

    void oneFileAloneIsTakenAndTheOthersWait();

    void whatIsNoRegularFileIsPassedByAndTold();
    void theFirstPassPaintsWithinALongFileAndBetweenFiles();
    void closingWithinTheFirstPassStoresNothing();

    void aManualFileIsCopiedIntoNew();
    void aManualFileOfAnotherExtentionIsRefused_data();
    void aManualFileOfAnotherExtentionIsRefused();
    void aManualFileThatCannotBeReadSaysWhy();
    void aManualFileFromNewItselfStaysWhole();
};

void TestImportWaiting::filesAreTakenByNameWithoutRegardToCase() {
    for (const char* const name : {"b.txt", "A.TXT", "c.txt", "a0.txt"}) {
        program_->putWaiting(QString::fromLatin1(name), goodDive());
    }
    import();
    QCOMPARE(locations(), QStringList({"A.TXT", "a0.txt", "b.txt", "c.txt"}));
}

void TestImportWaiting::aFileThatArrivesDuringARunWaitsForTheNext() {
    program_->putWaiting(QStringLiteral("a.txt"), goodDive());
    RecordingScreen screen;
    screen.at = [&](const QString& step) {
        if (step == QLatin1String("yield")) {
            program_->putWaiting(QStringLiteral("b.txt"), goodDive());
        }
    };
    QCOMPARE(divefiles::importdives(program_->folder, state_, screen), ImportEnd::Done);
    QCOMPARE(newFiles(), QStringList("b.txt"));
    QCOMPARE(locations(), QStringList("a.txt"));
}

void TestImportWaiting::oneFileAloneIsTakenAndTheOthersWait() {
    program_->putWaiting(QStringLiteral("a.txt"), "Start,1\r\n"); // no import of all comes past this one
    program_->putWaiting(QStringLiteral("b.txt"), goodDive());
    program_->putWaiting(QStringLiteral("c.txt"), goodDive());
    QVERIFY(QDir(program_->folder.root()).mkpath(QStringLiteral("new/folder.txt")));
    screen_.clear();
    QCOMPARE(importdives(program_->folder, state_, screen_, QStringLiteral("b.txt")), ImportEnd::Done);
    QCOMPARE(locations(), QStringList{QStringLiteral("b.txt")});
    QCOMPARE(newFiles(), QStringList({"a.txt", "c.txt"}));
    QCOMPARE(program_->names(QStringLiteral("old")), QStringList{QStringLiteral("b.txt")});
    QCOMPARE(screen_.belows, QStringList{QString()});

    QCOMPARE(importdives(program_->folder, state_, screen_, QStringLiteral("none.txt")), ImportEnd::NoFiles);
}

void TestImportWaiting::whatIsNoRegularFileIsPassedByAndTold() {
    QVERIFY(QDir().mkpath(program_->folder.path(u"new", u"folder.txt")));
    QCOMPARE(::mkfifo(QFile::encodeName(program_->folder.path(u"new", u"pipe.txt")).constData(), 0600), 0);
    QVERIFY(QFile::link(program_->folder.path(u"nowhere"), program_->folder.path(u"new", u"broken.txt")));
    QVERIFY(
        QFile::link(program_->folder.path(u"new", u"pipe.txt"), program_->folder.path(u"new", u"piped.txt")));
    program_->putWaiting(QStringLiteral(".hidden.txt"), goodDive());
    const QByteArray strange = QFile::encodeName(program_->folder.path(u"new")) +
                               "/Gro\xdf" // a name of another encoding
                               "e.TXT";
    const int file = ::open(strange.constData(), O_CREAT | O_WRONLY, 0600);
    QVERIFY(file >= 0);
    ::close(file);
    QCOMPARE(import(), ImportEnd::NoFiles);
    program_->putWaiting(QStringLiteral("a.txt"), goodDive());
    program_->put(QStringLiteral("corrupt"), QStringLiteral("linked"), goodDive());
    QVERIFY(QFile::link(program_->folder.path(u"corrupt", u"linked"),
                        program_->folder.path(u"new", u"linked.txt")));
    QCOMPARE(import(), ImportEnd::Done);
    QCOMPARE(locations(), QStringList({"a.txt", "linked.txt"}));
    QCOMPARE(program_->bytesOf(QStringLiteral("corrupt"), QStringLiteral("linked")), goodDive());
    const divefiles::WaitingFiles left = divefiles::waitingfiles(program_->folder);
    QCOMPARE(::unlink(strange.constData()), 0); // the test's folder is removed by names that are text
    QCOMPARE(left.names, QStringList());
    const std::vector<divefiles::PassedBy> passedby{
        {".hidden.txt", "begins with a point"}, {"Gro\\xdfe.TXT", "no UTF-8"},
        {"broken.txt", "no regular file"},      {"folder.txt", "no regular file"},
        {"pipe.txt", "no regular file"},        {"piped.txt", "no regular file"}};
    QVERIFY(left.passedby == passedby);
    QCOMPARE(screen_.belows, QStringList("Passed by in the folder new: \".hidden.txt\" (begins with a "
                                         "point), \"Gro\\xdfe.TXT\" (no UTF-8), \"broken.txt\" (no "
                                         "regular file), and 3 more"));
}

void TestImportWaiting::theFirstPassPaintsWithinALongFileAndBetweenFiles() {
    program_->putWaiting(QStringLiteral("a.txt"), goodDive() + QByteArray(20 * 65536, 'x'));
    for (int i = 0; i < 50; ++i) {
        program_->putWaiting(QStringLiteral("b%1.txt").arg(i), "rubbish");
    }
    int paints = 0;
    QList<int> paintsAt;
    struct Screen : RecordingScreen {
        std::function<void()> onPaint;
        QStringList copied;
        void paint() override { onPaint(); }
        void copying(int number, int files) override {
            copied += QStringLiteral("%1/%2").arg(number).arg(files);
        }
    } screen;
    screen.onPaint = [&] { ++paints; };
    screen.at = [&](const QString& step) {
        if (step.startsWith(QLatin1String("filelisted"))) {
            paintsAt += paints;
            QVERIFY(!process().importing);
        }
    };
    QCOMPARE(divefiles::importdives(program_->folder, state_, screen), ImportEnd::Done);
    QCOMPARE(paintsAt.size(), 51);
    QVERIFY(paintsAt.first() >= 20);
    for (qsizetype i = 1; i < paintsAt.size(); ++i) {
        QVERIFY(paintsAt[i] > paintsAt[i - 1]);
    }
    QCOMPARE(screen.copied.first(), "1/51");
    QCOMPARE(screen.copied.last(), "51/51");
}

void TestImportWaiting::closingWithinTheFirstPassStoresNothing() {
    for (const char* const name : {"a.txt", "b.txt"}) {
        program_->putWaiting(QString::fromLatin1(name), goodDive() + QByteArray(4 * 65536, 'x'));
    }
    struct Screen : RecordingScreen {
        std::function<void()> onPaint;
        void paint() override { onPaint(); }
    } screen;
    for (int last = 1; last <= 12; ++last) {
        int paints = 0;
        screen.onPaint = [&] {
            if (++paints == last) {
                state_.keepimporting = false;
            }
        };
        QCOMPARE(divefiles::importdives(program_->folder, state_, screen), ImportEnd::Done);
        QCOMPARE(newFiles(), QStringList({"a.txt", "b.txt"}));
        QCOMPARE(locations(), QStringList());
        for (const QString& name : program_->names(QStringLiteral("old"))) {
            QCOMPARE(program_->bytesOf(QStringLiteral("old"), name),
                     program_->bytesOf(QStringLiteral("new"), name));
        }
    }
    QVERIFY(!program_->names(QStringLiteral("old")).isEmpty());
}

/// The ending in any case: a pattern of the folder `new` takes it in any case, too.
void TestImportWaiting::aManualFileIsCopiedIntoNew() {
    for (const QString& name : {QStringLiteral("my.dive.txt"), QStringLiteral("a.TXT")}) {
        program_->put(QStringLiteral("old"), name, goodDive());
        QCOMPARE(divefiles::takemanualfile(program_->folder, program_->folder.path(u"old", name)), QString());
        QCOMPARE(program_->bytesOf(QStringLiteral("new"), name), goodDive());
        QCOMPARE(program_->bytesOf(QStringLiteral("old"), name), goodDive());
    }
}

void TestImportWaiting::aManualFileOfAnotherExtentionIsRefused_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("csv") << QStringLiteral("a.csv");
    QTest::newRow("none") << QStringLiteral("txt");
    QTest::newRow("behind the last point") << QStringLiteral("a.txt.bak");
    QTest::newRow("empty") << QStringLiteral("a.");
}

void TestImportWaiting::aManualFileOfAnotherExtentionIsRefused() {
    QFETCH(QString, name);
    program_->put(QStringLiteral("old"), name, goodDive());
    QCOMPARE(divefiles::takemanualfile(program_->folder, program_->folder.path(u"old", name)),
             "File Extention is wrong !");
    QCOMPARE(newFiles(), QStringList());
}

void TestImportWaiting::aManualFileThatCannotBeReadSaysWhy() {
    const QString path = program_->folder.path(u"old", u"none.txt");
    const QString message = divefiles::takemanualfile(program_->folder, path);
    QVERIFY2(message.startsWith(QLatin1String("Error reading data file. ")), qPrintable(message));
    QVERIFY(message.contains(path));
}

void TestImportWaiting::aManualFileFromNewItselfStaysWhole() {
    program_->putWaiting(QStringLiteral("a.txt"), goodDive());
    QCOMPARE(divefiles::takemanualfile(program_->folder, program_->folder.path(u"new", u"a.txt")), QString());
    QCOMPARE(program_->bytesOf(QStringLiteral("new"), QStringLiteral("a.txt")), goodDive());
}

QTEST_GUILESS_MAIN(TestImportWaiting)
#include "test_importwaiting.moc"
