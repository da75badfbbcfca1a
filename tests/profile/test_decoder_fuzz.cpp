#include "divetext.h"
#include "profileinvariants.h"

#include <QDir>
#include <QtTest>
#include <random>

using namespace benthor::profile;

namespace {

/// Seeded, so that a failure can be repeated from the number of its round.
class Mutator {
public:
    explicit Mutator(unsigned seed)
        : random_(seed) {}

    size_t below(size_t limit) { return limit == 0 ? 0 : random_() % limit; }

    QByteArray noise() {
        QByteArray bytes(static_cast<qsizetype>(below(3000)), '\0');
        for (char& c : bytes) {
            c = static_cast<char>(below(256));
        }
        return below(2) == 0 ? bytes : "Profile\r\n" + bytes;
    }

    /// Made of what a profile is made of, in no order.
    QByteArray shuffledParts() {
        static const QByteArrayList kParts{
            "End",    "\r", "\n",  "\r\n",  ",",    ",,,", "M1", "T", "C125",
            "-",      ".",  "1e9", "En",    "d",    "S12", "Z9", "z", "J",
            "Fail",   "0",  "123", "1e999", "\x80", " ",   "B7", "N", "99999999999999999999",
            "PREDIVE"};
        QByteArray bytes("Profile\r\nTime\r\n");
        const size_t count = below(400);
        for (size_t i = 0; i < count; ++i) {
            bytes += kParts[static_cast<qsizetype>(below(static_cast<size_t>(kParts.size())))];
        }
        return bytes;
    }

    QByteArray mutated(QByteArray bytes) {
        for (size_t changes = 1 + below(8); changes > 0; --changes) {
            change(bytes);
        }
        return bytes;
    }

private:
    qsizetype place(const QByteArray& bytes) {
        return static_cast<qsizetype>(below(static_cast<size_t>(bytes.size()) + 1));
    }

    void change(QByteArray& bytes) {
        const qsizetype at = place(bytes);
        const auto length = static_cast<qsizetype>(below(60));
        switch (below(8)) {
        case 0:
            if (at < bytes.size()) {
                bytes[at] = static_cast<char>(bytes[at] ^ static_cast<char>(1U << below(8)));
            }
            break;
        case 1:
            bytes.truncate(at);
            break;
        case 2:
            bytes.remove(at, length);
            break;
        case 3:
            bytes.insert(at, QByteArray(length, ','));
            break;
        case 4:
            bytes.insert(at, QByteArray(length, '\0'));
            break;
        case 5:
            bytes.insert(
                at, QByteArray(static_cast<qsizetype>(below(20000)), static_cast<char>('0' + below(50))));
            break;
        case 6:
            bytes.insert(at, bytes.mid(place(bytes), length));
            break;
        default:
            bytes.replace(below(2) == 0 ? "\r\n" : "End", below(2) == 0 ? "\r" : "");
            break;
        }
    }

    std::mt19937 random_;
};

QByteArrayList seedTexts() {
    QByteArrayList texts;
    const QDir folder(QStringLiteral(BENTHOR_TEST_DATA "/dives"));
    for (const QString& name : folder.entryList({"*.txt"}, QDir::Files, QDir::Name)) {
        QFile file(folder.filePath(name));
        if (file.open(QIODevice::ReadOnly)) {
            texts += file.read(20000); // the large one is only begun
        }
    }
    return texts;
}

} // namespace

class TestDecoderFuzz : public QObject {
    Q_OBJECT

private slots:
    void randomBytesKeepThePromises();
    void shuffledPartsKeepThePromises();
    void mutatedDivesKeepThePromises();

private:
    static void check(const QByteArray& bytes, Mutator& mutator, int round) {
        const bool feet = mutator.below(2) == 0;
        size_t calls = mutator.below(10) == 0 ? 1 + mutator.below(400) : 0; // 0: goes on for ever
        const bool stops = calls > 0;
        const auto yield = [&calls, stops] { return !stops || --calls > 0; };
        const DiveProfile profile = decodeProfile(bytes, feet, {.yield = yield});
        const QString broken = ProfileInvariants::broken(profile, bytes);
        QVERIFY2(broken.isEmpty(),
                 qPrintable(QStringLiteral("round %1: %2").arg(QString::number(round), broken)));
        const double interval = 10.0;
        for (int column = 0; column < kGridColumns; ++column) {
            cellText(profile, GasNames(), interval, profile.lastsample - 1, column);
        }
    }
};

void TestDecoderFuzz::randomBytesKeepThePromises() {
    Mutator mutator(1);
    for (int round = 0; round < 1000; ++round) {
        check(mutator.noise(), mutator, round);
    }
}

void TestDecoderFuzz::shuffledPartsKeepThePromises() {
    Mutator mutator(2);
    for (int round = 0; round < 1500; ++round) {
        check(mutator.shuffledParts(), mutator, round);
    }
}

void TestDecoderFuzz::mutatedDivesKeepThePromises() {
    const QByteArrayList seeds = seedTexts();
    QVERIFY(seeds.size() > 50);
    Mutator mutator(3);
    for (int round = 0; round < 3000; ++round) {
        check(mutator.mutated(seeds[round % seeds.size()]), mutator, round);
    }
}

QTEST_GUILESS_MAIN(TestDecoderFuzz)
#include "test_decoder_fuzz.moc"
