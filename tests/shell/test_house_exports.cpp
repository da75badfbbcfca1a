// What the dive screen writes of its dive, whatever ran in the program before.

#include "exports/csvexport.h"
#include "link/screens/pc_link_1.h"
#include "link/screens/seriallines.h"
#include "logbook/screens/rbmain.h"
#include "simulator/demodives.h"
#include "simulator/kdport.h"
#include "tests/shell/housestage.h"

#include <QLineEdit>
#include <QPushButton>

#include <functional>

using namespace benthor;
using namespace benthor::tests;

namespace {

constexpr int kPort = 3;

/// The program with the dive of sparse.txt open. Its gases differ from those of typical.txt.
struct OnADive : Program {
    explicit OnADive(link::LinkLines lines = {})
        : Program("Close", TestFolder::Store::Fresh, std::move(lines)) {
        passSplash();
        import("a.txt", "sparse.txt");
        control<QPushButton>("rbmain", "cmdgo")->click();
        shownDive = process().currentdiveid;
    }
    void import(const char* name, const char* text) const {
        folder.put(QStringLiteral("new/") + QLatin1String(name), TestFolder::dive(QLatin1String(text)));
        expire("main", "Timer1");
    }
    QByteArray save(const char* button, const char* name) {
        dialogs.answerFile(folder.path(QLatin1String(name)));
        control<QPushButton>("rbinterface", button)->click();
        return folder.get(QLatin1String(name));
    }
    /// The gas lines as the store holds them, read by a query of the test's own.
    QByteArray gasLines(bool feet) const {
        QByteArray lines;
        platform::Recordset gases = process().database.openRecordset(
            platform::sqlWith("SELECT * FROM gas WHERE diveid = '", shownDive, "'"));
        for (; !gases.eof(); gases.moveNext()) {
            for (const int field : {0, 1, feet ? 3 : 2, 4, 5}) {
                lines += gases.value(field).text().toUtf8() + ',';
            }
            lines += "\r\n";
        }
        return lines;
    }

    QString shownDive;
};

/// A beat of every timer of the link, as the seconds bring them.
bool linkTurns(const std::function<bool()>& done) {
    for (const char* const timer : {"Timer8", "Timer1", "Timer2"}) {
        if (loaded("PC_Link_1") != nullptr && control<platform::TickTimer>("PC_Link_1", timer)->isEnabled()) {
            expire("PC_Link_1", timer);
        }
    }
    expire("main", "Timer1");
    return done();
}

using Before = std::function<void(OnADive&)>;

} // namespace

class TestHouseExports : public QObject {
    Q_OBJECT

private slots:
    void theGasesOfTheDiveShownAreWritten_data();
    void theGasesOfTheDiveShownAreWritten();
    void aDeviceHeardInTheBackgroundTakesNoRowAway();
    void theHeliumIsWrittenOnceFeetAreChosenOnTheDiveScreen();
    void aDiveWithoutGasesGivesTheHeaderAlone();
};

void TestHouseExports::theGasesOfTheDiveShownAreWritten_data() {
    QTest::addColumn<Before>("before");
    QTest::addColumn<bool>("feet");
    const auto row = [](const char* name, const Before& before, bool feet = false) {
        QTest::newRow(name) << before << feet;
    };
    row("no unit was chosen", [](OnADive&) {});
    row("saved twice", [](OnADive& program) { program.save("cmdSave", "first.csv"); });
    row("DAN before", [](OnADive& program) { program.save("Command4", "first.zxu"); });
    row(
        "feet on the main screen", [](OnADive&) { control<QAction>("main", "mnuFeet")->trigger(); }, true);
    row("metres on the main screen", [](OnADive&) { control<QAction>("main", "mnuMeters")->trigger(); });
    row("the list was filled beside it", [](OnADive& program) {
        program.import("b.txt", "typical.txt");
        QVERIFY(shown("rbmain"));
        QVERIFY(shown("rbinterface"));
    });
    row("the errors of another dive were asked for", [](OnADive& program) {
        program.import("b.txt", "typical.txt");
        control<platform::FlexGrid>("rbmain", "MSFlexGrid1")->setRow(2);
        control<QAction>("rbmain", "mnuerrorcode")->trigger();
    });
    row("another dive was deleted", [](OnADive& program) {
        program.import("b.txt", "typical.txt");
        control<platform::FlexGrid>("rbmain", "MSFlexGrid1")->setRow(2);
        program.dialogs.answer(true);
        control<QPushButton>("rbmain", "cmdelete")->click();
    });
    row("the details were stored", [](OnADive&) {
        control<QAction>("rbinterface", "mnudiveinfo")->trigger();
        control<QLineEdit>("rbdetails", "Txtdiver")->setText(QStringLiteral("Anna"));
        control<QPushButton>("rbdetails", "cmdclose")->click();
    });
    row("the guide's box was clicked", [](OnADive&) {
        control<QAction>("main", "mnuGets")->trigger();
        control<QCheckBox>("frmGetS", "Check1")->toggle();
    });
}

