#include "profile/fieldnumber.h"

#include <array>
#include <charconv>
#include <cstdint>

namespace benthor::profile {

namespace {

constexpr int kSignificantDigits = 15;

constexpr int64_t powerOfTen(int exponent) {
    return exponent == 0 ? 1 : 10 * powerOfTen(exponent - 1);
}

/// `magnitude` rounded on its decimal digits.
double roundedByDigits(double magnitude, int places) {
    std::array<char, 40> text{};
    const char* const end = std::to_chars(text.data(), text.data() + text.size(), magnitude,
                                          std::chars_format::scientific, kSignificantDigits - 1)
                                .ptr;
    int64_t digits = text[0] - '0';
    const char* at = text.data() + 2; // behind the point
    for (; *at != 'e'; ++at) {
        digits = digits * 10 + (*at - '0');
    }
    int exponent = 0;
    std::from_chars(at[1] == '+' ? at + 2 : at + 1, end, exponent);
    const int dropped = kSignificantDigits - 1 - exponent - places;
    if (dropped <= 0) {
        double asWritten = 0.0;
        std::from_chars(text.data(), end, asWritten);
        return asWritten;
    }
    if (dropped > kSignificantDigits) {
        return 0.0;
    }
    const int64_t unit = powerOfTen(dropped);
    return static_cast<double>((digits + unit / 2) / unit) / static_cast<double>(powerOfTen(places));
}

} // namespace

double formattedNumber(double value, int places) {
    // Far from a half, 15 digits and 53 bits cannot disagree on the direction.
    constexpr double kMostForShortWay = 1e9;
    constexpr double kDoubt = 1e-5;
    const double scale = places == 0 ? 1.0 : static_cast<double>(powerOfTen(places));
    const double scaled = std::abs(value) * scale;
    double magnitude = 0.0;
    if (scaled < kMostForShortWay) {
        const double whole = static_cast<double>(static_cast<int64_t>(scaled));
        const double rest = scaled - whole;
        magnitude = std::abs(rest - 0.5) > kDoubt ? (rest > 0.5 ? whole + 1.0 : whole) / scale
                                                  : roundedByDigits(std::abs(value), places);
    } else if (std::isfinite(value)) {
        magnitude = roundedByDigits(std::abs(value), places);
    }
    return value < 0.0 && magnitude != 0.0 ? -magnitude : magnitude;
}

} // namespace benthor::profile
