#include "profile/gaslist.h"

#include <QtTest>

using namespace benthor::profile;

namespace {

GasRow row(const QString& n2, const QString& he, const QString& mod,
           const QString& on = QStringLiteral("1\r")) {
    return {QStringLiteral("D0000001"), QStringLiteral("0000"), n2, he, mod, on};
}

GasArrays read(const std::vector<GasRow>& rows, bool feet = false) {
    GasArrays gases;
    readgaslist(rows, feet, gases);
    return gases;
}

} // namespace

class TestGasList : public QObject {
    Q_OBJECT

private slots:
    void noRowsGiveTheMessageAndLeaveTheArrays();
    void rowsGoInOrderWhateverTheirGasNumber();
    void nitrogen120IsShownAsAirWithMod66();
    void aRowOutOfRangeIsReplacedAndKeepsItsHelium_data();
    void aRowOutOfRangeIsReplacedAndKeepsItsHelium();
    void modIsRoundedInMetresAndInFeet();
    void aNullCountsAsEmpty();
    void aValueBelowOneGetsAZeroInFront();
    void namesFollowHeliumThenAirThenNitrox_data();
    void namesFollowHeliumThenAirThenNitrox();
    void onlyTenGasesHaveNames();
    void theListHasALineForEachOfTenGases();
    void moreRowsThanRoomFillTheArraysOnly();
};

void TestGasList::noRowsGiveTheMessageAndLeaveTheArrays() {
    GasArrays gases = read({row("68", "0", "465")});
    QCOMPARE(readgaslist({}, false, gases), QStringLiteral("Bad record. Use Delete to remove"));
    QCOMPARE(gases.gasn2[0], 68);
    QCOMPARE(readgaslist({row("50", "0", "465")}, false, gases), QString());
    QCOMPARE(gases.gasn2[0], 50);
}

void TestGasList::rowsGoInOrderWhateverTheirGasNumber() {
    GasRow ninth = row("68", "0", "465", "0\r");
    ninth[1] = QStringLiteral("0009");
    const GasArrays gases = read({ninth, row("37", "45", "700")});
    QCOMPARE(gases.gasn2[0], 68);
    QCOMPARE(gases.gaso2[0], 32);
    QCOMPARE(gases.gasactive[0], 0);
    QCOMPARE(gases.gashe[1], 45.0);
    QCOMPARE(gases.gaso2[1], 18);
    QCOMPARE(gases.gasactive[1], 1);
    QCOMPARE(gases.gasn2[9], 0);
}

void TestGasList::nitrogen120IsShownAsAirWithMod66() {
    const GasArrays gases = read({row("120", "0", "1000")});
    QCOMPARE(gasName(gases, 0), QStringLiteral("Air"));
    QCOMPARE(gases.gasmod[0], 66);
    QVERIFY(gasListText(gases, false).startsWith(QStringLiteral("0: Air  66m  On\r\n")));
    QVERIFY(gasListText(read({row("120", "0", "1000")}, true), true)
                .startsWith(QStringLiteral("0: Air  217ft  On\r\n")));
}

void TestGasList::aRowOutOfRangeIsReplacedAndKeepsItsHelium_data() {
    QTest::addColumn<QString>("n2");
    QTest::addColumn<QString>("he");
    QTest::addColumn<bool>("replaced");
    QTest::newRow("all nitrogen") << "100"
                                  << "0" << false;
    QTest::newRow("nitrogen above") << "100.5"
                                    << "0" << true;
    QTest::newRow("nitrogen below") << "-1"
                                    << "0" << true;
    QTest::newRow("all helium") << "0"
                                << "100" << false;
    QTest::newRow("helium above") << "10"
                                  << "101" << true;
    QTest::newRow("helium below") << "10"
                                  << "-3" << true;
    QTest::newRow("both together above") << "60"
                                         << "60" << false;
    QTest::newRow("beyond every number") << "1e999"
                                         << "0" << true;
}

void TestGasList::aRowOutOfRangeIsReplacedAndKeepsItsHelium() {
    QFETCH(QString, n2);
    QFETCH(QString, he);
    QFETCH(bool, replaced);
    const GasArrays gases = read({row(n2, he, "465")});
    QCOMPARE(gases.gasn2[0], replaced ? 79 : n2.toInt());
    QCOMPARE(gases.gasmod[0], replaced ? 66 : 46);
    QCOMPARE(gases.gashe[0], he.toDouble());
    QCOMPARE(gases.gaso2[0], 100 - gases.gasn2[0] - he.toInt());
}

