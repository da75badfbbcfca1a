#include "platform/look/widgets/status.h"

#include "platform/look/look.h"
#include "platform/look/style/paint.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>

#include <algorithm>

namespace benthor::look {

StatusChip::StatusChip(QWidget* parent)
    : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setFont(strong(body()));
    setFixedChipHeight(40);
}

void StatusChip::setToldBackground(const QColor& colour) {
    told_ = colour;
    update();
}

void StatusChip::setIconName(const QString& name) {
    iconName_ = name;
    updateGeometry();
    update();
}

void StatusChip::setFixedChipHeight(int px) {
    height_ = scaled(px);
    setFixedHeight(height_);
}

void StatusChip::setWrapping() {
    setWordWrap(true);
    setMinimumHeight(height_);
    setMaximumHeight(QWIDGETSIZE_MAX);
}

QSize StatusChip::sizeHint() const {
    const int icon = iconName_.isEmpty() ? 0 : scaled(20) + spaceSmall;
    return {fontMetrics().horizontalAdvance(text()) + icon + 2 * spaceWide, height_};
}

QSize StatusChip::minimumSizeHint() const {
    return wordWrap() ? QSize(2 * spaceWide, height_) : sizeHint();
}

int StatusChip::heightForWidth(int width) const {
    if (!wordWrap()) {
        return height_;
    }
    constexpr int kAnyHeight = 10000;
    const QRect room = wordsRoom({0, 0, width, kAnyHeight});
    const int words = fontMetrics().boundingRect(room, Qt::AlignLeft | Qt::TextWordWrap, text()).height();
    return std::max(height_, words + 2 * spaceTight);
}

/// What is left for the words beside the icon.
QRect StatusChip::wordsRoom(const QRect& chip) const {
    const int margin = wordWrap() ? spaceBase : spaceWide;
    const int icon = iconName_.isEmpty() ? 0 : scaled(20) + spaceSmall;
    return chip.adjusted(margin + icon, 0, -margin, 0);
}

void StatusChip::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    const QColor fill = told_.isValid() ? told_ : tokens().sunken;
    drawPanel(&painter, rect(), fill, mixed(fill, readableOn(fill), 0.3));
    const QColor ink = readableOn(fill);
    const QRect room = wordsRoom(rect());
    if (!iconName_.isEmpty()) {
        const int side = scaled(20);
        const QRect sign(room.x() - spaceSmall - side, room.y(), side, room.height());
        drawIcon(&painter, iconName_, sign, side, ink);
    }
    painter.setPen(ink);
    painter.drawText(room,
                     Qt::AlignVCenter | Qt::AlignLeft | (wordWrap() ? Qt::TextWordWrap : Qt::TextSingleLine),
                     text());
}

LampDot::LampDot(QWidget* parent)
    : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setFont(heading());
}

void LampDot::setToldColour(const QColor& colour) {
    told_ = colour;
    update();
}

QSize LampDot::sizeHint() const {
    return {scaled(12) + spaceSmall + fontMetrics().horizontalAdvance(text()), fontMetrics().height()};
}

QSize LampDot::minimumSizeHint() const {
    return sizeHint();
}

void LampDot::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    const int side = scaled(12);
    const QRect room = contentsRect();
    const QRect lamp(room.x(), room.y() + (room.height() - side) / 2, side, side);
    const QColor fill = told_.isValid() ? told_ : tokens().sunken;
    drawPanel(&painter, lamp, fill, mixed(fill, tokens().text, 0.45), side / 2.0);
    painter.setPen(isEnabled() ? palette().color(foregroundRole()) : faintInk());
    painter.drawText(room.adjusted(side + spaceSmall, 0, 0, 0),
                     Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, text());
}

NoticeBand::NoticeBand(const QString& text, QWidget* parent)
    : QWidget(parent)
    , label_(new QLabel(text, this)) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(spaceBase + scaled(18) + spaceBase, spaceSmall, spaceBase, spaceSmall);
    layout->addWidget(label_);
    label_->setWordWrap(true);
    label_->setFont(strong(body()));
    setMinimumHeight(scaledRow(40));
    takeColours();
}

void NoticeBand::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) {
        takeColours();
    }
    QWidget::changeEvent(event);
}

void NoticeBand::takeColours() {
    QPalette colours = label_->palette();
    const QColor ink = calm_ ? tokens().text : tokens().notice;
    if (colours.color(QPalette::WindowText) != ink) {
        colours.setColor(QPalette::WindowText, ink);
        label_->setPalette(colours);
    }
}

void NoticeBand::setCalm(bool calm) {
    if (calm_ != calm) {
        calm_ = calm;
        takeColours();
        update();
    }
}

void NoticeBand::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    drawPanel(&painter, rect(), calm_ ? tokens().surface : tokens().noticesoft,
              calm_ ? tokens().line : QColor(), 4);
    const int side = scaled(18);
    drawIcon(&painter, calm_ ? QStringLiteral("search") : QStringLiteral("warning"),
             QRect(spaceBase, 0, side, height()), side, calm_ ? tokens().textquiet : tokens().notice);
}

} // namespace benthor::look
