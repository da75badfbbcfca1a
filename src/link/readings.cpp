#include "link/readings.h"

#include "link/download.h"
#include "link/linkstate.h"
#include "platform/textformat.h"

#include <vector>

namespace benthor::link {

namespace {

using platform::formatNumber;

constexpr int kMostSeparators = 25;
constexpr double kMetresPerCount = 0.09375;
constexpr double kFeetPerMetre = 3.28084;
constexpr double kPsiPerBar = 14.7;
constexpr qsizetype kDigits = 4;
constexpr qsizetype kShownAlarm = 3;

std::vector<QString> fieldsOf(const QByteArray& text) {
    std::vector<QString> fields(1);
    for (const char letter : text) {
        if (letter != ',') {
            fields.back() += QLatin1Char(letter);
        } else if (fields.size() == kMostSeparators) {
            break;
        } else {
            fields.emplace_back();
        }
    }
    return fields;
}

QString cleaned(QString text) {
    for (const char letter : {'\r', '\n', '\t', ' '}) {
        text.remove(QLatin1Char(letter));
    }
    return text;
}

/// The number behind a field's lead letter; nothing where it leads with another one or is no number.
std::optional<double> behind(const QString& field, QChar letter) {
    if (!field.startsWith(letter) || !platform::isNumeric(field.mid(1))) {
        return std::nullopt;
    }
    return platform::leadingNumber(field.mid(1));
}

/// The device's letters are plain ones.
bool isLetter(const QString& text) {
    return text.size() == 1 && text.at(0).unicode() < 0x80 && text.at(0).isLetter();
}

bool isFourDigits(const QString& field) {
    return field.size() == kDigits && platform::isNumeric(field);
}

} // namespace

bool holdsanswer(const QByteArray& text) {
    return text.contains("R0000") && text.contains('J');
}

bool holdsunasked(const QByteArray& text) {
    return text.contains("R-001") && text.contains('J');
}

Readings parsereadings(const QByteArray& text) {
    const std::vector<QString> fields = fieldsOf(text);
    Readings readings;
    const auto put = [&readings](size_t label, const QString& value) { readings.texts[label] = value; };
    const auto has = [&fields](size_t field) { return field < fields.size(); };
    const auto hundredth = [&](size_t field, QChar letter, size_t label) {
        if (has(field)) {
            if (const auto value = behind(fields[field], letter)) {
                put(label, formatNumber(*value / 100, u"0.00"));
            }
        }
    };
    const auto pressure = [&](size_t field, QChar letter, size_t label) {
        if (has(field)) {
            if (const auto value = behind(fields[field], letter)) {
                put(label, formatNumber(*value, u"0"));
                put(label + 1, formatNumber(*value * kPsiPerBar, u"0"));
            }
        }
    };
    if (has(1)) {
        QString metres;
        QString feet;
        if (isFourDigits(fields[1])) {
            metres = formatNumber(platform::leadingNumber(fields[1]) * kMetresPerCount, u"0.00");
            feet = formatNumber(platform::leadingNumber(metres) * kFeetPerMetre, u"0.0");
        }
        put(0, metres);
        put(1, feet);
    }
    if (has(2)) {
        put(2, cleaned(fields[2]));
    }
    if (has(3)) {
        put(3, isFourDigits(fields[3]) ? formatNumber(platform::leadingNumber(fields[3]) / 100, u"0.00")
                                       : cleaned(fields[2]));
    }
    if (has(4) && fields[4].startsWith(QLatin1Char('M'))) {
        const bool keeps = fields[4].size() == kDigits + 1 && fields[4].endsWith(QLatin1Char('1'));
        if (!keeps) {
            put(4, QStringLiteral("0"));
        }
    }
    if (has(5) && isLetter(fields[5].left(1))) {
        if (const auto celsius = behind(fields[5], fields[5].at(0))) {
            put(5, formatNumber(*celsius, u"0"));
            put(6, formatNumber(*celsius * 9 / 5 + 32, u"0.00"));
        }
    }
    if (has(6)) {
        if (const auto value = behind(fields[6], u'A')) {
            put(7, formatNumber(*value / 10, u"0.00"));
            put(8, formatNumber(*value / 10 * kFeetPerMetre, u"0.00"));
        }
    }
    hundredth(7, u'B', 9);
    hundredth(8, u'C', 10);
    pressure(9, u'D', 11);
    pressure(10, u'E', 13);
    hundredth(11, u'F', 15);
    hundredth(12, u'G', 16);
    hundredth(13, u'H', 17);
    hundredth(14, u'I', 18);
    if (has(15)) {
        if (const auto value = behind(fields[15], u'J')) {
            put(19, formatNumber(*value, u"0"));
            put(20, formatNumber(*value * kFeetPerMetre, u"0"));
        }
    }
    constexpr size_t firstText = 16;
    for (size_t field = firstText; has(field); ++field) {
        const size_t label = field + Readings::firstAlarm - firstText;
        put(label, fields[field]);
        readings.visible[label] = fields[field].size() >= kShownAlarm;
    }
    const size_t behindLast =
        std::max<size_t>(Readings::firstAlarm, fields.size() + Readings::firstAlarm - firstText);
    for (size_t label = behindLast; label < Readings::labels; ++label) {
        readings.visible[label] = false;
    }
    return readings;
}

std::optional<Readings> Timer6_tick(LinkState& link) {
    link.Text4.follow(link.rxbuf);
    if (!link.Text4.holds("R0000") || !link.Text4.holds("J")) {
        return std::nullopt;
    }
    link.Timer6 = false;
    link.AFLabel3 = {QStringLiteral("Status Update"), platform::kToldCyan};
    return parsereadings(link.Text4.bytes());
}

std::optional<Readings> Timer7_tick(LinkState& link) {
    // A dive that comes behind such a line would be cleared away with it.
    if (link.Timer6 || awaitsdive(link) || !link.Text4.holds("R-001") || !link.Text4.holds("J")) {
        return std::nullopt;
    }
    const Readings readings = parsereadings(link.Text4.bytes());
    link.AFLabel3 = {QStringLiteral("Status Update"), platform::kToldCyan};
    link.Text4.clear();
    link.rxbuf.clear();
    return readings;
}

} // namespace benthor::link
