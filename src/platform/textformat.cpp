#include "platform/textformat.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace benthor::platform {

namespace {

constexpr int kSignificantDigits = 15;

/// A non-negative number as decimal digits: value = 0.d1d2d3... x 10^exponent.
struct Decimal {
    std::string digits;
    int exponent = 0;
};

Decimal toDecimal(double value) {
    std::array<char, 40> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                   std::chars_format::scientific, kSignificantDigits - 1)
                         .ptr;
    const std::string_view text(buffer.data(), static_cast<size_t>(end - buffer.data()));
    const auto e = text.find('e');
    Decimal result;
    for (const char c : text.substr(0, e)) {
        if (c != '.') {
            result.digits += c;
        }
    }
    int power = 0;
    const bool negative = text[e + 1] == '-';
    std::from_chars(text.data() + e + 2, text.data() + text.size(), power);
    result.exponent = (negative ? -power : power) + 1;
    if (result.digits.find_first_not_of('0') == std::string::npos) {
        return {};
    }
    return result;
}

/// Rounds to `places` digits behind the point, an exact half away from zero.
void roundDecimal(Decimal& number, int places) {
    const int keep = number.exponent + places;
    if (keep < 0) {
        number = {};
        return;
    }
    if (keep >= static_cast<int>(number.digits.size())) {
        return;
    }
    const bool up = number.digits[static_cast<size_t>(keep)] >= '5';
    number.digits.resize(static_cast<size_t>(keep));
    if (!up) {
        return;
    }
    int i = keep - 1;
    while (i >= 0 && number.digits[static_cast<size_t>(i)] == '9') {
        number.digits[static_cast<size_t>(i)] = '0';
        --i;
    }
    if (i >= 0) {
        ++number.digits[static_cast<size_t>(i)];
    } else {
        number.digits.insert(number.digits.begin(), '1');
        ++number.exponent;
    }
}

char digitAt(const Decimal& number, int place) // place 0 is the first behind the point, -1 the ones
{
    const int index = number.exponent + place;
    if (index < 0 || index >= static_cast<int>(number.digits.size())) {
        return '0';
    }
    return number.digits[static_cast<size_t>(index)];
}

struct NumberPattern {
    QString prefix, suffix;
    int leastWhole = 0;  ///< zeros before the point
    int leastPlaces = 0; ///< zeros behind the point
    int mostPlaces = 0;  ///< zeros and number signs behind the point
    bool point = false, percent = false;
};

NumberPattern parsePattern(QStringView pattern) {
    NumberPattern result;
    bool seen = false;
    for (const QChar c : pattern) {
        if (c == u'0' || c == u'#') {
            seen = true;
            if (!result.point) {
                result.leastWhole += (c == u'0') ? 1 : 0;
            } else {
                ++result.mostPlaces;
                if (c == u'0') {
                    result.leastPlaces = result.mostPlaces;
                }
            }
        } else if (c == u'.' && !result.point) {
            result.point = seen = true;
        } else {
            result.percent = result.percent || c == u'%';
            (seen ? result.suffix : result.prefix) += c;
        }
    }
    return result;
}

} // namespace

QString formatNumber(double value, QStringView pattern) {
    if (!std::isfinite(value)) {
        return {};
    }
    const NumberPattern form = parsePattern(pattern);
    Decimal number = toDecimal(std::abs(value));
    if (form.percent && !number.digits.empty()) {
        number.exponent += 2;
    }
    roundDecimal(number, form.mostPlaces);
    const bool isZero = number.digits.find_first_not_of('0') == std::string::npos;
    QString whole;
    for (int place = -std::max(number.exponent, form.leastWhole); place < 0; ++place) {
        const QChar digit(QLatin1Char(digitAt(number, place)));
        if (!whole.isEmpty() || digit != u'0' || -place <= form.leastWhole) {
            whole += digit;
        }
    }
    QString places;
    for (int place = 0; place < form.mostPlaces; ++place) {
        places += QLatin1Char(digitAt(number, place));
    }
    while (places.size() > form.leastPlaces && places.endsWith(u'0')) {
        places.chop(1);
    }
    QString result = form.prefix;
    if (value < 0 && !isZero) {
        result += u'-';
    }
    result += whole;
    if (form.point) {
        result += u'.' + places;
    }
    return result + form.suffix;
}

