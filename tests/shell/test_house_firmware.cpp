// The firmware screen and a device in its loader, over a real pseudo-terminal, with faults.

#include "firmware/screens/reprog_link.h"
#include "firmware/session.h"
#include "link/screens/seriallines.h"
#include "link/supervision.h"
#include "platform/look/look.h"
#include "simulator/demodives.h"
#include "simulator/kdport.h"
#include "tests/shell/housestage.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>

using namespace benthor;
using namespace benthor::tests;
using firmware::ReprogState;
using simulator::FirmwareType;
using simulator::Kd;
using simulator::KdPort;
using simulator::Loader;

namespace {

constexpr int kPort = 3;
constexpr int kWhole = 51; ///< units of an image that goes out whole: 7040 bytes

const QString kNotReprogrammed =
    QStringLiteral("Problem probably due to leaving KD too long before clicking Download OK!\r\n"
                   "Not reprogrammed! Click refresh, and try again.");

/// What the steps of the send put on the line for an image, as they are told.
QByteArray sendOf(const QByteArray& image) {
    QByteArray bytes;
    qsizetype at = 0;
    qint64 counted = 0;
    while (at < image.size()) {
        if (counted > 0) {
            const QByteArray record = image.mid(at, 128);
            at += record.size();
            bytes += record + QByteArray(128 - record.size(), '\0');
        } else {
            bytes += image.startsWith('*') ? "&*" : image.left(1);
            at = 1;
        }
        counted += 128;
        if (counted > image.size()) {
            break;
        }
    }
    return bytes;
}

/// The program, with images in its folder and a device in its loader on the port that is remembered.
struct FirmwareProgram {
    explicit FirmwareProgram(int bytesPerSecond = KdPort::unpaced, FirmwareType type = FirmwareType::Rb,
                             int units = kWhole)
        : program("Close", TestFolder::Store::Fresh, link::serialLines())
        , image(simulator::firmwareImage(type, units, 1))
        , device(program.folder.root(), kPort, loader(type), bytesPerSecond) {
        QDir::setCurrent(program.folder.root());
        const QByteArray value = image.right(2).toHex().toUpper();
        const char* const name = type == FirmwareType::Rb ? "bpcsp2shchk.sog" : "hdckd3chk.sog";
        program.folder.put(QStringLiteral("Reprog/") + QLatin1String(name), image);
        program.folder.put("Reprog/chklst.txt",
                           simulator::checkListLine(QLatin1String(name), value.toUShort(nullptr, 16)));
        device.paceReceived(bytesPerSecond);
        device.start();
        program.passSplash();
        expire("main", "Timer1");
    }

    static Kd loader(FirmwareType type) {
        Kd kd(simulator::deviceDives());
        kd.loader.emplace(type);
        kd.loader->programMilliseconds = 200;
        return kd;
    }
    void fault(const std::function<void(simulator::LoaderFaults&)>& set) {
        device.with([&set](Kd& kd) { set(kd.loader->faults); });
    }

