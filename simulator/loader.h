#pragma once

#include "simulator/loaderwords.h"

#include <QByteArray>
#include <QByteArrayView>

#include <cstdint>
#include <vector>

namespace benthor::simulator {

/// What a loader does wrong.
struct LoaderFaults {
    static constexpr int always = -1;

    int dropOutAfter = -1; ///< after so many bytes of an image it shows its page and takes no more; -1: never
    int endEarlyAfter = -1;    ///< the same, but it falls back to the prompt and lists its memories
    int wrongSums = 0;         ///< it tells one less than it received the first so many times; or `always`
    char leftErased = 0;       ///< 'A' to 'C': that memory is not programmed; 0: all are
    bool wrongCheck = false;   ///< it reports another check value after programming
    bool silentEnd = false;    ///< says nothing after a transfer, until Continue, a verdict or a restart
    bool silentAfterY = false; ///< says nothing after "y", until Continue or a restart
    bool secondGo = false;     ///< finds the data not the same and wants them again; clears itself then
    bool operator==(const LoaderFaults&) const = default;
};

/// A device in its loader, without a wire and without a clock: bytes go in, time passes, bytes come out. The
/// loader talks printable text and takes single-letter keys; it replaces the firmware by an image of it.
class Loader {
public:
    enum class State {
        Prompt,        ///< takes "R" and "1"
        Reprogramming, ///< takes "&" and an image
        Taking,        ///< an image is on its way
        Verdict,       ///< tells its sum, waits for "y" or "n"
        Programming,
        Done,
        Restarting, ///< into itself again
        Over        ///< into the device with its firmware
    };

    explicit Loader(FirmwareType type);

    void receive(QByteArrayView bytes);
    /// Lets so much time pass and returns what was said in it.
    QByteArray advance(int milliseconds);
    /// Lets time pass; what is said comes with the next advance().
    void hold(int milliseconds);

    State state() const { return state_; }
    /// Restarted with all memories programmed: the normal device goes on, once its start has taken its time.
    /// With one erased there is nothing to start, and the loader begins anew by itself.
    bool over() const { return state_ == State::Over; }

    /// What was understood since the last call: "loader 1", "loader R", "image 7041 bytes", "programmed",
    /// ...; a run of 9 or of Q is one entry.
    std::vector<QByteArray> takeLog();

    LoaderFaults faults;
    bool large = false;             ///< its beacon is OOOOOOOOO, not ooooooooooo
    int programMilliseconds = 6000; ///< from "y" to the check value
    QByteArray foreignCheck;        ///< four digits, reported for an image that is not ours; empty: its sum
    QByteArray check = "1C4E";      ///< check value of the firmware
    QByteArray image; ///< last one received whole: without "&" ahead and "&&" behind, padding kept
    Memories programmed{true, true, true};

    static constexpr int beaconMilliseconds = 250;
    static constexpr int endMilliseconds = 400;   ///< silence behind "&&" that ends a transfer
    static constexpr int dropMilliseconds = 3000; ///< silence without "&&" that breaks one off
    static constexpr int deafMilliseconds = 1000; ///< silence that it needs after it dropped out of one
    static constexpr int noiseMilliseconds = 300; ///< silence that it needs after bytes that are no keys
    static constexpr int openMilliseconds = 100;  ///< silence behind "&" that makes it a key, and no image's
    static constexpr int restartMilliseconds = 6000;
    static constexpr int secondGoBeacons = 8;

private:
    // time
    void pass(int milliseconds);
    void beacon();
    void programStep();
    void program(int step);
    // keys
    void keys(QByteArrayView bytes);
    void key(char byte);
    bool answer(char byte);
    void mark(char before);
    void command(char byte);
    void restart();
    void verdict(bool good);
    void goOn();
    // images
    void open(char byte);
    void settleOpening();
    void begin(QByteArrayView bytes);
    void take(QByteArrayView bytes);
    void endTransfer();
    void dropOut();
    void endEarly();
    void wantSecondGo();
    QByteArray checkOfImage() const;
    // words
    void tellSum();
    void say(const QByteArray& line);
    void put(const QByteArray& bytes);
    void note(const QByteArray& entry);
    QByteArray page() const;

    FirmwareType type_;
    State state_ = State::Prompt;
    QByteArray out_;
    QByteArray withheld_; ///< would have been said, but for a hang
    std::vector<QByteArray> log_;
    std::int64_t now_ = 0;
    std::int64_t lastReceived_ = 0;
    std::int64_t nextBeacon_ = 0;
    int beaconsLeft_ = endless;
    bool hangs_ = false;
    int deafFor_ = 0; ///< milliseconds of silence that it needs before it listens again
    char lastKey_ = 0;
    bool asked_ = false;  ///< waits for "Y" or "N"
    QByteArray opening_;  ///< "&" and what came right behind it, as long as it may be an image
    QByteArray received_; ///< of an image on its way, behind its "&"
    int toldSums_ = 0;
    std::int64_t began_ = 0; ///< programming, or the restart
    int step_ = 0;           ///< of programming, next to be done

    static constexpr int endless = -1;
};

} // namespace benthor::simulator
