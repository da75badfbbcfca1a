#include "platform/look/icons.h"
#include "platform/look/look.h"
#include "platform/look/widgets/card.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/entryrow.h"
#include "platform/look/widgets/fold.h"
#include "platform/look/widgets/numberlabel.h"
#include "platform/look/widgets/overlaycard.h"
#include "platform/look/widgets/status.h"
#include "platform/look/widgets/toldbutton.h"
#include "platform/look/widgets/wholelabel.h"
#include "shell/infopanel.h"
#include "shell/screens/main_screen.h"

#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace benthor::shell {

using look::named;

namespace {

constexpr int kHintWidth = 420;
constexpr int kReadableWidth = 560; // lines longer than this are lost on the way back

QLabel* iconLabel(const char* name) {
    auto* label = new look::ClickableLabel;
    label->setIconName(QLatin1String(name), 22);
    label->setFocusPolicy(Qt::NoFocus);
    label->setCursor(Qt::ArrowCursor);
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    return label;
}

/// The estimate that nothing writes; it stays folded away as it was laid out.
QWidget* makeEstimate() {
    auto* fold = new look::Fold(QStringLiteral("Estimate"));
    auto* across = new QHBoxLayout;
    across->addWidget(named(new QProgressBar, "ProgressBar1"), 1);
    across->addWidget(named(new QLabel, "lblcurrentsizes"));
    across->addWidget(named(new QLabel, "lblpercentage"));
    across->addWidget(named(new QLabel, "lblreminutes"));
    across->addWidget(look::makeCaption(QStringLiteral("minutes remaining")));
    fold->body()->addLayout(across);
    return fold;
}

} // namespace

QWidget* MainScreen::buildPanel() {
    auto* panel = new QWidget;
    auto* rows = new QVBoxLayout(panel);
    rows->setContentsMargins(20, 20, 20, 20);
    panelentry_ = new QWidget;
    rows->addWidget(panelentry_, 1);
    rows->addWidget(buildFirstDive(), 1);
    rows->addWidget(buildNextDive(), 1);
    auto* across = new QHBoxLayout(panelentry_);
    across->setContentsMargins({});
    across->setSpacing(look::spaceRoom);
    Picture12_ = named(new QLabel, "Picture12");
    Picture12_->setAlignment(Qt::AlignCenter);
    across->addWidget(Picture12_, 0, Qt::AlignVCenter);

    auto* words = new QVBoxLayout;
    words->setSpacing(look::spaceSmall);
    Label7_ = named(look::makeHeading(QString()), "Label7");
    Label7_->setFont(look::big(20));
    Label9_ = named(new QLabel, "Label9");
    Label9_->setWordWrap(true);
    Label9_->setMaximumWidth(look::scaled(kReadableWidth));
    look::setInk(Label9_, look::Ink::Quiet);
    words->addStretch(1);
    words->addWidget(Label7_);
    words->addWidget(Label9_);
    words->addStretch(1);
    across->addLayout(words, 1);
    return panel;
}

QWidget* MainScreen::buildTotals() {
    auto* totals = new QWidget;
    auto* down = new QVBoxLayout(totals);
    down->setContentsMargins(20, look::spaceBase, 20, look::spaceBase);
    lbltotaldive_ = new look::TotalsLabel;
    named(lbltotaldive_, "lbltotaldive");
    down->addWidget(lbltotaldive_);
    Lbldetails_ = named(new QLabel, "Lbldetails");
    look::setInk(Lbldetails_, look::Ink::Quiet);
    down->addWidget(Lbldetails_);
    return totals;
}

