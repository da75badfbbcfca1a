#pragma once

#include "link/linkhost.h"
#include "link/screens/pc_link_1.h"

namespace benthor::link {

/// What the link's logic asks for, answered by the screen, by its lines, and by signals to the house.
class PC_Link_1::Host : public LinkHost {
public:
    Host(PC_Link_1& screen, LinkLines lines);
    ~Host() override;
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    platform::SerialLine& MSComm1() override { return *working_; }
    platform::SerialLine& MSComm2(int index) override { return *search_.at(static_cast<size_t>(index)); }

    void message(const QString& text, const QString& below) override;
    bool confirm(const QString& text, const QString& title) override;
    QString openFile(const QString& filter, const QString& name) override;
    QString saveFile(const QString& filter, const QString& name) override;
    bool startProgram(const QString& program, const QStringList& arguments, const QString& folder) override;
    bool repaint() override;
    void setHourglass(bool on) override;
    void hintOnMain(const QString& text) override;
    bool tipsShowing() override;
    void showTips() override;
    void openFirmware() override;
    void setupReceived(const QByteArray& text) override;
    bool setupMayGo(const SetupBody& body) override;
    void updateSetup() override;
    void runImport() override;
    void leaveAndImport() override;

    QString portHint() const { return portHint_ ? portHint_() : QString(); }

private:
    PC_Link_1& screen_;
    std::function<QString()> portHint_;
    std::unique_ptr<platform::SerialLine> working_;
    std::array<std::unique_ptr<platform::SerialLine>, 32> search_;
    bool hourglass_ = false;
};

} // namespace benthor::link
