#include "viewer/screens/alarmstripview.h"

#include "platform/chart/chart.h"
#include "platform/look/access/access.h"
#include "platform/look/look.h"
#include "platform/screen/toldqcolor.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

namespace benthor::viewer {

namespace {

constexpr int kHeight = 30;
constexpr double kCorner = 4;
constexpr double kSign = 10; ///< size of triangle and diamond, pixels

QPainterPath signShape(StripSign sign) {
    constexpr double half = kSign / 2;
    QPainterPath path;
    if (sign == StripSign::Mark) {
        path.addPolygon(QPolygonF{{0, -half}, {half, 0}, {0, half}, {-half, 0}});
    } else {
        path.addPolygon(QPolygonF{{0, -half}, {half + 1, half}, {-half - 1, half}});
    }
    path.closeSubpath();
    return path;
}

void paintLine(QPainter& painter, const StripLine& line, const QRect& frame) {
    const double x = frame.left() + line.place * frame.width();
    const QColor colour = platform::toQColor(line.colour);
    if (line.sign == StripSign::Cursor) {
        painter.fillRect(QRectF(x - line.width / 2.0, frame.top() + 1, line.width, frame.height() - 2),
                         colour);
        return;
    }
    const double top = frame.top() + 3;
    painter.fillRect(
        QRectF(x - line.width / 2.0, top + kSign / 2, line.width, frame.bottom() - 1 - top - kSign / 2),
        colour);
    painter.setPen(QPen(Qt::white, 1));
    painter.setBrush(colour);
    painter.drawPath(signShape(line.sign).translated(x, top + kSign / 2));
}

} // namespace

AlarmStripView::AlarmStripView(platform::Chart& chart, QWidget* parent)
    : QWidget(parent)
    , chart_(chart) {
    setFixedHeight(look::scaled(kHeight));
    setAccessibleName(QStringLiteral("Alarms and marks"));
    look::setReaderRole(this, QAccessible::Graphic);
    setToolTip(QStringLiteral("Alarms and marks of the dive. A click goes to the sample there."));
    setCursor(Qt::PointingHandCursor);
    chart.installEventFilter(this);
}

void AlarmStripView::setStrip(Strip strip) {
    strip_ = std::move(strip);
    update();
}

QSize AlarmStripView::sizeHint() const {
    return {0, look::scaled(kHeight)};
}

QRect AlarmStripView::frame() const {
    return {chart_.plotLeft(), 0, chart_.plotWidth(), height()};
}

bool AlarmStripView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) {
        update();
    }
    return QWidget::eventFilter(watched, event);
}

void AlarmStripView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && chart_.plotWidth() > 0) {
        emit clicked((event->position().x() - chart_.plotLeft()) / chart_.plotWidth());
    }
}

void AlarmStripView::paint(QPainter& painter, const QRect& frame) const {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath shape;
    shape.addRoundedRect(QRectF(frame).adjusted(0.5, 0.5, -0.5, -0.5), kCorner, kCorner);
    painter.fillPath(shape, look::tokens().surface);
    painter.setClipRect(frame);
    // The cursor lies under the signs: an alarm at the selected sample stays to be seen.
    for (const bool signs : {false, true}) {
        for (const StripLine& line : strip_.lines) {
            if ((line.sign != StripSign::Cursor) == signs) {
                paintLine(painter, line, frame);
            }
        }
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(look::tokens().edge);
    painter.drawPath(shape);
    painter.restore();
}

void AlarmStripView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paint(painter, frame());
}

} // namespace benthor::viewer
