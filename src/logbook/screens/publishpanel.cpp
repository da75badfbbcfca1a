#include "logbook/screens/publishpanel.h"

#include "logbook/screens/picturebutton.h"
#include "platform/look/look.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/usersettings.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace benthor::logbook {

namespace {

constexpr int kNoteHeight = 76;

/// The address of the support is the dealer's to fill in: the settings' own file, section Options.
QString supportAddress() {
    return platform::userSettings().text(platform::optionsSection(), QStringLiteral("Support Address"));
}

look::ClickableLabel* actor(const char* name, const char* icon, const QString& text, const QString& tip) {
    auto* label = new look::ClickableLabel(text);
    label->setObjectName(QLatin1String(name));
    if (icon != nullptr) {
        label->setIconName(QLatin1String(icon));
    }
    label->setAccessibleName(tip);
    label->setToolTip(tip);
    return label;
}

} // namespace

PublishPanel::PublishPanel(QWidget* parent)
    : look::Pane(Qt::TopEdge, parent)
    , shut_(actor("Picture5(1)", "chevron-down", {}, QStringLiteral("Close publishing")))
    , Option1_(new QCheckBox(QStringLiteral("To the maker's support")))
    , supportLine_(look::makeCaption(QString()))
    , Text2_(new QLineEdit)
    , Text3_(new QPlainTextEdit)
    , send_(new PictureButton(QStringLiteral("Send"), "send", QStringLiteral("Picture5(2)"))) {
    Option1_->setObjectName(QStringLiteral("Option1"));
    Text2_->setObjectName(QStringLiteral("Text2"));
    Text2_->setPlaceholderText(QStringLiteral("Mail address"));
    Text2_->setAccessibleName(QStringLiteral("Mail address"));
    Text3_->setObjectName(QStringLiteral("Text3"));
    Text3_->setPlaceholderText(QStringLiteral("What you want to say about the dive"));
    Text3_->setAccessibleName(QStringLiteral("What you want to say about the dive"));
    Text3_->setTabChangesFocus(true);
    Text3_->setFixedHeight(look::scaled(kNoteHeight));
    send_->setProperty("primary", true);
    send_->setToolTip(QStringLiteral("Mails the chosen dive with its file and pictures"));
    auto* txtsearch = new QLineEdit;
    txtsearch->setObjectName(QStringLiteral("txtsearch"));
    txtsearch->setPlaceholderText(QStringLiteral("Search"));
    txtsearch->setAccessibleName(QStringLiteral("Search"));
    txtsearch->setMaximumWidth(look::scaled(160));
    connect(Option1_, &QCheckBox::toggled, this, &PublishPanel::Option1_toggled);

    auto* across = new QHBoxLayout(this);
    across->setContentsMargins(look::spaceWide, look::spaceSmall, look::spaceWide, look::spaceSmall);
    across->setSpacing(look::spaceWide);
    auto* whom = new QVBoxLayout;
    whom->setSpacing(look::spaceTight);
    whom->addWidget(look::makeCaption(QStringLiteral("Publish the chosen dive to")));
    whom->addWidget(Text2_);
    whom->addWidget(Option1_);
    whom->addWidget(supportLine_);
    whom->addStretch(1);
    across->addLayout(whom, 2);
    auto* words = new QVBoxLayout;
    words->setSpacing(look::spaceTight);
    words->addWidget(look::makeCaption(QStringLiteral("Message")));
    words->addWidget(Text3_);
    words->addStretch(1);
    across->addLayout(words, 3);
    auto* acts = new QVBoxLayout;
    acts->setSpacing(look::spaceTight);
    acts->addWidget(send_);
    acts->addStretch(1);
    across->addLayout(acts);
    auto* edge = new QVBoxLayout;
    edge->addWidget(shut_, 0, Qt::AlignRight);
    edge->addStretch(1);
    edge->addWidget(txtsearch);
    across->addLayout(edge, 1);
    Option1_toggled(false);
}

void PublishPanel::Option1_toggled(bool checked) {
    Text2_->setEnabled(!checked);
    const QString support = supportAddress();
    supportLine_->setText(!checked ? QString()
                          : support.isEmpty()
                              ? QStringLiteral("No support address is set: type it in your mailer")
                              : support);
}

QString PublishPanel::recipient() const {
    return Option1_->isChecked() ? supportAddress() : Text2_->text().trimmed();
}

QString PublishPanel::note() const {
    return Text3_->toPlainText();
}

} // namespace benthor::logbook
