#include "logbook/publish.h"
#include "platform/look/look.h"
#include "platform/usersettings.h"
#include "tests/logbook/listworld.h"

#include <QAction>
#include <QCheckBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

using namespace benthor;
using namespace benthor::tests;

namespace {

/// Stands in for the desktop's mailer: notes its arguments, each ended by a zero byte, and ends with `code`.
class StandInMailer {
public:
    explicit StandInMailer(int code = 0)
        : before_(qgetenv("PATH")) {
        const QByteArray script = "#!/bin/sh\nprintf '%s\\0' \"$@\" > \"" + told().toLocal8Bit() +
                                  ".part\"\n/bin/mv \"" + told().toLocal8Bit() + ".part\" \"" +
                                  told().toLocal8Bit() + "\"\nexit " + QByteArray::number(code) + "\n";
        QFile file(folder_.filePath(QStringLiteral("xdg-email")));
        if (!file.open(QIODevice::WriteOnly) || file.write(script) != script.size() ||
            !file.setPermissions(QFile::ReadOwner | QFile::ExeOwner)) {
            qFatal("no stand-in mailer");
        }
        qputenv("PATH", folder_.path().toLocal8Bit());
    }
    ~StandInMailer() { qputenv("PATH", before_); }
    StandInMailer(const StandInMailer&) = delete;
    StandInMailer& operator=(const StandInMailer&) = delete;

    QString told() const { return folder_.filePath(QStringLiteral("told")); }
    QStringList arguments() const {
        QStringList list;
        for (const QByteArray& one : platform::readFile(told()).value_or("").split('\0')) {
            list += QString::fromUtf8(one);
        }
        list.removeLast();
        return list;
    }

private:
    QTemporaryDir folder_;
    QByteArray before_;
};

class NoMailer {
public:
    NoMailer()
        : before_(qgetenv("PATH")) {
        qputenv("PATH", "/nowhere");
    }
    ~NoMailer() { qputenv("PATH", before_); }
    NoMailer(const NoMailer&) = delete;
    NoMailer& operator=(const NoMailer&) = delete;

private:
    QByteArray before_;
};

/// Two dives with their files; the panel can be reached without a click on the bar.
class PublishWorld : public ListWorld {
public:
    PublishWorld() {
        for (int number = 1; number <= 2; ++number) {
            const QString name = QStringLiteral("Dive0%1.txt").arg(number);
            addDive(diveNumber(number), {{QStringLiteral("dbtxtname"), QStringLiteral("25D5") + name}});
            put(u"old", name, "the dive's text");
        }
        QDir(folder.root()).mkdir(QStringLiteral("jpg"));
        put(u"jpg", QStringLiteral("25D5Dive02.jpg"), "picture");
    }
    void press(const char* name) { QTest::mouseClick(control<QWidget>(name), Qt::LeftButton); }
    QWidget* panel() { return control<QWidget>("Text3")->parentWidget(); }
};

} // namespace

class TestRbmainPublish : public QObject {
    Q_OBJECT

private slots:
    void thePanelChangesTheHeightOfTheList();
    void aMaximizedListKeepsItsHeight();
    void escapeShutsThePanel();
    void aListThatIsClosedWithThePanelOpenComesBackAtItsOwnHeight();
    void theChosenDiveIsHandedToTheMailer_data();
    void theChosenDiveIsHandedToTheMailer();
    void theBlueRowClickedLastIsSent();
    void ofTwoBlueRowsTheOneClickedLastIsSent();
    void theSupportAddressIsTakenWhenItIsChosen();
    void withoutASupportAddressTheScreenSaysSo();
    void aDiveWithoutItsFileIsNotSent();
    void withoutARowNothingIsSent();
    void withoutAMailerAFileIsOffered();
    void aMailerThatRefusesLeadsToTheFile();
    void aRefusedFileLeavesTheListAsItIs();
    void aFileThatCannotBeWrittenIsTold();

    void theListIsSavedAsASpreadsheet_data();
    void theListIsSavedAsASpreadsheet();
    void theSpreadsheetHasTheNameThatWasChosen();
    void aCancelledSpreadsheetSaysSo();
    void aSpreadsheetThatCannotBeWrittenSaysSo();
    void aLongSpreadsheetTellsHowFarItIs();
    void aSpreadsheetOfAListThatIsClosedStaysCut();
};

