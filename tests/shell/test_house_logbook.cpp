// The road of a dive's details, the tips between two screens, and a start with a damaged store.

#include "guides/screens/frmtip.h"
#include "link/screens/pc_link_1.h"
#include "logbook/screens/rbdetails.h"
#include "platform/grid/flexgrid.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/usersettings.h"
#include "tests/shell/housestage.h"

#include <QImage>
#include <QLineEdit>
#include <QPushButton>

using namespace benthor;
using namespace benthor::tests;

namespace {

/// The program with one dive in its store, on the dive screen.
struct OnADive : Program {
    OnADive() {
        passSplash();
        folder.put("new/a.txt", TestFolder::dive("typical.txt"));
        expire("main", "Timer1");
        control<QPushButton>("rbmain", "cmdgo")->click();
    }
    static QString field(const char16_t* name) {
        return process().database.openRecordset("SELECT * FROM main").value(name).text();
    }
    QStringList captures() const { return QDir(folder.path("jpg")).entryList(QDir::Files); }
};

QString panelTip() {
    for (const QLabel* label : control<QWidget>("main", "Frame4")->findChildren<QLabel*>()) {
        if (label->text().startsWith(QLatin1String("Tip "))) {
            return label->text();
        }
    }
    return {};
}

void turnTipsOff() {
    platform::userSettings().setNumber(QStringLiteral("Options"), QStringLiteral("Show Tips at Startup"), 0);
}

} // namespace

class TestHouseLogbook : public QObject {
    Q_OBJECT

private slots:
    void theDiveLeadsToItsDetailsAndBack();
    void detailsOfAnotherDiveMakeWay();
    void leavingTheProgramStoresTheDetails();
    void anotherStoreServesTheList();
    void aStoreThatIsNoneIsNamedAndTheListStays();

    void panelAndTipsScreenShowOneTip();
    void tipsSwitchedOffStayAwayThoughThePanelWasUsed();
    void tipsThatComeByThemselvesTakeNoFocus();
    void tipsSwitchedOffStayAwayWhenTheLinkAsksForThem();
    void tipsStandBesideTheMainScreen();

    void nineStartsKeepNineBackups();
    void aDamagedStoreIsKeptAndTheBackupTakenItsPlace();
    void aBackupChosenOnTheSplashIsTheStoreOfThisStart();
};

void TestHouseLogbook::theDiveLeadsToItsDetailsAndBack() {
    OnADive program;
    control<QAction>("rbinterface", "mnudiveinfo")->trigger();
    QVERIFY(shown("rbdetails"));
    control<QLineEdit>("rbdetails", "Txtdiver")->setText(QStringLiteral("Anna"));
    control<QPushButton>("rbdetails", "cmdclose")->click();
    QVERIFY(loaded("rbdetails") == nullptr);
    QVERIFY(shown("rbinterface"));
    QCOMPARE(OnADive::field(u"UserName"), "Anna");
    const QString name = OnADive::field(u"dbtxtname");
    QCOMPARE(program.captures(), QStringList{name.chopped(3) + QStringLiteral("jpg")});
    QCOMPARE(QImage(program.folder.path("jpg/") + program.captures().first()).size(), QSize(800, 600));
    QCoreApplication::processEvents();
    QVERIFY(program.ended->isEmpty());
}

void TestHouseLogbook::detailsOfAnotherDiveMakeWay() {
    const OnADive program;
    control<QAction>("rbinterface", "mnudiveinfo")->trigger();
    control<QLineEdit>("rbdetails", "Txtdiver")->setText(QStringLiteral("Anna"));
    program.folder.put("new/b.txt", TestFolder::dive("typical.txt"));
    expire("main", "Timer1");
    control<platform::FlexGrid>("rbmain", "MSFlexGrid1")->setRow(2);
    control<QPushButton>("rbmain", "cmdgo")->click();
    control<QAction>("rbinterface", "mnudiveinfo")->trigger();
    QCOMPARE(control<QLineEdit>("rbdetails", "txtlocation")->text(), "b.txt");
    platform::Recordset rows =
        process().database.openRecordset("SELECT * FROM main WHERE DiveID = 'D0000001'");
    QCOMPARE(rows.value(u"UserName").text(), "Anna");
}

void TestHouseLogbook::leavingTheProgramStoresTheDetails() {
    OnADive program;
    control<QAction>("rbinterface", "mnudiveinfo")->trigger();
    control<QLineEdit>("rbdetails", "Txtdiver")->setText(QStringLiteral("Anna"));
    control<QAction>("main", "mnuExit")->trigger();
    QVERIFY(loaded("rbdetails") == nullptr);
    QCOMPARE(OnADive::field(u"UserName"), "Anna");
    QCOMPARE(program.captures().size(), 1);
    QTRY_COMPARE(program.ended->count(), 1);
}

