#pragma once

#include "link/linkstatus.h"
#include "shell/screens/neighbours.h"

#include <QStringList>

namespace benthor::tests {

/// Notes what the main screen asks of the other screens, and shows it a link of the test's making.
class FakeNeighbours : public shell::Neighbours, public link::LinkStatus {
public:
    QStringList asked;
    QString linkCaption = QStringLiteral("Not Connected");
    platform::ToldColour linkColour = platform::kToldYellow;
    bool linkOnScreen = false;
    bool downloading = false;
    bool diveListOnScreen = false;
    bool diveListFails = false;
    bool secondCopy = false;

    link::LinkStatus& linkStatus() override { return *this; }
    void showLink() override { asked += QStringLiteral("showLink"); }
    void showGasBlend() override { asked += QStringLiteral("showGasBlend"); }
    void showDiveList() override {
        asked += QStringLiteral("showDiveList");
        if (diveListFails) {
            throw std::runtime_error("the list fails");
        }
    }
    void bringDiveListToFront() override { asked += QStringLiteral("bringDiveListToFront"); }
    void scrollDiveListTo(const QStringList& imported) override { scrolledTo = imported; }
    void unloadDiveList() override { asked += QStringLiteral("unloadDiveList"); }
    bool isDiveListOnScreen() override { return diveListOnScreen; }
    void showMerge() override { asked += QStringLiteral("showMerge"); }
    void showDiveView() override { asked += QStringLiteral("showDiveView"); }
    void unloadDiveView() override { asked += QStringLiteral("unloadDiveView"); }
    void unitChosen() override { asked += QStringLiteral("unitChosen"); }
    void unitMayHaveChanged() override {}
    void showGuide() override { asked += QStringLiteral("showGuide"); }
    void showTips() override { asked += QStringLiteral("showTips"); }
    QString tipText() override { return QStringLiteral("Tip %1:   \nthe text").arg(tip); }
    void nextTip() override { ++tip; }
    QString reopenDiveList() override {
        asked += QStringLiteral("reopenDiveList");
        return listFault;
    }
    void showAbout() override { asked += QStringLiteral("showAbout"); }
    void placeTips(const QRect&, bool) override { ++tipsPlaced; }
    void showFirmware() override { asked += QStringLiteral("showFirmware"); }
    void unloadFirmware() override { asked += QStringLiteral("unloadFirmware"); }
    QString callFirstCopy() override { return QStringLiteral("Benthor is already open."); }
    bool isSecondCopy() override { return secondCopy; }
    void unloadOthers() override { asked += QStringLiteral("unloadOthers"); }
    void endProcess() override { asked += QStringLiteral("endProcess"); }

    QString caption() const override { return linkCaption; }
    platform::ToldColour captionColour() const override { return linkColour; }
    bool isOnScreen() const override { return linkOnScreen; }
    bool isDownloading() const override { return downloading; }
    void closePorts() override { asked += QStringLiteral("closePorts"); }

    int tipsPlaced = 0;
    int tip = 1;
    QString listFault;
    QStringList scrolledTo;
};

} // namespace benthor::tests
