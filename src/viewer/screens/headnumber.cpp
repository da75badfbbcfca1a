#include "viewer/screens/headnumber.h"

#include "platform/look/access/access.h"
#include "platform/look/look.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace benthor::viewer {

namespace {
constexpr int kGapBeforeUnit = 3;
} // namespace

HeadNumber::HeadNumber(const QString& name, const QString& caption, const QString& unit, QWidget* parent)
    : QWidget(parent)
    , value_(new look::NumberLabel)
    , unit_(look::makeCaption(unit)) {
    value_->setObjectName(name);
    value_->setAccessibleName(caption);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(1);
    if (!caption.isEmpty()) {
        QLabel* above = look::makeCaption(caption);
        look::hideFromReaders(above); // the value is called by it
        column->addWidget(above);
    }
    look::hideFromReaders(unit_);
    look::setReaderUnit(value_, unit);
    auto* line = new QHBoxLayout;
    line->setSpacing(kGapBeforeUnit);
    line->addWidget(value_, 0, Qt::AlignBottom);
    line->addWidget(unit_, 1, Qt::AlignBottom);
    column->addLayout(line);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    unit_->hide();
    placeUnit();
}

void HeadNumber::setValue(const QString& text) {
    value_->setText(text);
    unit_->setVisible(!text.isEmpty() && !unit_->text().isEmpty());
}

void HeadNumber::setUnit(const QString& text) {
    unit_->setText(text);
    look::setReaderUnit(value_, text);
    unit_->setVisible(!text.isEmpty() && !value_->text().isEmpty());
}

void HeadNumber::setNumberSize(int px) {
    value_->setNumberSize(px);
    value_->setFont(look::big(px));
    placeUnit();
    reserve();
}

void HeadNumber::setWidest(const QString& value, const QString& unit) {
    widest_ = value;
    widestUnit_ = unit;
    reserve();
}

void HeadNumber::reserve() {
    const int unit = widestUnit_.isEmpty()
                         ? 0
                         : kGapBeforeUnit + QFontMetrics(unit_->font()).horizontalAdvance(widestUnit_);
    leastWidth_ = value_->widthOf(widest_) + unit;
    updateGeometry();
}

void HeadNumber::setToldColour(const QColor& colour) {
    value_->setToldColour(colour);
}

void HeadNumber::placeUnit() {
    // Both stand on one line although their fonts differ.
    const int drop = QFontMetrics(value_->font()).descent() - QFontMetrics(unit_->font()).descent();
    unit_->setContentsMargins(0, 0, 0, std::max(0, drop));
}

} // namespace benthor::viewer
