#pragma once

#include <QString>

class QWidget;

namespace benthor::platform {

/// The name that a file gets. `path` as it was typed, `filter` as the dialog had it, `type` the place in it
/// of the type that was picked, from 0, or -1 where that is not known.
///
/// A type that was picked behind the first decides, whatever ending was typed. Otherwise an ending that the
/// filter names, or any ending where it offers all files, stays as typed; a name without one gets that of the
/// first type.
QString withEnding(const QString& path, const QString& filter, int type);

/// Asks where to write a file and gives its name the ending that it lacks. Of a file that is there under the
/// name so made, which the dialog could not know, it asks before it is replaced; No asks for another name.
/// Empty when cancelled.
QString askSavePath(QWidget* parent, const QString& title, const QString& folder, const QString& filter);

} // namespace benthor::platform
