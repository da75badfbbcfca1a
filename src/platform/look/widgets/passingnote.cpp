#include "platform/look/widgets/passingnote.h"

#include "platform/look/access/access.h"
#include "platform/look/look.h"
#include "platform/look/style/paint.h"

#include <QEvent>
#include <QPainter>
#include <QTimer>

namespace benthor::look {

namespace {

constexpr int kShownMilliseconds = 8000;

} // namespace

PassingNote::PassingNote(QWidget& window, const QString& text)
    : QLabel(text, &window) {
    setObjectName(QStringLiteral("passingnote"));
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setAlignment(Qt::AlignCenter);
    setContentsMargins(spaceWide, spaceSmall, spaceWide, spaceSmall);
    window.installEventFilter(this);
    QTimer::singleShot(kShownMilliseconds, this, &QObject::deleteLater);
    place();
    show();
    raise();
}

void PassingNote::tell(QWidget& window, const QString& text) {
    clear(window);
    new PassingNote(window, text); // the window's
    announce(&window, text);
}

void PassingNote::clear(QWidget& window) {
    delete window.findChild<PassingNote*>(QString(), Qt::FindDirectChildrenOnly);
}

void PassingNote::place() {
    const QSize room = parentWidget()->size();
    const int width = std::min(sizeHint().width(), room.width() - 2 * spaceRoom);
    const int height = std::max(heightForWidth(width), scaled(36));
    setGeometry((room.width() - width) / 2, room.height() - height - spaceRoom, width, height);
}

bool PassingNote::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parentWidget() && event->type() == QEvent::Resize) {
        place();
    }
    return QLabel::eventFilter(watched, event);
}

void PassingNote::mousePressEvent(QMouseEvent* event) {
    Q_UNUSED(event)
    deleteLater();
}

void PassingNote::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    drawPanel(&painter, rect(), tokens().surface, tokens().accent);
    painter.end();
    QLabel::paintEvent(event);
}

} // namespace benthor::look
