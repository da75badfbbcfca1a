#include "gas/exchange.h"
#include "gas/setuplook.h"
#include "gas/setupwarnings.h"
#include "gas/typing.h"
#include "tests/gas/shownplan.h"

#include <QRandomGenerator>

using namespace benthor;
using namespace benthor::gas;
using namespace benthor::tests;

namespace {

/// A plan with its depths, and the text of a tick.
struct Table {
    explicit Table(const char* unit = "metre") {
        plan = shownPlan(unit);
        recalcmods(plan, told.say);
        tick();
    }
    void tick() { freshtext(plan, kMoment); }
    void type(Cell cell, int row, const QString& text) {
        typecell(plan, cell, row, text, told.say);
        tick();
    }
    QString field(int row, int at, int length) const { return plan.Text7.mid(16 * row + at - 1, length); }
    QString setting(int position, int length) const { return plan.Text7.mid(position - 1, length); }
    QStringList wrong() const {
        QStringList names;
        for (const WrongCell& one : wrongcells(plan)) {
            names += one.name;
        }
        return names;
    }

    GasPlan plan;
    Told told;
};

} // namespace

class TestSetuplook : public QObject {
    Q_OBJECT

private slots:
    void placesAndLengthAreThoseOfTheText();
    void aGoodTableMayLeave();
    void aCellThatIsNoNumberOfItsKindIsNamed_data();
    void aCellThatIsNoNumberOfItsKindIsNamed();
    void oneWrongCellHoldsNoOtherFieldBack();
    void halfAMixNeverStandsInTheText();
    void heliumWithAPointIsLeftToTheGuard();
    void aDecimalCommaIsAPoint();
    void aChangeOfUnitThatEndedEarlyLetsNothingLeave();
    void aRowWithoutOxygenHoldsNoChangeOfUnitBack();
    void whatIsOutOfPlaceIsNamed();
    void aBodyOfTheLinkIsComparedWithWhatIsShown();
    void aBodyFromAFileIsLookedAtByItself();
    void nothingTypedMovesAPlace();
    void theWorstCellsLeaveThePlaces_data();
    void theWorstCellsLeaveThePlaces();
};

void TestSetuplook::placesAndLengthAreThoseOfTheText() {
    const QString text = blanktext();
    QCOMPARE(text.size(), 226);
    QCOMPARE(text.indexOf(u'K'), 160);
    QCOMPARE(text.indexOf(u'Y') + 1, 222);
    QCOMPARE(text.mid(224), QStringLiteral("Z\x1b"));
    QCOMPARE(misplaced(text), "");
}

void TestSetuplook::aGoodTableMayLeave() {
    for (const char* const unit : {"metre", "Feet"}) {
        Table table(unit);
        QCOMPARE(table.wrong(), QStringList());
        QCOMPARE(refusalof(table.plan, table.plan.Text7, kMoment), "");
        QCOMPARE(refusalof(table.plan, table.plan.Text7, kMoment.addSecs(90)), ""); // the stamp is left out
        QCOMPARE(saverefusal(table.plan), "");
        QCOMPARE(whynothing(table.plan, kMoment), "");
        QCOMPARE(textof(table.plan, kMoment), table.plan.Text7);
    }
}

