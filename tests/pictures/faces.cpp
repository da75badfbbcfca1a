#include "tests/pictures/faces.h"

#include "exports/screens/exportbox.h"
#include "guides/screens/comealong.h"
#include "platform/chart/chart.h"
#include "platform/files.h"
#include "platform/grid/flexgrid.h"
#include "platform/look/look.h"
#include "platform/programfolder.h"
#include "platform/screen/application.h"
#include "platform/screen/screen.h"
#include "platform/screen/ticktimer.h"
#include "session/process.h"
#include "shell/house.h"
#include "tests/pictures/firmwarepictures.h"
#include "tests/pictures/linkpictures.h"
#include "tests/support/scripteddialogs.h"

#include <QAbstractButton>
#include <QAction>
#include <QBuffer>
#include <QCheckBox>
#include <QDir>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QSettings>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextStream>
#include <QTimer>
#include <QTreeWidget>
#include <SQLiteCpp/Database.h>

namespace benthor::tests {

using platform::FlexGrid;
using platform::Screen;
using platform::TickTimer;

namespace {

const QList<QSize> kFirmwareSizes{{1120, 744}, {1024, 700}};
const QList<QSize> kLinkSizes{{1024, 700}, {1180, 760}};

Screen* screen(const char* name) {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* found = qobject_cast<Screen*>(window);
        if (found != nullptr && found->objectName() == QLatin1String(name) && found->isLoaded()) {
            return found;
        }
    }
    qFatal("%s is not loaded", name);
}

template <class T = QWidget> T* control(const char* screenName, const char* name) {
    auto* found = screen(screenName)->findChild<T*>(QLatin1String(name));
    if (found == nullptr) {
        qFatal("no %s on %s", name, screenName);
    }
    return found;
}

} // namespace

void settle() {
    for (int i = 0; i < 10; ++i) {
        QCoreApplication::processEvents();
    }
}

