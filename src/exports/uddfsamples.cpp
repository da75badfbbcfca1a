#include "exports/uddfsamples.h"

#include "exports/samplecolumns.h"
#include "platform/textformat.h"

#include <cmath>

namespace benthor::exports {

namespace {

using profile::DiveProfile;
using profile::kFirstSample;
using profile::SampleArray;

constexpr double kZeroKelvin = -273.15; ///< degrees C
constexpr qsizetype kWholeToken = 255;  ///< characters of a token that alarmTokens() gives

constexpr std::array<SampleArray DiveProfile::*, UddfParts::kCells> kCells{
    &DiveProfile::cella, &DiveProfile::cellb, &DiveProfile::cellc};
constexpr std::array<SampleArray DiveProfile::*, UddfParts::kTanks> kTanks{&DiveProfile::hpo2,
                                                                           &DiveProfile::hpdil};

/// -1 for what is no number of a gas.
int gasOf(const DiveProfile& profile, int sample) {
    const float gas = profile.gasnum[sample - 1];
    const bool isNumber = gas >= 0 && gas < profile::kMostGases && std::floor(gas) == gas;
    return isNumber ? static_cast<int>(gas) : -1;
}

bool isBar(float bar) {
    constexpr float kLeast = 0.00001F; // a pascal
    return bar >= kLeast && bar <= kMostOfAll;
}

bool isCeiling(float metres) {
    constexpr float kLeast = 0.001F;
    return metres >= kLeast && metres <= kMostOfAll;
}

bool isTemperature(float celsius) {
    return celsius >= kZeroKelvin && celsius <= kMostOfAll;
}

/// In every waypoint there must be one.
float depthAt(const DiveProfile& profile, int at) {
    return std::clamp(profile.depthpos[at], 0.0F, static_cast<float>(kMostOfAll));
}

/// One of the format's nine words for an alarm; empty for a token that is none of them.
QString alarmWord(const QString& token) {
    static const QStringList words{
        QStringLiteral("ascent"), QStringLiteral("breath"),      QStringLiteral("deco"),
        QStringLiteral("error"),  QStringLiteral("link"),        QStringLiteral("microbubbles"),
        QStringLiteral("rbt"),    QStringLiteral("skincooling"), QStringLiteral("surface")};
    const qsizetype at = words.indexOf(token.trimmed().toLower());
    return at < 0 ? QString() : words[at];
}

/// The elements of a waypoint, made once.
struct Forms {
    const UddfForm samples = UddfForm::around({"uddf", "profiledata", "repetitiongroup", "dive", "samples"});
    const UddfForm waypoint =
        UddfForm::around({"uddf", "profiledata", "repetitiongroup", "dive", "samples", "waypoint"});
    const UddfForm alarm = UddfForm::leaf(QStringLiteral("alarm"));
    const UddfForm ceiling = UddfForm::ceiling();
    const UddfForm po2 = UddfForm::leaf(QStringLiteral("calculatedpo2"));
    const UddfForm depth = UddfForm::leaf(QStringLiteral("depth"));
    const UddfForm time = UddfForm::leaf(QStringLiteral("divetime"));
    const UddfForm marker = UddfForm::leaf(QStringLiteral("setmarker"));
    const UddfForm setpoint =
        UddfForm::leaf(QStringLiteral("setpo2"), QStringLiteral("setby"), QStringLiteral("computer"));
    const UddfForm gas = UddfForm::mark(QStringLiteral("switchmix"), QStringLiteral("ref"));
    const UddfForm temperature = UddfForm::leaf(QStringLiteral("temperature"));
    const UddfForm mode = UddfForm::mark(QStringLiteral("divemode"), QStringLiteral("type"));
    std::array<UddfForm, UddfParts::kCells> cells;
    std::array<UddfForm, UddfParts::kTanks> tanks;

