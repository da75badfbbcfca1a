#include "guides/screens/frmabout.h"
#include "guides/screens/frmgets.h"
#include "guides/screens/frmtip.h"
#include "guides/screens/manual.h"
#include "guides/webarchive.h"
#include "platform/look/look.h"
#include "platform/screen/ticktimer.h"
#include "platform/usersettings.h"
#include "session/process.h"
#include "tests/guides/guidestage.h"
#include "tests/support/ownpath.h"

#include <QBuffer>
#include <QCheckBox>
#include <QDesktopServices>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QtTest>

using namespace benthor;
using namespace benthor::guides;
using namespace benthor::tests;

namespace {

template <class S> using Stage = GuideStage<S>;

/// As the house keeps them, beyond any one screen.
Tips& tips() {
    static Tips kept;
    return kept;
}

void putTips(const TestFolder& folder, const QByteArray& bytes) {
    QVERIFY(platform::writeFileWhole(folder.path("TIPOFDAY.TXT"), bytes));
}

void showTipsAtStartup(int value) {
    platform::userSettings().setNumber(QStringLiteral("Options"), QStringLiteral("Show Tips at Startup"),
                                       value);
}

int tipsAtStartup() {
    return platform::userSettings().number(QStringLiteral("Options"), QStringLiteral("Show Tips at Startup"),
                                           -1);
}

QString getstarted() {
    return process().database.openRecordset("SELECT * FROM SERIALNO").value(u"getstarted").text();
}

/// Takes what would be opened on the desktop.
class Opener : public QObject {
    Q_OBJECT

public:
    Opener() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open"); }
    ~Opener() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }
    QList<QUrl> opened;

public slots:
    void open(const QUrl& url) { opened += url; }
};

QTextBrowser* manualView() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->objectName() == QLatin1String("manualview")) {
            return window->findChild<QTextBrowser*>();
        }
    }
    return nullptr;
}

} // namespace

class TestGuideScreens : public QObject {
    Q_OBJECT

private slots:
    // guide
    void theGuideWalksItsSteps();
    void nextOnTheLastStepShowsItAgain();
    void option1OnlyRedraws();
    void finishOpensTheManualAndCloses();
    void aManualThatIsMissingIsTold();
    void aDesktopThatOpensNoManualLeavesItToAWindowOfOurOwn();
    void theManualsWindowHasContentsSearchAndAWayBack();
    void escapeClosesTheGuide();
    void aManualThatIsNoneIsToldWhereNothingOpensIt();
    void theCheckIsStoredAtEachChange();
    void theStartRotatesTheBackups();
    void theMaintenanceRunsOnceInAProcess();
    void aSecondCopyLeavesTheBackupsAlone();
    void theStartRemovesWhatAKilledImportLeftInDbtxt();
    void aDamagedStoreIsToldAndTheGuideStays();

    // tips
    void aTipIsShownAndTheButtonsStep();
    void pictureAndTextActAsNext();
    void withoutAFileTheTipsSayHowToMakeIt();
    void tipsSwitchedOffCloseWhatOpensByItself();
    void tipsSwitchedOffLeaveTheTipInHand();
    void theSettingIsSavedAtEachChange();
    void theTipsOpenAtAnyOfThem();
    void theTipsStandBesideAWindowAndOnTheDisplay();
    void tipsThatComeByThemselvesTakeNoKeys();

    // about
    void theAboutBoxSaysWhatItIs();
    void theSystemsToolIsStarted();
    void withoutAToolTheMessageIsShown();
};

void TestGuideScreens::theGuideWalksItsSteps() {
    Stage<frmGetS> stage(true);
    stage.screen->showScreen();
    QVERIFY(stage.screen->isVisible());
    QCOMPARE(stage.screen->windowTitle(), "Benthor - Getting Started");
    QCOMPARE(stage.text("Label2"), stepheading(0));
    QCOMPARE(stage.text("Label1"), steptext(0));
    QCOMPARE(stage.text("Label4"), "Tip 1 of 4");
    for (int step = 1; step < kSteps; ++step) {
        stage.click("Command1(1)");
        QCOMPARE(stage.text("Label2"), stepheading(step));
        QCOMPARE(stage.text("Label1"), steptext(step));
        QCOMPARE(stage.text("Label4"), stepcount(step));
    }
    stage.click("Command1(0)");
    QCOMPARE(stage.text("Label4"), "Tip 3 of 4");
    QCOMPARE(stage.control<QPushButton>("Command1(0)")->text(), "Previous");
    QCOMPARE(stage.control<QPushButton>("Command1(1)")->text(), "Next");
    QCOMPARE(stage.control<QPushButton>("Command2")->text(), "Finish");
    QCOMPARE(stage.control<QCheckBox>("Check1")->text(), "Show this screen at start up");
}

