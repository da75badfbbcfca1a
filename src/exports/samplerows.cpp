#include "exports/samplerows.h"

#include "exports/numbertext.h"
#include "exports/samplecolumns.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace benthor::exports {

SampleRows::SampleRows(const WholeDive& dive, QByteArrayView nothing)
    : dive_(dive)
    , nothing_(nothing) {
    for (const SampleColumn& column : sampleColumns()) {
        const bool recorded = isRecorded(dive, column.array);
        behind_ += ',';
        gaps_ += 1 + (recorded ? 0 : nothing.size());
        if (recorded) {
            columns_.push_back({std::exchange(behind_, {}), &(dive.profile.*column.array)});
        } else {
            behind_ += nothing;
        }
    }
}

qsizetype SampleRows::room() const {
    return static_cast<qsizetype>(columns_.size() + 1) * kLongestNumber + gaps_;
}

void SampleRows::reserve(QByteArray& text, qsizetype more, qsizetype behind) const {
    constexpr qsizetype kUsualNumber = 4;
    constexpr qsizetype kAroundRow = 8; // brackets, alarms, line end
    const qsizetype row =
        more + kAroundRow + gaps_ + kUsualNumber * static_cast<qsizetype>(columns_.size() + 1);
    text.reserve(text.size() + (dive_.samples() + 1) * row + room() + behind);
}

void SampleRows::append(QByteArray& text, int sample) const {
    const qsizetype before = text.size();
    text.resize(before + room());
    const auto write = [](char* at, QByteArrayView bytes) {
        return std::copy(bytes.begin(), bytes.end(), at);
    };
    char* at = text.data() + before;
    const std::optional<double> time = dive_.timeOf(sample);
    at = time && std::isfinite(*time) ? writeNumber(at, *time) : write(at, nothing_);
    for (const auto& [comma, values] : columns_) {
        if (comma.size() == 1) { // most of them
            *at++ = ',';
        } else {
            at = write(at, comma);
        }
        at = writeNumber(at, (*values)[sample - 1]);
    }
    at = write(at, behind_);
    text.resize(at - text.constData());
}

} // namespace benthor::exports
