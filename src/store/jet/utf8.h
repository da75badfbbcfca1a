#pragma once

#include <string_view>

namespace benthor::store {

/// Whether `bytes` are UTF-8: no lone surrogate, nothing longer than it need be, nothing beyond U+10FFFF.
bool isUtf8(std::string_view bytes);

} // namespace benthor::store
