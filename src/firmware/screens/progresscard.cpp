#include "firmware/screens/progresscard.h"

#include "link/screens/showing.h"
#include "platform/look/look.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/numberlabel.h"
#include "platform/look/widgets/status.h"

#include <QHBoxLayout>
#include <QProgressBar>
#include <algorithm>

namespace benthor::firmware {

using link::showEnabled;
using link::showText;
using link::showVisible;
using look::named;

namespace {

void showBar(QProgressBar* bar, const Bar& value) {
    if (bar->maximum() != value.maximum) {
        bar->setMaximum(std::max(1, value.maximum));
    }
    if (bar->value() != std::min(value.value, value.maximum)) {
        bar->setValue(std::min(value.value, value.maximum));
    }
}

QProgressBar* makeBar(const char* name, const char* told, int height) {
    auto* bar = named(new QProgressBar, name);
    bar->setAccessibleName(QLatin1String(told));
    bar->setTextVisible(false);
    bar->setFixedHeight(look::scaled(height));
    bar->setValue(0);
    return bar;
}

} // namespace

ProgressCard::ProgressCard(QWidget* parent)
    : Card(parent)
    , Label8_(named(new look::ClickableLabel(QStringLiteral("Send to KD")), "Label8"))
    , Label5_(named(new QLabel(QStringLiteral("SENDING")), "Label5"))
    , percent_(new look::NumberLabel(24))
    , ProgressBar1_(makeBar("ProgressBar1", "How much of the image is sent", 20))
    , count_(new QLabel)
    , next_(named(new QLabel, "next"))
    , ProgressBar2_(makeBar("ProgressBar2", "Wait for the final tasks", 8))
    , ProgressBar3_(makeBar("ProgressBar3", "Wait while the device programs itself again", 8))
    , Frame5_(
          waitFrame("Frame5", ProgressBar2_,
                    "Wait.. Performing final reprogramming tasks.. This will only take a minute or so..."))
    , Frame6_(
          waitFrame("Frame6", ProgressBar3_,
                    "System doing reprog again. Waiting for KD.. This could take upto 5 minutes. Do not turn "
                    "off or close."))
    , warning_(
          new look::NoticeBand(QStringLiteral("CLOSE ALL OTHER PROGRAMS FOR MOST RELIABLE LINK. DO NOT USE "
                                              "MOUSE OR KEYBOARD WHEN UNIT IS PROGRAMMING."))) {
    body()->setContentsMargins(look::spaceWide, look::spaceBase, look::spaceWide, look::spaceBase);
    body()->setSpacing(look::spaceSmall);
    auto* head = new QHBoxLayout;
    head->setSpacing(look::spaceBase);
    head->addWidget(look::makeHeading(QStringLiteral("Progress")));
    Label8_->setInk(look::Ink::Accent);
    Label8_->setFont(look::caption());
    head->addWidget(Label8_);
    Label5_->setFont(look::strong(look::caption()));
    look::setInk(Label5_, look::Ink::Accent);
    head->addWidget(Label5_);
    head->addStretch(1);
    head->addWidget(percent_);
    body()->addLayout(head);
    body()->addWidget(ProgressBar1_);
    body()->addWidget(count_);
    next_->setWordWrap(true);
    next_->setFont(look::strong(look::body()));
    next_->setAccessibleName(QStringLiteral("What comes next"));
    body()->addWidget(next_);
    body()->addStretch(1);
    for (QWidget* frame : {Frame5_, Frame6_, static_cast<QWidget*>(warning_)}) {
        body()->addWidget(frame);
    }
    connect(Label8_, &look::ClickableLabel::clicked, this, &ProgressCard::sendClicked);
}

QWidget* ProgressCard::waitFrame(const char* frame, QProgressBar* bar, const char* words) {
    auto* made = named(new QWidget, frame);
    auto* down = new QVBoxLayout(made);
    down->setContentsMargins({});
    down->setSpacing(look::spaceTight);
    auto* told = new QLabel(QLatin1String(words));
    told->setWordWrap(true);
    down->addWidget(told);
    down->addWidget(bar);
    return made;
}

void ProgressCard::syncBar(const ReprogState& state) {
    showBar(ProgressBar1_, state.ProgressBar1);
    const Bar& bar = state.ProgressBar1;
    const int percent =
        bar.maximum > 0 ? std::min(100, static_cast<int>(100.0 * bar.value / bar.maximum)) : 0;
    showText(percent_, QStringLiteral("%1 %").arg(percent));
    showText(count_, bar.value == 0 ? QString() : QStringLiteral("%1 bytes sent").arg(grouped(state.sent)));
}

void ProgressCard::sync(const ReprogState& state, const NextStep& next) {
    syncBar(state);
    showVisible(Label5_, state.Label5Visible);
    showEnabled(Label8_, state.Command2.enabled && !state.sending);
    showText(next_, next.words);
    showVisible(Frame5_, state.Frame5Visible);
    showVisible(Frame6_, state.Frame6Visible);
    showVisible(warning_, !state.Frame5Visible && !state.Frame6Visible);
    showBar(ProgressBar2_, state.ProgressBar2);
    showBar(ProgressBar3_, state.ProgressBar3);
}

} // namespace benthor::firmware
