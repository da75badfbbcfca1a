#include "viewer/divewords.h"

#include "platform/textformat.h"
#include "profile/gridcells.h"
#include "viewer/pointtip.h"

#include <QStringList>

#include <cmath>

namespace benthor::viewer {

using platform::formatNumber;

namespace {

// Boxes of series by which the reading says what the device has logged.
constexpr int kLoggedPo2 = 3;
constexpr int kLoggedTemperature = 5;
constexpr int kLoggedCells = 9;
constexpr int kLoggedSetpoint = 10;
constexpr int kLoggedCeiling = 11;

QString counted(int count, const char* one, const char* many) {
    return QStringLiteral("%1 %2").arg(count).arg(QLatin1String(count == 1 ? one : many));
}

QString lengthInWords(double length, bool feet) {
    return formatNumber(length, u"#0.0") + (feet ? QStringLiteral(" ft") : QStringLiteral(" m"));
}

QString bars(double value) {
    return formatNumber(value, u"#0.00") + QStringLiteral(" bar");
}

QString degrees(double value, bool feet) {
    return formatNumber(value, u"#0") + (feet ? QStringLiteral(" °F") : QStringLiteral(" °C"));
}

double depthAt(const ToldDive& dive, int row) {
    return std::abs(static_cast<double>(dive.profile.depthneg[row - 1]));
}

double ceilingAt(const ToldDive& dive, int row) {
    return -static_cast<double>(dive.profile.ceilingneg[row - 1]);
}

bool hasSample(const ToldDive& dive, int row) {
    return row >= profile::kFirstSample && row <= dive.lastsample;
}

QString oxygenInWords(const ToldDive& dive, int row) {
    if (dive.profile.enabled.test(kLoggedPo2)) {
        return QStringLiteral("PO2 ") + bars(dive.profile.po2[row - 1]);
    }
    const ComputedPpo2 computed = computedPpo2(dive.profile, dive.gases, row, dive.feet);
    return QStringLiteral("PO2 ") + bars(computed.shown) + QStringLiteral(" as computed");
}

QString gasInWords(const ToldDive& dive, int row) {
    const QString name = profile::gasNameAt(dive.profile, dive.gasNames, row);
    return name.isEmpty() ? QStringLiteral("gas unknown") : QStringLiteral("gas ") + name;
}

QString when(const ToldDive& dive, int row) {
    return QStringLiteral("at ") + spokenTime(row * dive.interval);
}

/// "TX18/45 from the start, Air at 20 minutes"; of many changes the number.
QString gasesInWords(const ToldDive& dive) {
    constexpr qsizetype kMostTold = 8;
    QStringList told;
    QString before;
    for (int row = profile::kFirstSample; row <= dive.lastsample; ++row) {
        const QString name = profile::gasNameAt(dive.profile, dive.gasNames, row);
        if (!name.isEmpty() && name != before) {
            told += name + u' ' + (told.isEmpty() ? QStringLiteral("from the start") : when(dive, row));
            before = name;
        }
    }
    if (told.isEmpty()) {
        return {};
    }
    const qsizetype more = told.size() - kMostTold;
    if (more > 0) {
        told = told.first(kMostTold);
        told += counted(static_cast<int>(more), "more change", "more changes");
    }
    return QStringLiteral("Breathed: %1.").arg(told.join(QStringLiteral(", ")));
}

/// Row of the greatest value, the first of several.
template <class Value> int rowOfMost(const ToldDive& dive, const Value& value) {
    int most = profile::kFirstSample;
    for (int row = most; row <= dive.lastsample; ++row) {
        most = value(row) > value(most) ? row : most;
    }
    return most;
}

QString depthsInWords(const ToldDive& dive) {
    const int deepest = rowOfMost(dive, [&dive](int row) { return depthAt(dive, row); });
    return QStringLiteral("Deepest %1: %2.")
        .arg(when(dive, deepest), lengthInWords(depthAt(dive, deepest), dive.feet));
}

QString oxygenRange(const ToldDive& dive) {
    if (!dive.profile.enabled.test(kLoggedPo2)) {
        return {};
    }
    const auto value = [&dive](int row) { return static_cast<double>(dive.profile.po2[row - 1]); };
    const int most = rowOfMost(dive, value);
    const int least = rowOfMost(dive, [&value](int row) { return -value(row); });
    return QStringLiteral("PO2 from %1 %2 to %3 %4.")
        .arg(bars(value(least)), when(dive, least), bars(value(most)), when(dive, most));
}

QString ceilingInWords(const ToldDive& dive) {
    const int most = rowOfMost(dive, [&dive](int row) { return ceilingAt(dive, row); });
    if (!dive.profile.enabled.test(kLoggedCeiling) || ceilingAt(dive, most) <= 0) {
        return QStringLiteral("No ceiling.");
    }
    return QStringLiteral("Deepest ceiling %1 %2.")
        .arg(lengthInWords(ceilingAt(dive, most), dive.feet), when(dive, most));
}

QString temperaturesInWords(const ToldDive& dive) {
    if (!dive.profile.enabled.test(kLoggedTemperature)) {
        return {};
    }
    const auto value = [&dive](int row) { return static_cast<double>(dive.profile.temp[row - 1]); };
    const int warmest = rowOfMost(dive, value);
    const int coldest = rowOfMost(dive, [&value](int row) { return -value(row); });
    return QStringLiteral("Water from %1 to %2.")
        .arg(degrees(value(coldest), dive.feet), degrees(value(warmest), dive.feet));
}

/// How many, and the first of them, so that one knows where to begin.
QString alarmsAndMarks(const ToldDive& dive) {
    int alarms = 0;
    int firstAlarm = 0;
    int marks = 0;
    for (int row = profile::kFirstSample; row <= dive.lastsample; ++row) {
        if (dive.profile.alarmpoint(row)) {
            firstAlarm = alarms++ == 0 ? row : firstAlarm;
        }
        marks += dive.profile.mark[row - 1] > 0 ? 1 : 0;
    }
    const QString told = alarms == 0
                             ? QStringLiteral("No alarms")
                             : QStringLiteral("%1, the first %2: %3")
                                   .arg(counted(alarms, "sample with alarms", "samples with alarms"),
                                        when(dive, firstAlarm), alarmsInWords(dive.profile, firstAlarm));
    return told + (marks == 0 ? QStringLiteral(", no marks.")
                              : QStringLiteral("; %1.").arg(counted(marks, "mark", "marks")));
}

} // namespace

QString spokenTime(double seconds) {
    const auto whole = static_cast<int>(std::lround(std::max(0.0, seconds)));
    constexpr int kMinute = 60;
    constexpr int kHour = 3600;
    QStringList parts;
    if (whole >= kHour) {
        parts += counted(whole / kHour, "hour", "hours");
    }
    if (whole % kHour >= kMinute) {
        parts += counted(whole % kHour / kMinute, "minute", "minutes");
    }
    if (whole % kMinute > 0 || parts.isEmpty()) {
        parts += counted(whole % kMinute, "second", "seconds");
    }
    return parts.join(u' ');
}

QString alarmsInWords(const profile::DiveProfile& profile, int row) {
    if (!profile.alarmpoint(row)) {
        return {};
    }
    QStringList words;
    for (const QString& line : profile.alarmtext(row).split(u'\n')) {
        if (const QString word = line.trimmed(); !word.isEmpty()) {
            words += word;
        }
    }
    return words.join(QStringLiteral(", "));
}

QString sampleInWords(const ToldDive& dive, int row) {
    if (!hasSample(dive, row)) {
        const bool lead = row >= 1 && row < profile::kFirstSample && row <= dive.lastsample;
        return lead ? spokenTime(row * dive.interval) + QStringLiteral(": before the first sample")
                    : QString();
    }
    const profile::DiveProfile& profile = dive.profile;
    const int place = row - 1;
    QStringList words{QStringLiteral("depth ") + lengthInWords(depthAt(dive, row), dive.feet),
                      oxygenInWords(dive, row)};
    if (profile.enabled.test(kLoggedCells)) {
        words += QStringLiteral("cells %1, %2, %3")
                     .arg(formatNumber(profile.cella[place], u"#0.00"),
                          formatNumber(profile.cellb[place], u"#0.00"), bars(profile.cellc[place]));
    }
    if (profile.enabled.test(kLoggedSetpoint)) {
        words += QStringLiteral("setpoint ") + bars(profile.setpoint[place]);
    }
    if (profile.enabled.test(kLoggedCeiling)) {
        const double ceiling = ceilingAt(dive, row);
        words += ceiling > 0 ? QStringLiteral("ceiling ") + lengthInWords(ceiling, dive.feet)
                             : QStringLiteral("no ceiling");
    }
    words += gasInWords(dive, row);
    if (profile.enabled.test(kLoggedTemperature)) {
        words += QStringLiteral("water ") + degrees(profile.temp[place], dive.feet);
    }
    if (const QString alarms = alarmsInWords(profile, row); !alarms.isEmpty()) {
        words += QStringLiteral("alarm: ") + alarms;
    }
    if (profile.mark[place] > 0) {
        words += QStringLiteral("mark");
    }
    return spokenTime(row * dive.interval) + QStringLiteral(": ") + words.join(QStringLiteral("; "));
}

QString diveInWords(const ToldDive& dive, const profile::HeaderBoxes& head) {
    if (!hasSample(dive, profile::kFirstSample)) {
        return {};
    }
    QStringList sentences;
    const QString begun = head.txttimedown.trimmed();
    sentences += QStringLiteral("Dive %1%2, %3, %4 every %5.")
                     .arg(head.txtdiveid, begun.isEmpty() ? QString() : QStringLiteral(" of ") + begun,
                          spokenTime(dive.lastsample * dive.interval),
                          counted(dive.lastsample - profile::kFirstSample + 1, "sample", "samples"),
                          spokenTime(dive.interval));
    for (const QString& sentence : {depthsInWords(dive), gasesInWords(dive), oxygenRange(dive),
                                    ceilingInWords(dive), temperaturesInWords(dive), alarmsAndMarks(dive)}) {
        if (!sentence.isEmpty()) {
            sentences += sentence;
        }
    }
    return sentences.join(u' ');
}

} // namespace benthor::viewer
