#include "link/screens/drawer.h"

#include "link/screens/breakingrow.h"
#include "link/screens/rawtext.h"
#include "link/screens/showing.h"
#include "platform/look/look.h"
#include "platform/look/widgets/clickablelabel.h"

#include <QGridLayout>
#include <QSignalBlocker>

namespace benthor::link {

namespace {

constexpr int kTextsHeight = 104;

QLabel* title(const char* text) {
    auto* label = new QLabel(QLatin1String(text));
    label->setFont(look::strong(look::caption()));
    look::setInk(label, look::Ink::Quiet);
    return label;
}

/// A line end in a field is shown by its sign, and written by it.
QString withSigns(QString text) {
    return text.replace(QLatin1String("\r\n"), QStringLiteral("↵"));
}

} // namespace

Drawer::Drawer(QWidget* parent)
    : look::Card(parent)
    , fields_(new QWidget)
    , texts_(new QWidget)
    , Text3_(named(new QLineEdit, "Text3"))
    , Text11_(named(new QLineEdit, "Text11"))
    , Text10_(named(new QLineEdit, "Text10"))
    , Text6_(named(new QLineEdit, "Text6"))
    , received_(look::makeCaption(QString()))
    , toSend_(look::makeCaption(QString()))
    , Text4_(named(new RawText, "Text4"))
    , Text7_(named(new QPlainTextEdit, "Text7")) {
    body()->setContentsMargins(20, look::spaceSmall, look::spaceSmall, look::spaceBase);
    auto* across = new QHBoxLayout;
    across->setSpacing(look::spaceWide);
    auto* row = new BreakingRow(look::spaceWide);
    row->add(buildFields(), 0);
    row->add(buildTexts(), 1);
    across->addWidget(row, 1);
    auto* close = new look::ClickableLabel;
    close->setIconName(QStringLiteral("close"), 16);
    close->setAccessibleName(QStringLiteral("Close the drawer"));
    close->setToolTip(close->accessibleName());
    connect(close, &look::ClickableLabel::clicked, this, &Drawer::closeWanted);
    across->addWidget(close, 0, Qt::AlignTop);
    body()->addLayout(across);
}

QWidget* Drawer::buildFields() {
    auto* grid = new QGridLayout(fields_);
    grid->setContentsMargins({});
    grid->setHorizontalSpacing(look::spaceSmall);
    grid->setVerticalSpacing(look::spaceTight);
    grid->addWidget(title("Expert"), 0, 0, 1, 2);
    struct Field {
        QLineEdit* box;
        const char* caption;
    };
    int place = 0;
    for (const Field& one : {Field{Text3_, "Command"}, Field{Text11_, "Prefix"}, Field{Text10_, "Trailer"},
                             Field{Text6_, "Expected reply"}}) {
        one.box->setFont(look::fixed(13));
        one.box->setFixedWidth(look::scaled(92));
        one.box->setAccessibleName(QLatin1String(one.caption));
        QLabel* caption = look::makeCaption(QLatin1String(one.caption));
        caption->setBuddy(one.box);
        grid->addWidget(caption, 1 + 2 * (place / 2), place % 2);
        grid->addWidget(one.box, 2 + 2 * (place / 2), place % 2);
        ++place;
    }
    grid->setRowStretch(5, 1);
    return fields_;
}

QWidget* Drawer::buildTexts() {
    auto* across = new QHBoxLayout(texts_);
    across->setContentsMargins({});
    across->setSpacing(look::spaceBase);
    Text4_->setReadOnly(true);
    Text4_->setAccessibleName(QStringLiteral("Received"));
    Text7_->setAccessibleName(QStringLiteral("Text to send"));
    Text7_->setFont(look::fixed(11));
    Text7_->setWordWrapMode(QTextOption::WrapAnywhere);
    Text7_->setTabChangesFocus(true);
    struct Text {
        QPlainTextEdit* box;
        const char* caption;
        QLabel* count;
    };
    for (const Text& one : {Text{Text4_, "Received", received_}, Text{Text7_, "Text to send", toSend_}}) {
        auto* down = new QVBoxLayout;
        down->setSpacing(look::spaceTight);
        auto* head = new QHBoxLayout;
        head->setSpacing(look::spaceSmall);
        head->addWidget(title(one.caption));
        head->addWidget(one.count);
        head->addStretch(1);
        down->addLayout(head);
        one.box->setFixedHeight(look::scaled(kTextsHeight));
        down->addWidget(one.box);
        across->addLayout(down, 1);
    }
    connect(Text7_, &QPlainTextEdit::textChanged, this, [this] {
        shownText7_ = Text7_->toPlainText().replace(u'\n', QLatin1String("\r\n"));
        emit textToSendEdited(shownText7_);
    });
    return texts_;
}

void Drawer::sync(const LinkState& link, bool raw) {
    const Console& console = link.console;
    showVisible(fields_, console.advanced);
    showVisible(texts_, raw);
    for (QWidget* box : {static_cast<QWidget*>(Text4_), static_cast<QWidget*>(Text7_)}) {
        showVisible(box, raw);
    }
    showVisible(this, console.advanced || raw);
    showText(Text3_, console.Text3);
    showText(Text11_, console.Text11);
    showText(Text10_, withSigns(console.Text10));
    showText(Text6_, console.Text6);
    Text4_->follow(link.Text4);
    showText(received_, QStringLiteral("%1 characters").arg(link.Text4.size()));
    showText(toSend_, QStringLiteral("%1 characters").arg(console.Text7.size()));
    if (shownText7_ != console.Text7) {
        const QSignalBlocker quiet(Text7_);
        shownText7_ = console.Text7;
        Text7_->setPlainText(console.Text7);
    }
}

} // namespace benthor::link
