#include "platform/screen/dialogs.h"

#include "platform/screen/ticktimer.h"
#include "tests/support/scripteddialogs.h"

#include <QMessageBox>
#include <QPushButton>
#include <QtTest>

using namespace benthor::platform;

class TestDialogs : public QObject {
    Q_OBJECT

private slots:
    void aMessageHoldsTicksAndReturnCloses();
    void returnTakesNoWhereNoIsTheDefault();
    void escapeIsNo();
    void aScriptAnswersInPlaceOfTheBoxes();
    void filtersGoOverInTheToolkitsForm();

private:
    /// Acts on the box once it is up.
    static void whenUp(const std::function<void(QMessageBox*)>& act);
};

void TestDialogs::whenUp(const std::function<void(QMessageBox*)>& act) {
    QTimer::singleShot(0, [act] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        QVERIFY(box != nullptr);
        act(box);
    });
}

void TestDialogs::aMessageHoldsTicksAndReturnCloses() {
    bool held = false;
    QString text;
    QString title;
    whenUp([&](QMessageBox* box) {
        held = TickHold::active();
        text = box->text();
        title = box->windowTitle();
        QTest::keyClick(box, Qt::Key_Return);
    });
    dialogs().message(nullptr, QStringLiteral("a < b"));
    QVERIFY(held);
    QVERIFY(!TickHold::active());
    QCOMPARE(text, "a < b");
    QCOMPARE(title, "Benthor");
}

void TestDialogs::returnTakesNoWhereNoIsTheDefault() {
    whenUp([](QMessageBox* box) { QTest::keyClick(box->defaultButton(), Qt::Key_Return); });
    QVERIFY(!dialogs().confirm(nullptr, QStringLiteral("?"), QStringLiteral("Comfirmation"),
                               BoxKind::Critical, true));
    whenUp([](QMessageBox* box) { QTest::keyClick(box->defaultButton(), Qt::Key_Return); });
    QVERIFY(dialogs().confirm(nullptr, QStringLiteral("?"), QStringLiteral("Comfirmation")));
}

void TestDialogs::escapeIsNo() {
    whenUp([](QMessageBox* box) { QTest::keyClick(box, Qt::Key_Escape); });
    QVERIFY(!dialogs().confirm(nullptr, QStringLiteral("?"), QStringLiteral("Comfirmation")));
}

void TestDialogs::aScriptAnswersInPlaceOfTheBoxes() {
    benthor::tests::ScriptedDialogs script;
    script.answer(true);
    script.answerFile(QStringLiteral("dive.txt"));
    dialogs().message(nullptr, QStringLiteral("words"));
    QVERIFY(dialogs().confirm(nullptr, QStringLiteral("sure?"), QStringLiteral("Comfirmation")));
    QVERIFY(!dialogs().confirm(nullptr, QStringLiteral("again?"), QStringLiteral("Comfirmation")));
    QCOMPARE(dialogs().openFile(nullptr, QStringLiteral("Open"), {}, {}), "dive.txt");
    QCOMPARE(dialogs().openFile(nullptr, QStringLiteral("Open"), {}, {}), "");
    QCOMPARE(script.messages(), QStringList{"words"});
    QCOMPARE(script.asked().size(), 5);
}

void TestDialogs::filtersGoOverInTheToolkitsForm() {
    QCOMPARE(toolkitFilter(QStringLiteral("Text Files (*.txt)|*.txt|All Files (*.*)|*.*")),
             "Text Files (*.txt);;All Files (*)");
    QCOMPARE(toolkitFilter(QStringLiteral("*.mdb | *.mdb")), "*.mdb (*.mdb)");
}

QTEST_MAIN(TestDialogs)
#include "test_dialogs.moc"
