#include "platform/faultpoint.h"
#include "store/olderstore.h"
#include "tests/store/backupfolder.h"
#include "tests/store/jet/jetfolder.h"
#include "tests/store/jet/madejet.h"
#include "tests/support/killed.h"
#include "tests/support/killingdisk.h"

#include <sys/stat.h>

using namespace benthor;
using namespace benthor::tests;
using End = store::ComeAlong::End;

namespace {

/// What stands for a Jet file where a stand-in gives its rows. A copy of it is written in several steps.
QByteArray jetHead(char with = 'x') {
    return QByteArray("\0\1\0\0", 4) + "Standard Jet DB" + QByteArray(200000, with);
}

/// A disk on which a file has one name only.
int oneNameOnly(std::string_view step) {
    return step == "link" ? EPERM : 0;
}

/// Gives two dives for whatever file.
std::unique_ptr<store::JetRowSource> twoDives(const QString&, const store::JetProgress&) {
    return std::make_unique<MadeJet>(madeStore(2));
}

store::OpenJet failing(const char* why) {
    return [why](const QString&, const store::JetProgress&) -> std::unique_ptr<store::JetRowSource> {
        throw platform::StoreError(QString::fromLatin1(why));
    };
}

/// A program folder whose store is an older one.
class OlderFolder : public Folder {
public:
    explicit OlderFolder(const QByteArray& bytes = jetHead())
        : Folder(0) {
        put(QStringLiteral("rb.mdb"), bytes);
    }
    /// All files, the hidden ones too.
    QStringList all() const {
        return QDir(folder.root()).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }
    bool holdsJet(const QString& name) const { return bytes(name) == jetHead(); }
};

} // namespace

class TestOlderStore : public QObject {
    Q_OBJECT

private slots:
    void aJetFileInTheStoresPlaceComesAlong();
    void aFileOfOursIsPassedBy();
    void theNextNameIsTakenWhereOneIsTaken();
    void behindALinkTheStoreGoesWhereTheLinkLeads();
    void theNewStoreHasTheRightsOfTheOld();
    void whereAFileHasOneNameOnlyItIsCopied();
    void aFileThatCannotBeReadChangesNothing();
    void aStopChangesNothing();
    void whatACrashLeftIsTakenAway();
    void aJournalOfTheStoreBeforeIsNotPlayedIntoTheJetFile();
    void aStartWithAnOlderStoreThatCouldNotComeMovesNoBackup();
    void theTwoRealFilesComeAlong();

    void aDiskThatFailsAtAnyStepLeavesOneOrTheOther_data();
    void aDiskThatFailsAtAnyStepLeavesOneOrTheOther();
    void killedAtAnyStepOneOrTheOtherIsThere_data();
    void killedAtAnyStepOneOrTheOtherIsThere();

    void aChosenFileIsRestoredAndStaysAsItIs();
    void aChosenFileThatCannotBeReadLeavesTheStore();
    void theStoreItselfMayBeChosen();
    void aRestoreThatFailsAtAnyStepLeavesAWholeStore();
    void killedAtAnyStepOfARestoreAWholeStoreIsThere();
    void aCopyIsMadeBesideAFileThatIsOnlyLookedAt();
};

void TestOlderStore::aJetFileInTheStoresPlaceComesAlong() {
    const OlderFolder folder;
    const store::ComeAlong result = store::bringalong(folder.folder, {}, twoDives);
    QVERIFY(result.end == End::Taken);
    QCOMPARE(result.keptAs, "rb-jet.mdb");
    QCOMPARE(result.counts.dives, 2U);
    QCOMPARE(divesIn(folder.store()), 2);
    QVERIFY(store::examinestore(folder.store()).sound());
    QVERIFY(folder.holdsJet(QStringLiteral("rb-jet.mdb")));
    QCOMPARE(folder.all(), (QStringList{"rb-jet.mdb", "rb.mdb"}));
    // The start goes on with it as with any store of ours, and the next one finds nothing to bring along.
    start(folder.folder);
    QCOMPARE(divesIn(folder.backup(1)), 2);
    QVERIFY(store::bringalong(folder.folder, {}, twoDives).end == End::None);
}

void TestOlderStore::aFileOfOursIsPassedBy() {
    const Folder folder;
    const QByteArray before = folder.bytes(QStringLiteral("rb.mdb"));
    const store::ComeAlong result = store::bringalong(folder.folder, {}, failing("was opened"));
    QVERIFY(result.end == End::None);
    QCOMPARE(folder.bytes(QStringLiteral("rb.mdb")), before);
    QVERIFY(QFile::remove(folder.store()));
    QVERIFY(store::bringalong(folder.folder, {}, failing("was opened")).end == End::None);
    QCOMPARE(folder.names(), QStringList());
}

