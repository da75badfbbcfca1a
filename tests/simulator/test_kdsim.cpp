// The program kdsim as a person starts it: a process of its own.

#include "platform/serial/serialport.h"
#include "tests/simulator/logobitmap.h"
#include "tests/support/testfolder.h"

#include <QFileInfo>
#include <QProcess>
#include <QtTest>

#include <csignal>

using namespace benthor;
using benthor::tests::TestFolder;

namespace {

/// One run of the program, ended with the test.
class Run {
public:
    explicit Run(const QStringList& arguments) {
        process_.start(QStringLiteral(BENTHOR_KDSIM), arguments);
        if (!process_.waitForStarted()) {
            qFatal("kdsim does not start");
        }
    }
    ~Run() { end(); }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    /// Ends it as Ctrl+C does; its exit code.
    int end() {
        if (process_.state() != QProcess::NotRunning) {
            ::kill(static_cast<pid_t>(process_.processId()), SIGINT);
            process_.waitForFinished();
        }
        return process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
    }
    int waitForEnd() {
        process_.waitForFinished();
        return process_.exitCode();
    }
    bool running() const { return process_.state() == QProcess::Running; }
    QString out() {
        process_.waitForReadyRead(0);
        out_ += QString::fromUtf8(process_.readAllStandardOutput());
        return out_;
    }
    QString errors() { return QString::fromUtf8(process_.readAllStandardError()); }

private:
    QProcess process_;
    QString out_;
};

/// What comes back until `mark` is in it.
QByteArray ask(platform::SerialPort& port, const QByteArray& command, const QByteArray& mark) {
    port.Output(command);
    QByteArray reply;
    if (!QTest::qWaitFor([&] { return (reply += port.Input()).contains(mark); })) {
        qWarning("no %s in %s", mark.constData(), reply.constData());
    }
    return reply;
}

bool open(platform::SerialPort& port, int number) {
    port.setCommPort(number);
    return port.setPortOpen(true);
}

} // namespace

class TestKdsim : public QObject {
    Q_OBJECT

private slots:
    void helpTellsEachOption() {
        Run run({"--help"});
        QCOMPARE(run.waitForEnd(), 0);
        const QString help = run.out();
        for (const char* option :
             {"--port", "--unpaced", "--dives", "--third-version", "--product", "--keep", "--silent",
              "--break-off", "--drop", "--flip", "--pieces", "--delay", "--vanish", "--unasked", "--loader",
              "--large-beacon", "--baud", "--loader-fault"}) {
            QVERIFY2(help.contains(QLatin1String(option)), option);
        }
    }

    void wrongArgumentsAreRefused_data() {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("no folder") << QStringList();
        QTest::newRow("two folders") << QStringList{"a", "b"};
        QTest::newRow("no number") << QStringList{"a", "--port", "x"};
        QTest::newRow("below zero") << QStringList{"a", "--drop", "-1"};
        QTest::newRow("another type of loader") << QStringList{"a", "--loader", "xx"};
        QTest::newRow("another speed") << QStringList{"a", "--baud", "19200"};
        QTest::newRow("unknown fault") << QStringList{"a", "--loader", "rb", "--loader-fault", "fire"};
        QTest::newRow("unknown") << QStringList{"a", "--loud"};
    }

    void wrongArgumentsAreRefused() {
        QFETCH(QStringList, arguments);
        Run run(arguments);
        QVERIFY(run.waitForEnd() != 0);
        QVERIFY(!run.errors().isEmpty());
    }

    void itStandsAsAPortForAsLongAsItRuns() {
        const TestFolder folder(TestFolder::Store::Missing);
        Run run({folder.root(), "--port", "7", "--unpaced"});
        QTRY_VERIFY(QFileInfo(folder.path("ports/com7")).isSymLink());
        platform::SerialPort port;
        QVERIFY(open(port, 7));
        QVERIFY(ask(port, {}, "PP").contains("PP"));
        QCOMPARE(ask(port, "M", "End").count("ver="), 8);
        QVERIFY(ask(port, "R", "KD3").endsWith("KD3")); // no one told it which device it is
        QTRY_VERIFY(run.out().contains(QLatin1String("heard M")));
        QVERIFY(QRegularExpression(QStringLiteral("\\d\\d:\\d\\d:\\d\\d\\.\\d{3} heard M"))
                    .match(run.out())
                    .hasMatch());
        port.setPortOpen(false);
        QCOMPARE(run.end(), 0);
        QVERIFY(!QFileInfo(folder.path("ports/com7")).isSymLink());
    }

    void optionsReachTheDevice() {
        const TestFolder folder(TestFolder::Store::Missing);
        Run run({folder.root(), "--unpaced", "--dives", "2", "--third-version", "--product", "KDX"});
        QTRY_VERIFY(QFileInfo(folder.path("ports/com3")).isSymLink());
        platform::SerialPort port;
        QVERIFY(open(port, 3));
        const QByteArray directory = ask(port, "M", "End");
        QCOMPARE(directory.count("ver=V3."), 2);
        QVERIFY(directory.contains("KDX"));
    }

