#include "platform/look/look.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QtTest>

using namespace benthor::look;

class TestLookType : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void sizesGrowWithTheDesktopsFont();
    void sizesKeepTheirOrder();
    void digitsOfNumbersAreEquallyWide_data();
    void digitsOfNumbersAreEquallyWide();
    void aFontOfUnequalDigitsIsKnown();
    void theApplicationTakesTheBodyFont();
};

// A desktop that asks for 15 points: half as large again as the 10 that sizes are given for.
void TestLookType::initTestCase() {
    QFont desktop = QGuiApplication::font();
    desktop.setFamily(QStringLiteral("DejaVu Sans"));
    desktop.setPointSizeF(15);
    QApplication::setFont(desktop);
    apply(*qApp);
}

void TestLookType::sizesGrowWithTheDesktopsFont() {
    QVERIFY(std::abs(fontScale() - 1.5) < 0.05);
    QCOMPARE(scaled(32), qRound(32 * fontScale()));
    QCOMPARE(body().pixelSize(), scaled(13));
    QCOMPARE(caption().pixelSize(), scaled(11));
    // What is larger than the text that is read grows by as many pixels as that.
    QCOMPARE(heading().pixelSize(), 16 + scaled(13) - 13);
    QCOMPARE(big(40).pixelSize(), 40 + scaled(13) - 13);
}

void TestLookType::sizesKeepTheirOrder() {
    QVERIFY(caption().pixelSize() < body().pixelSize());
    QVERIFY(body().pixelSize() < heading().pixelSize());
    QVERIFY(heading().pixelSize() < big(24).pixelSize());
    QVERIFY(big(24).weight() > numbers(24).weight());
}

void TestLookType::digitsOfNumbersAreEquallyWide_data() {
    QTest::addColumn<QFont>("font");
    QTest::newRow("numbers 11") << numbers(11);
    QTest::newRow("numbers 13") << numbers(13);
    QTest::newRow("big 24") << big(24);
    QTest::newRow("big 40") << big(40);
}

void TestLookType::digitsOfNumbersAreEquallyWide() {
    QFETCH(QFont, font);
    const QFontMetricsF metrics(font);
    for (char digit = '0'; digit <= '9'; ++digit) {
        QCOMPARE(metrics.horizontalAdvance(QLatin1Char(digit)), metrics.horizontalAdvance(u'0'));
    }
    QVERIFY(hasTabularDigits(font));
}

void TestLookType::aFontOfUnequalDigitsIsKnown() {
    QVERIFY(hasTabularDigits(QFont(QStringLiteral("DejaVu Sans Mono"))));
    QVERIFY(hasTabularDigits(QFont(QStringLiteral("DejaVu Sans"))));
    const QString unequal = QStringLiteral("Z003");
    if (QFontDatabase::families().contains(unequal)) {
        const QFont font(unequal);
        const QFontMetricsF metrics(font);
        const bool differ = metrics.horizontalAdvance(u'1') != metrics.horizontalAdvance(u'8');
        QCOMPARE(hasTabularDigits(font), !differ);
    }
}

void TestLookType::theApplicationTakesTheBodyFont() {
    QCOMPARE(QApplication::font().pixelSize(), body().pixelSize());
    QCOMPARE(QApplication::font().family(), body().family());
}

QTEST_MAIN(TestLookType)
#include "test_look_type.moc"
