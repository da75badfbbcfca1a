#include "divescreen.h"

#include "divefiles/owedprofiles.h"
#include "platform/chart/chart.h"
#include "platform/grid/flexgrid.h"
#include "tests/profile/divetext.h"

#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>
#include <QtTest>

using namespace benthor;
using namespace benthor::profile;
using namespace benthor::viewer;
using benthor::platform::Chart;
using benthor::platform::FlexGrid;

namespace {
const QString kBadFile = QStringLiteral("bad file - delete record and try another");
const QString kBadRecord = QStringLiteral("Bad record. Use Delete to remove");
const QString kEndOfFile = QStringLiteral("end of file unexpected");
const QString kTooMany = QStringLiteral("Errors - Too many parameter  !");
} // namespace

class TestRbinterfaceLoad : public QObject {
    Q_OBJECT

private slots:
    void theGridHasThreeEmptyRowsBeforeTheFirstRecord();
    void theGridCarriesItsHeadings();
    void aMissingFileEndsTheLoadAndKeepsTheHead();
    void aProfileThatAnImportOwesComesFromOld();
    void whatIsNoFileCountsAsMissing_data();
    void whatIsNoFileCountsAsMissing();
    void aDiveWithoutGasRowsSaysSoAndLoads();
    void anUnexpectedEndOfTheFileIsToldAndShowsTheSamplesSoFar();
    void aLineOfTooManyFieldsIsTold();
    void aNullFileNameStillShowsTheHead();
    void aFieldThatIsMissingLeavesTheOthersAlone();
    void aClosedStoreStopsNoStepButTheFile();
    void withoutADisplayRowTheUnitInForceStays();
    void theTableTellsTheUnit();
    void theUnitOfThisRunWinsOverTheTable();
    void anEmptyIdentifierAdoptsTheLastDiveOfTheSystem();
    void anIdentifierWithAQuoteFailsWhereItIsUsed();
    void theSharedRecordsetHoldsTheGasRowsBehindTheLoad();
    void theSystemDecidesAboutAmbientPressure();
    void theViewIsMarkedOpenWhileItIsLoaded();
    void unloadingDuringTheReadingEndsIt();
    void unloadingUnderABoxOfTheReadingEndsIt();
    void unloadingUnderTheBoxOfTheGasesEndsTheLoad();
    void aHugeFileIsReadAsFarAsTheLimitsAllow();
};

void TestRbinterfaceLoad::theGridHasThreeEmptyRowsBeforeTheFirstRecord() {
    DiveScreen bench;
    bench.put(wholeDive({sampleLine(100), sampleLine(200), sampleLine(320)}));
    const FlexGrid& grid = control<FlexGrid>(bench.load(), "MSFlexGrid1");
    QCOMPARE(grid.rows(), 7); // the heading, three empty rows, three records
    QCOMPARE(grid.text(3, 1), QStringLiteral("0"));
    QCOMPARE(grid.text(4, 0), QStringLiteral("00:00:40"));
    QCOMPARE(grid.text(4, 1), QStringLiteral("9.38"));
    QCOMPARE(grid.text(6, 1), QStringLiteral("30"));
    QCOMPARE(grid.text(4, 2), QStringLiteral("Air"));
}

void TestRbinterfaceLoad::theGridCarriesItsHeadings() {
    DiveScreen bench;
    bench.put(wholeDive({sampleLine(100)}));
    const FlexGrid& grid = control<FlexGrid>(bench.load(), "MSFlexGrid1");
    QStringList headings;
    for (int column = 0; column < 17; ++column) {
        headings += grid.text(0, column);
    }
    QCOMPARE(
        headings.join(u' '),
        QStringLiteral("Time Depth Gas PO2 Ceiling Temp #errors Filter% Bat1 Bat2 HPdil HPo2 Cella Cellb "
                       "Cellc Setpoint CO2"));
    QCOMPARE(grid.text(0, 25), QStringLiteral("TPM1"));
    QCOMPARE(grid.cols(), 45);
    QCOMPARE(grid.columnWidthTwips(0), 720);
    QCOMPARE(grid.columnWidthTwips(44), 680);
}

