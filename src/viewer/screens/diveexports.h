#pragma once

#include "platform/screen/screen.h"
#include "viewer/divesession.h"
#include "viewer/screens/diveact.h"

namespace benthor::platform {
class FlexGrid;
}

namespace benthor::viewer {

class ChartCard;
class DiveHead;

/// Files and paper: what leaves the dive screen.
class DiveExports {
public:
    /// What it exports from. `showGrid` brings the data grid up before the screen is printed.
    struct Parts {
        platform::Screen& screen;
        DiveSession& session;
        DiveHead& head;
        ChartCard& chart;
        platform::FlexGrid& grid;
        std::function<void()> showGrid;
    };

    explicit DiveExports(Parts parts)
        : parts_(std::move(parts)) {}

    /// Does it if it is one of the exports and prints.
    void act(DiveAct act);

private:
    void saveCsv();
    void saveDan();
    void saveFullProfile(bool zxu);
    void saveChart();
    void printScreen();
    void printGrid();
    void printDivePage();
    void printSamplePages();
    void headGrid();
    QString readMetric(profile::DiveProfile& profile) const;

    DiveSession& session() const { return parts_.session; }

    Parts parts_;
    QString dialogfilter_; ///< of the save dialog; the table's export sets its own behind the dialog
};

} // namespace benthor::viewer
