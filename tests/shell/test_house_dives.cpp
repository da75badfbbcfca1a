// The dive list, the dive screen and the details, in the sequences that a diver makes of them: each shows the
// dive that it was opened with, whatever another one does beside it.

#include "logbook/screens/rbdetails.h"
#include "platform/grid/flexgrid.h"
#include "tests/shell/divesstage.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>

using namespace benthor;
using namespace benthor::tests;

class TestHouseDives : public QObject {
    Q_OBJECT

private slots:
    // opening
    void aDoubleClickBesideAnOpenDiveShowsTheOtherOne();
    void theSameDiveOpenedAgainIsLoadedAnew();
    void theListThatComesBackIsFilledAnew();
    void theListComesBackOnTheDiveJustLookedAtOnce();
    void anotherUnitReachesTheOpenList();
    void theOpenListFollowsWhatTheDetailsSaved();
    void aCaptureSaysWhereItWent();
    void theListOfAnImportGoesWithTheDiveOpenedFromIt();

    // what runs beside an open dive
    void anImportLeavesTheOpenDiveItsOwn();
    void showErrorsLeavesTheOpenDiveItsOwn();
    void aRefusedOpenLeavesTheOpenDiveItsOwn();
    void otherUnitsLoadTheDiveThatIsShown();
    void aDiveThatTheStoreLostIsNotGivenDetails();

    // details
    void detailsLeftOpenStoreIntoTheirOwnDive();
    void theWayBackFromDetailsLeftOpenShowsTheirDive();
    void theWayBackFromDetailsReplacesTheList();
    void theWayBackToTheDiveThatIsShownKeepsItsRow();
    void aNumberGivenAgainByAnotherHandIsNotOverwritten();
    void rowsWithoutWordsOfTheDeviceAreKnownByTheirRow();

    // deleting
    void aDeletedDiveLeavesTheDiveScreen();
    void otherDivesDeletedLeaveTheDiveScreenOpen();
    void detailsOfADeletedDiveAreStoredAndClosed();
    void theNextDiveOfTheNumberGetsNothingOfTheDeletedOne();
    void detailsThatCannotBeStoredKeepTheirDive();
    void deletingWhileTheDetailsCloseAsksNothing();
};

void TestHouseDives::aDoubleClickBesideAnOpenDiveShowsTheOtherOne() {
    DivesProgram program(2);
    program.open(1);
    QCOMPARE(program.shownDive(), diveid(1));
    program.import(3); // its end shows the list beside the dive
    QVERIFY(shown("rbmain"));
    program.open(2);
    QCOMPARE(program.shownDive(), diveid(2));
    QVERIFY(loaded("rbmain") == nullptr);
    control<QAction>("rbinterface", "mnudiveinfo")->trigger();
    QCOMPARE(control<QLabel>("rbdetails", "txtdiveid")->text(), diveid(2));
    control<QLineEdit>("rbdetails", "Txtdiver")->setText(QStringLiteral("Anna"));
    control<QPushButton>("rbdetails", "cmdclose")->click();
    QCOMPARE(program.field(2, u"UserName"), "Anna");
    QVERIFY(program.field(1, u"UserName") != "Anna");
}

void TestHouseDives::theSameDiveOpenedAgainIsLoadedAnew() {
    DivesProgram program(1);
    program.open(1);
    control<platform::FlexGrid>("rbinterface", "MSFlexGrid1")->setRow(9);
    control<QAction>("main", "mnucurrentmain")->trigger();
    program.open(1);
    QCOMPARE(program.shownDive(), diveid(1));
    QCOMPARE(control<platform::FlexGrid>("rbinterface", "MSFlexGrid1")->row(), 1);
}

void TestHouseDives::theListThatComesBackIsFilledAnew() {
    DivesProgram program(1);
    program.open(1);
    control<QAction>("main", "mnucurrentmain")->trigger(); // beside the dive
    control<QAction>("rbinterface", "mnudiveinfo")->trigger();
    control<QLineEdit>("rbdetails", "txtlocation")->setText(QStringLiteral("Harbour"));
    control<QPushButton>("rbdetails", "cmdclose")->click();
    control<QAction>("rbinterface", "mnudiveexit")->trigger();
    QVERIFY(loaded("rbinterface") == nullptr);
    QCOMPARE(program.list().text(1, kNameColumn), "Harbour");
}

