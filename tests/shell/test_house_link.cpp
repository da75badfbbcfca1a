// The link screen and the main screen, as the house joins them.

#include "platform/look/look.h"
#include "tests/link/fakehost.h"
#include "tests/shell/housestage.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

using namespace benthor;
using namespace benthor::tests;

namespace {

const QByteArray kDirectory = "ver=V3.12\r\nStart.......812345670\r\nFinish.......812346670\r\nEnd\r\n";

constexpr int kLines = 33;

/// The program past its splash, with a link screen whose lines the test holds.
struct LinkedProgram {
    LinkedProgram()
        : program("Close", TestFolder::Store::Fresh, lines()) {
        program.passSplash();
        expire("main", "Timer1"); // loads the link screen, hidden
    }
    link::LinkLines lines() {
        link::LinkLines made;
        made.make = [this](QObject*, std::function<void()> received) {
            auto line = std::make_unique<FakeLine>();
            line->portExists = [this](int port) { return present_ && port == 3; };
            const int index = made_++ % kLines; // the working line, then search lines 0 to 31
            if (index == 0) {
                working = line.get();
                arrived = std::move(received);
            } else if (index == 4) {
                third = line.get();
            }
            return line;
        };
        return made;
    }
    void hear(const QByteArray& bytes) {
        third->waiting = bytes;
        expire("PC_Link_1", "Timer8");
    }
    void receive(const QByteArray& bytes) {
        working->waiting += bytes;
        arrived();
    }
    /// The adapter of port 3 goes, and comes back.
    void pull() {
        present_ = false;
        working->open = false;
    }
    void plugIn() { present_ = true; }
    /// A device on port 3 with one dive.
    void connectDevice() {
        QTest::mouseClick(control<QWidget>("main", "lbllo"), Qt::LeftButton);
        hear("PPP");
        receive("PPPPPPPP");
        expire("PC_Link_1", "Timer1");
        receive(kDirectory);
        expire("PC_Link_1", "Timer2");
        receive("PPP");
        expire("PC_Link_1", "Timer1");
    }
    QString status() const { return control<QWidget>("main", "lblstatus")->property("text").toString(); }

    FakeLine* working = nullptr;
    FakeLine* third = nullptr;
    std::function<void()> arrived;
    int made_ = 0;
    bool present_ = true;
    Program program;
};

} // namespace

class TestHouseLink : public QObject {
    Q_OBJECT

private slots:
    void theSearchRunsFromTheFirstTickBehindTheHiddenScreen();
    void theMainScreenShowsTheLinksState();
    void aPulledCableShowsOnTheMainScreenUntilItIsBack();
    void portsClosedForReprogrammingStayClosed();
    void aPulledCableInARunLeavesDownloadingOnTheMainScreen();
    void aLoadersBeaconOpensTheFirmwareScreen();
    void aLoadersBeaconInAnImportLetsTheFileInHandEnd();
    void aHintForTheMainScreenStandsThere();
    void saveToDatabaseImportsAtOnce();
    void aRunAnsweredWithYesLeavesTheLinkAndImports();
    void aRunAnsweredWithNoStays();
    void theOtherFaceAndTheWayBack();
    void theDiveListLeadsToTheDownload();
};

void TestHouseLink::theSearchRunsFromTheFirstTickBehindTheHiddenScreen() {
    LinkedProgram linked;
    QVERIFY(loaded("PC_Link_1") != nullptr);
    QVERIFY(!shown("PC_Link_1"));
    QVERIFY(linked.third->open);
    linked.hear("xxPPPxx");
    QVERIFY(linked.working->open);
    QCOMPARE(linked.working->port, 3);
}

void TestHouseLink::theMainScreenShowsTheLinksState() {
    LinkedProgram linked;
    linked.connectDevice();
    QCOMPARE(linked.status(), "Connected");
    QCOMPARE(process().deviceconnected, 0); // the main screen's own tick counts it
    expire("main", "Timer1");
    QCOMPARE(process().deviceconnected, 1);
}

