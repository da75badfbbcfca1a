#include "viewer/screens/timelabels.h"

#include "platform/chart/chart.h"
#include "platform/look/look.h"

#include <QEvent>
#include <QLabel>

namespace benthor::viewer {

namespace {
constexpr int kHeight = 20;
} // namespace

TimeLabels::TimeLabels(platform::Chart& chart, QWidget* parent)
    : QWidget(parent)
    , chart_(chart) {
    for (size_t i = 0; i < labels_.size(); ++i) {
        labels_[i] = look::makeCaption({}, this);
        labels_[i]->setObjectName(QStringLiteral("Text%1").arg(i + 1));
        labels_[i]->setFont(look::numbers(11));
        labels_[i]->setAlignment(Qt::AlignCenter);
    }
    setFixedHeight(look::scaled(kHeight));
    chart.installEventFilter(this);
}

void TimeLabels::setTexts(const std::array<QString, 5>& texts) {
    for (size_t i = 0; i < labels_.size(); ++i) {
        labels_[i]->setText(texts[i]);
    }
    place();
}

std::array<QString, 5> TimeLabels::texts() const {
    std::array<QString, 5> texts;
    for (size_t i = 0; i < texts.size(); ++i) {
        texts[i] = labels_[i]->text();
    }
    return texts;
}

void TimeLabels::setBackdrop(const QColor& colour) {
    for (QLabel* label : labels_) {
        label->setAutoFillBackground(colour.isValid());
        QPalette colours = palette();
        if (colour.isValid()) {
            colours.setColor(label->backgroundRole(), colour);
            colours.setColor(label->foregroundRole(), look::readableOn(colour));
        }
        label->setPalette(colours);
    }
}

QSize TimeLabels::sizeHint() const {
    return {0, look::scaled(kHeight)};
}

bool TimeLabels::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) {
        place();
    }
    return QWidget::eventFilter(watched, event);
}

void TimeLabels::resizeEvent(QResizeEvent*) {
    place();
}

void TimeLabels::place() {
    for (size_t i = 0; i < labels_.size(); ++i) {
        const int centre =
            chart_.plotLeft() + qRound(chart_.plotWidth() * static_cast<double>(i) / (labels_.size() - 1.0));
        const int width = labels_[i]->sizeHint().width();
        const int left = std::clamp(centre - width / 2, 0, std::max(0, this->width() - width));
        labels_[i]->setGeometry(left, 0, width, height());
    }
}

} // namespace benthor::viewer