void TestOlderStore::theNextNameIsTakenWhereOneIsTaken() {
    const OlderFolder folder;
    for (const char* const name : {"rb-jet.mdb", "rb-jet2.mdb", "rb-jet3.mdb"}) {
        folder.put(QStringLiteral("rb.mdb"), jetHead(name[6]));
        const store::ComeAlong result = store::bringalong(folder.folder, {}, twoDives);
        QCOMPARE(result.keptAs, QString::fromLatin1(name));
        QCOMPARE(folder.bytes(QString::fromLatin1(name)), jetHead(name[6]));
    }
    // The same bytes once more are a file of their own all the same.
    folder.put(QStringLiteral("rb.mdb"), jetHead('.'));
    QCOMPARE(store::bringalong(folder.folder, {}, twoDives).keptAs, "rb-jet4.mdb");
}

void TestOlderStore::behindALinkTheStoreGoesWhereTheLinkLeads() {
    const Folder other(0);
    const Folder folder(0);
    other.put(QStringLiteral("elsewhere.db"), jetHead());
    QVERIFY(QFile::remove(folder.store()));
    QVERIFY(QFile::link(other.folder.path(u"elsewhere.db"), folder.store()));
    const store::ComeAlong result = store::bringalong(folder.folder, {}, twoDives);
    QVERIFY(result.end == End::Taken);
    QVERIFY(QFileInfo(folder.store()).isSymLink());
    QCOMPARE(divesIn(other.folder.path(u"elsewhere.db")), 2);
    QCOMPARE(divesIn(folder.store()), 2);
    QCOMPARE(folder.bytes(QStringLiteral("rb-jet.mdb")), jetHead());
    QCOMPARE(other.names(), (QStringList{"elsewhere.db", "rb.mdb"}));
}

void TestOlderStore::theNewStoreHasTheRightsOfTheOld() {
    const OlderFolder folder;
    QCOMPARE(chmod(QFile::encodeName(folder.store()).constData(), 0640), 0);
    store::bringalong(folder.folder, {}, twoDives);
    struct stat state {};
    QCOMPARE(stat(QFile::encodeName(folder.store()).constData(), &state), 0);
    QCOMPARE(state.st_mode & 0777, 0640U);
}

/// Some file systems know no second name of a file.
void TestOlderStore::whereAFileHasOneNameOnlyItIsCopied() {
    const OlderFolder folder;
    {
        const platform::FaultInjection fault(oneNameOnly);
        QCOMPARE(store::bringalong(folder.folder, {}, twoDives).keptAs, "rb-jet.mdb");
    }
    QVERIFY(folder.holdsJet(QStringLiteral("rb-jet.mdb")));
    QCOMPARE(divesIn(folder.store()), 2);
    // A start that was killed behind the copy has kept it already.
    folder.put(QStringLiteral("rb.mdb"), jetHead());
    {
        const platform::FaultInjection fault(oneNameOnly);
        QCOMPARE(store::bringalong(folder.folder, {}, twoDives).keptAs, "rb-jet.mdb");
    }
    QCOMPARE(folder.all(), (QStringList{"rb-jet.mdb", "rb.mdb"}));
}

void TestOlderStore::aFileThatCannotBeReadChangesNothing() {
    const OlderFolder folder;
    const store::ComeAlong result = store::bringalong(folder.folder, {}, failing("It is encrypted."));
    QVERIFY(result.end == End::Refused);
    QCOMPARE(result.reason, "It is encrypted.");
    QCOMPARE(result.keptAs, QString());
    QVERIFY(folder.holdsJet(QStringLiteral("rb.mdb")));
    QCOMPARE(folder.all(), QStringList{"rb.mdb"});
}

void TestOlderStore::aStopChangesNothing() {
    const OlderFolder folder;
    const auto slow = [](const QString&, const store::JetProgress&) {
        auto jet = std::make_unique<MadeJet>(madeStore(300));
        jet->beforeRow = [](int) { QTest::qSleep(1); };
        return jet;
    };
    const auto stopping = [](std::uint64_t rows, std::uint64_t) { return rows < 100; };
    QVERIFY(store::bringalong(folder.folder, stopping, slow).end == End::Stopped);
    QVERIFY(folder.holdsJet(QStringLiteral("rb.mdb")));
    QCOMPARE(folder.all(), QStringList{"rb.mdb"});
}

