#pragma once

#include "store/jet/pipe.h"

#include <optional>
#include <string>
#include <string_view>

namespace benthor::readjet {

// Values of the kinds that a Jet row holds in itself, numbered as the library numbers them.

/// What a kind travels as; nothing for one that is not known.
std::optional<store::pipe::Kind> kindOf(int type);

/// Fails where a value of that kind has not the size of its kind. A Fault, as in the next.
void requireSize(std::string_view bytes, int type);

/// The value of a kind other than text, long value and numeric, as it travels.
std::string plainValue(std::string_view bytes, int type);

} // namespace benthor::readjet
