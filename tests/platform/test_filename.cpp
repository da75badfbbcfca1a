#include "platform/filename.h"
#include "platform/skiperrors.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <stdexcept>
#include <sys/stat.h>

using namespace benthor::platform;

class TestFileName : public QObject {
    Q_OBJECT

private slots:
    void aNameStaysInItsFolder_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("good");
        const auto row = [](const char* about, const QString& name, bool good) {
            QTest::newRow(about) << name << good;
        };
        row("plain", QStringLiteral("Wreck1.txt"), true);
        row("blanks and points", QStringLiteral(" ..a b.. "), true);
        row("hidden", QStringLiteral(".wreck"), true);
        row("backslash", QStringLiteral("a\\b.txt"), true);
        row("markup", QStringLiteral("<img src=x>.txt"), true);
        row("empty", QString(), false);
        row("the folder itself", QStringLiteral("."), false);
        row("the folder above", QStringLiteral(".."), false);
        row("another folder", QStringLiteral("../../photo.jpg"), false);
        row("from the root", QStringLiteral("/etc/passwd"), false);
        row("a folder below", QStringLiteral("a/b"), false);
        row("a zero character", QStringLiteral("a") + QChar(QChar::Null) + QStringLiteral(".txt"), false);
    }

    void aNameStaysInItsFolder() {
        QFETCH(QString, name);
        QFETCH(bool, good);
        QCOMPARE(isFileName(name), good);
    }

    void onlyARegularFileIsAFile() {
        const QTemporaryDir folder;
        const QString file = folder.filePath(QStringLiteral("file"));
        const QString pipe = folder.filePath(QStringLiteral("pipe"));
        const QString link = folder.filePath(QStringLiteral("link"));
        const QString pipeLink = folder.filePath(QStringLiteral("pipelink"));
        QVERIFY(QFile(file).open(QIODevice::WriteOnly));
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        QVERIFY(QFile::link(file, link) && QFile::link(pipe, pipeLink));
        QVERIFY(isFile(file) && isFile(link));
        for (const QString& path :
             {pipe, pipeLink, folder.path(), folder.filePath("none"), QStringLiteral("/dev/zero")}) {
            QVERIFY2(!isFile(path), qPrintable(path));
        }
    }

    void aStepThatThrowsIsSkippedUnlessMemoryIsGone() {
        QVERIFY(skipErrors([] {}));
        QVERIFY(!skipErrors([] { throw std::runtime_error("no"); }));
        QVERIFY_EXCEPTION_THROWN(skipErrors([] { throw std::bad_alloc(); }), std::bad_alloc);
    }
};

QTEST_APPLESS_MAIN(TestFileName)
#include "test_filename.moc"
