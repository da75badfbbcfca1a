#pragma once

#include "tests/walk/snapshot.h"
#include "tests/walk/world.h"

#include <optional>
#include <set>

namespace benthor::tests {

/// What a step is expected to do beside what every step may do. The step says so itself, before or while it
/// acts.
struct Expected {
    std::optional<QString> viewer; ///< the dive that the dive screen shows afterwards; empty: none
    bool detailsSaved = false;     ///< what stands on the details is stored though they stay
    QStringList deleted;           ///< dives whose deletion was answered with Yes
    bool turned = false;           ///< something was taken back, done again, or put back from the trash
    std::set<QString> arrived;     ///< names of files that came into `new` within the step
    QString gasTable;              ///< a file that the dive screen was told to save its gases as
    QString danFile;               ///< the same, for DAN
    bool setupSent = false;        ///< the device's setup may change, to what the gas screen shows
};

/// The plain model of the program: which dive each screen owns, what a diver has typed, what store and
/// folders hold. After each step it says what the disk and the screens must show, and compares.
class Model {
public:
    explicit Model(World& world);

    /// Before a step: forgets what the last one expected.
    void begin();
    /// After it: the first difference between what is and what must be; empty when there is none.
    QString check();

    Expected expected;

    // What the details hold, as the steps type it.
    bool detailsOpen() const { return !details_.screen.isNull(); }
    void typed(const QString& field, const QString& text);
    void setBuddies(const QStringList& buddies);
    const QStringList& buddies() const { return details_.buddies; }
    QString detailsDive() const { return details_.diveid; }
    QString viewerDive() const { return viewer_.screen.isNull() ? QString() : viewer_.diveid; }
    const Snapshot& last() const { return last_; }
    /// How often what a walk is about has happened.
    const QMap<QString, int>& met() const { return met_; }

    /// Whether the dive of the program's own store under that identifier can be opened.
    bool opens(const QString& diveid) const;

private:
    struct Owner {
        QPointer<platform::Screen> screen;
        QString diveid;
        QString startcode;
    };
    struct Details : Owner {
        QMap<QString, QString> edited;
        QStringList buddies;
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
    QString checkSetup();
    void count(const Snapshot& now);

    World& world_;
    Snapshot last_;
    Owner viewer_;
    bool savedForDan_ = false; ///< since the dive screen was loaded
    Details details_;
    QMap<QString, QList<StoredDive>> seen_; ///< all that dives ever were, by start code
    std::set<QString> imported_;            ///< start codes of all dives that the store ever held
    QMap<QString, int> met_;
    std::set<QString> freed_; ///< identifiers whose dives were deleted
    QByteArray setup_;        ///< that of the device
};

} // namespace benthor::tests
