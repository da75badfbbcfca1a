#pragma once

#include "profile/gridcells.h"
#include "viewer/chartdata.h"

#include <QStringList>
#include <optional>

namespace benthor::viewer {

/// What the lines of the tip box go by besides the dive.
struct TipChoice {
    SeriesBoxes boxes;  ///< checked boxes
    bool check3 = true; ///< Check3 is enabled: the device has logged the PO2
    QString depthunit;  ///< unit word in force
    /// Whether the samples were read in feet. Where it is not said, the word tells.
    std::optional<bool> feet = {};

    bool inFeet() const;
};

/// The tip box at a sample.
struct PointTip {
    QStringList lines;
    QString alarms; ///< the sample's tokens, each followed by CR LF; empty for none
    int height = 0; ///< that the lines behind the first and the alarms add, in twips

    /// All of it, lines parted by CR LF.
    QString text() const;
};

/// `row` is the sample's number, from 1.
PointTip pointTip(const profile::DiveProfile& profile, const profile::GasArrays& gases,
                  const profile::GasNames& gasname, int row, const TipChoice& choice);

/// The PPO2 of a sample whose device logged none, from depth and gas, bar: by the unit in force, and by the
/// metric rule whatever the unit, as the average in the panel goes by it.
struct ComputedPpo2 {
    double shown = 0;
    double metric = 0;
};
ComputedPpo2 computedPpo2(const profile::DiveProfile& profile, const profile::GasArrays& gases, int row,
                          bool feet);

/// Left edge of the tip box beside the cursor at a sample, in twips of the chart; the cursor's own line is
/// kTipGap to the left of it. `page` is the zoomed page, 1 in the whole-dive view; `lastsample` the last grid
/// row. Where the box would end right of `limit`, it stands on the other side of the cursor.
double tipLeft(int row, int lastsample, const ZoomState& zoom, double width, double limit);

constexpr double kTipWidth = 1600;       ///< twips
constexpr double kTipLineHeight = 225;   ///< twips
constexpr double kTipGap = 35;           ///< twips from the cursor's line to the box
constexpr double kTipRightLimit = 14415; ///< twips

} // namespace benthor::viewer
