#pragma once

#include <QByteArray>
#include <QString>

#include <array>
#include <optional>

namespace benthor::link {

/// What a line of live readings does to the labels of the gas screen. A label without a text keeps the one
/// that it has; an empty text empties it.
struct Readings {
    static constexpr int labels = 31;
    static constexpr int firstAlarm = 21;
    std::array<std::optional<QString>, labels> texts;
    std::array<std::optional<bool>, labels> visible; ///< of the alarm group alone
};

struct LinkState;

/// The tick that waits for the answer to a readings request: the receive view follows what comes, and the
/// first answer ends the waiting. Nothing where no line is there.
std::optional<Readings> Timer6_tick(LinkState& link);
/// The tick that looks for lines sent unasked, while no answer is waited for. A line that was taken is
/// cleared away.
std::optional<Readings> Timer7_tick(LinkState& link);

/// Converts the fields of a line, parted by commas, to the labels.
Readings parsereadings(const QByteArray& text);

} // namespace benthor::link
