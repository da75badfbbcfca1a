#pragma once

#include "tests/walk/snapshot.h"

#include <optional>

namespace benthor::tests {

// What bringing dives from another logbook must come to, by a rule of its own: every dive is held against
// every other.

/// Another logbook: its store, and the folders beside it.
struct OtherContents {
    std::vector<StoredRow> dives; ///< in the order of their identifiers
    QMap<QString, QStringList> lists;
    QMap<QString, QByteArray> forviewer, kept; ///< `dbtxt` and `old`

    /// The file that a dive names, if it is there.
    std::optional<QByteArray> fileOf(const StoredDive& dive) const;
};

/// `store`: what is read; `folder`: what lies beside the file that was chosen. StoreError.
OtherContents readOther(const QString& store, const QString& folder);

enum class Standing { New, OtherDetails, Here }; ///< in the order of the screen's groups

struct Difference {
    QString field; ///< as diverFields(), or "buddylist"
    QString mine;
    QString theirs;
    bool operator==(const Difference&) const = default;
};

/// A dive of the other logbook, as the screen must show it.
struct PlannedDive {
    StoredRow there;
    Standing standing = Standing::New;
    QString mine; ///< the identifier of the dive here that it is
    std::vector<Difference> differences;
    /// Whether the screen would show the same.
    bool showsAs(const PlannedDive& other) const;
};
using MergePlan = std::vector<PlannedDive>;

MergePlan planOf(const Snapshot& own, const OtherContents& other);

enum class Take { Mine, Theirs, Both };
bool joins(const QString& field);
QString captionOf(const QString& field);

/// What a user has made of one dive of the plan.
struct Wish {
    bool ticked = false;
    std::vector<Take> details; ///< one for each difference
    bool operator==(const Wish&) const = default;
};

/// What the screen offers first.
std::vector<Wish> firstWishes(const MergePlan& plan);

/// What a merge must make of the logbook here.
struct Merged {
    Snapshot after;
    QStringList came;     ///< the new identifiers
    int details = 0;      ///< dives whose details were chosen
    int entries = 0;      ///< of the pick lists
    QStringList fileless; ///< names of files that are missing there
    bool changes = false; ///< the store
};
Merged mergedBy(const Snapshot& own, const OtherContents& other, const MergePlan& plan,
                const std::vector<Wish>& wishes);

/// The identifier behind the last one.
QString nextIdentifier(const QMap<QString, StoredDive>& dives);

} // namespace benthor::tests
