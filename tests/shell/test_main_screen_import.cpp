#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/wholelabel.h"
#include "platform/screen/ticktimer.h"
#include "shell/newfolderwatch.h"
#include "tests/shell/mainstage.h"

#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>

using benthor::process;
using benthor::shell::MainScreen;
using namespace benthor::tests;

namespace {

/// Runs `act` once, at the first yield of an import that is under way.
class InImport {
public:
    explicit InImport(std::function<void()> act)
        : act_(std::move(act)) {
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] {
            if (process().importing) {
                timer_.stop();
                act_();
            }
        });
        timer_.start(0);
    }
    bool done() const { return !timer_.isActive(); }

private:
    std::function<void()> act_;
    QTimer timer_;
};

} // namespace

class TestMainScreenImport : public QObject {
    Q_OBJECT

private slots:
    void waitingFilesAreImportedByTheTick();
    void afterTheFirstImportThePanelLeadsToTheDives();
    void filesWaitWhileTheLinkScreenIsInFront();
    void whatCameWhileConnectedComesInOnceTheStatusLeavesIt();
    void aSecondClickInAnImportChangesNothing_data();
    void aSecondClickInAnImportChangesNothing();
    void theFrameStandsForTheWholeRunHoweverItBegins_data();
    void theFrameStandsForTheWholeRunHoweverItBegins();
    void theWordsAboutAFileAreNeverCut();
    void theBarIsAProportion();
    void afterAStopTheCardSaysHowManyWait();
    void theListScrollsToWhatCameIn();
    void theBlueOfTheEntryIsTakenBackWhileFilesWait();
    void aFileLeftBehindDoesNotStartAnotherImport();
    void anEmptyFolderTurnsTheButtonRedAndTheCaptionBlue();
    void theTickSetsDeviceConnectedFromTheExactCaption();
    void ticksPauseWhileAnImportRuns();
    void anImportPutsTheDiveListAside();
    void databaseUpdateWithoutFilesTurnsTheButtonRed();
    void stopImportEndsTheRunAfterTheFileInHand();
    void closingTheScreenDuringAnImportEndsItAfterTheFileInHand();
    void aListInSightIsShownAfreshWhereARunEndsBeforeItsTime();
    void aFileWithoutVersionIsNamedAndMovedAside();
    void aFileThatCannotBeMovedAsideIsTold();
    void whatIsPassedByIsNamedOnTheCard();
    void theFirstPassPaintsAndLetsKeysAndTicksWait();
    void theEndBoxNamesAProfileThatIsNotInItsPlace();
    void manualFindImportsTheChosenFile();
    void manualFindTakesATextFileInAnyCase();
    void manualFindRefusesAnotherExtension();
    void manualFindPassesACancelledDialogInSilence();
};

void TestMainScreenImport::waitingFilesAreImportedByTheTick() {
    MainStage stage;
    stage.main->showScreen();
    stage.folder.put("new/b.txt", TestFolder::dive("typical.txt"));
    stage.folder.put("new/a.txt", TestFolder::dive("three-commas.txt"));
    stage.neighbours.asked.clear();
    QSignalSpy unloaded(stage.main.data(), &MainScreen::unloaded);
    stage.main->Timer1_tick();
    QCOMPARE(stage.dialogs.messages(), QStringList{"Dive(s) put into database."});
    QCOMPARE(stage.main->infochoice(), 2);
    auto rows = process().database.openRecordset("SELECT * FROM main ORDER BY diveid");
    QCOMPARE(rows.recordCount(), 2);
    QCOMPARE(rows.value(u"Location").text(), "a.txt");
    QVERIFY(!stage.folder.has("new/a.txt"));
    QVERIFY(stage.folder.has("old/a.txt"));
    QVERIFY(!stage.control("Frame2")->isVisible());
    QCOMPARE(stage.control<QLabel>("lbltotalfiles")->text(), "2");
    QCOMPARE(stage.control<QLabel>("lbltotalsizes")->text(),
             QString::number(TestFolder::dive("typical.txt").size() +
                             TestFolder::dive("three-commas.txt").size()));
    QCOMPARE(stage.control<QListWidget>("List1")->count(), 2);
    QCOMPARE(stage.main->filewatchcount(), 0);
    QCOMPARE(stage.command4(), kRed);
    QVERIFY(!process().importing);
    // Shown afresh by the run, and again by the tick, since it is not on screen.
    QCOMPARE(stage.neighbours.asked,
             (QStringList{"unloadDiveList", "showDiveList", "unloadDiveList", "showDiveList"}));
}

