#include "gas/screens/gasgraph.h"

#include "gas/gascalc.h"
#include "platform/look/look.h"
#include "platform/look/widgets/numberlabel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>

namespace benthor::gas {

namespace {

constexpr int kWhole = 2400; ///< height of the whole gas in the units of the bars
constexpr int kBarsWidth = 112;
constexpr int kBarsHeight = 132;
constexpr int kFirstStepper = 3;
constexpr QColor kOxygenBlue(0x00, 0x72, 0xB2);
constexpr QColor kHeliumBrown(0xB8, 0x87, 0x00);

} // namespace

/// Oxygen hangs from the head of the column, helium stands on its foot.
class GasGraph::Bars : public QLabel {
public:
    Bars() {
        setObjectName(QStringLiteral("lblgasgraph"));
        setAccessibleName(QStringLiteral("Gas in hand"));
        setFixedSize(look::scaled(kBarsWidth), look::scaled(kBarsHeight));
    }
    void setBars(const GasBars& bars) {
        bars_ = bars;
        setText(bars.label);
        update();
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        Q_UNUSED(event)
        const look::Tokens& token = look::tokens();
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const int width = this->width() * 30 / 112;
        const int gap = this->width() * 10 / 112;
        const auto bar = [&](int place, int top, int units, const QColor& colour) {
            const int height = std::clamp(units, 0, kWhole) * this->height() / kWhole;
            const QRectF box(place * (width + gap), top, width, height);
            painter.setPen(Qt::NoPen);
            painter.setBrush(colour);
            painter.drawRoundedRect(box, 2, 2);
        };
        bar(0, 0, bars_.oxygen, kOxygenBlue);
        painter.setPen(QPen(token.edge, 1));
        painter.setBrush(token.sunken);
        const QRectF column(width + gap + 0.5, 0.5, width - 1, height() - 1);
        painter.drawRoundedRect(column, 4, 4);
        const int top = heliumtop(0, kWhole, std::clamp(bars_.helium, 0, kWhole)) * height() / kWhole;
        bar(2, top, bars_.helium, kHeliumBrown);
        painter.setPen(token.text);
        painter.setFont(look::strong(look::body()));
        painter.drawText(column, Qt::AlignCenter, text());
    }

private:
    GasBars bars_;
};

GasGraph::GasGraph(QWidget* parent)
    : QWidget(parent)
    , bars_(new Bars) {
    auto* across = new QHBoxLayout(this);
    across->setContentsMargins(look::spaceWide, look::spaceBase, look::spaceWide, look::spaceBase);
    across->setSpacing(look::spaceRoom);
    across->addWidget(bars_, 0, Qt::AlignVCenter);
    auto* parts = new QVBoxLayout;
    parts->setSpacing(look::spaceSmall);
    parts->addStretch(1);
    parts->addWidget(buildPart(0, "O2"));
    parts->addWidget(buildPart(1, "He"));
    parts->addStretch(1);
    across->addLayout(parts, 1);
}

QWidget* GasGraph::buildPart(int index, const char* caption) {
    auto* part = new QWidget;
    auto* down = new QVBoxLayout(part);
    down->setContentsMargins({});
    down->setSpacing(look::spaceTight);
    auto* row = new QHBoxLayout;
    row->setSpacing(look::spaceSmall);
    auto* name = new QLabel(QLatin1String(caption));
    name->setFont(look::strong(look::body()));
    name->setMinimumWidth(look::scaled(22));
    row->addWidget(name);
    const auto stepper = [this, index, caption](const char* objectName, const char* icon, bool up) {
        auto* button = new QPushButton(look::icon(icon), QString());
        button->setObjectName(
            QStringLiteral("%1(%2)").arg(QLatin1String(objectName)).arg(kFirstStepper + index));
        button->setAccessibleName((up ? QStringLiteral("More ") : QStringLiteral("Less ")) +
                                  QLatin1String(caption));
        button->setAutoRepeat(true);
        button->setFixedWidth(look::scaled(30));
        steppers_.push_back(button);
        connect(button, &QPushButton::clicked, this,
                [this, index, up] { emit stepped(kFirstStepper + index, up); });
        return button;
    };
    auto* number = new look::NumberLabel(24);
    number->setAlignment(Qt::AlignCenter);
    number->setAccessibleName(QLatin1String(caption));
    numbers_[static_cast<size_t>(index)] = number;
    row->addWidget(stepper("Command4", "remove", false));
    row->addWidget(number, 1);
    row->addWidget(stepper("Command3", "add", true));
    down->addLayout(row);
    auto* slider = new QSlider(Qt::Horizontal);
    slider->setObjectName(QStringLiteral("Slider1(%1)").arg(index));
    slider->setAccessibleName(QStringLiteral("%1 per cent").arg(QLatin1String(caption)));
    slider->setRange(0, 100);
    connect(slider, &QSlider::valueChanged, this, [this, index](int value) { emit scrolled(index, value); });
    Slider1_[static_cast<size_t>(index)] = slider;
    down->addWidget(slider);
    return part;
}

void GasGraph::show(const GasPlan& plan) {
    const GasRow& gas = plan.rows[static_cast<size_t>(plan.currentgasrow)];
    bars_->setBars(plan.bars);
    const std::array<QString, 2> texts{gas.O2, gas.He};
    for (size_t i = 0; i < texts.size(); ++i) {
        numbers_[i]->setText(texts[i] + QLatin1Char('%'));
        const QSignalBlocker quiet(Slider1_[i]);
        Slider1_[i]->setValue(
            static_cast<int>(std::clamp<long long>(cellwhole(texts[i]).value_or(0), 0, 100)));
        Slider1_[i]->setEnabled(plan.currentgasrow > 0);
    }
    for (QPushButton* stepper : steppers_) {
        stepper->setEnabled(plan.currentgasrow > 0);
    }
}

} // namespace benthor::gas
