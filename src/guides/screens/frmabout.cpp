#include "guides/screens/frmabout.h"

#include "guides/screens/guidecard.h"
#include "guides/systeminfo.h"
#include "platform/look/look.h"
#include "platform/screen/dialogs.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace benthor::guides {

frmAbout::frmAbout()
    : Screen(QStringLiteral("frmAbout")) {
    setWindowTitle(QStringLiteral("About Benthor"));
    auto* card = new GuideCard;
    auto* sign = new QLabel;
    GuideCard::showPicture(sign, QString());
    card->setPicture(sign);
    const auto named = [](QLabel* label, const char* name) {
        label->setObjectName(QLatin1String(name));
        return label;
    };
    auto* lblTitle = named(look::makeCaption(QStringLiteral("Benthor")), "lblTitle");
    auto* lblProductName = named(new QLabel(QStringLiteral("Benthor")), "lblProductName");
    lblProductName->setFont(look::big(32));
    auto* lblVersion =
        named(new QLabel(QStringLiteral("Version ") + QCoreApplication::applicationVersion()), "lblVersion");
    auto* lblDescription = named(
        new QLabel(QStringLiteral("This product provides interface applications for use with the Morvalien "
                                  "and KD product ranges")),
        "lblDescription");
    lblDescription->setWordWrap(true);
    look::setInk(lblVersion, look::Ink::Quiet);
    card->words()->addStretch(1);
    card->words()->addWidget(lblTitle);
    card->words()->addWidget(lblProductName);
    card->words()->addWidget(lblVersion);
    card->words()->addSpacing(look::spaceBase);
    card->words()->addWidget(lblDescription);
    card->words()->addStretch(1);

    auto* cmdSysInfo = new QPushButton(QStringLiteral("&System Info..."));
    cmdSysInfo->setObjectName(QStringLiteral("cmdSysInfo"));
    connect(cmdSysInfo, &QPushButton::clicked, this, &frmAbout::StartSysInfo);
    auto* cmdOK = new QPushButton(QStringLiteral("OK"));
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setProperty("primary", true);
    cmdOK->setDefault(true);
    connect(cmdOK, &QPushButton::clicked, this, &frmAbout::unload);
    connect(new QShortcut(QKeySequence(Qt::Key_Escape), this), &QShortcut::activated, this,
            &frmAbout::unload);
    card->foot()->addWidget(cmdSysInfo);
    card->foot()->addStretch(1);
    card->foot()->addWidget(cmdOK);
    setContents(card);
    cmdOK->setFocus();
    setMinimumSize(480, 280);
}

/// The words keep their share of the width with a large font.
QSize frmAbout::firstSize() const {
    return {look::scaled(560), look::scaled(320)};
}

void frmAbout::StartSysInfo() {
    const std::optional<SystemInfoTool> tool = findSystemInfoTool();
    if (!tool || !QProcess::startDetached(tool->program, tool->arguments)) {
        platform::dialogs().message(this, QStringLiteral("System Information Is Unavailable At This Time"));
    }
}

} // namespace benthor::guides
