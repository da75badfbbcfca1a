#pragma once

#include "exports/lossreport.h"
#include "exports/wholedive.h"

#include <QIODevice>
#include <QStringList>

#include <functional>
#include <optional>
#include <stdexcept>

namespace benthor::exports {

/// The open formats that dives leave in.
enum class DiveFormat { Uddf, Json, Csv, Zxu };

/// "uddf", "json", "csv" or "zxu", without regard to case, as the ending of a file has it; nothing for any
/// other word.
std::optional<DiveFormat> formatNamed(QStringView word);

/// Called before each dive and behind the last; false ends the export, which throws ExportStopped.
using ExportProgress = std::function<bool(int done, int of)>;
class ExportStopped : public std::runtime_error {
public:
    ExportStopped()
        : std::runtime_error("stopped") {}
};

/// Writes these dives to the open device, one by one: memory does not grow with their number. Identifiers
/// that no dive bears are passed over, and added to `notThere` where that is asked for. Nothing of the device
/// is closed or committed. ExportError where the device does not take the bytes, StoreError, ExportStopped.
LossReport exportdives(DiveFormat format, QIODevice& device, DiveReader& dives, const QStringList& ids,
                       const ExportProgress& progress = {}, QStringList* notThere = nullptr);

} // namespace benthor::exports
