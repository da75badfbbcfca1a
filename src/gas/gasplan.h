#pragma once

#include "platform/toldcolour.h"

#include <QString>

#include <array>
#include <functional>
#include <optional>

namespace benthor::gas {

constexpr int kGases = 10;

/// Background of a cell.
inline constexpr platform::ToldColour kLightCyan = 0xFFFFC0;
inline constexpr platform::ToldColour kLightYellow = 0x80FFFF;
inline constexpr platform::ToldColour kOrange = 0x80C0FF;

/// Depth units to a bar of pressure, and the pressure at the surface in bar.
inline constexpr double kMetresPerBar = 10.0;
inline constexpr double kFeetPerBar = 32.098;
inline constexpr double kSurfacePressure = 1.0000000000001;

/// One gas as its row shows it. Texts are the cells' own: O2 and He in whole per cent, MOD in the depth unit,
/// PPO2 at MOD in bar.
struct GasRow {
    QString name;
    QString O2;
    QString He;
    QString MOD = QStringLiteral("MOD");
    QString PPO2 = QStringLiteral("PPO2");
    QString EAND;
    bool active = false;
    bool cellsEnabled = true;  ///< O2, He and MOD can be written into
    bool activeEnabled = true; ///< its active box can be worked
    bool startEnabled = true;  ///< it can be chosen as the starting gas
    platform::ToldColour HeColour = kLightCyan;
    platform::ToldColour pressureColour = kLightCyan; ///< of MOD and PPO2

    // Where its numbers come from. No cell shows it; what is said before a setup goes out rests on it.
    bool changed = false; ///< by the diver, or computed anew from the greatest PPO2
    bool owed = false; ///< a change of unit or of the greatest PPO2 should have computed its MOD and did not
    bool MODtyped = false; ///< its MOD was typed and not computed since
    bool MODread = false;  ///< its MOD was read from a setup text and not written or computed since
};

/// The device's settings as their controls show them. Lists by index from 0.
struct Settings {
    int divegas = 0;
    int backlight = 0;
    int laststop = 0;
    bool hudhi = false;
    QString sptext = QStringLiteral("1.40"); ///< PPO2 setpoint in bar
    bool silent = false;
    bool biggraphics = false;
    int cns = 0;
    int safety = 0;
    QString ScreenSaveText = QStringLiteral("120"); ///< seconds
    QString HomeText = QStringLiteral("30");        ///< seconds
    bool closed = false;
    bool operator==(const Settings&) const = default;
};

/// The bar graph of the gas in hand, in the units that its screen measures in: 24 to a per cent.
struct GasBars {
    int oxygen = 0;
    int helium = 0;
    QString label;
};

/// What the diver typed before something else replaced it.
struct TypedPlan {
    std::array<GasRow, kGases> rows;
    int start = 0;
    Settings settings;
    QString Text5;
    double maxppo2 = 1.4;
    double depthperbar = kMetresPerBar;
    bool headfeet = false;
    QString by; ///< what replaced it, in words
};

/// All that the gas screen holds. The device's unit and the text in hand for the device are in process().
struct GasPlan {
    GasPlan(); ///< default gases, air active and the starting gas

    std::array<GasRow, kGases> rows;
    int start = 0; ///< selected `Option1`
    Settings settings;

    QString Text5; ///< greatest PPO2 for a gas
    double maxppo2 = 1.4;
    double depthperbar = kMetresPerBar;
    int currentgasrow = 0;
    GasBars bars;

    QString gasblock; ///< as last built, 160 characters
    QString Text6;
    QString Text7;      ///< the setup text that is saved and sent
    QString Text8_0;    ///< of a file being read
    QString Text8_1;    ///< last received from the device
    double Label14 = 0; ///< date stamp of the text last read
    QString unitshown;  ///< `Label12(1)`
    bool feet() const { return depthperbar != kMetresPerBar; }
    /// Whether the head of the MODs, the lists of stops and the scales are those of feet: a change of unit
    /// that ended early has not reached them.
    bool headfeet = false;

    bool typed = false;                ///< the diver wrote or chose something that nothing has replaced
    std::optional<TypedPlan> replaced; ///< what can be brought back
    QString agreed;                    ///< what went out in spite of its warnings

    int activecount() const;
};

/// Shows a message and returns when it is closed.
using Say = std::function<void(const QString& text)>;

} // namespace benthor::gas
