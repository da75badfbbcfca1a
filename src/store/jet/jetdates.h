#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace benthor::store {

/// A date-time of a Jet file as "yyyy-mm-dd hh:mm:ss", to the nearest second. `days` counts from 30 December
/// 1899; the part of a day counts forward from its midnight, before that date too. Nothing for what lies
/// outside the years 100 to 9999.
std::optional<std::string> datetext(double days);

/// "Sep/03/2004 17:17:16" as "2004-09-03 17:17:16"; the month's English name in any case. Nothing for every
/// other text, and for a day or an hour that there is not.
std::optional<std::string> datefromtext(std::string_view text);

/// Whether a column for dates would keep `text` as a number, in another form: blanks, a sign, digits, a
/// point, an exponent.
bool looksnumeric(std::string_view text);

} // namespace benthor::store
