#pragma once

#include "platform/screen/waitwindow.h"

#include <QString>
#include <chrono>
#include <cstdint>

class QLabel;
class QProgressBar;
class QPushButton;

namespace benthor::platform {

/// Tells how far a long piece of work is, with a button that stops it, where no screen is there to tell it.
/// It comes up when the work has lasted for a moment and goes with this. Of all windows this alone takes
/// input meanwhile, and no tick comes.
class ProgressWindow {
public:
    /// `things`: what is counted ("rows"); `last`: what is said when all of them are done and work goes on.
    ProgressWindow(const QString& heading, const QString& words, const QString& things, const QString& last);
    ProgressWindow(const ProgressWindow&) = delete;
    ProgressWindow& operator=(const ProgressWindow&) = delete;

    /// To be called often. `of` 0: nothing new is known. False when the user has stopped it, or the process
    /// is to end.
    bool goOn(std::uint64_t done, std::uint64_t of);

    /// The same where shares are known and no counts: `words` stand below the bar, `share` is 0 to 1.
    bool goOnWith(const QString& words, double share);

    /// What is over sooner comes without a window; 300 ms at first.
    void setPatience(std::chrono::milliseconds patience) { patience_ = patience; }
    /// What the button says of stopping, where something is changed by then.
    void setStopTip(const QString& tip);

    QWidget& window() const { return window_.widget(); }

private:
    void build(const QString& heading, const QString& words);
    void showCount(std::uint64_t done, std::uint64_t of);
    bool isTime() const;
    void paint();
    bool goesOn();

    QString things_;
    QString last_;
    WaitWindow window_;
    QProgressBar* bar_ = nullptr;
    QLabel* count_ = nullptr;
    QPushButton* stop_ = nullptr;
    std::chrono::milliseconds patience_;
    std::chrono::steady_clock::time_point began_;
    std::chrono::steady_clock::time_point painted_;
    bool stopped_ = false;
};

} // namespace benthor::platform
