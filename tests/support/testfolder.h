#pragma once

#include "platform/files.h"
#include "platform/programfolder.h"
#include "session/process.h"
#include "store/schema.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace benthor::tests {

/// A program folder of its own with a fresh store, current for as long as it lives; process-wide values begin
/// anew.
class TestFolder {
public:
    enum class Store { Fresh, Missing };

    explicit TestFolder(Store store = Store::Fresh) {
        process() = Process();
        for (const char* name : {"new", "old", "corrupt", "dbtxt", "jpg", "Reprog", "ports"}) {
            QDir(root()).mkdir(QLatin1String(name));
        }
        if (store == Store::Fresh) {
            store::createStore(root() + QLatin1String("/rb.mdb"));
        }
        platform::ProgramFolder::setCurrent(platform::ProgramFolder(root()));
    }
    ~TestFolder() {
        process() = Process();
        platform::ProgramFolder::setCurrent(platform::ProgramFolder());
    }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    QString root() const { return folder_.path(); }
    QString path(const QString& name) const { return root() + u'/' + name; }
    bool has(const QString& name) const { return QFile::exists(path(name)); }

    void put(const QString& name, const QByteArray& bytes) const {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            qFatal("cannot write %s", qPrintable(path(name)));
        }
    }
    QByteArray get(const QString& name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// One of the dive texts of tests/data/dives.
    static QByteArray dive(const QString& name) {
        QFile file(QStringLiteral(BENTHOR_TEST_DATA "/dives/") + name);
        if (!file.open(QIODevice::ReadOnly)) {
            qFatal("no test data %s", qPrintable(name));
        }
        return file.readAll();
    }

private:
    QTemporaryDir folder_;
};

} // namespace benthor::tests
