#pragma once

#include "shell/screens/main_screen.h"
#include "tests/shell/fakeneighbours.h"
#include "tests/support/scripteddialogs.h"
#include "tests/support/testfolder.h"
#include "tests/support/testsettings.h"

#include <QAction>
#include <QColor>
#include <QPointer>
#include <QtTest>

namespace benthor::tests {

/// The screen with everything around it; the screen dies when its own rules say so.
struct MainStage {
    explicit MainStage(TestFolder::Store store = TestFolder::Store::Fresh)
        : folder(store)
        , main(new shell::MainScreen(neighbours)) {}
    ~MainStage() { delete main.data(); }

    template <class T = QWidget> T* control(const char* name) {
        auto* found = main->findChild<T*>(QLatin1String(name));
        if (found == nullptr) {
            qFatal("no control %s", name);
        }
        return found;
    }
    QAction* action(const char* name) { return control<QAction>(name); }
    void click(const char* name) { QTest::mouseClick(control(name), Qt::LeftButton); }
    /// A dive in the store, before the screen opens it: the panel is filled where there is one.
    void putDive() const {
        platform::Database store;
        store.open(folder.path("rb.mdb"));
        store.execute("INSERT INTO main (DiveID, startdate) VALUES ('D0000001', '2004-02-11 08:58:33')");
    }
    QColor command4() { return control("Command4")->property("toldBackground").value<QColor>(); }

    TestSettings settings;
    TestFolder folder;
    ScriptedDialogs dialogs;
    FakeNeighbours neighbours;
    QPointer<shell::MainScreen> main;
};

inline const QColor kRed(255, 0, 0);
inline const QColor kGreen(0, 255, 0);

} // namespace benthor::tests
