#include "exports/danexport.h"

#include "platform/textformat.h"

#include <QLocale>

namespace benthor::exports {

using platform::leadingNumber;

namespace {

constexpr qsizetype kMostCharacters = 6;
constexpr std::size_t kSampleFields = 8;
constexpr int kGasSteps = 10;
const QByteArray kLineEnd = QByteArrayLiteral("\r\n");

/// A number as it stands: the shortest text that reads back the same.
QString numberText(double value) {
    return QString::number(value, 'g', 15);
}

double numberOf(const std::optional<QString>& field) {
    return field ? leadingNumber(QStringView(*field)) : 0;
}

/// Oxygen and nitrogen of a gas row by its number; empty behind the last row.
QString gasCode(const std::vector<ExportRow>& gases, int gas) {
    if (gas < 0 || gas >= kGasSteps || static_cast<std::size_t>(gas) >= gases.size()) {
        return {};
    }
    const ExportRow& row = gases[static_cast<std::size_t>(gas)];
    const double nitrogen = row.size() > 2 ? numberOf(row[2]) : 0;
    const double helium = row.size() > 3 ? numberOf(row[3]) : 0;
    return QStringLiteral("6.") + numberText((100 - helium) - nitrogen) + u'0' + numberText(nitrogen) + u'0';
}

QString danDate(const QDateTime& moment) {
    return platform::formatDate(moment, u"yyyymmddhhnnss");
}

} // namespace

QDateTime dateOfBox(const QString& text) {
    return QLocale::c().toDateTime(text, QStringLiteral("dd/MMM/yyyy HH:mm:ss"));
}

bool danSampleLine(const ExportRow& row, const std::vector<ExportRow>& gases, const QString& interval,
                   DanProgress& progress, QByteArray& line) {
    const double minutes = leadingNumber(QStringView(interval)) / 60;
    if (row.size() < kSampleFields || minutes == 0) {
        return false;
    }
    const double depth = numberOf(row[2]) / 10;
    const double po2 = numberOf(row[5]);
    const bool rising = (progress.previousdepth - depth) / minutes > 1;
    const QStringList fields{numberText(progress.minutes).left(kMostCharacters),
                             numberText(depth),
                             gasCode(gases, platform::toWhole(numberOf(row[4]))),
                             po2 >= 0.0001 ? *row[5] : QString(),
                             rising ? QStringLiteral("T") : QStringLiteral("F"),
                             QStringLiteral("F"),
                             QString(),
                             row[7].value_or(QString())};
    line = (u'|' + fields.join(u'|') + u'|').toUtf8();
    progress.minutes += minutes;
    progress.previousdepth = depth;
    return true;
}

QByteArray danText(const DanHead& head, const std::vector<ExportRow>& rows,
                   const std::vector<ExportRow>& gases) {
    const QDateTime moment = dateOfBox(head.start);
    if (!moment.isValid()) {
        return {};
    }
    const QByteArray start = danDate(moment).toUtf8();
    QByteArray text = "FSH|^~<>{}|KDBN01|ZXU|" + start + "|" + kLineEnd;
    text += "ZRH|^~<>{}|KD32RB|000000000000|barg|bar|C|bar|L|" + kLineEnd;
    text += "ZAR{}" + kLineEnd;
    text += "ZDH|1|" + head.diveid.toUtf8() + "|I|Q" + head.interval.toUtf8() + "S|" + start + "|" + kLineEnd;
    text += "ZDP{" + kLineEnd;
    if (rows.empty()) {
        return text; // there is no first row to go to
    }
    DanProgress progress;
    for (const ExportRow& row : rows) {
        QByteArray line;
        if (!danSampleLine(row, gases, head.interval, progress, line)) {
            return text;
        }
        text += line + kLineEnd;
    }
    return text + "ZDP}" + kLineEnd;
}

} // namespace benthor::exports
