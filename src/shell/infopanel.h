#pragma once

#include <QString>

namespace benthor::shell {

/// The entries of the main screen, by the number that a click on one sets as `infochoice`.
enum InfoChoice {
    kNoEntry = 0,
    kMyDives = 1,
    kDatabaseUpdate = 2,
    kDownloadToPc = 3,
    kKd3DiveList = 4,
    kDiveFileFind = 5,
    kExit = 6,
    kSetupAndGas = 7,
    kPocketPc = 8,
    kFerroweImport = 9,
};

/// What the panel says about an entry. Empty texts: the panel stays as it is.
struct InfoPanel {
    QString text;
    QString pictureFile; ///< in the program folder
};

InfoPanel infoPanel(int infochoice);

inline QString noDivesText() {
    return QStringLiteral("\nNo dives in database system\n");
}

/// How the first dive gets in, for a store without any.
inline QString firstDiveText() {
    return QStringLiteral("The first dive gets in through Download to PC: connect the device and get its "
                          "dives. A dive file that is already on this computer gets in through Dive File "
                          "Find, and all dives of another computer or of a backup through Another "
                          "logbook.");
}

/// Where the dives are, for a panel that has nothing else to say.
inline QString nextDiveText() {
    return QStringLiteral("The dives are in My Dives: a double click opens one on its chart.");
}

} // namespace benthor::shell
