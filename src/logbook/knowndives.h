#pragma once

#include "platform/database.h"
#include "platform/programfolder.h"

#include <QHash>
#include <QString>

#include <array>
#include <optional>
#include <vector>

namespace benthor::logbook {

/// A field that divers write.
struct Detail {
    const char* field;
    const char* caption;
    bool joins; ///< two texts can stand one behind the other
};
inline constexpr std::array<Detail, 9> kDetails{{
    {"UserName", "Diver", false},
    {"Location", "Dive name", false},
    {"Suit", "S\\N", false},
    {"site", "Site", false},
    {"weather", "Weather", false},
    {"Department", "Department", false},
    {"divenote", "Dive notes", true},
    {"sitenote", "Site notes", true},
    {"Coments", "Comments", true},
}};

/// What tells dives apart, and what divers write, of one row.
struct Facts {
    QString diveid, startcode, suit, username, started, duration, maxdepth, file;
    std::array<QString, kDetails.size()> details;
};

/// Reads rows of main by field name; a store of an older form may lack some.
class FactReader {
public:
    explicit FactReader(const platform::Recordset& rows);
    Facts facts() const;

private:
    QString text(int position) const;
    QString started() const;

    const platform::Recordset& rows_;
    int diveid_ = rows_.fieldPosition(u"DiveID");
    int startcode_ = rows_.fieldPosition(u"Startcode");
    int suit_ = rows_.fieldPosition(u"Suit");
    int username_ = rows_.fieldPosition(u"UserName");
    int startdate_ = rows_.fieldPosition(u"startdate");
    int duration_ = rows_.fieldPosition(u"Duration");
    int maxdepth_ = rows_.fieldPosition(u"MaxDepth");
    int file_ = rows_.fieldPosition(u"dbtxtname");
    std::array<int, kDetails.size()> details_{};
};

/// The dives of a store with what facts are read from; their row numbers first.
platform::Recordset openFacts(platform::Database& database);
/// Where the file of a dive lies; empty where there is none.
QString filePlace(const platform::ProgramFolder& folder, const QString& name);

/// The dives that are known so far, by all that makes a dive the same.
class KnownDives {
public:
    /// `folder`: whose `dbtxt` has their files. It must outlive this.
    explicit KnownDives(const platform::ProgramFolder& folder)
        : folder_(folder) {}

    /// `place`: of its file, empty for none. Nothing for a dive of the folder: it is looked up there when it
    /// is first needed. A file there that has the name of one that is missing elsewhere is another dive's.
    void add(const Facts& facts, const std::optional<QString>& place);
    /// The first that is the same dive, or nothing. `place`: of its file.
    std::optional<int> find(const Facts& facts, const QString& place);
    const Facts& facts(int number) const { return dives_[static_cast<size_t>(number)].facts; }

private:
    struct Known {
        Facts facts;
        std::optional<QString> place; ///< nothing: not looked up yet
    };
    /// Files of one size, which is above 0: what holds nothing makes no two dives the same. What they hold is
    /// read when there is one to be compared with, and once.
    struct Bucket {
        std::vector<int> unread;
        QHash<QByteArray, int> byDigest; ///< the first of each
    };
    void addSize(int number);
    std::optional<int> findByFile(const QString& place);

    const platform::ProgramFolder& folder_;
    std::vector<Known> dives_;
    QHash<QString, std::vector<int>> byCode_;
    QHash<QString, int> bySummary_;         ///< the first of each
    QHash<QString, int> codelessBySummary_; ///< the first without a start code
    QHash<qint64, Bucket> bySize_;
    bool sizesRead_ = false;
};

} // namespace benthor::logbook