void TestOlderStore::whatACrashLeftIsTakenAway() {
    const OlderFolder folder;
    folder.put(QStringLiteral(".benthor.jetstore"), "half a store");
    QVERIFY(store::bringalong(folder.folder, {}, twoDives).end == End::Taken);
    folder.put(QStringLiteral(".benthor.jetstore"), "half a store");
    QVERIFY(store::bringalong(folder.folder, {}, twoDives).end == End::None);
    QCOMPARE(folder.all(), (QStringList{"rb-jet.mdb", "rb.mdb"}));
}

/// The diver put the Jet file where a store stood that a crash had left unfinished.
void TestOlderStore::aJournalOfTheStoreBeforeIsNotPlayedIntoTheJetFile() {
    for (const bool restored : {false, true}) {
        const OlderFolder folder;
        folder.put(QStringLiteral("rb.mdb-journal"), "pages of another file");
        if (restored) {
            const Folder other(1);
            const store::Restore result = store::restorestore(folder.folder, other.store());
            QVERIFY(result.done);
            QVERIFY(folder.holdsJet(result.keptAs));
        } else {
            QVERIFY(store::bringalong(folder.folder, {}, failing("It is encrypted.")).end == End::Refused);
            QCOMPARE(folder.all(), QStringList{"rb.mdb"});
        }
        QVERIFY(!QFile::exists(folder.folder.path(u"rb.mdb-journal")));
    }
}

void TestOlderStore::aStartWithAnOlderStoreThatCouldNotComeMovesNoBackup() {
    const Folder folder;
    start(folder.folder);
    const QByteArray backup = folder.bytes(QStringLiteral("backup.mdb"));
    folder.put(QStringLiteral("rb.mdb"), jetHead());
    QVERIFY(store::bringalong(folder.folder, {}, failing("It is cut off.")).end == End::Refused);
    const store::Maintenance done = store::maintainstore(folder.folder);
    QCOMPARE(done.setAside, QString());
    QCOMPARE(folder.bytes(QStringLiteral("rb.mdb")), jetHead());
    QCOMPARE(folder.bytes(QStringLiteral("backup.mdb")), backup);
    QCOMPARE(folder.names(), (QStringList{"backup.mdb", "rb.mdb"}));
}

void TestOlderStore::theTwoRealFilesComeAlong() {
    REQUIRE_JET_FILES();
    const OurReader reader;
    for (const auto& [name, dives] :
         {std::pair{"older-store-dates.mdb", 30}, std::pair{"older-store-text.mdb", 12}}) {
        const OlderFolder folder(jetBytes(name));
        const store::ComeAlong result = store::bringalong(folder.folder);
        QVERIFY2(result.end == End::Taken, qPrintable(result.reason));
        start(folder.folder);
        QCOMPARE(divesIn(folder.store()), dives);
        QCOMPARE(divesIn(folder.backup(1)), dives);
        QCOMPARE(folder.bytes(QStringLiteral("rb-jet.mdb")), jetBytes(name));
    }
    const OlderFolder cut(jetBytes("older-store-text.mdb").first(100000));
    const store::ComeAlong result = store::bringalong(cut.folder);
    QVERIFY(result.end == End::Refused);
    QVERIFY2(result.reason.contains(QLatin1String("cut off")), qPrintable(result.reason));
}

void TestOlderStore::aDiskThatFailsAtAnyStepLeavesOneOrTheOther_data() {
    QTest::addColumn<bool>("fromThenOn");
    QTest::addColumn<bool>("links");
    QTest::newRow("once") << false << true;
    QTest::newRow("from a step on") << true << true;
    QTest::newRow("once, where a file has one name only") << false << false;
    QTest::newRow("from a step on, where a file has one name only") << true << false;
}

void TestOlderStore::aDiskThatFailsAtAnyStepLeavesOneOrTheOther() {
    QFETCH(bool, fromThenOn);
    QFETCH(bool, links);
    bool reached = true;
    int step = 1;
    int refused = 0;
    for (; reached; ++step) {
        const OlderFolder folder;
        int count = 0;
        store::ComeAlong result;
        {
            const platform::FaultInjection fault([&](std::string_view name) {
                ++count;
                const bool fails = count == step || (fromThenOn && count > step);
                return fails ? ENOSPC : links ? 0 : oneNameOnly(name);
            });
            result = store::bringalong(folder.folder, {}, twoDives);
        }
        reached = count >= step;
        if (result.end == End::Taken) {
            QCOMPARE(divesIn(folder.store()), 2);
            QCOMPARE(folder.all(), (QStringList{"rb-jet.mdb", "rb.mdb"}));
            QVERIFY(folder.holdsJet(QStringLiteral("rb-jet.mdb")));
        } else {
            ++refused;
            QVERIFY(result.end == End::Refused && !result.reason.isEmpty());
            QCOMPARE(folder.all(), QStringList{"rb.mdb"});
            QVERIFY(folder.holdsJet(QStringLiteral("rb.mdb")));
        }
        if (QTest::currentTestFailed()) {
            QFAIL(qPrintable(QStringLiteral("failed at step %1").arg(step)));
        }
    }
    QVERIFY(step > 20 && refused > 15);
}

