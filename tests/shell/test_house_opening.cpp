// A file that is opened from outside, at the start and while the program is open, with a device in software
// at hand that must not hear a byte of it.

#include "gas/screens/gasblend.h"
#include "gas/setuptext.h"
#include "link/screens/pc_link_1.h"
#include "platform/instancelock.h"
#include "tests/shell/firmwareprogram.h"
#include "tests/support/calling.h"

#include <QCheckBox>

using namespace benthor;
using namespace benthor::tests;
using shell::House;
using How = platform::CallAnswer::How;
using OpenedHow = House::Opened::How;

namespace {

constexpr int kPatience = 20000; ///< milliseconds: other tests run beside, and a device is a process

/// Gas 3 is 32/10 and active, gas 7 is 17/44; the set point is 1.10.
QByteArray setup() {
    return "A079 000 0560 1 B001 000 0040 0 C020 000 0070 0 D058 010 0400 1 E060 000 0250 0 F064 000 0280 0 "
           "G068 000 0330 0 H039 044 0670 0 I036 050 0900 0 J024 065 1170 0 K0000000001 L0 M2 N0 O0 P110 Q0 "
           "R0 S1 "
           "T100 U004 V120 W030 X1 Y1 Z\x1b\r\n";
}

gas::GasBlend* gasScreen() {
    return qobject_cast<gas::GasBlend*>(loaded("GasBlend"));
}

bool showsTheFile() {
    return shown("GasBlend") && gasScreen()->plan().rows[3].He == QLatin1String("10") &&
           gasScreen()->plan().rows[7].O2 == QLatin1String("17") &&
           gasScreen()->plan().settings.sptext == QLatin1String("1.10");
}

/// The timer that looks for the moment to open what waits has had its turns.
void passLooks() {
    for (int turn = 0; turn < 10; ++turn) {
        QTest::qWait(50);
    }
}

/// Not yet started, with files to be opened in its folder and beside it.
struct Before {
    Before() {
        setGuide(folder, "Close");
        QDir::setCurrent(folder.root());
        folder.put("plan.mit", setup());
        house = std::make_unique<House>(link::serialLines());
    }
    void start(const QString& file) {
        QVERIFY(house->open(folder.path(file)).how == OpenedHow::Here);
        house->start();
        expire("frmSplash", "Timer1");
    }

    TestSettings settings;
    TestFolder folder;
    ScriptedDialogs dialogs;
    std::unique_ptr<House> house;
};

/// The program is open, its list too, and nothing waits.
struct Running {
    Running()
        : program("Close", TestFolder::Store::Fresh, link::serialLines()) {
        QDir::setCurrent(program.folder.root());
        program.folder.put("plan.mit", setup());
        // Another one, which an installation brings.
        program.folder.put("gdata.mit", setup()
                                            .replace("D058 010 0400 1", "D050 000 0180 0")
                                            .replace("H039 044", "H047 035")
                                            .replace("P110", "P130"));
        program.passSplash();
        // The list of no dives says so in a box, and goes.
        control<platform::TickTimer>("main", "Timer4")->setEnabled(false);
    }
    platform::CallAnswer call(const QString& file) const { return callFolder(program.folder, file); }
    static platform::CallAnswer callFolder(const TestFolder& folder, const QString& file) {
        const Call call(folder.root(), file.isEmpty() ? file : folder.path(file));
        [&call] { QTRY_VERIFY_WITH_TIMEOUT(call.isOver(), 20000); }();
        return call.answer();
    }
    QStringList messages() const { return program.dialogs.messages(); }

