#include "platform/screen/dialogs.h"

#include "platform/screen/ticktimer.h"
#include "tests/support/scripteddialogs.h"

#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

using namespace benthor::platform;

class TestDialogs : public QObject {
    Q_OBJECT

private slots:
    void aMessageHoldsTicksAndReturnCloses();
    void returnTakesNoWhereNoIsTheDefault();
    void escapeIsNo();
    void whatStandsBelowIsPlainAndBesideTheText();
    void aScriptAnswersInPlaceOfTheBoxes();
    void filtersGoOverInTheToolkitsForm();
    void aFileDialogShowsItsFiltersAsTheyRead();
    void aSaveDialogShowsItsFiltersAsTheyRead();

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

void TestDialogs::whatStandsBelowIsPlainAndBesideTheText() {
    const QString below = QStringLiteral("<b>a.txt</b>\nb.txt");
    const auto look = [&](QMessageBox* box) {
        QCOMPARE(box->text(), "words");
        QCOMPARE(box->informativeText(), below);
        int found = 0;
        for (const QLabel* label : box->findChildren<QLabel*>()) {
            QVERIFY(label->text() != below || label->textFormat() == Qt::PlainText);
            found += label->text() == below ? 1 : 0;
        }
        QCOMPARE(found, 1);
        QTest::keyClick(box, Qt::Key_Escape);
    };
    whenUp(look);
    dialogs().message(nullptr, QStringLiteral("words"), BoxKind::Information, {}, below);
    whenUp(look);
    QVERIFY(!dialogs().confirm(nullptr, QStringLiteral("words"), {}, BoxKind::Question, true, below));
    benthor::tests::ScriptedDialogs script;
    dialogs().message(nullptr, QStringLiteral("words"), BoxKind::Information, {}, below);
    QCOMPARE(script.asked().first().below, below);
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
             "Text Files (*.txt) (*.txt);;All Files (*.*) (*)");
    QCOMPARE(toolkitFilter(QStringLiteral("*.mdb | *.mdb")), "*.mdb (*.mdb)");
}

void TestDialogs::aFileDialogShowsItsFiltersAsTheyRead() {
    const QTemporaryDir directory;
    for (const char* name : {"dive.txt", "noending"}) {
        QFile file(directory.filePath(QLatin1String(name)));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    QStringList shown;
    QTimer::singleShot(0, [&shown] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        QVERIFY(dialog != nullptr);
        auto* box = dialog->findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
        for (int i = 0; i < box->count(); ++i) {
            shown += box->itemText(i);
        }
        dialog->selectNameFilter(box->itemText(1));
        dialog->selectFile(QStringLiteral("noending"));
        QTRY_COMPARE(dialog->selectedFiles().size(), 1);
        QMetaObject::invokeMethod(dialog, "accept");
    });
    const QString chosen = dialogs().openFile(nullptr, QStringLiteral("Open"), directory.path(),
                                              QStringLiteral("Text Files (*.txt)|*.txt|All Files (*.*)|*.*"));
    QCOMPARE(shown, (QStringList{"Text Files (*.txt)", "All Files (*.*)"}));
    QCOMPARE(chosen, directory.filePath(QStringLiteral("noending")));
}

void TestDialogs::aSaveDialogShowsItsFiltersAsTheyRead() {
    const QTemporaryDir directory;
    const QString filter = QStringLiteral("Text Files (*.csv)|*.csv|All Files (*.*)|*.*");
    for (const bool withType : {false, true}) {
        QStringList shown;
        QTimer::singleShot(0, [&shown] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            QVERIFY(dialog != nullptr);
            auto* box = dialog->findChild<QComboBox*>(QStringLiteral("fileTypeCombo"));
            for (int i = 0; i < box->count(); ++i) {
                shown += box->itemText(i);
            }
            QMetaObject::invokeMethod(dialog, "reject");
        });
        if (withType) {
            QVERIFY(dialogs()
                        .saveFileAs(nullptr, QStringLiteral("Save as"), directory.path(), filter)
                        .path.isEmpty());
        } else {
            QVERIFY(
                dialogs().saveFile(nullptr, QStringLiteral("Save as"), directory.path(), filter).isEmpty());
        }
        QCOMPARE(shown, (QStringList{"Text Files (*.csv)", "All Files (*.*)"}));
    }
}

QTEST_MAIN(TestDialogs)
#include "test_dialogs.moc"
