// Bringing dives of another logbook into this one, in the joined program.

#include "logbook/screens/mergelogbook.h"
#include "logbook/screens/mergemodel.h"
#include "platform/files.h"
#include "tests/shell/divesstage.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QComboBox>
#include <QDirIterator>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeView>

using namespace benthor;
using namespace benthor::tests;
using logbook::MergeModel;

namespace {

/// The program with `own` dives beside the folder of another diver, who has the dives from `first` to `last`.
struct TwoLogbooks : DivesProgram {
    TwoLogbooks(int own, int first, int last)
        : DivesProgram(own) {
        const QString here = folder.root();
        const QString there = other.path();
        for (const char* const name : {"dbtxt", "old"}) {
            QDir().mkpath(there + u'/' + QLatin1String(name));
        }
        QFile::copy(here + QStringLiteral("/rb.mdb"), there + QStringLiteral("/rb.mdb"));
        platform::Database store;
        store.open(there + QStringLiteral("/rb.mdb"));
        store.execute("DELETE FROM main");
        for (int number = first; number <= last; ++number) {
            const QString text = QStringLiteral("T%1.txt").arg(number);
            const QString code = QString::number(382352313 + 86400LL * number);
            store.execute(platform::sqlWith("INSERT INTO main (DiveID, Startcode, Suit, Location, dbtxtname, "
                                            "startdate, Coments) VALUES ('",
                                            diveid(number), "', '", code, "', 'KD00123', 'theirs', '", text,
                                            "', '2004-02-11 08:58:33', 'a shark')"));
            QFile file(there + QStringLiteral("/dbtxt/") + text);
            if (!file.open(QIODevice::WriteOnly) || file.write(diveText(number)) <= 0) {
                qFatal("no dive file");
            }
        }
    }

    void openScreen() { control<QAction>("rbmain", "mnumerge")->trigger(); }
    void chooseFolder() {
        openScreen();
        dialogs.answerFile(other.path());
        button("cmdotherfolder").click();
    }

    static QPushButton& button(const char* name) { return *control<QPushButton>("mergelogbook", name); }
    static QString note() { return control<QLabel>("mergelogbook", "lblmerge")->text(); }
    static QTreeView& tree() { return *control<QTreeView>("mergelogbook", "treemerge"); }
    static QAbstractItemModel& model() { return *tree().model(); }
    static QString group(int number) { return model().index(number, 0).data().toString(); }
    static QModelIndex dive(int group, int row, int column = 0) {
        return model().index(row, column, model().index(group, 0));
    }
    static QString caption(const QPushButton& of) { return of.text().remove(u'&'); }

    QTemporaryDir other;
};

QStringList listed() {
    QStringList ids;
    for (int row = 1; row < DivesProgram::list().rows(); ++row) {
        ids += DivesProgram::list().text(row, 0);
    }
    return ids;
}

} // namespace

class TestHouseMerge : public QObject {
    Q_OBJECT

private slots:
    void theEntryLeadsToAnEmptyScreen();
    void theDivesStandInThreeGroups();
    void depthsStandInTheUnitInHand();
    void whatIsTickedComesAndTheListShowsIt();
    void anEmptyLogbookIsFilledFromTheMainScreen();
    void nothingTickedLeavesTheButtonGrey();
    void detailsAreChosenLineByLine();
    void whatIsTypedInOpenDetailsIsStoredFirst();
    void aLogbookThatHasChangedIsShownBeforeAnythingIsMerged();
    void aStoreThatWasReplacedIsReadAnew();
    void aStoreThatKeepsItsChangesBesideItIsReadAnew();
    void aLogbookThatIsGoneBringsNothing();
    void aMergeIsTakenBackFromTheMenu();
    void whatIsNoLogbookIsSaidInTheScreen();
    void whileDivesAreImportedNothingIsMerged();
    void anotherStoreThatIsShownOffersNoMerge();
    void aListThatShowsAnotherStoreStaysAsItIs();
    void theScreenKeepsTheProgramOpenAndGoesWithIt();
};

