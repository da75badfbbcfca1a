// A cable pulled, and the adapter coming back as another terminal behind the same link.

#include "tests/link/devicestage.h"

using namespace benthor;
using namespace benthor::link;
using namespace benthor::tests;
using simulator::Faults;
using simulator::Kd;
using simulator::KdPort;
using Stage = DeviceStage;

class TestDeviceCable : public QObject {
    Q_OBJECT

private slots:
    void aCablePulledWhileIdleEndsTheConnectionUntilItIsBack() {
        Stage stage;
        stage.connect();
        const auto caption = [&stage](const char* wanted) {
            Timer1_tick(stage.link, stage.host);
            return stage.link.AFLabel3.text == QLatin1String(wanted);
        };
        QTRY_VERIFY(caption("Connected"));
        QVERIFY(stage.link.downloadbuttons);
        stage.device.stop();
        QTRY_VERIFY(!stage.host.working.PortOpen());
        QVERIFY(!stage.folder.has(QStringLiteral("ports/com3")));
        const QByteArray before = stage.link.rxbuf.bytes();
        stage.link.silentticks = 100;
        for (int tick = 0; tick < 13; ++tick) {
            Timer1_tick(stage.link, stage.host);
        }
        QCOMPARE(stage.link.AFLabel3.text, "Not Connected");
        QVERIFY(!stage.link.downloadbuttons);
        stage.device.start();
        QTRY_VERIFY(caption("Connected"));
        QVERIFY(stage.link.downloadbuttons);
        QCOMPARE(stage.link.ComNum, "3");
        QCOMPARE(stage.link.Mgrid.rowCount(), 9);
        QVERIFY(stage.link.rxbuf.bytes().startsWith(before));
        for (const platform::SerialPort& port : stage.host.search) {
            QVERIFY(!port.PortOpen()); // and no search
        }
    }

    void aCablePulledInTheSearchIsHeardWhenItIsBack() {
        Stage stage;
        Faults faults;
        faults.silent = true;
        stage.fault(faults);
        stage.device.start();
        mnuFindKD_click(stage.link, stage.host);
        QVERIFY(stage.host.search[kPort].PortOpen());
        stage.device.stop();
        QTRY_VERIFY(!stage.host.search[kPort].PortOpen());
        Timer8_tick(stage.link, stage.host);
        stage.fault(Faults());
        stage.device.start();
        Timer8_tick(stage.link, stage.host);
        QVERIFY(stage.host.search[kPort].PortOpen());
        QTRY_VERIFY(stage.host.search[kPort].InBufferCount() + stage.link.scanbuf[kPort].size() > 4);
        Timer8_tick(stage.link, stage.host);
        QVERIFY(stage.host.working.PortOpen());
        QCOMPARE(stage.link.ComNum, "3");
    }

    void aPortTypedInTheSearchIsOpenedWhenTheDeviceIsHeardThere() {
        Stage stage;
        stage.device.start();
        mnuFindKD_click(stage.link, stage.host);
        setcomnum(stage.link, stage.host, QString::number(kPort));
        QVERIFY(!stage.host.working.PortOpen()); // the search holds it
        QTRY_VERIFY((Timer8_tick(stage.link, stage.host), !stage.link.Timer8));
        QVERIFY(stage.host.working.PortOpen());
        QTRY_VERIFY(stage.link.rxbuf.holds("PPP"));
    }

