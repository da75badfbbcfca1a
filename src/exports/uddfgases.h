#pragma once

#include "exports/uddfxml.h"
#include "exports/wholedive.h"

#include <bitset>
#include <compare>
#include <map>

namespace benthor::exports {

/// Gases that a dive's samples name without a row of the store that tells what they are.
struct GasesWithoutRow {
    std::bitset<profile::kMostGases> numbers;
    bool beyond = false; ///< a number that no gas can have

    void add(int gas, const WholeDive& dive);
};

/// The mixes of a file. Dives that have the same gases share one list of them, so that many dives take little
/// memory.
class UddfGases {
public:
    static bool isNumber(int gas) { return gas >= 0 && gas < profile::kMostGases; }
    /// How many rows of the store a dive has, those that no number leads to left out.
    static int rowsOf(const WholeDive& dive);
    /// The identifier of a gas of the dive that bears this name in the file, "mix-D0000001-0", and what of it
    /// stands before and behind the name.
    static QByteArray id(const QString& name, int gas);
    static QByteArray idBefore() { return QByteArrayLiteral("mix-"); }
    static QByteArray idBehind(int gas);

    struct Mix {
        int16_t oxygen = 0, nitrogen = 0; ///< per cent
        double helium = 0;
        double depth = 0;                             ///< deepest, metres; 0: not known
        auto operator<=>(const Mix&) const = default; // NOLINT(modernize-use-nullptr): not ours
    };
    /// Of the rows of a dive. Safe on any thread.
    static std::vector<Mix> mixesOf(const WholeDive& dive);

    /// All mixes of a dive, and what its samples name beyond them.
    void add(const QString& name, const std::vector<Mix>& mixes, const GasesWithoutRow& withoutRow);
    /// The element gasdefinitions; nothing where no dive has a gas.
    void write(UddfXml& xml) const;

private:
    struct OfDive {
        QString name;
        const std::vector<Mix>* rows;
        GasesWithoutRow withoutRow;
    };

    static Mix mixOf(const WholeDive& dive, int row);
    static UddfForm formOf(const Mix& mix);
    static UddfForm formOf(const QString& name);

    std::map<std::vector<Mix>, int> tables_; ///< and how many dives have them; its nodes stay where they are
    std::vector<OfDive> dives_;
};

} // namespace benthor::exports