    Program program;
};

/// The same, with a device that dives.
struct Linked {
    Linked()
        : device(running.program.folder.root(), kFirmwarePort, Kd(simulator::deviceDives()),
                 KdPort::unpaced) {
        device.start();
        expire("main", "Timer1");
    }
    static const link::PC_Link_1* link() { return qobject_cast<link::PC_Link_1*>(loaded("PC_Link_1")); }
    /// A beat of every timer of the link; then whether the device's setup is there and nothing is under way.
    bool turn() const {
        for (const char* const timer : {"Timer8", "Timer1", "Timer2", "Timer6", "Timer7"}) {
            if (control<platform::TickTimer>("PC_Link_1", timer)->isEnabled()) {
                expire("PC_Link_1", timer);
            }
        }
        expire("main", "Timer1");
        return process().deviceconnected == 1 && loaded("GasBlend") != nullptr &&
               !gasScreen()->plan().Text8_1.isEmpty() && !link()->waitsForDirectory() &&
               !link()->refreshRests();
    }
    /// From now on the link does nothing by itself, however long the machine takes.
    static void stopClock() {
        for (const char* const timer :
             {"Timer1", "Timer2", "Timer3", "Timer5", "Timer6", "Timer7", "Timer8"}) {
            control<platform::TickTimer>("PC_Link_1", timer)->setInterval(3600000);
        }
    }

    Running running;
    KdPort device;
};

} // namespace

class TestHouseOpening : public QObject {
    Q_OBJECT

private slots:
    void aSetupAtTheStartStandsOnTheGasScreenInFront();
    void aFileAtTheStartWaitsForTheGuide();
    void anImageAtTheStartIsChosenAndNothingIsSent();
    void aRunningCopyTakesASetupOver();
    void whatWasTypedCanBeBroughtBack();
    void aSetupThatIsNoneSaysSoAndChangesNothing();
    void aFileThatCannotBeOpenedIsToldOnTheScreen_data();
    void aFileThatCannotBeOpenedIsToldOnTheScreen();
    void behindABoxItWaits();
    void duringAnImportItWaits();
    void filesOpenOneAfterTheOther();
    void beforeAConnectedDeviceNothingIsSent();
    void whileDivesComeItIsRefused();
    void anImageStoresWhatTheGasScreenHolds();
    void anImageAsksBeforeWhatWasTypedGoes();
    void anImageAtAnIdleFirmwareScreenIsChosen();
    void whileADeviceIsReprogrammedItIsRefused();
    void aSetupIsRefusedAtTheFirmwareScreen();
    void theFirstCopyComesToTheFront();
    void aCopyThatEndsLeavesTheFileToTheNext();
    void theToolOfTheShellIsNamed();
    void aPathThatIsTooLongIsRefused();
};

void TestHouseOpening::aSetupAtTheStartStandsOnTheGasScreenInFront() {
    Before world;
    KdPort device(world.folder.root(), kFirmwarePort, Kd(simulator::deviceDives()), KdPort::unpaced);
    device.start();
    world.start(QStringLiteral("plan.mit"));
    QTRY_VERIFY_WITH_TIMEOUT(showsTheFile(), kPatience);
    QCOMPARE(loaded("GasBlend")->windowTitle(), "Gas and System Settings");
    QCOMPARE(world.dialogs.messages(), QStringList());
    expire("main", "Timer4"); // the list comes up by itself
    QTRY_COMPARE_WITH_TIMEOUT(QApplication::activeWindow(), loaded("GasBlend"), kPatience);
    QVERIFY(showsTheFile());
    QCOMPARE(device.received(), QByteArray());
}

void TestHouseOpening::aFileAtTheStartWaitsForTheGuide() {
    Before world;
    setGuide(world.folder, "Open");
    world.start(QStringLiteral("plan.mit"));
    QVERIFY(shown("frmGetS"));
    const platform::CallAnswer answer = Running::callFolder(world.folder, QStringLiteral("plan.mit"));
    QCOMPARE(answer.how, How::Taken);
    QCOMPARE(answer.words, "The file opens when the start is over.");
    passLooks();
    QVERIFY(loaded("GasBlend") == nullptr);
    loaded("frmGetS")->close();
    QTRY_VERIFY_WITH_TIMEOUT(showsTheFile(), kPatience);
}

