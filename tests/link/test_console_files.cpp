#include "tests/link/consolestage.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace benthor;
using namespace benthor::link;
using benthor::tests::ConsoleStage;

class TestConsoleFiles : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { process() = Process(); }

    void theFilterOfTheOpenDialogGoesByTheChoice() {
        ConsoleStage stage;
        stage.link.console.convertedlogo = QStringLiteral("sharka.bmt");
        for (const int option : {0, 5, 9}) {
            stage.choose(option);
            mnuOpen_click(stage.link, stage.host);
        }
        QCOMPARE(stage.host.filters, QStringList({"BMPText Files (*.bmt)|*.bmt|All Files (*.*)|*.*",
                                                  "Gas Files (*.mit)|*.mit|All Files (*.*)|*.*",
                                                  "Text Files (*.txt)|*.txt|All Files (*.*)|*.*"}));
        QCOMPARE(stage.host.suggested, QStringList({"sharka.bmt", "default.mit", ""}));
        QVERIFY(stage.link.console.chosenfile.path.isEmpty());
    }

    void aFileIsReadAsItsBytes() {
        ConsoleStage stage;
        stage.choose(6);
        stage.host.chosenFile = stage.file("two  blanks\r\n\xFF", QStringLiteral("book.txt"));
        mnuOpen_click(stage.link, stage.host);
        QCOMPARE(stage.link.console.chosenfile.bytes, QByteArray("two  blanks\r\n\xFF"));
        QCOMPARE(bodyinhand(stage.link.console).file, QByteArray("two  blanks\r\n\xFF"));
        QCOMPARE(stage.link.console.Text5.text, stage.host.chosenFile);
        QCOMPARE(stage.link.console.uploadfile, stage.host.chosenFile);
        QVERIFY(stage.host.questions.isEmpty());
    }

    void ofALogoOnlyWhatStandsBehindTheLastDoubleBlankStays_data() {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("none") << QByteArray("0 1 2") << QByteArray("0 1 2");
        QTest::newRow("one") << QByteArray("head  body") << QByteArray("body");
        QTest::newRow("in the last line") << QByteArray("head  body\r\nx  end") << QByteArray("end");
        QTest::newRow("three blanks") << QByteArray("head   body") << QByteArray(" body");
        QTest::newRow("at the end") << QByteArray("head  ") << QByteArray();
    }

    void ofALogoOnlyWhatStandsBehindTheLastDoubleBlankStays() {
        QFETCH(QByteArray, file);
        QFETCH(QByteArray, text);
        ConsoleStage stage;
        stage.choose(0);
        stage.host.chosenFile = stage.file(file, QStringLiteral("a.bmt"));
        mnuOpen_click(stage.link, stage.host);
        QCOMPARE(bodyinhand(stage.link.console).file, text);
    }

    void aLongFileIsCutAndItsRestCanBeSaved() {
        ConsoleStage stage;
        stage.choose(6);
        QByteArray bytes;
        for (int i = 0; bytes.size() < 20100; ++i) {
            bytes += QByteArray::number(i);
        }
        stage.host.chosenFile = stage.file(bytes, QStringLiteral("long.txt"));
        stage.host.answers = {true};
        mnuOpen_click(stage.link, stage.host);
        QCOMPARE(bodyinhand(stage.link.console).file, bytes.first(20000));
        QCOMPARE(stage.host.questions,
                 QStringList("Not all text sent. Do you want to save remaining text in new file?"));
        QCOMPARE(stage.host.titles, QStringList("Save Text"));
        QFile rest(stage.host.chosenFile); // the fake gives the same name for both dialogs
        QVERIFY(rest.open(QIODevice::ReadOnly));
        QCOMPARE(rest.readAll(), bytes.sliced(20000));
    }

    void aFileThatCannotBeReadChangesNothing() {
        ConsoleStage stage;
        stage.choose(6);
        stage.openFile("kept", QStringLiteral("kept.txt"));
        stage.host.chosenFile = stage.folder.filePath(QStringLiteral("none.txt"));
        mnuOpen_click(stage.link, stage.host);
        QCOMPARE(bodyinhand(stage.link.console).file, QByteArray("kept"));
        QCOMPARE(stage.host.messages.size(), 1);
        QVERIFY(stage.host.messages.first().contains(QLatin1String("none.txt")));
    }

    /// The gas screen starts with the text in hand for the device: a book is none.
    void anOpenedFileIsNoSetup() {
        for (const int option : {0, 5, 6, 9}) {
            ConsoleStage stage;
            stage.choose(option);
            process().uploadtext = QStringLiteral("the setup");
            stage.openFile("a book", QStringLiteral("a.bmt"));
            QCOMPARE(process().uploadtext, "the setup");
        }
    }

    void theTextToSendFollowsItsBoxExceptForBookAndLogo() {
        ConsoleStage stage;
        for (int option = 0; option <= 11; ++option) {
            stage.choose(option);
            process().uploadtext = QStringLiteral("file");
            stage.link.console.Text7 = QStringLiteral("box");
            refreshtexttosend(stage.link);
            QCOMPARE(process().uploadtext, option == 0 || option == 6 ? "file" : "box");
            QCOMPARE(stage.link.console.Text12.enabled, option == 6 || option == 9);
        }
    }

    void theFileBoxFollowsTheFileNameThatIsShown() {
        ConsoleStage stage;
        stage.link.console.uploadfile = QStringLiteral("a.bmt");
        stage.link.console.Text5.text = QStringLiteral("old");
        refreshtexttosend(stage.link);
        QCOMPARE(stage.link.console.Text5.text, "old");
        stage.link.console.filenameshown = QStringLiteral("a.bmt");
        refreshtexttosend(stage.link);
        QCOMPARE(stage.link.console.Text5.text, "a.bmt");
    }

    void theReplyIsEchoedFromTheThirdPlaceBehindItsTag() {
        ConsoleStage stage;
        stage.choose(1);
        stage.link.Text4.assign("PPr00010PP");
        replyecho(stage.link);
        QCOMPARE(stage.link.console.TextResponse.text, "10 secs");
        stage.choose(2);
        stage.link.Text4.assign("PP+^+00005PP");
        replyecho(stage.link);
        QCOMPARE(stage.link.console.TextResponse.text, "5 secs");
        stage.link.Text4.assign("nothing");
        replyecho(stage.link);
        QCOMPARE(stage.link.console.TextResponse.text, "5 secs");
        stage.choose(11);
        stage.link.Text4.assign("R0000,");
        replyecho(stage.link);
        QCOMPARE(stage.link.console.TextResponse.text, "0 secs");
        stage.choose(10);
        replyecho(stage.link);
        QCOMPARE(stage.link.console.TextResponse.text, "");
    }

    void theIntervalReplyAgreesWithTheVectors_data() {
        QTest::addColumn<QJsonObject>("vector");
        QFile file(QStringLiteral(BENTHOR_TEST_DATA "/link/interval.json"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QJsonArray all =
            QJsonDocument::fromJson(file.readAll())[QLatin1String("interval_replies")].toArray();
        QVERIFY(!all.isEmpty());
        for (const auto& vector : all) {
            QTest::newRow(vector[QLatin1String("about")].toString().toUtf8()) << vector.toObject();
        }
    }

    void theIntervalReplyAgreesWithTheVectors() {
        QFETCH(QJsonObject, vector);
        ConsoleStage stage;
        stage.choose(1);
        stage.link.console.intervalread = false;
        stage.link.console.Frame4Visible = true;
        stage.link.console.Text16.fill(QStringLiteral("(kept)"));
        stage.link.Text4.assign(vector[QLatin1String("reply")].toString().toLatin1());
        readinterval(stage.link);
        const QString interval = vector[QLatin1String("interval")].toVariant().toString();
        QCOMPARE(stage.link.console.Text16[1], interval);
        QCOMPARE(stage.link.console.Text16[0], interval);
        const QJsonObject boxes = vector[QLatin1String("boxes")].toObject();
        for (std::size_t box = 2; box <= 6; ++box) {
            QCOMPARE(stage.link.console.Text16[box],
                     boxes.value(QString::number(box)).toString(QStringLiteral("(kept)")));
        }
        QVERIFY(stage.link.console.intervalread); // whatever was found
    }

    void theIntervalIsReadOnceBehindEachClick() {
        ConsoleStage stage;
        stage.choose(1);
        stage.link.console.intervalread = false;
        stage.link.Text4.assign("r00010");
        readinterval(stage.link);
        QCOMPARE(stage.link.console.Text16[1], "10");
        stage.link.Text4.assign("r00020");
        readinterval(stage.link);
        QCOMPARE(stage.link.console.Text16[1], "10");
        Label19_click(stage.link, stage.host, 1);
        readinterval(stage.link);
        QCOMPARE(stage.link.console.Text16[1], "20");
    }

    void onlyThreeDigitsAreAnInterval_data() {
        QTest::addColumn<QByteArray>("text");
        for (const char* text :
             {"ver=V3.10", "r00 10", "r00+10", "r00-10", "r001.5", "r00.10", "r0010", "r00"}) {
            QTest::newRow(text) << QByteArray(text);
        }
    }

    void onlyThreeDigitsAreAnInterval() {
        QFETCH(QByteArray, text);
        ConsoleStage stage;
        stage.choose(1);
        stage.link.console.intervalread = false;
        stage.link.console.Frame4Visible = true;
        stage.link.Text4.assign(text + "A+08B1.5C 10D12E1");
        readinterval(stage.link);
        for (const QString& box : stage.link.console.Text16) {
            QCOMPARE(box, "");
        }
        QVERIFY(stage.link.console.intervalread);
    }

    void aReplyThatCameTooLateWaitsForTheNextClick() {
        ConsoleStage stage;
        stage.choose(1);
        stage.link.console.intervalread = false;
        readinterval(stage.link);
        QVERIFY(stage.link.console.intervalread);
        stage.link.Text4.assign("r00010");
        readinterval(stage.link);
        QCOMPARE(stage.link.console.Text16[1], "");
        stage.link.console.intervalread = false;
        readinterval(stage.link);
        QCOMPARE(stage.link.console.Text16[1], "10");
    }

    void theIntervalIsReadForItsChoiceOnly() {
        ConsoleStage stage;
        stage.choose(2);
        stage.link.console.intervalread = false;
        stage.link.Text4.assign("+^+00010");
        readinterval(stage.link);
        QCOMPARE(stage.link.console.Text16[1], "");
    }
};

QTEST_APPLESS_MAIN(TestConsoleFiles)
#include "test_console_files.moc"
