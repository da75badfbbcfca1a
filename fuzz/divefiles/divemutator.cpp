#include "fuzz/divefiles/divemutator.h"

#include <array>

namespace benthor::fuzz {

namespace {
constexpr std::array kKeywords = {"ver=",       "Recint=", "SN=",    "Start",  "Finish", "Status",
                                  "Descend",    "DAtmos",  "DStack", "DUsage", "MaxD",   "OTU",
                                  "HPCylinder", "Gas",     "Tissue", "Profile"};
constexpr std::array kGlue = {",", "\r", "\r\n", "\n", " ", "", ",,", "'", "\t"};
} // namespace

QByteArray DiveMutator::noise(int most) {
    QByteArray bytes(number(most + 1), '\0');
    for (char& c : bytes) {
        c = byte();
    }
    return bytes;
}

QByteArray DiveMutator::value() {
    switch (number(6)) {
    case 0:
        return noise(20);
    case 1:
        return QByteArray(number(30), '9');
    case 2:
        return QByteArray(number(8), ' ') + QByteArray::number(number(1000000));
    case 3:
        return QByteArray::number(number(10000)) + '.' + QByteArray::number(number(100));
    case 4:
        return "';DROP TABLE main;--";
    default:
        return "0000,79,0,660,1";
    }
}

QByteArray DiveMutator::keywordSoup() {
    QByteArray text;
    for (int lines = number(40); lines > 0; --lines) {
        text += kKeywords.at(static_cast<size_t>(number(kKeywords.size())));
        text += kGlue.at(static_cast<size_t>(number(kGlue.size())));
        text += value();
        text += kGlue.at(static_cast<size_t>(number(kGlue.size())));
    }
    return text;
}

QByteArray DiveMutator::damaged(QByteArray text) {
    for (int faults = 1 + number(12); faults > 0 && !text.isEmpty(); --faults) {
        const int at = number(static_cast<int>(text.size()));
        switch (number(6)) {
        case 0:
            text[at] = byte();
            break;
        case 1:
            text.remove(at, 1 + number(30));
            break;
        case 2:
            text.insert(at, noise(30));
            break;
        case 3:
            text.insert(at, text.mid(number(static_cast<int>(text.size())), number(200)));
            break;
        case 4:
            text.insert(at, kKeywords.at(static_cast<size_t>(number(kKeywords.size()))));
            break;
        default:
            text.truncate(at);
            break;
        }
    }
    return text;
}

QByteArray DiveMutator::next() {
    switch (number(10)) {
    case 0:
        return noise(3000);
    case 1:
    case 2:
    case 3:
        return keywordSoup();
    default:
        return damaged(goodTexts_.at(number(static_cast<int>(goodTexts_.size()))));
    }
}

} // namespace benthor::fuzz
