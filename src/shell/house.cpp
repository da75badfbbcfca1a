#include "shell/house.h"

#include "platform/screen/sessionend.h"
#include "shell/house_rooms.h"

#include <QApplication>

namespace benthor::shell {

House::House(link::LinkLines lines)
    : rooms_(std::make_unique<Rooms>(*this, std::move(lines))) {
    if (rooms_->lock.held()) {
        rooms_->opening.listen();
    }
}

House::~House() {
    rooms_->end.comesNear();
    rooms_.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

House::Opened House::open(const QString& path) {
    using How = platform::CallAnswer::How;
    platform::CallAnswer answer;
    if (!rooms_->lock.held()) {
        answer = rooms_->opening.handOver(path);
        if (rooms_->lock.held()) {
            rooms_->opening.listen();
        }
    }
    if (answer.how == How::Taken) {
        return {Opened::How::There, answer.words};
    }
    if (rooms_->lock.held()) {
        rooms_->opening.open(path);
        return {};
    }
    const QString notOpened = QStringLiteral("The file %1 was not opened. ").arg(path);
    if (answer.how == How::Refused) {
        return {Opened::How::Nowhere, notOpened + answer.words};
    }
    const bool command = rooms_->lock.holder() == "benthorctl";
    return {Opened::How::Nowhere,
            notOpened +
                (answer.how == How::Silent
                     ? QStringLiteral("Benthor is open on this program folder, but does not answer just now.")
                 : command ? QStringLiteral("The command benthorctl works on this program folder just now. "
                                            "Open the file when it is through.")
                           : QStringLiteral("Benthor is open on this program folder, for another user or on "
                                            "another machine."))};
}

void House::start() {
    rooms_->frmSplash.showInFront();
    rooms_->prepareStart();
}

void House::follow(const platform::SessionEnd& session) {
    connect(&session, &platform::SessionEnd::saveWanted, this, &House::keepSession);
    connect(&session, &platform::SessionEnd::ending, this, &House::endSession);
    connect(qApp, &QCoreApplication::aboutToQuit, this, &House::endSession);
}

void House::keepSession() {
    rooms_->end.keepAll();
}

void House::endSession() {
    rooms_->end.endAll();
    // At once: a box that is up ends with its loop, before the window that it hangs on is gone.
    QCoreApplication::exit(0);
}

} // namespace benthor::shell
