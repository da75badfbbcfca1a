#pragma once

#include "profile/decoder.h"
#include "profile/gridcells.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <span>
#include <vector>

namespace benthor::profile {

/// What holds for the profile of any bytes whatever. The first promise that `profile` breaks, or nothing.
class ProfileInvariants {
public:
    static QString broken(const DiveProfile& profile, QByteArrayView bytes) {
        const int records = profile.lastsample - kFirstSample;
        if (records < 0 || records > kMostSamples - 3) {
            return QStringLiteral("%1 records").arg(records);
        }
        if (records > bytes.count('\r')) {
            return QStringLiteral("more records than lines");
        }
        for (const QString& complaint :
             {brokenArrays(profile), brokenAlarms(profile), brokenBoxes(profile)}) {
            if (!complaint.isEmpty()) {
                return complaint;
            }
        }
        return {};
    }

private:
    /// Values may stand at positions from `first` to `end` - 1 only.
    static QString brokenArray(const SampleArray& array, int first, int end) {
        static const std::vector<float> zeros(kMostSamples);
        const std::span<const float> values = array.values();
        if (values.empty()) {
            return {};
        }
        const auto held = static_cast<int>(values.size());
        if (held > kMostSamples) {
            return QStringLiteral("an array holds %1 positions").arg(held);
        }
        first = std::min(first, held);
        end = std::min(end, held);
        const auto isZero = [&values](int from, int to) { // as whole blocks: each array has 25,000 positions
            const size_t bytes = static_cast<size_t>(to - from) * sizeof(float);
            return std::memcmp(values.data() + from, zeros.data(), bytes) == 0;
        };
        if (!isZero(0, first) || !isZero(end, held)) {
            return QStringLiteral("a value stands outside the records");
        }
        for (int position = first; position < end; ++position) {
            if (!std::isfinite(values[static_cast<size_t>(position)])) {
                return QStringLiteral("a value is not finite at %1").arg(position);
            }
        }
        return {};
    }

    static QString brokenArrays(const DiveProfile& profile) {
        // A record that ended in a fault may have left values at the position behind the last.
        const int end = profile.lastsample;
        for (int column = 0; column < kGridColumns; ++column) {
            if (const SampleArray* array = gridArray(profile, column)) {
                if (const QString complaint = brokenArray(*array, kFirstSample - 1, end);
                    !complaint.isEmpty()) {
                    return QStringLiteral("column %1: %2").arg(QString::number(column), complaint);
                }
            }
        }
        for (const auto* stick : {&profile.tpmstick0, &profile.tpmstick1, &profile.tpmstick2}) {
            for (const SampleArray& channel : *stick) {
                if (const QString complaint = brokenArray(channel, 0, kMostSamples); !complaint.isEmpty()) {
                    return QStringLiteral("stick: %1").arg(complaint);
                }
            }
        }
        return {};
    }

    static QString brokenAlarms(const DiveProfile& profile) {
        const int last = profile.lastsample - 1;
        for (int n : {1, 2, 3, 4, last / 2, last - 1, last}) {
            if (n < 1 || n > last) {
                continue;
            }
            const auto count = static_cast<int>(profile.alarmcount[n - 1]);
            const QString text = profile.alarmtext(n);
            if ((count == 0) != text.isEmpty() || text.count(QLatin1String("\r\n")) != count) {
                return QStringLiteral("sample %1 has %2 tokens, but other text").arg(n).arg(count);
            }
            if (profile.alarmpoint(n) && count == 0) {
                return QStringLiteral("sample %1 is an alarm without a token").arg(n);
            }
        }
        return {};
    }

    static QString brokenBoxes(const DiveProfile& profile) {
        constexpr unsigned long kNeverEnabled = 1U << 0U | 1U << 2U | 1U << 4U | 1U << 13U | 1U << 15U;
        constexpr unsigned long kMasks = 1U << 0U | 1U << 2U | 1U << 5U;
        if ((profile.enabled.to_ulong() & kNeverEnabled) != 0 ||
            (profile.maskshidden.to_ulong() & ~kMasks) != 0) {
            return QStringLiteral("a box or mask that no letter stands for");
        }
        if (profile.lastsample > kFirstSample && (!profile.enabled.test(1) || !profile.enabled.test(5))) {
            return QStringLiteral("records without depth and temperature");
        }
        const QString atEnd = QStringLiteral("end of file unexpected");
        if ((profile.end == ReadingEnd::EndOfFile) != profile.messages.contains(atEnd) ||
            profile.messages.count(atEnd) > 1) {
            return QStringLiteral("end of file without its message, or the message without the end");
        }
        for (const QString& message : profile.messages) {
            if (message != atEnd && message != QLatin1String("Errors - Too many parameter  !")) {
                return QStringLiteral("unknown message: ") + message;
            }
        }
        return {};
    }
};

} // namespace benthor::profile