    void openScreen() {
        link::writecomport(QString::number(kPort));
        control<QAction>("main", "mnuReprogIR")->trigger();
        QVERIFY(shown("ReProg_Link"));
    }
    const ReprogState& state() const {
        return qobject_cast<firmware::ReProg_Link*>(loaded("ReProg_Link"))->state();
    }
    void tick(int times = 1) const {
        for (int i = 0; i < times; ++i) {
            expire("ReProg_Link", "Timer1");
        }
    }
    bool tickUntil(const std::function<bool()>& done) const {
        tick();
        return done();
    }
    QString lamp(size_t index) const { return state().Label4.at(index).text; }
    void press(const char* name) const { control<QAbstractButton>("ReProg_Link", name)->click(); }
    bool holds(const char* word) const { return state().Text4.holds(word); }
    void waitFor(const char* word) const {
        QTRY_VERIFY_WITH_TIMEOUT(tickUntil([&] { return holds(word); }), 20000);
    }
    /// Presses Refresh every second until that holds; the device may need a rest before it listens.
    bool refreshUntil(const std::function<bool()>& done) const {
        for (QDeadlineTimer end(20000); !end.hasExpired();) {
            press("SendCh(3)");
            for (int turn = 0; turn < 50; ++turn) {
                QTest::qWait(20);
                if (tickUntil(done)) {
                    return true;
                }
            }
        }
        return false;
    }
    /// To the page of the mode, from wherever the device stands.
    void enterMode() const {
        press("SendCh(6)");
        waitFor("REPROG MODE");
        press("SendCh(3)");
        // All of the page: what comes of it behind the first records would end the send.
        QTRY_VERIFY_WITH_TIMEOUT(tickUntil([this] {
                                     const QByteArray& text = state().Text4.bytes();
                                     return text.contains("REPROG MODE") && text.endsWith("Restart\r\n");
                                 }),
                                 20000);
    }
    void waitForLamp(size_t index, const QString& words) const {
        QTRY_VERIFY2_WITH_TIMEOUT(tickUntil([&] { return lamp(index) == words; }), state().Text4.bytes(),
                                  20000);
    }
    QByteArray imageInDevice() {
        QByteArray received;
        device.with([&received](Kd& kd) { received = kd.image(); });
        return received;
    }
    /// The programming of a device under test takes no minute, and neither does its wait.
    void passTheWait() const { tick(65); }

    Program program;
    QByteArray image;
    KdPort device;
};

} // namespace

class TestHouseFirmware : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { look::apply(*qApp); }

    void theSearchHearsALoaderAndTheScreenOpensByItself();
    void aWholeSessionAtEachSpeed_data();
    void aWholeSessionAtEachSpeed();
    void theTypeOfTheDeviceChoosesTheImage();
    void anImageOfTheUsersOwnIsSentAndNobodyPressesForHim();
    void afterTheRestartTheDeviceIsItselfAgain();

    void aDeviceThatDropsOutStopsTheSendAndTakesItAgain();
    void aDeviceThatEndsEarlyStopsTheSend();
    void aWrongSumIsRefused();
    void aMemoryLeftErasedKeepsTheVerdictRed();
    void aWrongCheckValueIsTold();
    void silenceBehindTheTransferEndsInNo();
    void silenceBehindTheYesIsEndedByContinue();
    void aDeviceThatWantsASecondGoGetsIt();
    void aCutLineIsTakenUpAgain();
    void atTheWrongSpeedNothingIsOpen();
    void aSilentDeviceOpensNothing();
    void halfAPageIsNoPrompt();

    void aRehearsalReachesTheVerdictAndNoRealPort();
    void homeLoadsTheMainScreenAgain();
    void runningProgramsOpenFromTheMenu();
};

void TestHouseFirmware::theSearchHearsALoaderAndTheScreenOpensByItself() {
    for (const bool large : {false, true}) {
        FirmwareProgram run;
        run.device.with([large](Kd& kd) { kd.loader->large = large; });
        control<QAction>("main", "mnuconnectdevice")->trigger();
        QTRY_VERIFY_WITH_TIMEOUT(
            [] {
                if (loaded("PC_Link_1") != nullptr) {
                    expire("PC_Link_1", "Timer8");
                }
                return shown("ReProg_Link");
            }(),
            20000);
        QVERIFY(loaded("main") == nullptr);
        QCOMPARE(link::readcomport(), "3");
        run.waitForLamp(firmware::kLampReady, "Ready to Send");
        QCOMPARE(run.device.received(), "1");
        loaded("ReProg_Link")->close();
        QTRY_COMPARE(run.program.ended->count(), 1);
    }
}

void TestHouseFirmware::aWholeSessionAtEachSpeed_data() {
    QTest::addColumn<int>("baud");
    QTest::addColumn<int>("units");
    QTest::newRow("9600 baud, an image that goes out whole") << 9600 << kWhole;
    QTest::newRow("38400 baud, an image whose end stays behind") << 38400 << 150;
}

