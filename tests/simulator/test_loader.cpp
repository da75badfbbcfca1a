#include "tests/simulator/loaderhands.h"

using namespace benthor::tests;

class TestLoader : public QObject {
    Q_OBJECT

private slots:
    // --- beacon

    void freshItSendsItsBeacon_data() {
        QTest::addColumn<bool>("large");
        QTest::addColumn<QByteArray>("beacon");
        QTest::newRow("small") << false << QByteArray("ooooooooooo");
        QTest::newRow("large") << true << QByteArray("OOOOOOOOO");
    }

    void freshItSendsItsBeacon() {
        QFETCH(bool, large);
        QFETCH(QByteArray, beacon);
        Loader loader(FirmwareType::Rb);
        loader.large = large;
        QCOMPARE(loader.advance(20), beacon);
        QVERIFY(loader.advance(220).isEmpty());
        QCOMPARE(loader.advance(20), beacon);
        QCOMPARE(loader.advance(1000), beacon.repeated(4));
    }

    void spokenToItIsSilentForGood() {
        for (const char* bytes : {"1", "R", "x", "\r"}) {
            Loader loader(FirmwareType::Rb);
            loader.advance(1000);
            after(loader, bytes);
            QCOMPARE(loader.advance(60000), QByteArray());
        }
    }

    // --- pages

    void thePromptPageTellsMemoriesValueAndType() {
        Loader loader(FirmwareType::Rb);
        const QByteArray page = after(loader, "1");
        QVERIFY(page.size() >= 50);
        QVERIFY(page.contains(kPrompt));
        QVERIFY(page.contains(kProgramming));
        QVERIFY(page.contains("rb"));
        QVERIFY(page.contains("\r\nshell: "));
        QCOMPARE(digitsOf(page), kOldCheck);
        QVERIFY(page.endsWith("\r\n"));
        QCOMPARE(page.count('\n'), page.count("\r\n"));
    }

    void noPageHoldsWhatAnotherTells_data() {
        QTest::addColumn<int>("type");
        QTest::newRow("rb") << static_cast<int>(FirmwareType::Rb);
        QTest::newRow("kd") << static_cast<int>(FirmwareType::Kd);
    }

    void noPageHoldsWhatAnotherTells() {
        QFETCH(int, type);
        Loader loader(static_cast<FirmwareType>(type));
        const QByteArray prompt = after(loader, "1");
        const QByteArray mode = after(loader, "R1");
        const QByteArray own = typeWord(static_cast<FirmwareType>(type));
        const char* other = own == "rb" ? "kd" : "rb";
        QVERIFY(prompt.contains(kPrompt));
        QVERIFY(prompt.contains(own));
        hasNone(prompt, {"REPROG MODE", other, "oooo", "OOOO", "8:f", " to "});
        QVERIFY(mode.contains(kMode));
        QVERIFY(mode.contains(own));
        hasNone(mode, {"R, Enter", other, "MEMORY", "Prog", "shell:", "oooo", "OOOO", "8:f", " to "});
    }

    void rLeadsIntoTheModeAndSaysNothing() {
        Loader loader(FirmwareType::Kd);
        QCOMPARE(after(loader, "R"), QByteArray());
        QVERIFY(loader.state() == State::Reprogramming);
        QCOMPARE(after(loader, "1").count(kMode), 1);
    }

    void aMemoryThatIsErasedIsNotToldAsProgrammed() {
        Loader loader(FirmwareType::Rb);
        loader.programmed = {true, false, true};
        const QByteArray page = after(loader, "1");
        QVERIFY(page.contains("MEMORY B Erased\r\nMEMORY C Erased"));
        QVERIFY(!page.contains("MEMORY B Programmed"));
    }

    // --- manual erase

    void eraseIsAskedFirst() {
        Loader loader = inMode();
        const QByteArray question = after(loader, "&");
        QVERIFY(!question.isEmpty());
        hasNone(question, {"MEMORY", "Prog", "Status check", " to ", "oooo", "OOOO", "8:f", "shell:", "rb",
                           "kd", "REPROG MODE", "R, Enter"});
        QVERIFY(loader.programmed == (Memories{true, true, true}));
    }

    void yErasesAllThree() {
        Loader loader = inMode();
        after(loader, "&");
        QCOMPARE(after(loader, "Y"), "MEMORY A Erased\r\nMEMORY B Erased\r\nMEMORY C Erased\r\n");
        QVERIFY(loader.programmed == (Memories{false, false, false}));
        QVERIFY(loader.state() == State::Reprogramming);
        QCOMPARE(after(loader, "Y"), QByteArray());
    }

