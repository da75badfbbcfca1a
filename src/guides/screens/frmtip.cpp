#include "guides/screens/frmtip.h"

#include "guides/screens/guidecard.h"
#include "platform/look/access/access.h"
#include "platform/look/look.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/programfolder.h"
#include "platform/screen/windowplace.h"
#include "platform/usersettings.h"

#include <QCheckBox>
#include <QEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace benthor::guides {

frmTip::frmTip(Opened opened, Tips& tips)
    : Screen(QStringLiteral("frmTip"))
    , opened_(opened)
    , tips_(tips) {
    setWindowTitle(QStringLiteral("Connection Tips"));
    buildLayout();
    // What comes up by itself takes the keys from nobody.
    setAttribute(Qt::WA_ShowWithoutActivating, opened == Opened::ByItself);
    connect(new QShortcut(QKeySequence(Qt::Key_Escape), this), &QShortcut::activated, this, &frmTip::unload);
}

void frmTip::buildLayout() {
    auto* card = new GuideCard;
    Image1_ = new look::ClickableLabel;
    Image1_->setObjectName(QStringLiteral("Image1"));
    Image1_->setAccessibleName(QStringLiteral("Next tip"));
    Image1_->setFocusPolicy(Qt::NoFocus);
    lblTipText_ = new look::ClickableLabel;
    lblTipText_->setObjectName(QStringLiteral("lblTipText"));
    lblTipText_->setWordWrap(true);
    lblTipText_->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    lblTipText_->setHoverMark(false);
    lblTipText_->setFocusPolicy(Qt::NoFocus); // the button beside does the same by key
    look::tellAsText(lblTipText_);
    lblTipText_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    card->setPicture(Image1_);
    card->words()->addWidget(lblTipText_, 1);
    for (look::ClickableLabel* label : {Image1_, lblTipText_}) {
        connect(label, &look::ClickableLabel::clicked, this, &frmTip::DoNextTip);
    }

    chkLoadTipsAtStartup_ = new QCheckBox(QStringLiteral("&Show Tips at Startup"));
    chkLoadTipsAtStartup_->setObjectName(QStringLiteral("chkLoadTipsAtStartup"));
    connect(chkLoadTipsAtStartup_, &QCheckBox::toggled, this, [](bool on) {
        platform::userSettings().setNumber(platform::optionsSection(), platform::showTipsAtStartup(),
                                           on ? 1 : 0);
    });
    const auto button = [this](const char* name, const char* caption, void (frmTip::*act)()) {
        auto* made = new QPushButton(QLatin1String(caption));
        made->setObjectName(QLatin1String(name));
        connect(made, &QPushButton::clicked, this, act);
        return made;
    };
    auto* previous = button("Command1", "&Previous Tip", &frmTip::DoPreviousTip);
    auto* next = button("cmdNextTip", "&Next Tip", &frmTip::DoNextTip);
    auto* ok = button("cmdOK", "OK", &frmTip::unload);
    ok->setProperty("primary", true);
    next->setDefault(true);
    card->foot()->addWidget(chkLoadTipsAtStartup_);
    card->foot()->addStretch(1);
    card->foot()->addWidget(previous);
    card->foot()->addWidget(next);
    card->foot()->addSpacing(look::spaceSmall);
    card->foot()->addWidget(ok);
    setContents(card);
    next->setFocus();
    setMinimumSize(520, 300);
}

void frmTip::loading() {
    showPicture();
    const bool wanted =
        platform::userSettings().number(platform::optionsSection(), platform::showTipsAtStartup(), 1) != 0;
    if (!wanted && opened_ == Opened::ByItself) {
        unload();
        return;
    }
    {
        const QSignalBlocker quiet(chkLoadTipsAtStartup_);
        chkLoadTipsAtStartup_->setChecked(wanted);
    }
    tips_.open(platform::ProgramFolder::current().path(tipsfile()));
    DisplayCurrentTip();
}

void frmTip::LoadTips(const QString& filename) {
    tips_.LoadTips(filename);
}

void frmTip::DoNextTip() {
    tips_.DoNextTip();
    DisplayCurrentTip();
}

void frmTip::DoPreviousTip() {
    tips_.DoPreviousTip();
    DisplayCurrentTip();
}

void frmTip::DisplayCurrentTip() {
    lblTipText_->setText(tips_.text());
    emit tipChanged();
}

QString frmTip::tipText() const {
    return lblTipText_->text();
}

void frmTip::placeBeside(const QRect& window) {
    QList<QRect> displays;
    for (const QScreen* display : QGuiApplication::screens()) {
        displays += display->availableGeometry();
    }
    const QSize frame = frameGeometry().size() - size();
    for (const QSize& inner : {size(), minimumSize()}) {
        if (const auto place = platform::placeBeside(window, inner + frame, displays)) {
            resize(inner);
            move(*place);
            return;
        }
    }
}

void frmTip::showPicture() {
    GuideCard::showPicture(Image1_, QStringLiteral("morvakd2.bmp"));
}

void frmTip::changeEvent(QEvent* event) {
    Screen::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && Image1_ != nullptr) {
        showPicture();
    }
}

} // namespace benthor::guides
