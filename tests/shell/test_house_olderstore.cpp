// An older store, a Jet file, comes along through its three doors.

#include "platform/instancelock.h"
#include "session/process.h"
#include "tests/shell/housestage.h"
#include "tests/support/madereader.h"

#include <QLabel>
#include <QPushButton>

using namespace benthor;
using namespace benthor::tests;

namespace {

int divesIn(const QString& path) {
    try {
        platform::Database store;
        store.open(path);
        return store.openRecordset("SELECT COUNT(*) FROM main").value(0).text().toInt();
    } catch (const platform::StoreError&) {
        return -1;
    }
}

/// A start on a folder whose store is an older one.
struct OlderStart : Program {
    OlderStart()
        : Program("Close", TestFolder::Store::Missing) {
        folder.put(QStringLiteral("rb.mdb"), jetHead());
    }
    QString onlyMessage() const {
        return dialogs.messages().size() == 1 ? dialogs.messages().first() : dialogs.messages().join(u'|');
    }
};

QWidget* progressWindow() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->objectName() == QLatin1String("progress")) {
            return window;
        }
    }
    return nullptr;
}

/// Presses "Stop" as soon as the window of progress is up.
class Stopper : public QObject {
public:
    Stopper() {
        QObject::connect(&timer_, &QTimer::timeout, this, [this] {
            QWidget* window = progressWindow();
            if (window != nullptr && window->isVisible()) {
                seen_ = true;
                QTest::mouseClick(window->findChild<QPushButton*>(QStringLiteral("progressstop")),
                                  Qt::LeftButton);
            }
        });
        timer_.start(10);
    }
    bool seen() const { return seen_; }

private:
    QTimer timer_;
    bool seen_ = false;
};

/// The program on a store of its own, and a file beside it.
struct OwnStore : Program {
    OwnStore() { folder.put(QStringLiteral("mine.mdb"), jetHead()); }

    void reachMain() {
        passSplash();
        dialogs.clear();
    }
    void choose(const QString& path) {
        dialogs.answerFile(path);
        control<QAction>("main", "mnuOpen")->trigger();
    }
    static QString band() { return control<QLabel>("rbmain", "lblotherstore")->text(); }
};

} // namespace

class TestHouseOlderStore : public QObject {
    Q_OBJECT

private slots:
    void atTheStartItComesBeforeTheBackups();
    void atTheStartAFaultLeavesItAndTheStartGoesOn();
    void atTheStartAStopLeavesItAndTheStartGoesOn();
    void aSecondCopyBringsNothingAlong();
    void fixDatabaseTakesAChosenOne();
    void fixDatabaseNamesWhatIsWrong();
    void openShowsACopyUnderTheFilesName();
    void openNamesWhatIsWrongAndChangesNothing();
    void openAStopChangesNothing();
    void aStoreOfOursOpenedBehindAnOlderOneIsItself();
};

void TestHouseOlderStore::atTheStartItComesBeforeTheBackups() {
    const MadeReader reader(3);
    OlderStart program;
    program.passSplash();
    QVERIFY2(program.onlyMessage().contains(QLatin1String("read without a fault")),
             qPrintable(program.onlyMessage()));
    for (const char* const words :
         {"3 dives", "6 gas rows", "9 tissue rows", "1 buddy", "2 further tables"}) {
        QVERIFY2(program.onlyMessage().contains(QLatin1String(words)), qPrintable(program.onlyMessage()));
    }
    QVERIFY(!program.onlyMessage().contains(QLatin1String("sound")));
    QVERIFY(program.onlyMessage().contains(program.folder.path(QStringLiteral("rb-jet.mdb"))));
    QCOMPARE(divesIn(program.folder.path(QStringLiteral("rb.mdb"))), 3);
    QCOMPARE(divesIn(program.folder.path(QStringLiteral("backup.mdb"))), 3);
    QCOMPARE(program.folder.get(QStringLiteral("rb-jet.mdb")), jetHead());
    QVERIFY(shown("main"));
    QVERIFY(control<QLabel>("main", "lbltotaldive")->text().contains(QLatin1String("3 dives")));
    QCOMPARE(process().depthunit, "Feet");
}

