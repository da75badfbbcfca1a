#include "gas/exchange.h"
#include "gas/setupwarnings.h"
#include "gas/typing.h"
#include "tests/gas/shownplan.h"

using namespace benthor;
using namespace benthor::gas;
using namespace benthor::tests;

namespace {

/// A plan as it was read from a device.
struct Read {
    explicit Read(const char* unit = "metre") {
        plan = shownPlan(unit);
        QString text = blanktext();
        for (int row = 0; row < kGases; ++row) {
            text.replace(16 * row + 1, 3, QStringLiteral("050"));
            text.replace(16 * row + 9, 4, QStringLiteral("0300")); // far beyond 1.4
        }
        text.replace(185, 3, QStringLiteral("130")).replace(199, 3, QStringLiteral("080"));
        text.replace(204, 3, QStringLiteral("004")).replace(196, 1, plan.feet() ? "3" : "1");
        text.replace(14, 1, QStringLiteral("1"));
        device.reported = text.left(222);
        if (!taketext(plan, text, told.say, TextFrom::Device)) {
            qFatal("not taken");
        }
    }
    QStringList warnings() const { return setupwarnings(plan, device); }
    void type(Cell cell, int row, const char* text) {
        typecell(plan, cell, row, QString::fromLatin1(text), told.say);
    }

    GasPlan plan;
    DeviceSetup device;
    Told told;
};

bool names(const QStringList& warnings, const char* words) {
    return warnings.size() == 1 && warnings.first().contains(QLatin1String(words));
}

} // namespace

class TestSetupwarnings : public QObject {
    Q_OBJECT

private slots:
    void whatTheDeviceHasDrawsNoWarning();
    void aChangedRowBeyondTheMaximumIsNamed();
    void aDepthThatIsJustWithinIsNot();
    void withoutAMaximumAChangedRowCannotBeJudged();
    void anEmptyMaximumAndAnotherUnitOweEveryDepth();
    void aRowWithoutOxygenOwesThoseBehindIt();
    void anActiveRowWithoutOxygenIsNamed();
    void aSetpointOutsideItsRangeIsNamed();
    void inFeetDepthsThatWereReadAreNamed();
    void anotherUnitThanTheDevicesIsNamed();
    void settingsThatNobodyReadAreNamed();
    void anAgreementHoldsUntilSomethingChanges();
};

void TestSetupwarnings::whatTheDeviceHasDrawsNoWarning() {
    QCOMPARE(Read().warnings(), QStringList());
}

void TestSetupwarnings::aChangedRowBeyondTheMaximumIsNamed() {
    Read one;
    one.type(Cell::MOD, 4, "29"); // 1.95
    QVERIFY(names(one.warnings(), "Gas 4: PPO2 1.95 at its MOD 29 exceeds the Max PPO2 1.4"));
    Read active;
    clickactive(active.plan, 2, true, active.told.say);
    QVERIFY(names(active.warnings(), "Gas 2"));
    Read stepped;
    showgasrow(stepped.plan, 3);
    clickstepper(stepped.plan, 3, true, stepped.told.say);
    QVERIFY(names(stepped.warnings(), "Gas 3"));
}

void TestSetupwarnings::aDepthThatIsJustWithinIsNot() {
    Read one;
    one.type(Cell::MOD, 4, "18"); // exactly 1.40
    QCOMPARE(one.warnings(), QStringList());
    one.type(Cell::Maximum, -1, "1.6");
    QCOMPARE(one.warnings(), QStringList());
}

void TestSetupwarnings::withoutAMaximumAChangedRowCannotBeJudged() {
    Read one;
    one.type(Cell::Maximum, -1, "");
    QCOMPARE(one.warnings(), QStringList()); // nothing was changed
    one.type(Cell::MOD, 4, "10");
    QVERIFY(names(one.warnings(), "Gas 4: without a Max PPO2"));
    Read other;
    other.type(Cell::MOD, 4, "10");
    other.type(Cell::Maximum, -1, "3"); // told and left alone
    QVERIFY(names(other.warnings(), "Gas 4: without a Max PPO2"));
}

