#include "ctl/commands.h"

namespace benthor::ctl {

Status runExport(const Arguments&, Output&) {
    throw Failure(kUsage, QStringLiteral("Not yet."));
}

Status runDataset(const Arguments&, Output&) {
    throw Failure(kUsage, QStringLiteral("Not yet."));
}

} // namespace benthor::ctl
