#pragma once

#include "profile/diveprofile.h"
#include "profile/gaslist.h"
#include "viewer/screens/chartpicture.h"

#include <QList>
#include <functional>

class QPrinter;

namespace benthor::viewer {

/// A value of the head with what it is.
struct PaperValue {
    QString caption;
    QString value;
};

/// The chart as vectors below its title and the values of the head, all on one page. The caller has the light
/// theme in force: a page is white. False when the printer takes nothing.
bool printDive(QPrinter& printer, const QString& title, const QList<PaperValue>& head,
               const ChartPictureParts& parts);

/// The samples of a dive for a print.
struct PaperSamples {
    QString title; ///< at the foot of each page, before its number
    const profile::DiveProfile& profile;
    const profile::GasNames& gasname;
    double interval = 0; ///< seconds between samples
    int lastsample = 0;
};

/// All samples at a size that can be read, on as many pages as that takes. `goOn` is told how many pages of
/// how many are done, from 0 on; false ends the print. False when it was ended or the printer takes nothing.
bool printSamples(QPrinter& printer, const PaperSamples& samples,
                  const std::function<bool(int done, int pages)>& goOn);

} // namespace benthor::viewer
