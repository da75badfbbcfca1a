#include "shell/infopanel.h"

namespace benthor::shell {

InfoPanel infoPanel(int infochoice) {
    switch (infochoice) {
    case kMyDives:
        return {QStringLiteral(
                    "Contains list of all dives and summary information which you have downloaded from your "
                    "device.\nDives marked in red have problems. Download them again to try and fix errors. "
                    "Check connection tips for fixing connection and downloading problems."),
                QStringLiteral("divelist.bmp")};
    case kDownloadToPc:
        return {QStringLiteral(
                    "This is where you download dives from your Morvalien/KD. You can also link to your "
                    "devices to set other data such as: recording interval, gas settings, screen saver "
                    "etc... Dives marked in yellow have already been downloaded to My Dives. See Connection "
                    "Tips for solutions to connection and downloading problems."),
                QStringLiteral("pclink.bmp")};
    case kSetupAndGas:
        return {QStringLiteral("You can set up gasses and download them to you KD/Morvalien from here"),
                QStringLiteral("gaslistb.bmp")};
    case kPocketPc:
        return {QStringLiteral("You can view and download dives from your Pocket PC"),
                QStringLiteral("pdblist.bmp")};
    case kFerroweImport:
        return {QStringLiteral("You can import files from your Ferrowe software"),
                QStringLiteral("pdblist.bmp")};
    default:
        return {};
    }
}

} // namespace benthor::shell
