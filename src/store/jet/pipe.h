#pragma once

#include <cstdint>

// What travels from the program `benthor-readjet` to us, over its standard output. That program reads the
// tables of a Jet file with a library that is not ours; it may die or go wrong at any byte, so whoever
// listens checks every length (frames.h).
//
// A stream is a row of frames. A frame is its mark (one letter), the length of its body (32 bits) and the
// body. Numbers are little-endian, without padding.
//
//   'J' head, the first frame: version (16), count of tables (16), and for each table
//       name, rows that its definition page counts (64), count of fields (16), and for each field
//       its kind (8), its greatest length in characters (32; 0 where there is none), its name.
//       Then a count (16) of names of tables that lie in another file, and those.
//       A name is its length in bytes (16) and UTF-8.
//   'R' a row of the table in hand: for each field of it the length of its value (32) and the value;
//       kNull stands for no value. The tables come in the order of the head, the first one is in hand first.
//   'E' end of the table in hand: rows that were sent (64). The next one is in hand.
//   'Z' the end, behind the last table: every table was read, and every page of it was as it should be.
//   'F' fault: UTF-8, a sentence for the user. It ends the stream.

namespace benthor::store::pipe {

inline constexpr std::uint16_t kVersion = 1;

inline constexpr char kHead = 'J';
inline constexpr char kRow = 'R';
inline constexpr char kTableEnd = 'E';
inline constexpr char kEnd = 'Z';
inline constexpr char kFault = 'F';

/// Mark and length.
inline constexpr std::uint32_t kFrameHead = 5;

/// The length that stands for Null.
inline constexpr std::uint32_t kNull = 0xFFFFFFFF;

// The format of Jet allows 255 fields and, in practice, a few hundred tables.
inline constexpr std::uint32_t kMostTables = 1024;
inline constexpr std::uint32_t kMostFields = 255;
inline constexpr std::uint32_t kMostName = 1024;                   ///< bytes
inline constexpr std::uint32_t kMostFault = 4096;                  ///< bytes
inline constexpr std::uint32_t kMostHead = 16U << 20;              ///< bytes
inline constexpr std::uint32_t kMostValue = 64U << 20;             ///< bytes
inline constexpr std::uint32_t kMostRow = kMostValue + (1U << 20); ///< bytes of a row's values together

/// What a field holds, and how its values travel.
enum class Kind : std::uint8_t {
    Text = 1,   ///< UTF-8
    Number = 2, ///< decimal digits with a sign, a point, an exponent
    Date = 3,   ///< days since 30 December 1899 as a 64-bit float; a day's part counts forward from midnight
    Truth = 4,  ///< one byte, 0 or 1
    Bytes = 5,  ///< as they are
};

} // namespace benthor::store::pipe
