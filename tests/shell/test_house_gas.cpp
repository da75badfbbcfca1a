// The gas screen and a device in software, over a real pseudo-terminal.

#include "gas/screens/gasblend.h"
#include "gas/setupchanges.h"
#include "gas/setuptext.h"
#include "link/screens/pc_link_1.h"
#include "link/screens/seriallines.h"
#include "platform/look/look.h"
#include "simulator/demodives.h"
#include "simulator/kdport.h"
#include "tests/shell/housestage.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

using namespace benthor;
using namespace benthor::tests;
using simulator::Kd;
using simulator::KdPort;

namespace {

constexpr int kPort = 3;

/// Its fields whole, but for a comma between the stamp and the first setting.
QByteArray commaText() {
    return "A079 000 0560 1 B001 000 0040 0 C020 000 0070 0 D050 000 0180 0 E060 000 0250 0 F064 000 0280 0 "
           "G068 000 "
           "0330 0 H047 035 0670 0 I036 050 0900 0 J024 065 1170 0 K0000000000,L0 M2 N0 O0 P130 Q0 R0 S1 "
           "T100 U004 "
           "V120 W030 X1 Y1 Z\x1b\r\n";
}

/// The program with a device of that product on port 3, told to be connected.
struct GasProgram {
    explicit GasProgram(const QByteArray& product = "KD3", const QByteArray& lastText = {})
        : program("Close", TestFolder::Store::Fresh, link::serialLines())
        , device(program.folder.root(), kPort, kd(product), KdPort::unpaced) {
        const QByteArray text = lastText.isEmpty() ? QByteArray(commaText()).replace(',', ' ') : lastText;
        program.folder.put("gdatalast.mit", text);
        QDir::setCurrent(program.folder.root());
        device.start();
        program.passSplash();
        // On a slow machine its two seconds go by within a test, and the list of no dives says so in a box.
        control<platform::TickTimer>("main", "Timer4")->setEnabled(false);
        expire("main", "Timer1");
    }

    static Kd kd(const QByteArray& product) {
        Kd made(simulator::deviceDives());
        made.productWord = product;
        return made;
    }

    /// A beat of every timer that matters here.
    bool turnUntil(const std::function<bool()>& done) {
        if (done()) {
            return true; // another beat might lead away from it
        }
        for (const char* const timer : {"Timer8", "Timer1", "Timer2", "Timer6", "Timer7"}) {
            if (loaded("PC_Link_1") != nullptr &&
                control<platform::TickTimer>("PC_Link_1", timer)->isEnabled()) {
                expire("PC_Link_1", timer);
            }
        }
        expire("main", "Timer1");
        if (loaded("GasBlend") != nullptr) {
            expire("GasBlend", "Timer5");
        }
        return done();
    }
    gas::GasBlend* gas() const { return qobject_cast<gas::GasBlend*>(loaded("GasBlend")); }
    QString status() const { return qobject_cast<link::PC_Link_1*>(loaded("PC_Link_1"))->caption(); }

    /// The device is connected, and the main screen's tick has noted it: an update asks both.
    bool linked() const { return status() == QLatin1String("Connected") && process().deviceconnected == 1; }

    /// Until the device's setup stands on the gas screen and the link rests.
    void connectDevice() {
        QTRY_VERIFY_WITH_TIMEOUT(
            turnUntil([this] { return gas() != nullptr && !gas()->plan().Text8_1.isEmpty() && linked(); }),
            60000);
    }
    void showGas() {
        control<QAction>("main", "mnuSetupGas")->trigger();
        QVERIFY(shown("GasBlend"));
        expire("GasBlend", "Timer5");
    }
    /// All that the device has got, when nothing is under way any more. The link asks of itself at its ticks:
    /// they must be held.
    QByteArray settled() {
        QByteArray last;
        do {
            last = device.received();
            QTest::qWait(200); // a byte on the line would be there by then
        } while (device.received() != last);
        return last;
    }
    QByteArray setupInDevice() {
        QByteArray setup;
        device.with([&setup](Kd& one) { setup = one.memory.setup; });
        return setup;
    }

