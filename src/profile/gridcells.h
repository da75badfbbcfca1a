#pragma once

#include "profile/diveprofile.h"
#include "profile/gaslist.h"

#include <QString>

namespace benthor::profile {

constexpr int kGridColumns = 45;   ///< columns of the data grid, 0 to 44
constexpr int kSampleColumns = 41; ///< columns 0 to 40 show samples

/// The heading of grid column 0 to 44; a column without one gives an empty text.
QString gridHeading(int column);

/// The text of a cell. `row` counts from 1 and is the sample's number, up to kMostSamples; `interval` is the
/// number of seconds between samples. Row 4 holds the first record. Columns 41 to 44 are empty.
QString cellText(const DiveProfile& profile, const GasNames& gasname, double interval, int row, int column);

/// The array behind grid column 0 to 44; nothing where the column is computed or never filled.
const SampleArray* gridArray(const DiveProfile& profile, int column);

/// The name of the gas breathed at sample `row`; a gas number without a name gives an empty text.
QString gasNameAt(const DiveProfile& profile, const GasNames& gasname, int row);

} // namespace benthor::profile
