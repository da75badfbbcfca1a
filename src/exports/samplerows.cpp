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
        columns_.push_back(isRecorded(dive, column) ? &(dive.profile.*column.array) : nullptr);
    }
    row_.resize((columns_.size() + 1) * (kLongestNumber + 1));
}

QByteArrayView SampleRows::row(int sample) {
    const auto writeNothing = [this](char* at) { return std::copy(nothing_.begin(), nothing_.end(), at); };
    char* at = row_.data();
    const std::optional<double> time = dive_.timeOf(sample);
    at = time && std::isfinite(*time) ? writeNumber(at, *time) : writeNothing(at);
    for (const profile::SampleArray* const column : columns_) {
        *at++ = ',';
        at = column != nullptr ? writeNumber(at, (*column)[sample - 1]) : writeNothing(at);
    }
    return {row_.data(), at};
}

} // namespace benthor::exports
