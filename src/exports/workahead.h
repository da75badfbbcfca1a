#pragma once

#include <QThread>
#include <QThreadPool>

#include <algorithm>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <utility>

namespace benthor::exports {

/// Pieces of work in a fixed order, done on all cores a few pieces ahead of whoever takes their results:
/// memory does not grow with their number.
template <class Result> class WorkAhead {
public:
    /// A piece of work by itself, on any thread.
    using Piece = std::function<Result()>;
    /// Makes the piece at `index`, from 0; on the caller's thread and in order.
    using MakePiece = std::function<Piece(qsizetype index)>;

    WorkAhead(qsizetype count, MakePiece make)
        : count_(count)
        , make_(std::move(make)) {
        pool_.setMaxThreadCount(std::max(1, QThread::idealThreadCount()));
    }
    ~WorkAhead() {
        pool_.clear();
        pool_.waitForDone();
    }
    WorkAhead(const WorkAhead&) = delete;
    WorkAhead& operator=(const WorkAhead&) = delete;

    /// The result of the next piece. To be called once for each. What the making or the piece throws.
    Result next() {
        if (static_cast<int>(waiting_.size()) <= kLeastAhead * pool_.maxThreadCount()) {
            begin();
        }
        std::future<Result> first = std::move(waiting_.front());
        waiting_.pop_front();
        return first.get();
    }

private:
    // For each thread. Many are begun at once, as a thread that ran out of work is slow to wake: where pieces
    // are small that would take as long as they do.
    static constexpr int kLeastAhead = 2;
    static constexpr int kMostAhead = 6;

    void begin() {
        while (begun_ < count_ && static_cast<int>(waiting_.size()) < kMostAhead * pool_.maxThreadCount()) {
            auto task = std::make_shared<std::packaged_task<Result()>>( // a pool copies what it is given
                make_(begun_++));
            waiting_.push_back(task->get_future());
            pool_.start([task] { (*task)(); });
        }
    }

    qsizetype count_;
    MakePiece make_;
    qsizetype begun_ = 0;
    std::deque<std::future<Result>> waiting_;
    QThreadPool pool_; ///< the last member: its work ends before anything that it uses
};

} // namespace benthor::exports
