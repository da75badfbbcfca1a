#pragma once

#include "link/directory.h"
#include "link/supervision.h"
#include "tests/link/fakehost.h"
#include "tests/support/testfolder.h"

#include <QtTest>

namespace benthor::tests {

/// The port is open and nothing has arrived.
struct SupervisionStage {
    explicit SupervisionStage(int gridRows = 4, const QString& interval = QStringLiteral("10")) {
        host.line.open = true;
        link.ComNum = QStringLiteral("1");
        link::resetgridheader(link);
        link.Mgrid.rows.resize(static_cast<std::size_t>(gridRows));
        link.console.Text16[1] = interval;
        link.silentticks = 100;
        link.linkwatch = true;
    }
    void receive(const QByteArray& bytes) {
        host.line.waiting += bytes;
        link::MSComm1_received(link, host);
    }
    void tick(int count = 1) {
        for (int i = 0; i < count; ++i) {
            link::Timer1_tick(link, host);
        }
    }
    QString caption() const { return link.AFLabel3.text; }
    /// The adapter goes, and comes back.
    void pull() {
        host.line.open = false;
        host.line.portExists = [](int) { return false; };
    }
    void plugIn() { host.line.portExists = nullptr; }

    TestFolder folder;
    link::LinkState link;
    FakeHost host;
};

} // namespace benthor::tests
