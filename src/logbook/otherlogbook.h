#pragma once

#include "platform/database.h"
#include "platform/programfolder.h"
#include "store/olderstore.h"

#include <QDateTime>
#include <QString>

#include <memory>

class QTemporaryDir;

namespace benthor::logbook {

/// Another logbook: a store that is only read, and the folders of dive files beside it. Not a byte of either
/// changes.
class OtherLogbook {
public:
    /// `path`: a program folder, or a store in any folder: a backup, say, or a Jet file, of which a copy in
    /// our form is read. `own`: the store in use, which is no other logbook. StoreError, with words for the
    /// user, where there is none or it cannot be read; JetStopped.
    OtherLogbook(const QString& path, const QString& own, const store::JetProgress& progress = {});
    ~OtherLogbook();
    OtherLogbook(const OtherLogbook&) = delete;
    OtherLogbook& operator=(const OtherLogbook&) = delete;

    platform::Database& database() { return database_; }
    /// The store's own file, as it was chosen.
    QString path() const { return path_; }
    /// Where its folders `dbtxt` and `old` are, if it has any.
    const platform::ProgramFolder& folder() const { return folder_; }
    /// Whether what is read is a copy, made of the file that still lies there. Any other store may have
    /// become another since: a file that was replaced is read on as long as it is open.
    bool isCopyOfWhatLiesThere() const;

private:
    /// What tells a file from the one that replaces it.
    struct Stamp {
        qint64 size = -1; ///< -1: there is none
        QDateTime written;
        bool operator==(const Stamp&) const = default;
    };
    static Stamp stampOf(const QString& path);

    QString path_;
    platform::ProgramFolder folder_;
    std::unique_ptr<QTemporaryDir> copy_; ///< holds what is read in a Jet file's stead; outlives database_
    Stamp copied_;                        ///< of the Jet file
    platform::Database database_;
};

} // namespace benthor::logbook
