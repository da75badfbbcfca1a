#pragma once

#include "firmware/screens/reprog_link.h"
#include "platform/screen/ticktimer.h"
#include "tests/firmware/fakefirmwareneighbours.h"
#include "tests/firmware/onefakeline.h"
#include "tests/support/scripteddialogs.h"
#include "tests/support/testfolder.h"
#include "tests/support/testsettings.h"

#include <QDir>

#include <memory>

namespace benthor::tests {

/// The firmware screen on a line that the test speaks on, beside an image whose check list says otherwise.
struct ReprogStage {
    explicit ReprogStage(const QByteArray& image) {
        QDir::setCurrent(folder.root());
        folder.put("Reprog/bpcsp2shchk.sog", image);
        folder.put("Reprog/chklst.txt", "bpcsp2shchk.sog  chksum= 0ABC\r\n");
        link::writecomport(QStringLiteral("3"));
        screen = std::make_unique<firmware::ReProg_Link>(neighbours, oneFakeLine(line));
        screen->showScreen();
    }
    template <class T = QWidget> T* control(const char* name) const {
        auto* found = screen->findChild<T*>(QLatin1String(name));
        if (found == nullptr) {
            qFatal("no %s", name);
        }
        return found;
    }
    void hear(const QByteArray& text) {
        line->waiting += text;
        control<platform::TickTimer>("Timer1")->expire();
    }

    TestSettings settings;
    TestFolder folder;
    ScriptedDialogs dialogs;
    FakeFirmwareNeighbours neighbours;
    FakeLine* line = nullptr;
    std::unique_ptr<firmware::ReProg_Link> screen;
};

} // namespace benthor::tests