void TestHouseFirmware::aWholeSessionAtEachSpeed() {
    QFETCH(int, baud);
    QFETCH(int, units);
    FirmwareProgram run(baud / 10, FirmwareType::Rb, units);
    run.device.setBaud(baud);
    run.openScreen();
    if (baud == 38400) {
        run.press("Check1");
    }
    QVERIFY(
        run.refreshUntil([&] { return run.lamp(firmware::kLampReady) == QLatin1String("Ready to Send"); }));
    QCOMPARE(run.state().check.Text13, QString::fromLatin1(run.image.right(2).toHex().toUpper()));
    QVERIFY(run.lamp(firmware::kLampResult) == QLatin1String("KD Not same Check sum as chosen file"));
    QVERIFY(!run.state().Command2.enabled);
    run.enterMode();
    QVERIFY(run.state().Command2.enabled);
    const QByteArray before = run.device.received();
    run.press("Command2");
    QCOMPARE(run.state().sendstate, 2);
    QCOMPARE(run.program.dialogs.messages().size(), 1); // the warning alone
    run.waitFor("shell:");
    run.waitForLamp(firmware::kLampResult, "OK to Restart");
    QVERIFY(run.state().SendCh[firmware::kKeyRestart].enabled);

    QTRY_VERIFY(!run.device.received().endsWith('R')); // the key whose second byte is on its way
    const QByteArray sent = run.device.received().sliced(before.size());
    const QByteArray image = sendOf(run.image);
    QCOMPARE(sent.first(image.size()), image);
    QCOMPARE(run.imageInDevice(), image.sliced(1));
    // The verdict, and the way back to the prompt as often as a tick came before its page.
    QByteArray behind = sent.sliced(image.size());
    QVERIFY(behind.startsWith("&&&&"));
    const qsizetype yes = behind.indexOf('y');
    QCOMPARE(behind.first(yes), QByteArray(yes, '&')); // more of them where the line was slow to drain
    QVERIFY(yes <= 4 + 15);
    behind.remove(0, yes + 1);
    QVERIFY2(behind.replace("R1", "").isEmpty(), sent.sliced(image.size()));
    run.passTheWait();
    QCOMPARE(run.state().sendstate, 61);
    QVERIFY(!run.state().Frame6Visible);
}

void TestHouseFirmware::theTypeOfTheDeviceChoosesTheImage() {
    FirmwareProgram run(KdPort::unpaced, FirmwareType::Kd);
    run.openScreen();
    QVERIFY(run.state().Text5.endsWith("bpcsp2shchk.sog"));
    QTRY_VERIFY(run.tickUntil([&] { return run.state().Text5.endsWith("hdckd3chk.sog"); }));
    QCOMPARE(run.state().check.Text13, QString::fromLatin1(run.image.right(2).toHex().toUpper()));
}

void TestHouseFirmware::anImageOfTheUsersOwnIsSentAndNobodyPressesForHim() {
    FirmwareProgram run;
    const QByteArray own = simulator::firmwareImage(FirmwareType::Rb, kWhole, 77);
    run.program.folder.put("Reprog/mine.sog", own);
    run.openScreen();
    run.program.dialogs.answerFile(run.program.folder.path("Reprog/mine.sog"));
    run.press("Command7");
    run.enterMode();
    const qsizetype before = run.device.received().size();
    run.press("Command2");
    run.waitForLamp(firmware::kLampResult, "OK to Restart");
    run.passTheWait();
    QCOMPARE(run.device.received().sliced(before), sendOf(own) + "&&&&y");
}

void TestHouseFirmware::afterTheRestartTheDeviceIsItselfAgain() {
    FirmwareProgram run;
    run.openScreen();
    run.enterMode();
    run.press("Command2");
    run.waitForLamp(firmware::kLampResult, "OK to Restart");
    run.press("SendCh(8)");
    QCOMPARE(run.state().Text4.bytes(), "restarting...  200");
    QTRY_VERIFY_WITH_TIMEOUT(run.tickUntil([&] { return run.holds("PPPP"); }), 20000);
    bool loading = true;
    run.device.with([&loading](Kd& kd) { loading = kd.loader.has_value(); });
    QVERIFY(!loading);
}

