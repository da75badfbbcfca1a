#include "tests/packaging/installed.h"

#include <QImage>
#include <QMimeDatabase>
#include <QRegularExpression>
#include <QSvgRenderer>
#include <QtTest>

using namespace benthor;
using tests::Ended;
using tests::Installed;
using tests::runProgram;

/// What a Debian package is made of, and any other installation: programs, the folder that a user's first
/// start is filled from, icons, types, the rule for serial adapters.
class TestInstallation : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void programsAreThereAndTellTheirVersion();
    void theReadingProgramIsFoundWhereItIsInstalled();
    void aFirstStartFindsAllThatAProgramFolderHolds();
    void iconsComeInEverySize();
    void filesAreKnownByTheirNames();
    void theRuleComesBeforeTheSeatsRights();
    void theRuleNamesEachAdapterTwice();
    void theRuleIsWellFormed();

private:
    QStringList ruleLines() const;

    Installed installed_;
};

namespace {

const QString kRule = QStringLiteral("lib/udev/rules.d/70-benthor-serial.rules");

} // namespace

void TestInstallation::initTestCase() {
    QVERIFY2(installed_.isLaid(), installed_.complaint().constData());
}

void TestInstallation::programsAreThereAndTellTheirVersion() {
    QCOMPARE(installed_.files(QStringLiteral("bin")), QStringList({"benthor", "benthorctl", "kdsim"}));
    for (const QString& program : installed_.files(QStringLiteral("bin"))) {
        QVERIFY2(QFileInfo(installed_.path(QStringLiteral("bin/") + program)).isExecutable(),
                 qPrintable(program));
    }
    for (const QString& program : installed_.files(QStringLiteral("bin"))) {
        const Ended ended =
            runProgram(installed_.path(QStringLiteral("bin/") + program), {QStringLiteral("--version")});
        QCOMPARE(ended.status, 0);
        QCOMPARE(ended.out, program.toLatin1() + " " BENTHOR_VERSION "\n");
    }
}

/// Nothing stands beside an installed program, so one that looks there alone would say that it is missing.
/// The file is no store that anybody could read; the reading program says so.
void TestInstallation::theReadingProgramIsFoundWhereItIsInstalled() {
    const QTemporaryDir folder;
    QFile store(folder.filePath(QStringLiteral("rb.mdb")));
    QVERIFY(store.open(QIODevice::WriteOnly));
    store.write(QByteArray("\0\1\0\0Standard Jet DB\0", 20) + QByteArray(8192, '\0'));
    store.close();
    const auto list = [&] {
        return runProgram(installed_.path(QStringLiteral("bin/benthorctl")),
                          {QStringLiteral("--folder"), folder.path(), QStringLiteral("list")});
    };
    const QString reader = installed_.path(QStringLiteral("libexec/benthor/benthor-readjet"));
    const Ended found = list();
    QCOMPARE(found.status, 3);
    QVERIFY2(!found.err.contains("is missing"), found.err.constData());
    QVERIFY(QFile::rename(reader, reader + QStringLiteral(".away")));
    QVERIFY(list().err.contains("The program that reads Jet files is missing"));
    QVERIFY(QFile::rename(reader + QStringLiteral(".away"), reader));
}

/// And nothing else: no dive, firmware image or converter of our own making may come to a diver as if it were
/// the maker's.
void TestInstallation::aFirstStartFindsAllThatAProgramFolderHolds() {
    QCOMPARE(installed_.files(QStringLiteral("share/benthor")),
             QStringList({"TIPOFDAY.TXT", "default.mit", "divelist.bmp", "gaslistb.bmp", "gdata.mit",
                          "manualbenthor.mht", "morvakd2.bmp", "pclink.bmp", "pdblist.bmp", "rb.mdb",
                          "screensave2.bmp", "sharka.bmp"}));
    for (const char* const folder : {"new", "old", "corrupt", "dbtxt", "jpg", "Reprog", "ports"}) {
        QVERIFY2(QFileInfo(installed_.path(QStringLiteral("share/benthor/") + QLatin1String(folder))).isDir(),
                 folder);
    }
    QVERIFY(installed_.bytes(QStringLiteral("share/benthor/rb.mdb")).startsWith("SQLite format 3"));
    QVERIFY(installed_.bytes(QStringLiteral("share/benthor/manualbenthor.mht")).contains("image/png"));
}

