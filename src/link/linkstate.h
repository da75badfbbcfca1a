#pragma once

#include "link/markedtext.h"
#include "platform/toldcolour.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>
#include <vector>

namespace benthor::link {

/// The link's own colours; the rest are the told ones.
inline constexpr platform::ToldColour kLightRed = 0xC0C0FF;
inline constexpr platform::ToldColour kLightGreen = 0xC0FFC0;
inline constexpr platform::ToldColour kLightBlue = 0xFF8080;

/// What a control of the screen shows, as far as the logic decides it.
struct Control {
    QString text;
    bool visible = true;
    bool enabled = true;
};

struct StatusCaption {
    QString text;
    platform::ToldColour colour = platform::kToldYellow;
};

enum class RowMark { None, Stored, Selected }; ///< grid's own, yellow, blue on white

/// One row of the directory: column 0 to 11.
struct DirectoryRow {
    static constexpr int columns = 12;
    std::array<QString, columns> cells;
    RowMark mark = RowMark::None; ///< colours of columns 1 to 11; column 0 keeps the grid's own
};

/// The directory as its grid shows it. Row 0 is the header.
struct Directory {
    std::vector<DirectoryRow> rows{1};
    int cols = 1;
    int row = 0; ///< current cell
    int col = 0;
    QByteArray DStack; ///< value that no dive empties: it grows for as long as the screen is loaded

    int rowCount() const { return static_cast<int>(rows.size()); }
};

/// A file that was opened for sending. It goes where the box names it, whatever else writes into the text in
/// hand for the device meanwhile.
struct ChosenFile {
    QString path;
    QByteArray bytes; ///< 20000 at most, and an ESC for each time that they were sent
};

/// The command in hand and what belongs to sending it.
struct Console {
    int option = 10;           ///< selected `Option1`
    QString Text3;             ///< command
    QString Text11;            ///< prefix
    QString Text9;             ///< data
    int Text9MaxLength = 0;    ///< limit of the data; part of the command
    QString Text10;            ///< trailer
    QString Text6;             ///< expected reply, empty for none
    Control Text5{{}, false};  ///< file to send; hidden or empty: no body goes out
    Control Text12{{}, false}; ///< index of the book, free number
    Control TextResponse{{}, false};
    Control Command2; ///< Send
    bool Text9Visible = false;
    bool AFLabel1Visible = false; ///< caption beside the free text
    bool AFLabel4Visible = false; ///< caption of the reply
    bool Label3Visible = false;   ///< caption of the data box
    bool Label6Visible = false;
    bool Label7Visible = false;
    bool mnuEditEnabled = false;
    bool Frame4Visible = false; ///< HUD and PO2 alarm
    QString Text7;              ///< text to send
    ChosenFile chosenfile;
    QString uploadfile;    ///< name of the last file opened
    QString filenameshown; ///< what stands for it on the screen: at first a hint to open one
    QString convertedlogo; ///< default of the open dialog for a logo
    QString username;      ///< stored name for "User ID"
    QString freetext;      ///< stored text for "Other"
    QByteArray replytag;
    int replywidth = 0;
    QString replysuffix;
    bool intervalread = true;      ///< false from a Get Interval click until the tick behind it has looked
    bool intervalasked = false;    ///< Get Interval was clicked since the tick began
    std::array<QString, 7> Text16; ///< 0 interval to send, 1 interval read, 2 to 6 HUD and alarm values
    bool intervaltyped = false;    ///< `Text16(0)` was typed since the choice was made
    bool advanced = false;         ///< expert fields are shown
    bool Option1_9Visible = false; ///< choice "Other": with the expert fields, and where it was chosen
    bool filecaption = true;       ///< caption of `Text5`: goes with the expert fields
    QString checkedEntry;          ///< checked entry of the command menu, by name
};

/// A download run.
struct Download {
    bool moreselected = false;
    int selectedcount = 0;
    int divesreceived = 0;
    bool backupmode = false;
    int chosen = 0;        ///< dives that the run was to bring
    int stored = 0;        ///< of these
    QStringList notstored; ///< the others, as column 0 names them
    bool cut = false;      ///< the line was cut since the dive in hand was asked for
    QStringList patched;   ///< dives that were stored though the line was cut while they came
    QByteArray divecommand;
    MarkedText lastdivetext; ///< copy of what was received, for other screens
    QString DiveSeriesName = QStringLiteral("MyLatestDives");
    QString startdivenum;
    QString DiveCount;
    bool TXTWaitVisible = false; ///< wait frame: `Frame5` with `TXTWait(1)`
    QString TXTWait;             ///< `TXTWait(0)`
    int ProgressBar1 = 0;        ///< 0 to 300
    QString lblBytes;
    Control downloadingdive{{}, false}; ///< with its caption `Label5(2)`
    bool Command3Enabled = false;       ///< Store Dive Text
    QString Text1;                      ///< length of the text captured
};

/// All that the link screen holds: what its controls show and what its ticks count. The logic works on this,
/// the screen paints it. Values that the whole process shares are in process().
struct LinkState {
    MarkedText rxbuf; ///< received on the working port since it was last emptied
    MarkedText Text4; ///< copy taken at a tick, as the raw text box shows it

    std::uint32_t rxcount = 0; ///< printable bytes that ended an arrival
    std::uint32_t rxcountlast = 0;
    int silentticks = 0;  ///< ticks since the last command, at most 100
    int updatedticks = 0; ///< shows of "Data Updated" since the last command
    int stallticks = 0;   ///< ticks in a row without an arrival that counts
    int tickcount = 0;    ///< drives the lamps
    bool linkwatch = false;
    bool capturemode = false;
    bool divesaved = false;

    StatusCaption AFLabel3;
    std::array<platform::ToldColour, 10> AFShape1{};
    QString ComNum;         ///< changed only by setcomnum(), which opens the port
    bool portheld = false;  ///< the working port was opened and never closed: where it is closed, it was cut
    bool stucktold = false; ///< the line took nothing, which was told, and has taken nothing since
    int asksitself = 0;     ///< above 0: what is sent now is a tick's own request, which the next one repeats
    platform::ToldColour ComNumColour = kLightRed;
    bool downloadbuttons = false; ///< the three Get buttons are enabled and their pictures shown
    bool cmdstoreEnabled = true;
    bool Text14Visible = false; ///< hint box
    bool txtstatus2Visible = false;

    std::array<QByteArray, 36> scanbuf; ///< received on the search ports
    std::array<bool, 36> scanheld{};    ///< search ports that this search opened
    int scanticks = 0;
    bool searchedlong = false; ///< the search has begun anew by itself: nothing was heard for a minute
    bool tipshown = false;
    QString Label8;

    int hintstep = 0; ///< 1 to 5 from the first hint on
    QString infotext;
    QString Label20;

    bool Timer2 = true; ///< enabled: waits for the directory
    bool Timer3 = false;
    bool Timer5 = false;
    bool Timer6 = false;
    bool Timer8 = true;
    bool hidessetup = false; ///< the last directory was of a device whose setup cannot be read
    bool owessetup = false;  ///< since the last directory no setup has come

    Directory Mgrid;
    Console console;
    Download download;
};

} // namespace benthor::link
