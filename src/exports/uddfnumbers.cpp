#include "exports/uddfnumbers.h"

#include <charconv>
#include <cmath>

namespace benthor::exports {

class NumberWriter {
public:
    /// Most are small enough for the sooner way.
    NumberWriter& put(long long value) {
        const auto small = static_cast<uint32_t>(value);
        return small == value ? write(small) : write(value);
    }
    NumberWriter& put(double value) { return write(value, std::chars_format::fixed); }
    NumberWriter& put(float value) { return write(value, std::chars_format::fixed); }
    NumberWriter& put(char letter) {
        text_.digits_[static_cast<std::size_t>(text_.size_++)] = letter;
        return *this;
    }
    NumberText text() const { return text_; }

private:
    template <typename... Form> NumberWriter& write(Form... value) {
        char* const begin = text_.digits_.data() + text_.size_;
        const auto [end, error] = std::to_chars(begin, text_.digits_.data() + text_.digits_.size(), value...);
        if (error == std::errc()) {
            text_.size_ += end - begin;
        }
        return *this;
    }
    NumberText text_;
};

namespace {

/// Of a number that is not below 0, without a call into the library for each reading.
long long nearest(double value) {
    return static_cast<long long>(value + 0.5); // NOLINT(bugprone-incorrect-roundings)
}

template <typename Number> NumberText shortest(Number value) {
    constexpr double kLeast = 1e-6;
    if (std::abs(value) < kLeast) {
        return NumberWriter().put('0').text();
    }
    if (value == std::floor(value)) {
        return NumberWriter().put(static_cast<long long>(value)).text(); // the same digits, sooner
    }
    return NumberWriter().put(value).text();
}

} // namespace

NumberText decimalText(double value) {
    return shortest(value);
}

NumberText decimalText(float value) {
    return shortest(value);
}

NumberText pascalText(double bar) {
    constexpr double kPascalPerBar = 100000;
    return NumberWriter().put(nearest(bar * kPascalPerBar)).text();
}

NumberText kelvinText(double celsius) {
    constexpr double kZeroCelsius = 273.15;
    constexpr long long kHundredths = 100;
    constexpr long long kTen = 10;
    const long long hundredths = nearest((celsius + kZeroCelsius) * kHundredths);
    return NumberWriter()
        .put(hundredths / kHundredths)
        .put('.')
        .put(hundredths / kTen % kTen)
        .put(hundredths % kTen)
        .text();
}

} // namespace benthor::exports
