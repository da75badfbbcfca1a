#pragma once

#include "link/directory.h"
#include "link/download.h"
#include "tests/link/fakehost.h"
#include "tests/support/testfolder.h"

#include <QtTest>

namespace benthor::tests {

inline const QString kFailed = QStringLiteral("Error downloading.. Click Refresh and try again!");

/// A directory of some dives on an open line that leads nowhere.
struct DownloadStage {
    explicit DownloadStage(int dives = 3) {
        host.line.open = true;
        link::resetgridheader(link);
        for (int dive = 1; dive <= dives; ++dive) {
            link.Mgrid.rows.emplace_back().cells[0] = QStringLiteral("Dive%1").arg(dive);
        }
    }
    link::RowMark& mark(int row) { return link.Mgrid.rows[static_cast<std::size_t>(row)].mark; }
    void select(std::initializer_list<int> rows) {
        for (const int row : rows) {
            mark(row) = link::RowMark::Selected;
        }
    }
    void receive(const QByteArray& bytes) { link.rxbuf.append(bytes); }
    void tick() { link::Timer3_tick(link, host); }
    QStringList waiting() const {
        return platform::ProgramFolder::current().listFiles(QStringLiteral("new"), QStringLiteral("*"));
    }

    TestFolder folder;
    link::LinkState link;
    FakeHost host;
};

} // namespace benthor::tests
