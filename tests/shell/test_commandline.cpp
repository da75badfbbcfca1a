// The words behind `benthor`, and what a file from outside is.

#include "shell/commandline.h"
#include "shell/openedfile.h"
#include "tests/support/asnobody.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

using namespace benthor;
using namespace benthor::shell;

class TestCommandLine : public QObject {
    Q_OBJECT

private slots:
    void withoutWordsTheProgramStarts();
    void helpAndVersionAreAskedFor();
    void aFolderAndAFileAreTaken();
    void aRelativeFileIsLookedForFromTheCurrentFolder();
    void behindTwoDashesEverythingIsAFile();
    void wrongUsageIsTold_data();
    void wrongUsageIsTold();
    void theToolkitsWordsAreLeftToIt();
    void theHelpNamesEveryOption();
    void theEndingTellsTheScreen_data();
    void theEndingTellsTheScreen();
    void whatCannotBeOpenedSaysWhy();
    void aFileThatMayNotBeReadSaysWhy();
};

void TestCommandLine::withoutWordsTheProgramStarts() {
    const CommandLine line = readCommandLine({});
    QVERIFY(!line.help && !line.version);
    QCOMPARE(line.error, QString());
    QCOMPARE(line.file, QString());
    QCOMPARE(line.folder, QString());
}

void TestCommandLine::helpAndVersionAreAskedFor() {
    QVERIFY(readCommandLine({QStringLiteral("--help")}).help);
    QVERIFY(readCommandLine({QStringLiteral("--version")}).version);
}

void TestCommandLine::aFolderAndAFileAreTaken() {
    for (const QStringList& words :
         {QStringList{QStringLiteral("--folder"), QStringLiteral("my dives"), QStringLiteral("/x/a b.mit")},
          QStringList{QStringLiteral("/x/a b.mit"), QStringLiteral("--folder=my dives")}}) {
        const CommandLine line = readCommandLine(words);
        QCOMPARE(line.error, QString());
        QCOMPARE(line.folder, "my dives");
        QCOMPARE(line.file, "/x/a b.mit");
    }
}

void TestCommandLine::aRelativeFileIsLookedForFromTheCurrentFolder() {
    QCOMPARE(readCommandLine({QStringLiteral("plan.mit")}).file,
             QDir::currentPath() + QStringLiteral("/plan.mit"));
}

void TestCommandLine::behindTwoDashesEverythingIsAFile() {
    const CommandLine line = readCommandLine({QStringLiteral("--"), QStringLiteral("--help")});
    QVERIFY(!line.help);
    QCOMPARE(line.file, QDir::currentPath() + QStringLiteral("/--help"));
}

void TestCommandLine::wrongUsageIsTold_data() {
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QString>("named");
    QTest::newRow("an option that is none") << QStringList{QStringLiteral("--fodler")} << "fodler";
    QTest::newRow("two files") << QStringList{QStringLiteral("a.mit"), QStringLiteral("b.mit")} << "One file";
    QTest::newRow("a file without a name") << QStringList{QString()} << "empty";
    QTest::newRow("no folder") << QStringList{QStringLiteral("--folder")} << "folder";
    QTest::newRow("an empty folder") << QStringList{QStringLiteral("--folder"), QString()} << "wants a value";
    QTest::newRow("an option for a folder")
        << QStringList{QStringLiteral("--folder"), QStringLiteral("--version")} << "wants a value";
    QTest::newRow("two folders") << QStringList{QStringLiteral("--folder=a"), QStringLiteral("--folder=b")}
                                 << "twice";
    QTest::newRow("help with a value") << QStringList{QStringLiteral("--help=me")} << "help";
}

void TestCommandLine::wrongUsageIsTold() {
    QFETCH(QStringList, words);
    QFETCH(QString, named);
    const CommandLine line = readCommandLine(words);
    QVERIFY2(line.error.contains(named), qPrintable(line.error));
}