    Program program;
    KdPort device;
};

template <class T> T* onGas(const char* name) {
    return control<T>("GasBlend", name);
}

void type(const char* name, const QString& text) {
    auto* box = onGas<QLineEdit>(name);
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, text);
}

} // namespace

class TestHouseGas : public QObject {
    Q_OBJECT

private slots:
    void theSetupComesWithTheDirectory();
    void aSetupIsSentKeptOverARestartAndReadBackTheSame();
    void aTextThatMustNotGoLeavesNotOneByte();
    void withoutADeviceNotOneByteLeaves();
    void aWrongCellLeavesNotOneByteByAnyRoad();
    void theLinkSendsNoSetupThatTheScreenShowsNoLonger();
    void aDownloadIsNotAskedInto();
    void readingsComeOnRequestAndUnasked();
    void theProductIsAskedForWhereTheDeviceDoesNotSay();
    void aDeviceThatTellsItsProductIsNotAskedFor();
    void theHudValuesStandOnTheLinkScreen();
    void aBookGoesOutAsItIsWhileTheGasScreenIsOpen();
    void gasUploadOfTheMenuIsTheUpdateOfTheGasScreen();
};

void TestHouseGas::theSetupComesWithTheDirectory() {
    GasProgram world;
    world.connectDevice();
    QVERIFY(!shown("GasBlend"));
    QVERIFY(world.program.folder.has("gdatalastrec.mit"));
    world.showGas();
    QCOMPARE(onGas<QLineEdit>("Text2(7)")->text(), "35");
    QVERIFY(onGas<QCheckBox>("Check1(7)")->isChecked());
    QCOMPARE(onGas<QLineEdit>("sptext")->text(), "1.30");
    QCOMPARE(onGas<QLabel>("Label22")->text(), "KD");
    QCOMPARE(onGas<QLabel>("Label7")->text(), "Connected");
    QVERIFY2(world.program.dialogs.messages().isEmpty(),
             qPrintable(world.program.dialogs.messages().join(u"/")));
}

void TestHouseGas::aSetupIsSentKeptOverARestartAndReadBackTheSame() {
    GasProgram world;
    world.connectDevice();
    world.showGas();
    type("Text1(7)", QStringLiteral("16"));
    type("Text2(7)", QStringLiteral("40"));
    onGas<QCheckBox>("Check1(4)")->click();
    onGas<QPushButton>("Command4(0)")->click();
    onGas<QCheckBox>("Check2(2)")->click();
    expire("GasBlend", "Timer5");
    const gas::GasPlan sent = world.gas()->plan();
    QCOMPARE(sent.settings.sptext, "1.25");
    QCOMPARE(sent.Text7.size(), 226);
    QTRY_VERIFY_WITH_TIMEOUT(world.turnUntil([&world] { return world.linked(); }), 30000);
    const QString text = world.gas()->plan().Text7;
    world.program.dialogs.answer(true); // the gas made active is deeper than Max PPO2
    onGas<QPushButton>("Command1")->click();
    QVERIFY(shown("PC_Link_1"));
    QTRY_VERIFY(world.setupInDevice() == text.toLatin1());
    QVERIFY(world.program.dialogs.asked().last().noIsDefault);
    QVERIFY(world.device.received().contains("G   " + text.toLatin1() + "\x1b\x1b\r\n"));
    QCOMPARE(world.program.dialogs.messages(), QStringList());

    // The device goes off and comes back; what it then reports is what it was sent.
    world.device.stop();
    QVERIFY(QFile::remove(world.program.folder.path("gdatalastrec.mit")));
    world.device.start();
    control<QAction>("PC_Link_1", "mnuFindKD")->trigger();
    QTRY_VERIFY_WITH_TIMEOUT(world.turnUntil([&world] {
        return world.program.folder.has("gdatalastrec.mit") && world.status() == QLatin1String("Connected");
    }),
                             30000);
    const gas::GasPlan back = world.gas()->plan();
    for (size_t i = 0; i < back.rows.size(); ++i) {
        QCOMPARE(back.rows[i].O2, sent.rows[i].O2);
        QCOMPARE(back.rows[i].He, sent.rows[i].He);
        QCOMPARE(back.rows[i].active, sent.rows[i].active);
    }
    QCOMPARE(back.settings.sptext, sent.settings.sptext);
    QCOMPARE(back.settings.silent, sent.settings.silent);
    QCOMPARE(back.settings.closed, sent.settings.closed);
    QCOMPARE(back.start, sent.start);
    QVERIFY(gas::setupchanges(back.Text8_1.mid(back.Text8_1.indexOf(QLatin1Char('A'))), text).isEmpty());
}

