#include "gas/screens/gasblend.h"

#include "gas/gascalc.h"
#include "gas/screens/changespanel.h"
#include "gas/screens/gasgraph.h"
#include "gas/screens/readingspanel.h"
#include "gas/screens/settingsform.h"
#include "gas/setuptext.h"
#include "platform/look/widgets/status.h"
#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"
#include "platform/screen/ticktimer.h"
#include "platform/screen/toldqcolor.h"
#include "shell/process.h"

#include <QAction>
#include <QLabel>
#include <QLayout>
#include <QPlainTextEdit>
#include <QTabWidget>

namespace benthor::gas {

using platform::dialogs;
using platform::ProgramFolder;

namespace {

constexpr int kChangesTab = 2;

QString mitFilter() {
    return QStringLiteral("Text Files (*.mit)|*.mit|All Files (*.*)|*.*");
}

void showText(QPlainTextEdit& box, const QString& text) {
    if (box.toPlainText() != text) {
        box.setPlainText(text);
    }
}

} // namespace

GasBlend::GasBlend(GasNeighbours& neighbours)
    : Screen(QStringLiteral("GasBlend"))
    , neighbours_(neighbours)
    , say_([this](const QString& text) { say(text); }) {
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

void GasBlend::loading() {
    fromUpload_ = process().uploadtext.size() >= kUsableText;
    source_ = opengas(plan_, ProgramFolder::current(), say_);
    showDebug(false);
    sync();
}

void GasBlend::unloading() {
    closegas(plan_, ProgramFolder::current(), neighbours_.setupLink(), say_);
}

void GasBlend::Timer5_tick() {
    perform([this] {
        const auto ask = [this](const QString& text, const QString& title) {
            return dialogs().confirm(this, text, title);
        };
        gas::Timer5_tick(plan_, shown_, neighbours_.setupLink(), isVisible(), QDateTime::currentDateTime(),
                         ask, say_);
    });
}

void GasBlend::receiveSetup(const QByteArray& text) {
    perform([this, &text] {
        plan_.Text8_1 = QString::fromLatin1(text);
        const qsizetype from = plan_.Text8_1.indexOf(QLatin1Char('A'));
        reported_ = from < 0 ? QString() : plan_.Text8_1.mid(from);
        mnuopensource(plan_, ProgramFolder::current(), 1, {}, say_);
    });
}

/// The size that the screen has by itself comes back with each line.
void GasBlend::receiveReadings(const link::Readings& readings) {
    perform([this, &readings] {
        readings_->take(readings);
        readings_->showUnits(plan_.feet());
        const link::SetupLink& link = neighbours_.setupLink();
        shown_.Label7 = link.caption();
        shown_.Label7Colour = link.captionColour();
        showDebug(!mnuDebugOff_->isChecked());
    });
}

void GasBlend::cellEdited(GasTable::Cell cell, int row, const QString& text) {
    perform([this, cell, row, &text] {
        switch (cell) {
        case GasTable::Cell::O2:
            setO2(plan_, row, text, say_);
            break;
        case GasTable::Cell::He:
            setHe(plan_, row, text, say_);
            break;
        case GasTable::Cell::MOD:
            setMOD(plan_, row, text);
            break;
        case GasTable::Cell::PPO2:
            setPPO2(plan_, row, text);
            break;
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

void GasBlend::mnuSave_click() {
    perform([this] {
        const auto askPath = [this] {
            return dialogs().saveFile(this, QStringLiteral("Save as"), ProgramFolder::current().root(),
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
    Timer5_tick();
    perform([this] {
        neighbours_.showLinkForSending();
        gas::Command1_click(plan_, neighbours_.setupLink(), say_);
    });
}

void GasBlend::Command2_click() {
    perform([this] {
        neighbours_.showLinkForSending();
        gas::Command2_click(plan_, neighbours_.setupLink(), say_);
    });
}

QString GasBlend::sourceWords() const {
    const QString text = source_ == TextSource::Last ? QStringLiteral("the text of the last time")
                         : source_ == TextSource::Stock
                             ? QStringLiteral("the stock text")
                             : QStringLiteral("no text, since no file of one was found");
    return QStringLiteral("Gases at the start: %1. Setup text: %2.")
        .arg(fromUpload_ ? QStringLiteral("those in hand for the device")
                         : QStringLiteral("the program's own"),
             text);
}

void GasBlend::sync() {
    table_->show(plan_);
    graph_->show(plan_);
    form_->show(plan_);
    readings_->showUnits(plan_.feet());
    tabs_->setTabText(0, plan_.rows[static_cast<size_t>(plan_.currentgasrow)].name);
    changes_->show(reported_, plan_.Text7, setupwarnings(plan_), sourceWords());
    tabs_->setTabText(kChangesTab, changes_->changes() == 0
                                       ? QStringLiteral("Changes")
                                       : QStringLiteral("Changes (%1)").arg(changes_->changes()));
    Label7_->setText(shown_.Label7);
    Label7_->setToldBackground(platform::toQColor(shown_.Label7Colour));
    Label7_->setIconName(shown_.Label7 == QLatin1String("Connected") ? QStringLiteral("check") : QString());
    Label20_->setText(shown_.Label20);
    Label22_->setText(shown_.Label22);
    Label14_->setText(QString::number(plan_.Label14, 'f', 0));
    mnuMeters_->setChecked(!plan_.feet());
    mnuFeet_->setChecked(plan_.feet());
    syncDebug();
}

void GasBlend::syncDebug() {
    showText(*Text6_, plan_.Text6);
    showText(*Text7_, plan_.Text7);
    showText(*Text8_0_, plan_.Text8_0);
    showText(*Text8_1_, plan_.Text8_1);
    const QDateTime now = QDateTime::currentDateTime();
    for (size_t tag = 0; tag < kTags.size(); ++tag) {
        findChild<QLabel*>(QStringLiteral("Text15(%1)").arg(tag))
            ->setText(QChar(kTags[tag].letter) + fieldvalue(plan_, tag, now).value_or(QString()));
    }
}

/// The debug texts stand to the right of everything else, which does not move.
void GasBlend::showDebug(bool shown) {
    debug_->setVisible(shown);
    mnuDebug_->setChecked(shown);
    mnuDebugOff_->setChecked(!shown);
    if (!isMaximized() && !isFullScreen()) {
        // What the hidden texts needed holds no longer.
        centralWidget()->layout()->activate();
        layout()->activate();
        resize(firstSize().width(), height());
    }
}

} // namespace benthor::gas
