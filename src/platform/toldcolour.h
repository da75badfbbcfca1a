#pragma once

#include <cstdint>

namespace benthor::platform {

/// A colour as the device's documents count it: blue, green, red from the high byte to the low one. 255 is
/// red.
using ToldColour = std::uint32_t;

inline constexpr ToldColour kToldRed = 0x0000FF;
inline constexpr ToldColour kToldGreen = 0x00FF00;
inline constexpr ToldColour kToldBlue = 0xFF0000;
inline constexpr ToldColour kToldYellow = 0x00FFFF;
inline constexpr ToldColour kToldCyan = 0xFFFF00;
inline constexpr ToldColour kToldWhite = 0xFFFFFF;

struct RedGreenBlue {
    int red, green, blue;
};

constexpr RedGreenBlue redGreenBlue(ToldColour colour) {
    return {static_cast<int>(colour & 0xFF), static_cast<int>((colour >> 8) & 0xFF),
            static_cast<int>((colour >> 16) & 0xFF)};
}

} // namespace benthor::platform
