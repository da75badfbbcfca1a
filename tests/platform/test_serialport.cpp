#include "platform/serial/portnames.h"
#include "platform/serial/serialport.h"
#include "tests/support/pseudoterminal.h"
#include "tests/support/testfolder.h"

#include <QFileInfo>
#include <QProcess>
#include <QSerialPort>
#include <QSignalSpy>
#include <QThread>
#include <array>
#include <atomic>
#include <cstdio>
#include <sys/stat.h>

using namespace benthor::platform;
using namespace benthor::tests;

namespace {

/// Ports 1 to n of a program folder.
struct Stage {
    explicit Stage(int ports = 1) {
        for (int number = 1; number <= ports; ++number) {
            far.push_back(std::make_unique<PseudoTerminal>());
            far.back()->link(folder.root(), number);
        }
    }
    PseudoTerminal& line(int number = 1) { return *far.at(static_cast<std::size_t>(number - 1)); }
    /// Line 1 is full, and nobody reads: it takes nothing.
    void fill() {
        line().keepNear();
        line().fill();
    }
    /// The device of line 1 is back, as another terminal behind the same link.
    void comeBack() {
        far[0] = std::make_unique<PseudoTerminal>();
        line().link(folder.root(), 1);
    }

    TestFolder folder{TestFolder::Store::Missing};
    std::vector<std::unique_ptr<PseudoTerminal>> far;
};

const QString kHold = QStringLiteral("--hold");

/// For tests of much text.
const QString kFast = QStringLiteral("921600,n,8,1");

bool open(SerialPort& port, int number = 1) {
    port.setCommPort(number);
    port.setSettings(QStringLiteral("9600,N,8,1"));
    return port.setPortOpen(true);
}

/// For as long as it lives the process has no more rights than anybody.
class Nobody {
public:
    Nobody() {
        if (::geteuid() == 0 && ::setresuid(kNobody, kNobody, 0) != 0) {
            qFatal("the rights can't be given up");
        }
    }
    ~Nobody() {
        uid_t real = 0;
        uid_t effective = 0;
        uid_t saved = 0;
        ::getresuid(&real, &effective, &saved);
        if (saved == 0 && ::setresuid(0, 0, 0) != 0) {
            qFatal("the rights don't come back");
        }
    }
    Nobody(const Nobody&) = delete;
    Nobody& operator=(const Nobody&) = delete;

private:
    static constexpr uid_t kNobody = 65534;
};

QByteArray allBytes() {
    QByteArray bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

} // namespace

class TestSerialPort : public QObject {
    Q_OBJECT

private slots:
    void settingsAreReadFromTheirText() {
        QCOMPARE(lineSettings(QStringLiteral("9600,N,8,1")), LineSettings());
        QCOMPARE(lineSettings(QStringLiteral("9600,n,8,1")), LineSettings());
        QCOMPARE(lineSettings(QStringLiteral("38400,n,8,1"))->baud, 38400);
        QCOMPARE(lineSettings(QStringLiteral("300,E,7,2")),
                 (LineSettings{300, QSerialPort::EvenParity, QSerialPort::Data7, QSerialPort::TwoStop}));
        QCOMPARE(lineSettings(QStringLiteral("300,o,7,1"))->parity, QSerialPort::OddParity);
        for (const char* bad : {"", "9600", "9600,n,8", "x,n,8,1", "9600,x,8,1", "9600,n,9,1", "9600,n,8,3",
                                "-1,n,8,1", "9600,ne,8,1"}) {
            QVERIFY2(!lineSettings(QLatin1String(bad)), bad);
        }
    }

    void usbAdaptersAreCountedFirstAndInNaturalOrder() {
        QCOMPARE(inPortOrder({"ttyS10", "ttyUSB10", "ttyS2", "ttyUSB2", "ttyACM0", "ttyAMA0"}),
                 QStringList({"ttyACM0", "ttyUSB2", "ttyUSB10", "ttyAMA0", "ttyS2", "ttyS10"}));
    }

    void aLinkInTheFolderNamesThePort() {
        Stage stage;
        QCOMPARE(portPath(1), stage.folder.path("ports/com1"));
        QCOMPARE(portPath(0), "");
        QCOMPARE(portPath(-3), "");
        QCOMPARE(portPath(9999), "");
    }

    void allBytesGoThroughAsTheyAre() {
        Stage stage;
        SerialPort port;
        QVERIFY(open(port));
        stage.line().send(allBytes());
        QTRY_COMPARE(port.InBufferCount(), 256);
        QCOMPARE(port.Input(), allBytes());
        QCOMPARE(port.Input(), QByteArray());
        port.Output(allBytes());
        QByteArray received;
        QTRY_COMPARE((received += stage.line().received()), allBytes());
    }