namespace {

void openDive(const QString& name) {
    auto* grid = control<FlexGrid>("rbmain", "MSFlexGrid1");
    for (int row = 1; row < grid->rows(); ++row) {
        if (grid->text(row, 4) == name) {
            const QPoint cell = grid->visualRect(grid->model()->index(row - 1, 1)).center();
            QMouseEvent press(QEvent::MouseButtonDblClick, cell, grid->viewport()->mapToGlobal(cell),
                              Qt::LeftButton, Qt::LeftButton, {});
            QCoreApplication::sendEvent(grid->viewport(), &press);
            settle();
            return;
        }
    }
    qFatal("%s is not in the list", qPrintable(name));
}

void check(const char* box) {
    control<QAbstractButton>("rbinterface", box)->click();
}

/// A dive with all its faces: a sample picked, an alarm, a zoomed page while it plays, a free view, the grid.
void diveScreen(Album& album, const QString& suffix, ScriptedDialogs& dialogs) {
    const QList<QSize> sizes{{1024, 700}, {1366, 768}, {1920, 1080}};
    const auto add = [&](const char* face) {
        album.add("rbinterface", QLatin1String("rbinterface-") + QLatin1String(face) + suffix, sizes);
    };
    openDive(QStringLiteral("Wreck2.txt"));
    add("first");
    for (const char* box : {"Check3", "Check9", "Check10", "Check11"}) {
        check(box);
    }
    auto* grid = control<FlexGrid>("rbinterface", "MSFlexGrid1");
    grid->setRow(grid->rows() * 3 / 5);
    add("point");
    check("Check5");
    control<QAction>("rbinterface", "mnuOwnScale")->trigger();
    control<QAction>("rbinterface", "mnuFoldTip")->trigger();
    grid->setRow(grid->rows() / 2);
    add("ownscale");
    control<QAction>("rbinterface", "mnuFoldTip")->trigger();
    control<QAction>("rbinterface", "mnuOwnScale")->trigger();
    check("Check5");
    for (const auto& [entry, name] :
         {std::pair{"mnuprintdive", "print-dive"}, {"mnuprintsamples", "print-samples"}}) {
        dialogs.answerPrinter(album.file(QLatin1String(name) + suffix + QLatin1String(".pdf")));
        control<QAction>("rbinterface", entry)->trigger();
    }
    check("AlarmNext");
    add("alarm");
    auto* chart = control<platform::Chart>("rbinterface", "MSChart1");
    emit chart->wheelTurned(6000, 4);
    add("free");
    emit chart->doubleClicked();
    check("Command2(0)");
    check("Command2(2)");
    check("PlayDive");
    control<TickTimer>("rbinterface", "Timer3")->expire();
    add("playing");
    check("StopPlayDive");
    check("Command2(0)");
    control<QAction>("rbinterface", "mnuSpread")->trigger();
    check("gaslistCheck");
    grid->setRow(grid->rows() / 2);
    add("grid");
    control<QAction>("rbinterface", "mnudiveinfo")->trigger();
    album.add("rbdetails", QStringLiteral("rbdetails") + suffix, {{1024, 700}, {1180, 760}, {1920, 1080}});
    control<QAction>("rbdetails", "mnuExit")->trigger();
    settle();
    control<QAction>("rbinterface", "mnudiveexit")->trigger();
    settle();
}

/// The real box that `act` brings up, which is closed when its picture is taken.
void box(Album& album, const QString& name, ScriptedDialogs& dialogs, const std::function<void()>& act) {
    bool seen = false;
    QTimer::singleShot(0, qApp, [&] {
        QWidget* const up = QApplication::activeModalWidget();
        if (up != nullptr) {
            album.add(up, name, {QSize()});
            seen = true;
            up->close();
        }
    });
    dialogs.stepAside(act);
    settle();
    if (!seen) {
        qFatal("no box for %s", qPrintable(name));
    }
}

/// The question before eight dives are deleted.
void deleteQuestion(Album& album, ScriptedDialogs& dialogs) {
    auto* grid = control<FlexGrid>("rbmain", "MSFlexGrid1");
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_Home);
    QTest::keyClick(grid, Qt::Key_End, Qt::ShiftModifier);
    box(album, QStringLiteral("rbmain-delete"), dialogs,
        [] { control<QAction>("rbmain", "mnuDeleteDive")->trigger(); });
}

/// Three dives deleted, what the menu offers then, and the trash with them; then all is as before.
void trashScreen(Album& album, ScriptedDialogs& dialogs) {
    control<QAction>("rbmain", "mnutrash")->trigger();
    settle();
    album.add("trash", QStringLiteral("trash-empty"), {{}});
    auto* grid = control<FlexGrid>("rbmain", "MSFlexGrid1");
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_Home);
    QTest::keyClick(grid, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(grid, Qt::Key_Down, Qt::ShiftModifier);
    dialogs.answer(true);
    control<QAction>("rbmain", "mnuDeleteDive")->trigger();
    settle();
    QMenu* const menu = control<QAction>("rbmain", "mnuEdit")->menu();
    menu->popup(screen("rbmain")->mapToGlobal(QPoint(60, 30)));
    settle();
    album.add(menu, QStringLiteral("rbmain-edit"), {{}});
    menu->close();
    control<QTreeWidget>("trash", "treetrash")
        ->setCurrentItem(control<QTreeWidget>("trash", "treetrash")->topLevelItem(1));
    album.add("trash", QStringLiteral("trash"), {{}, {1024, 700}, {1920, 1080}});
    screen("trash")->close();
    control<QAction>("rbmain", "mnuundo")->trigger();
    settle();
    album.add("rbmain", QStringLiteral("rbmain-undone"), {{1024, 700}});
}

