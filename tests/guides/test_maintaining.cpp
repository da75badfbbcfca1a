// The store is put right at the start while the window is painted. How often is counted in turns of the
// events, with a store whose work waits for them: no clock is asked.

#include "guides/screens/frmgets.h"
#include "guides/screens/maintaining.h"
#include "platform/faultpoint.h"
#include "platform/screen/ticktimer.h"
#include "platform/storewait.h"
#include "session/process.h"
#include "tests/guides/guidestage.h"

#include <QProgressBar>
#include <QPushButton>
#include <QtTest>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

using namespace benthor;
using namespace benthor::guides;
using namespace benthor::tests;

namespace {

/// Counts the paintings of the window that tells how far it is, lets something be done at one of them, and
/// holds the work up until so many have come.
class Painted : public QObject {
public:
    explicit Painted(int awaited, std::function<void(QWidget&)> act = {})
        : awaited_(awaited)
        , act_(std::move(act)) {
        qApp->installEventFilter(this);
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* widget = qobject_cast<QWidget*>(watched);
        if (event->type() == QEvent::Paint && widget != nullptr && widget->isWindow() &&
            widget->objectName() == QLatin1String("progress")) {
            waited = waited || platform::isWaiting();
            const std::lock_guard lock(mutex_);
            if (++count_ == awaited_ && act_) {
                QMetaObject::invokeMethod(
                    widget, [this, widget] { act_(*widget); }, Qt::QueuedConnection);
            }
            came_.notify_all();
        }
        return false;
    }
    /// On the thread of the work: false where they do not come.
    bool wait(int count) {
        std::unique_lock lock(mutex_);
        return came_.wait_for(lock, std::chrono::seconds(30), [&] { return count_ >= count; });
    }
    bool wait() { return wait(awaited_); }
    bool waited = false; ///< the program knew that a store is at work

private:
    int awaited_;
    std::function<void(QWidget&)> act_;
    std::mutex mutex_;
    std::condition_variable came_;
    int count_ = 0;
};

/// The work stands at a step until the window was painted so often.
platform::FaultHook holdAt(std::string_view where, Painted& painted, std::atomic<int>& held) {
    return [where, &painted, &held](std::string_view step) {
        if (step == where && painted.wait()) {
            ++held;
        }
        return 0;
    };
}

/// The work stands there until it has been told to stop.
bool stopIsHeard() {
    for (int i = 0; i < 30000; ++i) {
        if (!platform::goOnWaiting(platform::StoreWait::Working, {})) {
            return true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return false;
}

QStringList stores(const TestFolder& folder) {
    return QDir(folder.root())
        .entryList({QStringLiteral("*.mdb*"), QStringLiteral(".benthor.part")}, QDir::Files | QDir::Hidden);
}

void stop(QWidget& window) {
    QTest::mouseClick(window.findChild<QPushButton*>(QStringLiteral("progressstop")), Qt::LeftButton);
}

} // namespace

class TestMaintaining : public QObject {
    Q_OBJECT

private slots:
    void aStartThatIsSoonOverShowsNoWindow();
    void theWindowIsPaintedWhileTheStoreIsWorkedOn_data();
    void theWindowIsPaintedWhileTheStoreIsWorkedOn();
    void ticksAndOtherInputWait();
    void stoppedItLeavesStoreAndBackupsAsTheyWere_data();
    void stoppedItLeavesStoreAndBackupsAsTheyWere();
    void stoppedTheStartGoesOn();
    void closingTheWindowStops();
    void aDamagedStoreIsSetAsideAndTold();

    void begunAheadItEndsWithoutPackingAgain();
    void begunAheadAndNotYetThroughItIsWaitedForBehindTheWindow();
    void begunAheadItCanBeStopped();
    void droppedItLeavesTheStoreAsItWas();
    void aStoreThatWasReplacedMeanwhileIsBegunWithAnew();
    void anOlderStoreIsNotBegunWith();
};

void TestMaintaining::aStartThatIsSoonOverShowsNoWindow() {
    const TestFolder folder;
    Painted painted(1);
    maintainbehindwindow(platform::ProgramFolder::current());
    QVERIFY(folder.has("backup.mdb"));
    QVERIFY(!platform::isWaiting());
}

void TestMaintaining::theWindowIsPaintedWhileTheStoreIsWorkedOn_data() {
    QTest::addColumn<QByteArray>("where");
    for (const char* const where : {"compact", "compacted", "write", "sync", "compare", "examine"}) {
        QTest::newRow(where) << QByteArray(where);
    }
}

void TestMaintaining::theWindowIsPaintedWhileTheStoreIsWorkedOn() {
    QFETCH(QByteArray, where);
    const TestFolder folder;
    Painted painted(12);
    std::atomic<int> held{0};
    const std::string step = where.toStdString();
    const platform::FaultInjection slow(holdAt(step, painted, held));
    const store::Maintenance done = maintainbehindwindow(platform::ProgramFolder::current());
    QVERIFY(held > 0);
    QVERIFY(painted.waited);
    QVERIFY(!platform::isWaiting());
    QVERIFY(done.setAside.isEmpty());
    QCOMPARE(stores(folder), (QStringList{"backup.mdb", "rb.mdb"}));
    QCOMPARE(folder.get("backup.mdb"), folder.get("rb.mdb"));
}

void TestMaintaining::ticksAndOtherInputWait() {
    const TestFolder folder;
    QPushButton other(QStringLiteral("other"));
    int clicks = 0;
    connect(&other, &QPushButton::clicked, this, [&clicks] { ++clicks; });
    other.show();
    int ticks = 0;
    platform::TickTimer tick(QStringLiteral("tick"), 1, platform::TickTimer::Start::Enabled, nullptr);
    connect(&tick, &platform::TickTimer::tick, this, [&ticks] { ++ticks; });
    Painted painted(5, [&other](QWidget&) { QTest::mouseClick(&other, Qt::LeftButton); });
    Painted more(9);
    std::atomic<int> held{0};
    const platform::FaultInjection slow(holdAt("compacted", more, held));
    maintainbehindwindow(platform::ProgramFolder::current());
    QCOMPARE(held.load(), 1);
    QCOMPARE(ticks, 0);
    QCOMPARE(clicks, 0);
}

void TestMaintaining::stoppedItLeavesStoreAndBackupsAsTheyWere_data() {
    QTest::addColumn<QByteArray>("where");
    for (const char* const where : {"compact", "compacted", "sync", "compare", "examine"}) {
        QTest::newRow(where) << QByteArray(where);
    }
}

void TestMaintaining::stoppedItLeavesStoreAndBackupsAsTheyWere() {
    QFETCH(QByteArray, where);
    const TestFolder folder;
    folder.put("backup.mdb", "the newest");
    folder.put("backup2.mdb", "the one before");
    const QByteArray before = folder.get("rb.mdb");
    Painted painted(2, stop);
    std::atomic<int> heard{0};
    const std::string step = where.toStdString();
    const platform::FaultInjection slow([&](std::string_view at) {
        heard += at == step && painted.wait() && stopIsHeard() ? 1 : 0;
        return 0;
    });
    const store::Maintenance done = maintainbehindwindow(platform::ProgramFolder::current());
    QVERIFY(heard > 0);
    QVERIFY(done.setAside.isEmpty());
    QCOMPARE(folder.get("rb.mdb"), before);
    QCOMPARE(folder.get("backup.mdb"), QByteArray("the newest"));
    QCOMPARE(stores(folder), (QStringList{"backup.mdb", "backup2.mdb", "rb.mdb"}));
}

void TestMaintaining::stoppedTheStartGoesOn() {
    GuideStage<frmGetS> stage(true);
    Painted painted(3, stop);
    std::atomic<int> heard{0};
    const platform::FaultInjection slow([&](std::string_view at) {
        heard += at == "compact" && painted.wait() && stopIsHeard() ? 1 : 0;
        return 0;
    });
    stage.screen->showScreen();
    QVERIFY(heard > 0);
    QVERIFY(!stage.folder.has("backup.mdb"));
    QVERIFY(stage.screen->isVisible());
    QVERIFY(process().database.isOpen());
    QCOMPARE(stage.dialogs.messages(), QStringList());
    process().database.close();
}

void TestMaintaining::closingTheWindowStops() {
    const TestFolder folder;
    std::atomic<int> heard{0};
    Painted painted(3, [](QWidget& window) { window.hide(); });
    const platform::FaultInjection slow([&](std::string_view at) {
        heard += at == "compact" && painted.wait() && stopIsHeard() ? 1 : 0;
        return 0;
    });
    maintainbehindwindow(platform::ProgramFolder::current());
    QVERIFY(heard > 0);
    QCOMPARE(stores(folder), QStringList{"rb.mdb"});
}

void TestMaintaining::aDamagedStoreIsSetAsideAndTold() {
    GuideStage<frmGetS> stage(true);
    stage.folder.put("rb.mdb", QByteArray(9000, 'x'));
    stage.folder.put("backup.mdb", "the newest");
    Painted painted(4);
    std::atomic<int> held{0};
    const platform::FaultInjection slow(holdAt("examine", painted, held));
    stage.screen->showScreen();
    QVERIFY(held > 0);
    QCOMPARE(stage.dialogs.messages().size(), 1);
    QVERIFY(stage.dialogs.messages().first().contains(stage.folder.path("rb-damaged.mdb")));
    QCOMPARE(stage.folder.get("rb-damaged.mdb"), QByteArray(9000, 'x'));
    QCOMPARE(stage.folder.get("backup.mdb"), QByteArray("the newest"));
    QVERIFY(!stage.folder.has("rb.mdb"));
}

void TestMaintaining::begunAheadItEndsWithoutPackingAgain() {
    GuideStage<frmGetS> stage(true); // for the dialogs
    const platform::ProgramFolder& folder = platform::ProgramFolder::current();
    std::atomic<int> packings{0};
    const platform::FaultInjection count([&](std::string_view at) {
        packings += at == "compact" ? 1 : 0;
        return 0;
    });
    StoreStart start;
    QVERIFY(!start.isUnderWay());
    start.begin(folder);
    start.begin(folder);
    QVERIFY(start.isUnderWay());
    QTRY_VERIFY(stage.folder.has("backup-new.mdb"));
    QVERIFY(!stage.folder.has("backup.mdb"));
    QVERIFY(start.end(folder).setAside.isEmpty());
    QVERIFY(!start.isUnderWay());
    QCOMPARE(packings.load(), 1);
    QCOMPARE(stores(stage.folder), (QStringList{"backup.mdb", "rb.mdb"}));
    QCOMPARE(stage.folder.get("backup.mdb"), stage.folder.get("rb.mdb"));
}

void TestMaintaining::begunAheadAndNotYetThroughItIsWaitedForBehindTheWindow() {
    const TestFolder folder;
    Painted painted(12);
    std::atomic<int> held{0};
    const platform::FaultInjection slow(holdAt("compacted", painted, held));
    StoreStart start;
    start.begin(platform::ProgramFolder::current());
    QVERIFY(start.isUnderWay());
    start.end(platform::ProgramFolder::current());
    QCOMPARE(held.load(), 1);
    QVERIFY(painted.waited);
    QCOMPARE(stores(folder), (QStringList{"backup.mdb", "rb.mdb"}));
}

void TestMaintaining::begunAheadItCanBeStopped() {
    const TestFolder folder;
    const QByteArray before = folder.get("rb.mdb");
    Painted painted(2, stop);
    std::atomic<int> heard{0};
    const platform::FaultInjection slow([&](std::string_view at) {
        heard += at == "compacted" && painted.wait() && stopIsHeard() ? 1 : 0;
        return 0;
    });
    StoreStart start;
    start.begin(platform::ProgramFolder::current());
    start.end(platform::ProgramFolder::current());
    QVERIFY(heard > 0);
    QCOMPARE(folder.get("rb.mdb"), before);
    QCOMPARE(stores(folder), QStringList{"rb.mdb"});
}

void TestMaintaining::droppedItLeavesTheStoreAsItWas() {
    const TestFolder folder;
    const QByteArray before = folder.get("rb.mdb");
    StoreStart start;
    start.drop();
    start.begin(platform::ProgramFolder::current());
    start.drop(); // in the midst of it
    QVERIFY(!start.isUnderWay());
    QCOMPARE(stores(folder), QStringList{"rb.mdb"});
    start.begin(platform::ProgramFolder::current());
    QTRY_VERIFY(folder.has("backup-new.mdb"));
    start.drop(); // when it is through
    QCOMPARE(stores(folder), QStringList{"rb.mdb"});
    {
        StoreStart other;
        other.begin(platform::ProgramFolder::current());
    }
    QCOMPARE(stores(folder), QStringList{"rb.mdb"});
    QCOMPARE(folder.get("rb.mdb"), before);
}

void TestMaintaining::aStoreThatWasReplacedMeanwhileIsBegunWithAnew() {
    GuideStage<frmGetS> stage(true);
    StoreStart start;
    start.begin(platform::ProgramFolder::current());
    store::createStore(stage.folder.path("another.mdb"), QStringLiteral("Open"));
    QVERIFY(platform::moveFile(stage.folder.path("another.mdb"), stage.folder.path("rb.mdb")));
    QVERIFY(!start.isUnderWay());
    QCOMPARE(stores(stage.folder), QStringList{"rb.mdb"});
    frmGetS screen(true, &start);
    screen.showScreen();
    QVERIFY(screen.isVisible()); // its guide is open
    QCOMPARE(stores(stage.folder), (QStringList{"backup.mdb", "rb.mdb"}));
    process().database.close();
}

void TestMaintaining::anOlderStoreIsNotBegunWith() {
    const TestFolder folder;
    const QByteArray jet = QByteArray("\0\1\0\0Standard Jet DB\0", 20) + QByteArray(4076, '\0');
    folder.put("rb.mdb", jet);
    StoreStart start;
    start.begin(platform::ProgramFolder::current());
    QVERIFY(!start.isUnderWay());
    QCOMPARE(folder.get("rb.mdb"), jet);
    QCOMPARE(stores(folder), QStringList{"rb.mdb"});
}

QTEST_MAIN(TestMaintaining)
#include "test_maintaining.moc"
