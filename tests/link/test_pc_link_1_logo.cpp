// Converting a logo on the real screen, with a converter that notes how it was started.

#include "link/logo.h"
#include "tests/link/linkstage.h"
#include "tests/simulator/logobitmap.h"
#include "tests/support/ownpath.h"

#include <QPushButton>

using namespace benthor;
using namespace benthor::tests;

namespace {

/// Writes its own path, its working folder and its arguments into "started", each ended by "|"; the file is
/// there at one stroke. It needs no other program but mv.
const QByteArray& note() {
    static const QByteArray script = "#!/bin/sh\n"
                                     "printf '%s|' \"$0\" \"$(pwd)\" \"$@\" > started.part\n"
                                     "/bin/mv started.part started\n";
    return script;
}

struct Stage : LinkStage {
    Stage()
        : LinkStage(QStringLiteral("Command")) {
        screen->showScreen();
    }
    void installBeside() const {
        folder.put(QStringLiteral("logoconv.exe"), note());
        if (!QFile(folder.path("logoconv.exe"))
                 .setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner)) {
            qFatal("no converter");
        }
    }
    void convert(const QString& name) {
        folder.put(name, bitmap(crookedLogo()));
        dialogs.answerFile(folder.path(name));
        control<QAction>("mnuLogo")->trigger();
        click("Command8");
    }
    QString started() const { return QString::fromUtf8(folder.get(QStringLiteral("started"))); }

    OwnPath path;
};

} // namespace

class TestPcLink1Logo : public QObject {
    Q_OBJECT

private slots:
    void theConverterBesideTheProgramIsStarted_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("text");
        QTest::newRow("plain") << "logo.bmp"
                               << "loga.bmt";
        QTest::newRow("blanks") << "my new logo.bmp"
                                << "my new loga.bmt";
        QTest::newRow("quotes") << "the \"big\" one's logo.bmp"
                                << "the \"big\" one's loga.bmt";
        QTest::newRow("dollar") << "$HOME `pwd` $(pwd).bmp"
                                << "$HOME `pwd` $(pwda.bmt";
        QTest::newRow("semicolon") << "a;b&c.bmp"
                                   << "a;b&a.bmt";
    }

    void theConverterBesideTheProgramIsStarted() {
        QFETCH(QString, name);
        QFETCH(QString, text);
        Stage stage;
        stage.installBeside();
        stage.path.install(QStringLiteral("logoconv"), note());
        stage.convert(name);
        QTRY_VERIFY(stage.folder.has(QStringLiteral("started")));
        QCOMPARE(stage.started(),
                 stage.folder.path("logoconv.exe") + u'|' + stage.folder.root() + u'|' + name + u'|');
        QCOMPARE(stage.dialogs.messages(), QStringList("Created file: " + text));
    }

    void theConverterOnThePathIsTheSecondChoice() {
        Stage stage;
        stage.path.install(QStringLiteral("logoconv"), note());
        stage.convert(QStringLiteral("logo.bmp"));
        QTRY_VERIFY(stage.folder.has(QStringLiteral("started")));
        QCOMPARE(stage.started(), stage.path.path("logoconv") + u'|' + stage.folder.root() + "|logo.bmp|");
    }

    void withoutAConverterAHintStandsInTheFoot() {
        Stage stage;
        stage.convert(QStringLiteral("logo.bmp"));
        QVERIFY(stage.text("infotext").contains(QLatin1String("No logo converter was found")));
        QCOMPARE(stage.dialogs.messages(), QStringList("Created file: loga.bmt"));
    }

    void aConverterThatFailsIsNotNoticed() {
        Stage stage;
        stage.installBeside();
        stage.folder.put(QStringLiteral("logoconv.exe"), "#!/bin/sh\n: > started\nexit 1\n");
        stage.convert(QStringLiteral("logo.bmp"));
        QTRY_VERIFY(stage.folder.has(QStringLiteral("started")));
        QCOMPARE(stage.dialogs.messages(), QStringList("Created file: loga.bmt"));
    }

    void theDialogBeginsInTheProgramFolder() {
        Stage stage;
        stage.control<QAction>("mnuLogo")->trigger();
        stage.click("Command8");
        QCOMPARE(stage.dialogs.asked().size(), 1);
        QCOMPARE(stage.dialogs.asked().first().kind, "open");
        QCOMPARE(QDir::cleanPath(stage.dialogs.asked().first().folder), stage.folder.root());
        QCOMPARE(stage.dialogs.asked().first().filter, "Bitmap Files (*.bmp)|*.bmp|All Files (*.*)|*.*");
    }

    void theMenuEntryTellsThenAsks() {
        Stage stage;
        stage.control<QAction>("mnuLogoConv")->trigger();
        QCOMPARE(stage.dialogs.asked().size(), 2);
        QCOMPARE(stage.dialogs.asked().first().kind, "message");
        QVERIFY(stage.dialogs.asked().first().text.startsWith(QLatin1String("Bitmap to convert must be")));
        QCOMPARE(stage.dialogs.asked().last().kind, "open");
    }

    void aScreenClosedUnderTheMessageAsksNothingMore() {
        Stage stage;
        stage.dialogs.during([&stage] { stage.screen->unload(); });
        stage.control<QAction>("mnuLogoConv")->trigger();
        QCOMPARE(stage.dialogs.asked().size(), 1);
        QTRY_VERIFY(stage.screen.isNull());
    }

    void theButtonIsThereForTheLogoOnly() {
        Stage stage;
        const auto* button = stage.control<QPushButton>("Command8");
        QCOMPARE(button->text(), "Convert Logo");
        for (const char* choice : {"mnuIntget", "mnuLogo", "mnuBookUp", "mnuOther"}) {
            stage.control<QAction>(choice)->trigger();
            QCOMPARE(button->isVisible(), qstrcmp(choice, "mnuLogo") == 0);
        }
    }
};

QTEST_MAIN(TestPcLink1Logo)
#include "test_pc_link_1_logo.moc"
