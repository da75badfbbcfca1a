#include "exports/zxulogbook.h"

#include "exports/exporterror.h"
#include "exports/wholewrite.h"

namespace benthor::exports {

namespace {
constexpr qint64 kBlock = 1024 * 1024;
}

void ZxuLogbook::begin() {
    if (!groups_.open()) {
        throw ExportError(
            QStringLiteral("No file for the dives can be made: %1.").arg(groups_.errorString()));
    }
}

void ZxuLogbook::add(const WholeDive& dive) {
    const FullDive full{dive.profile,
                        dive.gasArrays,
                        dive.lastsample(),
                        dive.figures.id,
                        dive.figures.interval.value_or(0),
                        dive.figures.start,
                        dive.figures.end,
                        written_};
    writeWhole(groups_, zxuDive(full, ++dives_, warnings_));
}

void ZxuLogbook::end() {
    flushWhole(groups_);
    writeWhole(device_, zxuHead(written_) + warnings_.segment());
    if (!groups_.seek(0)) {
        throw ExportError(groups_.errorString());
    }
    while (!groups_.atEnd()) {
        const QByteArray block = groups_.read(kBlock);
        if (block.isEmpty()) {
            throw ExportError(
                QStringLiteral("The dives cannot be read again: %1.").arg(groups_.errorString()));
        }
        writeWhole(device_, block);
    }
    flushWhole(device_);
}

} // namespace benthor::exports
