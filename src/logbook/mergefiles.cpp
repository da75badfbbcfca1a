#include "logbook/mergefiles.h"

#include "divefiles/keptfiles.h"
#include "platform/filename.h"
#include "platform/query.h"

#include <QFileInfo>

namespace benthor::logbook {

MergeFiles::~MergeFiles() {
    for (const QString& place : copied_) {
        platform::removeFile(place); // one that stays does no harm: no row names it
    }
}

MergeFiles::Brought MergeFiles::bring(const QString& dbtxtname) {
    if (dbtxtname.isEmpty()) {
        return {{}, false};
    }
    const QString place = platform::isFileName(dbtxtname) ? there_.path(u"dbtxt", dbtxtname) : QString();
    if (place.isEmpty() || !platform::isFile(place)) {
        const QString name = freeName(dbtxtname);
        named_ += name.toCaseFolded();
        return {name, false};
    }
    const QString name = take(place, u"dbtxt", dbtxtname, named_);
    named_ += name.toCaseFolded();
    bringOld(place);
    return {name, true};
}

/// A name that is taken here would show another dive's profile.
QString MergeFiles::freeName(const QString& name) const {
    for (int number = 1;; ++number) {
        QString free = divefiles::numberedname(name, number);
        const bool isFree = !named_.contains(free.toCaseFolded()) &&
                            (!platform::isFileName(free) || !QFileInfo::exists(here_.path(u"dbtxt", free)));
        if (isFree) {
            return free;
        }
    }
}

/// The import keeps each file in `old` under its first name; the same bytes tell which one it was.
void MergeFiles::bringOld(const QString& place) {
    if (!oldRead_) {
        oldRead_ = true;
        for (const QString& name : there_.listFiles(QStringLiteral("old"), QStringLiteral("*"))) {
            oldBySize_[QFileInfo(there_.path(u"old", name)).size()] += name;
        }
    }
    for (const QString& name : oldBySize_.value(QFileInfo(place).size())) {
        const QString old = there_.path(u"old", name);
        if (platform::isFile(old) && platform::sameContents(old, place)) {
            take(old, u"old", name, {});
            return;
        }
    }
}

QString MergeFiles::take(const QString& from, QStringView where, const QString& name,
                         const QSet<QString>& taken) {
    const divefiles::KeptCopy copy = divefiles::keepcopy(from, here_, where, name, taken);
    if (copy.made) {
        copied_ += here_.path(where, copy.name); // in part, where it failed
    }
    if (!copy.result) {
        throw platform::StoreError(copy.result.error);
    }
    return copy.name;
}

void MergeFiles::settle() const {
    for (const char16_t* const where : {u"dbtxt", u"old"}) {
        const QString folder = here_.path(where);
        if (!copied_.isEmpty() && QFileInfo(folder).isDir()) {
            if (const platform::FileResult synced = platform::syncFolder(folder); !synced) {
                throw platform::StoreError(synced.error);
            }
        }
    }
}

} // namespace benthor::logbook
