// The firmware screen as a skin over the session: controls, painting, closing.

#include "firmware/screens/reprog_link.h"
#include "firmware/session.h"
#include "link/screens/rawtext.h"
#include "link/supervision.h"
#include "platform/look/look.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/toldbutton.h"
#include "platform/screen/ticktimer.h"
#include "tests/firmware/fakefirmwareneighbours.h"
#include "tests/link/fakehost.h"
#include "tests/support/scripteddialogs.h"
#include "tests/support/testfolder.h"
#include "tests/support/testsettings.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QThread>
#include <QtTest>

using namespace benthor;
using namespace benthor::firmware;
using namespace benthor::tests;

namespace {

const QString kWarning =
    QStringLiteral("CLOSE ALL OTHER PROGRAMS FOR MOST RELIABLE LINK. DO NOT USE MOUSE OR "
                   "KEYBOARD WHEN UNIT IS PROGRAMMING.");

struct Stage {
    explicit Stage(int imageLength = 7040, const QString& port = QStringLiteral("3"),
                   const QString& refusal = {}) {
        QDir::setCurrent(folder.root());
        QByteArray image(imageLength, 'x');
        image[0] = '*';
        folder.put("Reprog/bpcsp2shchk.sog", image);
        folder.put("Reprog/other.sog", "*other");
        folder.put("Reprog/chklst.txt", "bpcsp2shchk.sog  chksum= 0ABC\r\n");
        if (!port.isEmpty()) {
            link::writecomport(port);
        }
        link::LinkLines lines;
        lines.make = [this, refusal](QObject*, const std::function<void()>&) {
            auto made = std::make_unique<FakeLine>();
            line = made.get();
            if (!refusal.isEmpty()) {
                line->portExists = [](int) { return false; };
            }
            return made;
        };
        lines.portHint = [refusal] { return refusal; };
        screen = new ReProg_Link(neighbours, lines);
        screen->showScreen();
    }
    ~Stage() {
        if (screen != nullptr) {
            delete screen;
        }
    }
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    template <class T = QWidget> T* control(const char* name) const {
        auto* found = screen->findChild<T*>(QLatin1String(name));
        if (found == nullptr) {
            qFatal("no %s", name);
        }
        return found;
    }
    void tick(int times = 1) {
        for (int i = 0; i < times; ++i) {
            control<platform::TickTimer>("Timer1")->expire();
        }
    }
    void hear(const QByteArray& text) {
        line->waiting += text;
        tick();
    }
    void press(const char* name) { control<QAbstractButton>(name)->click(); }
    QString text(const char* name) const { return control<QLineEdit>(name)->text(); }
    QString lamp(int index) const {
        return control<QLabel>(qPrintable(QStringLiteral("Label4(%1)").arg(index)))->text();
    }
    /// Whether some line of the screen says so.
    bool says(const QString& words) const {
        const QList<QLabel*> labels = screen->findChildren<QLabel*>();
        return std::any_of(labels.begin(), labels.end(),
                           [&words](const QLabel* label) { return label->text().contains(words); });
    }
    /// The device tells the right sum as soon as the image is through.
    void answerSum() {
        line->onOutput = [this](const QByteArray&) {
            if (screen->state().sentmark && line->waiting.isEmpty()) {
                line->waiting =
                    QByteArray::number(screen->state().sum + 38, 16).rightJustified(8, '0') + "  Prog\r\n";
            }
        };
    }

    TestSettings settings;
    TestFolder folder;
    ScriptedDialogs dialogs;
    FakeFirmwareNeighbours neighbours;
    FakeLine* line = nullptr;
    QPointer<ReProg_Link> screen;
};

/// Counts how often a widget is painted.
class PaintCount : public QObject {
public:
    explicit PaintCount(QWidget* widget) { widget->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    int paints = 0;
};

} // namespace

class TestReprogLink : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { look::apply(*qApp); }

    void theScreenTellsItsWarningAndOpensThePort();
    void theControlsShowTheSession();
    void aPortThatCannotBeOpenedSaysWhy();
    void theKeysSendTheirBytes();
    void sendIsOpenInTheModeAlone();
    void aFileIsChosenByDialogListAndMenu();
    void newImagesShowUpInTheList();
    void theAdvancedKeyboardTakesThePlaceOfTheChoice();
    void typedFieldsGoOut();
    void theSpeedIsSwitched();
    void homeLeadsToTheMainScreenAndExitCloses();
    void closingRemembersThePortAndTheImage();
    void theLastImageComesBack();

