#include "gas/gascalc.h"
#include "tests/gas/vectors.h"

#include <QRandomGenerator>

using namespace benthor;
using namespace benthor::gas;
using namespace benthor::tests;

namespace {

void setCells(GasRow& row, const QJsonValue& cells) {
    row.O2 = cells["O2"].toString();
    row.He = cells["He"].toString();
    row.MOD = cells["MOD"].toString();
    row.PPO2 = cells["PPO2"].toString();
    row.HeColour = row.He == QLatin1String("0") ? kLightCyan : kLightYellow;
    row.pressureColour = cellnumber(row.PPO2).value_or(0) >= 2 ? platform::kToldRed : kLightCyan;
}

} // namespace

class TestGascalc : public QObject {
    Q_OBJECT

private slots:
    void eventsAgreeWithTheVectors_data();
    void eventsAgreeWithTheVectors();
    void maximumPpo2AgreesWithTheVectors_data();
    void maximumPpo2AgreesWithTheVectors();
    void unitsAgreeWithTheVectors();
    void steppersAgreeWithTheVectors();
    void barsAgreeWithTheVectors();

    void airInMetresAndFeet();
    void oxygenIsNeverCut();
    void exactly2IsTakenAnd201IsNot();
    void lettersInTheMaximumChangeNothing();
    void anEmptyOxygenSaysNothing();
    void theRedOfANegativeDepthStaysUntilAPpo2Changes();
    void anOxygenOf0EndsTheRecalculationAtItsRow();
    void rowNullHasNoStepperAndNoSlider();
    void steppersAndSlidersWorkTheGasInHand();
    void theActiveBoxEnablesItsCells();
    void aHalverinKeepsTwoActiveGases();
    void aStartingGasIsShown();
    void withoutAnActiveGasTheBlockStays();
    void aCellThatIsNoNumberLeavesTheBlock();
    void nitrogenIsPaddedToThreeDigits();
    void theBlockGoesIntoTheTextInHand();
    void modNeverComesOutDeeperThanTheGasAllows();
};

void TestGascalc::eventsAgreeWithTheVectors_data() {
    QTest::addColumn<QJsonValue>("event");
    int number = 0;
    for (const QJsonValue& one : cases(vectorFile("gas.json"), "events")) {
        QTest::addRow("%d %s", ++number, qPrintable(one["about"].toString())) << one;
    }
}

void TestGascalc::eventsAgreeWithTheVectors() {
    QFETCH(QJsonValue, event);
    GasPlan plan = planIn(event["units"]);
    GasRow& row = plan.rows[3];
    setCells(row, event["row"]);
    plan.Text5 = QStringLiteral("1.4");
    Told told;
    const QString cell = event["cell"].toString();
    const QString typed = event["typed"].toString();
    if (cell == QLatin1String("O2")) {
        setO2(plan, 3, typed, told.say);
    } else if (cell == QLatin1String("He")) {
        setHe(plan, 3, typed, told.say);
    } else if (cell == QLatin1String("MOD")) {
        setMOD(plan, 3, typed);
    } else {
        QCOMPARE(cell, "PPO2");
        setPPO2(plan, 3, typed);
    }
    QCOMPARE(told.messages, textList(event["messages"]));
    const QJsonValue after = event["after"];
    QVERIFY2(agrees(after["O2"], row.O2), qPrintable(row.O2));
    QVERIFY2(agrees(after["He"], row.He), qPrintable(row.He));
    QVERIFY2(agrees(after["MOD"], row.MOD), qPrintable(row.MOD));
    QVERIFY2(agrees(after["PPO2"], row.PPO2), qPrintable(row.PPO2));
    QVERIFY2(agrees(after["EAND"], row.EAND), qPrintable(row.EAND));
    QVERIFY2(agrees(after["He_colour"], colourName(row.HeColour)), qPrintable(colourName(row.HeColour)));
    QVERIFY2(agrees(after["MOD_and_PPO2_colour"], colourName(row.pressureColour)),
             qPrintable(colourName(row.pressureColour)));
}

void TestGascalc::maximumPpo2AgreesWithTheVectors_data() {
    QTest::addColumn<QJsonValue>("one");
    for (const QJsonValue& one : cases(vectorFile("gas.json"), "maximum_ppo2")) {
        QTest::addRow("%s", qPrintable(one["about"].toString())) << one;
    }
}

