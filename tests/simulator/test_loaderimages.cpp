#include "tests/simulator/loaderhands.h"

using namespace benthor::tests;

class TestLoaderImages : public QObject {
    Q_OBJECT

private slots:
    // --- images

    void anImageIsTakenInSilenceAndKeptByteForByte() {
        Loader loader = inMode();
        QByteArray said = after(loader, "&", 0);
        for (const char byte : records(ownImage())) {
            loader.receive(QByteArrayView(&byte, 1));
            said += loader.advance(1);
        }
        loader.receive("&&");
        said += loader.advance(Loader::endMilliseconds - 10);
        QCOMPARE(said, QByteArray());
        QCOMPARE(loader.advance(20), toldSum('&' + sumOf(ownImage())));
        QCOMPARE(loader.image, ownImage() + '\0');
    }

    void anImageMayComeInOnePiece() {
        Loader loader = inMode();
        const QByteArray said = after(loader, '&' + records(ownImage()) + "&&", 500);
        QCOMPARE(said, toldSum('&' + sumOf(ownImage())));
        QCOMPARE(loader.image, records(ownImage()));
    }

    void theSumIsToldAnewOnEachFurtherMark() {
        Loader loader = withVerdict();
        const QByteArray told = toldSum('&' + sumOf(ownImage()));
        QCOMPARE(after(loader, "&&"), told + told);
        QCOMPARE(after(loader, "&"), told);
        QVERIFY(loader.state() == State::Verdict);
    }

    void marksInsideAnImageDoNotEndIt() {
        QByteArray file = ownImage();
        file.replace(127, 2, "&&");
        Loader loader = inMode();
        const qsizetype half = 129;
        QCOMPARE(after(loader, '&' + records(file).first(half), Loader::endMilliseconds - 100), QByteArray());
        QVERIFY(after(loader, records(file).sliced(half) + "&&", 500).contains("Prog"));
        QCOMPARE(loader.image, records(file));
    }

    void marksThatWereHeldUpAreNoPartOfTheImage() {
        for (const int marks : {2, 4, 5, 15}) {
            Loader loader = inMode();
            after(loader, '&' + records(ownImage()) + QByteArray(marks, '&'), 500);
            QCOMPARE(loader.image, records(ownImage()));
        }
    }

    void anImageThatEndsInAMarkKeepsIt() {
        QByteArray file(128, 'c');
        file.replace(0, 1, "*");
        file += "&&&";
        Loader loader = inMode();
        after(loader, '&' + file.first(129) + "&&", 500);
        QCOMPARE(loader.image, file.first(129));
    }

    void aStarMayComeLongAfterItsMark() {
        Loader loader = inMode();
        after(loader, "&", 500);
        QVERIFY(after(loader, records(ownImage()) + "&&", 500).contains("Prog"));
        QCOMPARE(loader.image, records(ownImage()));
        QVERIFY(loader.programmed == (Memories{true, true, true}));
    }

    void anImageMayBringItsOwnMark() {
        const QByteArray file = '&' + QByteArray(5, 'Y') + QByteArray(122, 'c');
        Loader loader = inMode();
        const QByteArray said = after(loader, file + '\0' + "&&", 500);
        QCOMPARE(loader.image, file.sliced(1) + '\0');
        QCOMPARE(said, toldSum(sumOf(file)));
        QVERIFY(loader.programmed == (Memories{true, true, true}));
    }

    void anImageWithoutAMarkIsNoiseAndChangesNothing_data() {
        QTest::addColumn<bool>("mode");
        QTest::newRow("in the mode") << true;
        QTest::newRow("at the prompt") << false;
    }

    void anImageWithoutAMarkIsNoiseAndChangesNothing() {
        QFETCH(bool, mode);
        const QByteArray file = 'c' + ownImage().sliced(1);
        Loader loader(FirmwareType::Rb);
        after(loader, mode ? "R1" : "1");
        QByteArray said;
        for (qsizetype at = 0; at < file.size(); at += 128) {
            said += after(loader, file.mid(at, 128), 40);
        }
        QCOMPARE(said + after(loader, "&&", Loader::noiseMilliseconds + 40), QByteArray());
        QVERIFY(loader.image.isEmpty());
        QVERIFY(loader.programmed == (Memories{true, true, true}));
        QVERIFY(after(loader, "1").contains(mode ? kMode : kPrompt));
    }

