#pragma once

#include "logbook/mergeplan.h"

#include <QStringList>

namespace benthor::logbook {

// Two logbooks become one: dives, details and list entries of another logbook come into this one.

enum class TakeDetail { Mine, Theirs, Both };

/// What is to be done with one dive of the plan.
struct MergeChoice {
    bool comes = false;              ///< of a new dive
    std::vector<TakeDetail> details; ///< of one with other details: one for each difference; none takes none
};

/// What is empty here is filled, all else stays.
TakeDetail plainchoice(const DetailDifference& difference);

/// What a diver would choose without looking: every new dive comes, and no details.
std::vector<MergeChoice> plainchoices(const std::vector<MergeDive>& dives);

struct MergeResult {
    int came = 0;         ///< dives that are new here
    int stayed = 0;       ///< dives that stayed over there: here already, or not chosen
    int details = 0;      ///< dives whose details were changed
    int entries = 0;      ///< entries of the pick lists
    QStringList dives;    ///< the new identifiers
    QStringList problems; ///< what did not come over as it was, for the user
    QString backup;       ///< name of the proven copy of the store as it was before
    QString notTakenBack; ///< why the merge cannot be taken back; empty where it can
};

/// Brings the chosen dives over: the row of main under a new identifier with all its fields (one that the
/// store here lacks is added to it), the rows of gas, tissue and buddylist, the dive's files in `dbtxt` and
/// `old`, and list entries that are missing here (site, weather, department, buddy). A file name that is
/// taken gets a free one, and the row names it. Details are changed as chosen.
///
/// First a copy of the store is made and proved, in "rb-before-merge.mdb"; without one nothing is merged. The
/// rows change in one transaction, which is one act that can be taken back; where it fails the files that
/// were copied for it are taken away again. StoreError with words for the user; MergeStopped.
MergeResult mergedives(platform::Database& mine, const platform::ProgramFolder& folder, OtherLogbook& other,
                       const std::vector<MergeDive>& dives, const std::vector<MergeChoice>& choices,
                       const MergeProgress& progress = {});

/// The result in words.
QString mergeText(const MergeResult& result);

} // namespace benthor::logbook