    void aMissingPortFailsAtOnceAndWithoutHarm() {
        Stage stage;
        SerialPort port;
        QVERIFY(!open(port, 2));
        QVERIFY(!port.PortOpen());
        QCOMPARE(port.fault(), PortFault::Missing);
        port.Output("x");
        QCOMPARE(port.Input(), QByteArray());
        QCOMPARE(port.InBufferCount(), 0);
        QVERIFY(open(port));
        QCOMPARE(port.fault(), PortFault::None);
    }

    void aLinkThatLeadsNowhereIsAMissingPort() {
        Stage stage;
        QVERIFY(QFile::link(stage.folder.path("none"), stage.folder.path("ports/com5")));
        SerialPort port;
        QVERIFY(!open(port, 5));
        QCOMPARE(port.fault(), PortFault::Missing);
    }

    void aFileThatIsNoPortFails() {
        Stage stage;
        stage.folder.put("ports/com5", "no port");
        SerialPort port;
        QVERIFY(!open(port, 5));
        QVERIFY(!port.PortOpen());
        QCOMPARE(stage.folder.get("ports/com5"), QByteArray("no port"));
    }

    void aBusyPortFailsAtOnce() {
        Stage stage;
        SerialPort first;
        SerialPort second;
        QVERIFY(open(first));
        QVERIFY(!open(second));
        QCOMPARE(second.fault(), PortFault::Busy);
        QCOMPARE(second.faultHint(), ""); // held by ourselves, there is no program to close
        first.setPortOpen(false);
        QVERIFY(open(second));
    }

    void seventeenPortsAreOpenTogether() {
        Stage stage(17);
        std::array<SerialPort, 17> ports;
        for (int number = 1; number <= 17; ++number) {
            QVERIFY(open(ports[static_cast<std::size_t>(number - 1)], number));
            stage.line(number).send(QByteArray::number(number));
        }
        for (int number = 1; number <= 17; ++number) {
            SerialPort& port = ports[static_cast<std::size_t>(number - 1)];
            QByteArray received;
            QTRY_COMPARE((received += port.Input()), QByteArray::number(number));
        }
    }

    void theReceiveEventComesWhenEnoughWaits() {
        Stage stage;
        SerialPort port;
        QSignalSpy events(&port, &SerialPort::received);
        QVERIFY(open(port));
        stage.line().send("ab");
        QTRY_COMPARE(port.InBufferCount(), 2);
        QCOMPARE(events.size(), 0); // no threshold, no event
        port.setRThreshold(4);
        stage.line().send("c");
        QTRY_COMPARE(port.InBufferCount(), 3);
        QCOMPARE(events.size(), 0);
        stage.line().send("d");
        QTRY_COMPARE(events.size(), 1);
        QCOMPARE(port.Input(), QByteArray("abcd"));
    }

    void inputTakesAtMostItsLength() {
        Stage stage;
        SerialPort port;
        QVERIFY(open(port));
        port.setInputLen(200);
        stage.line().send(QByteArray(250, 'a'));
        QTRY_COMPARE(port.InBufferCount(), 250);
        QCOMPARE(port.Input().size(), 200);
        QCOMPARE(port.Input().size(), 50);
    }

    void waitingRunsNoEventAndKeepsTheOrder() {
        Stage stage;
        SerialPort port;
        QSignalSpy events(&port, &SerialPort::received);
        QVERIFY(open(port));
        port.setRThreshold(1);
        stage.line().send("first ");
        for (int poll = 0; port.InBufferCount() < 6 && poll < 1'000'000; ++poll) {
            port.waitForInput(std::chrono::microseconds(100));
        }
        stage.line().send("second");
        QByteArray received = port.Input();
        for (int poll = 0; received.size() < 12 && poll < 1'000'000; ++poll) {
            port.waitForInput(std::chrono::microseconds(100));
            received += port.Input();
        }
        QCOMPARE(received, QByteArray("first second"));
        QCOMPARE(events.size(), 0);
    }

    void waitingOnASilentLineEnds() {
        Stage stage;
        SerialPort port;
        QVERIFY(open(port));
        for (int poll = 0; poll < 100; ++poll) {
            port.waitForInput(std::chrono::microseconds(100));
        }
        QCOMPARE(port.InBufferCount(), 0);
        port.setPortOpen(false);
        port.waitForInput(std::chrono::microseconds(100));
    }

