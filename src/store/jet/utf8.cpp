#include "store/jet/utf8.h"

namespace benthor::store {

namespace {

/// Bytes of the character that `first` begins; 0 where none does.
std::size_t lengthOf(unsigned char first) {
    return first < 0x80                    ? 1
           : first >= 0xC2 && first < 0xE0 ? 2
           : first >= 0xE0 && first < 0xF0 ? 3
           : first >= 0xF0 && first < 0xF5 ? 4
                                           : 0;
}

/// Whether the second byte of a character of three or four is one: it rules out what is longer than it need
/// be, the surrogates, and what lies beyond the last character.
bool fits(unsigned char first, unsigned char second) {
    switch (first) {
    case 0xE0:
        return second >= 0xA0;
    case 0xED:
        return second < 0xA0;
    case 0xF0:
        return second >= 0x90;
    case 0xF4:
        return second < 0x90;
    default:
        return true;
    }
}

} // namespace

bool isUtf8(std::string_view bytes) {
    for (std::size_t at = 0; at < bytes.size();) {
        const auto first = static_cast<unsigned char>(bytes[at]);
        const std::size_t length = lengthOf(first);
        if (length == 0 || length > bytes.size() - at) {
            return false;
        }
        for (std::size_t i = 1; i < length; ++i) {
            if ((static_cast<unsigned char>(bytes[at + i]) & 0xC0) != 0x80) {
                return false;
            }
        }
        if (length > 2 && !fits(first, static_cast<unsigned char>(bytes[at + 1]))) {
            return false;
        }
        at += length;
    }
    return true;
}

} // namespace benthor::store
