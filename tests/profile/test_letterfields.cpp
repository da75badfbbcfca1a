#include "divetext.h"

#include <QtTest>

using namespace benthor::profile;

class TestLetterFields : public QObject {
    Q_OBJECT

private slots:
    void eachLetterGoesToItsArray_data();
    void eachLetterGoesToItsArray();
    void nOverwritesTheMark();
    void theNumberOfAnOFieldIsDropped();
    void anUnknownLetterIsPassedOver();
    void pressuresInFeetAreWholePsi();
    void co2HasTwoDerivedValues();
    void eachSStartsTheNextStickAndIsHeldOverThreeSamples();
    void fieldsAboveEighteenAreNeverEmptied();
    void e1IsANumberAndE1AAnAlarm();
    void prediveAloneIsNoAlarmPointAndWithASecondTokenItIs();
    void aTrailingCommaIsAnAlarmToken();
    void aTokenOfAGrownFieldKeepsTheTextItHad();
    void aLetterEnablesItsBoxAndUncoversItsMask_data();
    void aLetterEnablesItsBoxAndUncoversItsMask();
    void po2EnablesItsBoxAboveFiveHundredths();
    void noFieldEnablesGasMarkAndAmbientBoxes();
};

void TestLetterFields::eachLetterGoesToItsArray_data() {
    using P = DiveProfile;
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<SampleArray P::*>("array");
    QTest::addColumn<float>("value");
    const auto row = [](const char* field, SampleArray P::*array, float value) {
        QTest::newRow(field) << QByteArray(field) << array << value;
    };
    row("B611", &P::bat1, 6.11F);
    row("C487", &P::bat2, 4.87F);
    row("D143", &P::hpdil, 143.0F);
    row("E97", &P::hpo2, 97.0F);
    row("F101", &P::cella, 1.01F);
    row("G99", &P::cellb, 0.99F);
    row("H103", &P::cellc, 1.03F);
    row("I130", &P::setpoint, 1.3F);
    row("J4.5", &P::ceilingneg, -4.5F);
    row("N7", &P::mark, 7.0F);
    row("O7", &P::extrao, 7.0F);
    row("P8", &P::extrap, 8.0F);
    row("Q9", &P::extraq, 9.0F);
    row("R10", &P::extrar, 10.0F);
    row("S201", &P::tpm1, 201.0F);
    row("T202", &P::tpm2, 202.0F);
    row("U203", &P::tpm3, 203.0F);
    row("V204", &P::tpm4, 204.0F);
    row("W205", &P::tpm5, 205.0F);
    row("X206", &P::tpm6, 206.0F);
    row("Y207", &P::tpm7, 207.0F);
    row("Z208", &P::tpm8, 208.0F);
    row("x55", &P::tpmpcta, 55.0F);
    row("y66", &P::tpmpctb, 66.0F);
    row("z77", &P::co2, 0.77F);
    row("v11", &P::extrav, 11.0F);
    row("t22", &P::extrat, 22.0F);
    row("f44", &P::extraf, 44.0F);
    row("B1e3", &P::bat1, 10.0F);
    row("D-5", &P::hpdil, -5.0F);
    row("D 5 6", &P::hpdil, 5.0F);
    row("Dx5", &P::hpdil, 0.0F);
    row("D1.2.3", &P::hpdil, 1.2F);
    row("D1e99", &P::hpdil, 0.0F); // more than a 32-bit float holds
}

void TestLetterFields::eachLetterGoesToItsArray() {
    using P = DiveProfile;
    QFETCH(QByteArray, field);
    QFETCH(SampleArray P::*, array);
    QFETCH(float, value);
    const DiveProfile profile = decoded({record(",K1," + field + ",K1")});
    QCOMPARE(sampleOf(profile.*array, 4), value);
    QCOMPARE(sampleOf(profile.alarmcount, 4), 0.0F);
    // At a fixed position the same field is something else.
    const DiveProfile early = decoded({",100,0,70," + field});
    QCOMPARE(sampleOf(early.*array, 4), 0.0F);
}

void TestLetterFields::nOverwritesTheMark() {
    const DiveProfile profile =
        decoded({",0,0,0,M1,T20,A500,N0", ",0,0,0,M0,T20,A500,N5", ",0,0,0,M1,T20,A500"});
    QCOMPARE(sampleOf(profile.mark, 4), 0.0F);
    QCOMPARE(sampleOf(profile.mark, 5), 5.0F);
    QCOMPARE(sampleOf(profile.mark, 6), 1.0F);
}

void TestLetterFields::theNumberOfAnOFieldIsDropped() {
    const DiveProfile with = decoded({record(",o33")});
    QCOMPARE(sampleOf(with.extrao, 4), 0.0F);
    QCOMPARE(sampleOf(with.alarmcount, 4), 0.0F);
}

void TestLetterFields::anUnknownLetterIsPassedOver() {
    const DiveProfile profile = decoded({record(",K5,L6,a7,b8,55,B600")});
    QCOMPARE(sampleOf(profile.alarmcount, 4), 0.0F);
    QCOMPARE(sampleOf(profile.bat1, 4), 6.0F);
}

