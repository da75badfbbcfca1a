// High contrast: when a desktop asks for it, and what it promises.

#include "platform/look/look.h"
#include "platform/look/series.h"
#include "platform/look/style/paint.h"
#include "platform/look/widgets/activitysweep.h"
#include "platform/look/widgets/gauge.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPalette>
#include <QTreeWidget>
#include <QtTest>

using namespace benthor::look;

namespace {

QPalette paletteOf(const QColor& ground, const QColor& text, const QColor& button, const QColor& field) {
    QPalette palette;
    palette.setColor(QPalette::Window, ground);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, field);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Button, button);
    palette.setColor(QPalette::ButtonText, text);
    return palette;
}

} // namespace

class TestLookContrast : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { apply(*qApp); }
    void init() { setContrast(Contrast::High); }
    void cleanup();
    void aPaletteAsksForIt_data();
    void aPaletteAsksForIt();
    void everyPairUsedForTextReadsFully_data();
    void everyPairUsedForTextReadsFully();
    void bordersAndFocusAreSeen();
    void whatCannotBeWorkedReadsAndIsToldApart();
    void seriesReadAndDiffer();
    void itComesIntoForceAndGoes();
    void whatIsSelectedIsSeen();
    void theFocusRingIsWider();
    void wordsInAToldColourReadFully();
    void aFieldThatIsOnlyReadStandsOnALineInsteadOfWithinAnEdge();
    void placeholdersArePalerThanWhatWasTyped();
    void focusIsSeenOnAToldGround();
    void theRingOfATableIsAsWideAsAnyOther();
    void whatIsUnlitHasAnEdge();
};

void TestLookContrast::cleanup() {
    setContrast(Contrast::Usual);
    setTheme(Theme::Light);
}

void TestLookContrast::aPaletteAsksForIt_data() {
    QTest::addColumn<QPalette>("palette");
    QTest::addColumn<bool>("high");
    const QColor black(Qt::black);
    const QColor white(Qt::white);
    const QColor grey(0xEF, 0xEF, 0xEF);
    QTest::newRow("white on black") << paletteOf(black, white, black, black) << true;
    QTest::newRow("black on white") << paletteOf(white, black, white, white) << true;
    QTest::newRow("yellow on black") << paletteOf(black, QColor(0xFF, 0xFF, 0x00), black, black) << true;
    QTest::newRow("a toolkit's own light one") << paletteOf(grey, black, grey, white) << false;
    QTest::newRow("a light desktop") << paletteOf(QColor(0xEF, 0xF0, 0xF1), QColor(0x23, 0x26, 0x29),
                                                  QColor(0xFC, 0xFC, 0xFC), white)
                                     << false;
    QTest::newRow("a dark desktop") << paletteOf(QColor(0x2A, 0x2E, 0x32), QColor(0xFC, 0xFC, 0xFC),
                                                 QColor(0x31, 0x36, 0x3B), QColor(0x1B, 0x1E, 0x20))
                                    << false;
    QTest::newRow("white windows, grey buttons") << paletteOf(white, black, grey, white) << false;
}

void TestLookContrast::aPaletteAsksForIt() {
    QFETCH(QPalette, palette);
    QFETCH(bool, high);
    QCOMPARE(isHighContrast(palette), high);
}

void TestLookContrast::everyPairUsedForTextReadsFully_data() {
    QTest::addColumn<bool>("dark");
    QTest::newRow("light") << false;
    QTest::newRow("dark") << true;
}

void TestLookContrast::everyPairUsedForTextReadsFully() {
    QFETCH(bool, dark);
    const Tokens& token = tokens(dark ? Theme::Dark : Theme::Light);
    const QColor grounds[] = {token.ground, token.surface, token.sunken, token.accentsoft};
    const QColor inks[] = {token.text, token.textquiet, token.accent, token.bad};
    for (const QColor& ground : grounds) {
        for (const QColor& ink : inks) {
            QVERIFY2(contrastRatio(ink, ground) >= 7, qPrintable(ink.name() + u' ' + ground.name()));
        }
    }
    QVERIFY(contrastRatio(token.ontext, token.accent) >= 7);
    QVERIFY(contrastRatio(token.notice, token.noticesoft) >= 7);
    QVERIFY(contrastRatio(token.text, token.noticesoft) >= 7);
    QVERIFY(contrastRatio(token.good, token.surface) >= 7);
    QVERIFY(contrastRatio(token.text, token.ground) >= 21);
}