void TestHouseFirmware::aDeviceThatDropsOutStopsTheSendAndTakesItAgain() {
    FirmwareProgram run(KdPort::fastLineSpeed, FirmwareType::Rb, 200);
    run.fault([](simulator::LoaderFaults& faults) { faults.dropOutAfter = 3000; });
    run.openScreen();
    run.enterMode();
    run.press("Command2");
    QVERIFY(!run.state().sentmark);
    QVERIFY(run.state().idleflag);
    QVERIFY(run.holds("REPROG MODE"));
    QVERIFY(run.device.received().size() < sendOf(run.image).size());
    QVERIFY(!run.device.received().contains("&&"));
    QCOMPARE(run.imageInDevice(), "");
    // It comes back to its senses, and is sent the image anew.
    run.fault([](simulator::LoaderFaults& faults) { faults = {}; });
    QVERIFY(run.refreshUntil([&] { return run.holds("REPROG MODE"); }));
    run.press("Command2");
    run.waitForLamp(firmware::kLampResult, "OK to Restart");
}

void TestHouseFirmware::aDeviceThatEndsEarlyStopsTheSend() {
    FirmwareProgram run(KdPort::fastLineSpeed, FirmwareType::Rb, 200);
    run.fault([](simulator::LoaderFaults& faults) { faults.endEarlyAfter = 3000; });
    run.openScreen();
    run.enterMode();
    run.press("Command2");
    QVERIFY(!run.state().sentmark);
    QVERIFY(run.state().idleflag);
    QVERIFY(run.holds("MEMORY"));
    QVERIFY(!run.device.received().contains("&&"));
    run.tick(3);
    QVERIFY(run.lamp(firmware::kLampResult) != QLatin1String("OK to Restart"));
}

void TestHouseFirmware::aWrongSumIsRefused() {
    FirmwareProgram run;
    run.fault([](simulator::LoaderFaults& faults) { faults.wrongSums = simulator::LoaderFaults::always; });
    run.openScreen();
    run.enterMode();
    const qsizetype before = run.device.received().size();
    run.press("Command2");
    QCOMPARE(run.program.dialogs.messages().last(), kNotReprogrammed);
    QCOMPARE(run.state().sendstate, 0);
    QTRY_VERIFY(run.device.received().endsWith('n'));
    const QByteArray behind = run.device.received().sliced(before + sendOf(run.image).size());
    QCOMPARE(behind, QByteArray(4 + 15, '&') + 'n');
    run.tick(5);
    QCOMPARE(run.lamp(firmware::kLampResult), "KD Not Programmed");
    QVERIFY(!run.state().SendCh[firmware::kKeyRestart].enabled);
}

void TestHouseFirmware::aMemoryLeftErasedKeepsTheVerdictRed() {
    FirmwareProgram run;
    run.fault([](simulator::LoaderFaults& faults) { faults.leftErased = 'B'; });
    run.openScreen();
    run.enterMode();
    run.press("Command2");
    run.waitFor("shell:");
    run.tick(3);
    QVERIFY(run.lamp(firmware::kLampResult) != QLatin1String("OK to Restart"));
    QVERIFY(!run.state().SendCh[firmware::kKeyRestart].enabled);
    QVERIFY(run.holds("MEMORY A Programmed"));
    QVERIFY(!run.holds("MEMORY B Programmed"));
}

void TestHouseFirmware::aWrongCheckValueIsTold() {
    FirmwareProgram run;
    run.fault([](simulator::LoaderFaults& faults) { faults.wrongCheck = true; });
    run.openScreen();
    run.enterMode();
    run.press("Command2");
    run.waitFor("shell:");
    run.waitForLamp(firmware::kLampResult, "KD Not same Check sum as chosen file");
    run.passTheWait();
    QCOMPARE(run.state().Text14Colour, platform::kToldRed);
}

