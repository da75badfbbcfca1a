#include "exports/numbertext.h"

#include <array>
#include <charconv>
#include <cmath>

namespace benthor::exports {

namespace {

/// A number of at most six digits, two of them behind the point, is the only one of so few digits that reads
/// back as its float. That is nearly all that a device records, and quicker than to search for the shortest.
char* writeHundredths(char* at, char* end, int hundredths) {
    if (hundredths < 0) {
        *at++ = '-';
        hundredths = -hundredths;
    }
    at = std::to_chars(at, end, hundredths / 100).ptr;
    if (const int part = hundredths % 100; part != 0) {
        *at++ = '.';
        *at++ = static_cast<char>('0' + part / 10);
        if (part % 10 != 0) {
            *at++ = static_cast<char>('0' + part % 10);
        }
    }
    return at;
}

template <typename Number> QByteArray textOf(Number value) {
    std::array<char, kLongestNumber> text{};
    return {text.data(), writeNumber(text.data(), value) - text.data()};
}

} // namespace

char* writeNumber(char* at, float value) {
    constexpr float kMostHundredths = 999999;
    char* const end = at + kLongestNumber;
    const float scaled = std::rint(value * 100.0F);
    if (std::abs(scaled) <= kMostHundredths && scaled / 100.0F == value) {
        return writeHundredths(at, end, static_cast<int>(scaled));
    }
    return std::to_chars(at, end, value, std::chars_format::fixed).ptr;
}

char* writeNumber(char* at, double value) {
    constexpr double kMostWhole = 1e9;
    char* const end = at + kLongestNumber;
    if (std::abs(value) <= kMostWhole && value == std::trunc(value)) {
        return std::to_chars(at, end, static_cast<int>(value)).ptr;
    }
    return std::to_chars(at, end, value, std::chars_format::fixed).ptr;
}

QByteArray numberText(float value) {
    return textOf(value);
}

QByteArray numberText(double value) {
    return textOf(value);
}

} // namespace benthor::exports
