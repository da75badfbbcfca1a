#pragma once

#include "exports/wholedive.h"
#include "platform/database.h"
#include "platform/instancelock.h"
#include "platform/programfolder.h"

#include <QString>

#include <memory>

class QTemporaryDir;

namespace benthor::ctl {

/// The program folder: `given`, or where that is empty the program's own. Nothing is made. Failure where it
/// is not there.
platform::ProgramFolder requireFolder(const QString& given);

/// The logbook, opened for a look: no byte of its folder changes, whoever else uses it. An older store (a Jet
/// file) is read as a copy in our form.
class ReadLogbook {
public:
    /// Failure where there is no store or it cannot be read.
    explicit ReadLogbook(platform::ProgramFolder folder);
    ~ReadLogbook();
    ReadLogbook(const ReadLogbook&) = delete;
    ReadLogbook& operator=(const ReadLogbook&) = delete;

    const platform::ProgramFolder& folder() const { return folder_; }
    platform::Database& database() { return database_; }
    exports::DiveReader& reader() { return *reader_; }

private:
    platform::ProgramFolder folder_;
    std::unique_ptr<QTemporaryDir> copy_; ///< outlives database_
    platform::Database database_;
    std::unique_ptr<exports::DiveReader> reader_;
};

/// The process's store, opened for changes, with the folder's lock held: nobody else uses it meanwhile.
class WriteLogbook {
public:
    /// Failure where another copy of the program works in the folder, or the store cannot be changed.
    explicit WriteLogbook(platform::ProgramFolder folder);
    ~WriteLogbook();
    WriteLogbook(const WriteLogbook&) = delete;
    WriteLogbook& operator=(const WriteLogbook&) = delete;

    const platform::ProgramFolder& folder() const { return folder_; }

private:
    void requireWritable() const;

    platform::ProgramFolder folder_;
    std::unique_ptr<platform::InstanceLock> lock_;
};

/// The store's file.
QString storeOf(const platform::ProgramFolder& folder);

} // namespace benthor::ctl
