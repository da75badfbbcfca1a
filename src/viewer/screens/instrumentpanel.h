#pragma once

#include "platform/look/widgets/card.h"
#include "viewer/pointpanel.h"

class QLabel;
class QPlainTextEdit;

namespace benthor::look {
class Gauge;
class NumberLabel;
} // namespace benthor::look

namespace benthor::viewer {

class HeadNumber;
class MaskPanel;

/// The instruments of the dive screen: what was recorded at the selected sample, in numbers and bar gauges.
class InstrumentPanel : public look::Card {
    Q_OBJECT

public:
    explicit InstrumentPanel(QWidget* parent = nullptr);

    /// `feet`: the unit of ceiling and pressures.
    void showState(const PanelState& state, bool feet);
    /// Size of the depth in pixels of the layout; the other numbers follow it.
    void setNumberSize(int px);

protected:
    void changeEvent(QEvent* event) override;

private:
    QWidget* makeDepthRow();
    QWidget* makeOxygen();
    QWidget* makeCeiling();
    QWidget* makeScrubber();
    QWidget* makeSupply(const char* caption, const char* name, const char* gaugeName, int mask,
                        HeadNumber*& number, look::Gauge*& gauge);
    void takeColours();
    MaskPanel*& mask(int index) { return Frame4[static_cast<std::size_t>(index)]; }

    HeadNumber* Lbldepth = nullptr;
    HeadNumber* Lbldtime = nullptr;
    HeadNumber* lbldgas = nullptr;
    HeadNumber* Lbldppo2 = nullptr;
    HeadNumber* Lbldsetpoint = nullptr;
    QLabel* Label21_0 = nullptr;
    QLabel* lblppo2avg = nullptr;
    QLabel* Lbldcella = nullptr;
    QLabel* Lbldcellb = nullptr;
    QLabel* Lbldcellc = nullptr;
    HeadNumber* Lbldceiling = nullptr;
    QLabel* Text6 = nullptr;
    QLabel* Label21_1 = nullptr;
    look::NumberLabel* Text7 = nullptr;
    HeadNumber* Lbldtemp = nullptr;
    HeadNumber* lbldstack = nullptr;
    HeadNumber* spread_ = nullptr;
    HeadNumber* percent_ = nullptr;
    HeadNumber* Lbldhpo2 = nullptr;
    HeadNumber* lblhpddip = nullptr;
    look::Gauge* Shape5 = nullptr;
    look::Gauge* Shape6 = nullptr;
    look::Gauge* Shape7 = nullptr;
    look::Gauge* Shape9 = nullptr;
    look::Gauge* Shape10 = nullptr;
    look::Gauge* Shape11 = nullptr;
    look::Gauge* Shape12 = nullptr;
    std::array<QWidget*, 5> Shape8{}; ///< the ground that each of these gauges stands on
    QPlainTextEdit* Alarm_Text = nullptr;
    std::array<MaskPanel*, 6> Frame4{};
    int numberSize_ = 0;
};

} // namespace benthor::viewer
