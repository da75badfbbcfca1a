#include "shell/screens/main_screen.h"

#include "divefiles/importer.h"
#include "link/linkstatus.h"
#include "platform/look/access/access.h"
#include "platform/look/pictures.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/entryrow.h"
#include "platform/look/widgets/numberlabel.h"
#include "platform/look/widgets/overlaycard.h"
#include "platform/look/widgets/status.h"
#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"
#include "platform/screen/ticktimer.h"
#include "platform/screen/toldqcolor.h"
#include "platform/skiperrors.h"
#include "session/process.h"
#include "shell/screens/neighbours.h"
#include "shell/screens/unsavednote.h"
#include "store/identifiers.h"
#include "store/summary.h"
#include "store/units.h"

#include <QAction>
#include <QEvent>
#include <QLabel>
#include <QMenu>
#include <QStackedWidget>
#include <QTemporaryDir>

namespace benthor::shell {

using platform::ProgramFolder;
using platform::skipErrors;
using platform::TickTimer;

MainScreen::MainScreen(Neighbours& neighbours)
    : Screen(QStringLiteral("main"))
    , neighbours_(neighbours)
    , import_(std::make_unique<divefiles::ImportState>()) {
    setWindowTitle(QStringLiteral("Benthor"));
    buildMenus();
    buildLayout();
    buildTimers();
}

MainScreen::~MainScreen() = default;

void MainScreen::buildTimers() {
    const auto timer = [this](const char* name, int interval, TickTimer::Start start,
                              void (MainScreen::*tick)()) {
        auto* made = new TickTimer(QLatin1String(name), interval, start, this);
        if (tick != nullptr) {
            connect(made, &TickTimer::tick, this, tick);
        }
        return made;
    };
    Timer1_ = timer("Timer1", 1000, TickTimer::Start::Enabled, &MainScreen::Timer1_tick);
    Timer2_ = timer("Timer2", 1000, TickTimer::Start::Enabled, &MainScreen::Timer2_tick);
    Timer3_ = timer("Timer3", 1000, TickTimer::Start::Enabled, nullptr);
    storetimer_ = timer("storetimer", 1000, TickTimer::Start::Disabled, &MainScreen::storetimer_tick);
    Timer4_ = timer("Timer4", 2000, TickTimer::Start::Disabled, &MainScreen::Timer4_tick);
}

/// A step that fails does not keep the ones behind it from running.
void MainScreen::loading() {
    process().diveviewopen = false;
    infochoice_ = kNoEntry;
    process().importing = false;
    neighbours_.unloadFirmware();
    process().producttype = QStringLiteral("OTHER");
    if (!storeIsThere()) {
        unload();
        neighbours_.endProcess();
        return;
    }
    process().firststart = true;
    if (neighbours_.isSecondCopy()) {
        platform::dialogs().message(this, neighbours_.callFirstCopy());
        unload();
        return;
    }
    skipErrors([this] { bringOlderBackup(); });
    skipErrors([this] { openStore(); });
    skipErrors([] { store::syncserialno(); });
    skipErrors([this] { readUnits(); });
    process().divesystem = QStringLiteral("Rebrether");
    lbltotaldive_->hide();
    lblprogress_->hide();
    Frame2_->hide();
    unsavednote_->lookAgain();
    selectEntry(kMyDives);
    Timer4_->setEnabled(true);
}

void MainScreen::readUnits() {
    process().depthunit = store::readunit();
    takeUnits(process().depthunit == QLatin1String("Feet") ? QStringLiteral("Feet")
                                                           : QStringLiteral("metre"));
}

/// What the user chooses holds for the rest of the run, whatever becomes of the table.
void MainScreen::chooseUnits(const QString& word) {
    process().unitoverride = word;
    takeUnits(word);
    neighbours_.unitChosen();
}

void MainScreen::takeUnits(const QString& word) {
    process().depthunit = word;
    showUnits();
    skipErrors([&word] { store::writeunit(word); });
}

/// The menu says "metres" where the store's word is "metre".
void MainScreen::showUnits() {
    const bool feet = process().depthunit == QLatin1String("Feet");
    mnuFeet_->setChecked(feet);
    mnuMeters_->setChecked(!feet);
    mnuUnits_->setTitle(feet ? QStringLiteral("Feet") : QStringLiteral("metres"));
}

void MainScreen::unloading() {
    stopImport();
    neighbours_.unloadOthers();
}

/// A failing step ends the routine: entry and panel then stay as they were, and the words about an empty
/// store stand below.
void MainScreen::showinfopanel() {
    for (look::EntryRow* row : std::as_const(entries_)) {
        row->setChosen(false);
    }
    Lbldetails_->clear();
    Lbldetails_->hide();
    firstdive_->hide();
    nextdive_->hide();
    panelentry_->show();
    showFoot();
    try {
        showTotals();
    } catch (const platform::StoreError&) {
        Lbldetails_->setText(noDivesText());
        Lbldetails_->show();
        return;
    }
    fillPanel();
    nextdive_->setVisible(Label7_->text().isEmpty());
    panelentry_->setHidden(Label7_->text().isEmpty());
    Label6_->show();
    Label7_->show();
}

void MainScreen::divesCame() {
    if (!firstdive_->isHidden()) {
        showinfopanel();
    }
}

void MainScreen::showTotals() {
    platform::Database store;
    store.open(ProgramFolder::current().path(u"rb.mdb"));
    const int dives = store::countdives(store);
    lbltotaldive_->setText(store::counttext(dives));
    firstdive_->setVisible(dives == 0);
    panelentry_->setVisible(dives > 0 || !Label7_->text().isEmpty());
    lbltotaldive_->setText(store::counttext(dives) + store::lastdivetext(store::lastdive(store)));
    lbltotaldive_->show();
}

/// The button of the chosen entry.
void MainScreen::showFoot() {
    foot_->setVisible(feet_.contains(infochoice_));
    if (feet_.contains(infochoice_)) {
        foot_->setCurrentWidget(feet_.value(infochoice_));
    }
}

void MainScreen::fillPanel() {
    look::EntryRow* row = entries_.value(infochoice_);
    if (row != nullptr) {
        row->setChosen(true);
    }
    const InfoPanel panel = infoPanel(infochoice_);
    if (row != nullptr && !panel.text.isEmpty()) {
        Label7_->setText(row->caption()->text());
        Label9_->setText(panel.text);
        panelPicture_ = panel.pictureFile;
        showPanelPicture();
    }
}

/// The picture keeps its shape in a quarter of the window's width.
void MainScreen::showPanelPicture() {
    const QImage picture(ProgramFolder::current().path(panelPicture_));
    const int width = std::clamp(this->width() / 4, 200, 432);
    Picture12_->setPixmap(look::picturePixmap(picture, QSize(width, width), devicePixelRatio()));
    Picture12_->setVisible(!picture.isNull());
}

bool MainScreen::event(QEvent* event) {
    const bool done = Screen::event(event);
    if (event->type() == QEvent::LayoutRequest && contents() != nullptr) {
        fitLeastSize();
    }
    return done;
}

void MainScreen::changeEvent(QEvent* event) {
    Screen::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && !panelPicture_.isEmpty()) {
        showPanelPicture();
    }
}

