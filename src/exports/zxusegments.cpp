#include "exports/zxusegments.h"

#include "exports/numbertext.h"
#include "platform/textformat.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace benthor::exports {

namespace {

const QByteArray kLineEnd = QByteArrayLiteral("\r\n");
constexpr double kBarPerAta = 1.01325;
constexpr double kFastAscent = 10; ///< metres a minute

QByteArray danMoment(const QDateTime& moment) {
    return platform::formatDate(moment, u"yyyymmddhhnnss").toLatin1();
}

/// Two decimals at most, of a finite value.
char* writeRounded(char* at, double value) {
    constexpr double kMostHundredths = 999999;
    const double scaled = platform::roundToEven(value * 100);
    return std::abs(scaled) <= kMostHundredths ? writeHundredths(at, static_cast<int>(scaled))
                                               : writeNumber(at, static_cast<float>(scaled / 100));
}

QByteArray roundedText(double value) {
    std::array<char, kLongestNumber> text{};
    return {text.data(), writeRounded(text.data(), value) - text.data()};
}

/// What may stand in a segment: printable letters without the delimiters that the header declares.
QString segmentText(const QString& text) {
    QString plain;
    std::copy_if(text.begin(), text.end(), std::back_inserter(plain), [](QChar letter) {
        return letter >= u' ' && letter <= u'~' && !QStringView(u"|^~<>{}\\").contains(letter);
    });
    return plain.trimmed();
}

/// The words of a sample's warnings, as a segment can hold them.
QStringList warningWords(const profile::DiveProfile& profile, int sample) {
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

char* writeText(char* at, QByteArrayView text) {
    return std::copy(text.begin(), text.end(), at);
}

/// The same of words whose length the compiler knows.
template <std::size_t Size> char* writeWord(char* at, const char (&word)[Size]) {
    return std::copy_n(word, Size - 1, at);
}

/// As danMinutes(). Of most samples the text follows from whole ten-thousandths; where these are not certain,
/// that function decides.
char* writeMinutes(char* at, double minutes) {
    constexpr double kMostMinutes = 100000;
    constexpr double kCertain = 0.001;
    constexpr qsizetype kMostCharacters = 6;
    const double scaled = minutes * 10000;
    if (!(minutes >= 0 && minutes < kMostMinutes)) {
        return writeText(at, danMinutes(minutes).toLatin1());
    }
    const int parts = static_cast<int>(scaled + 0.5);
    if (std::abs(scaled - parts) > 0.5 - kCertain) {
        return writeText(at, danMinutes(minutes).toLatin1());
    }
    char* const begin = at;
    at = writeHundredths(at, parts / 10000 * 100);
    const int part = parts % 10000;
    *at++ = '.';
    *at++ = static_cast<char>('0' + part / 1000);
    *at++ = static_cast<char>('0' + part / 100 % 10);
    *at++ = static_cast<char>('0' + part / 10 % 10);
    *at++ = static_cast<char>('0' + part % 10);
    for (int zeros = 0; zeros < 3 && at[-1] == '0'; ++zeros) {
        --at;
    }
    return std::min(at, begin + kMostCharacters);
}

/// The fields of one sample line, from the third on written only where the device recorded them.
class ZxuLines {
public:
    /// The lines go behind what the group has.
    ZxuLines(const FullDive& dive, ZxuGroup& group)
        : dive_(dive)
        , group_(group)
        , end_(group.text.size())
        , minutes_(dive.interval / 60)
        , withPo2_(dive.profile.enabled.test(3))
        , withTemperature_(dive.profile.enabled.test(5))
        , withSupplies_(dive.profile.enabled.test(8)) {
        constexpr qsizetype kUsualLine = 48;
        group_.text.resize(end_ + (dive.lastsample + 1) * kUsualLine + kLongestLine);
    }

    /// All lines are there.
    void finish() { group_.text.truncate(end_); }

    void append(int sample) {
        const profile::DiveProfile& profile = dive_.profile;
        const int place = sample - 1;
        const double depth = profile.depthpos[place];
        const double ceiling = -static_cast<double>(profile.ceilingneg[place]);
        if (group_.text.size() - end_ < kLongestLine) {
            group_.text.resize(2 * group_.text.size());
        }
        char* const line = group_.text.data() + end_;
        char* at = line;
        *at++ = '|';
        at = writeMinutes(at, (sample - profile::kFirstSample) * dive_.interval / 60);
        *at++ = '|';
        at = rounded(at, true, depth);
        at = writeGas(at, sample);
        at = rounded(at, withPo2_, profile.po2[place] / kBarPerAta);
        at = flag(at, isFast(sample, depth));
        at = flag(at, ceiling > 0 && depth < ceiling);
        at = rounded(at, ceiling > 0, ceiling);
        at = field(at, withTemperature_, profile.temp[place]);
        if (profile.alarmcount[place] > 0.0F) {
            if (QStringList words = warningWords(profile, sample); !words.isEmpty()) {
                group_.gaps.push_back({end_ + (at - line), std::move(words)});
            }
        }
        *at++ = '|';
        at = field(at, withSupplies_, profile.hpo2[place]);
        at = field(at, withSupplies_, profile.hpdil[place]);
        at = writeWord(at, "||||\r\n");
        end_ += at - line;
    }

private:
    static char* flag(char* at, bool isSet) { return writeWord(at, isSet ? "T|" : "F|"); }

    static char* field(char* at, bool isThere, float value) {
        at = isThere ? writeNumber(at, value) : at;
        *at++ = '|';
        return at;
    }

    static char* rounded(char* at, bool isThere, double value) {
        at = isThere ? writeRounded(at, value) : at;
        *at++ = '|';
        return at;
    }

    /// The gas where it or the setpoint changes.
    char* writeGas(char* at, int sample) {
        const float number = dive_.profile.gasnum[sample - 1];
        const float setpoint = dive_.profile.setpoint[sample - 1];
        if (number != number_ || setpoint != setpoint_ || sample == profile::kFirstSample) {
            number_ = number;
            setpoint_ = setpoint;
            const QByteArray gas = danGas(dive_.gases, gasOf(dive_, sample), setpoint).toLatin1();
            at = gas == gas_ ? at : writeText(at, gas);
            gas_ = gas;
        }
        *at++ = '|';
        return at;
    }

    bool isFast(int sample, double depth) const {
        if (sample == profile::kFirstSample || dive_.interval <= 0) {
            return false;
        }
        const double risen = dive_.profile.depthpos[sample - 2] - depth;
        return risen > 0 && risen / minutes_ > kFastAscent;
    }

    static constexpr qsizetype kFields = 15;
    static constexpr qsizetype kLongestLine = kFields * (kLongestNumber + 1); ///< mostly room only

    const FullDive& dive_;
    ZxuGroup& group_;
    qsizetype end_;  ///< of the text until now; behind it is room
    double minutes_; ///< between two samples
    bool withPo2_, withTemperature_, withSupplies_;
    float number_ = 0; ///< as recorded
    float setpoint_ = 0;
    QByteArray gas_;
};

/// What stands in the closing segment behind the dive's number.
QByteArray closingFields(const FullDive& dive) {
    double deepest = 0;
    double coldest = 0;
    for (int sample = profile::kFirstSample; sample <= dive.lastsample; ++sample) {
        const double temperature = dive.profile.temp[sample - 1];
        deepest = std::max<double>(deepest, dive.profile.depthpos[sample - 1]);
        coldest = sample == profile::kFirstSample ? temperature : std::min(coldest, temperature);
    }
    const QByteArray temperature =
        dive.profile.enabled.test(5) ? numberText(static_cast<float>(coldest)) : QByteArray();
    return "|" + danNumber(dive.diveid).toLatin1() + "|" + roundedText(deepest) + "|" +
           danMoment(dive.finish) + "|" + temperature + "|" + kLineEnd;
}

/// What stands in the opening segment behind the dive's number.
QByteArray openingFields(const FullDive& dive) {
    const QByteArray diluent = dive.lastsample >= profile::kFirstSample
                                   ? danGas(dive.gases, gasOf(dive, profile::kFirstSample), 0).toLatin1()
                                   : QByteArray();
    return "|" + danNumber(dive.diveid).toLatin1() + "|I|Q" +
           platform::floatText(static_cast<float>(dive.interval)).toLatin1() + "S|" + danMoment(dive.start) +
           "|||" + (everAtConstantPo2(dive) ? "PO2|" + diluent : QByteArray("|")) + "|" + kLineEnd;
}

} // namespace

QByteArray zxuHead(const QDateTime& written) {
    return "FSH|^~<>{}|KDBN01|ZXU|" + danMoment(written) + "|" + kLineEnd +
           "ZRH|^~<>{}|KD32RB|000000000000|MSWG|ThM|C|bar|L|" + kLineEnd;
}

ZxuGroup zxuGroup(const FullDive& dive) {
    ZxuGroup group;
    const auto leaveDiveNumber = [&group] { group.gaps.push_back({group.text.size(), {}}); };
    group.text = "ZDH|";
    leaveDiveNumber();
    group.text += openingFields(dive) + "ZDP{" + kLineEnd;
    ZxuLines lines(dive, group);
    for (int sample = profile::kFirstSample; sample <= dive.lastsample; ++sample) {
        lines.append(sample);
    }
    lines.finish();
    group.text += "ZDP}" + kLineEnd + "ZDT|";
    leaveDiveNumber();
    group.text += closingFields(dive);
    return group;
}

void ZxuGroups::next(const ZxuGroup& group, const std::function<void(QByteArrayView)>& put) {
    ++dives_;
    const QByteArrayView text(group.text);
    qsizetype done = 0;
    for (const ZxuGroup::Gap& gap : group.gaps) {
        put(text.sliced(done, gap.at - done));
        put(QByteArray::number(gap.words.isEmpty() ? dives_ : warning(gap.words)));
        done = gap.at;
    }
    put(text.sliced(done));
}

int ZxuGroups::warning(const QStringList& words) {
    const auto [entry, isNew] = numbers_.try_emplace(words, static_cast<int>(numbers_.size()) + 1);
    if (isNew) {
        entries_ += (entries_.isEmpty() ? "" : "~") + QByteArray::number(entry->second) + '^' +
                    words.join(u'^').toLatin1();
    }
    return entry->second;
}

QByteArray ZxuGroups::warnings() const {
    return "ZAR{" + entries_ + "}" + kLineEnd;
}

} // namespace benthor::exports