/// The entry of the import has no words of its own, so that the panel would be bare.
void TestMainScreenImport::afterTheFirstImportThePanelLeadsToTheDives() {
    MainStage stage;
    stage.main->showScreen();
    QVERIFY(!stage.control("nextdive")->isVisible());
    stage.folder.put("new/a.txt", TestFolder::dive("typical.txt"));
    stage.main->Timer1_tick();
    QVERIFY(!stage.control("firstdive")->isVisible());
    QVERIFY(stage.control("nextdive")->isVisible());
    stage.neighbours.asked.clear();
    stage.click("nextmydives");
    QVERIFY(stage.neighbours.asked.contains(QLatin1String("showDiveList")));
    QCOMPARE(stage.control<QLabel>("Label7")->text(), "My Dives");
    QVERIFY(stage.control("Label7")->isVisible());
    QVERIFY(!stage.control("nextdive")->isVisible());
}

void TestMainScreenImport::filesWaitWhileTheLinkScreenIsInFront() {
    MainStage stage;
    stage.main->showScreen();
    stage.neighbours.linkOnScreen = true;
    stage.neighbours.linkCaption = QStringLiteral("Connected");
    stage.folder.put("new/a.txt", TestFolder::dive("typical.txt"));
    stage.main->Timer1_tick();
    QVERIFY(stage.folder.has("new/a.txt"));
    QCOMPARE(stage.command4(), kGreen);
    QVERIFY(stage.control("Command4")->isEnabled());
    QCOMPARE(stage.main->filewatchcount(), 0);
    stage.neighbours.linkOnScreen = false;
    stage.main->Timer1_tick();
    QVERIFY(!stage.folder.has("new/a.txt"));
}

void TestMainScreenImport::whatCameWhileConnectedComesInOnceTheStatusLeavesIt() {
    MainStage stage;
    stage.main->showScreen();
    // One that no import takes is counted before the device is there.
    stage.folder.put("new/left.txt", TestFolder::dive("no-ver-no-recint.txt"));
    stage.main->Timer1_tick();
    QCOMPARE(stage.main->filewatchcount(), 1);
    stage.neighbours.linkOnScreen = true;
    stage.neighbours.linkCaption = QStringLiteral("Connected");
    QVERIFY(QFile::remove(stage.folder.path("new/left.txt")));
    stage.main->Timer1_tick();
    QCOMPARE(stage.main->filewatchcount(), 0); // a fall is taken over
    stage.folder.put("new/a.txt", TestFolder::dive("typical.txt"));
    stage.main->Timer1_tick();
    stage.main->Timer1_tick();
    QVERIFY(stage.folder.has("new/a.txt"));
    stage.neighbours.linkCaption = QStringLiteral("Searching");
    stage.main->Timer1_tick();
    QVERIFY(!stage.folder.has("new/a.txt"));
}

void TestMainScreenImport::aSecondClickInAnImportChangesNothing_data() {
    QTest::addColumn<QByteArray>("entry");
    QTest::newRow("update") << QByteArray("lblmdu(1)");
    QTest::newRow("find") << QByteArray("lblmdff");
    QTest::newRow("find, button") << QByteArray("Command3");
}

