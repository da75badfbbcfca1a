#include "viewer/screens/divemenus.h"

#include <QActionGroup>
#include <QMenuBar>

namespace benthor::viewer {

DiveMenus::DiveMenus(QMenuBar* bar, QObject* parent)
    : QObject(parent) {
    makeFileMenu(bar->addMenu(QStringLiteral("&File")));
    makeViewMenu(bar->addMenu(QStringLiteral("&View")));
    makeZoomMenu(bar->addMenu(QStringLiteral("&Zoom")));
    makePlayMenu(bar->addMenu(QStringLiteral("&Play")));
    makeUnitsMenu(bar->addMenu(QStringLiteral("&Units")));
}

QAction* DiveMenus::add(QMenu* menu, const char* name, const char* caption, DiveAct act, const char* keys) {
    QAction* entry = menu->addAction(QLatin1String(caption));
    entry->setObjectName(QLatin1String(name));
    entry->setShortcut(QKeySequence(QLatin1String(keys)));
    connect(entry, &QAction::triggered, this, [this, act] { emit acted(act); });
    return entry;
}

/// An entry with a check mark, whose owner connects it.
QAction* DiveMenus::addSwitch(QMenu* menu, const char* name, const char* caption, const char* keys) {
    QAction* entry = menu->addAction(QLatin1String(caption));
    entry->setObjectName(QLatin1String(name));
    entry->setShortcut(QKeySequence(QLatin1String(keys)));
    entry->setCheckable(true);
    return entry;
}

void DiveMenus::makeFileMenu(QMenu* menu) {
    add(menu, "mnudiveinfo", "Dive &details", DiveAct::Details);
    menu->addSeparator();
    add(menu, "mnudivesavecsv", "Save as &CSV...", DiveAct::SaveCsv)
        ->setShortcut(QKeySequence(QKeySequence::Save));
    add(menu, "mnudivedan", "Save for DA&N (.zxu)...", DiveAct::SaveDan);
    menu->addSeparator();
    add(menu, "mnufullzxu", "Export full profile (.&zxu)...", DiveAct::SaveFullZxu);
    add(menu, "mnufullcsv", "Export &full profile (.csv)...", DiveAct::SaveFullCsv);
    add(menu, "mnuexportopen", "Export in an &open format (UDDF, JSON)...", DiveAct::SaveOpen);
    add(menu, "mnusavechart", "Save c&hart...", DiveAct::SaveChart);
    menu->addSeparator();
    add(menu, "mnudiveprint", "&Print screen...", DiveAct::PrintScreen)
        ->setShortcut(QKeySequence(QKeySequence::Print));
    add(menu, "mnuPrintspreadsheet", "Print data &grid...", DiveAct::PrintGrid);
    add(menu, "mnuprintdive", "Pr&int dive...", DiveAct::PrintDive);
    add(menu, "mnuprintsamples", "Print sa&mples...", DiveAct::PrintSamples);
    add(menu, "mnuScrSave", "Sa&ve picture of this screen", DiveAct::Capture);
    menu->addSeparator();
    add(menu, "mnudiveexit", "&Back to the dive list", DiveAct::Leave, "Ctrl+W");
}

void DiveMenus::makeViewMenu(QMenu* menu) {
    mnuSpread = addSwitch(menu, "mnuSpread", "Data &grid", "Ctrl+G");
    mnuLegend = addSwitch(menu, "mnuLegend", "&Legend");
    mnuLegend->setChecked(true);
    menu->addSeparator();
    mnuFoldTip = addSwitch(menu, "mnuFoldTip", "Sh&ort tip box", "Ctrl+T");
    mnuOwnScale = addSwitch(menu, "mnuOwnScale", "Own scale for PO&2");
    menu->addSeparator();
    mnuColorGrey = addSwitch(menu, "mnuColorGrey", "Gre&y chart");
    mnuRD = addSwitch(menu, "mnuRD", "&Research boxes");
}

void DiveMenus::makeZoomMenu(QMenu* menu) {
    mnudivezoom = add(menu, "mnudivezoom", "Zoom 1", DiveAct::Zoom, "Ctrl+Shift+Z");
    mnuzoompan = add(menu, "mnuzoompan", "pan <", DiveAct::PanBack, "Alt+Left");
    mnuzoompan2 = add(menu, "mnuzoompan2", "pan >", DiveAct::PanOn, "Alt+Right");
    mnuzoompan->setEnabled(false);
    mnuzoompan2->setEnabled(false);
}

void DiveMenus::makePlayMenu(QMenu* menu) {
    const auto addPlay = [this, menu](const char* caption, const char* keys, PlayBar::Act act) {
        QAction* entry = menu->addAction(QLatin1String(caption));
        entry->setShortcut(QKeySequence(QLatin1String(keys)));
        connect(entry, &QAction::triggered, this, [this, act] { emit played(act); });
    };
    addPlay("&Play", "F5", PlayBar::Act::Play);
    addPlay("&Stop", "Shift+F5", PlayBar::Act::Stop);
    menu->addSeparator();
    addPlay("&Next point", "Ctrl+Right", PlayBar::Act::Next);
    addPlay("Pre&vious point", "Ctrl+Left", PlayBar::Act::Previous);
    addPlay("&Faster", "Ctrl+Up", PlayBar::Act::Faster);
    addPlay("S&lower", "Ctrl+Down", PlayBar::Act::Slower);
    menu->addSeparator();
    addPlay("Next &alarm", "F8", PlayBar::Act::NextAlarm);
    addPlay("Next &mark", "F9", PlayBar::Act::NextMark);
}

void DiveMenus::makeUnitsMenu(QMenu* menu) {
    mnuunitsmeters = add(menu, "mnuunitsmeters", "&Metres", DiveAct::Metres);
    mnuunitsfeet = add(menu, "mnuunitsfeet", "&Feet", DiveAct::Feet);
    auto* group = new QActionGroup(this);
    for (QAction* entry : {mnuunitsmeters, mnuunitsfeet}) {
        entry->setCheckable(true);
        group->addAction(entry);
    }
}

} // namespace benthor::viewer