void TestHouseOlderStore::atTheStartAFaultLeavesItAndTheStartGoesOn() {
    const MadeReader reader("The file is encrypted.");
    OlderStart program;
    program.folder.put(QStringLiteral("backup.mdb"), "an earlier store");
    program.passSplash();
    QVERIFY2(program.onlyMessage().contains(QLatin1String("The file is encrypted.")) &&
                 program.onlyMessage().contains(program.folder.path(QStringLiteral("rb.mdb"))),
             qPrintable(program.onlyMessage()));
    QCOMPARE(program.folder.get(QStringLiteral("rb.mdb")), jetHead());
    QCOMPARE(program.folder.get(QStringLiteral("backup.mdb")), "an earlier store");
    QVERIFY(!program.folder.has(QStringLiteral("rb-jet.mdb")) &&
            !program.folder.has(QStringLiteral("rb-damaged.mdb")));
    // The guide stays, as it does where the store says nothing of it, and the main screen says what is wrong.
    QVERIFY(shown("frmGetS"));
    loaded("frmGetS")->unload();
    QVERIFY(shown("main"));
    bool told = false;
    for (const QLabel* label : loaded("main")->findChildren<QLabel*>()) {
        told = told || (label->isVisible() && label->text().contains(QLatin1String("has not come along; the next start tries it again.")));
    }
    QVERIFY(told);
}

void TestHouseOlderStore::atTheStartAStopLeavesItAndTheStartGoesOn() {
    MadeReader reader(3);
    reader.stall();
    OlderStart program;
    const Stopper stopper;
    program.passSplash();
    QVERIFY(stopper.seen());
    QVERIFY(progressWindow() == nullptr);
    QVERIFY2(program.onlyMessage().contains(QLatin1String("nothing was changed")),
             qPrintable(program.onlyMessage()));
    QCOMPARE(program.folder.get(QStringLiteral("rb.mdb")), jetHead());
    QVERIFY(!program.folder.has(QStringLiteral("rb-jet.mdb")));
    QVERIFY(shown("frmGetS"));
}

void TestHouseOlderStore::aSecondCopyBringsNothingAlong() {
    const MadeReader reader(3);
    const TestSettings settings;
    const TestFolder folder(TestFolder::Store::Missing);
    const platform::InstanceLock first(folder.root());
    folder.put(QStringLiteral("rb.mdb"), jetHead());
    ScriptedDialogs dialogs;
    shell::House house;
    house.start();
    expire("frmSplash", "Timer1");
    QCOMPARE(folder.get(QStringLiteral("rb.mdb")), jetHead());
    QVERIFY(!folder.has(QStringLiteral("rb-jet.mdb")));
}

void TestHouseOlderStore::fixDatabaseTakesAChosenOne() {
    const MadeReader reader(4);
    OwnStore program;
    const QByteArray before = program.folder.get(QStringLiteral("rb.mdb"));
    const QString chosen = program.folder.path(QStringLiteral("mine.mdb"));
    program.dialogs.answer(true);
    program.dialogs.answerFile(chosen);
    control<QPushButton>("frmSplash", "Command1")->click();
    QCOMPARE(program.dialogs.messages().size(), 1);
    const QString word = program.dialogs.messages().first();
    for (const QString& part : {chosen, QStringLiteral("read without a fault"), QStringLiteral("4 dives"),
                                program.folder.path(QStringLiteral("rb-replaced.mdb"))}) {
        QVERIFY2(word.contains(part), qPrintable(word));
    }
    QCOMPARE(divesIn(program.folder.path(QStringLiteral("rb.mdb"))), 4);
    QCOMPARE(program.folder.get(QStringLiteral("rb-replaced.mdb")), before);
    QCOMPARE(program.folder.get(QStringLiteral("mine.mdb")), jetHead());
    QVERIFY(!program.folder.has(QStringLiteral("rb-jet.mdb")));
    QVERIFY(!control<QPushButton>("frmSplash", "Command1")->isEnabled());
}

