// What a diver waits for when dives are deleted, when that is taken back, and when details are saved: through
// the screens, with the list that is shown afresh behind it, and beside each the same rows of store and trash
// by the bare engine, as durable. Then a message with a dive's file in it, a thousand times, and the list as
// a spreadsheet, each beside writing the same bytes.

#include "bench/store/storebench.h"

#include "logbook/acts.h"
#include "logbook/details.h"
#include "logbook/divelist.h"
#include "logbook/diverows.h"
#include "platform/grid/flexgrid.h"
#include "platform/look/look.h"
#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"
#include "session/process.h"
#include "shell/house_dives.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QSettings>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace {

using namespace benthor;

constexpr int kManyDives = 1000;

[[noreturn]] void fail(const char* what) {
    std::fprintf(stderr, "%s failed\n", what);
    std::abort();
}

/// Yes to every question, and one path for every file.
class Answers : public platform::Dialogs {
public:
    void message(QWidget*, const QString& text, platform::BoxKind, const QString&, const QString&) override {
        told = text;
    }
    bool confirm(QWidget*, const QString&, const QString&, platform::BoxKind, bool, const QString&) override {
        return true;
    }
    QString openFile(QWidget*, const QString&, const QString&, const QString&) override { return {}; }
    QString openFolder(QWidget*, const QString&, const QString&) override { return {}; }
    QString saveFile(QWidget*, const QString&, const QString&, const QString&) override { return path; }
    std::shared_ptr<QPrinter> printer(QWidget*, QPageLayout::Orientation) override { return {}; }

    QString told;
    QString path;
};

std::shared_ptr<Answers> answers() {
    static const auto some = std::make_shared<Answers>();
    return some;
}

/// The screens of the logbook need nothing of a house here.
class NoHouse : public shell::DiveHost {
public:
    void watchEnd(platform::Screen&) override {}
    void handoverBegins() override {}
    void handoverEnds() override {}
    void showDownload() override {}
    void showMain() override {}
    void showGas() override {}
    void divesCame() override {}
};

/// A store with a code and a file name for each dive, as devices give them.
const bench::BenchFolder& masterOf(int dives) {
    const bench::BenchFolder& folder = bench::folderOf(dives);
    static std::map<int, bool> told;
    if (!std::exchange(told[dives], true)) {
        bench::BareStore(folder.path("rb.mdb"))
            .run("UPDATE main SET Startcode = 400000000 + rowid * 10007, dbtxtname = "
                 "printf('%07X', rowid) || Location");
    }
    return folder;
}

/// A copy of such a store in a folder of its own, where it may be changed.
class Work {
public:
    explicit Work(int dives) {
        const QString store = folder_.path("rb.mdb");
        QFile::remove(store);
        QFile key(folder_.path("dsort.txt"));
        if (!QFile::copy(masterOf(dives).path("rb.mdb"), store) || !key.open(QIODevice::WriteOnly) ||
            key.write("d\r\n") != 3) {
            fail("copy");
        }
        ::sync(); // what the copy owes the disk is not what is measured
    }
    QString path(const char* name) const { return folder_.path(name); }
    QString root() const { return folder_.root(); }

private:
    bench::BenchFolder folder_;
};

