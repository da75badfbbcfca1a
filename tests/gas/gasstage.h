#pragma once

#include "platform/screen/ticktimer.h"
#include "session/process.h"
#include "tests/gas/fakelink.h"
#include "tests/support/scripteddialogs.h"
#include "tests/support/testfolder.h"
#include "tests/support/testsettings.h"

#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QtTest>

namespace benthor::tests {

/// The stock file of an installation: a whole setup text.
inline QByteArray stockFile() {
    return "A079 000 0560 1 B001 000 0040 0 C020 000 0070 0 D050 000 0180 0 E060 000 0250 0 F064 000 0280 0 "
           "G068 000 "
           "0330 0 H047 035 0670 0 I036 050 0900 0 J024 065 1170 0 K0000000000 L0 M2 N0 O0 P130 Q0 R0 S1 "
           "T100 U004 "
           "V120 W030 X1 Y1 Z\x1b\r\n";
}

/// The gas screen on a folder of its own, with a link of the test's.
struct Stage {
    explicit Stage(const char* unit = "metre") {
        process().depthunit = QString::fromLatin1(unit);
        folder.put("gdata.mit", stockFile());
        screen = new gas::GasBlend(link);
        screen->showScreen();
    }
    ~Stage() { delete screen.data(); }

    template <class T = QWidget> T* control(const char* name) {
        T* found = screen->findChild<T*>(QLatin1String(name));
        if (found == nullptr) {
            qFatal("no control %s", name);
        }
        return found;
    }
    QString text(const char* name) { return control<QLineEdit>(name)->text(); }
    QString label(const char* name) { return control<QLabel>(name)->text(); }
    void type(const char* name, const QString& text, bool finished = false) {
        auto* box = control<QLineEdit>(name);
        box->setFocus();
        box->selectAll();
        if (text.isEmpty()) {
            QTest::keyClick(box, Qt::Key_Delete);
        }
        QTest::keyClicks(box, text);
        if (finished) {
            QTest::keyClick(box, Qt::Key_Return);
        }
    }
    void tick() { control<platform::TickTimer>("Timer5")->expire(); }
    QColor ground(const char* name) {
        return control<QLineEdit>(name)->palette().color(QPalette::Active, QPalette::Base);
    }

    TestSettings settings;
    TestFolder folder;
    ScriptedDialogs dialogs;
    FakeLink link;
    QPointer<gas::GasBlend> screen;
};

} // namespace benthor::tests
