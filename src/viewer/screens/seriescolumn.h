#pragma once

#include "platform/look/widgets/card.h"
#include "viewer/chartdata.h"
#include "viewer/screens/viewerstate.h"

#include <QCheckBox>

class QVBoxLayout;

namespace benthor::look {
class SeriesBox;
}

namespace benthor::viewer {

/// The boxes Check1 to Check14 and Check15(0) to (2) that choose the series of the chart, in groups. Only
/// Check1 is enabled from the start.
class SeriesColumn : public look::Card {
    Q_OBJECT

public:
    explicit SeriesColumn(QWidget* parent = nullptr);

    /// 1 to 14.
    QCheckBox* check(int number) const;
    /// 0 to 2.
    QCheckBox* check15(int index) const;
    /// Which boxes stand checked.
    SeriesBoxes boxes() const;

    /// Disables Check2 to Check13.
    void disableSeries();
    /// Enables each Check<k> whose bit k is set; the others stay as they are.
    void enableSeries(const std::bitset<16>& enabled);

    /// Off, all boxes of the research are disabled; on, two of the sticks alone come back.
    void setResearch(bool on);

    /// Which boxes can be chosen and which are; taken over without a change for each of them.
    void saveTo(ViewerState& state) const;
    void takeFrom(const ViewerState& state);

    /// Closer rows, for small windows.
    void setDense(bool dense);

    /// The width in which no caption or swatch is cut.
    int neededWidth() const;

signals:
    /// A box was checked or unchecked, by the user or by code.
    void changed();

private:
    struct Entry;
    void addGroup(const QString& title, const std::vector<Entry>& entries);
    void excludeEachOther(int index);

    QWidget* content_ = nullptr;
    QVBoxLayout* column_ = nullptr;
    std::array<look::SeriesBox*, 15> check_{}; ///< [0] stays empty
    std::array<look::SeriesBox*, 3> check15_{};
};

} // namespace benthor::viewer
