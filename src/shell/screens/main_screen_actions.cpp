#include "shell/screens/main_screen.h"

#include "divefiles/importer.h"
#include "link/linkstatus.h"
#include "link/textfile.h"
#include "platform/look/widgets/clickablelabel.h"
#include "platform/look/widgets/overlaycard.h"
#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"
#include "platform/skiperrors.h"
#include "platform/usersettings.h"
#include "session/process.h"
#include "shell/screens/neighbours.h"
#include "shell/screens/tipspanel.h"
#include "store/backup.h"
#include "store/jet/jetconvert.h"
#include "store/units.h"

#include <QFile>
#include <QLabel>
#include <QTemporaryDir>

namespace benthor::shell {

using platform::dialogs;
using platform::ProgramFolder;

void MainScreen::Command1_click() {
    process().divesystem = QStringLiteral("Rebrether");
    if (process().diveviewopen) {
        neighbours_.showDiveView();
        return;
    }
    neighbours_.unloadDiveView();
    neighbours_.showDiveList();
    neighbours_.bringDiveListToFront();
}

/// While an import runs the link stays shut: both write into the folder `new`.
void MainScreen::Command2_click() {
    process().screenmode = QStringLiteral("Dive");
    mnuconnectdevice_click();
}

void MainScreen::cmdcommandsend_click() {
    process().screenmode = QStringLiteral("Command");
    mnuconnectdevice_click();
}

void MainScreen::mnuconnectdevice_click() {
    if (Frame2_->isHidden()) {
        neighbours_.showLink();
    }
}

void MainScreen::Command3_click() {
    if (process().importing) {
        return;
    }
    const ProgramFolder& folder = ProgramFolder::current();
    const QString path =
        dialogs().openFile(this, QStringLiteral("Open"), folder.path(u"old"), link::textfilter());
    if (path.isEmpty()) {
        return;
    }
    const QString refusal = divefiles::takemanualfile(folder, path);
    if (!refusal.isEmpty()) {
        dialogs().message(this, refusal, platform::BoxKind::Warning);
        return;
    }
    Command4_click();
}

/// The hand-held's dive list: only its being there is looked at.
void MainScreen::Command6_click() {
    QFile list(ProgramFolder::current().path(u"Divelist.pdb"));
    if (!list.open(QIODevice::ReadOnly)) {
        dialogs().message(this, QStringLiteral("Could not open database - \n"
                                               "Potential causes are:\n"
                                               "1. Database file does not exist\n"
                                               "2. The database path in the PDBOpen call is incorrect"));
    }
}

/// A leftover with a fixed place, which no computer of today has: it ends there, with the queries closed.
void MainScreen::Command5_click() {
    process().mainrecordset.close();
    process().countrecordset.close();
    platform::skipErrors([] { store::compactbyhand(); });
}

void MainScreen::cmdclose_click() {
    unload();
    neighbours_.endProcess();
}

void MainScreen::showSetupAndGas() {
    neighbours_.showGasBlend();
}

void MainScreen::mnucurrentmain_click() {
    neighbours_.unloadDiveList();
    neighbours_.showDiveList();
}

/// The list alone goes over to the chosen store; everything else stays on the process's own.
void MainScreen::mnuOpen_click() {
    const QString path = dialogs().openFile(this, QStringLiteral("Open"), QStringLiteral("/"),
                                            QStringLiteral("mdb (*.mdb)|*.mdb|All Files (*.*)|*.*"));
    if (path.isEmpty()) {
        return;
    }
    const Routine routine(*this);
    std::unique_ptr<QTemporaryDir> copy;
    if (store::isjetfile(path)) {
        copy = copyOlderStore(path);
        if (copy == nullptr) {
            return;
        }
    }
    process().storepath = path;
    process().storecopy = copy == nullptr ? QString() : copiedStore(*copy);
    const QString fault = neighbours_.reopenDiveList();
    olderCopy_ = std::move(copy); // nothing reads the one of before any more
    if (!fault.isEmpty()) {
        dialogs().message(this,
                          QStringLiteral("The dive store %1 can't be shown; My Dives stays on the one of the "
                                         "program.\n\n%2")
                              .arg(path, fault),
                          platform::BoxKind::Warning);
    }
}

/// An import writes the same store, and a store that is only read takes no dives.
void MainScreen::showMerge() {
    if (Frame2_->isHidden() && process().database.readOnlyReason().isEmpty()) {
        neighbours_.showMerge();
    }
}

void MainScreen::mnuGets_click() {
    platform::skipErrors([] { store::writegetstarted(QStringLiteral("Open")); });
    neighbours_.showGuide();
}

void MainScreen::mnuTips_click() {
    platform::userSettings().setNumber(platform::optionsSection(), platform::showTipsAtStartup(), 1);
    neighbours_.showTips();
    showTipsPanel(true);
}

void MainScreen::showTipsPanel(bool shown) {
    Frame4_->setVisible(shown);
    fitCards();
    Label10_->setVisible(!shown);
    showTip();
}

void MainScreen::showTip() {
    if (!Frame4_->isHidden()) {
        Frame4_->showTip(neighbours_.tipText());
    }
}

void MainScreen::cmdNextTip_click() {
    neighbours_.nextTip();
    showTip();
}

/// Opens the tips, and steps on where they are open.
void MainScreen::Label6_click() {
    if (Frame4_->isHidden()) {
        showTipsPanel(true);
    } else {
        cmdNextTip_click();
    }
}

void MainScreen::mnuReprogIR_click() {
    neighbours_.linkStatus().closePorts();
    neighbours_.showFirmware();
    unload();
}

} // namespace benthor::shell
