// What stands where.

#include "logbook/chosenrows.h"
#include "logbook/divelist.h"
#include "logbook/screens/listfoot.h"
#include "logbook/screens/listtoolbar.h"
#include "logbook/screens/otherstoreband.h"
#include "logbook/screens/picturebutton.h"
#include "logbook/screens/publishpanel.h"
#include "logbook/screens/rbmain.h"
#include "logbook/screens/summarystrip.h"
#include "platform/look/look.h"
#include "platform/look/widgets/card.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/faultframe.h"
#include "platform/look/widgets/segmentedchoice.h"
#include "platform/look/widgets/wholelabel.h"

#include <QAction>
#include <QActionGroup>
#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QVBoxLayout>

namespace benthor::logbook {

namespace {

constexpr int kRowHeight = 28;

QString emptyList() {
    return QStringLiteral(
        "No dives yet.\n\nThe first dive gets in through Download to PC: connect the device, "
        "fetch its dives, and they are imported from there.\n"
        "A dive file that is put into the folder \"new\" is imported as well.");
}

} // namespace

QMenu* rbmain::buildMenu(const QString& name, const QString& caption) {
    QMenu* menu = menuBar()->addMenu(caption);
    menu->setToolTipsVisible(true);
    menu->menuAction()->setObjectName(name);
    return menu;
}

QAction* rbmain::addEntry(QMenu* menu, const char* name, const QString& caption, void (rbmain::*act)()) {
    QAction* entry = menu->addAction(caption);
    entry->setObjectName(QLatin1String(name));
    connect(entry, &QAction::triggered, this, [this, act] { (this->*act)(); });
    return entry;
}

void rbmain::buildMenus() {
    QMenu* file = buildMenu(QStringLiteral("mnuFile"), QStringLiteral("&File"));
    mnuSaveSpread_ =
        addEntry(file, "mnuSaveSpread", QStringLiteral("&Save as spreadsheet"), &rbmain::cmdSave_click);
    mnuSaveSpread_->setShortcut(QKeySequence::Save);
    mnuexport_ = addEntry(file, "mnuexport", QStringLiteral("&Export the blue dives (UDDF, JSON)..."),
                          &rbmain::mnuexport_click);
    mnuexportall_ = addEntry(file, "mnuexportall", QStringLiteral("Export &all dives (UDDF, JSON)..."),
                             &rbmain::mnuexportall_click);
    mnumerge_ = addEntry(file, "mnumerge", QStringLiteral("&Bring dives from another logbook..."),
                         &rbmain::mnumerge_click);
    file->addSeparator();
    addEntry(file, "mnuExit", QStringLiteral("E&xit"), &rbmain::cmdclose_click)
        ->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_W));

    buildEditMenu();

    QMenu* dive = buildMenu(QString(), QStringLiteral("&Dive"));
    addEntry(dive, "mnuOpenDive", QStringLiteral("&Open"), &rbmain::cmdgo_click)
        ->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_O));
    addEntry(dive, "mnuDeleteDive", QStringLiteral("&Delete"), &rbmain::cmdelete_click)
        ->setShortcut(QKeySequence(Qt::Key_Delete));
    dive->addSeparator();
    mnuerrorcode_ =
        addEntry(dive, "mnuerrorcode", QStringLiteral("Show &errors"), &rbmain::mnuerrorcode_click);
    mnuerrorcode_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_E));

    buildSortMenu();

    QMenu* publish = buildMenu(QString(), QStringLiteral("&Publish"));
    addEntry(publish, "mnuEmail", QStringLiteral("Send by &mail"), &rbmain::publishDive);
}

void rbmain::buildSortMenu() {
    QMenu* sort = buildMenu(QStringLiteral("mnusort"), QStringLiteral("&Sort"));
    sortEntries_ = new QActionGroup(this);
    sortEntries_->setExclusionPolicy(QActionGroup::ExclusionPolicy::None);
    struct Entry {
        const char* name;
        const char* caption;
        int sortnumber;
        void (rbmain::*act)();
    };
    for (const Entry& one : {Entry{"mnusdate", "&Date", kSortByDate, &rbmain::mnusdate_click},
                             Entry{"mnusmd", "&MaxDepth", kSortByMaxDepth, &rbmain::mnusmd_click},
                             Entry{"mnuslocation", "Dive &Name", kSortByName, &rbmain::mnuslocation_click},
                             Entry{"mnussite", "&Site", kSortBySite, &rbmain::mnussite_click},
                             Entry{"mnusdiveid", "Di&veID", kSortByIdentifier, &rbmain::mnusdiveid_click}}) {
        QAction* entry = addEntry(sort, one.name, QLatin1String(one.caption), one.act);
        entry->setCheckable(true);
        entry->setData(one.sortnumber);
        sortEntries_->addAction(entry);
    }
}

void rbmain::buildPopup() {
    mnupopup_ = new QMenu(this);
    mnupopup_->setObjectName(QStringLiteral("mnupopup"));
    mnupopup_->setToolTipsVisible(true);
    addEntry(mnupopup_, "mnupopprofile", QStringLiteral("&Open"), &rbmain::cmdgo_click);
    addEntry(mnupopup_, "mnuDelete", QStringLiteral("&Delete"), &rbmain::cmdelete_click);
    mnupopup_->addAction(mnuerrorcode_);
    mnupopup_->addSeparator();
    QMenu* save = mnupopup_->addMenu(QStringLiteral("&Save list"));
    save->setToolTipsVisible(true);
    save->menuAction()->setObjectName(QStringLiteral("MNUSAVEDB"));
    addEntry(save, "mnusavecsv", QStringLiteral("As &spreadsheet"), &rbmain::cmdSave_click);
}

