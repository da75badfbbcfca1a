#include "firmware/screens/blinkform.h"

#include "platform/look/look.h"
#include "platform/look/widgets/card.h"

#include <QHBoxLayout>
#include <QLabel>

namespace benthor::firmware {

BlinkForm::BlinkForm()
    : Screen(QStringLiteral("BlinkForm")) {
    setWindowTitle(QStringLiteral("Sending"));
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
    setAttribute(Qt::WA_ShowWithoutActivating);
    auto* card = new look::Card;
    card->setRaised(true);
    auto* across = new QHBoxLayout;
    across->setSpacing(look::spaceSmall);
    auto* sign = new QLabel;
    sign->setPixmap(look::icon("send").pixmap(20, 20));
    across->addWidget(sign);
    across->addWidget(look::makeHeading(QStringLiteral("Sending")));
    card->body()->addLayout(across);
    setContents(card);
}

QSize BlinkForm::firstSize() const {
    return contents()->sizeHint();
}

} // namespace benthor::firmware
