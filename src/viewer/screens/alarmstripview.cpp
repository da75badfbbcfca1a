#include "viewer/screens/alarmstripview.h"

#include "platform/chart/chart.h"
#include "platform/look/access/access.h"
#include "platform/look/look.h"
#include "platform/screen/toldqcolor.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <ranges>
#include <utility>

namespace benthor::viewer {

namespace {

constexpr int kHeight = 30;
constexpr double kCorner = 4;
constexpr double kSign = 10;         ///< size of triangle and diamond, pixels
constexpr double kLeastContrast = 3; ///< of what is drawn

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

QRectF placeOf(const StripLine& line, const QRect& frame) {
    const double x = frame.left() + line.place * frame.width();
    return {x - line.width / 2.0, frame.top() + 1.0, static_cast<double>(line.width), frame.height() - 2.0};
}

void paintSign(QPainter& painter, const StripLine& line, const QRect& frame) {
    const double x = frame.left() + line.place * frame.width();
    const QColor colour = platform::toQColor(line.colour);
    const double top = frame.top() + 3;
    const QRectF stem(x - line.width / 2.0, top + kSign / 2, line.width,
                      frame.bottom() - 1 - top - kSign / 2);
    if (look::contrastRatio(colour, look::tokens().surface) < kLeastContrast) {
        painter.fillRect(stem.adjusted(-1, 0, 1, 0), Qt::white); // edged as the signs are
    }
    painter.fillRect(stem, colour);
    painter.setPen(QPen(Qt::white, 1));
    painter.setBrush(colour);
    painter.drawPath(signShape(line.sign).translated(x, top + kSign / 2));
}

/// Whether nothing but the cursor tells one strip from the other.
bool isCursorAlone(const std::vector<StripLine>& before, const std::vector<StripLine>& now) {
    const auto isSign = [](const StripLine& line) { return line.sign != StripSign::Cursor; };
    return std::ranges::equal(before | std::views::filter(isSign), now | std::views::filter(isSign));
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
    Strip old = std::exchange(strip_, std::move(strip));
    if (!isCursorAlone(old.lines, strip_.lines)) {
        signs_ = {};
        update();
        return;
    }
    for (const Strip* each : {&old, &strip_}) {
        for (const StripLine& line : each->lines) {
            if (line.sign == StripSign::Cursor) {
                update(placeOf(line, frame()).toAlignedRect().adjusted(-1, -1, 1, 1));
            }
        }
    }
}

QSize AlarmStripView::sizeHint() const {
    return {0, look::scaled(kHeight)};
}

QRect AlarmStripView::frame() const {
    return {chart_.plotLeft(), 0, chart_.plotWidth(), height()};
}

bool AlarmStripView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) {
        signs_ = {}; // they keep to the edges of the plot
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
    paintLayers(painter, frame, [&] { paintSigns(painter, frame); });
}

/// The cursor lies under the signs: an alarm at the selected sample stays to be seen.
void AlarmStripView::paintLayers(QPainter& painter, const QRect& frame,
                                 const std::function<void()>& signs) const {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath shape;
    shape.addRoundedRect(QRectF(frame).adjusted(0.5, 0.5, -0.5, -0.5), kCorner, kCorner);
    painter.fillPath(shape, look::tokens().surface);
    painter.setClipRect(frame);
    for (const StripLine& line : strip_.lines) {
        if (line.sign == StripSign::Cursor) {
            painter.fillRect(placeOf(line, frame), platform::toQColor(line.colour));
        }
    }
    signs();
    painter.setBrush(Qt::NoBrush);
    painter.setPen(look::tokens().edge);
    painter.drawPath(shape);
    painter.restore();
}

void AlarmStripView::paintSigns(QPainter& painter, const QRect& frame) const {
    for (const StripLine& line : strip_.lines) {
        if (line.sign != StripSign::Cursor) {
            paintSign(painter, line, frame);
        }
    }
}

/// The signs stand still while the cursor moves, so they are painted once for all its places.
void AlarmStripView::paintEvent(QPaintEvent*) {
    const double ratio = devicePixelRatioF();
    if (signs_.size() != size() * ratio) {
        signs_ = QPixmap(size() * ratio);
        signs_.setDevicePixelRatio(ratio);
        signs_.fill(Qt::transparent);
        QPainter painter(&signs_);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setClipRect(frame());
        paintSigns(painter, frame());
    }
    QPainter painter(this);
    paintLayers(painter, frame(), [&] { painter.drawPixmap(0, 0, signs_); });
}

} // namespace benthor::viewer