void TestHouseGas::aTextThatMustNotGoLeavesNotOneByte() {
    GasProgram world("KD3", commaText());
    world.connectDevice();
    world.showGas();
    QVERIFY(world.gas()->plan().Text7.contains(QLatin1Char(',')));
    const platform::TickHold hold;
    const QByteArray before = world.settled();
    onGas<QPushButton>("Command1")->click();
    QCOMPARE(
        world.program.dialogs.messages(),
        QStringList{"Bad data - probably caused by incompatible language version!\r\nNo data updated!,,"});
    QCOMPARE(world.settled(), before);
}

void TestHouseGas::withoutADeviceNotOneByteLeaves() {
    GasProgram world;
    world.connectDevice();
    world.showGas();
    process().deviceconnected = 0;
    const platform::TickHold hold;
    const QByteArray before = world.settled();
    onGas<QPushButton>("Command1")->click();
    QCOMPARE(world.program.dialogs.messages(),
             QStringList{"KD/Tolby not connected!\r\nSave to file using File menu.."});
    QCOMPARE(world.settled(), before);
}

void TestHouseGas::aWrongCellLeavesNotOneByteByAnyRoad() {
    GasProgram world;
    world.connectDevice();
    world.showGas();
    const QByteArray own = world.setupInDevice();
    onGas<QPushButton>("Command1")->click(); // goes; the link's command is the setup's from now on
    QTRY_VERIFY(world.setupInDevice() != own);
    QTRY_VERIFY_WITH_TIMEOUT(world.turnUntil([&world] { return world.linked(); }), 30000);
    world.program.dialogs.clear();
    const QByteArray before = world.setupInDevice();
    type("Text3(0)", QStringLiteral("12m"));
    onGas<QPushButton>("Command1")->click();
    QCOMPARE(world.program.dialogs.messages().size(), 1);
    for (const char* const button : {"Command2", "Command5"}) {
        process().uploadtext = world.gas()->plan().Text7 + QStringLiteral("\x1b");
        const platform::TickHold hold;
        const QByteArray received = world.settled();
        world.program.dialogs.clear();
        control<QAbstractButton>("PC_Link_1", button)->click();
        QCOMPARE(world.program.dialogs.messages().size(), 1);
        QVERIFY(world.program.dialogs.messages().first().contains(QLatin1String("Gas 0, MOD")));
        QCOMPARE(world.settled(), received);
    }
    QCOMPARE(world.setupInDevice(), before);
}

void TestHouseGas::theLinkSendsNoSetupThatTheScreenShowsNoLonger() {
    GasProgram world;
    world.connectDevice();
    world.showGas();
    onGas<QPushButton>("Command1")->click();
    QTRY_VERIFY_WITH_TIMEOUT(world.device.received().contains("\x1b\x1b\r\n"), 30000);
    QTRY_VERIFY_WITH_TIMEOUT(world.turnUntil([&world] { return world.linked(); }), 30000);
    world.program.dialogs.clear();
    process().uploadtext = world.gas()->plan().Text7 + QStringLiteral("\x1b");
    type("Text3(0)", QStringLiteral("40"));
    const platform::TickHold hold;
    const QByteArray received = world.settled();
    control<QAbstractButton>("PC_Link_1", "Command5")->click();
    QCOMPARE(world.program.dialogs.messages().size(), 1);
    QVERIFY(world.program.dialogs.messages().first().contains(
        QLatin1String("not what the gas screen shows, at: Gas 0")));
    QCOMPARE(world.settled(), received);
}