void TestGuideScreens::nextOnTheLastStepShowsItAgain() {
    Stage<frmGetS> stage(true);
    stage.screen->showScreen();
    for (int i = 0; i < 3; ++i) {
        stage.click("Command1(1)");
    }
    stage.control<QLabel>("Label1")->setText(QStringLiteral("something else"));
    stage.click("Command1(1)");
    QCOMPARE(stage.screen->step(), 3);
    QCOMPARE(stage.text("Label1"), steptext(3));
}

void TestGuideScreens::option1OnlyRedraws() {
    Stage<frmGetS> stage(true);
    stage.screen->showScreen();
    stage.click("Command1(1)");
    stage.control<QLabel>("Label1")->setText(QStringLiteral("something else"));
    stage.click("Option1");
    QCOMPARE(stage.screen->step(), 1);
    QCOMPARE(stage.text("Label1"), steptext(1));
}

void TestGuideScreens::finishOpensTheManualAndCloses() {
    Stage<frmGetS> stage(true);
    const OwnPath path;
    QVERIFY(platform::writeFileWhole(stage.folder.path("manualbenthor.mht"), "MIME-Version: 1.0"));
    Opener desktop;
    stage.screen->showScreen();
    stage.click("Command2");
    QCOMPARE(desktop.opened, QList<QUrl>{QUrl::fromLocalFile(stage.folder.path("manualbenthor.mht"))});
    QVERIFY(stage.screen.isNull() || stage.screen->isUnloaded());
    QCOMPARE(stage.dialogs.messages(), QStringList());
}

void TestGuideScreens::aManualThatIsMissingIsTold() {
    Stage<frmGetS> stage(true);
    Opener desktop;
    stage.screen->showScreen();
    stage.click("Command2");
    QCOMPARE(desktop.opened, QList<QUrl>());
    QCOMPARE(stage.dialogs.messages(),
             QStringList{"The manual can't be opened: " + stage.folder.path("manualbenthor.mht")});
}

