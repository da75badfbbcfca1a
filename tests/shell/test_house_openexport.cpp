// Dives leave in open formats, from the dive screen and from the list.

#include "exports/screens/exportbox.h"
#include "tests/shell/divesstage.h"

#include <QAction>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QXmlStreamReader>

using namespace benthor;
using namespace benthor::tests;

namespace {

/// The names of the dives in a UDDF file, as its notes and links have them: what the elements `dive` are
/// called by.
QStringList divesOfUddf(const QByteArray& text) {
    QStringList ids;
    QXmlStreamReader xml(text);
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == QLatin1String("dive")) {
            ids += xml.attributes().value(QStringLiteral("id")).toString();
        }
    }
    return xml.hasError() ? QStringList{xml.errorString()} : ids;
}

QJsonArray divesOfJson(const QByteArray& text) {
    return QJsonDocument::fromJson(text).object().value(QStringLiteral("dives")).toArray();
}

/// Triggers an entry and answers the dialog with a file of the program folder; gives what stands in it then.
QByteArray exported(DivesProgram& program, const char* screen, const char* entry, const char* name) {
    program.dialogs.answerFile(program.folder.path(QLatin1String(name)));
    control<QAction>(screen, entry)->trigger();
    return program.folder.get(QLatin1String(name));
}

QStringList filesBesideTheFolder(const DivesProgram& program) {
    return QDir(program.folder.root()).entryList({QStringLiteral(".benthor-*")}, QDir::Files | QDir::Hidden);
}

} // namespace

class TestHouseOpenExport : public QObject {
    Q_OBJECT

private slots:
    void theDiveShownLeavesAsUddf();
    void whatIsTypedInOpenDetailsGoesOut();
    void theListGivesTheBlueDivesOrAll();
    void eachEndingHasItsFormat_data();
    void eachEndingHasItsFormat();
    void anUnknownEndingAndACancelledDialogWriteNothing();
    void aFolderThatCannotBeWrittenIsTold();
    void aDiveThatIsGoneIsNotExported();
    void anotherStoreIsNotExported();
    void whatIsLostIsTold();
    void manyLossesAreCounted();
};

void TestHouseOpenExport::theDiveShownLeavesAsUddf() {
    DivesProgram program(2);
    program.open(2);
    program.dialogs.clear();
    const QByteArray uddf = exported(program, "rbinterface", "mnuexportopen", "one.uddf");
    QCOMPARE(divesOfUddf(uddf), QStringList{QStringLiteral("d-") + diveid(2)});
    const auto& asked = program.dialogs.asked();
    QCOMPARE(asked.size(), 2);
    QCOMPARE(asked[0].kind, "save");
    QCOMPARE(asked[0].folder, program.folder.path(diveid(2)));
    QVERIFY(asked[0].filter.startsWith(QLatin1String("UDDF (*.uddf)|*.uddf|")));
    QVERIFY(asked[1].text.startsWith(QLatin1String("The export is complete")));
    QVERIFY(asked[1].below.contains(QLatin1String("1 dive written")));
    QVERIFY(shown("rbinterface"));
    QVERIFY(filesBesideTheFolder(program).isEmpty());
}

void TestHouseOpenExport::whatIsTypedInOpenDetailsGoesOut() {
    DivesProgram program(1);
    program.open(1);
    program.openDetails();
    control<QPlainTextEdit>("rbdetails", "txtdivenote")->setPlainText(QStringLiteral("seen: two seals"));
    QVERIFY(exported(program, "rbinterface", "mnuexportopen", "one.uddf").contains("seen: two seals"));
    process().database.execute("DROP TABLE buddylist"); // what the details need is gone
    control<QPlainTextEdit>("rbdetails", "txtdivenote")->setPlainText(QStringLiteral("three"));
    program.dialogs.clear();
    QVERIFY(exported(program, "rbinterface", "mnuexportopen", "two.uddf").isEmpty());
    QVERIFY(program.dialogs.messages().value(0).startsWith(QLatin1String("Nothing was exported.")));
    program.dialogs.dropFiles();
    process().database.execute("CREATE TABLE buddylist (diveid TEXT, buddylist TEXT)");
}

void TestHouseOpenExport::theListGivesTheBlueDivesOrAll() {
    DivesProgram program(3);
    program.choose(2);
    QTest::mouseClick(program.list().viewport(), Qt::LeftButton, Qt::ControlModifier, program.cell(3));
    QCOMPARE(divesOfUddf(exported(program, "rbmain", "mnuexport", "blue.uddf")).size(), 2);
    QCOMPARE(program.dialogs.asked().last().below.split(u'\n').value(2), "2 dives written");
    QCOMPARE(divesOfUddf(exported(program, "rbmain", "mnuexportall", "all.uddf")).size(), 3);
    program.choose(1);
    program.dialogs.clear();
    QCOMPARE(divesOfUddf(exported(program, "rbmain", "mnuexport", "first.uddf")).size(), 1);
    QCOMPARE(program.dialogs.asked().first().folder, program.folder.path(program.list().text(1, 0)));
}

