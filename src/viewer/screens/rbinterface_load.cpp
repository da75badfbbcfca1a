#include "platform/grid/flexgrid.h"
#include "platform/screen/dialogs.h"
#include "platform/skiperrors.h"
#include "platform/yield.h"
#include "profile/decoder.h"
#include "profile/gridcells.h"
#include "session/process.h"
#include "viewer/screens/chartcard.h"
#include "viewer/screens/divehead.h"
#include "viewer/screens/divemenus.h"
#include "viewer/screens/diverecord.h"
#include "viewer/screens/instrumentpanel.h"
#include "viewer/screens/rbinterface.h"
#include "viewer/screens/seriescolumn.h"
#include "viewer/screens/sidecolumn.h"
#include "viewer/screens/zoombar.h"

#include <QAction>
#include <QPointer>

namespace benthor::viewer {

using platform::skipErrors;

namespace {

constexpr int kTimeWidth = 720; // twips
constexpr int kSampleWidth = 680;

} // namespace

/// What a step cannot read stays as it was, and the next step goes on.
void rbinterface::loading() {
    process().diveviewopen = true;
    divesystem_ = process().divesystem;
    side_->series().disableSeries();
    session_ = {};
    showZoom();
    menus_->mnuSpread->setChecked(false);
    skipErrors([] { adoptLastDive(); });
    dive_ = {process().currentdiveid, {}, {}, 0};
    profile::DiveRow row;
    skipErrors([&] { row = readDiveRow(dive_.diveid, dive_); });
    skipErrors([] { process().depthunit = resolveDisplay(); });
    session_.open(dive_.diveid, row, process().depthunit);
    head_->showHeader(session_.header());
    setWindowTitle(session_.header().caption);

    QString words;
    skipErrors([&] { words = session_.takeGases(readGasRows(dive_.diveid)); });
    if (!words.isEmpty()) {
        platform::dialogs().message(this, words);
    }
    if (isUnloaded()) {
        return;
    }
    diveloadfailed_ = false;
    Command_textfind();
    if (isUnloaded() || diveloadfailed_) {
        return;
    }
    showDive();
    if (resumed_) {
        takeState(*std::exchange(resumed_, std::nullopt));
    }
}

void rbinterface::Command_textfind() {
    const std::optional<QByteArray> bytes = diveFile(session_.header().divefilename);
    if (!bytes) {
        diveloadfailed_ = true;
        showMissingFile();
        platform::dialogs().message(this, QStringLiteral("bad file - delete record and try another"),
                                    platform::BoxKind::Warning);
        return;
    }
    bool unloaded = false; // from then on nothing of this screen is touched
    platform::ThrottledYield yield([this, &unloaded] {
        unloaded = !yieldEvents();
        return !unloaded;
    });
    const QPointer<rbinterface> self(this);
    profile::DecoderHooks hooks;
    hooks.yield = [&] { return !unloaded && yield(); };
    hooks.message = [&](const QString& words) {
        if (!unloaded) {
            platform::dialogs().message(this, words);
            unloaded = self.isNull() || isUnloaded();
        }
    };
    hooks.malformedtenthline = [&] {
        if (!unloaded) {
            chart_->determinexaxis();
        }
    };
    profile::DiveProfile profile = profile::decodeProfile(*bytes, session_.feet(), hooks);
    if (!unloaded) {
        session_.takeProfile(std::move(profile));
    }
}

void rbinterface::showMissingFile() {
    const QString name = session_.header().divefilename;
    chart_->showEmpty(
        (name.isEmpty()
             ? QStringLiteral("The record of this dive names no file.")
             : QStringLiteral("The file of this dive, %1, is not in the folder dbtxt.").arg(name)) +
        QStringLiteral(
            " Delete the record in the dive list and download the dive again, or open another one."));
    for (QWidget* part : std::initializer_list<QWidget*>{&side_->series(), zoombar_, playbar_, panelView_}) {
        part->setEnabled(false);
    }
    menus_->mnuSpread->setEnabled(false);
    menus_->mnudivezoom->setEnabled(false);
    checkUnit();
}

void rbinterface::showDive() {
    SeriesColumn& series = side_->series();
    series.enableSeries(session_.profile().enabled);
    MSFlexGrid1->setCols(profile::kGridColumns);
    for (int column = 0; column < profile::kGridColumns; ++column) {
        MSFlexGrid1->setText(0, column, profile::gridHeading(column));
        MSFlexGrid1->setColumnWidthTwips(column, column == 0 ? kTimeWidth : kSampleWidth);
        MSFlexGrid1->setColumnAlignment(column, Qt::AlignHCenter);
    }
    // Looked at cell by cell: a grid of 25,000 rows is not written out.
    MSFlexGrid1->setTextFunction([this](int row, int column) { return session_.cell(row, column); });
    checkUnit();
    MSFlexGrid1->setRows(session_.settle());
    chart_->determinexaxis();
    series.check(1)->setChecked(true);
    side_->setGases(profile::gasListText(session_.gases(), session_.feet()));
    selectrow(1);
    if (divesystem_ != QLatin1String("KD3")) {
        process().divesystem = QStringLiteral("Rebrether");
        series.check(13)->setChecked(true);
    } else {
        series.check(1)->setChecked(true);
    }
    chart_->showChart();
    chart_->hideTip();
    chart_->tellDive();
}

void rbinterface::checkUnit() {
    side_->checkUnit(session_.feet());
    (session_.feet() ? menus_->mnuunitsfeet : menus_->mnuunitsmeters)->setChecked(true);
}

} // namespace benthor::viewer
