#include "exports/uddfids.h"

namespace benthor::exports {

namespace {

constexpr qsizetype kLongestName = 64;

bool isOfNames(QChar letter) {
    return (letter >= u'a' && letter <= u'z') || (letter >= u'A' && letter <= u'Z') ||
           (letter >= u'0' && letter <= u'9') || letter == u'.' || letter == u'-' || letter == u'_';
}

} // namespace

QString UddfIds::unique(const QString& text) {
    QString name = text.left(kLongestName);
    for (QChar& letter : name) {
        letter = isOfNames(letter) ? letter : QChar(u'_');
    }
    QString candidate = name;
    while (candidate.isEmpty() || taken_.contains(candidate)) {
        candidate = name + u'-' + QString::number(++last_[name]);
    }
    taken_.insert(candidate);
    return candidate;
}

} // namespace benthor::exports
