#include "tests/tour/gasroad.h"

#include "link/screens/pc_link_1.h"
#include "platform/programfolder.h"
#include "tests/tour/lookup.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTabWidget>

namespace benthor::tour {

namespace {

void trigger(Actor& actor, QWidget* screen, const char* entry) {
    auto* action = actor.control<QAction>(screen, QLatin1String(entry));
    actor.look([action] { QMetaObject::invokeMethod(action, &QAction::trigger, Qt::QueuedConnection); });
}

void showTab(Actor& actor, QWidget* gas, int tab) {
    auto* tabs = actor.control<QTabWidget>(gas, QString());
    QRect place;
    actor.look([&] { place = tabs->tabBar()->tabRect(tab); });
    actor.click(tabs->tabBar(), place.center());
}

QByteArray setupIn(simulator::KdPort& device) {
    QByteArray setup;
    device.with([&setup](simulator::Kd& kd) { setup = kd.memory.setup; });
    return setup;
}

void waitConnected(Actor& actor, QWidget* gas) {
    auto* status = actor.control<QLabel>(gas, QStringLiteral("Label7"));
    actor.waitFor(QStringLiteral("the connection"),
                  [status] { return status->text() == QLatin1String("Connected"); });
}

/// The link may lose the device between the look and the press, and has it again soon; the screen says so.
void pressUpdate(Actor& actor, QWidget* gas) {
    constexpr int kTimes = 3;
    const QString refusal = QStringLiteral("KD/Tolby not connected!\r\nSave to file using File menu..");
    for (int time = 0; time < kTimes; ++time) {
        waitConnected(actor, gas);
        actor.click(actor.control<QWidget>(gas, QStringLiteral("Command1")));
        bool refused = false;
        actor.look([&] {
            const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            refused = box != nullptr && box->text() == refusal;
        });
        if (!refused) {
            return;
        }
        actor.answerBox(refusal, QStringLiteral("OK"));
    }
}

} // namespace

void planTheGases(Actor& actor, simulator::KdPort& device) {
    actor.step(QStringLiteral("Setup + Gas shows what the device reported"));
    QWidget* main = actor.screen(QStringLiteral("main"));
    actor.click(actor.control<QWidget>(main, QStringLiteral("Label4")));
    QWidget* gas = actor.screen(QStringLiteral("GasBlend"));
    auto* setpoint = actor.control<QLineEdit>(gas, QStringLiteral("sptext"));
    actor.waitFor(QStringLiteral("the device's setpoint"),
                  [setpoint] { return setpoint->text() == QLatin1String("1.30"); });
    waitConnected(actor, gas);
    actor.picture(gas, QStringLiteral("gas"));

    actor.step(
        QStringLiteral("A trimix, a setpoint and the silent mode are changed; the screen says what differs"));
    auto* oxygen = actor.control<QLineEdit>(gas, QStringLiteral("Text1(7)"));
    actor.click(oxygen);
    actor.look([oxygen] { oxygen->selectAll(); });
    actor.key(oxygen, Qt::Key_1);
    actor.key(oxygen, Qt::Key_6);
    actor.click(actor.control<QWidget>(gas, QStringLiteral("Command4(0)")));
    actor.click(actor.control<QWidget>(gas, QStringLiteral("Check2(2)")));
    auto* tabs = actor.control<QTabWidget>(gas, QString());
    actor.waitFor(QStringLiteral("the changes"),
                  [tabs] { return tabs->tabText(2).startsWith(QLatin1String("Changes (")); });
    actor.picture(gas, QStringLiteral("gas-changed"));
    showTab(actor, gas, 2);
    actor.waitFor(QStringLiteral("the tab of changes"), [tabs] { return tabs->currentIndex() == 2; });
    actor.picture(gas, QStringLiteral("gas-changes"));

    actor.step(QStringLiteral("Update sends them; the device holds exactly that text"));
    auto* text = actor.control<QPlainTextEdit>(gas, QStringLiteral("Text7"));
    pressUpdate(actor, gas);
    actor.picture(actor.screen(QStringLiteral("PC_Link_1")), QStringLiteral("gas-sent"));
    actor.waitFor(QStringLiteral("the setup in the device"), [&] {
        const QByteArray setup = setupIn(device);
        return setup.contains("H049 035") && setup.contains("P125") && setup.contains("Q1") &&
               setup.size() == 226;
    });
    require(!text->toPlainText().isEmpty(), QStringLiteral("the setup text is empty"));

    actor.step(QStringLiteral("The device goes off and comes back, and reports the same"));
    const QString file = platform::ProgramFolder::current().path(u"gdatalastrec.mit");
    device.stop();
    QFile::remove(file);
    device.start();
    QWidget* link = actor.screen(QStringLiteral("PC_Link_1"));
    trigger(actor, link, "mnuFindKD");
    actor.waitFor(
        QStringLiteral("the setup to come again"), [&file] { return QFile::exists(file); }, 60000);
    actor.look([gas] { gas->show(); });
    actor.waitFor(QStringLiteral("no change against the device"),
                  [tabs] { return tabs->tabText(2) == QLatin1String("Changes"); });
    actor.look([gas] { gas->raise(); });
    showTab(actor, gas, 1);
    actor.picture(gas, QStringLiteral("gas-read-back"));
}

} // namespace benthor::tour
