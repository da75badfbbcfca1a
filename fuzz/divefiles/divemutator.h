#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <random>

namespace benthor::fuzz {

/// Makes dive files that no device would send: random bytes, keywords in any order with any values, and good
/// texts that lost, gained and changed bytes. The same seed gives the same files.
class DiveMutator {
public:
    DiveMutator(quint32 seed, const QByteArrayList& goodTexts)
        : random_(seed)
        , goodTexts_(goodTexts) {}

    QByteArray next();

private:
    int number(int below) { return static_cast<int>(random_() % static_cast<quint32>(below)); }
    char byte() { return static_cast<char>(number(256)); }
    QByteArray noise(int most);
    QByteArray value();
    QByteArray keywordSoup();
    QByteArray damaged(QByteArray text);

    std::mt19937 random_;
    QByteArrayList goodTexts_;
};

} // namespace benthor::fuzz
