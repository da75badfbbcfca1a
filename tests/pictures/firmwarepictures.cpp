#include "tests/pictures/firmwarepictures.h"

#include "firmware/screens/reprog_link.h"
#include "platform/programfolder.h"
#include "platform/screen/ticktimer.h"
#include "tests/firmware/fakefirmwareneighbours.h"
#include "tests/firmware/onefakeline.h"

#include <QAbstractButton>
#include <QAction>
#include <QFile>
#include <QThread>

namespace benthor::tests {

namespace {

const QByteArray kMemories = "MEMORY A Erased            MEMORY A Programmed\r\n"
                             "MEMORY B Erased            MEMORY B Programmed\r\n"
                             "MEMORY C Erased            MEMORY C Programmed\r\n";
const QByteArray kPrompt = "1 Status     2 Continue     Q Quit\r\nR, Enter Reprog Mode\r\n";
const QByteArray kMode =
    "KD REPROG MODE             type rb\r\n1 Status     2 Continue     9 Retry     & Erase     "
    "Q Quit\r\n";

QByteArray shell(const QString& value) {
    return "shell: bpcsp2 loader 4 check " + value.toLatin1() + "\r\n";
}

struct Stage {
    Stage() {
        screen = std::make_unique<firmware::ReProg_Link>(neighbours, oneFakeLine(line));
        screen->showScreen();
    }
    template <class T> T* control(const char* name) { return screen->findChild<T*>(QLatin1String(name)); }
    void tick(int times = 1) {
        for (int i = 0; i < times; ++i) {
            control<platform::TickTimer>("Timer1")->expire();
        }
    }
    void hear(const QByteArray& text) {
        line->waiting += text;
        tick();
    }
    void press(const char* button) { control<QAbstractButton>(button)->click(); }

    FakeFirmwareNeighbours neighbours;
    FakeLine* line = nullptr;
    std::unique_ptr<firmware::ReProg_Link> screen;
};

using Take = std::function<void(QWidget*, const char*)>;

void takeSession(const Take& take) {
    Stage stage;
    stage.tick();
    take(stage.screen.get(), "ReProg_Link-silent");
    stage.hear("KD LOADER                  type rb\r\n" + kMemories + shell("7B3E") + kPrompt);
    stage.tick();
    take(stage.screen.get(), "ReProg_Link-prompt");
    stage.press("SendCh(6)");
    stage.press("SendCh(3)");
    stage.hear(kMode);
    take(stage.screen.get(), "ReProg_Link-mode");
    // The device tells the right sum, and then its memories and the right value.
    bool sending = false;
    stage.line->onOutput = [&](const QByteArray& bytes) {
        QThread::msleep(bytes.size() == 128 ? 1 : 0); // so that there is something to paint
        if (bytes.size() == 128 && stage.screen->state().counted > 9000 && !sending) {
            sending = true;
            const platform::TickHold hold; // as in the send itself
            take(stage.screen.get(), "ReProg_Link-sending");
        }
        if (stage.screen->state().sentmark) {
            stage.line->waiting =
                "received " +
                QByteArray::number(stage.screen->state().sum + 38, 16).toUpper().rightJustified(8, '0') +
                "  Prog y/n\r\n";
        }
    };
    stage.press("Command2");
    stage.hear(kMemories);
    stage.tick(20);
    take(stage.screen.get(), "ReProg_Link-wait");
    stage.hear(shell(stage.screen->state().check.Text13) + kPrompt);
    stage.tick(50);
    take(stage.screen.get(), "ReProg_Link-proved");
    stage.press("SendCh(3)");
    stage.hear(kMemories + shell("BEEF"));
    stage.tick(9);
    take(stage.screen.get(), "ReProg_Link-again");
    stage.control<QAction>("mnuAdvanced")->trigger();
    stage.press("Option1(6)");
    take(stage.screen.get(), "ReProg_Link-advanced");
    stage.control<QAction>("mnuAdvanced")->trigger();
    stage.control<QAction>("mnuRehearse")->trigger();
    stage.tick();
    take(stage.screen.get(), "ReProg_Link-rehearsal");
}

} // namespace

void takeFirmwareScreens(const Take& take) {
    {
        QFile::remove(platform::ProgramFolder::current().path(u"comport.txt"));
        Stage none;
        none.tick();
        take(none.screen.get(), "ReProg_Link-noport");
    }
    link::writecomport(QStringLiteral("3"));
    takeSession(take);
}

} // namespace benthor::tests