void TestHouseMerge::theEntryLeadsToAnEmptyScreen() {
    TwoLogbooks program(1, 1, 1);
    QCOMPARE(control<QAction>("rbmain", "mnumerge")->text().remove(u'&'),
             "Bring dives from another logbook...");
    program.openScreen();
    QVERIFY(shown("mergelogbook"));
    QCOMPARE(program.model().rowCount(), 0);
    QVERIFY(!program.button("cmdmerge").isEnabled());
    program.button("cmdotherfolder").click(); // cancelled
    QCOMPARE(program.model().rowCount(), 0);
    program.button("cmdclosemerge").click();
    QVERIFY(!shown("mergelogbook"));
}

void TestHouseMerge::theDivesStandInThreeGroups() {
    TwoLogbooks program(3, 2, 5);
    // One of them is the same in every word.
    process().database.execute("UPDATE main SET Coments = 'a shark', Location = 'theirs', Suit = 'KD00123'"
                               " WHERE DiveID = 'D0000003'");
    program.chooseFolder();
    QCOMPARE(program.group(0), "Not here yet (2)");
    QCOMPARE(program.group(1), "Here with other details (1)");
    QCOMPARE(program.group(2), "Here already (1)");
    const auto* heading = control<QLabel>("mergelogbook", "lblotherlogbook");
    QCOMPARE(heading->text(), QFileInfo(program.other.path()).fileName());
    QCOMPARE(heading->toolTip(), program.other.path());
    QCOMPARE(program.dive(0, 0).data().toString(), diveid(4));
    QCOMPARE(program.dive(0, 0).data(Qt::CheckStateRole).toInt(), static_cast<int>(Qt::Checked));
    QCOMPARE(program.dive(1, 0).data().toString(), "D0000002, here D0000002");
    QCOMPARE(program.dive(1, 0).data(Qt::CheckStateRole).toInt(), static_cast<int>(Qt::Unchecked));
    QVERIFY(!(program.dive(2, 0).flags() & Qt::ItemIsUserCheckable));
    QCOMPARE(program.caption(program.button("cmdmerge")), "Bring 2 dives");
}

void TestHouseMerge::depthsStandInTheUnitInHand() {
    TwoLogbooks program(1, 2, 2);
    platform::Database store;
    store.open(program.other.filePath(QStringLiteral("rb.mdb")));
    store.execute("UPDATE main SET MaxDepth = '30.000'");
    store.close();
    program.chooseFolder();
    QCOMPARE(program.dive(0, 0, MergeModel::MaxDepth).data().toString(), "30m");
    for (const int column : {MergeModel::Duration, MergeModel::MaxDepth}) { // numbers stand right
        QVERIFY(program.dive(0, 0, column).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight);
    }
    control<QAction>("main", "mnuFeet")->trigger();
    QCOMPARE(program.dive(0, 0, MergeModel::MaxDepth).data().toString(), "98ft");
}

void TestHouseMerge::whatIsTickedComesAndTheListShowsIt() {
    TwoLogbooks program(2, 4, 6);
    program.chooseFolder();
    QVERIFY(program.model().setData(program.dive(0, 1, 0), Qt::Unchecked, Qt::CheckStateRole));
    QCOMPARE(program.caption(program.button("cmdmerge")), "Bring 2 dives");
    program.dialogs.clear();
    program.button("cmdmerge").click();
    QVERIFY(!shown("mergelogbook"));
    QCOMPARE(listed(), (QStringList{diveid(1), diveid(2), diveid(3), diveid(4)}));
    QCOMPARE(program.field(3, u"Startcode"), QString::number(382352313 + 86400LL * 4));
    QCOMPARE(program.field(4, u"Startcode"), QString::number(382352313 + 86400LL * 6));
    QCOMPARE(program.list().row(), 3); // the first that came is chosen
    QCOMPARE(program.dialogs.messages().size(), 1);
    QVERIFY(program.dialogs.messages().first().startsWith(QLatin1String("2 dives came.\n1 dive stayed")));
    QCOMPARE(program.folder.get(QStringLiteral("dbtxt/") + program.field(3, u"dbtxtname")),
             DivesProgram::diveText(4));
    program.open(3);
    QCOMPARE(program.shownDive(), diveid(3));
}

