// What stands where.

#include "gas/gascalc.h"
#include "gas/screens/changespanel.h"
#include "gas/screens/gasblend.h"
#include "gas/screens/gasgraph.h"
#include "gas/screens/readingspanel.h"
#include "gas/screens/settingsform.h"
#include "gas/setuptext.h"
#include "gas/typing.h"
#include "platform/look/access/access.h"
#include "platform/look/look.h"
#include "platform/look/widgets/card.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/columnarea.h"
#include "platform/look/widgets/status.h"

#include <QAction>
#include <QLabel>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace benthor::gas {

namespace {

constexpr int kWidth = 634;
constexpr int kDebugWidth = 1104;
constexpr int kHeight = 636;
constexpr int kTableWidth = 372;
constexpr int kLeastGraph = 90;

} // namespace

void GasBlend::buildMenus() {
    const auto heading = [this](const char* name, const char* caption) {
        QMenu* menu = menuBar()->addMenu(QLatin1String(caption));
        menu->menuAction()->setObjectName(QLatin1String(name));
        return menu;
    };
    QMenu* file = heading("mnuFile", "&File");
    entry(file, "mnuOpen", "&Open", [this] { mnuOpen_click(); })->setShortcut(QKeySequence::Open);
    entry(file, "mnuSave", "&Save", [this] { mnuSave_click(); })->setShortcut(QKeySequence::Save);
    file->addSeparator();
    entry(file, "mnuExit", "E&xit", [this] {
        const Routine routine(*this);
        neighbours_.showLink();
        unload();
    })->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_W));
    QMenu* edit = heading("editTyped", "&Edit");
    bringBack_ = entry(edit, "bringBackTyped", "&Bring back what was typed",
                       [this] { perform([this] { bringback(plan_); }); });
    QMenu* view = heading("mnuView", "&View");
    mnuDebug_ = entry(view, "mnuDebug", "&Debug", [this] { showDebug(true); });
    mnuDebugOff_ = entry(view, "mnuDebugOff", "Debug &off", [this] { showDebug(false); });
    QMenu* units = heading("mnuUnits", "&Units");
    mnuMeters_ = entry(units, "mnuMeters", "&Metres",
                       [this] { perform([this] { chooseunits(plan_, false, say_); }); });
    mnuFeet_ =
        entry(units, "mnuFeet", "&Feet", [this] { perform([this] { chooseunits(plan_, true, say_); }); });
    for (QAction* action : {mnuDebug_, mnuDebugOff_, mnuMeters_, mnuFeet_}) {
        action->setCheckable(true);
    }
}

QAction* GasBlend::entry(QMenu* menu, const char* name, const char* caption,
                         const std::function<void()>& work) {
    QAction* action = menu->addAction(QLatin1String(caption));
    action->setObjectName(QLatin1String(name));
    connect(action, &QAction::triggered, this, work);
    return action;
}

void GasBlend::buildBody() {
    table_ = new GasTable;
    graph_ = new GasGraph;
    readings_ = new ReadingsPanel;
    changes_ = new ChangesPanel;
    form_ = new SettingsForm;
    connect(table_, &GasTable::cellEdited, this, &GasBlend::cellEdited);
    connect(table_, &GasTable::activeClicked, this, [this](int row, bool active) {
        perform([this, row, active] { clickactive(plan_, row, active, say_); });
    });
    connect(table_, &GasTable::startClicked, this,
            [this](int row) { perform([this, row] { clickstart(plan_, row); }); });
    connect(table_, &GasTable::rowChosen, this,
            [this](int row) { perform([this, row] { showgasrow(plan_, row); }); });
    const auto stepped = [this](int index, bool up) {
        perform([this, index, up] { clickstepper(plan_, index, up, say_); });
    };
    connect(graph_, &GasGraph::stepped, this, stepped);
    connect(form_, &SettingsForm::stepped, this, stepped);
    connect(graph_, &GasGraph::scrolled, this, [this](int index, int value) {
        perform([this, index, value] { moveslider(plan_, index, value, say_); });
    });
    connect(form_, &SettingsForm::edited, this,
            [this] { perform([this] { typesettings(plan_, form_->settings()); }); });
    connect(form_, &SettingsForm::listChosen, this, [this](bool startingGas) {
        // The starting gas is chosen in the table; its list only follows.
        const int divegas = plan_.settings.divegas;
        typesettings(plan_, form_->settings());
        if (startingGas) {
            plan_.settings.divegas = divegas;
        }
        Timer5_tick();
    });
    connect(form_, &SettingsForm::maximumEdited, this,
            [this](const QString& text) { cellEdited(Cell::Maximum, -1, text); });
    layBody();
}

