#include "store/divetime.h"

#include "platform/textformat.h"

namespace benthor::store {

namespace {
constexpr double kSecondsOfDay = 86400;
constexpr int kSecondsOfHour = 3600;
constexpr int kSecondsOfMinute = 60;
constexpr int kLastYear = 9999;
} // namespace

QDateTime codetodatetime(const QString& code) {
    const QDate epoch(1991, 12, 31);
    const QDate last(kLastYear, 12, 31);
    const double seconds = platform::wholePart(platform::leadingNumber(code));
    const double days = platform::wholePart(seconds / kSecondsOfDay);
    if (days < 0 || days > static_cast<double>(epoch.daysTo(last))) {
        return {};
    }
    const int rest = static_cast<int>(seconds - days * kSecondsOfDay);
    return QDateTime(
        epoch.addDays(static_cast<qint64>(days)),
        QTime(rest / kSecondsOfHour, rest % kSecondsOfHour / kSecondsOfMinute, rest % kSecondsOfMinute),
        Qt::UTC);
}

QString startcodetodate(const QString& code) {
    return platform::formatDate(codetodatetime(code), u"mmm/dd/yyyy hh:mm:ss");
}

QString finishcodetodate(const QString& code) {
    return startcodetodate(code);
}

QString durationtext(const QString& start, const QString& finish) {
    const double seconds = platform::leadingNumber(finish) - platform::leadingNumber(start);
    const double minutes = platform::wholePart(seconds / kSecondsOfMinute);
    return platform::formatNumber(minutes, u"#") + QLatin1Char(':') +
           platform::formatNumber(seconds - minutes * kSecondsOfMinute, u"0");
}

QString padded(const QString& depth) {
    QString trimmed = platform::trimBlanks(depth);
    switch (trimmed.size()) {
    case 4:
        return trimmed + QStringLiteral("00");
    case 5:
        return trimmed + QLatin1Char('0');
    default:
        return trimmed;
    }
}

} // namespace benthor::store
