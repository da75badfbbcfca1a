#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace benthor::simulator {

struct DemoDive {
    QString filename; ///< at most 20 characters, each another
    QByteArray text;
};

/// The dives that the demonstration folder begins with: a few years of one diver, exactly one of them damaged
/// so that the checks of the stored rows find it. Always the same bytes.
std::vector<DemoDive> demoDives();

} // namespace benthor::simulator
