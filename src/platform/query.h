#pragma once

#include <QDateTime>
#include <QString>
#include <QStringView>

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace benthor::platform {

/// A store that cannot do what it was asked. text() is for a person to read.
class StoreError : public std::runtime_error {
public:
    /// `code`: primary result code of the database engine, 0 when the fault is not the engine's.
    explicit StoreError(const QString& text, int code = 0);
    QString text() const { return QString::fromUtf8(what()); }
    int code() const { return code_; }
    /// The store refused a value that its tables do not allow; all else is a fault of the store or the disk.
    bool refusedValue() const;
    /// Another program holds the store.
    bool busy() const;

private:
    int code_;
};

/// The value of a field: a text, or Null. Null is not an empty text.
class Value {
public:
    Value() = default; ///< Null
    Value(const QString& text)
        : text_(text) {}
    Value(const char* latin1)
        : text_(QLatin1String(latin1)) {}
    /// Kept as "yyyy-mm-dd hh:mm:ss", which sorts by time; an invalid moment is Null.
    Value(const QDateTime& moment);

    bool isNull() const { return !text_.has_value(); }
    /// Null reads as an empty text.
    QString text() const { return text_.value_or(QString()); }
    /// As UTC, whatever the zone; invalid for Null and for a text that is no date.
    QDateTime dateTime() const;
    bool operator==(const Value&) const = default;

private:
    std::optional<QString> text_;
};

/// A text of the query language with its values. Made from a literal, or by sqlWith() where it holds values.
class Query {
public:
    Query(const char* literal) { add(literal); }

    /// The whole text, values joined in.
    QString text() const;
    /// The text with ?1, ?2, ... in the places of the values.
    const std::string& sql() const { return sql_; }
    const std::vector<std::string>& values() const { return values_; }

    void add(const char* literal);
    void add(const QString& value);

private:
    std::string sql_;
    std::vector<std::string> values_;
    bool valueOpen_ = false; ///< a value was added and its closing quote is still to come
};

/// sqlWith("SELECT * FROM main WHERE DiveID = '", id, "'"): literals and values in turn, each value between
/// single quotes. A value that holds a single quote would end the text in its middle: StoreError. Values
/// never become part of the text that the engine reads.
template <typename... Parts> Query sqlWith(const char* literal, const Parts&... parts) {
    Query query(literal);
    (query.add(parts), ...);
    return query;
}

} // namespace benthor::platform
