#pragma once

#include <QStringView>

namespace benthor::shell {

/// Whether waiting dives may go into the store by themselves: the link searches, or its screen is not in
/// front of the user. While the user is at a connected link screen they wait, so that a run of downloads is
/// imported as one.
bool mayImport(QStringView linkCaption, bool linkOnScreen);

/// Whether `waiting` files start an import, when there were `watched` at the last tick. Only a rise does:
/// files that an import left behind do not start another one every second.
bool startsImport(int waiting, int watched);

} // namespace benthor::shell
