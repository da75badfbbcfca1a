#pragma once

namespace benthor::viewer {

/// What a button of the head or an entry of the menus asks of the dive screen.
enum class DiveAct {
    Leave,
    Details,
    Gases,
    Capture,
    SaveCsv,
    SaveDan,
    SaveFullZxu,
    SaveFullCsv,
    SaveOpen,
    SaveChart,
    PrintScreen,
    PrintGrid,
    PrintDive,
    PrintSamples,
    Zoom,
    PanBack,
    PanOn,
    Feet,
    Metres
};

} // namespace benthor::viewer
