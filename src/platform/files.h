#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <functional>
#include <future>
#include <optional>

namespace benthor::platform {

// Files as a whole. What these functions say is on the disk is on the disk, and a file that replaces another
// does so at one stroke: whoever looks, even behind a crash, finds the old file or the whole new one. Files
// are written in a hidden file beside their place (".benthor.part"; where others write in the folder at the
// same time ".benthor.part2" and so on), which a later writing in the same folder takes away if a crash left
// it. A name that is a link stays one: what it leads to is replaced. New files have the rights that the
// user's umask leaves, unless a function says otherwise.

/// How a step with a file ended. A failure's text names the file and the system's reason, for a person to
/// read.
struct FileResult {
    QString error;  ///< empty when all went well
    int number = 0; ///< the system's number of the failure (errno), 0 when all went well
    bool ok() const { return error.isEmpty(); }
    explicit operator bool() const { return ok(); }
};

/// Whether the folder's entry is put on the disk with the file. `Later` is for many files in one folder,
/// followed by one syncFolder(): the contents are on the disk, but before that call a crash may still lose
/// the name.
enum class FolderSync { Now, Later };

/// Looks at a copy before it takes its place, on the disk already but under another name. An empty text lets
/// it; any other is why the copy fails, and what stood in the place stays.
using DraftCheck = std::function<QString(const QString& draft)>;

/// Called between the blocks of a long file, so that a window can be painted meanwhile. False ends the work,
/// which then fails with ECANCELED.
using BetweenBlocks = std::function<bool()>;

/// Copies the contents of `from` over `to`, whatever stood there. `from` and `to` may be one file.
FileResult copyFile(const QString& from, const QString& to, FolderSync sync = FolderSync::Now,
                    const DraftCheck& check = {}, const BetweenBlocks& between = {});

/// As copyFile(), with the rights of the file `like`, and where the system allows it its owner and group,
/// from the first byte on. Where `like` is not there, the owner alone may read and write it.
FileResult copyFileLike(const QString& like, const QString& from, const QString& to,
                        FolderSync sync = FolderSync::Now, const DraftCheck& check = {},
                        const BetweenBlocks& between = {});

/// Gives a file the rights, and where the system allows it the owner and group, of `like`.
FileResult takeRights(const QString& path, const QString& like);

/// Makes `bytes` the contents of `path`.
FileResult writeFileWhole(const QString& path, QByteArrayView bytes);

/// `path` with all links followed, the last one too where what it names is missing.
QString followLinks(const QString& path);

/// Gives a file another name in its own folder, in the place of what stood there. The file's contents are put
/// on the disk first. Where `to` is a link, its contents go to where that leads.
FileResult moveFile(const QString& from, const QString& to);

/// Gives the file a second name, which must be free; both are the file then. Not every file system can.
FileResult linkFile(const QString& from, const QString& to);

/// Puts the names in `folder` on the disk.
FileResult syncFolder(const QString& folder);

/// syncFolder() on a thread of its own, for a caller that has something else to do meanwhile. The destructor
/// waits.
class FolderSyncBehind {
public:
    void begin(const QString& folder);
    /// For the one that was begun last. Without one all is well.
    FileResult wait();

private:
    std::future<FileResult> sync_;
};

/// The first `most` bytes of a file (all of them when it is not longer). Nothing when it cannot be read.
std::optional<QByteArray> readFile(const QString& path, qint64 most = 256LL * 1024 * 1024);

/// Whether both files are there and hold the same bytes. False as well where `between` ended it.
bool sameContents(const QString& first, const QString& second, const BetweenBlocks& between = {});

/// Removes a file. One that is not there is a failure.
FileResult removeFile(const QString& path);

} // namespace benthor::platform
