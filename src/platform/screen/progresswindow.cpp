#include "platform/screen/progresswindow.h"

#include "platform/look/icons.h"
#include "platform/look/look.h"
#include "platform/look/widgets/card.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/wholelabel.h"
#include "platform/storewait.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace benthor::platform {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

/// What is over sooner is not worth a window.
constexpr auto kPatience = 300ms;
constexpr auto kBetweenPaints = 30ms;
constexpr int kWidth = 460;
constexpr int kBarEnd = 1000;

} // namespace

ProgressWindow::ProgressWindow(const QString& heading, const QString& words, const QString& things,
                               const QString& last)
    : things_(things)
    , last_(last)
    , window_(QStringLiteral("progress"), look::spaceBase)
    , patience_(kPatience)
    , began_(Clock::now()) {
    build(heading, words);
}

void ProgressWindow::build(const QString& heading, const QString& words) {
    QVBoxLayout& rows = window_.rows();
    auto* head = new QHBoxLayout;
    auto* icon = new look::ClickableLabel;
    icon->setIconName(QStringLiteral("database"), 22);
    icon->setInk(look::Ink::Accent);
    icon->setFocusPolicy(Qt::NoFocus);
    icon->setAttribute(Qt::WA_TransparentForMouseEvents);
    head->addWidget(icon);
    head->addWidget(look::makeHeading(heading));
    head->addStretch(1);
    rows.addLayout(head);
    rows.addWidget(new look::Rule);
    auto* told = new look::WholeLabel; // a path may be longer than the window is wide
    told->setText(words);
    told->setObjectName(QStringLiteral("progresswords"));
    told->setMinimumWidth(look::scaled(kWidth));
    rows.addWidget(told);
    bar_ = new QProgressBar;
    bar_->setObjectName(QStringLiteral("progressbar"));
    bar_->setAccessibleName(QStringLiteral("How far it is"));
    bar_->setRange(0, kBarEnd);
    bar_->setValue(0);
    bar_->setFormat(QStringLiteral("%p %"));
    rows.addWidget(bar_);
    auto* foot = new QHBoxLayout;
    count_ = look::makeCaption(QString());
    count_->setObjectName(QStringLiteral("progresscount"));
    foot->addWidget(count_, 1);
    stop_ = new QPushButton(look::icon("stop"), QStringLiteral("Stop"));
    stop_->setObjectName(QStringLiteral("progressstop"));
    stop_->setToolTip(QStringLiteral("Ends this; nothing is changed then"));
    QObject::connect(stop_, &QPushButton::clicked, &window_.widget(), [this] { stopped_ = true; });
    foot->addWidget(stop_);
    rows.addLayout(foot);
}

void ProgressWindow::showCount(std::uint64_t done, std::uint64_t of) {
    if (of == 0) {
        return;
    }
    bar_->setValue(static_cast<int>(std::min(done, of) * kBarEnd / of));
    count_->setText(
        done < of ? QStringLiteral("%1 of %2 %3").arg(QString::number(done), QString::number(of), things_)
                  : last_);
}

void ProgressWindow::setStopTip(const QString& tip) {
    stop_->setToolTip(tip);
}

bool ProgressWindow::isTime() const {
    const Clock::time_point now = Clock::now();
    return !stopped_ && now - began_ >= patience_ && now - painted_ >= kBetweenPaints;
}

void ProgressWindow::paint() {
    if (!window_.isVisible()) {
        window_.show(true);
    }
    window_.widget().update(); // who looks whether the program lives sees that it paints
    window_.serve();
    painted_ = Clock::now();
    stopped_ = stopped_ || !window_.isVisible(); // the desktop may close what it shows
}

bool ProgressWindow::goesOn() {
    stopped_ = stopped_ || allWaitsEnd();
    return !stopped_;
}

bool ProgressWindow::goOn(std::uint64_t done, std::uint64_t of) {
    if (isTime()) {
        showCount(done, of);
        paint();
    }
    return goesOn();
}

bool ProgressWindow::goOnWith(const QString& words, double share) {
    if (isTime()) {
        bar_->setValue(static_cast<int>(std::clamp(share, 0.0, 1.0) * kBarEnd));
        count_->setText(words);
        paint();
    }
    return goesOn();
}

} // namespace benthor::platform
