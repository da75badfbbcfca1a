#include "exports/numbertext.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace benthor::exports {

namespace {

char* makeHundredths(char* at, int hundredths) {
    at = std::to_chars(at, at + kLongestNumber, hundredths / 100).ptr;
    if (const int part = hundredths % 100; part != 0) {
        *at++ = '.';
        *at++ = static_cast<char>('0' + part / 10);
        if (part % 10 != 0) {
            *at++ = static_cast<char>('0' + part % 10);
        }
    }
    return at;
}

/// The texts of 0 to 299.99 in steps of a hundredth: nearly all that a device records. A logbook has millions
/// of numbers, and to look a text up costs a third of making it.
class HundredthTexts {
public:
    static constexpr int kCount = 30000;

    HundredthTexts() {
        std::array<char, kLongestNumber> made{};
        for (int i = 0; i < kCount; ++i) {
            Entry& entry = entries_[static_cast<size_t>(i)];
            entry.length = static_cast<unsigned char>(makeHundredths(made.data(), i) - made.data());
            std::copy_n(made.begin(), entry.text.size(), entry.text.begin());
        }
    }

    /// All of an entry is copied, a fixed number of bytes: kLongestNumber leaves room for it.
    char* write(char* at, int hundredths) const {
        const Entry& entry = entries_[static_cast<size_t>(hundredths)];
        std::copy(entry.text.begin(), entry.text.end(), at);
        return at + entry.length;
    }

private:
    struct Entry {
        std::array<char, 7> text{}; ///< six at most
        unsigned char length = 0;
    };
    std::array<Entry, kCount> entries_;
};

} // namespace

char* writeHundredths(char* at, int hundredths) {
    static const HundredthTexts texts;
    if (hundredths < 0) {
        *at++ = '-';
        hundredths = -hundredths;
    }
    return hundredths < HundredthTexts::kCount ? texts.write(at, hundredths) : makeHundredths(at, hundredths);
}

namespace {

template <typename Number> QByteArray textOf(Number value) {
    std::array<char, kLongestNumber> text{};
    return {text.data(), writeNumber(text.data(), value) - text.data()};
}

} // namespace

char* writeNumber(char* at, float value) {
    constexpr float kMostHundredths = 999999;
    const float scaled = value * 100.0F;
    if (std::abs(scaled) <= kMostHundredths) {
        const int hundredths = static_cast<int>(scaled + std::copysign(0.5F, scaled));
        if (static_cast<float>(hundredths) / 100.0F == value) {
            // The only number of so few digits that reads back as this float: no search for the shortest.
            return writeHundredths(at, hundredths);
        }
    }
    return std::to_chars(at, at + kLongestNumber, value, std::chars_format::fixed).ptr;
}

char* writeNumber(char* at, double value) {
    constexpr double kMostWhole = 1e9;
    char* const end = at + kLongestNumber;
    if (std::abs(value) <= kMostWhole && value == std::trunc(value)) {
        return std::to_chars(at, end, static_cast<int>(value)).ptr;
    }
    return std::to_chars(at, end, value, std::chars_format::fixed).ptr;
}

void appendNumber(QByteArray& text, float value) {
    std::array<char, kLongestNumber> number; // NOLINT(cppcoreguidelines-pro-type-member-init): it is written
    text.append(number.data(), writeNumber(number.data(), value) - number.data());
}

QByteArray numberText(float value) {
    return textOf(value);
}

QByteArray numberText(double value) {
    return textOf(value);
}

} // namespace benthor::exports
