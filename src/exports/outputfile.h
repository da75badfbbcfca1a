#pragma once

#include "exports/exporterror.h"

#include <QString>

#include <memory>

class QIODevice;

namespace benthor::exports {

/// There is a file already, and nobody said that it may go. Nothing was written.
class FileExistsError : public ExportError {
public:
    using ExportError::ExportError;
};

/// Where an export goes: a file that appears whole or not at all, or what is written in place.
///
/// A regular file is written under a hidden name beside its place (".benthor-" and ".part") and takes it at
/// commit(), when all of it is on the disk; whoever looks before finds what stood there. The hidden file of a
/// crash is taken over by the next writing of the same file; two programs do not write it at once. Where a
/// link stands, what it leads to is replaced; a file that is replaced hands its rights on.
///
/// "-" (standard output), a device, a pipe and the open files of a process ("/dev/stdout") are written in
/// place. As long as this lives a reader that goes away is an error like any other and not the end of the
/// process.
class OutputFile {
public:
    /// ExportError: a folder stands there, or the place cannot be written. FileExistsError: a regular file
    /// stands there, and `force` is not set.
    OutputFile(const QString& path, bool force);
    /// Leaves nothing behind where commit() was not called, but for what was written in place.
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// Takes bytes in order. A write that the system refuses gives -1, and so does each one behind it;
    /// error() says why.
    QIODevice& device();
    /// What the system said when it first refused bytes, for a person to read; empty when it took all.
    QString error() const;

    /// All is written: puts it on the disk and in its place. ExportError where that fails, or bytes were
    /// refused before. Without force a file that has come to stand there meanwhile stays, and
    /// FileExistsError comes.
    void commit();

private:
    class Target;
    std::unique_ptr<Target> target_;
};

} // namespace benthor::exports
