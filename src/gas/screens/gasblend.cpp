#include "gas/screens/gasblend.h"

#include "gas/screens/changespanel.h"
#include "gas/screens/gasgraph.h"
#include "gas/screens/readingspanel.h"
#include "gas/screens/settingsform.h"
#include "gas/setuplook.h"
#include "gas/setuptext.h"
#include "gas/typing.h"
#include "platform/clock.h"
#include "platform/look/widgets/status.h"
#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"
#include "platform/screen/savepath.h"
#include "platform/screen/ticktimer.h"
#include "platform/screen/toldqcolor.h"
#include "session/process.h"

#include <QAction>
#include <QFileInfo>
#include <QLabel>
#include <QLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>

namespace benthor::gas {

using platform::dialogs;
using platform::ProgramFolder;

namespace {

QString mitFilter() {
    return QStringLiteral("Text Files (*.mit)|*.mit|All Files (*.*)|*.*");
}

} // namespace

GasBlend::GasBlend(GasNeighbours& neighbours)
    : Screen(QStringLiteral("GasBlend"))
    , neighbours_(neighbours)
    , say_([this](const QString& text) { say(text); })
    , agree_([this](const QString& text, const QString& title, const QString& below) {
        return dialogs().confirm(this, text, title, platform::BoxKind::Warning, true, below);
    }) {
    setWindowTitle(QStringLiteral("Gas and System Settings"));
    buildMenus();
    buildBody();
    Timer5_ =
        new platform::TickTimer(QStringLiteral("Timer5"), 1000, platform::TickTimer::Start::Enabled, this);
    connect(Timer5_, &platform::TickTimer::tick, this, &GasBlend::Timer5_tick);
}

GasBlend::~GasBlend() = default;

void GasBlend::say(const QString& text) {
    dialogs().message(this, text);
}

DeviceSetup GasBlend::device() const {
    return {unreadable_ ? QString() : reported_, unreadable_};
}

void GasBlend::loading() {
    opengas(plan_, ProgramFolder::current(), say_);
    showDebug(false);
    sync();
}

void GasBlend::unloading() {
    keeping();
}

void GasBlend::keeping() {
    if (isVisible()) {
        keepshown(plan_, platform::now(), say_);
    }
    closegas(plan_, ProgramFolder::current(), neighbours_.setupLink(), say_);
}

void GasBlend::Timer5_tick() {
    perform([this] {
        const auto ask = [this](const QString& text, const QString& title, const QString& below) {
            return dialogs().confirm(this, text, title, platform::BoxKind::Question, false, below);
        };
        gas::Timer5_tick(plan_, shown_, neighbours_.setupLink(), isVisible(), platform::now(), ask, say_);
        if (!isUnloaded()) {
            unreadable_ = neighbours_.setupLink().hidesSetup();
            refreshrests_ = neighbours_.setupLink().refreshRests();
            if (neighbours_.setupLink().owesSetup()) {
                reported_.clear();
            }
        }
    });
}

void GasBlend::receiveSetup(const QByteArray& text) {
    perform([this, &text] {
        plan_.Text8_1 = QString::fromLatin1(text);
        const bool taken = mnuopensource(plan_, ProgramFolder::current(), 1, {}, say_);
        // What could not be taken over is not what the screen shows, and so was not read.
        const qsizetype from = plan_.Text8_1.indexOf(QLatin1Char('A'));
        reported_ = from < 0 || !taken ? QString() : plan_.Text8_1.mid(from);
    });
}

/// The size that the screen has by itself comes back with each line.
void GasBlend::receiveReadings(const link::Readings& readings) {
    perform([this, &readings] {
        readings_->take(readings);
        readings_->showUnits(plan_.headfeet);
        const link::SetupLink& link = neighbours_.setupLink();
        shown_.Label7 = link.caption();
        shown_.Label7Colour = link.captionColour();
        showDebug(!mnuDebugOff_->isChecked());
    });
}

void GasBlend::cellEdited(Cell cell, int row, const QString& text) {
    perform([this, cell, row, &text] { typecell(plan_, cell, row, text, say_); });
}

/// A download lives on what the line brings: nothing is asked of the device beside it.
void GasBlend::refresh() {
    perform([this] {
        link::SetupLink& link = neighbours_.setupLink();
        if (!link.refreshRests()) {
            link.refreshDirectory();
        }
    });
}

void GasBlend::mnuOpen_click() {
    perform([this] {
        const QString path =
            dialogs().openFile(this, QStringLiteral("Open"), ProgramFolder::current().root(), mitFilter());
        if (!path.isEmpty()) {
            mnuopensource(plan_, ProgramFolder::current(), 0, path, say_);
        }
    });
}

/// The diver was elsewhere: unlike behind Open, he may not have this screen in mind.
void GasBlend::openFile(const QString& path) {
    table_->finishTyping();
    perform([this, &path] {
        const Replacing replacing(plan_, QStringLiteral("the file ") + QFileInfo(path).fileName());
        mnuopensource(plan_, ProgramFolder::current(), 0, path, say_);
    });
}

bool GasBlend::holdsTyped() const {
    return isVisible() && (plan_.typed || table_->isHalfTyped());
}

void GasBlend::mnuSave_click() {
    perform([this] {
        const auto askPath = [this] {
            return platform::askSavePath(this, QStringLiteral("Save as"), ProgramFolder::current().root(),
                                         mitFilter());
        };
        const QString error = mnuSave(plan_, askPath, say_);
        if (!error.isEmpty()) {
            dialogs().message(this, error, platform::BoxKind::Warning);
        }
    });
}

/// What was changed a moment ago goes with it: the text is that of a tick now, not of up to a second before.
void GasBlend::Command1_click() {
    if (!isVisible()) {
        showScreen(); // nothing goes out that is not shown
    }
    sendBy([this] {
        const QDateTime now = platform::now();
        if (!process().importing) {
            Timer5_tick();
            freshtext(plan_, now);
            neighbours_.showLinkForSending();
        }
        return gas::Command1_click(plan_, neighbours_.setupLink(), say_, device(), agree_, now);
    });
}

void GasBlend::Command2_click() {
    sendBy([this] {
        if (!process().importing) {
            neighbours_.showLinkForSending();
        }
        return gas::Command2_click(plan_, neighbours_.setupLink(), say_, device(), agree_, platform::now());
    });
}

/// What is wrong stands on this screen: it comes back to the front.
void GasBlend::sendBy(const std::function<Update()>& update) {
    perform([this, &update] {
        if (update() == Update::Refused && !isUnloaded()) {
            bringToFront();
        }
    });
}

bool GasBlend::setupMayGo(const link::SetupBody& body) {
    bool may = false;
    perform([this, &body, &may] {
        may = mayleave(plan_, body, isVisible(), device(), agree_, say_, platform::now());
        if (!may && !isUnloaded()) {
            showScreen();
            bringToFront();
        }
    });
    return may;
}

/// The debug texts stand to the right of everything else, which does not move.
void GasBlend::showDebug(bool shown) {
    debug_->setVisible(shown);
    mnuDebug_->setChecked(shown);
    mnuDebugOff_->setChecked(!shown);
    if (!isMaximized() && !isFullScreen()) {
        // What the hidden texts needed holds no longer.
        contents()->layout()->activate();
        layout()->activate();
        resize(firstSize().width(), height());
    }
}

} // namespace benthor::gas
