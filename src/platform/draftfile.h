#pragma once

#include "platform/descriptor.h"

#include <QByteArray>
#include <QString>

#include <sys/types.h>

namespace benthor::platform {

/// The hidden file beside a place in which is written what will stand there. Its maker holds it until it has
/// its place or is gone, so that nobody else who writes in the folder, a thread or another program, takes it
/// for what a crash left: whoever comes second takes the next name. What a crash did leave goes. Not for use
/// by several threads.
class DraftFile {
public:
    /// An empty one in `folder`, with the rights `mode` less the user's umask.
    DraftFile(const QString& folder, mode_t mode);
    /// Without its place it is gone.
    ~DraftFile();
    DraftFile(const DraftFile&) = delete;
    DraftFile& operator=(const DraftFile&) = delete;

    /// The system's number for why there is none, or 0.
    int error() const { return error_; }
    /// Open for writing, until close().
    int file() const { return file_.number(); }
    QString path() const;
    /// Ends the writing; it stays held. Returns 0 or the error's number.
    int close();
    /// Gives it the name `place`, whatever stood there. Returns 0 or the error's number.
    int takePlace(const QByteArray& place);

private:
    void make(const QByteArray& path, mode_t mode);

    QByteArray path_; ///< empty where there is none, or no longer
    Descriptor file_;
    Descriptor hold_; ///< keeps the file held behind close()
    int error_ = 0;
};

} // namespace benthor::platform
