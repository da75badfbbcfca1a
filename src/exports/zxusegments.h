#pragma once

#include "exports/fullexport.h"

#include <QByteArray>
#include <QStringList>

#include <map>

namespace benthor::exports {

// The segments of a DL7 file, one by one, for files of one dive and of many.

/// The warnings of a file's dives, each set of words that stands at a sample under a number of its own,
/// counted from 1 through all dives: the table stands once, in the head. A sample's line holds one field for
/// them, so that a set has one number, too.
class ZxuWarnings {
public:
    /// The number of a sample's warnings; 0 where it has none.
    int number(const profile::DiveProfile& profile, int sample);
    /// The segment with its line end: number and words, parted by "^", one entry behind the other, parted by
    /// "~".
    QByteArray segment() const;

private:
    std::map<QStringList, int> numbers_;
    QByteArray entries_;
};

/// FSH and ZRH, which stand before the warnings.
QByteArray zxuHead(const QDateTime& written);

/// From ZDH to ZDT. `number`: the place of the dive in the file, counted from 1; its two segments bear it.
QByteArray zxuDive(const FullDive& dive, int number, ZxuWarnings& warnings);

} // namespace benthor::exports
