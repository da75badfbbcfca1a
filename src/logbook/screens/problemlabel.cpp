#include "logbook/screens/problemlabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace benthor::logbook {

namespace {
constexpr int kMostTipLines = 40;
}

ProblemLabel::ProblemLabel(QWidget* parent)
    : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

QStringList ProblemLabel::messages() const {
    return text().split(QLatin1Char('\r'), Qt::SkipEmptyParts);
}

QStringList ProblemLabel::lines() const {
    QStringList lines = messages();
    if (lines.size() <= mostLines) {
        return lines;
    }
    const qsizetype more = lines.size() - (mostLines - 1);
    lines.resize(mostLines - 1);
    return lines << QStringLiteral("and %1 more").arg(more);
}

QSize ProblemLabel::sizeHint() const {
    int width = 0;
    const QStringList shown = lines();
    for (const QString& line : shown) {
        width = std::max(width, fontMetrics().horizontalAdvance(line));
    }
    return {width, static_cast<int>(std::max<qsizetype>(1, shown.size())) * fontMetrics().lineSpacing()};
}

QSize ProblemLabel::minimumSizeHint() const {
    return {0, sizeHint().height()};
}

bool ProblemLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) {
        return QLabel::event(event);
    }
    QStringList all = messages();
    const bool cut = all.size() > mostLines || sizeHint().width() > width();
    all.resize(std::min<qsizetype>(all.size(), kMostTipLines));
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                       cut ? all.join(QLatin1Char('\n')) : QString(), this);
    return true;
}

void ProblemLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    int baseline = fontMetrics().ascent();
    for (const QString& line : lines()) {
        painter.drawText(0, baseline, fontMetrics().elidedText(line, Qt::ElideRight, width()));
        baseline += fontMetrics().lineSpacing();
    }
}

} // namespace benthor::logbook
