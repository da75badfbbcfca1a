#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <cstdint>
#include <optional>

namespace benthor::simulator {

// Real images of a device's firmware are the maker's. This form is ours, and only our simulated device knows
// it: "*", a short text head, and code that is none.

enum class FirmwareType { Rb, Kd };

/// "rb" or "kd", as a device tells its type.
QByteArray typeWord(FirmwareType type);

/// What the head says.
struct ImageHead {
    FirmwareType type = FirmwareType::Rb;
    int units = 0;
    std::uint16_t rest = 0; ///< sum of the code bytes that a send in whole records leaves behind
    bool operator==(const ImageHead&) const = default;
};

/// 138 * `units` + 2 bytes, the same for the same arguments on every machine; `units` from 1 on. The last two
/// bytes are the check value, the high one first: the 16-bit sum of the bytes from 1 (counted from 0) up to
/// length - 3.
QByteArray firmwareImage(FirmwareType type, int units, std::uint32_t seed);

/// Of an image or of its beginning; nothing for one that is not ours.
std::optional<ImageHead> imageHead(QByteArrayView image);

/// The check value of an image of ours as a loader received it: whole, with zeros behind it, or as what goes
/// out in records of 128 bytes behind the first byte, the last started record left out. It is summed from the
/// bytes; for those left behind the head's sum stands in. Equal to the stored value unless the bytes changed
/// on their way. Nothing for an image that is not ours.
std::optional<std::uint16_t> receivedCheck(QByteArrayView image);

/// The line of a check list for that image: its base name with ".sog", two blanks, "chksum=", a blank, the
/// value in four hexadecimal digits, and a line end. What follows the last point of `name` is not part of the
/// base name.
QByteArray checkListLine(const QString& name, std::uint16_t value);

} // namespace benthor::simulator
