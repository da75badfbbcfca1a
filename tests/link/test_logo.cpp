#include "link/logo.h"
#include "platform/programfolder.h"
#include "simulator/kd.h"
#include "tests/link/consolestage.h"
#include "tests/simulator/logobitmap.h"
#include "tests/support/ownpath.h"
#include "tests/support/testfolder.h"

#include <QProcess>

using namespace benthor;
using namespace benthor::link;
using namespace benthor::tests;

namespace {

QString wrongSize() {
    return QStringLiteral("Wrong file size. Check bitmap type and size!");
}

/// The console in a program folder, with a converter that is never run.
struct Stage : ConsoleStage {
    Stage() {
        place(QStringLiteral("logoconv.exe"), {});
        folder.put(QStringLiteral("logo.bmp"), bitmap(crookedLogo()));
    }
    void place(const QString& name, const QByteArray& program) const {
        folder.put(name, program);
        if (!QFile(folder.path(name)).setPermissions(QFile::ReadOwner | QFile::ExeOwner)) {
            qFatal("no program");
        }
    }
    void convert(const QString& name) {
        host.chosenFile = folder.path(name);
        Command8_click(link, host);
    }

    TestFolder folder{TestFolder::Store::Missing};
    OwnPath path;
};

/// Lets the console's line lead to a device.
void connectDevice(ConsoleStage& stage, simulator::Kd& device) {
    stage.host.line.onOutput = [&device](const QByteArray& bytes) { device.receive(bytes); };
    stage.host.line.onPoll = [&stage, &device] { stage.host.line.waiting = device.advance(1); };
}

} // namespace

class TestLogo : public QObject {
    Q_OBJECT

private slots:
    void theNameOfTheTextFollowsFromTheBitmaps_data() {
        QTest::addColumn<QString>("bitmap");
        QTest::addColumn<QString>("text");
        QTest::newRow("logo") << "logo.bmp"
                              << "loga.bmt";
        QTest::newRow("one that ends in a") << "sharka.bmp"
                                            << "sharka.bmt";
        QTest::newRow("one letter") << "x.bmp"
                                    << "a.bmt";
        QTest::newRow("another extension") << "picture.jpeg"
                                           << "picturea.bmt";
        QTest::newRow("blanks") << "my logo.bmp"
                                << "my loga.bmt";
        QTest::newRow("five letters without extension") << "abcde"
                                                        << "a.bmt";
    }

    void theNameOfTheTextFollowsFromTheBitmaps() {
        QFETCH(QString, bitmap);
        QTEST(convertedName(bitmap).value(), "text");
        // Ours writes the same name, or the text would not be found.
        QCOMPARE(simulator::logoTextPath(bitmap), convertedName(bitmap));
    }

    void aNameOfLessThanFiveCharactersGivesNone() {
        QVERIFY(!convertedName(QStringLiteral("logo")));
        QVERIFY(!convertedName(QString()));
    }

    void aBitmapGoesToTheConverterInTheProgramFolder() {
        Stage stage;
        stage.convert(QStringLiteral("logo.bmp"));
        QCOMPARE(stage.host.filters, QStringList("Bitmap Files (*.bmp)|*.bmp|All Files (*.*)|*.*"));
        QCOMPARE(stage.host.suggested, QStringList(QString()));
        QCOMPARE(stage.host.started.size(), std::size_t(1));
        QCOMPARE(stage.host.started.front().program, stage.folder.path("logoconv.exe"));
        QCOMPARE(stage.host.started.front().arguments, QStringList("logo.bmp"));
        QCOMPARE(stage.host.started.front().folder, stage.folder.root());
        QCOMPARE(stage.host.messages, QStringList("Created file: loga.bmt"));
        QCOMPARE(stage.link.infotext, "");
    }

    void aNameThatBeginsWithAHyphenIsNoOption() {
        Stage stage;
        stage.folder.put(QStringLiteral("--help.bmp"), bitmap(crookedLogo()));
        stage.convert(QStringLiteral("--help.bmp"));
        QCOMPARE(stage.host.started.size(), std::size_t(1));
        QCOMPARE(stage.host.started.front().arguments, QStringList("./--help.bmp"));
        QCOMPARE(stage.host.messages, QStringList("Created file: --hela.bmt"));
    }

    void theNameIsOfferedAtTheNextUploadOfALogo() {
        Stage stage;
        stage.convert(QStringLiteral("logo.bmp"));
        QCOMPARE(stage.link.console.convertedlogo, "loga.bmt");
        stage.choose(kChoiceLogo);
        stage.host.chosenFile.clear();
        mnuOpen_click(stage.link, stage.host);
        QCOMPARE(stage.host.suggested.last(), "loga.bmt");
    }

    void aFileOfAnotherLengthIsRefused_data() {
        QTest::addColumn<int>("length");
        QTest::newRow("empty") << 0;
        QTest::newRow("a byte less") << 1085;
        QTest::newRow("a byte more") << 1087;
        QTest::newRow("four bits for a pixel") << 118 + 64 * 52;
    }

    void aFileOfAnotherLengthIsRefused() {
        QFETCH(int, length);
        Stage stage;
        stage.folder.put(QStringLiteral("logo.bmp"), QByteArray(length, 'B'));
        stage.link.console.convertedlogo = QStringLiteral("kept.bmt");
        stage.convert(QStringLiteral("logo.bmp"));
        QCOMPARE(stage.host.messages, QStringList(wrongSize()));
        QVERIFY(stage.host.started.empty());
        QCOMPARE(stage.link.console.convertedlogo, "kept.bmt");
    }

