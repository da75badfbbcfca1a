#pragma once

#include "exports/fullexport.h"

#include <QByteArray>
#include <QStringList>

#include <functional>
#include <map>
#include <vector>

namespace benthor::exports {

// The segments of a DL7 file, one by one, for files of one dive and of many.

/// FSH and ZRH, which stand before the warnings.
QByteArray zxuHead(const QDateTime& written);

/// The segments of one dive, from ZDH to ZDT, without what depends on the dives before it in the file: these
/// are gaps in the text, in the order of their places. So dives can be written before their turn comes.
struct ZxuGroup {
    struct Gap {
        qsizetype at = 0;  ///< into `text`
        QStringList words; ///< of a sample's warnings, whose number belongs there; empty: the dive's number
    };
    QByteArray text;
    std::vector<Gap> gaps;
};
ZxuGroup zxuGroup(const FullDive& dive);

/// Puts the groups of a file behind one another.
///
/// Each set of words that stands at a sample as warnings has a number of its own, counted from 1 through all
/// dives: the table stands once, in the head. A sample's line holds one field for them, so that a set has one
/// number, too.
class ZxuGroups {
public:
    /// Hands the text of the next dive on, from its beginning to its end: its number is its place in the
    /// file, counted from 1.
    void next(const ZxuGroup& group, const std::function<void(QByteArrayView)>& put);
    /// The segment of the warnings so far with its line end: number and words, parted by "^", one entry
    /// behind the other, parted by "~".
    QByteArray warnings() const;

private:
    int warning(const QStringList& words);

    std::map<QStringList, int> numbers_;
    QByteArray entries_;
    int dives_ = 0;
};

} // namespace benthor::exports
