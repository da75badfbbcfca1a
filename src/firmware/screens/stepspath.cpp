#include "firmware/screens/stepspath.h"

#include "link/screens/showing.h"
#include "platform/look/access/access.h"
#include "platform/look/look.h"
#include "platform/look/style/paint.h"
#include "platform/look/widgets/status.h"
#include "platform/screen/toldqcolor.h"

#include <QGridLayout>
#include <QPainter>

namespace benthor::firmware {

using link::showText;
using link::showVisible;

namespace {

constexpr int kStepWidth = 110; // the least
constexpr int kStepRows = 3;    // title, lamp, reason

/// Covers the check sign of a step for as long as its lamp is not green: the step's number stands there then.
class Cover : public QWidget {
public:
    explicit Cover(int number)
        : number_(number) {
        setFixedSize(look::scaled(22), look::scaled(22));
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        Q_UNUSED(event)
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(look::tokens().edge, 1));
        painter.setBrush(look::tokens().surface);
        painter.drawEllipse(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
        painter.setPen(look::tokens().text);
        painter.setFont(look::strong(look::caption()));
        painter.drawText(rect(), Qt::AlignCenter, QString::number(number_));
    }

private:
    int number_;
};

/// The sign of a step that is done, with a cover of the same size over it.
class StepSign : public QWidget {
public:
    explicit StepSign(QWidget* cover) {
        setFixedSize(cover->size());
        cover->setParent(this);
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        Q_UNUSED(event)
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(look::tokens().accent);
        painter.drawEllipse(rect());
        const int size = look::scaled(14);
        look::drawIcon(&painter, QStringLiteral("check"), rect(), size, look::tokens().ontext);
    }
};

/// An icon that says what kind of thing stands beside it, in the theme's colour.
class Sign : public QWidget {
public:
    Sign(const char* icon, int size)
        : icon_(QLatin1String(icon))
        , size_(look::scaled(size)) {
        setFixedSize(size_, size_);
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        Q_UNUSED(event)
        QPainter painter(this);
        look::drawIcon(&painter, icon_, rect(), size_, look::tokens().textquiet);
    }

private:
    QString icon_;
    int size_;
};

} // namespace

StepsPath::StepsPath(QWidget* parent)
    : Pane(Qt::BottomEdge, parent)
    , grid_(new QGridLayout(this)) {
    grid_->setContentsMargins(look::spaceWide, look::spaceBase, look::spaceWide, look::spaceBase);
    grid_->setSpacing(look::spaceTight);
    struct Step {
        const char* title;
        const char* icon;
    };
    static constexpr std::array<Step, 5> steps{
        {{"Port", "plug"}, {"Link", "link"}, {"Prompt", "prompt"}, {"Ready", "send"}, {"Result", "flag"}}};
    for (size_t index = 0; index < steps.size(); ++index) {
        const int column = 2 * static_cast<int>(index);
        if (index > 0) {
            grid_->addWidget(new Sign("chevron-right", 16), 0, column - 1, kStepRows, 1);
        }
        grid_->setColumnMinimumWidth(column, look::scaled(kStepWidth));
        grid_->setColumnStretch(column, 1);
        buildStep(index, column, steps.at(index).title, steps.at(index).icon);
    }
}

/// Each row is as high as the step that needs most: the lamps stay all alike.
void StepsPath::buildStep(size_t index, int column, const char* title, const char* icon) {
    auto* head = new QHBoxLayout;
    head->setSpacing(look::spaceSmall);
    auto* cover = new Cover(static_cast<int>(index) + 1);
    cover->setObjectName(QStringLiteral("Shape1(%1)").arg(index));
    covers_.at(index) = cover;
    head->addWidget(new StepSign(cover));
    auto* words = new QLabel(QLatin1String(title));
    words->setFont(look::strong(look::body()));
    head->addWidget(words);
    head->addStretch(1);
    head->addWidget(new Sign(icon, 18));
    grid_->addLayout(head, 0, column);

    auto* chip = new look::StatusChip;
    chip->setObjectName(QStringLiteral("Label4(%1)").arg(index));
    chip->setAccessibleName(QLatin1String(title));
    chip->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Minimum);
    chip->setWrapping();
    chips_.at(index) = chip;
    grid_->addWidget(chip, 1, column);

    QLabel* reason = look::makeCaption(QString());
    reason->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    reason->setWordWrap(true);
    reason->setMinimumHeight(2 * QFontMetrics(look::caption()).lineSpacing());
    reason->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    reasons_.at(index) = reason;
    grid_->addWidget(reason, 2, column);
}

void StepsPath::sync(const std::array<Lamp, 5>& lamps, const std::array<QString, 5>& reasons) {
    for (size_t index = 0; index < lamps.size(); ++index) {
        const Lamp& lamp = lamps.at(index);
        look::StatusChip* chip = chips_.at(index);
        if (chip->text() != lamp.text) {
            chip->setText(lamp.text);
            look::announce(this, chip->accessibleName() + QStringLiteral(": ") + lamp.text);
        }
        const QColor colour = platform::toQColor(lamp.colour);
        if (chip->toldBackground() != colour) {
            chip->setToldBackground(colour);
        }
        if (chip->toolTip() != lamp.text) {
            chip->setToolTip(lamp.text);
        }
        showText(reasons_.at(index), reasons.at(index));
        showVisible(covers_.at(index), lamp.colour != platform::kToldGreen);
    }
}

} // namespace benthor::firmware
