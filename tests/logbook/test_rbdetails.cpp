#include "platform/look/look.h"
#include "platform/look/widgets/wholelabel.h"
#include "tests/logbook/detailsworld.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QSignalSpy>

using namespace benthor;
using namespace benthor::logbook;
using namespace benthor::tests;

class TestRbdetails : public QObject {
    Q_OBJECT

private slots:
    void controlsAreThereByName_data();
    void controlsAreThereByName();
    void messageLinesAreNeverCut();
    void theDiveIsShown();
    void inFeetTheCaptionSaysSo();
    void picksAreOfferedAndTheDivesOwnValueShows();
    void aDiveThatIsNotThereCanNotBeEdited();

    void saveWritesAndStays_data();
    void saveWritesAndStays();
    void everyWayOutAsksForTheDiveScreen_data();
    void everyWayOutAsksForTheDiveScreen();
    void theUnloadCapturesAndThenSaves();
    void cancelAfterAddingABuddyStoresTheBuddy();
    void aWindowThatIsClosedSaves();
    void returnAddsTheBuddy();
    void aTypedBuddyIsAddedOnEveryWayOut();
    void aPickedOrAddedBuddyIsNotAddedAgainOnTheWayOut();
    void savedGoesWhenTypingGoesOn();
    void aSingleQuoteIsToldInOneLine();
    void aSingleQuoteIsToldOnEveryWayOut();
    void aSaveThatFailsOnTheWayOutIsAskedAbout();
    void whatNobodyCanBeAskedAboutIsKeptInAText_data();
    void whatNobodyCanBeAskedAboutIsKeptInAText();
    void theTextGoesWhenTheDetailsAreStoredAfterAll();
    void aSaveThatFailsIsToldAndTheScreenStays();

    void buddiesAreAddedAndRemoved();
    void theScreenIsPrinted();
};

