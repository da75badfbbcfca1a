#include "platform/look/widgets/seriesbox.h"

#include "platform/look/look.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyle>

namespace benthor::look {

namespace {

constexpr int swatchWidth = 22;
constexpr int swatchHeight = 12;
constexpr qreal disabledOpacity = 0.4;
constexpr qreal disabledOpacityInContrast = 0.75; // what cannot be worked is still seen

void paintLines(QPainter& painter, const QRectF& room, const QList<Series>& series) {
    const qreal pitch = 4.5;
    qreal y = room.center().y() - pitch * static_cast<qreal>(series.size() - 1) / 2;
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (const Series one : series) {
        QPen pen = seriesStyle(one, theme()).pen();
        pen.setWidthF(std::max(pen.widthF(), series.size() > 1 ? 1.0 : 2.0));
        painter.setPen(pen);
        painter.drawLine(QPointF(room.left(), std::floor(y) + 0.5),
                         QPointF(room.right(), std::floor(y) + 0.5));
        y += pitch;
    }
}

void paintStep(QPainter& painter, const QRectF& room, Series series) {
    QPen pen = seriesStyle(series, theme()).pen();
    pen.setWidthF(1.5);
    pen.setJoinStyle(Qt::MiterJoin);
    painter.setPen(pen);
    const QRectF shape = room.adjusted(3, 1.75, -3, -1.75);
    const qreal one = shape.left() + shape.width() * 0.3;
    painter.drawPolyline(
        QPolygonF({shape.bottomLeft(), QPointF(one, shape.bottom()), QPointF(one, shape.top()),
                   shape.topRight(), QPointF(shape.right(), shape.center().y())}));
}

void paintRamp(QPainter& painter, const QRectF& room, const QList<Series>& series) {
    const auto count = static_cast<qreal>(series.size());
    for (qsizetype k = 0; k < series.size(); ++k) {
        const auto position = static_cast<qreal>(k);
        const QRectF field(room.left() + std::round(room.width() * position / count), room.top(), 0,
                           room.height());
        const qreal right = room.left() + std::round(room.width() * (position + 1) / count);
        painter.fillRect(field.adjusted(0, 0, right - field.left(), 0),
                         seriesStyle(series.at(k), theme()).colour);
    }
}

void paintDiamond(QPainter& painter, const QRectF& room) {
    const QPointF middle = room.center();
    const qreal half = 5.5;
    painter.setPen(QPen(Qt::white, 1));
    painter.setBrush(markcolour());
    painter.drawPolygon(QPolygonF({middle + QPointF(0, -half), middle + QPointF(half, 0),
                                   middle + QPointF(0, half), middle + QPointF(-half, 0)}));
}

} // namespace

SeriesBox::SeriesBox(const QString& text, QWidget* parent)
    : QCheckBox(text, parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void SeriesBox::setSwatch(Swatch swatch, const QList<Series>& series) {
    swatch_ = swatch;
    series_ = series;
    updateGeometry();
    update();
}

QSize SeriesBox::sizeHint() const {
    const int extra = swatch_ == Swatch::None ? 0 : scaled(swatchWidth) + spaceSmall;
    return QCheckBox::sizeHint() + QSize(extra, 0);
}

QSize SeriesBox::minimumSizeHint() const {
    return sizeHint();
}

void SeriesBox::paintEvent(QPaintEvent* event) {
    QCheckBox::paintEvent(event);
    if (swatch_ == Swatch::None) {
        return;
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled()) {
        painter.setOpacity(contrast() == Contrast::High ? disabledOpacityInContrast : disabledOpacity);
    }
    const QSize size(scaled(swatchWidth), scaled(swatchHeight));
    const QRect place(width() - size.width(), (height() - size.height()) / 2, size.width(), size.height());
    const QRectF room(QStyle::visualRect(layoutDirection(), rect(), place));
    if (swatch_ == Swatch::Diamond) {
        paintDiamond(painter, room);
    } else if (swatch_ == Swatch::Ramp) {
        paintRamp(painter, room, series_);
    } else if (swatch_ == Swatch::Step && !series_.isEmpty()) {
        paintStep(painter, room, series_.first());
    } else {
        paintLines(painter, room, series_);
    }
}

} // namespace benthor::look
