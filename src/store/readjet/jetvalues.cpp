#include "store/readjet/jetvalues.h"

#include "store/readjet/jetpages.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>

#include <mdbtools.h>

namespace benthor::readjet {

using store::pipe::Kind;

namespace {

constexpr int kBigNumber = 0x13; // of newer files; the library has no name for it
constexpr std::uint64_t kMoneyParts = 10000;

std::uint64_t numberOf(std::string_view bytes) {
    std::uint64_t number = 0;
    for (std::size_t i = bytes.size(); i-- > 0;) {
        number = number << 8 | static_cast<unsigned char>(bytes[i]);
    }
    return number;
}

std::size_t sizeOf(int type) {
    switch (type) {
    case MDB_BYTE:
        return 1;
    case MDB_INT:
        return 2;
    case MDB_LONGINT:
    case MDB_FLOAT:
    case MDB_COMPLEX:
        return 4;
    case MDB_REPID:
        return 16;
    case MDB_NUMERIC:
        return 17;
    default:
        return 8;
    }
}

template <class Float> std::string floatText(Float value) {
    if (!std::isfinite(value)) {
        throw Fault("The file is damaged: a number is none.");
    }
    std::array<char, 64> text{};
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr};
}

/// Ten-thousandths, written without the zeros at the end.
std::string moneyText(std::int64_t value) {
    const std::uint64_t size =
        value < 0 ? ~static_cast<std::uint64_t>(value) + 1 : static_cast<std::uint64_t>(value);
    std::string text = (value < 0 ? "-" : "") + std::to_string(size / kMoneyParts);
    if (const std::uint64_t parts = size % kMoneyParts; parts != 0) {
        const std::string digits = std::to_string(kMoneyParts + parts).substr(1);
        text += "." + digits.substr(0, digits.find_last_not_of('0') + 1);
    }
    return text;
}

/// "{12345678-9ABC-DEF0-0123-456789ABCDEF}"; the library leaves a dash out.
std::string identifierText(std::string_view bytes) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    constexpr std::array kOrder{3, 2, 1, 0, -1, 5, 4, -1, 7, 6, -1, 8, 9, -1, 10, 11, 12, 13, 14, 15};
    std::string text = "{";
    for (const int at : kOrder) {
        if (at < 0) {
            text += '-';
        } else {
            const auto byte = static_cast<unsigned char>(bytes[static_cast<std::size_t>(at)]);
            text += kDigits[byte >> 4];
            text += kDigits[byte & 0xF];
        }
    }
    return text + '}';
}

} // namespace

std::optional<Kind> kindOf(int type) {
    switch (type) {
    case MDB_BOOL:
        return Kind::Truth;
    case MDB_BYTE:
    case MDB_INT:
    case MDB_LONGINT:
    case MDB_MONEY:
    case MDB_FLOAT:
    case MDB_DOUBLE:
    case MDB_NUMERIC:
    case MDB_COMPLEX:
    case kBigNumber:
        return Kind::Number;
    case MDB_DATETIME:
        return Kind::Date;
    case MDB_TEXT:
    case MDB_MEMO:
    case MDB_REPID:
        return Kind::Text;
    case MDB_BINARY:
    case MDB_OLE:
        return Kind::Bytes;
    default:
        return std::nullopt;
    }
}

void requireSize(std::string_view bytes, int type) {
    if (bytes.size() != sizeOf(type)) {
        throw Fault("The file is damaged: a value has not the size of its kind.");
    }
}

std::string plainValue(std::string_view bytes, int type) {
    if (type == MDB_BINARY) {
        return std::string(bytes);
    }
    requireSize(bytes, type);
    switch (type) {
    case MDB_BYTE:
        return std::to_string(numberOf(bytes));
    case MDB_INT:
        return std::to_string(static_cast<std::int16_t>(numberOf(bytes)));
    case MDB_LONGINT:
    case MDB_COMPLEX:
        return std::to_string(static_cast<std::int32_t>(numberOf(bytes)));
    case MDB_MONEY:
        return moneyText(static_cast<std::int64_t>(numberOf(bytes)));
    case MDB_FLOAT:
        return floatText(std::bit_cast<float>(static_cast<std::uint32_t>(numberOf(bytes))));
    case MDB_DOUBLE:
        return floatText(std::bit_cast<double>(numberOf(bytes)));
    case MDB_DATETIME:
        return std::string(bytes);
    case MDB_REPID:
        return identifierText(bytes);
    default:
        return std::to_string(static_cast<std::int64_t>(numberOf(bytes)));
    }
}

} // namespace benthor::readjet
