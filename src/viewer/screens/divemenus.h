#pragma once

#include "viewer/screens/diveact.h"
#include "viewer/screens/playbar.h"

#include <QObject>

class QAction;
class QMenu;
class QMenuBar;

namespace benthor::viewer {

/// The menus of the dive screen.
class DiveMenus : public QObject {
    Q_OBJECT

public:
    DiveMenus(QMenuBar* bar, QObject* parent);

    // Entries that show a state of the screen.
    QAction* mnuSpread = nullptr;
    QAction* mnuLegend = nullptr;
    QAction* mnuFoldTip = nullptr;
    QAction* mnuOwnScale = nullptr;
    QAction* mnuColorGrey = nullptr;
    QAction* mnuRD = nullptr;
    QAction* mnudivezoom = nullptr;
    QAction* mnuzoompan = nullptr;
    QAction* mnuzoompan2 = nullptr;
    QAction* mnuunitsfeet = nullptr;
    QAction* mnuunitsmeters = nullptr;

signals:
    void acted(DiveAct act);
    void played(PlayBar::Act act);

private:
    void makeFileMenu(QMenu* menu);
    void makeViewMenu(QMenu* menu);
    void makeZoomMenu(QMenu* menu);
    void makePlayMenu(QMenu* menu);
    void makeUnitsMenu(QMenu* menu);
    QAction* add(QMenu* menu, const char* name, const char* caption, DiveAct act, const char* keys = "");
    QAction* addSwitch(QMenu* menu, const char* name, const char* caption, const char* keys = "");
};

} // namespace benthor::viewer