    void aFileThatCannotBeOpenedHasTheWrongSize_data() {
        QTest::addColumn<QString>("name");
        QTest::newRow("not there") << "none.bmp";
        QTest::newRow("a folder") << "new";
    }

    void aFileThatCannotBeOpenedHasTheWrongSize() {
        QFETCH(QString, name);
        Stage stage;
        stage.convert(name);
        QCOMPARE(stage.host.messages, QStringList(wrongSize()));
        QVERIFY(stage.host.started.empty());
    }

    void theLengthIsTheOnlyCheck() {
        Stage stage;
        stage.folder.put(QStringLiteral("text.txt"), QByteArray(1086, 'x'));
        stage.convert(QStringLiteral("text.txt"));
        QCOMPARE(stage.host.started.size(), std::size_t(1));
        QCOMPARE(stage.host.messages, QStringList("Created file: texa.bmt"));
    }

    void aCancelledDialogDoesNothing() {
        Stage stage;
        stage.host.chosenFile.clear();
        Command8_click(stage.link, stage.host);
        QVERIFY(stage.host.messages.isEmpty());
        QVERIFY(stage.host.started.empty());
    }

    void aShortNameIsConvertedAndNothingIsSaid() {
        Stage stage;
        stage.folder.put(QStringLiteral("logo"), bitmap(crookedLogo()));
        stage.link.console.convertedlogo = QStringLiteral("kept.bmt");
        stage.convert(QStringLiteral("logo"));
        QCOMPARE(stage.host.started.size(), std::size_t(1));
        QVERIFY(stage.host.messages.isEmpty());
        QCOMPARE(stage.link.console.convertedlogo, "kept.bmt");
    }

    void theMenuTellsTheBitmapsKindThenAsksForOne() {
        Stage stage;
        stage.host.chosenFile = stage.folder.path("logo.bmp");
        mnuLogoConv_click(stage.link, stage.host);
        QCOMPARE(stage.host.messages.size(), 2);
        const QStringList lines = stage.host.messages.first().split(u'\n');
        QCOMPARE(lines.size(), 4);
        QCOMPARE(lines[0], "Bitmap to convert must be the following specification:");
        QCOMPARE(lines[1], "102 pixels wide x 64 pixels high. Monochrome Bitmap.");
        QVERIFY(lines[2].contains(QLatin1String("same folder as logoconv.exe")));
        QVERIFY(lines[2].contains(stage.folder.root()));
        QCOMPARE(lines[3], "File sharka.bmp supplied as example.");
        QCOMPARE(stage.host.messages.last(), "Created file: loga.bmt");
        QCOMPARE(stage.host.started.size(), std::size_t(1));
    }

    void theConverterBesideTheProgramGoesFirst() {
        Stage stage;
        stage.path.install(QStringLiteral("logoconv"), "#!/bin/sh\n");
        QCOMPARE(findConverter(), stage.folder.path("logoconv.exe"));
        QVERIFY(QFile::remove(stage.folder.path("logoconv.exe")));
        QCOMPARE(findConverter(), stage.path.path("logoconv"));
    }

    void whatCannotBeExecutedIsNoConverter() {
        Stage stage;
        QVERIFY(QFile(stage.folder.path("logoconv.exe")).setPermissions(QFile::ReadOwner));
        QCOMPARE(findConverter(), "");
        QVERIFY(QFile::remove(stage.folder.path("logoconv.exe")));
        QVERIFY(QDir(stage.folder.root()).mkdir(QStringLiteral("logoconv.exe")));
        QCOMPARE(findConverter(), "");
    }

    void aMissingConverterIsAQuietHint() {
        Stage stage;
        QVERIFY(QFile::remove(stage.folder.path("logoconv.exe")));
        stage.convert(QStringLiteral("logo.bmp"));
        QVERIFY(stage.host.started.empty());
        QVERIFY(stage.link.infotext.contains(QLatin1String("No logo converter was found")));
        QCOMPARE(stage.host.messages, QStringList("Created file: loga.bmt"));
        QCOMPARE(stage.link.console.convertedlogo, "loga.bmt");
    }

    void aConverterThatDoesNotStartIsAQuietHint() {
        Stage stage;
        stage.host.programsStart = false;
        stage.convert(QStringLiteral("logo.bmp"));
        QVERIFY(stage.link.infotext.contains(QLatin1String("can't be started")));
        QCOMPARE(stage.host.messages, QStringList("Created file: loga.bmt"));
    }

    void aLogoReachesTheDeviceAsItWasDrawn() {
        Stage stage;
        stage.convert(QStringLiteral("logo.bmp"));
        QProcess converter; // as the program starts it
        converter.setWorkingDirectory(stage.host.started.front().folder);
        converter.start(QStringLiteral(BENTHOR_LOGOCONV), stage.host.started.front().arguments);
        QVERIFY(converter.waitForFinished());
        QCOMPARE(converter.exitCode(), 0);
        stage.choose(kChoiceLogo);
        stage.host.chosenFile = stage.folder.path(stage.link.console.convertedlogo);
        mnuOpen_click(stage.link, stage.host);
        QVERIFY(stage.host.questions.isEmpty()); // it went in whole
        simulator::Kd device;
        connectDevice(stage, device);
        Command2_click(stage.link, stage.host);
        device.advance(1000);
        QCOMPARE(stage.host.messages, QStringList("Created file: loga.bmt"));
        const std::optional<simulator::Logo> logo = simulator::readLogo(device.memory.logo);
        QVERIFY(logo);
        QVERIFY(*logo == crookedLogo());
    }
};

QTEST_GUILESS_MAIN(TestLogo)
#include "test_logo.moc"
