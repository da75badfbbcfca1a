#include "platform/look/look.h"

#include <QImage>
#include <QtTest>

using namespace benthor::look;

namespace {

/// How many pixels of `image` are more than half opaque.
int inked(const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += qAlpha(image.pixel(x, y)) > 127 ? 1 : 0;
        }
    }
    return count;
}

/// The colour of the most opaque pixel.
QColor strongest(const QImage& image) {
    QColor best(0, 0, 0, 0);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor here = image.pixelColor(x, y);
            if (here.alpha() > best.alpha()) {
                best = here;
            }
        }
    }
    return best;
}

bool near(const QColor& one, const QColor& other) {
    return std::abs(one.red() - other.red()) <= 3 && std::abs(one.green() - other.green()) <= 3 &&
           std::abs(one.blue() - other.blue()) <= 3;
}

} // namespace

class TestLookIcons : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void everyNameScreensUseIsThere_data();
    void everyNameScreensUseIsThere();
    void everyIconIsDrawnInBothThemes_data();
    void everyIconIsDrawnInBothThemes();
    void anIconFollowsTheTheme();
    void aDisabledIconIsFainter();
    void aCheckedIconReadsOnAccent();
    void anIconWithAColourKeepsIt();
    void aDenseDisplayGetsMorePixels();
    void anUnknownIconIsNull();
    void theProgramHasItsOwnIcon();
};

void TestLookIcons::initTestCase() {
    apply(*qApp);
}

void TestLookIcons::everyNameScreensUseIsThere_data() {
    QTest::addColumn<QString>("name");
    const char* const names[] = {
        "dives",     "download",      "database",   "cylinder",     "filefind", "exit",     "kd",
        "pocketpc",  "importfile",    "plug",       "tip",          "back",     "close",    "chevron-left",
        "warning",   "chevron-right", "chevron-up", "chevron-down", "check",    "info",     "open-folder",
        "mail",      "sheet",         "trash",      "home",         "refresh",  "save",     "print",
        "camera",    "document",      "bars",       "play",         "stop",     "previous", "next",
        "slower",    "faster",        "alarm",      "mark",         "zoom-in",  "zoom-out", "pan-left",
        "pan-right", "more",          "search",     "edit",         "add",      "remove",   "settings",
        "arrow-up",  "arrow-down",    "device",     "send",         "chip",     "help",     "picture"};
    for (const char* name : names) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void TestLookIcons::everyNameScreensUseIsThere() {
    QFETCH(QString, name);
    QVERIFY(iconNames().contains(name));
    QCOMPARE(icon(name).name(), name);
}

void TestLookIcons::everyIconIsDrawnInBothThemes_data() {
    QTest::addColumn<QString>("name");
    QVERIFY(iconNames().size() >= 56);
    for (const QString& name : iconNames()) {
        QTest::newRow(qPrintable(name)) << name;
    }
}

void TestLookIcons::everyIconIsDrawnInBothThemes() {
    QFETCH(QString, name);
    for (const Theme one : {Theme::Light, Theme::Dark}) {
        setTheme(one);
        const QImage image = icon(name).pixmap(QSize(48, 48), 1.0).toImage();
        QCOMPARE(image.size(), QSize(48, 48));
        QVERIFY(inked(image) > 10);
        QVERIFY(near(strongest(image), tokens(one).text));
        // Nothing touches the rim, so nothing is cut off.
        int rim = 0;
        for (int k = 0; k < 48; ++k) {
            for (const QPoint& at : {QPoint(k, 0), QPoint(k, 47), QPoint(0, k), QPoint(47, k)}) {
                rim += qAlpha(image.pixel(at));
            }
        }
        QCOMPARE(rim, 0);
    }
}

void TestLookIcons::anIconFollowsTheTheme() {
    const QIcon one = icon("check");
    setTheme(Theme::Light);
    QVERIFY(near(strongest(one.pixmap(QSize(48, 48), 1.0).toImage()), tokens(Theme::Light).text));
    setTheme(Theme::Dark);
    QVERIFY(near(strongest(one.pixmap(QSize(48, 48), 1.0).toImage()), tokens(Theme::Dark).text));
}

void TestLookIcons::aDisabledIconIsFainter() {
    setTheme(Theme::Light);
    const QColor surface = tokens().surface;
    const QColor usual = strongest(icon("stop").pixmap(QSize(48, 48), 1.0).toImage());
    const QColor faint = strongest(icon("stop").pixmap(QSize(48, 48), 1.0, QIcon::Disabled).toImage());
    QVERIFY(contrastRatio(faint, surface) < contrastRatio(usual, surface) / 2);
}

void TestLookIcons::aCheckedIconReadsOnAccent() {
    for (const Theme one : {Theme::Light, Theme::Dark}) {
        setTheme(one);
        const QColor ink =
            strongest(icon("play").pixmap(QSize(48, 48), 1.0, QIcon::Normal, QIcon::On).toImage());
        QVERIFY(near(ink, tokens(one).ontext));
    }
}

void TestLookIcons::anIconWithAColourKeepsIt() {
    setTheme(Theme::Dark);
    const QColor own(200, 40, 40);
    QVERIFY(near(strongest(icon(QStringLiteral("stop"), own).pixmap(QSize(48, 48), 1.0).toImage()), own));
}

void TestLookIcons::aDenseDisplayGetsMorePixels() {
    const QPixmap pixmap = iconPixmap(QStringLiteral("home"), 20, Qt::black, 2.0);
    QCOMPARE(pixmap.size(), QSize(40, 40));
    QCOMPARE(pixmap.devicePixelRatio(), 2.0);
    QCOMPARE(pixmap.deviceIndependentSize(), QSizeF(20, 20));
}

void TestLookIcons::anUnknownIconIsNull() {
    QVERIFY(icon("no such icon").isNull());
    QVERIFY(iconPixmap(QStringLiteral("no such icon"), 24, Qt::black, 1.0).isNull());
}

void TestLookIcons::theProgramHasItsOwnIcon() {
    QVERIFY(inked(applicationIcon().pixmap(QSize(64, 64)).toImage()) > 64 * 64 / 2);
    QVERIFY(!qApp->windowIcon().isNull());
}

QTEST_MAIN(TestLookIcons)
#include "test_look_icons.moc"
