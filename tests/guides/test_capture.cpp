#include "guides/capture.h"
#include "guides/screens/scrsavform1.h"
#include "platform/screen/emptyscreen.h"
#include "tests/support/scripteddialogs.h"
#include "tests/support/smalldisk.h"
#include "tests/support/testfolder.h"
#include "tests/support/testsettings.h"

#include <QImage>
#include <QPushButton>
#include <QtTest>

using namespace benthor;
using namespace benthor::guides;
using namespace benthor::tests;

namespace {

/// Left half red, right half blue.
QImage twoHalves(int width, int height) {
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(Qt::red);
    for (int y = 0; y < height; ++y) {
        for (int x = width / 2; x < width; ++x) {
            image.setPixelColor(x, y, Qt::blue);
        }
    }
    return image;
}

bool alike(const QColor& one, const QColor& other) {
    return std::abs(one.red() - other.red()) + std::abs(one.green() - other.green()) +
               std::abs(one.blue() - other.blue()) <
           12;
}

struct Stage {
    QString bitmap() const { return folder.path("screen.bmp"); }
    QString jpeg() const { return folder.path("jpg/dive.jpg"); }
    TestSettings settings;
    TestFolder folder{TestFolder::Store::Missing};
    ScriptedDialogs dialogs;
};

} // namespace

class TestCapture : public QObject {
    Q_OBJECT

private slots:
    void theNameIsTheDivesWithAnotherEnding() {
        QCOMPARE(captureName(QStringLiteral("Wreck1.txt")), "Wreck1.jpg");
        QCOMPARE(captureName(QStringLiteral("Wreck1.b12.txt")), "Wreck1.b12.jpg");
        QCOMPARE(captureName(QStringLiteral("ab")), "jpg");
    }

    void thePictureIs800By600AndOfTheBestQuality() {
        const Stage stage;
        QCOMPARE(saveCapture(twoHalves(1366, 768), stage.bitmap(), stage.jpeg()), "");
        const QImage bitmap(stage.bitmap());
        QCOMPARE(bitmap.size(), QSize(1366, 768));
        const QImage jpeg(stage.jpeg());
        QCOMPARE(jpeg.size(), QSize(800, 600));
        QVERIFY(stage.folder.get("jpg/dive.jpg").startsWith("\xFF\xD8\xFF"));
        QVERIFY(alike(jpeg.pixelColor(200, 300), Qt::red));
        QVERIFY(alike(jpeg.pixelColor(600, 300), Qt::blue));
    }

    void aSecondCaptureReplacesTheFirst() {
        const Stage stage;
        saveCapture(twoHalves(1366, 768), stage.bitmap(), stage.jpeg());
        QImage green(1024, 700, QImage::Format_RGB32);
        green.fill(Qt::green);
        QCOMPARE(saveCapture(green, stage.bitmap(), stage.jpeg()), "");
        QVERIFY(alike(QImage(stage.jpeg()).pixelColor(600, 300), Qt::green));
        QCOMPARE(QImage(stage.bitmap()).size(), QSize(1024, 700));
    }

    void withoutAPictureThereIsNoBitmapAndNoJpeg() {
        const Stage stage;
        stage.folder.put("screen.bmp", "a bitmap of an earlier dive");
        QVERIFY(!saveCapture(QImage(), stage.bitmap(), stage.jpeg()).isEmpty());
        QVERIFY(!stage.folder.has("screen.bmp"));
        QVERIFY(!stage.folder.has("jpg/dive.jpg"));
    }

    void aFailedCaptureLeavesTheJpegThatIsThere() {
        const Stage stage;
        stage.folder.put("jpg/dive.jpg", "the one before");
        saveCapture(QImage(), stage.bitmap(), stage.jpeg());
        QCOMPARE(stage.folder.get("jpg/dive.jpg"), QByteArray("the one before"));
    }