    void nKeepsThem() {
        Loader loader = inMode();
        after(loader, "&");
        hasNone(after(loader, "N"), {"MEMORY", "Prog", "Status check", " to ", "rb", "kd"});
        QCOMPARE(after(loader, "Y"), QByteArray());
        QVERIFY(loader.programmed == (Memories{true, true, true}));
    }

    void theAnswerMayComeAtOnce() {
        Loader loader = inMode();
        QVERIFY(after(loader, "&Y").contains("MEMORY C Erased"));
        QVERIFY(loader.programmed == (Memories{false, false, false}));
    }

    void anotherKeyIsNoAnswer() {
        Loader loader = inMode();
        after(loader, "&");
        QVERIFY(after(loader, "1").contains(kMode));
        QCOMPARE(after(loader, "Y"), QByteArray());
        QVERIFY(loader.programmed == (Memories{true, true, true}));
    }

    void furtherMarksAskAgain() {
        Loader loader = inMode();
        const QByteArray question = after(loader, "&");
        QCOMPARE(after(loader, "&"), question);
        QVERIFY(after(loader, "&&").startsWith(question));
        QVERIFY(after(loader, "Y").contains("MEMORY A Erased"));
    }

    void atThePromptNothingIsErased() {
        Loader loader(FirmwareType::Rb);
        after(loader, "&");
        QCOMPARE(after(loader, "Y"), QByteArray());
        QVERIFY(loader.programmed == (Memories{true, true, true}));
    }

    // --- retry, continue, restart

    void retryTellsTheSumThatWaits() {
        Loader loader = withVerdict();
        QCOMPARE(after(loader, QByteArray(21, '9') + '&'), toldSum('&' + sumOf(ownImage())));
    }

    void retryShowsThePageWhenNothingWaits() {
        Loader loader = inMode();
        QCOMPARE(after(loader, QByteArray(21, '9') + '&').count(kMode), 1);
        QCOMPARE(after(loader, "Y"), QByteArray());
        QVERIFY(loader.programmed == (Memories{true, true, true}));
    }

    void continueWithNothingHungChangesNothing() {
        Loader loader = withVerdict();
        QCOMPARE(after(loader, "2"), QByteArray());
        QVERIFY(loader.state() == State::Verdict);
    }

    void aRestartEndsTheLoader_data() {
        QTest::addColumn<QByteArray>("before");
        QTest::newRow("fresh") << QByteArray();
        QTest::newRow("at the prompt") << QByteArray("1");
        QTest::newRow("in the mode") << QByteArray("R1");
    }

    void aRestartEndsTheLoader() {
        QFETCH(QByteArray, before);
        Loader loader(FirmwareType::Rb);
        after(loader, before);
        const QByteArray said = after(loader, QByteArray(200, 'Q'));
        hasNone(said, {"MEMORY", "Prog", "Status check", " to ", "8:f", "shell:", "rb", "kd"});
        QVERIFY(loader.over());
        QCOMPARE(loader.advance(10000), QByteArray());
    }

    void withAnErasedMemoryItRestartsIntoItself() {
        Loader loader = inMode();
        after(loader, "&Y");
        after(loader, QByteArray(200, 'Q'), 20);
        QVERIFY(!loader.over());
        QCOMPARE(after(loader, "1", Loader::restartMilliseconds - 60), QByteArray());
        QVERIFY(after(loader, "", 600).startsWith("ooooooooooo"));
        QVERIFY(after(loader, "1").contains(kPrompt));
    }

    void whatWasHeardIsLogged() {
        Loader loader(FirmwareType::Rb);
        after(loader, "1");
        after(loader, "R1");
        after(loader, "x\r\n", 500);
        after(loader, "&");
        after(loader, "N");
        after(loader, QByteArray(21, '9') + '&');
        send(loader, ownImage());
        after(loader, "y", 6100);
        after(loader, QByteArray(200, 'Q'));
        const std::vector<QByteArray> expected{"loader 1",         "loader R", "loader 1",   "noise",
                                               "loader &",         "kept",     "loader 9",   "loader &",
                                               "image 7041 bytes", "loader y", "programmed", "loader Q"};
        QVERIFY(loader.takeLog() == expected);
        QVERIFY(loader.takeLog().empty());
    }

    void timeMayPassInLargeSteps() {
        Loader loader = withVerdict();
        loader.receive("y");
        const QByteArray said = loader.advance(60000);
        QVERIFY(said.startsWith(kProgramming));
        QCOMPARE(digitsOf(said), storedCheck(ownImage()));
    }

    void whatIsSaidWhileTheLineIsBusyComesLater() {
        Loader loader(FirmwareType::Rb);
        loader.receive("1");
        loader.hold(1000);
        QVERIFY(loader.advance(0).contains(kPrompt));
    }
};

QTEST_APPLESS_MAIN(TestLoader)
#include "test_loader.moc"
