#pragma once

#include "profile/gaslist.h"
#include "profile/header.h"

namespace benthor::profile {
struct DiveProfile;
} // namespace benthor::profile

namespace benthor::viewer {

/// A dive as it is told to those who do not see its chart.
struct ToldDive {
    const profile::DiveProfile& profile;
    const profile::GasArrays& gases;
    const profile::GasNames& gasNames;
    int lastsample = 0;
    double interval = 10; ///< seconds between samples
    bool feet = false;    ///< lengths, pressures and temperatures were read so
};

/// "44 minutes 50 seconds"; a part that is 0 is left out.
QString spokenTime(double seconds);

/// The sample of a row, from 1, in words: time, depth, PO2, cells, setpoint, ceiling, gas, temperature,
/// alarms and mark, with their units. What the device did not log is left out; a PO2 that it did not log is
/// the one computed from depth and gas, and said to be. A row of the lead says that it is one; a row that is not there
/// is empty.
QString sampleInWords(const ToldDive& dive, int row);

/// The alarms of a sample, parted by commas; empty where it is no alarm.
QString alarmsInWords(const profile::DiveProfile& profile, int row);

/// The dive in sentences: when, how long and how deep, what was breathed, ceiling, temperatures, alarms and
/// marks. Empty without samples.
QString diveInWords(const ToldDive& dive, const profile::HeaderBoxes& head);

} // namespace benthor::viewer