    void aWholeSendIsPaintedAndProved();
    void whatTheUserDoesWhileASendRunsIsLost();
    void aCloseInASendEndsIt();
    void aCloseInTheFinalWaitEndsIt();

    void aRehearsalHasAPortOfItsOwn();
    void aRehearsalThatCannotBeginLeavesThePort();
    void aRehearsalEndsWithTheScreen();
};

void TestReprogLink::theScreenTellsItsWarningAndOpensThePort() {
    const Stage stage;
    QCOMPARE(stage.screen->windowTitle(), "KD Reprogramming Link");
    QCOMPARE(stage.dialogs.messages(), QStringList(kWarning));
    QVERIFY(stage.line->open);
    QCOMPARE(stage.line->port, 3);
    QCOMPARE(stage.line->sent, "1");
    QCOMPARE(stage.control<platform::TickTimer>("Timer1")->interval(), 500);
    QVERIFY(stage.control<platform::TickTimer>("Timer1")->isEnabled());
}

void TestReprogLink::theControlsShowTheSession() {
    Stage stage;
    QCOMPARE(stage.text("Text5"), stage.folder.path("Reprog/bpcsp2shchk.sog"));
    QCOMPARE(stage.text("Text13"), "7878"); // stored in the file
    QCOMPARE(stage.text("Text15"), QString::number(7878 + 6331, 16).toUpper());
    QCOMPARE(stage.control<look::ToldButton>("Command2")->toldBackground(), QColor(0, 255, 0));
    QCOMPARE(stage.control<QLabel>("Lbldetails")->text(),
             "Save sog and chklst.txt files from email to: \\Reprog");
    stage.tick();
    QCOMPARE((QStringList{stage.lamp(0), stage.lamp(1), stage.lamp(2), stage.lamp(3), stage.lamp(4)}),
             (QStringList{"OK", "??", "??", "KD not Ready", "KD Not Programmed"}));
    QVERIFY(stage.control("Shape1(0)")->isHidden());
    QVERIFY(!stage.control("Shape1(1)")->isHidden());
    const QByteArray page = "Status check complete, press R, Enter to begin or Q to quit....... type rb\r\n";
    stage.hear(page + "shell:" + QByteArray(23, '.') + "BEEF\r\n");
    QCOMPARE((QStringList{stage.lamp(1), stage.lamp(2), stage.lamp(3), stage.lamp(4)}),
             (QStringList{"OK", "OK", "Ready to Send", "KD Not same Check sum as chosen file"}));
    QCOMPARE(stage.text("Text14"), "BEEF");
    QCOMPARE(stage.control("Text14")->property("toldBackground").value<QColor>(), QColor(255, 0, 0));
    QVERIFY(stage.control<link::RawText>("Text4")->toPlainText().startsWith("Status check complete"));
    QCOMPARE(stage.control<QLabel>("Label10")->text(), QStringLiteral("%1 characters").arg(page.size() + 35));
    QCOMPARE(stage.control<look::ToldButton>("SendCh(6)")->toldBackground(), QColor(255, 255, 0));
    QVERIFY(!stage.control("SendCh(2)")->isEnabled());
}

void TestReprogLink::aPortThatCannotBeOpenedSaysWhy() {
    const QString why = QStringLiteral("Join the group of the ports.");
    Stage shut(7040, QStringLiteral("3"), why);
    shut.tick();
    QVERIFY(shut.says(why));
    Stage open(7040);
    open.tick();
    QVERIFY(!open.says(why));
}

void TestReprogLink::theKeysSendTheirBytes() {
    for (size_t key = 0; key < kKeys; ++key) {
        Stage stage;
        stage.line->sent.clear();
        auto* button = stage.control<QAbstractButton>(qPrintable(QStringLiteral("SendCh(%1)").arg(key)));
        button->setEnabled(true);
        button->click();
        QCOMPARE(stage.line->sent, bytesofkey(key));
    }
}

