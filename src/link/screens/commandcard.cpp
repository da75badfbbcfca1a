#include "link/screens/commandcard.h"

#include "link/commandmenu.h"
#include "link/console.h"
#include "link/screens/breakingrow.h"
#include "link/screens/showing.h"
#include "platform/look/look.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/numberlabel.h"
#include "platform/textformat.h"

#include <QHBoxLayout>
#include <QPushButton>

namespace benthor::link {

namespace {

constexpr int kFieldHeight = 44;
constexpr int kLogo = 0;
constexpr int kQuit = 10;

QLineEdit* field(const char* name, int width) {
    auto* box = named(new QLineEdit, name);
    box->setFont(look::heading());
    box->setFixedHeight(look::scaledRow(kFieldHeight));
    box->setMinimumWidth(look::scaled(width));
    return box;
}

/// A caption over its box; the pair goes with the box.
QWidget* captioned(QLabel* caption, QWidget* box) {
    auto* pair = new QWidget;
    auto* down = new QVBoxLayout(pair);
    down->setContentsMargins({});
    down->setSpacing(look::spaceTight);
    down->addWidget(caption);
    down->addWidget(box);
    caption->setBuddy(box);
    return pair;
}

QString shortHint(int option) {
    switch (option) {
    case 0:
        return QStringLiteral("Open a logo in its text form, then send it.");
    case 1:
        return QStringLiteral(
            "Asks the device for its recording interval, and for the HUD and alarm values.");
    case 2:
        return QStringLiteral("Choose the required interval in the range 001 to 240 seconds.");
    case 3:
        return QStringLiteral("Asks for the summaries of all dives.");
    case 4:
        return QStringLiteral("Asks for the summary of the last dive.");
    case 5:
        return QStringLiteral(
            "Gases and settings are edited and sent on the screen Gas and System Settings.");
    case 6:
        return QStringLiteral("Open a text of at most 20K bytes, then send it.");
    case 8:
        return QStringLiteral("The name that the device shows, at most 32 characters.");
    case 9:
        return QStringLiteral("Whatever the four fields of a command hold.");
    case 10:
        return QStringLiteral("Ends PC Link mode. The device stores its data and restarts.");
    case 11:
        return QStringLiteral("Asks the device for its present readings.");
    default:
        return {};
    }
}

const char* iconOf(int option) {
    static constexpr std::array<const char*, optionCount> icons{
        "picture", "interval", "interval-send", "dives", "dives", "cylinder",
        "book",    "send",     "person",        "send",  "power", "gauge"};
    return icons.at(static_cast<size_t>(std::clamp(option, 0, optionCount - 1)));
}

} // namespace

CommandCard::CommandCard(QWidget* parent)
    : look::Card(parent)
    , icon_(new look::ClickableLabel)
    , title_(look::makeHeading(QString()))
    , hint_(new QLabel)
    , interval_(new QWidget)
    , valueToSend_(field("Text16(0)", 96))
    , intervalRead_(named(new look::NumberLabel(28), "Text16(1)"))
    , Label3_(named(look::makeCaption(QStringLiteral("Data")), "Label3"))
    , Text9_(field("Text9", 180))
    , AFLabel1_(named(look::makeCaption(QStringLiteral("Index")), "AFLabel1"))
    , Text12_(field("Text12", 72))
    , AFLabel4_(named(look::makeCaption(QStringLiteral("Response")), "AFLabel4"))
    , TextResponse_(field("TextResponse", 150))
    , Label6_(named(look::makeCaption(QString()), "Label6"))
    , Label7_(named(look::makeCaption(QString()), "Label7"))
    , Shape1_(named(new QWidget, "Shape1"))
    , goes_(named(look::makeCaption(QString()), "whatGoes"))
    , Command2_(named(new QPushButton, "Command2"))
    , fileCaption_(named(look::makeCaption(QStringLiteral("File")), "filecaption"))
    , Text5_(named(new QLineEdit, "Text5"))
    , Command8_(named(new QPushButton(look::icon("picture"), QStringLiteral("Convert Logo")), "Command8"))
    , open_(new QPushButton(look::icon("open-folder"), QStringLiteral("Open")))
    , Command5_(named(new QPushButton(look::icon("send"), QStringLiteral("Send File/Text")), "Command5")) {
    open_->setObjectName(QStringLiteral("openFile"));
    body()->setContentsMargins(20, look::spaceWide, 20, look::spaceBase);
    body()->setSpacing(look::spaceBase);
    body()->addWidget(buildTitle());
    body()->addWidget(buildValues());
    body()->addWidget(new look::Rule);
    body()->addWidget(buildFile());
}

QWidget* CommandCard::buildTitle() {
    auto* head = new QWidget;
    auto* across = new QHBoxLayout(head);
    across->setContentsMargins({});
    across->setSpacing(look::spaceBase);
    icon_->setInk(look::Ink::Accent);
    icon_->setFocusPolicy(Qt::NoFocus);
    icon_->setAttribute(Qt::WA_TransparentForMouseEvents);
    across->addWidget(icon_);
    auto* words = new QVBoxLayout;
    words->setSpacing(2);
    title_->setFont(look::big(18));
    look::setInk(hint_, look::Ink::Quiet);
    hint_->setWordWrap(true);
    words->addWidget(title_);
    words->addWidget(hint_);
    across->addLayout(words, 1);
    return head;
}

QWidget* CommandCard::buildValues() {
    auto* values = new BreakingRow(look::spaceWide);
    values->setMinimumHeight(look::scaledRow(kFieldHeight + 20, 2));
    auto* fields = new QWidget;
    fields_ = new QHBoxLayout(fields);
    fields_->setContentsMargins({});
    fields_->setSpacing(look::spaceWide);

    auto* interval = new QHBoxLayout(interval_);
    interval->setContentsMargins({});
    interval->setSpacing(look::spaceRoom);
    valueToSend_->setFont(look::big(22));
    valueToSend_->setFixedWidth(look::scaled(96));
    valueToSend_->setAccessibleName(QStringLiteral("Interval to send, in seconds"));
    interval->addWidget(captioned(look::makeCaption(QStringLiteral("Value to send (secs)")), valueToSend_));
    intervalRead_->setMinimumHeight(look::scaledRow(kFieldHeight));
    interval->addWidget(
        captioned(look::makeCaption(QStringLiteral("Interval in the device (secs)")), intervalRead_));
    fields_->addWidget(interval_);

    Text9_->setAccessibleName(QStringLiteral("Data"));
    Text12_->setAccessibleName(QStringLiteral("Index"));
    Text12_->setToolTip(QStringLiteral("Characters of the book to pass over, or a free number"));
    TextResponse_->setReadOnly(true);
    TextResponse_->setAccessibleName(QStringLiteral("Response"));
    fields_->addWidget(captioned(Label3_, Text9_), 2);
    fields_->addWidget(captioned(AFLabel1_, Text12_));
    fields_->addWidget(captioned(AFLabel4_, TextResponse_), 1);
    fields_->addWidget(Label6_);
    fields_->addWidget(Label7_);
    fields_->addStretch(1);
    values->add(fields, 1);
    values->add(buildSend(), 0);
    return values;
}

QWidget* CommandCard::buildSend() {
    auto* across = new QHBoxLayout(Shape1_); // in a row of its own it stands at the end
    across->setContentsMargins({});
    across->addStretch(1);
    auto* edge = new QVBoxLayout;
    across->addLayout(edge);
    edge->addStretch(1);
    goes_->setTextFormat(Qt::PlainText);
    goes_->setAlignment(Qt::AlignRight);
    edge->addWidget(goes_);
    Command2_->setProperty("primary", true);
    Command2_->setProperty("big", true);
    Command2_->setIcon(look::icon("send"));
    Command2_->setMinimumHeight(look::scaledRow(kFieldHeight));
    edge->addWidget(Command2_);
    return Shape1_;
}

QWidget* CommandCard::buildFile() {
    auto* file = new QWidget;
    auto* across = new QHBoxLayout(file);
    across->setContentsMargins({});
    across->setSpacing(look::spaceBase);
    fileCaption_->setMinimumWidth(look::scaled(70));
    across->addWidget(fileCaption_);
    Text5_->setReadOnly(true);
    Text5_->setPlaceholderText(QStringLiteral("No file opened"));
    Text5_->setAccessibleName(QStringLiteral("File"));
    across->addWidget(Text5_, 1);
    across->addWidget(Command8_);
    across->addWidget(open_);
    across->addWidget(Command5_);
    return file;
}

void CommandCard::sync(const Console& console) {
    syncTitle(console);
    syncValues(console);
    syncFile(console);
}

void CommandCard::syncTitle(const Console& console) {
    const QString title = listCaption(console.option);
    if (title_->text() != title || icon_->iconName().isEmpty()) {
        title_->setText(title);
        icon_->setIconName(QLatin1String(iconOf(console.option)), 30);
        hint_->setText(shortHint(console.option));
    }
}

void CommandCard::syncValues(const Console& console) {
    const bool interval = console.option <= 2 && console.option != 0;
    showVisible(interval_, interval);
    showText(valueToSend_, console.Text16[0]);
    showText(intervalRead_, console.Text16[1]);
    showInterval(console.Text16[1]);

    const auto showBox = [](QWidget* box, QLabel* caption, bool shown, bool captionShown) {
        showVisible(box, shown);
        showVisible(caption, captionShown && shown);
        showVisible(box->parentWidget(), shown);
    };
    if (Text9_->maxLength() != console.Text9MaxLength) {
        Text9_->setMaxLength(console.Text9MaxLength > 0 ? console.Text9MaxLength : 32767);
    }
    showText(Text9_, console.Text9);
    // Free text has all the room up to the button.
    if (const int rest = console.Text9Visible ? 0 : 1; fields_->stretch(fields_->count() - 1) != rest) {
        fields_->setStretch(fields_->count() - 1, rest);
    }
    showBox(Text9_, Label3_, console.Text9Visible, console.Label3Visible || console.advanced);
    showText(Text12_, console.Text12.text);
    showEnabled(Text12_, console.Text12.enabled);
    showBox(Text12_, AFLabel1_, console.Text12.visible, true);
    showText(TextResponse_, console.TextResponse.text);
    showBox(TextResponse_, AFLabel4_, console.TextResponse.visible, true);
    showVisible(Label6_, console.Label6Visible);
    showVisible(Label7_, console.Label7Visible);

    const bool quits = console.option == kQuit;
    if (Command2_->property("danger").toBool() != quits) {
        Command2_->setProperty("danger", quits);
        Command2_->setProperty("primary", !quits);
        Command2_->setIcon(look::icon(quits ? "power" : "send"));
    }
    if (Command2_->text() != console.Command2.text) {
        Command2_->setText(console.Command2.text);
    }
    // The caption is that of the menu entry chosen last: what goes out stands above it.
    const QString goes = goeswords(console);
    if (goes_->text() != goes) {
        goes_->setText(goes);
    }
    showEnabled(Command2_, console.Command2.enabled);
    showVisible(Command2_, console.Command2.visible);
    showVisible(Shape1_, console.Command2.visible);
}

/// The box counts its tries in tenths, and no interval is below 1.
void CommandCard::showInterval(const QString& text) {
    const bool known = platform::isNumeric(text) && platform::leadingNumber(text) >= 1.0;
    const look::NumberAndUnit none{QStringLiteral("–"), QStringLiteral("not read yet")};
    intervalRead_->setStandIn(known ? look::NumberAndUnit() : none);
    intervalRead_->setAccessibleDescription(known ? QString() : none.unit);
}

/// While no file can be sent the box shows the last one, at first what to do.
void CommandCard::syncFile(const Console& console) {
    const bool file = console.Text5.visible;
    showText(Text5_, file && !console.Text5.text.isEmpty() ? console.Text5.text : console.filenameshown);
    showVisible(fileCaption_, console.filecaption);
    showEnabled(Text5_, file);
    showEnabled(open_, file);
    showVisible(Command8_, console.option == kLogo);
    showEnabled(Command5_, file && !console.Text5.text.isEmpty());
    showVisible(Command5_, console.advanced);
}

} // namespace benthor::link
