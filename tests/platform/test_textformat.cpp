#include "platform/textformat.h"

#include <QRandomGenerator>

#include <QtTest>

using namespace benthor::platform;

class TestTextFormat : public QObject {
    Q_OBJECT

private slots:
    void roundingIsToEvenAtEverySize();
    void numbersFollowTheirPattern_data();
    void numbersFollowTheirPattern();
    void datesFollowTheirPattern();
    void minutesAreMeantBehindHours();
    void aLeadingNumberEndsWhereItEnds_data();
    void aLeadingNumberEndsWhereItEnds();
    void numericAllowsSignPointAndWhiteSpace_data();
    void numericAllowsSignPointAndWhiteSpace();
    void tiesGoToEvenInWholeNumbers();
    void aFloatStandsAsItsShortestText();
    void hexadecimalIsUpperCaseOfTheRoundedNumber();
    void trimmingTakesBlanksOnly();
};

/// As the mathematics library rounds, to the bit and the sign.
void TestTextFormat::roundingIsToEvenAtEverySize() {
    const auto isAlike = [](double value) {
        const double expected = std::nearbyint(value);
        const double found = roundToEven(value);
        return std::isnan(expected) ? std::isnan(found)
                                    : found == expected && std::signbit(found) == std::signbit(expected);
    };
    for (const double value :
         {0.0, -0.0, 0.5, 1.5, 2.5, -0.5, -1.5, -0.2, 0.49999999999999994, 0.5000000000000001,
          4503599627370495.5, 4503599627370494.5, 4503599627370496.0, 9007199254740993.0, 1e300, 5e-324,
          std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN()}) {
        QVERIFY2(isAlike(value) && isAlike(-value), qPrintable(QString::number(value, 'g', 17)));
    }
    QRandomGenerator random(20260203);
    for (int i = 0; i < 200000; ++i) {
        const double size = std::pow(10.0, random.bounded(17.0));
        const double value = (random.generateDouble() - 0.5) * size;
        const double half = std::floor(value) + 0.5;
        QVERIFY2(isAlike(value) && isAlike(half), qPrintable(QString::number(value, 'g', 17)));
    }
}

void TestTextFormat::numbersFollowTheirPattern_data() {
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("text");
    QTest::newRow("two places") << 1.3 << "0.00"
                                << "1.30";
    QTest::newRow("half away from zero") << 0.125 << "0.00"
                                         << "0.13";
    QTest::newRow("half that binary cannot hold") << 2.675 << "0.00"
                                                  << "2.68";
    QTest::newRow("negative half") << -0.125 << "0.00"
                                   << "-0.13";
    QTest::newRow("nothing is left of a small negative") << -0.001 << "0.00"
                                                         << "0.00";
    QTest::newRow("one digit at least") << 0.5 << "#0.00"
                                        << "0.50";
    QTest::newRow("no digit needed") << 0.5 << "#.00"
                                     << ".50";
    QTest::newRow("number sign alone") << 0.0 << "#"
                                       << "";
    QTest::newRow("number sign") << 12.4 << "#"
                                 << "12";
    QTest::newRow("more digits than the pattern") << 12345.678 << "#0.00"
                                                  << "12345.68";
    QTest::newRow("wide pattern") << 40.354332 << "########0.00"
                                  << "40.35";
    QTest::newRow("carry into a new digit") << 9.999 << "0.00"
                                            << "10.00";
    QTest::newRow("optional places") << 18492220.4400 << "0.######"
                                     << "18492220.44";
    QTest::newRow("optional places, none there") << 7.0 << "0.######"
                                                 << "7.";
    QTest::newRow("leading zeros") << 42.0 << "0000000000"
                                   << "0000000042";
    QTest::newRow("unit behind") << 12.5 << "0m"
                                 << "13m";
    QTest::newRow("words behind") << 3.4 << "0mins"
                                  << "3mins";
    QTest::newRow("percent") << 0.15 << "0%"
                             << "15%";
    QTest::newRow("percent half") << 0.145 << "0%"
                                  << "15%";
    QTest::newRow("large") << 1e12 << "0"
                           << "1000000000000";
    QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN() << "0.00"
                                  << "";
}

void TestTextFormat::numbersFollowTheirPattern() {
    QFETCH(double, value);
    QFETCH(QString, pattern);
    QFETCH(QString, text);
    QCOMPARE(formatNumber(value, pattern), text);
}

