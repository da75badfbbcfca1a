#include "platform/screen/application.h"
#include "tests/packaging/installed.h"

#include <QImage>
#include <QRegularExpression>
#include <QXmlStreamReader>
#include <QtTest>

using namespace benthor;
using tests::Ended;
using tests::Installed;
using tests::runProgram;

/// What an installation tells of the program: man pages, completion, the menu's entry, the software centre's,
/// the changes.
class TestInstalledPages : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void everyProgramHasAManPageOfThisVersion();
    void manPagesTellEveryOption();
    void everyProgramHasACompletion();
    void completionsOfferEveryOption();
    void theMenuEntryIsValid();
    void theMenuEntryLeadsToWhatIsInstalled();
    void theMenuEntryIsThatOfTheWindows();
    void theMetadataAreValid();
    void theMetadataTellThisVersion();
    void theMetadataTellOfWhatIsInstalled();
    void thePicturesOfTheMetadataComeAlong();
    void theChangesAreOfThisVersion();
    void changesOfAnotherVersionAreRefused();
    void releasesKeepTheirDays();
    void theLicenceIsTold();

private:
    QStringList texts(const char* element, const char* attribute = nullptr) const;
    QString entry(const char* key) const;
    QStringList optionsOf(const QString& program) const;

    Installed installed_;
};

namespace {

const QString kId = QStringLiteral("example.benthor.benthor");
const QString kMetadata = QStringLiteral("share/metainfo/%1.metainfo.xml").arg(kId);
const QString kEntry = QStringLiteral("share/applications/%1.desktop").arg(kId);
const QStringList kPrograms{QStringLiteral("benthor"), QStringLiteral("benthorctl"), QStringLiteral("kdsim")};

QString pageOf(const QString& program) {
    return QStringLiteral("share/man/man1/%1.1.gz").arg(program);
}

/// What the tool makes of a text that stands in a file CHANGELOG.md.
Ended changesOf(const QByteArray& text, const QString& form, const QString& version) {
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("CHANGELOG.md")));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
        return {};
    }
    file.close();
    return runProgram(QStringLiteral(BENTHOR_CHANGES),
                      {form, file.fileName(), version, QStringLiteral("2026-03-04T05:06:07Z")});
}

} // namespace

/// What stands in each element of that name, or in an attribute of it.
QStringList TestInstalledPages::texts(const char* element, const char* attribute) const {
    QStringList all;
    QXmlStreamReader reader(installed_.bytes(kMetadata));
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == QLatin1String(element)) {
            all += attribute != nullptr ? reader.attributes().value(QLatin1String(attribute)).toString()
                                        : reader.readElementText(QXmlStreamReader::IncludeChildElements);
        }
    }
    return reader.hasError() ? QStringList{QStringLiteral("(no XML)")} : all;
}

QString TestInstalledPages::entry(const char* key) const {
    const QRegularExpression line(QStringLiteral("^%1=(.*)$").arg(QLatin1String(key)),
                                  QRegularExpression::MultilineOption);
    return line.match(QString::fromUtf8(installed_.bytes(kEntry))).captured(1);
}

/// The options that the help of a program names.
QStringList TestInstalledPages::optionsOf(const QString& program) const {
    static const QRegularExpression form(QStringLiteral("--[a-z][a-z-]*"));
    const Ended help =
        runProgram(installed_.path(QStringLiteral("bin/") + program), {QStringLiteral("--help")});
    QStringList options;
    for (auto found = form.globalMatch(QString::fromUtf8(help.out)); found.hasNext();) {
        options += found.next().captured();
    }
    options.removeDuplicates();
    return options;
}

void TestInstalledPages::initTestCase() {
    QVERIFY2(installed_.isLaid(), installed_.complaint().constData());
}

void TestInstalledPages::everyProgramHasAManPageOfThisVersion() {
    for (const QString& program : kPrograms) {
        const Ended page = runProgram(QStringLiteral("man"), {"--warnings", "-E", "UTF-8", "-l", "-Tutf8",
                                                              installed_.path(pageOf(program))});
        QCOMPARE(page.status, 0);
        QCOMPARE(page.err, QByteArray());
        QVERIFY(page.out.contains(program.toUpper().toLatin1() + "(1)"));
        QVERIFY(page.out.contains("Benthor " BENTHOR_VERSION));
        for (const QString& other : kPrograms) {
            const QByteArray link = "\n.BR " + other.toLatin1() + " (1)";
            QVERIFY2(other == program || installed_.unpacked(pageOf(program)).contains(link),
                     qPrintable(other));
        }
    }
}

