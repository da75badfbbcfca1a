// The dive in the segments of DL7.

#include "exports/fullexport.h"
#include "platform/textformat.h"

#include <algorithm>
#include <map>

namespace benthor::exports {

using platform::floatText;
using platform::formatNumber;

namespace {

const QByteArray kLineEnd = QByteArrayLiteral("\r\n");
constexpr double kBarPerAta = 1.01325;
constexpr double kFastAscent = 10; ///< metres a minute

QByteArray danMoment(const QDateTime& moment) {
    return platform::formatDate(moment, u"yyyymmddhhnnss").toLatin1();
}

/// Two decimals at most.
QString shortNumber(double value) {
    return floatText(static_cast<float>(platform::roundToEven(value * 100) / 100));
}

double setpointAt(const FullDive& dive, int sample) {
    return dive.profile.setpoint[sample - 1];
}

bool everAtConstantPo2(const FullDive& dive) {
    for (int sample = profile::kFirstSample; sample <= dive.lastsample; ++sample) {
        if (setpointAt(dive, sample) > 0) {
            return true;
        }
    }
    return false;
}

int gasOf(const FullDive& dive, int sample) {
    return platform::toWhole(dive.profile.gasnum[sample - 1]);
}

QString flag(bool set) {
    return set ? QStringLiteral("T") : QStringLiteral("F");
}

/// What may stand in a segment: printable letters without the delimiters that the header declares.
QString segmentText(const QString& text) {
    QString plain;
    std::copy_if(text.begin(), text.end(), std::back_inserter(plain), [](QChar letter) {
        return letter >= u' ' && letter <= u'~' && !QStringView(u"|^~<>{}\\").contains(letter);
    });
    return plain.trimmed();
}

/// The warnings of a dive, each set of words that stands at a sample under a number of its own. A sample's
/// line holds one field for them, so that a set has one number, too.
class WarningTable {
public:
    explicit WarningTable(const FullDive& dive) {
        std::map<QStringList, int> numbers;
        for (int sample = profile::kFirstSample; sample <= dive.lastsample; ++sample) {
            const QStringList words = wordsOf(dive.profile, sample);
            if (words.isEmpty()) {
                continue;
            }
            const auto [entry, isNew] = numbers.try_emplace(words, static_cast<int>(numbers.size()) + 1);
            if (isNew) {
                entries_ += QString::number(entry->second) + u'^' + words.join(u'^');
            }
            samples_[sample] = entry->second;
        }
    }

    /// The number of a sample's warnings, or "".
    QString number(int sample) const {
        const auto found = samples_.find(sample);
        return found == samples_.end() ? QString() : QString::number(found->second);
    }
    /// Number and words, parted by "^", one entry behind the other, parted by "~".
    QByteArray text() const { return entries_.join(u'~').toLatin1(); }

private:
    static QStringList wordsOf(const profile::DiveProfile& profile, int sample) {
        constexpr qsizetype kLongestWord = 80;
        QStringList words;
        if (profile.alarmpoint(sample)) {
            for (const QString& word : profile.alarms.words(sample, kLongestWord)) {
                words += segmentText(word);
            }
            words.removeAll(QString());
        }
        return words;
    }

    QStringList entries_;
    std::map<int, int> samples_;
};

/// The fields of one sample line, from the third on written only where the device recorded them.
class ZxuLines {
public:
    ZxuLines(const FullDive& dive, const WarningTable& warnings)
        : dive_(dive)
        , warnings_(warnings) {}

    QByteArray line(int sample) {
        const profile::DiveProfile& profile = dive_.profile;
        const int place = sample - 1;
        const double depth = profile.depthpos[place];
        const double minutes = (sample - profile::kFirstSample) * dive_.interval / 60;
        const double ceiling = -static_cast<double>(profile.ceilingneg[place]);
        const QString gas = danGas(dive_.gases, gasOf(dive_, sample), setpointAt(dive_, sample));
        const bool supplies = profile.enabled.test(8);
        const QStringList fields{danMinutes(minutes),
                                 shortNumber(depth),
                                 gas == gas_ ? QString() : gas,
                                 profile.enabled.test(3) ? shortNumber(profile.po2[place] / kBarPerAta)
                                                         : QString(),
                                 flag(isFast(sample, depth)),
                                 flag(ceiling > 0 && depth < ceiling),
                                 ceiling > 0 ? shortNumber(ceiling) : QString(),
                                 profile.enabled.test(5) ? floatText(profile.temp[place]) : QString(),
                                 warnings_.number(sample),
                                 supplies ? floatText(profile.hpo2[place]) : QString(),
                                 supplies ? floatText(profile.hpdil[place]) : QString(),
                                 QString(),
                                 QString(),
                                 QString(),
                                 QString()};
        gas_ = gas;
        return (u'|' + fields.join(u'|') + u'|').toLatin1() + kLineEnd;
    }

private:
    bool isFast(int sample, double depth) const {
        if (sample == profile::kFirstSample || dive_.interval <= 0) {
            return false;
        }
        const double before = dive_.profile.depthpos[sample - 2];
        return (before - depth) / (dive_.interval / 60) > kFastAscent;
    }

