#pragma once

#include "link/linkhost.h"

#include <QStringList>
#include <array>
#include <deque>
#include <functional>
#include <set>
#include <vector>

namespace benthor::tests {

/// A line without a wire: what goes out is kept, what shall come in is put there by the test.
class FakeLine : public platform::SerialLine {
public:
    int CommPort() const override { return port; }
    void setCommPort(int number) override { port = number; }
    void setSettings(const QString& text) override { settings = text; }
    void setInputLen(int bytes) override { inputLen = bytes; }
    void setRThreshold(int bytes) override { threshold = bytes; }
    bool PortOpen() const override { return open; }
    bool setPortOpen(bool wanted) override {
        open = wanted && (!portExists || portExists(port));
        closed = wanted && !open ? closed : platform::Written::Closed;
        openings += wanted ? 1 : 0;
        return open == wanted;
    }
    QByteArray Input() override { return open ? std::exchange(waiting, {}) : QByteArray(); }
    qsizetype InBufferCount() const override { return open ? waiting.size() : 0; }
    platform::Written Output(QByteArrayView bytes) override {
        if (!open) {
            return closed;
        }
        if (takes >= 0 && bytes.size() > takes) {
            sent += bytes.first(takes).toByteArray();
            takes = 0;
            return platform::Written::Stuck;
        }
        takes -= takes >= 0 ? bytes.size() : 0;
        sent += bytes.toByteArray();
        writes.push_back(bytes.toByteArray());
        if (onOutput) {
            onOutput(bytes.toByteArray());
        }
        return open ? platform::Written::Whole : platform::Written::Cut;
    }
    /// The device goes away.
    void cut() {
        open = false;
        closed = platform::Written::Cut;
    }
    void waitForInput(std::chrono::microseconds) override {
        ++polls;
        if (onPoll) {
            onPoll();
        }
    }

    int port = 0;
    QString settings;
    int inputLen = -1;
    int threshold = -1;
    bool open = false;
    int openings = 0;
    int polls = 0;
    qsizetype takes = -1;                                 ///< bytes until the line is stuck; -1: it never is
    platform::Written closed = platform::Written::Closed; ///< what a write on the closed port says
    QByteArray waiting;                                   ///< comes with the next Input()
    QByteArray sent;                                      ///< all that went out
    std::deque<QByteArray> writes;                        ///< the same, write by write
    std::function<bool(int)> portExists;                  ///< null: each does
    std::function<void(QByteArray)> onOutput;
    std::function<void()> onPoll;
};

/// Keeps what the link asked for, answers with what the test laid out.
class FakeHost : public link::LinkHost {
public:
    struct Started {
        QString program;
        QStringList arguments;
        QString folder;
    };

    platform::SerialLine& MSComm1() override { return line; }
    platform::SerialLine& MSComm2(int index) override { return scan.at(static_cast<std::size_t>(index)); }
    void message(const QString& text, const QString& informative) override {
        messages << text;
        below << informative;
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
    QString openFile(const QString& filter, const QString& name) override {
        filters << filter;
        suggested << name;
        return chosenFile;
    }
    QString saveFile(const QString& filter, const QString& name) override {
        filters << filter;
        suggested << name;
        return chosenFile;
    }
    bool startProgram(const QString& program, const QStringList& arguments, const QString& folder) override {
        started.push_back({program, arguments, folder});
        return programsStart;
    }
    bool repaint() override {
        ++repaints;
        return !closed;
    }
    void setHourglass(bool on) override { hourglass = on; }
    void hintOnMain(const QString& text) override { mainHints << text; }
    bool tipsShowing() override { return tips; }
    void showTips() override { ++tipsShown; }
    void openFirmware() override { ++firmwareOpened; }
    void setupReceived(const QByteArray& text) override { setups << text; }
    bool setupMayGo(const link::SetupBody& body) override {
        bodies << body.text;
        return bodiesMayGo;
    }
    void updateSetup() override { ++updates; }
    void runImport() override { ++imports; }
    void leaveAndImport() override { ++leavings; }

    FakeLine line;
    std::array<FakeLine, 32> scan;
    QStringList messages, below, questions, titles, filters, suggested, mainHints;
    std::deque<bool> answers;
    QString chosenFile;
    QByteArrayList setups;
    std::vector<Started> started;
    QStringList bodies; ///< asked for as setups
    bool bodiesMayGo = true;
    int updates = 0;
    bool programsStart = true;
    bool closed = false, hourglass = false, tips = false;
    int repaints = 0, tipsShown = 0, firmwareOpened = 0, imports = 0, leavings = 0;
};

} // namespace benthor::tests
