#include "platform/look/widgets/wholelabel.h"

#include <QPainter>
#include <QTextLayout>

namespace benthor::look {

namespace {

constexpr int kLeastWidth = 40;

} // namespace

WholeLabel::WholeLabel(QWidget* parent)
    : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

/// Empty lines at either end are no part of the message.
QString WholeLabel::shownText() const {
    QString shown = text();
    shown.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n');
    while (shown.startsWith(u'\n')) {
        shown.remove(0, 1);
    }
    while (shown.endsWith(u'\n')) {
        shown.chop(1);
    }
    return shown;
}

QStringList WholeLabel::linesAt(int width) const {
    QStringList lines;
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    for (const QString& line : shownText().split(u'\n')) {
        QTextLayout layout(line, font(), this);
        layout.setTextOption(option);
        layout.beginLayout();
        for (QTextLine part = layout.createLine(); part.isValid(); part = layout.createLine()) {
            part.setLineWidth(std::max(width, kLeastWidth));
            lines += line.mid(part.textStart(), part.textLength()).trimmed();
        }
        layout.endLayout();
        if (line.isEmpty()) {
            lines += QString();
        }
    }
    return lines;
}

int WholeLabel::heightForWidth(int width) const {
    const QMargins around = contentsMargins();
    const auto lines = linesAt(width - around.left() - around.right()).size();
    return static_cast<int>(lines) * fontMetrics().lineSpacing() + around.top() + around.bottom();
}

QSize WholeLabel::sizeHint() const {
    int width = 0;
    const QStringList lines = shownText().split(u'\n');
    for (const QString& line : lines) {
        width = std::max(width, fontMetrics().horizontalAdvance(line));
    }
    const QMargins around = contentsMargins();
    return {width + 1 + around.left() + around.right(),
            static_cast<int>(lines.size()) * fontMetrics().lineSpacing() + around.top() + around.bottom()};
}

QSize WholeLabel::minimumSizeHint() const {
    return {kLeastWidth, fontMetrics().lineSpacing()};
}

void WholeLabel::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, foregroundRole()));
    const QRect room = contentsRect();
    const QStringList lines = linesAt(room.width());
    const int spacing = fontMetrics().lineSpacing();
    const int whole = static_cast<int>(lines.size()) * spacing;
    int top = alignment() & Qt::AlignTop ? room.top() : room.top() + std::max(0, (room.height() - whole) / 2);
    for (const QString& line : lines) {
        painter.drawText(QRect(room.left(), top, room.width(), spacing),
                         static_cast<int>(alignment() & Qt::AlignHorizontal_Mask) | Qt::AlignVCenter |
                             Qt::TextSingleLine,
                         line);
        top += spacing;
    }
}

} // namespace benthor::look
