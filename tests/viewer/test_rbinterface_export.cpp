// Files and paper that leave the dive screen.

#include "divescreen.h"
#include "platform/chart/chart.h"
#include "platform/clock.h"
#include "platform/grid/flexgrid.h"
#include "platform/look/look.h"
#include "store/units.h"
#include "tests/profile/divetext.h"
#include "tests/support/smalldisk.h"
#include "viewer/screens/legendstrip.h"

#include <QCheckBox>
#include <QImage>
#include <QLineEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QSvgRenderer>
#include <QtTest>

using namespace benthor;
using namespace benthor::profile;
using namespace benthor::viewer;
using benthor::platform::Chart;
using benthor::platform::FlexGrid;

namespace {

const QString kCsvFilter = QStringLiteral("Text Files (*.csv)|*.csv|All Files (*.*)|*.*");
const QString kZxuFilter = QStringLiteral("Text Files (*.zxu)|*.zxu|All Files (*.*)|*.*");

struct Stage {
    explicit Stage(int samples)
        : Stage("metre", samples) {}
    explicit Stage(const char* unit = "metre", int samples = 30) {
        bench.put(steadyDive(samples));
        bench.execute(
            "UPDATE main SET startdate = '2017-09-27 01:02:03', finisheddate = '2017-09-27 01:42:03'");
        bench.execute("UPDATE gas SET Gasstat = '1'");
        process().unitoverride = QLatin1String(unit);
        screen = &bench.show();
    }
    QString file(const char* name) const { return folder.filePath(QLatin1String(name)); }
    QByteArray read(const char* name) const {
        QFile source(file(name));
        return source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray("(missing)");
    }
    void trigger(const char* entry) const { control<QAction>(*screen, entry).trigger(); }
    void click(const char* button) const { control<QPushButton>(*screen, button).click(); }
    /// How many pages a PDF has.
    int pages(const char* name) const {
        const QByteArray pdf = read(name);
        return pdf.startsWith("%PDF") ? static_cast<int>(pdf.count("/Type /Page\n")) : 0;
    }

    QTemporaryDir folder;
    DiveScreen bench;
    rbinterface* screen;
};

/// Parts of an image that are not its ground.
int inkOf(const QImage& image) {
    int ink = 0;
    for (int y = 0; y < image.height(); y += 3) {
        for (int x = 0; x < image.width(); x += 3) {
            ink += image.pixel(x, y) == image.pixel(0, 0) ? 0 : 1;
        }
    }
    return ink;
}

} // namespace

class TestRbinterfaceExport : public QObject {
    Q_OBJECT

private slots:
    void csvHasALineForEachGas() {
        Stage stage;
        stage.bench.boxes.answerFile(stage.file("dive.csv"));
        stage.click("cmdSave");
        const QByteArrayList lines = stage.read("dive.csv").split('\n');
        QCOMPARE(lines.size(), 4); // headings, two gases, nothing behind the last line end
        QVERIFY(lines[0].startsWith("Dive ID,Record ID,Depth,Gas,PPO2,") && lines[0].endsWith("T-stick8\r"));
        QCOMPARE(lines[1], QByteArray("D0000001,0,79,660,1,\r"));
        QCOMPARE(lines[2], QByteArray("D0000001,1,68,465,1,\r"));
        QCOMPARE(stage.bench.boxes.messages(),
                 QStringList({"Dive Record save as file " + stage.file("dive.csv")}));
    }

    void csvInFeetGivesTheHelium() {
        Stage stage("Feet");
        stage.bench.boxes.answerFile(stage.file("dive.csv"));
        stage.trigger("mnudivesavecsv");
        QVERIFY(stage.read("dive.csv").contains("\r\nD0000001,0,0,660,1,\r\nD0000001,1,0,465,1,\r\n"));
    }

    void theFilterIsSetBehindTheDialog() {
        Stage stage;
        stage.click("cmdSave");
        stage.click("cmdSave");
        QTest::mouseClick(&control<QWidget>(*stage.screen, "Picture2"), Qt::LeftButton);
        QStringList filters;
        for (const auto& asked : stage.bench.boxes.asked()) {
            filters << asked.filter;
        }
        QCOMPARE(filters, QStringList({"", kCsvFilter, kCsvFilter}));
    }