    void aTransferThatStopsHasDroppedOut() {
        Loader loader = inMode();
        QCOMPARE(after(loader, '&' + ownImage().first(1000), Loader::dropMilliseconds - 100), QByteArray());
        const QByteArray said = after(loader, "", 200);
        QCOMPARE(said.count(kMode), 1);
        QVERIFY(loader.image.isEmpty());
        QVERIFY(send(loader, ownImage()).contains("Prog"));
    }

    void aNewImageMayFollowOneThatWaitsForItsVerdict() {
        Loader loader = withVerdict();
        const QByteArray other = firmwareImage(FirmwareType::Rb, 115, 2);
        QVERIFY(send(loader, other).endsWith(toldSum('&' + sumOf(other))));
        QCOMPARE(loader.image, records(other));
    }

    // --- verdict

    void yProgramsStepByStep() {
        Loader loader = withVerdict();
        QByteArray said = after(loader, "y", 2900);
        QVERIFY(said.startsWith("MEMORY A Erased\r\nMEMORY A Programmed\r\nMEMORY B Erased\r\n"));
        QVERIFY(!said.contains("MEMORY C"));
        QVERIFY(loader.programmed == (Memories{true, false, true}));
        said += after(loader, "", loader.programMilliseconds - 2900);
        QVERIFY(said.startsWith(kProgramming));
        QCOMPARE(said.count("8:f"), 1);
        QVERIFY(said.indexOf("8:f") > said.indexOf("MEMORY C Programmed"));
        QVERIFY(said.indexOf("\r\nshell:") > said.indexOf("8:f"));
        hasNone(said, {"Status check", " to ", "oooo", "OOOO", "kd", "REPROG MODE"});
        QVERIFY(loader.state() == State::Done);
    }

    void theTimeOfProgrammingCanBeShortened() {
        Loader loader = withVerdict();
        loader.programMilliseconds = 80;
        QVERIFY(after(loader, "y", 100).contains("shell:"));
    }

    void theReportedValueIsTheStoredOne_data() {
        QTest::addColumn<int>("units");
        QTest::newRow("sent whole") << 51;
        QTest::newRow("its end and its value stay behind") << 100;
        QTest::newRow("half of its value stays behind") << 64;
    }

    void theReportedValueIsTheStoredOne() {
        QFETCH(int, units);
        const QByteArray image = firmwareImage(FirmwareType::Rb, units, 5);
        Loader loader = inMode();
        send(loader, image);
        const QByteArray said = after(loader, "y", 6100);
        QCOMPARE(digitsOf(said), storedCheck(image));
        QCOMPARE(digitsOf(after(loader, "1")), storedCheck(image));
    }

    void ofAForeignImageItReportsWhatItWasToldOrTheSum() {
        const QByteArray image = '*' + QByteArray(300, '\xF0');
        Loader loader = inMode();
        send(loader, image);
        const quint32 sum = sumOf(records(image)) & 0xFFFF;
        const QByteArray digits = QByteArray::number(sum, 16).toUpper().rightJustified(4, '0');
        QCOMPARE(digitsOf(after(loader, "y", 6100)), digits);
        Loader other = inMode();
        other.foreignCheck = "0A7B";
        send(other, image);
        QCOMPARE(digitsOf(after(other, "y", 6100)), QByteArray("0A7B"));
    }

    void nLeavesAllAsItWas() {
        Loader loader = withVerdict();
        const QByteArray said = after(loader, "n", 7000);
        QVERIFY(said.contains(kMode));
        hasNone(said, {"MEMORY", "Prog", "8:f", "R, Enter"});
        QVERIFY(loader.state() == State::Reprogramming);
        QCOMPARE(loader.check, kOldCheck);
        QVERIFY(loader.programmed == (Memories{true, true, true}));
    }

    void aVerdictOnNothingIsNone() {
        Loader loader = inMode();
        QCOMPARE(after(loader, "y", 7000), QByteArray());
        QCOMPARE(after(loader, "n", 7000), QByteArray());
        QVERIFY(loader.state() == State::Reprogramming);
    }

    void doneItStaysAtThePrompt() {
        Loader loader = withVerdict();
        after(loader, "y", 6100);
        QCOMPARE(after(loader, "R"), QByteArray());
        const QByteArray page = after(loader, "R1");
        QVERIFY(page.contains(kPrompt));
        QVERIFY(!page.contains(kMode));
        QVERIFY(page.contains(kProgramming));
        QVERIFY(loader.state() == State::Done);
    }
};

QTEST_APPLESS_MAIN(TestLoaderImages)
#include "test_loaderimages.moc"