/// The dive list on a store of so many dives, as the program shows it.
class Program {
public:
    explicit Program(int dives)
        : work_(dives) {
        process() = {};
        platform::ProgramFolder::setCurrent(platform::ProgramFolder(work_.root()));
        process().database.open(work_.path("rb.mdb"));
        process().depthunit = QStringLiteral("metre");
        screens_ = std::make_unique<shell::DiveScreens>(house_);
    }
    ~Program() {
        screens_.reset();
        rest();
        process() = {};
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    void showList() {
        screens_->rbmain.showInFront();
        rest();
    }
    logbook::rbmain& list() { return screens_->rbmain.get(); }
    platform::FlexGrid* grid() {
        return list().findChild<platform::FlexGrid*>(QStringLiteral("MSFlexGrid1"));
    }
    int shownDives() { return grid()->rows() - 1; }
    shell::DiveScreens& screens() { return *screens_; }
    const Work& work() const { return work_; }

    template <class T> static void trigger(T& screen, const char* name) {
        screen.template findChild<QAction*>(QString::fromLatin1(name))->trigger();
    }
    /// Until all is painted that the act has left to paint.
    static void rest() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

private:
    Work work_;
    NoHouse house_;
    std::unique_ptr<shell::DiveScreens> screens_;
};

std::string diveOf(int number) {
    return bench::diveId(number);
}

QString idOf(int number) {
    return QString::fromStdString(bench::diveId(number));
}

/// Store and file of the acts by the bare engine, held as the program holds them.
class BareActs {
public:
    explicit BareActs(const Work& work)
        : store_(work.path("rb.mdb")) {
        store_.run("PRAGMA secure_delete = ON");
        store_.run(("ATTACH '" + work.path("rb-acts.db").toStdString() + "' AS a").c_str());
        store_.run("PRAGMA a.synchronous = EXTRA");
        store_.run("PRAGMA a.secure_delete = ON");
        store_.run("CREATE TABLE a.act (id INTEGER PRIMARY KEY, kind INTEGER, done INTEGER, label TEXT)");
        store_.run("CREATE TABLE a.item (id INTEGER PRIMARY KEY, act INTEGER, kind INTEGER, here INTEGER, "
                   "diveid TEXT, startcode, dbtxtname, digest BLOB, twins INTEGER, name TEXT, started TEXT, "
                   "gone TEXT, filename TEXT, owed INTEGER, rows BLOB, file BLOB)");
        store_.run("CREATE INDEX a.item_act ON item (act)");
        act_ = store_.prepare("INSERT INTO a.act SELECT ifnull(max(id), 0) + 1, 0, 1, '' FROM a.act");
        item_ = store_.prepare(
            "INSERT INTO a.item (act, kind, here, diveid, startcode, dbtxtname, digest, twins, name, "
            "started, gone, filename, owed, rows, file) VALUES ((SELECT max(id) FROM a.act), 0, 0, ?1, "
            "'812345678', '11A2B3CDive000000.txt', zeroblob(20), 0, 'Dive000000.txt', '2004-09-03 "
            "10:00:00', '2024-09-03 10:00:00', '', 0, CAST(?2 AS BLOB), x'')");
        for (const char* const table : {"gas", "tissue", "main"}) {
            deletes_.push_back(
                store_.prepare(("DELETE FROM " + std::string(table) + " WHERE diveid = ?1").c_str()));
        }
        counter_ = store_.prepare("UPDATE serialno SET serial_no = ?1");
    }

