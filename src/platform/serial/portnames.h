#pragma once

#include <QString>
#include <QStringList>

namespace benthor::platform {

/// Device names in the order in which they are counted as ports: USB adapters first, each kind in natural
/// order, so that ttyUSB2 stands before ttyUSB10.
QStringList inPortOrder(QStringList names);

/// Whether port `number` is named by a link of the program folder, whether it leads somewhere or not.
bool isLinkedPort(int number);

/// Path of the device that is port `number`, from 1: the link "ports/com<number>" of the program folder where
/// there is one, whether it leads somewhere or not; otherwise the number-th of the system's serial ports.
/// Empty when there is none.
QString portPath(int number);

} // namespace benthor::platform
