#include "divefiles/importcopies.h"

#include "divefiles/filenames.h"
#include "divefiles/keptfiles.h"

#include <QFileInfo>

#include <algorithm>

namespace benthor::divefiles {

using platform::FileResult;
using platform::FolderSync;

namespace {

/// The name of a copy without the stamp.
QString shortname(const QString& name) {
    return copyname(QString(), name);
}

} // namespace

ImportCopies::ImportCopies(const platform::ProgramFolder& folder, QStringList names,
                           std::function<void()> paint)
    : folder_(folder)
    , names_(std::move(names))
    , paint_(std::move(paint)) {
    for (const QString& name : std::as_const(names_)) {
        lastOfCopy_[shortname(name)] = name;
    }
}

QString ImportCopies::copyof(const QString& name) const {
    return folder_.path(u"dbtxt", copyname(stamp_, name));
}

void ImportCopies::choosestamp(const QString& stamp, const std::vector<OwedProfile>& owed) {
    stamp_ = stamp;
    const auto taken = [&](const QString& name) {
        paint_();
        return isTaken(name, owed);
    };
    while (std::any_of(names_.begin(), names_.end(), taken)) {
        stamp_ = nextstamp(stamp_);
    }
}

bool ImportCopies::isTaken(const QString& name, const std::vector<OwedProfile>& owed) const {
    if (QFileInfo::exists(copyof(name)) && !platform::sameContents(waiting(name), copyof(name), painting())) {
        return true;
    }
    const QString copy = copyname(stamp_, name);
    return std::any_of(owed.begin(), owed.end(), [&](const OwedProfile& one) {
        return one.dbtxtname == copy && !isowed(one, waiting(name));
    });
}

FileResult ImportCopies::make(const QString& name, const platform::BetweenBlocks& goOn) {
    if (FileResult replaced = keepwhatisreplaced(folder_, name, goOn); !replaced) {
        return replaced;
    }
    FileResult copied = platform::copyFile(waiting(name), kept(name), FolderSync::Later, {}, goOn);
    if (copied) {
        copyForViewer(name, FolderSync::Later);
    }
    return copied;
}

FileResult ImportCopies::settle() {
    if (!platform::syncFolder(folder_.path(u"dbtxt"))) {
        uncopied_ = QSet<QString>(names_.begin(), names_.end());
    }
    return platform::syncFolder(folder_.path(u"old"));
}

FileResult ImportCopies::renew(const QString& name) {
    if (!stands(name)) {
        if (FileResult replaced = keepwhatisreplaced(folder_, name, painting()); !replaced) {
            return replaced;
        }
        FileResult copied = platform::copyFile(waiting(name), kept(name), FolderSync::Now, {}, painting());
        if (!copied) {
            return copied;
        }
        uncopied_ += name;
    }
    // Where a later file of the run bears the name of the copy, that one's copy stands there.
    if (isLastOfItsCopy(name) && uncopied_.contains(name)) {
        copyForViewer(name, FolderSync::Now);
    }
    return {};
}

std::optional<OwedProfile> ImportCopies::owed(const QString& name) const {
    const QString copy = copyname(stamp_, name);
    // A name that is too long for its copy was never to be found.
    if (!uncopied_.contains(name) || !isLastOfItsCopy(name) || copy != dbtxtname(stamp_, name)) {
        return std::nullopt;
    }
    return owedprofile(folder_, copy, name);
}

bool ImportCopies::stands(const QString& name) const {
    return platform::sameContents(waiting(name), kept(name), painting());
}

bool ImportCopies::isLastOfItsCopy(const QString& name) const {
    return lastOfCopy_.value(shortname(name)) == name;
}

/// Made of the copy in `old`, so that both are one whatever becomes of the file that waits.
void ImportCopies::copyForViewer(const QString& name, FolderSync sync) {
    if (platform::copyFile(kept(name), copyof(name), sync, {}, painting())) {
        uncopied_.remove(name);
    } else {
        uncopied_ += name;
    }
}

platform::BetweenBlocks ImportCopies::painting() const {
    return [this] {
        paint_();
        return true;
    };
}

} // namespace benthor::divefiles
