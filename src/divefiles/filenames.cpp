#include "divefiles/filenames.h"

#include "platform/textformat.h"

namespace benthor::divefiles {

namespace {
constexpr int kCopyCharacters = 20;
constexpr int kLongName = 30;
constexpr int kLongNameCharacters = 34;
constexpr qint64 kStampDays = 10000;
constexpr double kStampScale = 100000;
constexpr double kSecondsOfDay = 86400;
} // namespace

QString importstamp(const QDateTime& moment) {
    const qint64 day = QDate(1899, 12, 30).daysTo(moment.date());
    const double time = QTime(0, 0).secsTo(moment.time()) / kSecondsOfDay;
    const QString number =
        platform::formatNumber((time + static_cast<double>(day % kStampDays)) * kStampScale, u"0.######");
    return platform::hexadecimal(platform::leadingNumber(number));
}

QString nextstamp(const QString& stamp) {
    return QString::number(stamp.toULongLong(nullptr, 16) + 1, 16).toUpper();
}

QString copyname(const QString& stamp, const QString& name) {
    return stamp + name.right(kCopyCharacters);
}

QString dbtxtname(const QString& stamp, const QString& name) {
    if (name.size() < kLongName) {
        return copyname(stamp, name);
    }
    QString walked;
    for (const QChar c : name) {
        if (c == QLatin1Char('.')) {
            break;
        }
        if (c == QLatin1Char('\\')) {
            walked.clear();
        } else {
            walked += c;
        }
    }
    return walked.left(kLongNameCharacters) + QStringLiteral(".txt");
}

} // namespace benthor::divefiles