void TestHouseOpening::anImageAtTheStartIsChosenAndNothingIsSent() {
    Before world;
    const QByteArray image = simulator::firmwareImage(FirmwareType::Rb, 3, 1);
    world.folder.put("mine.sog", image);
    KdPort device(world.folder.root(), kFirmwarePort, FirmwareProgram::loader(FirmwareType::Kd),
                  KdPort::unpaced);
    device.start();
    link::writecomport(QString::number(kFirmwarePort));
    world.start(QStringLiteral("mine.sog"));
    QTRY_VERIFY_WITH_TIMEOUT(shown("ReProg_Link"), kPatience);
    QTRY_VERIFY_WITH_TIMEOUT(loaded("main") == nullptr, kPatience);
    const auto& state = qobject_cast<firmware::ReProg_Link*>(loaded("ReProg_Link"))->state();
    QCOMPARE(state.Text5, world.folder.path("mine.sog"));
    QVERIFY(state.filechosen);
    QCOMPARE(state.check.Text13, QString::fromLatin1(image.right(2).toHex().toUpper()));
    for (int tick = 0; tick < 30; ++tick) { // beyond an automatic request
        expire("ReProg_Link", "Timer1");
    }
    QTest::qWait(200);
    QCOMPARE(device.received(), QByteArray());
    QCOMPARE(world.dialogs.messages().size(), 1); // the screen's own
    // The port is open, and the user's first key goes out there.
    control<QAbstractButton>("ReProg_Link", "SendCh(3)")->click();
    QTRY_COMPARE_WITH_TIMEOUT(device.received(), "1", kPatience);
    QCOMPARE(state.Text5, world.folder.path("mine.sog"));
}

void TestHouseOpening::aRunningCopyTakesASetupOver() {
    const Running world;
    const platform::CallAnswer answer = world.call(QStringLiteral("plan.mit"));
    QCOMPARE(answer.how, How::Taken);
    QCOMPARE(answer.words, QString());
    QTRY_VERIFY_WITH_TIMEOUT(showsTheFile(), kPatience);
    QCOMPARE(world.messages(), QStringList());
    QVERIFY(!gasScreen()->plan().replaced); // nothing had been typed
    QCOMPARE(process().uploadtext.left(160).toLatin1(), setup().left(160));
}

void TestHouseOpening::whatWasTypedCanBeBroughtBack() {
    const Running world;
    control<QAction>("main", "mnuSetupGas")->trigger();
    auto* oxygen = control<QLineEdit>("GasBlend", "Text1(0)");
    oxygen->setFocus();
    oxygen->selectAll();
    QTest::keyClicks(oxygen, QStringLiteral("24"));
    auto* pressure = control<QLineEdit>("GasBlend", "Text4(0)");
    pressure->setFocus();
    pressure->selectAll();
    QTest::keyClicks(pressure, QStringLiteral("1.2")); // not finished
    expire("GasBlend", "Timer5");
    QCOMPARE(pressure->text(), "1.2");
    QCOMPARE(world.call(QStringLiteral("plan.mit")).how, How::Taken);
    QTRY_VERIFY_WITH_TIMEOUT(showsTheFile(), kPatience);
    QCOMPARE(oxygen->text(), "21");
    QVERIFY(gasScreen()->plan().replaced.has_value());
    QCOMPARE(gasScreen()->plan().replaced->by, "the file plan.mit");
    gasScreen()->findChild<QAction*>(QStringLiteral("bringBackTyped"))->trigger();
    QCOMPARE(oxygen->text(), "24");
    QCOMPARE(pressure->text(), "1.20");
}

void TestHouseOpening::aSetupThatIsNoneSaysSoAndChangesNothing() {
    const Running world;
    world.program.folder.put("bad.mit", "nothing of a setup");
    control<QAction>("main", "mnuSetupGas")->trigger();
    const QString before = gasScreen()->plan().rows[3].He;
    QCOMPARE(world.call(QStringLiteral("bad.mit")).how, How::Taken);
    QTRY_COMPARE_WITH_TIMEOUT(world.messages(), QStringList{QStringLiteral("Bad file. Choose new file.")},
                              kPatience);
    QCOMPARE(gasScreen()->plan().rows[3].He, before);
}

void TestHouseOpening::aFileThatCannotBeOpenedIsToldOnTheScreen_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("words");
    QTest::newRow("gone") << "gone.mit"
                          << "It is not there.";
    QTest::newRow("a folder") << "old"
                              << "It is a folder.";
    QTest::newRow("a dive") << "dive.txt"
                            << "Dive File Find";
}

