#include "viewer/screens/legendstrip.h"

#include "platform/look/look.h"

#include <QPainter>

namespace benthor::viewer {

namespace {

constexpr int kHeight = 18;
constexpr int kStroke = 18; ///< length of the stroke, pixels

QString label(const LegendEntry& entry) {
    return entry.unit.isEmpty() ? entry.name : entry.name + QStringLiteral(", ") + entry.unit;
}

} // namespace

LegendStrip::LegendStrip(QWidget* parent)
    : QWidget(parent) {
    setFixedHeight(look::scaled(kHeight));
    setAccessibleName(QStringLiteral("Legend"));
}

void LegendStrip::setEntries(QList<LegendEntry> entries) {
    entries_ = std::move(entries);
    setToolTip(text());
    setAccessibleDescription(text());
    update();
}

QString LegendStrip::text() const {
    QStringList names;
    for (const LegendEntry& entry : entries_) {
        names << (entry.unit.isEmpty() ? entry.name : entry.name + QStringLiteral(" (") + entry.unit + u')');
    }
    return names.join(QStringLiteral(", "));
}

QSize LegendStrip::sizeHint() const {
    return {0, look::scaled(kHeight)};
}

void LegendStrip::paint(QPainter& painter, const QRect& frame) const {
    painter.setFont(look::caption());
    const QFontMetrics metrics = painter.fontMetrics();
    const int middle = frame.center().y();
    const QString more = QStringLiteral("+%1");
    const int moreWidth = metrics.horizontalAdvance(more.arg(entries_.size())) + look::spaceSmall;
    int left = frame.left();
    for (qsizetype at = 0; at < entries_.size(); ++at) {
        const LegendEntry& entry = entries_[at];
        const QString text = label(entry);
        const int width = kStroke + look::spaceTight + metrics.horizontalAdvance(text);
        const bool last = at + 1 == entries_.size();
        if (left + width + (last ? 0 : moreWidth) > frame.right()) {
            painter.setPen(look::tokens().textquiet);
            painter.drawText(QRect(left, frame.top(), moreWidth, frame.height()), Qt::AlignVCenter,
                             more.arg(entries_.size() - at));
            return;
        }
        painter.setRenderHint(QPainter::Antialiasing);
        QPen pen = platform::seriesPen(entry.style);
        pen.setWidthF(std::max(1.5, entry.style.width));
        painter.setPen(pen);
        painter.drawLine(left, middle, left + kStroke, middle);
        painter.setPen(look::tokens().textquiet);
        painter.drawText(QRect(left + kStroke + look::spaceTight, frame.top(), width, frame.height()),
                         Qt::AlignVCenter | Qt::TextSingleLine, text);
        left += width + look::spaceWide;
    }
}

void LegendStrip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paint(painter, rect().adjusted(look::spaceBase, 0, -look::spaceBase, 0));
}

} // namespace benthor::viewer
