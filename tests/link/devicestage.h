#pragma once

#include "link/console.h"
#include "link/directory.h"
#include "link/download.h"
#include "link/supervision.h"
#include "platform/serial/serialport.h"
#include "session/process.h"
#include "simulator/demodives.h"
#include "simulator/kdport.h"
#include "tests/link/fakehost.h"
#include "tests/support/pseudoterminal.h"
#include "tests/support/testfolder.h"

#include <QtTest>

namespace benthor::tests {

inline constexpr int kPort = 3;

/// Real lines in the place of the fake ones.
class SerialHost : public FakeHost {
public:
    platform::SerialPort& MSComm1() override { return working; }
    platform::SerialPort& MSComm2(int index) override { return search.at(static_cast<std::size_t>(index)); }

    bool repaint() override {
        closed = closed || (repaintsLeft > 0 && --repaintsLeft == 0);
        return FakeHost::repaint();
    }

    platform::SerialPort working;
    std::array<platform::SerialPort, 32> search;
    int repaintsLeft = 0; ///< the screen is closed in the last of them; 0: never
};

/// The link's logic with a device at its port.
struct DeviceStage {
    explicit DeviceStage(simulator::Kd kd = simulator::Kd(simulator::deviceDives()),
                         int speed = simulator::KdPort::unpaced)
        : device(folder.root(), kPort, std::move(kd), speed) {
        process().database.open(folder.path("rb.mdb"));
        QObject::connect(&host.working, &platform::SerialPort::received,
                         [this] { link::MSComm1_received(link, host); });
        link::resetgridheader(link);
        link.console.Text16[1] = QStringLiteral("10"); // the interval is known
    }
    ~DeviceStage() { process().database.close(); }

    /// Opens the port and takes the directory.
    void connect() {
        device.start();
        link::setcomnum(link, host, QString::number(kPort));
        QVERIFY(host.working.PortOpen());
        link::cmdstore_click(link, host);
        QTRY_VERIFY(tickUntil([this] { return link.Mgrid.rowCount() > 1; }));
        link.Timer2 = false;
    }
    /// One tick of each timer that is enabled; for QTRY.
    bool tickUntil(const std::function<bool()>& done) {
        if (link.Timer2) {
            link::Timer2_tick(link, host);
        }
        if (link.Timer3) {
            link::Timer3_tick(link, host);
        }
        return done();
    }
    void select(std::initializer_list<std::size_t> rows) {
        for (const std::size_t row : rows) {
            link.Mgrid.rows.at(row).mark = link::RowMark::Selected;
        }
    }
    /// The whole run, up to its last message.
    void download(std::initializer_list<std::size_t> rows) {
        select(rows);
        link::cmddownload_click(link, host);
        QTRY_VERIFY_WITH_TIMEOUT(tickUntil([this] { return !link.Timer3; }), 20000);
    }
    QByteArray stored(int dive) const {
        return folder.get(QStringLiteral("new/MyLatestDives%1.txt").arg(dive));
    }
    void fault(const simulator::Faults& faults) {
        device.with([&faults](simulator::Kd& kd) { kd.faults = faults; });
    }

    TestFolder folder;
    simulator::KdPort device;
    link::LinkState link;
    SerialHost host;
};

/// A dive of the device, from 1.
inline QByteArray dive(std::size_t number) {
    static const std::vector<QByteArray> dives = simulator::deviceDives();
    return dives.at(number - 1);
}

} // namespace benthor::tests