    void aDiskThatIsFullForTheBitmapLeavesBothPictures() {
        const Stage stage;
        saveCapture(twoHalves(1366, 768), stage.bitmap(), stage.jpeg());
        const QByteArray bitmap = stage.folder.get("screen.bmp");
        const QByteArray jpeg = stage.folder.get("jpg/dive.jpg");
        QImage green(1366, 768, QImage::Format_RGB32);
        green.fill(Qt::green);
        {
            const SmallDisk full(100'000);
            QVERIFY(!saveCapture(green, stage.bitmap(), stage.jpeg()).isEmpty());
        }
        QVERIFY(stage.folder.get("screen.bmp") == bitmap);
        QVERIFY(stage.folder.get("jpg/dive.jpg") == jpeg);
        QCOMPARE(QDir(stage.folder.root()).entryList({"*.part"}, QDir::Files | QDir::Hidden), QStringList());
    }

    void aDiskThatIsFullForTheJpegLeavesThePictureThatIsThere() {
        const Stage stage;
        saveCapture(twoHalves(120, 90), stage.bitmap(), stage.jpeg());
        const QByteArray jpeg = stage.folder.get("jpg/dive.jpg");
        QImage noise(90, 70, QImage::Format_RGB32);
        for (int at = 0; at < 90 * 70; ++at) {
            noise.setPixel(at % 90, at / 90, static_cast<uint>(at) * 2654435761U);
        }
        {
            const SmallDisk full(30'000); // the bitmap has 19,000 bytes
            QVERIFY(!saveCapture(noise, stage.bitmap(), stage.jpeg()).isEmpty());
        }
        QCOMPARE(QImage(stage.bitmap()).size(), QSize(90, 70));
        QVERIFY(stage.folder.get("jpg/dive.jpg") == jpeg);
    }

    void theScreenTellsAFullDisk() {
        const Stage stage;
        platform::EmptyScreen dive(QStringLiteral("rbinterface"), QStringLiteral("A dive"));
        dive.showScreen();
        ScrSavForm1 helper;
        helper.setDiveScreen(&dive, QStringLiteral("Wreck1.txt"));
        {
            const SmallDisk full(2'000);
            helper.cmdCapture_click();
        }
        QCOMPARE(stage.dialogs.messages().size(), 1);
        QVERIFY(stage.dialogs.messages().first().startsWith("[FreeImage] Error: "));
        QVERIFY(stage.dialogs.messages().first().contains("screen.bmp"));
        QVERIFY(!stage.folder.has("jpg/Wreck1.jpg"));
    }

    void theScreenCapturesTheDiveScreenAndStaysOutOfIt() {
        const Stage stage;
        platform::EmptyScreen dive(QStringLiteral("rbinterface"), QStringLiteral("A dive"));
        dive.showScreen();
        ScrSavForm1 helper;
        helper.showScreen();
        helper.setDiveScreen(&dive, QStringLiteral("Wreck1.txt"));
        helper.findChild<QPushButton*>(QStringLiteral("cmdCapture"))->click();
        QVERIFY(!helper.isVisible());
        QVERIFY(dive.isVisible());
        QCOMPARE(QImage(stage.folder.path("jpg/Wreck1.jpg")).size(), QSize(800, 600));
        QCOMPARE(QImage(stage.bitmap()).size(), dive.size());
        QVERIFY(stage.dialogs.messages().isEmpty());
    }

    void whatTheLibraryReportsIsTold() {
        const Stage stage;
        QDir(stage.folder.path("jpg")).removeRecursively();
        platform::EmptyScreen dive(QStringLiteral("rbinterface"), QStringLiteral("A dive"));
        dive.showScreen();
        ScrSavForm1 helper;
        helper.setDiveScreen(&dive, QStringLiteral("Wreck1.txt"));
        helper.cmdCapture_click();
        QCOMPARE(stage.dialogs.messages().size(), 1);
        QVERIFY(stage.dialogs.messages().first().startsWith("[FreeImage] Error: "));
        QVERIFY(stage.dialogs.messages().first().size() > 25);
        QVERIFY(!stage.folder.has("jpg/Wreck1.jpg"));
    }

    void aNameThatLeadsElsewhereWritesNothing() {
        Stage stage;
        QDir(stage.folder.root()).mkpath(QStringLiteral("jpg/sub"));
        platform::EmptyScreen dive(QStringLiteral("rbinterface"), QStringLiteral("A dive"));
        dive.showScreen();
        ScrSavForm1 helper;
        const QString beside = stage.folder.root() + QStringLiteral("-photo"); // beside the program folder
        for (const QString& name : {"../../" + QFileInfo(beside).fileName() + ".txt", beside + ".txt",
                                    QStringLiteral("../photo.txt"), QStringLiteral("sub/photo.txt")}) {
            helper.setDiveScreen(&dive, name);
            helper.cmdCapture_click();
            QCOMPARE(stage.dialogs.messages().value(0),
                     "The picture was not saved: " + name + " is no name of a file.");
            stage.dialogs.clear();
        }
        QVERIFY(!QFile::exists(beside + ".jpg"));
        QVERIFY(!stage.folder.has("photo.jpg") && !stage.folder.has("jpg/sub/photo.jpg"));
        QVERIFY(!stage.folder.has("screen.bmp"));
    }

    void theSizeIsAChoiceThatTheCaptureDoesNotRead() {
        const Stage stage;
        ScrSavForm1 helper;
        QCOMPARE(helper.size(), "150x113");
        helper.findChild<QPushButton*>(QStringLiteral("cmd200"))->click();
        QCOMPARE(helper.size(), "200x150");
        platform::EmptyScreen dive(QStringLiteral("rbinterface"), QStringLiteral("A dive"));
        dive.showScreen();
        helper.setDiveScreen(&dive, QStringLiteral("Wreck1.txt"));
        helper.cmdCapture_click();
        QCOMPARE(QImage(stage.folder.path("jpg/Wreck1.jpg")).size(), QSize(800, 600));
    }

    void withoutADiveScreenNothingIsSaved() {
        const Stage stage;
        ScrSavForm1 helper;
        helper.cmdCapture_click();
        QVERIFY(QDir(stage.folder.path("jpg")).isEmpty());
    }
};

QTEST_MAIN(TestCapture)
#include "test_capture.moc"
