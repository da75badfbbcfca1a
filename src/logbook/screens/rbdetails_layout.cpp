// What stands where.

#include "logbook/screens/buddyrow.h"
#include "logbook/screens/picturebutton.h"
#include "logbook/screens/picturetile.h"
#include "logbook/screens/rbdetails.h"
#include "logbook/screens/sitenote.h"
#include "platform/look/look.h"
#include "platform/look/widgets/card.h"
#include "platform/look/widgets/numberlabel.h"
#include "platform/look/widgets/wholelabel.h"

#include <QAction>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace benthor::logbook {

namespace {

constexpr int kDeviceWidth = 248;
constexpr int kTilesHeight = 148;
constexpr int kSuitLength = 50; // the store takes no longer one
constexpr int kNumber = 20;
constexpr int kLeastNotes = 72; // height of a box of words
constexpr int kLeastBuddies = 48;

template <class Box> Box* named(Box* box, const char* name, const char* accessibleName) {
    box->setObjectName(QLatin1String(name));
    box->setAccessibleName(QLatin1String(accessibleName));
    return box;
}

QComboBox* pickBox(const char* name, const char* accessibleName) {
    auto* box = named(new QComboBox, name, accessibleName);
    box->setEditable(true);
    box->lineEdit()->setAccessibleName(box->accessibleName()); // it is what has the focus
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    box->setMinimumContentsLength(8);
    return box;
}

QVBoxLayout* captioned(const QString& caption, QWidget* below, int stretch = 0) {
    auto* column = new QVBoxLayout;
    column->setSpacing(2);
    QLabel* label = look::makeCaption(caption);
    label->setBuddy(below);
    column->addWidget(label);
    column->addWidget(below, stretch);
    return column;
}

} // namespace

rbdetails::rbdetails()
    : Screen(QStringLiteral("rbdetails")) {
    setWindowTitle(QStringLiteral("Dive and Log details"));
    buildMenus();
    auto* ground = new QWidget;
    auto* down = new QVBoxLayout(ground);
    down->setContentsMargins(0, 0, 0, 0);
    down->setSpacing(0);
    down->addWidget(buildBar());
    auto* body = new QVBoxLayout;
    body->setContentsMargins(look::spaceBase, look::spaceBase, look::spaceBase, look::spaceBase);
    body->setSpacing(look::spaceBase);
    auto* across = new QHBoxLayout;
    across->setSpacing(look::spaceBase);
    across->addWidget(buildDevice());
    across->addWidget(buildDiver(), 1);
    body->addLayout(across, 1);
    body->addWidget(buildPictures());
    down->addLayout(body, 1);
    setContents(ground);
    setMinimumSize(900, 620);
    Txtdiver_->setFocus();
    connectTyping();
    connect(new QShortcut(QKeySequence(Qt::Key_Escape), this), &QShortcut::activated, this,
            &rbdetails::Cmdcancel_click);
}

void rbdetails::connectTyping() {
    for (QLineEdit* box : {Txtdiver_, txtlocation_, txtsuit_}) {
        connect(box, &QLineEdit::textEdited, this, &rbdetails::typed);
    }
    for (QComboBox* box : {Cbodepartment_, Cbosite_, cbowhether_}) {
        connect(box, &QComboBox::currentTextChanged, this, &rbdetails::typed);
    }
    for (QPlainTextEdit* box : {txtdivenote_, txtsitenote_, txtcomments_}) {
        connect(box, &QPlainTextEdit::textChanged, this, &rbdetails::typed);
    }
    QLineEdit* buddy = cbobuddy_->lineEdit();
    connect(buddy, &QLineEdit::textEdited, this, [this] { buddyTyped_ = true; });
    buddy->installEventFilter(this);
    connect(cbobuddy_, &QComboBox::activated, this, [this] { buddyTyped_ = false; });
}

void rbdetails::buildMenus() {
    const auto heading = [this](const char* name, const char* caption) {
        QMenu* menu = menuBar()->addMenu(QLatin1String(caption));
        menu->menuAction()->setObjectName(QLatin1String(name));
        return menu;
    };
    const auto entry = [this](QMenu* menu, const char* name, const char* caption, const QKeySequence& keys,
                              void (rbdetails::*act)()) {
        QAction* action = menu->addAction(QLatin1String(caption));
        action->setObjectName(QLatin1String(name));
        action->setShortcut(keys);
        connect(action, &QAction::triggered, this, [this, act] { (this->*act)(); });
    };
    QMenu* file = heading("mnuFile", "&File");
    entry(file, "mnuSave", "&Save", QKeySequence::Save, &rbdetails::cmdSave_click);
    entry(file, "mnuprint", "&Print", QKeySequence::Print, &rbdetails::FormPrint);
    file->addSeparator();
    entry(file, "mnuExit", "E&xit", QKeySequence(Qt::CTRL | Qt::Key_W), &rbdetails::Cmdcancel_click);
    QMenu* buddy = heading("mnubuddy", "&Buddy");
    entry(buddy, "mnubuddyadd", "&Add", {}, &rbdetails::cmdadd_click);
    entry(buddy, "mnubuddyremove", "&Remove", {}, &rbdetails::cmdremove_click);

    quietLine_ = new look::WholeLabel;
    quietLine_->setObjectName(QStringLiteral("quietline"));
    quietLine_->setFont(look::caption());
    look::setInk(quietLine_, look::Ink::Quiet);
}