/// The list of an empty logbook closes itself, so that the way must not lead through it.
void TestHouseMerge::anEmptyLogbookIsFilledFromTheMainScreen() {
    TwoLogbooks program(0, 1, 2);
    auto* words = control<QLabel>("main", "firstdive");
    QVERIFY(words->isVisible());
    control<QPushButton>("main", "firstmerge")->click();
    QVERIFY(shown("mergelogbook"));
    program.dialogs.answerFile(program.other.path());
    program.button("cmdotherfolder").click();
    program.button("cmdmerge").click();
    QVERIFY(!shown("mergelogbook"));
    QCOMPARE(listed(), (QStringList{diveid(1), diveid(2)}));
    QVERIFY(!words->isVisible());
    QVERIFY(control<QLabel>("main", "lbltotaldive")->text().contains(QLatin1String("total of : \n2 dives")));
    control<QAction>("main", "mnubringdives")->trigger();
    QVERIFY(shown("mergelogbook"));
}

void TestHouseMerge::nothingTickedLeavesTheButtonGrey() {
    TwoLogbooks program(1, 2, 3);
    program.chooseFolder();
    QVERIFY(program.model().setData(program.model().index(0, 0), Qt::Unchecked, Qt::CheckStateRole));
    QCOMPARE(program.caption(program.button("cmdmerge")), "Bring 0 dives");
    QVERIFY(!program.button("cmdmerge").isEnabled());
    QVERIFY(program.model().setData(program.model().index(0, 0), Qt::Checked, Qt::CheckStateRole));
    QCOMPARE(program.caption(program.button("cmdmerge")), "Bring 2 dives");
}

void TestHouseMerge::detailsAreChosenLineByLine() {
    TwoLogbooks program(1, 1, 1);
    process().database.execute("UPDATE main SET Coments = 'a ray'");
    program.chooseFolder();
    const QModelIndex dive = program.dive(1, 0);
    int comments = -1;
    for (int row = 0; row < program.model().rowCount(dive); ++row) {
        if (program.model().index(row, 0, dive).data().toString() == QLatin1String("Comments")) {
            comments = row;
        }
    }
    QVERIFY(comments >= 0);
    const QModelIndex choice = program.model().index(comments, MergeModel::kChoice, dive);
    QCOMPARE(choice.data().toString(), "Mine");
    program.tree().edit(choice);
    auto* box = program.tree().findChild<QComboBox*>(QStringLiteral("Cbochoice"));
    QVERIFY(box != nullptr);
    QCOMPARE(box->count(), 3);
    box->setCurrentText(QStringLiteral("Both"));
    emit box->activated(box->currentIndex());
    QCOMPARE(choice.data().toString(), "Both");
    QCOMPARE(program.caption(program.button("cmdmerge")), "Change 1"); // who chooses wants it done
    program.button("cmdmerge").click();
    QCOMPARE(program.field(1, u"Coments"), "a ray\r\na shark");
    QCOMPARE(program.field(1, u"Location"), "dive1.txt"); // nothing was chosen of it
}

void TestHouseMerge::whatIsTypedInOpenDetailsIsStoredFirst() {
    TwoLogbooks program(1, 1, 2);
    program.open(1);
    program.openDetails();
    control<QPlainTextEdit>("rbdetails", "txtdivenote")->setPlainText(QStringLiteral("typed"));
    control<QAction>("main", "mnucurrentmain")->trigger();
    program.chooseFolder();
    program.button("cmdmerge").click();
    QCOMPARE(program.field(1, u"divenote"), "typed");
    QCOMPARE(listed().size(), 2);
    QCOMPARE(control<QPlainTextEdit>("rbdetails", "txtdivenote")->toPlainText(), "typed");
}

