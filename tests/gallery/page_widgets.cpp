#include "pages.h"

#include "platform/look/look.h"
#include "platform/look/widgets/activitysweep.h"
#include "platform/look/widgets/card.h"
#include "platform/look/widgets/entryrow.h"
#include "platform/look/widgets/faultframe.h"
#include "platform/look/widgets/fold.h"
#include "platform/look/widgets/gauge.h"
#include "platform/look/widgets/numberlabel.h"
#include "platform/look/widgets/segmentedchoice.h"
#include "platform/look/widgets/seriesbox.h"
#include "platform/look/widgets/status.h"
#include "platform/look/widgets/toldbutton.h"

#include <QGridLayout>
#include <QLineEdit>
#include <QPainter>

namespace benthor::look {

namespace {

NumberLabel* number(const char* caption, const char* text, int px) {
    auto* label = new NumberLabel(px);
    label->setCaption(QLatin1String(caption));
    label->setText(QLatin1String(text));
    return label;
}

QWidget* seriesCard() {
    auto* card = new Card;
    card->body()->setSpacing(0);
    const auto add = [card](const char* text, SeriesBox::Swatch swatch, const QList<Series>& series,
                            bool enabled, bool on) {
        auto* box = new SeriesBox(QLatin1String(text));
        box->setSwatch(swatch, series);
        box->setEnabled(enabled);
        box->setChecked(on);
        card->body()->addWidget(box);
    };
    using Swatch = SeriesBox::Swatch;
    add("Depth", Swatch::Line, {Series::Depth}, true, true);
    add("GAS num", Swatch::Step, {Series::GasNumber}, true, false);
    add("Mark", Swatch::Diamond, {}, true, false);
    add("Mark", Swatch::Diamond, {}, false, false);
    add("Temperature", Swatch::Line, {Series::Temperature}, true, false);
    add("PO2", Swatch::Line, {Series::PO2}, true, true);
    add("PO2 cells", Swatch::Line, {Series::CellA, Series::CellB, Series::CellC}, true, true);
    add("Setpoint", Swatch::Line, {Series::Setpoint}, true, true);
    add("Ceiling", Swatch::Line, {Series::Ceiling}, true, true);
    add("Filter", Swatch::Line, {Series::Filter}, true, false);
    add("CO2", Swatch::Line, {Series::CO2}, false, false);
    add("Pamb", Swatch::None, {}, false, true);
    add("TPM", Swatch::Ramp,
        {Series::Tpm1, Series::Tpm2, Series::Tpm3, Series::Tpm4, Series::Tpm5, Series::Tpm6, Series::Tpm7,
         Series::Tpm8},
        true, false);
    add("Battery", Swatch::Line, {Series::Bat1, Series::Bat2}, true, false);
    add("High pressure", Swatch::Line, {Series::HPdil, Series::HPo2}, true, false);
    card->body()->addStretch();
    return card;
}

QWidget* panelCard() {
    auto* card = new Card;
    auto* grid = new QGridLayout;
    grid->setVerticalSpacing(spaceSmall);
    grid->addWidget(number("Depth", "21m ", 32), 0, 0);
    grid->addWidget(number("Time", "47min", 32), 0, 1);
    auto* gas = number("Gas", "NX50", 20);
    gas->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(gas, 0, 2);
    auto* po2 = number("PPO2", "1.30bar", 32);
    po2->setToldColour(seriesStyle(Series::PO2, theme()).colour);
    grid->addWidget(po2, 1, 0);
    grid->addWidget(number("Ceiling", " ^18m", 24), 1, 1);
    auto* stress = number("Tissue Stress", "85%", 24);
    stress->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(stress, 1, 2);
    card->body()->addLayout(grid);
    const std::pair<Series, quint32> gauges[] = {
        {Series::PO2, 0x3FF}, {Series::CellA, 0x7FF}, {Series::CellB, 0xFF}, {Series::CellC, 0x1FFF}};
    for (const auto& [series, mask] : gauges) {
        auto* gauge = new Gauge;
        gauge->setSeries(series);
        gauge->setLit(mask);
        card->body()->addWidget(gauge);
    }
    auto* stressGauge = new Gauge;
    stressGauge->setSeries(Series::Ceiling);
    stressGauge->setLimit(0);
    stressGauge->setLit(0x7FF);
    card->body()->addWidget(stressGauge);
    auto* totals = new TotalsLabel;
    totals->setText(QStringLiteral(
        "System has a total of : \r\n147 dives\r\nYour last dive was on : \r\n14/09/2019 10:42:17"));
    card->body()->addWidget(totals);
    card->body()->addStretch();
    return card;
}

QWidget* statesCard() {
    auto* card = new Card;
    auto* row = new QHBoxLayout;
    const std::pair<const char*, QColor> states[] = {{"Connected", QColor(0, 255, 0)},
                                                     {"Command Sent..", QColor(0, 0, 255)},
                                                     {"Searching", QColor(255, 255, 0)}};
    for (const auto& [words, colour] : states) {
        auto* chip = new StatusChip;
        chip->setText(QLatin1String(words));
        chip->setToldBackground(colour);
        chip->setIconName(QStringLiteral("check"));
        row->addWidget(chip);
    }
    card->body()->addLayout(row);
    auto* lamps = new QHBoxLayout;
    for (const auto& [words, colour] : states) {
        auto* lamp = new LampDot;
        lamp->setText(QLatin1String(words));
        lamp->setToldColour(colour);
        lamps->addWidget(lamp);
    }
    card->body()->addLayout(lamps);
    auto* buttons = new QHBoxLayout;
    for (const bool enabled : {true, false}) {
        auto* button = new ToldButton(QStringLiteral("import dives"));
        button->setIcon(icon("importfile"));
        button->setToldBackground(enabled ? Qt::green : Qt::red);
        button->setEnabled(enabled);
        buttons->addWidget(button);
    }
    card->body()->addLayout(buttons);
    auto* sweep = new ActivitySweep;
    for (int k = 0; k < 9; ++k) {
        sweep->advance();
    }
    card->body()->addWidget(sweep);
    card->body()->addWidget(new NoticeBand(QStringLiteral("DO NOT HIT OTHER KEYS OR TERMINATE PROGRAM")));
    auto* choice = new SegmentedChoice;
    int id = 0;
    for (const char* text : {"Date", "MaxDepth", "Dive Name", "Site"}) {
        choice->addChoice(QLatin1String(text), id++);
    }
    choice->setCurrent(0);
    card->body()->addWidget(choice);
    auto* fold = new Fold(QStringLiteral("Single dive"));
    fold->body()->addWidget(new QLineEdit(QStringLiteral("1")));
    fold->setOpen(true);
    card->body()->addWidget(fold);
    card->body()->addWidget(new Fold(QStringLiteral("Expert")));
    card->body()->addStretch();
    return card;
}

} // namespace

QWidget* widgetsPage() {
    auto* page = new QWidget;
    auto* column = new QVBoxLayout(page);
    auto* row = new QHBoxLayout;
    row->addWidget(seriesCard());
    row->addWidget(panelCard(), 1);
    row->addWidget(statesCard(), 1);
    column->addLayout(row, 1);
    auto* fault = new FaultFrame(new QLabel, QStringLiteral("closeproblem"));
    fault->title()->setText(QStringLiteral("D0000012 cannot be read whole: download it again"));
    fault->text()->setText(QStringLiteral("Gas Profile - Error in Gas Type2 format !"));
    column->addWidget(fault);
    auto* strip = new QHBoxLayout;
    for (const auto& [caption, text] :
         {std::pair{"Dive", "D0000001"}, std::pair{"Duration", "99mins"}, std::pair{"MaxDepth", "64m"},
          std::pair{"Start", "27/Jul/2017 09:50:02"}, std::pair{"Interval", "10secs"},
          std::pair{"Atmospheric", "1013mBar"}}) {
        strip->addWidget(number(caption, text, 16));
        strip->addWidget(new Rule(Qt::Vertical));
    }
    column->addLayout(strip);
    return page;
}

} // namespace benthor::look
