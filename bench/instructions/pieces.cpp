// Pieces of work of a fixed size, one a process, for callgrind to count their instructions: `benthor-pieces
// NAME` does one, without a name all names are listed. Only what stands inside counted() counts.

#include "bench/store/storebench.h"

#include "divefiles/importer.h"
#include "divefiles/validators.h"
#include "exports/logbookjson.h"
#include "exports/samplescsv.h"
#include "exports/uddf.h"
#include "exports/wholedive.h"
#include "exports/zxulogbook.h"
#include "logbook/screens/rbmain.h"
#include "platform/chart/chart.h"
#include "platform/grid/flexgrid.h"
#include "platform/programfolder.h"
#include "platform/screen/ticktimer.h"
#include "profile/decoder.h"
#include "session/process.h"
#include "tests/profile/divetext.h"
#include "tests/viewer/divescreen.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QBuffer>
#include <QCheckBox>
#include <QSettings>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <valgrind/callgrind.h>

namespace {

using namespace benthor;

void counted(const std::function<void()>& work) {
    CALLGRIND_START_INSTRUMENTATION;
    work();
    CALLGRIND_STOP_INSTRUMENTATION;
}

void require(bool holds, const char* what) {
    if (!holds) {
        std::fprintf(stderr, "%s\n", what);
        std::exit(1);
    }
}

/// Every letter, now and then an alarm and a mark.
QByteArray longDive(int samples) {
    QByteArrayList lines;
    for (int sample = 0; sample < samples; ++sample) {
        const auto n = [sample](int base, int spread) {
            return QByteArray::number(base + sample * 37 % spread);
        };
        lines += "1," + n(0, 400) + "," + QByteArray::number(sample / 9000) + "," + n(70, 71) + ",M" +
                 (sample % 70 == 0 ? "1" : "0") + ",T" + n(8, 14) + ",A" + n(500, 90) + ",B" + n(600, 9) +
                 ",C" + n(480, 9) + ",D" + n(140, 40) + ",E" + n(120, 60) + ",F" + n(118, 15) + ",G" +
                 n(116, 15) + ",H" + n(119, 15) + ",I130,J" + n(0, 12) +
                 ",S10,T11,U12,V13,W14,X15,Y16,Z17,x1,y2,z40" + (sample % 50 == 0 ? ",LOW" : "");
    }
    return profile::wholeDive(lines);
}

void decodes() {
    constexpr int kSamples = 5000;
    const QByteArray text = longDive(kSamples);
    counted([&] {
        const profile::DiveProfile profile = profile::decodeProfile(text, false);
        require(profile.lastsample >= kSamples, "not all samples were decoded");
    });
}

/// A store with dives of a usual size.
class Logbook {
public:
    explicit Logbook(int dives) {
        {
            bench::BareStore store(folder_.path("rb.mdb"));
            store.run("PRAGMA synchronous = OFF");
            bench::BareDiveWriter writer(store);
            for (int i = 1; i <= dives; ++i) {
                writer.write(i);
            }
        }
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder_.root());
        platform::ProgramFolder::setCurrent(platform::ProgramFolder(folder_.root()));
        process().database.open(folder_.path("rb.mdb"));
        process().depthunit = QStringLiteral("metre");
    }
    ~Logbook() { process().database.close(); }
    Logbook(const Logbook&) = delete;
    Logbook& operator=(const Logbook&) = delete;

    const bench::BenchFolder& folder() const { return folder_; }

private:
    bench::BenchFolder folder_;
};

/// A dive as the exports take it.
exports::WholeDive wholeDive() {
    constexpr int kSamples = 2000;
    exports::WholeDive dive;
    dive.figures.id = QStringLiteral("D0000001");
    dive.figures.interval = 10;
    dive.figures.start = QDateTime({2008, 7, 15}, {8, 55, 17});
    dive.figures.end = dive.figures.start.addSecs(10 * kSamples);
    dive.file = longDive(kSamples);
    dive.profile = profile::decodeProfile(*dive.file, false);
    return dive;
}

template <typename Work> void exported(const Work& work) {
    const exports::WholeDive dive = wholeDive();
    qsizetype bytes = 0;
    counted([&] { bytes = work(dive); });
    require(bytes > 10000, "too little was written");
}

void csv() {
    exported([](const exports::WholeDive& dive) {
        return exports::SamplesCsv::prepare(dive, exports::SampleIds::First).size();
    });
}

void zxu() {
    exported([](const exports::WholeDive& dive) { return exports::ZxuLogbook::prepare(dive).text.size(); });
}

