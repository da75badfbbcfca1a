#pragma once

#include "divefiles/owedprofiles.h"
#include "platform/programfolder.h"

#include <QHash>
#include <QSet>
#include <QStringList>

#include <functional>
#include <vector>

namespace benthor::divefiles {

/// The copies of one run's files: in `old` each under its name, in `dbtxt` under the run's stamp. A copy in
/// dbtxt may fail; the run knows which are owed.
class ImportCopies {
public:
    /// `paint` is called often while something long is done.
    ImportCopies(const platform::ProgramFolder& folder, QStringList names, std::function<void()> paint);

    /// Takes `stamp`, or the next one behind it with which no copy takes the place of another profile: two
    /// runs within a second have one stamp, and so have two moments of the hour that a clock goes through
    /// twice. A profile that is owed holds its name as if it stood there.
    void choosestamp(const QString& stamp, const std::vector<OwedProfile>& owed);
    QString stamp() const { return stamp_; }

    /// The first pass over one file. What another file left under its name in `old` stands there under a
    /// number first. Its failure, or ECANCELED where `goOn` says no. Failures in dbtxt are kept in mind.
    platform::FileResult make(const QString& name, const platform::BetweenBlocks& goOn);
    /// Behind the last make(): puts the names on the disk.
    platform::FileResult settle();

    /// The copies once more before a file's rows are written: it may be another than it was in the first
    /// pass, and a copy into dbtxt that failed is tried again. Whatever becomes of the file, both copies are
    /// one.
    platform::FileResult renew(const QString& name);

    /// The profile that is owed when the copy into dbtxt still is not there and a dive will name it.
    std::optional<OwedProfile> owed(const QString& name) const;

    /// Whether the copy in `old` has the bytes of the file that waits.
    bool stands(const QString& name) const;

private:
    QString waiting(const QString& name) const { return folder_.path(u"new", name); }
    QString kept(const QString& name) const { return folder_.path(u"old", name); }
    QString copyof(const QString& name) const;
    bool isTaken(const QString& name, const std::vector<OwedProfile>& owed) const;
    bool isLastOfItsCopy(const QString& name) const;
    void copyForViewer(const QString& name, platform::FolderSync sync);
    platform::BetweenBlocks painting() const;

    const platform::ProgramFolder& folder_;
    QStringList names_;
    std::function<void()> paint_;
    QString stamp_;
    QHash<QString, QString> lastOfCopy_; ///< of the files whose copies have one name, the last
    QSet<QString> uncopied_;             ///< not in dbtxt, or not surely on the disk there
};

} // namespace benthor::divefiles
