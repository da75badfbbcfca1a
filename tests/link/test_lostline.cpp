// What leaves for a device, byte for byte as it arrives at the other end of a real pseudo-terminal; and what
// leaves where that is cut or takes nothing any more.

#include "link/console.h"
#include "link/supervision.h"
#include "platform/serial/serialport.h"
#include "session/process.h"
#include "tests/link/fakehost.h"
#include "tests/support/pseudoterminal.h"
#include "tests/support/testfolder.h"

#include <QThread>
#include <atomic>

using namespace benthor;
using namespace benthor::link;
using namespace benthor::tests;

namespace {

constexpr int kPort = 3;

class SerialHost : public FakeHost {
public:
    platform::SerialPort& MSComm1() override { return working; }
    platform::SerialPort working;
};

/// A device that answers the letter of a body, and may then stop to take anything, or go away.
class FarEnd {
public:
    enum class Then { ReadOn, TakeNothing, Vanish };

    explicit FarEnd(PseudoTerminal& line)
        : line_(line) {}
    ~FarEnd() { stop(); }
    FarEnd(const FarEnd&) = delete;
    FarEnd& operator=(const FarEnd&) = delete;

    /// From `bytes` received bytes on.
    void start(Then then, qsizetype bytes) {
        thread_.reset(QThread::create([this, then, bytes] { run(then, bytes); }));
        thread_->start();
    }
    void stop() {
        if (thread_) {
            done_ = true;
            thread_->wait();
            thread_.reset();
        }
    }
    /// Behind stop(): all that came, without what only filled the line.
    QByteArray received() const { return QByteArray(received_).replace(PseudoTerminal::kFiller, ""); }

private:
    void run(Then then, qsizetype bytes) {
        while (!done_) {
            received_ += line_.received();
            if (!answered_ && !received_.isEmpty()) {
                answered_ = true;
                line_.send("lbs");
            }
            if (then != Then::ReadOn && received_.size() >= bytes) {
                then == Then::Vanish ? line_.vanish() : line_.fill();
                return;
            }
            QThread::usleep(200);
        }
        for (int empty = 0; empty < 50;) { // the terminal passes on what it holds piece by piece
            const QByteArray rest = line_.received();
            received_ += rest;
            empty = rest.isEmpty() ? empty + 1 : 0;
            QThread::msleep(rest.isEmpty() ? 2 : 0);
        }
    }

    PseudoTerminal& line_;
    QByteArray received_;
    bool answered_ = false;
    std::atomic<bool> done_ = false;
    std::unique_ptr<QThread> thread_;
};

struct Stage {
    Stage() {
        process() = Process();
        terminal.link(folder.root(), kPort);
        terminal.keepNear();
        link.ComNum = QString::number(kPort);
        opencomport(link, host);
        if (!host.working.PortOpen()) {
            qFatal("no port");
        }
        host.working.setSettings(QStringLiteral("921600,n,8,1")); // what is proved here takes no clock
    }
    ~Stage() { process() = Process(); }
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    void open(int option, const QByteArray& bytes) {
        link.console.option = option;
        preparecommand(link);
        folder.put(QStringLiteral("a.bmt"), bytes);
        host.chosenFile = folder.path(QStringLiteral("a.bmt"));
        mnuOpen_click(link, host);
    }
    /// Both ticks that write into the text in hand for the device.
    void beat() {
        link.console.Text7 = QStringLiteral("A079 the setup\x1b");
        refreshtexttosend(link);
        process().uploadtext = QStringLiteral("A079 the gas block");
    }

    TestFolder folder{TestFolder::Store::Missing};
    PseudoTerminal terminal;
    LinkState link;
    SerialHost host;
    FarEnd device{terminal};
};

QByteArray allBytes() {
    QByteArray bytes;
    for (int byte = 0; byte < 256; ++byte) {
        if (static_cast<char>(byte) != PseudoTerminal::kFiller) {
            bytes += static_cast<char>(byte);
        }
    }
    return bytes;
}

QByteArray asBook(QByteArray text) {
    return "B" + text.replace(';', ':').replace('*', ':') + "\x1b * * ";
}

} // namespace

class TestLostLine : public QObject {
    Q_OBJECT

private slots:
    void theFileThatTheBoxNamesArrivesByteForByte() {
        const QByteArray text = allBytes().repeated(20);
        for (const int option : {kChoiceLogo, kChoiceBook}) {
            Stage stage;
            stage.device.start(FarEnd::Then::ReadOn, 0);
            stage.open(option, text);
            stage.beat();
            Command2_click(stage.link, stage.host);
            stage.device.stop();
            QCOMPARE(stage.host.messages, QStringList());
            QCOMPARE(stage.device.received(),
                     option == kChoiceBook ? asBook(text) : QByteArray("L" + text + "\x1b"));
        }
    }

