#include "shell/screens/tipspanel.h"

#include "platform/look/access/access.h"
#include "platform/look/look.h"
#include "platform/look/pictures.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/programfolder.h"

#include <QEvent>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace benthor::shell {

using look::ClickableLabel;

namespace {

constexpr int kWidth = 264;

} // namespace

TipsPanel::TipsPanel(QWidget* parent)
    : look::Pane(Qt::LeftEdge, parent)
    , Image4_(new ClickableLabel)
    , tip_(new ClickableLabel) {
    setObjectName(QStringLiteral("Frame4"));
    setFixedWidth(look::scaled(kWidth));
    auto* down = new QVBoxLayout(this);
    down->setContentsMargins(look::spaceWide, look::spaceBase, look::spaceWide, look::spaceWide);
    auto* head = new QHBoxLayout;
    head->setSpacing(look::spaceTight);
    auto* sign = new ClickableLabel;
    sign->setIconName(QStringLiteral("tip"), 22);
    sign->setFocusPolicy(Qt::NoFocus);
    sign->setCursor(Qt::ArrowCursor);
    sign->setAttribute(Qt::WA_TransparentForMouseEvents);
    head->addWidget(sign);
    head->addWidget(look::makeHeading(QStringLiteral("Connection tips")));
    head->addStretch(1);
    auto* close = new ClickableLabel;
    close->setIconName(QStringLiteral("close"), 18);
    close->setInk(look::Ink::Quiet);
    close->setAccessibleName(QStringLiteral("Close connection tips"));
    close->setToolTip(close->accessibleName());
    connect(close, &ClickableLabel::clicked, this, &TipsPanel::closeWanted);
    head->addWidget(close);
    down->addLayout(head);
    down->addWidget(new look::Rule);

    Image4_->setObjectName(QStringLiteral("Image4"));
    Image4_->setAccessibleName(QStringLiteral("Next tip"));
    Image4_->setAlignment(Qt::AlignCenter);
    tip_->setWordWrap(true);
    tip_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    tip_->setHoverMark(false);
    look::tellAsText(tip_);
    for (ClickableLabel* label : {Image4_, tip_}) {
        label->setFocusPolicy(Qt::NoFocus);
        connect(label, &ClickableLabel::clicked, this, &TipsPanel::nextWanted);
    }
    down->addSpacing(look::spaceSmall);
    down->addWidget(Image4_);
    down->addSpacing(look::spaceSmall);
    down->addWidget(tip_, 1);
    down->addWidget(buildFoot());

    auto* escape = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    escape->setContext(Qt::WidgetWithChildrenShortcut);
    connect(escape, &QShortcut::activated, this, &TipsPanel::closeWanted);
    showPicture();
}

QWidget* TipsPanel::buildFoot() {
    auto* foot = new QWidget;
    auto* across = new QHBoxLayout(foot);
    across->setContentsMargins({});
    auto* steps = new ClickableLabel(QStringLiteral("<<<"));
    steps->setObjectName(QStringLiteral("Label10(1)"));
    steps->setAccessibleName(QStringLiteral("Next tip"));
    steps->setToolTip(steps->accessibleName());
    auto* next = new QPushButton(QStringLiteral("&Next Tip"));
    next->setObjectName(QStringLiteral("cmdNextTip"));
    across->addWidget(steps);
    across->addStretch(1);
    across->addWidget(next);
    connect(steps, &ClickableLabel::clicked, this, &TipsPanel::nextWanted);
    connect(next, &QPushButton::clicked, this, &TipsPanel::nextWanted);
    return foot;
}

void TipsPanel::showTip(const QString& text) {
    tip_->setText(text);
}

void TipsPanel::showPicture() {
    const QImage picture(platform::ProgramFolder::current().path(u"morvakd2.bmp"));
    const int room = look::scaled(kWidth) - 2 * look::spaceWide;
    Image4_->setPixmap(look::picturePixmap(picture, QSize(room, room * 2 / 3), devicePixelRatio()));
    Image4_->setVisible(!picture.isNull());
}

void TipsPanel::changeEvent(QEvent* event) {
    Pane::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        showPicture();
    }
}

} // namespace benthor::shell
