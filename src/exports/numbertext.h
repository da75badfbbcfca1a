#pragma once

#include <QByteArray>

namespace benthor::exports {

// Numbers as every open format writes them: the shortest decimal text that reads back as the same number,
// with a point and without an exponent, so that a whole number stands as one. 0 has no sign.

/// More than any number needs: the longest double has 308 zeros behind its point and 17 digits.
constexpr qsizetype kLongestNumber = 400;

/// Writes a finite number to `at`, which has room for kLongestNumber characters. Returns the end of it.
char* writeNumber(char* at, float value);
char* writeNumber(char* at, double value);
/// A number of so many hundredths, without zeros at its end: "12.5" for 1250. Room as above.
char* writeHundredths(char* at, int hundredths);

/// Puts the number behind `text`.
void appendNumber(QByteArray& text, float value);
QByteArray numberText(float value);
QByteArray numberText(double value);

} // namespace benthor::exports
