#include "firmware/screens/keyrow.h"

#include "link/screens/breakingrow.h"
#include "link/screens/showing.h"
#include "platform/look/look.h"
#include "platform/look/widgets/toldbutton.h"
#include "platform/screen/toldqcolor.h"

#include <QHBoxLayout>

namespace benthor::firmware {

using link::showEnabled;
using look::named;

namespace {

void sync(look::ToldButton* button, const Button& state, bool next) {
    showEnabled(button, state.enabled);
    const QColor colour = state.colour == kButtonGrey ? QColor() : platform::toQColor(state.colour);
    if (button->toldBackground() != colour) {
        button->setToldBackground(colour);
    }
    if (button->property("next").toBool() != next) {
        button->setProperty("next", next);
        button->setFont(next ? look::strong(look::body()) : look::body());
    }
}

QWidget* rule() {
    auto* made = new look::Rule(Qt::Vertical);
    made->setFixedHeight(look::scaled(30));
    return made;
}

} // namespace

KeyRow::KeyRow(QWidget* parent)
    : Pane(Qt::TopEdge, parent)
    , Command2_(named(new look::ToldButton(QStringLiteral("Send to KD")), "Command2")) {
    key(kKeyYes, "Yes", nullptr, "Sends a Yes to KD.. Used if manually erasing..");
    key(kKeyNo, "No", nullptr, "Sens a No to KD. Used if manually erasing..");
    key(kKeyErase, "Erase", "erase",
        "Use to manually erase KD. Do not use unless erasing a corrupted program. This will stop KD working "
        "as a "
        "dive computer until reprogrammed.");
    key(kKeyRefresh, "Refresh", "refresh",
        "Use to refreash Status screen. Do not press while sending reprogramme data to KD.");
    key(kKeyContinue, "Continue", nullptr,
        "Use if KD not responding after programming. Then use Retry button.");
    key(kKeyQuit, "Quit", nullptr, "Use to restart KD after succesful reprogramming.");
    key(kKeyEnter, "Enter Reprog Mode", nullptr,
        "Puts KD/Morvalien into Reprogramming mode if not done automatically");
    key(kKeyRetry, "Retry", nullptr,
        "Use if KD not responding after programming or if Continue button accidentall hit");
    key(kKeyRestart, "Restart KD", "power", "Use to restart KD after succesful reprogramming.");
    SendCh_[kKeyErase]->setProperty("danger", true);
    Command2_->setIcon(look::icon("send"));
    Command2_->setToolTip(QStringLiteral(
        "Sends file data to KD. KD has to be in correct mode for this to work. See tasks above."));
    Command2_->setAutoDefault(false);
    for (look::ToldButton* big : {Command2_, SendCh_[kKeyRestart]}) {
        big->setProperty("big", true);
    }
    connect(Command2_, &QPushButton::clicked, this, &KeyRow::sendClicked);

    auto* around = new QVBoxLayout(this);
    around->setContentsMargins(look::spaceBase, look::spaceSmall, look::spaceBase, look::spaceSmall);
    auto* row = new link::BreakingRow(look::spaceTight);
    row->add(buildKeys(), 1);
    row->add(buildActs(), 0);
    around->addWidget(row);
}

QWidget* KeyRow::buildKeys() {
    auto* keys = new QWidget;
    auto* across = new QHBoxLayout(keys);
    across->setContentsMargins({});
    across->setSpacing(look::spaceTight); // all in one row with the great acts on a display of 1024
    for (const size_t index : {kKeyRefresh, kKeyContinue, kKeyRetry, kKeyYes, kKeyNo, kKeyQuit}) {
        across->addWidget(SendCh_.at(index));
    }
    across->addWidget(rule());
    across->addWidget(SendCh_[kKeyEnter]);
    across->addWidget(rule());
    across->addWidget(SendCh_[kKeyErase]);
    across->addStretch(1);
    return keys;
}

QWidget* KeyRow::buildActs() {
    auto* acts = new QWidget;
    auto* across = new QHBoxLayout(acts);
    across->setContentsMargins({});
    across->setSpacing(look::spaceTight);
    across->addStretch(1);
    across->addWidget(Command2_);
    across->addWidget(SendCh_[kKeyRestart]);
    return acts;
}

look::ToldButton* KeyRow::key(size_t index, const char* caption, const char* icon, const char* toolTip) {
    auto* button = new look::ToldButton(QLatin1String(caption));
    button->setObjectName(QStringLiteral("SendCh(%1)").arg(index));
    button->setToolTip(QLatin1String(toolTip));
    button->setAutoDefault(false);
    if (icon != nullptr) {
        button->setIcon(look::icon(icon));
    }
    connect(button, &QPushButton::clicked, this, [this, index] { emit keyClicked(index); });
    SendCh_.at(index) = button;
    return button;
}

QWidget* KeyRow::refresh() const {
    return SendCh_[kKeyRefresh];
}

void KeyRow::sync(const ReprogState& state, NextKey next) {
    for (size_t index = 0; index < kKeys; ++index) {
        const bool comes = (index == kKeyRefresh && next == NextKey::Refresh) ||
                           (index == kKeyEnter && next == NextKey::Enter) ||
                           (index == kKeyRestart && next == NextKey::Restart);
        firmware::sync(SendCh_.at(index), state.SendCh.at(index), comes);
    }
    firmware::sync(Command2_, state.Command2, next == NextKey::Send);
}

} // namespace benthor::firmware
