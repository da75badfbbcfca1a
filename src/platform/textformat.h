#pragma once

#include <QByteArrayView>
#include <QDateTime>
#include <QString>
#include <QStringView>

#include <cmath>

namespace benthor::platform {

// Numbers and dates as text, the same whatever the user's locale: the decimal sign is a point, month names
// are English.

/// `value` by a pattern made of '0' (a digit that is always written), '#' (a digit that is written where
/// there is one), one '.', '%' (times 100), and any other text before or behind, which is copied. An exact
/// half, as seen in the value's 15 significant digits, goes away from zero. "#.00" writes 0.5 as ".50"; "#"
/// writes 0 as "". A value that is not finite gives "".
QString formatNumber(double value, QStringView pattern);

/// `moment` by a pattern of "dd", "mm" (month; minutes when it follows "hh"), "mmm" (Jan to Dec), "yyyy",
/// "hh", "nn" (minutes), "ss"; any other text is copied. An invalid moment gives "".
QString formatDate(const QDateTime& moment, QStringView pattern);

/// The number that `text` begins with: blanks, a sign, digits with one point, an exponent. What follows is
/// not looked at; a text without a number gives 0.
double leadingNumber(QStringView text);
double leadingNumber(QByteArrayView latin1);

/// Whether all of `text` is a number: digits with an optional sign and point, white space around it allowed.
bool isNumeric(QStringView text);

/// To the nearest whole number, ties to even. The result is a double, so nothing overflows.
inline double roundToEven(double value) {
    // From here on a double has no places behind its point. To add it lets the machine do the rounding, which
    // is this one; the library's function is a call, and millions of numbers are rounded.
    constexpr double kWhole = 4503599627370496;
    const double size = std::abs(value);
    return size < kWhole ? std::copysign((size + kWhole) - kWhole, value) : value;
}

/// The same as a 32-bit number; what does not fit ends at the nearest limit, and NaN is 0.
int toWhole(double value);

/// The digits before the point, as the largest whole number that is not above the value.
double wholePart(double value);

/// The shortest decimal text, never in exponent form, that reads back as the same 32-bit float.
QString floatText(float value);

/// Upper-case hexadecimal digits of a number that is first rounded to the nearest whole one, ties to even.
QString hexadecimal(double value);

/// Blanks (not tabs, not carriage returns) taken from both ends.
QString trimBlanks(QStringView text);

} // namespace benthor::platform
