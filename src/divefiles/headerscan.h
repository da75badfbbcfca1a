#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <array>
#include <variant>
#include <vector>

namespace benthor::divefiles {

// The header of a dive text file, read as the importer reads it. Bytes in, a list of what is to be written
// out; what the list means for the store is the importer's. All values are raw bytes, one a character.

/// A field of the dive's row that a header line fills.
enum class HeaderField {
    Interval,
    Serial, ///< goes to two fields
    Start,
    Status, ///< read and dropped
    Descend,
    DAtmos,
    DStack,
    DUsage,
    MaxD,
    Otu,
    HpCylinder, ///< the whole value; the store keeps a part
};

/// A new row; what follows belongs to it.
struct NewDive {
    QByteArray version;
    bool operator==(const NewDive&) const = default;
};

struct PutField {
    HeaderField field;
    QByteArray value;
    bool operator==(const PutField&) const = default;
};

/// The end of the dive, and with it its duration from the start code in hand.
struct PutFinish {
    QByteArray startcode;
    QByteArray finishcode;
    bool operator==(const PutFinish&) const = default;
};

/// Number, nitrogen, helium, mode, status; the last field that the line reached keeps the line's CR.
struct AddGas {
    std::array<QByteArray, 5> fields;
    bool operator==(const AddGas&) const = default;
};

/// Number, nitrogen, helium; CR as above.
struct AddTissue {
    std::array<QByteArray, 3> fields;
    bool operator==(const AddTissue&) const = default;
};

using HeaderAction = std::variant<NewDive, PutField, PutFinish, AddGas, AddTissue>;

enum class ScanOutcome {
    Finished,       ///< all rounds done
    VersionMissing, ///< a Start line with neither a version nor an interval before it
    GasTooMany,     ///< a Gas field too long, or one too many
    TissueTooMany,
};

struct HeaderScan {
    std::vector<HeaderAction> actions; ///< in the order of the file, up to the fault where there is one
    ScanOutcome outcome = ScanOutcome::Finished;
    int profiles = 0; ///< how often "Profile" was met
};

/// Scans the beginning of a file: exactly 1000 rounds of one byte each, in which keywords are looked for; the
/// bytes of a keyword's value do not count as rounds. Behind the end of `file` zero bytes are read. Lines for
/// which there is no row yet leave nothing, so no other dive's row is ever written.
HeaderScan scanheader(QByteArrayView file);

} // namespace benthor::divefiles
