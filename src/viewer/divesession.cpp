#include "viewer/divesession.h"

#include "platform/textformat.h"
#include "profile/gridcells.h"

namespace benthor::viewer {

void DiveSession::open(const QString& diveid, const profile::DiveRow& row, const QString& unitword) {
    *this = DiveSession();
    unitword_ = unitword;
    feet_ = profile::isFeet(unitword);
    startdate_ = row.startdate;
    finisheddate_ = row.finisheddate;
    header_ = profile::headerBoxes(diveid, row, feet_);
}

QString DiveSession::takeGases(const std::vector<profile::GasRow>& rows) {
    return profile::readgaslist(rows, feet_, gases_);
}

void DiveSession::takeProfile(profile::DiveProfile profile) {
    profile_ = std::move(profile);
    lastsample_ = profile_.lastsample;
}

int DiveSession::settle() {
    for (size_t i = 0; i < panel_.Frame4.size(); ++i) {
        if (profile_.maskshidden.test(i)) {
            panel_.Frame4[i] = false;
        }
    }
    gasname_ = profile::gasNames(gases_);
    const int rows = lastsample_--;
    gasrownames_ = gasRowNames(profile_, gasname_, lastsample_);
    return rows;
}

double DiveSession::interval() const {
    return platform::leadingNumber(QStringView(header_.txtinterval));
}

QString DiveSession::cell(int row, int column) const {
    return profile::cellText(profile_, gasname_, interval(), row, column);
}

RowSelection DiveSession::select(int row) {
    selectedrow_ = row;
    return selectRow(row, currentrow_, zoom_.zoomfactor);
}

bool DiveSession::show(int row, const PanelSource& source) {
    selectedrow_ = row;
    if (row < 1 || row > lastsample_) {
        return false;
    }
    showpoint(panel_, {.profile = profile_,
                       .row = row,
                       .cell = source.cell,
                       .thermistors = source.thermistors,
                       .feet = feet_,
                       .check12 = source.check12});
    currentrow_ = row;
    if (!source.check3) {
        showComputedPpo2(panel_, computedPpo2(profile_, gases_, row, feet_).metric);
    }
    return true;
}

PointTip DiveSession::tip(const SeriesBoxes& boxes, bool check3) const {
    return pointTip(profile_, gases_, gasname_, currentrow_, {boxes, check3, unitword_, feet_});
}

ViewChange DiveSession::follow() {
    if (free_) {
        return takeFreeView(followed(*free_, currentrow_, lastsample_));
    }
    const bool turned = zoom_.zoomed() && !strip().found && turnPage(zoom_, currentrow_, lastsample_);
    return turned ? ViewChange::Plot : ViewChange::None;
}

std::optional<int> DiveSession::stepped(int by) {
    if (lastsample_ < 1) {
        return std::nullopt;
    }
    selectedrow_ = manualStep(selectedrow_, by, lastsample_);
    return selectedrow_ < 1 ? std::nullopt : std::optional(selectedrow_);
}

std::optional<int> DiveSession::walked(SampleStep way) const {
    return lastsample_ > 1 ? std::optional(walkedRow(way, currentrow_, lastsample_, shownRows()))
                           : std::nullopt;
}

std::optional<int> DiveSession::alarmAhead() const {
    const int row = nextAlarm(profile_, currentrow_, lastsample_);
    return row > 0 ? std::optional(row) : std::nullopt;
}

std::optional<int> DiveSession::markAhead() const {
    const int row = nextMark(profile_, currentrow_, lastsample_);
    return row > 0 ? std::optional(row) : std::nullopt;
}

} // namespace benthor::viewer
