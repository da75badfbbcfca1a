#include "platform/screen/storewaitwindow.h"

#include "platform/look/look.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace benthor::platform {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

/// A wait that is over sooner is not worth a window.
constexpr auto kPatienceLocked = 300ms;
constexpr auto kPatienceWorking = 2000ms;
constexpr auto kBetweenPaints = 30ms;
constexpr int kWordsWidth = 380;

} // namespace

StoreWaitWindow::StoreWaitWindow()
    : waiting_([this](StoreWait why, std::chrono::milliseconds waited) { return asked(why, waited); }) {}

StoreWaitWindow::~StoreWaitWindow() = default;

void StoreWaitWindow::build() {
    window_ = std::make_unique<WaitWindow>(QStringLiteral("storewait"), look::spaceWide);
    QVBoxLayout& rows = window_->rows();
    words_ = new QLabel;
    words_->setObjectName(QStringLiteral("storewaitwords"));
    words_->setTextFormat(Qt::PlainText);
    words_->setWordWrap(true);
    words_->setMinimumWidth(look::scaled(kWordsWidth));
    rows.addWidget(words_);
    auto* across = new QHBoxLayout;
    across->addStretch(1);
    stop_ = new QPushButton(QStringLiteral("Stop waiting"));
    stop_->setObjectName(QStringLiteral("storewaitstop"));
    across->addWidget(stop_);
    rows.addLayout(across);
    QObject::connect(stop_, &QPushButton::clicked, &window_->widget(), [this] { stopped_ = true; });
}

void StoreWaitWindow::show(StoreWait why) {
    if (window_ == nullptr) {
        build();
    }
    words_->setText(
        why == StoreWait::Locked
            ? QStringLiteral("Another program has the dive store open. Benthor waits for it, five "
                             "seconds at most.")
            : QStringLiteral("The dive store is being read. That takes longer than it should."));
    if (!window_->isVisible()) {
        window_->show(false);
    }
}

/// Whoever waits does not say when the wait is over: it is when events run and nobody has asked again.
void StoreWaitWindow::hideSoon() {
    QTimer::singleShot(0ms, &window_->widget(), [this, turn = turn_] {
        if (turn == turn_) {
            window_->widget().hide();
            stopped_ = false;
        }
    });
}

bool StoreWaitWindow::asked(StoreWait why, std::chrono::milliseconds waited) {
    const bool patient = waited < (why == StoreWait::Locked ? kPatienceLocked : kPatienceWorking);
    if (patient || asking_ || qApp == nullptr || Clock::now() - painted_ < kBetweenPaints) {
        return !stopped_;
    }
    asking_ = true;
    ++turn_;
    show(why);
    window_->serve();
    hideSoon();
    painted_ = Clock::now();
    asking_ = false;
    return !stopped_;
}

} // namespace benthor::platform
