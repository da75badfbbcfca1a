#include "simulator/damage.h"

#include "simulator/random.h"

#include <algorithm>

namespace benthor::simulator {

namespace {

/// The last digit of the number that follows `keyword` in one of its `lines` lines.
void dropDigit(QByteArray& text, QByteArrayView keyword, int lines, Random& random) {
    qsizetype at = text.indexOf(keyword);
    for (int skip = random.whole(0, lines - 1); skip > 0 && at >= 0; --skip) {
        const qsizetype next = text.indexOf(keyword, at + 1);
        at = next < 0 ? at : next;
    }
    if (at >= 0) {
        text.remove(at + keyword.size() + 3, 1);
    }
}

void replaceValue(QByteArray& text, QByteArrayView keyword, const QByteArray& value) {
    const qsizetype at = text.indexOf(keyword);
    if (at >= 0) {
        const qsizetype begin = at + keyword.size();
        text.replace(begin, text.indexOf('\r', begin) - begin, value);
    }
}

void removeLines(QByteArray& text, QByteArrayView keyword) {
    for (qsizetype at = text.indexOf(keyword); at >= 0; at = text.indexOf(keyword)) {
        text.remove(at, text.indexOf('\n', at) + 1 - at);
    }
}

qsizetype firstSample(const QByteArray& text) {
    const qsizetype profile = std::max<qsizetype>(0, text.indexOf("Profile"));
    const qsizetype titles = text.indexOf('\n', profile) + 1;
    return text.indexOf('\n', titles) + 1;
}

qsizetype somewhereIn(const QByteArray& text, qsizetype begin, qsizetype end, Random& random) {
    const qsizetype span = std::max<qsizetype>(1, end - begin);
    return std::min(text.size() - 1,
                    begin + static_cast<qsizetype>(random.unit() * static_cast<double>(span)));
}

/// About one byte in three hundred of the sample lines, at least one.
template <typename Change> void strikeProfile(QByteArray& text, Random& random, const Change& change) {
    const qsizetype begin = firstSample(text);
    const qsizetype strikes = 1 + (text.size() - begin) / 300;
    for (qsizetype i = 0; i < strikes; ++i) {
        change(somewhereIn(text, begin, text.size() - 5, random));
    }
}

} // namespace

QByteArray damaged(QByteArray text, Damage kind, std::uint64_t seed) {
    Random random(seed, 2);
    switch (kind) {
    case Damage::GasNumberShort:
        dropDigit(text, "Gas", 10, random);
        break;
    case Damage::VersionShort:
        replaceValue(text, "ver=", "V");
        break;
    case Damage::IntervalLetters:
        replaceValue(text, "Recint=", "??");
        break;
    case Damage::TissueNumberShort:
        dropDigit(text, "Tissue", 16, random);
        break;
    case Damage::GasLinesLost:
        removeLines(text, "Gas");
        break;
    case Damage::TissueLinesLost:
        removeLines(text, "Tissue");
        break;
    case Damage::HeadCut: {
        const qsizetype gases = text.indexOf("Gas");
        text.truncate(somewhereIn(text, gases + 4, text.indexOf("Tissue"), random));
        break;
    }
    case Damage::ProfileBytesLost:
        strikeProfile(text, random, [&](qsizetype at) { text.remove(at, 1); });
        break;
    case Damage::ProfileBitsFlipped:
        strikeProfile(text, random, [&](qsizetype at) {
            text[at] = static_cast<char>(static_cast<unsigned char>(text[at]) ^ (1U << random.whole(0, 7)));
        });
        break;
    case Damage::ProfileCut:
        text.truncate(somewhereIn(text, firstSample(text) + 3, text.size() - 8, random));
        break;
    }
    return text;
}

} // namespace benthor::simulator
