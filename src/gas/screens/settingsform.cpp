#include "gas/screens/settingsform.h"

#include "gas/screens/numberbox.h"
#include "platform/look/look.h"
#include "platform/look/widgets/card.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyleOptionButton>
#include <QVBoxLayout>

namespace benthor::gas {

namespace {

constexpr int kRowHeight = 30;
constexpr int kControlHeight = 28; // the edges of one row's controls stand off those of the next
constexpr int kBoxWidth = 44;
constexpr int kDiveGas = 1;
constexpr int kStopMetres = 2;
constexpr int kStopFeet = 3;

void showText(QLineEdit& box, const QString& text) {
    if (box.text() != text) {
        const int at = box.cursorPosition();
        box.setText(text);
        box.setCursorPosition(std::min<int>(at, static_cast<int>(text.size())));
    }
}

} // namespace

SettingsForm::SettingsForm(QWidget* parent)
    : QWidget(parent)
    , column_(new QVBoxLayout(this)) {
    const QCheckBox probe;
    QStyleOptionButton option;
    option.rect = QRect(QPoint(), probe.sizeHint());
    const QRect box = probe.style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, &probe);
    ringRoom_ = option.rect.right() - box.right();
    column_->setContentsMargins(look::spaceBase, look::spaceSmall, look::spaceBase - ringRoom_,
                                look::spaceSmall);
    column_->setSpacing(0);
    buildDecompression();
    buildDisplay();
    buildTimers();
    column_->addStretch(1);
}

void SettingsForm::heading(const char* caption) {
    if (column_->count() > 0) {
        column_->addSpacing(look::spaceTight);
        auto* across = new QHBoxLayout;
        across->setContentsMargins(0, 0, ringRoom_, 0);
        across->addWidget(new look::Rule);
        column_->addLayout(across);
    }
    column_->addSpacing(look::spaceTight);
    auto* label = look::makeCaption(QLatin1String(caption));
    label->setFont(look::strong(look::caption()));
    column_->addWidget(label);
}

void SettingsForm::row(const char* caption, QWidget* control) {
    auto* line = new QWidget;
    line->setFixedHeight(look::scaledRow(kRowHeight));
    auto* across = new QHBoxLayout(line);
    // A box without words keeps room for its ring, and is still to end where the others do.
    const bool marks = qobject_cast<QCheckBox*>(control) != nullptr;
    across->setContentsMargins(0, 0, marks ? 0 : ringRoom_, 0);
    across->setSpacing(look::spaceTight);
    if (!marks) {
        control->setFixedHeight(look::scaledRow(kControlHeight));
    }
    auto* label = new QLabel(QLatin1String(caption));
    across->addWidget(label);
    across->addStretch(1);
    across->addWidget(control);
    const QList<QComboBox*> inside = control->findChildren<QComboBox*>();
    for (QComboBox* list : inside) {
        list->setAccessibleName(QLatin1String(caption));
    }
    if (auto* list = inside.isEmpty() ? qobject_cast<QComboBox*>(control) : inside.first()) {
        list->setAccessibleName(QLatin1String(caption));
        label->setBuddy(list);
    }
    column_->addWidget(line);
}

NumberBox* SettingsForm::box(const char* name, const char* caption, const char* tip) {
    auto* made = new NumberBox(QLatin1String(tip));
    made->setObjectName(QLatin1String(name));
    made->setAccessibleName(QLatin1String(caption));
    made->setAlignment(Qt::AlignRight);
    made->setFont(look::numbers(13));
    made->setFixedWidth(look::scaled(kBoxWidth));
    return made;
}

QComboBox* SettingsForm::list(int index, const QStringList& items) {
    auto* made = new QComboBox;
    made->setObjectName(QStringLiteral("List1(%1)").arg(index));
    made->addItems(items);
    connect(made, &QComboBox::activated, this, [this, index] { emit listChosen(index == kDiveGas); });
    List1_[static_cast<size_t>(index)] = made;
    return made;
}

QCheckBox* SettingsForm::check(int index, const char* caption) {
    auto* made = new QCheckBox;
    made->setObjectName(QStringLiteral("Check2(%1)").arg(index));
    made->setAccessibleName(QLatin1String(caption));
    connect(made, &QCheckBox::clicked, this, [this] { emit edited(); });
    Check2_[static_cast<size_t>(index)] = made;
    return made;
}

QWidget* SettingsForm::stepper(int index, NumberBox* text) {
    auto* group = new QWidget;
    auto* across = new QHBoxLayout(group);
    across->setContentsMargins({});
    across->setSpacing(2);
    const auto button = [this, index, text](const char* name, const char* icon, bool up) {
        auto* made = new QPushButton(look::icon(icon), QString());
        made->setObjectName(QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index));
        made->setAccessibleName((up ? QStringLiteral("More: ") : QStringLiteral("Less: ")) +
                                text->accessibleName());
        made->setAutoRepeat(true);
        made->setAutoDefault(false);
        made->setFixedWidth(look::scaled(24));
        connect(made, &QPushButton::clicked, this, [this, index, up] { emit stepped(index, up); });
        return made;
    };
    connect(text, &QLineEdit::textEdited, this, [this] { emit edited(); });
    across->addWidget(button("Command4", "remove", false));
    across->addWidget(text);
    across->addWidget(button("Command3", "add", true));
    return group;
}

