#include "viewer/screens/instrumentpanel.h"

#include "platform/look/access/access.h"
#include "platform/look/look.h"
#include "platform/look/series.h"
#include "platform/look/widgets/gauge.h"
#include "platform/look/widgets/numberlabel.h"
#include "platform/screen/toldqcolor.h"
#include "platform/textformat.h"
#include "viewer/screens/headnumber.h"
#include "viewer/screens/maskpanel.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>

namespace benthor::viewer {

using look::Gauge;
using look::Series;

namespace {

constexpr int kRowNumber = 16; ///< size of the numbers in the rows of gauges
constexpr int kSmallNumber = 15;
constexpr int kAlarmHeight = 64;

Gauge* makeGauge(const char* name, const char* told) {
    auto* gauge = new Gauge;
    gauge->setObjectName(QLatin1String(name));
    gauge->setAccessibleName(QLatin1String(told));
    return gauge;
}

// What all bars of a gauge stand for.
constexpr double kMostOxygen = 1.4 * kGaugeBars / 10;     ///< bar
constexpr double kMostPressure = 210.0 * kGaugeBars / 10; ///< bar
constexpr double kMostStress = 100.0 * kGaugeBars / 12;   ///< per cent
constexpr double kPsiPerBar = 14.7;

/// What a gauge says to those who do not see its bars; nothing while there is no value.
void tellGauge(Gauge& gauge, const QString& value, double most, const QString& unit) {
    if (value.isEmpty()) {
        look::setReading(&gauge, std::nullopt);
        return;
    }
    const double number = platform::leadingNumber(QStringView(value));
    const bool ownUnit = value.endsWith(unit);
    look::setReading(&gauge, look::Reading{.value = number,
                                           .least = 0,
                                           .most = most,
                                           .words = ownUnit ? value : value + u' ' + unit});
    gauge.setAccessibleDescription(
        QStringLiteral("0 to %1 %2").arg(QString::number(most, 'f', most < 10 ? 2 : 0), unit));
}

/// Keeps its room while it is hidden: the instruments below it don't jump.
template <class T> T* keepingRoom(T* widget) {
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
    return widget;
}

QLabel* makeRowNumber(const char* name) {
    auto* label = new look::NumberLabel(kRowNumber);
    label->setObjectName(QLatin1String(name));
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setMinimumWidth(look::scaled(40));
    return label;
}

void setTextOf(QLabel* label, const QString& text) {
    if (label->text() != text) {
        label->setText(text);
    }
}

/// The ground of a gauge, which stands for its base bar, with the gauge on it.
QWidget* groundOf(Gauge* gauge, int index) {
    auto* ground = keepingRoom(new QWidget);
    ground->setObjectName(QStringLiteral("Shape8(%1)").arg(index));
    auto* row = new QHBoxLayout(ground);
    row->setContentsMargins({});
    row->addWidget(gauge);
    ground->hide();
    return ground;
}

/// What has changed deep within counts at once, not when the events that tell of it have gone round.
void remeasure(QWidget& widget) {
    for (QWidget* part : widget.findChildren<QWidget*>()) {
        part->updateGeometry();
    }
    for (QLayout* part : widget.findChildren<QLayout*>()) {
        part->invalidate();
    }
    widget.updateGeometry();
}

} // namespace

InstrumentPanel::InstrumentPanel(QWidget* parent)
    : Card(parent) {
    body()->setSpacing(look::spaceSmall);
    body()->setContentsMargins(look::spaceBase, look::spaceBase, look::spaceBase, look::spaceBase);
    const auto addGroup = [this](QWidget* group) {
        body()->addWidget(group);
        body()->addStretch(1);
        body()->addWidget(new look::Rule);
        body()->addStretch(1);
    };
    addGroup(makeDepthRow());
    addGroup(makeOxygen());
    addGroup(makeCeiling());
    body()->addWidget(makeScrubber());
    body()->addStretch(1);
    body()->addWidget(makeSupply("HP O2", "Lbldhpo2", "Shape5", 5, Lbldhpo2, Shape5));
    body()->addWidget(makeSupply("HP Dil", "lblhpddip", "Shape7", 2, lblhpddip, Shape7));
    body()->addStretch(1);

    Alarm_Text = new QPlainTextEdit;
    Alarm_Text->setObjectName(QStringLiteral("Alarm_Text"));
    Alarm_Text->setAccessibleName(QStringLiteral("Alarms at this sample"));
    Alarm_Text->setPlaceholderText(QStringLiteral("No alarm at this point"));
    Alarm_Text->setReadOnly(true);
    Alarm_Text->setFixedHeight(look::scaled(kAlarmHeight));
    Alarm_Text->setFocusPolicy(Qt::ClickFocus);
    body()->addWidget(Alarm_Text);
    takeColours();
    setNumberSize(32);
}

QWidget* InstrumentPanel::makeDepthRow() {
    auto* group = new QWidget;
    auto* row = new QHBoxLayout(group);
    row->setContentsMargins({});
    row->setSpacing(look::spaceSmall);
    Lbldepth = new HeadNumber(QStringLiteral("Lbldepth"), QStringLiteral("Depth"));
    Lbldtime = new HeadNumber(QStringLiteral("Lbldtime"), QStringLiteral("Time"), QStringLiteral("min"));
    lbldgas = new HeadNumber(QStringLiteral("lbldgas"), QStringLiteral("Gas"));
    Lbldepth->setWidest(QStringLiteral("000m"));
    Lbldtime->setWidest(QStringLiteral("000"), QStringLiteral("min"));
    lbldgas->setWidest(QStringLiteral("TX00/00"));
    row->addWidget(Lbldepth, 0, Qt::AlignTop);
    row->addStretch();
    row->addWidget(Lbldtime, 0, Qt::AlignTop);
    row->addStretch();
    row->addWidget(lbldgas, 0, Qt::AlignTop);
    return group;
}

QWidget* InstrumentPanel::makeOxygen() {
    auto* group = new QWidget;
    auto* column = new QVBoxLayout(group);
    column->setContentsMargins({});
    column->setSpacing(look::spaceTight);
    auto* row = new QHBoxLayout;
    Lbldppo2 = new HeadNumber(QStringLiteral("Lbldppo2"), QStringLiteral("PPO2"), QStringLiteral("bar"));
    Lbldsetpoint =
        new HeadNumber(QStringLiteral("Lbldsetpoint"), QStringLiteral("Setpoint"), QStringLiteral("bar"));
    for (HeadNumber* number : {Lbldppo2, Lbldsetpoint}) {
        number->setWidest(QStringLiteral("0.00"), QStringLiteral("bar"));
    }
    row->addWidget(Lbldppo2);
    row->addStretch();
    row->addWidget(Lbldsetpoint);
    column->addLayout(row);

    auto* rows = new QWidget;
    auto* grid = new QGridLayout(rows);
    grid->setContentsMargins({});
    grid->setVerticalSpacing(look::spaceTight);
    grid->setHorizontalSpacing(look::spaceSmall);
    grid->setColumnStretch(2, 1);
    Label21_0 = keepingRoom(look::makeCaption(QStringLiteral("average")));
    Label21_0->setObjectName(QStringLiteral("Label21(0)"));
    look::hideFromReaders(Label21_0);
    lblppo2avg = keepingRoom(makeRowNumber("lblppo2avg"));
    Shape12 = makeGauge("Shape12", "Average PPO2 gauge");
    lblppo2avg->setAccessibleName(QStringLiteral("Average PPO2"));
    look::setReaderUnit(lblppo2avg, QStringLiteral("bar"));
    Shape8[4] = groundOf(Shape12, 4);
    grid->addWidget(Label21_0, 0, 0);
    grid->addWidget(lblppo2avg, 0, 1);
    grid->addWidget(Shape8[4], 0, 2);
    column->addWidget(rows);

    // The cells are covered together until the first of them was seen.
    auto* cells = new QWidget;
    auto* cellGrid = new QGridLayout(cells);
    cellGrid->setContentsMargins({});
    cellGrid->setVerticalSpacing(look::spaceTight);
    cellGrid->setHorizontalSpacing(look::spaceSmall);
    cellGrid->setColumnStretch(2, 1);
    const auto addCell = [&](int index, const char* caption, const char* name, const char* gaugeName,
                             const char* source, QLabel*& number, Gauge*& gauge) {
        number = makeRowNumber(name);
        const QString cell = QLatin1String(caption);
        number->setAccessibleName(cell);
        look::setReaderUnit(number, QStringLiteral("bar"));
        gauge = makeGauge(gaugeName, qPrintable(cell + QStringLiteral(" gauge")));
        Shape8[static_cast<std::size_t>(index)] = groundOf(gauge, index);
        QLabel* text = look::makeCaption(QLatin1String(caption));
        text->setMinimumWidth(Label21_0->sizeHint().width());
        look::hideFromReaders(text); // the value is called by it
        for (QLabel* label : {text, number}) {
            label->setToolTip(QLatin1String(source));
        }
        cellGrid->addWidget(text, index, 0);
        cellGrid->addWidget(number, index, 1);
        cellGrid->addWidget(Shape8[static_cast<std::size_t>(index)], index, 2);
    };
    addCell(1, "Cell a", "Lbldcella", "Shape9", "", Lbldcella, Shape9);
    addCell(2, "Cell b", "Lbldcellb", "Shape10", "Shows field H of the record, the column Cellc", Lbldcellb,
            Shape10);
    addCell(3, "Cell c", "Lbldcellc", "Shape11", "Shows field I of the record, the column Setpoint",
            Lbldcellc, Shape11);
    mask(0) = new MaskPanel(QStringLiteral("Frame4(0)"), QStringLiteral("no PO2 cells recorded"), cells);
    column->addWidget(cells);
    return group;
}

QWidget* InstrumentPanel::makeCeiling() {
    auto* group = new QWidget;
    auto* column = new QVBoxLayout(group);
    column->setContentsMargins({});
    column->setSpacing(look::spaceTight);
    auto* row = new QHBoxLayout;
    Lbldceiling =
        new HeadNumber(QStringLiteral("Lbldceiling"), QStringLiteral("Ceiling"), QStringLiteral("m"));
    Lbldceiling->setWidest(QStringLiteral("^000.0"), QStringLiteral("m"));
    row->addWidget(Lbldceiling);
    row->addStretch();
    Text6 = keepingRoom(new QLabel(QStringLiteral("MARK")));
    Text6->setObjectName(QStringLiteral("Text6"));
    Text6->setFont(look::strong(look::caption()));
    Text6->setFrameShape(QFrame::StyledPanel);
    Text6->setContentsMargins(look::spaceSmall, look::spaceTight, look::spaceSmall, look::spaceTight);
    Text6->hide();
    row->addWidget(Text6);
    row->addStretch();
    auto* stress = new QVBoxLayout;
    stress->setSpacing(1);
    Label21_1 = keepingRoom(look::makeCaption(QStringLiteral("Tissue Stress")));
    Label21_1->setObjectName(QStringLiteral("Label21(1)"));
    look::hideFromReaders(Label21_1);
    Label21_1->setAlignment(Qt::AlignRight);
    Text7 = keepingRoom(new look::NumberLabel(24));
    Text7->setObjectName(QStringLiteral("Text7"));
    Text7->setAlignment(Qt::AlignRight);
    stress->addWidget(Label21_1);
    stress->addWidget(Text7);
    row->addLayout(stress);
    column->addLayout(row);
    Shape6 = keepingRoom(makeGauge("Shape6", "Tissue stress gauge"));
    Text7->setAccessibleName(Label21_1->text());
    Shape6->setLimit(0);
    Shape8[0] = groundOf(Shape6, 0);
    column->addWidget(Shape8[0]);
    mask(1) = new MaskPanel(QStringLiteral("Frame4(1)"), QStringLiteral("no ceiling recorded"), group);
    return group;
}

QWidget* InstrumentPanel::makeScrubber() {
    auto* group = new QWidget;
    auto* row = new QHBoxLayout(group);
    row->setContentsMargins({});
    row->setSpacing(look::spaceBase); // less reads as one number
    const auto add = [&](const char* name, const char* caption, const char* unit, const char* widest) {
        auto* number = new HeadNumber(QLatin1String(name), QLatin1String(caption), QLatin1String(unit));
        number->setNumberSize(kSmallNumber);
        number->setWidest(QLatin1String(widest), QLatin1String(unit));
        row->addWidget(number);
        return number;
    };
    Lbldtemp = add("Lbldtemp", "Temp", "C", "000");
    Lbldtemp->unit()->setObjectName(QStringLiteral("lbltempf"));
    row->addStretch();
    lbldstack = add("lbldstack", "Stack", "%", "00.0");
    row->addStretch();
    spread_ = add("Text9(0)", "Spread", "", "00.000");
    row->addStretch();
    percent_ = add("Text9(1)", "TPM", "%", "00");
    mask(3) = new MaskPanel(QStringLiteral("Frame4(3)"), QStringLiteral("–"), Lbldtemp,
                            Lbldtemp->value()->accessibleName());
    mask(4) = new MaskPanel(QStringLiteral("Frame4(4)"), QStringLiteral("–"), lbldstack,
                            lbldstack->value()->accessibleName());
    return group;
}

QWidget* InstrumentPanel::makeSupply(const char* caption, const char* name, const char* gaugeName, int index,
                                     HeadNumber*& number, Gauge*& gauge) {
    auto* group = new QWidget;
    auto* row = new QHBoxLayout(group);
    row->setContentsMargins({});
    row->setSpacing(look::spaceSmall);
    auto* text = look::makeCaption(QLatin1String(caption));
    text->setMinimumWidth(look::scaled(44));
    look::hideFromReaders(text); // the value is called by it
    row->addWidget(text);
    number = new HeadNumber(QLatin1String(name), QString(), QStringLiteral("bar"));
    number->setNumberSize(kRowNumber);
    number->setWidest(QStringLiteral("0000"), QStringLiteral("psi"));
    row->addWidget(number);
    gauge = makeGauge(gaugeName, qPrintable(QLatin1String(caption) + QStringLiteral(" gauge")));
    number->value()->setAccessibleName(QLatin1String(caption));
    gauge->setLimit(0);
    row->addWidget(gauge, 1);
    mask(index) = new MaskPanel(QStringLiteral("Frame4(%1)").arg(index),
                                QLatin1String(caption) + QStringLiteral(": not recorded"), group);
    return group;
}

void InstrumentPanel::showState(const PanelState& state, bool feet) {
    Lbldepth->setValue(state.Lbldepth);
    Lbldtime->setValue(state.Lbldtime);
    lbldgas->setValue(state.lbldgas);
    Lbldppo2->setValue(state.Lbldppo2);
    Lbldsetpoint->setValue(state.Lbldsetpoint);
    setTextOf(lblppo2avg, state.lblppo2avg);
    Label21_0->setVisible(state.Label21[0]);
    lblppo2avg->setVisible(state.lblppo2avgVisible);
    setTextOf(Lbldcella, state.Lbldcella);
    setTextOf(Lbldcellb, state.Lbldcellb);
    setTextOf(Lbldcellc, state.Lbldcellc);
    Lbldceiling->setValue(state.Lbldceiling);
    Lbldceiling->setUnit(feet ? QStringLiteral("ft") : QStringLiteral("m"));
    Text6->setVisible(state.Text6Visible);
    Label21_1->setVisible(state.Label21[1]);
    setTextOf(Text7, state.Text7);
    Text7->setVisible(state.Text7Visible);
    Lbldtemp->setValue(state.Lbldtemp);
    Lbldtemp->setUnit(state.lbltempf);
    lbldstack->setValue(state.lbldstack);
    spread_->setValue(state.Text9[0]);
    percent_->setValue(state.Text9[1]);
    const QString pressure = feet ? QStringLiteral("psi") : QStringLiteral("bar");
    Lbldhpo2->setValue(state.Lbldhpo2);
    Lbldhpo2->setUnit(pressure);
    lblhpddip->setValue(state.lblhpddip);
    lblhpddip->setUnit(pressure);
    Shape5->setLit(state.Shape5);
    Shape6->setLit(state.Shape6);
    Shape6->setVisible(state.Shape6Visible);
    Shape7->setLit(state.Shape7);
    Shape9->setLit(state.Shape9);
    Shape10->setLit(state.Shape10);
    Shape11->setLit(state.Shape11);
    Shape12->setLit(state.Shape12);
    const double mostPressure = feet ? kMostPressure * kPsiPerBar : kMostPressure;
    tellGauge(*Shape5, state.Lbldhpo2, mostPressure, pressure);
    tellGauge(*Shape7, state.lblhpddip, mostPressure, pressure);
    tellGauge(*Shape9, state.Lbldcella, kMostOxygen, QStringLiteral("bar"));
    tellGauge(*Shape10, state.Lbldcellb, kMostOxygen, QStringLiteral("bar"));
    tellGauge(*Shape11, state.Lbldcellc, kMostOxygen, QStringLiteral("bar"));
    tellGauge(*Shape12, state.lblppo2avg, kMostOxygen, QStringLiteral("bar"));
    tellGauge(*Shape6, state.Text7, kMostStress, QStringLiteral("%"));
    for (std::size_t index = 0; index < Shape8.size(); ++index) {
        Shape8[index]->setVisible(state.Shape8[index]);
    }
    for (std::size_t index = 0; index < Frame4.size(); ++index) {
        Frame4[index]->setVisible(state.Frame4[index]);
    }
    const QString alarms = state.Alarm_Text.trimmed().replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    if (Alarm_Text->toPlainText() != alarms) {
        Alarm_Text->setPlainText(alarms);
    }
    QPalette colours = palette();
    if (state.alarmback != platform::kToldWhite) {
        const QColor back = platform::toQColor(state.alarmback);
        colours.setColor(QPalette::Base, back);
        colours.setColor(QPalette::Text, look::readableOn(back));
        colours.setColor(QPalette::PlaceholderText, look::readableOn(back));
    }
    Alarm_Text->setProperty("toldBackground", platform::toQColor(state.alarmback));
    if (Alarm_Text->palette() != colours) {
        Alarm_Text->setPalette(colours);
    }
}

void InstrumentPanel::setNumberSize(int px) {
    if (px == std::exchange(numberSize_, px)) {
        return;
    }
    for (HeadNumber* number : {Lbldepth, Lbldtime, Lbldppo2}) {
        number->setNumberSize(px);
    }
    lbldgas->setNumberSize(px * 4 / 7);
    Lbldsetpoint->setNumberSize(px * 3 / 4);
    Lbldceiling->setNumberSize(px * 3 / 4);
    Text7->setNumberSize(px * 3 / 4);
    Text7->setMinimumWidth(Text7->widthOf(QStringLiteral("100%")));
    remeasure(*this);
}

void InstrumentPanel::changeEvent(QEvent* event) {
    Card::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && Shape12 != nullptr) {
        takeColours();
    }
}

void InstrumentPanel::takeColours() {
    Shape9->setSeries(Series::CellA);
    Shape10->setSeries(Series::CellB);
    Shape11->setSeries(Series::CellC);
    Shape12->setSeries(Series::PO2);
    Shape6->setSeries(Series::Ceiling);
    const auto paint = [](HeadNumber* number, Series series) {
        // Of the curve's hue, and dark or light enough to be read.
        number->setToldColour(
            look::legibleOn(look::seriesStyle(series, look::theme()).colour, look::tokens().surface));
    };
    paint(Lbldppo2, Series::PO2);
    paint(Lbldceiling, Series::Ceiling);
}

} // namespace benthor::viewer
