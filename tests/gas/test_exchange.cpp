#include "gas/exchange.h"
#include "gas/setuptext.h"
#include "tests/gas/fakelink.h"
#include "tests/gas/vectors.h"

#include <QTemporaryDir>

using namespace benthor;
using namespace benthor::gas;
using namespace benthor::tests;

namespace {

const QDateTime kMoment(QDate(2017, 9, 27), QTime(1, 21, 18));

/// The stock file of an installation: a whole setup text.
QByteArray stockFile() {
    return "A079 000 0560 1 B001 000 0040 0 C020 000 0070 0 D050 000 0180 0 E060 000 0250 0 F064 000 0280 0 "
           "G068 000 "
           "0330 0 H047 035 0670 0 I036 050 0900 0 J024 065 1170 0 K0000000000 L0 M2 N0 O0 P130 Q0 R0 S1 "
           "T100 U004 "
           "V120 W030 X1 Y1 Z\x1b\r\n";
}

/// A plan, a link and a folder with the stock file; the plan is opened.
struct World {
    explicit World(const char* unit = "metre") {
        process() = Process();
        process().depthunit = QString::fromLatin1(unit);
        put("gdata.mit", stockFile());
    }
    void put(const char* name, const QByteArray& bytes) const {
        QVERIFY(platform::writeFileWhole(folder.path(QString::fromLatin1(name)), bytes));
    }
    QByteArray bytes(const char* name) const {
        return platform::readFile(folder.path(QString::fromLatin1(name))).value_or("(no file)");
    }
    TextSource open() { return opengas(plan, folder, told.say); }
    void tick(bool visible = true) {
        const Ask ask = [this](const QString& text, const QString& title, const QString& below) {
            belows += below;
            questions += title + QStringLiteral(": ") + text;
            return answers.isEmpty() ? false : answers.takeFirst();
        };
        Timer5_tick(plan, shown, link, visible, kMoment, ask, told.say);
    }
    Ask agree = [this](const QString& text, const QString& title, const QString&) {
        questions += title + QStringLiteral(": ") + text;
        return answers.isEmpty() ? false : answers.takeFirst();
    };
    Update update() { return gas::Command1_click(plan, link, told.say, device, agree, kMoment); }
    Update spare() { return gas::Command2_click(plan, link, told.say, device, agree, kMoment); }
    void connectDevice(const QByteArray& words = "KD3") {
        link.shownCaption = QStringLiteral("Connected");
        link.shownColour = platform::kToldGreen;
        link.received = words + "PPPP";
        process().deviceconnected = 1;
    }

    QTemporaryDir directory;
    platform::ProgramFolder folder{directory.path()};
    GasPlan plan;
    GasShown shown;
    DeviceSetup device{QString::fromLatin1(stockFile().first(222)), false};
    FakeLink link;
    Told told;
    QStringList questions, belows;
    QList<bool> answers;
};

} // namespace

class TestExchange : public QObject {
    Q_OBJECT

private slots:
    void theFirstStartHasAirAndTheStockText();
    void theLastTextIsTakenUpAgain();
    void withoutAnyFileTheTextIsEmpty();
    void aTextInHandGivesTheGases();
    void theUnitInForceIsApplied();
    void aHalverinHasItsNamesAndTwoGases();

    void aTickWhileAnImportRunsDoesNothing();
    void aHiddenTickLeavesTheTextAlone();
    void aTickWritesTheScreenIntoTheText();
    void theStartingGasBecomesActiveAndItsListFollows();
    void anInactiveGasInHandMakesWayForTheStartingGas();
    void withoutAnActiveGasTheTickSaysSoOnceAndActivatesTheStart();
    void aUnitThatTheTextBroughtIsAppliedByTheTick();
    void theStatusIsMirrored();
    void theTypeIsReadFromTheDevicesWords();
    void theTypeIsAskedForOnce_data();
    void theTypeIsAskedForOnce();
    void theQuestionForTheTypeSaysInOneLineWhyItIsAsked();
    void whileTheDirectoryIsAwaitedNothingIsAsked();
    void aHalverinStartsOnADiluent();
    void aTraxHasFourGases();

    void whatTheDeviceSentIsStoredAndTakenOver();
    void aShortReplyGivesTheStockGases();
    void aFileIsTakenOver();
    void aMissingFileIsTold();
    void aFileOfBlanksLeavesTheTable();
    void savingWritesTheTextOfTheLastTick();
    void savingRebuildsTheBlockButDoesNotWait();