void TestHouseMerge::aLogbookThatHasChangedIsShownBeforeAnythingIsMerged() {
    TwoLogbooks program(2, 2, 3);
    program.chooseFolder();
    QCOMPARE(program.group(0), "Not here yet (1)");
    loaded("rbmain")->activateWindow();
    program.remove(2); // the dive that was here already
    program.dialogs.clear();
    program.button("cmdmerge").click();
    QCOMPARE(listed().size(), 1);
    QVERIFY(program.dialogs.messages().join(u'\n').contains(QLatin1String("have changed")));
    QCOMPARE(program.group(0), "Not here yet (2)");
    program.button("cmdmerge").click();
    QCOMPARE(listed().size(), 3);
}

/// Copied there anew from the other computer, say: the file that was opened is another one by then.
void TestHouseMerge::aStoreThatWasReplacedIsReadAnew() {
    TwoLogbooks program(1, 2, 3);
    program.chooseFolder();
    const QString there = program.other.filePath(QStringLiteral("rb.mdb"));
    const QString fresh = program.other.filePath(QStringLiteral("fresh"));
    QVERIFY(QFile::copy(there, fresh));
    {
        platform::Database store;
        store.open(fresh);
        store.execute("DELETE FROM main WHERE DiveID = 'D0000003'");
    }
    QVERIFY(platform::moveFile(fresh, there));
    program.dialogs.clear();
    program.button("cmdmerge").click();
    QCOMPARE(listed().size(), 1);
    QVERIFY(program.dialogs.messages().join(u'\n').contains(QLatin1String("have changed")));
    QCOMPARE(program.group(0), "Not here yet (1)");
    program.button("cmdmerge").click();
    QCOMPARE(listed(), (QStringList{diveid(1), diveid(2)}));
    QCOMPARE(program.field(2, u"Startcode"), QString::number(382352313 + 86400LL * 2));
}

/// What is read of such a store is a copy of our own.
void TestHouseMerge::aStoreThatKeepsItsChangesBesideItIsReadAnew() {
    TwoLogbooks program(1, 2, 2);
    SQLite::Database open(program.other.filePath(QStringLiteral("rb.mdb")).toStdString(),
                          SQLite::OPEN_READWRITE);
    open.exec("PRAGMA journal_mode = WAL");
    program.chooseFolder();
    QCOMPARE(program.group(0), "Not here yet (1)");
    open.exec("INSERT INTO main (DiveID, Startcode) VALUES ('D0000007', '7')");
    program.dialogs.clear();
    program.button("cmdmerge").click();
    QCOMPARE(listed().size(), 1);
    QVERIFY(program.dialogs.messages().join(u'\n').contains(QLatin1String("have changed")));
    QCOMPARE(program.group(0), "Not here yet (2)");
}

/// Else its dives would come without their files, which are gone as well.
void TestHouseMerge::aLogbookThatIsGoneBringsNothing() {
    TwoLogbooks program(1, 2, 3);
    program.chooseFolder();
    const QString there = program.other.path();
    const QString elsewhere = there + QStringLiteral("-gone");
    QVERIFY(QDir().rename(there, elsewhere));
    program.dialogs.clear();
    program.button("cmdmerge").click();
    QCOMPARE(listed().size(), 1);
    QVERIFY2(program.dialogs.messages().join(u'\n').startsWith(QLatin1String("Nothing was merged.")),
             qPrintable(program.dialogs.messages().join(u'\n')));
    QVERIFY(shown("mergelogbook"));
    QVERIFY(QDir().rename(elsewhere, there)); // the stick is back
    program.button("cmdmerge").click();
    QCOMPARE(listed().size(), 3);
}