void TestHouseFirmware::silenceBehindTheTransferEndsInNo() {
    FirmwareProgram run;
    run.fault([](simulator::LoaderFaults& faults) { faults.silentEnd = true; });
    run.openScreen();
    run.enterMode();
    run.press("Command2");
    QCOMPARE(run.program.dialogs.messages().last(), kNotReprogrammed);
    QTRY_VERIFY(run.device.received().endsWith('n'));
    QCOMPARE(run.state().sendstate, 0);
    QVERIFY(run.state().idleflag);
}

void TestHouseFirmware::silenceBehindTheYesIsEndedByContinue() {
    FirmwareProgram run;
    run.fault([](simulator::LoaderFaults& faults) { faults.silentAfterY = true; });
    run.openScreen();
    run.enterMode();
    run.press("Command2");
    QCOMPARE(run.state().sendstate, 2);
    run.passTheWait();
    QVERIFY(run.state().Frame6Visible);
    QVERIFY(control<QWidget>("ReProg_Link", "Frame6")->isVisible());
    QCOMPARE(run.lamp(firmware::kLampResult), "KD Not Programmed");
    QVERIFY(control<QWidget>("ReProg_Link", "SendCh(4)")->isEnabled());
    run.press("SendCh(4)");
    run.waitForLamp(firmware::kLampResult, "OK to Restart");
    run.tick();
    QVERIFY(!run.state().Frame6Visible);
}

void TestHouseFirmware::aDeviceThatWantsASecondGoGetsIt() {
    FirmwareProgram run;
    run.fault([](simulator::LoaderFaults& faults) { faults.secondGo = true; });
    run.openScreen();
    run.enterMode();
    run.press("Command2");
    QTRY_VERIFY_WITH_TIMEOUT(run.tickUntil([&] { return run.holds("OOOO"); }) && run.state().sendstate < 61,
                             20000);
    // The run of its beacon ends; the question comes behind the wait.
    QTest::qWait(3000);
    run.program.dialogs.answer(true);
    run.passTheWait();
    const auto& asked = run.program.dialogs.asked();
    const auto question = std::find_if(asked.begin(), asked.end(), [](const ScriptedDialogs::Asked& one) {
        return one.kind == QLatin1String("confirm");
    });
    QVERIFY(question != asked.end());
    QCOMPARE(question->text, "Data not the same\r\nTry again?");
    QCOMPARE(question->title, "Reprog bad");
    run.waitForLamp(firmware::kLampResult, "OK to Restart");
    QCOMPARE(run.device.received().count(sendOf(run.image)), 2);
    QCOMPARE(run.imageInDevice(), sendOf(run.image).sliced(1));
}

void TestHouseFirmware::aCutLineIsTakenUpAgain() {
    FirmwareProgram run(KdPort::lineSpeed, FirmwareType::Rb, 200);
    run.openScreen();
    run.waitForLamp(firmware::kLampReady, "Ready to Send");
    run.enterMode();
    const qsizetype before = run.device.received().size();
    const std::unique_ptr<QThread> hand(QThread::create([&run, before] {
        for (int turn = 0; turn < 2000 && run.device.received().size() < before + 3000; ++turn) {
            QThread::msleep(5);
        }
        run.device.stop();
    }));
    hand->start();
    run.press("Command2");
    hand->wait();
    QVERIFY(run.program.dialogs.messages().last().startsWith(
        "Not reprogrammed! The line to the device was cut after"));
    run.tick();
    QCOMPARE(run.lamp(firmware::kLampPort), "??");
    QVERIFY(!run.state().sentmark);
    run.device.start();
    run.press("SendCh(3)"); // opens the port again
    run.waitFor("REPROG MODE");
    QCOMPARE(run.lamp(firmware::kLampPort), "OK");
}

