#pragma once

#include <QObject>

namespace benthor::platform {

/// Hears that the session ends: the system asks the process to (SIGTERM, SIGHUP, SIGINT), or the desktop asks
/// it to save before a log-out. A second signal ends the process at once.
class SessionEnd : public QObject {
    Q_OBJECT

public:
    SessionEnd();
    ~SessionEnd() override;

signals:
    void saveWanted(); ///< the user may still stay: what is open stays open
    void ending();     ///< the process is to go

private:
    void heard();
    void tellBehindWaits(void (SessionEnd::*what)());
};

} // namespace benthor::platform