    Forms() {
        for (std::size_t cell = 0; cell < cells.size(); ++cell) {
            cells[cell] =
                UddfForm::leaf(QStringLiteral("measuredpo2"), QStringLiteral("ref"), UddfParts::cellId(cell));
        }
        for (std::size_t tank = 0; tank < tanks.size(); ++tank) {
            tanks[tank] = UddfForm::leaf(QStringLiteral("tankpressure"), QStringLiteral("ref"),
                                         UddfParts::tankId(tank));
        }
    }
};

const Forms& forms() {
    static const Forms all;
    return all;
}

class Waypoints {
public:
    Waypoints(const WholeDive& dive, const UddfProfile& told, double interval)
        : dive_(dive)
        , profile_(dive.profile)
        , told_(told)
        , interval_(interval) {}

    UddfSamples all() {
        text_.put(forms_.samples.before);
        writeLead();
        for (int sample = kFirstSample; sample <= dive_.lastsample(); ++sample) {
            write(sample);
        }
        text_.put(forms_.samples.behind);
        return {text_.take(), std::move(gaps_), std::move(lost_), text_.replaced()};
    }

private:
    /// Breathed at the start is what the first record tells.
    void writeLead() {
        const int gas = gasOf(profile_, kFirstSample);
        const bool closed = isBar(profile_.setpoint[kFirstSample - 1]);
        text_.put(forms_.waypoint.before);
        text_.fill(forms_.depth, "0");
        text_.fill(forms_.time, "0");
        writeSwitch(gas);
        text_.fill(forms_.mode, modeOf(closed));
        text_.put(forms_.waypoint.behind);
        closed_ = closed;
    }

    /// The format has an order for the elements of a waypoint.
    void write(int sample) {
        const int at = sample - 1;
        text_.put(forms_.waypoint.before);
        const QString marker = writeAlarms(sample);
        if (const float ceiling = -profile_.ceilingneg[at]; isCeiling(ceiling)) {
            text_.fill<float>(forms_.ceiling, &writeDecimal, ceiling);
        }
        writeBar(forms_.po2, profile_.po2[at]);
        text_.fill<float>(forms_.depth, &writeDecimal, depthAt(profile_, at));
        text_.fill<double>(forms_.time, &writeDecimal, sample * interval_);
        if (!marker.isEmpty()) {
            text_.fillText(forms_.marker, marker);
        }
        writeBar(forms_.setpoint, profile_.setpoint[at]);
        writeGas(sample);
        writeBars(forms_.tanks, kTanks, at);
        if (told_.temperature && isTemperature(profile_.temp[at])) {
            text_.fill(forms_.temperature, &writeKelvin, profile_.temp[at]);
        }
        writeMode(sample);
        writeBars(forms_.cells, kCells, at);
        text_.put(forms_.waypoint.behind);
    }

    /// The text of the marker: marks, and alarms that the format has no word for.
    QString writeAlarms(int sample) {
        QStringList marker;
        if (const float mark = profile_.mark[sample - 1]; mark != 0) {
            marker += QStringLiteral("mark ") + platform::floatText(mark);
        }
        if (profile_.alarmcount[sample - 1] == 0) {
            return marker.join(QString());
        }
        for (const QString& token : alarmTokens(profile_, sample)) {
            const QString word = alarmWord(token);
            if (!word.isEmpty()) {
                text_.fill(forms_.alarm, word.toLatin1());
            } else if (token.isEmpty()) {
                lost_.insert(QStringLiteral("alarms without a text"));
            } else {
                marker += token;
            }
            if (token.size() == kWholeToken && isCut(sample)) {
                lost_.insert(QStringLiteral("the rest of long alarm texts"));
            }
        }
        return marker.join(QStringLiteral("; "));
    }

    bool isCut(int sample) const {
        const QStringList whole = profile_.alarms.words(sample, kWholeToken + 1);
        return std::any_of(whole.begin(), whole.end(),
                           [](const QString& token) { return token.size() > kWholeToken; });
    }