void TestMainScreenImport::aSecondClickInAnImportChangesNothing() {
    QFETCH(const QByteArray, entry);
    MainStage stage;
    stage.main->showScreen();
    for (const char* name : {"new/a.txt", "new/b.txt"}) {
        stage.folder.put(name, TestFolder::dive("typical.txt"));
    }
    stage.dialogs.answerFile(stage.folder.path("old/a.txt"));
    stage.neighbours.asked.clear();
    const InImport click([&] {
        const int choice = stage.main->infochoice();
        if (entry == "Command3") {
            emit stage.control<QPushButton>("Command3")->clicked();
        } else {
            emit stage.control<benthor::look::ClickableLabel>(entry.constData())->clicked();
        }
        QVERIFY(stage.control("Frame2")->isVisible());
        QVERIFY(stage.dialogs.asked().isEmpty());
        QCOMPARE(stage.main->infochoice(), choice);
        stage.action("cmdcommandsend")->trigger();
        QVERIFY(!stage.neighbours.asked.contains("showLink"));
    });
    stage.main->Timer1_tick();
    QVERIFY(click.done());
    QCOMPARE(stage.dialogs.messages(), QStringList{"Dive(s) put into database."});
    QVERIFY(!stage.control("Frame2")->isVisible());
    QVERIFY(!stage.folder.has("new/b.txt"));
}

void TestMainScreenImport::theFrameStandsForTheWholeRunHoweverItBegins_data() {
    QTest::addColumn<QByteArray>("starter");
    for (const char* starter : {"lblmdu(1)", "Command4", "lblmdff", ""}) {
        QTest::newRow(*starter == '\0' ? "tick" : starter) << QByteArray(starter);
    }
}

void TestMainScreenImport::theFrameStandsForTheWholeRunHoweverItBegins() {
    QFETCH(const QByteArray, starter);
    MainStage stage;
    stage.main->showScreen();
    stage.folder.put("old/a.txt", TestFolder::dive("typical.txt"));
    stage.dialogs.answerFile(stage.folder.path("old/a.txt"));
    if (starter != "lblmdff") {
        stage.folder.put("new/b.txt", TestFolder::dive("typical.txt"));
    }
    bool stood = false;
    const InImport look(
        [&] { stood = stage.control("Frame2")->isVisible() && stage.control("lblprogress")->isVisible(); });
    if (starter.isEmpty()) {
        stage.main->Timer1_tick();
    } else if (starter == "Command4") {
        stage.control("Command4")->setEnabled(true);
        emit stage.control<QPushButton>("Command4")->clicked();
    } else {
        stage.click(starter.constData());
    }
    QVERIFY(stood);
    QVERIFY(!stage.control("Frame2")->isVisible());
}

void TestMainScreenImport::theWordsAboutAFileAreNeverCut() {
    MainStage stage;
    stage.main->resize(stage.main->minimumSize());
    stage.main->showScreen();
    const QString name = QString(200, u'n') + QStringLiteral(".txt");
    stage.folder.put(QStringLiteral("new/") + name, TestFolder::dive("typical.txt"));
    bool whole = false;
    const InImport look([&] {
        auto* words = stage.control<benthor::look::WholeLabel>("lblprogress");
        QCoreApplication::sendPostedEvents();
        whole = words->height() >= words->heightForWidth(words->width()) &&
                words->mapTo(stage.main, words->rect().bottomRight()).x() < stage.main->width();
    });
    stage.folder.put("new/a.txt", TestFolder::dive("typical.txt"));
    stage.main->Timer1_tick();
    QVERIFY(whole);
}

void TestMainScreenImport::theBarIsAProportion() {
    MainStage stage;
    stage.main->showScreen();
    for (const char* name : {"new/a.txt", "new/b.txt", "new/c.txt"}) {
        stage.folder.put(name, TestFolder::dive("typical.txt"));
    }
    auto* bar = stage.control<QProgressBar>("importbar");
    QList<int> values;
    connect(bar, &QProgressBar::valueChanged, bar, [&values](int value) { values += value; });
    stage.dialogs.during([&] { QCOMPARE(bar->value(), bar->maximum()); });
    stage.main->Timer1_tick();
    QCOMPARE(bar->maximum(), 6); // three files, each kept and stored
    QVERIFY(std::is_sorted(values.begin(), values.end()));
    QCOMPARE(values.last(), 6);
    QVERIFY(values.size() >= 5);
}

