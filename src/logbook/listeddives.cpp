#include "logbook/listeddives.h"

#include "logbook/divelist.h"
#include "session/process.h"

#include <algorithm>
#include <array>

namespace benthor::logbook {

namespace {

using divefiles::FieldText;
using platform::StoreError;

constexpr int kLocation = 4;
constexpr size_t kBlock = 1 << 20;
/// What the rows may hold together: far more than any logbook.
constexpr size_t kMostBytes = size_t{1} << 30;
constexpr int kRowsPerStep = 1000;

bool holdsFigures(const QString& fieldname) {
    static const QStringList fields{
        QStringLiteral("Duration"), QStringLiteral("MaxDepth"), QStringLiteral("Interval"),
        QStringLiteral("otu"),      QStringLiteral("datmos"),   QStringLiteral("dusage"),
        QStringLiteral("dstack"),   QStringLiteral("descend"),  QStringLiteral("HPCylinder")};
    return fields.contains(fieldname, Qt::CaseInsensitive);
}

// A field is its length plus 1, seven bits a byte, the last one below 128, and then its bytes; Null is 0.

void putNumber(std::string& bytes, size_t number) {
    for (; number >= 0x80; number >>= 7) {
        bytes += static_cast<char>(number | 0x80);
    }
    bytes += static_cast<char>(number);
}

size_t takeNumber(const char*& at) {
    size_t number = 0;
    for (int shift = 0;; shift += 7) {
        const auto byte = static_cast<unsigned char>(*at++);
        number |= static_cast<size_t>(byte & 0x7F) << shift;
        if (byte < 0x80) {
            return number;
        }
    }
}

FieldText takeField(const char*& at) {
    const size_t number = takeNumber(at);
    if (number == 0) {
        return std::nullopt;
    }
    const std::string_view text(at, number - 1);
    at += number - 1;
    return text;
}

/// The same for texts that differ in the case of plain letters alone.
unsigned foldedhash(std::string_view text) {
    unsigned hash = 2166136261U;
    for (const char c : text) {
        const char folded = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
        hash = (hash ^ static_cast<unsigned char>(folded)) * 16777619U;
    }
    return hash;
}

platform::Value valueOf(const FieldText& text) {
    return text ? platform::Value(QString::fromUtf8(text->data(), static_cast<qsizetype>(text->size())))
                : platform::Value();
}

} // namespace

const char* ListedDives::start(const Place& place) const {
    return blocks_[static_cast<size_t>(place.block)].data() + place.offset;
}

FieldText ListedDives::field(int number, int position) const {
    if (!isRead(number) || position < 0 || position >= static_cast<int>(order_.size())) {
        return std::nullopt;
    }
    const char* at = start(place(number));
    for (int i = 0; i < position; ++i) {
        takeField(at);
    }
    return takeField(at);
}

QString ListedDives::cell(int number, int displaycolumn, QStringView depthunit) const {
    if (!isRead(number) || displaycolumn < 0 || displaycolumn >= static_cast<int>(order_.size())) {
        return {};
    }
    const int position = order_[static_cast<size_t>(displaycolumn)];
    return celltext(position, valueOf(field(number, position)), depthunit);
}

size_t ListedDives::takeFields(int number, std::span<FieldText> fields) const {
    const size_t count = std::min(fields.size(), order_.size());
    std::fill(fields.begin(), fields.end(), std::nullopt);
    if (!isRead(number) || count == 0) {
        return count;
    }
    const char* at = start(place(number));
    for (size_t position = 0, found = 0; found < count; ++position) {
        const FieldText text = takeField(at);
        if (const auto column = static_cast<size_t>(columnOf_[position]); column < count) {
            fields[column] = text;
            ++found;
        }
    }
    return count;
}

void ListedDives::fetch(int number) const {
    constexpr size_t kLine = 64; // of the processor's memory
    constexpr size_t kUsualRow = 256;
    if (isRead(number)) {
        const char* const at = start(place(number));
        for (size_t line = 0; line < kUsualRow; line += kLine) {
            __builtin_prefetch(at + line);
        }
    }
}

QString ListedDives::diveid(int number) const {
    return valueOf(field(number, 0)).text();
}

QString ListedDives::location(int number) const {
    return valueOf(field(number, kLocation)).text();
}

bool ListedDives::mainIsGood(int number) const {
    if (!isRead(number)) {
        return false;
    }
    std::array<FieldText, divefiles::kTestedMainFields> fields;
    const size_t count = std::min(fields.size(), order_.size());
    const char* at = start(place(number));
    for (size_t i = 0; i < count; ++i) {
        fields[i] = takeField(at);
    }
    return divefiles::mainrowisgood({fields.data(), count});
}

bool ListedDives::hasTextIdentifier(int number) const {
    return isRead(number) && place(number).textIdentifier;
}

void ListedDives::keep(int number, const platform::StoredCells& row, qint64 rowNumber) {
    if (blocks_.empty() || blocks_.back().size() > kBlock - kBlock / 16) {
        blocks_.emplace_back().reserve(kBlock);
    }
    std::string& block = blocks_.back();
    const size_t offset = block.size();
    for (size_t column = 0; column < order_.size(); ++column) {
        const std::optional<QByteArrayView> bytes = row.bytesIfAny(column);
        if (!bytes) {
            putNumber(block, 0);
            continue;
        }
        if (bytes_ += static_cast<size_t>(bytes->size()); bytes_ > kMostBytes) {
            throw StoreError(QStringLiteral("The dives bring more than can be read."));
        }
        putNumber(block, static_cast<size_t>(bytes->size()) + 1);
        block.append(bytes->data(), static_cast<size_t>(bytes->size()));
    }
    Place& place = places_[static_cast<size_t>(number) - 1];
    place.row = rowNumber;
    place.block = static_cast<int>(blocks_.size()) - 1;
    const QByteArrayView identifier = row.bytes(0);
    place.identifier = foldedhash({identifier.data(), static_cast<size_t>(identifier.size())});
    place.offset = static_cast<unsigned>(offset) & 0x7fffffffU;
    place.textIdentifier = row.type(0) == platform::StoredValue::Type::Text &&
                           row.name(0).compare("diveid", Qt::CaseInsensitive) == 0;
}

void ListedDives::insert(int number, const platform::StoredCells& row, qint64 rowNumber) {
    places_.insert(places_.begin() + (number - 1), Place());
    keep(number, row, rowNumber);
}

void ListedDives::remove(const std::vector<int>& numbers) {
    removenumbers(places_, numbers, 1);
}

std::vector<int> ListedDives::numbersOf(const QStringList& diveids) const {
    std::vector<std::pair<unsigned, std::string>> wanted;
    for (const QString& diveid : diveids) {
        std::string text = diveid.toStdString();
        const unsigned hash = foldedhash(text);
        wanted.emplace_back(hash, std::move(text));
    }
    std::sort(wanted.begin(), wanted.end());
    std::vector<int> numbers;
    for (int number = 1; number <= count(); ++number) {
        const unsigned hash = place(number).identifier;
        const auto first =
            std::lower_bound(wanted.begin(), wanted.end(), hash,
                             [](const auto& one, unsigned other) { return one.first < other; });
        for (auto one = first; one != wanted.end() && one->first == hash; ++one) {
            const FieldText identifier = field(number, 0);
            if (identifier && QByteArrayView(*identifier).compare(one->second, Qt::CaseInsensitive) == 0) {
                numbers.push_back(number);
                break;
            }
        }
    }
    return numbers;
}

std::vector<int> ListedDives::takeText(platform::Database& database, const QString& diveid) {
    std::vector<int> taken;
    platform::StoredRows rows(database);
    rows.prepare("SELECT * FROM main WHERE DiveID = ?1")
        .each({platform::StoredValue(diveid)}, [&](const platform::StoredCells& row) {
            const auto id = row.placeOf("diveid");
            if (row.count() != order_.size() || !id) {
                return;
            }
            const std::string theirs = row.bytes(*id).toByteArray().toStdString();
            for (const int number : numbersOf({QString::fromStdString(theirs)})) {
                if (field(number, 0) == theirs) {
                    keep(number, row, place(number).row);
                    taken.push_back(number);
                }
            }
        });
    return taken;
}

void ListedDives::setColumns(platform::Database& database) {
    const platform::Recordset none = database.openRecordset("SELECT * FROM main LIMIT 0");
    order_ = columnorder(none.fieldCount());
    columnOf_.resize(order_.size());
    for (size_t column = 0; column < order_.size(); ++column) {
        columnOf_[static_cast<size_t>(order_[column])] = static_cast<int>(column);
    }
    for (const int position : order_) {
        const QString field = none.fieldName(position);
        columns_.headers += headertext(field);
        columns_.widths.push_back(columnwidth(position));
        columns_.figures.push_back(holdsFigures(field));
    }
}

DiveReading::DiveReading(platform::Database& database, int sortnumber, bool downward, ListedDives& dives)
    : steady_(database)
    , rows_(database)
    , dives_(dives) {
    dives_ = {};
    const platform::Query query = listquery(sortnumber, downward);
    process().querytext = query.text();
    order_ = orderof(query);
    dives_.setColumns(database);
    dives_.places_.resize(static_cast<size_t>(rows_.read("SELECT COUNT(*) FROM main").at(0).at(0).integer));
}

DiveReading::~DiveReading() = default;

void DiveReading::readFirst(int count) {
    int number = 0;
    rows_.prepare(QByteArray("SELECT * FROM main ") + order_.c_str() + " LIMIT ?1")
        .each({platform::StoredValue(static_cast<qint64>(count))}, [&](const platform::StoredCells& row) {
            if (++number <= dives_.count()) {
                dives_.keep(number, row, 0);
            }
        });
}

/// The rows alone are put into their order, and each is read once, in the order in which they lie.
void DiveReading::readOrder() {
    ranks_.reserve(dives_.places_.size());
    rows_.prepare(QByteArray("SELECT rowid FROM main ") + order_.c_str())
        .each({}, [this](const platform::StoredCells& row) {
            ranks_.push_back({row.integer(0), static_cast<int>(ranks_.size()) + 1});
        });
    dives_.places_.resize(ranks_.size());
    std::sort(ranks_.begin(), ranks_.end(), [](const Rank& a, const Rank& b) { return a.row < b.row; });
    batch_ = std::make_unique<platform::StoredStatement>(
        rows_.prepare("SELECT *, rowid FROM main WHERE rowid >= ?1 ORDER BY rowid LIMIT ?2"));
}

bool DiveReading::readMore() {
    if (!batch_) {
        readOrder();
    }
    if (next_ == ranks_.size()) {
        return false;
    }
    const qint64 from = ranks_[next_].row;
    batch_->each({platform::StoredValue(from), platform::StoredValue(qint64{kRowsPerStep})},
                 [this](const platform::StoredCells& row) {
                     const qint64 id = row.integer(dives_.order_.size());
                     if (next_ < ranks_.size() && ranks_[next_].row == id) {
                         dives_.keep(ranks_[next_++].number, row, id);
                     }
                 });
    if (next_ < ranks_.size() && ranks_[next_].row == from) {
        throw StoreError(QStringLiteral("The table main gives out another row than it lists."));
    }
    return next_ < ranks_.size();
}

ListedDives readdives(platform::Database& database, int sortnumber, bool downward) {
    ListedDives dives;
    DiveReading reading(database, sortnumber, downward, dives);
    while (reading.readMore()) {
    }
    return dives;
}

} // namespace benthor::logbook
