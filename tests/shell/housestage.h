#pragma once

#include "platform/look/look.h"
#include "platform/screen/screen.h"
#include "platform/screen/ticktimer.h"
#include "shell/house.h"
#include "tests/support/scripteddialogs.h"
#include "tests/support/testfolder.h"
#include "tests/support/testsettings.h"

#include <QAction>
#include <QApplication>
#include <QtTest>

namespace benthor::tests {

/// The loaded screen of that name, shown or hidden; null when there is none.
inline platform::Screen* loaded(const char* name) {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* screen = qobject_cast<platform::Screen*>(window);
        if (screen != nullptr && screen->objectName() == QLatin1String(name) && screen->isLoaded()) {
            return screen;
        }
    }
    return nullptr;
}

inline bool shown(const char* name) {
    return loaded(name) != nullptr && loaded(name)->isVisible();
}

template <class T> T* control(const char* screen, const char* name) {
    auto* found = loaded(screen) == nullptr ? nullptr : loaded(screen)->findChild<T*>(QLatin1String(name));
    if (found == nullptr) {
        qFatal("no %s on %s", name, screen);
    }
    return found;
}

inline void expire(const char* screen, const char* timer) {
    control<platform::TickTimer>(screen, timer)->expire();
}

inline void setGuide(const TestFolder& folder, const char* word) {
    platform::Database database;
    database.open(folder.path("rb.mdb"));
    database.execute(platform::sqlWith("UPDATE serialno SET getstarted = '", QString::fromLatin1(word), "'"));
}

/// The program on a folder of its own, from the splash on.
struct Program {
    explicit Program(const char* guide = "Close", TestFolder::Store store = TestFolder::Store::Fresh,
                     link::LinkLines lines = {})
        : folder(store) {
        if (store == TestFolder::Store::Fresh) {
            setGuide(folder, guide);
        }
        house = std::make_unique<shell::House>(std::move(lines));
        ended = std::make_unique<QSignalSpy>(house.get(), &shell::House::ended);
        house->start();
    }

    void passSplash() { expire("frmSplash", "Timer1"); }

    TestSettings settings;
    TestFolder folder;
    ScriptedDialogs dialogs;
    std::unique_ptr<shell::House> house;
    std::unique_ptr<QSignalSpy> ended;
};

/// The main of a test that shows the program as it looks to its user. A window that closes does not end it.
template <class Test> int runAsProgram(int argc, char** argv) {
    QApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    look::apply(application);
    Test test;
    return QTest::qExec(&test, argc, argv);
}

} // namespace benthor::tests
