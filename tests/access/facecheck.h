#pragma once

#include <QString>
#include <QStringList>

class QWidget;

namespace benthor::tests {

/// What is wrong with a window as it stands for those who do not see it: each line names the control. Empty:
/// nothing.
///
/// - what acts (takes the focus, is a button, shows the hand) is met under a role that acts, with a name and
///   an act of its own; where it is not met at all, something that is met must be its twin;
/// - what is met has a name where its role calls for one, and no two that act follow each other with the same
///   name;
/// - lamps and pictures that are met have a name.
QStringList faultsForReaders(QWidget* window);

/// Mnemonics that two of the window's controls, or two entries of one menu, share.
QStringList clashingMnemonics(QWidget* window);

/// The controls that Tab reaches, from the first, in its order.
QList<QWidget*> tabRound(QWidget* window);
/// Visible controls that take the focus by Tab and are not in the round, and steps of the round that lead
/// against the order of reading.
QStringList faultsOfTabOrder(QWidget* window);

/// Stops of the round at which one does not see where one is: with the focus they look as without it.
QStringList faultsOfFocus(QWidget* window);

/// Whether an overlay lies over the widget, which takes its mouse and its keys.
bool isOverlaid(const QWidget* widget);

/// "Command1 (QPushButton) 'Close'".
QString tell(const QWidget* widget);

/// What readers meet in the window, indented, for a person who looks for a fault.
QString readersTree(QWidget* window);

} // namespace benthor::tests
