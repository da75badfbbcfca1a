#pragma once

#include "platform/instancecall.h"

#include <QThread>

#include <chrono>
#include <functional>
#include <memory>

namespace benthor::tests {

/// A call on a thread of its own; the answer stands when it is finished. It waits until `when` says yes
/// there.
class Call {
public:
    Call(
        const QString& folder, const QString& file,
        std::chrono::milliseconds patience = std::chrono::seconds(20),
        const std::function<bool()>& when = [] { return true; }, const QByteArray& token = {})
        : thread_(QThread::create([this, folder, file, patience, when, token] {
            while (!when()) {
                QThread::msleep(1);
            }
            answer_ = platform::callInstance(folder, file, patience, token);
        })) {
        thread_->start();
    }
    ~Call() { thread_->wait(); }
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

    bool isOver() const { return thread_->isFinished(); }
    platform::CallAnswer answer() const {
        thread_->wait();
        return answer_;
    }

private:
    platform::CallAnswer answer_;
    std::unique_ptr<QThread> thread_;
};

} // namespace benthor::tests
