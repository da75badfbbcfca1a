#pragma once

#include "exports/wholedive.h"

#include <QStringList>
#include <QThread>
#include <QThreadPool>

#include <algorithm>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <utility>

namespace benthor::exports {

/// A dive whose turn has come, with what a format made of it.
template <class Prepared> struct ReadyDive {
    QString id;             ///< as the store has it
    QString withoutSamples; ///< why there are none; empty where there are
    Prepared prepared;
};

/// Dives in the order of their identifiers. The store is read on the caller's thread; files are read and
/// decoded, and a format's share of the work is done, on all cores, a few dives ahead: memory does not grow
/// with the number of dives.
template <class Prepared> class DivesAhead {
public:
    /// What a format makes of a dive by itself, on any thread.
    using Prepare = std::function<Prepared(WholeDive&&)>;
    using Result = std::optional<ReadyDive<Prepared>>;

    /// `reader` must outlive it.
    DivesAhead(DiveReader& reader, QStringList ids, Prepare prepare)
        : reader_(reader)
        , ids_(std::move(ids))
        , prepare_(std::move(prepare)) {
        pool_.setMaxThreadCount(std::max(1, QThread::idealThreadCount()));
    }
    ~DivesAhead() {
        pool_.clear();
        pool_.waitForDone();
    }
    DivesAhead(const DivesAhead&) = delete;
    DivesAhead& operator=(const DivesAhead&) = delete;

    /// The dive of the next identifier; nothing where no dive bears it. To be called once for each.
    /// StoreError, and what `prepare` throws.
    Result next() {
        while (begun_ < ids_.size() && static_cast<int>(waiting_.size()) <= 2 * pool_.maxThreadCount()) {
            begin(ids_[begun_++]);
        }
        std::future<Result> first = std::move(waiting_.front());
        waiting_.pop_front();
        return first.get();
    }

private:
    void begin(const QString& id) {
        auto task = std::make_shared<std::packaged_task<Result()>>( // a pool copies what it is given
            [this, dive = reader_.readRows(id)]() mutable -> Result {
                if (!dive) {
                    return std::nullopt;
                }
                DiveReader::readProfile(*dive);
                QString ofDive = dive->figures.id;
                QString why = dive->withoutSamples;
                return ReadyDive<Prepared>{std::move(ofDive), std::move(why), prepare_(std::move(*dive))};
            });
        waiting_.push_back(task->get_future());
        pool_.start([task] { (*task)(); });
    }

    DiveReader& reader_;
    QStringList ids_;
    Prepare prepare_;
    qsizetype begun_ = 0;
    std::deque<std::future<Result>> waiting_;
    QThreadPool pool_; ///< the last member: its work ends before anything that it uses
};

} // namespace benthor::exports
