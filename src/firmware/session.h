#pragma once

#include "firmware/reproghost.h"
#include "firmware/reprogstate.h"

#include <QByteArrayView>

namespace benthor::firmware {

// A reprogramming session: the port, the keys of the device, the image on its way, the final wait and the
// verdict. All that the device says is text, and the session goes by the words in it.

// --- its beginning and its end

/// The screen opens: fields cleared, the stock image or the one of the last time, the box with the warning,
/// the port that is remembered, and a first request for the status. With an `image`, a file that was opened
/// from outside, that one is chosen, and nothing is sent: the user asks for the status when he is there.
void openreprog(ReprogState& state, ReprogHost& host, const QString& programfolder,
                const QString& image = {});
void closereprog(ReprogState& state, ReprogHost& host);
/// Begins anew on another port, the image and what the user chose kept: nothing of what was heard or sent
/// before counts. `number` empty: no port, the controls are busy. The device is asked for its status at once,
/// or not at all.
enum class FirstRequest { AtOnce, None };
void beginrun(ReprogState& state, ReprogHost& host, const QString& number, bool rehearsal,
              FirstRequest request = FirstRequest::AtOnce);
/// Opens the port of that number at the speed chosen. False when it can't be opened.
bool openport(ReprogState& state, ReprogHost& host, const QString& number);

// --- what the user does

/// A key of the device, by the index of `SendCh`. With a closed port Refresh opens it again; the others do
/// nothing. A line that gives up is told.
void SendCh_click(ReprogState& state, ReprogHost& host, size_t key);
/// The same without a word, for the tick: whose lamps tell it.
platform::Written presskey(ReprogState& state, ReprogHost& host, size_t key);
/// The same bytes as a test would write them down; empty for an index that is no key.
QByteArray bytesofkey(size_t key);
/// Choose File.
void Command7_click(ReprogState& state, ReprogHost& host);
/// The image at that path, as if it had been chosen in the dialog.
void chooseimage(ReprogState& state, const QString& path);
/// Whether another image would disturb nothing: no send runs, no reply is waited for, and no verdict on an
/// image that was sent is pending or stands.
bool takesimage(const ReprogState& state);
void Check1_click(ReprogState& state, ReprogHost& host, bool checked);
void mnuAutoRefresh_click(ReprogState& state, bool checked);

/// Fills the send fields for that index of `Option1`.
void Option1_click(ReprogState& state, int option);
/// Send Command: the command alone. What belongs to it goes with Command5_click. False, and told, where the
/// line gave up.
bool Command4_click(ReprogState& state, ReprogHost& host);
/// Send to KD: the command, the wait for its reply, then the send.
void Command2_click(ReprogState& state, ReprogHost& host);
/// Keeps the text in a file that the user names.
void Command3_click(ReprogState& state, ReprogHost& host);

// --- the send

/// Sends the rest of a command, then the image (or, for a book, a text), and goes on to the verdict. Returns
/// when that stands, or at once when the screen was closed. A line that gives up ends it there, and nothing
/// follows; on a port that is not open it does not begin.
void Command5_click(ReprogState& state, ReprogHost& host);
/// Whether the device tells, ahead of a word "Prog", a hexadecimal sum of what it received that is not below
/// `sum` plus 38, the code of the "&" that it counts too.
bool istoldsumgood(const QByteArray& text, qint64 sum);

// --- the tick of Timer1, every 500 ms

void Timer1_tick(ReprogState& state, ReprogHost& host);
/// Its part that looks at the text alone: the progress words, the lamps, the value that the device reports.
void showstatus(ReprogState& state, bool portopen);

// --- shared by the above

/// Fills a name with blanks and an interval with zeros.
void filldata(SendFields& fields);
/// What belongs to a command behind its letter, as it leaves. Empty for nothing.
QString restofcommand(SendFields fields);

/// Controls off and on again.
void lockcontrols(ReprogState& state);
void freecontrols(ReprogState& state);
/// Takes what the port has behind what the text holds. Returns what came.
QByteArray takereply(ReprogState& state, ReprogHost& host);
/// Words of the program in the text's place.
void sayinplace(ReprogState& state, const QByteArray& words);
/// The check values of the image in hand, and the colour of Send to KD.
void refreshchecksums(ReprogState& state);
QString stockimage(const ReprogState& state, const char* name);

} // namespace benthor::firmware
