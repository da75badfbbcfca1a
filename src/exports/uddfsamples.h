#pragma once

#include "exports/lossreport.h"
#include "exports/uddfgases.h"
#include "exports/uddfparts.h"
#include "exports/uddfxml.h"
#include "exports/wholedive.h"

#include <array>

namespace benthor::exports {

/// What must be known of a profile before its samples are written. Readings that cannot be are passed over:
/// damaged files tell pressures below zero, and numbers of thirty digits.
struct UddfProfile {
    struct Pressures {
        float first = 0, last = 0; ///< bar; 0: not recorded
    };

    explicit UddfProfile(const WholeDive& dive);

    std::array<bool, UddfParts::kCells> cells{};      ///< recorded
    std::array<Pressures, UddfParts::kTanks> tanks{}; ///< oxygen, diluent
    bool temperature = false;                         ///< recorded
    std::optional<float> coldest;                     ///< degrees C
    float highestPo2 = 0;                             ///< bar; 0: not recorded
    GasesWithoutRow withoutRow;
    bool impossible = false; ///< there are readings that were passed over
};

/// The element samples of a dive, made before the dive's turn comes: what it is called in the file depends on
/// the dives before it.
struct UddfSamples {
    QByteArray bytes;
    std::vector<qsizetype> gaps; ///< into `bytes`, where the dive's name belongs
    LostKinds lost;
    bool replaced = false; ///< characters that XML cannot hold
};

/// Of a dive that has samples: the zero lead as one waypoint at 0 m and 0 s, and one waypoint for each
/// record. A value that is 0 counts as not recorded, depth and temperature excepted. `interval`: seconds,
/// above 0. Safe on any thread.
UddfSamples uddfSamples(const WholeDive& dive, const UddfProfile& profile, double interval);

/// `name`: the dive's in the file.
void writeUddfSamples(UddfXml& xml, const UddfSamples& samples, const QString& name);

} // namespace benthor::exports