void TestHouseOpenExport::eachEndingHasItsFormat_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("type"); ///< picked in the dialog
    QTest::addColumn<QString>("written");
    QTest::newRow("typed") << "x.json" << -1 << "x.json";
    QTest::newRow("picked") << "x" << 1 << "x.json";
    QTest::newRow("neither") << "x" << -1 << "x.uddf";
    QTest::newRow("the samples") << "x" << 2 << "x.csv";
    QTest::newRow("DL7") << "x" << 3 << "x.zxu";
}

void TestHouseOpenExport::eachEndingHasItsFormat() {
    QFETCH(QString, name);
    QFETCH(int, type);
    QFETCH(QString, written);
    DivesProgram program(2);
    if (type < 0) {
        program.dialogs.answerFile(program.folder.path(name));
    } else {
        program.dialogs.answerFile(program.folder.path(name), type);
    }
    control<QAction>("rbmain", "mnuexportall")->trigger();
    const QByteArray text = program.folder.get(written);
    if (written.endsWith(QLatin1String("json"))) {
        QCOMPARE(divesOfJson(text).size(), 2);
    } else if (written.endsWith(QLatin1String("uddf"))) {
        QCOMPARE(divesOfUddf(text).size(), 2);
    } else if (written.endsWith(QLatin1String("csv"))) {
        QVERIFY(text.startsWith("id,time_s,depthpos,"));
        QVERIFY(text.contains("\r\nD0000002,"));
    } else {
        QCOMPARE(text.count("\nZDH|"), 2);
    }
}

void TestHouseOpenExport::anUnknownEndingAndACancelledDialogWriteNothing() {
    DivesProgram program(1);
    const QStringList before = QDir(program.folder.root()).entryList(QDir::AllEntries | QDir::Hidden);
    program.dialogs.clear();
    control<QAction>("rbmain", "mnuexport")->trigger(); // cancelled
    QVERIFY(program.dialogs.messages().isEmpty());
    QCOMPARE(QDir(program.folder.root()).entryList(QDir::AllEntries | QDir::Hidden), before);
    QCOMPARE(exports::formatNamed(u"doc"), std::nullopt);
    QCOMPARE(exports::formatNamed(u"JSON"), exports::DiveFormat::Json);
}

void TestHouseOpenExport::aFolderThatCannotBeWrittenIsTold() {
    DivesProgram program(1);
    program.dialogs.clear();
    program.dialogs.answerFile(QStringLiteral("/nowhere/x.uddf"));
    control<QAction>("rbmain", "mnuexport")->trigger();
    QCOMPARE(program.dialogs.messages().size(), 1);
    QVERIFY(program.dialogs.messages().first().startsWith(
        QLatin1String("The dives were not exported; no file was written.\n\n")));
    QVERIFY(program.dialogs.messages().first().contains(QLatin1String("/nowhere")));
}

void TestHouseOpenExport::aDiveThatIsGoneIsNotExported() {
    DivesProgram program(2);
    program.open(2);
    process().database.execute("DELETE FROM main WHERE DiveID = 'D0000002'"); // by another hand
    program.dialogs.clear();
    QVERIFY(exported(program, "rbinterface", "mnuexportopen", "x.uddf").isEmpty());
    QCOMPARE(program.dialogs.messages(),
             QStringList{QStringLiteral("The dive D0000002 that is shown here is no longer in the store.")});
}

void TestHouseOpenExport::anotherStoreIsNotExported() {
    DivesProgram program(1);
    QVERIFY(QFile::copy(program.folder.path("rb.mdb"), program.folder.path("other.mdb")));
    program.dialogs.answerFile(program.folder.path("other.mdb"));
    control<QAction>("main", "mnuOpen")->trigger();
    QVERIFY(!control<QAction>("rbmain", "mnuexport")->isEnabled());
    QVERIFY(!control<QAction>("rbmain", "mnuexportall")->isEnabled());
}

void TestHouseOpenExport::whatIsLostIsTold() {
    DivesProgram program(1);
    const QString file = program.field(1, u"dbtxtname");
    QVERIFY(QFile::remove(program.folder.path("dbtxt/" + file)));
    program.dialogs.clear();
    exported(program, "rbmain", "mnuexport", "x.uddf");
    QVERIFY(program.dialogs.asked().last().text.contains(QLatin1String("is not in it")));
    QVERIFY(program.dialogs.asked().last().below.contains(
        QStringLiteral("without samples: D0000001: Its file %1 is not in the folder dbtxt.").arg(file)));
}

void TestHouseOpenExport::manyLossesAreCounted() {
    exports::LossReport losses;
    losses.dives = 40;
    for (int number = 1; number <= 40; ++number) {
        losses.addWithoutSamples(diveid(number), QStringLiteral("none"));
    }
    const QString text = exports::exportedText(QStringLiteral("/x/y.uddf"), losses);
    QVERIFY(
        text.startsWith(QLatin1String("/x/y.uddf\n\n40 dives written\nwithout samples: D0000001: none\n")));
    QVERIFY(text.endsWith(QLatin1String("\nand 29 more")));
    QCOMPARE(text.count(u'\n'), 2 + 12);
}

int main(int argc, char** argv) {
    return runAsProgram<TestHouseOpenExport>(argc, argv);
}
#include "test_house_openexport.moc"
