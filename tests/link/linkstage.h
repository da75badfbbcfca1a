#pragma once

#include "link/screens/pc_link_1.h"
#include "platform/grid/flexgrid.h"
#include "platform/screen/ticktimer.h"
#include "session/process.h"
#include "tests/link/fakehost.h"
#include "tests/support/scripteddialogs.h"
#include "tests/support/testfolder.h"
#include "tests/support/testsettings.h"

#include <QAction>
#include <QPointer>
#include <QtTest>

namespace benthor::tests {

/// The link screen with lines that lead nowhere; the screen dies when its own rules say so.
struct LinkStage {
    explicit LinkStage(const QString& screenmode = QString()) {
        process().screenmode = screenmode;
        link::LinkLines lines;
        lines.make = [this](QObject*, std::function<void()> received) {
            auto line = std::make_unique<FakeLine>();
            line->portExists = [this](int port) { return port == devicePort; };
            if (working == nullptr) {
                working = line.get();
                arrived = std::move(received);
            } else {
                search.push_back(line.get());
            }
            return line;
        };
        lines.portHint = [this] { return portHint; };
        screen = new link::PC_Link_1(std::move(lines));
    }
    ~LinkStage() { delete screen.data(); }
    LinkStage(const LinkStage&) = delete;
    LinkStage& operator=(const LinkStage&) = delete;

    template <class T = QWidget> T* control(const char* name) {
        auto* found = screen->findChild<T*>(QLatin1String(name));
        if (found == nullptr) {
            qFatal("no control %s", name);
        }
        return found;
    }
    QString text(const char* name) { return control<QObject>(name)->property("text").toString(); }
    void click(const char* name) { QTest::mouseClick(control(name), Qt::LeftButton); }
    void tick(const char* timer) { control<platform::TickTimer>(timer)->expire(); }
    bool ticking(const char* timer) { return control<platform::TickTimer>(timer)->isEnabled(); }

    /// Shows the screen, and finds a device on port 3.
    void connectDevice() {
        screen->showScreen();
        search.at(3)->waiting = "PPP";
        tick("Timer8");
        receive("PPPPPPPP");
        tick("Timer1");
    }
    void receive(const QByteArray& bytes) {
        working->waiting += bytes;
        arrived();
    }

    TestSettings settings;
    TestFolder folder;
    ScriptedDialogs dialogs;
    int devicePort = 3;
    QString portHint;
    FakeLine* working = nullptr;
    std::vector<FakeLine*> search;
    std::function<void()> arrived;
    QPointer<link::PC_Link_1> screen;
};

/// Text between a label and its value: the value begins at the eighth character behind the label.
inline QByteArray field(const QByteArray& label, const QByteArray& value) {
    return label + "......." + value + "\r\n";
}

inline QByteArray dive(const QByteArray& start) {
    return "ver=V3.12\r\n" + field("Start", start) + field("Finish", start.chopped(1) + "9");
}

/// A device of the third version with three dives.
inline QByteArray directory() {
    return dive("812345670") + dive("812445670") + dive("812545670") + "End\r\n";
}

} // namespace benthor::tests