void TestLookContrast::bordersAndFocusAreSeen() {
    for (const Theme theme : {Theme::Light, Theme::Dark}) {
        const Tokens& token = tokens(theme);
        QVERIFY(contrastRatio(token.edge, token.ground) >= 21);
        QVERIFY(contrastRatio(token.line, token.ground) >= 7);
        QVERIFY(contrastRatio(token.line, token.surface) >= 7);
        QVERIFY(contrastRatio(token.accent, token.surface) >= 7);
    }
}

void TestLookContrast::whatCannotBeWorkedReadsAndIsToldApart() {
    for (const Theme theme : {Theme::Light, Theme::Dark}) {
        const Tokens& token = tokens(theme);
        QVERIFY(contrastRatio(token.faint, token.surface) >= 7);
        QVERIFY(contrastRatio(token.faint, token.sunken) >= 7);
        QVERIFY(contrastRatio(token.faint, token.text) >= 2);
        setTheme(theme);
        QCOMPARE(qApp->palette().color(QPalette::Disabled, QPalette::WindowText), token.faint);
    }
}

void TestLookContrast::seriesReadAndDiffer() {
    for (const Theme theme : {Theme::Light, Theme::Dark}) {
        for (int a = 0; a < seriesCount; ++a) {
            const SeriesStyle one = seriesStyle(static_cast<Series>(a), theme);
            QVERIFY(contrastRatio(one.colour, tokens(theme).surface) >= 7);
            for (int b = a + 1; b < seriesCount; ++b) {
                const SeriesStyle other = seriesStyle(static_cast<Series>(b), theme);
                const bool same =
                    one.colour == other.colour && one.pattern == other.pattern && one.step == other.step;
                QVERIFY2(!same, qPrintable(QStringLiteral("%1 and %2").arg(a).arg(b)));
            }
        }
    }
}

void TestLookContrast::itComesIntoForceAndGoes() {
    QCOMPARE(contrast(), Contrast::High);
    QCOMPARE(qApp->palette().color(QPalette::Window), QColor(Qt::white));
    QCOMPARE(qApp->palette().color(QPalette::WindowText), QColor(Qt::black));
    QCOMPARE(leastContrast(), 7.0);
    setTheme(Theme::Dark);
    QCOMPARE(qApp->palette().color(QPalette::Window), QColor(Qt::black));
    QCOMPARE(qApp->palette().color(QPalette::WindowText), QColor(Qt::white));
    setContrast(Contrast::Usual);
    QCOMPARE(theme(), Theme::Dark);
    QCOMPARE(leastContrast(), 4.5);
    QVERIFY(qApp->palette().color(QPalette::Window) != QColor(Qt::black));
}

void TestLookContrast::whatIsSelectedIsSeen() {
    for (const Theme theme : {Theme::Light, Theme::Dark}) {
        setTheme(theme);
        const QPalette palette = qApp->palette();
        const QColor ground = palette.color(QPalette::Highlight);
        QVERIFY(contrastRatio(palette.color(QPalette::HighlightedText), ground) >= 7);
        QVERIFY(contrastRatio(ground, palette.color(QPalette::Base)) >= 7);
    }
}

void TestLookContrast::theFocusRingIsWider() {
    const auto ringed = [] {
        QImage picture(40, 40, QImage::Format_RGB32);
        picture.fill(tokens().surface);
        QPainter painter(&picture);
        drawFocusRing(&painter, picture.rect());
        painter.end();
        int width = 0;
        while (picture.pixelColor(width, 20) == tokens().accent) {
            ++width;
        }
        return width;
    };
    const int high = ringed();
    setContrast(Contrast::Usual);
    QCOMPARE(ringed(), focusWidth);
    QCOMPARE(high, focusWidth + 1);
}

