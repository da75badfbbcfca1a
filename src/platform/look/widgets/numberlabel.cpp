#include "platform/look/widgets/numberlabel.h"

#include "platform/look/look.h"
#include "platform/look/style/paint.h"

#include <QPainter>
#include <QRegularExpression>

namespace benthor::look {

namespace {

/// How a number and what stands behind it are drawn.
struct Faces {
    QFont number;
    QFont unit;
    int gap;
    QColor unitInk;

    /// Figures have nothing below their line; with only a little room there, numbers of different sizes that
    /// share a foot share a line too.
    int descent() const { return std::min(QFontMetrics(number).descent(), scaled(5)); }
};

Faces facesFor(int px) {
    return {big(px), px >= 28 ? body() : caption(), 3, tokens().textquiet};
}

QSize extent(const NumberAndUnit& parts, const Faces& faces) {
    const QFontMetrics number(faces.number);
    int width = number.horizontalAdvance(parts.number);
    if (!parts.unit.isEmpty()) {
        width += faces.gap + QFontMetrics(faces.unit).horizontalAdvance(parts.unit);
    }
    return {width, number.ascent() + faces.descent()};
}

/// Paints with the left end of the number at `at`, which lies on the baseline of both.
void paintParts(QPainter& painter, QPoint at, const NumberAndUnit& parts, const Faces& faces,
                const QColor& ink) {
    painter.setFont(faces.number);
    painter.setPen(ink);
    painter.drawText(at, parts.number);
    at.rx() += painter.fontMetrics().horizontalAdvance(parts.number) + faces.gap;
    painter.setFont(faces.unit);
    painter.setPen(faces.unitInk);
    painter.drawText(at, parts.unit);
}

int startOf(Qt::Alignment alignment, const QRect& room, int width) {
    if (alignment & Qt::AlignRight) {
        return room.right() + 1 - width;
    }
    return alignment & Qt::AlignHCenter ? room.x() + (room.width() - width) / 2 : room.x();
}

constexpr int totalPixels = 24;

struct Total {
    QString caption;
    NumberAndUnit value;
    Faces faces;

