// The link screen with real lines, a device in software at the far end, and both ticking.

#include "link/screens/pc_link_1.h"
#include "link/screens/seriallines.h"
#include "platform/screen/ticktimer.h"
#include "session/process.h"
#include "simulator/demodives.h"
#include "simulator/kdport.h"
#include "tests/support/scripteddialogs.h"
#include "tests/support/testfolder.h"
#include "tests/support/testsettings.h"

#include <QAbstractButton>
#include <QPointer>
#include <QtTest>

using namespace benthor::tests;
using benthor::process;
using benthor::link::PC_Link_1;
using benthor::simulator::Kd;
using benthor::simulator::KdPort;

namespace {

constexpr int kPort = 3;
constexpr int kLongest = 30000; // milliseconds that a step may take on a busy machine

const std::vector<QByteArray>& dives() {
    static const std::vector<QByteArray> all = benthor::simulator::deviceDives();
    return all;
}

struct Stage {
    explicit Stage(const QByteArray& version)
        : device(folder.root(), kPort, Kd(dives(), version), KdPort::unpaced) {
        process().database.open(folder.path("rb.mdb"));
        process().screenmode = QStringLiteral("Dive");
        screen = new PC_Link_1(benthor::link::serialLines());
    }
    ~Stage() {
        delete screen.data();
        process().database.close();
    }
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    /// One tick of all timers that are enabled, in the order in which the clock would give them.
    void tick() {
        for (const char* name : {"Timer1", "Timer2", "Timer3", "Timer7", "Timer8"}) {
            auto* timer = screen->findChild<benthor::platform::TickTimer*>(QLatin1String(name));
            if (timer->isEnabled()) {
                timer->expire();
            }
        }
    }
    /// For QTRY: ticks until it is so.
    bool ticks(const std::function<bool()>& done) {
        if (!done()) {
            tick();
        }
        return done();
    }
    bool shows(const char* caption) const { return screen->caption() == QLatin1String(caption); }
    void click(const char* name) { screen->findChild<QAbstractButton*>(QLatin1String(name))->click(); }
    int listed() const { return screen->state().Mgrid.rowCount() - 1; }

    /// The device is found, its dives are listed, and nothing more is on the way.
    void connectDevice() {
        device.start();
        screen->showScreen();
        QTRY_VERIFY_WITH_TIMEOUT(ticks([this] { return listed() == 8 && shows("Connected"); }), kLongest);
    }
    void run() {
        QTRY_VERIFY_WITH_TIMEOUT(ticks([this] { return !dialogs.messages().isEmpty(); }), kLongest);
    }
    QByteArray stored(int dive) const {
        return folder.get(QStringLiteral("new/MyLatestDives%1.txt").arg(dive));
    }

    TestSettings settings;
    TestFolder folder;
    ScriptedDialogs dialogs;
    KdPort device;
    QPointer<PC_Link_1> screen;
};

} // namespace

class TestPcLink1Device : public QObject {
    Q_OBJECT

private slots:
    void allDivesOfADeviceWhoseFirstGasIsNotAirAreStored();
    void aCablePulledWhileIdle();
    void aCablePulledInARun();
};

/// Its setup reply is not known as one, so that the directory's tick would wait for ever.
void TestPcLink1Device::allDivesOfADeviceWhoseFirstGasIsNotAirAreStored() {
    Stage stage("V2.31");
    stage.device.with([](Kd& kd) { kd.memory.setup.replace(0, 4, "A068"); });
    stage.connectDevice();
    QVERIFY(stage.screen->state().Timer2);
    stage.click("cmddownloadall");
    stage.run();
    QCOMPARE(stage.dialogs.messages().first(), "8  Dives Downloaded.");
    QCOMPARE(stage.dialogs.asked().first().below, "");
    for (int dive = 1; dive <= 8; ++dive) {
        QVERIFY2(stage.stored(dive).contains(dives()[static_cast<std::size_t>(dive - 1)].chopped(2)),
                 qPrintable(QString::number(dive)));
    }
    QCOMPARE(stage.listed(), 8);
}

void TestPcLink1Device::aCablePulledWhileIdle() {
    Stage stage("V3.12");
    stage.connectDevice();
    const auto* get = stage.screen->findChild<QAbstractButton*>(QStringLiteral("cmddownloadall"));
    QVERIFY(get->isEnabled());
    const auto asked =
        stage.device.received().count('M'); // a slow device is asked for its list more than once
    stage.device.stop();
    QTRY_VERIFY_WITH_TIMEOUT(stage.ticks([&stage] { return stage.shows("Not Connected"); }), kLongest);
    QVERIFY(!get->isEnabled());
    stage.device.start();
    QTRY_VERIFY_WITH_TIMEOUT(stage.ticks([&stage] { return stage.shows("Connected"); }), kLongest);
    QVERIFY(get->isEnabled());
    QCOMPARE(stage.listed(), 8);
    QCOMPARE(stage.device.received().count('M'), asked); // nothing was asked for anew
    QVERIFY(!stage.screen->state().Timer8);
}

void TestPcLink1Device::aCablePulledInARun() {
    Stage stage("V3.12");
    stage.connectDevice();
    stage.device.with([](Kd& kd) {
        kd.faults.pieces = 2000;
        kd.faults.pauseMilliseconds = 300;
    });
    stage.click("cmddownloadall");
    QTRY_VERIFY_WITH_TIMEOUT(stage.screen->state().rxbuf.size() > 1500, kLongest);
    stage.device.stop();
    QTRY_VERIFY_WITH_TIMEOUT(stage.ticks([&stage] { return stage.shows("Not Connected"); }), kLongest);
    QVERIFY(stage.screen->isDownloading());
    QVERIFY(stage.dialogs.messages().isEmpty());
    stage.device.with([](Kd& kd) { kd.faults.pauseMilliseconds = 0; });
    stage.device.start();
    stage.run();
    QCOMPARE(stage.dialogs.messages().first(), "8  Dives Downloaded.");
    QVERIFY(stage.dialogs.asked().first().below.contains("Dive1."));
    for (int dive = 2; dive <= 8; ++dive) {
        QVERIFY2(stage.stored(dive).contains(dives()[static_cast<std::size_t>(dive - 1)].chopped(2)),
                 qPrintable(QString::number(dive)));
    }
}

QTEST_MAIN(TestPcLink1Device)
#include "test_pc_link_1_device.moc"
