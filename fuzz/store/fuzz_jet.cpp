// Streams and files that are nearly what they should be, by the thousand, through what reads an older store:
// what comes of each is a whole store or a fault that is named.

#include "fuzz/store/jetmutator.h"
#include "store/backup.h"
#include "store/jet/frames.h"
#include "store/jet/utf8.h"
#include "tests/store/jet/jetfolder.h"
#include "tests/support/madereader.h"

using namespace benthor;
using namespace benthor::tests;
using store::FrameStream;

namespace {

/// A source over bytes that are at hand.
class BytesSource : public store::JetRowSource {
public:
    BytesSource(std::string_view bytes, std::size_t piece)
        : rest_(bytes)
        , piece_(piece) {
        if (event() != FrameStream::Event::Head) {
            throw platform::StoreError(QStringLiteral("no head"));
        }
    }
    const store::JetHead& head() override { return stream_.head(); }
    bool nextRow(std::vector<JetValue>& row) override {
        if (event() != FrameStream::Event::Row) {
            return false;
        }
        row = stream_.row();
        return true;
    }
    void finish() override {
        if (event() != FrameStream::Event::End) {
            throw platform::StoreError(QStringLiteral("no end"));
        }
    }

private:
    FrameStream::Event event() {
        for (;;) {
            const FrameStream::Event event = stream_.next();
            if (event != FrameStream::Event::NeedsMore) {
                return event;
            }
            if (rest_.empty()) {
                throw platform::StoreError(QStringLiteral("cut off"));
            }
            stream_.add(rest_.substr(0, piece_));
            rest_.remove_prefix(std::min(piece_, rest_.size()));
        }
    }

    std::string_view rest_;
    std::size_t piece_;
    FrameStream stream_;
};

/// What is wrong with what a stream told; empty where nothing is.
QString brokenIn(const std::string& bytes, std::size_t piece) {
    try {
        BytesSource source(bytes, piece);
        std::vector<JetValue> row;
        for (const store::JetTable& table : source.head().tables) {
            std::uint64_t rows = 0;
            for (; source.nextRow(row); ++rows) {
                if (row.size() != table.fields.size()) {
                    return QStringLiteral("a row of another width");
                }
                for (std::size_t i = 0; i < row.size(); ++i) {
                    if (row[i] && table.fields[i].kind == Kind::Text && !store::isUtf8(*row[i])) {
                        return QStringLiteral("a text that is none");
                    }
                }
            }
            if (rows != table.rows) {
                return QStringLiteral("another count of rows");
            }
        }
        source.finish();
    } catch (const platform::StoreError& error) {
        return error.text().isEmpty() ? QStringLiteral("a fault without a word") : QString();
    }
    return {};
}

} // namespace

class FuzzJet : public QObject {
    Q_OBJECT

private slots:
    void streamsNeverBreakTheirPromises();
    void whatIsTakenIsAWholeStore();
    void damagedFilesAreReadOrNamed();
};

void FuzzJet::streamsNeverBreakTheirPromises() {
    const std::string good = MadeReader::streamOf(madeStore(2));
    QCOMPARE(brokenIn(good, good.size()), QString());
    for (std::uint32_t seed = 1; seed <= 20000; ++seed) {
        fuzz::JetMutator mutator(seed);
        const std::string bytes = mutator.damaged(good);
        const QString broken = brokenIn(bytes, 1 + mutator.number(300));
        QVERIFY2(broken.isEmpty(), qPrintable(QStringLiteral("seed %1: %2").arg(seed).arg(broken)));
    }
}

void FuzzJet::whatIsTakenIsAWholeStore() {
    const std::string good = MadeReader::streamOf(madeStore(2));
    const QTemporaryDir folder;
    const QString target = folder.filePath(QStringLiteral("new.mdb"));
    int taken = 0;
    for (std::uint32_t seed = 1; seed <= 600; ++seed) {
        fuzz::JetMutator mutator(seed);
        const std::string bytes = seed % 8 == 0 ? good : mutator.damaged(good);
        try {
            BytesSource source(bytes, 1 + mutator.number(300));
            store::convertjet(source, target);
            ++taken;
            QVERIFY2(store::examinestore(target).sound(), qPrintable(QString::number(seed)));
            QVERIFY(QFile::remove(target));
        } catch (const platform::StoreError&) {
            QVERIFY2(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).isEmpty(),
                     qPrintable(QString::number(seed)));
        }
    }
    QVERIFY(taken >= 75);
}

void FuzzJet::damagedFilesAreReadOrNamed() {
    REQUIRE_JET_FILES();
    const OurReader reader;
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("damaged.mdb"));
    const QString target = folder.filePath(QStringLiteral("new.mdb"));
    const std::string good = jetBytes("older-store-text.mdb").toStdString();
    for (std::uint32_t seed = 1; seed <= 120; ++seed) {
        fuzz::JetMutator mutator(seed);
        std::string bytes = mutator.damaged(good, 32);
        bytes.resize((bytes.size() + 4095) / 4096 * 4096); // or all would be cut off and nothing else
        QVERIFY(platform::writeFileWhole(path, bytes));
        try {
            const auto source = store::readjet(path, {});
            store::convertjet(*source, target);
            QVERIFY2(store::examinestore(target).sound(), qPrintable(QString::number(seed)));
            QVERIFY(QFile::remove(target));
        } catch (const platform::StoreError& error) {
            QVERIFY2(!error.text().isEmpty() && !error.text().contains(QLatin1String("cannot be understood")),
                     qPrintable(QStringLiteral("seed %1: %2").arg(seed).arg(error.text())));
            QVERIFY(!QFile::exists(target));
        }
    }
}

QTEST_GUILESS_MAIN(FuzzJet)
#include "fuzz_jet.moc"
