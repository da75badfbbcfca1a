#include "logbook/otherlogbook.h"

#include "store/backup.h"

#include <QFileInfo>
#include <QTemporaryDir>

namespace benthor::logbook {

namespace {

QString storeOf(const QString& path) {
    return QFileInfo(path).isDir() ? platform::ProgramFolder(path).path(u"rb.mdb") : path;
}

bool isSameFile(const QString& first, const QString& second) {
    const QString place = QFileInfo(first).canonicalFilePath();
    return !place.isEmpty() && place == QFileInfo(second).canonicalFilePath();
}

} // namespace

OtherLogbook::OtherLogbook(const QString& path, const QString& own, const store::JetProgress& progress)
    : path_(storeOf(path))
    , folder_(QFileInfo(path_).absolutePath()) {
    if (!QFileInfo::exists(path_)) {
        throw platform::StoreError(
            QFileInfo(path).isDir()
                ? QStringLiteral("The folder \"%1\" holds no logbook: there is no rb.mdb in it.").arg(path)
                : QStringLiteral("There is no file \"%1\".").arg(path));
    }
    if (isSameFile(path_, own)) {
        throw platform::StoreError(QStringLiteral("That is the logbook that is open here."));
    }
    QString read = path_;
    if (store::isjetfile(path_)) {
        copy_ = std::make_unique<QTemporaryDir>();
        copied_ = stampOf(path_);
        read = copy_->filePath(QStringLiteral("rb.mdb"));
        store::copyjet(path_, read, progress);
    }
    store::requireDiveStore(read);
    database_.open(read, platform::StoreAccess::Look);
}

OtherLogbook::~OtherLogbook() = default;

OtherLogbook::Stamp OtherLogbook::stampOf(const QString& path) {
    const QFileInfo file(path);
    return file.exists() ? Stamp{file.size(), file.lastModified()} : Stamp();
}

bool OtherLogbook::isCopyOfWhatLiesThere() const {
    return copy_ != nullptr && copied_.size >= 0 && stampOf(path_) == copied_;
}

} // namespace benthor::logbook
