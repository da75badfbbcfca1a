#include "logbook/soundrows.h"

#include "platform/skiperrors.h"

#include <array>
#include <unordered_map>

namespace benthor::logbook {

namespace {

using divefiles::FieldText;
using platform::StoredCells;
using platform::StoredValue;

constexpr int kRowsPerStep = 4000;

char folded(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Identifiers are found without regard to case, as the store compares them.
struct FoldedHash {
    size_t operator()(std::string_view text) const {
        size_t hash = 14695981039346656037ULL;
        for (const char c : text) {
            hash = (hash ^ static_cast<unsigned char>(folded(c))) * 1099511628211ULL;
        }
        return hash;
    }
};
struct FoldedEqual {
    bool operator()(std::string_view one, std::string_view other) const {
        return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                          [](char a, char b) { return folded(a) == folded(b); });
    }
};

std::string_view withoutBlanks(std::string_view text) {
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

/// One that the store compares byte by byte, but for case, and that the validators ask for as it is.
bool isUsual(const FieldText& identifier) {
    return identifier && !identifier->empty() && withoutBlanks(*identifier) == *identifier &&
           std::all_of(identifier->begin(), identifier->end(), [](char c) { return c > 0 && c != '\''; });
}

/// What is known of a dive.
constexpr unsigned char kGas = 1;
constexpr unsigned char kTissue = 2;
constexpr unsigned char kUncertain = 4;

class Pass {
public:
    Pass(platform::Database& database, const ListedDives& dives, const std::function<bool(int)>& goOn)
        : rows_(database)
        , dives_(dives)
        , goOn_(goOn)
        , known_(static_cast<size_t>(dives.count()) + 1, 0) {}

    bool run(std::vector<bool>& sound) {
        listIdentifiers();
        for (const char* const table : {"gas", "tissue"}) {
            total_ += lastRow(table);
        }
        if (!through("gas", divefiles::kTestedGasFields, divefiles::gasrowisgood, kGas) ||
            !through("tissue", divefiles::kTestedTissueFields, divefiles::tissuerowisgood, kTissue)) {
            return false;
        }
        for (size_t number = 1; number < known_.size(); ++number) {
            sound[number] = !strange_ && known_[number] == (kGas | kTissue);
        }
        return true;
    }

private:
    void listIdentifiers() {
        numbers_.reserve(known_.size());
        for (int number = 1; number <= dives_.count(); ++number) {
            const FieldText identifier = dives_.field(number, 0);
            unsigned char& known = known_[static_cast<size_t>(number)];
            if (!isUsual(identifier) || !dives_.hasTextIdentifier(number) || !dives_.mainIsGood(number)) {
                known |= kUncertain;
            }
            if (identifier) {
                const auto [there, isFirst] = numbers_.try_emplace(withoutBlanks(*identifier), number);
                if (!isFirst) { // the validators read the rows of both for each
                    known |= kUncertain;
                    known_[static_cast<size_t>(there->second)] |= kUncertain;
                }
            }
        }
    }

    qint64 lastRow(const char* table) {
        return rows_.read(QByteArray("SELECT max(rowid) FROM ") + table).at(0).at(0).integer;
    }

    /// How far it is, as the number of a dive.
    int at(qint64 row) const {
        const double share =
            total_ > 0 ? static_cast<double>(before_ + row) / static_cast<double>(total_) : 0.0;
        return std::clamp(static_cast<int>(share * dives_.count()), 1, std::max(1, dives_.count()));
    }

    /// All rows of a table, in steps between which events may run.
    bool through(const char* table, size_t tested, bool (*isGood)(std::span<const FieldText>),
                 unsigned char sign) {
        platform::StoredStatement step = rows_.prepare(QByteArray("SELECT *, rowid FROM ") + table +
                                                       " WHERE rowid > ?1 ORDER BY rowid LIMIT ?2");
        last_.clear();
        lastNumber_ = 0;
        std::optional<size_t> place;
        strange_ = strange_ ||
                   !rows_.read(QByteArray("SELECT 1 FROM ") + table + " WHERE rowid < 1 LIMIT 1").empty();
        qint64 from = 0; // the engine counts from 1, and a table with other numbers is left to the validators
        for (int rows = kRowsPerStep; rows == kRowsPerStep;) {
            rows = 0;
            step.each({StoredValue(from), StoredValue(qint64{kRowsPerStep})}, [&](const StoredCells& row) {
                if (!place) {
                    place = row.placeOf("diveid");
                }
                ++rows;
                from = row.integer(row.count() - 1);
                take(row, place, tested, isGood, sign);
            });
            if (strange_) {
                return true; // there is nothing more to find out
            }
            if (goOn_ && !goOn_(at(from))) {
                return false;
            }
        }
        before_ += from;
        return true;
    }

    void take(const StoredCells& row, const std::optional<size_t>& place, size_t tested,
              bool (*isGood)(std::span<const FieldText>), unsigned char sign) {
        const auto type = place ? row.type(*place) : StoredValue::Type::Blob;
        if (type == StoredValue::Type::Null) {
            return; // nobody's
        }
        if (type != StoredValue::Type::Text) {
            strange_ = true;
            return;
        }
        const QByteArrayView bytes = row.bytes(*place);
        const int number = numberOf({bytes.data(), static_cast<size_t>(bytes.size())});
        if (number == 0) {
            return;
        }
        std::array<FieldText, divefiles::kTestedGasFields> fields;
        const size_t count = std::min(tested, row.count() - 1);
        for (size_t column = 0; column < count; ++column) {
            const std::optional<QByteArrayView> text = row.bytesIfAny(column);
            fields[column] = text ? FieldText(std::in_place, text->data(), static_cast<size_t>(text->size()))
                                  : std::nullopt;
        }
        known_[static_cast<size_t>(number)] |= isGood({fields.data(), count}) ? sign : kUncertain;
    }

    /// The rows of a dive mostly lie together. One whose identifier is written in another way may, or may
    /// not, be the dive's.
    int numberOf(std::string_view identifier) {
        if (lastNumber_ != 0 && identifier == last_) {
            return lastNumber_;
        }
        const auto found = numbers_.find(withoutBlanks(identifier));
        if (found == numbers_.end()) {
            return 0;
        }
        if (found->first != identifier) {
            known_[static_cast<size_t>(found->second)] |= kUncertain;
            return 0;
        }
        last_ = identifier;
        lastNumber_ = found->second;
        return lastNumber_;
    }

    platform::StoredRows rows_;
    const ListedDives& dives_;
    const std::function<bool(int)>& goOn_;
    std::unordered_map<std::string_view, int, FoldedHash, FoldedEqual> numbers_;
    std::vector<unsigned char> known_; // by number
    bool strange_ = false;             // a row's identifier is no text
    std::string last_;
    int lastNumber_ = 0;
    qint64 before_ = 0; // rows of the tables that are through
    qint64 total_ = 0;
};

} // namespace

bool findsounddives(platform::Database& database, const ListedDives& dives,
                    const std::function<bool(int number)>& goOn, std::vector<bool>& sound) {
    sound.assign(static_cast<size_t>(dives.count()) + 1, false);
    bool through = true;
    // A table that cannot be read so leaves the judgement to the validators, which say why.
    if (!platform::skipErrors([&] { through = Pass(database, dives, goOn).run(sound); })) {
        sound.assign(sound.size(), false);
    }
    return through;
}

} // namespace benthor::logbook
