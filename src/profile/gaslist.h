#pragma once

#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace benthor::profile {

constexpr int kMostGases = 31;  ///< room of the gas arrays
constexpr int kNamedGases = 10; ///< gas numbers 0 to 9 have a name and a line in the list
constexpr int kGasNames = 21;   ///< room of the names; 10 to 20 stay empty

/// The gases of a dive by gas number. A gas without a row is all zeros.
struct GasArrays {
    std::array<int16_t, kMostGases> gasn2{}; ///< per cent nitrogen
    std::array<double, kMostGases> gashe{};  ///< per cent helium
    std::array<int16_t, kMostGases> gaso2{}; ///< per cent oxygen
    std::array<int, kMostGases> gasactive{}; ///< 1: on
    std::array<int, kMostGases> gasmod{};    ///< maximum operating depth, whole metres, or whole feet
};

/// The fields of one row of the table gas by position: 0 dive, 1 gas number, 2 nitrogen and 3 helium per
/// cent, 4 MOD in tenths of a metre, 5 on flag. No value is Null; a field that is missing counts as Null.
using GasRow = std::vector<std::optional<QString>>;

using GasNames = std::array<QString, kGasNames>;

/// Fills the arrays, row k (from 1) at position k-1, whatever gas number the row itself holds. Rows with
/// nitrogen or helium above 100 or below 0 get nitrogen 79 and MOD 66 m. Rows beyond the arrays' room are a
/// fault: the arrays stay as far as filled. Returns the message box to show, or nothing. Without rows the
/// arrays stay as they are.
QString readgaslist(const std::vector<GasRow>& rows, bool feet, GasArrays& gases);

/// A field as the reader sees it: Null is empty, and a value strictly between 0 and 1 gets a "0" in front.
QString gasFieldText(const std::optional<QString>& field);

/// "TX18/45", "Air" or "NX32". `gas` from 0 to 30.
QString gasName(const GasArrays& gases, int gas);

/// Names of gases 0 to 9; the others are empty.
GasNames gasNames(const GasArrays& gases);

/// The text of gasList: ten lines such as "0: TX18/45  70m  On", each ending in CR LF.
QString gasListText(const GasArrays& gases, bool feet);

} // namespace benthor::profile
