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

/// The dives that the demonstration's device has logged, the newest first: three that are not in the
/// demonstration folder yet, and behind them those of the same diver that are.
std::vector<QByteArray> deviceDives();

} // namespace benthor::simulator
