#include "gas/setuptext.h"

#include "gas/gascalc.h"
#include "platform/textformat.h"
#include "shell/process.h"

#include <cmath>

namespace benthor::gas {

namespace {

using platform::formatNumber;

constexpr int kReadCharacters = 222;  ///< of a file: as far as the Y
constexpr int kStartCharacters = 225; ///< of a start: as far as the Z
constexpr int kStartBytes = 20000;
constexpr int kShortReply = 101;

/// A field that is no number, or no value of what it stands for.
struct BadField {};

QString flag(bool on) {
    return on ? QStringLiteral("1") : QStringLiteral("0");
}

/// A box of seconds: whole ones, as many as three digits hold.
std::optional<QString> secondsField(const QString& text) {
    constexpr double kMost = 999;
    const auto seconds = unsignednumber(text, 0);
    return seconds && *seconds <= kMost ? std::optional(formatNumber(*seconds, u"000")) : std::nullopt;
}

/// The setpoint in hundredths of a bar.
std::optional<QString> setpointField(const QString& text) {
    constexpr int kHundredths = 2;
    constexpr double kMost = 9.99;
    const auto setpoint = unsignednumber(text, kHundredths);
    return setpoint && *setpoint <= kMost ? std::optional(formatNumber(*setpoint * 100, u"000"))
                                          : std::nullopt;
}

/// Local clock time, counted as if no hour had ever been put on or back.
QString secondsSinceStart(const QDateTime& now) {
    const QDateTime start(QDate(1991, 12, 31), QTime(0, 0, 1), Qt::UTC);
    const QDateTime clock(now.date(), now.time(), Qt::UTC);
    return formatNumber(static_cast<double>(start.secsTo(clock)), u"0000000000");
}

/// `length` characters from position `at`, counted from 1.
QString part(const QString& text, int at, int length) {
    return text.mid(at - 1, length);
}

long long wholeAt(const QString& text, int at, int length) {
    const auto whole = cellwhole(part(text, at, length));
    if (!whole) {
        throw BadField{};
    }
    return *whole;
}

long long wholeOf(const QString& value) {
    const auto whole = cellwhole(value);
    if (!whole) {
        throw BadField{};
    }
    return *whole;
}

int indexOf(double value, int items) {
    const double index = platform::roundToEven(value);
    if (index < 0 || index >= items) {
        throw BadField{};
    }
    return static_cast<int>(index);
}

bool flagOf(const QString& value) {
    const long long whole = wholeOf(value);
    if (whole != 0 && whole != 1) {
        throw BadField{};
    }
    return whole == 1;
}

void takeField(GasPlan& plan, char16_t letter, const QString& value) {
    Settings& settings = plan.settings;
    switch (letter) {
    case u'L':
        plan.start = indexOf(static_cast<double>(wholeOf(value)), kGases);
        break;
    case u'M':
        settings.backlight = indexOf(static_cast<double>(wholeOf(value)), 5);
        break;
    case u'N':
        settings.laststop = indexOf(static_cast<double>(wholeOf(value)), 3);
        break;
    case u'O':
        settings.hudhi = flagOf(value);
        break;
    case u'P':
        settings.sptext = formatNumber(static_cast<double>(wholeOf(value)) / 100, u"0.00");
        break;
    case u'Q':
        settings.silent = flagOf(value);
        break;
    case u'R':
        settings.biggraphics = flagOf(value);
        break;
    case u'S':
        process().depthunit = value == QLatin1String("1") ? QStringLiteral("metre") : QStringLiteral("Feet");
        break;
    case u'T':
        settings.cns = indexOf(static_cast<double>(wholeOf(value) - 80) / 10, 7);
        break;
    case u'U':
        settings.safety = indexOf(static_cast<double>(wholeOf(value) - 4) / 20, 6);
        break;
    case u'V':
        settings.ScreenSaveText = QString::number(wholeOf(value));
        break;
    case u'W':
        settings.HomeText = QString::number(wholeOf(value));
        break;
    case u'X':
        settings.closed = flagOf(value);
        break;
    default: // the stamp is read apart, and the second closed circuit has no reader
        break;
    }
}

/// One gas of a text; `depth` makes the cell's text from the number in its depth field.
template <typename Depth>
void takeRow(GasPlan& plan, int row, const QString& text, const Say& say, TextFrom from, Depth depth) {
    const int at = kRowWidth * row;
    const long long helium = wholeAt(text, at + 6, 3);
    const long long nitrogen = wholeAt(text, at + 2, 3);
    GasRow& gas = plan.rows[static_cast<size_t>(row)];
    setO2(plan, row, QString::number(100 - helium - nitrogen), say);
    setHe(plan, row, QString::number(helium), say);
    gas.HeColour = helium > 0 ? kLightYellow : kLightCyan;
    setMOD(plan, row, depth(wholeAt(text, at + 10, 4)));
    gas.active = part(text, at + 15, 1) == QLatin1String("1");
    gas.cellsEnabled = gas.active;        // as a click on its box leaves them
    gas.changed = from == TextFrom::File; // the diver chose the file
    gas.owed = false;
    gas.MODread = true;
    gas.MODtyped = false;
}

/// The characters from the first "A" on, as many as `most`; two blanks in a row empty what is held, and the
/// count runs on.
struct Held {
    QString text;
    bool byCount = false; ///< it ended by the count, not with the bytes
    char last = 0;
};
Held hold(const QByteArray& bytes, int most) {
    Held held;
    int count = 0;
    for (const char byte : bytes) {
        if (byte == 'A') {
            count = 1;
        }
        if (count < 1) {
            continue;
        }
        held.text += QLatin1Char(byte);
        if (held.text.endsWith(QLatin1String("  "))) {
            held.text.clear();
        }
        held.last = byte;
        if (++count > most) {
            held.byCount = true;
            break;
        }
    }
    return held;
}

QString startOf(const QByteArray& bytes, bool alwaysEnded) {
    if (bytes.isNull()) {
        return {};
    }
    const Held held = hold(bytes.first(std::min<qsizetype>(bytes.size(), kStartBytes)), kStartCharacters);
    const bool ended = alwaysEnded || (held.byCount && held.last == 'Z');
    return ended ? held.text + kEscape : held.text;
}

QString fieldIn(const QString& text, const Tag& tag) {
    const qsizetype at = text.indexOf(QChar(tag.letter), 0, Qt::CaseInsensitive);
    return at < 0 ? QString() : text.mid(at + 1, tag.width);
}

} // namespace

QString stocktext() {
    return QString(14, QLatin1Char(' ')) +
           QStringLiteral("A079 000 0400 0 B079 000 0400 1 C079 000 0400 0 D079 000 0400 0 E079 000 0400 0 "
                          "F079 000 0400 1 G079 000 0400 0 H079 000 0400 0 I079 000 0400 0 J079 000 0400 0 "
                          "K0150051510 L1 M3 N2 O1 P130 Q0 R0 S1 T080 U004 V030 W000 X1 Y") +
           kEscape;
}

std::optional<QString> fieldvalue(const GasPlan& plan, size_t tag, const QDateTime& now) {
    const Settings& settings = plan.settings;
    switch (kTags[tag].letter) {
    case u'K':
        return secondsSinceStart(now);
    case u'L':
        return QString::number(settings.divegas);
    case u'M':
        return QString::number(settings.backlight);
    case u'N':
        return QString::number(settings.laststop);
    case u'O':
        return flag(settings.hudhi);
    case u'P':
        return setpointField(settings.sptext);
    case u'Q':
        return flag(settings.silent);
    case u'R':
        return flag(settings.biggraphics);
    case u'S':
        return process().depthunit == QLatin1String("metre") ? QStringLiteral("1") : QStringLiteral("3");
    case u'T':
        return formatNumber(settings.cns * 10 + 80, u"000");
    case u'U':
        return formatNumber((settings.safety / 50.0 + 0.004) * 1000, u"000");
    case u'V':
        return secondsField(settings.ScreenSaveText);
    case u'W':
        return secondsField(settings.HomeText);
    default: // X and Y
        return flag(settings.closed);
    }
}

void patchsettings(GasPlan& plan, const QDateTime& now) {
    for (size_t tag = 0; tag < kTags.size(); ++tag) {
        if (const std::optional<QString> value = fieldvalue(plan, tag, now)) {
            putfield(plan.Text7, kTags[tag], *value);
        }
    }
    if (!plan.gasblock.isEmpty()) {
        putgases(plan.Text7, plan.gasblock);
    }
}

QString textof(const GasPlan& plan, const QDateTime& now) {
    GasPlan alone = plan;
    alone.Text7 = blanktext();
    alone.settings.divegas = plan.start; // the list only follows
    alone.gasblock = gasblockof(plan, alone.Text7.first(kGasBlock)).value_or(QString());
    patchsettings(alone, now);
    return alone.Text7;
}

HeldText readsetup(const QByteArray& bytes) {
    const Held held = hold(bytes, kReadCharacters);
    HeldText result{held.text, {}};
    if (held.byCount) {
        if (held.last == 'Y') {
            result.text += QLatin1String("1 Z") + QString(kEscape);
        } else {
            result.messages += QStringLiteral("Bad File. Choose new file!");
        }
    }
    result.text += kEscape;
    if (result.text.size() != kSetupText + 1) {
        result.messages += QStringLiteral("Bad file. Choose new file.");
    }
    return result;
}

bool taketext(GasPlan& plan, const QString& text, const Say& say, TextFrom from) {
    try {
        for (int row = 0; row < kGases; ++row) {
            takeRow(plan, row, text, say, from,
                    [](long long depth) { return generaltext(static_cast<double>(depth) / 10.0); });
        }
        plan.Label14 = static_cast<double>(wholeAt(text, 162, 10));
        for (const Tag& tag : kTags) {
            const QString value = fieldIn(text, tag);
            if (!value.isNull()) {
                takeField(plan, tag.letter, value);
            }
        }
        return true;
    } catch (const BadField&) {
        return false;
    }
}

void gas_openupdate(GasPlan& plan, const Say& say) {
    plan.Text6 = process().uploadtext;
    if (plan.Text6.size() < kUsableText) {
        return;
    }
    try {
        for (int row = 0; row < kGases; ++row) {
            takeRow(plan, row, plan.Text6, say, TextFrom::Device, [&plan](long long depth) {
                return generaltext(platform::roundToEven(static_cast<double>(depth) / plan.depthperbar));
            });
            showgasrow(plan, row);
        }
    } catch (const BadField&) {
        // the rows already taken stay
    }
}

QString starttext(const QByteArray& last, const QByteArray& stock) {
    const QString text = startOf(last, false);
    return text.size() == kSetupText ? text : startOf(stock, true);
}

QByteArray receivedfile(const QString& received) {
    return received.size() >= kShortReply ? received.toLatin1() + "\r\n"
                                          : stocktext().toLatin1() + "\r\n\r\n";
}

QByteArray savedfile(const QString& text) {
    return text.toLatin1() + "\r\n";
}

} // namespace benthor::gas
