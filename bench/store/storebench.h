#pragma once

#include <QByteArray>
#include <QTemporaryDir>

#include <sqlite3.h>
#include <string>

namespace benthor::bench {

/// "D0000012" and "0012".
std::string diveId(int number);
std::string fourDigits(int number);

/// A dive text of usual size: ten gases, sixteen tissues, 200 samples.
QByteArray usualDive(int number);

/// A folder for one run on the disk that temporary files live on, with a fresh store "rb.mdb" and the folders
/// of a program folder.
class BenchFolder {
public:
    BenchFolder();
    QString root() const { return directory_.path(); }
    QString path(const char* name) const { return directory_.filePath(QString::fromLatin1(name)); }
    /// Lays `count` dive files into the folder `new`.
    void layFiles(int count) const;

private:
    QTemporaryDir directory_;
};

/// Writes `count` good dives of usual size, a month between two of them, in one transaction into the fresh
/// store `path`.
void layDives(const QString& path, int count);

/// Bare use of the engine, as the references use it. Ends the program on any error.
class BareStore {
public:
    explicit BareStore(const QString& path);
    ~BareStore();
    BareStore(const BareStore&) = delete;
    BareStore& operator=(const BareStore&) = delete;
    sqlite3_stmt* prepare(const char* sql);
    void run(const char* sql);
    /// Runs a prepared statement that returns nothing, with these texts.
    void run(sqlite3_stmt* statement, std::initializer_list<std::string_view> texts);

private:
    sqlite3* handle_ = nullptr;
    std::vector<sqlite3_stmt*> statements_;
};

/// Writes one usual dive's rows, prepared statements and one transaction.
class BareDiveWriter {
public:
    explicit BareDiveWriter(BareStore& store);
    void write(int number);
    void writeRows(int number); ///< within a transaction of the caller

private:
    BareStore& store_;
    sqlite3_stmt* serial_;
    sqlite3_stmt* main_;
    sqlite3_stmt* gas_;
    sqlite3_stmt* tissue_;
};

/// A folder whose store has so many usual dives; one for each number as long as the process runs.
const BenchFolder& folderOf(int dives);

} // namespace benthor::bench
