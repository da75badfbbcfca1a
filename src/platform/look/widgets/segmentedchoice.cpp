#include "platform/look/widgets/segmentedchoice.h"

#include "platform/look/look.h"
#include "platform/look/style/paint.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPainter>
#include <QPainterPath>

namespace benthor::look {

namespace {

class Segment : public QAbstractButton {
public:
    explicit Segment(const QString& text, QWidget* parent)
        : QAbstractButton(parent) {
        setText(text);
        setCheckable(true);
        setFocusPolicy(Qt::StrongFocus);
        setAttribute(Qt::WA_Hover);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    }

    QSize sizeHint() const override {
        const QFontMetrics metrics(strong(font()));
        return {metrics.size(Qt::TextShowMnemonic, text()).width() + scaled(24),
                scaledRow(32)}; // as high as a button
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        Q_UNUSED(event)
        const Tokens& token = tokens();
        QPainter painter(this);
        const QRect frame(-x(), -y(), parentWidget()->width(), parentWidget()->height());
        QPainterPath shape;
        shape.addRoundedRect(frame.adjusted(1, 1, -1, -1), radius - 1, radius - 1);
        painter.setRenderHint(QPainter::Antialiasing);
        const bool over = isEnabled() && underMouse();
        painter.save();
        painter.setClipRect(rect());
        painter.fillPath(shape, isChecked() ? token.accentsoft : (over ? token.sunken : token.surface));
        painter.restore();
        if (x() > 1) {
            painter.fillRect(QRect(0, 1, 1, height() - 2), isEnabled() ? token.edge : token.line);
        }
        if (hasFocus()) {
            drawFocusRing(&painter, rect().adjusted(x() > 1 ? 2 : 0, 0, 0, 0));
        }
        painter.setFont(isChecked() ? strong(font()) : font());
        painter.setPen(!isEnabled() ? faintInk() : (isChecked() ? token.accent : token.text));
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextShowMnemonic, text());
    }
};

} // namespace

SegmentedChoice::SegmentedChoice(QWidget* parent)
    : QWidget(parent)
    , layout_(new QHBoxLayout(this))
    , group_(new QButtonGroup(this)) {
    layout_->setContentsMargins(0, 0, 0, 0);
    layout_->setSpacing(0);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(group_, &QButtonGroup::idClicked, this, &SegmentedChoice::chosen);
}

QAbstractButton* SegmentedChoice::addChoice(const QString& text, int id) {
    auto* segment = new Segment(text, this);
    group_->addButton(segment, id);
    layout_->addWidget(segment);
    return segment;
}

QAbstractButton* SegmentedChoice::button(int id) const {
    return group_->button(id);
}

int SegmentedChoice::current() const {
    return group_->checkedId();
}

void SegmentedChoice::setCurrent(int id) {
    if (QAbstractButton* wanted = group_->button(id)) {
        wanted->setChecked(true);
    } else if (QAbstractButton* held = group_->checkedButton()) {
        // An exclusive group lets nobody out.
        group_->setExclusive(false);
        held->setChecked(false);
        group_->setExclusive(true);
    }
}

void SegmentedChoice::paintEvent(QPaintEvent* event) {
    Q_UNUSED(event)
    QPainter painter(this);
    drawPanel(&painter, rect(), tokens().surface, isEnabled() ? tokens().edge : tokens().line);
}

} // namespace benthor::look