    void whatItWasSentOutlivesARestart() {
        const TestFolder folder(TestFolder::Store::Missing);
        const QStringList arguments{folder.root(), "--unpaced", "--keep", folder.path("device")};
        {
            Run run(arguments);
            QTRY_VERIFY(QFileInfo(folder.path("ports/com3")).isSymLink());
            platform::SerialPort port;
            QVERIFY(open(port, 3));
            ask(port, "S025F\r\n", "+^+00025");
            ask(port, "L", "l");
            ask(port, "a logo\x1b", "+++");
            QTRY_COMPARE(folder.get(QStringLiteral("device/logo.txt")), QByteArray("a logo"));
            QTRY_VERIFY(folder.get(QStringLiteral("device/commands.txt")).contains("heard S 025"));
            QCOMPARE(folder.get(QStringLiteral("device/interval.txt")), QByteArray("25"));
            port.setPortOpen(false);
            QCOMPARE(run.end(), 0);
        }
        Run run(arguments);
        QTRY_VERIFY(QFileInfo(folder.path("ports/com3")).isSymLink());
        platform::SerialPort port;
        QVERIFY(open(port, 3));
        QVERIFY(ask(port, "R", "r00025").contains("r00025"));
        QTRY_VERIFY(folder.get(QStringLiteral("device/commands.txt")).contains("heard R"));
        QVERIFY(folder.get(QStringLiteral("device/commands.txt")).contains("heard S 025"));
        QCOMPARE(folder.get(QStringLiteral("device/logo.txt")), QByteArray("a logo"));
    }

    void aLogoIsPrintedAndKeptAsAPicture() {
        const TestFolder folder(TestFolder::Store::Missing);
        const simulator::Logo logo = tests::crookedLogo();
        Run run({folder.root(), "--unpaced", "--keep", folder.path("device")});
        QTRY_VERIFY(QFileInfo(folder.path("ports/com3")).isSymLink());
        platform::SerialPort port;
        QVERIFY(open(port, 3));
        ask(port, "L", "l");
        ask(port, logoText(logo) + "\x1b", "+++"); // with its head: no picture
        QTRY_VERIFY(folder.get(QStringLiteral("device/logo.txt")).contains("simulated"));
        QVERIFY(!folder.has(QStringLiteral("device/logo.pbm")));
        ask(port, "L", "l");
        ask(port, logoText(logo).split(' ').last() + "\x1b", "+++");
        QTRY_COMPARE(folder.get(QStringLiteral("device/logo.pbm")), logoPbm(logo));
        QTRY_VERIFY(run.out().contains(QString::fromUtf8(logoPicture(logo))));
    }

    void theLoaderTellsItsTypeAndItsBeacon_data() {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QByteArray>("beacon");
        QTest::addColumn<QByteArray>("type");
        QTest::newRow("rb") << QStringList{"--loader", "rb"} << QByteArray("ooooooooooo") << QByteArray("rb");
        QTest::newRow("kd, large") << QStringList{"--loader", "kd", "--large-beacon"}
                                   << QByteArray("OOOOOOOOO") << QByteArray("kd");
    }

    void theLoaderTellsItsTypeAndItsBeacon() {
        QFETCH(QStringList, options);
        QFETCH(QByteArray, beacon);
        QFETCH(QByteArray, type);
        const TestFolder folder(TestFolder::Store::Missing);
        Run run(QStringList{folder.root()} + options);
        QTRY_VERIFY(QFileInfo(folder.path("ports/com3")).isSymLink());
        platform::SerialPort port;
        QVERIFY(open(port, 3));
        QVERIFY(ask(port, {}, beacon).contains(beacon));
        QVERIFY(ask(port, "1", "R, Enter").contains("type " + type));
        QTRY_VERIFY(run.out().contains(QLatin1String("heard loader 1")));
    }

    void anImageIsKept() {
        const TestFolder folder(TestFolder::Store::Missing);
        Run run({folder.root(), "--unpaced", "--loader", "rb", "--keep", folder.path("device")});
        QTRY_VERIFY(QFileInfo(folder.path("ports/com3")).isSymLink());
        platform::SerialPort port;
        QVERIFY(open(port, 3));
        ask(port, "R1", "REPROG MODE");
        const QByteArray image = '*' + QByteArray(256, 'c');
        ask(port, '&' + image + "&&", "Prog");
        QTRY_COMPARE(folder.get(QStringLiteral("device/image.bin")), image);
        QTRY_VERIFY(run.out().contains(QLatin1String("heard image 257 bytes")));
        port.Output("n");
        QTRY_VERIFY(folder.get(QStringLiteral("device/commands.txt")).contains("heard loader n"));
        ask(port, "Q", "Restart");
        QTRY_VERIFY(run.out().contains(QLatin1String("heard loader Q")));
        QCOMPARE(folder.get(QStringLiteral("device/image.bin")), image);
    }

