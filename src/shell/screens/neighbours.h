#pragma once

#include <QRect>
#include <QString>
#include <QStringList>

namespace benthor::link {
class LinkStatus;
}

namespace benthor::shell {

/// What the main screen asks of the other screens. The house answers; a test may.
class Neighbours {
public:
    virtual ~Neighbours() = default;

    /// The link's status; the link screen is loaded hidden for it when it is not loaded.
    virtual link::LinkStatus& linkStatus() = 0;
    virtual void showLink() = 0;
    virtual void showGasBlend() = 0;

    virtual void showDiveList() = 0;
    virtual void bringDiveListToFront() = 0;
    virtual void unloadDiveList() = 0;
    /// Behind an import: a list that is there scrolls to the newest of the dives that came in.
    virtual void scrollDiveListTo(const QStringList& imported) = 0;
    /// Shows the list afresh and in front, on the store that `storepath` names. Returns what kept that store
    /// from being opened; the list then stands on the process's own.
    virtual QString reopenDiveList() = 0;
    virtual bool isDiveListOnScreen() = 0;
    /// The screen that brings the dives of another logbook.
    virtual void showMerge() = 0;
    virtual void showDiveView() = 0;
    virtual void unloadDiveView() = 0;
    /// The unit was chosen on the main screen: a dive that is shown is shown in it.
    virtual void unitChosen() = 0;
    /// The same, asked now and then: other screens change the unit, too.
    virtual void unitMayHaveChanged() = 0;

    virtual void showGuide() = 0;
    virtual void showTips() = 0;
    /// The tip in hand, the same for the panel of the main screen and for the tips screen.
    virtual QString tipText() = 0;
    virtual void nextTip() = 0;
    virtual void showAbout() = 0;
    virtual void placeTips(const QRect& mainScreen, bool minimized) = 0;

    virtual void showFirmware() = 0;
    virtual void unloadFirmware() = 0;

    /// Whether this is a second copy of the program on the same program folder.
    virtual bool isSecondCopy() = 0;
    /// Asks the first copy to come to the front. Returns what this one tells the user before it closes.
    virtual QString callFirstCopy() = 0;
    /// Unloads every other screen, in the order in which the program ends.
    virtual void unloadOthers() = 0;
    virtual void endProcess() = 0;
};

} // namespace benthor::shell
