#pragma once

#include <QString>

namespace benthor::tests {

/// The text of docs/screens.md, read off the screens as they are made, before they load: every control that
/// has a name, with its kind, caption and tool tip.
QString screenList();

} // namespace benthor::tests
