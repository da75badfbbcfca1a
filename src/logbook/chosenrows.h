#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace benthor::logbook {

// The blue rows of the dive list. Rows count from 1.

/// The row that the summary strip and the mail mean: of the blue rows the one clicked last, else the first
/// blue one, else `current`. `clicks`: the rows clicked, the last one at the end; `blue`: they ascend.
int rowInHand(const std::vector<int>& clicks, const std::vector<int>& blue, int current);

/// Puts a click behind the others; a row stands there once.
void noteClick(std::vector<int>& clicks, int row);

/// What stands below the question before dives are deleted: how many, and the names of the first, one a line.
QString deletedDivesText(const QStringList& names);

} // namespace benthor::logbook