void TestRbmainPublish::thePanelChangesTheHeightOfTheList() {
    PublishWorld world;
    world.list.get().resize(1000, 500);
    world.show();
    world.list.get().setGeometry(0, 0, 1000, 480);
    QVERIFY(world.panel()->isHidden());
    world.press("Picture5(0)");
    QVERIFY(world.panel()->isVisible());
    const int grown = world.list.get().height();
    QVERIFY(grown > 480 + 60);
    world.press("Picture5(1)");
    QVERIFY(world.panel()->isHidden());
    QCOMPARE(world.list.get().height(), 480);
    world.press("Picture5(0)");
    QCOMPARE(world.list.get().height(), grown);
    world.press("Picture5(0)");
    QCOMPARE(world.list.get().height(), 480);
}

void TestRbmainPublish::aMaximizedListKeepsItsHeight() {
    PublishWorld world;
    world.show();
    world.list.get().showMaximized();
    const int height = world.list.get().height();
    world.press("Picture5(0)");
    QVERIFY(world.panel()->isVisible());
    QCOMPARE(world.list.get().height(), height);
}

void TestRbmainPublish::escapeShutsThePanel() {
    PublishWorld world;
    world.show();
    world.press("Picture5(0)");
    world.control<QWidget>("Text2")->setFocus();
    QTest::keyClick(world.control<QWidget>("Text2"), Qt::Key_Escape);
    QTRY_VERIFY(world.panel()->isHidden());
}

void TestRbmainPublish::aListThatIsClosedWithThePanelOpenComesBackAtItsOwnHeight() {
    PublishWorld world;
    world.show();
    world.list.get().setGeometry(10, 10, 1000, 480);
    world.press("Picture5(0)");
    QVERIFY(world.list.get().height() > 480);
    world.list.unload();
    world.show();
    QCOMPARE(world.list.get().height(), 480);
    QVERIFY(world.panel()->isHidden());
}

void TestRbmainPublish::theChosenDiveIsHandedToTheMailer_data() {
    QTest::addColumn<QString>("control");
    QTest::newRow("picture") << QStringLiteral("Picture5(2)");
    QTest::newRow("menu") << QStringLiteral("mnuEmail");
}

void TestRbmainPublish::theChosenDiveIsHandedToTheMailer() {
    QFETCH(QString, control);
    const StandInMailer mailer;
    PublishWorld world;
    world.show();
    world.press("Picture5(0)");
    world.click(2);
    world.control<QLineEdit>("Text2")->setText(QStringLiteral(" anna@example.org "));
    world.control<QPlainTextEdit>("Text3")->setPlainText(QStringLiteral("two\nlines"));
    if (auto* entry = world.list.get().findChild<QAction*>(control)) {
        entry->trigger();
    } else {
        world.press(qPrintable(control));
    }
    QTRY_VERIFY(QFile::exists(mailer.told()));
    const QStringList arguments = mailer.arguments();
    QCOMPARE(arguments.size(), 10);
    QCOMPARE(arguments.mid(0, 4), QStringList({"--utf8", "--subject", "Publish My Dive", "--body"}));
    const QStringList lines = arguments.at(4).split(QLatin1Char('\n'));
    QCOMPARE(lines.mid(0, 7), QStringList({"    This message contains dive attachments.", "two", "lines",
                                           "This dive was sent by Benthor. ", "DiveID D0000002",
                                           "Duration 41mins", "MaxDepth 22m"}));
    QCOMPARE(lines.size(), 4 + 27 + 1);
    QCOMPARE(arguments.mid(5),
             QStringList({"--attach", world.folder.path(u"old", u"Dive02.txt"), "--attach",
                          world.folder.path(u"jpg", u"25D5Dive02.jpg"), "mailto:anna@example.org"}));
    QCOMPARE(world.dialogs.asked().size(), 0);
}

void TestRbmainPublish::theBlueRowClickedLastIsSent() {
    const StandInMailer mailer;
    PublishWorld world;
    world.show();
    world.press("Picture5(0)");
    world.click(1);
    world.click(2, Qt::ControlModifier);
    world.click(2, Qt::ControlModifier); // no longer blue, but the current row
    QCOMPARE(world.grid().row(), 2);
    world.trigger("mnuEmail");
    QTRY_VERIFY(QFile::exists(mailer.told()));
    const QString told = mailer.arguments().join(u'\n');
    QVERIFY(told.contains(QStringLiteral("old/Dive01.txt")));
    QVERIFY(told.contains(diveNumber(1)));
    QVERIFY(!told.contains(diveNumber(2)));
}

void TestRbmainPublish::ofTwoBlueRowsTheOneClickedLastIsSent() {
    const StandInMailer mailer;
    PublishWorld world;
    world.show();
    world.press("Picture5(0)");
    world.click(1);
    world.click(2, Qt::ControlModifier);
    world.trigger("mnuEmail");
    QTRY_VERIFY(QFile::exists(mailer.told()));
    const QString told = mailer.arguments().join(u'\n');
    QVERIFY(told.contains(QStringLiteral("old/Dive02.txt")));
    QVERIFY(!told.contains(diveNumber(1)));
}

