#pragma once

#include "gas/screens/gasblend.h"

#include "session/process.h"

#include <QStringList>

namespace benthor::tests {

/// A link of the test's making: notes what the gas screen asks of it.
class FakeLink : public gas::GasNeighbours, public link::SetupLink {
public:
    QStringList asked;
    QString shownCaption = QStringLiteral("Not Connected");
    platform::ToldColour shownColour = platform::kToldYellow;
    QByteArray received;
    bool waits = false;
    bool hides = false;
    bool owes = false;
    bool leaves = true; ///< what is sent leaves whole
    bool downloading = false;
    QStringList sent; ///< texts that went out
    QString textToSend;

    link::SetupLink& setupLink() override { return *this; }
    void showLinkForSending() override { asked += QStringLiteral("showLinkForSending"); }
    void showLink() override { asked += QStringLiteral("showLink"); }

    QString caption() const override { return shownCaption; }
    platform::ToldColour captionColour() const override { return shownColour; }
    bool isOnScreen() const override { return false; }
    bool isDownloading() const override { return downloading; }
    void closePorts() override { asked += QStringLiteral("closePorts"); }
    QByteArray receivedText() const override { return received; }
    bool waitsForDirectory() const override { return waits; }
    bool hidesSetup() const override { return hides; }
    bool owesSetup() const override { return owes; }
    void setTextToSend(const QString& text) override { textToSend = text; }
    void prepareSetup() override { asked += QStringLiteral("prepareSetup"); }
    bool sendSetup() override {
        asked += QStringLiteral("sendSetup");
        sent += process().uploadtext;
        return leaves;
    }
    bool refreshRests() const override { return downloading; }
    void refreshDirectory() override { asked += QStringLiteral("refreshDirectory"); }
};

} // namespace benthor::tests
