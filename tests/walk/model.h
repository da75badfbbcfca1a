#pragma once

#include "tests/walk/mergerule.h"
#include "tests/walk/world.h"

#include <optional>
#include <set>

namespace benthor::tests {

/// What pressing the button of the merge screen must come to.
struct MergeEnd {
    enum class Kind {
        Merged,
        ShownAgain, ///< the logbooks are not as they are shown
        Unreadable, ///< the other logbook is not there any more
        Refused,    ///< while dives are imported
    };
    Kind kind = Kind::Refused;
    Snapshot before; ///< what is typed of open details is stored by then
    Merged merged;
    bool bringsNothing = false; ///< it is the same merge once more
    QStringList chosen;         ///< in the list, before
};

/// What taking a merge back, or doing it again, must come to.
struct MergeTurn {
    bool undo = true;
    bool stored = false; ///< what is typed of open details comes first, and nothing else happens
    bool fits = true;    ///< else it is named, passed over, and nothing has changed
    Snapshot after;
};

/// What a step is expected to do beside what every step may do. The step says so itself, before or while it
/// acts.
struct Expected {
    std::optional<QString> viewer; ///< the dive that the dive screen shows afterwards; empty: none
    bool detailsSaved = false;     ///< what stands on the details is stored though they stay
    QStringList deleted;           ///< dives whose deletion was answered with Yes
    bool turned = false;           ///< something was taken back, done again, or put back from the trash
    bool detailsStay = false;      ///< that leaves what is typed of open details where it is
    std::set<QString> arrived;     ///< names of files that came into `new` within the step
    QString gasTable;              ///< a file that the dive screen was told to save its gases as
    QString danFile;               ///< the same, for DAN
    QString openFile;              ///< into which dives were to go out whole, and which
    QStringList exported;
    bool exportTold = false; ///< a box spoke of it
    bool setupSent = false;  ///< the device's setup may change, to what the gas screen shows
    std::optional<MergeEnd> merge;
    std::optional<MergeTurn> mergeTurn;
    bool mergeLeft = false;                ///< the merge screen goes
    std::optional<StoreContents> restored; ///< that store has taken the place of the program's own
    bool replacedKept = false;             ///< and what stood there must be kept
};

/// The plain model of the program: which dive each screen owns, what a diver has typed, what store and
/// folders hold. After each step it says what the disk and the screens must show, and compares.
class Model {
public:
    explicit Model(World& world);

    /// Before a step: forgets what the last one expected.
    void begin();
    /// Within a step of two parts: looks at the first one, and forgets what it expected.
    void beginSecondPart();
    /// After it: the first difference between what is and what must be; empty when there is none.
    QString check();

    Expected expected;

    // What the details hold, as the steps type it.
    bool detailsOpen() const { return !details_.screen.isNull(); }
    void typed(const QString& field, const QString& text);
    void setBuddies(const QStringList& buddies);
    const QStringList& buddies() const { return details_.buddies; }
    /// Whether something typed in them is not stored.
    bool hasTyped() const;
    QString detailsDive() const { return details_.diveid; }
    QString viewerDive() const { return viewer_.screen.isNull() ? QString() : viewer_.diveid; }
    const Snapshot& last() const { return last_; }
    /// How often what a walk is about has happened.
    const QMap<QString, int>& met() const { return met_; }

    /// Whether the dive of the program's own store under that identifier can be opened.
    bool opens(const QString& diveid) const;

    // Another logbook on the merge screen, as the steps choose it.

    struct MergeShown {
        QPointer<platform::Screen> screen;
        QString path; ///< empty: none was chosen, or it cannot be read
        MergePlan plan;
        std::vector<Wish> wishes;
        bool stands = false; ///< the screen was there behind the last step
    };
    /// The logbook at `path` was chosen on the screen.
    void mergeShown(const QString& path);
    MergeShown& mergeScreen() { return merge_; }
    /// Before the button is pressed, or the command of the menu that says `what`.
    void expectMerge(bool bringsNothing = false);
    /// The logbook of the last merge is shown once more, and neither has changed since.
    void noteSameMerge();
    void expectTurn(bool undo, const QString& what);
    /// Before the program is left, to be started with that store in the place of its own.
    void expectRestored(const QString& path, bool replacedKept);

    /// What the last merge was chosen from, and what was chosen of it.
    struct LastMerge {
        struct Chosen {
            QString diveid; ///< over there
            bool ticked = false;
            QMap<QString, Take> details; ///< by field
        };
        QString path;
        std::vector<Chosen> wishes;
        Snapshot after;
        OtherContents other;
    };
    const LastMerge& lastMerge() const { return lastMerge_; }

private:
    struct Owner {
        QPointer<platform::Screen> screen;
        QString diveid;
        QString key; ///< of the dive
    };
    struct Details : Owner {
        QMap<QString, QString> edited;
        QStringList buddies;
        QMap<QString, QString> storedEdits; ///< these two as they were shown or stored last
        QStringList storedBuddies;
    };
    /// What a merge did.
    struct MergeAct {
        struct Edit {
            QString diveid;
            StoredDive before, after;
        };
        QMap<QString, StoredDive> came;
        std::vector<Edit> edits;
        QMap<QString, QStringList> entries;
    };

    QMap<QString, StoredDive> predicted(const Snapshot& now, QString& fault) const;
    void takeDetails(QMap<QString, StoredDive>& dives) const;
    void takeTurn(QMap<QString, StoredDive>& dives, const Snapshot& now, QString& fault) const;
    void noteTyped();
    bool wasSeen(const StoredDive& dive) const;
    QString takeDetailsScreen(const Snapshot& now, const platform::Screen& screen);
    QString checkNewDive(const QString& diveid, const StoredDive& dive, const Snapshot& now) const;
    QString checkFiles(const Snapshot& now) const;
    QString checkViewer(const Snapshot& now);
    QString checkProfile(const Snapshot& now) const;
    QString checkDetails(const Snapshot& now);
    QString checkList(const Snapshot& now) const;
    QString checkGasTable(const Snapshot& now) const;
    QString checkDanFile(const Snapshot& now) const;
    QString checkOpenFile(const Snapshot& now);
    QString checkSetup();
    void count(const Snapshot& now);

    void storeTyped(Snapshot& own) const;
    Snapshot ownNow() const;
    static bool takeBack(Snapshot& own, const MergeAct& act);
    static bool doAgain(Snapshot& own, const MergeAct& act);
    void noteMerge(const MergeEnd& end);
    void countMerge();
    QString checkMerge(const Snapshot& now);
    QString checkMerged(const MergeEnd& end, const Snapshot& now) const;
    QString checkTurn(const Snapshot& now);
    QString checkMergeScreen();
    QString checkPlan(const QAbstractItemModel& shown) const;
    QString checkRestored() const;

    QString look();

    World& world_;
    QString faultBefore_; ///< in the first part of the step
    Snapshot last_;
    Owner viewer_;
    bool savedForDan_ = false; ///< since the dive screen was loaded
    Details details_;
    QMap<QString, QList<StoredDive>> seen_; ///< all that dives ever were, by their keys
    QMap<QString, int> together_;           ///< as how many dives one stood in the store at once, at most
    std::set<QString> imported_;            ///< keys of all dives that ever came of a file
    QMap<QString, int> met_;
    std::set<QString> freed_; ///< identifiers whose dives were deleted
    QByteArray setup_;        ///< that of the device
    MergeShown merge_;
    LastMerge lastMerge_;
    std::vector<MergeAct> merges_; ///< that can be taken back
    std::vector<MergeAct> undone_; ///< that can be done again, or could
};

} // namespace benthor::tests
