#include "viewer/screens/legendstrip.h"

#include "platform/look/access/access.h"
#include "platform/look/look.h"

#include <QPainter>

namespace benthor::viewer {

namespace {

constexpr int kHeight = 18;
constexpr int kStroke = 18; ///< length of the stroke, pixels

QString label(const LegendEntry& entry) {
    return entry.unit.isEmpty() ? entry.name : entry.name + QStringLiteral(", ") + entry.unit;
}

int widthOf(const LegendEntry& entry) {
    return kStroke + look::spaceTight + QFontMetrics(look::caption()).horizontalAdvance(label(entry));
}

} // namespace

LegendStrip::LegendStrip(QWidget* parent)
    : QWidget(parent) {
    setFixedHeight(look::scaled(kHeight));
    setAccessibleName(QStringLiteral("Legend"));
    look::setReaderRole(this, QAccessible::Graphic);
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

void LegendStrip::setColours(const QColor& ground, const QColor& ink) {
    ground_ = ground;
    ink_ = ink;
    update();
}

QList<QList<LegendEntry>> LegendStrip::linesIn(int width) const {
    QList<QList<LegendEntry>> lines;
    int left = 0;
    for (const LegendEntry& entry : entries_) {
        const int needed = widthOf(entry);
        if (lines.isEmpty() || left + needed > width) {
            lines.append(QList<LegendEntry>());
            left = 0;
        }
        lines.last() += entry;
        left += needed + look::spaceWide;
    }
    return lines;
}

int LegendStrip::wholeHeight(int width) const {
    return static_cast<int>(linesIn(width).size()) * look::scaled(kHeight);
}

void LegendStrip::paintWhole(QPainter& painter, const QRect& frame, const QColor& ink) const {
    QRect line(frame.topLeft(), QSize(frame.width(), look::scaled(kHeight)));
    for (const QList<LegendEntry>& entries : linesIn(frame.width())) {
        paintLine(painter, line, entries, ink);
        line.translate(0, line.height());
    }
}

void LegendStrip::paintLine(QPainter& painter, const QRect& frame, const QList<LegendEntry>& entries,
                            const QColor& ink) const {
    painter.setFont(look::caption());
    painter.setRenderHint(QPainter::Antialiasing);
    const int middle = frame.center().y();
    int left = frame.left();
    for (const LegendEntry& entry : entries) {
        QPen pen = platform::seriesPen(entry.style);
        // On whole pixels, or the colour is lost in the ground.
        const int thick = std::max(2, qRound(entry.style.width));
        const double y = middle + thick % 2 / 2.0;
        pen.setWidth(thick);
        QList<qreal> dashes = entry.style.dashes; // in widths of the curve
        for (qreal& dash : dashes) {
            dash *= std::max(1.5, entry.style.width) / thick;
        }
        if (!dashes.isEmpty()) {
            pen.setDashPattern(dashes);
        }
        painter.setPen(pen);
        painter.drawLine(QLineF(left, y, left + kStroke, y));
        painter.setPen(ink);
        const int width = widthOf(entry);
        painter.drawText(QRect(left + kStroke + look::spaceTight, frame.top(), width, frame.height()),
                         Qt::AlignVCenter | Qt::TextSingleLine, label(entry));
        left += width + look::spaceWide;
    }
}

/// One line; what does not fit is counted at its end.
void LegendStrip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (ground_.isValid()) {
        painter.fillRect(rect(), ground_);
    }
    const QColor ink = ink_.isValid() ? ink_ : look::tokens().textquiet;
    const QRect frame = rect().adjusted(look::spaceBase, 0, -look::spaceBase, 0);
    const QString more = QStringLiteral("+%1");
    const int moreWidth =
        QFontMetrics(look::caption()).horizontalAdvance(more.arg(entries_.size())) + look::spaceSmall;
    QList<QList<LegendEntry>> lines = linesIn(frame.width());
    if (lines.size() > 1) {
        lines = linesIn(frame.width() - moreWidth);
    }
    const QList<LegendEntry> first = lines.value(0);
    paintLine(painter, frame, first, ink);
    if (first.size() < entries_.size()) {
        int left = frame.left();
        for (const LegendEntry& entry : first) {
            left += widthOf(entry) + look::spaceWide;
        }
        painter.drawText(QRect(left, frame.top(), moreWidth, frame.height()), Qt::AlignVCenter,
                         more.arg(entries_.size() - first.size()));
    }
}

} // namespace benthor::viewer