void TestSetuplook::aCellThatIsNoNumberOfItsKindIsNamed_data() {
    QTest::addColumn<Cell>("cell");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("names");
    const auto row = [](const char* about, Cell cell, const char* text, const QStringList& names) {
        QTest::newRow(about) << cell << QString::fromUtf8(text) << names;
    };
    row("no oxygen", Cell::O2, "", {"Gas 3, O2"});
    row("part of a per cent", Cell::O2, "32.5", {"Gas 3, O2"});
    row("a comma in oxygen", Cell::O2, "32,5", {"Gas 3, O2"});
    row("more oxygen than all", Cell::O2, "101", {"Gas 3, O2"});
    row("oxygen with a sign", Cell::O2, "+32", {"Gas 3, O2"});
    row("no helium", Cell::He, "", {"Gas 3, He"});
    row("four characters of helium", Cell::He, "0005", {"Gas 3, He"});
    row("helium with a sign", Cell::He, "+5", {"Gas 3, He"});
    row("helium with a blank", Cell::He, " 5", {"Gas 3, He"});
    row("a helium with a point that does not fit", Cell::He, "35.5", {"Gas 3, He"});
    row("no depth", Cell::MOD, "", {"Gas 3, MOD"});
    row("a lone minus", Cell::MOD, "-", {"Gas 3, MOD"});
    row("a depth with its unit", Cell::MOD, "12m", {"Gas 3, MOD"});
    row("a depth above the water", Cell::MOD, "-3", {"Gas 3, MOD"});
    row("a depth of five digits", Cell::MOD, "1000", {"Gas 3, MOD"});
    row("hundredths of a metre", Cell::MOD, "18.25", {"Gas 3, MOD"});
    row("a tenth of a metre", Cell::MOD, "18.2", {});
    row("the deepest", Cell::MOD, "999.9", {});
    row("no PPO2", Cell::PPO2, "x", {"Gas 3, PPO2"});
    row("letters in Max PPO2", Cell::Maximum, "1.4x", {"Max PPO2"});
    row("no Max PPO2", Cell::Maximum, "", {});
    row("a comma in the set point", Cell::SetPoint, "1,30", {});
    row("letters in the set point", Cell::SetPoint, "1.3b", {"PPO2 Set Point"});
    row("a set point of three places", Cell::SetPoint, "1.305", {"PPO2 Set Point"});
    row("a set point of four digits", Cell::SetPoint, "10.00", {"PPO2 Set Point"});
    row("a set point below nothing", Cell::SetPoint, "-1.30", {"PPO2 Set Point"});
    row("letters in the seconds", Cell::ScreenSaver, "w", {"Screen Saver secs"});
    row("no seconds", Cell::ScreenSaver, "", {"Screen Saver secs"});
    row("too many seconds", Cell::Home, "1000", {"Home timeout secs"});
    row("half a second", Cell::Home, "30.5", {"Home timeout secs"});
    row("seconds beyond the steppers", Cell::Home, "500", {});
}

void TestSetuplook::aCellThatIsNoNumberOfItsKindIsNamed() {
    QFETCH(Cell, cell);
    QFETCH(QString, text);
    QFETCH(QStringList, names);
    Table table;
    table.type(cell, 3, text);
    QCOMPARE(table.told.messages, QStringList());
    QCOMPARE(table.wrong(), names);
    for (const QString& refusal : {refusalof(table.plan, table.plan.Text7, kMoment), saverefusal(table.plan),
                                   whynothing(table.plan, kMoment)}) {
        QCOMPARE(refusal.isEmpty(), names.isEmpty());
        QVERIFY(names.isEmpty() || refusal.contains(names.first()));
    }
    QCOMPARE(misplaced(table.plan.Text7), "");
}

/// Gas 1 shown with 50 per cent and 18 m once left as 99 per cent and 4 m, since another cell was no number.
void TestSetuplook::oneWrongCellHoldsNoOtherFieldBack() {
    Table table;
    const QString before = table.field(6, 10, 4);
    table.type(Cell::MOD, 6, QStringLiteral("12m"));
    table.type(Cell::O2, 6, QStringLiteral("3"));
    table.type(Cell::O2, 1, QStringLiteral("50"));
    table.type(Cell::MOD, 1, QStringLiteral("18"));
    table.type(Cell::O2, 6, QStringLiteral("32"));
    table.type(Cell::SetPoint, -1, QStringLiteral("1.3b"));
    table.type(Cell::ScreenSaver, -1, QStringLiteral("90"));
    QCOMPARE(table.plan.Text7.mid(16, 16), "B050 000 0180 0 ");
    QCOMPARE(table.field(6, 2, 3), "068");
    QCOMPARE(table.field(6, 10, 4), before); // the last good characters
    QCOMPARE(table.setting(185, 4), "P140");
    QCOMPARE(table.setting(209, 4), "V090");
    table.plan.rows[6].active = true;
    table.tick();
    QCOMPARE(table.field(6, 15, 1), "1");
    QCOMPARE(table.wrong(), QStringList({"Gas 6, MOD", "PPO2 Set Point"}));
}

void TestSetuplook::halfAMixNeverStandsInTheText() {
    Table table;
    table.plan.rows[7].He = QStringLiteral("90");
    table.tick();
    QCOMPARE(table.wrong(), QStringList({"Gas 7, O2", "Gas 7, He"}));
    QCOMPARE(table.field(7, 2, 7), "047 035");
    table.type(Cell::O2, 7, QString());
    table.type(Cell::He, 7, QStringLiteral("40"));
    QCOMPARE(table.field(7, 2, 7), "047 035");
    table.type(Cell::O2, 7, QStringLiteral("20"));
    QCOMPARE(table.field(7, 2, 7), "040 040");
    QCOMPARE(table.wrong(), QStringList());
}

