#include "exports/zxulogbook.h"
#include "tests/exports/exportworld.h"
#include "tests/support/smalldisk.h"

using namespace benthor;
using namespace benthor::exports;

namespace {

const QDateTime kWritten({2026, 2, 3}, {4, 5, 6});

QByteArray zxuOf(const std::vector<const WholeDive*>& dives) {
    QBuffer buffer;
    return tests::written(ZxuLogbook(buffer, kWritten), buffer, dives);
}

FullDive fullOf(const WholeDive& dive) {
    return {dive.profile,           dive.gasArrays,     dive.lastsample(), dive.figures.id,
            *dive.figures.interval, dive.figures.start, dive.figures.end,  kWritten};
}

/// Dive `number` with these records, a day after the one before.
WholeDive numbered(int number, const QByteArrayList& records) {
    WholeDive dive = tests::looseDive(records);
    dive.figures.id = QStringLiteral("D000000%1").arg(number);
    dive.figures.start = QDateTime({2017, 9, number}, {1, 2, 3}, Qt::UTC);
    dive.figures.end = QDateTime({2017, 9, number}, {1, 42, 3}, Qt::UTC);
    profile::readgaslist({{"D1", "0", "79", "0", "660", "1"}}, false, dive.gasArrays);
    return dive;
}

constexpr int kBeyondMemory = 10; ///< so many of these do not fit into what is held of a file

/// Half a megabyte and more in a file.
std::unique_ptr<WholeDive> largeDive() {
    constexpr int kRecords = 24000;
    return std::make_unique<WholeDive>(numbered(1, QByteArrayList(kRecords, "0,227,0,M0,T18,A500")));
}

} // namespace

class TestZxuLogbook : public QObject {
    Q_OBJECT

private slots:
    void eachDiveHasItsGroup() {
        const WholeDive one = numbered(5, {"0,0,0,M0,T18,A500", "227,0,0,M0,T17,A500"});
        const WholeDive other = numbered(7, {"100,0,0,M0,T9,A500"});
        QCOMPARE(zxuOf({&one, &other}),
                 QByteArray("FSH|^~<>{}|KDBN01|ZXU|20260203040506|\r\n"
                            "ZRH|^~<>{}|KD32RB|000000000000|MSWG|ThM|C|bar|L|\r\n"
                            "ZAR{}\r\n"
                            "ZDH|1|5|I|Q10S|20170905010203|||||\r\n"
                            "ZDP{\r\n"
                            "|0.0|0|1||F|F||18||||||||\r\n"
                            "|0.1667|21.28|||F|F||17||||||||\r\n"
                            "ZDP}\r\n"
                            "ZDT|1|5|21.28|20170905014203|17|\r\n"
                            "ZDH|2|7|I|Q10S|20170907010203|||||\r\n"
                            "ZDP{\r\n"
                            "|0.0|9.38|1||F|F||9||||||||\r\n" // a gas is told anew in each dive
                            "ZDP}\r\n"
                            "ZDT|2|7|9.38|20170907014203|9|\r\n"));
    }

    void warningsAreNumberedThroughAllDives() {
        const WholeDive one = numbered(1, {"0,0,0,M0,T18,A500,LOW", "0,0,0,M0,T18,A500,HIGH"});
        const WholeDive other = numbered(2, {"0,0,0,M0,T18,A500,DECO", "0,0,0,M0,T18,A500,LOW"});
        const QByteArray text = zxuOf({&one, &other});
        QCOMPARE(text.count("ZAR{"), 1);
        QVERIFY(text.contains("ZAR{1^LOW~2^HIGH~3^DECO}\r\nZDH|1|"));
        QByteArrayList numbers;
        for (const QByteArray& line : text.split('\n')) {
            if (line.startsWith('|')) {
                numbers += line.split('|')[9];
            }
        }
        QCOMPARE(numbers, QByteArrayList({"1", "2", "3", "1"}));
    }

