#include "profile/fieldnumber.h"

#include <QtTest>
#include <random>

using namespace benthor;
using namespace benthor::profile;

class TestFieldNumber : public QObject {
    Q_OBJECT

private slots:
    void anExactHalfGoesAwayFromZero_data();
    void anExactHalfGoesAwayFromZero();
    void formattingInNumbersEqualsFormattingInText();
    void theShortWayReadsAsTheLongOne_data();
    void theShortWayReadsAsTheLongOne();
    void theShortWayReadsRandomTextsAsTheLongOne();
    void aFloatHoldsWhatFitsAndNoNegativeZero();
};

namespace {

double throughText(double value, int places) {
    return platform::leadingNumber(platform::formatNumber(value, places == 0 ? u"###0" : u"###0.00"));
}

} // namespace

void TestFieldNumber::anExactHalfGoesAwayFromZero_data() {
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("places");
    QTest::addColumn<double>("formatted");
    QTest::newRow("115.5 hundredths") << 115.5 / 100.0 << 2 << 1.16;
    QTest::newRow("binary below the half") << 2.675 << 2 << 2.68;
    QTest::newRow("negative") << -2.675 << 2 << -2.68;
    QTest::newRow("just below") << 2.67499 << 2 << 2.67;
    QTest::newRow("below the half in 15 digits") << 2.67499999999999 << 2 << 2.67;
    QTest::newRow("below the half in 16 digits") << 2.674999999999999 << 2 << 2.68;
    QTest::newRow("whole") << 20.5 << 0 << 21.0;
    QTest::newRow("whole, negative") << -2.5 << 0 << -3.0;
    QTest::newRow("half of one") << 0.5 << 0 << 1.0;
    QTest::newRow("less than half") << 0.4999 << 0 << 0.0;
    QTest::newRow("tiny") << 1e-300 << 2 << 0.0;
    QTest::newRow("large") << 1e300 << 2 << 1e300;
    QTest::newRow("large half") << 123456789012.125 << 2 << 123456789012.13;
}

void TestFieldNumber::anExactHalfGoesAwayFromZero() {
    QFETCH(double, value);
    QFETCH(int, places);
    QFETCH(double, formatted);
    QVERIFY(formattedNumber(value, places) == formatted); // exactly; QCOMPARE would be content with nearly
    QVERIFY(throughText(value, places) == formatted);
}

void TestFieldNumber::formattingInNumbersEqualsFormattingInText() {
    std::mt19937 random(20240229);
    const auto check = [](double value) {
        for (const int places : {0, 2}) {
            const double expected = throughText(value, places);
            if (formattedNumber(value, places) != expected ||
                std::signbit(formattedNumber(value, places)) != std::signbit(expected)) {
                QFAIL(qPrintable(QStringLiteral("%1 with %2 places").arg(value, 0, 'g', 17).arg(places)));
            }
        }
    };
    for (int i = 0; i < 20000; ++i) {
        const int whole = static_cast<int>(random() % 4000001U) - 2000000;
        check(whole / 100.0);
        check(whole / 1000.0); // one in ten is a half of a hundredth
        check(whole / 200.0);  // one in two
        check(whole * 9.0 / 5.0 + 32.0);
        check(std::ldexp(static_cast<double>(whole), static_cast<int>(random() % 120U) - 60));
        const double half = whole / 100.0 + 0.005;
        check(std::nextafter(half, 0.0));
        check(std::nextafter(half, 1e9));
    }
}

void TestFieldNumber::theShortWayReadsAsTheLongOne_data() {
    QTest::addColumn<QByteArray>("text");
    for (const char* text : {"",
                             "7",
                             "007",
                             "123456789",
                             "1234567890",
                             "12345678901234567890",
                             "12.5",
                             "12.",
                             "12e1",
                             "12E1",
                             "12e",
                             "1a",
                             "1 2",
                             " 7",
                             "\n7",
                             "-7",
                             "+7",
                             "--7",
                             ".5",
                             ".",
                             "x",
                             "9,",
                             "1\r",
                             "1e400",
                             "123456789e2",
                             "123456789.5",
                             "1.5.5",
                             "\t-0"}) {
        QTest::newRow(text) << QByteArray(text);
    }
}

void TestFieldNumber::theShortWayReadsAsTheLongOne() {
    QFETCH(QByteArray, text);
    QVERIFY(fieldNumber(text) == platform::leadingNumber(text));
}

void TestFieldNumber::theShortWayReadsRandomTextsAsTheLongOne() {
    static constexpr char kAlphabet[] = "00123456789.eE+- xM\n";
    std::mt19937 random(1);
    for (int i = 0; i < 50000; ++i) {
        QByteArray text(static_cast<qsizetype>(random() % 14U), '0');
        for (char& c : text) {
            c = kAlphabet[random() % (sizeof kAlphabet - 1)];
        }
        QVERIFY2(fieldNumber(text) == platform::leadingNumber(text), text.constData());
    }
}

void TestFieldNumber::aFloatHoldsWhatFitsAndNoNegativeZero() {
    QCOMPARE(asFloat(1.5), 1.5F);
    QCOMPARE(asFloat(3e38), 3e38F);
    QCOMPARE(asFloat(1e39), 0.0F);
    QCOMPARE(asFloat(-1e39), 0.0F);
    QCOMPARE(asFloat(std::nan("")), 0.0F);
    QCOMPARE(asFloat(std::numeric_limits<double>::infinity()), 0.0F);
    QVERIFY(!std::signbit(asFloat(-0.0)));
}

QTEST_GUILESS_MAIN(TestFieldNumber)
#include "test_fieldnumber.moc"
