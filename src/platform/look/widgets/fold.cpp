#include "platform/look/widgets/fold.h"

#include "platform/look/access/access.h"
#include "platform/look/look.h"
#include "platform/look/style/paint.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>

namespace benthor::look {

class Fold::Header : public QAbstractButton {
public:
    Header(const QString& title, QWidget* parent)
        : QAbstractButton(parent) {
        setText(title);
        setFocusPolicy(Qt::StrongFocus);
        setCursor(Qt::PointingHandCursor);
        setAttribute(Qt::WA_Hover);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        setFont(strong(look::body()));
        look::setReaderOpen(this, false);
    }

    QSize sizeHint() const override {
        return {fontMetrics().size(Qt::TextShowMnemonic, text()).width() + scaled(40), scaled(32)};
    }

    void setOpen(bool open) {
        open_ = open;
        look::setReaderOpen(this, open);
        update();
    }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
            click();
            return;
        }
        QAbstractButton::keyPressEvent(event);
    }

    void paintEvent(QPaintEvent* event) override {
        Q_UNUSED(event)
        QPainter painter(this);
        const QColor ink = !isEnabled() ? faintInk() : (underMouse() ? tokens().accent : tokens().textquiet);
        painter.setPen(ink);
        const int side = scaled(18);
        painter.drawText(rect().adjusted(spaceTight, 0, -side - spaceSmall, 0),
                         Qt::AlignVCenter | Qt::AlignLeft | Qt::TextShowMnemonic, text());
        drawIcon(&painter, open_ ? QStringLiteral("chevron-up") : QStringLiteral("chevron-down"),
                 QRect(width() - side - spaceTight, 0, side, height()), side, ink);
        if (hasFocus()) {
            drawFocusRing(&painter, rect());
        }
    }

private:
    bool open_ = false;
};

Fold::Fold(const QString& title, QWidget* parent)
    : QWidget(parent)
    , header_(new Header(title, this))
    , content_(new QWidget(this))
    , body_(new QVBoxLayout(content_)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(header_);
    column->addWidget(content_);
    body_->setContentsMargins(0, spaceSmall, 0, 0);
    content_->hide();
    connect(header_, &QAbstractButton::clicked, this, [this] { setOpen(!open_); });
}

QWidget* Fold::header() const {
    return header_;
}

QString Fold::title() const {
    return header_->text();
}

void Fold::setOpen(bool open) {
    if (open == open_) {
        return;
    }
    open_ = open;
    header_->setOpen(open);
    content_->setVisible(open);
    emit toggled(open);
}

} // namespace benthor::look