void SettingsForm::buildDecompression() {
    heading("Decompression");
    Text5_ = box("Text5", "Max PPO2", "Maximum PPO2 for each gas. Change to force MODs to revised PPO2");
    connect(Text5_, &QLineEdit::textEdited, this, &SettingsForm::maximumEdited);
    row("Max PPO2", Text5_);
    sptext_ = box("sptext", "PPO2 Set Point");
    row("PPO2 Set Point", stepper(0, sptext_));
    QStringList gases{QStringLiteral("Air")};
    for (int gas = 1; gas < kGases; ++gas) {
        gases += QString::number(gas);
    }
    row("Dive Gas", list(kDiveGas, gases));
    auto* stops = new QWidget;
    auto* both = new QHBoxLayout(stops);
    both->setContentsMargins({});
    both->addWidget(list(kStopMetres, {QStringLiteral("3m"), QStringLiteral("6m"), QStringLiteral("4.5m")}));
    both->addWidget(
        list(kStopFeet, {QStringLiteral("10ft"), QStringLiteral("20ft"), QStringLiteral("15ft")}));
    row("Last Stop", stops);
    row("CNS",
        list(4, {QStringLiteral("80%"), QStringLiteral("90%"), QStringLiteral("100%"), QStringLiteral("110%"),
                 QStringLiteral("120%"), QStringLiteral("130%"), QStringLiteral("140%")}));
    row("Safety", list(5, {QStringLiteral("0%"), QStringLiteral("10%"), QStringLiteral("20%"),
                           QStringLiteral("30%"), QStringLiteral("40%"), QStringLiteral("50%")}));
    row("Closed Circuit", check(3, "Closed Circuit"));
}

void SettingsForm::buildDisplay() {
    heading("Display");
    row("Backlight", list(0, {QStringLiteral("Off"), QStringLiteral("DTimed"), QStringLiteral("Timed"),
                              QStringLiteral("On"), QStringLiteral("DOn")}));
    row("HUD HI", check(1, "HUD HI"));
    row("Silent mode", check(2, "Silent mode"));
    row("Big Graphics", check(0, "Big Graphics"));
    Label12_ = new QLabel;
    Label12_->setObjectName(QStringLiteral("Label12(1)"));
    Label12_->setFont(look::strong(look::body()));
    row("Units", Label12_);
}

void SettingsForm::buildTimers() {
    heading("Timers");
    ScreenSaveText_ = box("ScreenSaveText", "Screen Saver secs");
    HomeText_ = box("HomeText", "Home timeout secs");
    row("Screen Saver secs", stepper(1, ScreenSaveText_));
    row("Home timeout secs", stepper(2, HomeText_));
}

void SettingsForm::show(const GasPlan& plan, const QList<WrongCell>& wrong) {
    const Settings& settings = plan.settings;
    const std::array<int, 6> indices{settings.backlight, settings.divegas, settings.laststop,
                                     settings.laststop,  settings.cns,     settings.safety};
    for (size_t i = 0; i < indices.size(); ++i) {
        List1_[i]->setCurrentIndex(indices[i]);
    }
    List1_[kStopMetres]->setVisible(!plan.headfeet);
    List1_[kStopFeet]->setVisible(plan.headfeet);
    const std::array<bool, 4> checks{settings.biggraphics, settings.hudhi, settings.silent, settings.closed};
    for (size_t i = 0; i < checks.size(); ++i) {
        Check2_[i]->setChecked(checks[i]);
    }
    showText(*Text5_, plan.Text5);
    showText(*sptext_, settings.sptext);
    showText(*ScreenSaveText_, settings.ScreenSaveText);
    showText(*HomeText_, settings.HomeText);
    Label12_->setText(plan.unitshown);
    showWrong(wrong);
}

void SettingsForm::showWrong(const QList<WrongCell>& wrong) {
    for (const auto& [box, cell] :
         {std::pair{Text5_, Cell::Maximum}, std::pair{sptext_, Cell::SetPoint},
          std::pair{ScreenSaveText_, Cell::ScreenSaver}, std::pair{HomeText_, Cell::Home}}) {
        QString why;
        for (const WrongCell& one : wrong) {
            why = one.cell == cell ? one.why : why;
        }
        box->setWrong(why);
    }
}

Settings SettingsForm::settings() const {
    Settings settings;
    settings.backlight = List1_[0]->currentIndex();
    settings.divegas = List1_[kDiveGas]->currentIndex();
    const bool feet = !List1_[kStopFeet]->isHidden();
    settings.laststop = List1_[feet ? kStopFeet : kStopMetres]->currentIndex();
    settings.cns = List1_[4]->currentIndex();
    settings.safety = List1_[5]->currentIndex();
    settings.biggraphics = Check2_[0]->isChecked();
    settings.hudhi = Check2_[1]->isChecked();
    settings.silent = Check2_[2]->isChecked();
    settings.closed = Check2_[3]->isChecked();
    settings.sptext = sptext_->text();
    settings.ScreenSaveText = ScreenSaveText_->text();
    settings.HomeText = HomeText_->text();
    return settings;
}

} // namespace benthor::gas
