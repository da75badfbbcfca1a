#pragma once

#include <array>

namespace benthor::viewer {

/// Readings of the eight thermistor cells along a stick.
using Thermistors = std::array<double, 8>;

/// How far the warm front has moved along a stick, in per cent, from the cells in reversed order: 50 to 99 by
/// the pair of neighbours that is warmest together, 0 to 50 where that is the last pair. -1 when the first
/// pair is the warmest.
double tpmestimatea(const Thermistors& tpmcolsdown);

/// The same from the cells in plain order. `before` is the result so far, which stays where the first pair is
/// the warmest.
double tpmestimateb(const Thermistors& tpmcolsup, double before);

/// Mean height of the cells above the coldest of them, counted from 85 at most.
double tpmspread(const Thermistors& tpmcolsdown);

} // namespace benthor::viewer
