#include "link/screens/lamprow.h"

#include "platform/look/access/access.h"
#include "platform/look/look.h"
#include "platform/look/style/paint.h"
#include "platform/screen/toldqcolor.h"

#include <QHBoxLayout>
#include <QPainter>

namespace benthor::link {

namespace {

constexpr int kLampWidth = 16;
constexpr int kLeastLampWidth = 8; // with a large font
constexpr int kLampHeight = 14;
constexpr int kGap = 3;

} // namespace

Lamp::Lamp(QWidget* parent)
    : QWidget(parent) {
    setFixedHeight(look::scaled(kLampHeight));
    setMinimumWidth(look::scaled(kLeastLampWidth));
    setMaximumWidth(look::scaled(kLampWidth));
}

QSize Lamp::sizeHint() const {
    return {look::scaled(kLampWidth), look::scaled(kLampHeight)};
}

void Lamp::setToldBackground(const QColor& colour) {
    if (colour != told_) {
        told_ = colour;
        update();
    }
}

void Lamp::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    const QColor fill = told_.isValid() ? told_ : look::tokens().sunken;
    look::drawPanel(&painter, rect(), fill, look::mixed(fill, look::readableOn(fill), 0.4), 2);
}

LampRow::LampRow(QWidget* parent)
    : QWidget(parent) {
    setAccessibleName(QStringLiteral("Link activity"));
    look::setReaderRole(this, QAccessible::Graphic);
    setToolTip(QStringLiteral("Moves while something comes from the device or is awaited"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->setSpacing(kGap);
    for (size_t i = 0; i < lamps_.size(); ++i) {
        lamps_.at(i) = new Lamp;
        lamps_.at(i)->setObjectName(QStringLiteral("AFShape1(%1)").arg(i));
        look::hideFromReaders(lamps_.at(i)); // together they are one sign
        row->addWidget(lamps_.at(i));
    }
}

void LampRow::setColours(const std::array<platform::ToldColour, lamps>& colours) {
    for (size_t i = 0; i < lamps_.size(); ++i) {
        lamps_.at(i)->setToldBackground(platform::toQColor(colours.at(i)));
    }
}

} // namespace benthor::link