/// Words in the middle of the panel, where it is bare otherwise, and below them buttons.
QWidget* MainScreen::buildHint(const QString& text, const char* name, const QList<QPushButton*>& buttons) {
    auto* hint = new QWidget;
    auto* down = new QVBoxLayout(hint);
    down->setContentsMargins({});
    down->setSpacing(look::spaceBase);
    auto* words = named(new QLabel(text), name);
    words->setWordWrap(true);
    words->setAlignment(Qt::AlignCenter);
    words->setFixedWidth(look::scaled(kHintWidth));
    auto* middle = new QHBoxLayout; // not an alignment, in which a label's height does not follow its width
    middle->addStretch(1);
    middle->addWidget(words);
    middle->addStretch(1);
    auto* ways = new QHBoxLayout; // with a large font the room between the buttons gives way first
    ways->setSpacing(look::spaceTight);
    ways->addStretch(1);
    for (QPushButton* button : buttons) {
        if (button != buttons.first()) {
            ways->addItem(new QSpacerItem(look::spaceBase - look::spaceTight, 0, QSizePolicy::Maximum));
        }
        ways->addWidget(button);
    }
    ways->addStretch(1);
    down->addStretch(1);
    down->addWidget(iconLabel("dives"), 0, Qt::AlignHCenter);
    down->addLayout(middle);
    down->addLayout(ways);
    down->addStretch(1);
    hint->hide();
    return hint;
}

/// A button of a hint that does what an entry does.
QPushButton* MainScreen::entryButton(const char* name, int choice, const char* icon) {
    auto* button = named(new QPushButton(entries_.value(choice)->caption()->text()), name);
    button->setIcon(look::icon(icon));
    connect(button, &QPushButton::clicked, this, [this, choice] { entryClicked(choice); });
    return button;
}

QWidget* MainScreen::buildFirstDive() {
    firstmerge_ = named(new QPushButton(QStringLiteral("Another logbook...")), "firstmerge");
    firstmerge_->setIcon(look::icon("book"));
    connect(firstmerge_, &QPushButton::clicked, this, &MainScreen::showMerge);
    firstdive_ = buildHint(firstDiveText(), "firstdive",
                           {entryButton("firstdownload", kDownloadToPc, "download"),
                            entryButton("firstfilefind", kDiveFileFind, "filefind"), firstmerge_});
    return firstdive_;
}

QWidget* MainScreen::buildNextDive() {
    nextdive_ = buildHint(nextDiveText(), "nextdive", {entryButton("nextmydives", kMyDives, "dives")});
    return nextdive_;
}

QWidget* MainScreen::buildLinkCard() {
    auto* card = new look::Card;
    auto* across = new QHBoxLayout;
    across->setSpacing(look::spaceBase);
    across->addWidget(iconLabel("plug"));
    auto* words = new QVBoxLayout;
    words->setSpacing(2);
    words->addStretch(1); // the card beside it may be higher
    words->addWidget(look::makeCaption(QStringLiteral("Device link")));
    lblstatus_ = new look::LampDot;
    named(lblstatus_, "lblstatus");
    lblstatus_->setText(QStringLiteral("Searching"));
    words->addWidget(lblstatus_);
    words->addStretch(1);
    across->addLayout(words);
    across->addStretch(1);
    Text14_ =
        named(look::makeCaption(QStringLiteral("Put the device into PC Link mode\nand open Download to PC")),
              "Text14");
    Text14_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    across->addWidget(Text14_);
    card->body()->addLayout(across);
    return card;
}

QWidget* MainScreen::buildImportCard() {
    auto* card = new look::Card;
    auto* across = new QHBoxLayout;
    across->setSpacing(look::spaceBase);
    across->addWidget(iconLabel("database"));
    auto* words = new QVBoxLayout;
    words->setSpacing(2);
    words->addWidget(look::makeCaption(QStringLiteral("Folder new")));
    waiting_ = named(new QLabel(QStringLiteral("No files wait")), "lblwaiting");
    waiting_->setFont(look::strong(look::body()));
    words->addWidget(waiting_);
    across->addLayout(words);
    across->addStretch(1);
    Command4_ = new look::ToldButton(QStringLiteral("import dives"));
    Command4_->setObjectName(QStringLiteral("Command4"));
    Command4_->setIcon(look::icon("importfile"));
    Command4_->setToolTip(QStringLiteral(
        "When green, there are more new dives that can be transfered from temporary storage into database"));
    connect(Command4_, &QPushButton::clicked, this, &MainScreen::Command4_click);
    across->addWidget(Command4_);
    card->body()->addLayout(across);

    folderRow_ = new QWidget;
    auto* below = new QHBoxLayout(folderRow_);
    below->setContentsMargins({});
    below->setSpacing(look::spaceBase);
    folderNotice_ = named(look::makeCaption(QString()), "lblfoldernotice");
    folderNotice_->setTextFormat(Qt::PlainText);
    folderNotice_->setWordWrap(true);
    below->addWidget(folderNotice_, 1);
    movetocorrupt_ = new QPushButton(QStringLiteral("Move to corrupt"));
    movetocorrupt_->setObjectName(QStringLiteral("cmdmovetocorrupt"));
    movetocorrupt_->setToolTip(
        QStringLiteral("Takes the file out of the folder new, so that the others come in. "
                       "It is kept in the folders corrupt and old"));
    connect(movetocorrupt_, &QPushButton::clicked, this, &MainScreen::movetocorrupt_click);
    below->addWidget(movetocorrupt_, 0, Qt::AlignTop);
    folderRow_->hide();
    card->body()->addWidget(folderRow_);
    return card;
}

