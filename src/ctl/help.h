#pragma once

#include <QString>

namespace benthor::ctl {

/// What is told of a command; of the whole program where `command` is empty.
QString helpText(const QString& command);

} // namespace benthor::ctl