void TestHouseDives::theListComesBackOnTheDiveJustLookedAtOnce() {
    DivesProgram program(3);
    DivesProgram::open(2);
    QCOMPARE(DivesProgram::shownDive(), diveid(2));
    control<QAction>("rbinterface", "mnudiveexit")->trigger();
    QCOMPARE(DivesProgram::list().row(), 2);
    QCOMPARE(control<QLabel>("rbmain", "txtdiveid")->text(), diveid(2));
    control<QAction>("main", "mnucurrentmain")->trigger();
    QCOMPARE(DivesProgram::list().row(), 1);
    QCOMPARE(control<QLabel>("rbmain", "txtdiveid")->text(), diveid(1));
}

void TestHouseDives::anotherUnitReachesTheOpenList() {
    DivesProgram program(3);
    DivesProgram::choose(2);
    const QString metres = DivesProgram::list().text(2, 2);
    control<QAction>("main", "mnuFeet")->trigger();
    QVERIFY(DivesProgram::list().text(2, 2).endsWith(QLatin1String("ft")));
    QCOMPARE(DivesProgram::list().row(), 2);
    control<QAction>("main", "mnuMeters")->trigger();
    QCOMPARE(DivesProgram::list().text(2, 2), metres);
}

void TestHouseDives::theOpenListFollowsWhatTheDetailsSaved() {
    DivesProgram program(3);
    DivesProgram::open(2);
    DivesProgram::openDetails();
    control<QAction>("main", "mnucurrentmain")->trigger();
    DivesProgram::choose(3);
    control<QLineEdit>("rbdetails", "txtlocation")->setText(QStringLiteral("North wall"));
    control<QPushButton>("rbdetails", "cmdSave")->click();
    QCOMPARE(DivesProgram::list().text(2, kNameColumn), "North wall");
    QCOMPARE(DivesProgram::list().row(), 3);
}

void TestHouseDives::aCaptureSaysWhereItWent() {
    DivesProgram program(1);
    DivesProgram::open(1);
    control<QAction>("rbinterface", "mnuScrSave")->trigger();
    const QStringList pictures = QDir(program.folder.path("jpg")).entryList(QDir::Files);
    QCOMPARE(pictures.size(), 1);
    QVERIFY(control<QLabel>("rbinterface", "passingnote")->text().endsWith(pictures.first()));
    const QByteArray first = program.folder.get("jpg/" + pictures.first());
    control<QAction>("rbinterface", "mnuScrSave")->trigger(); // the note is not in the picture
    QCOMPARE(program.folder.get("jpg/" + pictures.first()), first);
}

void TestHouseDives::theListOfAnImportGoesWithTheDiveOpenedFromIt() {
    DivesProgram program(1);
    program.open(1);
    program.import(2);
    QVERIFY(shown("rbmain") && shown("rbinterface"));
    program.open(2);
    QVERIFY(loaded("rbmain") == nullptr);
    QVERIFY(shown("rbinterface"));
    control<QAction>("rbinterface", "mnudiveexit")->trigger();
    QVERIFY(shown("rbmain"));
    QVERIFY(loaded("rbinterface") == nullptr);
    QVERIFY(program.ended->isEmpty());
}

void TestHouseDives::anImportLeavesTheOpenDiveItsOwn() {
    DivesProgram program(2);
    program.open(1);
    program.import(3);
    program.openDetails();
    QCOMPARE(control<QLabel>("rbdetails", "txtdiveid")->text(), diveid(1));
    control<QAction>("rbinterface", "mnuunitsfeet")->trigger();
    QCOMPARE(program.shownDive(), diveid(1));
}

