#include "platform/look/widgets/entryrow.h"

#include "platform/look/style/paint.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>

namespace benthor::look {

EntryRow::EntryRow(const QString& iconName, const QString& captionText, Kind kind, QWidget* parent)
    : QWidget(parent)
    , m_kind(kind)
    , m_layout(new QHBoxLayout(this))
    , m_picture(new ClickableLabel(this))
    , m_caption(new ClickableLabel(captionText, this)) {
    const bool quiet = kind == Kind::Quiet;
    setFixedHeight(scaled(quiet ? 32 : 48));
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_layout->setContentsMargins(spaceBase, 2, spaceSmall, 2);
    m_layout->setSpacing(spaceTight);
    m_picture->setIconName(iconName, quiet ? 20 : 24);
    // The caption is what the keyboard reaches; the picture beside it would only be a second stop for the
    // same act.
    m_picture->setFocusPolicy(Qt::NoFocus);
    m_picture->setAccessibleName(captionText.trimmed());
    m_picture->setFixedWidth(scaled(32));
    m_caption->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    m_picture->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    m_layout->addWidget(m_picture);
    m_layout->addWidget(m_caption, 1);
    setFocusProxy(m_caption);
    joinIn(m_picture);
    joinIn(m_caption);
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
        m_picture->setObjectName(pictureName);
    }
    if (!captionName.isEmpty()) {
        m_caption->setObjectName(captionName);
    }
}

ClickableLabel* EntryRow::addSign(const QString& objectName, const QString& iconName) {
    auto* sign = new ClickableLabel(this);
    sign->setObjectName(objectName);
    sign->setIconName(iconName, 18);
    sign->setFocusPolicy(Qt::NoFocus);
    m_layout->addWidget(sign);
    joinIn(sign);
    sign->hide();
    return sign;
}

void EntryRow::setChosen(bool chosen) {
    m_chosen = chosen;
    const Ink ink = chosen ? Ink::Accent : (m_kind == Kind::Quiet ? Ink::Quiet : Ink::Text);
    m_picture->setInk(ink);
    m_caption->setInk(ink);
    m_caption->setFont(chosen ? strong(body()) : body());
    update();
}

void EntryRow::setToldCaptionColour(const QColor& colour) {
    m_caption->setToldColour(colour);
}

QSize EntryRow::sizeHint() const {
    return {std::max(QWidget::sizeHint().width(), scaled(180)), height()};
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
    m_pressed = event->button() == Qt::LeftButton;
    event->setAccepted(m_pressed);
}

void EntryRow::mouseReleaseEvent(QMouseEvent* event) {
    const bool click =
        m_pressed && event->button() == Qt::LeftButton && rect().contains(event->position().toPoint());
    m_pressed = false;
    event->accept();
    if (click) {
        emit clicked();
    }
}

void EntryRow::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    const Tokens& token = tokens();
    QPainter painter(this);
    const bool over = isEnabled() && underMouse();
    if (m_chosen) {
        drawPanel(&painter, rect(), token.accentsoft, QColor());
        painter.save();
        painter.setClipRect(QRect(0, 0, 3, height()));
        drawPanel(&painter, rect(), token.accent, QColor());
        painter.restore();
    } else if (over) {
        drawPanel(&painter, rect(), token.sunken, QColor());
    }
    if (m_caption->hasFocus()) {
        drawFocusRing(&painter, rect());
    }
}

} // namespace benthor::look