void TestSetuplook::heliumWithAPointIsLeftToTheGuard() {
    for (const char* const typed : {"5.5", "5,5", ".5", "5."}) {
        Table table;
        table.type(Cell::He, 7, QString::fromLatin1(typed));
        QCOMPARE(table.wrong(), QStringList());
        QCOMPARE(table.plan.Text7.size(), 226);
        QVERIFY(table.field(7, 6, 3).contains(u'.'));
        QCOMPARE(sendguards(table.plan.Text7 + kEscape).size(), 1);
        QVERIFY(!saverefusal(table.plan).isEmpty()); // no guard stands there
    }
}

void TestSetuplook::aDecimalCommaIsAPoint() {
    Table table;
    table.type(Cell::Maximum, -1, QStringLiteral("1,6"));
    QCOMPARE(table.plan.rows[0].MOD, "66");
    table.type(Cell::SetPoint, -1, QStringLiteral("1,25"));
    QCOMPARE(table.setting(185, 4), "P125");
    table.type(Cell::MOD, 0, QStringLiteral("40,5"));
    QCOMPARE(table.field(0, 10, 4), "0405");
    table.type(Cell::PPO2, 0, QStringLiteral("1,3"));
    QCOMPARE(table.plan.rows[0].PPO2, "1.30");
    Settings settings = table.plan.settings;
    settings.sptext = QStringLiteral("1,10");
    typesettings(table.plan, settings);
    QCOMPARE(table.plan.settings.sptext, "1.10");
}

/// Letters ended the change of unit; a number that is told and left alone does not take it up again: the
/// heads still say metres, and 56 would leave as feet.
void TestSetuplook::aChangeOfUnitThatEndedEarlyLetsNothingLeave() {
    for (const char* const left : {"3", "-1"}) {
        Table table;
        table.type(Cell::Maximum, -1, QStringLiteral("1.4x"));
        chooseunits(table.plan, true, table.told.say);
        table.type(Cell::Maximum, -1, QLatin1String(left));
        QVERIFY(!table.plan.headfeet);
        QCOMPARE(table.plan.rows[0].MOD, "56");
        QCOMPARE(table.field(0, 10, 4), "0560"); // as long as it shows metres
        QCOMPARE(table.wrong(), QStringList("Max PPO2"));
        QVERIFY(saverefusal(table.plan).contains(QLatin1String("Max PPO2: holds")));
        QVERIFY(!refusalof(table.plan, table.plan.Text7, kMoment).isEmpty());
        table.type(Cell::Maximum, -1, QStringLiteral("1.4"));
        QCOMPARE(table.wrong(), QStringList());
        QCOMPARE(table.plan.rows[0].MOD, "181");
        QCOMPARE(table.field(0, 10, 4), "0564");
        QCOMPARE(refusalof(table.plan, table.plan.Text7, kMoment), "");
    }
}

void TestSetuplook::aRowWithoutOxygenHoldsNoChangeOfUnitBack() {
    Table table;
    table.type(Cell::O2, 9, QStringLiteral("0"));
    table.type(Cell::Maximum, -1, QStringLiteral("x"));
    chooseunits(table.plan, true, table.told.say);
    QCOMPARE(table.wrong(), QStringList("Max PPO2"));
    table.type(Cell::Maximum, -1, QStringLiteral("1.4"));
    QVERIFY(table.plan.headfeet);
    QCOMPARE(table.wrong(), QStringList());
    QVERIFY(table.plan.rows[9].owed);
}

void TestSetuplook::whatIsOutOfPlaceIsNamed() {
    Table table;
    QString text = table.plan.Text7;
    QCOMPARE(misplaced(text.left(225)), "the length");
    text[16 * 4] = u'x';
    QCOMPARE(misplaced(text), "Gas 4");
    text = table.plan.Text7;
    text[178] = u'n';
    QCOMPARE(misplaced(text), "Last Stop");
    QCOMPARE(misplaced(text, Part::Gases), "");
    // A letter that stands too early catches the field of its own: it never follows the screen again.
    text = table.plan.Text7;
    text[171] = u'w';
    QVERIFY(refusalof(table.plan, text, kMoment).contains(QLatin1String("date stamp")));
    text = table.plan.Text7;
    text[173] = u'5';
    QVERIFY(refusalof(table.plan, text, kMoment).contains(QLatin1String("Dive Gas")));
}

