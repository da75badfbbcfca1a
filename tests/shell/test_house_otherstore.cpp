// The dive list on another store: what it says of that, what works there and what does not.

#include "tests/shell/divesstage.h"

#include <QPushButton>

using namespace benthor;
using namespace benthor::tests;

namespace {

/// Three dives in the own store, and the same three in another one that was copied from it.
struct BesideAnotherStore : DivesProgram {
    BesideAnotherStore()
        : DivesProgram(3)
        , other(folder.path("other.mdb")) {
        if (!platform::copyFile(folder.path("rb.mdb"), other)) {
            qFatal("the other store cannot be made");
        }
    }

    void inTheOther(const char* sql) const {
        platform::Database store;
        store.open(other);
        store.execute(sql);
    }
    static int dives(const QString& path) {
        platform::Database store;
        store.open(path);
        return store.openRecordset("SELECT COUNT(*) FROM main").value(0).text().toInt();
    }
    void choose(const QString& path) {
        dialogs.answerFile(path);
        control<QAction>("main", "mnuOpen")->trigger();
        dialogs.clear();
    }
    void chooseTheOther() { choose(other); }
    static bool bandShown() { return control<QWidget>("rbmain", "otherstore")->isVisible(); }
    /// One message that holds the words, and nothing else asked.
    bool refusedWith(const QString& words) const {
        return dialogs.asked().size() == 1 && dialogs.messages().size() == 1 &&
               dialogs.messages().first().contains(words);
    }

    const QString other;
};

} // namespace

class TestHouseOtherStore : public QObject {
    Q_OBJECT

private slots:
    void theBandNamesTheStoreAndLeadsBack();
    void theOwnStoreHasNoBand_data();
    void theOwnStoreHasNoBand();
    void deletingIsRefused();
    void sendingIsRefused();
    void theSameDiveOpens();
    void anotherDiveOfTheNumberIsRefused_data();
    void anotherDiveOfTheNumberIsRefused();
    void detailsAreRefusedOfADiveOpenedFromThere();
    void detailsOfADiveOpenedBeforeAreItsOwn();
    void anEmptyStoreLeadsBackByItself();
    void aStoreThatWentAwayIsNamed();
};

void TestHouseOtherStore::theBandNamesTheStoreAndLeadsBack() {
    BesideAnotherStore program;
    QVERIFY(!BesideAnotherStore::bandShown());
    program.inTheOther("UPDATE main SET Location = 'elsewhere'");
    program.chooseTheOther();
    QVERIFY(BesideAnotherStore::bandShown());
    QVERIFY(control<QLabel>("rbmain", "lblotherstore")->text().contains(program.other));
    QCOMPARE(control<QLabel>("rbmain", "lblotherstore")->textFormat(), Qt::PlainText);
    QCOMPARE(program.list().text(1, kNameColumn), "elsewhere");
    auto* back = control<QPushButton>("rbmain", "cmdownlogbook");
    QCOMPARE(back->text(), "Back to my logbook");
    back->click();
    QVERIFY(!BesideAnotherStore::bandShown());
    QCOMPARE(program.list().text(1, kNameColumn), "dive1.txt");
    QCOMPARE(process().storepath, "");
    QVERIFY(program.ended->isEmpty());
}

void TestHouseOtherStore::theOwnStoreHasNoBand_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("by its path") << QStringLiteral("rb.mdb");
    QTest::newRow("by a link") << QStringLiteral("link.mdb");
}

void TestHouseOtherStore::theOwnStoreHasNoBand() {
    QFETCH(QString, name);
    BesideAnotherStore program;
    QFile::link(program.folder.path("rb.mdb"), program.folder.path("link.mdb"));
    program.choose(program.folder.path(name));
    QVERIFY(!BesideAnotherStore::bandShown());
    program.remove(3);
    QCOMPARE(BesideAnotherStore::text("SELECT COUNT(*) FROM main"), "2");
    program.open(1);
    program.openDetails();
    QVERIFY(shown("rbdetails"));
}

void TestHouseOtherStore::deletingIsRefused() {
    BesideAnotherStore program;
    program.chooseTheOther();
    program.remove(3); // with Yes waiting
    QVERIFY(program.refusedWith(program.other));
    QCOMPARE(BesideAnotherStore::dives(program.other), 3);
    QCOMPARE(BesideAnotherStore::text("SELECT COUNT(*) FROM main"), "3");
    QVERIFY(shown("rbmain"));
}

void TestHouseOtherStore::sendingIsRefused() {
    BesideAnotherStore program;
    program.chooseTheOther();
    control<QAction>("rbmain", "mnuEmail")->trigger();
    QVERIFY(program.refusedWith(program.other));
}