    void aGoodTextIsSentWithItsEscapes();
    void aTextWithACommaIsRefused_data();
    void aTextWithACommaIsRefused();
    void withoutADeviceTheFileMenuIsNamed();
    void theSpareEmptiesTheTextFirst();
    void closingLeavesTheTextBehind();
};

void TestExchange::theFirstStartHasAirAndTheStockText() {
    World world;
    QCOMPARE(world.open(), TextSource::Stock);
    QCOMPARE(world.told.messages, QStringList());
    QCOMPARE(world.plan.rows[0].MOD, "56");
    QCOMPARE(world.plan.rows[0].PPO2, "1.39");
    QVERIFY(world.plan.rows[0].active && world.plan.rows[0].cellsEnabled);
    QVERIFY(!world.plan.rows[1].active && !world.plan.rows[1].cellsEnabled);
    QCOMPARE(world.plan.start, 0);
    QCOMPARE(world.plan.settings, Settings());
    QCOMPARE(world.plan.Text5, "1.4");
    QCOMPARE(world.plan.Text7.size(), 226);
    QCOMPARE(world.plan.unitshown, "metre");
    QCOMPARE(world.plan.rows[9].name, "Gas 9");
}

void TestExchange::theLastTextIsTakenUpAgain() {
    World world;
    world.put("gdatalast.mit", stockFile().replace("P130", "P115"));
    QCOMPARE(world.open(), TextSource::Last);
    QCOMPARE(world.plan.Text7.mid(184, 4), "P115");
    QCOMPARE(world.plan.settings.sptext, "1.40"); // the text alone; the controls keep their own
}

void TestExchange::withoutAnyFileTheTextIsEmpty() {
    World world;
    QVERIFY(QFile::remove(world.folder.path(u"gdata.mit")));
    QCOMPARE(world.open(), TextSource::None);
    QCOMPARE(world.plan.Text7, "");
}

void TestExchange::aTextInHandGivesTheGases() {
    World world;
    process().uploadtext =
        QString::fromLatin1(stockFile().trimmed()).replace(2 * 16 + 1, 3, QStringLiteral("040"));
    world.open();
    QCOMPARE(world.plan.rows[2].O2, "60");
    QCOMPARE(world.plan.rows[2].MOD, "13"); // as the recalculation makes it
    QCOMPARE(world.plan.rows[7].He, "35");
}

void TestExchange::theUnitInForceIsApplied() {
    World world("Feet");
    world.open();
    QVERIFY(world.plan.feet());
    QCOMPARE(world.plan.rows[0].MOD, "181");
    QCOMPARE(world.plan.unitshown, "Feet");
}

void TestExchange::aHalverinHasItsNamesAndTwoGases() {
    World world;
    process().producttype = QStringLiteral("HALV");
    world.open();
    QCOMPARE(world.plan.rows[4].name, "DIL 4");
    QCOMPARE(world.plan.rows[5].name, "OCB 5");
    QVERIFY(world.plan.rows[5].active);
    QCOMPARE(world.told.messages, QStringList());
}

void TestExchange::aTickWhileAnImportRunsDoesNothing() {
    World world;
    world.open();
    const QString before = world.plan.Text7;
    world.connectDevice();
    process().importing = true;
    world.tick();
    QCOMPARE(world.plan.Text7, before);
    QCOMPARE(world.shown.Label7, "");
    QCOMPARE(world.questions, QStringList());
}

void TestExchange::aHiddenTickLeavesTheTextAlone() {
    World world;
    world.open();
    const QString before = world.plan.Text7;
    world.tick(false);
    QCOMPARE(world.plan.Text7, before);
    QCOMPARE(world.shown.Label7, "Not Connected"); // the status is mirrored all the same
    QCOMPARE(world.shown.Label20, "TIME");
}

void TestExchange::aTickWritesTheScreenIntoTheText() {
    World world;
    world.open();
    world.plan.settings.sptext = QStringLiteral("1.20");
    world.plan.settings.cns = 3;
    world.tick();
    QCOMPARE(world.plan.Text7.size(), 226);
    QCOMPARE(world.plan.Text7.left(160), world.plan.gasblock);
    QCOMPARE(world.plan.Text7.mid(160, 11), "K0812337677");
    QCOMPARE(world.plan.Text7.mid(184, 4), "P120");
    QCOMPARE(world.plan.Text7.mid(198, 4), "T110");
    QCOMPARE(world.shown.Label20, "Sep 27 2017  01:21:18");
}

