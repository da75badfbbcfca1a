#include "platform/screen/emptyscreen.h"

#include "platform/look/look.h"
#include "platform/look/tokens.h"
#include "platform/look/widgets/card.h"

#include <QLabel>
#include <QVBoxLayout>

namespace benthor::platform {

EmptyScreen::EmptyScreen(const QString& name, const QString& title)
    : Screen(name) {
    auto* ground = new QWidget;
    auto* around = new QVBoxLayout(ground);
    around->setContentsMargins(look::spaceRoom, look::spaceRoom, look::spaceRoom, look::spaceRoom);
    auto* card = new look::Card;
    around->addWidget(card);
    content_ = card->body();
    content_->setContentsMargins(look::spaceRoom, look::spaceRoom, look::spaceRoom, look::spaceRoom);
    content_->setSpacing(look::spaceBase);
    title_ = look::makeHeading(QString(), card);
    content_->addWidget(title_, 0, Qt::AlignTop);
    content_->addStretch(1);
    setContents(ground);
    setMinimumSize(320, 200);
    setTitle(title);
}

void EmptyScreen::setTitle(const QString& title) {
    setWindowTitle(title);
    title_->setText(title);
}

} // namespace benthor::platform
