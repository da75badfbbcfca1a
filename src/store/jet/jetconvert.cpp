#include "store/jet/jetconvert.h"

#include "platform/files.h"
#include "platform/storedraft.h"
#include "platform/storefile.h"
#include "platform/yield.h"
#include "store/jet/jetdates.h"
#include "store/jet/jetplan.h"

#include <QFile>

#include <bit>

namespace benthor::store {

using platform::StoreDraft;
using platform::StoreError;

namespace {

/// The tables of a fresh store, in the order in which they are looked for.
constexpr std::array kOurTables{"main",  "gas",       "tissue",   "department", "site",    "weather",
                                "buddy", "buddylist", "serialno", "Display",    "pfindex", "Profile"};

QString textOf(std::string_view bytes) {
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

double daysOf(std::string_view bytes) {
    std::uint64_t bits = 0;
    for (std::size_t i = bytes.size(); i-- > 0;) {
        bits = (bits << 8) | static_cast<unsigned char>(bytes[i]);
    }
    return std::bit_cast<double>(bits);
}

/// The rows of one table on their way into the draft.
class TableMover {
public:
    TableMover(const JetTable& table, JetTablePlan plan)
        : table_(table)
        , plan_(std::move(plan))
        , dates_(table.fields.size())
        , cells_(table.fields.size()) {}

    const JetTablePlan& plan() const { return plan_; }

    /// The cells point into `row` and into what this holds, until the next call.
    const std::vector<StoreDraft::Cell>& turned(const std::vector<JetValue>& row) {
        for (std::size_t i = 0; i < cells_.size(); ++i) {
            cells_[i] = row[i] ? cellOf(i, *row[i]) : StoreDraft::Cell{};
        }
        return cells_;
    }

private:
    using Form = StoreDraft::Cell::Form;

    StoreDraft::Cell cellOf(std::size_t field, std::string_view value) {
        switch (table_.fields[field].kind) {
        case pipe::Kind::Date:
            return {Form::Text, dateOf(field, value)};
        case pipe::Kind::Truth:
            return {Form::Text, value[0] != 0 ? "True" : "False"};
        case pipe::Kind::Bytes:
            return {Form::Bytes, value};
        default:
            return plan_.turns[field] == JetTurn::MaybeDate ? maybeDate(field, value)
                                                            : StoreDraft::Cell{Form::Text, value};
        }
    }
    std::string_view dateOf(std::size_t field, std::string_view value) {
        std::optional<std::string> date = datetext(daysOf(value));
        if (!date) {
            throw StoreError(
                QStringLiteral("The field \"%1\" of its table \"%2\" holds a date that there is not.")
                    .arg(textOf(table_.fields[field].name), textOf(table_.name)));
        }
        return dates_[field] = std::move(*date);
    }
    /// A column for dates would make 7 of the text "007": what is no date is kept byte for byte.
    StoreDraft::Cell maybeDate(std::size_t field, std::string_view value) {
        if (std::optional<std::string> date = datefromtext(value)) {
            return {Form::Text, dates_[field] = std::move(*date)};
        }
        return {looksnumeric(value) ? Form::Bytes : Form::Text, value};
    }

    const JetTable& table_;
    JetTablePlan plan_;
    std::vector<std::string> dates_; ///< of the row in hand
    std::vector<StoreDraft::Cell> cells_;
};

/// Writes the draft and proves it.
class Conversion {
public:
    Conversion(JetRowSource& source, const QString& target, const JetProgress& progress)
        : source_(source)
        , head_(source.head())
        , asked_([this, &progress] { return !progress || progress(rows_, head_.rows()); })
        , draft_(target, [this] { return goesOn(); }) {}

    void run() {
        requiredivetables(head_);
        draft_.run(schemafor(head_));
        for (const char* const name : kOurTables) {
            known_.push_back({name, draft_.fieldNames(name)});
        }
        for (const JetTable& table : head_.tables) {
            move(table);
        }
        source_.finish();
        draft_.commit();
        prove();
    }
    bool stopped() const { return stopped_; }

private:
    bool goesOn() {
        stopped_ = stopped_ || !asked_();
        return !stopped_;
    }

    void move(const JetTable& table) {
        TableMover mover(table, plantable(table, known_));
        for (const std::string& sql : mover.plan().prepare) {
            draft_.run(sql);
        }
        draft_.rowsGo(mover.plan().insert);
        std::uint64_t moved = 0;
        while (source_.nextRow(row_)) {
            if (row_.size() != table.fields.size()) {
                throw StoreError(QStringLiteral("A row of its table \"%1\" is not as wide as the table.")
                                     .arg(textOf(table.name)));
            }
            draft_.addRow(mover.turned(row_));
            ++moved;
            ++rows_;
            if (!throttled_()) {
                throw JetStopped();
            }
        }
        requireCount(table, moved);
        expected_.push_back({mover.plan().table, moved});
    }
    static void requireCount(const JetTable& table, std::uint64_t rows) {
        if (rows != table.rows) {
            throw StoreError(
                QStringLiteral("The table \"%1\" has %2 rows by its own count, and %3 were found.")
                    .arg(textOf(table.name), QString::number(table.rows), QString::number(rows)));
        }
    }
    void prove() {
        draft_.checkStructure();
        for (const auto& [table, rows] : expected_) {
            // A table of ours that came without a row may hold the one of a fresh store.
            const std::uint64_t found = draft_.countRows(table);
            if (found != rows && rows > 0) {
                throw StoreError(QStringLiteral("The new store has %1 rows in \"%2\" where %3 should be.")
                                     .arg(QString::number(found), textOf(table), QString::number(rows)));
            }
        }
    }

    JetRowSource& source_;
    const JetHead& head_;
    std::uint64_t rows_ = 0;
    bool stopped_ = false;
    std::function<bool()> asked_;
    platform::ThrottledYield throttled_{[this] { return goesOn(); }};
    StoreDraft draft_;
    std::vector<KnownTable> known_;
    std::vector<JetValue> row_;
    std::vector<std::pair<std::string, std::uint64_t>> expected_;
};

JetCounts countsOf(const JetHead& head) {
    JetCounts counts;
    for (const JetTable& table : head.tables) {
        if (samename(table.name, "main")) {
            counts.dives = table.rows;
        } else if (samename(table.name, "gas")) {
            counts.gases = table.rows;
        } else if (samename(table.name, "tissue")) {
            counts.tissues = table.rows;
        } else if (samename(table.name, "buddylist")) {
            counts.buddies = table.rows;
        } else {
            counts.further.push_back({textOf(table.name), table.rows});
        }
    }
    for (const std::string& name : head.elsewhere) {
        counts.elsewhere += textOf(name);
    }
    return counts;
}

} // namespace

bool isjetfile(const QString& path) {
    constexpr qsizetype kFrom = 4;
    const QByteArray head = platform::readFile(path, 32).value_or(QByteArray()).mid(kFrom);
    return head.startsWith("Standard Jet DB") || head.startsWith("Standard ACE DB");
}

JetCounts convertjet(JetRowSource& source, const QString& target, const JetProgress& progress) {
    JetCounts counts = countsOf(source.head());
    if (QFile::exists(target)) { // not ours to remove
        throw StoreError(QStringLiteral("The file %1 is there already.").arg(target));
    }
    bool stopped = false;
    try {
        Conversion conversion(source, target, progress);
        try {
            conversion.run();
            return counts;
        } catch (const StoreError&) {
            stopped = conversion.stopped();
            throw;
        }
    } catch (const StoreError&) {
        QFile::remove(target);
        platform::removeJournals(target);
        if (stopped) {
            throw JetStopped();
        }
        throw;
    }
}

QString jetcountstext(const JetCounts& counts) {
    const auto line = [](std::uint64_t count, const char* one, const char* many) {
        return QStringLiteral("%1 %2\n").arg(QString::number(count), QLatin1String(count == 1 ? one : many));
    };
    QString text = line(counts.dives, "dive", "dives") + line(counts.gases, "gas row", "gas rows") +
                   line(counts.tissues, "tissue row", "tissue rows") +
                   line(counts.buddies, "buddy", "buddies");
    QStringList further;
    for (const JetCounts::Further& one : counts.further) {
        further += QStringLiteral("%1 (%2)").arg(one.table, QString::number(one.rows));
    }
    text += further.isEmpty() ? QStringLiteral("no further tables")
                              : QStringLiteral("%1 further %2 (rows): %3")
                                    .arg(QString::number(further.size()),
                                         QLatin1String(further.size() == 1 ? "table" : "tables"),
                                         further.join(QStringLiteral(", ")));
    if (!counts.elsewhere.isEmpty()) {
        text +=
            QStringLiteral("\n\nTables that are only named in the file, and lie in another, did not come: %1")
                .arg(counts.elsewhere.join(QStringLiteral(", ")));
    }
    return text;
}

} // namespace benthor::store