QString formatDate(const QDateTime& moment, QStringView pattern) {
    static constexpr std::array kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                           "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    if (!moment.isValid()) {
        return {};
    }
    const QDate date = moment.date();
    const QTime time = moment.time();
    const auto padded = [](int number, int width) {
        return QString::number(number).rightJustified(width, u'0');
    };
    QString result;
    bool behindHours = false;
    for (qsizetype i = 0; i < pattern.size();) {
        const QChar letter = pattern[i];
        qsizetype run = 1;
        while (i + run < pattern.size() && pattern[i + run] == letter) {
            ++run;
        }
        const int width = static_cast<int>(run);
        switch (letter.unicode()) {
        case u'd':
            result += padded(date.day(), width);
            break;
        case u'm':
            if (width == 3) {
                result += QLatin1String(kMonths.at(static_cast<size_t>(date.month() - 1)));
            } else {
                result += padded(behindHours ? time.minute() : date.month(), width);
            }
            break;
        case u'y':
            result += padded(date.year(), width);
            break;
        case u'h':
            result += padded(time.hour(), width);
            behindHours = true;
            break;
        case u'n':
            result += padded(time.minute(), width);
            break;
        case u's':
            result += padded(time.second(), width);
            break;
        default:
            result += pattern.mid(i, run);
            break;
        }
        if (letter.isLetter() && letter != u'h') {
            behindHours = false;
        }
        i += run;
    }
    return result;
}

double leadingNumber(QByteArrayView latin1) {
    const char* at = latin1.begin();
    const char* const end = latin1.end();
    while (at != end && (*at == ' ' || *at == '\t' || *at == '\n' || *at == '\r')) {
        ++at;
    }
    bool negative = false;
    if (at != end && (*at == '+' || *at == '-')) {
        negative = *at == '-';
        ++at;
    }
    if (at == end || !((*at >= '0' && *at <= '9') || *at == '.')) {
        return 0.0;
    }
    double value = 0.0;
    const auto [ptr, error] = std::from_chars(at, end, value);
    if (error == std::errc::result_out_of_range) {
        const QByteArrayView number(at, ptr);
        const bool tiny = number.toByteArray().contains("e-") || number.toByteArray().contains("E-");
        value = tiny ? 0.0 : std::numeric_limits<double>::infinity();
    } else if (error != std::errc()) {
        return 0.0;
    }
    return negative ? -value : value;
}

double leadingNumber(QStringView text) {
    return leadingNumber(QByteArrayView(text.toLatin1()));
}

bool isNumeric(QStringView text) {
    const QStringView trimmed = text.trimmed();
    bool digit = false;
    bool point = false;
    for (qsizetype i = 0; i < trimmed.size(); ++i) {
        const QChar c = trimmed[i];
        if (c >= u'0' && c <= u'9') {
            digit = true;
        } else if (c == u'.' && !point) {
            point = true;
        } else if (i > 0 || (c != u'+' && c != u'-')) {
            return false;
        }
    }
    return digit;
}

int toWhole(double value) {
    if (std::isnan(value)) {
        return 0;
    }
    constexpr double kLeast = std::numeric_limits<int>::min();
    constexpr double kMost = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(roundToEven(value), kLeast, kMost));
}

double wholePart(double value) {
    return std::floor(value);
}

QString floatText(float value) {
    if (!std::isfinite(value)) {
        return QStringLiteral("0");
    }
    std::array<char, 64> buffer{};
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed).ptr;
    const QLatin1String text(buffer.data(), end);
    return text == QLatin1String("-0") ? QStringLiteral("0") : QString(text);
}

QString hexadecimal(double value) {
    return QString::number(static_cast<qlonglong>(roundToEven(value)), 16).toUpper();
}

QString trimBlanks(QStringView text) {
    while (text.startsWith(u' ')) {
        text = text.mid(1);
    }
    while (text.endsWith(u' ')) {
        text.chop(1);
    }
    return text.toString();
}

} // namespace benthor::platform