/// How dives leave in an open format: the entries, and the box behind it.
void exportScreens(Album& album, ScriptedDialogs& dialogs) {
    QMenu* const menu = control<QAction>("rbmain", "mnuFile")->menu();
    menu->popup(screen("rbmain")->mapToGlobal(QPoint(10, 30)));
    settle();
    album.add(menu, QStringLiteral("rbmain-file"), {{}});
    menu->close();
    const platform::ProgramFolder& folder = platform::ProgramFolder::current();
    exports::DiveReader reader(process().database, folder);
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    const exports::LossReport losses =
        exports::exportdives(exports::DiveFormat::Uddf, file, reader, reader.identifiers());
    box(album, QStringLiteral("rbmain-exported"), dialogs, [&losses] {
        exports::tellexported(screen("rbmain"), QStringLiteral("/home/anna/dives.uddf"), losses);
    });
}

/// Another logbook beside this one: dives that are not here yet, one with other details, others that are
/// here.
void mergeScreen(Album& album, ScriptedDialogs& dialogs) {
    const QTemporaryDir place;
    const QString there = place.filePath(QStringLiteral("Second computer"));
    QDir().mkdir(there);
    const platform::ProgramFolder& folder = platform::ProgramFolder::current();
    const QString store = there + QStringLiteral("/rb.mdb");
    if (!platform::copyFile(folder.path(u"rb.mdb"), store)) {
        qFatal("the other logbook cannot be made");
    }
    SQLite::Database other(store.toStdString(), SQLite::OPEN_READWRITE);
    other.exec(
        "UPDATE main SET Startcode = Startcode || '0', Location = 'Lagoon ' || DiveID, dbtxtname = 'L' || "
        "dbtxtname WHERE DiveID < 'D0000004'");
    other.exec(
        "UPDATE main SET site = 'Blue Hole', Coments = 'A shark at 40 m, and the way back along the wall in "
        "a strong current.' WHERE DiveID = 'D0000005'");
    control<QAction>("rbmain", "mnumerge")->trigger();
    settle();
    album.add("mergelogbook", QStringLiteral("mergelogbook-empty"), {{}});
    dialogs.answerFile(there);
    control<QAbstractButton>("mergelogbook", "cmdotherfolder")->click();
    settle();
    auto* tree = control<QTreeView>("mergelogbook", "treemerge");
    tree->expand(tree->model()->index(0, 0, tree->model()->index(1, 0)));
    album.add("mergelogbook", QStringLiteral("mergelogbook"), {{}, {640, 400}, {1024, 700}, {1920, 1080}});
    control<QAction>("main", "mnuFeet")->trigger();
    settle();
    album.add("mergelogbook", QStringLiteral("mergelogbook-feet"), {{}});
    control<QAction>("main", "mnuMeters")->trigger();
    settle();
    screen("mergelogbook")->close();
    settle();
}

/// A file that no import can read, and the card that says so.
void unreadableFile(Album& album) {
    const QString file = platform::ProgramFolder::current().path(u"new", QStringLiteral("Silt7.txt"));
    if (!platform::writeFileWhole(file, "SN=KD43054\r\nStart     ,569232249\r\n")) {
        qFatal("the file cannot be made");
    }
    control<TickTimer>("main", "Timer1")->expire();
    settle();
    album.add("main", QStringLiteral("main-unreadable"));
    control<QAbstractButton>("main", "cmdmovetocorrupt")->click();
}

/// The list on a copy of the store, as on an older backup.
void otherStore(Album& album, ScriptedDialogs& dialogs) {
    const platform::ProgramFolder& folder = platform::ProgramFolder::current();
    const QString other = folder.path(u"older logbook.mdb");
    if (!platform::copyFile(folder.path(u"rb.mdb"), other)) {
        qFatal("the other store cannot be made");
    }
    dialogs.answerFile(other);
    control<QAction>("main", "mnuOpen")->trigger();
    settle();
    album.add("rbmain", QStringLiteral("rbmain-otherstore"));
    control<QAbstractButton>("rbmain", "cmdownlogbook")->click();
    settle();
}

