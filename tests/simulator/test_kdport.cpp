// The device's line: how fast it takes what a program writes, and what a wrong speed makes of it.

#include "platform/serial/serialport.h"
#include "simulator/freeterminal.h"
#include "simulator/kdport.h"
#include "simulator/linepace.h"
#include "tests/support/testfolder.h"

#include <QElapsedTimer>
#include <QLockFile>
#include <QSerialPort>
#include <QtTest>

#include <algorithm>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

using namespace benthor;
using namespace std::chrono_literals;
using benthor::tests::TestFolder;
using simulator::FirmwareType;
using simulator::Kd;
using simulator::KdPort;
using simulator::LineCredit;
using simulator::Loader;

namespace {

constexpr int kPort = 3;
const QString kSlow = QStringLiteral("9600,n,8,1");
const QString kFast = QStringLiteral("38400,n,8,1");

/// A device in its loader, and a program's port to it.
struct Stage {
    Stage()
        : device(folder.root(), kPort, loading(), KdPort::unpaced) {
        port.setCommPort(kPort);
        port.setSettings(kSlow);
    }

    static Kd loading() {
        Kd kd;
        kd.loader.emplace(FirmwareType::Rb);
        return kd;
    }
    void open() {
        device.start();
        QVERIFY(port.setPortOpen(true));
    }
    QString path() const { return folder.path(QStringLiteral("ports/com%1").arg(kPort)); }
    /// What comes until `mark` is in it.
    QByteArray ask(const QByteArray& bytes, const QByteArray& mark) {
        port.Output(bytes);
        QByteArray reply;
        if (!QTest::qWaitFor([&] { return (reply += port.Input()).contains(mark); })) {
            qWarning("no %s in %s", mark.constData(), reply.constData());
        }
        return reply;
    }

    TestFolder folder{TestFolder::Store::Missing};
    KdPort device;
    platform::SerialPort port;
};

QByteArray someBytes(int length) {
    QByteArray bytes;
    for (int at = 0; at < length; ++at) {
        bytes += static_cast<char>(at % 251);
    }
    return bytes;
}

/// Writes as a program does, a record at a time, and waits while the line takes none. Returns the seconds
/// that it took.
double writeAll(const QString& path, const QByteArray& bytes) {
    const int port = ::open(path.toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    QElapsedTimer clock;
    clock.start();
    for (qsizetype at = 0; at < bytes.size() && clock.elapsed() < 60000;) {
        pollfd state{port, POLLOUT, 0};
        ::poll(&state, 1, 1000);
        const auto most = static_cast<std::size_t>(std::min<qsizetype>(128, bytes.size() - at));
        const ssize_t written = ::write(port, bytes.constData() + at, most);
        at += std::max<ssize_t>(written, 0);
    }
    const double seconds = static_cast<double>(clock.elapsed()) / 1000;
    ::close(port);
    return seconds;
}

double secondsOf(const std::optional<KdPort::Times>& times) {
    return times ? std::chrono::duration<double>(times->last - times->first).count() : -1;
}

} // namespace

class TestKdPort : public QObject {
    Q_OBJECT

private slots:
    // --- the terminal

    /// Its line is closed, so its number is free; and yet it could not be opened.
    void aTerminalWhoseNumberIsStillKeptIsPassedOver() {
        Stage stage;
        const int mine = simulator::openTerminal();
        QVERIFY(mine >= 0);
        const QString path = QString::fromLocal8Bit(::ptsname(mine));
        QVERIFY(!simulator::isKeptLine(path));
        QSerialPort keeper;
        keeper.setPortName(path);
        QVERIFY(keeper.open(QIODevice::ReadWrite));
        QVERIFY(simulator::isKeptLine(path));
        keeper.close();
        QVERIFY(!simulator::isKeptLine(path));
        const QString folder = QFileInfo(QStringLiteral("/var/lock")).isWritable() ? "/var/lock" : "/tmp";
        QLockFile kept(folder + "/LCK.." + QString(path).remove(0, 5).replace('/', '_'));
        QVERIFY(kept.tryLock());
        ::close(mine);
        stage.open();
        QVERIFY(QFileInfo(stage.path()).canonicalFilePath() != path);
    }

    // --- the credit

    void aBusyLineCarriesExactlyItsSpeed_data() {
        QTest::addColumn<int>("speed");
        QTest::newRow("9600 baud") << KdPort::lineSpeed;
        QTest::newRow("38400 baud") << KdPort::fastLineSpeed;
    }

    void aBusyLineCarriesExactlyItsSpeed() {
        QFETCH(int, speed);
        LineCredit credit(speed);
        qsizetype carried = 0;
        std::chrono::nanoseconds passed = 0ns;
        for (int look = 0; carried < 61440; ++look) {
            const auto time = look % 97 == 0 ? 180ms : 5300us + std::chrono::nanoseconds(look % 13 * 77);
            credit.pass(time);
            passed += time;
            carried += credit.bytes();
            credit.spend(credit.bytes());
        }
        const double expected = static_cast<double>(carried) / speed;
        QVERIFY(std::abs(std::chrono::duration<double>(passed).count() - expected) < expected * 0.0001);
    }