void TestRbmainPublish::theSupportAddressIsTakenWhenItIsChosen() {
    const StandInMailer mailer;
    PublishWorld world;
    platform::userSettings().setText(QStringLiteral("Options"), QStringLiteral("Support Address"),
                                     QStringLiteral("help@example.org"));
    world.show();
    world.control<QLineEdit>("Text2")->setText(QStringLiteral("anna@example.org"));
    world.control<QCheckBox>("Option1")->setChecked(true);
    world.trigger("mnuEmail");
    QTRY_VERIFY(QFile::exists(mailer.told()));
    QCOMPARE(mailer.arguments().last(), "mailto:help@example.org");
}

void TestRbmainPublish::withoutASupportAddressTheScreenSaysSo() {
    const StandInMailer mailer;
    PublishWorld world;
    world.show();
    const auto told = [&world] {
        const QList<QLabel*> labels = world.panel()->findChildren<QLabel*>();
        return std::any_of(labels.begin(), labels.end(), [](QLabel* label) {
            return label->text().contains(QLatin1String("No support address is set"));
        });
    };
    QVERIFY(!told());
    world.control<QCheckBox>("Option1")->setChecked(true);
    QVERIFY(told());
    world.trigger("mnuEmail");
    QTRY_VERIFY(QFile::exists(mailer.told()));
    QVERIFY(!mailer.arguments().last().startsWith(QLatin1String("mailto:")));
}

void TestRbmainPublish::aDiveWithoutItsFileIsNotSent() {
    const StandInMailer mailer;
    PublishWorld world;
    process().database.execute("UPDATE main SET Location = 'North wall'");
    world.show();
    world.trigger("mnuEmail");
    QCOMPARE(world.dialogs.messages().size(), 1);
    QVERIFY(world.dialogs.messages().first().startsWith(QLatin1String("Sorry, could not find dive file.\n")));
    QTest::qWait(100); // a mailer that was started would have told by now
    QVERIFY(!QFile::exists(mailer.told()));
}

void TestRbmainPublish::withoutARowNothingIsSent() {
    const StandInMailer mailer;
    ListWorld world;
    world.show();
    world.trigger("mnuEmail");
    QCOMPARE(world.dialogs.asked().size(), 0);
    QVERIFY(!QFile::exists(mailer.told()));
}

void TestRbmainPublish::withoutAMailerAFileIsOffered() {
    const NoMailer none;
    PublishWorld world;
    const QString path = world.folder.path(u"dive.eml");
    world.dialogs.answer(true);
    world.dialogs.answerFile(path);
    world.show();
    world.trigger("mnuEmail");
    QCOMPARE(world.dialogs.asked().size(), 2);
    const QByteArray file = platform::readFile(path).value_or("");
    QVERIFY(file.contains("Subject: Publish My Dive\r\n"));
    QVERIFY(file.contains(QByteArray("the dive's text").toBase64()));
    QVERIFY(file.contains("filename*=UTF-8''Dive01.txt"));
}

void TestRbmainPublish::aMailerThatRefusesLeadsToTheFile() {
    const StandInMailer mailer(3);
    PublishWorld world;
    const QString path = world.folder.path(u"dive.eml");
    world.dialogs.answer(true);
    world.dialogs.answerFile(path);
    world.show();
    world.trigger("mnuEmail");
    QTRY_VERIFY(QFile::exists(path));
}

void TestRbmainPublish::aRefusedFileLeavesTheListAsItIs() {
    const NoMailer none;
    PublishWorld world;
    world.show();
    world.trigger("mnuEmail"); // the question is answered by No
    QCOMPARE(world.dialogs.asked().size(), 1);
    QVERIFY(world.list.get().isVisible());
    QCOMPARE(world.blueRows(), QList<int>{1});
}

void TestRbmainPublish::aFileThatCannotBeWrittenIsTold() {
    const NoMailer none;
    PublishWorld world;
    world.dialogs.answer(true);
    world.dialogs.answerFile(QStringLiteral("/nowhere/dive.eml"));
    world.show();
    world.trigger("mnuEmail");
    QCOMPARE(world.dialogs.messages().size(), 1);
    QVERIFY(world.dialogs.messages().first().contains(QLatin1String("/nowhere/dive.eml")));
}

