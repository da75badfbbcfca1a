#pragma once

#include <QString>
#include <QStringView>

namespace benthor::shell {

/// Whether waiting dives may go into the store by themselves: the link searches, or its screen is not in
/// front of the user. While the user is at a connected link screen they wait, so that a run of downloads is
/// imported as one.
bool mayImport(QStringView linkCaption, bool linkOnScreen);

/// Whether `waiting` files start an import, when there were `watched` at the last tick. Only a rise does:
/// files that an import left behind do not start another one every second.
bool startsImport(int waiting, int watched);

/// The count to compare with at the next tick. A rise is taken over only in a tick that could have started an
/// import (`judged`): what comes while the device is connected is new to the first tick behind that. A fall
/// always is, or files that come behind it would not count as a rise.
int watchedNext(int waiting, int watched, bool judged);

/// "No files wait", "1 file waits", "7 files wait".
QString waitingText(int waiting);

/// The same where they wait because the import was stopped.
QString stoppedText(int waiting);

/// What else is to be known of the folder, for the lines below: the file without version and interval at
/// which an import ended ("" for none), then what `passedby` says is passed by. Empty where all is well.
QString folderNotice(const QString& unreadable, const QString& passedby);

/// A name for a place with little room: its middle is left out where it is longer than `most`.
QString shortenedName(const QString& name, qsizetype most = 40);

} // namespace benthor::shell
