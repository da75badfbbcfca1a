#pragma once

#include "profile/alarmtexts.h"
#include "profile/samplearray.h"

#include <QStringList>
#include <array>
#include <bitset>

namespace benthor::profile {

/// The first record of a profile is this sample: samples 1 to 3 stay zero, and every consumer counts on that
/// lead.
constexpr int kFirstSample = 4;

/// Why the reading of a profile ended. The samples that were stored by then stay, however it ended.
enum class ReadingEnd {
    EndWord,      ///< the word "End" came
    EndOfFile,    ///< the bytes were used up first
    TooManyLines, ///< more than 32,100 lines
    Fault,        ///< a sample beyond the last of the arrays, or a field beyond position 40
    Stopped       ///< the yield function said so
};

/// Everything that one dive's profile holds. Depths and ceilings are negative downward; a length is in
/// metres, or in feet when the profile was decoded for feet, unless said otherwise. 0 is also what an
/// unrecorded quantity reads. Values are finite.
struct DiveProfile {
    SampleArray depthneg;               ///< depth, negated
    SampleArray gasnum;                 ///< number of the gas breathed
    SampleArray po2;                    ///< oxygen partial pressure, bar, two decimals
    SampleArray ceilingneg;             ///< decompression ceiling, negated
    SampleArray temp;                   ///< water, whole degrees C, or F with feet
    SampleArray alarmcount;             ///< number of alarm tokens
    SampleArray filterpct;              ///< filter, per cent
    SampleArray bat1, bat2;             ///< backup battery and main two-cell battery, volts
    SampleArray hpdil, hpo2;            ///< cylinder pressures of diluent and oxygen, bar, or psi with feet
    SampleArray cella, cellb, cellc;    ///< oxygen cells, bar
    SampleArray setpoint;               ///< bar
    SampleArray co2;                    ///< as recorded, divided by 100
    SampleArray co2adjust1, co2adjust2; ///< derived from co2 and depthpos
    SampleArray depthpos;               ///< depth in metres, positive, whatever the unit
    SampleArray mark;                   ///< 0 or 1, or the number of a field N
    SampleArray extrao, extrap, extraq, extrar; ///< as recorded, no meaning attached
    SampleArray tpm1, tpm2, tpm3, tpm4, tpm5, tpm6, tpm7,
        tpm8;                           ///< thermistors of the temperature profile meter
    SampleArray tpmpcta, tpmpctb;       ///< the meter's per cent values
    SampleArray extrav, extrat, extraf; ///< as recorded

    /// Readings of the thermistor sticks, channels 1 to 8; [0] is unused. For the chart only.
    std::array<SampleArray, 9> tpmstick0, tpmstick1, tpmstick2;

    AlarmTexts alarms;

    std::bitset<16> enabled;    ///< bit k: the profile has data for the series box Check<k>
    std::bitset<6> maskshidden; ///< bit k: the mask panel Frame4(k) is to be hidden

    /// As the decoder leaves it: the number of records plus 4. The screen lowers it by one when its grid has
    /// its rows, and from then on it is the last row of the grid, and the last record.
    int lastsample = kFirstSample;

    QStringList messages;   ///< the boxes of the reading, in order
    bool malformed = false; ///< a record had a field 4 without "M" or a field 5 without "T"
    ReadingEnd end = ReadingEnd::EndWord;

    /// The alarm tokens of sample n, counted from 1, each followed by CR LF.
    QString alarmtext(int n) const { return alarms.text(n); }

    /// Whether sample n is shown as an alarm: it has a token, and not "PREDIVE" alone.
    bool alarmpoint(int n) const {
        const float count = alarmcount[n - 1];
        return count > 0.0F && (count >= 2.0F || !alarms.holdsPredive(n));
    }
};

} // namespace benthor::profile