void TestHouseExports::theGasesOfTheDiveShownAreWritten() {
    QFETCH(Before, before);
    QFETCH(bool, feet);
    OnADive program;
    QVERIFY(program.gasLines(false).count("\r\n") > 1);
    before(program);
    QVERIFY(shown("rbinterface"));
    QCOMPARE(program.save("cmdSave", "dive.csv"), exports::csvHeader() + "\r\n" + program.gasLines(feet));
    QCOMPARE(program.dialogs.messages().last(),
             "Dive Record save as file " + program.folder.path("dive.csv"));
    const QByteArray dan = program.save("Command4", "dive.zxu");
    QCOMPARE(dan.count("\r\n"), 5);
    QVERIFY(dan.endsWith("ZDP{\r\n"));
    QVERIFY(dan.contains("\r\nZDH|1|" + program.shownDive.toUtf8() + "|I|Q"));
}

void TestHouseExports::aDeviceHeardInTheBackgroundTakesNoRowAway() {
    OnADive program(link::serialLines());
    simulator::KdPort device(program.folder.root(), kPort, simulator::Kd(simulator::deviceDives()),
                             simulator::KdPort::unpaced);
    device.start();
    const auto listed = [] {
        auto* screen = qobject_cast<link::PC_Link_1*>(loaded("PC_Link_1"));
        auto* grid = screen == nullptr ? nullptr : screen->findChild<platform::FlexGrid*>("Mgrid");
        return grid != nullptr && grid->rows() > 2 && !grid->text(1, 1).isEmpty();
    };
    QTRY_VERIFY_WITH_TIMEOUT(linkTurns(listed), 20000);
    QCOMPARE(program.save("cmdSave", "dive.csv"), exports::csvHeader() + "\r\n" + program.gasLines(false));
    const QByteArray dan = program.save("Command4", "dive.zxu");
    QCOMPARE(dan.count("\r\n"), 5);
    QVERIFY(dan.endsWith("ZDP{\r\n"));
}

void TestHouseExports::theHeliumIsWrittenOnceFeetAreChosenOnTheDiveScreen() {
    OnADive program;
    control<QAction>("rbinterface", "mnuunitsfeet")->trigger();
    QVERIFY(shown("rbinterface"));
    QCOMPARE(program.save("cmdSave", "dive.csv"), exports::csvHeader() + "\r\n" + program.gasLines(true));
    QVERIFY(program.gasLines(true) != program.gasLines(false));
}

void TestHouseExports::aDiveWithoutGasesGivesTheHeaderAlone() {
    OnADive program;
    process().database.execute("DELETE FROM gas");
    QCOMPARE(program.save("cmdSave", "dive.csv"), exports::csvHeader() + "\r\n");
    const QByteArray dan = program.save("Command4", "dive.zxu");
    QCOMPARE(dan.count("\r\n"), 5);
    QVERIFY(dan.endsWith("ZDP{\r\n"));
}

int main(int argc, char** argv) {
    return runAsProgram<TestHouseExports>(argc, argv);
}
#include "test_house_exports.moc"
