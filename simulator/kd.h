#pragma once

#include "simulator/loader.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <array>
#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

namespace benthor::simulator {

/// What a device does wrong, or does otherwise than most.
struct Faults {
    bool silent = false;        ///< hears nothing, says nothing
    int breakOffAfter = -1;     ///< a dive's text ends after so many bytes, and the beacon goes on; -1: never
    int dropEvery = 0;          ///< every n-th byte from a reply's first on is lost; 0: none
    int flipEvery = 0;          ///< every n-th byte has its lowest bit turned; 0: none
    int pieces = 0;             ///< a reply comes in pieces of that many bytes; 0: as one
    int pauseMilliseconds = 60; ///< between two pieces
    int delayMilliseconds = 0;  ///< before each reply
    bool operator==(const Faults&) const = default;
};

/// What a device reads just now.
struct KdReadings {
    int depthcount = 100; ///< of 0.09375 m
    int ppo2 = 130;       ///< hundredths of a bar
    int celsius = 23;
    int ceiling = 12; ///< metres
    std::vector<QByteArray> alarms{"SURFACE"};
};

/// What the diver has sent to a device; it keeps that over a restart.
struct KdMemory {
    int interval = 10; ///< seconds between two samples
    QByteArray username;
    QByteArray setup; ///< the 226 characters
    std::array<int, 5> hud{6, 40, 70, 140,
                           160}; ///< brightness; low, prelow, prehigh, high in hundredths of a bar
    QByteArray book;
    QByteArray logo;
    QByteArray image; ///< of the firmware that a loader took last; empty: the maker's own
};

/// The setup of a new device: air in gas 0, diluents and bail-out gases behind, ended by "Z" and ESC.
QByteArray newSetup();

/// The device's side of the conversation, without a wire and without a clock: bytes go in, time passes, bytes
/// come out. In PC Link mode it sends a run of "P" while nobody asks it anything. While its loader runs, that
/// hears and talks in its place.
class Kd {
public:
    /// `dives`: dive texts, the newest first; dive 1 is the newest. `version`: what stands behind "ver=".
    explicit Kd(std::vector<QByteArray> dives = {}, QByteArray version = "V2.31");

    void receive(QByteArrayView bytes);
    /// Lets so much time pass and returns what is put on the line in it.
    QByteArray advance(int milliseconds);

    /// Lets time pass in which the line still carries what came before: nothing is put on it.
    void hold(int milliseconds);

    Faults faults;                ///< of the loader's words as well, but for a dive's end
    std::optional<Loader> loader; ///< put in to run it; a restart takes it out
    KdMemory memory;
    KdReadings readings;
    int unaskedMilliseconds = 0; ///< between two lines of readings that nobody asked for; 0: none
    /// "KD3", "KDX", "2010", "HALV", "TRAX": printed ahead of the directory and of each run of the beacon,
    /// again and again in the run, and behind the interval. Empty: the device does not tell it.
    QByteArray productWord;

    /// The image last received whole, by the loader that runs or the last one that ran.
    const QByteArray& image() const {
        return loader && !loader->image.isEmpty() ? loader->image : memory.image;
    }

    /// Commands as they were understood, one entry each: "M", "D 1", "S 5", "L 120 bytes", "loader R", ...
    const std::vector<QByteArray>& log() const { return log_; }

    static constexpr int beaconMilliseconds = 250;
    static constexpr int beaconsInARun = 5;       ///< between two of its words: ten letters, which end a dive
    static constexpr int quietMilliseconds = 500; ///< between a reply and the next beacon
    static constexpr int restartMilliseconds = 6000;
    static constexpr int bodyMilliseconds = 30000; ///< a body that goes no further is given up

private:
    enum class Body { None, Logo, Setup, Book };

    struct Piece {
        std::int64_t due;
        QByteArray bytes;
    };

    void advanceLoader(int milliseconds);
    bool takeCommand();
    bool takeDive();
    bool takeInterval();
    bool takeName();
    bool takeBody();
    void endBody(const QByteArray& body);
    void reply(const QByteArray& bytes, int afterMilliseconds = 0);
    void sendDive(int number);
    QByteArray directory(std::size_t dives) const;
    QByteArray interval() const;
    QByteArray readingsLine(const QByteArray& lead) const;
    static bool isSetup(const QByteArray& body);
    bool thirdVersion() const;
    QByteArray spoilt(const QByteArray& bytes);

    std::vector<QByteArray> dives_;
    QByteArray version_;
    QByteArray received_;
    std::deque<Piece> pieces_;
    std::vector<QByteArray> log_;
    Body body_ = Body::None;
    std::int64_t now_ = 0;
    std::int64_t lastReceived_ = 0;
    std::int64_t nextBeacon_ = 0;
    std::int64_t nextUnasked_ = 0;
    int beacons_ = 0; ///< since the product was told
    std::int64_t asleepUntil_ = 0;
    std::uint64_t sent_ = 0; ///< bytes since the last reply began
};

} // namespace benthor::simulator