    void theSetupArrivesByteForByte() {
        Stage stage;
        stage.device.start(FarEnd::Then::ReadOn, 0);
        process().uploadtext = QString(226, QLatin1Char('s')) + QLatin1Char('\x1b');
        send_data(stage.link, stage.host);
        stage.device.stop();
        QCOMPARE(stage.device.received(), "G   " + QByteArray(226, 's') + "\x1b\x1b\r\n");
        QCOMPARE(stage.host.messages, QStringList());
    }

    void aBodyEndsWhereTheLineIsLost_data() {
        QTest::addColumn<int>("option");
        QTest::addColumn<bool>("cut");
        for (const bool cut : {false, true}) {
            QTest::newRow(cut ? "logo, cut" : "logo, stuck") << kChoiceLogo << cut;
            QTest::newRow(cut ? "book, cut" : "book, stuck") << kChoiceBook << cut;
        }
    }

    void aBodyEndsWhereTheLineIsLost() {
        QFETCH(int, option);
        QFETCH(bool, cut);
        const QByteArray text = allBytes().repeated(78); // of the 20000 bytes that may be sent
        Stage stage;
        stage.device.start(cut ? FarEnd::Then::Vanish : FarEnd::Then::TakeNothing, 500);
        stage.open(option, text);
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.messages.size(), 1);
        QVERIFY2(stage.host.messages[0].contains(cut ? "was cut" : "took nothing for two seconds"),
                 qPrintable(stage.host.messages[0]));
        QCOMPARE(stage.link.AFLabel3.text, "Not Connected");
        QCOMPARE(stage.host.working.PortOpen(), !cut);
        stage.device.stop();
        QByteArray arrived = stage.device.received();
        if (!cut) { // whatever waited would come now, and does not
            const platform::Written next = stage.host.working.Output("behind");
            QCOMPARE(next, platform::Written::Whole);
            QByteArray later;
            QTRY_VERIFY((later += stage.terminal.received()).endsWith("behind"));
            arrived += later.chopped(6).replace(PseudoTerminal::kFiller, "");
        }
        const QByteArray whole = option == kChoiceBook ? asBook(text) : QByteArray("L" + text + "\x1b");
        QVERIFY(whole.startsWith(arrived));
        QVERIFY(arrived.size() >= 500 && arrived.size() < whole.size());
    }

    void aSetupOnALineThatTakesNothingIsToldAndNothingOfItComesLater() {
        Stage stage;
        stage.terminal.fill();
        process().uploadtext = QString(226, QLatin1Char('s'));
        send_data(stage.link, stage.host);
        QCOMPARE(stage.host.messages.size(), 1);
        QVERIFY(
            stage.host.messages[0].startsWith("The setup was not sent whole: the line to the device took "));
        QCOMPARE(stage.host.working.Output("behind"), platform::Written::Whole);
        QByteArray later;
        QTRY_VERIFY((later += stage.terminal.received()).endsWith("behind"));
        QVERIFY(!later.contains('s') && !later.contains('G'));
    }

    void whatIsSentOnALineCutWhileIdleIsToldAsCut() {
        for (const bool noticed : {true, false}) {
            Stage stage;
            stage.open(kChoiceBook, "a book");
            stage.terminal.vanish();
            if (noticed) {
                QTRY_VERIFY(!stage.host.working.PortOpen());
            }
            Command2_click(stage.link, stage.host);
            QCOMPARE(stage.host.messages.size(), 1);
            QVERIFY(stage.host.messages[0].contains("the line to the device is cut"));
            process().uploadtext = QString(226, QLatin1Char('s'));
            send_data(stage.link, stage.host);
            QCOMPARE(stage.host.messages.size(), 2);
            QVERIFY(
                stage.host.messages[1].startsWith("The setup was not sent: the line to the device is cut."));
            QCOMPARE(stage.link.AFLabel3.text, "Not Connected");
        }
    }

    void aPortThatNobodyOpenedIsSkippedSilently() {
        Stage stage;
        stage.host.working.setPortOpen(false);
        process().uploadtext = QString(226, QLatin1Char('s'));
        send_data(stage.link, stage.host);
        stage.link.console.option = kChoiceQuit;
        preparecommand(stage.link);
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.messages, QStringList());
    }
};

QTEST_GUILESS_MAIN(TestLostLine)
#include "test_lostline.moc"
