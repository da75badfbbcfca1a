// What stands where.

#include "link/screens/commandcard.h"
#include "link/screens/commandlist.h"
#include "link/screens/directorycard.h"
#include "link/screens/downloadpanel.h"
#include "link/screens/drawer.h"
#include "link/screens/hudcard.h"
#include "link/screens/linkhead.h"
#include "link/screens/pc_link_1.h"
#include "link/screens/waitcard.h"
#include "platform/look/look.h"
#include "platform/look/widgets/columnarea.h"
#include "platform/look/widgets/contentsarea.h"
#include "platform/look/widgets/status.h"

#include <QHBoxLayout>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace benthor::link {

namespace {

/// The values that are read are seen; where a large font has no room for that all of the window scrolls.
constexpr int kLeastSetup = 290;

} // namespace

void PC_Link_1::buildBody() {
    auto* ground = new QWidget;
    auto* down = new QVBoxLayout(ground);
    down->setContentsMargins({});
    down->setSpacing(0);
    head_ = new LinkHead;
    foot_ = new LinkFoot;
    auto* area = new QWidget;
    auto* across = new QHBoxLayout(area);
    across->setContentsMargins(look::spaceBase, look::spaceBase, look::spaceBase, look::spaceBase);
    across->setSpacing(look::spaceBase);
    left_ = new QStackedWidget;
    left_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    download_ = new DownloadPanel;
    commands_ = new CommandList;
    left_->addWidget(new look::ColumnArea(download_));
    left_->addWidget(new look::ColumnArea(commands_));
    across->addWidget(left_);
    across->addWidget(buildMiddle(), 1);
    down->addWidget(head_);
    down->addWidget(area, 1);
    down->addWidget(foot_);
    setContents(ground);
    // Never so narrow that the lamps of the head lie over its status.
    setMinimumSize(QSize(std::max(960, head_->minimumSizeHint().width()), 620)
                       .boundedTo(look::ContentsArea::largestLeast(this)));
    wait_ = new WaitCard(area);
}

QWidget* PC_Link_1::buildMiddle() {
    auto* middle = new QWidget;
    auto* down = new QVBoxLayout(middle);
    down->setContentsMargins({});
    down->setSpacing(look::spaceBase);
    hintBox_ = new look::NoticeBand(QString());
    hintBox_->label()->setObjectName(QStringLiteral("Text14"));
    hintBox_->label()->setFont(look::body());
    hintBox_->label()->setTextInteractionFlags(Qt::TextSelectableByMouse);
    down->addWidget(hintBox_);

    middle_ = new QStackedWidget;
    directory_ = new DirectoryCard;
    command_ = new CommandCard;
    hud_ = new HudCard;
    auto* setup = new QWidget;
    auto* cards = new QVBoxLayout(setup);
    cards->setContentsMargins({});
    cards->setSpacing(look::spaceBase);
    cards->addWidget(command_);
    cards->addWidget(hud_);
    cards->addStretch(1);
    middle_->addWidget(directory_);
    middle_->addWidget(new look::ColumnArea(setup, kLeastSetup));
    down->addWidget(middle_, 1);
    drawer_ = new Drawer;
    down->addWidget(drawer_);
    return middle;
}

} // namespace benthor::link
