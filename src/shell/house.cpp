#include "shell/house.h"

#include "platform/screen/sessionend.h"
#include "shell/house_rooms.h"

#include <QApplication>

namespace benthor::shell {

House::House(link::LinkLines lines)
    : rooms_(std::make_unique<Rooms>(*this, std::move(lines))) {}

House::~House() {
    rooms_->end.comesNear();
    rooms_.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void House::start() {
    rooms_->frmSplash.showInFront();
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
