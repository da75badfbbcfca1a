// Taking back and doing again in the joined program: the menu, the trash, and the screens that stand open
// beside them.

#include "logbook/acts.h"
#include "logbook/screens/rbdetails.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/grid/flexgrid.h"
#include "tests/shell/divesstage.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeWidget>

using namespace benthor;
using namespace benthor::tests;

namespace {

QAction& entry(const char* name) {
    return *control<QAction>("rbmain", name);
}

QString caption(const char* name) {
    return entry(name).text().remove(QLatin1Char('&'));
}

QTreeWidget& deleted() {
    return *control<QTreeWidget>("trash", "treetrash");
}

/// The key Z in a box of the list's window, which the user works in.
void press(QWidget& box, Qt::KeyboardModifiers modifiers) {
    loaded("rbmain")->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(loaded("rbmain")));
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_Z, modifiers);
}

QStringList dives() {
    QStringList ids;
    for (int row = 1; row < DivesProgram::list().rows(); ++row) {
        ids += DivesProgram::list().text(row, 0);
    }
    return ids;
}

} // namespace

class TestHouseActs : public QObject {
    Q_OBJECT

private slots:
    // the menu
    void theMenuSaysWhatItWouldTakeBackAndIsGreyWithoutIt();
    void aDeletedDiveIsBackInTheListAndChosen();
    void theKeysOfTheMenuTakeBackAndDoAgain();
    void inATextBoxTheKeysAreTheBoxsOwn();
    void whatWasDoneInAnEarlierRunIsTakenBack();
    void anotherStoreThatIsShownOffersNothing();
    void aDiveWhoseNumberIsTakenIsNamedInABox();
    void anActThatFitsNoMoreIsNamedInABox();
    void aDeleteThatCannotBeTakenBackSaysSo();
    void aSaveThatCannotBeTakenBackSaysSo();

    // beside open screens
    void detailsThatAreOpenShowWhatATakenBackSaveLeft();
    void detailsThatAreOpenAndTypedInAreStoredBeforeAnythingIsTakenBack();
    void aDiveThatARedoDeletesLeavesItsScreens();
    void whileDivesAreImportedNothingIsTakenBack();
    void aFileThatCameBackIsImportedAsItWas();

    // the trash
    void theTrashListsDeletedDivesWithWhenAndWhat();
    void aDivePutBackIsInTheListAndNoLongerInTheTrash();
    void aDiveDeletedForGoodIsAskedForAndGone();
    void aStoreThatCanOnlyBeReadOffersNothing();
    void aFileThatCannotBeReadIsNamedInMenuAndTrash();
    void behindThirtyDaysDeletedDivesAreGone();
    void theTrashThatIsOpenFollowsDeletesAndUndos();
    void whenAllDivesAreDeletedTheTrashOpens();
    void theTrashKeepsTheProgramOpenAndGoesWithIt();
};

void TestHouseActs::theMenuSaysWhatItWouldTakeBackAndIsGreyWithoutIt() {
    DivesProgram program(3);
    QCOMPARE(caption("mnuundo"), "Undo");
    QVERIFY(!entry("mnuundo").isEnabled());
    QVERIFY(!entry("mnuredo").isEnabled());
    program.remove(2);
    QCOMPARE(caption("mnuundo"), "Undo delete of 1 dive");
    QVERIFY(entry("mnuundo").isEnabled());
    entry("mnuundo").trigger();
    QCOMPARE(caption("mnuundo"), "Undo");
    QCOMPARE(caption("mnuredo"), "Redo delete of 1 dive");
    QVERIFY(!entry("mnuundo").isEnabled());
    QVERIFY(entry("mnuredo").isEnabled());
}