/// A gas richer than the limit allows at its depth, and then a depth that is no number: the line that says
/// so, and the boxes that Update brings.
void wrongCells(Album& album, ScriptedDialogs& dialogs) {
    const auto type = [](const char* cell, const char* text) {
        auto* edit = control<QLineEdit>("GasBlend", cell);
        edit->setFocus();
        edit->selectAll();
        QTest::keyClicks(edit, QLatin1String(text));
        control<TickTimer>("GasBlend", "Timer5")->expire();
    };
    const auto update = [] {
        process().deviceconnected = 1; // the main screen's next tick finds no device
        control<QAbstractButton>("GasBlend", "Command1")->click();
    };
    type("Text3(3)", "40");
    process().deviceconnected = 1;
    type("Text1(3)", "95");
    album.add("GasBlend", QStringLiteral("GasBlend-warnings"), {{}, {1024, 700}});
    box(album, QStringLiteral("GasBlend-ask"), dialogs, update);
    type("Text3(3)", "12m");
    album.add("GasBlend", QStringLiteral("GasBlend-wrong"), {{}, {1024, 700}});
    box(album, QStringLiteral("GasBlend-refused"), dialogs, update);
}

/// The gas screen with a gas in hand, in both units, its debug texts and a wide window.
void gasScreen(Album& album, ScriptedDialogs& dialogs) {
    const QSize own;
    control<QAction>("main", "mnuSetupGas")->trigger();
    for (const char* const box : {"Check1(3)", "Check1(7)", "Option1(7)"}) {
        control<QAbstractButton>("GasBlend", box)->click();
    }
    control<TickTimer>("GasBlend", "Timer5")->expire();
    album.add("GasBlend", QStringLiteral("GasBlend"), {own, {1024, 700}});
    control<QAction>("GasBlend", "mnuFeet")->trigger();
    control<TickTimer>("GasBlend", "Timer5")->expire();
    control<QTabWidget>("GasBlend", "")->setCurrentIndex(2);
    control<QAction>("GasBlend", "mnuDebug")->trigger();
    settle();
    album.add("GasBlend", QStringLiteral("GasBlend-debug-feet"), {own});
    control<QAction>("GasBlend", "mnuDebugOff")->trigger();
    control<QAction>("GasBlend", "mnuMeters")->trigger();
    wrongCells(album, dialogs);
}

} // namespace

void Album::add(const char* screenName, const QString& name, const QList<QSize>& sizes) {
    add(screen(screenName), name, sizes);
}

void takeFirmware(Album& album) {
    takeFirmwareScreens([&album](QWidget* window, const char* name) {
        album.add(window, QLatin1String(name), kFirmwareSizes);
    });
}

void takeAll(Album& album, ScriptedDialogs& dialogs) {
    const QSize own;
    album.add("frmSplash", QStringLiteral("frmSplash"), {own});
    control<TickTimer>("frmSplash", "Timer1")->expire();
    settle();
    album.add("main", QStringLiteral("main-start"));
    dialogs.during([&album] { album.add("main", QStringLiteral("main-importing")); });
    control<TickTimer>("main", "Timer1")->expire();
    control<TickTimer>("main", "Timer2")->expire();
    control<QAction>("main", "mnuTips")->trigger();
    album.add("main", QStringLiteral("main-tips"));
    album.add("frmTip", QStringLiteral("frmTip"), {own});
    settle();

    album.add("rbmain", QStringLiteral("rbmain"));
    control<QAbstractButton>("rbmain", "Picture5(0)")->click();
    control<QCheckBox>("rbmain", "Option1")->setChecked(true);
    album.add("rbmain", QStringLiteral("rbmain-publish"));
    control<QAbstractButton>("rbmain", "Picture5(0)")->click();
    deleteQuestion(album, dialogs);
    trashScreen(album, dialogs);
    mergeScreen(album, dialogs);
    exportScreens(album, dialogs);
    otherStore(album, dialogs);
    unreadableFile(album);
    diveScreen(album, QStringLiteral("-metres"), dialogs);
    openDive(QStringLiteral("Cave1.txt"));
    check("Check6");
    album.add("rbinterface", QStringLiteral("rbinterface-sticks"));
    control<QAction>("rbinterface", "mnudiveexit")->trigger();
    settle();

    control<QAction>("main", "mnuFeet")->trigger();
    control<QAction>("main", "mnucurrentmain")->trigger();
    album.add("rbmain", QStringLiteral("rbmain-feet"));
    diveScreen(album, QStringLiteral("-feet"), dialogs);
    control<QAction>("main", "mnuMeters")->trigger();

    QFile::remove(platform::ProgramFolder::current().path(
        u"dbtxt", platform::ProgramFolder::current()
                      .listFiles(QStringLiteral("dbtxt"), QStringLiteral("*Reef1.txt"))
                      .value(0)));
    openDive(QStringLiteral("Reef1.txt"));
    album.add("rbinterface", QStringLiteral("rbinterface-nofile"));
    control<QAction>("rbinterface", "mnudiveexit")->trigger();
    settle();

    gasScreen(album, dialogs);
    for (const auto& [entry, name] : {std::pair{"mnuAbout", "frmAbout"}, std::pair{"mnuGets", "frmGetS"}}) {
        control<QAction>("main", entry)->trigger();
        album.add(name, QLatin1String(name), {own});
    }
    takeLinkScreens(
        [&album](QWidget* window, const char* name) { album.add(window, QLatin1String(name), kLinkSizes); });
    takeFirmware(album);
}

