// The setup text as it is written, and as it is read from a file.

#include "gas/setuptext.h"

#include "platform/textformat.h"
#include "session/process.h"

#include <algorithm>

namespace benthor::gas {

namespace {

using platform::formatNumber;

constexpr int kReadCharacters = 222;  ///< of a file: as far as the Y
constexpr int kStartCharacters = 225; ///< of a start: as far as the Z
constexpr int kStartBytes = 20000;
constexpr int kShortReply = 101;

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
