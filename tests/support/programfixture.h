#pragma once

#include "platform/programfolder.h"
#include "session/process.h"
#include "store/schema.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

namespace benthor::tests {

/// A program folder of its own for one test, with a fresh store that the process has open.
class ProgramFixture {
public:
    ProgramFixture()
        : folder(directory_.path()) {
        process().importing = false;
        for (QString* const text : {&process().currentdiveid, &process().problemtext, &process().divesystem,
                                    &process().querytext}) {
            text->clear();
        }
        for (const char* const name : {"new", "old", "corrupt", "dbtxt"}) {
            QDir().mkpath(folder.path(QString::fromLatin1(name)));
        }
        QFile store(storePath());
        if (!store.open(QIODevice::WriteOnly) || store.write(freshStore()) <= 0) {
            qFatal("the store of the test cannot be made");
        }
        store.close();
        openStore();
    }
    ~ProgramFixture() {
        process().mainrecordset.close();
        process().countrecordset.close();
        process().database.close();
    }
    ProgramFixture(const ProgramFixture&) = delete;
    ProgramFixture& operator=(const ProgramFixture&) = delete;

    /// A test outlives no power failure: waiting for the disk would only cost time.
    void openStore() const {
        process().database.open(storePath());
        process().database.execute("PRAGMA synchronous = OFF");
    }

    QString storePath() const { return folder.path(u"rb.mdb"); }

    void put(const QString& where, const QString& name, const QByteArray& bytes) const {
        QFile file(folder.path(where, name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), bytes.size());
    }
    void putWaiting(const QString& name, const QByteArray& bytes) const {
        put(QStringLiteral("new"), name, bytes);
    }

    QByteArray bytesOf(const QString& where, const QString& name) const {
        return platform::readFile(folder.path(where, name)).value_or("(no file)");
    }
    QStringList names(const QString& where) const { return folder.listFiles(where, QStringLiteral("*")); }

    /// All rows of a query; a field's texts joined by "|", Null as "(null)".
    static QStringList rows(const platform::Query& query) {
        QStringList lines;
        platform::Recordset rows = process().database.openRecordset(query);
        for (; !rows.eof(); rows.moveNext()) {
            QStringList texts;
            for (int i = 0; i < rows.fieldCount(); ++i) {
                texts += rows.value(i).isNull() ? QStringLiteral("(null)") : rows.value(i).text();
            }
            lines += texts.join(QLatin1Char('|'));
        }
        return lines;
    }

private:
    /// The bytes of a fresh store, made once for all tests of a program.
    static const QByteArray& freshStore() {
        static const QByteArray bytes = [] {
            const QTemporaryDir directory;
            const QString path = directory.filePath(QStringLiteral("rb.mdb"));
            store::createStore(path);
            return platform::readFile(path).value();
        }();
        return bytes;
    }

    /// In memory where the system has a place for that: a test need not wait for the disk.
    static QString directoryTemplate() {
        const QString memory = QStringLiteral("/dev/shm");
        return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + QStringLiteral("/benthor-test");
    }

    QTemporaryDir directory_{directoryTemplate()};

public:
    platform::ProgramFolder folder;
};

/// A dive text as a device writes it, good in every respect.
inline QByteArray goodDive(const QByteArray& startcode = "812345678") {
    return "ver=V3.12\r\nRecint=10\r\nSN=KD00123\r\nStart," + startcode +
           "\r\nFinish,812348145\r\nStatus,0\r\nDescend,3\r\nDAtmos,1013\r\nDStack,360\r\nDUsage,"
           "5400\r\nMaxD,23.4\r\n"
           "OTU,12\r\nHPCylinder, 200 bar\r\nGas0000,79,0,660,1\r\nGas0001,68,0,465,1\r\nTissue0000,79,0\r\n"
           "Tissue0001,101,12\r\nProfile\r\nTime,Depth,Mix\r\n,10,0,70,M0,T20,A500\r\nEnd\r\n";
}

} // namespace benthor::tests