void TestReprogLink::sendIsOpenInTheModeAlone() {
    Stage stage;
    stage.tick();
    QVERIFY(!stage.control("Command2")->isEnabled());
    QVERIFY(!stage.control("Label8")->isEnabled());
    stage.hear("REPROG MODE");
    QVERIFY(stage.control("Command2")->isEnabled());
    stage.answerSum();
    QTest::mouseClick(stage.control("Label8"), Qt::LeftButton);
    QVERIFY(stage.line->sent.startsWith("1&*xxxx"));
    QVERIFY(stage.line->sent.endsWith("&&&&y"));
}

void TestReprogLink::aFileIsChosenByDialogListAndMenu() {
    Stage stage;
    const QString other = stage.folder.path("Reprog/other.sog");
    const QString stock = stage.folder.path("Reprog/bpcsp2shchk.sog");
    stage.tick();
    QString inhand = stock; // the dialog begins with its name
    for (const char* const way : {"Command7", "Label9", "mnuChoose"}) {
        stage.dialogs.answerFile(other);
        if (auto* action = stage.screen->findChild<QAction*>(QLatin1String(way))) {
            action->trigger();
        } else {
            QTest::mouseClick(stage.control(way), Qt::LeftButton);
        }
        QCOMPARE(stage.text("Text5"), other);
        QCOMPARE(stage.dialogs.asked().last().filter, "Text Files (*.sog)|*.sog|All Files (*.*)|*.*");
        QCOMPARE(stage.dialogs.asked().last().folder, inhand);
        inhand = other;
        QCOMPARE(stage.text("Text13"), "");
        QCOMPARE(stage.control<look::ToldButton>("Command2")->toldBackground(), QColor(255, 255, 0));
    }
    auto* files = stage.control<QListWidget>("File1");
    QCOMPARE(files->count(), 2);
    emit files->itemClicked(files->item(0));
    QCOMPARE(stage.text("Text2"), "bpcsp2shchk.sog");
    QCOMPARE(stage.text("Text5"), other); // a click tells the name alone
    files->setCurrentRow(0);
    QTest::keyClick(files, Qt::Key_Return);
    QCOMPARE(stage.text("Text5"), stock);
    QVERIFY(stage.screen->state().filechosen);
}

void TestReprogLink::newImagesShowUpInTheList() {
    Stage stage;
    stage.tick();
    auto* files = stage.control<QListWidget>("File1");
    QCOMPARE(files->count(), 2);
    stage.folder.put("Reprog/third.SOG", "*");
    stage.folder.put("Reprog/readme.txt", "no image");
    stage.tick();
    QCOMPARE(files->count(), 3);
}

void TestReprogLink::theAdvancedKeyboardTakesThePlaceOfTheChoice() {
    Stage stage;
    stage.tick();
    QVERIFY(!stage.control("Option1(6)")->isVisible());
    QVERIFY(stage.control("Command7")->isVisible());
    stage.control<QAction>("mnuAdvanced")->trigger();
    QVERIFY(stage.control("Option1(6)")->isVisible());
    QVERIFY(!stage.control("Command7")->isVisible());
    QVERIFY(!stage.control("Text12")->isVisible());
    stage.press("Option1(6)");
    QVERIFY(stage.control("Text12")->isVisible());
    QCOMPARE(stage.text("Text3"), "B");
    QCOMPARE(stage.text("Text8"), "b");
    QVERIFY(stage.control("Command5")->isEnabled()); // a text goes whenever the user will
    stage.press("Option1(0)");
    QVERIFY(!stage.control("Command5")->isEnabled()); // an image does not
    QTest::keyClick(stage.screen, Qt::Key_Escape);
    QVERIFY(!stage.control("Option1(6)")->isVisible());
    QVERIFY(stage.control("Command7")->isVisible());
}

void TestReprogLink::typedFieldsGoOut() {
    Stage stage;
    stage.control<QAction>("mnuAdvanced")->trigger();
    stage.press("Option1(9)");
    stage.line->sent.clear();
    QTest::keyClicks(stage.control("Text3"), "Z");
    stage.press("Command4");
    QCOMPARE(stage.line->sent, "Z");
    stage.press("Option1(2)");
    QCOMPARE(stage.text("Text10"), QStringLiteral("F↵"));
    auto* data = stage.control<QLineEdit>("Text9");
    QCOMPARE(data->maxLength(), 3);
    QTest::keyClicks(stage.control("Text10"), "x");
    QCOMPARE(stage.screen->state().fields.Text10, "F\r\nx");
}

