#include "shell/screens/main_screen.h"

#include "platform/look/icons.h"
#include "platform/look/look.h"
#include "platform/look/widgets/card.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/contentsarea.h"
#include "platform/look/widgets/entryrow.h"
#include "platform/look/widgets/status.h"
#include "shell/screens/tipspanel.h"
#include "shell/screens/unsavednote.h"

#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace benthor::shell {

using look::named;

namespace {

constexpr int kEntriesWidth = 236;
constexpr int kTwoCardsWidth = 720;

} // namespace

void MainScreen::buildLayout() {
    auto* ground = new QWidget;
    auto* across = new QHBoxLayout(ground);
    across->setContentsMargins(0, 0, 0, 0);
    across->setSpacing(0);
    across->addWidget(buildEntries());

    auto* right = new QWidget;
    auto* down = new QVBoxLayout(right);
    down->setContentsMargins(look::spaceWide, look::spaceBase, look::spaceWide, look::spaceWide);
    down->setSpacing(look::spaceBase);

    auto* opener = new QHBoxLayout;
    opener->setSpacing(look::spaceSmall);
    Label6_ = named(new look::ClickableLabel, "Label6");
    Label6_->setAccessibleName(QStringLiteral("Connection tips"));
    Label6_->setIconName(QStringLiteral("tip"), 18);
    Label10_ = named(new look::ClickableLabel(QStringLiteral("Connection tips    >>>")), "Label10(0)");
    for (look::ClickableLabel* label : {Label6_, Label10_}) {
        label->setInk(look::Ink::Quiet);
    }
    connect(Label10_, &look::ClickableLabel::clicked, this, [this] { showTipsPanel(true); });
    connect(Label6_, &look::ClickableLabel::clicked, this, &MainScreen::Label6_click);
    opener->addStretch(1);
    opener->addWidget(Label6_);
    opener->addWidget(Label10_);
    down->addLayout(opener);

    storenote_ = new look::NoticeBand({});
    storenote_->setObjectName(QStringLiteral("storenote"));
    named(storenote_->label(), "storenotewords")->setTextFormat(Qt::PlainText);
    storenote_->hide();
    down->addWidget(storenote_);
    unsavednote_ = new UnsavedNote;
    down->addWidget(unsavednote_);

    auto* card = new look::Card;
    card->body()->setContentsMargins(0, 0, 0, 0);
    card->body()->setSpacing(0);
    card->body()->addWidget(buildPanel(), 1);
    card->body()->addWidget(new look::Rule);
    card->body()->addWidget(buildTotals());
    card->body()->addWidget(buildFoot());
    down->addWidget(card, 1);

    cards_ = new QBoxLayout(QBoxLayout::LeftToRight);
    cards_->setSpacing(look::spaceBase);
    cards_->addWidget(buildLinkCard(), 1);
    cards_->addWidget(buildImportCard(), 1);
    down->addLayout(cards_);

    across->addWidget(right, 1);
    across->addWidget(buildTips());
    setContents(ground);
    fitLeastSize();
    buildProgress(right);
}

look::EntryRow* MainScreen::entry(QWidget* column, int choice, const QString& caption,
                                  const QString& captionName, const QString& pictureName, const QString& icon,
                                  bool quiet) {
    auto* row = new look::EntryRow(
        icon, caption, quiet ? look::EntryRow::Kind::Quiet : look::EntryRow::Kind::Normal, column);
    row->setNames(pictureName, captionName);
    connect(row, &look::EntryRow::clicked, this, [this, choice] { entryClicked(choice); });
    entries_.insert(choice, row);
    column->layout()->addWidget(row);
    return row;
}

QWidget* MainScreen::buildEntries() {
    auto* column = new look::Pane(Qt::RightEdge);
    auto* down = new QVBoxLayout(column);
    down->setContentsMargins(look::spaceSmall, look::spaceBase, look::spaceSmall, look::spaceSmall);
    down->setSpacing(look::spaceTight);

    const auto add = [this, column](int choice, const char* caption, const char* captionName,
                                    const char* pictureName, const char* icon, bool quiet = false) {
        return entry(column, choice, QLatin1String(caption), QLatin1String(captionName),
                     QLatin1String(pictureName), QLatin1String(icon), quiet);
    };
    add(kMyDives, "My Dives", "lblodl(0)", "Picture6", "dives");
    add(kDownloadToPc, "Download to PC", "lbllo", "Picture4", "download");
    look::EntryRow* update = add(kDatabaseUpdate, "Database Update", "lblmdu(1)", "Picture5", "database");
    update->picture()->setToolTip(
        QStringLiteral("Forces manual update of database. However, PC Link screen must be "
                       "closed before this will be activated"));
    Picture9_ = update->addSign(QStringLiteral("Picture9"), QStringLiteral("importfile"));
    Picture9_->setToolTip(QStringLiteral("Dive files wait in the folder new"));
    look::EntryRow* setup = add(kSetupAndGas, "Setup + Gas", "Label4", "Picture2", "cylinder");
    setup->addSign(QStringLiteral("Picture3"), QStringLiteral("settings"))->setVisible(true);
    add(kDiveFileFind, "Dive File Find", "lblmdff", "Picture8", "filefind");

    down->addStretch(1);
    down->addWidget(new look::Rule);
    add(kKd3DiveList, "KD3 Dive List ", "lblvvdl", "", "kd", true);
    add(kPocketPc, "Pocket PC", "lblppc", "", "pocketpc", true);
    add(kFerroweImport, "Ferrowe pdl Import", "Label14", "", "importfile", true);
    down->addWidget(new look::Rule);
    add(kExit, "Exit", "lblexit", "Picture7", "exit");
    entriesWidth_ = kEntriesWidth;
    for (const look::EntryRow* row : std::as_const(entries_)) {
        entriesWidth_ = std::max(entriesWidth_, row->neededWidth() + 2 * look::spaceSmall + 1);
    }
    column->setFixedWidth(entriesWidth_);
    return column;
}