void TestHouseLogbook::anotherStoreServesTheList() {
    OnADive program;
    control<QAction>("rbinterface", "mnudiveexit")->trigger();
    const QString other = program.folder.path("other.mdb");
    store::createStore(other);
    {
        platform::Database store;
        store.open(other);
        store.execute("INSERT INTO main (DiveID) VALUES ('D0000077')");
    }
    program.dialogs.answerFile(other);
    control<QAction>("main", "mnuOpen")->trigger();
    QVERIFY(shown("rbmain"));
    QCOMPARE(control<platform::FlexGrid>("rbmain", "MSFlexGrid1")->text(1, 0), "D0000077");
    QCOMPARE(process().database.path(), program.folder.path("rb.mdb"));
    QVERIFY(program.dialogs.messages().filter(QStringLiteral("can't be shown")).isEmpty());
    control<QAction>("main", "mnucurrentmain")->trigger();
    QCOMPARE(control<platform::FlexGrid>("rbmain", "MSFlexGrid1")->text(1, 0), "D0000077");
    QVERIFY(program.ended->isEmpty());
}

void TestHouseLogbook::aStoreThatIsNoneIsNamedAndTheListStays() {
    OnADive program;
    control<QAction>("rbinterface", "mnudiveexit")->trigger();
    program.folder.put("letter.mdb", "dear diver");
    program.dialogs.clear();
    program.dialogs.answerFile(program.folder.path("letter.mdb"));
    control<QAction>("main", "mnuOpen")->trigger();
    QCOMPARE(program.dialogs.messages().size(), 1);
    QVERIFY(program.dialogs.messages().first().contains(program.folder.path("letter.mdb")));
    QCOMPARE(control<platform::FlexGrid>("rbmain", "MSFlexGrid1")->text(1, 0), "D0000001");
    QCOMPARE(process().storepath, "");
}

void TestHouseLogbook::panelAndTipsScreenShowOneTip() {
    Program program;
    program.folder.put("TIPOFDAY.TXT", "one\ntwo\nthree\n");
    turnTipsOff(); // the user's own click opens them all the same
    program.passSplash();
    QTest::mouseClick(control<QWidget>("main", "Label10(0)"), Qt::LeftButton);
    QVERIFY(loaded("frmTip") == nullptr); // no hidden screen for the sake of a text
    const QString first = panelTip();
    control<QPushButton>("main", "cmdNextTip")->click();
    QCOMPARE(panelTip().mid(0, 5), QStringLiteral("Tip %1").arg(first.mid(4, 1).toInt() % 3 + 1));
    control<QAction>("main", "mnuTips")->trigger();
    auto* tips = qobject_cast<guides::frmTip*>(loaded("frmTip"));
    QVERIFY(tips != nullptr);
    QCOMPARE(panelTip(), tips->tipText());
    control<QPushButton>("main", "cmdNextTip")->click();
    QCOMPARE(panelTip(), tips->tipText());
    tips->DoNextTip();
    QCOMPARE(panelTip(), tips->tipText());
    // Next goes on from the tip shown when the screen is gone again.
    const int shown = panelTip().mid(4, 1).toInt();
    tips->unload();
    control<QPushButton>("main", "cmdNextTip")->click();
    QCOMPARE(panelTip().mid(4, 1).toInt(), shown % 3 + 1);
}

void TestHouseLogbook::tipsSwitchedOffStayAwayThoughThePanelWasUsed() {
    Program program;
    program.folder.put("TIPOFDAY.TXT", "one\ntwo\nthree\n");
    program.passSplash();
    expire("main", "Timer1");
    QTest::mouseClick(control<QWidget>("main", "Label10(0)"), Qt::LeftButton);
    const QString before = panelTip();
    turnTipsOff();
    emit qobject_cast<link::PC_Link_1*>(loaded("PC_Link_1"))->tipsWanted();
    QVERIFY(!shown("frmTip"));
    expire("main", "Timer1");
    QCOMPARE(panelTip(), before);
}

void TestHouseLogbook::tipsThatComeByThemselvesTakeNoFocus() {
    Program program;
    program.passSplash();
    expire("main", "Timer1");
    auto* link = qobject_cast<link::PC_Link_1*>(loaded("PC_Link_1"));
    emit link->tipsWanted();
    QVERIFY(shown("frmTip"));
    QVERIFY(loaded("frmTip")->testAttribute(Qt::WA_ShowWithoutActivating));
    // A desktop without windows' ranks activates what is shown first; asked for once more, it is not raised.
    loaded("main")->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(loaded("main")));
    emit link->tipsWanted();
    QCoreApplication::processEvents();
    QCOMPARE(QApplication::activeWindow(), loaded("main"));
    control<QAction>("main", "mnuTips")->trigger(); // asked for, it comes to the front
    QVERIFY(QTest::qWaitForWindowActive(loaded("frmTip")));
}

