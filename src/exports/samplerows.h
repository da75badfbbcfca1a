#pragma once

#include "exports/wholedive.h"

#include <QByteArrayView>

#include <vector>

namespace benthor::exports {

/// The numbers of a dive's samples as text, row by row: the seconds and the columns of sampleColumns(),
/// parted by commas. JSON and comma-separated files differ in nothing but the word for what is not there.
class SampleRows {
public:
    /// `nothing` stands for a time that is none, and throughout in columns where isRecorded() says no. Both
    /// must outlive this.
    SampleRows(const WholeDive& dive, QByteArrayView nothing);
    /// Of a sample from profile::kFirstSample to the dive's last one. Valid until the next call.
    QByteArrayView row(int sample);

private:
    const WholeDive& dive_;
    QByteArrayView nothing_;
    std::vector<const profile::SampleArray*> columns_; ///< null where nothing is recorded
    std::vector<char> row_;
};

} // namespace benthor::exports