/// "Database Update", and which file of how many.
QHBoxLayout* MainScreen::makeProgressHead() {
    auto* head = new QHBoxLayout;
    auto* icon = new look::ClickableLabel;
    icon->setIconName(QStringLiteral("database"), 22);
    icon->setInk(look::Ink::Accent);
    icon->setFocusPolicy(Qt::NoFocus);
    icon->setAttribute(Qt::WA_TransparentForMouseEvents);
    head->addWidget(icon);
    head->addWidget(look::makeHeading(QStringLiteral("Database Update")));
    head->addStretch(1);
    lblcurrentfile_ = named(new QLabel, "lblcurrentfile");
    lblcurrentfile_->setFont(look::big(24));
    head->addWidget(lblcurrentfile_, 0, Qt::AlignBaseline);
    head->addWidget(look::makeCaption(QStringLiteral("of")), 0, Qt::AlignBaseline);
    lbltotalfiles_ = named(look::makeCaption(QString()), "lbltotalfiles");
    head->addWidget(lbltotalfiles_, 0, Qt::AlignBaseline);
    head->addWidget(look::makeCaption(QStringLiteral("files")), 0, Qt::AlignBaseline);
    return head;
}

void MainScreen::buildProgress(QWidget* area) {
    Frame2_ = named(new look::OverlayCard(area), "Frame2");
    QVBoxLayout* down = Frame2_->body();
    down->setSpacing(look::spaceBase);
    down->addLayout(makeProgressHead());
    down->addWidget(new look::Rule);

    auto* file = new QHBoxLayout;
    lblprogress_ = named(new look::WholeLabel, "lblprogress");
    file->addWidget(lblprogress_, 1);
    lbltotalsizes_ = named(look::makeCaption(QString()), "lbltotalsizes");
    file->addWidget(lbltotalsizes_);
    file->addWidget(look::makeCaption(QStringLiteral("bytes in all")));
    down->addLayout(file);
    lblcopying_ = named(look::makeCaption(QString()), "lblcopying");
    lblcopying_->hide();
    down->addWidget(lblcopying_);

    importbar_ = named(new QProgressBar, "importbar");
    importbar_->setAccessibleName(QStringLiteral("How far the import is"));
    importbar_->setFormat(QStringLiteral("%p %"));
    down->addWidget(importbar_);
    auto* notice = new look::NoticeBand(QStringLiteral("DO NOT HIT OTHER KEYS OR TERMINATE PROGRAM"));
    named(notice->label(), "Label17");
    down->addWidget(notice);

    auto* foot = new QHBoxLayout;
    foot->addWidget(look::makeCaption(QStringLiteral("stops after the file in hand")));
    foot->addStretch(1);
    stopimport_ = named(new QPushButton(QStringLiteral("stop import")), "stopimport");
    stopimport_->setIcon(look::icon("stop"));
    stopimport_->setToolTip(QStringLiteral("Click to abort importing dives after current one finishes"));
    stopimport_->setEnabled(false);
    connect(stopimport_, &QPushButton::clicked, this, &MainScreen::stopImport);
    foot->addWidget(stopimport_);
    down->addLayout(foot);

    auto* files = new look::Fold(QStringLiteral("Files of this run"));
    List1_ = named(new QListWidget, "List1");
    List1_->setMaximumHeight(look::scaled(120));
    files->body()->addWidget(List1_);
    down->addWidget(files);
    down->addWidget(makeEstimate());
    Frame2_->hide();
}

} // namespace benthor::shell
