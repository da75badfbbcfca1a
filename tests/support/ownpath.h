#pragma once

#include <QFile>
#include <QTemporaryDir>

namespace benthor::tests {

/// Only programs of the test's own are found on the path while this lives.
class OwnPath {
public:
    OwnPath()
        : before_(qgetenv("PATH")) {
        qputenv("PATH", folder_.path().toLocal8Bit());
    }
    ~OwnPath() { qputenv("PATH", before_); }
    OwnPath(const OwnPath&) = delete;
    OwnPath& operator=(const OwnPath&) = delete;

    QString path(const QString& name) const { return folder_.filePath(name); }
    void install(const QString& name, const QByteArray& script) const {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(script) != script.size() ||
            !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner)) {
            qFatal("no program %s", qPrintable(name));
        }
    }

private:
    QTemporaryDir folder_;
    QByteArray before_;
};

} // namespace benthor::tests
