#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

namespace benthor::tests {

/// All that a way through the program left behind, by what it is: "file NAME", "row TABLE NUMBER", "sent
/// TEXT", "told NUMBER", "shown STEP". Folders that differ from run to run have the same name in it.
using Traces = QMap<QString, QByteArray>;

/// Walks the program's main road on a folder of its own, in the locale of this process: import, list,
/// details, every export, gases to the device, dives from it. The same at each run.
Traces walkMainRoad(const QString& ctl);

/// What the libraries see of the locale: how C and the toolkit write a number, whether the letters i and I are
/// one for C, the direction of the layout, and the words of an error of the system.
QString localeSeen();

} // namespace benthor::tests
