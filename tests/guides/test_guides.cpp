#include "guides/guide.h"
#include "guides/systeminfo.h"
#include "guides/tips.h"
#include "guides/webarchive.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace benthor::guides;

class TestGuides : public QObject {
    Q_OBJECT

private slots:
    void theTenSectionsStandInTheirOrder() {
        QCOMPARE(sectiontitles(),
                 QStringList({"Introduction and Getting Started", "Setup Morvalien/KD and PC Hardware",
                              "Benthor Main Screen", "PC Link Screen", "Dive List", "Dive Profile",
                              "Dive Details", "Gas", "Ferrowe Import", "Install PC hardware"}));
    }

    void eachStepHasItsHeadingTextAndCount() {
        QCOMPARE(stepheading(0), "Introduction and Getting Started");
        QCOMPARE(stepheading(3), "PC Link Screen");
        QCOMPARE(
            steptext(0),
            "This is a short introduction to getting started with the Benthor interface software.\n\nThank "
            "you for purchasing the Benthor software.\n\nClick Next to continue..");
        QCOMPARE(
            steptext(1),
            "Follow all the Connection tips to ensure you have installed all the USB hardware correctly. "
            "Downloading can take quite a few minutes if you have lots of dives or long dives!");
        QCOMPARE(steptext(2), "Read the Manual - it will save you time!");
        QVERIFY(!steptext(3).isEmpty());
        QCOMPARE(stepcount(0), "Tip 1 of 4");
        QCOMPARE(stepcount(3), "Tip 4 of 4");
    }

    void stepsEndAtTheFirstAndTheLast() {
        QCOMPARE(stepafter(0, StepButton::Next), 1);
        QCOMPARE(stepafter(3, StepButton::Next), 3);
        QCOMPARE(stepafter(3, StepButton::Previous), 2);
        QCOMPARE(stepafter(0, StepButton::Previous), 0);
        QCOMPARE(stepafter(2, StepButton::Redraw), 2);
    }

    void eachLineIsATip() {
        Tips tips = load("first\r\nsecond\nthird, with \xc3\xa4\n");
        QCOMPARE(tips.count(), 3);
        QCOMPARE(tips.text(), "Tip 1:   \nfirst\n>>>Next");
        tips.DoNextTip();
        QCOMPARE(tips.text(), "Tip 2:   \nsecond\n>>>Next");
    }

    void theLastTipHasNoNext() {
        Tips tips = load("first\nsecond, with \xc3\xa4\n");
        tips.DoNextTip();
        QCOMPARE(tips.text(), QString::fromUtf8("Tip 2:   \nsecond, with \xc3\xa4"));
    }

    void nextAndPreviousGoRound() {
        Tips tips = load("a\nb\nc\n");
        tips.DoPreviousTip();
        QCOMPARE(tips.CurrentTip(), 3);
        tips.DoNextTip();
        QCOMPARE(tips.CurrentTip(), 1);
        tips.DoNextTip();
        QCOMPARE(tips.CurrentTip(), 2);
        tips.DoPreviousTip();
        QCOMPARE(tips.CurrentTip(), 1);
    }

    void aSingleTipStays() {
        Tips tips = load("only\n");
        tips.DoNextTip();
        QCOMPARE(tips.text(), "Tip 1:   \nonly");
        tips.DoPreviousTip();
        QCOMPARE(tips.text(), "Tip 1:   \nonly");
    }

    void theFirstTipIsAnyOfThem() {
        Tips tips = load("a\nb\nc\n");
        int asked = 0;
        tips.startAt([&asked](int count) {
            asked = count;
            return 2;
        });
        QCOMPARE(asked, 3);
        QCOMPARE(tips.CurrentTip(), 3);
    }

    void anEmptyFileCountsAsMissing_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("blank lines") << QByteArray("\r\n \r\n");
    }
    void anEmptyFileCountsAsMissing() {
        QFETCH(QByteArray, bytes);
        Tips tips = load(bytes);
        verifyMissing(tips);
        tips.DoNextTip();
        verifyMissing(tips);
        tips.DoPreviousTip();
        verifyMissing(tips);
    }

    void withoutANameOrAFileNothingIsLoaded() {
        Tips tips;
        tips.LoadTips(QString());
        tips.LoadTips(folder_.filePath(QStringLiteral("none")));
        verifyMissing(tips);
    }

    void loadingAddsToWhatIsThere() {
        Tips tips = load("a\n");
        tips.LoadTips(folder_.filePath(QStringLiteral("TIPOFDAY.TXT")));
        QCOMPARE(tips.count(), 2);
        tips.clear();
        QCOMPARE(tips.count(), 0);
    }

    void anArchiveComesBackAsItWasPacked() {
        const QList<ArchivePart> parts{
            {"file:///benthor/manual/index.html", "text/html; charset=utf-8",
             QByteArray("<img src=\"a.png\">\r\n------benthor-part------\r\n").repeated(20)},
            {"file:///benthor/manual/a.png", "image/png", QByteArray("\0\xff\r\n\r\n--", 8)},
            {"file:///benthor/manual/empty", "text/plain", ""}};
        const QByteArray archive = packArchive("Benthor", parts);
        QCOMPARE(unpackArchive(archive), parts);
        QVERIFY(archive.startsWith("From: "));
        QVERIFY(archive.contains(
            "\r\nMIME-Version: 1.0\r\nContent-Type: multipart/related; type=\"text/html\"; "));
        QVERIFY(archive.contains("\r\nContent-Location: file:///benthor/manual/a.png\r\n"));
        for (const QByteArray& line : archive.split('\n')) {
            QVERIFY(line.size() <= 120 && (line.isEmpty() || line.endsWith('\r')));
        }
    }

    void whatIsNoArchiveHasNoParts() {
        QCOMPARE(unpackArchive("").size(), 0);
        QCOMPARE(unpackArchive("dear diver").size(), 0);
        const QByteArray archive = packArchive("Benthor", {{"a", "b", "c"}});
        QCOMPARE(unpackArchive(archive.first(archive.size() / 2)).size(), 0);
    }

    void theDesktopsToolIsFoundOnThePath() {
        const QByteArray before = qgetenv("PATH");
        qputenv("PATH", folder_.path().toLocal8Bit());
        QVERIFY(!findSystemInfoTool());
        install(QStringLiteral("hardinfo"));
        QCOMPARE(findSystemInfoTool()->program, folder_.filePath(QStringLiteral("hardinfo")));
        QCOMPARE(findSystemInfoTool()->arguments, QStringList());
        install(QStringLiteral("gnome-control-center"));
        QCOMPARE(findSystemInfoTool()->program, folder_.filePath(QStringLiteral("gnome-control-center")));
        QCOMPARE(findSystemInfoTool()->arguments, QStringList{"info-overview"});
        qputenv("PATH", before);
    }

private:
    static void verifyMissing(const Tips& tips) {
        QCOMPARE(tips.text(),
                 "That the TIPOFDAY.TXT file was not found? \nCreate a text file named TIPOFDAY.TXT using "
                 "NotePad with 1 tip per line. Then place it in the same directory as the "
                 "application. ");
    }

    Tips load(const QByteArray& bytes) {
        const QString path = folder_.filePath(QStringLiteral("TIPOFDAY.TXT"));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            qFatal("no file of tips");
        }
        file.close();
        Tips tips;
        tips.LoadTips(path);
        return tips;
    }

    void install(const QString& name) {
        QFile file(folder_.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }

    QTemporaryDir folder_;
};

QTEST_GUILESS_MAIN(TestGuides)
#include "test_guides.moc"
