#include "shell/screens/main_screen.h"

#include "guides/screens/manual.h"
#include "link/linkstatus.h"
#include "shell/screens/neighbours.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

namespace benthor::shell {

/// An entry without an action of its own; it stands there greyed.
QAction* MainScreen::menuEntry(QMenu* menu, const QString& name, const QString& caption) {
    auto* action = new QAction(caption, this);
    action->setObjectName(name);
    action->setEnabled(false);
    menu->addAction(action);
    return action;
}

void MainScreen::buildMenus() {
    const auto heading = [this](QWidget* parent, const char* name, const char* caption) {
        auto* menu = new QMenu(QLatin1String(caption), parent);
        menu->setObjectName(QLatin1String(name));
        menu->menuAction()->setObjectName(QLatin1String(name));
        if (parent == menuBar()) {
            menuBar()->addMenu(menu);
        } else {
            qobject_cast<QMenu*>(parent)->addMenu(menu);
        }
        return menu;
    };
    const auto none = [this](QMenu* menu, const char* name, const char* caption) {
        return menuEntry(menu, QLatin1String(name), QLatin1String(caption));
    };
    const auto acting = [this, none](QMenu* menu, const char* name, const char* caption, auto act) {
        QAction* action = none(menu, name, caption);
        action->setEnabled(true);
        connect(action, &QAction::triggered, this, act);
        return action;
    };

    QMenu* import = heading(menuBar(), "mnuimport", "&Import");
    none(import, "mnurebrether", "&Rebrether");
    QMenu* kd3 = heading(import, "mnukd3", "KD3");
    none(kd3, "mnuimpfile", "&Text File");
    none(kd3, "mnupdb", "PDB");

    QMenu* file = heading(menuBar(), "mnuFile", "&File");
    acting(file, "mnuOpen", "&Open", [this] { mnuOpen_click(); })->setShortcut(Qt::CTRL | Qt::Key_O);
    QMenu* current = heading(file, "mnufilecurrent", "&Default");
    acting(current, "mnucurrentmain", "&Main", [this] { mnucurrentmain_click(); });
    none(current, "mnucurrentprofile", "&Profile");
    none(current, "mnucurrentgas", "&Gas");
    none(current, "mnucurrentissue", "&Tissue");
    file->addSeparator();
    acting(file, "mnuExit", "&Exit", [this] { unload(); })->setShortcut(Qt::CTRL | Qt::Key_Q);

    mnuUnits_ = heading(menuBar(), "mnuUnits", "&Units");
    mnuMeters_ = acting(mnuUnits_, "mnuMeters", "&Metres", [this] { chooseUnits(QStringLiteral("metre")); });
    mnuFeet_ = acting(mnuUnits_, "mnuFeet", "&Feet", [this] { chooseUnits(QStringLiteral("Feet")); });
    mnuMeters_->setCheckable(true);
    mnuFeet_->setCheckable(true);

    QMenu* link = heading(menuBar(), "mnuconnect", "&Connect");
    acting(link, "mnuconnectdevice", "Connect &Device", [this] { mnuconnectdevice_click(); });
    none(link, "mnudivesummary", "&Dive Summary");
    none(link, "mnugasupload", "&Gas Upload");
    QMenu* interval = heading(link, "mnuinterval", "&Interval");
    none(interval, "mnugetinterval", "Get Interval");
    none(link, "MNUBACKUP", "&Backup");
    link->addSeparator();
    // The old entry closes the ports and ends there: the screen that it asks for was never made.
    acting(link, "mnuReprog", "&ReProgOLD", [this] { neighbours_.linkStatus().closePorts(); });
    acting(link, "mnuReprogIR", "&ReProgram", [this] { mnuReprogIR_click(); });

    QMenu* window = heading(menuBar(), "mnuWindow", "&Window");
    acting(window, "mnuDiveList", "&My Dives", [this] { Command1_click(); });
    acting(window, "cmdcommandsend", "&Download Dives", [this] { cmdcommandsend_click(); });
    acting(window, "mnuSetupGas", "Setup and &Gas", [this] { showSetupAndGas(); });

    QMenu* help = heading(menuBar(), "mnuHelp", "&Help");
    acting(help, "mnuGets", "&Getting Started", [this] { mnuGets_click(); });
    none(help, "mnuHTMLhelpa", "&Walk through");
    acting(help, "mnuTips", "&Connection Tips", [this] { mnuTips_click(); });
    acting(help, "mnuHTMLhelp", "Manual File", [this] { guides::openManual(this); })->setShortcut(Qt::Key_F1);
    help->addSeparator();
    acting(help, "mnuAbout", "&About", [this] { neighbours_.showAbout(); });
}

} // namespace benthor::shell
