#include "store/jet/frames.h"

#include "store/jet/utf8.h"

#include <algorithm>
#include <numeric>

namespace benthor::store {

using platform::StoreError;

namespace {

[[noreturn]] void garbled(const char* what) {
    throw StoreError(QStringLiteral("The program that reads Jet files sent what cannot be understood (%1).")
                         .arg(QLatin1String(what)));
}

/// Takes numbers and texts from the front of a body.
class Taker {
public:
    explicit Taker(std::string_view body)
        : rest_(body) {}

    template <class Number> Number number() {
        Number value = 0;
        const std::string_view bytes = take(sizeof(Number));
        for (std::size_t i = sizeof(Number); i-- > 0;) {
            value = static_cast<Number>((static_cast<std::uint64_t>(value) << 8) |
                                        static_cast<unsigned char>(bytes[i]));
        }
        return value;
    }
    std::string_view take(std::size_t count) {
        if (count > rest_.size()) {
            garbled("a frame that is too short");
        }
        const std::string_view taken = rest_.substr(0, count);
        rest_.remove_prefix(count);
        return taken;
    }
    std::string name() {
        const auto length = number<std::uint16_t>();
        const std::string_view bytes = take(length);
        if (length == 0 || length > pipe::kMostName || !isUtf8(bytes) ||
            bytes.find('\0') != std::string_view::npos) {
            garbled("a name");
        }
        return std::string(bytes);
    }
    void end() const {
        if (!rest_.empty()) {
            garbled("a frame that is too long");
        }
    }

private:
    std::string_view rest_;
};

/// The most bytes that a frame of this mark may have.
std::uint32_t mostOf(char mark) {
    switch (mark) {
    case pipe::kHead:
        return pipe::kMostHead;
    case pipe::kRow:
        return pipe::kMostRow;
    case pipe::kTableEnd:
        return sizeof(std::uint64_t);
    case pipe::kEnd:
        return 0;
    case pipe::kFault:
        return pipe::kMostFault;
    default:
        garbled("a frame of no kind");
    }
}

bool isNumber(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789+-.e") == std::string_view::npos &&
           text.find_first_of("0123456789") != std::string_view::npos;
}

void checkValue(std::string_view value, pipe::Kind kind) {
    switch (kind) {
    case pipe::Kind::Text:
        if (!isUtf8(value)) {
            throw StoreError(QStringLiteral("A text in it cannot be decoded."));
        }
        return;
    case pipe::Kind::Number:
        return isNumber(value) ? void() : garbled("a number");
    case pipe::Kind::Date:
        return value.size() == sizeof(double) ? void() : garbled("a date");
    case pipe::Kind::Truth:
        return value.size() == 1 && static_cast<unsigned char>(value[0]) <= 1 ? void()
                                                                              : garbled("a truth value");
    case pipe::Kind::Bytes:
        return;
    }
}

JetField takeField(Taker& taker) {
    JetField field;
    const auto kind = taker.number<std::uint8_t>();
    if (kind < static_cast<std::uint8_t>(pipe::Kind::Text) ||
        kind > static_cast<std::uint8_t>(pipe::Kind::Bytes)) {
        garbled("a field of no kind");
    }
    field.kind = static_cast<pipe::Kind>(kind);
    field.size = taker.number<std::uint32_t>();
    field.name = taker.name();
    return field;
}

JetTable takeTable(Taker& taker) {
    JetTable table;
    table.name = taker.name();
    table.rows = taker.number<std::uint64_t>();
    const auto fields = taker.number<std::uint16_t>();
    if (fields == 0 || fields > pipe::kMostFields) {
        garbled("the count of a table's fields");
    }
    for (int i = 0; i < fields; ++i) {
        table.fields.push_back(takeField(taker));
    }
    return table;
}

} // namespace

std::uint64_t JetHead::rows() const {
    return std::accumulate(tables.begin(), tables.end(), std::uint64_t{0},
                           [](std::uint64_t sum, const JetTable& table) { return sum + table.rows; });
}

std::optional<JetFrame> firstframe(std::string_view bytes) {
    if (bytes.empty()) {
        return std::nullopt;
    }
    const std::uint32_t most = mostOf(bytes[0]);
    if (bytes.size() < pipe::kFrameHead) {
        return std::nullopt;
    }
    const auto length = Taker(bytes.substr(1)).number<std::uint32_t>();
    if (length > most) {
        garbled("a frame beyond all measure");
    }
    if (bytes.size() - pipe::kFrameHead < length) {
        return std::nullopt;
    }
    return JetFrame{bytes[0], bytes.substr(pipe::kFrameHead, length)};
}

JetHead readhead(std::string_view body) {
    Taker taker(body);
    if (taker.number<std::uint16_t>() != pipe::kVersion) {
        garbled("another version");
    }
    JetHead head;
    const auto tables = taker.number<std::uint16_t>();
    if (tables > pipe::kMostTables) {
        garbled("the count of tables");
    }
    for (int i = 0; i < tables; ++i) {
        head.tables.push_back(takeTable(taker));
        if (head.tables.back().rows > std::uint64_t{1} << 32) {
            garbled("the count of a table's rows");
        }
    }
    const auto elsewhere = taker.number<std::uint16_t>();
    for (int i = 0; i < elsewhere; ++i) {
        head.elsewhere.push_back(taker.name());
    }
    taker.end();
    return head;
}

void readrow(std::string_view body, const std::vector<JetField>& fields, std::vector<JetValue>& row) {
    Taker taker(body);
    row.clear();
    for (const JetField& field : fields) {
        const auto length = taker.number<std::uint32_t>();
        if (length == pipe::kNull) {
            row.emplace_back();
            continue;
        }
        if (length > pipe::kMostValue) {
            garbled("a value beyond all measure");
        }
        row.emplace_back(taker.take(length));
        checkValue(*row.back(), field.kind);
    }
    taker.end();
}

std::uint64_t readtableend(std::string_view body) {
    Taker taker(body);
    const auto rows = taker.number<std::uint64_t>();
    taker.end();
    return rows;
}

QString readfault(std::string_view body) {
    QString text = QString::fromUtf8(body.data(), static_cast<qsizetype>(body.size()));
    std::replace_if(
        text.begin(), text.end(), [](QChar c) { return !c.isPrint(); }, QLatin1Char(' '));
    text = text.trimmed();
    return text.isEmpty() ? QStringLiteral("It cannot be read.") : text;
}

void FrameStream::add(std::string_view bytes) {
    row_.clear(); // it points into what moves now
    buffer_.erase(0, begin_);
    begin_ = 0;
    buffer_.append(bytes);
}

FrameStream::Event FrameStream::next() {
    const auto frame = firstframe(std::string_view(buffer_).substr(begin_));
    if (!frame) {
        return Event::NeedsMore;
    }
    begin_ += pipe::kFrameHead + frame->body.size();
    return take(*frame);
}

FrameStream::Event FrameStream::take(const JetFrame& frame) {
    if (frame.mark == pipe::kFault) {
        throw StoreError(readfault(frame.body));
    }
    if (ended_ || (frame.mark == pipe::kHead) == hasHead_) {
        garbled("a frame out of its place");
    }
    if (frame.mark == pipe::kHead) {
        head_ = readhead(frame.body);
        hasHead_ = true;
        return Event::Head;
    }
    const bool inTable = table_ < head_.tables.size();
    if (inTable == (frame.mark == pipe::kEnd)) {
        garbled("a frame out of its place");
    }
    if (frame.mark == pipe::kEnd) {
        ended_ = true;
        return Event::End;
    }
    if (frame.mark == pipe::kTableEnd) {
        return takeTableEnd(frame.body);
    }
    const JetTable& table = head_.tables[table_];
    if (rows_ == table.rows) { // a damaged file may bring them without end
        throw StoreError(QStringLiteral("The table \"%1\" has %2 rows by its own count, and more were found.")
                             .arg(QString::fromStdString(table.name), QString::number(table.rows)));
    }
    readrow(frame.body, table.fields, row_);
    ++rows_;
    return Event::Row;
}

FrameStream::Event FrameStream::takeTableEnd(std::string_view body) {
    const JetTable& table = head_.tables[table_];
    if (readtableend(body) != rows_) {
        garbled("the count of rows sent");
    }
    if (rows_ != table.rows) {
        throw StoreError(QStringLiteral("The table \"%1\" has %2 rows by its own count, and %3 were found.")
                             .arg(QString::fromStdString(table.name), QString::number(table.rows),
                                  QString::number(rows_)));
    }
    rows_ = 0;
    ++table_;
    return Event::TableEnd;
}

} // namespace benthor::store