    void manySingleBytesReachASlowReaderInOrder() {
        Stage stage;
        SerialPort port;
        QVERIFY(open(port));
        port.setSettings(kFast);
        QByteArray sent;
        for (int i = 0; sent.size() < 20000; ++i) {
            sent += QByteArray::number(i);
        }
        QByteArray received;
        std::atomic<bool> done = false;
        const std::unique_ptr<QThread> reader(QThread::create([&] {
            while (received.size() < sent.size() && !done) {
                pollfd waiting{0, 0, 0};
                ::poll(&waiting, 0, 1); // a reader that is slower than the writer
                received += stage.line().received();
            }
        }));
        reader->start();
        for (const char byte : sent) {
            port.Output(QByteArrayView(&byte, 1));
        }
        QTRY_VERIFY(reader->isFinished());
        done = true;
        reader->wait();
        QCOMPARE(received, sent);
    }

    /// A line that takes nothing for a moment is no line that broke.
    void recordsWaitForASlowLineAndNoneIsLost() {
        Stage stage;
        SerialPort port;
        QVERIFY(open(port));
        port.setSettings(kFast);
        const QByteArray record = allBytes().first(128);
        const QByteArray sent = record.repeated(400); // more than a pseudo-terminal swallows
        QByteArray received;
        const std::unique_ptr<QThread> reader(QThread::create([&] {
            for (int turn = 0; turn < 4000 && received.size() < sent.size(); ++turn) {
                QThread::msleep(5);
                received += stage.line().received();
            }
        }));
        reader->start();
        for (int at = 0; at < sent.size(); at += 128) {
            port.Output(sent.mid(at, 128));
            QVERIFY(port.PortOpen());
        }
        QTRY_VERIFY_WITH_TIMEOUT((port.Output({}), reader->isFinished()), 30000);
        reader->wait();
        QCOMPARE(received, sent);
    }