void TestMainScreenImport::afterAStopTheCardSaysHowManyWait() {
    MainStage stage;
    stage.main->showScreen();
    for (const char* name : {"new/a.txt", "new/b.txt", "new/c.txt"}) {
        stage.folder.put(name, TestFolder::dive("typical.txt"));
    }
    const InImport stop([&] {
        stage.control<QPushButton>("stopimport")->setEnabled(true);
        stage.control<QPushButton>("stopimport")->click();
    });
    QString said;
    stage.dialogs.during([&] { said = stage.control<QLabel>("lblwaiting")->text(); });
    stage.main->Timer1_tick();
    const int left = static_cast<int>(QDir(stage.folder.path("new")).entryList(QDir::Files).size());
    QVERIFY(left > 0);
    const QString words = QStringLiteral("Stopped: ") + benthor::shell::waitingText(left);
    QCOMPARE(said, words);
    QCOMPARE(stage.control<QLabel>("lblwaiting")->text(), words);
    QCOMPARE(stage.dialogs.messages(), QStringList{"Dive(s) put into database."});
    QCOMPARE(stage.dialogs.asked().first().below, QString());
    stage.click("Command4");
    QCOMPARE(stage.control<QLabel>("lblwaiting")->text(), "No files wait");
}

void TestMainScreenImport::theListScrollsToWhatCameIn() {
    MainStage stage;
    stage.main->showScreen();
    stage.folder.put("new/a.txt", TestFolder::dive("typical.txt"));
    stage.folder.put("new/b.txt", TestFolder::dive("typical.txt"));
    stage.main->Timer1_tick();
    QCOMPARE(stage.neighbours.scrolledTo, (QStringList{"D0000001", "D0000002"}));
}

void TestMainScreenImport::theBlueOfTheEntryIsTakenBackWhileFilesWait() {
    MainStage stage;
    stage.main->showScreen();
    stage.main->Timer1_tick();
    auto* caption = stage.control<benthor::look::ClickableLabel>("lblmdu(1)");
    QCOMPARE(caption->toldColour(), QColor(0, 0, 255));
    stage.neighbours.linkOnScreen = true;
    stage.neighbours.linkCaption = QStringLiteral("Connected");
    stage.folder.put("new/a.txt", TestFolder::dive("typical.txt"));
    stage.main->Timer1_tick();
    QVERIFY(!caption->toldColour().isValid());
}

void TestMainScreenImport::aFileLeftBehindDoesNotStartAnotherImport() {
    MainStage stage;
    stage.main->showScreen();
    stage.folder.put("new/a.txt", TestFolder::dive("no-ver-no-recint.txt"));
    stage.main->Timer1_tick();
    QCOMPARE(stage.dialogs.messages(), QStringList{"Version or Interval not found !"});
    QCOMPARE(stage.main->filewatchcount(), 1);
    QCOMPARE(stage.command4(), kGreen);
    stage.main->Timer1_tick();
    QCOMPARE(stage.dialogs.messages().size(), 1);
    stage.folder.put("new/b.txt", TestFolder::dive("typical.txt"));
    stage.main->Timer1_tick();
    QCOMPARE(stage.dialogs.messages().size(), 2);
}

void TestMainScreenImport::anEmptyFolderTurnsTheButtonRedAndTheCaptionBlue() {
    MainStage stage;
    stage.main->showScreen();
    stage.main->Timer1_tick();
    QCOMPARE(stage.command4(), kRed);
    QVERIFY(!stage.control("Command4")->isEnabled());
    QVERIFY(!stage.control("Picture9")->isVisible());
    auto* caption = stage.control("lblmdu(1)");
    QCOMPARE(qobject_cast<benthor::look::ClickableLabel*>(caption)->toldColour(), QColor(0, 0, 255));
}

void TestMainScreenImport::theTickSetsDeviceConnectedFromTheExactCaption() {
    MainStage stage;
    stage.main->load();
    stage.neighbours.linkCaption = QStringLiteral("Connected");
    stage.main->Timer1_tick();
    QCOMPARE(process().deviceconnected, 1);
    stage.neighbours.linkCaption = QStringLiteral("Not Connected");
    stage.main->Timer1_tick();
    QCOMPARE(process().deviceconnected, 0);
    QCOMPARE(stage.neighbours.tipsPlaced, 2);
}

