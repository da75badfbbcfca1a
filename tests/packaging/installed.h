#pragma once

#include "tests/support/ranprogram.h"

#include <QDirIterator>
#include <QFile>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace benthor::tests {

/// What the build installs, laid under a folder of the test's own.
class Installed {
public:
    Installed()
        : install_(runProgram(QStringLiteral(BENTHOR_CMAKE),
                              {QStringLiteral("--install"), QStringLiteral(BENTHOR_BUILD),
                               QStringLiteral("--prefix"), folder_.path()})) {}

    bool isLaid() const { return install_.status == 0; }
    QByteArray complaint() const { return install_.out + install_.err; }
    QString path(const QString& name = {}) const { return folder_.filePath(name); }

    /// Nothing for a file that is not there.
    QByteArray bytes(const QString& name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QByteArray unpacked(const QString& name) const {
        return runProgram(QStringLiteral("gzip"), {QStringLiteral("-dc"), path(name)}).out;
    }
    /// Files and links below a folder, by their paths from there, in order.
    QStringList files(const QString& folder) const {
        QStringList all;
        QDirIterator entries(path(folder), QDir::Files | QDir::System | QDir::Hidden,
                             QDirIterator::Subdirectories);
        while (entries.hasNext()) {
            all += entries.next().mid(path(folder).size() + 1);
        }
        all.sort();
        return all;
    }

private:
    QTemporaryDir folder_;
    Ended install_;
};

} // namespace benthor::tests