void TestLookContrast::wordsInAToldColourReadFully() {
    for (const Theme theme : {Theme::Light, Theme::Dark}) {
        for (const QColor& told :
             {QColor(Qt::red), QColor(Qt::blue), QColor(Qt::green), QColor(Qt::yellow)}) {
            QVERIFY(contrastRatio(legibleOn(told, tokens(theme).surface), tokens(theme).surface) >= 7);
        }
    }
}

void TestLookContrast::aFieldThatIsOnlyReadStandsOnALineInsteadOfWithinAnEdge() {
    for (const Theme theme : {Theme::Light, Theme::Dark}) {
        setTheme(theme);
        QLineEdit field;
        field.resize(120, 32);
        const QImage typed = field.grab().toImage();
        QCOMPARE(typed.pixelColor(0, 16), tokens().edge);
        QCOMPARE(typed.pixelColor(60, 4), tokens().surface);
        field.setReadOnly(true);
        const QImage read = field.grab().toImage();
        QCOMPARE(read.pixelColor(0, 16), tokens().sunken);
        QCOMPARE(read.pixelColor(60, 0), tokens().sunken);
        QCOMPARE(read.pixelColor(60, 4), tokens().sunken);
        QCOMPARE(read.pixelColor(60, 31), tokens().edge);
    }
}

void TestLookContrast::placeholdersArePalerThanWhatWasTyped() {
    for (const Theme theme : {Theme::Light, Theme::Dark}) {
        setTheme(theme);
        const QPalette palette = qApp->palette();
        const QColor waiting = palette.color(QPalette::PlaceholderText);
        QVERIFY(contrastRatio(waiting, palette.color(QPalette::Text)) >= 2);
        QVERIFY(contrastRatio(waiting, palette.color(QPalette::Base)) >= 7);
        QLabel quiet(QStringLiteral("Response"));
        setInk(&quiet, Ink::Quiet);
        QCOMPARE(quiet.palette().color(quiet.foregroundRole()), tokens().text);
    }
}

void TestLookContrast::focusIsSeenOnAToldGround() {
    const QColor cyan(192, 255, 255);
    QWidget window;
    QLineEdit field(&window);
    field.setGeometry(10, 10, 120, 32);
    QPalette colours = field.palette();
    colours.setColor(QPalette::Base, cyan);
    field.setPalette(colours);
    window.show();
    window.activateWindow();
    field.setFocus();
    QTRY_VERIFY(field.hasFocus());
    for (const Contrast one : {Contrast::High, Contrast::Usual}) {
        setContrast(one);
        for (const Theme theme : {Theme::Light, Theme::Dark}) {
            setTheme(theme);
            const QImage picture = field.grab().toImage();
            // From the edge to the ground: each step is seen, and the first is the accent.
            QCOMPARE(picture.pixelColor(60, 0), tokens().accent);
            QColor before = tokens().accent;
            for (int y = 1; y < 6; ++y) {
                const QColor now = picture.pixelColor(60, y);
                QVERIFY(now == before || contrastRatio(now, before) >= 3);
                before = now;
            }
            QCOMPARE(before, cyan);
        }
    }
}

void TestLookContrast::theRingOfATableIsAsWideAsAnyOther() {
    QTreeWidget table;
    table.setHeaderHidden(true);
    table.resize(200, 120);
    table.show();
    table.activateWindow();
    table.setFocus();
    QTRY_VERIFY(table.hasFocus());
    const QImage picture = table.grab().toImage();
    int width = 0;
    while (picture.pixelColor(width, 60) == tokens().accent) {
        ++width;
    }
    QCOMPARE(width, focusWidth + 1);
}

void TestLookContrast::whatIsUnlitHasAnEdge() {
    for (const Theme theme : {Theme::Light, Theme::Dark}) {
        setTheme(theme);
        Gauge gauge;
        gauge.setLit(1);
        gauge.resize(gauge.sizeHint());
        const QImage scale = gauge.grab().toImage();
        QCOMPARE(scale.pixelColor(scale.width() - 1, scale.height() / 2), tokens().line);
        ActivitySweep sweep;
        sweep.resize(sweep.sizeHint());
        const QImage bar = sweep.grab().toImage();
        QCOMPARE(bar.pixelColor(bar.width() - 1, bar.height() / 2), tokens().line);
    }
}

QTEST_MAIN(TestLookContrast)
#include "test_look_contrast.moc"