void TestHouseLink::aPulledCableShowsOnTheMainScreenUntilItIsBack() {
    LinkedProgram linked;
    linked.connectDevice();
    expire("main", "Timer1");
    QCOMPARE(process().deviceconnected, 1);
    linked.pull();
    for (int tick = 0; tick < 64; ++tick) {
        expire("PC_Link_1", "Timer1");
    }
    expire("main", "Timer1");
    expire("main", "Timer2");
    QCOMPARE(linked.status(), "Not Connected");
    QCOMPARE(process().deviceconnected, 0);
    QVERIFY(!control<QPushButton>("PC_Link_1", "cmddownloadall")->isEnabled());
    QVERIFY(control<QLabel>("PC_Link_1", "Text14")->text().contains("The adapter of port 3 is gone."));
    linked.plugIn();
    expire("PC_Link_1", "Timer1");
    QVERIFY(linked.working->open);
    QVERIFY(!control<QLabel>("PC_Link_1", "Text14")->text().contains("is gone"));
    linked.receive("PPP");
    expire("PC_Link_1", "Timer1");
    expire("PC_Link_1", "Timer1");
    expire("main", "Timer2");
    QCOMPARE(linked.status(), "Connected");
    QVERIFY(control<QPushButton>("PC_Link_1", "cmddownloadall")->isEnabled());
}

void TestHouseLink::portsClosedForReprogrammingStayClosed() {
    LinkedProgram linked;
    linked.connectDevice();
    control<QAction>("main", "mnuReprog")->trigger();
    QVERIFY(!linked.working->open);
    expire("PC_Link_1", "Timer1");
    QVERIFY(!linked.working->open);
}

void TestHouseLink::aPulledCableInARunLeavesDownloadingOnTheMainScreen() {
    LinkedProgram linked;
    linked.connectDevice();
    control<QPushButton>("PC_Link_1", "cmddownloadall")->click();
    linked.receive("ver=V3.12");
    expire("PC_Link_1", "Timer3");
    linked.pull();
    for (int tick = 0; tick < 64; ++tick) {
        expire("PC_Link_1", "Timer1");
        expire("PC_Link_1", "Timer3");
    }
    expire("main", "Timer2");
    QCOMPARE(control<QLabel>("PC_Link_1", "AFLabel3")->text(), "Not Connected");
    QCOMPARE(linked.status(), "Downloading");
    QVERIFY(control<QLabel>("PC_Link_1", "linesilence")->text().contains("The adapter of port 3 is gone."));
    linked.plugIn();
    linked.program.dialogs.answer(false);
    expire("PC_Link_1", "Timer1");
    linked.receive("\r\nEnd");
    expire("PC_Link_1", "Timer3");
    QVERIFY(linked.program.folder.get(QStringLiteral("new/MyLatestDives1.txt")).contains("ver=V3.12\r\nEnd"));
    QVERIFY(linked.program.dialogs.asked().first().below.endsWith("a hole: Dive1."));
}

void TestHouseLink::aLoadersBeaconOpensTheFirmwareScreen() {
    LinkedProgram linked;
    linked.hear("ooooooooooo");
    QVERIFY(shown("ReProg_Link"));
    QVERIFY(loaded("main") == nullptr);
    QVERIFY(loaded("PC_Link_1") == nullptr);
    QCoreApplication::processEvents();
    QVERIFY(linked.program.ended->isEmpty());
}

void TestHouseLink::aLoadersBeaconInAnImportLetsTheFileInHandEnd() {
    LinkedProgram linked;
    const QByteArray dive = "ver=V2.31\r\nStart=521974517\r\nEnd\r\n";
    for (const char* name : {"new/A1.txt", "new/A2.txt", "new/A3.txt"}) {
        linked.program.folder.put(QLatin1String(name), dive);
    }
    bool heard = false;
    QTimer beacon;
    QObject::connect(&beacon, &QTimer::timeout, [&] {
        if (!heard && process().importing) {
            heard = true;
            linked.hear("OOOOOOOOO");
        }
    });
    beacon.start(0);
    expire("main", "Timer1");
    QVERIFY(heard);
    QVERIFY(shown("ReProg_Link"));
    QVERIFY(loaded("main") == nullptr);
    const QDir waiting(linked.program.folder.path("new"));
    const qsizetype left = waiting.entryList(QDir::Files).size();
    QVERIFY2(left > 0 && left < 3, qPrintable(QString::number(left)));
    QVERIFY(!process().importing);
}

