#include "logbook/screens/listtoolbar.h"
#include "logbook/screens/picturebutton.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/segmentedchoice.h"
#include "platform/look/widgets/wholelabel.h"
#include "tests/logbook/listworld.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>

using namespace benthor;
using namespace benthor::tests;

class TestRbmainLoad : public QObject {
    Q_OBJECT

private slots:
    void controlsAreThereByName_data();
    void controlsAreThereByName();
    void entriesAreThereByName_data();
    void entriesAreThereByName();
    void timer3IsDisabledAtDesignAndTicksEverySecond();
    void loadingSetsLabel16ToT();
    void loadingShowsTheSpreadsheetControls();
    void messageLinesAreNeverCut();
    void loadingChoosesTheFirstDive();
    void emptyStoreSaysSoAndTheListClosesItself();
    void emptyStoreSaysInTheGridHowTheFirstDiveGetsIn();
    void missingStoreIsNotMadeAndIsToldBehindTheKnownWords();
    void theToolBarGivesUpItsWordsOneByOne();
    void missingSortFileListsInTheOrderOfTheDives();
    void sortFile_data();
    void sortFile();
    void sortKeySurvivesTheList();
    void aChosenStoreServesTheListAlone();
    void aChosenStoreThatCannotBeShownIsRefused_data();
    void aChosenStoreThatCannotBeShownIsRefused();
    void timer3HoldsWhileABoxIsUp();
};