    void aSingleDiveIsTheFullExport_data() {
        QTest::addColumn<QString>("name");
        for (const QString& name : QDir(QStringLiteral(BENTHOR_TEST_DATA "/dives")).entryList({"*.txt"})) {
            QTest::newRow(qPrintable(name)) << name;
        }
    }
    void aSingleDiveIsTheFullExport() {
        QFETCH(QString, name);
        QFile file(QStringLiteral(BENTHOR_TEST_DATA "/dives/") + name);
        QVERIFY(file.open(QIODevice::ReadOnly));
        WholeDive dive = numbered(1, {});
        dive.profile = profile::decodeProfile(file.readAll(), false);
        QCOMPARE(zxuOf({&dive}), fullZxu(fullOf(dive)));
    }

    /// The text of minutes is put together digit by digit where that is certain.
    void minutesAreThoseOfTheFormat() {
        WholeDive dive = numbered(1, QByteArrayList(400, "0,0,0,M0,T18,A500"));
        for (const double interval : {1.0, 0.003, 7.0, 10.5, 1.0 / 3, 3600.0, 123456.0, -5.0}) {
            dive.figures.interval = interval;
            int sample = 0;
            for (const QByteArray& line : zxuOf({&dive}).split('\n')) {
                if (line.startsWith('|')) {
                    QCOMPARE(line.split('|')[1], danMinutes(sample++ * interval / 60).toLatin1());
                }
            }
            QCOMPARE(sample, 400);
        }
    }

    void aDiveWithoutStartOrIntervalIsWritten() {
        WholeDive dive = tests::looseDive({"0,0,0,M0,T18,A500"});
        dive.figures.interval.reset();
        const QByteArray text = zxuOf({&dive});
        QVERIFY(text.contains("ZDH|1|1|I|Q0S||||||\r\n"));
        QVERIFY(text.contains("\r\n|0.0|0|||F|F||18||||||||\r\n"));
    }

    void noDiveIsAnEmptyFile() { QCOMPARE(zxuOf({}).count("\r\n"), 3); }

    void noShortWriteIsPassedOver() {
        const WholeDive dive = numbered(1, {"0,0,0,M0,T18,A500", "227,0,0,M0,T17,A500"});
        QCOMPARE(tests::silentLosses(zxuOf({&dive}).size(),
                                     [&](QIODevice& device) {
                                         ZxuLogbook zxu(device, kWritten);
                                         zxu.begin();
                                         zxu.add(dive);
                                         zxu.end();
                                     }),
                 0);
    }

    void manyDivesWaitInAFileAndComeOutInOrder() {
        const std::unique_ptr<WholeDive> large = largeDive();
        const QByteArray one = zxuOf({large.get()});
        const QByteArray ten = zxuOf(std::vector<const WholeDive*>(kBeyondMemory, large.get()));
        const auto groups = [](const QByteArray& text) { return text.mid(text.indexOf("ZDH|")); };
        QByteArray expected = one.first(one.indexOf("ZDH|"));
        for (int i = 1; i <= kBeyondMemory; ++i) {
            expected += groups(one)
                            .replace("ZDH|1|", "ZDH|" + QByteArray::number(i) + "|")
                            .replace("ZDT|1|", "ZDT|" + QByteArray::number(i) + "|");
        }
        QVERIFY(ten.size() > 4 * 1024 * 1024);
        QVERIFY(ten == expected);
    }

    void aWaitingFileThatDoesNotFitIsTold() {
        const std::unique_ptr<WholeDive> large = largeDive();
        const std::vector<const WholeDive*> dives(kBeyondMemory, large.get());
        const tests::SmallDisk disk(1000);
        QBuffer buffer;
        QVERIFY_THROWS_EXCEPTION(ExportError, tests::written(ZxuLogbook(buffer, kWritten), buffer, dives));
    }

    void aFewDivesNeedNoFileToWaitIn() {
        const WholeDive dive = numbered(1, QByteArrayList(2000, "0,0,0,M0,T18,A500"));
        const QByteArray expected = zxuOf({&dive});
        const tests::SmallDisk disk(1000);
        QCOMPARE(zxuOf({&dive}), expected);
    }
};

QTEST_GUILESS_MAIN(TestZxuLogbook)
#include "test_zxulogbook.moc"
