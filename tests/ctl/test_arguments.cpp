#include "ctl/arguments.h"
#include "ctl/help.h"

#include <QtTest>

using namespace benthor::ctl;

namespace {

Arguments read(const char* words) {
    const Understood understood = readArguments(QString::fromUtf8(words).split(QLatin1Char(' ')));
    if (!understood.error.isEmpty()) {
        qWarning("%s", qPrintable(understood.error));
    }
    return understood.arguments;
}

} // namespace

class TestArguments : public QObject {
    Q_OBJECT

private slots:
    void optionsOfAllStandBeforeAndBehindTheCommand();
    void aSelection();
    void aWordOfAFindIsAWord();
    void whatACommandTakes();
    void helpAndVersionWantNothingElse();
    void behindTwoDashesAllIsAFile();
    void wrongWords_data();
    void wrongWords();
    void everyCommandHasAHelpOfItsOwn();
};

void TestArguments::optionsOfAllStandBeforeAndBehindTheCommand() {
    for (const char* const words :
         {"--folder /a --json list", "list --json --folder /a", "--json list --folder=/a"}) {
        const Arguments arguments = read(words);
        QCOMPARE(arguments.folder, QStringLiteral("/a"));
        QVERIFY(arguments.json);
        QCOMPARE(arguments.command, QStringLiteral("list"));
        QVERIFY(!arguments.selection.isGiven());
    }
}

void TestArguments::aSelection() {
    const Selection named = read("check 12 D0000003 d4 12345678 odd").selection;
    QCOMPARE(named.ids, QStringList({"D0000012", "D0000003", "D0000004", "12345678", "odd"}));
    QVERIFY(named.isGiven());
    QVERIFY(!named.isConditional());
    const Selection narrowed = read("list 3 --since 2008-02 --until 2008").selection;
    QCOMPARE(narrowed.ids, QStringList{QStringLiteral("D0000003")});
    QCOMPARE(narrowed.since, QDate(2008, 2, 1));
    QCOMPARE(narrowed.until, QDate(2008, 12, 31));
    QVERIFY(read("list --all").selection.all);
    QVERIFY(read("list --all --since 2008").selection.isConditional());
}

void TestArguments::aWordOfAFindIsAWord() {
    const Understood understood =
        readArguments({QStringLiteral("list"), QStringLiteral("--find"), QStringLiteral("  blue\treef "),
                       QStringLiteral("--find=anna")});
    QCOMPARE(understood.error, QString());
    QCOMPARE(understood.arguments.selection.words, QStringList({"blue", "reef", "anna"}));
}

void TestArguments::whatACommandTakes() {
    QCOMPARE(read("show 7").id, QStringLiteral("D0000007"));
    QCOMPARE(read("samples D7").id, QStringLiteral("D0000007"));
    QCOMPARE(read("import a.txt b.txt").files, QStringList({"a.txt", "b.txt"}));
    QCOMPARE(read("verify").files, QStringList());
    QCOMPARE(read("verify a.mdb").files, QStringList{QStringLiteral("a.mdb")});
    const Arguments out = read("export --format csv --output - --force 1 2");
    QCOMPARE(out.format, ExportFormat::Csv);
    QCOMPARE(out.output, QStringLiteral("-"));
    QVERIFY(out.force);
    QCOMPARE(out.selection.ids, QStringList({"D0000001", "D0000002"}));
    for (const auto& [word, format] : {std::pair{"uddf", ExportFormat::Uddf},
                                       {"json", ExportFormat::Json},
                                       {"csv", ExportFormat::Csv},
                                       {"zxu", ExportFormat::Zxu}}) {
        QCOMPARE(read(QByteArray("export --output f --all --format ") + word).format, format);
    }
    const Arguments set = read("dataset /d --logbook anna 5");
    QCOMPARE(set.path, QStringLiteral("/d"));
    QCOMPARE(set.logbook, QStringLiteral("anna"));
    QCOMPARE(set.selection.ids, QStringList{QStringLiteral("D0000005")});
    QVERIFY(!read("merge /other").dryRun);
    QVERIFY(read("merge /other --dry-run").dryRun);
    QCOMPARE(read("merge /other").path, QStringLiteral("/other"));
    QCOMPARE(read("stats").command, QStringLiteral("stats"));
}

