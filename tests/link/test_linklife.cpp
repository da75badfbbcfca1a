// The link screen's load and unload, step by step.

#include "link/linklife.h"
#include "link/supervision.h"
#include "session/process.h"
#include "tests/link/fakehost.h"
#include "tests/support/testfolder.h"

#include <QtTest>

using namespace benthor;
using namespace benthor::link;
using namespace benthor::tests;

namespace {

/// Ports 3 and 5 are there.
struct Stage {
    Stage() {
        const auto exists = [](int port) { return port == 3 || port == 5; };
        host.line.portExists = exists;
        for (FakeLine& line : host.scan) {
            line.portExists = exists;
        }
    }
    void load(const QString& screenmode = QString()) {
        process().screenmode = screenmode;
        loadlink(link, host);
    }

    TestFolder folder;
    LinkState link;
    FakeHost host;
};

/// For as long as it lives the working folder is another one.
class WorkingFolder {
public:
    explicit WorkingFolder(const QString& path)
        : before_(QDir::currentPath()) {
        QDir::setCurrent(path);
    }
    ~WorkingFolder() { QDir::setCurrent(before_); }
    WorkingFolder(const WorkingFolder&) = delete;
    WorkingFolder& operator=(const WorkingFolder&) = delete;

private:
    QString before_;
};

} // namespace

class TestLinkLife : public QObject {
    Q_OBJECT

private slots:
    void theTextsAtTheBeginningAreAsTold() {
        Stage stage;
        stage.load();
        QCOMPARE(stage.link.console.username, "Insert your namehere. Max 32char");
        QCOMPARE(stage.link.console.uploadfile, "shark2aa.txt");
        QCOMPARE(stage.link.console.filenameshown, "Find file to open using File menu");
        QCOMPARE(stage.link.console.Command2.text, "Quit");
        QCOMPARE(stage.link.console.option, 10);
        QCOMPARE(stage.link.console.checkedEntry, "mnuQuitKD");
        QVERIFY(stage.link.Text14Visible);
        QCOMPARE(stage.link.infotext, ""); // the menu's hint is for who chose its entry
        QVERIFY(stage.host.mainHints.isEmpty());
        QVERIFY(process().linkidle);
    }

    void searchPortsLeftOpenAreClosedFirst() {
        Stage stage;
        for (const std::size_t index : {1U, 17U, 31U}) {
            stage.host.scan.at(index).open = true;
        }
        stage.load();
        for (const std::size_t index : {1U, 17U, 31U}) {
            QVERIFY(!stage.host.scan.at(index).open);
        }
    }

    void theRememberedPortIsOpenedAndThenTheSearchBegins() {
        Stage stage;
        stage.folder.put("comport.txt", QByteArray("\x01\x00"
                                                   "3",
                                                   3));
        stage.load();
        QCOMPARE(stage.host.line.openings, 1);
        QCOMPARE(stage.host.line.port, 3);
        QVERIFY(!stage.host.line.open); // the search has closed it
        QCOMPARE(stage.link.ComNum, "");
        QCOMPARE(stage.link.AFLabel3.text, "Searching..");
        QVERIFY(stage.host.scan[3].open);
        QVERIFY(stage.host.scan[5].open);
        QVERIFY(!stage.host.scan[4].open);
        QCOMPARE(stage.link.silentticks, 100);
        QVERIFY(stage.link.Timer8);
    }

    void aFaceSendsTheDirectorysCommandAtOnce_data() {
        QTest::addColumn<QString>("screenmode");
        QTest::addColumn<QByteArray>("sent");
        QTest::newRow("hidden") << "" << QByteArray();
        QTest::newRow("one letter") << "D" << QByteArray();
        QTest::newRow("download") << "Dive" << QByteArray("M");
        QTest::newRow("setup") << "Command" << QByteArray("M");
    }

    void aFaceSendsTheDirectorysCommandAtOnce() {
        QFETCH(QString, screenmode);
        QFETCH(QByteArray, sent);
        Stage stage;
        writecomport(QStringLiteral("5"));
        stage.load(screenmode);
        QCOMPARE(stage.host.line.sent, sent);
        QVERIFY(stage.link.Timer2);
    }

    void whatCameWhileLoadingIsForgotten() {
        Stage stage;
        writecomport(QStringLiteral("3"));
        stage.host.line.waiting = "leftover End";
        stage.link.rxbuf.append("older");
        stage.load();
        QVERIFY(stage.link.rxbuf.isEmpty());
        QVERIFY(stage.link.Text4.isEmpty());
    }

    void theTextToSendComesFromTheWorkingFolderAndEndsAt500Bytes() {
        Stage stage;
        const WorkingFolder working(stage.folder.root());
        stage.load();
        QCOMPARE(stage.link.console.Text7, "");
        stage.folder.put("gdata.txt", QByteArray(500, 'a') + "b");
        stage.load();
        QCOMPARE(stage.link.console.Text7, QString(500, QLatin1Char('a')));
        stage.folder.put("gdata.txt", "A079\r\n\xB0");
        stage.load();
        QCOMPARE(stage.link.console.Text7, QString::fromLatin1("A079\r\n\xB0"));
    }

    void unloadRemembersAnotherPort() {
        Stage stage;
        writecomport(QStringLiteral("3"));
        stage.load(QStringLiteral("Dive"));
        setcomnum(stage.link, stage.host, QStringLiteral("5"));
        stage.host.line.sent.clear();
        unloadlink(stage.link, stage.host);
        QCOMPARE(readcomport(), "5");
        QCOMPARE(process().screenmode, "");
        QVERIFY(!stage.host.line.open);
        for (const FakeLine& line : stage.host.scan) {
            QVERIFY(!line.open);
        }
        QCOMPARE(stage.host.line.sent, QByteArray());
    }

    void unloadWithoutAPortLeavesTheRememberedOneUntouched() {
        Stage stage;
        writecomport(QStringLiteral("3"));
        stage.load();
        const QByteArray before = stage.folder.get("comport.txt");
        unloadlink(stage.link, stage.host);
        QCOMPARE(stage.folder.get("comport.txt"), before);
    }
};

QTEST_APPLESS_MAIN(TestLinkLife)
#include "test_linklife.moc"
