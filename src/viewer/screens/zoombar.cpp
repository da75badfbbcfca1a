#include "viewer/screens/zoombar.h"

#include "platform/look/look.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/commandbutton.h"

#include <QAction>
#include <QHBoxLayout>
#include <QPushButton>
#include <algorithm>

namespace benthor::viewer {

namespace {
constexpr int kPictureSize = 28;
} // namespace

ZoomBar::ZoomBar(QAction* spread, QWidget* parent)
    : QWidget(parent)
    , row_(new QHBoxLayout(this)) {
    row_->setContentsMargins({});
    row_->setSpacing(2);

    Picture6 =
        addPicture("Picture6", "zoom-in", QStringLiteral("Shows one tenth of the dive"), ZoomButton::Zoom);
    Picture7 = addPicture("Picture7", "zoom-out", QStringLiteral("Shows the whole dive"), ZoomButton::Zoom);
    Command2[0] = addCommand(ZoomButton::Zoom, QStringLiteral("Zoom 1"),
                             QStringLiteral("Changes between the whole dive and one tenth of it"));
    Picture12 =
        addPicture("Picture12", "chevron-left", QStringLiteral("One tenth back"), ZoomButton::PanBack);
    Command2[1] = addCommand(ZoomButton::PanBack, QStringLiteral("pan <"), QStringLiteral("One tenth back"));
    Command2[2] = addCommand(ZoomButton::PanOn, QStringLiteral("pan >"), QStringLiteral("One tenth on"));
    Picture13 = addPicture("Picture13", "chevron-right", QStringLiteral("One tenth on"), ZoomButton::PanOn);
    auto* grid = new look::CommandButton(QStringLiteral("Data grid"), QStringLiteral("sheet"),
                                         look::CommandButton::Kind::Icon);
    grid->setNames("btnSpread", "", "");
    grid->setCheckable(true);
    grid->setChecked(spread->isChecked());
    connect(grid, &QPushButton::clicked, spread, &QAction::trigger);
    connect(spread, &QAction::toggled, grid, &QPushButton::setChecked);
    row_->addWidget(grid);
    more_ = new look::ClickableLabel;
    more_->setObjectName(QStringLiteral("btnMore"));
    more_->setIconName(QStringLiteral("more"), 20);
    more_->setFixedSize(look::scaled(kPictureSize), look::scaled(kPictureSize));
    more_->setToolTip(QStringLiteral("More"));
    more_->setAccessibleName(more_->toolTip());
    row_->addWidget(more_);
    showState({});
}

look::ClickableLabel* ZoomBar::addPicture(const char* name, const char* iconName, const QString& tip,
                                          ZoomButton button) {
    auto* picture = new look::ClickableLabel;
    picture->setObjectName(QLatin1String(name));
    picture->setIconName(QLatin1String(iconName));
    picture->setFixedSize(look::scaled(kPictureSize), look::scaled(kPictureSize));
    picture->setToolTip(tip);
    picture->setAccessibleName(tip);
    connect(picture, &look::ClickableLabel::clicked, this, [this, button] { emit pressed(button); });
    row_->addWidget(picture);
    return picture;
}

QPushButton* ZoomBar::addCommand(ZoomButton button, const QString& caption, const QString& tip) {
    auto* command = new QPushButton(caption);
    command->setObjectName(QStringLiteral("Command2(%1)").arg(static_cast<int>(button)));
    command->setToolTip(tip);
    connect(command, &QPushButton::clicked, this, [this, button] { emit pressed(button); });
    row_->addWidget(command);
    return command;
}

void ZoomBar::showState(const ZoomState& state) {
    Picture6->setEnabled(state.picture6);
    Picture7->setEnabled(state.picture7);
    Picture12->setEnabled(state.picture12);
    Picture13->setEnabled(state.picture13);
    Command2[1]->setEnabled(state.command2back);
    Command2[2]->setEnabled(state.command2on);
    if (!state.caption.isEmpty()) {
        Command2[0]->setText(state.caption);
    }
    panVisible_ = state.command2visible;
    updateVisible();
}

void ZoomBar::setCompact(bool compact) {
    if (compact != compact_) {
        compact_ = compact;
        updateVisible();
    }
}

int ZoomBar::neededWidth(bool compact) const {
    int width = -row_->spacing();
    for (int at = 0; at < row_->count(); ++at) {
        const QWidget* widget = row_->itemAt(at)->widget();
        const auto* command = std::find(Command2.begin(), Command2.end(), widget);
        const bool shown =
            command == Command2.end() || (!compact && (command == Command2.begin() || panVisible_));
        if (shown) {
            width += widget->sizeHint().width() + row_->spacing();
        }
    }
    return width;
}

void ZoomBar::updateVisible() {
    Command2[0]->setVisible(!compact_);
    Command2[1]->setVisible(!compact_ && panVisible_);
    Command2[2]->setVisible(!compact_ && panVisible_);
}

} // namespace benthor::viewer