void TestHouseActs::aDeletedDiveIsBackInTheListAndChosen() {
    DivesProgram program(3);
    program.dialogs.clear();
    program.remove(2);
    QCOMPARE(dives(), QStringList({diveid(1), diveid(3)}));
    entry("mnuundo").trigger();
    QCOMPARE(dives(), QStringList({diveid(1), diveid(2), diveid(3)}));
    QCOMPARE(program.list().row(), 2);
    QVERIFY(listSays(QStringLiteral("Taken back: delete of 1 div")));
    QCOMPARE(program.dialogs.messages(), QStringList());
}

void TestHouseActs::theKeysOfTheMenuTakeBackAndDoAgain() {
    DivesProgram program(2);
    program.remove(2);
    press(program.list(), Qt::ControlModifier);
    QCOMPARE(dives().size(), 2);
    press(program.list(), Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(dives().size(), 1);
}

void TestHouseActs::inATextBoxTheKeysAreTheBoxsOwn() {
    DivesProgram program(2);
    program.remove(2);
    control<QAbstractButton>("rbmain", "Picture5(0)")->click();
    auto* box = loaded("rbmain")->findChild<QPlainTextEdit*>();
    QVERIFY(box != nullptr);
    box->setFocus();
    QTest::keyClicks(box, QStringLiteral("abc"));
    press(*box, Qt::ControlModifier);
    QCOMPARE(box->toPlainText(), "");
    press(*box, Qt::ControlModifier); // nothing is left to take back there
    QCOMPARE(dives().size(), 1);
    auto* line = loaded("rbmain")->findChild<QLineEdit*>();
    QVERIFY(line != nullptr);
    line->setFocus();
    press(*line, Qt::ControlModifier);
    QCOMPARE(dives().size(), 1);
}

void TestHouseActs::whatWasDoneInAnEarlierRunIsTakenBack() {
    DivesProgram program(2);
    program.remove(1);
    loaded("rbmain")->close();
    process().database.close();
    process().database.open(program.folder.path(QStringLiteral("rb.mdb")));
    control<QPushButton>("main", "Command1")->click();
    QCOMPARE(caption("mnuundo"), "Undo delete of 1 dive");
    entry("mnuundo").trigger();
    QCOMPARE(dives().size(), 2);
}

void TestHouseActs::anotherStoreThatIsShownOffersNothing() {
    DivesProgram program(2);
    program.remove(1);
    const QString other = program.folder.path(QStringLiteral("other.mdb"));
    QVERIFY(platform::copyFile(program.folder.path(QStringLiteral("rb.mdb")), other));
    program.dialogs.answerFile(other);
    control<QAction>("main", "mnuOpen")->trigger();
    QVERIFY(!entry("mnuundo").isEnabled());
    QVERIFY(!entry("mnutrash").isEnabled());
    QCOMPARE(caption("mnuundo"), "Undo");
    QVERIFY(!QFile::exists(program.folder.path(QStringLiteral("other.mdb-journal"))));
}

void TestHouseActs::aDiveWhoseNumberIsTakenIsNamedInABox() {
    DivesProgram program(2);
    program.remove(2);
    program.import(3);
    QCOMPARE(dives(), QStringList({diveid(1), diveid(2)}));
    program.dialogs.clear();
    entry("mnuundo").trigger();
    QCOMPARE(dives(), QStringList({diveid(1), diveid(2), diveid(3)}));
    QCOMPARE(program.dialogs.messages(),
             QStringList{"The number D0000002 is another dive's by now: the dive came back as D0000003."});
    QCOMPARE(program.field(3, u"Location"), "dive2.txt");
    QCOMPARE(program.list().row(), 3);
}

void TestHouseActs::anActThatFitsNoMoreIsNamedInABox() {
    DivesProgram program(2);
    program.remove(2);
    entry("mnuundo").trigger();
    process().database.execute("UPDATE main SET otu = '7' WHERE DiveID = 'D0000002'");
    program.dialogs.clear();
    entry("mnuredo").trigger();
    QCOMPARE(program.dialogs.messages().size(), 1);
    QVERIFY(program.dialogs.messages().first().contains(QLatin1String("the delete of 1 dive does not fit")));
    QCOMPARE(dives().size(), 2);
    QVERIFY(!entry("mnuredo").isEnabled());
}

void TestHouseActs::aDeleteThatCannotBeTakenBackSaysSo() {
    DivesProgram program(2);
    program.folder.put(QStringLiteral("rb-acts.db"), QByteArray(5000, 'x'));
    program.dialogs.clear();
    program.remove(2);
    QCOMPARE(dives().size(), 1);
    QVERIFY(program.dialogs.messages().value(0).startsWith(
        QLatin1String("What was deleted cannot be taken back.")));
    QVERIFY(program.dialogs.messages().value(0).contains(QLatin1String("rb-acts-damaged.db")));
    QCOMPARE(program.folder.get(QStringLiteral("rb-acts-damaged.db")), QByteArray(5000, 'x'));
    QVERIFY(!entry("mnuundo").isEnabled());
}

void TestHouseActs::aSaveThatCannotBeTakenBackSaysSo() {
    DivesProgram program(1);
    program.folder.put(QStringLiteral("rb-acts.db"), QByteArray(5000, 'x'));
    program.open(1);
    program.openDetails();
    control<QLineEdit>("rbdetails", "Txtdiver")->setText(QStringLiteral("Anna"));
    control<QAction>("rbdetails", "mnuSave")->trigger();
    const QList<QLabel*> labels = loaded("rbdetails")->findChildren<QLabel*>();
    QVERIFY(std::any_of(labels.begin(), labels.end(), [](const QLabel* label) {
        return label->text().startsWith(QLatin1String("Saved; this save cannot be taken back"));
    }));
    QCOMPARE(program.field(1, u"UserName"), "Anna");
}

void TestHouseActs::detailsThatAreOpenShowWhatATakenBackSaveLeft() {
    DivesProgram program(1);
    program.open(1);
    program.openDetails();
    auto* diver = control<QLineEdit>("rbdetails", "Txtdiver");
    const QString before = diver->text();
    diver->setText(QStringLiteral("Anna"));
    control<QAction>("rbdetails", "mnuSave")->trigger();
    control<QAction>("rbinterface", "mnudiveexit")->trigger();
    QCOMPARE(caption("mnuundo"), "Undo details of D0000001");
    entry("mnuundo").trigger();
    QCOMPARE(program.field(1, u"UserName"), before);
    QCOMPARE(diver->text(), before);
    // Leaving the screen stores what stands there, and that is not what was taken back.
    loaded("rbdetails")->close();
    QCOMPARE(program.field(1, u"UserName"), before);
}

void TestHouseActs::detailsThatAreOpenAndTypedInAreStoredBeforeAnythingIsTakenBack() {
    DivesProgram program(2);
    program.remove(2);
    program.open(1);
    program.openDetails();
    control<QLineEdit>("rbdetails", "Txtdiver")->setText(QStringLiteral("Anna"));
    control<QAction>("rbinterface", "mnudiveexit")->trigger();
    program.dialogs.clear();
    entry("mnuundo").trigger();
    QCOMPARE(dives().size(), 1); // not what the menu said any more
    QVERIFY(program.dialogs.messages().value(0).startsWith(QLatin1String("What was typed in the details")));
    QCOMPARE(program.field(1, u"UserName"), "Anna");
    QCOMPARE(caption("mnuundo"), "Undo details of D0000001");
    entry("mnuundo").trigger();
    QCOMPARE(caption("mnuundo"), "Undo delete of 1 dive");
    entry("mnuundo").trigger();
    QCOMPARE(dives().size(), 2);
}

void TestHouseActs::aDiveThatARedoDeletesLeavesItsScreens() {
    DivesProgram program(2);
    program.remove(2);
    entry("mnuundo").trigger();
    program.open(2);
    program.openDetails();
    control<QAction>("rbinterface", "mnudiveexit")->trigger();
    QVERIFY(loaded("rbdetails") != nullptr);
    entry("mnuredo").trigger();
    QVERIFY(loaded("rbdetails") == nullptr);
    QCOMPARE(dives(), QStringList{diveid(1)});
    QVERIFY(shown("rbmain"));
}

void TestHouseActs::whileDivesAreImportedNothingIsTakenBack() {
    DivesProgram program(2);
    program.remove(2);
    program.dialogs.clear();
    process().importing = true;
    entry("mnuundo").trigger();
    process().importing = false;
    QCOMPARE(dives().size(), 1);
    QCOMPARE(program.dialogs.messages(),
             QStringList{"Dives are being imported. Try again when that is done."});
    entry("mnuundo").trigger();
    QCOMPARE(dives().size(), 2);
}

void TestHouseActs::aFileThatCameBackIsImportedAsItWas() {
    DivesProgram program(2);
    program.wait(2); // its file once more, not imported yet
    program.remove(2);
    QVERIFY(!program.folder.has(QStringLiteral("new/dive2.txt")));
    entry("mnuundo").trigger();
    QVERIFY(program.folder.has(QStringLiteral("new/dive2.txt")));
    expire("main", "Timer1");
    QCOMPARE(dives().size(), 3);
}

void TestHouseActs::theTrashListsDeletedDivesWithWhenAndWhat() {
    DivesProgram program(3);
    const platform::FixedClock clock(QDateTime(QDate(2026, 3, 4), QTime(5, 6, 7)));
    program.remove(2);
    entry("mnutrash").trigger();
    QVERIFY(shown("trash"));
    QCOMPARE(deleted().topLevelItemCount(), 1);
    const QTreeWidgetItem* row = deleted().topLevelItem(0);
    QCOMPARE(row->text(0), diveid(2));
    QCOMPARE(row->text(1), "dive2.txt");
    QVERIFY(!row->text(2).isEmpty());
    QCOMPARE(row->text(3), "Mar/04/2026 05:06:07");
    QVERIFY(!control<QPushButton>("trash", "cmdputback")->isEnabled());
    QVERIFY(!control<QPushButton>("trash", "cmddeleteforgood")->isEnabled());
}

void TestHouseActs::aDivePutBackIsInTheListAndNoLongerInTheTrash() {
    DivesProgram program(3);
    program.remove(2);
    program.remove(1);
    entry("mnutrash").trigger();
    QCOMPARE(deleted().topLevelItemCount(), 2);
    deleted().topLevelItem(1)->setSelected(true);
    control<QPushButton>("trash", "cmdputback")->click();
    QCOMPARE(dives(), QStringList({diveid(2), diveid(3)}));
    QCOMPARE(deleted().topLevelItemCount(), 1);
    QCOMPARE(caption("mnuundo"), "Undo delete of 1 dive"); // that of the other dive
    entry("mnuundo").trigger();
    QCOMPARE(dives().size(), 3);
    QCOMPARE(deleted().topLevelItemCount(), 0);
    QVERIFY(!entry("mnuundo").isEnabled());
}

void TestHouseActs::aDiveDeletedForGoodIsAskedForAndGone() {
    DivesProgram program(2);
    program.remove(2);
    const QByteArray kept = program.folder.get(QStringLiteral("old/dive2.txt"));
    QVERIFY(!kept.isEmpty());
    entry("mnutrash").trigger();
    deleted().topLevelItem(0)->setSelected(true);
    program.dialogs.answer(false);
    control<QPushButton>("trash", "cmddeleteforgood")->click();
    QCOMPARE(deleted().topLevelItemCount(), 1);
    QVERIFY(program.dialogs.asked().last().noIsDefault);
    program.dialogs.answer(true);
    control<QPushButton>("trash", "cmddeleteforgood")->click();
    QCOMPARE(deleted().topLevelItemCount(), 0);
    QVERIFY(!entry("mnuundo").isEnabled());
    QCOMPARE(program.folder.get(QStringLiteral("old/dive2.txt")), kept);
    // None of its words is left in the file.
    QVERIFY(!program.folder.get(QStringLiteral("rb-acts.db")).contains("dive2.txt"));
}

void TestHouseActs::aStoreThatCanOnlyBeReadOffersNothing() {
    DivesProgram program(2);
    program.remove(2);
    process().database.setReadOnly(QStringLiteral("It is locked away."));
    loaded("rbmain")->close();
    control<QPushButton>("main", "Command1")->click();
    QVERIFY(!entry("mnuundo").isEnabled());
    entry("mnutrash").trigger();
    QCOMPARE(deleted().topLevelItemCount(), 0);
    QVERIFY(control<QLabel>("trash", "lbltrash")->text().endsWith(QLatin1String("It is locked away.")));
    process().database.setReadOnly(QString());
}

void TestHouseActs::aFileThatCannotBeReadIsNamedInMenuAndTrash() {
    DivesProgram program(2);
    program.folder.put(QStringLiteral("rb-acts.db"), QByteArray(5000, 'x'));
    loaded("rbmain")->close();
    control<QPushButton>("main", "Command1")->click();
    QVERIFY(!entry("mnuundo").isEnabled());
    QVERIFY(entry("mnuundo").toolTip().contains(QLatin1String("not a database")));
    entry("mnutrash").trigger();
    QVERIFY(control<QLabel>("trash", "lbltrash")
                ->text()
                .startsWith(QLatin1String("What was deleted cannot be read.")));
}

void TestHouseActs::behindThirtyDaysDeletedDivesAreGone() {
    DivesProgram program(2);
    const QDateTime deletedAt(QDate(2026, 3, 4), QTime(5, 6, 7));
    {
        const platform::FixedClock clock(deletedAt);
        program.remove(2);
    }
    {
        const platform::FixedClock clock(deletedAt.addDays(30));
        entry("mnutrash").trigger();
        QCOMPARE(deleted().topLevelItemCount(), 1);
        loaded("trash")->close();
    }
    const platform::FixedClock clock(deletedAt.addDays(30).addSecs(1));
    entry("mnutrash").trigger();
    QCOMPARE(deleted().topLevelItemCount(), 0);
    loaded("rbmain")->close();
    control<QPushButton>("main", "Command1")->click();
    QVERIFY(!entry("mnuundo").isEnabled());
    QVERIFY(program.folder.has(QStringLiteral("old/dive2.txt")));
}

void TestHouseActs::theTrashThatIsOpenFollowsDeletesAndUndos() {
    DivesProgram program(3);
    entry("mnutrash").trigger();
    QCOMPARE(deleted().topLevelItemCount(), 0);
    program.remove(2);
    QCOMPARE(deleted().topLevelItemCount(), 1);
    entry("mnuundo").trigger();
    QCOMPARE(deleted().topLevelItemCount(), 0);
    entry("mnuredo").trigger();
    QCOMPARE(deleted().topLevelItemCount(), 1);
}

void TestHouseActs::whenAllDivesAreDeletedTheTrashOpens() {
    DivesProgram program(1);
    program.remove(1);
    expire("rbmain", "Timer3");
    QVERIFY(program.dialogs.messages().last().startsWith(
        QLatin1String("No dives in database. Please download dives using Download to PC Window.")));
    QVERIFY(!shown("rbmain"));
    QVERIFY(shown("trash"));
    deleted().topLevelItem(0)->setSelected(true);
    control<QPushButton>("trash", "cmdputback")->click();
    QVERIFY(shown("rbmain"));
    QCOMPARE(dives(), QStringList{diveid(1)});
}

void TestHouseActs::theTrashKeepsTheProgramOpenAndGoesWithIt() {
    DivesProgram program(1);
    entry("mnutrash").trigger();
    QVERIFY(shown("trash"));
    loaded("main")->close();
    QCoreApplication::sendPostedEvents();
    QVERIFY(!shown("trash"));
}

int main(int argc, char** argv) {
    return runAsProgram<TestHouseActs>(argc, argv);
}
#include "test_house_acts.moc"