    int width() const {
        return std::max(QFontMetrics(look::caption()).horizontalAdvance(caption),
                        extent(value, faces).width());
    }
};

Total totalOf(const QString& caption, const QString& value) {
    static const QRegularExpression moment(QStringLiteral("^(\\S*/\\S*) (\\d+:[\\d:]+)$"));
    const QRegularExpressionMatch match = moment.match(value);
    if (!match.hasMatch()) {
        return {caption, splitNumberAndUnit(value), facesFor(totalPixels)};
    }
    // Of a date with its time the date is what one looks for.
    const Faces faces{big(totalPixels), numbers(16), spaceBase, tokens().text};
    return {caption, {match.captured(1), match.captured(2)}, faces};
}

QList<Total> totalsOf(const QString& text) {
    static const QRegularExpression lineEnd(QStringLiteral("\r\n|\r|\n"));
    const QStringList lines = text.split(lineEnd);
    QList<Total> totals;
    for (qsizetype i = 0; i < lines.size(); i += 2) {
        const QString caption = lines.at(i).trimmed();
        const QString value = lines.value(i + 1).trimmed();
        if (!caption.isEmpty() || !value.isEmpty()) {
            totals.append(totalOf(caption, value));
        }
    }
    return totals;
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
    , px_(px) {
    setTextFormat(Qt::PlainText);
}

void NumberLabel::setCaption(const QString& caption) {
    caption_ = caption;
    setAccessibleName(caption);
    updateGeometry();
    update();
}

void NumberLabel::setNumberSize(int px) {
    px_ = px;
    updateGeometry();
    update();
}

int NumberLabel::widthOf(const QString& text) const {
    return extent(splitNumberAndUnit(text), facesFor(px_)).width();
}

void NumberLabel::setStandIn(const NumberAndUnit& standIn) {
    if (standIn.number != standIn_.number || standIn.unit != standIn_.unit) {
        standIn_ = standIn;
        updateGeometry();
        update();
    }
}

NumberAndUnit NumberLabel::shown() const {
    return standIn_.number.isEmpty() ? splitNumberAndUnit(text()) : standIn_;
}

void NumberLabel::setToldColour(const QColor& colour) {
    told_ = colour;
    update();
}

QSize NumberLabel::sizeHint() const {
    QSize size = extent(shown(), facesFor(px_));
    if (!caption_.isEmpty()) {
        const QFontMetrics above(look::caption());
        size.setWidth(std::max(size.width(), above.horizontalAdvance(caption_)));
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
    Faces faces = facesFor(px_);
    const NumberAndUnit parts = shown();
    const QSize size = extent(parts, faces);
    const QFontMetrics above(look::caption());
    const int captionHeight = caption_.isEmpty() ? 0 : above.height() + 1;
    const int spare = std::max(0, room.height() - size.height() - captionHeight);
    int captionTop = room.y();
    int foot = room.y() + captionHeight + size.height();
    if (alignment() & Qt::AlignBottom) {
        captionTop += spare;
        foot += spare;
    } else if (!(alignment() & Qt::AlignTop)) {
        // Beside a taller neighbour captions share their line above and numbers theirs below.
        foot += caption_.isEmpty() ? spare / 2 : spare;
    }
    faces.unitInk = isEnabled() ? tokens().textquiet : faintInk();
    if (!caption_.isEmpty()) {
        painter.setFont(look::caption());
        painter.setPen(faces.unitInk);
        const int left = startOf(alignment(), room, above.horizontalAdvance(caption_));
        painter.drawText(left, captionTop + above.ascent(), caption_);
    }
    const QColor ink =
        !isEnabled() ? faintInk() : (told_.isValid() ? told_ : palette().color(foregroundRole()));
    const QPoint at(startOf(alignment(), room, size.width()), foot - faces.descent());
    paintParts(painter, at, parts, faces, ink);
}

TotalsLabel::TotalsLabel(QWidget* parent)
    : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
}

bool TotalsLabel::isPlain() const {
    return !text().isEmpty() && !text().contains(QLatin1Char('\n')) && !text().contains(QLatin1Char('\r'));
}

int TotalsLabel::heightForWidth(int width) const {
    return isPlain() ? QLabel::heightForWidth(width) : sizeHint().height();
}

QSize TotalsLabel::sizeHint() const {
    if (isPlain()) {
        return QLabel::sizeHint();
    }
    int width = 0;
    for (const Total& total : totalsOf(text())) {
        width += total.width() + 2 * spaceRoom;
    }
    const int height = QFontMetrics(caption()).height() + QFontMetrics(big(totalPixels)).height() + spaceWide;
    return {width, height};
}

QSize TotalsLabel::minimumSizeHint() const {
    return isPlain() ? QLabel::minimumSizeHint() : sizeHint();
}

void TotalsLabel::paintEvent(QPaintEvent* event) {
    if (isPlain()) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    const QRect room = contentsRect();
    const QFontMetrics small(caption());
    const QFontMetrics large(big(totalPixels));
    const int top = room.y() + (room.height() - small.height() - large.height()) / 2;
    int left = room.x();
    for (const Total& total : totalsOf(text())) {
        if (left > room.x()) {
            painter.fillRect(QRect(left, room.y(), 1, room.height()), tokens().line);
            left += spaceRoom;
        }
        painter.setFont(caption());
        painter.setPen(tokens().textquiet);
        painter.drawText(left, top + small.ascent(), total.caption);
        paintParts(painter, QPoint(left, top + small.height() + large.ascent()), total.value, total.faces,
                   tokens().text);
        left += total.width() + spaceRoom;
    }
}

} // namespace benthor::look
