#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>
#include <array>
#include <vector>

namespace benthor::profile {

constexpr int kFields = 41;          ///< fields that a line may have, numbered from 0
constexpr int kFirstGrownField = 19; ///< from this field on the text is never emptied between lines

/// The texts of fields 19 to 40. A line's bytes are put behind those of all the lines before it.
class GrownFields {
public:
    void append(int field, QByteArrayView bytes);
    QByteArrayView text(int field) const { return fields_[index(field)].text; }
    /// Whether the text of `field` as it stands now contains "PREDIVE".
    bool holdsPredive(int field) const { return fields_[index(field)].predive; }

private:
    struct Field {
        QByteArray text;
        bool predive = false;
    };
    static size_t index(int field) { return static_cast<size_t>(field - kFirstGrownField); }
    std::array<Field, kFields - kFirstGrownField> fields_;
};

/// The alarm tokens of a dive, by sample. A token from a grown field is kept as the length that the field
/// had, since a file of a megabyte could otherwise unfold into gigabytes of alarm texts.
class AlarmTexts {
public:
    /// Samples must come in rising order, as the decoder reads them.
    void add(int sample, QByteArrayView token);
    void addGrown(int sample, int field);

    /// Every token of the sample, each followed by CR LF; empty when it has none.
    QString text(int sample) const;
    /// The tokens of the sample, each cut behind `most` characters.
    QStringList words(int sample, qsizetype most) const;
    /// Whether a token of the sample contains "PREDIVE".
    bool holdsPredive(int sample) const;

    GrownFields grown;

private:
    struct Token {
        int sample = 0;
        int field = 0;        ///< 0: the text stands in texts_
        qsizetype offset = 0; ///< into texts_
        qsizetype length = 0;
        bool predive = false;
    };
    QByteArrayView bytesOf(const Token& token) const;
    std::pair<std::vector<Token>::const_iterator, std::vector<Token>::const_iterator>
    tokensOf(int sample) const;

    std::vector<Token> tokens_;
    QByteArray texts_;
};

} // namespace benthor::profile