void TestRbinterfaceLoad::aMissingFileEndsTheLoadAndKeepsTheHead() {
    DiveScreen bench;
    bench.put(wholeDive({sampleLine(100)}));
    QVERIFY(QFile::remove(bench.divePath()));
    rbinterface& screen = bench.show();
    QCOMPARE(bench.boxes.messages(), QStringList{kBadFile});
    QCOMPARE(textOf(screen, "txtdiveid"), QStringLiteral("D0000001"));
    QCOMPARE(textOf(screen, "txtmaxdepth"), QStringLiteral("23"));
    QCOMPARE(screen.windowTitle(), QStringLiteral("RB Profile - Wreck"));
    QVERIFY(!control<Chart>(screen, "MSChart1").isVisible());
    QVERIFY(!control<QCheckBox>(screen, "Check1").isChecked());
    QCOMPARE(control<FlexGrid>(screen, "MSFlexGrid1").rows(), 1);
    QVERIFY(!control<QCheckBox>(screen, "Check1").isEnabled());
    QVERIFY(!control<QAction>(screen, "mnuSpread").isEnabled());
    emit control<Chart>(screen, "MSChart1").released(5000, 5000);
    bool told = false;
    for (const QLabel* label : screen.findChildren<QLabel*>()) {
        told = told || (label->isVisible() && label->text().contains(QStringLiteral("dive.txt")));
    }
    QVERIFY(told);
}

/// Its copy into dbtxt failed when it was imported.
void TestRbinterfaceLoad::aProfileThatAnImportOwesComesFromOld() {
    DiveScreen bench;
    bench.put(wholeDive({sampleLine(100)}));
    const benthor::platform::ProgramFolder& folder = benthor::platform::ProgramFolder::current();
    QVERIFY(QDir().mkpath(folder.path(u"old")));
    QVERIFY(QFile::rename(bench.divePath(), folder.path(u"old", u"wreck.txt")));
    const auto owed =
        benthor::divefiles::owedprofile(folder, QStringLiteral("dive.txt"), QStringLiteral("wreck.txt"));
    QVERIFY(owed.has_value());
    benthor::divefiles::noteowed(benthor::process().database, *owed);
    rbinterface& screen = bench.load();
    QCOMPARE(bench.boxes.messages(), QStringList());
    QCOMPARE(control<FlexGrid>(screen, "MSFlexGrid1").rows(), 5);
    QVERIFY(QFile::exists(bench.divePath()));
}

void TestRbinterfaceLoad::whatIsNoFileCountsAsMissing_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("no name") << QString();
    QTest::newRow("a folder") << QStringLiteral("folder");
    QTest::newRow("the folder itself") << QStringLiteral("..");
    QTest::newRow("a name of two characters") << QStringLiteral("ab");
    QTest::newRow("a place elsewhere") << QStringLiteral("../rb.mdb");
}

void TestRbinterfaceLoad::whatIsNoFileCountsAsMissing() {
    QFETCH(QString, name);
    DiveScreen bench;
    bench.put(wholeDive({sampleLine(100)}));
    const QDir dbtxt = QFileInfo(bench.divePath()).dir();
    QVERIFY(dbtxt.mkdir(QStringLiteral("folder")));
    QVERIFY(QFile::copy(bench.divePath(), dbtxt.filePath(QStringLiteral("ab"))));
    bench.setField("dbtxtname", name);
    rbinterface& screen = bench.load();
    QCOMPARE(bench.boxes.messages(), QStringList{kBadFile});
    QCOMPARE(control<FlexGrid>(screen, "MSFlexGrid1").rows(), 1);
}

void TestRbinterfaceLoad::aDiveWithoutGasRowsSaysSoAndLoads() {
    DiveScreen bench;
    bench.put(wholeDive({sampleLine(100)}));
    bench.execute("DELETE FROM gas");
    rbinterface& screen = bench.load();
    QCOMPARE(bench.boxes.messages(), QStringList{kBadRecord});
    QCOMPARE(control<FlexGrid>(screen, "MSFlexGrid1").rows(), 5);
    QCOMPARE(control<FlexGrid>(screen, "MSFlexGrid1").text(4, 2), QStringLiteral("NX0"));
}

void TestRbinterfaceLoad::anUnexpectedEndOfTheFileIsToldAndShowsTheSamplesSoFar() {
    DiveScreen bench;
    bench.put(diveText({sampleLine(100), sampleLine(200)}));
    rbinterface& screen = bench.show();
    QCOMPARE(bench.boxes.messages(), QStringList{kEndOfFile});
    QCOMPARE(control<FlexGrid>(screen, "MSFlexGrid1").rows(), 6);
    QVERIFY(control<Chart>(screen, "MSChart1").isVisible());
}

void TestRbinterfaceLoad::aLineOfTooManyFieldsIsTold() {
    DiveScreen bench;
    bench.put(wholeDive({sampleLine(100), QByteArray(40, ','), sampleLine(200)}));
    bench.load();
    QCOMPARE(bench.boxes.messages(), QStringList{kTooMany});
}

