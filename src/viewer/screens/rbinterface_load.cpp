#include "divefiles/owedprofiles.h"
#include "platform/chart/chart.h"
#include "platform/filename.h"
#include "platform/grid/flexgrid.h"
#include "platform/programfolder.h"
#include "platform/screen/dialogs.h"
#include "platform/skiperrors.h"
#include "platform/yield.h"
#include "shell/process.h"
#include "store/access.h"
#include "store/units.h"
#include "viewer/decoder.h"
#include "viewer/gridcells.h"
#include "viewer/screens/divehead.h"
#include "viewer/screens/instrumentpanel.h"
#include "viewer/screens/playbar.h"
#include "viewer/screens/rbinterface.h"
#include "viewer/screens/recordrows.h"
#include "viewer/screens/seriescolumn.h"
#include "viewer/screens/tipbox.h"
#include "viewer/screens/zoombar.h"

#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QStackedWidget>

namespace benthor::viewer {

using platform::Recordset;
using platform::skipErrors;
using platform::sqlWith;
using platform::Value;

namespace {

constexpr int kTimeWidth = 720; // twips
constexpr int kSampleWidth = 680;

/// 32,100 lines are read at most; a line of the device is shorter than 200 bytes, so this is ten times more
/// than any dive needs, and whatever lies in the folder fits into memory.
constexpr qint64 kMostBytes = 64LL * 1024 * 1024;
/// A name that was found has at least as many characters.
constexpr qsizetype kShortestName = 3;

std::optional<QString> fieldText(const Recordset& row, QStringView name) {
    std::optional<QString> text;
    skipErrors([&] {
        if (const Value value = row.value(name); !value.isNull()) {
            text = value.text();
        }
    });
    return text;
}

QDateTime fieldMoment(const Recordset& row, QStringView name) {
    QDateTime moment;
    skipErrors([&] { moment = row.value(name).dateTime(); });
    return moment;
}

/// The bytes of a dive file in the folder dbtxt, or of its copy in `old` where an import owes the one in
/// dbtxt; nothing when it is not found.
std::optional<QByteArray> diveFile(const QString& name) {
    if (name.size() < kShortestName || !platform::isFileName(name)) {
        return std::nullopt;
    }
    return platform::readFile(
        divefiles::profilepath(platform::ProgramFolder::current(), process().database, name), kMostBytes);
}

} // namespace

/// What a step cannot read stays as it was, and the next step goes on.
void rbinterface::loading() {
    process().diveviewopen = true;
    divesystem_ = process().divesystem;
    resetControls();
    skipErrors([this] { adoptLastDive(); });
    dive_ = {process().currentdiveid, {}, {}, 0};
    DiveRow row;
    skipErrors([&] { row = readDiveRow(); });
    skipErrors([this] { process().depthunit = resolveDisplay(); });
    unitword_ = process().depthunit;
    feet_ = isFeet(unitword_);
    startdate_ = row.startdate;
    finisheddate_ = row.finisheddate;
    header_ = headerBoxes(dive_.diveid, row, feet_);
    head_->showHeader(header_);
    setWindowTitle(header_.caption);

    skipErrors([this] { readgaslist(); });
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

void rbinterface::resetControls() {
    series_->disableSeries();
    zoom_ = {};
    showZoom();
    currentrow_ = selectedrow_ = playspeed_ = 1;
    panel_ = {};
    mnuSpread->setChecked(false);
}

void rbinterface::adoptLastDive() {
    if (!process().currentdiveid.isEmpty()) {
        return;
    }
    store::openmain(process().database, sqlWith("SELECT DiveID, systemid FROM main  WHERE SystemID = '",
                                                process().divesystem, "'  order by DiveID "));
    process().mainrecordset.moveLast();
    process().currentdiveid = process().mainrecordset.value(u"DiveID").text();
}

DiveRow rbinterface::readDiveRow() {
    store::openmain(process().database, sqlWith("SELECT * FROM main WHERE DiveID = '", dive_.diveid, "'"));
    const Recordset& row = process().mainrecordset;
    skipErrors([&] { dive_ = store::identityOf(row); });
    return {.duration = fieldText(row, u"duration"),
            .dbtxtname = fieldText(row, u"dbtxtname"),
            .interval = fieldText(row, u"interval"),
            .version = fieldText(row, u"version"),
            .otu = fieldText(row, u"otu"),
            .datmos = fieldText(row, u"datmos"),
            .dusage = fieldText(row, u"dusage"),
            .maxdepth = fieldText(row, u"maxdepth"),
            .location = fieldText(row, u"location"),
            .startdate = fieldMoment(row, u"startdate"),
            .finisheddate = fieldMoment(row, u"finisheddate")};
}

QString rbinterface::resolveDisplay() {
    const QString chosen = resolveUnit(process().unitoverride, {});
    if (!chosen.isEmpty()) {
        return chosen;
    }
    return store::readunit();
}

void rbinterface::readgaslist() {
    store::openmain(process().database, sqlWith("SELECT * FROM GAS  where DiveID = '", dive_.diveid, "'"));
    if (const QString words = viewer::readgaslist(rowsOf(process().mainrecordset), feet_, gases_);
        !words.isEmpty()) {
        platform::dialogs().message(this, words);
    }
}

/// The gas rows of the dive shown, by a query of their own: what ran in the program since the load has no
/// part in them.
std::vector<GasRow> rbinterface::gasRowsOfDive() {
    Recordset rows = process().database.openRecordset(
        sqlWith("SELECT * FROM GAS  where DiveID = '", header_.txtdiveid, "'"));
    return rowsOf(rows);
}

/// The dive once more in metres, for a screen that shows it in feet. Returns why it cannot be read, or
/// nothing: the file may be gone, or another one under its name.
QString rbinterface::readMetric(DiveProfile& profile) {
    const std::optional<QByteArray> bytes = diveFile(header_.divefilename);
    if (!bytes) {
        return QStringLiteral("The file of this dive, %1, is not in the folder dbtxt.")
            .arg(header_.divefilename);
    }
    profile = decodeProfile(*bytes, false);
    const auto shown = profile_.depthpos.values();
    const auto read = profile.depthpos.values();
    if (profile.lastsample - 1 != lastsample_ ||
        !std::equal(shown.begin(), shown.end(), read.begin(), read.end())) {
        return QStringLiteral("The file of this dive, %1, is no longer the one that is shown. Open the dive "
                              "again.")
            .arg(header_.divefilename);
    }
    return {};
}

void rbinterface::Command_textfind() {
    const std::optional<QByteArray> bytes = diveFile(header_.divefilename);
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
    DecoderHooks hooks;
    hooks.yield = [&] { return !unloaded && yield(); };
    hooks.message = [&](const QString& words) {
        if (!unloaded) {
            platform::dialogs().message(this, words);
            unloaded = self.isNull() || isUnloaded();
        }
    };
    hooks.malformedtenthline = [&] {
        if (!unloaded) {
            determinexaxis();
        }
    };
    DiveProfile profile = decodeProfile(*bytes, feet_, hooks);
    if (!unloaded) {
        profile_ = std::move(profile);
        lastsample_ = profile_.lastsample;
    }
}

void rbinterface::showMissingFile() {
    const QString name = header_.divefilename;
    emptyText_->setText(
        (name.isEmpty()
             ? QStringLiteral("The record of this dive names no file.")
             : QStringLiteral("The file of this dive, %1, is not in the folder dbtxt.").arg(name)) +
        QStringLiteral(
            " Delete the record in the dive list and download the dive again, or open another one."));
    chartPages_->setCurrentIndex(1);
    for (QWidget* part : std::initializer_list<QWidget*>{series_, zoombar_, playbar_, panelView_}) {
        part->setEnabled(false);
    }
    mnuSpread->setEnabled(false);
    mnudivezoom->setEnabled(false);
    checkUnit();
}

void rbinterface::showDive() {
    series_->enableSeries(profile_.enabled);
    for (size_t i = 0; i < panel_.Frame4.size(); ++i) {
        if (profile_.maskshidden.test(i)) {
            panel_.Frame4[i] = false;
        }
    }
    gasname_ = gasNames(gases_);
    prepareGrid();
    checkUnit();
    MSFlexGrid1->setRows(lastsample_);
    --lastsample_;
    gasrownames_ = gasRowNames(profile_, gasname_, lastsample_);
    determinexaxis();
    series_->check(1)->setChecked(true);
    gasList->setText(gasListText(gases_, feet_));
    selectrow(1);
    if (divesystem_ != QLatin1String("KD3")) {
        process().divesystem = QStringLiteral("Rebrether");
        series_->check(13)->setChecked(true);
    } else {
        series_->check(1)->setChecked(true);
    }
    MSChart1->show();
    Text8->hide();
}

void rbinterface::prepareGrid() {
    MSFlexGrid1->setCols(kGridColumns);
    for (int column = 0; column < kGridColumns; ++column) {
        MSFlexGrid1->setText(0, column, gridHeading(column));
        MSFlexGrid1->setColumnWidthTwips(column, column == 0 ? kTimeWidth : kSampleWidth);
        MSFlexGrid1->setColumnAlignment(column, Qt::AlignHCenter);
    }
    // Looked at cell by cell: a grid of 25,000 rows is not written out.
    MSFlexGrid1->setTextFunction([this, seconds = recordedInterval()](int row, int column) {
        return cellText(profile_, gasname_, seconds, row, column);
    });
}

} // namespace benthor::viewer
