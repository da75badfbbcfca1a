#include "viewer/screens/gasstripview.h"

#include "platform/chart/chart.h"
#include "platform/look/access/access.h"
#include "platform/look/look.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>

namespace benthor::viewer {

namespace {
constexpr int kHeight = 22;
constexpr int kSeparatorWidth = 2;
constexpr double kCorner = 4;
} // namespace

GasStripView::GasStripView(const platform::Chart& chart, QWidget* parent)
    : QWidget(parent)
    , chart_(chart) {
    setFixedHeight(look::scaled(kHeight));
    setAccessibleName(QStringLiteral("Gases"));
    look::setReaderRole(this, QAccessible::Graphic);
}

void GasStripView::setStrip(GasStrip strip, platform::RowRange view) {
    strip_ = std::move(strip);
    view_ = view;
    setAccessibleDescription(strip_.text.simplified());
    update();
}

QSize GasStripView::sizeHint() const {
    return {0, look::scaled(kHeight)};
}

QRect GasStripView::frame() const {
    return {chart_.plotLeft(), 0, chart_.plotWidth(), height()};
}

int GasStripView::leftOf(const GasRun& run, const QRect& frame) const {
    // The first run begins with the strip, before the first row.
    const bool first = &run == &strip_.runs.front();
    const double share = first || view_.span() <= 0 ? 0 : (run.firstRow - view_.first) / view_.span();
    return frame.left() + qRound(share * frame.width());
}

const GasRun* GasStripView::runAt(int x) const {
    const GasRun* found = nullptr;
    for (const GasRun& run : strip_.runs) {
        if (leftOf(run, frame()) > x) {
            break;
        }
        found = &run;
    }
    return found;
}

bool GasStripView::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const GasRun* run = frame().contains(help->pos()) ? runAt(help->pos().x()) : nullptr;
        QToolTip::showText(help->globalPos(), run != nullptr ? run->name : QString(), this);
        return true;
    }
    return QWidget::event(event);
}

void GasStripView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && chart_.plotWidth() > 0) {
        emit clicked((event->position().x() - chart_.plotLeft()) / chart_.plotWidth());
    }
}

void GasStripView::paint(QPainter& painter, const QRect& frame) const {
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF border = QRectF(frame).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainterPath shape;
    shape.addRoundedRect(border, kCorner, kCorner);
    painter.fillPath(shape, look::tokens().surface);
    painter.setFont(look::strong(look::caption()));
    const QFontMetrics metrics = painter.fontMetrics();
    for (size_t i = 0; i < strip_.runs.size(); ++i) {
        const GasRun& run = strip_.runs[i];
        const int left = leftOf(run, frame);
        const int end = i + 1 < strip_.runs.size() ? leftOf(strip_.runs[i + 1], frame) : frame.right() + 1;
        if (i > 0) {
            painter.fillRect(QRect(left - kSeparatorWidth / 2, frame.top(), kSeparatorWidth, frame.height()),
                             look::tokens().text);
        }
        // A name that does not fit is told by the tool tip; half a name could be taken for another gas.
        const QRect room(left + look::spaceTight + 1, frame.top(), end - left - 2 * look::spaceTight + 2,
                         frame.height());
        if (metrics.horizontalAdvance(run.name) <= room.width()) {
            painter.setPen(look::tokens().text);
            painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter, run.name);
        }
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(look::tokens().edge);
    painter.drawPath(shape);
}

void GasStripView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paint(painter, frame());
}

} // namespace benthor::viewer