void TestOlderStore::killedAtAnyStepOneOrTheOtherIsThere_data() {
    QTest::addColumn<bool>("linked");
    QTest::addColumn<bool>("links");
    QTest::addColumn<bool>("engine");
    QTest::newRow("in the program folder") << false << true << false;
    QTest::newRow("behind a link") << true << true << false;
    QTest::newRow("where a file has one name only") << false << false << false;
    QTest::newRow("behind a link, where a file has one name only") << true << false << false;
    QTest::newRow("within the engine's work") << false << true << true;
    QTest::newRow("within the engine's work, where a file has one name only") << false << false << true;
}

void TestOlderStore::killedAtAnyStepOneOrTheOtherIsThere() {
    QFETCH(bool, linked);
    QFETCH(bool, links);
    QFETCH(bool, engine);
    const platform::FaultHook disk = links ? [](std::string_view) { return 0; } : oneNameOnly;
    int step = 1;
    int before = 0;
    int kept = 0; // the Jet file has its second name, or its copy, and stands in its place as well
    for (;; ++step) {
        const Folder other(0);
        const OlderFolder folder;
        if (linked) {
            other.put(QStringLiteral("rb.mdb"), jetHead());
            QVERIFY(QFile::remove(folder.store()));
            QVERIFY(QFile::link(other.store(), folder.store()));
        }
        const auto bring = [&] { return store::bringalong(folder.folder, {}, twoDives).end; };
        const auto bringThere = [&] {
            const platform::FaultInjection same(disk);
            bring();
        };
        const bool killed = engine ? isKilledAtDisk(step, bringThere) : isKilledAt(step, bring, disk);
        const bool isJet = folder.holdsJet(QStringLiteral("rb.mdb"));
        const bool hasName = QFile::exists(folder.folder.path(u"rb-jet.mdb"));
        before += isJet ? 1 : 0;
        kept += isJet && hasName ? 1 : 0;
        QVERIFY(isJet || (divesIn(folder.store()) == 2 && store::examinestore(folder.store()).sound()));
        QVERIFY(isJet || hasName);
        QVERIFY(!hasName || folder.holdsJet(QStringLiteral("rb-jet.mdb"))); // a part of it never has the name
        // The next start ends it, and leaves nothing behind and nothing twice.
        bringThere();
        start(folder.folder);
        QCOMPARE(divesIn(folder.store()), 2);
        QVERIFY(folder.holdsJet(QStringLiteral("rb-jet.mdb")));
        QCOMPARE(folder.all(), (QStringList{"backup.mdb", "rb-jet.mdb", "rb.mdb"}));
        QCOMPARE(QDir(other.folder.root()).entryList(QDir::Files | QDir::Hidden), QStringList{"rb.mdb"});
        QCOMPARE(QFileInfo(folder.store()).isSymLink(), linked);
        if (QTest::currentTestFailed()) {
            QFAIL(qPrintable(QStringLiteral("killed at step %1").arg(step)));
        }
        if (!killed) {
            break;
        }
    }
    QVERIFY(step > 20 && before > 15 && before < step);
    QVERIFY2(engine || kept >= 3, qPrintable(QString::number(kept)));
}

void TestOlderStore::aChosenFileIsRestoredAndStaysAsItIs() {
    const Folder folder(5);
    const Folder other(0);
    const QString chosen = other.folder.path(u"mine.mdb");
    other.put(QStringLiteral("mine.mdb"), jetHead());
    const QByteArray before = folder.bytes(QStringLiteral("rb.mdb"));
    store::JetCounts counts;
    const store::Restore result = store::restorejet(folder.folder, chosen, counts, {}, twoDives);
    QVERIFY2(result.done, qPrintable(result.error));
    QCOMPARE(result.keptAs, "rb-replaced.mdb");
    QCOMPARE(counts.dives, 2U);
    QCOMPARE(divesIn(folder.store()), 2);
    QCOMPARE(folder.bytes(QStringLiteral("rb-replaced.mdb")), before);
    QCOMPARE(other.bytes(QStringLiteral("mine.mdb")), jetHead());
    QCOMPARE(folder.names(), (QStringList{"rb-replaced.mdb", "rb.mdb"}));
    QCOMPARE(other.names(), (QStringList{"mine.mdb", "rb.mdb"}));
    // Without a store there is nothing to keep.
    QVERIFY(QFile::remove(folder.store()));
    const store::Restore again = store::restorejet(folder.folder, chosen, counts, {}, twoDives);
    QVERIFY(again.done);
    QCOMPARE(again.keptAs, QString());
    QCOMPARE(divesIn(folder.store()), 2);
}