    void aSpeedOtherThanItsOwnIsGarbage() {
        const TestFolder folder(TestFolder::Store::Missing);
        Run run({folder.root(), "--loader", "rb", "--baud", "38400"});
        QTRY_VERIFY(QFileInfo(folder.path("ports/com3")).isSymLink());
        platform::SerialPort port;
        QVERIFY(open(port, 3));
        QByteArray said;
        QTRY_VERIFY((said += port.Input()).size() >= 11);
        QCOMPARE(said.count('o'), 0);
        port.setSettings(QStringLiteral("38400,n,8,1"));
        QVERIFY(ask(port, {}, "oooo").contains("ooooooooooo"));
    }

    // Each step is sent and waited for: a word of the reply, or what the program prints that it has heard.
    void eachFaultOfTheLoaderCanBeHad_data() {
        QTest::addColumn<QByteArrayList>("sent");
        QTest::addColumn<QByteArrayList>("awaited");
        QTest::addColumn<QByteArray>("never");
        // The sum of it is 5CD2A, and with its mark 5CD50.
        const QByteArray image = "&*" + QByteArray(3840, 'c') + "&&";
        QTest::newRow("drop-out") << QByteArrayList{image} << QByteArrayList{"REPROG MODE"}
                                  << QByteArray("Prog");
        QTest::newRow("early-end") << QByteArrayList{image} << QByteArrayList{"MEMORY C"}
                                   << QByteArray("received");
        QTest::newRow("wrong-sum") << QByteArrayList{image, "&"}
                                   << QByteArrayList{"0005CD4F  Prog", "0005CD4F  Prog"}
                                   << QByteArray("0005CD50");
        QTest::newRow("erased") << QByteArrayList{image, "y"}
                                << QByteArrayList{"0005CD50  Prog", "MEMORY C Programmed"}
                                << QByteArray("MEMORY B Programmed");
        QTest::newRow("wrong-check") << QByteArrayList{image, "y"}
                                     << QByteArrayList{"0005CD50  Prog", "check CD2B\r\n"}
                                     << QByteArray("CD2A");
        QTest::newRow("silent-end") << QByteArrayList{image, "2"}
                                    << QByteArrayList{"heard image 3841 bytes", "0005CD50  Prog"}
                                    << QByteArray("MEMORY");
        QTest::newRow("silent-after-y")
            << QByteArrayList{image, "y", "1", "2"}
            << QByteArrayList{"0005CD50  Prog", "heard programmed", "heard loader 1", "check CD2A\r\n"}
            << QByteArray("R, Enter");
        QTest::newRow("second-go") << QByteArrayList{image, "y"}
                                   << QByteArrayList{"0005CD50  Prog", "OOOOOOOOO"} << QByteArray("8:f");
    }

    void eachFaultOfTheLoaderCanBeHad() {
        QFETCH(QByteArrayList, sent);
        QFETCH(QByteArrayList, awaited);
        QFETCH(QByteArray, never);
        const TestFolder folder(TestFolder::Store::Missing);
        Run run({folder.root(), "--unpaced", "--loader", "rb", "--loader-fault",
                 QString::fromLatin1(QTest::currentDataTag())});
        QTRY_VERIFY(QFileInfo(folder.path("ports/com3")).isSymLink());
        platform::SerialPort port;
        QVERIFY(open(port, 3));
        ask(port, "R1", "REPROG MODE");
        QByteArray all;
        for (qsizetype step = 0; step < sent.size(); ++step) {
            QByteArray reply;
            port.Output(sent[step]);
            QTRY_VERIFY_WITH_TIMEOUT((reply += port.Input()).contains(awaited[step]) ||
                                         run.out().contains(QString::fromLatin1(awaited[step])),
                                     20000);
            all += reply;
        }
        QVERIFY2(!all.contains(never), all);
        QVERIFY(all.contains(awaited.last()));
    }

    void aFolderThatCannotBeWrittenIsToldAndEndsIt() {
        const TestFolder folder(TestFolder::Store::Missing);
        folder.put(QStringLiteral("file"), "no folder");
        Run run({folder.path("file")});
        QCOMPARE(run.waitForEnd(), 1);
        QVERIFY(run.errors().contains(QLatin1String("the port's link can't be made")));
    }

    void itGoesOffTheLineAndComesBack() {
        const TestFolder folder(TestFolder::Store::Missing);
        Run run({folder.root(), "--unpaced", "--vanish", "1"});
        QTRY_VERIFY(QFileInfo(folder.path("ports/com3")).isSymLink());
        QTRY_VERIFY(!QFileInfo(folder.path("ports/com3")).isSymLink());
        QTRY_VERIFY(QFileInfo(folder.path("ports/com3")).isSymLink());
        QTRY_VERIFY(run.out().contains(QLatin1String("back on the line")));
    }
};

QTEST_GUILESS_MAIN(TestKdsim)
#include "test_kdsim.moc"