/// That the page of benthorctl does has a test of its own: its options stand behind its commands.
void TestInstalledPages::manPagesTellEveryOption() {
    for (const QString& program : {kPrograms.first(), kPrograms.last()}) {
        const QStringList options = optionsOf(program);
        QVERIFY(options.contains(QLatin1String(program == kPrograms.first() ? "--folder" : "--port")));
        QString page = QString::fromUtf8(installed_.unpacked(pageOf(program)));
        page.replace(QLatin1String("\\-"), QLatin1String("-"));
        for (const QString& option : options) {
            QVERIFY2(page.contains(option), qPrintable(option));
        }
    }
}

void TestInstalledPages::everyProgramHasACompletion() {
    const QString folder = QStringLiteral("share/bash-completion/completions");
    QCOMPARE(installed_.files(folder), kPrograms);
    for (const QString& program : kPrograms) {
        const QString script =
            QStringLiteral("source \"$0\" && complete -p %1 && COMP_WORDS=(%1 --) && COMP_CWORD=1 && _%1 && "
                           "printf '%s\\n' \"${COMPREPLY[@]}\"")
                .arg(program);
        const Ended offered =
            runProgram(QStringLiteral("bash"), {QStringLiteral("--norc"), QStringLiteral("-c"), script,
                                                installed_.path(folder + QLatin1Char('/') + program)});
        QCOMPARE(offered.err, QByteArray());
        QVERIFY(offered.out.startsWith("complete "));
        QVERIFY2(offered.out.contains("\n--help\n") && offered.out.contains("\n--version\n"),
                 offered.out.constData());
    }
}

void TestInstalledPages::completionsOfferEveryOption() {
    for (const QString& program : {kPrograms.first(), kPrograms.last()}) {
        const QByteArray completion =
            installed_.bytes(QStringLiteral("share/bash-completion/completions/") + program);
        for (const QString& option : optionsOf(program)) {
            // One is the library's own, for every program that is made with it.
            QVERIFY2(option == QLatin1String("--help-all") || completion.contains(option.toLatin1()),
                     qPrintable(option));
        }
    }
}

void TestInstalledPages::theMenuEntryIsValid() {
    const Ended judged = runProgram(QStringLiteral("desktop-file-validate"), {installed_.path(kEntry)});
    QCOMPARE(judged.out + judged.err, QByteArray());
    QCOMPARE(judged.status, 0);
}

void TestInstalledPages::theMenuEntryLeadsToWhatIsInstalled() {
    QCOMPARE(entry("Exec"), QStringLiteral("benthor %f"));
    QVERIFY(QFileInfo(installed_.path(QStringLiteral("bin/benthor"))).isExecutable());
    QVERIFY(QFileInfo(installed_.path(
                          QStringLiteral("share/icons/hicolor/scalable/apps/%1.svg").arg(entry("Icon"))))
                .isFile());
    const QByteArray types = installed_.bytes(QStringLiteral("share/mime/packages/benthor.xml"));
    const QStringList named = entry("MimeType").split(QLatin1Char(';'), Qt::SkipEmptyParts);
    QCOMPARE(named.size(), 2);
    for (const QString& type : named) {
        QVERIFY2(types.contains("mime-type type=\"" + type.toLatin1() + '"'), qPrintable(type));
    }
}

void TestInstalledPages::theMenuEntryIsThatOfTheWindows() {
    QCOMPARE(QGuiApplication::desktopFileName() + QStringLiteral(".desktop"), QFileInfo(kEntry).fileName());
}

void TestInstalledPages::theMetadataAreValid() {
    const Ended judged =
        runProgram(QStringLiteral("appstreamcli"),
                   {QStringLiteral("validate"), QStringLiteral("--no-net"), installed_.path(kMetadata)});
    QVERIFY2(judged.status == 0, (judged.out + judged.err).constData());
}

void TestInstalledPages::theMetadataTellThisVersion() {
    const QStringList versions = texts("release", "version");
    QVERIFY(!versions.isEmpty());
    QCOMPARE(versions.first(), QStringLiteral(BENTHOR_VERSION));
    QVERIFY(QDate::fromString(texts("release", "date").first(), Qt::ISODate).isValid());
}

void TestInstalledPages::theMetadataTellOfWhatIsInstalled() {
    QCOMPARE(texts("id"), QStringList{kId});
    QCOMPARE(texts("launchable"), QStringList{QFileInfo(kEntry).fileName()});
    QCOMPARE(texts("icon"), QStringList{entry("Icon")});
    QCOMPARE(texts("mediatype"), entry("MimeType").split(QLatin1Char(';'), Qt::SkipEmptyParts));
    QCOMPARE(texts("binary"), QStringList{QStringLiteral("benthor")});
}

