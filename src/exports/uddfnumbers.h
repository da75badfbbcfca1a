#pragma once

#include <QByteArrayView>
#include <QString>

#include <array>

namespace benthor::exports {

/// The digits of a number, in place: a dive has tens of thousands of them.
class NumberText {
public:
    operator QByteArrayView() const { return {digits_.data(), size_}; }
    QString text() const { return QString::fromLatin1(digits_.data(), size_); }

private:
    friend class NumberWriter;
    std::array<char, 64> digits_;
    qsizetype size_ = 0;
};

/// What is more than this is no measure of anything, and not every reader takes so many digits.
constexpr double kMostOfAll = 1e9;

/// The shortest decimal that reads back as the same number, without an exponent; what is less than a
/// millionth is 0. The value is kMostOfAll at most.
NumberText decimalText(double value);
NumberText decimalText(float value);
/// A pressure in bar, kMostOfAll at most, as whole pascals.
NumberText pascalText(double bar);
/// Degrees C, from absolute zero to kMostOfAll, as kelvin to a hundredth.
NumberText kelvinText(double celsius);

} // namespace benthor::exports
