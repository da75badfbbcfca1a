#pragma once

#include "tests/walk/actions.h"

namespace benthor::tests {

using Walk = std::vector<Step>;

/// The walk of that seed: always the same.
Walk walkOf(std::uint64_t seed, int steps);

struct WalkEnd {
    QMap<QString, int> met; ///< how often what a walk is about has happened
    int steps = 0;          ///< done, with the one that failed
    QString fault;          ///< empty: all of them held
};

/// Walks on a program of its own. `seed` gives the dives.
WalkEnd walk(std::uint64_t seed, const Walk& steps);

/// The shortest walk found that still fails, by leaving out ever smaller parts.
Walk shrunk(std::uint64_t seed, Walk steps);

/// The steps in words, one a line.
QString told(const Walk& steps);

} // namespace benthor::tests
