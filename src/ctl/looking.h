#pragma once

#include "ctl/outcome.h"
#include "ctl/selection.h"
#include "exports/wholedive.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace benthor::ctl {

// Dives as text for people.

/// Says on standard error which dives are not there. Whether all were.
Status tellMissing(const Selected& selected);

/// The headings and the cells of `list`.
QStringList listHeadings();
QStringList listCells(const exports::DiveFigures& figures);

/// "41:07"; empty where there is none. Hours count as minutes.
QString durationWords(const std::optional<double>& seconds);

/// What `show` writes: the figures, then all of the store.
QStringList showLines(const exports::WholeDive& dive);

} // namespace benthor::ctl
