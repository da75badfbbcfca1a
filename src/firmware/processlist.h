#pragma once

#include "platform/processes.h"

#include <QString>
#include <QStringView>

#include <vector>

namespace benthor::firmware {

// What the list of running programs shows.

/// Sorted by name without regard to case, equal ones by id.
std::vector<platform::RunningProcess> inListOrder(std::vector<platform::RunningProcess> processes);

/// The names, each followed by a line end.
QString processNames(const std::vector<platform::RunningProcess>& processes);

/// Whether a process stays in sight: `filter`, trimmed, is a part of its name without regard to case, or its
/// id begins with it. An empty one lets all stay.
bool fitsFilter(const platform::RunningProcess& process, QStringView filter);

/// "123 programs", "1 program"; while some are hidden "4 of 123 programs".
QString programCount(qsizetype all, qsizetype shown);

} // namespace benthor::firmware