void TestRbinterfaceLoad::aNullFileNameStillShowsTheHead() {
    DiveScreen bench;
    bench.put(wholeDive({sampleLine(100)}));
    bench.setField("dbtxtname", platform::Value());
    rbinterface& screen = bench.load();
    QCOMPARE(bench.boxes.messages(), QStringList{kBadFile});
    QCOMPARE(textOf(screen, "txtduration"), QStringLiteral("41:7"));
}

void TestRbinterfaceLoad::aFieldThatIsMissingLeavesTheOthersAlone() {
    DiveScreen bench;
    bench.put(wholeDive({sampleLine(100)}));
    bench.execute("ALTER TABLE main DROP COLUMN otu");
    bench.execute("ALTER TABLE main DROP COLUMN startdate");
    rbinterface& screen = bench.load();
    QCOMPARE(textOf(screen, "txtotu"), QString());
    QCOMPARE(textOf(screen, "txttimedown"), QString());
    QCOMPARE(textOf(screen, "txtinterval"), QStringLiteral("10"));
    QCOMPARE(control<FlexGrid>(screen, "MSFlexGrid1").rows(), 5);
}

void TestRbinterfaceLoad::aClosedStoreStopsNoStepButTheFile() {
    DiveScreen bench;
    bench.put(wholeDive({sampleLine(100)}));
    process().database.close();
    rbinterface& screen = bench.load();
    QCOMPARE(bench.boxes.messages(), QStringList{kBadFile});
    QCOMPARE(textOf(screen, "txtdiveid"), QStringLiteral("D0000001"));
}

void TestRbinterfaceLoad::withoutADisplayRowTheUnitInForceStays() {
    DiveScreen bench;
    bench.put(wholeDive({sampleLine(320)}));
    bench.execute("DELETE FROM Display");
    process().depthunit = QStringLiteral("Feet");
    rbinterface& screen = bench.load();
    QCOMPARE(process().depthunit, QStringLiteral("Feet"));
    QCOMPARE(control<FlexGrid>(screen, "MSFlexGrid1").text(4, 1), QStringLiteral("96.3"));
}

void TestRbinterfaceLoad::theTableTellsTheUnit() {
    DiveScreen bench;
    bench.put(wholeDive({sampleLine(320)}));
    bench.execute("UPDATE Display SET Display = 'Feet'");
    rbinterface& screen = bench.load();
    QCOMPARE(process().depthunit, QStringLiteral("Feet"));
    QCOMPARE(textOf(screen, "lblmaxdepth"), QStringLiteral("Feet"));
    QCOMPARE(textOf(screen, "txtmaxdepth"), QStringLiteral("76.77"));
    QVERIFY(control<QRadioButton>(screen, "Option1").isChecked());
    QVERIFY(control<QAction>(screen, "mnuunitsfeet").isChecked());
    QVERIFY(!control<QAction>(screen, "mnuunitsmeters").isChecked());
}

void TestRbinterfaceLoad::theUnitOfThisRunWinsOverTheTable() {
    DiveScreen bench;
    bench.put(wholeDive({sampleLine(320)}));
    bench.execute("UPDATE Display SET Display = 'Feet'");
    process().unitoverride = QStringLiteral("metre");
    rbinterface& screen = bench.load();
    QCOMPARE(process().depthunit, QStringLiteral("metre"));
    QVERIFY(control<QRadioButton>(screen, "Option2").isChecked());
    QCOMPARE(textOf(screen, "lblmaxdepth"), QStringLiteral("metres"));
}

void TestRbinterfaceLoad::anEmptyIdentifierAdoptsTheLastDiveOfTheSystem() {
    DiveScreen bench;
    bench.put(wholeDive({sampleLine(100)}));
    bench.execute("INSERT INTO main (DiveID, systemid) VALUES ('D0000009', 'Rebrether')");
    bench.execute("INSERT INTO main (DiveID, systemid) VALUES ('D0000000', 'KD3')");
    process().currentdiveid.clear();
    rbinterface& screen = bench.load();
    QCOMPARE(process().currentdiveid, QStringLiteral("D0000001"));
    QCOMPARE(textOf(screen, "txtdiveid"), QStringLiteral("D0000001"));
    QCOMPARE(control<FlexGrid>(screen, "MSFlexGrid1").rows(), 5);
}

void TestRbinterfaceLoad::anIdentifierWithAQuoteFailsWhereItIsUsed() {
    DiveScreen bench;
    bench.put(wholeDive({sampleLine(100)}));
    process().currentdiveid = QStringLiteral("D' OR 'a'='a");
    rbinterface& screen = bench.load();
    QCOMPARE(bench.boxes.messages(), QStringList{kBadFile});
    QCOMPARE(textOf(screen, "txtduration"), QString());
}

