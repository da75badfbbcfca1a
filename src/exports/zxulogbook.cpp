#include "exports/zxulogbook.h"

#include "exports/exporterror.h"
#include "exports/wholewrite.h"

#include <vector>

namespace benthor::exports {

namespace {
constexpr qint64 kBlock = 256 * 1024;
}

void ZxuLogbook::begin() {
    if (!waiting_.open()) {
        throw ExportError(
            QStringLiteral("No file for the dives can be made: %1.").arg(waiting_.errorString()));
    }
}

ZxuGroup ZxuLogbook::prepare(const WholeDive& dive) {
    return zxuGroup({dive.profile,
                     dive.gasArrays,
                     dive.lastsample(),
                     dive.figures.id,
                     dive.figures.interval.value_or(0),
                     dive.figures.start,
                     dive.figures.end,
                     {}});
}

void ZxuLogbook::add(const Prepared& dive) {
    writeWhole(waiting_, groups_.next(dive));
}

void ZxuLogbook::end() {
    flushWhole(waiting_);
    writeWhole(device_, zxuHead(written_) + groups_.warnings());
    if (!waiting_.seek(0)) {
        throw ExportError(waiting_.errorString());
    }
    std::vector<char> block(kBlock);
    while (!waiting_.atEnd()) {
        const qint64 read = waiting_.read(block.data(), kBlock);
        if (read <= 0) {
            throw ExportError(
                QStringLiteral("The dives cannot be read again: %1.").arg(waiting_.errorString()));
        }
        writeWhole(device_, QByteArrayView(block.data(), read));
    }
    flushWhole(device_);
}

} // namespace benthor::exports
