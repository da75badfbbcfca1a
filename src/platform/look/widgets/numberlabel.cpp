#include "platform/look/widgets/numberlabel.h"

#include "platform/look/look.h"
#include "platform/look/style/paint.h"

#include <QPainter>
#include <QRegularExpression>

namespace benthor::look {

namespace {

constexpr int gapBeforeUnit = 3;

/// Fonts of one number and the unit behind it.
struct Faces {
    QFont number;
    QFont unit;
};

Faces facesFor(int px) {
    return {big(px), px >= 28 ? body() : caption()};
}

QSize extent(const NumberAndUnit& parts, const Faces& faces) {
    const QFontMetrics number(faces.number);
    int width = number.horizontalAdvance(parts.number);
    if (!parts.unit.isEmpty()) {
        width += gapBeforeUnit + QFontMetrics(faces.unit).horizontalAdvance(parts.unit);
    }
    return {width, number.height()};
}

/// Paints with the left end of the number at `at`, which lies on the baseline of both.
void paintParts(QPainter& painter, QPoint at, const NumberAndUnit& parts, const Faces& faces,
                const QColor& ink, const QColor& unitInk) {
    painter.setFont(faces.number);
    painter.setPen(ink);
    painter.drawText(at, parts.number);
    at.rx() += painter.fontMetrics().horizontalAdvance(parts.number) + gapBeforeUnit;
    painter.setFont(faces.unit);
    painter.setPen(unitInk);
    painter.drawText(at, parts.unit);
}

int startOf(Qt::Alignment alignment, const QRect& room, int width) {
    if (alignment & Qt::AlignRight) {
        return room.right() + 1 - width;
    }
    return alignment & Qt::AlignHCenter ? room.x() + (room.width() - width) / 2 : room.x();
}

struct Total {
    QString caption;
    NumberAndUnit value;
};

QList<Total> totalsOf(const QString& text) {
    static const QRegularExpression lineEnd(QStringLiteral("\r\n|\r|\n"));
    static const QRegularExpression moment(QStringLiteral("^(\\S*/\\S*) (\\d+:[\\d:]+)$"));
    const QStringList lines = text.split(lineEnd);
    QList<Total> totals;
    for (qsizetype i = 0; i < lines.size(); i += 2) {
        const QString value = lines.value(i + 1).trimmed();
        const QRegularExpressionMatch match = moment.match(value);
        // Of a date with its time the date is what one looks for.
        totals.append({lines.at(i).trimmed(), match.hasMatch()
                                                  ? NumberAndUnit{match.captured(1), match.captured(2)}
                                                  : splitNumberAndUnit(value)});
    }
    while (!totals.isEmpty() && totals.last().caption.isEmpty() && totals.last().value.number.isEmpty()) {
        totals.removeLast();
    }
    return totals;
}

constexpr int totalPixels = 24;

int totalWidth(const Total& total) {
    return std::max(QFontMetrics(caption()).horizontalAdvance(total.caption),
                    extent(total.value, facesFor(totalPixels)).width());
}

} // namespace

NumberAndUnit splitNumberAndUnit(const QString& text) {
    // Number, then letters at once, or a blank and words that begin with a letter.
    static const QRegularExpression form(
        QStringLiteral("^([\\^+-]?(?:\\d+(?:[.,:]\\d+)*|[.,]\\d+)\\.?)"
                       "(?:([%\\x{b0}]|[%\\x{b0}]?[\\p{L}/]+[\\x{b2}\\x{b3}]?)|\\s+([\\p{L}%\\x{b0}].*))$"));
    const QString trimmed = text.trimmed();
    const QRegularExpressionMatch match = form.match(trimmed);
    if (!match.hasMatch()) {
        return {trimmed, {}};
    }
    return {match.captured(1), match.captured(2) + match.captured(3)};
}

NumberLabel::NumberLabel(int px, QWidget* parent)
    : QLabel(parent)
    , m_px(px) {
    setTextFormat(Qt::PlainText);
}

void NumberLabel::setCaption(const QString& caption) {
    m_caption = caption;
    setAccessibleDescription(caption);
    updateGeometry();
    update();
}

void NumberLabel::setNumberSize(int px) {
    m_px = px;
    updateGeometry();
    update();
}

void NumberLabel::setToldColour(const QColor& colour) {
    m_told = colour;
    update();
}

QSize NumberLabel::sizeHint() const {
    QSize size = extent(splitNumberAndUnit(text()), facesFor(m_px));
    if (!m_caption.isEmpty()) {
        const QFontMetrics above(look::caption());
        size.setWidth(std::max(size.width(), above.horizontalAdvance(m_caption)));
        size.rheight() += above.height() + 1;
    }
    const QMargins margins = contentsMargins();
    return size + QSize(margins.left() + margins.right(), margins.top() + margins.bottom());
}

QSize NumberLabel::minimumSizeHint() const {
    return sizeHint();
}

void NumberLabel::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    const QRect room = contentsRect();
    const Faces faces = facesFor(m_px);
    const NumberAndUnit parts = splitNumberAndUnit(text());
    const QSize size = extent(parts, faces);
    const QFontMetrics above(look::caption());
    const int captionHeight = m_caption.isEmpty() ? 0 : above.height() + 1;
    int top = room.y();
    if (!(alignment() & Qt::AlignTop)) {
        const int spare = room.height() - size.height() - captionHeight;
        top += alignment() & Qt::AlignBottom ? spare : spare / 2;
    }
    const QColor quiet = isEnabled() ? tokens().textquiet : faintInk();
    if (!m_caption.isEmpty()) {
        painter.setFont(look::caption());
        painter.setPen(quiet);
        painter.drawText(startOf(alignment(), room, above.horizontalAdvance(m_caption)), top + above.ascent(),
                         m_caption);
    }
    const QColor ink =
        !isEnabled() ? faintInk() : (m_told.isValid() ? m_told : palette().color(foregroundRole()));
    const QPoint at(startOf(alignment(), room, size.width()),
                    top + captionHeight + QFontMetrics(faces.number).ascent());
    paintParts(painter, at, parts, faces, ink, quiet);
}

TotalsLabel::TotalsLabel(QWidget* parent)
    : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

QSize TotalsLabel::sizeHint() const {
    int width = 0;
    for (const Total& total : totalsOf(text())) {
        width += totalWidth(total) + 2 * spaceRoom;
    }
    const int height = QFontMetrics(caption()).height() + QFontMetrics(big(totalPixels)).height() + spaceWide;
    return {width, height};
}

QSize TotalsLabel::minimumSizeHint() const {
    return sizeHint();
}

void TotalsLabel::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    const QRect room = contentsRect();
    const Faces faces = facesFor(totalPixels);
    const QFontMetrics small(caption());
    const QFontMetrics large(faces.number);
    const int top = room.y() + (room.height() - small.height() - large.height()) / 2;
    int left = room.x();
    bool first = true;
    for (const Total& total : totalsOf(text())) {
        if (!first) {
            painter.fillRect(QRect(left, room.y(), 1, room.height()), tokens().line);
            left += spaceRoom;
        }
        first = false;
        painter.setFont(caption());
        painter.setPen(tokens().textquiet);
        painter.drawText(left, top + small.ascent(), total.caption);
        paintParts(painter, QPoint(left, top + small.height() + large.ascent()), total.value, faces,
                   tokens().text, tokens().textquiet);
        left += totalWidth(total) + spaceRoom;
    }
}

} // namespace benthor::look