void TestHouseFirmware::atTheWrongSpeedNothingIsOpen() {
    FirmwareProgram run(38400 / 10);
    run.device.setBaud(38400);
    run.openScreen();
    QTest::qWait(1000);
    run.tick(3);
    QVERIFY(run.lamp(firmware::kLampPrompt) == QLatin1String("??"));
    QVERIFY(!run.state().Command2.enabled);
    run.press("Check1");
    QVERIFY(
        run.refreshUntil([&] { return run.lamp(firmware::kLampReady) == QLatin1String("Ready to Send"); }));
}

void TestHouseFirmware::aSilentDeviceOpensNothing() {
    FirmwareProgram run;
    run.device.with([](Kd& kd) { kd.faults.silent = true; });
    run.openScreen();
    run.tick(100);
    QCOMPARE((QStringList{run.lamp(0), run.lamp(1), run.lamp(2), run.lamp(3), run.lamp(4)}),
             (QStringList{"OK", "??", "??", "KD not Ready", "KD Not Programmed"}));
    QVERIFY(!run.state().Command2.enabled);
    QCOMPARE(run.device.received(), "1");
}

void TestHouseFirmware::halfAPageIsNoPrompt() {
    FirmwareProgram run;
    run.device.with([](Kd& kd) { kd.faults.dropEvery = 5; }); // every fifth byte is lost
    run.openScreen();
    QTRY_VERIFY(run.tickUntil([&] { return run.state().Text4.size() > 60; }));
    QTest::qWait(300);
    run.tick(3);
    QCOMPARE(run.lamp(firmware::kLampPrompt), "??");
    QCOMPARE(run.lamp(firmware::kLampResult), "KD Not Programmed");
    QVERIFY(!run.state().Command2.enabled);
}

void TestHouseFirmware::aRehearsalReachesTheVerdictAndNoRealPort() {
    FirmwareProgram run;
    run.openScreen();
    run.waitForLamp(firmware::kLampReady, "Ready to Send");
    if (run.state().baud9600) {
        run.press("Check1"); // the faster line, for the test's sake
    }
    const qsizetype before = run.device.received().size();
    control<QAction>("ReProg_Link", "mnuRehearse")->trigger();
    QVERIFY(control<QWidget>("ReProg_Link", "rehearsal")->isVisible());
    QVERIFY(QFileInfo(run.program.folder.path("ports/com40")).isSymLink());
    run.waitForLamp(firmware::kLampReady, "Ready to Send");
    run.enterMode();
    run.press("Command2");
    run.waitForLamp(firmware::kLampResult, "OK to Restart");
    QCOMPARE(run.device.received().size(), before); // not one byte for the real one
    run.press("endRehearsal");
    QVERIFY(!QFileInfo(run.program.folder.path("ports/com40")).isSymLink());
    QCOMPARE(link::readcomport(), "3");
    QVERIFY(run.lamp(firmware::kLampResult) != QLatin1String("OK to Restart") ||
            run.tickUntil([&] { return run.lamp(firmware::kLampResult) != QLatin1String("OK to Restart"); }));
}

void TestHouseFirmware::homeLoadsTheMainScreenAgain() {
    FirmwareProgram run;
    run.openScreen();
    QVERIFY(loaded("main") == nullptr);
    QTest::mouseClick(control<QWidget>("ReProg_Link", "Label11"), Qt::LeftButton);
    QVERIFY(shown("main"));
    QVERIFY(loaded("ReProg_Link") == nullptr);
    QCoreApplication::processEvents();
    QVERIFY(run.program.ended->isEmpty());
}

void TestHouseFirmware::runningProgramsOpenFromTheMenu() {
    FirmwareProgram run;
    run.openScreen();
    control<QAction>("ReProg_Link", "mnuRunProg")->trigger();
    QVERIFY(shown("RunProg"));
    QVERIFY(control<QListWidget>("RunProg", "List1")->count() > 0);
    loaded("ReProg_Link")->close();
    QCoreApplication::processEvents();
    QVERIFY(run.program.ended->isEmpty()); // one screen is left
    loaded("RunProg")->close();
    QTRY_COMPARE(run.program.ended->count(), 1);
}

QTEST_MAIN(TestHouseFirmware)
#include "test_house_firmware.moc"
