#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace benthor::readjet {

// Text of a Jet file as UTF-8. The library puts a question mark in the place of what it cannot decode; here
// such a text is none.

/// Of the newer form: two bytes a letter, or, behind the bytes FF FE, one byte a letter and two by turns.
std::optional<std::string> textOfJet4(std::string_view bytes);

/// Of the oldest form: in the code page that the file names.
std::optional<std::string> textOfJet3(std::string_view bytes, std::uint16_t codePage);

} // namespace benthor::readjet
