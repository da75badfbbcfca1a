#include "platform/look/widgets/entryrow.h"

#include "platform/look/look.h"
#include "platform/look/style/paint.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>

namespace benthor::look {

EntryRow::EntryRow(const QString& iconName, const QString& captionText, Kind kind, QWidget* parent)
    : QWidget(parent)
    , kind_(kind)
    , layout_(new QHBoxLayout(this))
    , picture_(new ClickableLabel(this))
    , caption_(new ClickableLabel(captionText, this)) {
    const bool quiet = kind == Kind::Quiet;
    setFixedHeight(scaledRow(quiet ? 32 : 48));
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    layout_->setContentsMargins(spaceBase, 2, spaceSmall, 2);
    layout_->setSpacing(spaceTight);
    picture_->setIconName(iconName, quiet ? 20 : 24);
    // The caption is what the keyboard reaches; the picture beside it would only be a second stop for the
    // same act.
    picture_->setFocusPolicy(Qt::NoFocus);
    picture_->setAccessibleName(captionText.trimmed());
    picture_->setFixedWidth(scaledRow(32));
    caption_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    picture_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    layout_->addWidget(picture_);
    layout_->addWidget(caption_, 1);
    setFocusProxy(caption_);
    joinIn(picture_);
    joinIn(caption_);
    setChosen(false);
}

void EntryRow::joinIn(ClickableLabel* label) {
    label->setHoverMark(false);
    label->setFocusMark(false);
    label->installEventFilter(this);
    connect(label, &ClickableLabel::clicked, this, &EntryRow::clicked);
}

void EntryRow::setNames(const QString& pictureName, const QString& captionName) {
    if (!pictureName.isEmpty()) {
        picture_->setObjectName(pictureName);
    }
    if (!captionName.isEmpty()) {
        caption_->setObjectName(captionName);
    }
}

ClickableLabel* EntryRow::addSign(const QString& objectName, const QString& iconName) {
    auto* sign = new ClickableLabel(this);
    sign->setObjectName(objectName);
    sign->setIconName(iconName, 18);
    sign->setFocusPolicy(Qt::NoFocus);
    layout_->addWidget(sign);
    joinIn(sign);
    sign->hide();
    return sign;
}

void EntryRow::setChosen(bool chosen) {
    chosen_ = chosen;
    const Ink ink = chosen ? Ink::Accent : (kind_ == Kind::Quiet ? Ink::Quiet : Ink::Text);
    picture_->setInk(ink);
    caption_->setInk(ink);
    caption_->setFont(chosen ? strong(body()) : body());
    update();
}

void EntryRow::setToldCaptionColour(const QColor& colour) {
    caption_->setToldColour(colour);
}

QSize EntryRow::sizeHint() const {
    return {std::max(QWidget::sizeHint().width(), scaled(180)), height()};
}

/// A chosen entry is written bold, and a sign may come and go.
int EntryRow::neededWidth() const {
    int width = picture_->width() + layout_->spacing() +
                QFontMetrics(strong(body())).size(Qt::TextShowMnemonic, caption_->text()).width();
    for (int at = 2; at < layout_->count(); ++at) {
        width += layout_->spacing() + layout_->itemAt(at)->widget()->sizeHint().width();
    }
    const QMargins around = layout_->contentsMargins();
    return around.left() + width + around.right();
}

bool EntryRow::event(QEvent* event) {
    if (event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverLeave) {
        update();
    }
    return QWidget::event(event);
}

bool EntryRow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
        update();
    }
    return QWidget::eventFilter(watched, event);
}

void EntryRow::mousePressEvent(QMouseEvent* event) {
    press_.press(event);
}

void EntryRow::mouseReleaseEvent(QMouseEvent* event) {
    if (press_.release(event, rect())) {
        emit clicked();
    }
}

void EntryRow::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    const Tokens& token = tokens();
    QPainter painter(this);
    const bool over = isEnabled() && underMouse();
    if (chosen_) {
        drawPanel(&painter, rect(), token.accentsoft, QColor());
        painter.save();
        painter.setClipRect(QRect(0, 0, 3, height()));
        drawPanel(&painter, rect(), token.accent, QColor());
        painter.restore();
    } else if (over) {
        drawPanel(&painter, rect(), token.sunken, QColor());
    }
    if (caption_->hasFocus()) {
        drawFocusRing(&painter, rect());
    }
}

} // namespace benthor::look
