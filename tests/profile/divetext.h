#pragma once

#include "profile/decoder.h"

#include <QByteArrayList>

namespace benthor::profile {

/// A dive text of these lines behind the word "Profile". The first of them is the one that is never decoded,
/// and is put in here.
inline QByteArray diveText(const QByteArrayList& lines) {
    QByteArray text("ver=V3.12\r\nRecint=10\r\nProfile\r\nTime,Depth,Mix\r\n");
    for (const QByteArray& line : lines) {
        text += line + "\r\n";
    }
    return text;
}

/// The same, ended as it should be.
inline QByteArray wholeDive(const QByteArrayList& lines) {
    return diveText(lines) + "End\r\n";
}

inline DiveProfile decoded(const QByteArrayList& lines, bool feet = false) {
    return decodeProfile(wholeDive(lines), feet);
}

/// A record that has all of its fixed fields, and `tail` behind them.
inline QByteArray record(const QByteArray& tail) {
    return ",100,0,70,M0,T20,A500" + tail;
}

inline int recordsOf(const DiveProfile& profile) {
    return profile.lastsample - kFirstSample;
}

/// The value of sample number n.
inline float sampleOf(const SampleArray& array, int n) {
    return array[n - 1];
}

} // namespace benthor::profile