void TestHouseOpening::aFileThatCannotBeOpenedIsToldOnTheScreen() {
    QFETCH(QString, name);
    QFETCH(QString, words);
    const Running world;
    world.program.folder.put("dive.txt", "ver=V3.12");
    QCOMPARE(world.call(name).how, How::Taken);
    QTRY_COMPARE_WITH_TIMEOUT(world.messages().size(), 1, kPatience);
    QVERIFY2(world.messages().first().contains(words) &&
                 world.messages().first().contains(world.program.folder.path(name)),
             qPrintable(world.messages().first()));
    QVERIFY(loaded("GasBlend") == nullptr);
    QVERIFY(world.program.folder.has("dive.txt"));
}

void TestHouseOpening::behindABoxItWaits() {
    Running world;
    platform::CallAnswer answer;
    bool opened = true;
    world.program.dialogs.during([&] {
        answer = world.call(QStringLiteral("plan.mit"));
        passLooks();
        opened = loaded("GasBlend") != nullptr;
    });
    platform::dialogs().message(loaded("main"), QStringLiteral("a box"));
    QCOMPARE(answer.how, How::Taken);
    QVERIFY(answer.words.startsWith(QLatin1String("The file opens when")));
    QVERIFY(!opened);
    QTRY_VERIFY_WITH_TIMEOUT(showsTheFile(), kPatience);
}

void TestHouseOpening::duringAnImportItWaits() {
    const Running world;
    process().importing = true;
    const platform::CallAnswer answer = world.call(QStringLiteral("plan.mit"));
    QCOMPARE(answer.how, How::Taken);
    QCOMPARE(answer.words, "The file opens when the import is over.");
    passLooks();
    QVERIFY(loaded("GasBlend") == nullptr);
    process().importing = false;
    QTRY_VERIFY_WITH_TIMEOUT(showsTheFile(), kPatience);
}

void TestHouseOpening::filesOpenOneAfterTheOther() {
    const Running world;
    world.program.folder.put("other.mit", setup().replace("P110", "P120"));
    process().importing = true;
    QCOMPARE(world.call(QStringLiteral("other.mit")).how, How::Taken);
    QCOMPARE(world.call(QStringLiteral("plan.mit")).how, How::Taken);
    process().importing = false;
    QTRY_VERIFY_WITH_TIMEOUT(showsTheFile(), kPatience);
    passLooks();
    QVERIFY(showsTheFile());
}

void TestHouseOpening::beforeAConnectedDeviceNothingIsSent() {
    Linked world;
    QTRY_VERIFY_WITH_TIMEOUT(world.turn(), 60000);
    // What the link asks by itself at its ticks is not the file's.
    world.stopClock();
    QByteArray before;
    do {
        before = world.device.received();
        QTest::qWait(200);
    } while (world.device.received() != before);
    QCOMPARE(world.running.call(QStringLiteral("plan.mit")).how, How::Taken);
    QTRY_VERIFY_WITH_TIMEOUT(showsTheFile(), kPatience);
    expire("GasBlend", "Timer5");
    passLooks();
    QCOMPARE(world.device.received(), before);
    QByteArray held;
    world.device.with([&held](Kd& one) { held = one.memory.setup; });
    QVERIFY(!held.contains("H039"));
    // The same road shows a byte where one goes: the user sends.
    world.running.program.dialogs.answer(true);
    control<QAbstractButton>("GasBlend", "Command1")->click();
    QTRY_VERIFY2_WITH_TIMEOUT(world.device.received().contains("H039"),
                              qPrintable(world.running.messages().join(u'/')), kPatience);
}

void TestHouseOpening::whileDivesComeItIsRefused() {
    Linked world;
    world.running.program.folder.put("mine.sog", simulator::firmwareImage(FirmwareType::Rb, 3, 1));
    QTRY_VERIFY_WITH_TIMEOUT(world.turn(), 60000);
    control<QAbstractButton>("PC_Link_1", "cmddownloadall")->click();
    world.stopClock(); // or the dives would have come before the files
    QVERIFY(Linked::link()->refreshRests());
    for (const char* const file : {"plan.mit", "mine.sog"}) {
        const platform::CallAnswer answer = world.running.call(QLatin1String(file));
        QCOMPARE(answer.how, How::Refused);
        QVERIFY2(answer.words.startsWith(QLatin1String("Benthor is talking to the device")),
                 qPrintable(answer.words));
    }
    passLooks();
    QVERIFY(!showsTheFile());
    QVERIFY(loaded("ReProg_Link") == nullptr);
    QVERIFY(Linked::link()->refreshRests());
    QCOMPARE(world.running.messages(), QStringList());
}