    const FullDive& dive_;
    const WarningTable& warnings_;
    QString gas_;
};

QByteArray closingSegment(const FullDive& dive) {
    double deepest = 0;
    double coldest = 0;
    for (int sample = profile::kFirstSample; sample <= dive.lastsample; ++sample) {
        const double temperature = dive.profile.temp[sample - 1];
        deepest = std::max<double>(deepest, dive.profile.depthpos[sample - 1]);
        coldest = sample == profile::kFirstSample ? temperature : std::min(coldest, temperature);
    }
    const QByteArray temperature =
        dive.profile.enabled.test(5) ? floatText(static_cast<float>(coldest)).toLatin1() : QByteArray();
    return "ZDT|1|" + danNumber(dive.diveid).toLatin1() + "|" + shortNumber(deepest).toLatin1() + "|" +
           danMoment(dive.finish) + "|" + temperature + "|" + kLineEnd;
}

/// `value` as three digits.
QString threeDigits(double value) {
    return formatNumber(std::clamp(platform::roundToEven(value), 0.0, 999.0), u"000");
}

} // namespace

QString danMinutes(double minutes) {
    constexpr qsizetype kMostCharacters = 6;
    return formatNumber(minutes, u"0.0###").left(kMostCharacters);
}

QString danGas(const profile::GasArrays& gases, int gas, double setpoint) {
    constexpr int kMostOxygen = 99; // the table has two digits for it
    if (gas < 0 || gas >= profile::kMostGases) {
        return {};
    }
    const auto at = static_cast<std::size_t>(gas);
    const int nitrogen = gases.gasn2[at];
    const int oxygen = gases.gaso2[at];
    const double helium = gases.gashe[at];
    const double inert = nitrogen + helium;
    if (oxygen < 0 || (oxygen == 0 && inert <= 0)) {
        return {};
    }
    const QString share = threeDigits(inert > 0 && helium >= 1 ? nitrogen / inert * 100 : 100);
    if (setpoint > 0) {
        const QString code = helium < 1     ? QStringLiteral("13.")
                             : nitrogen > 0 ? QStringLiteral("8.")
                                            : QStringLiteral("15.");
        return code + threeDigits(setpoint / kBarPerAta * 100) + share;
    }
    if (helium < 1) {
        return nitrogen == 79 ? QStringLiteral("1")
                              : QStringLiteral("2.") + formatNumber(std::min(oxygen, kMostOxygen), u"00");
    }
    return QStringLiteral("6.") + threeDigits(oxygen * 10) + share;
}

QString danNumber(const QString& diveid) {
    constexpr qsizetype kMostDigits = 4;
    QString digits;
    std::copy_if(diveid.begin(), diveid.end(), std::back_inserter(digits),
                 [](QChar character) { return character >= u'0' && character <= u'9'; });
    return QString::number(digits.right(kMostDigits).toInt());
}

QByteArray fullZxu(const FullDive& dive) {
    const QByteArray start = danMoment(dive.start);
    const QString diluent = dive.lastsample >= profile::kFirstSample
                                ? danGas(dive.gases, gasOf(dive, profile::kFirstSample), 0)
                                : QString();
    const WarningTable warnings(dive);
    QByteArray text = "FSH|^~<>{}|KDBN01|ZXU|" + danMoment(dive.written) + "|" + kLineEnd;
    text += "ZRH|^~<>{}|KD32RB|000000000000|MSWG|ThM|C|bar|L|" + kLineEnd;
    text += "ZAR{" + warnings.text() + "}" + kLineEnd;
    text += "ZDH|1|" + danNumber(dive.diveid).toLatin1() + "|I|Q" +
            floatText(static_cast<float>(dive.interval)).toLatin1() + "S|" + start + "|||" +
            (everAtConstantPo2(dive) ? "PO2|" + diluent.toLatin1() : QByteArray("|")) + "|" + kLineEnd;
    text += "ZDP{" + kLineEnd;
    ZxuLines lines(dive, warnings);
    for (int sample = profile::kFirstSample; sample <= dive.lastsample; ++sample) {
        text += lines.line(sample);
    }
    return text + "ZDP}" + kLineEnd + closingSegment(dive);
}

} // namespace benthor::exports