void TestGuideScreens::aDesktopThatOpensNoManualLeavesItToAWindowOfOurOwn() {
    const OwnPath path;
    Stage<frmGetS> stage(true);
    Opener desktop;
    QImage picture(30, 20, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QByteArray png;
    QBuffer buffer(&png);
    QVERIFY(picture.save(&buffer, "PNG"));
    QVERIFY(platform::writeFileWhole(stage.folder.path("manualbenthor.mht"),
                                     packArchive("Benthor", {{"file:///m/index.html", "text/html",
                                                              "<h1>Benthor</h1><p><img src=\"p/a.png\"></p>"},
                                                             {"file:///m/p/a.png", "image/png", png}})));
    path.install(QStringLiteral("xdg-mime"), "#!/bin/sh\necho viewer.desktop\n");
    openManual(nullptr);
    QCOMPARE(desktop.opened.size(), 1);
    QVERIFY(manualView() == nullptr);

    path.install(QStringLiteral("xdg-mime"), "#!/bin/sh\nexit 0\n");
    openManual(nullptr);
    QCOMPARE(desktop.opened.size(), 1);
    QVERIFY(manualView() != nullptr && manualView()->isVisible());
    QCOMPARE(manualView()->toPlainText().split(QLatin1Char('\n')).first(), "Benthor");
    const QImage seen = manualView()->viewport()->grab().toImage();
    bool red = false;
    for (int y = 0; y < seen.height() && !red; ++y) {
        for (int x = 0; x < seen.width() && !red; ++x) {
            red = seen.pixelColor(x, y) == QColor(Qt::red);
        }
    }
    QVERIFY(red);
    manualView()->window()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(manualView() == nullptr);
}

void TestGuideScreens::theManualsWindowHasContentsSearchAndAWayBack() {
    const OwnPath path;
    Stage<frmGetS> stage(true);
    QByteArray page = "<h1>Benthor</h1>";
    for (int chapter = 1; chapter <= 20; ++chapter) {
        page += "<h2>Chapter " + QByteArray::number(chapter) + "</h2>";
        page += QByteArray("<p>words</p>").repeated(20);
    }
    page += "<p>the needle</p>";
    QVERIFY(platform::writeFileWhole(stage.folder.path("manualbenthor.mht"),
                                     packArchive("Benthor", {{"file:///m/index.html", "text/html", page}})));
    path.install(QStringLiteral("xdg-mime"), "#!/bin/sh\nexit 0\n");
    openManual(nullptr);
    QVERIFY(QTest::qWaitForWindowExposed(manualView()->window()));
    const QPointer<QWidget> window = manualView()->window();
    const auto* bar = manualView()->verticalScrollBar();
    auto* contents = window->findChild<QListWidget*>(QStringLiteral("manualcontents"));
    auto* back = window->findChild<QPushButton*>(QStringLiteral("manualback"));
    auto* search = window->findChild<QLineEdit*>(QStringLiteral("manualsearch"));
    QCOMPARE(contents->count(), 21);
    QVERIFY(!back->isEnabled());
    emit contents->itemClicked(contents->item(10));
    const int chapter = bar->value();
    QVERIFY(chapter > 0);
    QVERIFY(manualView()->textCursor().block().text().startsWith(QLatin1String("Chapter 10")));
    search->setText(QStringLiteral("NEEDLE"));
    emit search->returnPressed();
    QCOMPARE(manualView()->textCursor().selectedText(), "needle");
    QVERIFY(bar->value() > chapter);
    back->click();
    QCOMPARE(bar->value(), chapter);
    back->click();
    QCOMPARE(bar->value(), 0);
    QVERIFY(!back->isEnabled());
    search->setText(QStringLiteral("no such words"));
    emit search->returnPressed();
    QCOMPARE(window->findChild<QLabel*>(QStringLiteral("manualnote"))->text(), "Not found");
    openManual(nullptr); // the same window, in front
    int windows = 0;
    for (const QWidget* one : QApplication::topLevelWidgets()) {
        windows += one->objectName() == QLatin1String("manualview") ? 1 : 0;
    }
    QCOMPARE(windows, 1);
    QVERIFY(QTest::qWaitForWindowActive(window));
    window->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(window.isNull());
}

void TestGuideScreens::escapeClosesTheGuide() {
    Stage<frmGetS> stage(false);
    stage.screen->showScreen();
    QVERIFY(stage.screen->isVisible());
    QVERIFY(QTest::qWaitForWindowActive(stage.screen));
    QTest::keyClick(stage.screen, Qt::Key_Escape);
    QTRY_VERIFY(stage.screen.isNull() || stage.screen->isUnloaded());
}

void TestGuideScreens::aManualThatIsNoneIsToldWhereNothingOpensIt() {
    const OwnPath path;
    Stage<frmGetS> stage(true);
    QVERIFY(platform::writeFileWhole(stage.folder.path("manualbenthor.mht"), "dear diver"));
    path.install(QStringLiteral("xdg-mime"), "#!/bin/sh\nexit 0\n");
    openManual(nullptr);
    QCOMPARE(stage.dialogs.messages().size(), 1);
    QVERIFY(manualView() == nullptr);
}

void TestGuideScreens::theCheckIsStoredAtEachChange() {
    Stage<frmGetS> stage(true);
    stage.screen->showScreen();
    QVERIFY(stage.control<QCheckBox>("Check1")->isChecked());
    stage.click("Check1");
    QCOMPARE(getstarted(), "Close");
    stage.click("Check1");
    QCOMPARE(getstarted(), "Open");
}

void TestGuideScreens::theStartRotatesTheBackups() {
    Stage<frmGetS> stage(true);
    stage.screen->load();
    QVERIFY(stage.folder.has("backup.mdb"));
    QVERIFY(!stage.folder.has("backup2.mdb"));
    QVERIFY(stage.folder.has("dbtxt/test.txt"));
    QCOMPARE(stage.dialogs.messages(), QStringList());
    process().database.close();
}

void TestGuideScreens::theMaintenanceRunsOnceInAProcess() {
    Stage<frmGetS> stage(true);
    process().firststart = true;
    stage.screen->load();
    QVERIFY(!stage.folder.has("backup.mdb"));
}

void TestGuideScreens::aSecondCopyLeavesTheBackupsAlone() {
    Stage<frmGetS> stage(false);
    stage.screen->load();
    QVERIFY(!stage.folder.has("backup.mdb"));
}

void TestGuideScreens::theStartRemovesWhatAKilledImportLeftInDbtxt() {
    for (const bool first : {false, true}) { // a second copy leaves them to the first
        Stage<frmGetS> stage(first);
        stage.folder.put("import.note", "11A2B3C\n");
        stage.folder.put("old/a.txt", "a dive");
        stage.folder.put("dbtxt/11A2B3Ca.txt", "a dive");
        stage.folder.put("dbtxt/11A2B3Cb.txt", "another");
        stage.screen->load();
        QCOMPARE(stage.folder.has("dbtxt/11A2B3Ca.txt"), !first);
        QCOMPARE(stage.folder.has("import.note"), !first);
        QVERIFY(stage.folder.has("dbtxt/11A2B3Cb.txt"));
        process().database.close();
    }
}

void TestGuideScreens::aDamagedStoreIsToldAndTheGuideStays() {
    Stage<frmGetS> stage(true);
    QVERIFY(platform::writeFileWhole(stage.folder.path("rb.mdb"), QByteArray(9000, 'x')));
    stage.screen->showScreen();
    QVERIFY(stage.screen->isVisible());
    QCOMPARE(stage.dialogs.messages().size(), 1);
    QVERIFY2(stage.dialogs.messages().first().contains(stage.folder.path("rb-damaged.mdb")),
             qPrintable(stage.dialogs.messages().first()));
    QVERIFY(stage.folder.has("rb-damaged.mdb"));
    QVERIFY(!stage.folder.has("rb.mdb"));
}

void TestGuideScreens::aTipIsShownAndTheButtonsStep() {
    Stage<frmTip> stage(frmTip::Opened::ByUser, tips());
    putTips(stage.folder, "one\ntwo\n");
    stage.screen->showScreen();
    QCOMPARE(stage.screen->windowTitle(), "Connection Tips");
    const QString first = stage.text("lblTipText");
    stage.click("cmdNextTip");
    const QString second = stage.text("lblTipText");
    QVERIFY(first != second);
    stage.click("Command1");
    QCOMPARE(stage.text("lblTipText"), first);
    QVERIFY(QStringList({"Tip 1:   \none\n>>>Next", "Tip 2:   \ntwo"}).contains(first));
    QCOMPARE(stage.control<QPushButton>("cmdNextTip")->text(), "&Next Tip");
    QCOMPARE(stage.control<QPushButton>("Command1")->text(), "&Previous Tip");
    stage.click("cmdOK");
    QVERIFY(stage.screen.isNull() || stage.screen->isUnloaded());
}

void TestGuideScreens::pictureAndTextActAsNext() {
    Stage<frmTip> stage(frmTip::Opened::ByUser, tips());
    putTips(stage.folder, "one\ntwo\n");
    stage.screen->showScreen();
    for (const char* const control : {"Image1", "lblTipText"}) {
        const QString before = stage.text("lblTipText");
        stage.click(control);
        QVERIFY2(stage.text("lblTipText") != before, control);
    }
}

void TestGuideScreens::withoutAFileTheTipsSayHowToMakeIt() {
    Stage<frmTip> stage(frmTip::Opened::ByUser, tips());
    stage.screen->showScreen();
    QVERIFY(
        stage.text("lblTipText").startsWith(QLatin1String("That the TIPOFDAY.TXT file was not found? \n")));
    stage.click("cmdNextTip");
    QVERIFY(
        stage.text("lblTipText").startsWith(QLatin1String("That the TIPOFDAY.TXT file was not found? \n")));
}

void TestGuideScreens::tipsSwitchedOffCloseWhatOpensByItself() {
    {
        Stage<frmTip> stage(frmTip::Opened::ByItself, tips());
        stage.screen->showScreen();
        QVERIFY(stage.screen->isVisible()); // on, as long as nobody has chosen
        QVERIFY(stage.control<QCheckBox>("chkLoadTipsAtStartup")->isChecked());
    }
    {
        Stage<frmTip> stage(frmTip::Opened::ByItself, tips());
        showTipsAtStartup(0);
        stage.screen->showScreen();
        QVERIFY(stage.screen.isNull() || stage.screen->isUnloaded());
    }
    Stage<frmTip> stage(frmTip::Opened::ByUser, tips());
    showTipsAtStartup(0);
    stage.screen->showScreen();
    QVERIFY(stage.screen->isVisible());
    QVERIFY(!stage.control<QCheckBox>("chkLoadTipsAtStartup")->isChecked());
}

void TestGuideScreens::tipsSwitchedOffLeaveTheTipInHand() {
    Stage<frmTip> stage(frmTip::Opened::ByItself, tips());
    putTips(stage.folder, "one\ntwo\n");
    tips().open(stage.folder.path("TIPOFDAY.TXT"));
    const QString before = tips().text();
    showTipsAtStartup(0);
    stage.screen->showScreen();
    QCOMPARE(tips().text(), before);
}

void TestGuideScreens::theSettingIsSavedAtEachChange() {
    Stage<frmTip> stage(frmTip::Opened::ByUser, tips());
    stage.screen->showScreen();
    QCOMPARE(tipsAtStartup(), -1);
    stage.control<QCheckBox>("chkLoadTipsAtStartup")->click();
    QCOMPARE(tipsAtStartup(), 0);
    stage.control<QCheckBox>("chkLoadTipsAtStartup")->click();
    QCOMPARE(tipsAtStartup(), 1);
    QCOMPARE(stage.control<QCheckBox>("chkLoadTipsAtStartup")->text(), "&Show Tips at Startup");
}

void TestGuideScreens::theTipsOpenAtAnyOfThem() {
    QSet<QString> seen;
    for (int run = 0; run < 200 && seen.size() < 3; ++run) {
        Stage<frmTip> stage(frmTip::Opened::ByUser, tips());
        putTips(stage.folder, "one\ntwo\nthree\n");
        stage.screen->load();
        seen += stage.screen->tipText();
    }
    QCOMPARE(seen.size(), 3);
}

void TestGuideScreens::theTipsStandBesideAWindowAndOnTheDisplay() {
    Stage<frmTip> stage(frmTip::Opened::ByUser, tips());
    stage.screen->showScreen();
    const QRect display = stage.screen->screen()->availableGeometry();
    const QRect small(display.left() + 10, display.top() + 20, 100, 100);
    stage.screen->placeBeside(small);
    QCOMPARE(stage.screen->pos(), QPoint(small.right() + 1, small.top()));
    // No room at the right: the other sides, and smaller if need be.
    for (const QRect& window : {QRect(display.left() + 300, display.top() + 330, 480, 300),
                                QRect(display.left(), display.top(), display.width(), display.height() - 320),
                                QRect(display.left(), display.top() + 320, display.width(), 400)}) {
        stage.screen->placeBeside(window);
        QVERIFY(display.contains(stage.screen->frameGeometry()));
        QVERIFY(!stage.screen->frameGeometry().intersects(window));
    }
    const QPoint before = stage.screen->pos();
    stage.screen->placeBeside(display); // no room anywhere: it is the user's to place
    QCOMPARE(stage.screen->pos(), before);
}

void TestGuideScreens::tipsThatComeByThemselvesTakeNoKeys() {
    QVERIFY(
        Stage<frmTip>(frmTip::Opened::ByItself, tips()).screen->testAttribute(Qt::WA_ShowWithoutActivating));
    QVERIFY(
        !Stage<frmTip>(frmTip::Opened::ByUser, tips()).screen->testAttribute(Qt::WA_ShowWithoutActivating));
}

void TestGuideScreens::theAboutBoxSaysWhatItIs() {
    QCoreApplication::setApplicationVersion(QStringLiteral("7.8.9"));
    Stage<frmAbout> stage;
    stage.screen->showScreen();
    QCOMPARE(stage.screen->windowTitle(), "About Benthor");
    QCOMPARE(stage.text("lblTitle"), "Benthor");
    QCOMPARE(stage.text("lblProductName"), "Benthor");
    QCOMPARE(stage.text("lblVersion"), "Version 7.8.9");
    QCOMPARE(stage.text("lblDescription"),
             "This product provides interface applications for use with the Morvalien and KD product ranges");
    QCOMPARE(stage.control<QPushButton>("cmdSysInfo")->text(), "&System Info...");
    stage.click("cmdOK");
    QVERIFY(stage.screen.isNull() || stage.screen->isUnloaded());
}

void TestGuideScreens::theSystemsToolIsStarted() {
    Stage<frmAbout> stage;
    const OwnPath path;
    path.install(QStringLiteral("hardinfo"),
                 "#!/bin/sh\necho \"started $# \" > \"$(/usr/bin/dirname \"$0\")/told\"\n");
    stage.screen->showScreen();
    stage.click("cmdSysInfo");
    QTRY_COMPARE(platform::readFile(path.path(QStringLiteral("told"))).value_or(""), "started 0 \n");
    QCOMPARE(stage.dialogs.messages(), QStringList());
}

void TestGuideScreens::withoutAToolTheMessageIsShown() {
    Stage<frmAbout> stage;
    const OwnPath path;
    stage.screen->showScreen();
    stage.click("cmdSysInfo");
    QCOMPARE(stage.dialogs.messages(), QStringList{"System Information Is Unavailable At This Time"});
}

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    look::apply(application);
    TestGuideScreens test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_guidescreens.moc"