/// Air was left as 181 m.
void TestSetupwarnings::anEmptyMaximumAndAnotherUnitOweEveryDepth() {
    Read one("Feet");
    recalcmods(one.plan, one.told.say);
    QCOMPARE(one.warnings(), QStringList());
    one.type(Cell::Maximum, -1, "");
    chooseunits(one.plan, false, one.told.say);
    const QStringList warnings = one.warnings();
    QCOMPARE(warnings.size(), 2);
    QVERIFY(warnings.first().startsWith(QLatin1String("Gas 0, Gas 1, ")));
    QVERIFY(warnings.first().contains(QLatin1String("not computed anew")));
    QVERIFY(warnings.last().startsWith(QLatin1String("Units")));
    one.type(Cell::MOD, 0, "50"); // typed in the unit that is shown
    QVERIFY(one.warnings().first().startsWith(QLatin1String("Gas 1, ")));
}

void TestSetupwarnings::aRowWithoutOxygenOwesThoseBehindIt() {
    Read one;
    one.type(Cell::O2, 7, "0");
    one.type(Cell::Maximum, -1, "1.3");
    QVERIFY(names(one.warnings(), "Gas 7, Gas 8, Gas 9: the MOD was not computed anew"));
    one.type(Cell::O2, 7, "18");
    one.type(Cell::Maximum, -1, "1.4");
    QCOMPARE(one.warnings(), QStringList());
}

void TestSetupwarnings::anActiveRowWithoutOxygenIsNamed() {
    Read one;
    one.plan.rows[5].O2 = QStringLiteral("0");
    QCOMPARE(one.warnings(), QStringList());
    one.plan.rows[5].active = true;
    QVERIFY(names(one.warnings(), "Gas 5: it is active and has no oxygen"));
}

void TestSetupwarnings::aSetpointOutsideItsRangeIsNamed() {
    Read one;
    for (const auto& [text, warned] :
         {std::pair{"0.39", true}, {"0.40", false}, {"1.60", false}, {"1.61", true}}) {
        one.type(Cell::SetPoint, -1, text);
        QCOMPARE(names(one.warnings(), "PPO2 Set Point"), warned);
    }
}

void TestSetupwarnings::inFeetDepthsThatWereReadAreNamed() {
    Read one("Feet");
    QVERIFY(names(one.warnings(), "3.2 times shallower"));
    QVERIFY(one.warnings().first().contains(QLatin1String("Gas 9")));
    for (int row = 0; row < 9; ++row) {
        one.type(Cell::MOD, row, "31"); // one foot more than was read
    }
    QVERIFY(names(one.warnings(), "MOD of Gas 9:"));
    one.type(Cell::Maximum, -1, "1.2"); // computes all
    QCOMPARE(one.warnings(), QStringList());
}

void TestSetupwarnings::anotherUnitThanTheDevicesIsNamed() {
    Read one;
    chooseunits(one.plan, true, one.told.say);
    QVERIFY(names(one.warnings(), "Units: the device works in metres, this setup sets it to feet"));
    chooseunits(one.plan, false, one.told.say);
    QCOMPARE(one.warnings(), QStringList());
}

void TestSetupwarnings::settingsThatNobodyReadAreNamed() {
    Read one;
    one.device.reported.clear();
    QVERIFY(names(one.warnings(), "have not been read"));
    one.device.reported = QStringLiteral("A079 000 Y"); // a short reply is none
    QVERIFY(names(one.warnings(), "have not been read"));
    one.device = {QString(), true}; // they cannot be
    QCOMPARE(one.warnings(), QStringList());
}

void TestSetupwarnings::anAgreementHoldsUntilSomethingChanges() {
    Read one;
    one.type(Cell::MOD, 4, "29");
    const auto agreement = [&one](const QDateTime& now) {
        return agreementof(textof(one.plan, now), one.warnings(), one.device);
    };
    const QString before = agreement(kMoment);
    QCOMPARE(agreement(kMoment.addSecs(60)), before);
    one.type(Cell::Home, -1, "60");
    QVERIFY(agreement(kMoment) != before);
    one.type(Cell::Home, -1, "0");
    QCOMPARE(agreement(kMoment), before);
    one.type(Cell::MOD, 4, "30");
    QVERIFY(agreement(kMoment) != before);
}

QTEST_GUILESS_MAIN(TestSetupwarnings)
#include "test_setupwarnings.moc"
