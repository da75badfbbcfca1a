#pragma once

#include <QStringList>

namespace benthor::ctl {

/// Does what the words behind the program's name ask for. Returns the exit status.
int run(const QStringList& words);

} // namespace benthor::ctl
