#include "viewer/screens/maskpanel.h"

#include "platform/look/access/access.h"
#include "platform/look/look.h"

#include <QEvent>
#include <QPainter>

namespace benthor::viewer {

MaskPanel::MaskPanel(const QString& name, const QString& words, QWidget* instrument)
    : QWidget(instrument)
    , words_(words) {
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
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, words_);
}

} // namespace benthor::viewer
