#pragma once

#include "platform/database.h"
#include "platform/programfolder.h"
#include "platform/storedrows.h"
#include "profile/diveprofile.h"
#include "profile/gaslist.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace benthor::exports {

// A dive as every open format takes it: what the store has of it, and its profile, always metric.

/// The figures of a dive. Nothing where the store has none, or a text that is no number.
struct DiveFigures {
    QString id;
    std::optional<QString> name;    ///< field Location as it stands
    std::optional<QString> site;    ///< as it stands
    std::optional<QString> serial;  ///< field Suit as it stands
    std::optional<QString> version; ///< of the device's software, as it stands
    QDateTime start, end;           ///< device's clock; invalid where there is none
    std::optional<double> duration; ///< seconds
    std::optional<double> maxdepth; ///< metres
    std::optional<double> interval; ///< seconds between samples
    std::optional<double> otu;
    QStringList faults; ///< what the validators find: main, gas, tissue
};

/// A row of the store: its fields in the store's order and spelling, Null as nothing.
using StoreFields = std::vector<std::pair<QString, std::optional<QString>>>;

/// Of a field by its name without regard to case; nothing for Null and where there is none.
std::optional<QString> fieldOf(const StoreFields& row, QStringView name);

struct WholeDive {
    DiveFigures figures;
    StoreFields store; ///< of the table main
    std::vector<StoreFields> gases, tissues;
    QStringList buddies;
    profile::GasArrays gasArrays;

    QString fileName;               ///< that the store has for it; empty without one
    QString filePath;               ///< where it lies; empty where the name is none of a file
    std::optional<QByteArray> file; ///< its bytes; nothing where it cannot be read
    profile::DiveProfile profile;   ///< without records where the file has none
    QString withoutSamples;         ///< why there are none, for a person to read; empty where there are

    /// The last record; below profile::kFirstSample where there is none.
    int lastsample() const { return profile.lastsample - 1; }
    /// How many records there are.
    int samples() const { return lastsample() - profile::kFirstSample + 1; }
    /// Seconds of sample n, counted from 1, as the dive screen labels it.
    std::optional<double> timeOf(int sample) const {
        return figures.interval ? std::optional(sample * *figures.interval) : std::nullopt;
    }
};

/// The tokens of a sample's alarms. One that is longer than 255 characters is cut there: no device writes it,
/// and a hostile file could make gigabytes of them.
QStringList alarmTokens(const profile::DiveProfile& profile, int sample);

/// Reads dives one by one. Nothing is written, neither to the store nor to a folder.
class DiveReader {
public:
    /// Both must outlive it. StoreError.
    DiveReader(platform::Database& database, const platform::ProgramFolder& folder);

    /// The identifiers of all dives, by the start of the dive and then by identifier; those without a start
    /// come first. A number that two rows bear stands once. StoreError.
    QStringList identifiers();
    /// Nothing where there is no such dive. Of several rows with the identifier the first is the dive's.
    /// StoreError.
    std::optional<DiveFigures> figures(const QString& id);
    std::optional<WholeDive> read(const QString& id);

    /// The two halves of read(): all that the store has, and then the file and what it holds. The second half
    /// needs no store and may be done on any thread.
    std::optional<WholeDive> readRows(const QString& id);
    static void readProfile(WholeDive& dive);

private:
    std::optional<QString> rowOf(const QString& id);
    std::optional<StoreFields> mainAt(const QString& row);
    platform::Recordset rowsOf(const char* select, const QString& row);
    DiveFigures figuresAt(const StoreFields& main, const QString& row);
    std::vector<StoreFields> checkedRows(const char* table, const QString& row, QStringList& faults);
    bool hasTable(const char* table) const { return tables_.contains(QLatin1String(table)); }

    platform::Database& database_;
    platform::StoredRows bound_;
    const platform::ProgramFolder& folder_;
    QStringList tables_; ///< of the store, in small letters
};

/// What is told of a row of the table main; without faults.
DiveFigures figuresOf(const StoreFields& row);

/// A decimal number and nothing else, blanks and line ends around it aside; nothing for any other text.
std::optional<double> plainNumber(QStringView text);
/// Seconds of a duration as the store has it, "41:7" or ":7".
std::optional<double> durationSeconds(QStringView text);

} // namespace benthor::exports
