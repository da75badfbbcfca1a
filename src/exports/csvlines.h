#pragma once

#include <QByteArrayView>
#include <QString>

#include <vector>

namespace benthor::exports {

/// Reads comma-separated lines (RFC 4180) one by one. Any bytes come to an end.
class CsvLines {
public:
    /// `bytes` must outlive this and each line().
    explicit CsvLines(QByteArrayView bytes)
        : rest_(bytes) {}
    /// False when there are no more.
    bool next();
    /// The bytes of the line, with its line end.
    QByteArrayView line() const { return line_; }
    int fieldCount() const { return static_cast<int>(fields_.size()); }
    /// A field without its quotes; empty where the line has not so many.
    QByteArray bytes(int field) const;
    QString field(int field) const { return QString::fromUtf8(bytes(field)); }

private:
    QByteArrayView rest_, line_;
    std::vector<QByteArrayView> fields_; ///< as they stand
};

} // namespace benthor::exports