void TestHouseOlderStore::fixDatabaseNamesWhatIsWrong() {
    const MadeReader reader("The file is cut off.");
    OwnStore program;
    const QByteArray before = program.folder.get(QStringLiteral("rb.mdb"));
    program.dialogs.answer(true);
    program.dialogs.answerFile(program.folder.path(QStringLiteral("mine.mdb")));
    control<QPushButton>("frmSplash", "Command1")->click();
    QVERIFY(program.dialogs.messages().size() == 1 &&
            program.dialogs.messages().first().contains(QLatin1String("The file is cut off.")));
    QCOMPARE(program.folder.get(QStringLiteral("rb.mdb")), before);
    QVERIFY(!program.folder.has(QStringLiteral("rb-replaced.mdb")));
    QVERIFY(control<QPushButton>("frmSplash", "Command1")->isEnabled());
}

void TestHouseOlderStore::openShowsACopyUnderTheFilesName() {
    const MadeReader reader(5);
    OwnStore program;
    program.reachMain();
    const QString chosen = program.folder.path(QStringLiteral("mine.mdb"));
    const QByteArray own = program.folder.get(QStringLiteral("rb.mdb"));
    program.choose(chosen);
    QVERIFY(program.dialogs.messages().size() == 1 &&
            program.dialogs.messages().first().contains(QLatin1String("5 dives")));
    QVERIFY(OwnStore::band().contains(chosen));
    QVERIFY(loaded("rbmain")->windowTitle().endsWith(chosen));
    QCOMPARE(process().storepath, chosen);
    const QString copy = process().storecopy;
    QVERIFY(!copy.startsWith(program.folder.root()));
    QCOMPARE(divesIn(copy), 5);
    QCOMPARE(program.folder.get(QStringLiteral("mine.mdb")), jetHead());
    QCOMPARE(program.folder.get(QStringLiteral("rb.mdb")), own);
    // The list may be made anew: it stays on the copy. Back at home the copy plays no part.
    control<QAction>("main", "mnucurrentmain")->trigger();
    QVERIFY(OwnStore::band().contains(chosen));
    control<QPushButton>("rbmain", "cmdownlogbook")->click();
    QVERIFY(process().storepath.isEmpty());
    program.house.reset();
    QVERIFY(!QFile::exists(copy));
}

void TestHouseOlderStore::openNamesWhatIsWrongAndChangesNothing() {
    const MadeReader reader("The file is encrypted.");
    OwnStore program;
    program.reachMain();
    program.choose(program.folder.path(QStringLiteral("mine.mdb")));
    QVERIFY(program.dialogs.messages().size() == 1 &&
            program.dialogs.messages().first().contains(QLatin1String("The file is encrypted.")));
    QCOMPARE(process().storepath, "");
    QCOMPARE(process().storecopy, "");
    QVERIFY(loaded("rbmain") == nullptr);
}

void TestHouseOlderStore::openAStopChangesNothing() {
    MadeReader reader(3);
    OwnStore program;
    program.reachMain();
    const QString chosen = program.folder.path(QStringLiteral("mine.mdb"));
    program.choose(chosen);
    const QString copy = process().storecopy;
    reader.stall();
    const Stopper stopper;
    program.folder.put(QStringLiteral("other.mdb"), jetHead());
    program.choose(program.folder.path(QStringLiteral("other.mdb")));
    QVERIFY(stopper.seen());
    QCOMPARE(process().storepath, chosen);
    QCOMPARE(process().storecopy, copy);
    QCOMPARE(divesIn(copy), 3);
    QVERIFY(OwnStore::band().contains(chosen));
}

void TestHouseOlderStore::aStoreOfOursOpenedBehindAnOlderOneIsItself() {
    const MadeReader reader(3);
    OwnStore program;
    program.reachMain();
    program.choose(program.folder.path(QStringLiteral("mine.mdb")));
    const QString copy = process().storecopy;
    const QString other = program.folder.path(QStringLiteral("other.mdb"));
    QVERIFY(platform::copyFile(copy, other));
    {
        platform::Database store;
        store.open(other);
        store.execute("DELETE FROM main WHERE DiveID = 'D0000003'");
    }
    program.choose(other);
    QCOMPARE(process().storecopy, "");
    QVERIFY(OwnStore::band().contains(other));
    QVERIFY(!QFile::exists(copy));
}

int main(int argc, char** argv) {
    return runAsProgram<TestHouseOlderStore>(argc, argv);
}
#include "test_house_olderstore.moc"