void TestRbmainLoad::controlsAreThereByName_data() {
    QTest::addColumn<QString>("name");
    for (const char* name :
         {"MSFlexGrid1",  "txtdiveid",   "txtduration", "txtmaxdepth",    "txttimedown", "txtlocation",
          "txtstackhour", "txtinterval", "txtotu",      "txtatmospheric", "cmdgo",       "cmdelete",
          "cmdclose",     "cmdSave",     "Picture1",    "Picture2",       "Picture3(0)", "Picture3(1)",
          "Picture4",     "Picture5(0)", "Picture5(1)", "Picture5(2)",    "Frame2",      "Label16",
          "Command1",     "Label8",      "Label10",     "Label11",        "txtsearch",   "mnupopup"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void TestRbmainLoad::controlsAreThereByName() {
    QFETCH(QString, name);
    ListWorld world;
    QCOMPARE(world.list.get().objectName(), QStringLiteral("rbmain"));
    QCOMPARE(world.list.get().findChildren<QWidget*>(name).size(), 1);
}

void TestRbmainLoad::entriesAreThereByName_data() {
    QTest::addColumn<QString>("name");
    for (const char* name : {"mnuFile", "mnuOpenDive", "mnuDeleteDive", "mnuEmail", "mnusort", "mnusmd",
                             "mnusdate", "mnussite", "mnuslocation", "mnuSaveSpread", "mnuExit",
                             "mnupopprofile", "mnuDelete", "mnuerrorcode", "MNUSAVEDB", "mnusavecsv"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void TestRbmainLoad::entriesAreThereByName() {
    QFETCH(QString, name);
    ListWorld world;
    QCOMPARE(world.list.get().findChildren<QAction*>(name).size(), 1);
}

void TestRbmainLoad::timer3IsDisabledAtDesignAndTicksEverySecond() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    auto* timer = world.control<platform::TickTimer>("Timer3");
    QVERIFY(!timer->isEnabled());
    QCOMPARE(timer->interval(), 1000);
}

void TestRbmainLoad::loadingSetsLabel16ToT() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    QCOMPARE(world.labelText("Label16"), QStringLiteral("t"));
    QVERIFY(world.control<QWidget>("Frame2")->isHidden());
}

void TestRbmainLoad::messageLinesAreNeverCut() {
    ListWorld world;
    ListWorld::addDive(QStringLiteral("D0000001"));
    world.show();
    const QString word(300, u'x'); // a serial, say: nothing in it to break at
    for (const char* const name : {"quietline", "Label16"}) {
        auto* line = world.list.get().findChild<look::WholeLabel*>(QLatin1String(name));
        QVERIFY2(line != nullptr, name);
        line->setText(word);
        QCOMPARE(line->linesAt(200).join(QString()), word);
        QVERIFY(line->heightForWidth(200) >= 5 * line->fontMetrics().height());
    }
}

void TestRbmainLoad::loadingShowsTheSpreadsheetControls() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    world.show();
    QVERIFY(!world.control<QWidget>("Text2")->isVisible()); // the publish panel is shut
    for (const char* name : {"Picture3(0)", "Picture3(1)", "Label10"}) {
        QVERIFY2(world.control<QWidget>(name)->isVisible(), name);
    }
    QVERIFY(world.control<QAction>("mnuSaveSpread")->isVisible());
}

void TestRbmainLoad::loadingChoosesTheFirstDive() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    ListWorld::addDive(diveNumber(2));
    QCOMPARE(world.grid().row(), 1);
    QCOMPARE(world.blueRows(), QList<int>{1});
    QCOMPARE(world.grid().foreColour(1, 3), QColor(Qt::white));
    QVERIFY(!world.control<platform::TickTimer>("Timer3")->isEnabled());
}

void TestRbmainLoad::emptyStoreSaysSoAndTheListClosesItself() {
    ListWorld world;
    world.show();
    auto* timer = world.control<platform::TickTimer>("Timer3");
    QVERIFY(timer->isEnabled());
    timer->expire();
    QCOMPARE(world.dialogs.messages(),
             QStringList{
                 QStringLiteral("No dives in database. Please download dives using Download to PC Window.")});
    QVERIFY(!world.list.isLoaded());
}

void TestRbmainLoad::emptyStoreSaysInTheGridHowTheFirstDiveGetsIn() {
    ListWorld world;
    QCOMPARE(world.grid().rows(), 1);
    QVERIFY(world.grid().emptyText().contains(QStringLiteral("Download to PC")));
}

void TestRbmainLoad::missingStoreIsNotMadeAndIsToldBehindTheKnownWords() {
    ListWorld world;
    process().database.close();
    QVERIFY(QFile::remove(world.folder.path(u"rb.mdb")));
    world.control<platform::TickTimer>("Timer3")->expire();
    QCOMPARE(world.dialogs.messages().size(), 1);
    const QString told = world.dialogs.messages().constFirst();
    QVERIFY(told.startsWith(QStringLiteral("No dives in database. Please download dives using Download to PC "
                                           "Window.\n")));
    QVERIFY(told.contains(QStringLiteral("rb.mdb")));
    QVERIFY(!QFile::exists(world.folder.path(u"rb.mdb")));
    QVERIFY(!world.list.isLoaded());
}

/// No more of them go than the width asks for, the one of the primary button last.
void TestRbmainLoad::theToolBarGivesUpItsWordsOneByOne() {
    QWidget window;
    logbook::ListToolBar bar(&window);
    const auto words = [&bar] {
        return QStringList{bar.publish()->text(), bar.toMain()->text(), bar.remove()->text(),
                           bar.open()->text()};
    };
    window.show(); // what is hidden is told no size
    bar.resize(2000, bar.sizeHint().height());
    QVERIFY(!words().contains(QString()));
    QList<qsizetype> left;
    for (int width = 2000; width >= bar.minimumSizeHint().width(); --width) {
        bar.resize(width, bar.height());
        const qsizetype gone = words().count(QString());
        QCOMPARE(words().lastIndexOf(QString()), gone - 1); // in this order
        if (left.isEmpty() || left.last() != gone) {
            left += gone;
        }
    }
    QCOMPARE(left, (QList<qsizetype>{0, 1, 2, 3, 4}));
}

void TestRbmainLoad::missingSortFileListsInTheOrderOfTheDives() {
    ListWorld world;
    ListWorld::addDive(diveNumber(3), {{QStringLiteral("site"), QStringLiteral("A")}});
    ListWorld::addDive(diveNumber(1), {{QStringLiteral("site"), QStringLiteral("B")}});
    ListWorld::addDive(diveNumber(2), {{QStringLiteral("site"), QStringLiteral("C")}});
    QCOMPARE(world.column(0), (QStringList{diveNumber(1), diveNumber(2), diveNumber(3)}));
    QCOMPARE(world.list.get().findChild<look::SegmentedChoice*>()->current(), -1);
    QCOMPARE(world.grid().sortColumn(), 0);
}

void TestRbmainLoad::sortFile_data() {
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QStringList>("order");
    QTest::addColumn<QString>("entry");
    const auto dives = [](int first, int second, int third) {
        return QStringList{diveNumber(first), diveNumber(second), diveNumber(third)};
    };
    QTest::newRow("by date") << QByteArray("d\r\n") << dives(2, 3, 1) << "mnusdate";
    QTest::newRow("by depth") << QByteArray("m\r\n") << dives(3, 1, 2) << "mnusmd";
    QTest::newRow("by site") << QByteArray("s\r\n") << dives(1, 3, 2) << "mnussite";
    QTest::newRow("by name") << QByteArray("l\r\n") << dives(2, 1, 3) << "mnuslocation";
    QTest::newRow("s is looked for before m") << QByteArray("ms\r\n") << dives(1, 3, 2) << "mnussite";
    QTest::newRow("m is looked for before l") << QByteArray("lm\r\n") << dives(3, 1, 2) << "mnusmd";
    QTest::newRow("l is looked for before d") << QByteArray("dl\r\n") << dives(2, 1, 3) << "mnuslocation";
    QTest::newRow("no letter of these") << QByteArray("x\r\n") << dives(1, 2, 3) << QString();
    QTest::newRow("without a line end") << QByteArray("lm") << dives(3, 1, 2) << "mnusmd";
    QTest::newRow("only the first line counts") << QByteArray("x\r\nd\r\n") << dives(1, 2, 3) << QString();
}

void TestRbmainLoad::sortFile() {
    QFETCH(QByteArray, file);
    QFETCH(QStringList, order);
    QFETCH(QString, entry);
    ListWorld world;
    world.put(u"", QStringLiteral("dsort.txt"), file);
    const auto fields = [](const char* name, const char* site, const char* depth, const char* start) {
        return Fields{{QStringLiteral("Location"), QLatin1String(name)},
                      {QStringLiteral("site"), QLatin1String(site)},
                      {QStringLiteral("MaxDepth"), QLatin1String(depth)},
                      {QStringLiteral("startdate"), QLatin1String(start)}};
    };
    ListWorld::addDive(diveNumber(1), fields("b.txt", "Arch", "30.000", "2019-01-05 10:00:00"));
    ListWorld::addDive(diveNumber(2), fields("A.txt", "cove", "40.000", "2017-12-31 23:59:59"));
    ListWorld::addDive(diveNumber(3), fields("c.txt", "Bay", "20.000", "2018-06-01 08:00:00"));
    QCOMPARE(world.column(0), order);
    for (const char* one : {"mnusdate", "mnusmd", "mnussite", "mnuslocation"}) {
        QCOMPARE(world.control<QAction>(one)->isChecked(), entry == QLatin1String(one));
    }
}

void TestRbmainLoad::sortKeySurvivesTheList() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1), {{QStringLiteral("site"), QStringLiteral("B")}});
    ListWorld::addDive(diveNumber(2), {{QStringLiteral("site"), QStringLiteral("A")}});
    world.trigger("mnussite");
    world.list.unload();
    QCOMPARE(world.bytesOf(u"", QStringLiteral("dsort.txt")), QByteArray("s\r\n"));
    QCOMPARE(world.column(0), (QStringList{diveNumber(2), diveNumber(1)}));
}

