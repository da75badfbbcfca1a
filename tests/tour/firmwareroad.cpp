#include "tests/tour/firmwareroad.h"

#include "platform/programfolder.h"
#include "tests/tour/lookup.h"

#include <QAction>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>

namespace benthor::tour {

using simulator::FirmwareType;
using simulator::Kd;
using simulator::KdPort;

namespace {

QString path(const char* name) {
    return platform::ProgramFolder::current().path(QString::fromLatin1(name));
}

void trigger(Actor& actor, QWidget* screen, const char* entry) {
    auto* action = actor.control<QAction>(screen, QLatin1String(entry));
    actor.look([action] { QMetaObject::invokeMethod(action, &QAction::trigger, Qt::QueuedConnection); });
}

void press(Actor& actor, QWidget* screen, const char* button) {
    actor.click(actor.control<QWidget>(screen, QLatin1String(button)));
}

void waitForLamp(Actor& actor, QWidget* screen, int index, const char* words, int milliseconds = 60000) {
    auto* lamp = actor.control<QLabel>(screen, QStringLiteral("Label4(%1)").arg(index));
    actor.waitFor(
        QLatin1String(words), [lamp, words] { return lamp->text() == QLatin1String(words); }, milliseconds);
}

void waitForWords(Actor& actor, QWidget* screen, const char* words) {
    auto* text = actor.control<QPlainTextEdit>(screen, QStringLiteral("Text4"));
    actor.waitFor(QLatin1String(words),
                  [text, words] { return text->toPlainText().contains(QLatin1String(words)); });
}

QWidget* openTheLink(Actor& actor) {
    QWidget* main = actor.screen(QStringLiteral("main"));
    trigger(actor, main, "cmdcommandsend");
    return actor.screen(QStringLiteral("PC_Link_1"));
}

void sendALogo(Actor& actor, KdPort& device) {
    actor.step(QStringLiteral("The converter makes a logo of the example; the device shows it"));
    QWidget* link = openTheLink(actor);
    trigger(actor, link, "mnuLogoConv");
    actor.answerBox(QStringLiteral("Bitmap to convert must be the following specification:\n"
                                   "102 pixels wide x 64 pixels high. Monochrome Bitmap.\n"
                                   "The file must be in the same folder as logoconv.exe: %1\n"
                                   "File sharka.bmp supplied as example.")
                        .arg(platform::ProgramFolder::current().root()),
                    QStringLiteral("OK"), QStringLiteral("logo-specification"));
    actor.chooseFile(path("sharka.bmp"));
    actor.answerBox(QStringLiteral("Created file: sharka.bmt"), QStringLiteral("OK"));
    auto* status = actor.control<QLabel>(link, QStringLiteral("AFLabel3"));
    actor.waitFor(
        QStringLiteral("the connection"), [status] { return status->text() == QLatin1String("Connected"); },
        60000);
    actor.click(actor.control<QWidget>(link, QStringLiteral("Label19(0)")));
    trigger(actor, link, "mnuOpen");
    actor.chooseFile(path("sharka.bmt"));
    press(actor, link, "Command2");
    actor.waitFor(
        QStringLiteral("the logo in the device"),
        [&device] {
            bool there = false;
            device.with([&there](Kd& kd) { there = kd.memory.logo.size() > 1000; });
            return there;
        },
        60000);
    actor.picture(link, QStringLiteral("logo-sent"));
    trigger(actor, link, "mnuExit");
}

QWidget* findTheLoader(Actor& actor, KdPort& device) {
    actor.step(
        QStringLiteral("The device waits to be programmed: the search hears it, the screen opens by itself"));
    QWidget* link = openTheLink(actor);
    device.stop();
    device.with([](Kd& kd) { kd.loader.emplace(FirmwareType::Rb); });
    device.paceReceived(KdPort::lineSpeed);
    device.start();
    trigger(actor, link, "mnuFindKD");
    actor.answerBox(
        QStringLiteral("CLOSE ALL OTHER PROGRAMS FOR MOST RELIABLE LINK. DO NOT USE MOUSE OR KEYBOARD "
                       "WHEN UNIT IS PROGRAMMING."),
        QStringLiteral("OK"), QStringLiteral("firmware-warning"));
    QWidget* screen = actor.screen(QStringLiteral("ReProg_Link"));
    waitForLamp(actor, screen, 3, "Ready to Send");
    waitForLamp(actor, screen, 4, "KD Not same Check sum as chosen file");
    actor.picture(screen, QStringLiteral("firmware-prompt"));
    return screen;
}

void lookAround(Actor& actor, QWidget* screen) {
    actor.step(QStringLiteral("What else runs is listed; a rehearsal stands under its banner"));
    trigger(actor, screen, "mnuRunProg");
    QWidget* programs = actor.screen(QStringLiteral("RunProg"));
    auto* list = actor.control<QListWidget>(programs, QStringLiteral("List1"));
    actor.waitFor(QStringLiteral("programs in the list"), [list] { return list->count() > 0; });
    actor.picture(programs, QStringLiteral("programs"));
    actor.look([programs] { QMetaObject::invokeMethod(programs, &QWidget::close, Qt::QueuedConnection); });
    trigger(actor, screen, "mnuRehearse");
    auto* banner = actor.control<QWidget>(screen, QStringLiteral("rehearsal"));
    actor.waitFor(QStringLiteral("the banner"), [banner] { return banner->isVisible(); });
    waitForLamp(actor, screen, 3, "Ready to Send");
    actor.picture(screen, QStringLiteral("firmware-rehearsal"));
    press(actor, screen, "endRehearsal");
    waitForLamp(actor, screen, 3, "Ready to Send");
}

void enterTheMode(Actor& actor, QWidget* screen) {
    actor.step(QStringLiteral("Enter Reprog Mode opens Send to KD"));
    press(actor, screen, "SendCh(6)");
    waitForWords(actor, screen, "REPROG MODE");
    press(actor, screen, "SendCh(3)");
    waitForWords(actor, screen, "REPROG MODE");
    auto* send = actor.control<QWidget>(screen, QStringLiteral("Command2"));
    actor.waitFor(QStringLiteral("Send to KD"), [send] { return send->isEnabled(); });
    actor.picture(screen, QStringLiteral("firmware-mode"));
}

void sendTheImage(Actor& actor, QWidget* screen) {
    actor.step(QStringLiteral("The image goes out at 9600 baud"));
    press(actor, screen, "Command2");
    waitForWords(actor, screen, "Sending data byte: 6528");
    actor.picture(screen, QStringLiteral("firmware-sending"));
    actor.step(QStringLiteral("The device has it, programs its memories, and reports their value"));
    auto* wait = actor.control<QWidget>(screen, QStringLiteral("Frame5"));
    actor.waitFor(
        QStringLiteral("the final wait"), [wait] { return wait->isVisible(); }, 60000);
    actor.picture(screen, QStringLiteral("firmware-wait"));
    waitForLamp(actor, screen, 4, "OK to Restart");
    actor.waitFor(
        QStringLiteral("the wait's end"), [wait] { return !wait->isVisible(); }, 60000);
    waitForLamp(actor, screen, 4, "OK to Restart");
    actor.picture(screen, QStringLiteral("firmware-proved"));
}

void restart(Actor& actor, QWidget* screen, KdPort& device) {
    actor.step(QStringLiteral("Restart KD; the device comes back as itself, with the new firmware"));
    press(actor, screen, "SendCh(8)");
    waitForWords(actor, screen, "PPPP");
    actor.picture(screen, QStringLiteral("firmware-restarted"));
    bool loading = true;
    qsizetype image = 0;
    device.with([&](Kd& kd) {
        loading = kd.loader.has_value();
        image = kd.image().size();
    });
    require(!loading && image > 10000, QStringLiteral("the device has not taken the image"));
}

} // namespace

void reprogramTheDevice(Actor& actor, KdPort& device) {
    sendALogo(actor, device);
    QWidget* screen = findTheLoader(actor, device);
    lookAround(actor, screen);
    enterTheMode(actor, screen);
    sendTheImage(actor, screen);
    restart(actor, screen, device);
    actor.step(QStringLiteral("Home leads back to the main screen"));
    press(actor, screen, "Label11");
    actor.screen(QStringLiteral("main"));
}

} // namespace benthor::tour