void TestHouseLink::aHintForTheMainScreenStandsThere() {
    LinkedProgram linked;
    linked.connectDevice();
    auto* series = control<QLineEdit>("PC_Link_1", "DiveSeriesName");
    series->setFocus();
    QTest::keyClicks(series, QStringLiteral("R"));
    QVERIFY(control<QWidget>("main", "lbltotaldive")
                ->property("text")
                .toString()
                .contains(QLatin1String("Choose the name of the dive")));
}

void TestHouseLink::saveToDatabaseImportsAtOnce() {
    LinkedProgram linked;
    linked.connectDevice();
    linked.program.folder.put(QStringLiteral("new/A1.txt"), TestFolder::dive(QStringLiteral("minimal.txt")));
    control<QPushButton>("PC_Link_1", "savetodatabase")->click();
    QVERIFY(!linked.program.folder.has(QStringLiteral("new/A1.txt")));
    QVERIFY(linked.program.dialogs.messages().contains(QStringLiteral("Dive(s) put into database.")));
}

void TestHouseLink::aRunAnsweredWithYesLeavesTheLinkAndImports() {
    LinkedProgram linked;
    linked.connectDevice();
    linked.program.dialogs.answer(true);
    control<QPushButton>("PC_Link_1", "cmddownloadall")->click();
    QVERIFY(linked.working->sent.endsWith("D0"));
    linked.receive(TestFolder::dive(QStringLiteral("minimal.txt")));
    expire("PC_Link_1", "Timer3");
    QVERIFY(!shown("PC_Link_1"));
    QVERIFY(shown("main"));
    QCOMPARE(linked.program.dialogs.messages().first(), QStringLiteral("1  Dives Downloaded."));
    QVERIFY(linked.program.dialogs.messages().contains(QStringLiteral("Dive(s) put into database.")));
    QVERIFY(!linked.program.folder.has(QStringLiteral("new/MyLatestDives1.txt")));
}

void TestHouseLink::aRunAnsweredWithNoStays() {
    LinkedProgram linked;
    linked.connectDevice();
    linked.program.dialogs.answer(false);
    control<QPushButton>("PC_Link_1", "cmddownloadall")->click();
    linked.receive(TestFolder::dive(QStringLiteral("minimal.txt")));
    expire("PC_Link_1", "Timer3");
    QVERIFY(shown("PC_Link_1"));
    QVERIFY(linked.program.folder.has(QStringLiteral("new/MyLatestDives1.txt")));
    expire("main", "Timer1"); // nor while the link screen is open
    QVERIFY(linked.program.folder.has(QStringLiteral("new/MyLatestDives1.txt")));
}

void TestHouseLink::theOtherFaceAndTheWayBack() {
    LinkedProgram linked;
    QTest::mouseClick(control<QWidget>("main", "lbllo"), Qt::LeftButton);
    QVERIFY(shown("PC_Link_1"));
    const QString first = loaded("PC_Link_1")->windowTitle();
    QTest::mouseClick(control<QWidget>("PC_Link_1", "Label13"), Qt::LeftButton);
    QVERIFY(shown("PC_Link_1"));
    QVERIFY(loaded("PC_Link_1")->windowTitle() != first);
    QTest::mouseClick(control<QWidget>("PC_Link_1", "Label11"), Qt::LeftButton);
    QVERIFY(loaded("PC_Link_1") == nullptr);
    QVERIFY(shown("main"));
    expire("main", "Timer1");
    QVERIFY(loaded("PC_Link_1") != nullptr);
    QVERIFY(!shown("PC_Link_1"));
}

void TestHouseLink::theDiveListLeadsToTheDownload() {
    LinkedProgram linked;
    linked.program.folder.put(QStringLiteral("new/A1.txt"), TestFolder::dive(QStringLiteral("minimal.txt")));
    expire("main", "Timer1");
    QVERIFY(shown("rbmain"));
    process().importing = true;
    QMetaObject::invokeMethod(loaded("rbmain"), "linkWanted");
    QVERIFY(!shown("PC_Link_1"));
    process().importing = false;
    QMetaObject::invokeMethod(loaded("rbmain"), "linkWanted");
    QVERIFY(shown("PC_Link_1"));
    QCOMPARE(loaded("PC_Link_1")->windowTitle(), "Dive Download");
}

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    look::apply(application);
    TestHouseLink test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_house_link.moc"