    void aCancelledCsvOrOneThatCannotBeWrittenEndsWithoutAWord() {
        Stage stage;
        stage.click("cmdSave");
        stage.bench.boxes.answerFile(stage.file("no/such/folder.csv"));
        stage.click("cmdSave");
        QVERIFY(stage.bench.boxes.messages().isEmpty());
    }

    void danGivesItsFiveLinesAndTheUnitStaysMetre() {
        Stage stage("Feet");
        stage.bench.boxes.answerFile(stage.file("dive.zxu"));
        stage.click("Command4");
        QCOMPARE(stage.read("dive.zxu"), bytesOfTestData("exports/five-lines.zxu"));
        QVERIFY(stage.bench.boxes.messages().isEmpty());
        QCOMPARE(stage.bench.boxes.asked().first().filter, kZxuFilter);
        QCOMPARE(process().depthunit, "metre");
        QCOMPARE(process().unitoverride, "Feet"); // so a fresh load resolves it anew
        control<FlexGrid>(*stage.screen, "MSFlexGrid1").setRow(10);
        QVERIFY(control<QWidget>(*stage.screen, "Text8").property("text").toString().contains("metre"));
    }

    void danTakesIdAndIntervalAsShown() {
        Stage stage;
        control<QLineEdit>(*stage.screen, "txtinterval").setText(QStringLiteral("7"));
        stage.bench.boxes.answerFile(stage.file("dive.zxu"));
        stage.trigger("mnudivedan");
        QVERIFY(stage.read("dive.zxu").contains("|I|Q7S|"));
    }

    void danTakesWhatIsTypedIntoTheHead() {
        Stage stage;
        stage.screen->activateWindow();
        for (const auto& [name, typed] : {std::pair{"txtdiveid", "D0000077"}, {"txtinterval", "8"}}) {
            auto& box = control<QLineEdit>(*stage.screen, name);
            QVERIFY(!box.isReadOnly() && !box.hasFrame());
            QTest::mouseClick(&box, Qt::LeftButton);
            QVERIFY(box.hasFocus());
            QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClicks(&box, QLatin1String(typed));
        }
        stage.bench.boxes.answerFile(stage.file("dive.zxu"));
        QTest::mouseClick(&control<QWidget>(*stage.screen, "Picture11"), Qt::LeftButton);
        QVERIFY(stage.read("dive.zxu").contains("ZDH|1|D0000077|I|Q8S|"));
        stage.bench.boxes.answerFile(stage.file("dive.csv"));
        stage.click("cmdSave"); // the gases are those of the dive, whatever was typed
        QVERIFY(stage.read("dive.csv").contains("\r\nD0000001,0,79,660,1,\r\n"));
    }

    void aDiveWithoutGasesEndsBothFilesBeforeTheirLinesAndSaysNothing() {
        Stage stage;
        stage.bench.execute("DELETE FROM gas");
        stage.bench.boxes.answerFile(stage.file("dive.zxu"));
        stage.click("Command4");
        QCOMPARE(stage.read("dive.zxu"), bytesOfTestData("exports/five-lines.zxu"));
        stage.bench.boxes.answerFile(stage.file("dive.csv"));
        stage.click("cmdSave");
        QCOMPARE(stage.read("dive.csv").count('\n'), 1);
        QVERIFY(stage.read("dive.csv").startsWith("Dive ID,Record ID,"));
        QCOMPARE(stage.bench.boxes.messages(), QStringList());
    }

    void aCancelledDanSaysSo() {
        Stage stage;
        QTest::mouseClick(&control<QWidget>(*stage.screen, "Command4"), Qt::LeftButton);
        QCOMPARE(stage.bench.boxes.messages(), QStringList({"Data is not saved to a file....!!"}));
        QCOMPARE(process().depthunit, "metre");
    }

    void aDiveWithoutAStartLeavesAnEmptyFile() {
        Stage stage;
        control<QLineEdit>(*stage.screen, "txttimedown").setText(QString());
        stage.bench.boxes.answerFile(stage.file("dive.zxu"));
        stage.click("Command4");
        QCOMPARE(stage.read("dive.zxu"), QByteArray());
        QVERIFY(stage.bench.boxes.messages().isEmpty());
    }