void TestHouseGas::aDownloadIsNotAskedInto() {
    GasProgram world;
    world.connectDevice();
    world.showGas();
    control<QAbstractButton>("PC_Link_1", "cmddownloadall")->click();
    QVERIFY(control<platform::TickTimer>("PC_Link_1", "Timer3")->isEnabled());
    const QByteArray received = world.device.received();
    QTest::mouseClick(onGas<QWidget>("Picture1"), Qt::LeftButton);
    QTest::mouseClick(onGas<QWidget>("Label15"), Qt::LeftButton);
    QVERIFY(!world.device.received().mid(received.size()).contains('M'));
    QVERIFY(control<platform::TickTimer>("PC_Link_1", "Timer3")->isEnabled());
    expire("GasBlend", "Timer5");
    QVERIFY(!onGas<QWidget>("Picture1")->isEnabled());
}

void TestHouseGas::readingsComeOnRequestAndUnasked() {
    GasProgram world;
    world.connectDevice();
    world.showGas();
    QTest::mouseClick(control<QWidget>("PC_Link_1", "Picture14(11)"), Qt::LeftButton);
    QTRY_VERIFY(world.turnUntil([] { return onGas<QLabel>("Label16(0)")->text() == QLatin1String("9.38"); }));
    QVERIFY(onGas<QLabel>("Label16(21)")->text().startsWith(QLatin1String("SURFACE"))); // with its line end
    QVERIFY(!onGas<QLabel>("Label16(21)")->isHidden());
    QVERIFY(onGas<QLabel>("Label16(22)")->isHidden());
    QVERIFY(!control<platform::TickTimer>("PC_Link_1", "Timer6")->isEnabled());
    world.device.with([](Kd& one) {
        one.readings.depthcount = 320;
        one.readings.alarms = {"ASCENT", "LOWBATT"};
        one.unaskedMilliseconds = 200;
    });
    QTRY_VERIFY(
        world.turnUntil([] { return onGas<QLabel>("Label16(0)")->text() == QLatin1String("30.00"); }));
    QCOMPARE(onGas<QLabel>("Label16(1)")->text(), "98.4");
    QVERIFY(!onGas<QLabel>("Label16(22)")->isHidden());
}

void TestHouseGas::theProductIsAskedForWhereTheDeviceDoesNotSay() {
    GasProgram world("");
    for (const bool answer : {false, true}) {
        world.program.dialogs.answer(answer);
    }
    QTRY_VERIFY_WITH_TIMEOUT(world.turnUntil([] { return process().producttype != QLatin1String("OTHER"); }),
                             20000);
    QCOMPARE(process().producttype, "TRAX");
    QCOMPARE(world.program.dialogs.asked().size(), 2);
    QCOMPARE(world.program.dialogs.asked().first().title, "Product Type");
    QVERIFY(world.program.dialogs.asked().first().below.contains("does not tell its type"));
}

void TestHouseGas::aDeviceThatTellsItsProductIsNotAskedFor() {
    for (const char* const product : {"KD3", "TRAX", "HALV"}) {
        GasProgram world(product);
        world.connectDevice();
        QCOMPARE(process().producttype, product);
        for (const auto& asked : world.program.dialogs.asked()) {
            QVERIFY2(asked.title != QLatin1String("Product Type"), product);
        }
    }
}