void TestInstallation::iconsComeInEverySize() {
    const QString theme = QStringLiteral("share/icons/hicolor/");
    for (const char* const name :
         {"apps/benthor", "mimetypes/text-x-benthor-setup", "mimetypes/application-x-benthor-firmware"}) {
        const QString icon = QLatin1String(name);
        QSvgRenderer drawing(
            installed_.path(theme + QStringLiteral("scalable/") + icon + QStringLiteral(".svg")));
        QVERIFY2(drawing.isValid(), name);
        QCOMPARE(drawing.defaultSize(), QSize(256, 256));
        for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
            const QString path = QStringLiteral("%1%2x%2/%3.png").arg(theme).arg(size).arg(icon);
            const QImage picture(installed_.path(path));
            QCOMPARE(picture.size(), QSize(size, size));
            // Painted in the middle, and nothing at the corner.
            QCOMPARE(qAlpha(picture.pixel(size / 2, size / 2)), 255);
            QVERIFY2(qAlpha(picture.pixel(0, 0)) < 128, qPrintable(path));
        }
    }
}

void TestInstallation::filesAreKnownByTheirNames() {
    qputenv("XDG_DATA_DIRS", installed_.path(QStringLiteral("share")).toLocal8Bit());
    const Ended updated =
        runProgram(QStringLiteral("update-mime-database"), {installed_.path(QStringLiteral("share/mime"))});
    QCOMPARE(updated.status, 0);
    QCOMPARE(updated.err, QByteArray());
    const QMimeDatabase types;
    const auto typeOf = [&types](const char* name) {
        return types.mimeTypeForFile(QLatin1String(name), QMimeDatabase::MatchExtension);
    };
    QCOMPARE(typeOf("gdata.mit").name(), QStringLiteral("text/x-benthor-setup"));
    QCOMPARE(typeOf("GDATA.MIT").name(), QStringLiteral("text/x-benthor-setup"));
    QCOMPARE(typeOf("bpcsp2.sog").name(), QStringLiteral("application/x-benthor-firmware"));
    QVERIFY(typeOf("gdata.mit").inherits(QStringLiteral("text/plain")));
    for (const char* const name : {"gdata.mit", "bpcsp2.sog"}) {
        const QString icon =
            QStringLiteral("share/icons/hicolor/scalable/mimetypes/%1.svg").arg(typeOf(name).iconName());
        QVERIFY2(QFileInfo(installed_.path(icon)).isFile(), qPrintable(icon));
    }
}

/// Without comments, and what goes on in the next line joined.
QStringList TestInstallation::ruleLines() const {
    QStringList lines =
        QString::fromUtf8(installed_.bytes(kRule)).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    lines.removeIf([](const QString& line) { return line.startsWith(QLatin1Char('#')); });
    return lines;
}

void TestInstallation::theRuleComesBeforeTheSeatsRights() {
    QCOMPARE(installed_.files(QStringLiteral("lib/udev/rules.d")), QStringList{QFileInfo(kRule).fileName()});
    QVERIFY(QFileInfo(kRule).fileName().left(2).toInt() < 73);
}

/// The adapter is kept from the search for modems, and its port from that and for the seat's user: the same
/// ones.
void TestInstallation::theRuleNamesEachAdapterTwice() {
    static const QRegularExpression of(QStringLiteral(
        "^ATTR(S?)\\{idVendor\\}==\"([0-9a-f]{4})\", ATTR(S?)\\{idProduct\\}==\"([0-9a-f|]+)\", (.+)$"));
    QStringList adapters;
    QStringList ports;
    for (const QString& line : ruleLines()) {
        const QRegularExpressionMatch match = of.match(line);
        if (!match.hasMatch()) {
            continue;
        }
        QCOMPARE(match.captured(1), match.captured(3));
        const bool port = match.captured(1) == QLatin1String("S");
        QCOMPARE(match.captured(5), port ? QStringLiteral("TAG+=\"uaccess\", ENV{ID_MM_DEVICE_IGNORE}=\"1\", "
                                                          "ENV{ID_MM_PORT_IGNORE}=\"1\"")
                                         : QStringLiteral("ENV{ID_MM_DEVICE_IGNORE}=\"1\""));
        (port ? ports : adapters) += match.captured(2) + QLatin1Char(':') + match.captured(4);
    }
    QVERIFY(adapters.size() >= 5);
    QCOMPARE(ports, adapters);
}

void TestInstallation::theRuleIsWellFormed() {
    static const QRegularExpression rule(QStringLiteral(
        "^(\\w+(\\{\\w+\\})?(==|!=|=|\\+=)\"[^\"]*\")(, \\w+(\\{\\w+\\})?(==|!=|=|\\+=)\"[^\"]*\")*$"));
    static const QRegularExpression jump(QStringLiteral("GOTO=\"(\\w+)\""));
    const QStringList lines = ruleLines();
    for (const QString& line : lines) {
        QVERIFY2(rule.match(line).hasMatch(), qPrintable(line));
        if (const auto to = jump.match(line); to.hasMatch()) {
            const qsizetype label = lines.indexOf(QStringLiteral("LABEL=\"%1\"").arg(to.captured(1)));
            QVERIFY2(label > lines.indexOf(line), qPrintable(line));
        }
    }
}

QTEST_MAIN(TestInstallation)
#include "test_installation.moc"
