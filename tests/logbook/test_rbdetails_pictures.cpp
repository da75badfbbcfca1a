#include "platform/look/look.h"
#include "tests/logbook/detailsworld.h"

#include <QPlainTextEdit>
#include <QTextBlock>
#include <QThreadPool>

#include <sys/stat.h>

using namespace benthor;
using namespace benthor::logbook;
using namespace benthor::tests;

class TestRbdetailsPictures : public QObject {
    Q_OBJECT

private slots:
    void aTileGivesUpItsPicture();
    void pictureLinesAreFoldedAndStayInTheText();
    void aPictureIsChosenByTileOrHint_data();
    void aPictureIsChosenByTileOrHint();
    void aPictureOfTheDiveIsShownAgain();
    void whatCannotBeReadLeavesTheHint();
    void aPipeInThePlaceOfAPictureKeepsNothingWaiting();
    void aCancelledPictureChangesNothing();
    void aLargePhotoIsScaledAndDoesNotBlock();
    void aPictureThatIsReplacedWhileItLoadsDoesNotComeBack();
};

void TestRbdetailsPictures::aTileGivesUpItsPicture() {
    DetailsWorld world;
    const QString path = world.picture(QStringLiteral("reef.jpg"), {64, 48});
    world.screen().showScreen();
    auto& note = world.on<QPlainTextEdit>("txtsitenote");
    note.setPlainText(QStringLiteral("A wall"));
    QVERIFY(!world.on<QWidget>("pictureaway(1)").isVisible());
    world.dialogs.answerFile(path);
    world.click("Label5(1)");
    QCOMPARE(note.toPlainText(), QStringLiteral("A wall\nImageplz1%1\n").arg(path));
    QTRY_VERIFY(!world.on<QWidget>("Label5(1)").isVisible());
    QVERIFY(world.on<QWidget>("pictureaway(1)").isVisible());
    world.click("pictureaway(1)");
    QCOMPARE(note.toPlainText(), "A wall\n");
    QVERIFY(world.on<QWidget>("Label5(1)").isVisible());
    QVERIFY(QFile::exists(path));
}

void TestRbdetailsPictures::pictureLinesAreFoldedAndStayInTheText() {
    DetailsWorld world;
    world.screen().showScreen();
    auto& note = world.on<QPlainTextEdit>("txtsitenote");
    const QString text = QStringLiteral("Imageplz0/a.jpg\nA wall\nImageplz1/b.jpg\nImageplz2/c.jpg\nend");
    note.setPlainText(text);
    QStringList seen;
    for (QTextBlock block = note.document()->begin(); block.isValid(); block = block.next()) {
        if (block.isVisible()) {
            seen += block.text();
        }
    }
    QCOMPARE(seen, (QStringList{"A wall", "end"}));
    QCOMPARE(note.toPlainText(), text);
    // No key leads into them or joins them with what is written.
    note.setFocus();
    QTest::keyClick(&note, Qt::Key_Home, Qt::ControlModifier);
    QTest::keyClick(&note, Qt::Key_Backspace);
    QTest::keyClick(&note, Qt::Key_Left);
    QTest::keyClick(&note, 'B');
    QTest::keyClick(&note, Qt::Key_End);
    QTest::keyClick(&note, Qt::Key_Delete);
    QTest::keyClick(&note, Qt::Key_End, Qt::ControlModifier);
    QTest::keyClick(&note, Qt::Key_Home);
    QTest::keyClick(&note, Qt::Key_Backspace);
    QTest::keyClick(&note, Qt::Key_Left);
    QTest::keyClick(&note, '!');
    QCOMPARE(note.toPlainText(),
             QStringLiteral("Imageplz0/a.jpg\nBA wall!\nImageplz1/b.jpg\nImageplz2/c.jpg\nend"));
}

void TestRbdetailsPictures::aPictureIsChosenByTileOrHint_data() {
    QTest::addColumn<QString>("control");
    QTest::addColumn<int>("index");
    QTest::newRow("picture 0") << QStringLiteral("Image1(0)") << 0;
    QTest::newRow("hint 2") << QStringLiteral("Label5(2)") << 2;
}

void TestRbdetailsPictures::aPictureIsChosenByTileOrHint() {
    QFETCH(QString, control);
    QFETCH(int, index);
    DetailsWorld world;
    process().database.execute("UPDATE main SET sitenote = 'calm'");
    const QString first = world.picture(QStringLiteral("first.png"), QSize(40, 30));
    const QString second = world.picture(QStringLiteral("second.png"), QSize(40, 30), Qt::blue);
    world.screen().showScreen();
    QVERIFY(QTest::qWaitForWindowExposed(&world.screen()));
    world.dialogs.answerFile(first);
    auto& label = world.on<QWidget>(qPrintable(control));
    QTest::mouseClick(&label, Qt::LeftButton, {}, QPoint(5, 5));
    QCOMPARE(world.dialogs.asked().size(), 1);
    QCOMPARE(world.dialogs.asked().first().title, "Open");
    QCOMPARE(world.dialogs.asked().first().filter, "Text Files (*.jpg)|*.jpg|All Files (*.*)|*.*");
    QTRY_VERIFY(world.tile(index).hasPicture());
    const QString note = QStringLiteral("calm\nImageplz%1%2\n");
    QCOMPARE(world.on<QPlainTextEdit>("txtsitenote").toPlainText(), note.arg(QString::number(index), first));
    QVERIFY(world.on<QWidget>(qPrintable(QStringLiteral("Label5(%1)").arg(index))).isHidden());
    world.dialogs.answerFile(second);
    QTest::mouseClick(&world.on<QWidget>(qPrintable(QStringLiteral("Image1(%1)").arg(index))),
                      Qt::LeftButton);
    QCOMPARE(world.on<QPlainTextEdit>("txtsitenote").toPlainText(), note.arg(QString::number(index), second));
}