void TestGascalc::maximumPpo2AgreesWithTheVectors() {
    QFETCH(QJsonValue, one);
    GasPlan plan = planIn(one["units"]);
    const QJsonArray before = one["before"].toArray();
    for (int i = 0; i < kGases; ++i) {
        setCells(plan.rows[static_cast<size_t>(i)], before[i]);
        plan.rows[static_cast<size_t>(i)].active = true;
        showgasrow(plan, i);
    }
    // The vectors' active gases stand in their block alone.
    const QString block = one["gas_block"].toString();
    for (int i = 0; i < kGases && !block.isEmpty(); ++i) {
        plan.rows[static_cast<size_t>(i)].active = block.at(16 * i + 14) == QLatin1Char('1');
    }
    Told told;
    plan.Text5 = QStringLiteral("something else");
    setmaxppo2(plan, one["maximum"].toString(), told.say);
    QCOMPARE(told.messages, textList(one["messages"]));
    const QJsonArray rows = one["rows"].toArray();
    for (int i = 0; i < kGases; ++i) {
        const GasRow& row = plan.rows[static_cast<size_t>(i)];
        if (rows[i].isNull()) {
            continue;
        }
        QVERIFY2(agrees(rows[i]["MOD"], row.MOD), qPrintable(QStringLiteral("%1: %2").arg(i).arg(row.MOD)));
        QVERIFY2(agrees(rows[i]["PPO2"], row.PPO2),
                 qPrintable(QStringLiteral("%1: %2").arg(i).arg(row.PPO2)));
        QVERIFY2(agrees(rows[i]["EAND"], row.EAND),
                 qPrintable(QStringLiteral("%1: %2").arg(i).arg(row.EAND)));
    }
    if (!block.isEmpty()) {
        QCOMPARE(plan.gasblock, block);
    }
}

void TestGascalc::unitsAgreeWithTheVectors() {
    for (const QJsonValue& one : cases(vectorFile("gas.json"), "units_switch")) {
        const bool feet = isFeet(one["to"]);
        GasPlan plan = planIn(feet ? QStringLiteral("metre") : QStringLiteral("Feet"));
        const QJsonArray mixes = one["O2_and_He"].toArray();
        for (int i = 0; i < kGases; ++i) {
            plan.rows[static_cast<size_t>(i)].O2 = mixes[i][0].toString();
            plan.rows[static_cast<size_t>(i)].He = mixes[i][1].toString();
        }
        plan.Text5 = one["maximum"].toString();
        Told told;
        chooseunits(plan, feet, told.say);
        QCOMPARE(process().depthunit, one["to"].toString());
        for (int i = 0; i < kGases; ++i) {
            const GasRow& row = plan.rows[static_cast<size_t>(i)];
            QCOMPARE(row.MOD, one["rows"][i]["MOD"].toString());
            QCOMPARE(row.PPO2, one["rows"][i]["PPO2"].toString());
            QCOMPARE(row.EAND, one["rows"][i]["EAND"].toString());
        }
    }
}

void TestGascalc::steppersAgreeWithTheVectors() {
    for (const QJsonValue& one : cases(vectorFile("gas.json"), "steppers")) {
        GasPlan plan = planIn(QStringLiteral("metre"));
        Told told;
        const QString box = one["box"].toString();
        const int index = box == QLatin1String("sptext") ? 0 : box == QLatin1String("ScreenSaveText") ? 1 : 2;
        QString& text = index == 0   ? plan.settings.sptext
                        : index == 1 ? plan.settings.ScreenSaveText
                                     : plan.settings.HomeText;
        text = one["start"].toString();
        QStringList texts;
        for (const QChar press : one["presses"].toString()) {
            stepperclicked(plan, index, press == QLatin1Char('+'), told.say);
            texts += text;
        }
        QCOMPARE(texts, textList(one["texts"]));
    }
}

void TestGascalc::barsAgreeWithTheVectors() {
    for (const QJsonValue& one : cases(vectorFile("gas.json"), "bars_for_top_100_height_2400")) {
        GasPlan plan = planIn(QStringLiteral("metre"));
        plan.rows[2].O2 = QString::number(one[0].toInt());
        plan.rows[2].He = QString::number(one[1].toInt());
        showgasrow(plan, 2);
        QCOMPARE(plan.bars.oxygen, one[2].toInt());
        QCOMPARE(plan.bars.helium, one[3].toInt());
        QCOMPARE(heliumtop(100, 2400, plan.bars.helium), one[4].toInt());
        QCOMPARE(plan.bars.label, "G\nA\nS\n2");
        QCOMPARE(plan.currentgasrow, 2);
    }
}

