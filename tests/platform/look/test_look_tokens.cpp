#include "platform/look/look.h"
#include "platform/look/series.h"

#include <QLabel>
#include <QtTest>

using namespace benthor::look;

class TestLookTokens : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void contrastGoesFromOneToTwentyOne();
    void readableIsBlackOnLightAndWhiteOnDark_data();
    void readableIsBlackOnLightAndWhiteOnDark();
    void legibleKeepsAnInkThatReads();
    void legibleMovesAnInkThatDoesNotReadWithinItsHue();
    void everyPairUsedForTextReads_data();
    void everyPairUsedForTextReads();
    void edgesOfWhatCanBeWorkedStandOut_data();
    void edgesOfWhatCanBeWorkedStandOut();
    void everySeriesStandsOutOnTheChart_data();
    void everySeriesStandsOutOnTheChart();
    void noTwoSeriesLookTheSame_data();
    void noTwoSeriesLookTheSame();
    void cellsAreToldApartByDashAlone();
    void switchingTheThemeChangesTokensAndPalette();
    void switchingTheThemeReachesLabelsThatStand();
    void theDesktopThemeStaysWhatItWas();
};

void TestLookTokens::initTestCase() {
    apply(*qApp);
}

void TestLookTokens::contrastGoesFromOneToTwentyOne() {
    QCOMPARE(contrastRatio(Qt::white, Qt::white), 1.0);
    QVERIFY(std::abs(contrastRatio(Qt::black, Qt::white) - 21.0) < 1e-9);
    QVERIFY(std::abs(contrastRatio(QColor(0x76, 0x76, 0x76), Qt::white) - 4.54) < 0.01);
    QCOMPARE(contrastRatio(Qt::red, Qt::white), contrastRatio(Qt::white, Qt::red));
}

void TestLookTokens::readableIsBlackOnLightAndWhiteOnDark_data() {
    QTest::addColumn<QColor>("ground");
    QTest::addColumn<QColor>("ink");
    QTest::newRow("white") << QColor(Qt::white) << QColor(Qt::black);
    QTest::newRow("black") << QColor(Qt::black) << QColor(Qt::white);
    QTest::newRow("yellow") << QColor(255, 255, 0) << QColor(Qt::black);
    QTest::newRow("green") << QColor(0, 255, 0) << QColor(Qt::black);
    QTest::newRow("blue") << QColor(0, 0, 255) << QColor(Qt::white);
    QTest::newRow("red") << QColor(255, 0, 0) << QColor(Qt::black);
    QTest::newRow("cyan") << QColor(0, 255, 255) << QColor(Qt::black);
}

void TestLookTokens::readableIsBlackOnLightAndWhiteOnDark() {
    QFETCH(QColor, ground);
    QFETCH(QColor, ink);
    QCOMPARE(readableOn(ground), ink);
    QVERIFY(contrastRatio(readableOn(ground), ground) >= 4.5);
}

void TestLookTokens::legibleKeepsAnInkThatReads() {
    const QColor blue(0, 0, 255);
    QCOMPARE(legibleOn(blue, tokens(Theme::Light).surface), blue);
}

void TestLookTokens::legibleMovesAnInkThatDoesNotReadWithinItsHue() {
    const QColor blue(0, 0, 255);
    const QColor surface = tokens(Theme::Dark).surface;
    QVERIFY(contrastRatio(blue, surface) < 4.5);
    const QColor moved = legibleOn(blue, surface);
    QVERIFY(contrastRatio(moved, surface) >= 4.5);
    QCOMPARE(moved.hslHue(), blue.hslHue());
}

void TestLookTokens::everyPairUsedForTextReads_data() {
    QTest::addColumn<QColor>("ink");
    QTest::addColumn<QColor>("ground");
    for (const Theme theme : {Theme::Light, Theme::Dark}) {
        const QByteArray name = theme == Theme::Light ? "light" : "dark";
        const Tokens& token = tokens(theme);
        const std::pair<const char*, QColor> grounds[] = {{" on ground", token.ground},
                                                          {" on surface", token.surface},
                                                          {" on sunken", token.sunken},
                                                          {" on accentsoft", token.accentsoft}};
        for (const auto& [where, ground] : grounds) {
            QTest::newRow(name + " text" + where) << token.text << ground;
            QTest::newRow(name + " textquiet" + where) << token.textquiet << ground;
            QTest::newRow(name + " accent" + where) << token.accent << ground;
            QTest::newRow(name + " bad" + where) << token.bad << ground;
        }
        QTest::newRow(name + " ontext on accent") << token.ontext << token.accent;
        QTest::newRow(name + " notice on its ground") << token.notice << token.noticesoft;
        QTest::newRow(name + " notice on surface") << token.notice << token.surface;
    }
    QTest::newRow("light good on surface") << tokens(Theme::Light).good << tokens(Theme::Light).surface;
    QTest::newRow("dark good on surface") << tokens(Theme::Dark).good << tokens(Theme::Dark).surface;
}

void TestLookTokens::everyPairUsedForTextReads() {
    QFETCH(QColor, ink);
    QFETCH(QColor, ground);
    const double ratio = contrastRatio(ink, ground);
    QVERIFY2(ratio >= 4.5, qPrintable(QString::number(ratio)));
}