    void anIdleLineSavesNoMoreThanAMoment() {
        LineCredit credit(KdPort::lineSpeed);
        credit.pass(1h);
        credit.idle();
        QCOMPARE(credit.bytes(), KdPort::lineSpeed / 50);
        credit.spend(credit.bytes());
        credit.idle();
        QCOMPARE(credit.bytes(), 0);
    }

    // --- the pace on a real line

    void whatIsReceivedKeepsToItsPace() {
        Stage stage;
        stage.device.paceReceived(KdPort::fastLineSpeed);
        stage.device.start();
        const QByteArray bytes = someBytes(15360);
        writeAll(stage.path(), bytes);
        QTRY_COMPARE_WITH_TIMEOUT(stage.device.received().size(), bytes.size(), 20000);
        QCOMPARE(stage.device.received(), bytes);
        const double expected = static_cast<double>(bytes.size()) / KdPort::fastLineSpeed;
        const double seconds = secondsOf(stage.device.receivedTimes());
        QVERIFY2(seconds > expected * 0.98, qPrintable(QString::number(seconds)));
        QVERIFY2(seconds < expected * 1.15, qPrintable(QString::number(seconds)));
    }

    void theProgramsWritesAreHeldUp() {
        constexpr int kSpeed = 15360;
        constexpr int kTerminalHolds = 24576; // and some
        Stage stage;
        stage.device.paceReceived(kSpeed);
        stage.device.start();
        const QByteArray bytes = someBytes(61440);
        const double seconds = writeAll(stage.path(), bytes);
        const double expected = static_cast<double>(bytes.size() - kTerminalHolds) / kSpeed;
        QVERIFY2(seconds > expected, qPrintable(QString::number(seconds)));
        QTRY_COMPARE_WITH_TIMEOUT(stage.device.received().size(), bytes.size(), 20000);
        QCOMPARE(stage.device.received(), bytes);
    }

    void unpacedItTakesWhatComes() {
        Stage stage;
        stage.device.start();
        QVERIFY(!stage.device.receivedTimes());
        const QByteArray bytes = someBytes(15360);
        QVERIFY(writeAll(stage.path(), bytes) < 15360.0 / KdPort::fastLineSpeed);
        QTRY_COMPARE(stage.device.received(), bytes);
        QVERIFY(secondsOf(stage.device.receivedTimes()) < 15360.0 / KdPort::fastLineSpeed);
    }

    void aProgramThatOpensAndAsksAtOnceIsAnswered_data() {
        QTest::addColumn<int>("takes");
        QTest::newRow("unpaced") << KdPort::unpaced;
        QTest::newRow("paced") << KdPort::fastLineSpeed;
    }

    void aProgramThatOpensAndAsksAtOnceIsAnswered() {
        QFETCH(int, takes);
        Stage stage;
        stage.device.paceReceived(takes);
        stage.open();
        QVERIFY(stage.ask({}, "oooo").contains("ooooooooooo"));
        for (int turn = 0; turn < 20; ++turn) {
            QVERIFY(stage.ask("1", "Restart").contains("R, Enter"));
            stage.port.setPortOpen(false);
            QVERIFY(stage.port.setPortOpen(true));
        }
        stage.port.setPortOpen(false);
        stage.device.stop();
        stage.open();
        QVERIFY(stage.ask("1", "Restart").contains("R, Enter"));
    }

    // --- the speed

    void atAWrongSpeedAllIsGarbage() {
        Stage stage;
        stage.device.setBaud(9600);
        stage.port.setSettings(kFast);
        stage.open();
        QByteArray said;
        QTRY_VERIFY((said += stage.port.Input()).size() >= 11);
        QCOMPARE(said.count('o'), 0);
        stage.port.Output("11R1");
        QTRY_COMPARE(stage.device.received().size(), 4);
        for (qsizetype at = 0; at < 4; ++at) {
            QVERIFY(stage.device.received().at(at) != "11R1"[at]);
        }
        stage.port.setSettings(kSlow);
        // Garbage makes the loader deaf until a moment of silence has passed.
        stage.device.with([](Kd& kd) { kd.hold(Loader::noiseMilliseconds); });
        QVERIFY(stage.ask("1", "R, Enter").contains("R, Enter"));
        QCOMPARE(stage.device.received().back(), '1');
    }

    void atItsOwnSpeedAllGoesThrough_data() {
        QTest::addColumn<int>("baud");
        QTest::addColumn<QString>("settings");
        QTest::newRow("9600") << 9600 << kSlow;
        QTest::newRow("38400") << 38400 << kFast;
        QTest::newRow("any") << 0 << kFast;
    }

    void atItsOwnSpeedAllGoesThrough() {
        QFETCH(int, baud);
        QFETCH(QString, settings);
        Stage stage;
        stage.device.setBaud(baud);
        stage.port.setSettings(settings);
        stage.open();
        QVERIFY(stage.ask("1", "R, Enter").contains("R, Enter"));
        QCOMPARE(stage.device.received(), QByteArray("1"));
    }
};

QTEST_GUILESS_MAIN(TestKdPort)
#include "test_kdport.moc"
