#pragma once

#include "exports/wholedive.h"

#include <QByteArray>
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
    /// Puts the row of a sample, from profile::kFirstSample to the dive's last one, behind `text`.
    void append(QByteArray& text, int sample) const;
    /// Makes room behind `text` for the rows of all samples, as long as they usually are, with `more` bytes
    /// around each and `behind` bytes behind all.
    void reserve(QByteArray& text, qsizetype more, qsizetype behind = 0) const;

private:
    qsizetype room() const; ///< that a row can need at most

    const WholeDive& dive_;
    QByteArrayView nothing_;
    struct Column {
        QByteArray before; ///< the comma, and what stands for the columns in between
        const profile::SampleArray* values;
    };
    std::vector<Column> columns_; ///< those that are recorded
    QByteArray behind_;           ///< what stands for the columns behind the last of them
    qsizetype gaps_ = 0;          ///< bytes of a row that are no number
};

} // namespace benthor::exports