void TestHouseOpening::anImageStoresWhatTheGasScreenHolds() {
    Running world;
    world.program.folder.put("mine.sog", simulator::firmwareImage(FirmwareType::Kd, 3, 1));
    QCOMPARE(world.call(QStringLiteral("plan.mit")).how, How::Taken);
    QTRY_VERIFY_WITH_TIMEOUT(showsTheFile(), kPatience);
    QCOMPARE(world.call(QStringLiteral("mine.sog")).how, How::Taken);
    QTRY_VERIFY_WITH_TIMEOUT(shown("ReProg_Link"), kPatience);
    QTRY_VERIFY_WITH_TIMEOUT(loaded("main") == nullptr, kPatience);
    QVERIFY(loaded("GasBlend") == nullptr);
    QVERIFY(loaded("PC_Link_1") == nullptr);
    QVERIFY(world.program.folder.get("gdatalast.mit").contains("H039 044"));
    QVERIFY(world.program.ended->isEmpty());
}

void TestHouseOpening::anImageAsksBeforeWhatWasTypedGoes() {
    Running world;
    world.program.folder.put("mine.sog", simulator::firmwareImage(FirmwareType::Kd, 3, 1));
    control<QAction>("main", "mnuSetupGas")->trigger();
    control<QCheckBox>("GasBlend", "Check2(2)")->click();
    for (const bool goOn : {false, true}) {
        world.program.dialogs.clear();
        world.program.dialogs.answer(goOn);
        QCOMPARE(world.call(QStringLiteral("mine.sog")).how, How::Taken);
        QTRY_VERIFY_WITH_TIMEOUT(!world.program.dialogs.asked().isEmpty(), kPatience);
        const ScriptedDialogs::Asked question = world.program.dialogs.asked().first();
        QCOMPARE(question.kind, "confirm");
        QVERIFY(question.noIsDefault);
        QVERIFY(question.text.contains(QLatin1String("mine.sog")));
        passLooks();
        QCOMPARE(shown("GasBlend"), !goOn);
        QCOMPARE(shown("main"), !goOn);
        QCOMPARE(shown("ReProg_Link"), goOn);
        QVERIFY(goOn || control<QCheckBox>("GasBlend", "Check2(2)")->isChecked());
    }
}

void TestHouseOpening::anImageAtAnIdleFirmwareScreenIsChosen() {
    FirmwareProgram world;
    world.program.folder.put("mine.sog", world.image);
    world.openScreen();
    QTRY_COMPARE_WITH_TIMEOUT(world.device.received(), "1", kPatience); // the screen's own opening
    const platform::CallAnswer answer = Running::callFolder(world.program.folder, QStringLiteral("mine.sog"));
    QCOMPARE(answer.how, How::Taken);
    QTRY_COMPARE_WITH_TIMEOUT(world.state().Text5, world.program.folder.path("mine.sog"), kPatience);
    QVERIFY(world.state().filechosen);
    world.tick(5);
    QTest::qWait(200);
    QCOMPARE(world.device.received(), "1");
}

void TestHouseOpening::whileADeviceIsReprogrammedItIsRefused() {
    FirmwareProgram world;
    world.program.folder.put("mine.sog", world.image);
    world.openScreen();
    world.waitForLamp(firmware::kLampReady, QStringLiteral("Ready to Send"));
    world.enterMode();
    const QString chosen = world.state().Text5;
    const QByteArray before = world.device.received();
    // The send is a busy loop; the call comes into it.
    const Call during(world.program.folder.root(), world.program.folder.path("mine.sog"),
                      std::chrono::seconds(20),
                      [&] { return world.device.received().size() > before.size() + 500; });
    world.press("Command2");
    QTRY_VERIFY_WITH_TIMEOUT(during.isOver(), kPatience);
    QCOMPARE(during.answer().how, How::Refused);
    QVERIFY(world.state().sendstate >= 1);
    const platform::CallAnswer inTheWait =
        Running::callFolder(world.program.folder, QStringLiteral("mine.sog"));
    QCOMPARE(inTheWait.how, How::Refused);
    QVERIFY(inTheWait.words.startsWith(QLatin1String("A device is being reprogrammed")));
    QCOMPARE(world.state().Text5, chosen);
    QVERIFY(world.device.received().mid(before.size()).startsWith(sendOf(world.image)));
    QCOMPARE(world.imageInDevice().isEmpty(), false);
}

