#pragma once

#include "platform/screen/waitwindow.h"
#include "platform/storewait.h"

#include <memory>

class QLabel;
class QPushButton;

namespace benthor::platform {

/// Tells that the dive store keeps the program waiting, with a button that ends the wait. Comes up when a
/// wait has lasted for a moment and goes when the program goes on. Of all windows this alone takes input
/// meanwhile.
class StoreWaitWindow {
public:
    StoreWaitWindow();
    ~StoreWaitWindow();
    StoreWaitWindow(const StoreWaitWindow&) = delete;
    StoreWaitWindow& operator=(const StoreWaitWindow&) = delete;

private:
    bool asked(StoreWait why, std::chrono::milliseconds waited);
    void build();
    void show(StoreWait why);
    void hideSoon();

    std::unique_ptr<WaitWindow> window_; ///< made when it is first needed
    QLabel* words_ = nullptr;
    QPushButton* stop_ = nullptr;
    std::chrono::steady_clock::time_point painted_;
    int turn_ = 0;         ///< counts the questions of the waits
    bool stopped_ = false; ///< the user has ended this wait
    bool asking_ = false;
    StoreWaiting waiting_;
};

} // namespace benthor::platform
