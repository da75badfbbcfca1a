#include "link/readings.h"

#include "link/download.h"
#include "link/linkstate.h"
#include "platform/textformat.h"
#include "store/depthunits.h"

#include <array>
#include <vector>

namespace benthor::link {

namespace {

using platform::formatNumber;

constexpr int kMostSeparators = 25;
constexpr double kMetresPerCount = 0.09375;
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

/// One label's number: that behind the field's lead letter, divided and multiplied.
struct Scaled {
    size_t field;
    char16_t letter;
    size_t label;
    double divisor;
    double factor;
    QStringView pattern;
};
constexpr std::array<Scaled, 14> kScaled{{{6, u'A', 7, 10, 1, u"0.00"},
                                          {6, u'A', 8, 10, store::kFeetPerMetre, u"0.00"},
                                          {7, u'B', 9, 100, 1, u"0.00"},
                                          {8, u'C', 10, 100, 1, u"0.00"},
                                          {9, u'D', 11, 1, 1, u"0"},
                                          {9, u'D', 12, 1, kPsiPerBar, u"0"},
                                          {10, u'E', 13, 1, 1, u"0"},
                                          {10, u'E', 14, 1, kPsiPerBar, u"0"},
                                          {11, u'F', 15, 100, 1, u"0.00"},
                                          {12, u'G', 16, 100, 1, u"0.00"},
                                          {13, u'H', 17, 100, 1, u"0.00"},
                                          {14, u'I', 18, 100, 1, u"0.00"},
                                          {15, u'J', 19, 1, 1, u"0"},
                                          {15, u'J', 20, 1, store::kFeetPerMetre, u"0"}}};

using Fields = std::vector<QString>;

/// Depth, a text, PPO2. Where one that must have four digits has not, its label takes what was worked on
/// before it: nothing for the depth, the text for the PPO2.
void putFirstThree(const Fields& fields, Readings& readings) {
    if (fields.size() > 1) {
        const bool good = isFourDigits(fields[1]);
        const double depth = platform::leadingNumber(fields[1]) * kMetresPerCount;
        readings.texts[0] = good ? formatNumber(depth, u"0.00") : QString();
        readings.texts[1] =
            good ? formatNumber(platform::leadingNumber(*readings.texts[0]) * store::kFeetPerMetre, u"0.0")
                 : QString();
    }
    if (fields.size() > 2) {
        readings.texts[2] = cleaned(fields[2]);
    }
    if (fields.size() > 3) {
        readings.texts[3] = isFourDigits(fields[3])
                                ? formatNumber(platform::leadingNumber(fields[3]) / 100, u"0.00")
                                : cleaned(fields[2]);
    }
}

/// A mark, and the temperature, which may lead with any letter.
void putMarkAndTemperature(const Fields& fields, Readings& readings) {
    if (fields.size() > 4 && fields[4].startsWith(QLatin1Char('M'))) {
        const bool keeps = fields[4].size() == kDigits + 1 && fields[4].endsWith(QLatin1Char('1'));
        if (!keeps) {
            readings.texts[4] = QStringLiteral("0");
        }
    }
    if (fields.size() > 5 && isLetter(fields[5].left(1))) {
        if (const auto celsius = behind(fields[5], fields[5].at(0))) {
            readings.texts[5] = formatNumber(*celsius, u"0");
            readings.texts[6] = formatNumber(*celsius * 9 / 5 + 32, u"0.00");
        }
    }
}

void putScaled(const Fields& fields, Readings& readings) {
    for (const Scaled& one : kScaled) {
        if (one.field >= fields.size()) {
            break;
        }
        if (const auto value = behind(fields[one.field], one.letter)) {
            readings.texts[one.label] = formatNumber(*value / one.divisor * one.factor, one.pattern);
        }
    }
}

/// The alarms as they stand; the labels that no field reaches are hidden.
void putAlarms(const Fields& fields, Readings& readings) {
    constexpr size_t kFirst = 16;
    for (size_t label = Readings::firstAlarm; label < Readings::labels; ++label) {
        const size_t field = label - Readings::firstAlarm + kFirst;
        const bool there = field < fields.size();
        if (there) {
            readings.texts[label] = fields[field];
        }
        readings.visible[label] = there && fields[field].size() >= kShownAlarm;
    }
}

} // namespace

Readings parsereadings(const QByteArray& text) {
    const Fields fields = fieldsOf(text);
    Readings readings;
    putFirstThree(fields, readings);
    putMarkAndTemperature(fields, readings);
    putScaled(fields, readings);
    putAlarms(fields, readings);
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
