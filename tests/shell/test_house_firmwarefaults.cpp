// A reprogramming session with all that can go wrong, over a real pseudo-terminal.

#include "tests/shell/firmwareprogram.h"

#include <QThread>

using namespace benthor;
using namespace benthor::tests;

class TestHouseFirmwareFaults : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { look::apply(*qApp); }

    void aDeviceThatDropsOutStopsTheSendAndTakesItAgain();
    void aDeviceThatEndsEarlyStopsTheSend();
    void aWrongSumIsRefused();
    void aMemoryLeftErasedKeepsTheVerdictRed();
    void aWrongCheckValueIsTold();
    void silenceBehindTheTransferEndsInNo();
    void silenceBehindTheYesIsEndedByContinue();
    void aDeviceThatWantsASecondGoGetsIt();
    void aCutLineIsTakenUpAgain();
    void aLineThatTakesNothingMoreEndsTheSendInsideItsBlock();
    void aLineCutWhileIdleIsToldAndNotOneByteIsCounted();
    void aLineCutInTheFinalPhaseIsTold();
    void atTheWrongSpeedNothingIsOpen();
    void aSilentDeviceOpensNothing();
    void halfAPageIsNoPrompt();
};

void TestHouseFirmwareFaults::aDeviceThatDropsOutStopsTheSendAndTakesItAgain() {
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

void TestHouseFirmwareFaults::aDeviceThatEndsEarlyStopsTheSend() {
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

void TestHouseFirmwareFaults::aWrongSumIsRefused() {
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

void TestHouseFirmwareFaults::aMemoryLeftErasedKeepsTheVerdictRed() {
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

void TestHouseFirmwareFaults::aWrongCheckValueIsTold() {
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

void TestHouseFirmwareFaults::silenceBehindTheTransferEndsInNo() {
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

void TestHouseFirmwareFaults::silenceBehindTheYesIsEndedByContinue() {
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

void TestHouseFirmwareFaults::aDeviceThatWantsASecondGoGetsIt() {
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

void TestHouseFirmwareFaults::aCutLineIsTakenUpAgain() {
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

/// The terminal between holds some 20 KB: the image is longer.
void TestHouseFirmwareFaults::aLineThatTakesNothingMoreEndsTheSendInsideItsBlock() {
    FirmwareProgram run(KdPort::unpaced, FirmwareType::Rb, 400);
    run.openScreen();
    run.enterMode();
    const qsizetype before = run.device.received().size();
    const std::unique_ptr<QThread> hand(QThread::create([&run, before] {
        for (int turn = 0; turn < 2000 && run.device.received().size() < before + 3000; ++turn) {
            QThread::msleep(5);
        }
        run.device.hold(true);
    }));
    hand->start();
    run.press("Command2");
    hand->wait();
    QVERIFY2(run.program.dialogs.messages().last().startsWith(
                 "Not reprogrammed! The line to the device took nothing for two seconds, after"),
             qPrintable(run.program.dialogs.messages().last()));
    QCOMPARE(run.program.dialogs.messages().size(), 2); // behind the warning
    QVERIFY(!run.state().sentmark);
    QVERIFY(run.state().idleflag);
    QCOMPARE(run.lamp(firmware::kLampResult), "KD Not Programmed");
    run.device.hold(false);
    QTest::qWait(300); // whatever still waited would come now
    const QByteArray sent = run.device.received().sliced(before);
    QVERIFY(sendOf(run.image).startsWith(sent));
    QVERIFY(sent.size() >= 3000 && sent.size() < sendOf(run.image).size());
    QVERIFY(run.refreshUntil([&] { return run.holds("REPROG MODE") || run.holds("R, Enter"); }));
}

void TestHouseFirmwareFaults::aLineCutWhileIdleIsToldAndNotOneByteIsCounted() {
    FirmwareProgram run;
    run.openScreen();
    run.enterMode();
    const QByteArray before = run.device.received();
    run.device.stop();
    QTRY_COMPARE((run.tick(), run.lamp(firmware::kLampPort)), "??");
    QVERIFY(run.state().Command2.enabled); // the text still holds its words
    run.press("Command2");
    QCOMPARE(run.program.dialogs.messages().last(),
             "Not reprogrammed! The line to the device is cut, and not one byte was sent.\r\n"
             "Plug it in again, click Refresh, and try again.");
    QCOMPARE(run.state().ProgressBar1.value, 0);
    QCOMPARE(run.state().counted, 0);
    QVERIFY(run.state().idleflag);
    QCOMPARE(run.device.received(), before);
    run.device.start();
    run.press("SendCh(3)");
    run.waitFor("REPROG MODE");
    run.press("Command2");
    run.waitForLamp(firmware::kLampResult, "OK to Restart");
}

void TestHouseFirmwareFaults::aLineCutInTheFinalPhaseIsTold() {
    FirmwareProgram run;
    run.fault([](simulator::LoaderFaults& faults) { faults.silentEnd = true; });
    run.openScreen();
    run.enterMode();
    const qsizetype before = run.device.received().size();
    const qsizetype image = sendOf(run.image).size();
    const std::unique_ptr<QThread> hand(QThread::create([&run, before, image] {
        for (int turn = 0; turn < 4000 && run.device.received().size() < before + image + 4; ++turn) {
            QThread::msleep(5);
        }
        run.device.stop();
    }));
    hand->start();
    run.press("Command2");
    hand->wait();
    QCOMPARE(run.program.dialogs.messages().last(),
             "Not reprogrammed! The line to the device was cut before the device told what it received.\r\n"
             "Plug it in again, click Refresh, and try again.");
    QCOMPARE(run.program.dialogs.messages().size(), 2);
    QCOMPARE(run.state().sendstate, 0);
    QVERIFY(run.state().idleflag);
    QCOMPARE(run.device.received().sliced(before), sendOf(run.image) + "&&&&");
    run.tick(3);
    QCOMPARE(run.lamp(firmware::kLampPort), "??");
    QVERIFY(!run.state().SendCh[firmware::kKeyRestart].enabled);
}

void TestHouseFirmwareFaults::atTheWrongSpeedNothingIsOpen() {
    FirmwareProgram run(38400 / 10);
    run.device.setBaud(38400);
    run.openScreen();
    run.press("Check1");
    run.press("SendCh(3)");
    QTest::qWait(1000);
    run.tick(3);
    QVERIFY(run.lamp(firmware::kLampPrompt) == QLatin1String("??"));
    QVERIFY(!run.state().Command2.enabled);
    run.press("Check1");
    QVERIFY(
        run.refreshUntil([&] { return run.lamp(firmware::kLampReady) == QLatin1String("Ready to Send"); }));
}

void TestHouseFirmwareFaults::aSilentDeviceOpensNothing() {
    FirmwareProgram run;
    run.device.with([](Kd& kd) { kd.faults.silent = true; });
    run.openScreen();
    run.tick(100);
    QCOMPARE((QStringList{run.lamp(0), run.lamp(1), run.lamp(2), run.lamp(3), run.lamp(4)}),
             (QStringList{"OK", "??", "??", "KD not Ready", "KD Not Programmed"}));
    QVERIFY(!run.state().Command2.enabled);
    QCOMPARE(run.device.received(), "1");
}

void TestHouseFirmwareFaults::halfAPageIsNoPrompt() {
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

QTEST_MAIN(TestHouseFirmwareFaults)
#include "test_house_firmwarefaults.moc"
