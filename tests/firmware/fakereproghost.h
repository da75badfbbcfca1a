#pragma once

#include "firmware/session.h"
#include "tests/link/fakehost.h"

namespace benthor::tests {

/// Keeps what the session asked for, answers with what the test laid out. Waits are over at once.
class FakeReprogHost : public firmware::ReprogHost {
public:
    platform::SerialLine& MSComm1() override { return line; }
    QString rememberedPort() override { return remembered; }
    void rememberPort(const QString& number) override { written << number; }
    QString portHint() override { return hint; }
    void message(const QString& text, const QString& title) override {
        messages << text;
        titles << title;
        if (onBox) {
            onBox();
        }
    }
    bool confirm(const QString& text, const QString& title) override {
        questions << text;
        titles << title;
        if (answers.empty()) {
            return false;
        }
        const bool yes = answers.front();
        answers.pop_front();
        return yes;
    }
    QString openFile(const QString& filter, const QString& place) override {
        filters << filter;
        places << place;
        return chosenFile;
    }
    QString saveFile(const QString& filter, const QString& name) override {
        filters << filter;
        places << name;
        return chosenFile;
    }
    bool repaint() override {
        ++repaints;
        if (onRepaint) {
            onRepaint();
        }
        return !closed;
    }
    bool pause(std::chrono::milliseconds time) override {
        pauses.push_back(time);
        if (onPause) {
            onPause();
        }
        return !closed;
    }
    bool blinkVisible() override { return blink; }
    void showBlink() override {
        blink = true;
        ++blinks;
    }
    void hideBlink() override { blink = false; }
    void unloadBlink() override {
        blink = false;
        ++blinkUnloads;
    }

    FakeLine line;
    QString hint;
    QString remembered = QStringLiteral("3");
    QStringList written, messages, titles, questions, filters, places;
    std::deque<bool> answers;
    QString chosenFile;
    std::vector<std::chrono::milliseconds> pauses;
    std::function<void()> onRepaint, onPause, onBox;
    bool closed = false, blink = false;
    int repaints = 0, blinks = 0, blinkUnloads = 0;
};

} // namespace benthor::tests
