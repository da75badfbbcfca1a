#include "ctl/arguments.h"
#include "ctl/help.h"
#include "platform/files.h"
#include "tests/support/ranprogram.h"

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

using namespace benthor;
using namespace benthor::ctl;
using benthor::tests::Ended;
using benthor::tests::runProgram;

namespace {

/// What bash offers for the last of these words.
QStringList offered(const QStringList& words, const QString& folder = QDir::tempPath()) {
    const QString script = QStringLiteral("source \"$0\" || exit 9; COMP_WORDS=(benthorctl \"$@\"); "
                                          "COMP_CWORD=$#; _benthorctl; printf '%s\\n' \"${COMPREPLY[@]}\"");
    const Ended ended = runProgram(QStringLiteral("bash"),
                                   QStringList{QStringLiteral("--norc"), QStringLiteral("-c"), script,
                                               QStringLiteral(BENTHORCTL_COMPLETION)} +
                                       words,
                                   folder);
    if (ended.status != 0 || !ended.err.isEmpty()) {
        qWarning("%s", ended.err.constData());
        return {QStringLiteral("(failed)")};
    }
    QStringList all = QString::fromUtf8(ended.out).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    all.sort();
    return all;
}

/// The options that the help of a command names.
QStringList optionsOf(const QString& command) {
    static const QRegularExpression form(QStringLiteral("--[a-z-]+"));
    QSet<QString> options{QStringLiteral("--help")};
    for (auto matches = form.globalMatch(helpText(command)); matches.hasNext();) {
        options += matches.next().captured();
    }
    QStringList all(options.begin(), options.end());
    all.sort();
    return all;
}

} // namespace

/// The man page and the completion tell what the tool understands.
class TestCtlDocs : public QObject {
    Q_OBJECT

private slots:
    void theManPageIsWellFormed();
    void theManPageTellsOfEveryCommandAndOption();
    void commandsAreCompleted();
    void optionsOfACommandAreCompleted();
    void valuesAreCompleted();
    void filesAreCompletedByWhatACommandTakes();
};

void TestCtlDocs::theManPageIsWellFormed() {
    const Ended ended = runProgram(QStringLiteral("man"), {"--warnings", "-E", "UTF-8", "-l", "-Tutf8",
                                                           QStringLiteral(BENTHORCTL_MANPAGE)});
    QCOMPARE(ended.status, 0);
    QCOMPARE(ended.err, QByteArray());
    QVERIFY(ended.out.contains("BENTHORCTL(1)"));
}

void TestCtlDocs::theManPageTellsOfEveryCommandAndOption() {
    QString page = QString::fromUtf8(platform::readFile(QStringLiteral(BENTHORCTL_MANPAGE)).value());
    page.replace(QLatin1String("\\-"), QLatin1String("-"));
    for (const QString& command : commandNames()) {
        const QRegularExpression head(QStringLiteral("\n(\\.B[A-Z]* |\\\\fB)%1\\b").arg(command));
        QVERIFY2(head.match(page).hasMatch(), qPrintable(command));
        for (const QString& option : optionsOf(command)) {
            QVERIFY2(page.contains(option), qPrintable(option));
        }
    }
    QVERIFY(page.contains(QLatin1String("--version")));
}

void TestCtlDocs::commandsAreCompleted() {
    QStringList commands = commandNames();
    commands.sort();
    QCOMPARE(offered({""}), commands);
    QCOMPARE(offered({"s"}), QStringList({"samples", "show", "stats"}));
    QCOMPARE(offered({"--json", "--folder", "list", "ver"}), QStringList{QStringLiteral("verify")});
    QCOMPARE(offered({"x"}), QStringList());
}

/// As the help has them, which a test holds beside the tool itself.
void TestCtlDocs::optionsOfACommandAreCompleted() {
    for (const QString& command : commandNames()) {
        QCOMPARE(offered({command, "--"}), optionsOf(command));
        for (const QString& option : optionsOf(command)) {
            const QString error =
                readArguments({command, option, QStringLiteral("2008"), QStringLiteral("--help")}).error;
            QVERIFY2(!error.contains(QLatin1String("has no option")), qPrintable(error));
        }
    }
    QVERIFY(offered({"--"}).contains(QLatin1String("--version")));
    QCOMPARE(offered({"list", "--s"}), QStringList{QStringLiteral("--since")});
}

void TestCtlDocs::valuesAreCompleted() {
    QCOMPARE(offered({"export", "--format", ""}), QStringList({"csv", "json", "uddf", "zxu"}));
    QCOMPARE(offered({"export", "--format", "u"}), QStringList{QStringLiteral("uddf")});
    QCOMPARE(offered({"list", "--find", ""}), QStringList());
}

void TestCtlDocs::filesAreCompletedByWhatACommandTakes() {
    const QTemporaryDir folder;
    for (const char* const name : {"a dive.txt", "b.TXT", "rb.mdb", "notes.md"}) {
        QVERIFY(platform::writeFileWhole(folder.filePath(QLatin1String(name)), "x").ok());
    }
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("deep")));
    QCOMPARE(offered({"import", ""}, folder.path()), QStringList({"a dive.txt", "b.TXT", "deep"}));
    QCOMPARE(offered({"import", "a dive.txt", "b"}, folder.path()), QStringList{QStringLiteral("b.TXT")});
    QCOMPARE(offered({"verify", ""}, folder.path()), QStringList({"deep", "rb.mdb"}));
    QCOMPARE(offered({"merge", ""}, folder.path()), QStringList({"deep", "rb.mdb"}));
    QCOMPARE(offered({"dataset", ""}, folder.path()), QStringList{QStringLiteral("deep")});
    QCOMPARE(offered({"--folder", ""}, folder.path()), QStringList{QStringLiteral("deep")});
    QCOMPARE(offered({"export", "--output", "n"}, folder.path()), QStringList{QStringLiteral("notes.md")});
}

QTEST_GUILESS_MAIN(TestCtlDocs)
#include "test_ctldocs.moc"