    void beginAct() { store_.run(act_, {}); }
    void goes(const std::string& dive, const std::string& record) {
        store_.run(item_, {dive, record});
        for (sqlite3_stmt* const one : deletes_) {
            store_.run(one, {dive});
        }
        store_.run(counter_, {dive});
    }
    bench::BareStore& store() { return store_; }

private:
    bench::BareStore store_;
    sqlite3_stmt* act_ = nullptr;
    sqlite3_stmt* item_ = nullptr;
    std::vector<sqlite3_stmt*> deletes_;
    sqlite3_stmt* counter_ = nullptr;
};

/// As many bytes as the program keeps of such a dive.
std::string recordOf(const Work& work, logbook::RowsOf which) {
    platform::Database database;
    database.open(work.path("rb.mdb"), platform::StoreAccess::Look);
    platform::StoredRows rows(database);
    return logbook::encoderows(logbook::readdiverows(rows, idOf(1), which)).toStdString();
}

/// Dives from all over the store, each once.
class Dives {
public:
    explicit Dives(int dives)
        : dives_(dives) {}
    int next() { return 1 + static_cast<int>(at_++ * 7919LL % dives_); }

private:
    int dives_;
    qint64 at_ = 0;
};

// --- delete

void deleteOne(benchmark::State& state) {
    const int dives = static_cast<int>(state.range(0));
    Program program(dives);
    program.showList();
    Dives some(dives);
    int there = dives;
    for ([[maybe_unused]] auto step : state) {
        state.PauseTiming();
        program.list().chooseDive(idOf(some.next()));
        state.ResumeTiming();
        Program::trigger(program.list(), "mnuDeleteDive");
        Program::rest();
        if (program.shownDives() != --there || !program.grid()->property("filled").toBool()) {
            fail("delete");
        }
    }
}

void deleteRows(benchmark::State& state) {
    const int dives = static_cast<int>(state.range(0));
    const int count = static_cast<int>(state.range(1));
    Program program(dives);
    Dives some(dives);
    for ([[maybe_unused]] auto step : state) {
        QStringList chosen;
        for (int i = 0; i < count; ++i) {
            chosen += idOf(some.next());
        }
        if (!logbook::deletedives(process().database, platform::ProgramFolder::current(), chosen).kept) {
            fail("delete");
        }
    }
}

void bareDelete(benchmark::State& state) {
    const int dives = static_cast<int>(state.range(0));
    const int count = static_cast<int>(state.range(1));
    const Work work(dives);
    const std::string record = recordOf(work, logbook::RowsOf::WholeDive);
    BareActs bare(work);
    Dives some(dives);
    for ([[maybe_unused]] auto step : state) {
        for (int i = 0; i < count; ++i) {
            bare.store().run("BEGIN IMMEDIATE");
            if (i == 0) {
                bare.beginAct();
            }
            bare.goes(diveOf(some.next()), record);
            bare.store().run("COMMIT");
        }
    }
}

/// A thousand of the dives that are shown.
void deleteMany(benchmark::State& state) {
    const int dives = static_cast<int>(state.range(0));
    for ([[maybe_unused]] auto step : state) {
        state.PauseTiming();
        {
            Program program(dives);
            program.showList();
            auto* const grid = program.grid();
            for (int row = 1; row <= kManyDives; ++row) { // as Shift and the keys mark them
                grid->setRowColours(row, QColor(0, 0, 255), Qt::white);
            }
            state.ResumeTiming();
            Program::trigger(program.list(), "mnuDeleteDive");
            Program::rest();
            state.PauseTiming();
            if (process().database.openRecordset("SELECT COUNT(*) FROM main").value(0).text().toInt() !=
                dives - kManyDives) {
                fail("delete");
            }
        }
        state.ResumeTiming();
    }
}

// --- taking back

void undoOne(benchmark::State& state) {
    const int dives = static_cast<int>(state.range(0));
    Program program(dives);
    program.showList();
    Dives some(dives);
    for ([[maybe_unused]] auto step : state) {
        state.PauseTiming();
        program.list().chooseDive(idOf(some.next()));
        Program::trigger(program.list(), "mnuDeleteDive");
        Program::rest();
        state.ResumeTiming();
        Program::trigger(program.list(), "mnuundo");
        Program::rest();
        if (program.shownDives() != dives || !program.grid()->property("filled").toBool()) {
            fail("undo");
        }
    }
}

void undoRows(benchmark::State& state) {
    const int dives = static_cast<int>(state.range(0));
    Program program(dives);
    Dives some(dives);
    auto& database = process().database;
    const auto& folder = platform::ProgramFolder::current();
    for ([[maybe_unused]] auto step : state) {
        state.PauseTiming();
        logbook::deletedives(database, folder, {idOf(some.next())});
        state.ResumeTiming();
        const auto act = logbook::actsinhand(database).undo.id;
        if (logbook::undoact(database, folder, act).state != logbook::TurnedAct::State::Done) {
            fail("undo");
        }
    }
}

void bareUndo(benchmark::State& state) {
    const int dives = static_cast<int>(state.range(0));
    const Work work(dives);
    const std::string record = recordOf(work, logbook::RowsOf::WholeDive);
    BareActs bare(work);
    bench::BareStore& store = bare.store();
    bench::BareDiveWriter writer(store);
    sqlite3_stmt* const item = store.prepare(
        "UPDATE a.item SET here = 1, gone = '', rows = x'' WHERE id = (SELECT max(id) FROM a.item)");
    sqlite3_stmt* const act =
        store.prepare("UPDATE a.act SET done = 0 WHERE id = (SELECT max(id) FROM a.act)");
    Dives some(dives);
    for ([[maybe_unused]] auto step : state) {
        state.PauseTiming();
        const int dive = some.next();
        store.run("BEGIN IMMEDIATE");
        bare.beginAct();
        bare.goes(diveOf(dive), record);
        store.run("COMMIT");
        state.ResumeTiming();
        store.run("BEGIN IMMEDIATE");
        writer.writeRows(dive);
        store.run(item, {});
        store.run(act, {});
        store.run("COMMIT");
    }
}

// --- details

void saveDetails(benchmark::State& state) {
    const int dives = static_cast<int>(state.range(0));
    const bool besideList = state.range(1) != 0;
    Program program(dives);
    if (besideList) {
        program.showList();
    }
    process().currentdiveid = idOf(dives / 2);
    program.screens().rbdetails.showInFront();
    Program::rest();
    auto& details = program.screens().rbdetails.get();
    int number = 0;
    for ([[maybe_unused]] auto step : state) {
        state.PauseTiming();
        details.findChild<QLineEdit*>(QStringLiteral("Txtdiver"))
            ->setText(QStringLiteral("Anna %1").arg(++number));
        state.ResumeTiming();
        Program::trigger(details, "mnuSave");
        Program::rest();
    }
    const QString name = process()
                             .database
                             .openRecordset(platform::sqlWith("SELECT UserName FROM main WHERE DiveID = '",
                                                              idOf(dives / 2), "'"))
                             .value(0)
                             .text();
    if (name != QStringLiteral("Anna %1").arg(number)) {
        fail("save");
    }
}

void bareDetails(benchmark::State& state) {
    const int dives = static_cast<int>(state.range(0));
    const Work work(dives);
    const std::string record = recordOf(work, logbook::RowsOf::Details);
    BareActs bare(work);
    bench::BareStore& store = bare.store();
    sqlite3_stmt* const main = store.prepare(
        "UPDATE main SET UserName = ?1, Department = '', site = '', Location = 'Dive000000.txt', weather = "
        "'', Suit = 'KD00123', divenote = ?2, sitenote = '', Coments = '' WHERE DiveID = ?3");
    sqlite3_stmt* const item = store.prepare(
        "INSERT INTO a.item (act, kind, here, diveid, startcode, dbtxtname, digest, twins, name, "
        "started, gone, filename, owed, rows, file) VALUES ((SELECT max(id) FROM a.act), 1, 1, ?1, "
        "'812345678', '11A2B3CDive000000.txt', zeroblob(20), 0, '', '', '', '', 0, CAST(?2 AS BLOB), x'')");
    // Fifty acts are kept.
    sqlite3_stmt* const oldItem =
        store.prepare("DELETE FROM a.item WHERE act <= (SELECT max(id) FROM a.act) - 50");
    sqlite3_stmt* const oldAct =
        store.prepare("DELETE FROM a.act WHERE id <= (SELECT max(id) FROM a.act) - 50");
    const std::string note = logbook::divenotetemplate().toStdString();
    int number = 0;
    for ([[maybe_unused]] auto step : state) {
        const std::string name = "Anna " + std::to_string(++number);
        const std::string id = diveOf(dives / 2);
        store.run("BEGIN IMMEDIATE");
        store.run(main, {name, note, id});
        bare.beginAct();
        store.run(item, {id, record});
        store.run(oldItem, {});
        store.run(oldAct, {});
        store.run("COMMIT");
    }
}

// --- what leaves the list

/// As a file that replaces another is written: beside it, synced, and its folder, too.
void writeSynced(const QString& path, const QByteArray& bytes) {
    const QByteArray part = QFile::encodeName(path + QStringLiteral(".part"));
    const int file = ::open(part.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    const QByteArray folder = QFile::encodeName(QFileInfo(path).path());
    const int place = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (file < 0 || place < 0 ||
        ::write(file, bytes.constData(), static_cast<size_t>(bytes.size())) !=
            static_cast<ssize_t>(bytes.size()) ||
        ::fsync(file) != 0 || ::close(file) != 0 ||
        ::rename(part.constData(), QFile::encodeName(path).constData()) != 0 || ::fsync(place) != 0 ||
        ::close(place) != 0) {
        fail("write");
    }
}

/// Where no mail program takes a message it becomes a file.
void publish(benchmark::State& state) {
    const int dives = static_cast<int>(state.range(0));
    qputenv("PATH", "");
    Program program(dives);
    program.showList();
    for (int i = 0; i < kManyDives; ++i) {
        const QString id = idOf(1 + i);
        const QString name =
            process()
                .database
                .openRecordset(platform::sqlWith("SELECT Location FROM main WHERE DiveID = '", id, "'"))
                .value(0)
                .text();
        QFile file(program.work().path("old") + QLatin1Char('/') + name);
        if (!file.open(QIODevice::WriteOnly) || file.write(bench::usualDive(i)) < 0) {
            fail("file");
        }
    }
    QDir(program.work().root()).mkdir(QStringLiteral("mail"));
    QAction* const mail = program.list().findChild<QAction*>(QStringLiteral("mnuEmail"));
    for ([[maybe_unused]] auto step : state) {
        for (int i = 0; i < kManyDives; ++i) {
            state.PauseTiming();
            program.list().chooseDive(idOf(1 + i));
            Program::rest();
            answers()->path = program.work().path("mail") + QStringLiteral("/%1.eml").arg(i);
            state.ResumeTiming();
            mail->trigger();
        }
    }
    if (QDir(program.work().path("mail")).entryList({QStringLiteral("*.eml")}).size() != kManyDives) {
        fail("publish");
    }
    state.counters["bytes"] = static_cast<double>(QFileInfo(answers()->path).size());
}

void barePublish(benchmark::State& state) {
    const bench::BenchFolder folder;
    constexpr int kBytes = 13500; // as many as such a message has
    const QByteArray bytes(kBytes, 'x');
    for ([[maybe_unused]] auto step : state) {
        for (int i = 0; i < kManyDives; ++i) {
            writeSynced(folder.path("old") + QStringLiteral("/%1.eml").arg(i), bytes);
        }
    }
}

QByteArray& sheetBytes() {
    static QByteArray bytes;
    return bytes;
}

void spreadsheet(benchmark::State& state) {
    Program program(static_cast<int>(state.range(0)));
    program.showList();
    answers()->path = program.work().path("list.csv");
    for ([[maybe_unused]] auto step : state) {
        Program::trigger(program.list(), "mnuSaveSpread");
        Program::rest();
    }
    QFile sheet(answers()->path);
    if (!sheet.open(QIODevice::ReadOnly) ||
        answers()->told != QLatin1String("Data saved to CSV file....!!")) {
        fail("spreadsheet");
    }
    sheetBytes() = sheet.readAll();
}

void bareSheet(benchmark::State& state) {
    const bench::BenchFolder folder;
    const QByteArray row("D0000001,41mins,23m,may/13/1971 03:00:00,Dive000031.txt,NA,90mins,KD00123,\r\n");
    for ([[maybe_unused]] auto step : state) {
        QFile file(folder.path("list.csv"));
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
            fail("open");
        }
        for (qint64 i = 0; i <= state.range(0); ++i) {
            file.write(row);
        }
        file.close();
    }
}

void sizes(benchmark::internal::Benchmark* one) {
    one->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();
}

void countedSizes(benchmark::internal::Benchmark* one) {
    one->Args({1000, 1})->Args({100000, 1})->Args({100000, kManyDives});
    one->Unit(benchmark::kMillisecond)->UseRealTime();
}

} // namespace