void TestExchange::theStartingGasBecomesActiveAndItsListFollows() {
    World world;
    world.open();
    world.plan.start = 6;
    world.tick();
    QVERIFY(world.plan.rows[6].active);
    QCOMPARE(world.plan.settings.divegas, 6);
    QCOMPARE(world.plan.Text7.mid(172, 2), "L6");
}

void TestExchange::anInactiveGasInHandMakesWayForTheStartingGas() {
    World world;
    world.open();
    world.plan.currentgasrow = 4;
    world.tick();
    QCOMPARE(world.plan.currentgasrow, 0);
    world.plan.rows[4].active = true;
    world.plan.currentgasrow = 4;
    world.tick();
    QCOMPARE(world.plan.currentgasrow, 4);
}

void TestExchange::withoutAnActiveGasTheTickSaysSoOnceAndActivatesTheStart() {
    World world;
    world.open();
    const QString block = world.plan.gasblock;
    world.plan.rows[0].active = false;
    world.plan.settings.silent = true;
    world.tick();
    QCOMPARE(world.told.messages, QStringList{"Please check at least one gas to be active"});
    QCOMPARE(world.plan.gasblock, block);
    QCOMPARE(world.plan.Text7.mid(189, 2), "Q1"); // the settings are patched all the same
    world.tick();
    QCOMPARE(world.told.messages.size(), 1);
    QVERIFY(world.plan.rows[0].active);
}

void TestExchange::aUnitThatTheTextBroughtIsAppliedByTheTick() {
    World world;
    world.open();
    process().depthunit = QStringLiteral("Feet");
    world.tick();
    QVERIFY(world.plan.feet());
    QCOMPARE(world.plan.unitshown, "Feet");
    QCOMPARE(world.plan.rows[0].MOD, "181");
    QCOMPARE(world.plan.Text7.mid(195, 2), "S3");
}

void TestExchange::theStatusIsMirrored() {
    World world;
    world.open();
    world.link.shownCaption = QStringLiteral("Saving..");
    world.link.shownColour = platform::kToldCyan;
    world.tick();
    QCOMPARE(world.shown.Label7, "Saving..");
    QCOMPARE(world.shown.Label7Colour, platform::kToldCyan);
    QCOMPARE(world.shown.Label22, "TYPE");
}

void TestExchange::theTypeIsReadFromTheDevicesWords() {
    World world;
    world.open();
    world.connectDevice("2010 KD3");
    world.tick();
    QCOMPARE(process().producttype, "KDX");
    QCOMPARE(world.shown.Label22, "KDx");
    QCOMPARE(world.questions, QStringList());
}

void TestExchange::theTypeIsAskedForOnce_data() {
    QTest::addColumn<QList<bool>>("answers");
    QTest::addColumn<QString>("type");
    QTest::addColumn<int>("questions");
    QTest::newRow("Halverin") << QList<bool>{true} << "HALV" << 1;
    QTest::newRow("Trax") << QList<bool>{false, true} << "TRAX" << 2;
    QTest::newRow("Morvalien") << QList<bool>{false, false, true} << "MORVA" << 3;
    QTest::newRow("none of them") << QList<bool>{false, false, false} << "KD3" << 3;
}

void TestExchange::theTypeIsAskedForOnce() {
    QFETCH(QList<bool>, answers);
    QFETCH(QString, type);
    QFETCH(int, questions);
    World world;
    world.open();
    world.connectDevice("");
    world.answers = answers;
    world.tick(false); // whichever screen is in front
    QCOMPARE(process().producttype, type);
    QCOMPARE(world.questions, QStringList({"Product Type: Are you connecting to a Halverin LSS?",
                                           "Product Type: Are you connecting to a Trax or Q9 mode KD",
                                           "Product Type: Are you connecting to an Morvalien"})
                                  .first(questions));
    world.tick();
    world.tick();
    QCOMPARE(world.questions.size(), questions);
    QCOMPARE(world.shown.Label22, typecaption(type));
}

void TestExchange::theQuestionForTheTypeSaysInOneLineWhyItIsAsked() {
    World world;
    world.open();
    world.connectDevice("");
    world.tick(false);
    QCOMPARE(world.belows.size(), 3);
    for (const QString& below : world.belows) {
        QVERIFY2(below.contains("does not tell its type") && below.endsWith(u'.'), qPrintable(below));
        QVERIFY(!below.contains(u'\n'));
    }
}

void TestExchange::whileTheDirectoryIsAwaitedNothingIsAsked() {
    World world;
    world.open();
    world.connectDevice("");
    world.link.waits = true;
    world.tick();
    QCOMPARE(world.questions, QStringList());
    QCOMPARE(process().producttype, "OTHER");
    QCOMPARE(world.shown.Label22, "Type");
}

