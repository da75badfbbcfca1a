#pragma once

#include <QDateTime>
#include <QString>

namespace benthor::store {

/// The totals of the main screen's panel.
struct Summary {
    int dives = 0;
    QString lastdive; ///< start of the last dive, "dd/mm/yyyy hh:nn:ss"; "" when no dive has one
};

/// Reads the totals of the store at `path` through a handle of its own. A store without dives is a
/// StoreError.
Summary readsummary(const QString& path);

/// The text of `lbltotaldive`.
QString totalstext(const Summary& summary);

} // namespace benthor::store