void TestGascalc::airInMetresAndFeet() {
    QCOMPARE(modfromppo2(21, 1.4, kMetresPerBar), 56);
    QCOMPARE(modfromppo2(21, 1.4, kFeetPerBar), 181);
    GasPlan plan = planIn(QStringLiteral("metre"));
    Told told;
    plan.Text5 = QStringLiteral("1.4");
    QVERIFY(recalcmods(plan, told.say));
    QCOMPARE(plan.rows[0].MOD, "56");
    QCOMPARE(plan.rows[0].PPO2, "1.39");
}

void TestGascalc::oxygenIsNeverCut() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    Told told;
    setHe(plan, 1, QStringLiteral("1"), told.say);
    QCOMPARE(plan.rows[1].He, "1");
    setO2(plan, 1, QStringLiteral("100"), told.say);
    QCOMPARE(plan.rows[1].O2, "100");
    QCOMPARE(plan.rows[1].He, "0");
    QCOMPARE(plan.rows[1].HeColour, kLightCyan);
}

void TestGascalc::exactly2IsTakenAnd201IsNot() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    Told told;
    setmaxppo2(plan, QStringLiteral("2.0"), told.say);
    QCOMPARE(plan.rows[0].MOD, "85");
    setmaxppo2(plan, QStringLiteral("2.01"), told.say);
    QCOMPARE(told.messages, QStringList{"enter number less than 2.0"});
    QCOMPARE(plan.rows[0].MOD, "85");
    QCOMPARE(plan.maxppo2, 2.0);
}

void TestGascalc::lettersInTheMaximumChangeNothing() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    Told told;
    setmaxppo2(plan, QStringLiteral("1.2"), told.say);
    const QString before = plan.rows[0].MOD;
    setmaxppo2(plan, QStringLiteral("1.2x"), told.say);
    QCOMPARE(plan.rows[0].MOD, before);
    QCOMPARE(told.messages, QStringList());
}

void TestGascalc::anEmptyOxygenSaysNothing() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    Told told;
    setO2(plan, 2, QString(), told.say);
    QCOMPARE(told.messages, QStringList());
    QCOMPARE(plan.rows[2].O2, "");
}

void TestGascalc::theRedOfANegativeDepthStaysUntilAPpo2Changes() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    Told told;
    setMOD(plan, 2, QStringLiteral("-3"));
    QCOMPARE(plan.rows[2].pressureColour, platform::kToldRed);
    showgasrow(plan, 2);
    QCOMPARE(plan.rows[2].pressureColour, platform::kToldRed);
    setPPO2(plan, 2, QStringLiteral("1.1"));
    QCOMPARE(plan.rows[2].pressureColour, kLightCyan);
}

void TestGascalc::anOxygenOf0EndsTheRecalculationAtItsRow() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    Told told;
    plan.Text5 = QStringLiteral("1.4");
    plan.gasblock = QStringLiteral("as it was");
    setO2(plan, 2, QStringLiteral("0"), told.say);
    QVERIFY(!recalcmods(plan, told.say));
    QCOMPARE(plan.rows[0].MOD, "56");
    QCOMPARE(plan.rows[1].MOD, "4");
    QCOMPARE(plan.rows[3].MOD, "MOD");
    QCOMPARE(plan.gasblock, "as it was");
}

void TestGascalc::rowNullHasNoStepperAndNoSlider() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    Told told;
    showgasrow(plan, 0);
    stepperclicked(plan, 3, true, told.say);
    stepperclicked(plan, 4, true, told.say);
    sliderscrolled(plan, 0, 50, told.say);
    sliderscrolled(plan, 1, 50, told.say);
    QCOMPARE(plan.rows[0].O2, "21");
    QCOMPARE(plan.rows[0].He, "0");
}

void TestGascalc::steppersAndSlidersWorkTheGasInHand() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    Told told;
    showgasrow(plan, 7);
    stepperclicked(plan, 3, true, told.say);
    QCOMPARE(plan.rows[7].O2, "19");
    stepperclicked(plan, 4, false, told.say);
    QCOMPARE(plan.rows[7].He, "34");
    sliderscrolled(plan, 0, 12, told.say);
    sliderscrolled(plan, 1, 60, told.say);
    QCOMPARE(plan.rows[7].O2, "12");
    QCOMPARE(plan.rows[7].He, "60");
    sliderscrolled(plan, 0, 41, told.say);
    QCOMPARE(plan.rows[7].He, "0");
    for (int i = 0; i < 70; ++i) {
        stepperclicked(plan, 3, true, told.say);
    }
    QCOMPARE(plan.rows[7].O2, "111"); // no limit
}

