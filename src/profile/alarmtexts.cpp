#include "profile/alarmtexts.h"

#include <algorithm>

namespace benthor::profile {

namespace {
constexpr QByteArrayView kPredive("PREDIVE");
}

void GrownFields::append(int field, QByteArrayView bytes) {
    Field& grown = fields_[index(field)];
    const qsizetype before = grown.text.size();
    grown.text.append(bytes);
    if (!grown.predive) {
        const qsizetype from = std::max<qsizetype>(0, before - kPredive.size() + 1);
        grown.predive = grown.text.indexOf(kPredive, from) >= 0;
    }
}

void AlarmTexts::add(int sample, QByteArrayView token) {
    const qsizetype offset = texts_.size();
    texts_.append(token);
    tokens_.push_back({sample, 0, offset, token.size(), token.indexOf(kPredive) >= 0});
}

void AlarmTexts::addGrown(int sample, int field) {
    tokens_.push_back({sample, field, 0, grown.text(field).size(), grown.holdsPredive(field)});
}

std::pair<std::vector<AlarmTexts::Token>::const_iterator, std::vector<AlarmTexts::Token>::const_iterator>
AlarmTexts::tokensOf(int sample) const {
    const auto first = std::lower_bound(tokens_.begin(), tokens_.end(), sample,
                                        [](const Token& token, int n) { return token.sample < n; });
    const auto last =
        std::find_if(first, tokens_.end(), [sample](const Token& token) { return token.sample != sample; });
    return {first, last};
}

QByteArrayView AlarmTexts::bytesOf(const Token& token) const {
    const QByteArrayView source =
        token.field == 0 ? QByteArrayView(texts_).sliced(token.offset) : grown.text(token.field);
    return source.first(token.length);
}

QString AlarmTexts::text(int sample) const {
    QString result;
    const auto [first, last] = tokensOf(sample);
    for (auto token = first; token != last; ++token) {
        result += QString::fromLatin1(bytesOf(*token)) + QStringLiteral("\r\n");
    }
    return result;
}

QStringList AlarmTexts::words(int sample, qsizetype most) const {
    QStringList result;
    const auto [first, last] = tokensOf(sample);
    for (auto token = first; token != last; ++token) {
        result += QString::fromLatin1(bytesOf(*token).first(std::min(most, token->length)));
    }
    return result;
}

bool AlarmTexts::holdsPredive(int sample) const {
    const auto [first, last] = tokensOf(sample);
    return std::any_of(first, last, [](const Token& token) { return token.predive; });
}

} // namespace benthor::profile