void TestReprogLink::theSpeedIsSwitched() {
    Stage stage;
    QCOMPARE(stage.line->settings, "9600,n,8,1");
    stage.press("Check1");
    QCOMPARE(stage.line->settings, "38400,n,8,1");
    stage.press("Check1");
    QCOMPARE(stage.line->settings, "9600,n,8,1");
}

void TestReprogLink::homeLeadsToTheMainScreenAndExitCloses() {
    Stage stage;
    QTest::mouseClick(stage.control("Label11"), Qt::LeftButton);
    QCOMPARE(stage.neighbours.asked, QStringList("main"));
    stage.control<QAction>("mnuRunProg")->trigger();
    QCOMPARE(stage.neighbours.asked, (QStringList{"main", "programs"}));
    stage.control<QAction>("mnuExit")->trigger();
    QVERIFY(stage.screen->isUnloaded());
    QVERIFY(!stage.line->open);
}

void TestReprogLink::closingRemembersThePortAndTheImage() {
    Stage stage;
    stage.dialogs.answerFile(stage.folder.path("Reprog/other.sog"));
    stage.press("Command7");
    stage.neighbours.blink = true;
    stage.screen->close();
    QCOMPARE(link::readcomport(), "3");
    QCOMPARE(stage.neighbours.last, stage.folder.path("Reprog/other.sog"));
    QVERIFY(!stage.neighbours.blink);
}

void TestReprogLink::theLastImageComesBack() {
    Stage stage;
    stage.neighbours.last = stage.folder.path("Reprog/other.sog");
    ReProg_Link again(stage.neighbours, {});
    again.load();
    QCOMPARE(again.findChild<QLineEdit*>("Text5")->text(), stage.folder.path("Reprog/other.sog"));
}

void TestReprogLink::aWholeSendIsPaintedAndProved() {
    Stage stage(128 * 120);
    QVERIFY(QTest::qWaitForWindowExposed(stage.screen));
    stage.hear("REPROG MODE");
    const PaintCount bar(stage.control("ProgressBar1"));
    bool keysRested = true;
    bool blinked = false;
    stage.answerSum();
    const auto answer = stage.line->onOutput;
    stage.line->onOutput = [&](const QByteArray& bytes) {
        answer(bytes);
        QThread::msleep(1);
        if (stage.screen->state().counted > 3000) {
            keysRested = keysRested && !stage.control("SendCh(3)")->isEnabled() &&
                         !stage.control("Command2")->isEnabled();
        }
        blinked = blinked || stage.neighbours.blink;
    };
    stage.press("Command2");
    QVERIFY(keysRested);
    QVERIFY(blinked);
    QVERIFY2(bar.paints > 3, qPrintable(QString::number(bar.paints)));
    QVERIFY(stage.line->sent.endsWith("&&&&y"));
    QVERIFY(stage.control("SendCh(3)")->isEnabled());
    stage.tick();
    QVERIFY(stage.control("Frame5")->isVisible());
    QCOMPARE(stage.control<QProgressBar>("ProgressBar2")->maximum(), 62);
    QCOMPARE(stage.control<QProgressBar>("ProgressBar2")->value(), 3);
    QCOMPARE(stage.control<QProgressBar>("ProgressBar1")->value(), 128 * 120);
    const int sent = static_cast<int>(stage.screen->state().sent);
    QVERIFY(sent != stage.screen->state().counted); // what was looked at is not what was sent
    const QString digits = QString::number(sent);
    QVERIFY(stage.says(digits.chopped(3) + QChar(0x202F) + digits.right(3) + QStringLiteral(" bytes sent")));
}

void TestReprogLink::whatTheUserDoesWhileASendRunsIsLost() {
    Stage stage(128 * 60);
    stage.hear("REPROG MODE");
    stage.answerSum();
    const auto answer = stage.line->onOutput;
    auto* timer = stage.control<platform::TickTimer>("Timer1");
    timer->setInterval(1);
    int ticks = 0;
    connect(timer, &platform::TickTimer::tick, this, [&ticks] { ++ticks; });
    auto* quit = stage.control("SendCh(5)");
    stage.line->onOutput = [&](const QByteArray& bytes) {
        answer(bytes);
        if (bytes.size() == 128) {
            QThread::msleep(1);
            QCoreApplication::postEvent(quit, new QKeyEvent(QEvent::KeyPress, Qt::Key_Space, {}));
            QCoreApplication::postEvent(quit, new QKeyEvent(QEvent::KeyRelease, Qt::Key_Space, {}));
        }
    };
    stage.press("Command2");
    stage.line->onOutput = nullptr;
    QCOMPARE(ticks, 0);
    QVERIFY(!stage.line->sent.contains('Q'));
    QCoreApplication::processEvents();
    QVERIFY(!stage.line->sent.contains('Q'));
}

