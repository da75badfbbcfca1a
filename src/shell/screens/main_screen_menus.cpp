#include "shell/screens/main_screen.h"

#include "guides/screens/manual.h"
#include "link/linkstatus.h"
#include "shell/screens/neighbours.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

namespace benthor::shell {

QMenu* MainScreen::menuHeading(QWidget* parent, const char* name, const char* caption) {
    auto* menu = new QMenu(QLatin1String(caption), parent);
    menu->setObjectName(QLatin1String(name));
    menu->menuAction()->setObjectName(QLatin1String(name));
    if (parent == menuBar()) {
        menuBar()->addMenu(menu);
    } else {
        qobject_cast<QMenu*>(parent)->addMenu(menu);
    }
    return menu;
}

/// Without an act the entry stands there greyed.
QAction* MainScreen::menuEntry(QMenu* menu, const char* name, const char* caption,
                               const std::function<void()>& act) {
    auto* action = new QAction(QLatin1String(caption), this);
    action->setObjectName(QLatin1String(name));
    action->setEnabled(act != nullptr);
    menu->addAction(action);
    if (act) {
        connect(action, &QAction::triggered, this, act);
    }
    return action;
}

void MainScreen::buildMenus() {
    buildFileMenus();
    buildUnitsMenu();
    buildLinkMenus();
}

void MainScreen::buildFileMenus() {
    QMenu* import = menuHeading(menuBar(), "mnuimport", "&Import");
    menuEntry(import, "mnurebrether", "&Rebrether");
    QMenu* kd3 = menuHeading(import, "mnukd3", "KD3");
    menuEntry(kd3, "mnuimpfile", "&Text File");
    menuEntry(kd3, "mnupdb", "PDB");

    QMenu* file = menuHeading(menuBar(), "mnuFile", "&File");
    menuEntry(file, "mnuOpen", "&Open", [this] { mnuOpen_click(); })->setShortcut(Qt::CTRL | Qt::Key_O);
    QMenu* current = menuHeading(file, "mnufilecurrent", "&Default");
    menuEntry(current, "mnucurrentmain", "&Main", [this] { mnucurrentmain_click(); });
    menuEntry(current, "mnucurrentprofile", "&Profile");
    menuEntry(current, "mnucurrentgas", "&Gas");
    menuEntry(current, "mnucurrentissue", "&Tissue");
    mnubringdives_ =
        menuEntry(file, "mnubringdives", "&Bring dives from another logbook...", [this] { showMerge(); });
    file->addSeparator();
    menuEntry(file, "mnuExit", "&Exit", [this] { unload(); })->setShortcut(Qt::CTRL | Qt::Key_Q);
}

void MainScreen::buildUnitsMenu() {
    mnuUnits_ = menuHeading(menuBar(), "mnuUnits", "&Units");
    mnuMeters_ =
        menuEntry(mnuUnits_, "mnuMeters", "&Metres", [this] { chooseUnits(QStringLiteral("metre")); });
    mnuFeet_ = menuEntry(mnuUnits_, "mnuFeet", "&Feet", [this] { chooseUnits(QStringLiteral("Feet")); });
    mnuMeters_->setCheckable(true);
    mnuFeet_->setCheckable(true);
}

void MainScreen::buildLinkMenus() {
    QMenu* link = menuHeading(menuBar(), "mnuconnect", "&Connect");
    menuEntry(link, "mnuconnectdevice", "Connect &Device", [this] { mnuconnectdevice_click(); });
    menuEntry(link, "mnudivesummary", "&Dive Summary");
    menuEntry(link, "mnugasupload", "&Gas Upload");
    QMenu* interval = menuHeading(link, "mnuinterval", "&Interval");
    menuEntry(interval, "mnugetinterval", "Get Interval");
    menuEntry(link, "MNUBACKUP", "&Backup");
    link->addSeparator();
    // The old entry closes the ports and ends there: the screen that it asks for was never made.
    menuEntry(link, "mnuReprog", "&ReProgOLD", [this] { neighbours_.linkStatus().closePorts(); });
    menuEntry(link, "mnuReprogIR", "&ReProgram", [this] { mnuReprogIR_click(); });

    QMenu* window = menuHeading(menuBar(), "mnuWindow", "&Window");
    menuEntry(window, "mnuDiveList", "&My Dives", [this] { Command1_click(); });
    menuEntry(window, "cmdcommandsend", "&Download Dives", [this] { cmdcommandsend_click(); });
    menuEntry(window, "mnuSetupGas", "Setup and &Gas", [this] { showSetupAndGas(); });

    QMenu* help = menuHeading(menuBar(), "mnuHelp", "&Help");
    menuEntry(help, "mnuGets", "&Getting Started", [this] { mnuGets_click(); });
    menuEntry(help, "mnuHTMLhelpa", "&Walk through");
    menuEntry(help, "mnuTips", "&Connection Tips", [this] { mnuTips_click(); });
    menuEntry(help, "mnuHTMLhelp", "Manual File", [this] {
        guides::openManual(this);
    })->setShortcut(Qt::Key_F1);
    help->addSeparator();
    menuEntry(help, "mnuAbout", "&About", [this] { neighbours_.showAbout(); });
}

} // namespace benthor::shell