void TestHouseDives::showErrorsLeavesTheOpenDiveItsOwn() {
    DivesProgram program(2);
    program.open(1);
    control<QAction>("main", "mnucurrentmain")->trigger();
    program.choose(2);
    control<QAction>("rbmain", "mnuerrorcode")->trigger();
    program.openDetails();
    QCOMPARE(control<QLabel>("rbdetails", "txtdiveid")->text(), diveid(1));
    control<QAction>("rbinterface", "mnuunitsfeet")->trigger();
    QCOMPARE(program.shownDive(), diveid(1));
    QCOMPARE(process().currentdiveid, diveid(1));
}

void TestHouseDives::aRefusedOpenLeavesTheOpenDiveItsOwn() {
    DivesProgram program(2);
    process().database.execute("UPDATE main SET \"Interval\" = 'often' WHERE DiveID = 'D0000002'");
    program.open(1);
    control<QAction>("main", "mnucurrentmain")->trigger();
    program.dialogs.clear();
    program.open(2);
    QCOMPARE(program.dialogs.messages().size(), 1);
    QVERIFY(program.dialogs.messages().first().startsWith(QLatin1String("System cannot open Dive Profile")));
    QVERIFY(shown("rbmain"));
    QCOMPARE(program.shownDive(), diveid(1));
    program.openDetails();
    QCOMPARE(control<QLabel>("rbdetails", "txtdiveid")->text(), diveid(1));
    control<QAction>("rbinterface", "mnuunitsfeet")->trigger();
    QCOMPARE(program.shownDive(), diveid(1));
}

void TestHouseDives::otherUnitsLoadTheDiveThatIsShown() {
    DivesProgram program(3);
    program.open(2);
    process().currentdiveid = diveid(3); // whoever left it there
    control<QRadioButton>("rbinterface", "Option1")->click();
    QCOMPARE(program.shownDive(), diveid(2));
    QCOMPARE(control<QLabel>("rbinterface", "lblmaxdepth")->text(), "Feet");
    QCOMPARE(process().currentdiveid, diveid(2));
}

void TestHouseDives::aDiveThatTheStoreLostIsNotGivenDetails() {
    DivesProgram program(2);
    program.open(2);
    process().database.execute(
        "UPDATE main SET Startcode = '1', dbtxtname = 'another' WHERE DiveID = 'D0000002'");
    program.dialogs.clear();
    control<QAction>("rbinterface", "mnudiveinfo")->trigger();
    QVERIFY(loaded("rbdetails") == nullptr);
    QCOMPARE(program.dialogs.messages().size(), 1);
    QVERIFY(program.dialogs.messages().first().contains(diveid(2)));
}

void TestHouseDives::detailsLeftOpenStoreIntoTheirOwnDive() {
    DivesProgram program(2);
    program.open(1);
    program.openDetails();
    control<QLineEdit>("rbdetails", "Txtdiver")->setText(QStringLiteral("Anna"));
    control<QAction>("rbinterface", "mnudiveexit")->trigger();
    program.open(2);
    QCOMPARE(program.shownDive(), diveid(2));
    control<QPushButton>("rbdetails", "cmdSave")->click();
    QCOMPARE(program.field(1, u"UserName"), "Anna");
    QVERIFY(program.field(2, u"UserName") != "Anna");
    program.openDetails(); // of the second dive: those of the first make way
    QCOMPARE(control<QLabel>("rbdetails", "txtdiveid")->text(), diveid(2));
}

void TestHouseDives::theWayBackFromDetailsLeftOpenShowsTheirDive() {
    DivesProgram program(2);
    program.open(1);
    program.openDetails();
    control<QAction>("rbinterface", "mnudiveexit")->trigger();
    program.open(2);
    control<QPushButton>("rbdetails", "cmdclose")->click();
    QVERIFY(loaded("rbdetails") == nullptr);
    QCOMPARE(program.shownDive(), diveid(1));
    QCOMPARE(process().currentdiveid, diveid(1));
}

void TestHouseDives::theWayBackFromDetailsReplacesTheList() {
    DivesProgram program(2);
    program.open(1);
    program.openDetails();
    control<QAction>("rbinterface", "mnudiveexit")->trigger();
    program.choose(2);
    control<QAction>("rbmain", "mnuerrorcode")->trigger();
    control<QPushButton>("rbdetails", "cmdclose")->click();
    QCOMPARE(program.shownDive(), diveid(1));
    QVERIFY(loaded("rbmain") == nullptr);
    QVERIFY(program.ended->isEmpty());
}