void rbmain::buildBody() {
    auto* body = new QWidget;
    setContents(body);
    auto* column = new QVBoxLayout(body);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    bar_ = new ListToolBar;
    column->addWidget(bar_);

    auto* middle = new QVBoxLayout;
    middle->setContentsMargins(look::spaceBase, look::spaceBase, look::spaceBase, look::spaceSmall);
    middle->setSpacing(look::spaceSmall);
    column->addLayout(middle, 1);
    storeBand_ = new OtherStoreBand;
    middle->addWidget(storeBand_);
    auto* card = new look::Card; // that is all table
    card->body()->setContentsMargins(1, 1, 1, 1);
    card->body()->addWidget(MSFlexGrid1_);
    card->roundOff(MSFlexGrid1_);
    middle->addWidget(card, 1);
    foot_ = new ListFoot;
    middle->addWidget(foot_);
    Label16_ = new look::WholeLabel;
    Label16_->setObjectName(QStringLiteral("Label16"));
    Frame2_ = new look::FaultFrame(Label16_, QStringLiteral("Command1"));
    Frame2_->setObjectName(QStringLiteral("Frame2"));
    Frame2_->closeButton()->setAutoDefault(false);
    Frame2_->hide();
    middle->addWidget(Frame2_);

    strip_ = new SummaryStrip;
    column->addWidget(strip_);
    publish_ = new PublishPanel;
    publish_->hide();
    column->addWidget(publish_);
    setUpGrid();
    takeTheme();
}

void rbmain::setUpGrid() {
    MSFlexGrid1_->setObjectName(QStringLiteral("MSFlexGrid1"));
    MSFlexGrid1_->setAccessibleName(QStringLiteral("Dives"));
    MSFlexGrid1_->setFigureFont(look::numbers(13));
    MSFlexGrid1_->setDefaultRowHeightPx(look::scaledRow(kRowHeight));
    MSFlexGrid1_->setEmptyText(emptyList());
    MSFlexGrid1_->setRowNames([this](int row) { return MSFlexGrid1_->text(row, 0); });
    MSFlexGrid1_->setRowSigns([this](int row) { return signOf(row); });
    MSFlexGrid1_->setFocus();
}

void rbmain::connectControls() {
    using platform::FlexGrid;
    connect(&Timer3_, &platform::TickTimer::tick, this, &rbmain::Timer3_tick);
    connect(bar_->open(), &QAbstractButton::clicked, this, &rbmain::cmdgo_click);
    connect(bar_->remove(), &QAbstractButton::clicked, this, &rbmain::cmdelete_click);
    connect(bar_->close(), &QAbstractButton::clicked, this, &rbmain::cmdclose_click);
    connect(storeBand_, &OtherStoreBand::backWanted, this, &rbmain::leaveOtherStore);
    connect(bar_->toLink(), &look::ClickableLabel::clicked, this, &rbmain::linkWanted);
    connect(bar_->toMain(), &look::ClickableLabel::clicked, this, &rbmain::mainWanted);
    connect(bar_->sort(), &look::SegmentedChoice::chosen, this, &rbmain::runSort);
    connect(bar_->publish(), &QAbstractButton::clicked, this, [this] { Picture5_click(0); });
    connect(publish_->shut(), &look::ClickableLabel::clicked, this, [this] { Picture5_click(1); });
    connect(publish_->send(), &QAbstractButton::clicked, this, [this] { Picture5_click(2); });
    connect(bar_->spreadsheet(), &QAbstractButton::clicked, this, &rbmain::cmdSave_click);
    connect(foot_, &ListFoot::sheetWanted, this, &rbmain::cmdSave_click);
    connectMailer();
    connect(Frame2_->closeButton(), &QAbstractButton::clicked, this, &rbmain::Command1_click);
    auto* escape = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(escape, &QShortcut::activated, this, [this] {
        if (Frame2_->isVisible()) {
            Command1_click();
        } else if (publish_->isVisible()) {
            Picture5_click(1);
        }
    });
    connect(MSFlexGrid1_, &FlexGrid::rowSelectionChanged, this, &rbmain::MSFlexGrid1_SelChange);
    connect(MSFlexGrid1_, &FlexGrid::cellClicked, this, [this](int row) {
        clickedRow_ = row;
        noteClick(clicks_, row);
    });
    connect(MSFlexGrid1_, &FlexGrid::mouseReleased, this, &rbmain::MSFlexGrid1_MouseUp);
    connect(MSFlexGrid1_, &FlexGrid::rightClicked, this, &rbmain::MSFlexGrid1_RightClick);
    connect(MSFlexGrid1_, &FlexGrid::keyPressed, this, &rbmain::MSFlexGrid1_KeyDown);
    connect(MSFlexGrid1_, &FlexGrid::movedByKey, this, &rbmain::MSFlexGrid1_MovedByKey);
    connect(MSFlexGrid1_, &FlexGrid::headerClicked, this, &rbmain::MSFlexGrid1_HeaderClick);
    connect(MSFlexGrid1_, &FlexGrid::returnPressed, this, &rbmain::cmdgo_click);
    connect(MSFlexGrid1_, &FlexGrid::doubleClicked, this, [this](int row) {
        clickedRow_ = row;
        cmdgo_click();
    });
}

void rbmain::takeTheme() {
    const look::Tokens& token = look::tokens();
    MSFlexGrid1_->setGridColours(
        {token.surface, token.text, token.ground, token.textquiet, token.line, token.accent});
    chosenSign_ = look::icon(QStringLiteral("chevron-right"), token.text);
    faultSign_ = look::icon(QStringLiteral("warning"), token.bad);
    MSFlexGrid1_->refreshSigns();
}

void rbmain::changeEvent(QEvent* event) {
    Screen::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && strip_ != nullptr) {
        takeTheme();
    }
}

} // namespace benthor::logbook
