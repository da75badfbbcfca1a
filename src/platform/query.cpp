#include "platform/query.h"

#include <array>
#include <sqlite3.h>
#include <string_view>

namespace benthor::platform {

namespace {
constexpr auto kMomentForm = "yyyy-MM-dd hh:mm:ss";
constexpr char kQuote = '\'';
} // namespace

StoreError::StoreError(const QString& text, int code)
    : std::runtime_error(text.toStdString())
    , code_(code) {}

bool StoreError::refusedValue() const {
    return code_ == SQLITE_CONSTRAINT || code_ == SQLITE_TOOBIG;
}

bool StoreError::busy() const {
    return code_ == SQLITE_BUSY;
}

Value::Value(const QDateTime& moment) {
    if (moment.isValid()) {
        text_ = moment.toString(QLatin1String(kMomentForm));
    }
}

QDateTime Value::dateTime() const {
    // "yyyy-mm-dd hh:mm:ss" by hand: lists read thousands of them.
    static constexpr std::string_view kForm = "dddd-dd-dd dd:dd:dd";
    if (!text_ || text_->size() != static_cast<qsizetype>(kForm.size())) {
        return {};
    }
    std::array<int, 6> numbers{};
    size_t part = 0;
    for (size_t i = 0; i < kForm.size(); ++i) {
        const char16_t c = text_->at(static_cast<qsizetype>(i)).unicode();
        if (kForm[i] != 'd') {
            if (c != static_cast<char16_t>(kForm[i])) {
                return {};
            }
            ++part;
        } else if (c < u'0' || c > u'9') {
            return {};
        } else {
            numbers[part] = numbers[part] * 10 + (c - u'0');
        }
    }
    // A dive's clock knows no zone; as UTC no hour of it falls into a gap of summer time.
    const QDateTime moment(QDate(numbers[0], numbers[1], numbers[2]),
                           QTime(numbers[3], numbers[4], numbers[5]), Qt::UTC);
    return moment.date().isValid() && moment.time().isValid() ? moment : QDateTime();
}

void Query::add(const char* literal) {
    const std::string_view text(literal);
    if (!valueOpen_) {
        sql_ += text;
        return;
    }
    if (text.empty() || text.front() != kQuote) {
        throw StoreError(QStringLiteral("The query does not close the quote behind a value."));
    }
    sql_ += text.substr(1);
    valueOpen_ = false;
}

void Query::add(const QString& value) {
    if (sql_.empty() || sql_.back() != kQuote || valueOpen_) {
        throw StoreError(QStringLiteral("The query does not open a quote before a value."));
    }
    if (value.contains(QLatin1Char(kQuote))) {
        throw StoreError(
            QStringLiteral("Syntax error in the query: the value \"%1\" holds a single quote.").arg(value));
    }
    values_.push_back(value.toStdString());
    sql_.back() = '?';
    sql_ += std::to_string(values_.size());
    valueOpen_ = true;
}

QString Query::text() const {
    std::string joined;
    size_t next = 0;
    for (size_t i = 0; i < sql_.size(); ++i) {
        if (sql_[i] != '?' || next >= values_.size()) {
            joined += sql_[i];
            continue;
        }
        joined += kQuote;
        joined += values_[next];
        joined += kQuote;
        i += std::to_string(++next).size();
    }
    return QString::fromStdString(joined);
}

} // namespace benthor::platform