void TestRbmainLoad::aChosenStoreServesTheListAlone() {
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    const QString other = world.folder.path(u"other.mdb");
    store::createStore(other);
    {
        platform::Database store;
        store.open(other);
        ListWorld::addDive(diveNumber(7), {{QStringLiteral("Interval"), QStringLiteral("10.5")}}, store);
        ListWorld::addDive(diveNumber(8), {}, store);
    }
    const std::optional<QByteArray> before = platform::readFile(other);
    process().storepath = other;
    QCOMPARE(world.column(0), (QStringList{diveNumber(7), diveNumber(8)}));
    QCOMPARE(world.labelText("Label16"), QStringLiteral("\rMain Profile - Error in interval number!"));
    QCOMPARE(process().database.path(), world.folder.path(u"rb.mdb"));
    QCOMPARE(world.list.get().otherStore(), other);
    world.dialogs.answer(true);
    world.trigger("mnuDeleteDive"); // looked at, and no more
    QCOMPARE(world.dialogs.messages().size(), 1);
    QVERIFY(world.dialogs.messages().first().contains(other));
    QCOMPARE(ListWorld::count("SELECT COUNT(*) FROM main"), 1);
    QCOMPARE(platform::readFile(other), before); // it is another's: not a byte of it changes
}

void TestRbmainLoad::aChosenStoreThatCannotBeShownIsRefused_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("missing") << QByteArray();
    QTest::newRow("no store at all") << QByteArray("a letter, and a long one at that: it fills a page");
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("other.db"));
    {
        SQLite::Database other(path.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        other.exec("CREATE TABLE songs (name TEXT)");
    }
    QTest::newRow("another program's store") << platform::readFile(path).value();
    const QString fresh = directory.filePath(QStringLiteral("fresh.mdb"));
    const auto altered = [&fresh](const char* sql) {
        QFile::remove(fresh);
        store::createStore(fresh);
        SQLite::Database store(fresh.toStdString(), SQLite::OPEN_READWRITE);
        store.exec(sql);
        return platform::readFile(fresh).value();
    };
    QTest::newRow("dives that are made by a query")
        << altered("ALTER TABLE main RENAME TO dives; CREATE VIEW main AS SELECT * FROM dives");
    QTest::newRow("gases that are made by code")
        << altered("DROP TABLE gas; CREATE VIRTUAL TABLE gas USING fts5(diveid)");
    QTest::newRow("no tissues") << altered("DROP TABLE tissue");
}

void TestRbmainLoad::aChosenStoreThatCannotBeShownIsRefused() {
    QFETCH(QByteArray, bytes);
    ListWorld world;
    ListWorld::addDive(diveNumber(1));
    if (!bytes.isEmpty()) {
        world.put(u"", QStringLiteral("nowhere.mdb"), bytes);
    }
    process().storepath = world.folder.path(u"nowhere.mdb");
    QCOMPARE(world.column(0), QStringList{diveNumber(1)});
    QVERIFY(!world.list.get().refusedStore().isEmpty());
    QCOMPARE(process().storepath, QString());
    QCOMPARE(process().database.path(), world.folder.path(u"rb.mdb"));
    QCOMPARE(world.bytesOf(u"", QStringLiteral("nowhere.mdb")),
             bytes.isEmpty() ? QByteArray("(no file)") : bytes);
}

void TestRbmainLoad::timer3HoldsWhileABoxIsUp() {
    ListWorld world;
    auto* timer = world.control<platform::TickTimer>("Timer3");
    const platform::TickHold box;
    timer->expire();
    QVERIFY(world.dialogs.messages().isEmpty());
    QVERIFY(world.list.isLoaded());
}

QTEST_MAIN(TestRbmainLoad)
#include "test_rbmain_load.moc"
