#include "exports/zxulogbook.h"

#include "exports/exporterror.h"
#include "exports/wholewrite.h"

#include <vector>

namespace benthor::exports {

namespace {
constexpr qint64 kBlock = 256 * 1024;
constexpr qsizetype kMostHeld = 4 * 1024 * 1024; ///< a hundred usual dives
} // namespace

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
    groups_.next(dive, [this](QByteArrayView bytes) { keep(bytes); });
}

void ZxuLogbook::keep(QByteArrayView bytes) {
    if (!waiting_.isOpen()) {
        if (held_.size() + bytes.size() <= kMostHeld) {
            held_ += bytes;
            return;
        }
        if (!waiting_.open()) {
            throw ExportError(
                QStringLiteral("No file for the dives can be made: %1.").arg(waiting_.errorString()));
        }
    }
    pieces_.put(bytes, [this](QByteArrayView piece) { writeWhole(waiting_, piece); });
}

void ZxuLogbook::end() {
    writeWhole(device_, zxuHead(written_) + groups_.warnings());
    writeWhole(device_, held_);
    if (waiting_.isOpen()) {
        copyWaiting();
    }
    flushWhole(device_);
}

void ZxuLogbook::copyWaiting() {
    pieces_.flush([this](QByteArrayView piece) { writeWhole(waiting_, piece); });
    flushWhole(waiting_);
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
}

} // namespace benthor::exports
