#include "viewer/screens/playbar.h"

#include "platform/look/look.h"
#include "platform/look/widgets/card.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/commandbutton.h"

#include <QHBoxLayout>
#include <QLabel>

namespace benthor::viewer {

using look::CommandButton;

namespace {
constexpr int kSpacing = 3;
constexpr int kCompactSpacing = 2;
} // namespace

PlayBar::PlayBar(QWidget* parent)
    : QWidget(parent) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->setSpacing(kSpacing);
    add("Previous point", "previous", Act::Previous, "Command7(0)");
    PlayDive = add("Plays dive", "play", Act::Play, "PlayDive", "Picture8");
    PlayDive->setProperty("primary", true);
    add("Stops playing of dive", "stop", Act::Stop, "StopPlayDive", "Picture9");
    add("Next Point", "next", Act::Next, "Command7(1)");
    addLine();
    add("Reduces play speed", "slower", Act::Slower, "Command6(1)");
    Label18 = new QLabel;
    Label18->setObjectName(QStringLiteral("Label18"));
    Label18->setAccessibleName(QStringLiteral("Play speed"));
    Label18->setFont(look::strong(look::numbers(13)));
    Label18->setAlignment(Qt::AlignCenter);
    // What it says begins with a blank; as much room behind it keeps the words in the middle.
    Label18->setContentsMargins(0, 0, QFontMetrics(Label18->font()).horizontalAdvance(u' '), 0);
    Label18->setMinimumWidth(look::scaledRow(34));
    row->addWidget(Label18);
    add("Increments play speed x2", "faster", Act::Faster, "Command6(0)");
    addLine();
    AlarmNext = add("Next Alarm", "alarm", Act::NextAlarm, "AlarmNext", "", "Label13");
    MarkNext = add("Next Mark", "mark", Act::NextMark, "MarkNext", "", "Label4");
    AlarmNext->setKind(CommandButton::Kind::Small);
    MarkNext->setKind(CommandButton::Kind::Small);
    auto* playing = new look::ClickableLabel;
    playing->setIconName(QStringLiteral("play"), 16);
    playing->setAccessibleName(QStringLiteral("playing"));
    playing->setInk(look::Ink::Accent);
    playing->setFocusPolicy(Qt::NoFocus);
    playing->setAttribute(Qt::WA_TransparentForMouseEvents);
    Picture10 = playing;
    Picture10->setObjectName(QStringLiteral("Picture10"));
    // It keeps its place, so that nothing moves from under the pointer when the dive begins to play.
    QSizePolicy keepsItsPlace = Picture10->sizePolicy();
    keepsItsPlace.setRetainSizeWhenHidden(true);
    Picture10->setSizePolicy(keepsItsPlace);
    Picture10->hide();
    row->addWidget(Picture10);
    showSpeed(1);
}

CommandButton* PlayBar::add(const char* caption, const char* iconName, Act act, const char* name,
                            const char* picture, const char* label) {
    auto* button =
        new CommandButton(QLatin1String(caption), QLatin1String(iconName), CommandButton::Kind::Icon);
    button->setNames(name, picture, label);
    connect(button, &QPushButton::clicked, this, [this, act] { emit acted(act); });
    layout()->addWidget(button);
    return button;
}

void PlayBar::addLine() {
    auto* line = new look::Rule(Qt::Vertical);
    line->setFixedHeight(look::scaled(24));
    layout()->addWidget(line);
}

void PlayBar::showSpeed(int playspeed) {
    Label18->setText(QStringLiteral(" x%1").arg(playspeed));
}

void PlayBar::showPlaying(bool playing) {
    Picture10->setVisible(playing);
}

void PlayBar::setCompact(bool compact) {
    if (compact == compact_) {
        return;
    }
    compact_ = compact;
    const auto kind = compact ? CommandButton::Kind::Icon : CommandButton::Kind::Small;
    AlarmNext->setKind(kind);
    MarkNext->setKind(kind);
    layout()->setSpacing(compact ? kCompactSpacing : kSpacing);
}

int PlayBar::neededWidth(bool compact) const {
    int width = -(compact ? kCompactSpacing : kSpacing);
    for (int at = 0; at < layout()->count(); ++at) {
        const QWidget* widget = layout()->itemAt(at)->widget();
        int own = widget->sizeHint().width();
        if (widget == AlarmNext || widget == MarkNext) {
            own = static_cast<const CommandButton*>(widget)->widthAs(compact ? CommandButton::Kind::Icon
                                                                             : CommandButton::Kind::Small);
        }
        width += std::max(own, widget->minimumWidth()) + (compact ? kCompactSpacing : kSpacing);
    }
    return width;
}

} // namespace benthor::viewer
