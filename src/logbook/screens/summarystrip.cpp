#include "logbook/screens/summarystrip.h"

#include "logbook/divelist.h"
#include "platform/look/look.h"

#include <QHBoxLayout>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace benthor::logbook {

namespace {

constexpr std::array<const char*, kStripBoxes.size()> kCaptions{
    "Dive", "Duration", "MaxDepth", "Start", "Dive Name", "Usage", "Interval", "OTU", "Atmospheric"};
constexpr int kHeight = 60;
constexpr int kShortestName = 96;

} // namespace

QSize NameLabel::minimumSizeHint() const {
    const QSize whole = NumberLabel::minimumSizeHint();
    return {std::min(whole.width(), look::scaled(kShortestName)), whole.height()};
}

bool NameLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) {
        return NumberLabel::event(event);
    }
    const bool cut = sizeHint().width() > width();
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), cut ? text().toHtmlEscaped() : QString(),
                       this);
    return true;
}

void NameLabel::paintEvent(QPaintEvent* event) {
    if (sizeHint().width() <= width()) {
        NumberLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    const QFontMetrics above(look::caption());
    const QFontMetrics below(look::big(kNumberSize));
    const int top = (height() - above.height() - 1 - below.height()) / 2;
    painter.setFont(look::caption());
    painter.setPen(look::tokens().textquiet);
    painter.drawText(0, top + above.ascent(), caption());
    painter.setFont(look::big(kNumberSize));
    painter.setPen(look::tokens().text);
    painter.drawText(0, top + above.height() + 1 + below.ascent(),
                     below.elidedText(text().trimmed(), Qt::ElideRight, width()));
}

SummaryStrip::SummaryStrip(QWidget* parent)
    : look::Pane(Qt::TopEdge, parent) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(look::spaceWide, look::spaceSmall, look::spaceWide, look::spaceSmall);
    row->setSpacing(look::spaceSmall);
    setMinimumHeight(look::scaled(kHeight));
    for (size_t i = 0; i < kStripBoxes.size(); ++i) {
        const QString name = QLatin1String(kStripBoxes.at(i).name);
        look::NumberLabel* box = nullptr;
        if (name == QLatin1String("txtlocation")) {
            box = new NameLabel(this);
        } else {
            box = new look::NumberLabel(NameLabel::kNumberSize, this);
        }
        box->setObjectName(name);
        box->setCaption(QLatin1String(kCaptions.at(i)));
        box->setTextInteractionFlags(Qt::NoTextInteraction);
        if (i > 0) {
            row->addStretch(1);
            row->addWidget(new look::Rule(Qt::Vertical));
            row->addStretch(1);
        }
        row->addWidget(box);
        boxes_.push_back(box);
    }
}

void SummaryStrip::showCells(const QStringList& cells) {
    for (size_t i = 0; i < boxes_.size(); ++i) {
        boxes_[i]->setText(cells.value(kStripBoxes.at(i).displaycolumn));
    }
}

} // namespace benthor::logbook
