#pragma once

#include "tests/support/scripteddialogs.h"
#include "tests/support/testfolder.h"
#include "tests/support/testsettings.h"

#include <QLabel>
#include <QPointer>
#include <QTest>

namespace benthor::tests {

/// One of the screens around the start, on a program folder and settings of its own.
template <class S> struct GuideStage {
    template <class... A>
    explicit GuideStage(A&&... arguments)
        : screen(new S(std::forward<A>(arguments)...)) {}
    ~GuideStage() { delete screen.data(); }

    template <class T = QWidget> T* control(const char* name) {
        T* found = screen->template findChild<T*>(QLatin1String(name));
        if (found == nullptr) {
            qFatal("no control %s", name);
        }
        return found;
    }
    void click(const char* name) { QTest::mouseClick(control<>(name), Qt::LeftButton); }
    QString text(const char* name) { return control<QLabel>(name)->text(); }

    TestSettings settings;
    TestFolder folder;
    ScriptedDialogs dialogs;
    QPointer<S> screen;
};

} // namespace benthor::tests
