// What the chart says to those who do not see it.

#include "platform/chart/chart.h"
#include "platform/look/access/access.h"
#include "viewer/screens/chartcard.h"

namespace benthor::viewer {

ToldDive ChartCard::toldDive() const {
    return {session_.profile(),    session_.gases(),    session_.gasNames(),
            session_.lastsample(), session_.interval(), session_.feet()};
}

void ChartCard::tellDive() {
    MSChart1->setAccessibleDescription(diveInWords(toldDive(), session_.header()));
    alarmsTold_.clear();
    tellSample();
}

void ChartCard::tellSample() {
    const int row = session_.currentrow();
    const QString words = sampleInWords(toldDive(), row);
    if (words.isEmpty()) {
        look::setReading(MSChart1, std::nullopt);
        return;
    }
    look::setReading(MSChart1, look::Reading{.value = static_cast<double>(row),
                                             .least = 1,
                                             .most = static_cast<double>(session_.lastsample()),
                                             .words = words});
}

void ChartCard::announceSample() {
    if (const auto reading = look::readingOf(MSChart1)) {
        look::announce(this, reading->words);
    }
}

void ChartCard::announceAlarms() {
    const int row = session_.currentrow();
    const bool sample = row >= profile::kFirstSample && row <= session_.lastsample();
    const QString alarms = sample ? alarmsInWords(session_.profile(), row) : QString();
    if (!alarms.isEmpty() && alarms != alarmsTold_) {
        look::announce(this,
                       QStringLiteral("Alarm at %1: %2").arg(spokenTime(row * session_.interval()), alarms));
    }
    alarmsTold_ = alarms;
}

} // namespace benthor::viewer
