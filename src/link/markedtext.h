#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <cstdint>
#include <vector>

namespace benthor::link {

/// A text that grows at its end and is asked again and again for the same marks. Each byte is looked at once
/// for each mark, however often it is asked for: a tick over a long reply costs what has arrived since the
/// last one. Positions count from 0; marks are told apart by case.
class MarkedText {
public:
    MarkedText() = default;

    const QByteArray& bytes() const { return bytes_; }
    qsizetype size() const { return bytes_.size(); }
    bool isEmpty() const { return bytes_.isEmpty(); }

    void append(QByteArrayView more);
    void clear() { assign({}); }
    /// Replaces the text; nothing is remembered of the one before.
    void assign(QByteArrayView text);
    /// Takes over the text of `source`. As long as that one has only grown since the last time, only its new
    /// end is copied.
    void follow(const MarkedText& source);

    /// Position of the first occurrence, or -1.
    qsizetype find(QByteArrayView mark) const;
    bool holds(QByteArrayView mark) const { return find(mark) >= 0; }

    /// Another number for each text begun: while it stays, the text has only grown.
    std::uint64_t generation() const { return generation_; }

private:
    struct Search {
        QByteArray mark;
        qsizetype found = -1;
        qsizetype seen = 0; ///< bytes already searched
    };

    void begin();

    QByteArray bytes_;
    std::uint64_t generation_ = 0;
    std::uint64_t followed_ = 0; ///< generation of the source that this text is the beginning of
    mutable std::vector<Search> searches_;
};

} // namespace benthor::link