void GasBlend::layBody() {
    // The rows of the gases keep their height; what is below takes what is left.
    table_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    readings_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    changes_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    auto* left = new QVBoxLayout;
    left->setSpacing(look::spaceSmall);
    auto* gases = new look::Card;
    gases->body()->setContentsMargins(0, look::spaceTight, 0, look::spaceTight);
    gases->body()->addWidget(table_);
    left->addWidget(gases);
    auto* below = new look::Card;
    below->body()->setContentsMargins(0, 0, 0, 0);
    tabs_ = new QTabWidget;
    tabs_->setDocumentMode(true);
    graphArea_ = new look::ColumnArea(graph_, kLeastGraph);
    tabs_->addTab(graphArea_, QStringLiteral("Gas 0"));
    tabs_->addTab(readings_, QStringLiteral("Live readings"));
    tabs_->addTab(changes_, QStringLiteral("Changes"));
    below->body()->addWidget(tabs_);
    left->addWidget(below, 1);
    leftSide_ = new QWidget;
    leftSide_->setLayout(left);
    left->setContentsMargins({});
    leftSide_->setMinimumWidth(std::max(kTableWidth, leftSide_->minimumSizeHint().width()));

    auto* settings = new look::Card;
    settings->body()->setContentsMargins(0, 0, 0, 0);
    formArea_ = new look::ColumnArea(form_);
    settings->body()->addWidget(formArea_);

    auto* across = new QHBoxLayout;
    across->setContentsMargins(look::spaceBase, look::spaceBase, look::spaceBase, look::spaceBase);
    across->setSpacing(look::spaceBase);
    across->addWidget(leftSide_);
    across->addWidget(settings);
    debug_ = buildDebug();
    across->addWidget(debug_, 1);
    auto* ground = new QWidget;
    auto* down = new QVBoxLayout(ground);
    down->setContentsMargins({});
    down->setSpacing(0);
    replaced_ = band("replacedBand");
    down->addWidget(replaced_);
    down->addLayout(across, 1);
    down->addWidget(buildFoot());
    setContents(ground);
    buildHidden();
}

/// A line that is there while it has something to say.
look::NoticeBand* GasBlend::band(const char* name) {
    auto* made = new look::NoticeBand(QString());
    made->setObjectName(QLatin1String(name));
    made->label()->setTextFormat(Qt::PlainText);
    made->hide();
    return made;
}

QWidget* GasBlend::buildFoot() {
    auto* foot = new look::Pane(Qt::TopEdge);
    auto* down = new QVBoxLayout(foot);
    down->setContentsMargins(look::spaceBase, 10, look::spaceBase, 10);
    down->setSpacing(look::spaceSmall);
    look_ = band("lookBand");
    down->addWidget(look_);
    auto* row = new QHBoxLayout;
    down->addLayout(row);
    row->setSpacing(look::spaceSmall);
    Label7_ = new look::StatusChip;
    Label7_->setObjectName(QStringLiteral("Label7"));
    Label7_->setFixedChipHeight(32);
    Label22_ = new QLabel;
    Label22_->setObjectName(QStringLiteral("Label22"));
    Label22_->setFont(look::strong(look::body()));
    Label20_ = look::makeCaption(QString());
    Label20_->setObjectName(QStringLiteral("Label20"));
    row->addWidget(Label7_);
    row->addWidget(Label22_);
    row->addStretch(1);
    row->addWidget(Label20_);
    row->addWidget(buildRefresh());
    auto* Command1 = new QPushButton(look::icon("send"), QStringLiteral("Update KD/Tolby"));
    Command1->setObjectName(QStringLiteral("Command1"));
    Command1->setProperty("primary", true);
    Command1->setAutoDefault(false);
    connect(Command1, &QPushButton::clicked, this, [this] { Command1_click(); });
    row->addWidget(Command1);
    return foot;
}

