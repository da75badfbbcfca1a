#include "firmware/screens/reprog_link_host.h"

#include "link/supervision.h"
#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"

#include <QElapsedTimer>
#include <QThread>
#include <algorithm>

namespace benthor::firmware {

using namespace std::chrono_literals;

namespace {

constexpr int kPaintPause = 15; // milliseconds

} // namespace

ReProg_Link::Host::Host(ReProg_Link& screen, const link::LinkLines& lines)
    : screen_(screen)
    , line_(lines.line(&screen))
    , portHint_(lines.portHint) {}

QString ReProg_Link::Host::rememberedPort() {
    return link::readcomport().trimmed();
}

void ReProg_Link::Host::rememberPort(const QString& number) {
    if (rememberedPort() != number) {
        link::writecomport(number);
    }
}

void ReProg_Link::Host::message(const QString& text, const QString& title) {
    if (screen_.isUnloaded()) {
        return;
    }
    screen_.sync();
    platform::dialogs().message(&screen_, text, platform::BoxKind::Plain, title);
}

bool ReProg_Link::Host::confirm(const QString& text, const QString& title) {
    if (screen_.isUnloaded()) {
        return false;
    }
    screen_.sync();
    return platform::dialogs().confirm(&screen_, text, title);
}

QString ReProg_Link::Host::openFile(const QString& filter, const QString& place) {
    return platform::dialogs().openFile(&screen_, QStringLiteral("Open"), place, filter);
}

QString ReProg_Link::Host::saveFile(const QString& filter, const QString& name) {
    return platform::dialogs().saveFile(&screen_, QStringLiteral("Save As"),
                                        platform::ProgramFolder::current().path(name), filter);
}

bool ReProg_Link::Host::repaint() {
    return screen_.syncPainting();
}

bool ReProg_Link::Host::pause(std::chrono::milliseconds time) {
    QElapsedTimer passed;
    passed.start();
    while (passed.elapsed() < time.count()) {
        screen_.sync();
        if (!screen_.yieldPainting()) {
            return false;
        }
        // Whatever waits on the line stays there: this is a rest with a clock, and painting every so often.
        QThread::msleep(
            static_cast<unsigned long>(std::clamp<qint64>(time.count() - passed.elapsed(), 0, kPaintPause)));
    }
    return !screen_.isUnloaded();
}

} // namespace benthor::firmware
