#pragma once

#include <QDateTime>
#include <QString>
#include <optional>

namespace benthor::profile {

/// The fields of a dive's row of the table main that the dive screen shows. No value, or an invalid date, is
/// Null.
struct DiveRow {
    std::optional<QString> duration, dbtxtname, interval, version, otu, datmos, dusage;
    std::optional<QString> maxdepth; ///< metres
    std::optional<QString> location;
    QDateTime startdate, finisheddate;
};

/// What the dive screen shows of them, each under the name of its control.
struct HeaderBoxes {
    QString txtdiveid, txtduration, txtmaxdepth, txttimedown, txtinterval, txtversion, txtotu, txtatmos,
        txtdusageh;
    QString lblmaxdepth;  ///< "metres" or "Feet"
    QString caption;      ///< of the window
    QString divefilename; ///< name of the dive's text in dbtxt
    QString finished;     ///< end of the dive, held when the unit is metric
};

/// The unit in force: the override of this run if it is "Feet" or "metre", otherwise the word of the table
/// Display.
QString resolveUnit(const QString& override, const QString& tableWord);

/// Whether the unit word means feet; any other word is metric.
bool isFeet(const QString& unit);

/// A Null gives an empty box, and so does a maximum depth that is empty.
HeaderBoxes headerBoxes(const QString& diveid, const DiveRow& row, bool feet);

} // namespace benthor::profile
