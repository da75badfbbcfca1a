#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QStringList>

// Three readers of the device's text, written here from the wire form alone, so that the generator is proved
// by something else than the program that will read it.

/// What a scan of the head finds: a thousand bytes looked at one by one, and those that the keywords' lines
/// take.
struct HeadScan {
    QMap<QByteArray, QByteArray> values; ///< by keyword, trimmed; a lost value is missing
    QMap<QByteArray, int> found;         ///< how often each keyword acted
    QList<QList<QByteArray>> gases;
    QList<QList<QByteArray>> tissues;
    int roundsatprofile = -1;
    int actionsbehindprofile = 0;
    bool broken = false; ///< a gas or tissue line with too long or too many fields
};

HeadScan scanHead(const QByteArray& text);

/// The rows of one dive's head as they would be checked in the store; empty when they are good.
QStringList rowFaults(const HeadScan& scan);

/// What a walk through a directory of dives puts into the columns of the first dive, by label.
QMap<QByteArray, QByteArray> walkDirectory(const QByteArray& text);

struct DecodedRecord {
    QList<QByteArray> fields;
    double depth = 0; ///< metres, with the wrap of the count undone
};

struct DecodedProfile {
    QList<DecodedRecord> records;
    bool ended = false; ///< at "End", not at the end of the bytes
    int mostfields = 0;
    int dropped = 0; ///< lines behind the first that were no records
};

DecodedProfile decodeProfile(const QByteArray& text);
