#pragma once

#include <QWidget>

namespace benthor::look {

QWidget* iconsPage();
QWidget* picturesPage();
QWidget* controlsPage();
QWidget* menusPage();
QWidget* widgetsPage();
/// Pieces put together the way a screen does it, with the overlay up or not.
QWidget* screenPage(bool overlay);
/// Each control as it looks when it has the keyboard.
QWidget* focusPage();

} // namespace benthor::look
