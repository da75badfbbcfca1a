#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <map>
#include <set>

namespace benthor::exports {

/// What a dive had that a format has no place for, by kind.
using LostKinds = std::set<QString>;

/// What dives had that the format of an export has no place for, and what the export had to make up.
struct LossReport {
    int dives = 0;               ///< that went out, whole or not
    std::map<QString, int> lost; ///< what had no place, and in how many dives
    QStringList withoutSamples;  ///< "D0000001: Its file 00000001.txt is not in the folder dbtxt."
    QStringList musts;           ///< "D0000001: no start; 1991-12-31T00:00:00 stands for it"

    /// Nothing was lost, nothing made up, and all dives have their samples.
    bool isEmpty() const { return lost.empty() && withoutSamples.isEmpty() && musts.isEmpty(); }

    /// One more dive that `kind` was lost of. To be called once for a dive and a kind.
    void lose(const QString& kind) { ++lost[kind]; }
    void addWithoutSamples(const QString& id, const QString& reason);
    void addMust(const QString& id, const QString& what);

    /// For a person to read, one line each without its line end, the number of dives first. Identifiers and
    /// file names of a damaged store may hold line ends and other control characters: those are shown as
    /// blanks.
    QStringList lines() const;

    /// {"dives": number, "lost": {kind: number}, "without_samples": [text], "musts": [text]}
    QJsonObject json() const;
};

} // namespace benthor::exports
