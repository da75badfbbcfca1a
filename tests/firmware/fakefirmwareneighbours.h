#pragma once

#include "firmware/screens/firmwareneighbours.h"

#include <QStringList>

namespace benthor::tests {

/// Keeps what the firmware screen asked for. A rehearsal gets the port that the test names.
class FakeFirmwareNeighbours : public firmware::FirmwareNeighbours {
public:
    void leaveToMain() override { asked << QStringLiteral("main"); }
    void showRunningPrograms() override { asked << QStringLiteral("programs"); }
    QString lastImage() override { return last; }
    void setLastImage(const QString& path) override { last = path; }
    bool blinkVisible() override { return blink; }
    void showBlink() override { blink = true; }
    void hideBlink() override { blink = false; }
    void unloadBlink() override { blink = false; }
    int startRehearsal(bool kd, int baud, QString& error) override {
        asked << QStringLiteral("rehearsal %1 %2")
                     .arg(kd ? QStringLiteral("kd") : QStringLiteral("rb"))
                     .arg(baud);
        error = rehearsalError;
        return rehearsalPort;
    }
    void rehearsalReports(const QByteArray& checkvalue) override { reports = checkvalue; }
    void stopRehearsal() override { asked << QStringLiteral("stop rehearsal"); }

    QStringList asked;
    QString last, rehearsalError;
    QByteArray reports;
    int rehearsalPort = 40;
    bool blink = false;
};

} // namespace benthor::tests
