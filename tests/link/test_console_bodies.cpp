// What follows a command: the file that the box names, or the setup; and what becomes of it on a lost line.

#include "link/commandmenu.h"
#include "link/directory.h"
#include "tests/link/consolestage.h"

using namespace benthor;
using namespace benthor::link;
using benthor::tests::ConsoleStage;
using benthor::tests::FakeLine;

class TestConsoleBodies : public QObject {
    Q_OBJECT

private slots:
    void cleanup() { process() = Process(); }

    void aBodyGoesOutCharacterByCharacterAndEndsInEscape() {
        ConsoleStage stage;
        stage.choose(0);
        stage.openFile("a*;\xE9", QStringLiteral("a.bmt"));
        stage.answer("l");
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("La*;\xE9\x1B"));
        QCOMPARE(stage.host.line.writes.size(), 6U);
    }

    void aSecondSendAppendsASecondEscape() {
        ConsoleStage stage;
        stage.choose(0);
        stage.openFile("x", QStringLiteral("a.bmt"));
        stage.answer("l");
        Command2_click(stage.link, stage.host);
        stage.host.line.sent.clear();
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("Lx\x1B\x1B"));
        stage.openFile("x", QStringLiteral("a.bmt"));
        stage.host.line.sent.clear();
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("Lx\x1B"));
    }

    void withoutAFileNoBodyGoesOut() {
        ConsoleStage stage;
        stage.choose(9); // its file box is shown, and empty
        stage.link.console.Text3 = QStringLiteral("X");
        process().uploadtext = QStringLiteral("text");
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("X"));
        QCOMPARE(process().uploadtext, "text");
    }

    /// A device that has heard "B" waits for a text: the letter goes with one, or not at all.
    void aBookOrALogoWithoutAFileIsNotBegun() {
        for (const int option : {0, 6}) {
            for (const char* name : {"", "shark2aa.bmt"}) {
                ConsoleStage stage;
                stage.choose(option);
                stage.link.console.Text5.text = QLatin1String(name);
                process().uploadtext = QStringLiteral("the setup");
                stage.answer("lb");
                Command2_click(stage.link, stage.host);
                Command5_click(stage.link, stage.host);
                QCOMPARE(stage.host.line.sent, QByteArray());
                QCOMPARE(stage.host.messages.size(), 2);
                QCOMPARE(process().uploadtext, "the setup");
            }
        }
    }

    /// Whatever else writes into the text in hand for the device meanwhile, and whatever was chosen between.
    void whatTheBoxNamesIsWhatGoes() {
        ConsoleStage stage;
        stage.link.console.Text7 = QStringLiteral("A079 the setup");
        stage.answer("lbga");
        stage.choose(6);
        stage.openFile("a book; a *star*", QStringLiteral("book.txt"));
        const QByteArray book = "Ba book: a :star:\x1B * * ";
        const auto beat = [&stage] { // of the link's tick, and of the gas screen's
            refreshtexttosend(stage.link);
            process().uploadtext = QStringLiteral("A079 a gas block");
        };
        beat();
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, book);
        for (const int other : {1, 2, 4, 5, 10}) { // a name leaves its prefix to a book
            stage.openFile("a book; a *star*", QStringLiteral("book.txt"));
            stage.choose(other);
            beat();
            beat();
            stage.choose(6);
            beat();
            QVERIFY(stage.link.console.Text5.text.endsWith("book.txt"));
            stage.host.line.sent.clear();
            Command2_click(stage.link, stage.host);
            QCOMPARE(stage.host.line.sent, book);
        }
        // The last file opened is the one that is named, for whatever it is sent, and whatever it was opened
        // for.
        const auto sentAs = [&](int option) {
            stage.choose(option);
            beat();
            stage.host.line.sent.clear();
            Command2_click(stage.link, stage.host);
            return stage.host.line.sent;
        };
        for (const int opened : {0, 6}) {
            for (const int sent : {0, 6}) {
                stage.choose(opened);
                stage.openFile("head  the logo", QStringLiteral("a.bmt"));
                QCOMPARE(sentAs(sent),
                         sent == 0 ? QByteArray("Lthe logo\x1B") : QByteArray("Bhead  the logo\x1B * * "));
            }
        }
        QCOMPARE(process().uploadtext, "A079 a gas block");
    }

    /// A new directory empties the box: what it does not name does not go.
    void aFileThatTheBoxNoLongerNamesDoesNotGo() {
        ConsoleStage stage;
        stage.choose(6);
        stage.openFile("a book", QStringLiteral("book.txt"));
        cmdstore_click(stage.link, stage.host);
        stage.choose(6);
        refreshtexttosend(stage.link);
        QCOMPARE(stage.link.console.Text5.text, "");
        stage.host.line.sent.clear();
        stage.answer("b");
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray());
        QCOMPARE(stage.host.messages.size(), 1);
    }

    void aFileIsSentWithAnyOtherCommandThatShowsItsBox() {
        ConsoleStage stage;
        stage.choose(9);
        stage.link.console.Text3 = QStringLiteral("X");
        stage.link.console.Text7 = QStringLiteral("the setup");
        stage.openFile("a * text;", QStringLiteral("any.txt"));
        refreshtexttosend(stage.link);
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("Xa * text;\x1B"));
        // A name that was never opened is none.
        ConsoleStage none;
        none.choose(9);
        none.link.console.Text3 = QStringLiteral("X");
        none.link.console.Text5.text = QStringLiteral("shark2aa.txt");
        process().uploadtext = QStringLiteral("the setup");
        Command2_click(none.link, none.host);
        QCOMPARE(none.host.line.sent, QByteArray("X"));
    }

    /// With the gas screen open its block stands in the text in hand between two ticks of the link.
    void theSetupThatIsShownIsWhatGoesByHand() {
        ConsoleStage stage;
        dooptioncheck(stage.link);
        stage.link.console.Text7 = QStringLiteral("A079 whole K to Z");
        process().uploadtext = QStringLiteral("A079 a gas block");
        stage.answer("g");
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("GA079 whole K to Z\x1B"));
        stage.host.line.sent.clear();
        Command5_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("A079 whole K to Z\x1B\x1B"));
    }

    /// By whichever choice it leaves, and by Send File alone as well.
    void aSetupIsLookedAtBeforeItsFirstByte() {
        for (const bool may : {false, true}) {
            for (const bool file : {false, true}) {
                ConsoleStage stage;
                stage.host.bodiesMayGo = may;
                stage.answer("g");
                if (file) {
                    stage.choose(9);
                    stage.link.console.Text3 = QStringLiteral("G");
                    stage.openFile("A079 of a file", QStringLiteral("some.mit"));
                } else {
                    dooptioncheck(stage.link);
                    stage.link.console.Text7 = QStringLiteral("A079 of a file");
                }
                Command2_click(stage.link, stage.host);
                QCOMPARE(stage.host.bodies, QStringList("A079 of a file"));
                QCOMPARE(stage.host.line.sent, may ? QByteArray("GA079 of a file\x1B") : QByteArray());
                stage.host.line.sent.clear();
                Command5_click(stage.link, stage.host);
                QCOMPARE(stage.host.bodies.size(), 2);
                QCOMPARE(!stage.host.line.sent.isEmpty(), may);
            }
        }
    }

    void behindGasUploadSendIsTheUpdateOfTheGasScreen() {
        ConsoleStage stage;
        mnuCommand_click(stage.link, stage.host, u"mnuGasUp");
        QCOMPARE(stage.link.console.Command2.text, "Gas Upload");
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.updates, 1);
        QCOMPARE(stage.host.line.sent, QByteArray());
        dooptioncheck(stage.link); // the update has done that
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.updates, 2);
        QCOMPARE(stage.host.line.sent, QByteArray());
        mnuCommand_click(stage.link, stage.host, u"mnuDiveSum");
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("M"));
        QCOMPARE(stage.host.updates, 2);
    }

    void aLoneLetterOfTheSetupNeverLeaves() {
        for (const int option : {5, 9}) {
            for (const bool file : {false, true}) {
                ConsoleStage stage;
                stage.choose(option);
                stage.link.console.Text3 = QStringLiteral("G");
                stage.link.console.Text5 = {file ? QStringLiteral("some.mit") : QString(), option == 9};
                stage.answer("g");
                Command2_click(stage.link, stage.host);
                QCOMPARE(stage.host.line.sent, QByteArray());
                QCOMPARE(stage.host.updates, 1);
            }
        }
    }

    void aCommandOnALostLineIsToldAndEndsThere_data() {
        QTest::addColumn<bool>("stuck");
        QTest::addColumn<QString>("words");
        QTest::newRow("stuck") << true << "took nothing for two seconds";
        QTest::newRow("cut") << false << "is cut";
    }

    void aCommandOnALostLineIsToldAndEndsThere() {
        QFETCH(bool, stuck);
        QFETCH(QString, words);
        for (const int option : {0, 1, 2, 3, 4, 6, 8, 10, 11}) {
            ConsoleStage stage;
            stage.choose(option);
            if (option == 0 || option == 6) {
                stage.openFile("body", QStringLiteral("a.bmt"));
            }
            stage.answer("lbsa");
            stage.host.line.takes = stuck ? 0 : -1;
            if (!stuck) {
                stage.host.line.cut();
            }
            Command2_click(stage.link, stage.host);
            QCOMPARE(stage.host.line.sent, QByteArray());
            QCOMPARE(stage.host.line.polls, 0);
            QCOMPARE(stage.host.messages.size(), 1);
            QVERIFY(stage.host.messages[0].contains(words));
            QCOMPARE(stage.link.AFLabel3.text, "Not Connected");
            QCOMPARE(stage.link.silentticks, 100);
        }
    }

    /// At every byte, one after another.
    void aBodyOnALostLineEndsWhereItIs() {
        for (const int option : {0, 6, 9}) {
            for (const bool stuck : {true, false}) {
                QByteArray whole;
                for (qsizetype place = -1; place < whole.size() || place < 0; ++place) {
                    ConsoleStage stage;
                    stage.choose(option);
                    stage.openFile("some text", QStringLiteral("a.bmt"));
                    stage.answer("lb");
                    FakeLine& line = stage.host.line;
                    if (place >= 0 && stuck) {
                        line.takes = place;
                    } else if (place >= 0) {
                        line.onOutput = [&line, place](const QByteArray&) {
                            if (line.sent.size() > place) {
                                line.cut();
                            }
                        };
                    }
                    if (option == 9) {
                        stage.link.console.Text3 = QStringLiteral("X");
                    }
                    Command2_click(stage.link, stage.host);
                    if (place < 0) {
                        whole = line.sent;
                        QCOMPARE(stage.host.messages, QStringList());
                        continue;
                    }
                    QVERIFY(whole.startsWith(line.sent));
                    QVERIFY(line.sent.size() <= place + 5); // the book's end goes in one piece
                    QCOMPARE(stage.host.messages.size(), 1);
                    QVERIFY(stage.host.messages[0].contains(stuck ? "took nothing for two seconds"
                                                                  : "the line to the device was cut."));
                    QCOMPARE(stage.link.AFLabel3.text, "Not Connected");
                }
            }
        }
    }

    void aSetupOnALostLineIsTold() {
        ConsoleStage stage;
        process().uploadtext = QStringLiteral("A079\x1B");
        stage.host.line.takes = 5;
        send_data(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("G   A"));
        QCOMPARE(stage.host.messages.size(), 1);
        QVERIFY(stage.host.messages[0].startsWith("The setup was not sent whole: "));
        QCOMPARE(stage.link.AFLabel3.text, "Not Connected");
        ConsoleStage cut;
        process().uploadtext = QStringLiteral("A079\x1B");
        cut.host.line.cut();
        send_data(cut.link, cut.host);
        QVERIFY(
            cut.host.messages.value(0).startsWith("The setup was not sent: the line to the device is cut."));
    }

    void anIntervalByItsPictureOnALostLineIsTold() {
        ConsoleStage stage;
        stage.link.console.Text16[0] = QStringLiteral("12");
        stage.host.line.takes = 2;
        Picture14_click(stage.link, stage.host, 2);
        QCOMPARE(stage.host.messages.size(), 1);
        QCOMPARE(stage.link.AFLabel3.text, "Not Connected");
    }

    void aBookIsCutAtItsIndexAndItsMarksBecomeColons() {
        ConsoleStage stage;
        stage.choose(6);
        stage.openFile("abc;d*e", QStringLiteral("book.txt"));
        stage.link.console.Text12.text = QStringLiteral("2");
        stage.answer("b");
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("Bc:d:e\x1B * * "));
        QVERIFY(stage.link.Text4.isEmpty());
    }

    void aBookIndexBeyondTheTextSendsTheEndOnly() {
        ConsoleStage stage;
        stage.choose(6);
        stage.openFile("short", QStringLiteral("book.txt"));
        stage.link.console.Text12.text = QStringLiteral("100");
        stage.answer("b");
        Command2_click(stage.link, stage.host);
        QCOMPARE(stage.host.line.sent, QByteArray("B * * "));
    }

    void closingTheScreenEndsTheBody() {
        ConsoleStage stage;
        stage.choose(6);
        stage.openFile(QByteArray(5000, 'x'), QStringLiteral("book.txt"));
        stage.answer("b");
        stage.host.line.onOutput = [&stage](const QByteArray&) { stage.host.closed = true; };
        Command2_click(stage.link, stage.host);
        QVERIFY(stage.host.line.sent.size() < 1000);
        QVERIFY(!stage.host.line.sent.endsWith(" * * "));
    }

    void theSetupLeavesInOnePiece() {
        ConsoleStage stage;
        process().uploadtext = QStringLiteral("A079\x1B");
        send_data(stage.link, stage.host);
        QCOMPARE(stage.host.line.writes.size(), 1U);
        QCOMPARE(stage.host.line.sent, QByteArray("G   A079\x1B\x1B\r\n"));
    }

    void theSetupsFieldsAreSelectedWithItsFileBox() {
        ConsoleStage stage;
        dooptioncheck(stage.link);
        QCOMPARE(stage.link.console.option, 5);
        QCOMPARE(stage.link.console.Text3, "G");
        QCOMPARE(stage.link.console.Text6, "g");
        QCOMPARE(stage.link.console.Text5.text, "G");
        QVERIFY(stage.link.console.Text5.visible);
    }
};

QTEST_APPLESS_MAIN(TestConsoleBodies)
#include "test_console_bodies.moc"
