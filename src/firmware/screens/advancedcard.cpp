#include "firmware/screens/advancedcard.h"

#include "link/console.h"
#include "link/screens/showing.h"
#include "platform/look/look.h"
#include "platform/look/widgets/clickablelabel.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>

namespace benthor::firmware {

using link::showEnabled;
using link::showText;
using link::showVisible;
using look::named;

namespace {

struct Option {
    int index;
    const char* caption;
};

constexpr std::array<Option, 10> options{{{10, "Quit"},
                                          {9, "Other"},
                                          {8, "Send Personal Data"},
                                          {6, "Book Upload"},
                                          {5, "Gas Upload"},
                                          {4, "Summary Last"},
                                          {3, "Dive Summary"},
                                          {2, "Interval Send"},
                                          {1, "Interval Get"},
                                          {0, "Logo"}}};

constexpr int kOptionRows = 4;

/// A line end in a field is shown by its sign, and written by it.
QString withSigns(QString text) {
    return text.replace(QLatin1String("\r\n"), QStringLiteral("↵"));
}
QString withoutSigns(QString text) {
    return text.replace(QStringLiteral("↵"), QLatin1String("\r\n"));
}

} // namespace

AdvancedCard::AdvancedCard(QWidget* parent)
    : Card(parent)
    , Command3_(named(new QPushButton(look::icon("save"), QStringLiteral("Store Text")), "Command3"))
    , Command4_(named(new QPushButton(QStringLiteral("Send Command")), "Command4"))
    , Command5_(named(new QPushButton(look::icon("send"), QStringLiteral("Send File/Text")), "Command5")) {
    body()->setContentsMargins(look::spaceWide, look::spaceSmall, look::spaceSmall, look::spaceBase);
    body()->setSpacing(look::spaceSmall);
    auto* head = new QHBoxLayout;
    auto* title = new QLabel(QStringLiteral("Adavanced Keyboard"));
    title->setFont(look::strong(look::body()));
    head->setSpacing(look::spaceSmall);
    head->addWidget(title);
    head->addStretch(1);
    addButtons(head);
    auto* close = new look::ClickableLabel;
    close->setIconName(QStringLiteral("close"), 16);
    close->setAccessibleName(QStringLiteral("Close the advanced keyboard"));
    close->setToolTip(close->accessibleName());
    connect(close, &look::ClickableLabel::clicked, this, &AdvancedCard::closeWanted);
    head->addWidget(close);
    body()->addLayout(head);
    body()->addWidget(buildOptions());
    body()->addWidget(buildFields());
    body()->addStretch(1);
}

QWidget* AdvancedCard::buildOptions() {
    auto* box = new QWidget;
    auto* grid = new QGridLayout(box);
    grid->setContentsMargins({});
    grid->setHorizontalSpacing(look::spaceBase);
    grid->setVerticalSpacing(2);
    int place = 0;
    for (const Option& one : options) {
        auto* button = new QRadioButton(QLatin1String(one.caption));
        button->setObjectName(QStringLiteral("Option1(%1)").arg(one.index));
        connect(button, &QRadioButton::clicked, this, [this, one] { emit optionChosen(one.index); });
        grid->addWidget(button, place % kOptionRows, place / kOptionRows);
        Option1_.insert(one.index, button);
        ++place;
    }
    return box;
}

QLineEdit* AdvancedCard::field(const char* name, const char* caption, QGridLayout* grid, int place,
                               int width) {
    auto* box = named(new QLineEdit, name);
    box->setFont(look::fixed(12));
    box->setMinimumWidth(look::scaled(width));
    box->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    grid->setColumnStretch(place, width);
    box->setAccessibleName(QLatin1String(caption));
    QLabel* words = look::makeCaption(QLatin1String(caption));
    words->setBuddy(box);
    grid->addWidget(words, 0, place);
    grid->addWidget(box, 1, place);
    connect(box, &QLineEdit::textEdited, this,
            [this, box](const QString& text) { emit fieldEdited(box->objectName(), withoutSigns(text)); });
    return box;
}

QWidget* AdvancedCard::buildFields() {
    auto* box = new QWidget;
    auto* grid = new QGridLayout(box);
    grid->setContentsMargins({});
    grid->setHorizontalSpacing(look::spaceSmall);
    grid->setVerticalSpacing(2);
    Text3_ = field("Text3", "Command", grid, 0, 40);
    Text11_ = field("Text11", "Prefix", grid, 1, 36);
    Text9_ = field("Text9", "Data", grid, 2, 120);
    Text10_ = field("Text10", "Trailer", grid, 3, 90);
    Text8_ = field("Text8", "Reply", grid, 4, 36);
    Text12_ = field("Text12", "Index", grid, 5, 56);
    Text6_ = field("Text6", "Port", grid, 6, 36);
    Text8_->setToolTip(QStringLiteral("What must come back before anything more is sent"));
    Text6_->setReadOnly(true);
    Text12_->setToolTip(QStringLiteral("Bytes of a book to send beyond 30000"));
    return box;
}

void AdvancedCard::addButtons(QHBoxLayout* across) {
    Command3_->setToolTip(QStringLiteral("Keeps the device's words in a file, once they hold a profile"));
    Command4_->setToolTip(QStringLiteral("Sends the command alone"));
    Command5_->setToolTip(QStringLiteral("Sends what belongs to the command, and the file"));
    for (QPushButton* button : {Command3_, Command4_, Command5_}) {
        button->setAutoDefault(false);
        across->addWidget(button);
    }
    connect(Command3_, &QPushButton::clicked, this, &AdvancedCard::storeClicked);
    connect(Command4_, &QPushButton::clicked, this, &AdvancedCard::commandClicked);
    connect(Command5_, &QPushButton::clicked, this, &AdvancedCard::sendClicked);
}

void AdvancedCard::sync(const ReprogState& state) {
    showVisible(this, state.advanced);
    const SendFields& fields = state.fields;
    if (QRadioButton* chosen = Option1_.value(fields.option); !chosen->isChecked()) {
        chosen->setChecked(true);
    }
    showText(Text3_, fields.Text3);
    showText(Text11_, fields.Text11);
    Text9_->setMaxLength(fields.Text9MaxLength > 0 ? fields.Text9MaxLength : 32767);
    showText(Text9_, fields.Text9);
    showText(Text10_, withSigns(fields.Text10));
    showText(Text8_, fields.Text8);
    showText(Text12_, fields.Text12);
    showText(Text6_, state.Text6);
    const bool book = fields.option == link::kChoiceBook;
    showVisible(Text12_, book);
    showEnabled(Command3_, state.Command3Enabled);
    showEnabled(Command4_, state.idleflag);
    // An image goes out in the device's own mode only; a text whenever the user will.
    showEnabled(Command5_, state.idleflag && (book || state.Command2.enabled));
}

} // namespace benthor::firmware
