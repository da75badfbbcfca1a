#include "viewer/screens/maskpanel.h"

#include "platform/look/access/access.h"
#include "platform/look/look.h"
#include "platform/look/style/paint.h"

#include <QEvent>
#include <QPainter>

namespace benthor::viewer {

MaskPanel::MaskPanel(const QString& name, const QString& words, QWidget* instrument, const QString& caption)
    : QWidget(instrument)
    , words_(words)
    , caption_(caption) {
    setObjectName(name);
    setAccessibleName(words);
    look::setReaderRole(this, QAccessible::StaticText);
    look::coverForReaders(this);
    instrument->installEventFilter(this);
    raise();
}

bool MaskPanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize || event->type() == QEvent::Show) {
        setGeometry(parentWidget()->rect());
        raise();
    }
    return QWidget::eventFilter(watched, event);
}

void MaskPanel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), look::tokens().surface);
    painter.setFont(look::caption());
    painter.setPen(look::tokens().textquiet);
    if (caption_.isEmpty()) {
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, words_);
        return;
    }
    const QRect above(0, 0, width(), painter.fontMetrics().height());
    painter.setPen(isEnabled() ? look::tokens().textquiet : look::faintInk()); // as its neighbours
    painter.drawText(above, Qt::AlignLeft | Qt::AlignVCenter, caption_);
    painter.setPen(look::tokens().textquiet);
    painter.drawText(rect().adjusted(0, above.height(), 0, 0), Qt::AlignLeft | Qt::AlignVCenter, words_);
}

} // namespace benthor::viewer