void TestCommandLine::theToolkitsWordsAreLeftToIt() {
    QVERIFY(mayHoldToolkitWords({QStringLiteral("-platform"), QStringLiteral("offscreen")}));
    QVERIFY(
        mayHoldToolkitWords({QStringLiteral("a.mit"), QStringLiteral("-session"), QStringLiteral("1_2")}));
    QVERIFY(mayHoldToolkitWords({QStringLiteral("--style=fusion")}));
    QVERIFY(!mayHoldToolkitWords({QStringLiteral("--version")}));
    QVERIFY(!mayHoldToolkitWords({QStringLiteral("-nonsense"), QStringLiteral("platform")}));
    QVERIFY(!mayHoldToolkitWords({QStringLiteral("--"), QStringLiteral("-platform")}));
    QVERIFY(!mayHoldToolkitWords({QStringLiteral("a-b.mit")}));
}

void TestCommandLine::theHelpNamesEveryOption() {
    for (const char* const word : {"--folder DIR", "--help", "--version", "*.mit", "*.sog", "Exit status"}) {
        QVERIFY2(helpText().contains(QLatin1String(word)), word);
    }
    for (const QString& one : helpText().split(u'\n')) {
        QVERIFY2(one.size() <= 80, qPrintable(one));
    }
    QVERIFY(versionText().startsWith(QLatin1String("benthor ")));
}

void TestCommandLine::theEndingTellsTheScreen_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<FileKind>("kind");
    QTest::newRow("setup") << "/a/plan.mit" << FileKind::Setup;
    QTest::newRow("setup of a shouter") << "/a/PLAN.MIT" << FileKind::Setup;
    QTest::newRow("image") << "/a/hdckd3chk.sog" << FileKind::Image;
    QTest::newRow("image, mixed") << "/a/x.Sog" << FileKind::Image;
    QTest::newRow("dive") << "/a/dive.txt" << FileKind::Other;
    QTest::newRow("none") << "/a.mit/dive" << FileKind::Other;
    QTest::newRow("another behind it") << "/a/plan.mit.txt" << FileKind::Other;
}

void TestCommandLine::theEndingTellsTheScreen() {
    QFETCH(QString, path);
    QTEST(kindOf(path), "kind");
}

void TestCommandLine::whatCannotBeOpenedSaysWhy() {
    const QTemporaryDir folder;
    const auto file = [&folder](const char* name) { return folder.filePath(QLatin1String(name)); };
    const auto put = [&file](const char* name) {
        QFile one(file(name));
        return one.open(QIODevice::WriteOnly);
    };
    QVERIFY(put("plan.mit") && put("image.sog") && put("dive.txt"));
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("folder.mit")));
    QCOMPARE(::mkfifo(QFile::encodeName(file("pipe.mit")).constData(), 0600), 0);
    QVERIFY(QFile::link(file("away"), file("link.mit")));
    QVERIFY(QFile::link(file("plan.mit"), file("good.mit")));

    QCOMPARE(whyNotOpened(file("plan.mit")), QString());
    QCOMPARE(whyNotOpened(file("good.mit")), QString());
    QCOMPARE(whyNotOpened(file("image.sog")), QString());
    for (const auto& [name, words] :
         {std::pair("none.mit", "not there"), std::pair("link.mit", "a link"),
          std::pair("folder.mit", "a folder"), std::pair("pipe.mit", "no regular file"),
          std::pair("dive.txt", "Dive File Find")}) {
        const QString told = whyNotOpened(file(name));
        QVERIFY2(told.contains(file(name)) && told.contains(QLatin1String(words)), qPrintable(told));
    }
}

void TestCommandLine::aFileThatMayNotBeReadSaysWhy() {
    const QTemporaryDir folder;
    const QString shut = folder.filePath(QStringLiteral("shut.mit"));
    QVERIFY(QFile(shut).open(QIODevice::WriteOnly));
    QCOMPARE(::chmod(QFile::encodeName(shut).constData(), 0), 0);
    QCOMPARE(::chmod(QFile::encodeName(folder.path()).constData(), 0755), 0);
    QCOMPARE(tests::runAsNobody(
                 [&shut] { return whyNotOpened(shut).contains(QLatin1String("Permission denied")) ? 0 : 1; }),
             0);
}

QTEST_GUILESS_MAIN(TestCommandLine)
#include "test_commandline.moc"