void TestOlderStore::aChosenFileThatCannotBeReadLeavesTheStore() {
    const Folder folder(5);
    folder.put(QStringLiteral("mine.mdb"), jetHead());
    const QByteArray before = folder.bytes(QStringLiteral("rb.mdb"));
    const QString chosen = folder.folder.path(u"mine.mdb");
    store::JetCounts counts;
    const store::Restore result =
        store::restorejet(folder.folder, chosen, counts, {}, failing("It is encrypted."));
    QVERIFY(!result.done);
    QVERIFY2(result.error.contains(chosen) && result.error.contains(QLatin1String("It is encrypted.")),
             qPrintable(result.error));
    QCOMPARE(folder.bytes(QStringLiteral("rb.mdb")), before);
    QCOMPARE(folder.names(), (QStringList{"mine.mdb", "rb.mdb"}));
}

/// An older store that could not come along yet: what is restored over it keeps it.
void TestOlderStore::theStoreItselfMayBeChosen() {
    const OlderFolder folder;
    store::JetCounts counts;
    const store::Restore result = store::restorejet(folder.folder, folder.store(), counts, {}, twoDives);
    QVERIFY(result.done);
    QCOMPARE(divesIn(folder.store()), 2);
    QVERIFY(folder.holdsJet(result.keptAs));
}

void TestOlderStore::aRestoreThatFailsAtAnyStepLeavesAWholeStore() {
    bool reached = true;
    int step = 1;
    for (; reached; ++step) {
        const Folder folder(3);
        folder.put(QStringLiteral("mine.mdb"), jetHead());
        int count = 0;
        store::Restore result;
        store::JetCounts counts;
        {
            const platform::FaultInjection fault(
                [&](std::string_view) { return ++count == step ? ENOSPC : 0; });
            result = store::restorejet(folder.folder, folder.folder.path(u"mine.mdb"), counts, {}, twoDives);
        }
        reached = count >= step;
        QCOMPARE(divesIn(folder.store()), result.done ? 2 : 3);
        QCOMPARE(folder.names().size(), result.done ? 3 : 2);
        QCOMPARE(folder.bytes(QStringLiteral("mine.mdb")), jetHead());
        if (QTest::currentTestFailed()) {
            QFAIL(qPrintable(QStringLiteral("failed at step %1").arg(step)));
        }
    }
    QVERIFY(step > 20);
}

void TestOlderStore::killedAtAnyStepOfARestoreAWholeStoreIsThere() {
    int step = 1;
    for (;; ++step) {
        const Folder folder(3);
        folder.put(QStringLiteral("mine.mdb"), jetHead());
        const bool killed = tests::isKilledAt(step, [&] {
            store::JetCounts counts;
            store::restorejet(folder.folder, folder.folder.path(u"mine.mdb"), counts, {}, twoDives);
        });
        const int dives = divesIn(folder.store());
        QVERIFY(dives == 3 || (dives == 2 && divesIn(folder.folder.path(u"rb-replaced.mdb")) == 3));
        QVERIFY(store::examinestore(folder.store()).sound());
        QVERIFY(store::bringalong(folder.folder).end == End::None);
        QVERIFY(!QFile::exists(folder.folder.path(u".benthor.jetstore")));
        if (QTest::currentTestFailed()) {
            QFAIL(qPrintable(QStringLiteral("killed at step %1").arg(step)));
        }
        if (!killed) {
            QCOMPARE(dives, 2);
            break;
        }
    }
    QVERIFY(step > 20);
}

void TestOlderStore::aCopyIsMadeBesideAFileThatIsOnlyLookedAt() {
    const OlderFolder folder;
    const QString copy = folder.folder.path(u"copy");
    QCOMPARE(store::copyjet(folder.store(), copy, {}, twoDives).dives, 2U);
    QCOMPARE(divesIn(copy), 2);
    QVERIFY(folder.holdsJet(QStringLiteral("rb.mdb")));
}

QTEST_GUILESS_MAIN(TestOlderStore)
#include "test_olderstore.moc"