void TestRbmainPublish::theListIsSavedAsASpreadsheet_data() {
    QTest::addColumn<QString>("control");
    for (const char* const name :
         {"cmdSave", "Picture3(0)", "Picture3(1)", "Label10", "mnuSaveSpread", "mnusavecsv"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void TestRbmainPublish::theListIsSavedAsASpreadsheet() {
    QFETCH(QString, control);
    PublishWorld world;
    process().database.execute("UPDATE main SET site = NULL WHERE DiveID = 'D0000002'");
    world.show();
    world.press("Picture5(0)");
    const QString path = world.folder.path(u"list.csv");
    world.dialogs.answerFile(path);
    if (auto* entry = world.list.get().findChild<QAction*>(control)) {
        entry->trigger();
    } else {
        world.press(qPrintable(control));
    }
    QCOMPARE(world.dialogs.messages(), QStringList{"Data saved to CSV file....!!"});
    QCOMPARE(platform::readFile(path).value_or(""),
             "DiveID,Duration,MaxDepth,startdate,Dive Name,site,Usage hours,User Name,\r\n"
             "D0000001,41mins,22m,Jul/27/2017 09:50:02,Dive01.txt,Harbour mole,5mins,KD00123,\r\n"
             "D0000002,41mins,22m,Jul/27/2017 09:50:02,Dive02.txt,NA,5mins,KD00123,\r\n");
}

void TestRbmainPublish::theSpreadsheetHasTheNameThatWasChosen() {
    PublishWorld world;
    world.show();
    for (const char* const name : {"list", "list.txt"}) {
        world.dialogs.answerFile(world.folder.path(QString::fromLatin1(name)));
        world.trigger("mnuSaveSpread");
        QVERIFY(QFile::exists(world.folder.path(QString::fromLatin1(name))));
    }
    QVERIFY(!QFile::exists(world.folder.path(u"list.csv")));
    QVERIFY(!QFile::exists(world.folder.path(u"list.txt.csv")));
}

void TestRbmainPublish::aCancelledSpreadsheetSaysSo() {
    PublishWorld world;
    world.show();
    world.trigger("mnuSaveSpread");
    QCOMPARE(world.dialogs.messages(), QStringList{"Data is not saved to a file....!!"});
}

void TestRbmainPublish::aSpreadsheetThatCannotBeWrittenSaysSo() {
    PublishWorld world;
    world.show();
    world.dialogs.answerFile(QStringLiteral("/nowhere/list.csv"));
    world.trigger("mnuSaveSpread");
    QCOMPARE(world.dialogs.messages(), QStringList{"Data is not saved to a file....!!"});
}

namespace {

void addManyDives(int count) {
    platform::Transaction together(process().database);
    for (int number = 3; number <= count; ++number) {
        ListWorld::addDive(diveNumber(number));
    }
    together.commit();
}

/// Does something at the first painting of the quiet line with words in it.
class SaysWatch : public QObject {
public:
    QStringList said;
    std::function<void()> act;
    bool eventFilter(QObject* watched, QEvent* event) override {
        const QString text = static_cast<QLabel*>(watched)->text();
        if (event->type() == QEvent::Paint && !text.isEmpty()) {
            said += text;
            if (act) {
                std::exchange(act, {})();
            }
        }
        return false;
    }
};

} // namespace

void TestRbmainPublish::aLongSpreadsheetTellsHowFarItIs() {
    PublishWorld world;
    addManyDives(300);
    world.show();
    SaysWatch watch;
    world.control<QLabel>("quietline")->installEventFilter(&watch);
    const QString path = world.folder.path(u"list.csv");
    world.dialogs.answerFile(path);
    world.trigger("mnuSaveSpread");
    QCOMPARE(world.dialogs.messages(), QStringList{"Data saved to CSV file....!!"});
    QCOMPARE(watch.said.value(0), QStringLiteral("Saving dive 1 of 300"));
    QCOMPARE(world.control<QLabel>("quietline")->text(), QString());
    QCOMPARE(platform::readFile(path).value_or("").count('\n'), 301);
}

void TestRbmainPublish::aSpreadsheetOfAListThatIsClosedStaysCut() {
    PublishWorld world;
    addManyDives(300);
    world.show();
    SaysWatch watch;
    watch.act = [&world] { world.list.get().close(); };
    world.control<QLabel>("quietline")->installEventFilter(&watch);
    const QString path = world.folder.path(u"list.csv");
    world.dialogs.answerFile(path);
    world.trigger("mnuSaveSpread");
    QCOMPARE(world.dialogs.messages(), QStringList{"Data is not saved to a file....!!"});
    QVERIFY(!world.list.isLoaded());
    const qsizetype lines = platform::readFile(path).value_or("").count('\n');
    QVERIFY(lines >= 1 && lines < 301);
}

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    look::apply(application);
    TestRbmainPublish test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_rbmain_publish.moc"