BENCHMARK(bareDelete)->Name("delete, reference")->Apply(countedSizes);
BENCHMARK(deleteRows)->Name("delete, rows alone")->Apply(countedSizes);
BENCHMARK(deleteOne)->Name("delete one, with its list")->Apply(sizes);
BENCHMARK(deleteMany)
    ->Name("delete a thousand, with their list")
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(bareUndo)->Name("undo, reference")->Apply(sizes);
BENCHMARK(undoRows)->Name("undo, rows alone")->Apply(sizes);
BENCHMARK(undoOne)->Name("undo, with its list")->Apply(sizes);
BENCHMARK(bareDetails)->Name("details, reference")->Apply(sizes);
BENCHMARK(saveDetails)
    ->Name("details")
    ->Args({1000, 0})
    ->Args({100000, 0})
    ->Args({1000, 1})
    ->Args({100000, 1})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(barePublish)->Name("publish, reference")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(publish)->Name("publish")->Apply(sizes);
BENCHMARK(bareSheet)->Name("spreadsheet, reference")->Apply(sizes);
BENCHMARK(spreadsheet)->Name("spreadsheet")->Apply(sizes);

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, bench::folderOf(10).root());
    platform::setDialogs(answers());
    look::apply(application);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    platform::setDialogs(nullptr);
    return 0;
}
