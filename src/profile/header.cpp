#include "profile/header.h"

#include "platform/textformat.h"
#include "store/depthunits.h"

namespace benthor::profile {

namespace {

QString maxDepthText(const QString& maxdepth, bool feet) {
    if (maxdepth.trimmed().isEmpty()) {
        return {};
    }
    const double metres = platform::leadingNumber(maxdepth);
    return feet ? platform::formatNumber(metres * store::kFeetPerMetre, u"########0.00")
                : QString::number(platform::toWhole(metres));
}

} // namespace

QString resolveUnit(const QString& override, const QString& tableWord) {
    const bool overrides = override == QLatin1String("Feet") || override == QLatin1String("metre");
    return overrides ? override : tableWord;
}

bool isFeet(const QString& unit) {
    return unit == QLatin1String("Feet");
}

HeaderBoxes headerBoxes(const QString& diveid, const DiveRow& row, bool feet) {
    HeaderBoxes boxes;
    boxes.txtdiveid = diveid;
    boxes.txtduration = row.duration.value_or(QString());
    boxes.divefilename = row.dbtxtname.value_or(QString());
    boxes.txtmaxdepth = maxDepthText(row.maxdepth.value_or(QString()), feet);
    if (feet) {
        boxes.lblmaxdepth = QStringLiteral("Feet");
        boxes.txttimedown = platform::formatDate(row.startdate, u"dd/mmm/yyyy hh:mm:ss");
    } else {
        boxes.lblmaxdepth = QStringLiteral("metres");
        boxes.txttimedown = platform::formatDate(row.startdate, u"dd/mmm/yyyy hh:nn:ss");
        boxes.finished = platform::formatDate(row.finisheddate, u"dd/mmm/yyyy hh:nn:ss");
    }
    boxes.txtinterval = row.interval.value_or(QString());
    boxes.txtversion = row.version.value_or(QString());
    boxes.txtotu = row.otu.value_or(QString());
    boxes.txtatmos = row.datmos.value_or(QString());
    boxes.txtdusageh = row.dusage.value_or(QString());
    boxes.caption = QStringLiteral("RB Profile - ") + row.location.value_or(QString());
    return boxes;
}

} // namespace benthor::profile