    void theWholeProfileIsMetricInAnyUnit() {
        const platform::FixedClock clock(QDateTime({2026, 2, 3}, {4, 5, 6}));
        QByteArrayList texts;
        for (const char* unit : {"metre", "Feet"}) {
            Stage stage(unit);
            stage.bench.boxes.answerFile(stage.file("full.csv"));
            stage.trigger("mnufullcsv");
            stage.bench.boxes.answerFile(stage.file("full.zxu"));
            stage.trigger("mnufullzxu");
            QVERIFY(stage.bench.boxes.messages()[0].startsWith("The profile was saved as "));
            texts << stage.read("full.csv") + stage.read("full.zxu");
        }
        QCOMPARE(texts[0], texts[1]);
        QVERIFY(texts[0].startsWith("Time,Depth (m),Gas,PO2 (bar),Ceiling (m),"));
        QVERIFY(texts[0].contains("\r\n00:00:40,0.94,Air,1.30,6,20,90,"));
        QVERIFY(texts[0].contains("FSH|^~<>{}|KDBN01|ZXU|20260203040506|\r\n"));
        QVERIFY(texts[0].contains("ZDT|1|1|28.12|20170927014203|20|\r\n"));
        QCOMPARE(texts[0].count("\r\n"), 1 + 30 + 5 + 30 + 2);
    }

    void aFileThatIsGoneOrAnotherOneIsToldAndNothingIsWritten_data() {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("reason");
        QTest::newRow("gone") << QByteArray() << "dive.txt, is not in the folder dbtxt.";
        QTest::newRow("shorter") << steadyDive(12) << "dive.txt, is no longer the one that is shown.";
        QTest::newRow("deeper") << steadyDive(30).replace("1,300,", "1,301,")
                                << "dive.txt, is no longer the one that is shown.";
    }

    void aFileThatIsGoneOrAnotherOneIsToldAndNothingIsWritten() {
        QFETCH(QByteArray, text);
        QFETCH(QString, reason);
        Stage stage("Feet");
        QVERIFY(QFile::remove(stage.bench.divePath()));
        if (!text.isEmpty()) {
            QFile other(stage.bench.divePath());
            QVERIFY(other.open(QIODevice::WriteOnly) && other.write(text) == text.size());
        }
        for (const char* entry : {"mnufullcsv", "mnufullzxu"}) {
            stage.bench.boxes.answerFile(stage.file("full"));
            stage.trigger(entry);
            QCOMPARE(stage.read("full"), QByteArray("(missing)"));
            QVERIFY(stage.bench.boxes.messages().last().contains(reason));
            QVERIFY(!stage.bench.boxes.messages().last().contains("was saved"));
        }
    }

    void aProfileThatCannotBeWrittenSaysWhy() {
        Stage stage;
        stage.bench.boxes.answerFile(stage.file("no/such/folder.csv"));
        stage.trigger("mnufullcsv");
        QVERIFY(stage.bench.boxes.messages().first().startsWith("The profile could not be saved as "));
    }

    void theChartIsSavedAsPngSvgAndPdf() {
        Stage stage;
        auto& chart = control<Chart>(*stage.screen, "MSChart1");
        const QImage before = chart.grab().toImage();
        for (const char* name : {"chart.png", "chart.svg", "chart.pdf"}) {
            stage.bench.boxes.answerFile(stage.file(name));
            stage.trigger("mnusavechart");
            QCOMPARE(stage.bench.boxes.messages().last(), "The chart was saved as " + stage.file(name) + ".");
        }
        const QImage png(stage.file("chart.png"));
        QCOMPARE(png.width(), 2 * chart.width());
        QVERIFY(inkOf(png) > 500);
        const QByteArray svg = stage.read("chart.svg");
        QVERIFY(svg.contains("<svg") && svg.contains("D0000001") && !svg.contains("<image"));
        QVERIFY(QSvgRenderer(svg).isValid());
        QCOMPARE(stage.pages("chart.pdf"), 1);
        QCOMPARE(chart.grab().toImage(), before); // the screen is as it was
    }

    void theChartIsSavedAsTheTypeThatWasChosen() {
        Stage stage;
        const auto save = [&stage](const char* typed, int type) {
            stage.bench.boxes.answerFile(stage.file(typed), type);
            stage.trigger("mnusavechart");
        };
        save("one", 1);
        QVERIFY(stage.read("one.svg").contains("<svg"));
        save("two.png", 2);
        QVERIFY(stage.read("two.pdf").startsWith("%PDF"));
        save("three.svg", 0); // the dialog opens with the first: what was typed tells more
        QVERIFY(stage.read("three.svg").contains("<svg"));
        save("four", 0);
        QVERIFY(stage.read("four.png").startsWith("\x89PNG"));
        QVERIFY(!stage.bench.boxes.asked().first().folder.contains(u'.' + QStringLiteral("png")));
        QCOMPARE(QDir(stage.folder.path()).entryList(QDir::Files).size(), 4);
    }

