#pragma once

#include "logbook/otherlogbook.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <stdexcept>
#include <vector>

namespace benthor::logbook {

// Two logbooks become one: which dives of another one are here already.

/// Called now and then with how much is done; false ends the work, which throws MergeStopped and has changed
/// nothing.
using MergeProgress = std::function<bool(int done, int of)>;
class MergeStopped : public std::runtime_error {
public:
    MergeStopped()
        : std::runtime_error("stopped") {}
};

enum class MergeGroup {
    New,          ///< not here yet
    Here,         ///< here already
    OtherDetails, ///< here already, and the other logbook tells something else of it
};

/// Something that a diver wrote of a dive, there and not here.
struct DetailDifference {
    QByteArray field; ///< of the table main; "buddylist" for the buddies, which are joined by ", "
    QString caption;
    QString mine;
    QString theirs;
    bool joins = false; ///< both can be kept, one behind the other
    bool operator==(const DetailDifference&) const = default;
};

/// A dive of the other logbook.
struct MergeDive {
    qint64 row = 0; ///< number of its row in the other store's table main
    QString diveid; ///< there
    QString name;
    QString started; ///< "yyyy-mm-dd hh:mm:ss", as far as it is known
    QString duration;
    QString maxdepth; ///< metres
    QString serial;
    QString file; ///< in the other folder `dbtxt`; empty where the row names none

    MergeGroup group = MergeGroup::New;
    QString mine; ///< its identifier here; empty for a new one, and for one that stands twice over there
    std::vector<DetailDifference> differences;
    bool operator==(const MergeDive&) const = default;
};

/// All dives of the other logbook, in the order of its identifiers.
///
/// Two dives are the same when `Startcode` is and `Suit` or `UserName` is (blanks at the ends and case do not
/// count; where neither dive has one of the two, the code alone decides), or when the bytes of their files
/// are, those of empty files aside; one without a `Startcode` is another when start, duration and depth are.
/// Of several such dives here the first counts, and one whose words agree before one whose file does; of
/// several over there the first can come, and the others are here already. Where several over there are one
/// here, none of them offers its serial or its diver: with those of one, the dive here would no longer be the
/// others.
///
/// StoreError where a store cannot be read. MergeStopped.
std::vector<MergeDive> planmerge(platform::Database& mine, const platform::ProgramFolder& folder,
                                 OtherLogbook& other, const MergeProgress& progress = {});

/// How many are in a group.
int countgroup(const std::vector<MergeDive>& dives, MergeGroup group);

} // namespace benthor::logbook