void TestExchange::aHalverinStartsOnADiluent() {
    World world;
    world.open();
    world.connectDevice("HALV");
    world.tick();
    QCOMPARE(world.plan.rows[0].name, "DIL 0");
    QCOMPARE(world.plan.rows[9].name, "OCB 9");
    for (int i = 0; i < kGases; ++i) {
        QCOMPARE(world.plan.rows[static_cast<size_t>(i)].startEnabled, i < 5);
        QVERIFY(world.plan.rows[static_cast<size_t>(i)].activeEnabled);
    }
    QCOMPARE(world.told.messages, QStringList{"Halverin must have one Dil and one OCB selected"});
    QVERIFY(world.plan.rows[5].active && world.plan.rows[5].cellsEnabled);
    world.tick();
    QCOMPARE(world.told.messages.size(), 1);
}

void TestExchange::aTraxHasFourGases() {
    World world;
    world.open();
    world.connectDevice("TRAX");
    world.tick();
    for (int i = 0; i < kGases; ++i) {
        QCOMPARE(world.plan.rows[static_cast<size_t>(i)].activeEnabled, i < 4);
        QCOMPARE(world.plan.rows[static_cast<size_t>(i)].startEnabled, i < 4);
    }
    world.connectDevice("KD3");
    world.tick();
    QVERIFY(world.plan.rows[9].activeEnabled && world.plan.rows[9].startEnabled);
}

void TestExchange::whatTheDeviceSentIsStoredAndTakenOver() {
    World world;
    world.open();
    const QByteArray reply = stockFile().first(222).replace("P130", "P105").replace("L0", "L3");
    world.plan.Text8_1 = QString::fromLatin1("PPP" + reply + "PPPP");
    mnuopensource(world.plan, world.folder, 1, {}, world.told.say);
    QCOMPARE(world.told.messages, QStringList());
    QCOMPARE(world.bytes("gdatalastrec.mit"), "PPP" + reply + "PPPP\r\n");
    QCOMPARE(world.plan.settings.sptext, "1.05");
    QCOMPARE(world.plan.start, 3);
    QCOMPARE(process().uploadtext.size(), 227);
}

void TestExchange::aShortReplyGivesTheStockGases() {
    World world;
    world.open();
    world.plan.Text8_1 = QStringLiteral("A079 000 Y");
    mnuopensource(world.plan, world.folder, 1, {}, world.told.say);
    QCOMPARE(world.told.messages, QStringList());
    QCOMPARE(world.plan.rows[1].O2, "21");
    QVERIFY(world.plan.rows[1].active);
    QCOMPARE(world.plan.settings.backlight, 3);
    QCOMPARE(world.bytes("gdatalastrec.mit"), stocktext().toLatin1() + "\r\n\r\n");
}

void TestExchange::aFileIsTakenOver() {
    World world;
    world.open();
    world.put("mine.mit", stockFile().replace("X1", "X0").replace("N0", "N2"));
    mnuopensource(world.plan, world.folder, 0, world.folder.path(u"mine.mit"), world.told.say);
    QCOMPARE(world.told.messages, QStringList());
    QCOMPARE(world.plan.settings.laststop, 2);
    QVERIFY(!world.plan.settings.closed);
    QCOMPARE(world.bytes("gdatalastrec.mit"), "(no file)");
}

void TestExchange::aMissingFileIsTold() {
    World world;
    world.open();
    mnuopensource(world.plan, world.folder, 0, world.folder.path(u"none.mit"), world.told.say);
    QCOMPARE(world.told.messages, QStringList{"Error in file. .mit file to gdatalast.mit"});
    world.told.messages.clear();
    world.plan.Text8_1 = QString(200, QLatin1Char('A'));
    mnuopensource(world.plan, platform::ProgramFolder(QStringLiteral("/nowhere")), 1, {}, world.told.say);
    QCOMPARE(world.told.messages, QStringList{"Error in file gdatalastrec.mit"});
}

void TestExchange::aFileOfBlanksLeavesTheTable() {
    World world;
    world.open();
    world.put("blank.mit", QByteArray(300, ' '));
    mnuopensource(world.plan, world.folder, 0, world.folder.path(u"blank.mit"), world.told.say);
    QCOMPARE(world.told.messages, QStringList{"Bad file. Choose new file."});
    QCOMPARE(world.plan.Text8_0, "\x1b");
    QCOMPARE(process().uploadtext, "\x1b");
    QCOMPARE(world.plan.rows[0].O2, "21");
}

