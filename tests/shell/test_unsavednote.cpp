// The main screen's line about details that could not be stored as a session ended.

#include "tests/shell/mainstage.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

using namespace benthor;
using namespace benthor::tests;

class TestUnsavedNote : public QObject {
    Q_OBJECT

private slots:
    void withoutSuchATextThereIsNoLine();
    void theTextIsNamedAndShown();
    void itGoesWhenTheUserSaysSo();
    void aTextThatWentAwayTakesTheLineWithIt();
};

void TestUnsavedNote::withoutSuchATextThereIsNoLine() {
    MainStage stage;
    stage.folder.put("old/unsaved-D0000001.txt", "a dive's own file");
    stage.main->showScreen();
    QVERIFY(!stage.control("unsavednote")->isVisible());
}

void TestUnsavedNote::theTextIsNamedAndShown() {
    MainStage stage;
    stage.folder.put("unsaved-D0000001.txt", "what was typed: <b>Gro\xc3\x9f</b>");
    stage.main->showScreen();
    QVERIFY(stage.control("unsavednote")->isVisible());
    QVERIFY(
        stage.control<QLabel>("unsavednotewords")->text().contains(QLatin1String("unsaved-D0000001.txt")));
    QCOMPARE(stage.control<QLabel>("unsavednotewords")->textFormat(), Qt::PlainText);
    stage.click("cmdshowunsaved");
    auto* words = stage.control<QPlainTextEdit>("unsavedwords");
    QVERIFY(words->isVisible() && words->isWindow() && words->isReadOnly());
    QCOMPARE(words->toPlainText(), QString::fromUtf8("what was typed: <b>Gro\xc3\x9f</b>"));
    words->close();
    QVERIFY(stage.folder.has("unsaved-D0000001.txt"));
    QVERIFY(stage.dialogs.asked().isEmpty());
}

void TestUnsavedNote::itGoesWhenTheUserSaysSo() {
    MainStage stage;
    stage.folder.put("unsaved-D0000001.txt", "one");
    stage.folder.put("unsaved-D0000002.txt", "two");
    stage.main->showScreen();
    stage.dialogs.answer(false);
    stage.click("cmdremoveunsaved");
    QVERIFY(stage.dialogs.asked().first().noIsDefault);
    QVERIFY(stage.folder.has("unsaved-D0000001.txt"));
    stage.dialogs.answer(true);
    stage.click("cmdremoveunsaved");
    QVERIFY(!stage.folder.has("unsaved-D0000001.txt"));
    QVERIFY(
        stage.control<QLabel>("unsavednotewords")->text().contains(QLatin1String("unsaved-D0000002.txt")));
    stage.dialogs.answer(true);
    stage.click("cmdremoveunsaved");
    QVERIFY(!stage.folder.has("unsaved-D0000002.txt"));
    QVERIFY(!stage.control("unsavednote")->isVisible());
}

void TestUnsavedNote::aTextThatWentAwayTakesTheLineWithIt() {
    MainStage stage;
    stage.folder.put("unsaved-D0000001.txt", "one");
    stage.main->showScreen();
    QVERIFY(QFile::remove(stage.folder.path("unsaved-D0000001.txt")));
    stage.click("cmdshowunsaved");
    QVERIFY(!stage.control("unsavednote")->isVisible());
}

QTEST_MAIN(TestUnsavedNote)
#include "test_unsavednote.moc"
