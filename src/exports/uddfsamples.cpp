#include "exports/uddfsamples.h"

#include "exports/samplecolumns.h"
#include "platform/textformat.h"

#include <cmath>

namespace benthor::exports {

namespace {

using profile::DiveProfile;
using profile::kFirstSample;
using profile::SampleArray;

constexpr double kPascalPerBar = 100000;
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

QString barText(float bar) {
    return pascalText(bar * kPascalPerBar);
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

class Waypoints {
public:
    Waypoints(UddfXml& xml, const WholeDive& dive, const UddfProfile& told, const QString& name,
              double interval, LostKinds& lost)
        : xml_(xml)
        , dive_(dive)
        , profile_(dive.profile)
        , told_(told)
        , name_(name)
        , interval_(interval)
        , lost_(lost) {
        for (std::size_t cell = 0; cell < cellIds_.size(); ++cell) {
            cellIds_[cell] = UddfParts::cellId(cell);
        }
        for (std::size_t tank = 0; tank < tankIds_.size(); ++tank) {
            tankIds_[tank] = UddfParts::tankId(tank);
        }
    }

    void writeAll() {
        writeLead();
        for (int sample = kFirstSample; sample <= dive_.lastsample(); ++sample) {
            write(sample);
        }
    }

private:
    /// Breathed at the start is what the first record tells.
    void writeLead() {
        xml_.open(QStringLiteral("waypoint"));
        xml_.leaf(QStringLiteral("depth"), QStringLiteral("0"));
        xml_.leaf(QStringLiteral("divetime"), QStringLiteral("0"));
        writeGas(kFirstSample);
        writeMode(kFirstSample);
        xml_.close();
    }

    /// The format has an order for the elements of a waypoint.
    void write(int sample) {
        const int at = sample - 1;
        xml_.open(QStringLiteral("waypoint"));
        const QString marker = writeAlarms(sample);
        writeCeiling(-profile_.ceilingneg[at]);
        writeBar(QStringLiteral("calculatedpo2"), profile_.po2[at]);
        xml_.leaf(QStringLiteral("depth"), decimalText(depthAt(profile_, at)));
        xml_.leaf(QStringLiteral("divetime"), decimalText(sample * interval_));
        if (!marker.isEmpty()) {
            xml_.text(QStringLiteral("setmarker"), marker);
        }
        if (isBar(profile_.setpoint[at])) {
            xml_.leaf(QStringLiteral("setpo2"), QStringLiteral("setby"), QStringLiteral("computer"),
                      barText(profile_.setpoint[at]));
        }
        writeGas(sample);
        writeRefs(QStringLiteral("tankpressure"), kTanks, tankIds_, at);
        if (told_.temperature && isTemperature(profile_.temp[at])) {
            xml_.leaf(QStringLiteral("temperature"), kelvinText(profile_.temp[at]));
        }
        writeMode(sample);
        writeRefs(QStringLiteral("measuredpo2"), kCells, cellIds_, at);
        xml_.close();
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
                xml_.leaf(QStringLiteral("alarm"), word);
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

    void writeCeiling(float ceiling) {
        if (isCeiling(ceiling)) {
            xml_.open(QStringLiteral("decostop"));
            xml_.attribute(QStringLiteral("kind"), QStringLiteral("mandatory"));
            xml_.attribute(QStringLiteral("decodepth"), decimalText(ceiling));
            xml_.attribute(QStringLiteral("duration"), QStringLiteral("0")); // not recorded
            xml_.close();
        }
    }

    void writeBar(const QString& element, float bar) {
        if (isBar(bar)) {
            xml_.leaf(element, barText(bar));
        }
    }

    template <std::size_t N>
    void writeRefs(const QString& element, const std::array<SampleArray DiveProfile::*, N>& arrays,
                   const std::array<QString, N>& ids, int at) {
        for (std::size_t k = 0; k < N; ++k) {
            if (const float bar = (profile_.*arrays[k])[at]; isBar(bar)) {
                xml_.leaf(element, QStringLiteral("ref"), ids[k], barText(bar));
            }
        }
    }

    void writeGas(int sample) {
        const int gas = gasOf(profile_, sample);
        if (gas != gas_) {
            xml_.mark(QStringLiteral("switchmix"), QStringLiteral("ref"), UddfGases::id(name_, gas));
            gas_ = gas;
        }
    }

    void writeMode(int sample) {
        const bool closed = isBar(profile_.setpoint[sample - 1]);
        if (closed != closed_) {
            xml_.mark(QStringLiteral("divemode"), QStringLiteral("type"),
                      closed ? QStringLiteral("closedcircuit") : QStringLiteral("opencircuit"));
            closed_ = closed;
        }
    }

    UddfXml& xml_;
    const WholeDive& dive_;
    const DiveProfile& profile_;
    const UddfProfile& told_;
    const QString& name_;
    const double interval_;
    LostKinds& lost_;
    std::array<QString, UddfParts::kCells> cellIds_;
    std::array<QString, UddfParts::kTanks> tankIds_;
    std::optional<int> gas_;
    std::optional<bool> closed_;
};

} // namespace

UddfProfile::UddfProfile(const WholeDive& dive) {
    const DiveProfile& profile = dive.profile;
    const SampleColumn temp{"temp", "C", &DiveProfile::temp};
    temperature = profile.enabled.test(5) && isRecorded(dive, temp);
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

void writeUddfSamples(UddfXml& xml, const WholeDive& dive, const UddfProfile& profile, const QString& name,
                      double interval, LostKinds& lost) {
    xml.open(QStringLiteral("samples"));
    Waypoints(xml, dive, profile, name, interval, lost).writeAll();
    xml.close();
}

} // namespace benthor::exports