void TestHouseOtherStore::theSameDiveOpens() {
    BesideAnotherStore program;
    program.inTheOther(
        "UPDATE main SET UserName = 'Anna'"); // what the diver writes makes no other dive of it
    program.chooseTheOther();
    program.open(2);
    QCOMPARE(program.shownDive(), diveid(2));
    QVERIFY(loaded("rbmain") == nullptr);
    QVERIFY(program.dialogs.asked().isEmpty());
    control<QAction>("rbinterface", "mnudiveexit")->trigger();
    QVERIFY(BesideAnotherStore::bandShown());
}

void TestHouseOtherStore::anotherDiveOfTheNumberIsRefused_data() {
    QTest::addColumn<QByteArray>("own");
    QTest::addColumn<QByteArray>("other");
    const QByteArray nothing("UPDATE main SET site = NULL");
    QTest::newRow("another start") << nothing << QByteArray("UPDATE main SET Startcode = '7'");
    QTest::newRow("another file") << nothing << QByteArray("UPDATE main SET dbtxtname = 'x.txt'");
    QTest::newRow("neither start nor file")
        << QByteArray("UPDATE main SET Startcode = NULL, dbtxtname = NULL")
        << QByteArray("UPDATE main SET Startcode = NULL, dbtxtname = NULL");
    QTest::newRow("not in the own store")
        << QByteArray("DELETE FROM main WHERE DiveID = 'D0000002'") << nothing;
    QTest::newRow("under another number")
        << QByteArray("UPDATE main SET DiveID = 'D0000009' WHERE DiveID = 'D0000002'") << nothing;
}

void TestHouseOtherStore::anotherDiveOfTheNumberIsRefused() {
    QFETCH(QByteArray, own);
    QFETCH(QByteArray, other);
    BesideAnotherStore program;
    program.open(1);
    process().database.execute(own.constData());
    program.inTheOther(other.constData());
    program.chooseTheOther();
    program.open(2);
    QVERIFY(program.refusedWith(diveid(2)));
    QVERIFY(program.dialogs.messages().first().contains(program.other));
    QVERIFY(shown("rbmain"));
    QCOMPARE(program.shownDive(), diveid(1)); // the one that was open before
    QCOMPARE(process().currentdiveid, diveid(1));
}

void TestHouseOtherStore::detailsAreRefusedOfADiveOpenedFromThere() {
    BesideAnotherStore program;
    program.chooseTheOther();
    program.open(2);
    program.openDetails();
    QVERIFY(program.refusedWith(program.other));
    QVERIFY(loaded("rbdetails") == nullptr);
    control<QAction>("rbinterface", "mnuunitsfeet")->trigger(); // loaded anew it is still from there
    program.dialogs.clear();
    program.openDetails();
    QVERIFY(program.refusedWith(program.other));
    control<QAction>("rbinterface", "mnudiveexit")->trigger();
    control<QPushButton>("rbmain", "cmdownlogbook")->click();
    program.open(2);
    program.openDetails();
    QVERIFY(shown("rbdetails"));
}

void TestHouseOtherStore::detailsOfADiveOpenedBeforeAreItsOwn() {
    BesideAnotherStore program;
    program.open(1);
    program.chooseTheOther();
    QVERIFY(shown("rbmain") && shown("rbinterface"));
    program.openDetails();
    QCOMPARE(control<QLabel>("rbdetails", "txtdiveid")->text(), diveid(1));
}

void TestHouseOtherStore::anEmptyStoreLeadsBackByItself() {
    BesideAnotherStore program;
    program.inTheOther("DELETE FROM main WHERE DiveID LIKE 'D%'");
    program.chooseTheOther();
    expire("rbmain", "Timer3");
    QVERIFY(loaded("rbmain") == nullptr);
    QVERIFY(program.dialogs.messages().first().startsWith(QLatin1String("No dives in database.")));
    QVERIFY(program.dialogs.messages().first().contains(program.other));
    control<QAction>("main", "mnuDiveList")->trigger();
    QVERIFY(!BesideAnotherStore::bandShown());
    QCOMPARE(program.list().text(1, kNameColumn), "dive1.txt");
}

void TestHouseOtherStore::aStoreThatWentAwayIsNamed() {
    BesideAnotherStore program;
    program.chooseTheOther();
    QVERIFY(QFile::remove(program.other));
    control<QAction>("main", "mnucurrentmain")->trigger();
    QCOMPARE(program.list().text(1, kNameColumn), "dive1.txt");
    QVERIFY(BesideAnotherStore::bandShown());
    QVERIFY(listSays(program.other));
    QCOMPARE(process().storepath, ""); // the next list does not try it again
    QVERIFY(!control<QWidget>("rbmain", "cmdownlogbook")->isVisible());
    program.remove(3); // it is the own one
    QCOMPARE(BesideAnotherStore::text("SELECT COUNT(*) FROM main"), "2");
}

int main(int argc, char** argv) {
    return runAsProgram<TestHouseOtherStore>(argc, argv);
}
#include "test_house_otherstore.moc"
