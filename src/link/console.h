#pragma once

#include "link/linkhost.h"
#include "link/linkstate.h"

namespace benthor::link {

// The command console: what a choice puts into the command fields and how a command leaves. All commands of
// the device go through sendcommand(). Everything is skipped silently while the port is closed.

// Choices by the index of `Option1`; 3 and 4 ask for summaries, 7 has no function.
inline constexpr int kChoiceLogo = 0;
inline constexpr int kChoiceIntervalGet = 1;
inline constexpr int kChoiceIntervalSend = 2;
inline constexpr int kChoiceSummaries = 3;
inline constexpr int kChoiceSummaryLast = 4;
inline constexpr int kChoiceSetup = 5;
inline constexpr int kChoiceBook = 6;
inline constexpr int kChoiceUserId = 8;
inline constexpr int kChoiceOther = 9;
inline constexpr int kChoiceQuit = 10;
inline constexpr int kChoiceReadings = 11;

/// Fills the command fields from the selected choice.
void preparecommand(LinkState& link);
/// The user has typed data. Name and free text are kept for the next time.
void Text9_change(LinkState& link, const QString& text);
/// The user has typed an interval: it goes with Interval Send as long as no data box can be seen.
void Text16_change(LinkState& link, const QString& text);
/// One write of command, prefix, data, trailer. A line that is cut or takes nothing is told.
platform::Written sendcommand(LinkState& link, LinkHost& host);
/// The full Send: checks, command, the wait for the expected reply, the body. Behind Gas Upload, and wherever
/// the letter of the setup would leave without one, it is the update of the gas screen.
void Command2_click(LinkState& link, LinkHost& host);
/// Sends the body.
void Command5_click(LinkState& link, LinkHost& host);
/// A choice by its label; 1 is Get Interval, 11 Get Readings.
void Label19_click(LinkState& link, LinkHost& host, int index);
void Picture14_click(LinkState& link, LinkHost& host, int index);
/// Opens a file for sending.
void mnuOpen_click(LinkState& link, LinkHost& host);
/// What goes out behind the command: the file that the box names, or the setup that is shown.
struct Body {
    enum class Kind {
        None,
        File,
        Setup,
        Missing, ///< a book or a logo that the box does not name, or names and that was never opened
    };
    Kind kind = Kind::None;
    QByteArray file; ///< as it goes: of a logo what stands behind its last two blanks in a row
};
Body bodyinhand(const Console& console);
/// What Send sends now, in words.
QString goeswords(const Console& console);
/// Selects the choice Setup with its file box shown.
void dooptioncheck(LinkState& link);
/// The text to send as a setup, in one write. A closed port is skipped silently, here as by all commands; a
/// line that is cut or takes nothing is told.
platform::Written send_data(LinkState& link, LinkHost& host);

// Steps of the supervision's tick.

/// The text to send, its file name, and whether the number beside it can be edited.
void refreshtexttosend(LinkState& link);
void replyecho(LinkState& link);
/// The interval and the values of the head-up display, once behind each Get Interval click.
void readinterval(LinkState& link);

} // namespace benthor::link
