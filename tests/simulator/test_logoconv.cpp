// The program logoconv as the link screen starts it, and the logo that is supplied as an example.

#include "tests/simulator/logobitmap.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

using namespace benthor::simulator;
using namespace benthor::tests;

namespace {

struct Run {
    Run(const QString& program, const QStringList& arguments, const QString& folder) {
        QProcess process;
        process.setWorkingDirectory(folder);
        process.start(program, arguments);
        if (!process.waitForFinished()) {
            qFatal("%s does not run", qPrintable(program));
        }
        code = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        out = QString::fromUtf8(process.readAllStandardOutput());
        errors = QString::fromUtf8(process.readAllStandardError());
    }
    int code = -1;
    QString out, errors;
};

struct Stage {
    QString path(const QString& name) const { return folder.filePath(name); }
    void put(const QString& name, const QByteArray& bytes) const {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            qFatal("cannot write %s", qPrintable(name));
        }
    }
    QByteArray get(const QString& name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }
    QStringList files() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden); }
    Run convert(const QStringList& arguments) const {
        return {QStringLiteral(BENTHOR_LOGOCONV), arguments, folder.path()};
    }

    QTemporaryDir folder;
};

} // namespace

class TestLogoConv : public QObject {
    Q_OBJECT

private slots:
    void aBitmapOfTheFolderIsConvertedBesideItself() {
        const Stage stage;
        stage.put(QStringLiteral("logo.bmp"), bitmap(crookedLogo()));
        const Run run = stage.convert({"logo.bmp"});
        QCOMPARE(run.errors, "");
        QCOMPARE(run.code, 0);
        QCOMPARE(stage.files(), QStringList({"loga.bmt", "logo.bmp"}));
        QCOMPARE(stage.get(QStringLiteral("loga.bmt")), logoText(crookedLogo()));
    }

    void aPathIsTakenToo() {
        const Stage stage;
        QVERIFY(QDir(stage.folder.path()).mkdir(QStringLiteral("in here")));
        stage.put(QStringLiteral("in here/logo.bmp"), bitmap(crookedLogo()));
        QCOMPARE(stage.convert({stage.path("in here/logo.bmp")}).code, 0);
        QCOMPARE(stage.get(QStringLiteral("in here/loga.bmt")), logoText(crookedLogo()));
    }

    void aTextThatStandsThereIsReplaced() {
        const Stage stage;
        stage.put(QStringLiteral("x.bmp"), bitmap(crookedLogo()));
        stage.put(QStringLiteral("a.bmt"), QByteArray(30000, 'x'));
        QCOMPARE(stage.convert({"x.bmp"}).code, 0);
        QCOMPARE(stage.get(QStringLiteral("a.bmt")), logoText(crookedLogo()));
    }

    void whatCannotBeConvertedIsToldAndLeavesNoFile_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        QByteArray deep = bitmap(crookedLogo());
        deep[28] = 8;
        QByteArray wide = bitmap(crookedLogo());
        wide[18] = 103;
        QTest::newRow("1086 bytes that are no bitmap") << "logo.bmp" << QByteArray(1086, ' ');
        QTest::newRow("another depth") << "logo.bmp" << deep;
        QTest::newRow("another size") << "logo.bmp" << wide;
        QTest::newRow("empty") << "logo.bmp" << QByteArray();
        QTest::newRow("short name") << "logo" << bitmap(crookedLogo());
        QTest::newRow("would replace itself") << "loga.bmt" << bitmap(crookedLogo());
    }

    void whatCannotBeConvertedIsToldAndLeavesNoFile() {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        const Stage stage;
        stage.put(name, bytes);
        const Run run = stage.convert({name});
        QCOMPARE(run.code, 1);
        QVERIFY2(run.errors.contains(name), qPrintable(run.errors));
        QCOMPARE(run.out, "");
        QCOMPARE(stage.files(), QStringList(name));
        QCOMPARE(stage.get(name), bytes);
    }

    void aFileThatIsNotThereIsTold() {
        const Stage stage;
        const Run run = stage.convert({"none.bmp"});
        QCOMPARE(run.code, 1);
        QVERIFY(run.errors.contains(QLatin1String("none.bmp")));
        QVERIFY(stage.files().isEmpty());
    }

    void helpSaysThatARealDeviceNeedsAnother() {
        const Stage stage;
        const Run run = stage.convert({"--help"});
        QCOMPARE(run.code, 0);
        QVERIFY(run.out.contains(QLatin1String("simulated device")));
        QVERIFY(run.out.contains(QLatin1String("A real device does not know it")));
    }

    void withoutOneFileItTellsItsUse() {
        const Stage stage;
        for (const QStringList& arguments : {QStringList(), QStringList({"a.bmp", "b.bmp"})}) {
            const Run run = stage.convert(arguments);
            QCOMPARE(run.code, 1);
            QVERIFY(run.errors.startsWith(QLatin1String("Usage:")));
        }
    }

    void theExampleIsABitmapThatTheProgramTakes() {
        const Stage stage;
        const Run render(QStringLiteral(BENTHOR_RENDERPICTURES),
                         {"--logo", QStringLiteral(BENTHOR_LOGOS), stage.folder.path()}, stage.folder.path());
        QCOMPARE(render.code, 0);
        const QByteArray file = stage.get(QStringLiteral("sharka.bmp"));
        QCOMPARE(file.size(), 1086);
        QString error;
        const std::optional<Logo> logo = readBitmap(file, error);
        QVERIFY2(logo, qPrintable(error));
        std::size_t dark = 0;
        for (const auto& row : logo->rows) {
            dark += row.count();
        }
        QVERIFY(dark > 102 * 64 / 10); // something is drawn, and it is dark on a light ground
        QVERIFY(dark < 102 * 64 / 2);
        QVERIFY(!logo->isDark(0, 0));
        QCOMPARE(stage.convert({"sharka.bmp"}).code, 0);
        QCOMPARE(stage.get(QStringLiteral("sharka.bmt")), logoText(*logo));
    }
};

QTEST_GUILESS_MAIN(TestLogoConv)
#include "test_logoconv.moc"