void TestMainScreenImport::ticksPauseWhileAnImportRuns() {
    MainStage stage;
    stage.main->load();
    process().importing = true;
    stage.neighbours.linkCaption = QStringLiteral("Connected");
    stage.main->Timer1_tick();
    stage.main->Timer2_tick();
    QCOMPARE(process().deviceconnected, 0);
    QCOMPARE(stage.control<QLabel>("lblstatus")->text(), "Searching");
    QCOMPARE(stage.neighbours.tipsPlaced, 0);
}

void TestMainScreenImport::anImportPutsTheDiveListAside() {
    MainStage stage;
    stage.main->showScreen();
    stage.folder.put("new/a.txt", TestFolder::dive("typical.txt"));
    stage.main->Timer1_tick();
    QVERIFY(!stage.control<benthor::platform::TickTimer>("Timer4")->isEnabled());
}

void TestMainScreenImport::databaseUpdateWithoutFilesTurnsTheButtonRed() {
    MainStage stage;
    stage.main->showScreen();
    stage.click("lblmdu(1)");
    QCOMPARE(stage.command4(), kRed);
    QVERIFY(!stage.control("Command4")->isEnabled());
    QVERIFY(!stage.control("Frame2")->isVisible());
    QVERIFY(stage.dialogs.asked().isEmpty());
}

void TestMainScreenImport::stopImportEndsTheRunAfterTheFileInHand() {
    MainStage stage;
    stage.main->showScreen();
    for (const char* name : {"new/a.txt", "new/b.txt", "new/c.txt"}) {
        stage.folder.put(name, TestFolder::dive("typical.txt"));
    }
    auto* stop = stage.control<QPushButton>("stopimport");
    QVERIFY(!stop->isEnabled());
    // The click comes with the events that run once a file; the first file begins before the button is
    // enabled.
    int yields = 0;
    QTimer clicks;
    connect(&clicks, &QTimer::timeout, stop, [&] {
        ++yields;
        if (stop->isEnabled()) {
            stop->click();
            clicks.stop();
        }
    });
    clicks.start(0);
    stage.main->Timer1_tick();
    QVERIFY(yields > 0);
    auto rows = process().database.openRecordset("SELECT * FROM main");
    QVERIFY(rows.recordCount() >= 1 && rows.recordCount() < 3);
    QVERIFY(stage.folder.has("new/c.txt"));
    QCOMPARE(stage.dialogs.messages(), QStringList{"Dive(s) put into database."});
    QVERIFY(!stop->isEnabled());
}

void TestMainScreenImport::closingTheScreenDuringAnImportEndsItAfterTheFileInHand() {
    MainStage stage;
    stage.main->showScreen();
    for (const char* name : {"new/a.txt", "new/b.txt", "new/c.txt"}) {
        stage.folder.put(name, TestFolder::dive("typical.txt"));
    }
    QTimer::singleShot(0, stage.main.data(), [&stage] { stage.main->close(); });
    stage.main->Timer1_tick();
    QVERIFY(stage.main->isUnloaded());
    QVERIFY(stage.folder.has("new/c.txt"));
    QVERIFY(!process().importing);
    QTRY_VERIFY(stage.main.isNull());
}

void TestMainScreenImport::aListInSightIsShownAfreshWhereARunEndsBeforeItsTime() {
    for (const char* const fault : {"no-ver-no-recint.txt", "gas-6fields.txt"}) {
        MainStage stage;
        stage.main->showScreen();
        stage.neighbours.diveListOnScreen = true;
        stage.folder.put("new/a.txt", TestFolder::dive("typical.txt"));
        stage.folder.put("new/b.txt", TestFolder::dive(fault));
        stage.neighbours.asked.clear();
        stage.main->Timer1_tick();
        QCOMPARE(stage.dialogs.messages().size(), 1);
        QCOMPARE(stage.neighbours.asked, (QStringList{"unloadDiveList", "showDiveList"}));
        QVERIFY(stage.control<QLabel>("lbltotaldive")->text().contains(QLatin1String(" dives")));
    }
}