void TestHouseDives::theWayBackToTheDiveThatIsShownKeepsItsRow() {
    DivesProgram program(1);
    program.open(1);
    control<platform::FlexGrid>("rbinterface", "MSFlexGrid1")->setRow(9);
    program.openDetails();
    control<QPushButton>("rbdetails", "cmdclose")->click();
    QCOMPARE(control<platform::FlexGrid>("rbinterface", "MSFlexGrid1")->row(), 9);
}

void TestHouseDives::aNumberGivenAgainByAnotherHandIsNotOverwritten() {
    DivesProgram program(2);
    program.open(2);
    program.openDetails();
    control<QLineEdit>("rbdetails", "Txtdiver")->setText(QStringLiteral("Anna"));
    process().database.execute("DELETE FROM main WHERE DiveID = 'D0000002'");
    process().database.execute(
        "INSERT INTO main (DiveID, UserName, Startcode, dbtxtname) VALUES ('D0000002', 'Bo', '7', 'x.txt')");
    program.dialogs.clear();
    control<QPushButton>("rbdetails", "cmdSave")->click();
    QCOMPARE(program.field(2, u"UserName"), "Bo");
    QCOMPARE(program.dialogs.messages().size(), 1);
    QVERIFY(program.dialogs.messages().first().contains(diveid(2)));
    control<QPushButton>("rbdetails", "cmdclose")->click(); // asked, and not tried again
    QCOMPARE(program.field(2, u"UserName"), "Bo");
}

void TestHouseDives::rowsWithoutWordsOfTheDeviceAreKnownByTheirRow() {
    DivesProgram program(2);
    process().database.execute("UPDATE main SET Startcode = NULL, dbtxtname = NULL");
    program.open(2);
    program.openDetails();
    control<QLineEdit>("rbdetails", "Txtdiver")->setText(QStringLiteral("Anna"));
    control<QPushButton>("rbdetails", "cmdSave")->click();
    QCOMPARE(program.field(2, u"UserName"), "Anna");
    // Another row takes the number while the old one stands under another.
    process().database.execute("UPDATE main SET DiveID = 'D0000009' WHERE DiveID = 'D0000002'");
    process().database.execute("INSERT INTO main (DiveID, UserName) VALUES ('D0000002', 'Bo')");
    control<QLineEdit>("rbdetails", "Txtdiver")->setText(QStringLiteral("Cleo"));
    control<QPushButton>("rbdetails", "cmdSave")->click();
    QCOMPARE(program.field(2, u"UserName"), "Bo");
}

void TestHouseDives::aDeletedDiveLeavesTheDiveScreen() {
    DivesProgram program(2);
    program.open(2);
    control<QAction>("main", "mnucurrentmain")->trigger();
    program.remove(2);
    QVERIFY(loaded("rbinterface") == nullptr);
    QVERIFY(!process().diveviewopen);
    QVERIFY(shown("rbmain"));
    program.import(3);
    QCOMPARE(program.list().text(2, 0), diveid(2)); // the freed number
    program.open(2);
    program.openDetails();
    QCOMPARE(control<QLineEdit>("rbdetails", "txtlocation")->text(), "dive3.txt");
    QVERIFY(program.ended->isEmpty());
}

void TestHouseDives::otherDivesDeletedLeaveTheDiveScreenOpen() {
    DivesProgram program(3);
    program.open(1);
    program.openDetails();
    control<QAction>("main", "mnucurrentmain")->trigger();
    program.remove(3);
    QVERIFY(shown("rbinterface"));
    QVERIFY(shown("rbdetails"));
    QCOMPARE(program.shownDive(), diveid(1));
    control<QLineEdit>("rbdetails", "Txtdiver")->setText(QStringLiteral("Anna"));
    control<QPushButton>("rbdetails", "cmdclose")->click();
    QCOMPARE(program.field(1, u"UserName"), "Anna");
}