void TestLetterFields::pressuresInFeetAreWholePsi() {
    const DiveProfile profile = decoded({record(",D100,E97"), record(",D2.5,E5")}, true);
    QCOMPARE(sampleOf(profile.hpdil, 4), 1470.0F);
    QCOMPARE(sampleOf(profile.hpo2, 4), 1426.0F); // 1425.9
    QCOMPARE(sampleOf(profile.hpdil, 5), 37.0F);  // 36.75
    QCOMPARE(sampleOf(profile.hpo2, 5), 74.0F);   // 73.5, to the even one
}

void TestLetterFields::co2HasTwoDerivedValues() {
    const DiveProfile profile = decoded({record(",z519"), record(",z1"), record(",z2")});
    // c = 5.19, d = 9.38: c / (2 - e^-0.2595) and, with a = d / (d + 10), the second form
    QVERIFY(qAbs(sampleOf(profile.co2adjust1, 4) - 4.224448F) < 1e-5F);
    const double a = 9.38 / 19.38 * 5.19;
    const double second = 5.19 / ((1.6 - 1.6 * std::exp(a / -80.0)) + (2.0 - std::exp(a / -20.0)));
    QVERIFY(qAbs(sampleOf(profile.co2adjust2, 4) - second) < 1e-5);
    QVERIFY(profile.enabled.test(14));
    QVERIFY(!decoded({record(",z1")}).enabled.test(14));
    QVERIFY(decoded({record(",z2")}).enabled.test(14));
}

void TestLetterFields::eachSStartsTheNextStickAndIsHeldOverThreeSamples() {
    const DiveProfile profile =
        decoded({record(",S100,Z107"), record(",S110"), record(",S120"), record(",S130,T131")});
    for (int n : {2, 3, 4}) { // the counter stood at 3 and goes to 4, which is stick 1
        QCOMPARE(sampleOf(profile.tpmstick1[1], n), 100.0F);
        QCOMPARE(sampleOf(profile.tpmstick1[8], n), 107.0F);
        QCOMPARE(sampleOf(profile.tpmstick2[1], n + 1), 110.0F);
        QCOMPARE(sampleOf(profile.tpmstick0[1], n + 2), 120.0F);
        QCOMPARE(sampleOf(profile.tpmstick1[1], n + 3), 130.0F);
        QCOMPARE(sampleOf(profile.tpmstick1[2], n + 3), 131.0F);
    }
    QCOMPARE(sampleOf(profile.tpmstick1[1], 1), 0.0F);
    const DiveProfile withoutS = decoded({record(",T9")});
    QCOMPARE(sampleOf(withoutS.tpmstick0[2], 1), 9.0F);
    QCOMPARE(sampleOf(withoutS.tpmstick0[2], 3), 9.0F);
    QCOMPARE(sampleOf(withoutS.tpmstick0[2], 4), 0.0F);
}

void TestLetterFields::fieldsAboveEighteenAreNeverEmptied() {
    const QByteArray upTo17 = record(",K1,K1,K1,K1,K1,K1,K1,K1,K1,K1,K1"); // 18 is next
    const DiveProfile profile =
        decoded({upTo17 + ",B500,B700", upTo17 + ",K1,P1", record(""), upTo17 + ",K1,"});
    QCOMPARE(sampleOf(profile.bat1, 4), 7.0F); // of two the last wins
    QCOMPARE(sampleOf(profile.bat1, 5), 7.0F); // field 19 now reads B700P1
    QCOMPARE(sampleOf(profile.extrap, 5), 0.0F);
    QCOMPARE(sampleOf(profile.bat1, 6), 0.0F); // a line without a field 19 does not look at it
    QCOMPARE(sampleOf(profile.bat1, 7), 7.0F); // an empty one leaves it as it was, so it is no alarm
    QCOMPARE(sampleOf(profile.alarmcount, 7), 0.0F);
}

void TestLetterFields::e1IsANumberAndE1AAnAlarm() {
    const DiveProfile profile = decoded({record(",E1"), record(",E1A"), record(",E1.")});
    QCOMPARE(sampleOf(profile.hpo2, 4), 1.0F);
    QCOMPARE(sampleOf(profile.alarmcount, 4), 0.0F);
    QCOMPARE(sampleOf(profile.hpo2, 5), 0.0F);
    QCOMPARE(sampleOf(profile.alarmcount, 5), 1.0F);
    QCOMPARE(profile.alarmtext(5), "E1A\r\n");
    QCOMPARE(profile.alarmtext(6), "E1.\r\n");
    QCOMPARE(profile.alarmtext(4), "");
}

