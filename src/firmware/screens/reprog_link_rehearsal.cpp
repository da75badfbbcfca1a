// A rehearsal: the whole session against a simulated device. The real port is closed for as long as it lasts,
// so nothing can reach a device by mistake.

#include "firmware/screens/reprog_link.h"
#include "firmware/screens/reprog_link_host.h"
#include "firmware/session.h"
#include "platform/screen/dialogs.h"

#include <QAction>
#include <QFileInfo>

namespace benthor::firmware {

void ReProg_Link::mnuRehearse_click() {
    perform([this] {
        if (state_.rehearsal) {
            endRehearsal();
        } else {
            startRehearsal();
        }
    });
}

void ReProg_Link::startRehearsal() {
    constexpr int kSlow = 9600;
    constexpr int kFast = 38400;
    QString error;
    host_->MSComm1().setPortOpen(false);
    const bool kd = QFileInfo(state_.Text5).fileName().contains(QLatin1String("kd"), Qt::CaseInsensitive);
    const int port = neighbours_.startRehearsal(kd, state_.baud9600 ? kSlow : kFast, error);
    realPort_ = state_.Text6;
    if (port == 0) {
        platform::dialogs().message(this, QStringLiteral("The rehearsal can't begin: ") + error);
        endRehearsal();
        return;
    }
    beginrun(state_, *host_, QString::number(port), true);
}

void ReProg_Link::endRehearsal() {
    host_->MSComm1().setPortOpen(false);
    neighbours_.stopRehearsal();
    beginrun(state_, *host_, realPort_, false);
}

} // namespace benthor::firmware
