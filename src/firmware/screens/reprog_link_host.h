#pragma once

#include "firmware/reproghost.h"
#include "firmware/screens/reprog_link.h"

namespace benthor::firmware {

/// What the session asks of the screen.
class ReProg_Link::Host : public ReprogHost {
public:
    Host(ReProg_Link& screen, const link::LinkLines& lines);

    platform::SerialLine& MSComm1() override { return *line_; }
    QString rememberedPort() override;
    void rememberPort(const QString& number) override;
    QString portHint() override { return portHint_ ? portHint_() : QString(); }
    void message(const QString& text, const QString& title) override;
    bool confirm(const QString& text, const QString& title) override;
    QString openFile(const QString& filter, const QString& place) override;
    QString saveFile(const QString& filter, const QString& name) override;
    bool repaint() override;
    bool pause(std::chrono::milliseconds time) override;
    bool blinkVisible() override { return screen_.neighbours_.blinkVisible(); }
    void showBlink() override { screen_.neighbours_.showBlink(); }
    void hideBlink() override { screen_.neighbours_.hideBlink(); }
    void unloadBlink() override { screen_.neighbours_.unloadBlink(); }

private:
    ReProg_Link& screen_;
    std::unique_ptr<platform::SerialLine> line_;
    std::function<QString()> portHint_;
};

} // namespace benthor::firmware