    void writeBar(const UddfForm& form, float bar) {
        if (isBar(bar)) {
            text_.fill(form, &writePascal, bar);
        }
    }

    template <std::size_t N>
    void writeBars(const std::array<UddfForm, N>& forms,
                   const std::array<SampleArray DiveProfile::*, N>& arrays, int at) {
        for (std::size_t k = 0; k < N; ++k) {
            writeBar(forms[k], (profile_.*arrays[k])[at]);
        }
    }

    void writeGas(int sample) {
        const int gas = gasOf(profile_, sample);
        if (gas != gas_) {
            writeSwitch(gas);
        }
    }

    void writeSwitch(int gas) {
        text_.put(forms_.gas.before).put(UddfGases::idBefore());
        gaps_.push_back(text_.size());
        text_.put(UddfGases::idBehind(gas)).put(forms_.gas.behind);
        gas_ = gas;
    }

    static const char* modeOf(bool closed) { return closed ? "closedcircuit" : "opencircuit"; }

    void writeMode(int sample) {
        const bool closed = isBar(profile_.setpoint[sample - 1]);
        if (closed != closed_) {
            text_.fill(forms_.mode, modeOf(closed));
            closed_ = closed;
        }
    }

    const Forms& forms_ = forms();
    const WholeDive& dive_;
    const DiveProfile& profile_;
    const UddfProfile& told_;
    const double interval_;
    UddfBytes text_;
    std::vector<qsizetype> gaps_;
    LostKinds lost_;
    int gas_ = 0;         ///< of the waypoint before
    bool closed_ = false; ///< its mode
};

} // namespace

UddfProfile::UddfProfile(const WholeDive& dive) {
    const DiveProfile& profile = dive.profile;
    temperature = profile.enabled.test(5) && isRecorded(dive, &DiveProfile::temp);
    const auto bar = [&](const SampleArray& array, int at) {
        const float value = array[at];
        impossible = impossible || (value != 0 && !isBar(value));
        return isBar(value) ? value : 0;
    };
    for (int sample = kFirstSample; sample <= dive.lastsample(); ++sample) {
        const int at = sample - 1;
        for (std::size_t cell = 0; cell < cells.size(); ++cell) {
            cells[cell] = bar(profile.*kCells[cell], at) > 0 || cells[cell];
        }
        for (std::size_t tank = 0; tank < tanks.size(); ++tank) {
            if (const float pressure = bar(profile.*kTanks[tank], at); pressure > 0) {
                tanks[tank].last = pressure;
                tanks[tank].first = tanks[tank].first > 0 ? tanks[tank].first : pressure;
            }
        }
        const float celsius = profile.temp[at];
        if (temperature && isTemperature(celsius)) {
            coldest = coldest ? std::min(*coldest, celsius) : celsius;
        }
        highestPo2 = std::max(highestPo2, bar(profile.po2, at));
        bar(profile.setpoint, at);
        const float ceiling = -profile.ceilingneg[at];
        impossible = impossible || !isTemperature(celsius) || depthAt(profile, at) != profile.depthpos[at] ||
                     (ceiling != 0 && !isCeiling(ceiling));
        withoutRow.add(gasOf(profile, sample), dive);
    }
}

UddfSamples uddfSamples(const WholeDive& dive, const UddfProfile& profile, double interval) {
    return Waypoints(dive, profile, interval).all();
}

void writeUddfSamples(UddfXml& xml, const UddfSamples& samples, const QString& name) {
    const QByteArray inFile = name.toLatin1();
    const QByteArrayView bytes(samples.bytes);
    qsizetype done = 0;
    for (const qsizetype gap : samples.gaps) {
        xml.put(bytes.sliced(done, gap - done));
        xml.put(inFile);
        done = gap;
    }
    xml.put(bytes.sliced(done));
}

} // namespace benthor::exports
