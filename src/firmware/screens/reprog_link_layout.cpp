// What stands where.

#include "firmware/screens/advancedcard.h"
#include "firmware/screens/imagecard.h"
#include "firmware/screens/keyrow.h"
#include "firmware/screens/progresscard.h"
#include "firmware/screens/reprog_link.h"
#include "firmware/screens/reprog_link_host.h"
#include "firmware/screens/stepspath.h"
#include "firmware/session.h"
#include "link/screens/breakingrow.h"
#include "link/screens/rawtext.h"
#include "link/screens/showing.h"
#include "platform/look/look.h"
#include "platform/look/style/paint.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/columnarea.h"

#include <QAction>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace benthor::firmware {

using look::named;

namespace {

constexpr int kWordsHeight = 56;
constexpr int kLeastKeyboard = 80;

/// As high as what stands in it needs at its width, words that wrap included: the check values, which are to
/// be compared, and the warning are never squeezed for what stands below.
class WholeHeight : public QWidget {
protected:
    bool event(QEvent* event) override {
        const bool done = QWidget::event(event);
        if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Resize) {
            const int needed = layout()->totalHeightForWidth(width());
            if (needed > 0 && (minimumHeight() != needed || maximumHeight() != needed)) {
                setFixedHeight(needed);
            }
        }
        return done;
    }
};

/// Striped in a colour that no lamp has, over the whole width: whoever looks knows that this is no device.
class RehearsalBanner : public QWidget {
protected:
    void paintEvent(QPaintEvent* event) override {
        Q_UNUSED(event)
        constexpr int kStripe = 14;
        QPainter painter(this);
        painter.fillRect(rect(), look::tokens().noticesoft);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(look::tokens().notice, kStripe / 2.0));
        const int edge = look::scaled(6);
        for (const QRect& band : {QRect(0, 0, width(), edge), QRect(0, height() - edge, width(), edge)}) {
            painter.setClipRect(band);
            for (int x = -height(); x < width() + height(); x += kStripe) {
                painter.drawLine(x, height(), x + height(), 0);
            }
        }
    }
};

} // namespace

QMenu* ReProg_Link::menu(const char* name, const char* caption) {
    QMenu* made = menuBar()->addMenu(QLatin1String(caption));
    made->setToolTipsVisible(true);
    made->menuAction()->setObjectName(QLatin1String(name));
    return made;
}

QAction* ReProg_Link::entry(QMenu* menu, const char* name, const char* caption,
                            const std::function<void()>& work) {
    QAction* made = menu->addAction(QLatin1String(caption));
    made->setObjectName(QLatin1String(name));
    connect(made, &QAction::triggered, this, work);
    return made;
}

void ReProg_Link::buildMenus() {
    QMenu* file = menu("mnuFile", "&File");
    entry(file, "mnuChoose", "&Choose File", [this] {
        perform([this] { Command7_click(state_, *host_); });
    })->setShortcut(QKeySequence::Open);
    file->addSeparator();
    entry(file, "mnuExit", "E&xit", [this] {
        const Routine routine(*this);
        unload();
    })->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_W));
    QMenu* advanced = menu("mnuAdvancedMenu", "&Advanced");
    mnuAdvanced_ = entry(advanced, "mnuAdvanced", "&Adavanced Keyboard", [this] { mnuAdvanced_click(); });
    mnuAutoRefresh_ = entry(advanced, "mnuAutoRefresh", "Auto &Refresh", [this] {
        perform([this] { mnuAutoRefresh_click(state_, mnuAutoRefresh_->isChecked()); });
    });
    QMenu* tools = menu("mnuTools", "&Tools");
    mnuRehearse_ =
        entry(tools, "mnuRehearse", "&Rehearse with a simulated device", [this] { mnuRehearse_click(); });
    mnuRehearse_->setToolTip(
        QStringLiteral("Goes through everything with a device in software. Your device is not touched."));
    entry(tools, "mnuRunProg", "Running &Programs", [this] { neighbours_.showRunningPrograms(); });
    for (QAction* one : {mnuAdvanced_, mnuAutoRefresh_, mnuRehearse_}) {
        one->setCheckable(true);
    }
}

QWidget* ReProg_Link::buildHead() {
    auto* head = new look::Pane(Qt::BottomEdge);
    auto* across = new QHBoxLayout(head);
    across->setContentsMargins(look::spaceWide, look::spaceSmall, look::spaceWide, look::spaceSmall);
    across->setSpacing(look::spaceRoom);
    auto* Label11 = named(new look::ClickableLabel(QStringLiteral("Home")), "Label11");
    Label11->setIconName(QStringLiteral("back"));
    Label11->setToolTip(QStringLiteral("Returns to previous screen"));
    connect(Label11, &look::ClickableLabel::clicked, this, [this] {
        const Routine routine(*this);
        neighbours_.leaveToMain();
    });
    across->addWidget(Label11);
    auto* title = new QLabel(QStringLiteral("KD Reprogramming Link"));
    title->setFont(look::big(20));
    across->addWidget(title);
    across->addStretch(1);
    Check1_ = named(new QCheckBox(QStringLiteral("9600 baud")), "Check1");
    Check1_->setToolTip(QStringLiteral("Normall setting is 9600 checked"));
    across->addWidget(Check1_);
    return head;
}

