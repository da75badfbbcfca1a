#pragma once

#include "simulator/course.h"
#include "simulator/dive.h"

#include <array>

namespace benthor::simulator {

/// Raises the alarms of each sample. A danger stands for as long as it lasts; a notice is given for two
/// samples and comes again after a quarter of an hour if its cause stays.
class AlarmWatch {
public:
    /// `lowpo2` and `opencircuit` as the loop's watch sees them; `rise` in metres a minute.
    void watch(Sample& sample, Phase phase, double rise, double disagreement, bool lowpo2, bool opencircuit);

private:
    void notice(Sample& sample, Alarm alarm, bool cause);

    struct Notice {
        double next = 0; ///< second from which it may be given again
        int left = 0;    ///< samples that still carry it
    };

    std::array<Notice, alarmkinds> notices_{};
    int gas_ = -1;
    bool open_ = false;
};

} // namespace benthor::simulator
