#include "exports/uddfnumbers.h"

#include <charconv>
#include <cmath>

namespace benthor::exports {

namespace {

template <typename... Form> char* put(char* at, Form... value) {
    const auto [end, error] = std::to_chars(at, at + kMostDigits, value...);
    return error == std::errc() ? end : at;
}

/// Most are small enough for the sooner way.
char* putWhole(char* at, long long value) {
    const auto small = static_cast<uint32_t>(value);
    return small == value ? put(at, small) : put(at, value);
}

/// Of a number that is not below 0, without a call into the library for each reading.
long long nearest(double value) {
    return static_cast<long long>(value + 0.5); // NOLINT(bugprone-incorrect-roundings)
}

char digit(long long value) {
    return static_cast<char>('0' + value % 10);
}

template <typename Number> char* shortest(char* at, Number value) {
    constexpr double kLeast = 1e-6;
    if (std::abs(value) < kLeast) {
        *at = '0';
        return at + 1;
    }
    if (value == std::floor(value)) {
        return putWhole(at, static_cast<long long>(value)); // the same digits, sooner
    }
    return put(at, value, std::chars_format::fixed);
}

} // namespace

char* writeDecimal(char* at, double value) {
    return shortest(at, value);
}

char* writeDecimal(char* at, float value) {
    return shortest(at, value);
}

char* writePascal(char* at, double bar) {
    constexpr double kPascalPerBar = 100000;
    return putWhole(at, nearest(bar * kPascalPerBar));
}

char* writeKelvin(char* at, double celsius) {
    constexpr double kZeroCelsius = 273.15;
    constexpr long long kHundredths = 100;
    constexpr long long kTen = 10;
    const long long hundredths = nearest((celsius + kZeroCelsius) * kHundredths);
    at = putWhole(at, hundredths / kHundredths);
    *at++ = '.';
    *at++ = digit(hundredths / kTen);
    *at++ = digit(hundredths);
    return at;
}

} // namespace benthor::exports