void TestRbdetailsPictures::aPictureOfTheDiveIsShownAgain() {
    DetailsWorld world;
    const QString path = world.picture(QStringLiteral("b.png"), QSize(40, 30));
    process().database.execute(platform::sqlWith(
        "UPDATE main SET sitenote = '", QStringLiteral("Imageplz1") + path + QStringLiteral("\r\n"), "'"));
    world.screen().showScreen();
    QTRY_VERIFY(world.tile(1).hasPicture());
    QVERIFY(!world.tile(0).hasPicture());
    QVERIFY(!world.on<QWidget>("Label5(0)").isHidden());
    QVERIFY(!world.on<QLabel>("Image1(1)").pixmap(Qt::ReturnByValue).isNull());
}

void TestRbdetailsPictures::whatCannotBeReadLeavesTheHint() {
    DetailsWorld world;
    world.put(u"", QStringLiteral("letter.jpg"), "no picture");
    process().database.execute(platform::sqlWith(
        "UPDATE main SET sitenote = '",
        QStringLiteral("Imageplz0/nowhere/a.jpg\r\nImageplz1%1\r\n").arg(world.folder.path(u"letter.jpg")),
        "'"));
    world.screen().showScreen();
    for (int index = 0; index < 2; ++index) {
        QTRY_VERIFY(!world.tile(index).isLoading());
        QVERIFY(!world.tile(index).hasPicture());
        QVERIFY(world.on<QWidget>(qPrintable(QStringLiteral("Label5(%1)").arg(index))).isVisible());
    }
    world.slot.unload();
    QVERIFY(DetailsWorld::field(u"sitenote").startsWith(QLatin1String("Imageplz0/nowhere/a.jpg\r\n")));
}

void TestRbdetailsPictures::aPipeInThePlaceOfAPictureKeepsNothingWaiting() {
    DetailsWorld world;
    const QString pipe = world.folder.path(u"pipe.jpg");
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    world.tile(0).setPath(pipe);
    const bool ended = QThreadPool::globalInstance()->waitForDone(5000);
    if (!ended) { // let the reader go, or this process never ends
        QFile writer(pipe);
        QVERIFY(writer.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    }
    QVERIFY(ended);
    QTRY_VERIFY(!world.tile(0).isLoading());
    QVERIFY(!world.tile(0).hasPicture());
}

void TestRbdetailsPictures::aCancelledPictureChangesNothing() {
    DetailsWorld world;
    world.screen().showScreen();
    world.click("Image1(0)");
    QCOMPARE(world.on<QPlainTextEdit>("txtsitenote").toPlainText(), "");
    QVERIFY(!world.tile(0).hasPicture());
}

/// While the photo loads the event loop goes on turning: it is read elsewhere.
void TestRbdetailsPictures::aLargePhotoIsScaledAndDoesNotBlock() {
    DetailsWorld world;
    const QString path = world.picture(QStringLiteral("large.jpg"), QSize(8000, 6000));
    world.screen().showScreen();
    world.dialogs.answerFile(path);
    world.click("Image1(0)");
    QVERIFY(world.tile(0).isLoading());
    int turns = 0;
    while (world.tile(0).isLoading()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        ++turns;
    }
    QVERIFY(turns > 1);
    QVERIFY(world.tile(0).hasPicture());
    const QPixmap shown = world.on<QLabel>("Image1(0)").pixmap(Qt::ReturnByValue);
    QVERIFY(shown.width() <= world.tile(0).width() && shown.height() <= world.tile(0).height());
}

void TestRbdetailsPictures::aPictureThatIsReplacedWhileItLoadsDoesNotComeBack() {
    DetailsWorld world;
    const QString large = world.picture(QStringLiteral("large.jpg"), QSize(6000, 4000), Qt::red);
    const QString small = world.picture(QStringLiteral("small.png"), QSize(20, 20), Qt::blue);
    world.screen().showScreen();
    PictureTile& tile = world.tile(0);
    tile.setPath(large);
    tile.setPath(small);
    QTRY_VERIFY(tile.hasPicture());
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();
    const QImage shown = world.on<QLabel>("Image1(0)").pixmap(Qt::ReturnByValue).toImage();
    QCOMPARE(shown.pixelColor(shown.rect().center()), QColor(Qt::blue));
}

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false);
    look::apply(application);
    TestRbdetailsPictures test;
    return QTest::qExec(&test, argc, argv);
}
#include "test_rbdetails_pictures.moc"
