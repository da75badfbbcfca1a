#include "guides/screens/guidecard.h"

#include "platform/look/icons.h"
#include "platform/look/look.h"
#include "platform/look/pictures.h"
#include "platform/look/widgets/card.h"
#include "platform/programfolder.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace benthor::guides {

namespace {
constexpr int kPictureWidth = 220;
constexpr int kSignSize = 128;
} // namespace

GuideCard::GuideCard(QWidget* parent)
    : QWidget(parent)
    , left_(new QVBoxLayout)
    , words_(new QVBoxLayout)
    , foot_(new QHBoxLayout) {
    auto* around = new QVBoxLayout(this);
    around->setContentsMargins(look::spaceBase, look::spaceBase, look::spaceBase, look::spaceBase);
    auto* card = new look::Card;
    around->addWidget(card);
    card->body()->setContentsMargins(0, 0, 0, 0);
    card->body()->setSpacing(0);

    auto* across = new QHBoxLayout;
    across->setContentsMargins(look::spaceRoom, look::spaceRoom, look::spaceRoom, look::spaceRoom);
    across->setSpacing(look::spaceRoom);
    across->addLayout(left_);
    words_->setSpacing(look::spaceSmall);
    across->addLayout(words_, 1);
    card->body()->addLayout(across, 1);

    card->body()->addWidget(new look::Rule);
    foot_->setContentsMargins(look::spaceRoom, look::spaceBase, look::spaceRoom, look::spaceBase);
    foot_->setSpacing(look::spaceSmall);
    card->body()->addLayout(foot_);
}

void GuideCard::setPicture(QLabel* picture) {
    picture->setAlignment(Qt::AlignCenter);
    picture->setFixedWidth(look::scaled(kPictureWidth));
    left_->addWidget(picture, 1);
}

void GuideCard::showPicture(QLabel* label, const QString& file) {
    const QImage picture = file.isEmpty() ? QImage() : QImage(platform::ProgramFolder::current().path(file));
    if (picture.isNull()) {
        const int side = look::scaled(kSignSize);
        label->setPixmap(look::applicationIcon().pixmap(QSize(side, side), label->devicePixelRatio()));
        return;
    }
    const int width = look::scaled(kPictureWidth);
    label->setPixmap(look::picturePixmap(picture, QSize(width, width), label->devicePixelRatio()));
}

} // namespace benthor::guides
