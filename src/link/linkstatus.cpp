#include "link/linkstatus.h"

namespace benthor::link {

LinkStatus::~LinkStatus() = default;

} // namespace benthor::link
