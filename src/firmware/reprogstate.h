#pragma once

#include "firmware/checkvalues.h"
#include "link/markedtext.h"
#include "platform/toldcolour.h"

#include <QString>
#include <array>

namespace benthor::firmware {

using platform::ToldColour;

/// A button in its own colour; no other value is a colour of that kind.
inline constexpr ToldColour kButtonGrey = 0xFF000000;

struct Lamp {
    QString text;
    ToldColour colour = platform::kToldRed;
    bool operator==(const Lamp&) const = default;
};

struct Button {
    bool enabled = true;
    ToldColour colour = kButtonGrey;
};

struct Bar {
    int value = 0;
    int maximum = 100;
};

// Lamps, by the index of `Label4`.
inline constexpr size_t kLampPort = 0;
inline constexpr size_t kLampLink = 1;
inline constexpr size_t kLampPrompt = 2;
inline constexpr size_t kLampReady = 3;
inline constexpr size_t kLampResult = 4;

// Keys of the device, by the index of `SendCh`.
inline constexpr size_t kKeyYes = 0;
inline constexpr size_t kKeyNo = 1;
inline constexpr size_t kKeyErase = 2;
inline constexpr size_t kKeyRefresh = 3;
inline constexpr size_t kKeyContinue = 4;
inline constexpr size_t kKeyQuit = 5;
inline constexpr size_t kKeyEnter = 6;
inline constexpr size_t kKeyRetry = 7;
inline constexpr size_t kKeyRestart = 8;
inline constexpr size_t kKeys = 9;

// The final wait, in ticks of half a second.
inline constexpr int kWaitOver = 61;
inline constexpr int kWaitBar = 62;
inline constexpr int kAgainBar = 600; ///< five minutes

/// Ticks without an answer after which no send may begin.
inline constexpr int kTooLate = 16;

/// How an image ended on its way, ahead of its end.
struct BrokenOff {
    enum class How {
        Not,
        EndedEarly, ///< the device ended the transfer
        DroppedOut, ///< the device shows its page again
        Lost        ///< the line gave up
    };
    How how = How::Not;
    qint64 sent = 0; ///< bytes of the image that had left
    qint64 of = 0;   ///< its length
};

/// Fields of a command that is not one of the keys.
struct SendFields {
    int option = 10; ///< selected `Option1`
    QString Text3;   ///< command
    QString Text11;  ///< prefix
    QString Text9;   ///< data
    int Text9MaxLength = 0;
    QString Text10; ///< trailer
    QString Text8;  ///< reply that must come back before anything more is sent; empty: none
    QString Text12; ///< for a book: how many bytes beyond 30000 go out
};

/// All that the firmware screen holds: what its controls show and what its ticks count.
struct ReprogState {
    // What is heard and what is known of the image.
    link::MarkedText Text4; ///< what the device says; what the program says of a send stands here as well
    QString reprogfolder;   ///< folder of images and check list
    QString lastimage;      ///< path last chosen
    QString Text2;          ///< name clicked in the list of files
    QString Text5;          ///< path of the image
    QString Text6;          ///< number of the port
    CheckValues check;      ///< `Text13` and `Text15`
    QString Text14;         ///< value reported by the device
    SendFields fields;

    // What it counts.
    qint64 counted = 0;  ///< bytes of the last image, 128 for each record and for the byte ahead of them
    qint64 sum = 0;      ///< of the image's bytes
    qint64 sent = 0;     ///< bytes of the image that left whole, without what is put ahead of them and behind
    BrokenOff brokenoff; ///< of the last image; stays until the next one goes
    QString awaited;     ///< reply that is waited for just now; empty: none is
    /// 0 idle; -1 stopped more than 2000 bytes short; -2 read-back not satisfied; 1 sent to the end; from 2
    /// on the ticks of the final wait, up to 61.
    int sendstate = 0;
    int blinkcount = 0; ///< updates left before the blink goes off
    int noanswer = 0;   ///< ticks since the last automatic request of the status

    // What it shows.
    std::array<Lamp, 5> Label4{};
    std::array<Button, kKeys> SendCh{};
    Button Command2{false, platform::kToldYellow}; ///< Send to KD
    ToldColour Command7Colour = kButtonGrey;       ///< Choose File
    ToldColour Text14Colour = kButtonGrey;
    Bar ProgressBar1;
    Bar ProgressBar2{0, kWaitBar};
    Bar ProgressBar3{0, kAgainBar};

    // How it stands.
    bool idleflag = false;     ///< the controls are free; false while a send runs or no port is known
    bool pollflag = false;     ///< the tick collects replies
    bool sending = false;      ///< a send runs: nothing can be worked
    bool sentmark = false;     ///< the image has gone to the end
    bool recoveryflag = false; ///< the device printed "8:f" in the final wait
    bool filechosen = false;   ///< the user has picked a file: no stock image is chosen for him
    bool heard = false;        ///< some of `Text4` came from the device
    bool rehearsal = false;    ///< the device is a simulated one
    bool Timer1 = true;

    // What the user has switched, and which parts can be seen.
    bool advanced = false;        ///< `mnuAdvanced`
    bool autorefresh = false;     ///< `mnuAutoRefresh`
    bool baud9600 = true;         ///< `Check1`
    bool Command3Enabled = false; ///< the text holds a dive's profile
    bool Label5Visible = false;   ///< an image is on its way
    bool Frame5Visible = false;   ///< final wait
    bool Frame6Visible = false;   ///< the device does it again
};

/// The port's settings for the speed chosen.
QString portsettings(const ReprogState& state);

} // namespace benthor::firmware
