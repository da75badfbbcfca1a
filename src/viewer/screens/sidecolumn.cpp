#include "viewer/screens/sidecolumn.h"

#include "platform/look/look.h"
#include "platform/look/widgets/card.h"
#include "viewer/screens/seriescolumn.h"
#include "viewer/screens/widths.h"

#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace benthor::viewer {

namespace {

constexpr int kGasPlace = 1; ///< below the series

int sideWidth(int windowWidth) {
    return isNarrow(windowWidth) ? 166 : look::scaled(isWide(windowWidth) ? 196 : 172);
}

look::Card* makeLowCard() {
    auto* card = new look::Card;
    card->body()->setContentsMargins(look::spaceBase, look::spaceSmall, look::spaceBase, look::spaceSmall);
    return card;
}

} // namespace

SideColumn::SideColumn(QWidget* parent)
    : QWidget(parent)
    , column_(new QVBoxLayout(this))
    , series_(new SeriesColumn) {
    column_->setContentsMargins({});
    column_->setSpacing(look::spaceBase);
    column_->addWidget(series_, 1);
    makeUnits();
    makeGasList();
}

void SideColumn::makeUnits() {
    unitsCard_ = makeLowCard();
    gaslistCheck = new QCheckBox(QStringLiteral("Gas list"));
    gaslistCheck->setObjectName(QStringLiteral("gaslistCheck"));
    connect(gaslistCheck, &QCheckBox::toggled, this, [this](bool shown) { gasCard_->setVisible(shown); });
    unitsCard_->body()->addWidget(gaslistCheck);
    auto* row = new QHBoxLayout;
    Option2 = new QRadioButton(QStringLiteral("metres"));
    Option2->setObjectName(QStringLiteral("Option2"));
    Option1 = new QRadioButton(QStringLiteral("Feet"));
    Option1->setObjectName(QStringLiteral("Option1"));
    connect(Option1, &QRadioButton::clicked, this, &SideColumn::feetClicked);
    connect(Option2, &QRadioButton::clicked, this, &SideColumn::metresClicked);
    row->addWidget(Option2, 1);
    row->addWidget(Option1);
    unitsCard_->body()->addLayout(row);
    column_->addWidget(unitsCard_);
}

void SideColumn::makeGasList() {
    gasCard_ = makeLowCard();
    auto* title = look::makeCaption(QStringLiteral("Gas list"));
    title->setFont(look::strong(look::caption()));
    gasCard_->body()->addWidget(title);
    gasList = new QLabel;
    gasList->setObjectName(QStringLiteral("gasList"));
    gasList->setTextFormat(Qt::PlainText);
    gasList->setFont(look::caption());
    gasCard_->body()->addWidget(gasList);
    column_->insertWidget(kGasPlace, gasCard_);
    gasCard_->hide();
}

void SideColumn::setGases(const QString& text) {
    gasList->setText(text);
}

bool SideColumn::areGasesShown() const {
    return gaslistCheck->isChecked();
}

void SideColumn::showGases(bool shown) {
    gaslistCheck->setChecked(shown);
}

void SideColumn::checkUnit(bool feet) {
    (feet ? Option1 : Option2)->setChecked(true);
}

void SideColumn::fit(int windowWidth, QBoxLayout* right) {
    series_->setDense(isNarrow(windowWidth));
    setFixedWidth(std::max({sideWidth(windowWidth), series_->neededWidth(), unitsCard_->sizeHint().width()}));
    const bool wide = isWide(windowWidth);
    QBoxLayout* column = wide ? right : column_;
    if (gasCard_->parentWidget() != column->parentWidget()) {
        column->insertWidget(wide ? column->count() : kGasPlace, gasCard_);
        gasCard_->setVisible(areGasesShown());
    }
}

} // namespace benthor::viewer
