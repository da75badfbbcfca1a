#include "exports/samplerows.h"

#include "exports/numbertext.h"
#include "exports/samplecolumns.h"

#include <algorithm>
#include <cmath>

namespace benthor::exports {

SampleRows::SampleRows(const WholeDive& dive, QByteArrayView nothing)
    : dive_(dive)
    , nothing_(nothing) {
    for (const SampleColumn& column : sampleColumns()) {
        columns_.push_back(isRecorded(dive, column.array) ? &(dive.profile.*column.array) : nullptr);
    }
}

qsizetype SampleRows::room() const {
    return static_cast<qsizetype>(columns_.size() + 1) * (kLongestNumber + 1);
}

void SampleRows::reserve(QByteArray& text, qsizetype more) const {
    constexpr qsizetype kUsualNumber = 4;
    constexpr qsizetype kAroundRow = 8; // brackets, alarms, line end
    qsizetype row = more + kUsualNumber + kAroundRow;
    for (const profile::SampleArray* const column : columns_) {
        row += 1 + (column != nullptr ? kUsualNumber : nothing_.size());
    }
    text.reserve(text.size() + (dive_.samples() + 1) * row + room());
}

void SampleRows::append(QByteArray& text, int sample) const {
    const qsizetype before = text.size();
    text.resize(before + room());
    const auto writeNothing = [this](char* at) { return std::copy(nothing_.begin(), nothing_.end(), at); };
    char* at = text.data() + before;
    const std::optional<double> time = dive_.timeOf(sample);
    at = time && std::isfinite(*time) ? writeNumber(at, *time) : writeNothing(at);
    for (const profile::SampleArray* const column : columns_) {
        *at++ = ',';
        at = column != nullptr ? writeNumber(at, (*column)[sample - 1]) : writeNothing(at);
    }
    text.resize(at - text.constData());
}

} // namespace benthor::exports
