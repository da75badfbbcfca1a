#include "link/screens/pc_link_1_host.h"

#include "link/supervision.h"
#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"

#include <QDir>
#include <QGuiApplication>
#include <QProcess>

namespace benthor::link {

namespace {

/// The name as told, in the program folder unless it says where.
QString startingPlace(const QString& name) {
    return QDir(platform::ProgramFolder::current().root()).filePath(QString(name).replace(u'\\', u'/'));
}

} // namespace

PC_Link_1::Host::Host(PC_Link_1& screen, LinkLines lines)
    : screen_(screen)
    , portHint_(std::move(lines.portHint)) {
    const auto make = [&](std::function<void()> received) -> std::unique_ptr<platform::SerialLine> {
        return lines.line(&screen, std::move(received));
    };
    working_ = make([this] { screen_.perform([this] { MSComm1_received(screen_.link_, *this); }); });
    for (size_t i = 0; i < search_.size(); ++i) {
        search_.at(i) = make([this, i] { MSComm2_received(screen_.link_, *this, static_cast<int>(i)); });
    }
}

PC_Link_1::Host::~Host() {
    setHourglass(false);
}

void PC_Link_1::Host::message(const QString& text, const QString& below) {
    if (screen_.isUnloaded()) {
        return;
    }
    screen_.sync();
    platform::dialogs().message(&screen_, text, platform::BoxKind::Plain, {}, below);
}

bool PC_Link_1::Host::confirm(const QString& text, const QString& title) {
    if (screen_.isUnloaded()) {
        return false;
    }
    screen_.sync();
    return platform::dialogs().confirm(&screen_, text, title);
}

QString PC_Link_1::Host::openFile(const QString& filter, const QString& name) {
    if (screen_.isUnloaded()) {
        return {};
    }
    return platform::dialogs().openFile(&screen_, QStringLiteral("Open"), startingPlace(name), filter);
}

QString PC_Link_1::Host::saveFile(const QString& filter, const QString& name) {
    if (screen_.isUnloaded()) {
        return {};
    }
    return platform::dialogs().saveFile(&screen_, QStringLiteral("Save As"), startingPlace(name), filter);
}

bool PC_Link_1::Host::startProgram(const QString& program, const QStringList& arguments,
                                   const QString& folder) {
    return QProcess::startDetached(program, arguments, folder);
}

bool PC_Link_1::Host::repaint() {
    return screen_.syncPainting();
}

void PC_Link_1::Host::setHourglass(bool on) {
    if (on == hourglass_) {
        return;
    }
    hourglass_ = on;
    if (on) {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QGuiApplication::restoreOverrideCursor();
    }
}

void PC_Link_1::Host::hintOnMain(const QString& text) {
    emit screen_.hintForMain(text);
}

bool PC_Link_1::Host::tipsShowing() {
    return screen_.tipsShowing_ && screen_.tipsShowing_();
}

void PC_Link_1::Host::showTips() {
    emit screen_.tipsWanted();
}

void PC_Link_1::Host::openFirmware() {
    emit screen_.firmwareWanted();
}

void PC_Link_1::Host::setupReceived(const QByteArray& text) {
    emit screen_.setupArrived(text);
}

bool PC_Link_1::Host::setupMayGo(const SetupBody& body) {
    return !screen_.setupLook_ || screen_.setupLook_(body);
}

void PC_Link_1::Host::updateSetup() {
    emit screen_.setupUpdateWanted();
}

void PC_Link_1::Host::runImport() {
    emit screen_.importWanted();
}

void PC_Link_1::Host::leaveAndImport() {
    emit screen_.importAfterLeaving();
}

} // namespace benthor::link