void TestHouseDives::detailsOfADeletedDiveAreStoredAndClosed() {
    DivesProgram program(2);
    program.open(2);
    program.openDetails();
    control<QComboBox>("rbdetails", "Cbosite")->setEditText(QStringLiteral("Blue hole"));
    control<QComboBox>("rbdetails", "Cbodepartment")->setEditText(QStringLiteral("O'Hara's"));
    control<QAction>("rbinterface", "mnudiveexit")->trigger();
    program.dialogs.clear();
    program.remove(2);
    QVERIFY(loaded("rbdetails") == nullptr);
    QVERIFY(loaded("rbinterface") == nullptr);
    QVERIFY(shown("rbmain"));
    QCOMPARE(program.dialogs.asked().size(), 1); // the question before the deletion alone
    // What was typed stood in the store before the dive went: the list of places has it.
    QCOMPARE(DivesProgram::text("SELECT Site FROM site"), "Blue hole");
    QVERIFY(QDir(program.folder.path("jpg")).entryList(QDir::Files).isEmpty());
    QVERIFY(listSays(diveid(2)));
    QVERIFY(listSays(QStringLiteral("stored and closed; with its single quote not kept for choosing again: "
                                    "O'Hara's")));
    QVERIFY(program.ended->isEmpty());
}

void TestHouseDives::theNextDiveOfTheNumberGetsNothingOfTheDeletedOne() {
    DivesProgram program(2);
    program.open(2);
    program.openDetails();
    control<QLineEdit>("rbdetails", "Txtdiver")->setText(QStringLiteral("Anna"));
    control<QPlainTextEdit>("rbdetails", "txtdivenote")->setPlainText(QStringLiteral("with the seals"));
    control<QAction>("rbinterface", "mnudiveexit")->trigger();
    program.remove(2);
    program.import(3);
    QCOMPARE(program.field(2, u"Location"), "dive3.txt");
    QVERIFY(program.field(2, u"UserName") != "Anna");
    QCOMPARE(program.field(2, u"divenote"), "");
    control<QAction>("main", "mnuExit")->trigger(); // the end stores what is open
    QVERIFY(program.field(2, u"UserName") != "Anna");
}

void TestHouseDives::detailsThatCannotBeStoredKeepTheirDive() {
    DivesProgram program(2);
    program.open(2);
    program.openDetails();
    control<QLineEdit>("rbdetails", "Txtdiver")->setText(QStringLiteral("Anna"));
    control<QAction>("rbinterface", "mnudiveexit")->trigger();
    process().database.execute("DROP TABLE buddylist"); // what the details need is gone
    program.dialogs.clear();
    program.remove(2);
    QVERIFY(shown("rbdetails"));
    QCOMPARE(control<QLineEdit>("rbdetails", "Txtdiver")->text(), "Anna");
    QCOMPARE(DivesProgram::text("SELECT COUNT(*) FROM main"), "2");
    QCOMPARE(program.dialogs.messages().size(), 1);
    QVERIFY(program.dialogs.messages().first().contains(diveid(2)));
}

/// The picture that the details take on their way out lets events run.
void TestHouseDives::deletingWhileTheDetailsCloseAsksNothing() {
    DivesProgram program(2);
    program.open(2);
    program.openDetails();
    control<QLineEdit>("rbdetails", "Txtdiver")->setText(QStringLiteral("Anna"));
    control<QAction>("main", "mnucurrentmain")->trigger();
    program.dialogs.clear();
    QMetaObject::invokeMethod(
        loaded("rbmain"), [&program] { program.remove(2); }, Qt::QueuedConnection);
    control<QPushButton>("rbdetails", "cmdclose")->click();
    QCoreApplication::processEvents();
    QVERIFY(loaded("rbdetails") == nullptr);
    QCOMPARE(DivesProgram::text("SELECT COUNT(*) FROM main"), "1");
    QCOMPARE(program.dialogs.asked().size(), 1);
    QVERIFY(loaded("rbinterface") == nullptr);
    QVERIFY(shown("rbmain"));
}

int main(int argc, char** argv) {
    return runAsProgram<TestHouseDives>(argc, argv);
}
#include "test_house_dives.moc"