void TestInstalledPages::thePicturesOfTheMetadataComeAlong() {
    const QStringList places = texts("image");
    QVERIFY(!places.isEmpty());
    const QString site = QStringLiteral("https://benthor.example/");
    for (qsizetype i = 0; i < places.size(); ++i) {
        QVERIFY2(places[i].startsWith(site), qPrintable(places[i]));
        const QImage picture(
            installed_.path(QStringLiteral("share/doc/benthor/") + places[i].mid(site.size())));
        QCOMPARE(picture.size(),
                 QSize(texts("image", "width")[i].toInt(), texts("image", "height")[i].toInt()));
    }
}

void TestInstalledPages::theChangesAreOfThisVersion() {
    const QByteArray changes = installed_.unpacked(QStringLiteral("share/doc/benthor/changelog.gz"));
    const QStringList lines = QString::fromUtf8(changes).split(QLatin1Char('\n'));
    QCOMPARE(lines.first(), QStringLiteral("benthor (" BENTHOR_VERSION ") unstable; urgency=medium"));
    static const QRegularExpression form(
        QStringLiteral("^(|benthor \\([0-9.]+\\) unstable; urgency=medium|  \\S.*| -- Benthor maintainers "
                       "<maintainers@benthor\\.example>"
                       "  \\w{3}, \\d\\d \\w{3} \\d{4} \\d\\d:\\d\\d:\\d\\d \\+0000|    \\S.*)$"));
    for (const QString& line : lines) {
        QVERIFY2(form.match(line).hasMatch(), qPrintable(line));
        QVERIFY2(line.size() <= 80 || line.startsWith(QLatin1String(" -- ")), qPrintable(line));
    }
    QVERIFY(changes.contains("\n -- Benthor maintainers "));
    // It is what CHANGELOG.md tells.
    QVERIFY(changes.contains("  * Metres and feet, light and dark, and in the desktop's high contrast"));
}

void TestInstalledPages::changesOfAnotherVersionAreRefused() {
    const QByteArray text = "# Changes\n\n## 1.2.0, 2026-02-01\n\n- One.\n";
    QCOMPARE(changesOf(text, QStringLiteral("debian"), QStringLiteral("1.2.0")).status, 0);
    const Ended refused = changesOf(text, QStringLiteral("debian"), QStringLiteral("1.2.1"));
    QCOMPARE(refused.status, 1);
    QCOMPARE(refused.out, QByteArray());
    QVERIFY(refused.err.contains("1.2.1"));
    QCOMPARE(changesOf("# Changes\n", QStringLiteral("debian"), QStringLiteral("1.2.0")).status, 1);
}

void TestInstalledPages::releasesKeepTheirDays() {
    const QByteArray text = "# Changes\n\nWhat users notice.\n\n## 1.3.0, not released yet\n\n### Changes\n\n"
                            "- A *new* thing, <b> & `more`,\n  on two lines.\n\n### Mended\n\n- Another.\n\n"
                            "## 1.2.0, 2026-02-01\n\n- One.\n";
    QCOMPARE(changesOf(text, QStringLiteral("debian"), QStringLiteral("1.3.0")).out,
             QByteArray(
                 "benthor (1.3.0) unstable; urgency=medium\n\n  [ Changes ]\n"
                 "  * A new thing, <b> & more, on two lines.\n\n  [ Mended ]\n  * Another.\n\n"
                 " -- Benthor maintainers <maintainers@benthor.example>  Wed, 04 Mar 2026 05:06:07 +0000\n\n"
                 "benthor (1.2.0) unstable; urgency=medium\n\n  * One.\n\n"
                 " -- Benthor maintainers <maintainers@benthor.example>  Sun, 01 Feb 2026 12:00:00 +0000\n"));
    const QByteArray told = changesOf(text, QStringLiteral("appstream"), QStringLiteral("1.3.0")).out;
    QVERIFY(told.contains("<release version=\"1.3.0\" date=\"2026-03-04\" type=\"development\">"));
    QVERIFY(told.contains("<li>A new thing, &lt;b&gt; &amp; more, on two lines.</li>"));
    QVERIFY(told.contains("<release version=\"1.2.0\" date=\"2026-02-01\" type=\"stable\">"));
}

void TestInstalledPages::theLicenceIsTold() {
    const QByteArray copyright = installed_.bytes(QStringLiteral("share/doc/benthor/copyright"));
    QVERIFY(copyright.contains("License: GPL-3.0-or-later\n"));
    QVERIFY(copyright.contains("/usr/share/common-licenses/GPL-3"));
    QCOMPARE(texts("project_license"), QStringList{QStringLiteral("GPL-3.0-or-later")});
}

int main(int argc, char** argv) {
    platform::Application application(argc, argv);
    TestInstalledPages test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_installedpages.moc"