/// The start while another program holds the store: the window of the wait and the line that stays, beside
/// that about details that could not be stored.
void takeLockedStore(Album& album) {
    const QSize own;
    const platform::ProgramFolder& folder = platform::ProgramFolder::current();
    for (const QString& waiting : folder.listFiles(QStringLiteral("new"), QStringLiteral("*"))) {
        QFile::remove(folder.path(u"new", waiting)); // an import would fill the list anew under its picture
    }
    if (!platform::writeFileWhole(folder.path(u"unsaved-D0000002.txt"), "Dive Notes:\nA fine wall.\n")) {
        qFatal("the text of unsaved details cannot be made");
    }
    shell::House house;
    SQLite::Database other(folder.path(u"rb.mdb").toStdString(), SQLite::OPEN_READWRITE);
    other.exec("BEGIN IMMEDIATE");
    house.start();
    QTimer::singleShot(1000, qApp, [&album, own] {
        const QWidgetList windows = QApplication::topLevelWidgets();
        const auto wait = std::find_if(windows.begin(), windows.end(), [](const QWidget* window) {
            return window->objectName() == QLatin1String("storewait");
        });
        if (wait == windows.end()) {
            qFatal("no window tells of the wait");
        }
        album.add(*wait, QStringLiteral("storewait"), {own});
    });
    control<TickTimer>("frmSplash", "Timer1")->expire();
    settle();
    album.add("main", QStringLiteral("main-readonly"));
    control<QAction>("main", "mnuDiveList")->trigger();
    settle();
    album.add("rbmain", QStringLiteral("rbmain-readonly"));
}

static QWidget* window(const char* name) {
    for (QWidget* one : QApplication::topLevelWidgets()) {
        if (one->objectName() == QLatin1String(name) && one->isVisible()) {
            return one;
        }
    }
    return nullptr;
}

/// An older store comes along, and one that could not: the program that reads it is not beside this one.
void takeOlderStore(Album& album) {
    const platform::ProgramFolder& folder = platform::ProgramFolder::current();
    {
        const store::JetProgress told = guides::comealongprogress(folder.path(u"rb.mdb"));
        while (window("progress") == nullptr) {
            static_cast<void>(told(1134000, 2700002));
        }
        album.add(window("progress"), QStringLiteral("comealong"), {QSize()});
    }
    if (!platform::writeFileWhole(folder.path(u"rb.mdb"),
                                  QByteArray("\0\1\0\0", 4) + "Standard Jet DB" + QByteArray(5000, '\0'))) {
        qFatal("the older store cannot be made");
    }
    shell::House house;
    house.start();
    control<TickTimer>("frmSplash", "Timer1")->expire();
    screen("frmGetS")->unload();
    settle();
    album.add("main", QStringLiteral("main-older"));
}

} // namespace benthor::tests