void TestGasList::modIsRoundedInMetresAndInFeet() {
    QCOMPARE(read({row("64", "0", "465")}).gasmod[0], 46);        // 46.5, ties to even
    QCOMPARE(read({row("64", "0", "475")}).gasmod[0], 48);        // 47.5
    QCOMPARE(read({row("64", "0", "465")}, true).gasmod[0], 153); // 152.559
    QCOMPARE(read({row("64", "0", "46")}, true).gasmod[0], 15);   // 15.09
}

void TestGasList::aNullCountsAsEmpty() {
    GasArrays gases = read(
        {{QStringLiteral("D0000001"), std::nullopt, std::nullopt, std::nullopt, std::nullopt, std::nullopt}});
    QCOMPARE(gases.gasn2[0], 0);
    QCOMPARE(gases.gaso2[0], 100);
    QCOMPARE(gases.gasmod[0], 0);
    QCOMPARE(gases.gasactive[0], 0);
    QCOMPARE(gasName(gases, 0), QStringLiteral("NX100"));
    gases = read({GasRow{}}); // nor does a row without fields harm
    QCOMPARE(gasName(gases, 0), QStringLiteral("NX100"));
}

void TestGasList::aValueBelowOneGetsAZeroInFront() {
    QCOMPARE(gasFieldText(QStringLiteral(".5")), QStringLiteral("0.5"));
    QCOMPARE(gasFieldText(QStringLiteral("0.5")), QStringLiteral("00.5"));
    QCOMPARE(gasFieldText(QStringLiteral("0")), QStringLiteral("0"));
    QCOMPARE(gasFieldText(QStringLiteral("1")), QStringLiteral("1"));
    QCOMPARE(gasFieldText(QStringLiteral("-.5")), QStringLiteral("-.5"));
    QCOMPARE(gasFieldText(std::nullopt), QString());
}

void TestGasList::namesFollowHeliumThenAirThenNitrox_data() {
    QTest::addColumn<QString>("n2");
    QTest::addColumn<QString>("he");
    QTest::addColumn<QString>("name");
    QTest::newRow("trimix") << "37"
                            << "45"
                            << "TX18/45";
    QTest::newRow("one per cent of helium") << "78"
                                            << "1"
                                            << "TX21/1";
    QTest::newRow("air") << "79"
                         << "0"
                         << "Air";
    QTest::newRow("helium counts before air") << "79"
                                              << "10"
                                              << "TX11/10";
    QTest::newRow("nitrox") << "68"
                            << "0"
                            << "NX32";
    QTest::newRow("nearly air") << "80"
                                << "0"
                                << "NX20";
    QTest::newRow("oxygen") << "0"
                            << "0"
                            << "NX100";
    QTest::newRow("less than one per cent of helium") << "79"
                                                      << ".9"
                                                      << "Air";
}

void TestGasList::namesFollowHeliumThenAirThenNitrox() {
    QFETCH(QString, n2);
    QFETCH(QString, he);
    QFETCH(QString, name);
    QCOMPARE(gasName(read({row(n2, he, "660")}), 0), name);
}

void TestGasList::onlyTenGasesHaveNames() {
    const GasNames names = gasNames(read(std::vector<GasRow>(31, row("79", "0", "660"))));
    QCOMPARE(names[9], QStringLiteral("Air"));
    for (size_t gas = 10; gas < names.size(); ++gas) {
        QCOMPARE(names[gas], QString());
    }
    QCOMPARE(gasNames(GasArrays())[0], QStringLiteral("NX0"));
}

void TestGasList::theListHasALineForEachOfTenGases() {
    const GasArrays gases =
        read({row("37", "45", "700"), row("79", "0", "660", "0\r"), row("50", "0", "180", "x")});
    QCOMPARE(gasListText(gases, false), "0: TX18/45  70m  On\r\n"
                                        "1: Air  66m  Off\r\n"
                                        "2: NX50  18m  Off\r\n"
                                        "3: NX0  0m  Off\r\n"
                                        "4: NX0  0m  Off\r\n"
                                        "5: NX0  0m  Off\r\n"
                                        "6: NX0  0m  Off\r\n"
                                        "7: NX0  0m  Off\r\n"
                                        "8: NX0  0m  Off\r\n"
                                        "9: NX0  0m  Off\r\n");
}

void TestGasList::moreRowsThanRoomFillTheArraysOnly() {
    std::vector<GasRow> rows(40, row("79", "0", "660"));
    rows[30] = row("68", "0", "465");
    GasArrays gases;
    QCOMPARE(readgaslist(rows, false, gases), QString());
    QCOMPARE(gasName(gases, 30), QStringLiteral("NX32"));
}

QTEST_GUILESS_MAIN(TestGasList)
#include "test_gaslist.moc"