void TestRbinterfaceLoad::theSharedRecordsetHoldsTheGasRowsBehindTheLoad() {
    DiveScreen bench;
    bench.put(wholeDive({sampleLine(100)}));
    bench.load();
    platform::Recordset& rows = process().mainrecordset;
    QCOMPARE(rows.recordCount(), 2);
    rows.moveFirst();
    QCOMPARE(rows.value(u"GasN2").text(), QStringLiteral("79"));
}

void TestRbinterfaceLoad::theSystemDecidesAboutAmbientPressure() {
    DiveScreen bench;
    bench.put(wholeDive({sampleLine(100)}));
    QVERIFY(!control<QCheckBox>(bench.load(), "Check13").isChecked());
    QCOMPARE(process().divesystem, QStringLiteral("KD3"));
    bench.unload();
    process().divesystem = QStringLiteral("Morvalien");
    rbinterface& screen = bench.load();
    QCOMPARE(process().divesystem, QStringLiteral("Rebrether"));
    QVERIFY(control<QCheckBox>(screen, "Check13").isChecked());
    QVERIFY(!control<QCheckBox>(screen, "Check13").isEnabled());
    QVERIFY(control<QCheckBox>(screen, "Check1").isChecked());
}

void TestRbinterfaceLoad::theViewIsMarkedOpenWhileItIsLoaded() {
    DiveScreen bench;
    bench.put(wholeDive({sampleLine(100)}));
    QVERIFY(!process().diveviewopen);
    bench.load();
    QVERIFY(process().diveviewopen);
    bench.unload();
    QVERIFY(!process().diveviewopen);
}

void TestRbinterfaceLoad::unloadingDuringTheReadingEndsIt() {
    // Long enough that the reading lets events run several times.
    DiveScreen bench;
    const QByteArray line = sampleLine(100) + (",O" + QByteArray(300, '7')).repeated(4);
    bench.put(wholeDive(QByteArrayList(kMostSamples - 10, line)));
    QPointer<rbinterface> screen = new rbinterface;
    QTimer::singleShot(0, screen, [screen] { screen->unload(); });
    screen->load();
    QVERIFY(!screen.isNull());
    QVERIFY(screen->isUnloaded());
    QVERIFY(!process().diveviewopen);
    QCOMPARE(control<FlexGrid>(*screen, "MSFlexGrid1").rows(), 1);
    QVERIFY(!control<QCheckBox>(*screen, "Check3").isEnabled());
    QVERIFY(bench.boxes.messages().isEmpty());
    QCoreApplication::sendPostedEvents(screen, QEvent::DeferredDelete);
    QVERIFY(screen.isNull());
}

void TestRbinterfaceLoad::unloadingUnderABoxOfTheReadingEndsIt() {
    DiveScreen bench;
    bench.put(diveText({QByteArray(40, ','), sampleLine(100), QByteArray(40, ',')}));
    QPointer<rbinterface> screen = new rbinterface;
    bench.boxes.during([screen] { screen->unload(); });
    screen->load();
    QCOMPARE(bench.boxes.messages(), QStringList{kTooMany});
    QVERIFY(screen->isUnloaded());
    QCOMPARE(control<FlexGrid>(*screen, "MSFlexGrid1").rows(), 1);
    delete screen;
}

void TestRbinterfaceLoad::unloadingUnderTheBoxOfTheGasesEndsTheLoad() {
    DiveScreen bench;
    bench.put(wholeDive({sampleLine(100)}));
    bench.execute("DELETE FROM gas");
    QVERIFY(QFile::remove(bench.divePath()));
    QPointer<rbinterface> screen = new rbinterface;
    bench.boxes.during([screen] { screen->unload(); });
    screen->load();
    QCOMPARE(bench.boxes.messages(), QStringList{kBadRecord});
    delete screen;
}

void TestRbinterfaceLoad::aHugeFileIsReadAsFarAsTheLimitsAllow() {
    DiveScreen bench;
    bench.put(diveText({sampleLine(100)}));
    QFile file(bench.divePath());
    QVERIFY(file.resize(qint64(8) << 30));
    rbinterface& screen = bench.load();
    QCOMPARE(bench.boxes.messages(), QStringList{kEndOfFile});
    QCOMPARE(control<FlexGrid>(screen, "MSFlexGrid1").rows(), 5);
}

QTEST_MAIN(TestRbinterfaceLoad)
#include "test_rbinterface_load.moc"