void TestSetuplook::aBodyOfTheLinkIsComparedWithWhatIsShown() {
    Table table;
    const QString sent = table.plan.Text7 + kEscape;
    QCOMPARE(bodyrefusal(table.plan, {sent, false}, true, kMoment.addSecs(5)), "");
    table.type(Cell::O2, 2, QStringLiteral("79"));
    QVERIFY(bodyrefusal(table.plan, {sent, false}, true, kMoment).contains(QLatin1String("Gas 2")));
    QCOMPARE(bodyrefusal(table.plan, {sent, false}, false, kMoment), ""); // nothing is shown
    table.type(Cell::O2, 2, QString());
    QVERIFY(bodyrefusal(table.plan, {sent, false}, false, kMoment).contains(QLatin1String("Gas 2, O2")));
    // What the device sent is no setup that it takes.
    const QString reply = QStringLiteral("PPP") + sent.left(222) + QStringLiteral("PPPP");
    QVERIFY(!bodyrefusal(Table().plan, {reply, false}, false, kMoment).isEmpty());
}

void TestSetuplook::aBodyFromAFileIsLookedAtByItself() {
    Table table;
    const QString file = table.plan.Text7 + QStringLiteral("\r\n");
    table.type(Cell::O2, 2, QString());
    QCOMPARE(bodyrefusal(table.plan, {file, true}, true, kMoment), "");
    QVERIFY(!bodyrefusal(table.plan, {file.left(160), true}, true, kMoment).isEmpty());
    QVERIFY(!textrefusal(QString()).isEmpty());
}

void TestSetuplook::theWorstCellsLeaveThePlaces_data() {
    aCellThatIsNoNumberOfItsKindIsNamed_data();
    QTest::newRow("Max PPO2 of 0: every depth above the water") << Cell::Maximum << "0" << QStringList();
}

/// Whatever a cell holds for a while: once it is right again the text is as if it had never been.
void TestSetuplook::theWorstCellsLeaveThePlaces() {
    QFETCH(Cell, cell);
    QFETCH(QString, text);
    Table table;
    table.type(cell, 3, text);
    QCOMPARE(misplaced(table.plan.Text7), "");
    table.type(Cell::O2, 3, QStringLiteral("50"));
    table.type(Cell::He, 3, QStringLiteral("0"));
    table.type(Cell::PPO2, 3, QStringLiteral("1.40"));
    table.type(Cell::SetPoint, -1, QStringLiteral("1.40"));
    table.type(Cell::ScreenSaver, -1, QStringLiteral("120"));
    table.type(Cell::Home, -1, QStringLiteral("30"));
    table.type(Cell::Maximum, -1, QStringLiteral("1.2"));
    table.type(Cell::Maximum, -1, QStringLiteral("1.4"));
    QCOMPARE(table.plan.Text7, Table().plan.Text7);
}

/// Any sequence of good and bad cells.
void TestSetuplook::nothingTypedMovesAPlace() {
    static const QStringList texts{"",      "-",    "0",    "0005", "12m",  "1,30", "w",    "Y",
                                   "-5",    "1000", "35.5", "5.5",  "+7",   " 7",   "1e3",  "101",
                                   "2.01",  "99",   "18",   "1.4",  "300",  "9999", "k",    "1.30",
                                   "18.25", "nan",  "0",    "21",   "50.0", "999",  "-0.1", "A"};
    QRandomGenerator random(3);
    for (int run = 0; run < 40; ++run) {
        Table table(run % 2 == 0 ? "metre" : "Feet");
        for (int step = 0; step < 100; ++step) {
            const auto cell = static_cast<Cell>(random.bounded(8));
            typecell(table.plan, cell, random.bounded(kGases),
                     texts.at(random.bounded(static_cast<int>(texts.size()))), table.told.say);
            if (random.bounded(3) == 0) {
                table.tick();
            }
            QString text = table.plan.Text7;
            QCOMPARE(text.size(), 226);
            text.replace(u'.', u'0'); // helium's, for the guard
            QCOMPARE(misplaced(text), "");
        }
    }
}

QTEST_GUILESS_MAIN(TestSetuplook)
#include "test_setuplook.moc"