QWidget* rbdetails::buildBar() {
    auto* bar = new look::Pane(Qt::BottomEdge);
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(look::spaceBase, 10, look::spaceBase, 10);
    row->setSpacing(look::spaceSmall);
    const auto button = [this](const char* name, const char* caption, const char* icon, const char* picture,
                               void (rbdetails::*act)()) {
        auto* made = new PictureButton(QLatin1String(caption), icon, QLatin1String(picture));
        made->setObjectName(QLatin1String(name));
        connect(made, &QAbstractButton::clicked, this, act);
        return made;
    };
    auto* save = button("cmdSave", "Save", "save", "Picture2", &rbdetails::cmdSave_click);
    save->setProperty("primary", true);
    auto* back = button("cmdclose", "Dive profile", "back", "Picture4", &rbdetails::Cmdcancel_click);
    back->setToolTip(QStringLiteral("Stores the details and goes back to the dive"));
    row->addWidget(back);
    row->addWidget(save);
    row->addWidget(button("FormPrint", "Print", "print", "Picture3", &rbdetails::FormPrint));
    row->addSpacing(look::spaceSmall);
    row->addWidget(quietLine_, 1);
    auto* cancel = new QPushButton(QStringLiteral("Cancel"));
    cancel->setObjectName(QStringLiteral("Cmdcancel"));
    cancel->setProperty("quiet", true);
    cancel->setAutoDefault(false);
    cancel->setToolTip(QStringLiteral("Leaves the details; what was written is stored all the same"));
    connect(cancel, &QPushButton::clicked, this, &rbdetails::Cmdcancel_click);
    row->addWidget(cancel);
    return bar;
}

QWidget* rbdetails::buildDevice() {
    struct Box {
        const char* name;
        const char* caption;
        int px;
    };
    static constexpr std::array<Box, 10> kBoxes{{{"txtdiveid", "Dive", kNumber},
                                                 {"txtDivedate", "Start", 16},
                                                 {"txttimeup", "End", 16},
                                                 {"txtduration", "Duration (min:s)", kNumber},
                                                 {"txtmaxdepth", "Max depth", kNumber},
                                                 {"txtinterval", "Interval (s)", kNumber},
                                                 {"txtversion", "Version", kNumber},
                                                 {"txtotu", "OTU", kNumber},
                                                 {"txtatmos", "Surface (mBar)", kNumber},
                                                 {"txtdusageh", "Usage (s)", kNumber}}};
    auto* card = new look::Card;
    card->setFixedWidth(look::scaled(kDeviceWidth));
    QVBoxLayout* down = card->body();
    down->setContentsMargins(look::spaceWide, look::spaceBase, look::spaceWide, look::spaceBase);
    down->setSpacing(look::spaceSmall);
    down->addWidget(look::makeHeading(QStringLiteral("From the device")));
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(look::spaceBase);
    grid->setVerticalSpacing(look::spaceBase);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    depthcaption_ = look::makeCaption(QString());
    int row = 0;
    int col = 0;
    for (size_t i = 0; i < kBoxes.size(); ++i) {
        const Box& box = kBoxes[i];
        auto* number = named(new look::NumberLabel(box.px), box.name, box.caption);
        device_[i] = number;
        auto* cell = new QVBoxLayout;
        cell->setSpacing(0);
        auto* head = new QHBoxLayout;
        head->setSpacing(look::spaceTight);
        head->addWidget(look::makeCaption(QLatin1String(box.caption)));
        if (QLatin1String(box.name) == QLatin1String("txtmaxdepth")) {
            depthcaption_->setObjectName(QStringLiteral("lbldepthunit"));
            head->addWidget(depthcaption_);
        }
        head->addStretch(1);
        cell->addLayout(head);
        cell->addWidget(number);
        const bool whole = i < 3; // identifier and dates have the width for themselves
        grid->addLayout(cell, row, whole ? 0 : col, 1, whole ? 2 : 1);
        col = whole ? 0 : 1 - col;
        if (col == 0) {
            ++row;
        }
    }
    down->addLayout(grid);
    down->addStretch(1);
    return card;
}

QPlainTextEdit* rbdetails::notes(const char* name, QPlainTextEdit* box) {
    box = box != nullptr ? box : new QPlainTextEdit;
    box->setObjectName(QLatin1String(name));
    box->setTabChangesFocus(true);
    box->setMinimumHeight(look::scaled(kLeastNotes));
    return box;
}

