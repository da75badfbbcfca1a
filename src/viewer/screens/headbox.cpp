#include "viewer/screens/headbox.h"

#include "platform/look/look.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace benthor::viewer {

namespace {

constexpr int kInset = 2;       ///< of the text on either side, as a line of text has it of itself
constexpr int kCaret = 2;       ///< room for the caret behind the last character
constexpr int kLeastWidth = 24; ///< an empty box can still be clicked
constexpr int kMostWidth = 240; ///< whatever is typed, the head keeps its other boxes

} // namespace

HeadEdit::HeadEdit(const QString& name, QWidget* parent)
    : QLineEdit(parent) {
    setObjectName(name);
    setFrame(false);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(this, &QLineEdit::textChanged, this, [this] { updateGeometry(); });
}

QSize HeadEdit::sizeHint() const {
    const QFontMetrics metrics(font());
    const int width = metrics.horizontalAdvance(text()) + 2 * kInset + kCaret;
    // The unit stands close to the shortest number.
    return {text().isEmpty() ? look::scaled(kLeastWidth) : std::min(width, look::scaled(kMostWidth)),
            metrics.height()};
}

HeadBox::HeadBox(const QString& name, const QString& caption, const QString& unit, QWidget* parent)
    : QWidget(parent)
    , value_(new HeadEdit(name))
    , unit_(look::makeCaption(unit)) {
    value_->setAccessibleName(caption);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(1);
    QLabel* above = look::makeCaption(caption);
    above->setBuddy(value_);
    above->setIndent(kInset); // above the text, not above the edge of its box
    column->addWidget(above);
    auto* line = new QHBoxLayout;
    line->setSpacing(0);
    line->addWidget(value_, 0, Qt::AlignBottom);
    line->addWidget(unit_, 1, Qt::AlignBottom);
    column->addLayout(line);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(value_, &QLineEdit::textChanged, this, [this] { showUnit(); });
    unit_->hide();
}

void HeadBox::setValue(const QString& text) {
    value_->setText(text);
    value_->setCursorPosition(0);
}

void HeadBox::setUnit(const QString& text) {
    unit_->setText(text);
    value_->setAccessibleDescription(text);
    showUnit();
}

void HeadBox::setNumberSize(int px) {
    value_->setFont(look::big(px));
    value_->updateGeometry();
    // Both stand on one line although their fonts differ.
    const int drop = QFontMetrics(value_->font()).descent() - QFontMetrics(unit_->font()).descent();
    unit_->setContentsMargins(0, 0, 0, std::max(0, drop));
}

void HeadBox::showUnit() {
    unit_->setVisible(!value_->text().isEmpty() && !unit_->text().isEmpty());
}

} // namespace benthor::viewer