void TestGascalc::theActiveBoxEnablesItsCells() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    Told told;
    plan.rows[4].active = true;
    activeclicked(plan, 4, told.say);
    QVERIFY(plan.rows[4].cellsEnabled);
    QCOMPARE(plan.currentgasrow, 4);
    plan.rows[4].active = false;
    activeclicked(plan, 4, told.say);
    QVERIFY(!plan.rows[4].cellsEnabled);
    QCOMPARE(told.messages, QStringList());
}

void TestGascalc::aHalverinKeepsTwoActiveGases() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    process().producttype = QStringLiteral("HALV");
    plan.rows[5].active = true;
    Told told;
    plan.rows[5].active = false;
    activeclicked(plan, 5, told.say);
    QCOMPARE(told.messages, QStringList{"Halverin must have one Dil and one OCB selected"});
    QVERIFY(plan.rows[5].active);
    QVERIFY(plan.rows[5].cellsEnabled);
}

void TestGascalc::aStartingGasIsShown() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    startclicked(plan, 6);
    QCOMPARE(plan.start, 6);
    QCOMPARE(plan.currentgasrow, 6);
}

void TestGascalc::withoutAnActiveGasTheBlockStays() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    Told told;
    plan.Text5 = QStringLiteral("1.4");
    recalcmods(plan, told.say);
    const QString before = plan.gasblock;
    process().uploadtext = QStringLiteral("kept");
    plan.rows[0].active = false;
    plan.rows[0].O2 = QStringLiteral("30");
    QVERIFY(!buildgasblock(plan, told.say));
    QCOMPARE(told.messages, QStringList{"Please check at least one gas to be active"});
    QCOMPARE(plan.gasblock, before);
    QCOMPARE(process().uploadtext, "kept");
}

void TestGascalc::aCellThatIsNoNumberLeavesTheBlock() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    Told told;
    plan.gasblock = QStringLiteral("as it was");
    QVERIFY(!buildgasblock(plan, told.say)); // the depths are still words
    QCOMPARE(plan.gasblock, "as it was");
    QCOMPARE(told.messages, QStringList());
}

void TestGascalc::nitrogenIsPaddedToThreeDigits() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    Told told;
    plan.Text5 = QStringLiteral("1.4");
    setO2(plan, 1, QStringLiteral("95"), told.say);
    setO2(plan, 2, QStringLiteral("50"), told.say);
    recalcmods(plan, told.say);
    setO2(plan, 3, QStringLiteral("0"), told.say);
    QVERIFY(buildgasblock(plan, told.say));
    QCOMPARE(plan.gasblock.size(), 160);
    QCOMPARE(plan.gasblock.mid(16, 4), "B005");
    QCOMPARE(plan.gasblock.mid(32, 4), "C050");
    QCOMPARE(plan.gasblock.mid(48, 4), "D100");
}

void TestGascalc::theBlockGoesIntoTheTextInHand() {
    GasPlan plan = planIn(QStringLiteral("metre"));
    Told told;
    plan.Text5 = QStringLiteral("1.4");
    recalcmods(plan, told.say);
    QCOMPARE(process().uploadtext, plan.gasblock);
    QCOMPARE(plan.Text6, plan.gasblock + QStringLiteral("K\x1b"));
}

/// For any gas and any greatest PPO2, in both units.
void TestGascalc::modNeverComesOutDeeperThanTheGasAllows() {
    QRandomGenerator random(7);
    for (int run = 0; run < 20000; ++run) {
        const double oxygen = random.bounded(1, 101);
        const double maximum = random.bounded(0, 201) / 100.0;
        for (const double unit : {kMetresPerBar, kFeetPerBar}) {
            const double mod = modfromppo2(oxygen, maximum, unit);
            QVERIFY2(ppo2atmod(oxygen, mod, unit) <= maximum + 1e-6,
                     qPrintable(QStringLiteral("%1 % at %2").arg(oxygen).arg(maximum)));
            QVERIFY(ppo2atmod(oxygen, mod + 1.01, unit) > maximum);
        }
    }
}

QTEST_GUILESS_MAIN(TestGascalc)
#include "test_gascalc.moc"
