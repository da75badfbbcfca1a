#pragma once

#include <QByteArrayView>
#include <QString>

#include <array>

namespace benthor::exports {

/// What is more than this is no measure of anything, and not every reader takes so many digits.
constexpr double kMostOfAll = 1e9;

/// More characters than any of these numbers needs.
constexpr qsizetype kMostDigits = 64;

// Each writes to `at`, where there is room for kMostDigits, and returns the end. A dive has tens of thousands
// of them: they are written where they stay, as to copy digits that have just been written takes longer than
// to write them.

/// The shortest decimal that reads back as the same number, without an exponent; what is less than a
/// millionth is 0. The value is kMostOfAll at most.
char* writeDecimal(char* at, double value);
char* writeDecimal(char* at, float value);
/// A pressure in bar, kMostOfAll at most, as whole pascals.
char* writePascal(char* at, double bar);
/// Degrees C, from absolute zero to kMostOfAll, as kelvin to a hundredth.
char* writeKelvin(char* at, double celsius);

/// The digits of one number.
class NumberText {
public:
    template <class Number> NumberText(char* (*write)(char*, Number), Number value) {
        size_ = write(digits_.data(), value) - digits_.data();
    }
    operator QByteArrayView() const { return {digits_.data(), size_}; }
    QString text() const { return QString::fromLatin1(digits_.data(), size_); }

private:
    std::array<char, kMostDigits> digits_;
    qsizetype size_ = 0;
};

inline NumberText decimalText(double value) {
    return {&writeDecimal, value};
}
inline NumberText pascalText(double bar) {
    return {&writePascal, bar};
}
inline NumberText kelvinText(double celsius) {
    return {&writeKelvin, celsius};
}

} // namespace benthor::exports
