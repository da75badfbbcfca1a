#pragma once

#include "exports/exportdives.h"

#include <QString>
#include <QStringList>

class QWidget;

namespace benthor::exports {

/// Asks where the dives are to go and in which open format (its ending says so), writes them there, with
/// progress and a way out where that takes a while, and tells what the format had no place for. The file
/// appears whole or not at all. `suggested`: its name without an ending.
void exportwithbox(QWidget* parent, platform::Database& database, const QStringList& ids,
                   const QString& suggested);

/// Tells that the export to `path` is done.
void tellexported(QWidget* parent, const QString& path, const LossReport& losses);
/// What is told behind it. More than a dozen lines are counted and not shown.
QString exportedText(const QString& path, const LossReport& losses);

} // namespace benthor::exports