QWidget* ReProg_Link::buildBanner() {
    banner_ = named(new RehearsalBanner, "rehearsal");
    auto* across = new QHBoxLayout(banner_);
    across->setContentsMargins(look::spaceWide, look::spaceBase, look::spaceWide, look::spaceBase);
    across->setSpacing(look::spaceBase);
    bannerWords_ =
        new QLabel(QStringLiteral("REHEARSAL: a simulated device. Nothing here reaches your own, whose "
                                  "port is closed."));
    bannerWords_->setFont(look::strong(look::body()));
    bannerWords_->setWordWrap(true);
    across->addWidget(bannerWords_, 1);
    auto* end = new QPushButton(look::icon("stop"), QStringLiteral("End the rehearsal"));
    end->setObjectName(QStringLiteral("endRehearsal"));
    end->setAutoDefault(false);
    connect(end, &QPushButton::clicked, this, [this] { mnuRehearse_click(); });
    across->addWidget(end);
    banner_->hide();
    return banner_;
}

QWidget* ReProg_Link::buildWords() {
    auto* card = new look::Card;
    card->body()->setContentsMargins(look::spaceWide, look::spaceSmall, look::spaceWide, look::spaceBase);
    card->body()->setSpacing(look::spaceTight);
    auto* head = new QHBoxLayout;
    auto* title = new QLabel(QStringLiteral("Words of the device"));
    title->setFont(look::strong(look::body()));
    head->addWidget(title);
    head->addStretch(1);
    length_ = named(look::makeCaption(QString()), "Label10");
    head->addWidget(length_);
    card->body()->addLayout(head);
    Text4_ = named(new link::RawText, "Text4");
    Text4_->setFont(look::fixed(12));
    Text4_->setReadOnly(true);
    Text4_->setMinimumHeight(look::scaled(kWordsHeight));
    Text4_->setAccessibleName(QStringLiteral("Words of the device"));
    card->body()->addWidget(Text4_, 1);
    return card;
}

void ReProg_Link::buildBody() {
    path_ = new StepsPath;
    image_ = new ImageCard;
    progress_ = new ProgressCard;
    advanced_ = new AdvancedCard;
    keys_ = new KeyRow;
    auto* ground = new QWidget;
    auto* down = new QVBoxLayout(ground);
    down->setContentsMargins({});
    down->setSpacing(0);
    down->addWidget(buildBanner());
    down->addWidget(buildHead());
    down->addWidget(path_);
    auto* area = new QVBoxLayout;
    area->setContentsMargins(look::spaceBase, look::spaceBase, look::spaceBase, look::spaceBase);
    area->setSpacing(look::spaceBase);
    auto* cards = new WholeHeight; // of the higher of the two
    auto* pair = new QHBoxLayout(cards);
    pair->setContentsMargins({});
    pair->setSpacing(look::spaceBase);
    pair->addWidget(image_, 15);
    pair->addWidget(progress_, 14);
    area->addWidget(cards);
    auto* words = new link::BreakingRow(look::spaceBase);
    words->add(buildWords(), 1);
    advancedArea_ = new look::ColumnArea(advanced_, kLeastKeyboard);
    words->add(advancedArea_, 0);
    area->addWidget(words, 1);
    down->addLayout(area, 1);
    down->addWidget(keys_);
    setContents(ground);
    keys_->refresh()->setFocus();
}

void ReProg_Link::connectControls() {
    const auto send = [this] { perform([this] { Command2_click(state_, *host_); }); };
    connect(keys_, &KeyRow::keyClicked, this,
            [this](size_t key) { perform([this, key] { SendCh_click(state_, *host_, key); }); });
    connect(keys_, &KeyRow::sendClicked, this, send);
    connect(progress_, &ProgressCard::sendClicked, this, send);
    connect(image_, &ImageCard::chooseClicked, this,
            [this] { perform([this] { Command7_click(state_, *host_); }); });
    connect(image_, &ImageCard::fileClicked, this,
            [this](const QString& name) { perform([this, &name] { state_.Text2 = name; }); });
    connect(image_, &ImageCard::fileTaken, this, &ReProg_Link::fileTaken);
    connect(Check1_, &QCheckBox::clicked, this,
            [this](bool checked) { perform([this, checked] { Check1_click(state_, *host_, checked); }); });
    connect(advanced_, &AdvancedCard::optionChosen, this,
            [this](int option) { perform([this, option] { Option1_click(state_, option); }); });
    connect(advanced_, &AdvancedCard::fieldEdited, this, &ReProg_Link::fieldEdited);
    connect(advanced_, &AdvancedCard::commandClicked, this,
            [this] { perform([this] { Command4_click(state_, *host_); }); });
    connect(advanced_, &AdvancedCard::sendClicked, this,
            [this] { perform([this] { Command5_click(state_, *host_); }); });
    connect(advanced_, &AdvancedCard::storeClicked, this,
            [this] { perform([this] { Command3_click(state_, *host_); }); });
    connect(advanced_, &AdvancedCard::closeWanted, this,
            [this] { perform([this] { state_.advanced = false; }); });
}

} // namespace benthor::firmware