void TestHouseOpening::aSetupIsRefusedAtTheFirmwareScreen() {
    FirmwareProgram world;
    world.program.folder.put("plan.mit", setup());
    world.openScreen();
    QTRY_COMPARE_WITH_TIMEOUT(world.device.received(), "1", kPatience);
    const platform::CallAnswer answer = Running::callFolder(world.program.folder, QStringLiteral("plan.mit"));
    QCOMPARE(answer.how, How::Refused);
    QVERIFY(answer.words.startsWith(QLatin1String("The firmware screen is open.")));
    passLooks();
    QVERIFY(loaded("GasBlend") == nullptr && loaded("PC_Link_1") == nullptr);
    QCOMPARE(world.device.received(), "1");
}

void TestHouseOpening::theFirstCopyComesToTheFront() {
    Running world;
    loaded("main")->showMinimized();
    QCOMPARE(world.call({}).how, How::Taken);
    QVERIFY(!loaded("main")->isMinimized());
    control<QAction>("main", "mnuReprogIR")->trigger();
    loaded("ReProg_Link")->showMinimized();
    QCOMPARE(world.call({}).how, How::Taken);
    QVERIFY(!loaded("ReProg_Link")->isMinimized());
}

void TestHouseOpening::aCopyThatEndsLeavesTheFileToTheNext() {
    TestSettings settings;
    TestFolder folder;
    ScriptedDialogs dialogs;
    setGuide(folder, "Close");
    folder.put("plan.mit", setup());
    auto first = std::make_unique<platform::InstanceLock>(folder.root());
    House house;
    const std::unique_ptr<QThread> end(QThread::create([&first] {
        QThread::msleep(200);
        first.reset();
    }));
    end->start();
    QVERIFY(house.open(folder.path("plan.mit")).how == OpenedHow::Here);
    end->wait();
    house.start();
    expire("frmSplash", "Timer1");
    QTRY_VERIFY_WITH_TIMEOUT(showsTheFile(), kPatience);
    QCOMPARE(Running::callFolder(folder, {}).how, How::Taken); // it is the one that hears now
}

void TestHouseOpening::theToolOfTheShellIsNamed() {
    TestSettings settings;
    TestFolder folder;
    ScriptedDialogs dialogs;
    setGuide(folder, "Close");
    const platform::InstanceLock tool(folder.root(), "benthorctl");
    House house;
    const House::Opened opened = house.open(folder.path("plan.mit"));
    QVERIFY(opened.how == OpenedHow::Nowhere);
    QVERIFY2(opened.words.contains(QLatin1String("benthorctl works on this program folder")),
             qPrintable(opened.words));
    house.start();
    expire("frmSplash", "Timer1");
    QCOMPARE(dialogs.messages().size(), 1);
    QVERIFY2(dialogs.messages().first().startsWith(QLatin1String("The command benthorctl works")),
             qPrintable(dialogs.messages().first()));
}

void TestHouseOpening::aPathThatIsTooLongIsRefused() {
    TestSettings settings;
    TestFolder folder;
    const platform::InstanceLock first(folder.root());
    House house;
    const House::Opened opened = house.open(u'/' + QString(5000, u'x') + QStringLiteral(".mit"));
    QVERIFY(opened.how == OpenedHow::Nowhere);
    QVERIFY(opened.words.endsWith(QLatin1String("The path of the file is too long.")));
}

int main(int argc, char** argv) {
    return runAsProgram<TestHouseOpening>(argc, argv);
}
#include "test_house_opening.moc"