    void exportsOfOurOwnGetTheirEndingAndAskBeforeTheyReplace() {
        Stage stage;
        QFile there(stage.file("full.csv"));
        QVERIFY(there.open(QIODevice::WriteOnly) && there.write("mine") == 4);
        there.close();
        stage.bench.boxes.answerFile(stage.file("full"));
        stage.trigger("mnufullcsv"); // No, and then no other name
        QCOMPARE(stage.read("full.csv"), QByteArray("mine"));
        QStringList asked;
        for (const auto& one : stage.bench.boxes.asked()) {
            asked << one.kind;
        }
        QCOMPARE(asked, QStringList({"save", "confirm", "save"}));
        QVERIFY(stage.bench.boxes.asked()[1].text.contains(stage.file("full.csv")));
        QVERIFY(stage.bench.boxes.asked()[1].noIsDefault);
        stage.bench.boxes.answerFile(stage.file("full"));
        stage.bench.boxes.answer(true);
        stage.trigger("mnufullcsv");
        QVERIFY(stage.read("full.csv").startsWith("Time,Depth"));
        QCOMPARE(stage.bench.boxes.messages().last(),
                 "The profile was saved as " + stage.file("full.csv") + ".");
        stage.bench.boxes.clear();
        stage.bench.boxes.answerFile(stage.file("full.csv")); // about this one the dialog has asked
        stage.trigger("mnufullcsv");
        QCOMPARE(stage.bench.boxes.asked().size(), 2);
        stage.bench.boxes.answerFile(stage.file("told"));
        stage.click("cmdSave");
        QVERIFY(stage.read("told").startsWith("Dive ID,")); // the told ones write the chosen name
        stage.bench.boxes.answerFile(stage.file("dan"));
        stage.click("Command4");
        QVERIFY(stage.read("dan").startsWith("FSH|"));
    }

    void aPictureCarriesItsWholeLegendAndReadsFromADarkDesktop() {
        look::setTheme(look::Theme::Dark);
        {
            Stage stage;
            stage.screen->resize(1024, 700);
            for (const char* box : {"Check3", "Check9", "Check10", "Check11", "Check12"}) {
                control<QCheckBox>(*stage.screen, box).setChecked(true);
            }
            auto& grey = control<QAction>(*stage.screen, "mnuColorGrey");
            grey.trigger();
            grey.trigger(); // the white scheme, which is for printing
            stage.bench.boxes.answerFile(stage.file("chart.svg"));
            stage.trigger("mnusavechart");
            const QByteArray svg = stage.read("chart.svg");
            const auto& legend = control<LegendStrip>(*stage.screen, "legend");
            QVERIFY(legend.entries().size() >= 8);
            for (const LegendEntry& entry : legend.entries()) {
                QVERIFY2(svg.contains('>' + entry.name.toUtf8()), qPrintable(entry.name));
            }
            QVERIFY(!svg.contains(">+"));
            const QByteArray ink = look::tokens(look::Theme::Light).textquiet.name().toUtf8();
            const QByteArray faint = look::tokens(look::Theme::Dark).textquiet.name().toUtf8();
            QVERIFY(svg.contains(ink) && !svg.contains(faint));
        }
        look::setTheme(look::Theme::Light);
    }