void TestMainScreenImport::aFileWithoutVersionIsNamedAndMovedAside() {
    MainStage stage;
    stage.main->showScreen();
    QVERIFY(!stage.control("cmdmovetocorrupt")->isVisible());
    stage.folder.put("new/a.txt", TestFolder::dive("no-ver-no-recint.txt"));
    stage.folder.put("new/b.txt", TestFolder::dive("typical.txt"));
    stage.folder.put("corrupt/a.txt", "another");
    stage.main->Timer1_tick();
    QCOMPARE(stage.dialogs.messages(), QStringList{"Version or Interval not found !"});
    auto* notice = stage.control<QLabel>("lblfoldernotice");
    QVERIFY2(notice->isVisible() && notice->text().startsWith(QLatin1String("\"a.txt\" has neither")),
             qPrintable(notice->text()));
    QVERIFY(stage.control("cmdmovetocorrupt")->isVisible());
    stage.main->Timer1_tick(); // it stays named
    QVERIFY(notice->isVisible());
    stage.click("cmdmovetocorrupt");
    QVERIFY(!notice->isVisible());
    QVERIFY(!stage.folder.has("new/a.txt"));
    QCOMPARE(stage.folder.get("corrupt/a.txt"), "another");
    QCOMPARE(stage.folder.get("corrupt/a-2.txt"), TestFolder::dive("no-ver-no-recint.txt"));
    QCOMPARE(stage.folder.get("old/a.txt"), TestFolder::dive("no-ver-no-recint.txt"));
    stage.dialogs.clear();
    stage.click("Command4");
    QCOMPARE(stage.dialogs.messages(), QStringList{"Dive(s) put into database."});
    QVERIFY(!stage.folder.has("new/b.txt"));
}

void TestMainScreenImport::aFileThatCannotBeMovedAsideIsTold() {
    MainStage stage;
    stage.main->showScreen();
    stage.folder.put("new/a.txt", TestFolder::dive("no-ver-no-recint.txt"));
    stage.main->Timer1_tick();
    stage.dialogs.clear();
    QDir(stage.folder.path("corrupt")).removeRecursively();
    stage.folder.put("corrupt", "a file where the folder should be");
    stage.click("cmdmovetocorrupt");
    QVERIFY(
        stage.dialogs.messages().value(0).startsWith(QLatin1String("The file \"a.txt\" cannot be moved")));
    QVERIFY(stage.folder.has("new/a.txt"));
    QVERIFY(stage.control("lblfoldernotice")->isVisible());
    // Taken away by hand.
    QVERIFY(QFile::remove(stage.folder.path("new/a.txt")));
    stage.main->Timer1_tick();
    QVERIFY(!stage.control("lblfoldernotice")->isVisible());
}

void TestMainScreenImport::whatIsPassedByIsNamedOnTheCard() {
    MainStage stage;
    stage.main->showScreen();
    stage.folder.put("new/.hidden.txt", TestFolder::dive("typical.txt"));
    QVERIFY(QDir().mkpath(stage.folder.path("new/folder.txt")));
    stage.main->Timer1_tick();
    QVERIFY(stage.dialogs.asked().isEmpty());
    QCOMPARE(stage.command4(), kRed);
    QCOMPARE(stage.control<QLabel>("lblfoldernotice")->text(),
             "Passed by in the folder new: \".hidden.txt\" (begins with a point), \"folder.txt\" (no "
             "regular file)");
    QVERIFY(stage.control("lblfoldernotice")->isVisible());
    QVERIFY(!stage.control("cmdmovetocorrupt")->isVisible());
}

