#include "link/commandmenu.h"
#include "link/console.h"
#include "link/download.h"
#include "link/logo.h"
#include "link/screens/commandcard.h"
#include "link/screens/drawer.h"
#include "link/screens/pc_link_1.h"
#include "link/screens/pc_link_1_host.h"
#include "link/supervision.h"

#include <QAction>
#include <QActionGroup>
#include <QLineEdit>
#include <QMenuBar>
#include <QScreen>

namespace benthor::link {

QMenu* PC_Link_1::menu(const char* name, const char* caption) {
    QMenu* made = menuBar()->addMenu(QLatin1String(caption));
    made->setToolTipsVisible(true);
    made->menuAction()->setObjectName(QLatin1String(name));
    return made;
}

QAction* PC_Link_1::entry(QMenu* menu, const char* name, const char* caption,
                          const std::function<void()>& work) {
    auto* made = new QAction(QLatin1String(caption), this);
    made->setObjectName(QLatin1String(name));
    connect(made, &QAction::triggered, this, [this, work] { perform(work); });
    if (menu != nullptr) {
        menu->addAction(made);
    }
    return made;
}

void PC_Link_1::buildMenus() {
    QMenu* file = menu("mnuFile", "&File");
    entry(file, "mnuOpen", "&Open", [this] { mnuOpen_click(link_, *host_); });
    entry(file, "mnuLogoConv", "&Convert Logo", [this] { mnuLogoConv_click(link_, *host_); });
    file->addSeparator();
    entry(file, "mnuExit", "&Menu Screen", [this] {
        Label11_click();
    })->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_W));

    QMenu* edit = menu("mnuEdit", "&Edit");
    mnuEdit_ = edit->menuAction();
    entry(edit, "mnuEditData", "&Data", [this] {
        command_->data()->setFocus();
        command_->data()->selectAll();
    });
    buildCommandMenu();
    buildViewMenu();
    menuBar()->addAction(
        entry(nullptr, "mnuFindKD", "F&ind KD/Morvalien", [this] { mnuFindKD_click(link_, *host_); }));
    QMenu* backup = menu("mnuBackup", "&Backup");
    entry(backup, "mnubackdive", "&Get and import all dives", [this] { mnubackdive_click(link_, *host_); });
}

void PC_Link_1::buildCommandMenu() {
    QMenu* command = menu("mnuCommand", "&Command");
    for (const CommandEntry& one : commandEntries()) {
        QAction* made = entry(command, qPrintable(one.name), qPrintable(one.caption),
                              [this, name = one.name] { mnuCommand_click(link_, *host_, name); });
        made->setCheckable(true);
        commandActions_.insert(one.name, made);
    }
    command->addSeparator();
    entry(command, "mnuGas", "Setup + &Gas",
          [this] { mnuCommand_click(link_, *host_, QStringLiteral("mnuGasUp")); });
}

void PC_Link_1::buildViewMenu() {
    QMenu* view = menu("mnuView", "&View");
    mnuDetOn_ = entry(view, "mnuDetOn", "Details &On", [this] { showDetails(true); });
    mnuDetOff_ = entry(view, "mnuDetOff", "Details O&ff", [this] {
        showDetails(false);
        link_.Text14Visible = false;
    });
    auto* details = new QActionGroup(this);
    for (QAction* one : {mnuDetOn_, mnuDetOff_}) {
        one->setCheckable(true);
        details->addAction(one);
    }
    mnuDetOn_->setChecked(true);
    view->addSeparator();
    entry(view, "mnuTips", "&Tips", [this] { link_.Text14Visible = true; });
    mnuHud_ = entry(view, "mnuHud", "&HUD and PO2 Alarm",
                    [this] { link_.console.Frame4Visible = !link_.console.Frame4Visible; });
    mnuHud_->setCheckable(true);
    mnuAdvancedOption_ = entry(view, "mnuAdvancedOption", "&Advanced Option", [this] {
        mnuAdvancedOption_click(link_);
        raw_ = link_.console.advanced;
    });
    mnuAdvancedOption_->setCheckable(true);
    connect(drawer_, &Drawer::closeWanted, this, [this] {
        perform([this] {
            if (link_.console.advanced) {
                mnuAdvancedOption_click(link_);
            }
            showDetails(false);
        });
    });
}

/// The window takes the room of the raw text boxes, where the display has it, and gives it back.
void PC_Link_1::showDetails(bool shown) {
    (shown ? mnuDetOn_ : mnuDetOff_)->setChecked(true);
    if (raw_ == shown) {
        return;
    }
    raw_ = shown;
    const bool drawerMoves = !link_.console.advanced;
    if (drawerMoves && isVisible() && !isMaximized() && !isFullScreen()) {
        const int step = drawer_->sizeHint().height();
        const int most = screen()->availableGeometry().height();
        resize(width(), std::clamp(height() + (shown ? step : -step), minimumHeight(),
                                   std::max(most, minimumHeight())));
    }
}

void PC_Link_1::syncMenus() {
    const Console& console = link_.console;
    for (auto it = commandActions_.cbegin(); it != commandActions_.cend(); ++it) {
        it.value()->setChecked(it.key() == console.checkedEntry);
    }
    mnuEdit_->setEnabled(console.mnuEditEnabled);
    mnuHud_->setChecked(console.Frame4Visible);
    mnuAdvancedOption_->setChecked(console.advanced);
}

} // namespace benthor::link
