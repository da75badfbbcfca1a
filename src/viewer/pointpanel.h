#pragma once

#include "platform/toldcolour.h"
#include "viewer/thermistors.h"

#include <QString>
#include <array>
#include <bitset>
#include <cstdint>
#include <functional>

namespace benthor::profile {
class SampleArray;
struct DiveProfile;
} // namespace benthor::profile

namespace benthor::viewer {

/// One bar gauge: bit 0 is its base bar, bits 1 to 13 its bars; set is lit.
using GaugeBars = std::uint32_t;
constexpr int kGaugeBars = 13;
constexpr GaugeBars kBaseBar = 1;

/// Bars 1 to 13 for `value`: bar k is lit when the whole part of value x factor, plus 1, exceeds k.
GaugeBars gaugeBars(double value, double factor = 10);

/// The instrument panel: captions, gauges and what is shown of them. A value that a sample does not change
/// keeps what it was.
struct PanelState {
    QString Lbldtime, Lbldepth, lbldgas, Lbldppo2, lblppo2avg, Lbldceiling, Lbldtemp, lbltempf, lbldstack;
    QString lblhpddip, Lbldhpo2, Lbldcella, Lbldcellb, Lbldcellc, Lbldsetpoint;
    QString Text7;                ///< tissue stress, per cent
    std::array<QString, 2> Text9; ///< spread of the thermistors, and the warm front's place
    QString Alarm_Text;
    platform::ToldColour alarmback = platform::kToldWhite; ///< of Alarm_Text
    platform::ToldColour tipback = platform::kToldWhite;   ///< of the tip box

    bool lblppo2avgVisible = true;
    std::array<bool, 2> Label21{true, false}; ///< captions of PPO2 average and tissue stress
    bool Text6Visible = false;                ///< mark label; a ceiling lights it
    bool Text7Visible = false;
    std::array<bool, 5> Shape8{}; ///< base bars: tissue stress, cells a, b, c, PPO2
    std::array<bool, 6> Frame4{true, true, true, true, true, true}; ///< mask panels

    GaugeBars Shape5 = kBaseBar;  ///< HP oxygen
    GaugeBars Shape7 = kBaseBar;  ///< HP diluent
    GaugeBars Shape9 = kBaseBar;  ///< cell a
    GaugeBars Shape10 = kBaseBar; ///< cell b
    GaugeBars Shape11 = kBaseBar; ///< cell c
    GaugeBars Shape12 = kBaseBar; ///< PPO2 average
    GaugeBars Shape6 = 0;         ///< tissue stress
    bool Shape6Visible = false;

    double currentsetpoint = 1.0;
    double tpmspread = 0;
    double tpmpercent = 0;
};

/// A sample as the panel reads it: most of it comes from the texts of the grid.
struct PanelPoint {
    const profile::DiveProfile& profile;
    int row = 1;                             ///< of the grid, from 1
    std::function<QString(int column)> cell; ///< text of a grid column, 0 to 40
    Thermistors thermistors{};               ///< cells 1 to 8 of the second grid; its missing cells are 0
    bool feet = false;
    bool check12 = false; ///< Check12 is enabled
};

/// Reads the row into the panel. The gauges of cells b and c are fed one column out: b shows the third cell,
/// c the setpoint.
void showpoint(PanelState& panel, const PanelPoint& point);

/// The ceiling's gauge: ceiling over depth, both as the grid shows them.
void showTissueStress(PanelState& panel, const QString& ceiling, const QString& depth);

/// Lights the average by a PPO2 that was computed, `metric` bar, where the device logged none.
void showComputedPpo2(PanelState& panel, double metric);

} // namespace benthor::viewer