void MainScreen::resizeEvent(QResizeEvent* event) {
    Screen::resizeEvent(event);
    fitCards();
    if (!panelPicture_.isEmpty()) {
        showPanelPicture();
    }
}

void MainScreen::selectEntry(int choice) {
    infochoice_ = choice;
    showinfopanel();
}

void MainScreen::entryClicked(int choice) {
    // An import in hand keeps its entry and its frame: a second one would do nothing.
    if (process().importing && (choice == kDatabaseUpdate || choice == kDiveFileFind)) {
        return;
    }
    selectEntry(choice);
    switch (choice) {
    case kMyDives:
        Command1_click();
        break;
    case kDatabaseUpdate:
        Command4_click();
        break;
    case kDownloadToPc:
        Command2_click();
        break;
    case kDiveFileFind:
        Command3_click();
        break;
    case kExit:
        cmdclose_click();
        break;
    case kSetupAndGas:
        showSetupAndGas();
        showinfopanel();
        break;
    default:
        break;
    }
}

void MainScreen::lblmdu_click() {
    entryClicked(kDatabaseUpdate);
}

void MainScreen::showHint(const QString& hint) {
    lbltotaldive_->setText(hint);
    lbltotaldive_->show();
}

void MainScreen::showLinkStatus() {
    const link::LinkStatus& link = neighbours_.linkStatus();
    const QString before = lblstatus_->text();
    if (link.isDownloading()) {
        lblstatus_->setText(QStringLiteral("Downloading"));
    } else {
        lblstatus_->setText(link.caption());
        lblstatus_->setToldColour(platform::toQColor(link.captionColour()));
    }
    // On the link screen it is said there.
    if (lblstatus_->text() != before && isActiveWindow()) {
        look::announce(this, QStringLiteral("Device link: ") + lblstatus_->text());
    }
}

void MainScreen::Timer2_tick() {
    if (process().importing) {
        return;
    }
    showLinkStatus();
    const link::LinkStatus& link = neighbours_.linkStatus();
    Text14_->setEnabled(link.caption() != QLatin1String("Connected"));
    showUnits(); // the dive screen may have changed them
    neighbours_.unitMayHaveChanged();
}

void MainScreen::Timer4_tick() {
    skipErrors([this] { neighbours_.showDiveList(); });
    Timer4_->setEnabled(false);
}

} // namespace benthor::shell