    /// Whatever the system keeps for the line: the port knows its speed.
    void noMoreThan512BytesAreOnTheirWayWhenAWriteReturns() {
        Stage stage;
        SerialPort port;
        QVERIFY(open(port));
        port.setSettings(QStringLiteral("38400,n,8,1"));
        QElapsedTimer passed;
        passed.start();
        for (int record = 0; record < 20; ++record) {
            port.Output(QByteArray(128, 'x'));
        }
        QVERIFY(passed.nsecsElapsed() >= (20 * 128 - 512) * 1'000'000'000LL / 3840);
        port.setPortOpen(false);
        QVERIFY(port.setPortOpen(true)); // a line opened anew owes nothing
        passed.start();
        port.Output("x");
        QVERIFY(passed.elapsed() < 500);
        QByteArray received;
        QTRY_COMPARE((received += stage.line().received()).count('x'), 20 * 128 + 1);
    }

    /// However much or little is written: one byte that finds no room is as lost as a book.
    void aLineThatTakesNothingForTwoSecondsIsToldAsStuck_data() {
        QTest::addColumn<qsizetype>("length");
        QTest::newRow("a letter") << qsizetype(1);
        QTest::newRow("a setup") << qsizetype(233);
        QTest::newRow("more than a line holds") << qsizetype(1'000'000);
    }

    void aLineThatTakesNothingForTwoSecondsIsToldAsStuck() {
        QFETCH(qsizetype, length);
        Stage stage;
        SerialPort port;
        stage.fill();
        QVERIFY(open(port));
        QElapsedTimer passed;
        passed.start();
        QCOMPARE(port.Output(QByteArray(length, 'x')), Written::Stuck);
        QVERIFY2(passed.elapsed() >= 2000, qPrintable(QString::number(passed.elapsed())));
        QVERIFY(port.PortOpen());
    }

    /// What waited is thrown away and never comes behind; what is written once the line takes again does.
    void nothingThatWaitedOnAStuckLineLeavesLater() {
        Stage stage;
        SerialPort port;
        stage.fill();
        QVERIFY(open(port));
        port.setSettings(kFast);
        QCOMPARE(port.Output(QByteArray(20000, 'x')), Written::Stuck);
        QCOMPARE(port.Output("behind"), Written::Whole);
        QByteArray received;
        QTRY_VERIFY((received += stage.line().received()).endsWith("behind"));
        QVERIFY(!received.contains('x'));
    }

    /// A line that takes a little now and then is slow, not stuck: not one byte is missing.
    void aLineThatTakesALittleEverySecondIsNotGivenUp() {
        Stage stage;
        SerialPort port;
        stage.fill();
        QVERIFY(open(port));
        port.setSettings(kFast);
        const QByteArray sent = allBytes().repeated(100);
        QByteArray received;
        std::atomic<bool> done = false;
        const std::unique_ptr<QThread> reader(QThread::create([&] {
            while (!done) {
                QThread::msleep(1000);
                received += stage.line().received();
            }
            received += stage.line().received();
        }));
        reader->start();
        const Written written = port.Output(sent);
        done = true;
        reader->wait();
        QCOMPARE(written, Written::Whole);
        QByteArray rest;
        QTRY_VERIFY((rest += stage.line().received(), (received + rest).endsWith(sent)));
    }

    void aWriteTellsOfACutUntilThePortIsOpenedAgain() {
        Stage stage;
        SerialPort port;
        QCOMPARE(port.Output("x"), Written::Closed); // nobody opened it
        QVERIFY(open(port));
        QCOMPARE(port.Output("x"), Written::Whole);
        stage.line().vanish();
        QCOMPARE(port.Output("x"), Written::Cut); // this write finds it
        QVERIFY(!port.PortOpen());
        QCOMPARE(port.Output("x"), Written::Cut);
        QVERIFY(!open(port)); // not back yet
        QCOMPARE(port.Output("x"), Written::Cut);
        stage.comeBack();
        QVERIFY(open(port));
        QCOMPARE(port.Output("x"), Written::Whole);
        stage.line().vanish();
        QTRY_VERIFY(!port.PortOpen()); // while it was idle
        QCOMPARE(port.Output("x"), Written::Cut);
        port.setPortOpen(false); // the program has done with it
        QCOMPARE(port.Output("x"), Written::Closed);
    }

    void aLineThatIsCutWhileItIsFullIsNoStuckLine() {
        Stage stage;
        SerialPort port;
        stage.fill();
        QVERIFY(open(port));
        const std::unique_ptr<QThread> hand(QThread::create([&] {
            QThread::msleep(300);
            stage.line().vanish();
        }));
        hand->start();
        const Written written = port.Output(QByteArray(20000, 'x'));
        hand->wait();
        QCOMPARE(written, Written::Cut);
        QVERIFY(!port.PortOpen());
    }

    void aDeviceThatVanishesClosesThePortAndCanComeBack() {
        Stage stage;
        SerialPort port;
        QVERIFY(open(port));
        stage.line().vanish();
        QTRY_VERIFY(!port.PortOpen());
        QCOMPARE(port.Input(), QByteArray());
        port.Output("x");
        stage.comeBack();
        QVERIFY(port.setPortOpen(true));
        stage.line().send("back");
        QTRY_COMPARE(port.InBufferCount(), 4);
    }

    void aPortThatTheUserMayNotUseSaysHowToComeByIt() {
        Stage stage;
        QCOMPARE(::chmod(QFile::encodeName(stage.folder.root()).constData(), 0755), 0);
        const QString device = stage.line().path();
        QCOMPARE(::chmod(QFile::encodeName(device).constData(), 0), 0);
        SerialPort port;
        {
            const Nobody nobody;
            QVERIFY(!open(port));
        }
        QVERIFY(!port.PortOpen());
        QCOMPARE(port.fault(), PortFault::NoRights);
        QCOMPARE(port.faultHint(), rightsHint(1, device, QFileInfo(device).group()));
        QCOMPARE(::chmod(QFile::encodeName(device).constData(), 0600), 0);
        QVERIFY(open(port));
        QCOMPARE(port.faultHint(), "");
    }

    void aPortThatAnotherProgramHoldsSaysSo() {
        Stage stage;
        QProcess other; // this program once more, see holdPort()
        other.start(QCoreApplication::applicationFilePath(), {kHold, stage.line().path()});
        QVERIFY(other.waitForReadyRead(10000));
        SerialPort port;
        QVERIFY(!open(port));
        QCOMPARE(port.fault(), PortFault::Busy);
        QCOMPARE(port.faultHint(), busyHint(1, stage.line().path()));
        other.closeWriteChannel();
        QVERIFY(other.waitForFinished(10000));
        QVERIFY(open(port));
        QCOMPARE(port.faultHint(), "");
    }

    void theHintNamesGroupAndCommand() {
        QCOMPARE(
            rightsHint(3, QStringLiteral("/dev/ttyUSB0"), QStringLiteral("dialout")),
            "Port 3 (/dev/ttyUSB0) may be used by the group dialout only. To join it: sudo usermod -a -G "
            "dialout $USER, then log in anew.");
    }
};

namespace {

/// Another program: holds the port until its input ends.
int holdPort(const QString& path) {
    QSerialPort port(path);
    if (!port.open(QIODevice::ReadWrite)) {
        return 1;
    }
    std::puts("held");
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    if (argc == 3 && application.arguments().at(1) == kHold) {
        return holdPort(application.arguments().at(2));
    }
    TestSerialPort test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_serialport.moc"