void TestLookTokens::edgesOfWhatCanBeWorkedStandOut_data() {
    QTest::addColumn<QColor>("edge");
    QTest::addColumn<QColor>("ground");
    for (const Theme theme : {Theme::Light, Theme::Dark}) {
        const QByteArray name = theme == Theme::Light ? "light" : "dark";
        const Tokens& token = tokens(theme);
        QTest::newRow(name + " edge on ground") << token.edge << token.ground;
        QTest::newRow(name + " edge on surface") << token.edge << token.surface;
        QTest::newRow(name + " focus on ground") << token.accent << token.ground;
        QTest::newRow(name + " focus on surface") << token.accent << token.surface;
        QTest::newRow(name + " focus on a chosen entry") << token.accent << token.accentsoft;
    }
}

void TestLookTokens::edgesOfWhatCanBeWorkedStandOut() {
    QFETCH(QColor, edge);
    QFETCH(QColor, ground);
    const double ratio = contrastRatio(edge, ground);
    QVERIFY2(ratio >= 3.0, qPrintable(QString::number(ratio)));
}

void TestLookTokens::everySeriesStandsOutOnTheChart_data() {
    QTest::addColumn<int>("series");
    QTest::addColumn<bool>("dark");
    for (int k = 0; k < seriesCount; ++k) {
        QTest::addRow("series %d light", k) << k << false;
        QTest::addRow("series %d dark", k) << k << true;
    }
}

void TestLookTokens::everySeriesStandsOutOnTheChart() {
    QFETCH(int, series);
    QFETCH(bool, dark);
    const Theme theme = dark ? Theme::Dark : Theme::Light;
    const SeriesStyle style = seriesStyle(static_cast<Series>(series), theme);
    const double ratio = contrastRatio(style.colour, tokens(theme).surface);
    QVERIFY2(ratio >= 3.0, qPrintable(QString::number(ratio)));
    QVERIFY(style.width >= 1.0);
}

void TestLookTokens::noTwoSeriesLookTheSame_data() {
    QTest::addColumn<bool>("dark");
    QTest::newRow("light") << false;
    QTest::newRow("dark") << true;
}

void TestLookTokens::noTwoSeriesLookTheSame() {
    QFETCH(bool, dark);
    const Theme theme = dark ? Theme::Dark : Theme::Light;
    for (int a = 0; a < seriesCount; ++a) {
        for (int b = a + 1; b < seriesCount; ++b) {
            const SeriesStyle one = seriesStyle(static_cast<Series>(a), theme);
            const SeriesStyle other = seriesStyle(static_cast<Series>(b), theme);
            const bool same =
                one.colour == other.colour && one.pattern == other.pattern && one.step == other.step;
            QVERIFY2(!same, qPrintable(QStringLiteral("%1 and %2").arg(a).arg(b)));
        }
    }
}

void TestLookTokens::cellsAreToldApartByDashAlone() {
    const QVector<qreal> a = seriesStyle(Series::CellA, Theme::Light).pattern;
    const QVector<qreal> b = seriesStyle(Series::CellB, Theme::Light).pattern;
    const QVector<qreal> c = seriesStyle(Series::CellC, Theme::Light).pattern;
    QVERIFY(a.isEmpty());
    QVERIFY(!b.isEmpty() && !c.isEmpty());
    QVERIFY(b.first() > c.first());
    QCOMPARE(seriesStyle(Series::CellB, Theme::Light).pen().dashPattern(), b);
}

void TestLookTokens::switchingTheThemeChangesTokensAndPalette() {
    setTheme(Theme::Light);
    QCOMPARE(theme(), Theme::Light);
    QCOMPARE(tokens().surface, QColor(0xFF, 0xFF, 0xFF));
    QCOMPARE(qApp->palette().color(QPalette::Base), tokens(Theme::Light).surface);
    setTheme(Theme::Dark);
    QCOMPARE(theme(), Theme::Dark);
    QCOMPARE(tokens().surface, QColor(0x16, 0x21, 0x2D));
    QCOMPARE(qApp->palette().color(QPalette::Base), tokens(Theme::Dark).surface);
    QCOMPARE(qApp->palette().color(QPalette::Window), tokens(Theme::Dark).ground);
}

void TestLookTokens::switchingTheThemeReachesLabelsThatStand() {
    setTheme(Theme::Light);
    const std::unique_ptr<QLabel> label(makeCaption(QStringLiteral("Dive")));
    label->show();
    QCOMPARE(label->palette().color(label->foregroundRole()), tokens(Theme::Light).textquiet);
    setTheme(Theme::Dark);
    QCOMPARE(label->palette().color(label->foregroundRole()), tokens(Theme::Dark).textquiet);
}

void TestLookTokens::theDesktopThemeStaysWhatItWas() {
    const Theme before = desktopTheme();
    setTheme(before == Theme::Light ? Theme::Dark : Theme::Light);
    QCOMPARE(desktopTheme(), before);
}

QTEST_MAIN(TestLookTokens)
#include "test_look_tokens.moc"