void TestLetterFields::prediveAloneIsNoAlarmPointAndWithASecondTokenItIs() {
    const DiveProfile profile = decoded({record(",PREDIVE"), record(",PREDIVE,ASCENT"), record(",xPREDIVEx"),
                                         record(",predive"), record(",B600"), record(",PREDIVE,PREDIVE")});
    QCOMPARE(sampleOf(profile.alarmcount, 4), 1.0F);
    QVERIFY(!profile.alarmpoint(4));
    QCOMPARE(sampleOf(profile.alarmcount, 5), 2.0F);
    QVERIFY(profile.alarmpoint(5));
    QCOMPARE(profile.alarmtext(5), "PREDIVE\r\nASCENT\r\n");
    QVERIFY(!profile.alarmpoint(6));
    QVERIFY(profile.alarmpoint(7));
    QVERIFY(!profile.alarmpoint(8));
    QVERIFY(profile.alarmpoint(9));
}

void TestLetterFields::aTrailingCommaIsAnAlarmToken() {
    const DiveProfile profile = decoded({record(","), ",100,0,70,M0,T20,"});
    QCOMPARE(sampleOf(profile.alarmcount, 4), 1.0F);
    QCOMPARE(profile.alarmtext(4), "\r\n");
    QVERIFY(profile.alarmpoint(4));
    QCOMPARE(sampleOf(profile.alarmcount, 5), 0.0F); // position 6 is a fixed one
}

void TestLetterFields::aTokenOfAGrownFieldKeepsTheTextItHad() {
    const QByteArray upTo18 = record(",K1,K1,K1,K1,K1,K1,K1,K1,K1,K1,K1,K1");
    const DiveProfile profile = decoded({upTo18 + ",PRE", upTo18 + ",DIVE",
                                         upTo18 + ",s\xE9"
                                                  "e"});
    QCOMPARE(profile.alarmtext(4), "PRE\r\n");
    QVERIFY(profile.alarmpoint(4));
    QCOMPARE(profile.alarmtext(5), "PREDIVE\r\n");
    QVERIFY(!profile.alarmpoint(5));
    QCOMPARE(profile.alarmtext(6), QString::fromUtf8("PREDIVEsée\r\n"));
    QVERIFY(!profile.alarmpoint(6));
}

void TestLetterFields::aLetterEnablesItsBoxAndUncoversItsMask_data() {
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("box");
    QTest::addColumn<int>("mask");
    const auto row = [](const QByteArray& line, int box, int mask = -1) {
        QTest::newRow(line.constData()) << line << box << mask;
    };
    row(",0,0,0", 1);
    row(",0,0,70", 3);
    row(",0,0,0,M0,T1", 5);
    row(",0,0,0,M0,T1,A1", 12);
    row(",0,0,0,M0,T1,C1", 11);
    row(",0,0,0,M0,T1,,S1", 6);
    row(",0,0,0,M0,T1,,B1", 7);
    row(",0,0,0,M0,T1,,C1", 7);
    row(",0,0,0,M0,T1,,D1", 8, 2);
    row(",0,0,0,M0,T1,,E1", 8, 5);
    row(",0,0,0,M0,T1,,F1", 9, 0);
    row(",0,0,0,M0,T1,,G1", 9);
    row(",0,0,0,M0,T1,,H1", 9);
    row(",0,0,0,M0,T1,,I1", 10);
    row(",0,0,0,M0,T1,,J1", 11);
    row(",0,0,0,M0,T1,,x1", 12);
    row(",0,0,0,M0,T1,,y1", 12);
    row(",0,0,0,M0,T1,,z2", 14);
}

void TestLetterFields::aLetterEnablesItsBoxAndUncoversItsMask() {
    QFETCH(QByteArray, line);
    QFETCH(int, box);
    QFETCH(int, mask);
    const DiveProfile profile = decoded({line});
    std::bitset<16> enabled; // depth and temperature come with every record
    enabled.set(1).set(5).set(static_cast<size_t>(box));
    QCOMPARE(profile.enabled.to_ulong(), enabled.to_ulong());
    std::bitset<6> hidden;
    if (mask >= 0) {
        hidden.set(static_cast<size_t>(mask));
    }
    QCOMPARE(profile.maskshidden.to_ulong(), hidden.to_ulong());
}

void TestLetterFields::po2EnablesItsBoxAboveFiveHundredths() {
    QVERIFY(!decoded({",0,0,4"}).enabled.test(3));
    QVERIFY(!decoded({",0,0,5"}).enabled.test(3));
    QVERIFY(decoded({",0,0,6"}).enabled.test(3));
}

void TestLetterFields::noFieldEnablesGasMarkAndAmbientBoxes() {
    QByteArray everyLetter;
    for (char letter = 'A'; letter <= 'z'; ++letter) {
        everyLetter += QByteArray(",") + letter + "99";
    }
    QByteArrayList lines;
    for (qsizetype at = 0; at < everyLetter.size(); at += 40) { // ten fields a line
        lines += ",100,3,70,M1,T20,A500" + everyLetter.mid(at, 40);
    }
    const DiveProfile profile = decoded(lines);
    QCOMPARE(recordsOf(profile), static_cast<int>(lines.size()));
    for (const size_t box : {2U, 4U, 13U}) {
        QVERIFY(!profile.enabled.test(box));
    }
}

QTEST_GUILESS_MAIN(TestLetterFields)
#include "test_letterfields.moc"
