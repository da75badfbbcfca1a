#pragma once

#include "ctl/arguments.h"
#include "ctl/outcome.h"
#include "ctl/output.h"

namespace benthor::ctl {

// The commands. Each writes its data to `output` and says whether there is something to look at; Failure,
// StoreError, ExportError where it cannot be done.

Status runList(const Arguments& arguments, Output& output);
Status runShow(const Arguments& arguments, Output& output);
Status runSamples(const Arguments& arguments, Output& output);
Status runCheck(const Arguments& arguments, Output& output);
Status runImport(const Arguments& arguments, Output& output);
Status runExport(const Arguments& arguments, Output& output);
Status runDataset(const Arguments& arguments, Output& output);
Status runMerge(const Arguments& arguments, Output& output);
Status runVerify(const Arguments& arguments, Output& output);
Status runStats(const Arguments& arguments, Output& output);

} // namespace benthor::ctl
