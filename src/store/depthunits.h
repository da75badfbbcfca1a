#pragma once

namespace benthor::store {

/// Feet in a metre for the store's header fields, the MODs and the device's readings.
inline constexpr double kFeetPerMetre = 3.28084;

/// Feet in a metre for the samples of a profile, and for the PPO2 that is computed from them: the device's
/// own value, which is not the one above and must stay so.
inline constexpr double kSampleFeetPerMetre = 3.2098;

} // namespace benthor::store