void TestHouseGas::theHudValuesStandOnTheLinkScreen() {
    GasProgram world;
    world.connectDevice();
    control<QAction>("main", "cmdcommandsend")->trigger();
    control<QAction>("PC_Link_1", "mnuHud")->trigger();
    const auto box = [](const char* name) {
        return control<QWidget>("PC_Link_1", name)->property("text").toString();
    };
    // One tick looks for the answer to a click; where it comes behind that tick the diver asks again.
    const auto askAndRead = [&] {
        QTest::mouseClick(control<QWidget>("PC_Link_1", "Picture14(1)"), Qt::LeftButton);
        const auto* link = qobject_cast<link::PC_Link_1*>(loaded("PC_Link_1"));
        const bool answered =
            QTest::qWaitFor([link] { return link->state().rxbuf.bytes().contains("E160"); }, 5000);
        return answered && world.turnUntil([&box] { return box("Text16(6)") == QLatin1String("1.60"); });
    };
    QTRY_VERIFY(askAndRead());
    QCOMPARE(box("Text16(2)"), "6");
    QCOMPARE(box("Text16(3)"), "0.40");
    QCOMPARE(box("Text16(4)"), "0.70");
    QCOMPARE(box("Text16(5)"), "1.40");
}

/// The gas screen writes its block into the text in hand each second.
void TestHouseGas::aBookGoesOutAsItIsWhileTheGasScreenIsOpen() {
    GasProgram world;
    world.connectDevice();
    world.showGas();
    const QByteArray book = "A book of two lines\r\nand an end.";
    const QByteArray logo = "0123456789ABCDEF";
    world.program.folder.put("book.txt", book);
    world.program.folder.put("mine.bmt", "A head  " + logo);
    const auto sent = [&world](const char* entry, const char* file) {
        control<QAction>("PC_Link_1", entry)->trigger();
        world.program.dialogs.answerFile(world.program.folder.path(QLatin1String(file)));
        control<QAction>("PC_Link_1", "mnuOpen")->trigger();
        world.turnUntil([] { return true; });
        expire("GasBlend", "Timer5");
        const qsizetype before = world.device.received().size();
        control<QPushButton>("PC_Link_1", "Command2")->click();
        const auto last = [&world] { return world.device.received().right(1); };
        return [&world, last, before] {
            return last() == "\x1b" || last() == " " ? world.device.received().sliced(before) : QByteArray();
        };
    };
    control<QAction>("main", "cmdcommandsend")->trigger();
    const auto first = sent("mnuBookUp", "book.txt");
    QTRY_COMPARE(first(), "B" + book + "\x1b * * ");
    QTRY_VERIFY_WITH_TIMEOUT(world.turnUntil([&world] { return world.linked(); }), 30000);
    const auto second = sent("mnuLogo", "mine.bmt");
    QTRY_COMPARE(second(), "L" + logo + "\x1b");
    world.device.with([&](Kd& kd) {
        QCOMPARE(kd.memory.book, book);
        QCOMPARE(kd.memory.logo, logo);
    });
}

void TestHouseGas::gasUploadOfTheMenuIsTheUpdateOfTheGasScreen() {
    GasProgram world;
    world.connectDevice();
    world.showGas();
    type("Text1(7)", QStringLiteral("16"));
    type("Text2(7)", QStringLiteral("40"));
    expire("GasBlend", "Timer5");
    QTRY_VERIFY_WITH_TIMEOUT(world.turnUntil([&world] { return world.linked(); }), 30000);
    control<QAction>("main", "cmdcommandsend")->trigger();
    control<QAction>("PC_Link_1", "mnuGasUp")->trigger();
    const qsizetype before = world.device.received().size();
    world.program.dialogs.answer(true); // the gas that was changed is deeper than Max PPO2
    control<QPushButton>("PC_Link_1", "Command2")->click();
    QVERIFY(world.program.dialogs.asked().last().noIsDefault);
    const QByteArray text = world.gas()->plan().Text7.toLatin1();
    QTRY_COMPARE(world.device.received().sliced(before), "G   " + text + "\x1b\x1b\r\n");
    QCOMPARE(world.setupInDevice(), text);
    QVERIFY(text.contains("H044 040 "));
}

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    look::apply(application);
    TestHouseGas test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_house_gas.moc"