    void aChartThatTheDiskDoesNotTakeLeavesThePictureThatIsThere() {
        Stage stage;
        for (const char* name : {"chart.png", "chart.svg", "chart.pdf"}) {
            QFile before(stage.file(name));
            QVERIFY(before.open(QIODevice::WriteOnly) && before.write("the one before") > 0);
            before.close();
            stage.bench.boxes.answerFile(stage.file(name));
            {
                const tests::SmallDisk full(1'000);
                stage.trigger("mnusavechart");
            }
            QCOMPARE(stage.read(name), QByteArray("the one before"));
            QVERIFY(stage.bench.boxes.messages().last().startsWith("The chart could not be saved as " +
                                                                   stage.file(name) + "."));
        }
    }

    void theScreenIsPrintedWithItsGrid() {
        Stage stage;
        QVERIFY(!control<FlexGrid>(*stage.screen, "MSFlexGrid1").isVisible());
        stage.bench.boxes.answerPrinter(stage.file("screen.pdf"));
        stage.click("cmdsavegraph");
        QVERIFY(control<FlexGrid>(*stage.screen, "MSFlexGrid1").isVisible());
        QVERIFY(control<QAction>(*stage.screen, "mnuSpread").isChecked());
        QCOMPARE(stage.pages("screen.pdf"), 1);
    }

    void aCancelledPrintChangesNothing() {
        Stage stage;
        stage.trigger("mnudiveprint");
        stage.trigger("mnuPrintspreadsheet");
        QVERIFY(!control<QAction>(*stage.screen, "mnuSpread").isChecked());
        QVERIFY(stage.bench.boxes.messages().isEmpty());
    }

    void printingFromTheDarkIsLightAndLeavesTheThemeAsItWas() {
        look::setTheme(look::Theme::Dark);
        {
            Stage stage;
            stage.bench.boxes.answerPrinter(stage.file("screen.pdf"));
            stage.click("cmdsavegraph");
            QCOMPARE(look::theme(), look::Theme::Dark);
            QCOMPARE(stage.pages("screen.pdf"), 1);
        }
        look::setTheme(look::Theme::Light);
    }

    void theDiveIsPrintedOnOnePageAsVectors() {
        look::setTheme(look::Theme::Dark);
        {
            Stage stage;
            control<QCheckBox>(*stage.screen, "Check3").setChecked(true);
            stage.bench.boxes.answerPrinter(stage.file("dive.pdf"));
            stage.trigger("mnuprintdive");
            QCOMPARE(stage.pages("dive.pdf"), 1);
            QVERIFY(!stage.read("dive.pdf").contains("/Subtype /Image"));
            QVERIFY(stage.read("dive.pdf").size() > 5000);
            const auto box = QRegularExpression(QStringLiteral(R"(/MediaBox \[0 0 ([\d.]+) ([\d.]+)\])"))
                                 .match(QString::fromLatin1(stage.read("dive.pdf")));
            QVERIFY(box.hasMatch());
            QVERIFY(box.captured(1).toDouble() > box.captured(2).toDouble()); // as wide as the chart wants it
            QCOMPARE(look::theme(), look::Theme::Dark);
        }
        look::setTheme(look::Theme::Light);
    }

    void theSamplesArePrintedOnAsManyPagesAsTheyNeed() {
        Stage stage(400);
        stage.bench.boxes.answerPrinter(stage.file("samples.pdf"));
        stage.trigger("mnuprintsamples");
        QVERIFY(stage.pages("samples.pdf") > 5);
        QVERIFY(!control<FlexGrid>(*stage.screen, "MSFlexGrid1").isVisible());
        stage.trigger("mnuprintsamples"); // cancelled
        stage.trigger("mnuprintdive");
        QVERIFY(stage.bench.boxes.messages().isEmpty());
    }

    void thePrintOfTheSamplesCanBeStopped() {
        Stage stage(400);
        bool seen = false;
        QTimer::singleShot(0, qApp, [&seen] {
            auto* progress = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
            seen = progress != nullptr;
            if (seen) {
                progress->cancel();
            }
        });
        stage.bench.boxes.answerPrinter(stage.file("samples.pdf"));
        stage.trigger("mnuprintsamples");
        QVERIFY(seen);
        QVERIFY(stage.pages("samples.pdf") <= 2);
        QVERIFY(QApplication::activeModalWidget() == nullptr);
    }

    void theGridIsPrintedWhole() {
        Stage stage;
        stage.bench.boxes.answerPrinter(stage.file("grid.pdf"));
        stage.trigger("mnuPrintspreadsheet");
        QCOMPARE(stage.pages("grid.pdf"), 1);
        QVERIFY(stage.read("grid.pdf").size() > 3000);
    }

    void aLongGridGoesOnPageBehindPage() {
        Stage stage;
        control<FlexGrid>(*stage.screen, "MSFlexGrid1").setRows(500);
        stage.bench.boxes.answerPrinter(stage.file("grid.pdf"));
        stage.trigger("mnuPrintspreadsheet");
        QVERIFY(stage.pages("grid.pdf") > 1);
    }
};

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    look::apply(application);
    look::setTheme(look::Theme::Light);
    TestRbinterfaceExport test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_rbinterface_export.moc"
