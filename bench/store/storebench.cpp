#include "bench/store/storebench.h"

#include "store/schema.h"

#include <QDir>
#include <QFile>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>

namespace benthor::bench {

namespace {

constexpr int kGases = 10;
constexpr int kTissues = 16;
constexpr int kSamples = 200;

void require(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "%s failed\n", what);
        std::abort();
    }
}

} // namespace

std::string diveId(int number) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "D%07d", number);
    return text.data();
}

std::string fourDigits(int number) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%04d", number);
    return text.data();
}

QByteArray usualDive(int number) {
    QByteArray text =
        "ver=V3.12\r\nRecint=10\r\nSN=KD00123\r\nStart," + QByteArray::number(812345678 + number) +
        "\r\nFinish,812348145\r\nStatus,0\r\nDescend,3\r\nDAtmos,1013\r\nDStack,360\r\nDUsage,5400\r\n"
        "MaxD,23.4\r\nOTU,12\r\nHPCylinder, 200 bar\r\n";
    for (int i = 0; i < kGases; ++i) {
        text += "Gas" + QByteArray::fromStdString(fourDigits(i)) + ",79,0,660,1\r\n";
    }
    for (int i = 0; i < kTissues; ++i) {
        text += "Tissue" + QByteArray::fromStdString(fourDigits(i)) + ",79,0\r\n";
    }
    text += "Profile\r\nTime,Depth,Mix\r\n";
    for (int i = 0; i < kSamples; ++i) {
        text += "," + QByteArray::number(i) + ",0,70,M0,T20,A500,B512,C498,D120,E60\r\n";
    }
    return text + "End\r\n";
}

BenchFolder::BenchFolder() {
    for (const char* const name : {"new", "old", "dbtxt", "corrupt"}) {
        require(QDir().mkpath(path(name)), "mkpath");
    }
    store::createStore(path("rb.mdb"));
}

void BenchFolder::layFiles(int count) const {
    for (int i = 0; i < count; ++i) {
        QFile file(path("new") + QStringLiteral("/Dive%1.txt").arg(i, 6, 10, QLatin1Char('0')));
        require(file.open(QIODevice::WriteOnly) && file.write(usualDive(i)) > 0, "write");
    }
}

BareStore::BareStore(const QString& path) {
    require(sqlite3_open(path.toUtf8().constData(), &handle_) == SQLITE_OK, "open");
    run("PRAGMA synchronous = EXTRA");
}

BareStore::~BareStore() {
    for (sqlite3_stmt* const statement : statements_) {
        sqlite3_finalize(statement);
    }
    sqlite3_close(handle_);
}

sqlite3_stmt* BareStore::prepare(const char* sql) {
    sqlite3_stmt* statement = nullptr;
    require(sqlite3_prepare_v2(handle_, sql, -1, &statement, nullptr) == SQLITE_OK, sql);
    statements_.push_back(statement);
    return statement;
}

void BareStore::run(const char* sql) {
    require(sqlite3_exec(handle_, sql, nullptr, nullptr, nullptr) == SQLITE_OK, sql);
}

void BareStore::run(sqlite3_stmt* statement, std::initializer_list<std::string_view> texts) {
    int index = 0;
    for (const std::string_view text : texts) {
        sqlite3_bind_text(statement, ++index, text.data(), static_cast<int>(text.size()), nullptr);
    }
    require(sqlite3_step(statement) == SQLITE_DONE, "step");
    sqlite3_reset(statement);
}

BareDiveWriter::BareDiveWriter(BareStore& store)
    : store_(store)
    , serial_(store.prepare("UPDATE serialno SET serial_no = ?1"))
    , main_(store.prepare(
          "INSERT INTO main (DiveID, UserName, Location, startdate, finisheddate, Duration, MaxDepth, "
          "Suit, Startcode, Version, Interval, otu, systemid, datmos, dusage, dstack, descend, "
          "HPCylinder, dbtxtname) VALUES (?1, 'KD00123', 'Dive000000.txt', '2017-09-27 03:34:38', "
          "'2017-09-27 04:15:45', '41:7', '23.400', 'KD00123', '812345678', 'V3.12', '10', '12', 'KD3', "
          "'1013', '5400', '360', '3', '200 ', '11A2B3CDive000000.txt')"))
    , gas_(store.prepare("INSERT INTO gas VALUES (?1, ?2, '79', '0', '660', '1' || char(13))"))
    , tissue_(store.prepare("INSERT INTO tissue VALUES (?1, ?2, '79', '0' || char(13))")) {}

void BareDiveWriter::write(int number) {
    store_.run("BEGIN IMMEDIATE");
    writeRows(number);
    store_.run("COMMIT");
}

void BareDiveWriter::writeRows(int number) {
    const std::string id = diveId(number);
    store_.run(serial_, {id});
    store_.run(main_, {id});
    for (int i = 0; i < kGases; ++i) {
        store_.run(gas_, {id, fourDigits(i)});
    }
    for (int i = 0; i < kTissues; ++i) {
        store_.run(tissue_, {id, fourDigits(i)});
    }
}

void layDives(const QString& path, int count) {
    BareStore store(path);
    BareDiveWriter writer(store);
    store.run("BEGIN IMMEDIATE");
    for (int number = 1; number <= count; ++number) {
        writer.writeRows(number);
    }
    // No order that is asked for is the one in which they lie.
    store.run("UPDATE main SET startdate = datetime('1950-01-01', (rowid * 7919 % 100003) || ' hours'), "
              "Location = printf('Dive%06d.txt', rowid * 31 % 100003)");
    store.run("UPDATE serialno SET getstarted = 'Close'");
    store.run("COMMIT");
}

const BenchFolder& folderOf(int dives) {
    static std::map<int, std::unique_ptr<BenchFolder>> folders;
    std::unique_ptr<BenchFolder>& folder = folders[dives];
    if (!folder) {
        folder = std::make_unique<BenchFolder>();
        layDives(folder->path("rb.mdb"), dives);
    }
    return *folder;
}

} // namespace benthor::bench