void uddf() {
    exported([](const exports::WholeDive& dive) {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        exports::UddfWriter writer(buffer, QStringLiteral("1"), QDateTime({2026, 1, 1}, {0, 0}));
        writer.begin();
        writer.add(dive);
        writer.end();
        return buffer.size();
    });
}

void json() {
    exported([](const exports::WholeDive& dive) { return exports::LogbookJson::prepare(dive).size(); });
}

void validates() {
    constexpr int kDives = 100;
    const Logbook logbook(kDives);
    counted([] {
        for (int i = 1; i <= kDives; ++i) {
            process().currentdiveid = QString::fromStdString(bench::diveId(i));
            divefiles::checkdive(process().database);
            require(process().problemtext.isEmpty(), "the dives are not good");
        }
    });
}

void imports() {
    constexpr int kFiles = 20;
    const Logbook logbook(0);
    logbook.folder().layFiles(kFiles);
    divefiles::ImportState run;
    divefiles::ImportScreen screen;
    counted([&] {
        require(divefiles::importdives(platform::ProgramFolder::current(), run, screen) ==
                    divefiles::ImportEnd::Done,
                "the import failed");
    });
}

void fillsList() {
    constexpr int kDives = 500;
    const Logbook logbook(kDives);
    {
        logbook::rbmain before; // the order that it leaves is that of the next one
        before.load();
        before.findChild<QAction*>(QStringLiteral("mnusdate"))->trigger();
        before.unload();
    }
    logbook::rbmain list;
    counted([&list] { list.load(); });
    require(list.findChild<platform::FlexGrid*>(QStringLiteral("MSFlexGrid1"))->rows() == kDives + 1,
            "the list is not full");
    list.unload();
}

/// A dive of 25,000 samples with every series, on its screen.
struct OpenDive {
    OpenDive() {
        stage.put(longDive(profile::kMostSamples - profile::kFirstSample - 2));
        screen = &stage.show();
        for (int box = 1; box <= 14; ++box) {
            viewer::control<QCheckBox>(*screen, QByteArray("Check" + QByteArray::number(box)).constData())
                .setChecked(true);
        }
        QCoreApplication::processEvents();
    }
    /// Until the chart is at rest and nothing more has come for so many turns, however slow the machine is
    /// just now.
    void rest() const {
        constexpr int kQuiet = 50;
        const auto* const chart = screen->findChild<platform::Chart*>();
        require(chart != nullptr, "there is no chart");
        for (int quiet = 0; quiet < kQuiet; ++quiet) {
            QCoreApplication::sendPostedEvents();
            QCoreApplication::processEvents();
            quiet = chart->isMoving() ? 0 : quiet;
        }
    }
    viewer::DiveScreen stage;
    viewer::rbinterface* screen = nullptr;
};

void opensDive() {
    viewer::DiveScreen stage;
    stage.put(longDive(5000));
    counted([&stage] { stage.show(); });
}

void selects() {
    OpenDive dive;
    auto& grid = viewer::control<platform::FlexGrid>(*dive.screen, "MSFlexGrid1");
    // The instruments take the room of the longest time once.
    grid.setRow(grid.rows() - 1);
    dive.rest();
    counted([&grid] {
        for (int i = 1; i <= 10; ++i) {
            grid.setRow(i * 1999 % grid.rows());
            QCoreApplication::processEvents();
        }
    });
}

void plays() {
    OpenDive dive;
    dive.rest();
    viewer::control<QAbstractButton>(*dive.screen, "PlayDive").click();
    auto& timer = viewer::control<platform::TickTimer>(*dive.screen, "Timer3");
    // Ten ticks are counted, and none of the clock's own, however slow the machine is.
    timer.setInterval(3'600'000);
    counted([&timer] {
        for (int i = 0; i < 10; ++i) {
            timer.expire();
            QCoreApplication::processEvents();
        }
    });
}

struct Piece {
    const char* name;
    void (*work)();
};
constexpr Piece kPieces[] = {
    {"decode 5,000 samples", decodes},
    {"csv of 2,000 samples", csv},
    {"json of 2,000 samples", json},
    {"zxu of 2,000 samples", zxu},
    {"uddf of 2,000 samples", uddf},
    {"check 100 dives", validates},
    {"import 20 files", imports},
    {"fill the list of 500 dives", fillsList},
    {"open a dive of 5,000 samples", opensDive},
    {"select 10 of 25,000 samples", selects},
    {"play 10 of 25,000 samples", plays},
};

} // namespace

int main(int count, char** arguments) {
    QApplication application(count, arguments);
    for (const Piece& piece : kPieces) {
        if (count == 1) {
            std::puts(piece.name);
        } else if (qstrcmp(piece.name, arguments[1]) == 0) {
            piece.work();
            return 0;
        }
    }
    return count == 1 ? 0 : 2;
}
