#pragma once

#include "platform/textformat.h"

#include <QByteArrayView>
#include <cmath>

namespace benthor::profile {

/// platform::leadingNumber(), with a short way for the plain whole numbers that nearly all fields hold.
inline double fieldNumber(QByteArrayView text) {
    constexpr int kMostDigits = 9;
    const char* at = text.begin();
    const char* const end = text.end();
    const char* const limit = text.size() > kMostDigits ? at + kMostDigits : end;
    unsigned value = 0;
    while (at != limit && *at >= '0' && *at <= '9') {
        value = value * 10 + static_cast<unsigned>(*at - '0');
        ++at;
    }
    const bool whole = at != text.begin() &&
                       (at == end || (*at != '.' && *at != 'e' && *at != 'E' && (*at < '0' || *at > '9')));
    return whole ? value : platform::leadingNumber(text);
}

/// The number that `value` formatted with "###0" (places 0) or "###0.00" (places 2) reads back as: an exact
/// half, as seen in 15 significant digits, goes away from zero. Not finite gives 0.
double formattedNumber(double value, int places);

/// As a 32-bit float holds it. What does not fit one (nothing that was measured) is 0, which stands for "not
/// recorded".
inline float asFloat(double value) {
    constexpr double kMost = 3.4028234e38;
    return std::abs(value) <= kMost ? static_cast<float>(value) + 0.0F : 0.0F; // + 0.0F: no negative zero
}

} // namespace benthor::profile
