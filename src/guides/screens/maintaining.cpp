#include "guides/screens/maintaining.h"

#include "platform/screen/progresswindow.h"
#include "platform/storewait.h"

#include <QFileInfo>

#include <atomic>
#include <future>

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

store::Maintenance maintainbehindwindow(const platform::ProgramFolder& folder) {
    std::atomic<bool> stopped{false};
    std::atomic<MaintenanceStep> step{MaintenanceStep::Packing};
    const store::MaintenanceWatch watch{[&stopped] { return !stopped; },
                                        [&step](MaintenanceStep now) { step = now; }};
    platform::ProgressWindow window(
        QStringLiteral("Your logbook is being opened"),
        QStringLiteral("At each start the dive store is packed and a backup of it is made."), {}, {});
    window.setPatience(kPatience);
    window.setStopTip(QStringLiteral("Starts at once, without a new backup; no dive is lost by that"));
    Share share(folder);
    // For how long another program has held the store; it has not: -1.
    std::atomic<std::chrono::milliseconds::rep> held{-1};
    std::future<store::Maintenance> work = std::async(std::launch::async, [&] {
        const platform::StoreWaiting waiting([&](platform::StoreWait why, std::chrono::milliseconds waited) {
            held = why == platform::StoreWait::Locked ? waited.count() : -1;
            return !stopped;
        });
        return store::maintainstore(folder, watch);
    });
    const platform::StoreAtWork atWork;
    while (work.wait_for(kPause) != std::future_status::ready) {
        const MaintenanceStep now = step;
        const std::chrono::milliseconds waited{held.load()};
        // A held store has a window of its own, on this thread.
        const bool goesOn = waited.count() >= 0 ? platform::goOnWaiting(platform::StoreWait::Locked, waited)
                                                : window.goOnWith(wordsOf(now), share.of(now));
        if (!goesOn) {
            stopped = true;
        }
    }
    return work.get();
}

} // namespace benthor::guides