void TestExchange::savingWritesTheTextOfTheLastTick() {
    World world;
    world.open();
    world.tick();
    const auto answer = [](const QString& path) { return [path] { return path; }; };
    QCOMPARE(mnuSave(world.plan, answer(world.folder.path(u"mine.mit")), world.told.say), "");
    QCOMPARE(world.bytes("mine.mit"), world.plan.Text7.toLatin1() + "\r\n");
    const QString error = mnuSave(world.plan, answer(QStringLiteral("/nowhere/mine.mit")), world.told.say);
    QVERIFY2(error.contains(QLatin1String("/nowhere/mine.mit")), qPrintable(error));
    QCOMPARE(mnuSave(world.plan, answer(QString()), world.told.say), ""); // cancelled
}

void TestExchange::savingRebuildsTheBlockButDoesNotWait() {
    World world;
    world.open();
    world.tick();
    const QString before = world.plan.Text7;
    world.plan.rows[1].active = true;
    mnuSave(
        world.plan, [&world] { return world.folder.path(u"mine.mit"); }, world.told.say);
    QCOMPARE(world.bytes("mine.mit"), before.toLatin1() + "\r\n");
    QCOMPARE(world.plan.gasblock.at(16 + 14), QLatin1Char('1'));
}

void TestExchange::aGoodTextIsSentWithItsEscapes() {
    World world;
    world.open();
    world.tick();
    world.connectDevice();
    world.update();
    QCOMPARE(world.link.asked, QStringList({"prepareSetup", "sendSetup"}));
    QCOMPARE(process().uploadtext, world.plan.Text7 + QStringLiteral("\x1b"));
    QCOMPARE(world.link.textToSend, process().uploadtext);
    QCOMPARE(world.told.messages, QStringList());
}

void TestExchange::aTextWithACommaIsRefused_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("boxes");
    const QString good = QString::fromLatin1(stockFile().trimmed());
    QTest::newRow("comma") << QString(good).replace(30, 1, QStringLiteral(",")) << 1;
    QTest::newRow("point") << QString(good).replace(30, 1, QStringLiteral(".")) << 1;
    QTest::newRow("short") << good.left(160) << 2;
    QTest::newRow("empty") << QString() << 2;
}

void TestExchange::aTextWithACommaIsRefused() {
    QFETCH(QString, text);
    QFETCH(int, boxes);
    World world;
    world.open();
    world.connectDevice();
    world.plan.Text7 = text;
    world.update();
    QCOMPARE(world.told.messages.size(), boxes);
    QCOMPARE(world.told.messages, sendguards(text + kEscape));
    QVERIFY(!world.link.asked.contains(QStringLiteral("sendSetup")));
}

void TestExchange::withoutADeviceTheFileMenuIsNamed() {
    World world;
    world.open();
    world.tick();
    world.update();
    QCOMPARE(world.told.messages, QStringList{"KD/Tolby not connected!\r\nSave to file using File menu.."});
    QVERIFY(!world.link.asked.contains(QStringLiteral("sendSetup")));
}

void TestExchange::theSpareEmptiesTheTextFirst() {
    World world;
    world.open();
    world.tick();
    world.connectDevice();
    world.spare();
    QCOMPARE(world.told.messages.size(), 2);
    QVERIFY(world.told.messages.first().endsWith(QLatin1String("No data updated! 1")));
    QVERIFY(!world.link.asked.contains(QStringLiteral("sendSetup")));
    World other;
    other.open();
    other.tick();
    other.connectDevice();
    other.plan.Text6.clear();
    other.spare();
    QVERIFY(other.link.asked.contains(QStringLiteral("sendSetup")));
}

void TestExchange::closingLeavesTheTextBehind() {
    World world;
    world.open();
    world.tick();
    closegas(world.plan, world.folder, world.link, world.told.say);
    QCOMPARE(world.bytes("gdatalast.mit"), world.plan.Text7.toLatin1() + "\r\n");
    QCOMPARE(process().uploadtext, world.plan.Text6);
    QCOMPARE(world.link.textToSend, world.plan.Text7 + QStringLiteral("\x1b"));
    World next;
    next.put("gdatalast.mit", world.bytes("gdatalast.mit"));
    QCOMPARE(next.open(), TextSource::Last);
    QCOMPARE(next.plan.Text7, world.plan.Text7);
}

QTEST_GUILESS_MAIN(TestExchange)
#include "test_exchange.moc"
