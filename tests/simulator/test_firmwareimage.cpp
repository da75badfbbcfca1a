#include "simulator/firmwareimage.h"

#include <QtTest>

using namespace benthor::simulator;

namespace {

constexpr qsizetype kRecord = 128;

int byteAt(const QByteArray& bytes, qsizetype at) {
    return static_cast<unsigned char>(bytes.at(at));
}

/// What the last two bytes say.
int stored(const QByteArray& image) {
    return byteAt(image, image.size() - 2) * 256 + byteAt(image, image.size() - 1);
}

/// What a program puts on the line of it: the first byte, then whole records, the last one filled up.
QByteArray sent(const QByteArray& image) {
    const qsizetype length = 1 + kRecord * (image.size() / kRecord);
    return image.leftJustified(length, '\0', true);
}

} // namespace

class TestFirmwareImage : public QObject {
    Q_OBJECT

private slots:
    void itsLengthGoesByItsUnits() {
        for (const int units : {1, 2, 51, 115, 362}) {
            QCOMPARE(firmwareImage(FirmwareType::Rb, units, 1).size(), 138 * units + 2);
        }
    }

    void itBeginsWithAStarAndTellsWhatItIs() {
        for (const FirmwareType type : {FirmwareType::Rb, FirmwareType::Kd}) {
            const QByteArray image = firmwareImage(type, 51, 7);
            QCOMPARE(image.at(0), '*');
            const auto head = imageHead(image);
            QVERIFY(head);
            QVERIFY(head->type == type);
            QCOMPARE(head->units, 51);
        }
    }

    void itsLastTwoBytesAreTheSumOfTheOthersButTheFirst() {
        for (const int units : {1, 51, 99, 115}) {
            const QByteArray image = firmwareImage(FirmwareType::Kd, units, 3);
            int sum = 0;
            for (qsizetype at = 1; at <= image.size() - 3; ++at) {
                sum += byteAt(image, at);
            }
            QCOMPARE(stored(image), sum & 0xFFFF);
        }
    }

    void theSameArgumentsGiveTheSameImage() {
        const QByteArray image = firmwareImage(FirmwareType::Rb, 51, 7);
        QCOMPARE(firmwareImage(FirmwareType::Rb, 51, 7), image);
        QVERIFY(firmwareImage(FirmwareType::Rb, 51, 8) != image);
        QVERIFY(firmwareImage(FirmwareType::Kd, 51, 7) != image);
    }

    void itsCodeUsesAllByteValues() {
        const QByteArray image = firmwareImage(FirmwareType::Rb, 115, 1);
        std::array<int, 256> count{};
        for (qsizetype at = 0; at < image.size(); ++at) {
            ++count.at(static_cast<std::size_t>(byteAt(image, at)));
        }
        QVERIFY(std::all_of(count.begin(), count.end(), [](int times) { return times > 0; }));
    }

    void aReceivedImageHasTheStoredValue_data() {
        QTest::addColumn<int>("units");
        for (const int units : {1, 2, 3, 10, 38, 51, 52, 63, 64, 100, 114, 115, 116, 179, 362}) {
            QTest::addRow("%d units, %d bytes stay behind", units, std::max(0, (138 * units + 2) % 128 - 1))
                << units;
        }
    }

    void aReceivedImageHasTheStoredValue() {
        QFETCH(int, units);
        for (std::uint32_t seed = 0; seed < 5; ++seed) {
            const QByteArray image = firmwareImage(FirmwareType::Rb, units, seed);
            QCOMPARE(int{receivedCheck(image).value_or(0)}, stored(image));
            QCOMPARE(int{receivedCheck(sent(image)).value_or(0)}, stored(image));
        }
    }

    void aByteThatChangedOnItsWayShowsInTheValue() {
        for (const int units : {51, 100}) {
            const QByteArray image = firmwareImage(FirmwareType::Rb, units, 2);
            for (const qsizetype at : {200, 3000, 7000}) {
                QByteArray changed = sent(image);
                changed[at] = static_cast<char>(changed[at] ^ 0x10);
                QVERIFY(receivedCheck(changed).has_value());
                QVERIFY(int{*receivedCheck(changed)} != stored(image));
            }
        }
    }

    void aLostRecordShowsInTheValue() {
        const QByteArray image = firmwareImage(FirmwareType::Rb, 51, 2);
        QVERIFY(int{receivedCheck(sent(image).remove(1281, kRecord)).value_or(0)} != stored(image));
    }

    void anImageOfAnotherKindIsNotOurs_data() {
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray own = firmwareImage(FirmwareType::Rb, 1, 1);
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("a star") << QByteArray("*");
        QTest::newRow("its own code") << QByteArray(280, '*');
        QTest::newRow("our head cut") << own.first(30);
        QTest::newRow("another type") << QByteArray(own).replace(" rb ", " xx ");
        QTest::newRow("no units") << QByteArray(own).replace(" 00001 ", " 00000 ");
        QTest::newRow("units that are no number") << QByteArray(own).replace(" 00001 ", " 0000x ");
        QTest::newRow("behind another byte") << "&" + own;
    }

    void anImageOfAnotherKindIsNotOurs() {
        QFETCH(QByteArray, bytes);
        QVERIFY(!imageHead(bytes));
        QVERIFY(!receivedCheck(bytes));
    }

    void aLineOfTheCheckListHasItsExactForm() {
        QCOMPARE(checkListLine("bpcsp2shchk.sog", 0x0A3F), "bpcsp2shchk.sog  chksum= 0A3F\r\n");
        QCOMPARE(checkListLine("x.y.bin", 0xFFFF), "x.y.sog  chksum= FFFF\r\n");
        QCOMPARE(checkListLine("bare", 0), "bare.sog  chksum= 0000\r\n");
    }
};

QTEST_APPLESS_MAIN(TestFirmwareImage)
#include "test_firmwareimage.moc"
