#include "simulator/alarmwatch.h"

namespace benthor::simulator {

QByteArrayView alarmWord(Alarm alarm) {
    switch (alarm) {
    case Alarm::Ceiling:
        return "CEILING!";
    case Alarm::LowPo2:
        return "LOW PO2!";
    case Alarm::HighPo2:
        return "HIGH PO2!";
    case Alarm::BailOut:
        return "BAIL OUT";
    case Alarm::Ascent:
        return "ASCENT!";
    case Alarm::CellDifference:
        return "CELL DIFF";
    case Alarm::Filter:
        return "FILTER LOW";
    case Alarm::Battery:
        return "BATTERY LOW";
    case Alarm::GasSwitch:
        return "GAS SWITCH";
    case Alarm::Predive:
        return "PREDIVE";
    }
    return {};
}

void AlarmWatch::notice(Sample& sample, Alarm alarm, bool cause) {
    constexpr int givenfor = 2;
    constexpr double againseconds = 900;
    Notice& notice = notices_[static_cast<std::size_t>(alarm)];
    if (cause && sample.seconds >= notice.next) {
        notice = {sample.seconds + againseconds, givenfor};
    }
    if (cause && notice.left > 0) {
        notice.left -= 1;
        sample.raise(alarm);
    }
}

void AlarmWatch::watch(Sample& sample, Phase phase, double rise, double disagreement, bool lowpo2,
                       bool opencircuit) {
    const bool diving = phase != Phase::Waiting && phase != Phase::Afloat;
    if (phase == Phase::Waiting) {
        sample.raise(Alarm::Predive);
    }
    if (diving && sample.depth < sample.ceiling - 0.1) {
        sample.raise(Alarm::Ceiling);
    }
    if (diving && lowpo2) {
        sample.raise(Alarm::LowPo2);
    }
    if (diving && sample.po2 > 1.72) {
        sample.raise(Alarm::HighPo2);
    }
    if (diving && rise > 13) {
        sample.raise(Alarm::Ascent);
    }
    if (gas_ >= 0 && sample.gas != gas_) {
        sample.raise(opencircuit && !open_ ? Alarm::BailOut : Alarm::GasSwitch);
    }
    gas_ = sample.gas;
    open_ = opencircuit;
    notice(sample, Alarm::CellDifference, diving && !opencircuit && disagreement > 0.12);
    notice(sample, Alarm::Filter, sample.filter < 12);
    notice(sample, Alarm::Battery, sample.mainbattery < 5.45);
}

} // namespace benthor::simulator
