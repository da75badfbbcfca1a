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
constexpr int kLines = 2; ///< a caption and its number
constexpr int kShortestName = 72;
constexpr int kNumberSize = 16;
constexpr int kSmallNumberSize = 13;

} // namespace

int NameLabel::shortestWidth() {
    return look::scaled(kShortestName);
}

void NameLabel::setNameSize(int px) {
    px_ = px;
    setNumberSize(px);
}

QSize NameLabel::minimumSizeHint() const {
    const QSize whole = NumberLabel::minimumSizeHint();
    return {std::min(whole.width(), shortestWidth()), whole.height()};
}

bool NameLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) {
        return NumberLabel::event(event);
    }
    const bool cut = sizeHint().width() > width();
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), cut ? text() : QString(), this);
    return true;
}

void NameLabel::paintEvent(QPaintEvent* event) {
    if (sizeHint().width() <= width()) {
        NumberLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    const QFontMetrics above(look::caption());
    const QFontMetrics below(look::big(px_));
    const int top = (height() - above.height() - 1 - below.height()) / 2;
    painter.setFont(look::caption());
    painter.setPen(look::tokens().textquiet);
    painter.drawText(0, top + above.ascent(), caption());
    painter.setFont(look::big(px_));
    painter.setPen(look::tokens().text);
    painter.drawText(0, top + above.height() + 1 + below.ascent(),
                     below.elidedText(text().trimmed(), Qt::ElideRight, width()));
}

SummaryStrip::SummaryStrip(QWidget* parent)
    : look::Pane(Qt::TopEdge, parent) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(look::spaceWide, look::spaceSmall, look::spaceWide, look::spaceSmall);
    row->setSpacing(look::spaceTight);
    for (size_t i = 0; i < kStripBoxes.size(); ++i) {
        const QString control = QLatin1String(kStripBoxes.at(i).name);
        look::NumberLabel* box = nullptr;
        if (control == QLatin1String("txtlocation")) {
            box = name_ = new NameLabel(kNumberSize, this);
        } else {
            box = new look::NumberLabel(kNumberSize, this);
        }
        box->setObjectName(control);
        box->setCaption(QLatin1String(kCaptions.at(i)));
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
    fit();
}

/// The width that all boxes need with numbers of that size, a long name shortened.
int SummaryStrip::widthWith(int px) const {
    look::NumberLabel probe(px);
    int width = 2 * look::spaceWide;
    for (const look::NumberLabel* box : boxes_) {
        probe.setCaption(box->caption());
        probe.setText(box->text());
        const int whole = probe.sizeHint().width();
        width += box == name_ ? std::min(whole, NameLabel::shortestWidth()) : whole;
        width += box == boxes_.front() ? 0 : 2 * look::spaceTight + 1;
    }
    return width;
}

QSize SummaryStrip::minimumSizeHint() const {
    return {widthWith(kSmallNumberSize), look::scaledRow(kHeight, kLines)};
}

void SummaryStrip::resizeEvent(QResizeEvent* event) {
    look::Pane::resizeEvent(event);
    fit();
}

void SummaryStrip::fit() {
    const int px = widthWith(kNumberSize) <= width() ? kNumberSize : kSmallNumberSize;
    for (look::NumberLabel* box : boxes_) {
        if (box != name_) {
            box->setNumberSize(px);
        }
    }
    name_->setNameSize(px);
}

} // namespace benthor::logbook