void TestMainScreenImport::theFirstPassPaintsAndLetsKeysAndTicksWait() {
    MainStage stage;
    stage.main->showScreen();
    for (int i = 0; i < 60; ++i) {
        stage.folder.put(qPrintable(QStringLiteral("new/%1.txt").arg(i)), "no dive");
    }
    stage.folder.put("new/zz.txt", QByteArray(48 * 1024 * 1024, 'x'));
    struct Watch : QObject {
        int paintings = 0;
        bool eventFilter(QObject* watched, QEvent* event) override {
            paintings += event->type() == QEvent::Paint && !process().importing ? 1 : 0;
            return QObject::eventFilter(watched, event);
        }
    } watch;
    stage.control("lblcopying")->installEventFilter(&watch);
    int ticks = 0;
    benthor::platform::TickTimer timer(QStringLiteral("fast"), 1,
                                       benthor::platform::TickTimer::Start::Enabled, stage.main.data());
    connect(&timer, &benthor::platform::TickTimer::tick, stage.main.data(),
            [&] { ticks += process().importing ? 0 : 1; });
    stage.control("Frame2")->show();
    stage.click("Command4");
    QVERIFY2(watch.paintings >= 2, qPrintable(QString::number(watch.paintings)));
    QCOMPARE(ticks, 0);
    QVERIFY(!stage.control("lblcopying")->isVisible());
    QCOMPARE(stage.control<QLabel>("lblcopying")->text(), "Keeping a copy of each: 61 of 61");
}

void TestMainScreenImport::theEndBoxNamesAProfileThatIsNotInItsPlace() {
    MainStage stage;
    stage.main->showScreen();
    QDir(stage.folder.path("dbtxt")).removeRecursively();
    stage.folder.put("dbtxt", "a file where the folder should be");
    stage.folder.put("new/a.txt", TestFolder::dive("typical.txt"));
    stage.main->Timer1_tick();
    QCOMPARE(stage.dialogs.messages(), QStringList{"Dive(s) put into database."});
    QVERIFY(stage.dialogs.asked().first().below.contains(QLatin1String("\"a.txt\"")));
    QVERIFY(!stage.folder.has("new/a.txt"));
}

void TestMainScreenImport::manualFindImportsTheChosenFile() {
    MainStage stage;
    stage.main->showScreen();
    stage.folder.put("old/again.txt", TestFolder::dive("typical.txt"));
    stage.dialogs.answerFile(stage.folder.path("old/again.txt"));
    stage.click("lblmdff");
    const auto asked = stage.dialogs.asked().first();
    QCOMPARE(asked.title, "Open");
    QCOMPARE(asked.folder, stage.folder.path("old"));
    QCOMPARE(asked.filter, "Text Files (*.txt)|*.txt|All Files (*.*)|*.*");
    QCOMPARE(stage.dialogs.messages(), QStringList{"Dive(s) put into database."});
    QVERIFY(!stage.control("Frame2")->isVisible());
    auto rows = process().database.openRecordset("SELECT * FROM main");
    QCOMPARE(rows.recordCount(), 1);
}

void TestMainScreenImport::manualFindTakesATextFileInAnyCase() {
    MainStage stage;
    stage.main->showScreen();
    stage.folder.put("old/AGAIN.TXT", TestFolder::dive("typical.txt"));
    stage.dialogs.answerFile(stage.folder.path("old/AGAIN.TXT"));
    stage.click("lblmdff");
    QCOMPARE(stage.dialogs.messages(), QStringList{"Dive(s) put into database."});
    QCOMPARE(process().database.openRecordset("SELECT * FROM main").value(u"Location").text(), "AGAIN.TXT");
    QVERIFY(!stage.folder.has("new/AGAIN.TXT"));
}

void TestMainScreenImport::manualFindRefusesAnotherExtension() {
    MainStage stage;
    stage.main->showScreen();
    stage.folder.put("old/again.dat", "x");
    stage.dialogs.answerFile(stage.folder.path("old/again.dat"));
    stage.click("lblmdff");
    QCOMPARE(stage.dialogs.messages(), QStringList{"File Extention is wrong !"});
    QVERIFY(QDir(stage.folder.path("new")).isEmpty());
}

void TestMainScreenImport::manualFindPassesACancelledDialogInSilence() {
    MainStage stage;
    stage.main->showScreen();
    stage.click("lblmdff");
    QVERIFY(stage.dialogs.messages().isEmpty());
}

QTEST_MAIN(TestMainScreenImport)
#include "test_main_screen_import.moc"