void TestArguments::helpAndVersionWantNothingElse() {
    QVERIFY(read("--help").help);
    QVERIFY(read("--version").version);
    QVERIFY(read("export --help").help);
    QCOMPARE(read("export --help").command, QStringLiteral("export"));
    QVERIFY(read("--help show").help);
}

void TestArguments::behindTwoDashesAllIsAFile() {
    QCOMPARE(read("import -- --all.txt -b.txt").files, QStringList({"--all.txt", "-b.txt"}));
}

void TestArguments::wrongWords_data() {
    QTest::addColumn<QString>("says");
    QTest::newRow("") << "A command is missing.";
    QTest::newRow("--json") << "A command is missing.";
    QTest::newRow("lsit") << "There is no command \"lsit\".";
    QTest::newRow("lsit --help") << "There is no command \"lsit\".";
    QTest::newRow("list --color") << "Unknown option 'color'.";
    QTest::newRow("list -l") << "Unknown option 'l'.";
    QTest::newRow("list --json=yes") << "Unexpected value after '--json'.";
    QTest::newRow("list --folder") << "Missing value after '--folder'.";
    QTest::newRow("--folder --json list") << "--folder wants a value.";
    QTest::newRow("--folder= list") << "--folder wants a value.";
    QTest::newRow("--folder a --folder b list") << "--folder stands there twice.";
    QTest::newRow("list --force") << "The command list has no option --force.";
    QTest::newRow("show 1 --all") << "The command show has no option --all.";
    QTest::newRow("show 1 --version") << "The command show has no option --version.";
    QTest::newRow("show") << "The command show wants the identifier of a dive.";
    QTest::newRow("show 1 2") << "The command show does not know what to do with \"2\".";
    QTest::newRow("stats 1") << "The command stats does not know what to do with \"1\".";
    QTest::newRow("import") << "The command import wants a file.";
    QTest::newRow("merge") << "The command merge wants a path.";
    QTest::newRow("merge a b") << "The command merge does not know what to do with \"b\".";
    QTest::newRow("list --since May") << "--since wants a date (2008, 2008-07 or 2008-07-15), not \"May\".";
    QTest::newRow("list --until 2008-02-30")
        << "--until wants a date (2008, 2008-07 or 2008-07-15), not \"2008-02-30\".";
    QTest::newRow("list --since 2009 --until 2008") << "--since lies behind --until.";
    QTest::newRow("list --find=") << "--find wants a word.";
    QTest::newRow("list 1 --all") << "--all and an identifier exclude each other.";
    QTest::newRow("export --all --output a") << "--format is missing: uddf, json, csv or zxu.";
    QTest::newRow("export --all --format csv") << "--output is missing: a file, or - for standard output.";
    QTest::newRow("export --all --format xml --output a")
        << "There is no format \"xml\": uddf, json, csv or zxu.";
    QTest::newRow("export --format csv --output a")
        << "The command export wants a selection of dives; --all means every one.";
    QTest::newRow("dataset") << "The command dataset wants a path.";
    QTest::newRow("dataset d") << "The command dataset wants a selection of dives; --all means every one.";
}

void TestArguments::wrongWords() {
    QFETCH(QString, says);
    const QString words = QString::fromLatin1(QTest::currentDataTag());
    QCOMPARE(readArguments(words.split(QLatin1Char(' '), Qt::SkipEmptyParts)).error, says);
}

void TestArguments::everyCommandHasAHelpOfItsOwn() {
    const QString all = helpText(QString());
    QCOMPARE(commandNames().size(), 10);
    for (const QString& name : commandNames()) {
        QVERIFY2(all.contains(QStringLiteral("\n  %1 ").arg(name)), qPrintable(name));
        QVERIFY2(helpText(name).startsWith(QStringLiteral("Usage: benthorctl %1").arg(name)),
                 qPrintable(name));
    }
    // Terminals have 80 columns.
    const QStringList topics = commandNames() + QStringList{QString()};
    for (const QString& name : topics) {
        for (const QString& line : helpText(name).split(QLatin1Char('\n'))) {
            QVERIFY2(line.size() <= 80, qPrintable(line));
        }
    }
}

QTEST_APPLESS_MAIN(TestArguments)
#include "test_arguments.moc"