QWidget* rbdetails::buildDiver() {
    auto* card = new look::Card;
    QVBoxLayout* down = card->body();
    down->setContentsMargins(look::spaceWide, look::spaceBase, look::spaceWide, look::spaceBase);
    down->setSpacing(look::spaceSmall);
    down->addWidget(look::makeHeading(QStringLiteral("Your log")));
    Txtdiver_ = named(new QLineEdit, "Txtdiver", "Diver");
    txtlocation_ = named(new QLineEdit, "txtlocation", "Dive name");
    txtsuit_ = named(new QLineEdit, "txtsuit", "S\\N");
    txtsuit_->setMaxLength(kSuitLength);
    Cbosite_ = pickBox("Cbosite", "Site");
    Cbodepartment_ = pickBox("Cbodepartment", "Department");
    cbowhether_ = pickBox("cbowhether", "Weather");
    txtdivenote_ = notes("txtdivenote");
    txtsitenote_ = notes("txtsitenote", new SiteNote);
    txtcomments_ = notes("txtcomments");
    txtdivenote_->setAccessibleName(QStringLiteral("Dive notes"));
    txtsitenote_->setAccessibleName(QStringLiteral("Site notes"));
    txtcomments_->setAccessibleName(QStringLiteral("Comments"));

    auto* form = new QGridLayout;
    form->setHorizontalSpacing(look::spaceBase);
    form->setVerticalSpacing(look::spaceSmall);
    form->addLayout(captioned(QStringLiteral("Diver"), Txtdiver_), 0, 0);
    form->addLayout(captioned(QStringLiteral("Dive name"), txtlocation_), 0, 1);
    form->addLayout(captioned(QStringLiteral("S\\N"), txtsuit_), 0, 2);
    form->addLayout(captioned(QStringLiteral("Site"), Cbosite_), 1, 0);
    form->addLayout(captioned(QStringLiteral("Weather"), cbowhether_), 1, 1);
    form->addLayout(captioned(QStringLiteral("Department"), Cbodepartment_), 1, 2);
    for (int col = 0; col < 3; ++col) {
        form->setColumnStretch(col, 1);
    }
    down->addLayout(form);

    auto* words = new QGridLayout;
    words->setHorizontalSpacing(look::spaceBase);
    words->setVerticalSpacing(look::spaceSmall);
    words->addLayout(captioned(QStringLiteral("Dive notes"), txtdivenote_, 1), 0, 0);
    words->addLayout(captioned(QStringLiteral("Site notes"), txtsitenote_, 1), 0, 1);
    words->addLayout(captioned(QStringLiteral("Comments"), txtcomments_, 1), 1, 0);
    words->addWidget(buildBuddies(), 1, 1);
    for (int i = 0; i < 2; ++i) {
        words->setColumnStretch(i, 1);
        words->setRowStretch(i, 1);
    }
    down->addLayout(words, 1);
    return card;
}

QWidget* rbdetails::buildBuddies() {
    auto* panel = new QWidget;
    auto* down = new QVBoxLayout(panel);
    down->setContentsMargins(0, 0, 0, 0);
    down->setSpacing(look::spaceTight);
    down->addWidget(look::makeCaption(QStringLiteral("Buddies")));
    cbobuddy_ = pickBox("cbobuddy", "Buddy");
    List1_ = named(new QListWidget, "List1", "Buddies of this dive");
    List1_->setMinimumHeight(look::scaled(kLeastBuddies));
    const auto button = [this](const char* name, const char* caption, const char* icon,
                               void (rbdetails::*act)()) {
        auto* made = new QPushButton(look::icon(icon), QLatin1String(caption));
        made->setObjectName(QLatin1String(name));
        made->setAutoDefault(false);
        connect(made, &QPushButton::clicked, this, act);
        return made;
    };
    down->addWidget(new BuddyRow(cbobuddy_, button("cmdadd", "Add", "add", &rbdetails::cmdadd_click),
                                 button("cmdremove", "Remove", "remove", &rbdetails::cmdremove_click)));
    down->addWidget(List1_, 1);
    return panel;
}

QWidget* rbdetails::buildPictures() {
    auto* row = new QWidget;
    row->setFixedHeight(look::scaled(kTilesHeight));
    auto* across = new QHBoxLayout(row);
    across->setContentsMargins(0, 0, 0, 0);
    across->setSpacing(look::spaceBase);
    for (int index = 0; index < kPictures; ++index) {
        auto* tile = new PictureTile(index);
        connect(tile, &PictureTile::clicked, this, [this, index] { Image1_click(index); });
        connect(tile, &PictureTile::givenUp, this, [this, index] { givePictureUp(index); });
        tiles_[static_cast<size_t>(index)] = tile;
        across->addWidget(tile, 1);
    }
    return row;
}

} // namespace benthor::logbook