QPushButton* MainScreen::footButton(int choice, const QString& name, const QString& caption,
                                    const QString& icon, const QString& words) {
    auto* row = new QWidget;
    auto* down = new QVBoxLayout(row);
    down->setContentsMargins({});
    down->setSpacing(0);
    down->addWidget(new look::Rule);
    auto* across = new QHBoxLayout;
    across->setContentsMargins(20, look::spaceBase, 20, look::spaceBase);
    down->addLayout(across);
    auto* button = new QPushButton(caption);
    button->setObjectName(name);
    button->setProperty("primary", true);
    button->setProperty("big", true);
    button->setIcon(look::icon(icon));
    across->addWidget(button);
    across->addSpacing(look::spaceBase);
    QLabel* told = look::makeCaption(words);
    told->setWordWrap(true);
    told->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    across->addWidget(told, 1);
    feet_.insert(choice, row);
    foot_->addWidget(row);
    return button;
}

QWidget* MainScreen::buildFoot() {
    foot_ = new QStackedWidget;
    foot_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    const auto add = [this](int choice, const char* name, const char* caption, const char* icon,
                            const char* words) {
        return footButton(choice, QLatin1String(name), QLatin1String(caption), QLatin1String(icon),
                          QLatin1String(words));
    };
    connect(add(kMyDives, "Command1", "Morvalien Dive Log", "dives",
                "Opens My Dives; the list opens by itself after start"),
            &QPushButton::clicked, this, &MainScreen::Command1_click);
    connect(add(kDownloadToPc, "Command2", "Link Morvalien", "download", "Opens the link to the device"),
            &QPushButton::clicked, this, &MainScreen::Command2_click);
    connect(add(kDiveFileFind, "Command3", "Manual Dive File Find", "filefind",
                "Imports a dive file from any place; all that ever came in are kept in the folder old"),
            &QPushButton::clicked, this, &MainScreen::Command3_click);
    connect(add(kExit, "cmdclose", "Exit", "exit", "Closes all screens"), &QPushButton::clicked, this,
            &MainScreen::cmdclose_click);
    QPushButton* kd3 =
        add(kKd3DiveList, "cmdviewkd3", "KD3 Dive List", "kd", "Dives of every device stand in My Dives");
    QPushButton* pdb =
        add(kPocketPc, "cmdpdbsingle", "Download PDB", "pocketpc", "Not available on this computer");
    kd3->setEnabled(false);
    pdb->setEnabled(false);

    hiddenButton("Command5", &MainScreen::Command5_click);
    hiddenButton("Command6", &MainScreen::Command6_click);
    return foot_;
}

void MainScreen::hiddenButton(const char* name, void (MainScreen::*act)()) {
    auto* button = new QPushButton(this);
    button->setObjectName(QLatin1String(name));
    button->hide();
    connect(button, &QPushButton::clicked, this, act);
}

QWidget* MainScreen::buildTips() {
    Frame4_ = new TipsPanel;
    connect(Frame4_, &TipsPanel::nextWanted, this, &MainScreen::cmdNextTip_click);
    connect(Frame4_, &TipsPanel::closeWanted, this, [this] { showTipsPanel(false); });
    Frame4_->hide();
    return Frame4_;
}

/// At its least size the screen still shows all that stands on it. The width is told, not measured: it is the
/// one at which the cards stand one above the other.
void MainScreen::fitLeastSize() {
    const QLayout* ground = contents()->layout();
    const int width = Frame4_->isHidden() ? 880 : 1000;
    if (look::fontScale() <= 1 && contents()->minimumWidth() != width) {
        contents()->setMinimumWidth(width); // with a large font it is measured
    }
    const int height =
        std::max(ground->totalMinimumSize().height(), ground->totalMinimumHeightForWidth(width));
    const QSize least = QSize(width, std::max(560, menuBar()->sizeHint().height() + height))
                            .boundedTo(look::ContentsArea::largestLeast(this));
    if (least != minimumSize()) {
        setMinimumSize(least);
    }
}

/// Where the tips leave no room for the two cards side by side they stand one above the other.
void MainScreen::fitCards() {
    const int room = width() - entriesWidth_ - (Frame4_->isHidden() ? 0 : Frame4_->width());
    cards_->setDirection(room < look::scaled(kTwoCardsWidth) ? QBoxLayout::TopToBottom
                                                             : QBoxLayout::LeftToRight);
}

} // namespace benthor::shell