QWidget* GasBlend::buildRefresh() {
    refresh_ = new QPushButton; // Picture1 with its caption, one to the eye
    refresh_->setFocusPolicy(Qt::NoFocus);
    look::setReaderRole(refresh_, QAccessible::Grouping); // what is in it acts
    auto* inside = new QHBoxLayout(refresh_);
    inside->setContentsMargins(look::spaceSmall, 0, look::spaceSmall, 0);
    inside->setSpacing(look::spaceTight);
    Picture1_ = new look::ClickableLabel;
    Picture1_->setObjectName(QStringLiteral("Picture1"));
    Picture1_->setIconName(QStringLiteral("refresh"), 18);
    Picture1_->setToolTip(QStringLiteral("Refresh display if connected to KD/Tolby"));
    Picture1_->setAccessibleName(Picture1_->toolTip());
    Label15_ = new look::ClickableLabel(QStringLiteral("Refesh"));
    Label15_->setObjectName(QStringLiteral("Label15"));
    Label15_->setFocusPolicy(Qt::NoFocus);
    inside->addWidget(Picture1_);
    inside->addWidget(Label15_);
    refresh_->setMinimumWidth(Picture1_->sizeHint().width() + Label15_->sizeHint().width() +
                              3 * look::spaceSmall);
    connect(refresh_, &QPushButton::clicked, this, &GasBlend::refresh);
    connect(Picture1_, &look::ClickableLabel::clicked, this, &GasBlend::refresh);
    connect(Label15_, &look::ClickableLabel::clicked, this, &GasBlend::refresh);
    return refresh_;
}

QPlainTextEdit* GasBlend::rawText(QWidget* parent, const char* name, const char* caption) {
    auto* down = static_cast<QVBoxLayout*>(parent->layout());
    down->addWidget(look::makeCaption(QLatin1String(caption)));
    auto* box = new QPlainTextEdit;
    box->setObjectName(QLatin1String(name));
    box->setAccessibleName(QLatin1String(caption));
    box->setReadOnly(true);
    box->setFont(look::fixed(11));
    box->setWordWrapMode(QTextOption::WrapAnywhere);
    down->addWidget(box, 1);
    return box;
}

QWidget* GasBlend::buildDebug() {
    auto* debug = new QWidget;
    auto* down = new QVBoxLayout(debug);
    down->setContentsMargins({});
    down->setSpacing(2);
    Text6_ = rawText(debug, "Text6", "Gas block");
    Text7_ = rawText(debug, "Text7", "Setup text");
    Text8_0_ = rawText(debug, "Text8(0)", "File");
    Text8_1_ = rawText(debug, "Text8(1)", "Received");
    auto* Frame2 = new QWidget;
    Frame2->setObjectName(QStringLiteral("Frame2"));
    auto* row = new QHBoxLayout(Frame2);
    row->setContentsMargins({});
    auto* Command2 = new QPushButton(QStringLiteral("Command2"));
    Command2->setObjectName(QStringLiteral("Command2"));
    Command2->setAutoDefault(false);
    connect(Command2, &QPushButton::clicked, this, [this] { Command2_click(); });
    Label14_ = look::makeCaption(QString());
    Label14_->setObjectName(QStringLiteral("Label14"));
    row->addWidget(look::makeCaption(QStringLiteral("Stamp")));
    row->addWidget(Label14_);
    row->addStretch(1);
    row->addWidget(Command2);
    down->addWidget(Frame2);
    return debug;
}

/// The table of letters that drives reading and writing, as controls that nobody needs to see.
void GasBlend::buildHidden() {
    for (size_t tag = 0; tag < kTags.size(); ++tag) {
        const auto label = [this, tag](const char* name, const QString& text) {
            auto* made = new QLabel(text, debug_);
            made->setObjectName(QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(tag));
            made->hide();
            return made;
        };
        label("Label11", QString(QChar(kTags[tag].letter)));
        label("Label13", QString::number(kTags[tag].width));
        Text15_.push_back(label("Text15", QStringLiteral("Time")));
    }
}

/// At first all is seen; a lower window scrolls the settings and the gas in hand.
QSize GasBlend::firstSize() const {
    const QSize needed = contents()->minimumSizeHint();
    const int left = leftSide_->minimumSizeHint().height();
    const int right = formArea_->minimumSizeHint().height();
    const int leftOut =
        std::max(left + graphArea_->leftOut(), right + formArea_->leftOut()) - std::max(left, right);
    const int told = debug_->isHidden() ? kWidth : kDebugWidth;
    return {std::max(look::scaled(told), needed.width()),
            std::max(look::scaled(kHeight), needed.height() + leftOut + menuBar()->sizeHint().height())};
}

} // namespace benthor::gas