    /// What the device went on saying to nobody is missing from the dive.
    void aCablePulledInADiveLeavesAHoleThatIsTold() {
        Stage stage(Kd(simulator::deviceDives(), "V3.12"));
        stage.connect();
        Faults faults;
        faults.pieces = static_cast<int>(dive(1).size() / 4) + 1;
        faults.pauseMilliseconds = 600;
        stage.fault(faults);
        stage.select({1, 2});
        cmddownload_click(stage.link, stage.host);
        QTRY_VERIFY(stage.link.rxbuf.size() >= faults.pieces);
        stage.device.stop();
        QTRY_VERIFY(!stage.host.working.PortOpen());
        const QByteArray before = stage.link.rxbuf.bytes();
        Timer1_tick(stage.link, stage.host);
        QCOMPARE(stage.link.AFLabel3.text, "Command Sent..");
        QTest::qWait(20);
        stage.device.start();
        QTRY_VERIFY((Timer1_tick(stage.link, stage.host), stage.host.working.PortOpen()));
        stage.device.with([](Kd& kd) { kd.faults.pauseMilliseconds = 0; });
        QVERIFY(stage.link.rxbuf.bytes().startsWith(before));
        QTRY_VERIFY_WITH_TIMEOUT(stage.tickUntil([&stage] { return !stage.link.Timer3; }), 20000);
        QVERIFY(stage.stored(1).startsWith(before));
        QVERIFY(stage.stored(2).contains(dive(2).chopped(2)));
        QCOMPARE(stage.host.messages.first(), "2  Dives Downloaded.");
        QCOMPARE(stage.host.below.first(), "The line was cut while they came, so that they may have a hole: "
                                           "Dive1.");
    }

    void aCablePulledInADiveThatTheDeviceGaveUpIsToldAsNotStored() {
        Stage stage;
        stage.connect();
        Faults faults;
        faults.pieces = 1000;
        faults.pauseMilliseconds = 500;
        stage.fault(faults);
        stage.select({1, 2});
        cmddownload_click(stage.link, stage.host);
        QTRY_VERIFY(stage.link.rxbuf.size() >= 1000);
        stage.device.stop();
        QTRY_VERIFY(!stage.host.working.PortOpen());
        stage.device.with([](Kd& kd) {
            kd.faults.silent = true;
            kd.advance(0); // forgets what it was saying
            kd.faults = Faults();
        });
        Timer1_tick(stage.link, stage.host);
        stage.device.start();
        QTRY_VERIFY((Timer1_tick(stage.link, stage.host), stage.host.working.PortOpen()));
        QTRY_VERIFY_WITH_TIMEOUT(stage.tickUntil([&stage] { return !stage.link.Timer3; }), 20000);
        QVERIFY(stage.stored(1).isEmpty());
        QVERIFY(stage.stored(2).contains(dive(2).chopped(2)));
        QCOMPARE(stage.host.below.first(), "Chosen: 2, stored: 1. Not stored, to be fetched again: Dive1.");
    }

    void aDeviceThatVanishesInTheMiddleOfADiveLeavesTheRunOpenAndNothingStored() {
        Stage stage(Kd(simulator::deviceDives()), KdPort::lineSpeed);
        stage.device.start();
        setcomnum(stage.link, stage.host, QString::number(kPort));
        stage.link.Mgrid.rows.resize(2);
        stage.link.Mgrid.rows[1].cells[0] = QStringLiteral("Dive1");
        stage.link.Timer2 = false;
        stage.select({1});
        cmddownload_click(stage.link, stage.host);
        QTRY_VERIFY(stage.link.rxbuf.size() > 100);
        stage.device.stop();
        QTRY_VERIFY(!stage.host.working.PortOpen());
        stage.link.silentticks = 0;
        for (int tick = 0; tick < 50; ++tick) {
            Timer1_tick(stage.link, stage.host);
            Timer3_tick(stage.link, stage.host);
            QCOMPARE(stage.link.AFLabel3.text, "Command Sent..");
        }
        Timer1_tick(stage.link, stage.host);
        QCOMPARE(stage.link.AFLabel3.text, "Not Connected");
        QVERIFY(stage.link.Timer3);
        QVERIFY(stage.link.download.TXTWaitVisible);
        QVERIFY(stage.host.messages.isEmpty());
        QVERIFY(stage.stored(1).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestDeviceCable)
#include "test_device_cable.moc"
