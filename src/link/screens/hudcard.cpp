#include "link/screens/hudcard.h"

#include "link/screens/hudscale.h"
#include "link/screens/showing.h"
#include "platform/look/look.h"
#include "platform/look/widgets/numberlabel.h"

#include <QHBoxLayout>

namespace benthor::link {

namespace {

struct Box {
    const char* caption;
    const char* words;
};
constexpr std::array<Box, 5> kBoxes{{{"HUD", "Brightest=8. Off=0"},
                                     {"LOW", "Value below which RED LED will be fixed on"},
                                     {"PreLow", "Value below which GREEN LED will be fixed on"},
                                     {"PreHigh", "Value above which GREEN LED will flash"},
                                     {"HIGH", "Value above which RED LED will flash"}}};
constexpr int kFirstText16 = 2;

std::optional<HudScale::Values> alarmValues(const Console& console) {
    HudScale::Values values{};
    for (size_t i = 0; i < values.size(); ++i) {
        bool numeric = false;
        values.at(i) = console.Text16.at(i + kFirstText16 + 1).toDouble(&numeric);
        if (!numeric) {
            return std::nullopt;
        }
    }
    return values;
}

} // namespace

HudCard::HudCard(QWidget* parent)
    : look::Card(parent)
    , scale_(new HudScale) {
    setObjectName(QStringLiteral("Frame4"));
    body()->setContentsMargins(20, look::spaceBase, 20, look::spaceBase);
    body()->setSpacing(look::spaceSmall);
    auto* head = new QHBoxLayout;
    head->addWidget(look::makeHeading(QStringLiteral("HUD and PO2 Alarm")));
    head->addStretch(1);
    head->addWidget(look::makeCaption(QStringLiteral("read from the device with the interval")));
    body()->addLayout(head);
    body()->addWidget(scale_);
    auto* numbers = new QHBoxLayout;
    numbers->setSpacing(look::spaceWide);
    for (int i = 0; i < static_cast<int>(kBoxes.size()); ++i) {
        numbers->addWidget(buildNumber(i), 1);
    }
    body()->addLayout(numbers);
}

QWidget* HudCard::buildNumber(int index) {
    const auto at = static_cast<size_t>(index);
    auto* column = new QWidget;
    auto* down = new QVBoxLayout(column);
    down->setContentsMargins({});
    down->setSpacing(2);
    auto* number = new look::NumberLabel(24);
    number->setObjectName(QStringLiteral("Text16(%1)").arg(index + kFirstText16));
    number->setCaption(index == 0 ? QLatin1String(kBoxes.at(at).caption)
                                  : QStringLiteral("%1, bar").arg(QLatin1String(kBoxes.at(at).caption)));
    number->setToolTip(QLatin1String(kBoxes.at(at).words));
    numbers_.at(at) = number;
    QLabel* words = look::makeCaption(QLatin1String(kBoxes.at(at).words));
    words->setWordWrap(true);
    down->addWidget(number);
    down->addWidget(words);
    down->addStretch(1);
    return column;
}

void HudCard::sync(const Console& console) {
    showVisible(this, console.Frame4Visible);
    for (size_t i = 0; i < numbers_.size(); ++i) {
        const QString& value = console.Text16.at(i + kFirstText16);
        showText(numbers_.at(i), value);
        numbers_.at(i)->setStandIn(value.isEmpty() ? look::NumberAndUnit{QStringLiteral("–"), {}}
                                                   : look::NumberAndUnit());
    }
    scale_->setValues(alarmValues(console));
}

} // namespace benthor::link
