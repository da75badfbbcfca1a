#include "guides/screens/maintaining.h"

#include "platform/screen/progresswindow.h"
#include "platform/storewait.h"
#include "store/olderstore.h"

#include <QDateTime>
#include <QFileInfo>

#include <atomic>
#include <future>
#include <tuple>

namespace benthor::guides {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using store::MaintenanceStep;

/// Nothing of the program is on the screen before this window.
constexpr auto kPatience = 80ms;
constexpr auto kPause = 20ms;
constexpr double kPackingsShare = 0.5;

/// How far it is. Packing tells it by the bytes that are written; the check takes about as long again.
class Share {
public:
    explicit Share(const platform::ProgramFolder& folder)
        : packed_(folder.path(u"rb2.mdb"))
        , bytes_(std::max<qint64>(1, QFileInfo(folder.path(u"rb.mdb")).size())) {}

    double of(MaintenanceStep step) {
        const Clock::time_point now = Clock::now();
        if (step == MaintenanceStep::Packing) {
            checking_ = now;
            const auto written = static_cast<double>(QFileInfo(packed_).size());
            return kPackingsShare * std::min(1.0, written / static_cast<double>(bytes_));
        }
        using Seconds = std::chrono::duration<double>;
        const double again = Seconds(now - checking_) / std::max(Seconds(checking_ - began_), Seconds(0.001));
        return kPackingsShare + (1 - kPackingsShare) * std::min(1.0, again);
    }

private:
    QString packed_;
    qint64 bytes_;
    Clock::time_point began_ = Clock::now();
    Clock::time_point checking_ = began_;
};

QString wordsOf(MaintenanceStep step) {
    return step == MaintenanceStep::Packing ? QStringLiteral("The dive store is being packed.")
                                            : QStringLiteral("The backup is being made and checked.");
}

} // namespace

/// What the thread of the work and the screens' tell each other.
class StoreStart::Work {
public:
    explicit Work(const platform::ProgramFolder& folder)
        : folder_(folder)
        , facts_(factsOf(folder))
        , share_(folder) {}

    /// The store is packed and the backup to be is made.
    void draft() {
        drafts_ = std::async(std::launch::async, [this] {
            const platform::StoreWaiting waiting([this](auto, auto) { return !stopped_; });
            return store::draftstore(folder_, watch_);
        });
    }

    /// Nothing stays of the drafts.
    void undo() {
        stopped_ = true;
        if (drafts_.valid() && drafts_.get().made) {
            store::removedrafts(folder_);
        }
    }

    /// The file is not opened for this: that would set a store free that the engine holds.
    bool isOfThisStore() const { return factsOf(folder_) == facts_; }

    store::Maintenance endBehindWindow();

private:
    using Facts = std::tuple<qint64, QDateTime, QDateTime>;
    static Facts factsOf(const platform::ProgramFolder& folder) {
        const QFileInfo store(folder.path(u"rb.mdb"));
        return {store.size(), store.lastModified(), store.metadataChangeTime()};
    }

    store::Maintenance end() {
        const store::StoreDrafts drafts = drafts_.valid() ? drafts_.get() : store::StoreDrafts();
        const platform::StoreWaiting waiting(
            [this](platform::StoreWait why, std::chrono::milliseconds waited) {
                held_ = why == platform::StoreWait::Locked ? waited.count() : -1;
                return !stopped_;
            });
        return store::maintainstore(folder_, watch_, drafts);
    }

    platform::ProgramFolder folder_;
    Facts facts_;
    Share share_;
    std::atomic<bool> stopped_{false};
    std::atomic<MaintenanceStep> step_{MaintenanceStep::Packing};
    /// For how long another program has held the store; it has not: -1.
    std::atomic<std::chrono::milliseconds::rep> held_{-1};
    const store::MaintenanceWatch watch_{[this] { return !stopped_; },
                                         [this](MaintenanceStep now) { step_ = now; }};
    std::future<store::StoreDrafts> drafts_; // goes first: it waits for the thread
};

store::Maintenance StoreStart::Work::endBehindWindow() {
    platform::ProgressWindow window(
        QStringLiteral("Your logbook is being opened"),
        QStringLiteral("At each start the dive store is packed and a backup of it is made."), {}, {});
    window.setPatience(kPatience);
    window.setStopTip(QStringLiteral("Starts at once, without a new backup; no dive is lost by that"));
    std::future<store::Maintenance> work = std::async(std::launch::async, [this] { return end(); });
    const platform::StoreAtWork atWork;
    while (work.wait_for(kPause) != std::future_status::ready) {
        const MaintenanceStep now = step_;
        const std::chrono::milliseconds waited{held_.load()};
        // A held store has a window of its own, on this thread.
        const bool goesOn = waited.count() >= 0 ? platform::goOnWaiting(platform::StoreWait::Locked, waited)
                                                : window.goOnWith(wordsOf(now), share_.of(now));
        if (!goesOn) {
            stopped_ = true;
        }
    }
    return work.get();
}

StoreStart::StoreStart() = default;

StoreStart::~StoreStart() {
    drop();
}

void StoreStart::begin(const platform::ProgramFolder& folder) {
    if (work_ == nullptr && !store::isjetfile(folder.path(u"rb.mdb"))) {
        store::bringalong(folder); // there is none to bring: takes away what a crash left
        work_ = std::make_unique<Work>(folder);
        work_->draft();
    }
}

bool StoreStart::isUnderWay() {
    if (work_ != nullptr && !work_->isOfThisStore()) {
        drop();
    }
    return work_ != nullptr;
}

void StoreStart::drop() {
    if (const std::unique_ptr<Work> work = std::move(work_)) {
        work->undo();
    }
}

store::Maintenance StoreStart::end(const platform::ProgramFolder& folder) {
    const std::unique_ptr<Work> work = work_ != nullptr ? std::move(work_) : std::make_unique<Work>(folder);
    return work->endBehindWindow();
}

store::Maintenance maintainbehindwindow(const platform::ProgramFolder& folder) {
    return StoreStart().end(folder);
}

} // namespace benthor::guides