void TestHouseLogbook::tipsSwitchedOffStayAwayWhenTheLinkAsksForThem() {
    Program program;
    program.passSplash();
    expire("main", "Timer1");
    auto* link = qobject_cast<link::PC_Link_1*>(loaded("PC_Link_1"));
    QVERIFY(link != nullptr);
    turnTipsOff();
    emit link->tipsWanted();
    QVERIFY(loaded("frmTip") == nullptr);
    platform::userSettings().setNumber(QStringLiteral("Options"), QStringLiteral("Show Tips at Startup"), 1);
    emit link->tipsWanted();
    QVERIFY(shown("frmTip"));
    QCoreApplication::processEvents();
    QVERIFY(program.ended->isEmpty());
}

void TestHouseLogbook::tipsStandBesideTheMainScreen() {
    Program program;
    program.passSplash();
    control<QAction>("main", "mnuTips")->trigger();
    loaded("main")->setMinimumSize(1, 1);
    loaded("main")->setGeometry(0, 20, 300, 300);
    loaded("frmTip")->resize(loaded("frmTip")->minimumSize());
    const QPoint before = loaded("frmTip")->pos();
    expire("main", "Timer1"); // once a second, not at each move
    QVERIFY(loaded("frmTip")->pos() != before);
    QVERIFY(loaded("main")->screen()->availableGeometry().contains(loaded("frmTip")->frameGeometry()));
    QVERIFY(!loaded("main")->frameGeometry().intersects(loaded("frmTip")->frameGeometry()));
}

void TestHouseLogbook::nineStartsKeepNineBackups() {
    const TestSettings settings;
    const TestFolder folder;
    ScriptedDialogs dialogs;
    setGuide(folder, "Close");
    for (int run = 1; run <= 9; ++run) {
        process() = Process();
        {
            shell::House house;
            house.start();
            expire("frmSplash", "Timer1");
            QVERIFY(shown("main"));
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        for (int number = 1; number <= 9; ++number) {
            const QString name =
                number == 1 ? QStringLiteral("backup.mdb") : QStringLiteral("backup%1.mdb").arg(number);
            QCOMPARE(folder.has(qPrintable(name)), number <= run);
        }
    }
    QCOMPARE(dialogs.asked().size(), 0);
}

void TestHouseLogbook::aDamagedStoreIsKeptAndTheBackupTakenItsPlace() {
    Program program;
    QVERIFY(platform::copyFile(program.folder.path("rb.mdb"), program.folder.path("backup.mdb")));
    program.folder.put("rb.mdb", QByteArray(9000, 'x'));
    program.passSplash();
    QVERIFY(shown("frmGetS")); // what is missing cannot say that the guide is not wanted
    QCOMPARE(program.dialogs.messages().size(), 1);
    QVERIFY(program.dialogs.messages().first().contains(QLatin1String("rb-damaged.mdb")));
    program.dialogs.clear();
    program.dialogs.answer(true);
    loaded("frmGetS")->close();
    QCOMPARE(program.dialogs.asked().size(), 1);
    QVERIFY(program.dialogs.asked().first().text.startsWith(QLatin1String("Main Database not found")));
    QVERIFY(shown("main"));
    QVERIFY(process().database.isOpen());
    QCOMPARE(program.folder.get("rb-damaged.mdb"), QByteArray(9000, 'x'));
}

void TestHouseLogbook::aBackupChosenOnTheSplashIsTheStoreOfThisStart() {
    Program program;
    const QString backup = program.folder.path("backup4.mdb");
    store::createStore(backup, QStringLiteral("Close"));
    {
        platform::Database store;
        store.open(backup);
        store.execute("INSERT INTO main (DiveID) VALUES ('D0000031')");
    }
    program.dialogs.answer(true);
    program.dialogs.answerFile(backup);
    control<QPushButton>("frmSplash", "Command1")->click();
    QVERIFY(program.folder.has("rb-replaced.mdb"));
    program.passSplash();
    QVERIFY(shown("main"));
    QCOMPARE(process().database.openRecordset("SELECT * FROM main").value(0).text(), "D0000031");
}

int main(int argc, char** argv) {
    return runAsProgram<TestHouseLogbook>(argc, argv);
}
#include "test_house_logbook.moc"
