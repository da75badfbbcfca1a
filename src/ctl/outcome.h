#pragma once

#include "platform/query.h"

#include <QString>

#include <stdexcept>

namespace benthor::ctl {

/// What the tool ends with.
enum Status {
    kDone = 0,
    kFindings = 1, ///< done, and there is something to look at
    kUsage = 2,    ///< the words make no sense, or a file is in the way
    kUnusable = 3, ///< the folder or the store cannot be used
    kFault = 4,    ///< the disk failed, a reader went away, or the user stopped it
};

/// Ends a command. The text is for a person to read.
class Failure : public std::runtime_error {
public:
    Failure(Status status, const QString& text)
        : std::runtime_error(text.toStdString())
        , status_(status) {}
    Status status() const { return status_; }
    QString text() const { return QString::fromUtf8(what()); }

private:
    Status status_;
};

/// What a store's failure means: a disk's fault, an interruption, or a store that cannot be used.
Status statusOf(const platform::StoreError& error);

} // namespace benthor::ctl
