#include "gas/setupchanges.h"

#include "gas/gascalc.h"
#include "gas/setupfields.h"
#include "platform/textformat.h"

#include <algorithm>

namespace benthor::gas {

namespace {

using platform::formatNumber;

/// `length` characters from position `at`, counted from 1.
QString part(const QString& text, int at, int length) {
    return text.mid(at - 1, length);
}

QString fieldIn(const QString& text, const Tag& tag) {
    const qsizetype at = text.indexOf(QChar(tag.letter), 0, Qt::CaseInsensitive);
    return at < 0 ? QString() : text.mid(at + 1, tag.width);
}

QString onOff(const QString& value) {
    return value == QLatin1String("1") ? QStringLiteral("on") : QStringLiteral("off");
}

QString itemOf(const QString& value, const QStringList& items) {
    bool good = false;
    const int index = value.toInt(&good);
    return good && index >= 0 && index < items.size() ? items.at(index) : value;
}

/// A field's value in the words of its control.
QString inWords(char16_t letter, const QString& value) {
    switch (letter) {
    case u'L':
        return value == QLatin1String("0") ? QStringLiteral("Air") : QStringLiteral("Gas ") + value;
    case u'M':
        return itemOf(value, {QStringLiteral("Off"), QStringLiteral("DTimed"), QStringLiteral("Timed"),
                              QStringLiteral("On"), QStringLiteral("DOn")});
    case u'N':
        return itemOf(
            value, {QStringLiteral("3m / 10ft"), QStringLiteral("6m / 20ft"), QStringLiteral("4.5m / 15ft")});
    case u'P':
        return formatNumber(value.toDouble() / 100, u"0.00") + QStringLiteral(" bar");
    case u'S':
        return value == QLatin1String("1") ? QStringLiteral("metres") : QStringLiteral("feet");
    case u'T':
        return QString::number(value.toInt()) + QLatin1Char('%');
    case u'U':
        return QStringLiteral("%1%").arg((value.toInt() - 4) / 2);
    case u'V':
    case u'W':
        return QStringLiteral("%1 s").arg(value.toInt());
    default:
        return onOff(value);
    }
}

QString gasInWords(const QString& block) {
    const int nitrogen = part(block, 2, 3).toInt();
    const int helium = part(block, 6, 3).toInt();
    return QStringLiteral("%1/%2 %3m %4")
        .arg(QString::number(100 - nitrogen - helium), QString::number(helium),
             generaltext(part(block, 10, 4).toInt() / 10.0),
             part(block, 15, 1) == QLatin1String("1") ? QStringLiteral("on") : QStringLiteral("off"));
}

} // namespace

bool isReport(const QString& device) {
    return device.size() >= kPositionOfY;
}

QString settingin(const QString& text, char16_t letter) {
    const auto* tag =
        std::find_if(kTags.begin(), kTags.end(), [letter](const Tag& one) { return one.letter == letter; });
    return tag == kTags.end() ? QString() : fieldIn(text.mid(kGasBlock), *tag);
}

QList<SetupChange> setupchanges(const QString& device, const QString& text) {
    const bool read = isReport(device);
    QList<SetupChange> changes;
    for (int row = 0; row < kGases; ++row) {
        const QString before = read ? part(device, kRowWidth * row + 1, kRowWidth) : QString();
        const QString after = part(text, kRowWidth * row + 1, kRowWidth);
        if (before != after) {
            changes +=
                {QStringLiteral("Gas %1").arg(row), read ? gasInWords(before) : QString(), gasInWords(after)};
        }
    }
    const QString settingsBefore = device.mid(kGasBlock);
    const QString settingsAfter = text.mid(kGasBlock);
    for (const Tag& tag : kTags) {
        if (tag.letter == u'K' || tag.letter == u'Y') {
            continue; // the moment of sending; and what has no reader
        }
        const QString before = read ? fieldIn(settingsBefore, tag) : QString();
        const QString after = fieldIn(settingsAfter, tag);
        if (before != after) {
            changes +=
                {QLatin1String(tag.setting), before.isEmpty() ? QString() : inWords(tag.letter, before),
                 inWords(tag.letter, after)};
        }
    }
    return changes;
}

} // namespace benthor::gas