void TestTextFormat::datesFollowTheirPattern() {
    const QDateTime moment(QDate(2004, 2, 1), QTime(8, 5, 3));
    QCOMPARE(formatDate(moment, u"dd/mm/yyyy hh:nn:ss"), "01/02/2004 08:05:03");
    QCOMPARE(formatDate(moment, u"dd/mmm/yyyy hh:nn:ss"), "01/Feb/2004 08:05:03");
    QCOMPARE(formatDate(moment, u"mmm dd yyyy  hh:nn:ss"), "Feb 01 2004  08:05:03");
    QCOMPARE(formatDate(moment, u"mm/dd/yyyy"), "02/01/2004");
    QCOMPARE(formatDate(QDateTime(), u"mm/dd/yyyy"), "");
}

void TestTextFormat::minutesAreMeantBehindHours() {
    const QDateTime moment(QDate(2004, 2, 11), QTime(8, 58, 33));
    QCOMPARE(formatDate(moment, u"mmm/dd/yyyy hh:mm:ss"), "Feb/11/2004 08:58:33");
    QCOMPARE(formatDate(moment, u"mm/dd/yyyy hh:mm:ss"), "02/11/2004 08:58:33");
}

void TestTextFormat::aLeadingNumberEndsWhereItEnds_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");
    QTest::newRow("empty") << "" << 0.0;
    QTest::newRow("word") << "abc" << 0.0;
    QTest::newRow("number and letters") << "12.5abc" << 12.5;
    QTest::newRow("sign") << "-3" << -3.0;
    QTest::newRow("plus") << "+3" << 3.0;
    QTest::newRow("blanks first") << "  7 8" << 7.0;
    QTest::newRow("point first") << ".5" << 0.5;
    QTest::newRow("second point") << "1.2.3" << 1.2;
    QTest::newRow("two signs") << "--1" << 0.0;
    QTest::newRow("infinity is a word") << "inf" << 0.0;
    QTest::newRow("line feed first") << "\n12" << 12.0;
    QTest::newRow("carriage return behind") << "12\r" << 12.0;
}

void TestTextFormat::aLeadingNumberEndsWhereItEnds() {
    QFETCH(QString, text);
    QFETCH(double, value);
    QCOMPARE(leadingNumber(text), value);
}

void TestTextFormat::numericAllowsSignPointAndWhiteSpace_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("numeric");
    QTest::newRow("digits") << "0012" << true;
    QTest::newRow("point") << "1.5" << true;
    QTest::newRow("sign") << "-1.5" << true;
    QTest::newRow("carriage return behind") << "1\r" << true;
    QTest::newRow("white space around") << " 1 " << true;
    QTest::newRow("empty") << "" << false;
    QTest::newRow("blank") << " " << false;
    QTest::newRow("point alone") << "." << false;
    QTest::newRow("sign alone") << "-" << false;
    QTest::newRow("letters behind") << "1a" << false;
    QTest::newRow("two points") << "1.2.3" << false;
    QTest::newRow("sign behind") << "1-" << false;
}

void TestTextFormat::numericAllowsSignPointAndWhiteSpace() {
    QFETCH(QString, text);
    QFETCH(bool, numeric);
    QCOMPARE(isNumeric(text), numeric);
}

void TestTextFormat::tiesGoToEvenInWholeNumbers() {
    QCOMPARE(toWhole(0.5), 0);
    QCOMPARE(toWhole(1.5), 2);
    QCOMPARE(toWhole(2.5), 2);
    QCOMPARE(toWhole(-1.5), -2);
    QCOMPARE(toWhole(2.500001), 3);
    QCOMPARE(toWhole(1e300), std::numeric_limits<int>::max());
    QCOMPARE(toWhole(std::nan("")), 0);
    QCOMPARE(wholePart(2.9), 2.0);
    QCOMPARE(wholePart(-2.1), -3.0);
}

void TestTextFormat::aFloatStandsAsItsShortestText() {
    QCOMPARE(floatText(0.1F), "0.1");
    QCOMPARE(floatText(-0.0F), "0");
    QCOMPARE(floatText(12.47F), "12.47");
    QCOMPARE(floatText(100000.0F), "100000");
    QCOMPARE(floatText(-3.5F), "-3.5");
}

void TestTextFormat::hexadecimalIsUpperCaseOfTheRoundedNumber() {
    QCOMPARE(hexadecimal(18492220.0), "11A2B3C");
    QCOMPARE(hexadecimal(18492220.5), "11A2B3C");
    QCOMPARE(hexadecimal(0.0), "0");
}

void TestTextFormat::trimmingTakesBlanksOnly() {
    QCOMPARE(trimBlanks(u"  1\r "), "1\r");
    QCOMPARE(trimBlanks(u"   "), "");
    QCOMPARE(trimBlanks(u"\ta"), "\ta");
}

QTEST_GUILESS_MAIN(TestTextFormat)
#include "test_textformat.moc"