void TestHouseMerge::aMergeIsTakenBackFromTheMenu() {
    TwoLogbooks program(1, 2, 3);
    program.chooseFolder();
    program.button("cmdmerge").click();
    QCOMPARE(listed().size(), 3);
    QCOMPARE(control<QAction>("rbmain", "mnuundo")->text().remove(u'&'), "Undo merge of 2 dives");
    control<QAction>("rbmain", "mnuundo")->trigger();
    QCOMPARE(listed(), QStringList{diveid(1)});
    control<QAction>("rbmain", "mnuredo")->trigger();
    QCOMPARE(listed().size(), 3);
}

void TestHouseMerge::whatIsNoLogbookIsSaidInTheScreen() {
    TwoLogbooks program(1, 2, 2);
    program.openScreen();
    program.dialogs.answerFile(program.folder.root());
    program.button("cmdotherfolder").click();
    QVERIFY(program.note().contains(QLatin1String("open here")));
    program.folder.put(QStringLiteral("x.mdb"), "no store");
    program.dialogs.answerFile(program.folder.path(QStringLiteral("x.mdb")));
    program.button("cmdotherstore").click();
    QVERIFY(program.note().startsWith(QLatin1String("That logbook cannot be read.\n")));
    QVERIFY(!program.button("cmdmerge").isEnabled());
    program.dialogs.answerFile(program.other.filePath(QStringLiteral("rb.mdb")));
    program.button("cmdotherstore").click();
    QCOMPARE(program.group(0), "Not here yet (1)");
}

void TestHouseMerge::whileDivesAreImportedNothingIsMerged() {
    TwoLogbooks program(1, 2, 2);
    program.chooseFolder();
    program.dialogs.clear();
    process().importing = true;
    program.button("cmdmerge").click();
    process().importing = false;
    QVERIFY(program.dialogs.messages().join(u'\n').contains(QLatin1String("being imported")));
    QCOMPARE(listed().size(), 1);
}

void TestHouseMerge::anotherStoreThatIsShownOffersNoMerge() {
    TwoLogbooks program(1, 2, 2);
    program.dialogs.answerFile(program.other.filePath(QStringLiteral("rb.mdb")));
    control<QAction>("main", "mnuOpen")->trigger();
    QVERIFY(!control<QAction>("rbmain", "mnumerge")->isEnabled());
    control<QPushButton>("rbmain", "cmdownlogbook")->click();
    QVERIFY(control<QAction>("rbmain", "mnumerge")->isEnabled());
}

/// The dives came into the own logbook: one of that number over there is another one.
void TestHouseMerge::aListThatShowsAnotherStoreStaysAsItIs() {
    TwoLogbooks program(1, 2, 3);
    program.chooseFolder();
    const QString another = program.folder.path(QStringLiteral("another.mdb"));
    QVERIFY(QFile::copy(program.folder.path(QStringLiteral("rb.mdb")), another));
    {
        platform::Database store;
        store.open(another);
        store.execute("INSERT INTO main (DiveID, Startcode) VALUES ('D0000002', '7')");
        store.execute("INSERT INTO main (DiveID, Startcode) VALUES ('D0000003', '8')");
    }
    program.dialogs.answerFile(another);
    control<QAction>("main", "mnuOpen")->trigger();
    program.choose(3);
    program.button("cmdmerge").click();
    QCOMPARE(listed().size(), 3);
    QCOMPARE(program.list().row(), 3);
    QCOMPARE(process().storepath, another);
    control<QPushButton>("rbmain", "cmdownlogbook")->click();
    QCOMPARE(listed(), (QStringList{diveid(1), diveid(2), diveid(3)}));
    QCOMPARE(program.field(2, u"Startcode"), QString::number(382352313 + 86400LL * 2));
}

void TestHouseMerge::theScreenKeepsTheProgramOpenAndGoesWithIt() {
    TwoLogbooks program(1, 2, 2);
    program.openScreen();
    control<QAction>("rbmain", "mnuExit")->trigger();
    QVERIFY(shown("mergelogbook"));
    control<QAction>("main", "mnuExit")->trigger();
    QVERIFY(!shown("mergelogbook"));
}

int main(int argc, char** argv) {
    return runAsProgram<TestHouseMerge>(argc, argv);
}
#include "test_house_merge.moc"
