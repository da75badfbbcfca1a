#include "platform/look/look.h"
#include "platform/look/pictures.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

using namespace benthor::look;

class TestLookPictures : public QObject {
    Q_OBJECT

private slots:
    void everyDrawingBecomesABmpOfTheSameName();
    void aFolderWithoutDrawingsIsAnError();
    void wrongArgumentsAreAnError();
    void theLightThemeLeavesAPictureAlone();
    void theDarkThemeTurnsLightnessAndKeepsHues();
    void aPictureIsFittedWithRoundedCorners();
    void aNullPictureStaysNull();

private:
    static int render(const QStringList& arguments) {
        QProcess process;
        process.start(QStringLiteral(BENTHOR_RENDERPICTURES), arguments);
        return process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit
                   ? process.exitCode()
                   : -1;
    }
};

void TestLookPictures::everyDrawingBecomesABmpOfTheSameName() {
    const QTemporaryDir folder;
    QCOMPARE(render({QStringLiteral(BENTHOR_ASSETS "/pictures"), folder.path()}), 0);
    for (const char* name : {"divelist", "pclink", "gaslistb", "pdblist", "morvakd2", "screensave2"}) {
        const QImage picture(folder.filePath(QLatin1String(name) + QStringLiteral(".bmp")), "BMP");
        QVERIFY2(!picture.isNull(), name);
        QCOMPARE(picture.size(), QSize(576, 400));
        QCOMPARE(picture.pixelColor(2, 2), QColor(0xDF, 0xE8, 0xEE));
        int drawn = 0;
        for (int y = 0; y < picture.height(); y += 4) {
            for (int x = 0; x < picture.width(); x += 4) {
                drawn += picture.pixelColor(x, y) != QColor(0xDF, 0xE8, 0xEE) ? 1 : 0;
            }
        }
        QVERIFY2(drawn > 1000, name);
    }
}

void TestLookPictures::aFolderWithoutDrawingsIsAnError() {
    const QTemporaryDir folder;
    QCOMPARE(render({folder.path(), folder.path()}), 1);
    QVERIFY(QDir(folder.path()).isEmpty());
}

void TestLookPictures::wrongArgumentsAreAnError() {
    QCOMPARE(render({}), 2);
}

void TestLookPictures::theLightThemeLeavesAPictureAlone() {
    QImage picture(4, 4, QImage::Format_RGB32);
    picture.fill(QColor(0xDF, 0xE8, 0xEE));
    QCOMPARE(themedPicture(picture, Theme::Light), picture);
}

void TestLookPictures::theDarkThemeTurnsLightnessAndKeepsHues() {
    QImage picture(4, 1, QImage::Format_RGB32);
    picture.setPixelColor(0, 0, QColor(0xDF, 0xE8, 0xEE)); // ground
    picture.setPixelColor(1, 0, Qt::white);
    picture.setPixelColor(2, 0, QColor(0x1B, 0x49, 0x65)); // a dark line
    picture.setPixelColor(3, 0, Qt::red);
    const QImage dark = themedPicture(picture, Theme::Dark);
    QVERIFY(dark.pixelColor(0, 0).lightness() < 60);
    QVERIFY(dark.pixelColor(1, 0).lightness() < dark.pixelColor(0, 0).lightness());
    QVERIFY(contrastRatio(dark.pixelColor(2, 0), dark.pixelColor(1, 0)) > 4.5);
    QVERIFY(std::abs(dark.pixelColor(2, 0).hslHue() - QColor(0x1B, 0x49, 0x65).hslHue()) <= 2);
    QCOMPARE(dark.pixelColor(3, 0).hslHue(), 0);
    QVERIFY(dark.pixelColor(3, 0).red() > 200);
}

void TestLookPictures::aPictureIsFittedWithRoundedCorners() {
    setTheme(Theme::Light);
    QImage picture(576, 400, QImage::Format_RGB32);
    picture.fill(Qt::green);
    const QPixmap pixmap = picturePixmap(picture, QSize(144, 144), 2.0);
    QCOMPARE(pixmap.size(), QSize(288, 200));
    QCOMPARE(pixmap.devicePixelRatio(), 2.0);
    const QImage image = pixmap.toImage();
    QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
    QCOMPARE(image.pixelColor(144, 100), QColor(Qt::green));
}

void TestLookPictures::aNullPictureStaysNull() {
    QVERIFY(picturePixmap(QImage(), QSize(288, 200), 1.0).isNull());
    QVERIFY(themedPicture(QImage(), Theme::Dark).isNull());
}

QTEST_MAIN(TestLookPictures)
#include "test_look_pictures.moc"