void TestRbdetails::controlsAreThereByName_data() {
    QTest::addColumn<QString>("name");
    for (const char* const name :
         {"txtdiveid",   "txtDivedate", "txttimeup",   "txtduration", "txtmaxdepth",   "txtinterval",
          "txtversion",  "txtotu",      "txtatmos",    "txtdusageh",  "Txtdiver",      "Cbodepartment",
          "Cbosite",     "cbowhether",  "txtlocation", "txtsuit",     "txtdivenote",   "txtsitenote",
          "txtcomments", "cbobuddy",    "List1",       "Image1(0)",   "Image1(1)",     "Image1(2)",
          "Label5(0)",   "Label5(1)",   "Label5(2)",   "cmdSave",     "Picture2",      "Picture3",
          "Picture4",    "Cmdcancel",   "cmdclose",    "cmdadd",      "cmdremove",     "FormPrint",
          "mnuSave",     "mnuprint",    "mnuExit",     "mnubuddyadd", "mnubuddyremove"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void TestRbdetails::controlsAreThereByName() {
    QFETCH(QString, name);
    DetailsWorld world;
    QCOMPARE(world.screen().findChildren<QObject*>(name).size(), 1);
}

void TestRbdetails::messageLinesAreNeverCut() {
    DetailsWorld world;
    world.screen().showScreen();
    const QString word(300, u'x'); // a serial, say: nothing in it to break at
    for (const char* const name : {"quietline"}) {
        auto* line = world.screen().findChild<look::WholeLabel*>(QLatin1String(name));
        QVERIFY2(line != nullptr, name);
        line->setText(word);
        QCOMPARE(line->linesAt(200).join(QString()), word);
        QVERIFY(line->heightForWidth(200) >= 5 * line->fontMetrics().height());
    }
}

void TestRbdetails::theDiveIsShown() {
    DetailsWorld world;
    process().database.execute("UPDATE main SET divenote = 'warm', Coments = 'fish', weather = 'Fog'");
    process().database.execute("INSERT INTO buddylist VALUES ('D0000001', 'Bo'), ('D0000002', 'Eve')");
    QCOMPARE(world.label("txtdiveid"), diveNumber(1));
    QCOMPARE(world.label("txtDivedate"), "27/07/2017 09:50:02");
    QCOMPARE(world.label("txttimeup"), "27/07/2017 10:31:09");
    QCOMPARE(world.label("txtduration"), "41:7");
    QCOMPARE(world.label("txtmaxdepth"), "22.300");
    QCOMPARE(world.label("lbldepthunit"), "metres");
    QCOMPARE(world.label("txtinterval"), "10");
    QCOMPARE(world.label("txtversion"), "V3.12");
    QCOMPARE(world.label("txtotu"), "148");
    QCOMPARE(world.label("txtatmos"), "1013");
    QCOMPARE(world.label("txtdusageh"), "270");
    QCOMPARE(world.on<QLineEdit>("Txtdiver").text(), "KD00123");
    QCOMPARE(world.on<QLineEdit>("txtlocation").text(), "Dive01.txt");
    QCOMPARE(world.on<QComboBox>("Cbosite").currentText(), "Harbour mole");
    QCOMPARE(world.on<QComboBox>("cbowhether").currentText(), "Fog");
    QCOMPARE(world.on<QPlainTextEdit>("txtdivenote").toPlainText(), "warm");
    QCOMPARE(world.on<QPlainTextEdit>("txtcomments").toPlainText(), "fish");
    QCOMPARE(world.buddies(), QStringList{"Bo"});
    QCOMPARE(world.label("Label5(0)"), "Click to load picture");
}

void TestRbdetails::inFeetTheCaptionSaysSo() {
    DetailsWorld world;
    process().depthunit = QStringLiteral("Feet");
    QCOMPARE(world.label("txtmaxdepth"), "73.16"); // 73.162732
    QCOMPARE(world.label("lbldepthunit"), "Feet");
}

void TestRbdetails::picksAreOfferedAndTheDivesOwnValueShows() {
    DetailsWorld world;
    process().database.execute("INSERT INTO site VALUES ('Reef'), ('Wreck')");
    process().database.execute("INSERT INTO buddy VALUES ('Bo')");
    auto& site = world.on<QComboBox>("Cbosite");
    QCOMPARE(site.count(), 2);
    QCOMPARE(site.itemText(1), "Wreck");
    QCOMPARE(site.currentText(), "Harbour mole");
    QCOMPARE(world.on<QComboBox>("cbobuddy").count(), 1);
    QCOMPARE(world.on<QComboBox>("cbobuddy").currentText(), "");
}

void TestRbdetails::aDiveThatIsNotThereCanNotBeEdited() {
    DetailsWorld world;
    process().currentdiveid = QStringLiteral("D0000099");
    QVERIFY(!world.on<QLineEdit>("Txtdiver").isEnabled());
    world.slot.unload();
    QCOMPARE(ListWorld::count("SELECT COUNT(*) FROM main"), 1);
    QCOMPARE(world.dialogs.asked().size(), 0);
}

void TestRbdetails::saveWritesAndStays_data() {
    QTest::addColumn<QString>("control");
    for (const char* const name : {"cmdSave", "Picture2", "mnuSave"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void TestRbdetails::saveWritesAndStays() {
    QFETCH(QString, control);
    DetailsWorld world;
    world.screen().showScreen();
    world.on<QComboBox>("Cbosite").setEditText(QStringLiteral("Reef"));
    world.on<QPlainTextEdit>("txtcomments").setPlainText(QStringLiteral("a\nb"));
    if (auto* action = world.screen().findChild<QAction*>(control)) {
        action->trigger();
    } else {
        world.click(qPrintable(control));
    }
    QCOMPARE(DetailsWorld::field(u"site"), "Reef");
    QCOMPARE(DetailsWorld::field(u"Coments"), "a\r\nb");
    QVERIFY(world.screen().isVisible());
    QCOMPARE(world.on<QComboBox>("Cbosite").itemText(0), "Reef"); // offered from now on
}

void TestRbdetails::everyWayOutAsksForTheDiveScreen_data() {
    QTest::addColumn<QString>("control");
    for (const char* const name : {"Cmdcancel", "cmdclose", "Picture4", "mnuExit"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void TestRbdetails::everyWayOutAsksForTheDiveScreen() {
    QFETCH(QString, control);
    DetailsWorld world;
    world.screen().showScreen();
    QSignalSpy wanted(&world.screen(), &rbdetails::diveViewWanted);
    if (auto* action = world.screen().findChild<QAction*>(control)) {
        action->trigger();
    } else {
        world.click(qPrintable(control));
    }
    QCOMPARE(wanted.count(), 1);
}

void TestRbdetails::theUnloadCapturesAndThenSaves() {
    DetailsWorld world;
    world.screen().showScreen();
    world.on<QLineEdit>("Txtdiver").setText(QStringLiteral("Anna"));
    QStringList order;
    connect(&world.screen(), &rbdetails::captureWanted, &world.screen(),
            [&order] { order += QStringLiteral("capture, diver ") + DetailsWorld::field(u"UserName"); });
    world.slot.unload();
    order += QStringLiteral("diver ") + DetailsWorld::field(u"UserName");
    QCOMPARE(order, QStringList({"capture, diver KD00123", "diver Anna"}));
}

void TestRbdetails::cancelAfterAddingABuddyStoresTheBuddy() {
    DetailsWorld world;
    world.screen().showScreen();
    connect(&world.screen(), &rbdetails::diveViewWanted, &world.screen(), [&world] { world.slot.unload(); });
    world.on<QComboBox>("cbobuddy").setEditText(QStringLiteral("Bo"));
    world.click("cmdadd");
    QCOMPARE(ListWorld::count("SELECT COUNT(*) FROM buddylist"), 0);
    world.click("Cmdcancel");
    QCOMPARE(
        ListWorld::count("SELECT COUNT(*) FROM buddylist WHERE diveid = 'D0000001' AND buddylist = 'Bo'"), 1);
    QCOMPARE(ListWorld::count("SELECT COUNT(*) FROM buddy WHERE buddy = 'Bo'"), 1);
}

void TestRbdetails::aWindowThatIsClosedSaves() {
    DetailsWorld world;
    world.screen().showScreen();
    world.on<QLineEdit>("txtlocation").setText(QStringLiteral("North wall"));
    world.screen().close();
    QVERIFY(!world.slot.isLoaded());
    QCOMPARE(DetailsWorld::field(u"Location"), "North wall");
}

void TestRbdetails::returnAddsTheBuddy() {
    DetailsWorld world;
    world.screen().showScreen();
    auto* box = world.on<QComboBox>("cbobuddy").lineEdit();
    QTest::keyClicks(box, QStringLiteral("Anna"));
    QTest::keyClick(box, Qt::Key_Return);
    QCOMPARE(world.buddies(), QStringList{"Anna"});
    QTest::keyClicks(box, QStringLiteral("Ben")); // over what stood there
    QTest::keyClick(box, Qt::Key_Return);
    QCOMPARE(world.buddies(), (QStringList{"Anna", "Ben"}));
}

void TestRbdetails::aTypedBuddyIsAddedOnEveryWayOut() {
    for (const char* const way : {"close", "unload", "keep", "deletion"}) {
        DetailsWorld world;
        world.screen().showScreen();
        QTest::keyClicks(world.on<QComboBox>("cbobuddy").lineEdit(), QStringLiteral("Anna"));
        const QLatin1String out(way);
        if (out == QLatin1String("close")) {
            world.screen().close();
        } else if (out == QLatin1String("unload")) {
            world.slot.unload();
        } else if (out == QLatin1String("keep")) {
            world.screen().keep();
        } else {
            QCOMPARE(world.screen().saveQuietly(), QString());
        }
        QCOMPARE(ListWorld::count("SELECT COUNT(*) FROM buddylist WHERE buddylist = 'Anna'"), 1);
        QCOMPARE(ListWorld::count("SELECT COUNT(*) FROM buddy WHERE buddy = 'Anna'"), 1);
    }
}

void TestRbdetails::aPickedOrAddedBuddyIsNotAddedAgainOnTheWayOut() {
    DetailsWorld world;
    process().database.execute("INSERT INTO buddy (buddy) VALUES ('Carl')");
    world.screen().showScreen();
    auto& box = world.on<QComboBox>("cbobuddy");
    QTest::keyClicks(box.lineEdit(), QStringLiteral("Anna"));
    world.click("cmdadd");
    world.on<QListWidget>("List1").setCurrentRow(0);
    world.click("cmdremove"); // added, and taken out again
    QTest::keyClicks(box.lineEdit(), QStringLiteral("x"));
    box.setCurrentIndex(0);
    emit box.activated(0);
    world.slot.unload();
    QCOMPARE(ListWorld::count("SELECT COUNT(*) FROM buddylist"), 0);
}

void TestRbdetails::savedGoesWhenTypingGoesOn() {
    DetailsWorld world;
    world.screen().showScreen();
    world.on<QLineEdit>("Txtdiver").setText(QStringLiteral("Anna"));
    world.click("cmdSave");
    QCOMPARE(world.label("quietline"), "Saved");
    QTest::keyClicks(&world.on<QLineEdit>("Txtdiver"), QStringLiteral("x"));
    QCOMPARE(world.label("quietline"), QString());
    world.click("cmdSave");
    world.on<QPlainTextEdit>("txtcomments").appendPlainText(QStringLiteral("more"));
    QCOMPARE(world.label("quietline"), QString());
}

void TestRbdetails::aSingleQuoteIsToldInOneLine() {
    DetailsWorld world;
    world.screen().showScreen();
    world.on<QComboBox>("Cbodepartment").setEditText(QStringLiteral("O'Hara's"));
    world.on<QComboBox>("Cbosite").setEditText(QStringLiteral("Reef"));
    world.click("cmdSave");
    QCOMPARE(DetailsWorld::field(u"Department"), "O'Hara's");
    QCOMPARE(ListWorld::count("SELECT COUNT(*) FROM department"), 0);
    QCOMPARE(ListWorld::count("SELECT COUNT(*) FROM site"), 1);
    QCOMPARE(world.dialogs.asked().size(), 0);
    const QList<QLabel*> labels = world.screen().findChildren<QLabel*>();
    QCOMPARE(std::count_if(labels.begin(), labels.end(),
                           [](QLabel* label) { return label->text().contains(QLatin1String("O'Hara's")); }),
             1);
}

void TestRbdetails::aSingleQuoteIsToldOnEveryWayOut() {
    for (const char* const way : {"close", "Cmdcancel", "keep", "quietly"}) {
        DetailsWorld world;
        world.screen().showScreen();
        connect(&world.screen(), &rbdetails::diveViewWanted, &world.screen(),
                [&world] { world.slot.unload(); });
        world.on<QComboBox>("Cbodepartment").setEditText(QStringLiteral("O'Hara's"));
        const bool isQuiet = QLatin1String(way) == QLatin1String("quietly");
        if (isQuiet || QLatin1String(way) == QLatin1String("keep")) {
            if (isQuiet) { // its dive is deleted, say, or an act taken back
                QCOMPARE(world.screen().saveQuietly(), QString());
                QCOMPARE(world.screen().besides(),
                         "; with its single quote not kept for choosing again: O'Hara's");
            } else {
                world.screen().keep();
            }
            QCOMPARE(world.dialogs.asked().size(), 0);
            const QList<QLabel*> labels = world.screen().findChildren<QLabel*>();
            QVERIFY(std::any_of(labels.begin(), labels.end(), [](QLabel* label) {
                return label->text().contains(QLatin1String("O'Hara's"));
            }));
            world.slot.unload(); // told already
            QCOMPARE(world.dialogs.asked().size(), 0);
            continue;
        }
        if (QLatin1String(way) == QLatin1String("close")) {
            world.screen().close();
        } else {
            world.click(way);
        }
        QVERIFY(!world.slot.isLoaded());
        QCOMPARE(DetailsWorld::field(u"Department"), "O'Hara's");
        QCOMPARE(world.dialogs.messages(),
                 QStringList{"Saved; with its single quote not kept for choosing again: O'Hara's"});
    }
}

void TestRbdetails::aSaveThatFailsOnTheWayOutIsAskedAbout() {
    DetailsWorld world;
    world.screen().showScreen();
    world.on<QLineEdit>("Txtdiver").setText(QStringLiteral("Anna"));
    process().database.execute("PRAGMA query_only = 1");
    world.dialogs.answer(true);
    world.dialogs.answer(true);
    world.dialogs.during([] {});
    world.dialogs.during([] { process().database.execute("PRAGMA query_only = 0"); });
    world.slot.unload();
    QCOMPARE(world.dialogs.asked().size(), 2);
    QVERIFY(world.dialogs.asked().first().text.startsWith(
        QLatin1String("The details of D0000001 cannot be stored.")));
    QCOMPARE(DetailsWorld::field(u"UserName"), "Anna");
}

void TestRbdetails::whatNobodyCanBeAskedAboutIsKeptInAText_data() {
    QTest::addColumn<bool>("typed");
    QTest::addColumn<bool>("asked");
    QTest::newRow("the session ends") << true << false;
    QTest::newRow("nothing was typed") << false << false;
    QTest::newRow("the user says No") << true << true;
    QTest::newRow("there is nothing to ask about") << false << true;
}

void TestRbdetails::whatNobodyCanBeAskedAboutIsKeptInAText() {
    QFETCH(bool, typed);
    QFETCH(bool, asked);
    DetailsWorld world;
    world.screen().showScreen();
    if (typed) {
        world.on<QPlainTextEdit>("txtcomments").setPlainText(QStringLiteral("three\nmantas"));
    }
    process().database.execute("PRAGMA query_only = 1");
    {
        std::optional<platform::NoDialogs> noBoxes;
        if (!asked) {
            noBoxes.emplace();
        }
        world.slot.unload();
    }
    process().database.execute("PRAGMA query_only = 0");
    QCOMPARE(world.dialogs.asked().size(), asked && typed ? 1 : 0);
    const QString place = world.folder.path(QStringLiteral("unsaved-D0000001.txt"));
    QCOMPARE(QFile::exists(place), typed && !asked);
    if (typed && !asked) {
        const QByteArray text = platform::readFile(place).value_or("");
        QVERIFY(text.contains("three\nmantas"));
        QVERIFY(text.contains("readonly")); // the store's own reason
    }
}

void TestRbdetails::theTextGoesWhenTheDetailsAreStoredAfterAll() {
    DetailsWorld world;
    world.screen().showScreen();
    world.on<QLineEdit>("Txtdiver").setText(QStringLiteral("Anna"));
    process().database.execute("PRAGMA query_only = 1");
    const QString place = world.folder.path(QStringLiteral("unsaved-D0000001.txt"));
    for (const char* const name : {"Anna", "Berta"}) { // asked to save more than once
        const platform::NoDialogs noBoxes;
        world.on<QLineEdit>("Txtdiver").setText(QLatin1String(name));
        world.screen().keep();
    }
    const QStringList texts = QDir(QFileInfo(place).path()).entryList({QStringLiteral("unsaved-*")});
    QCOMPARE(texts.size(), 1);
    QVERIFY(platform::readFile(QFileInfo(place).path() + QLatin1Char('/') + texts.first())
                .value_or("")
                .contains("Berta"));
    process().database.execute("PRAGMA query_only = 0");
    world.click("cmdSave");
    QCOMPARE(QDir(QFileInfo(place).path()).entryList({QStringLiteral("unsaved-*")}), QStringList());
    QCOMPARE(DetailsWorld::field(u"UserName"), "Berta");
}

void TestRbdetails::aSaveThatFailsIsToldAndTheScreenStays() {
    DetailsWorld world;
    world.screen().showScreen();
    process().database.execute("PRAGMA query_only = 1");
    world.click("cmdSave");
    process().database.execute("PRAGMA query_only = 0");
    QCOMPARE(world.dialogs.messages().size(), 1);
    QVERIFY(world.dialogs.messages().first().startsWith(
        QLatin1String("The details of D0000001 are not stored.")));
    QVERIFY(world.screen().isVisible());
}

void TestRbdetails::buddiesAreAddedAndRemoved() {
    DetailsWorld world;
    world.screen().showScreen();
    auto& box = world.on<QComboBox>("cbobuddy");
    world.click("cmdadd"); // an empty box adds nothing
    for (const char* const name : {"Bo", "Cy", "Bo"}) {
        box.setEditText(QLatin1String(name));
        world.click("cmdadd");
    }
    box.setEditText(QStringLiteral("Dee"));
    world.on<QAction>("mnubuddyadd").trigger();
    QCOMPARE(world.buddies(), QStringList({"Bo", "Cy", "Bo", "Dee"}));
    world.on<QListWidget>("List1").setCurrentRow(1);
    world.click("cmdremove");
    QCOMPARE(world.buddies(), QStringList({"Bo", "Bo", "Dee"}));
    world.on<QListWidget>("List1").setCurrentRow(2);
    world.on<QAction>("mnubuddyremove").trigger();
    QCOMPARE(world.buddies(), QStringList({"Bo", "Bo"}));
    world.on<QListWidget>("List1").setCurrentRow(-1);
    world.click("cmdremove");
    QCOMPARE(world.buddies(), QStringList({"Bo", "Bo"}));
    QCOMPARE(ListWorld::count("SELECT COUNT(*) FROM buddylist"), 0);
}

void TestRbdetails::theScreenIsPrinted() {
    DetailsWorld world;
    world.screen().showScreen();
    for (const char* const name : {"FormPrint", "Picture3"}) {
        const QString path = world.folder.path(QLatin1String(name) + QStringLiteral(".pdf"));
        world.dialogs.answerPrinter(path);
        world.click(name);
        QVERIFY2(platform::readFile(path).value_or("").startsWith("%PDF"), name);
    }
    world.on<QAction>("mnuprint").trigger(); // cancelled
    QCOMPARE(world.dialogs.asked().size(), 3);
    QCOMPARE(world.dialogs.messages(), QStringList());
}

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    look::apply(application);
    TestRbdetails test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_rbdetails.moc"