void TestReprogLink::aCloseInASendEndsIt() {
    Stage stage(128 * 400);
    QVERIFY(QTest::qWaitForWindowExposed(stage.screen));
    stage.hear("REPROG MODE");
    stage.line->onOutput = [&](const QByteArray& bytes) {
        if (bytes.size() == 128) {
            QThread::msleep(1);
        }
        if (stage.screen->state().counted == 128 * 60) {
            QTimer::singleShot(0, stage.screen, &QWidget::close);
        }
    };
    FakeLine* line = stage.line;
    qsizetype sentWhenClosed = -1;
    connect(stage.screen, &platform::Screen::unloaded, this, [&] { sentWhenClosed = line->sent.size(); });
    stage.press("Command2");
    QVERIFY(sentWhenClosed > 0);
    QVERIFY(stage.screen->isUnloaded());
    QCOMPARE(line->sent.size(), sentWhenClosed);
    QVERIFY(!line->sent.endsWith("&&"));
    QCOMPARE(stage.dialogs.messages(), QStringList(kWarning));
    QVERIFY(!stage.neighbours.blink);
}

void TestReprogLink::aCloseInTheFinalWaitEndsIt() {
    Stage stage(129);
    stage.hear("REPROG MODE");
    stage.line->onOutput = [&](const QByteArray&) {
        if (stage.screen->state().sentmark) {
            QTimer::singleShot(0, stage.screen, &QWidget::close);
        }
    };
    stage.press("Command2");
    QVERIFY(stage.screen->isUnloaded());
    QVERIFY(stage.line->sent.endsWith("x&&"));
    QVERIFY(!stage.line->sent.endsWith("&&&&"));
}

void TestReprogLink::aRehearsalHasAPortOfItsOwn() {
    Stage stage;
    stage.tick();
    QVERIFY(!stage.control("rehearsal")->isVisible());
    stage.control<QAction>("mnuRehearse")->trigger();
    QCOMPARE(stage.neighbours.asked, QStringList("rehearsal rb 9600"));
    QVERIFY(stage.control("rehearsal")->isVisible());
    QVERIFY(stage.screen->windowTitle().startsWith("REHEARSAL"));
    QCOMPARE(stage.neighbours.reports, "7878");
    QCOMPARE(stage.line->port, 40);
    QVERIFY(stage.line->open);
    QCOMPARE(stage.line->sent, "11");
    stage.tick();
    QVERIFY(stage.control("rehearsal")->isVisible());
    stage.press("endRehearsal");
    QCOMPARE(stage.neighbours.asked.last(), "stop rehearsal");
    QVERIFY(!stage.control("rehearsal")->isVisible());
    QCOMPARE(stage.screen->windowTitle(), "KD Reprogramming Link");
    QCOMPARE(stage.line->port, 3);
    QVERIFY(!stage.control<QAction>("mnuRehearse")->isChecked());
}

void TestReprogLink::aRehearsalThatCannotBeginLeavesThePort() {
    Stage stage;
    stage.neighbours.rehearsalPort = 0;
    stage.neighbours.rehearsalError = "no pseudo-terminal";
    stage.control<QAction>("mnuRehearse")->trigger();
    QCOMPARE(stage.dialogs.messages().last(), "The rehearsal can't begin: no pseudo-terminal");
    QVERIFY(!stage.control("rehearsal")->isVisible());
    QCOMPARE(stage.line->port, 3);
    QVERIFY(stage.line->open);
}

void TestReprogLink::aRehearsalEndsWithTheScreen() {
    Stage stage;
    stage.control<QAction>("mnuRehearse")->trigger();
    stage.screen->close();
    QCOMPARE(stage.neighbours.asked.last(), "stop rehearsal");
    QCOMPARE(link::readcomport(), "3"); // the simulated port is never remembered
}

QTEST_MAIN(TestReprogLink)
#include "test_reprog_link.moc"
