#include "tests/walk/devicebench.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace benthor::tests {

struct DeviceBench::Wire {
    simulator::Kd device;
    bool plugged = true;
    std::vector<Line*> lines; ///< of the program that runs
    QByteArray sent;

    Line* open() const;
    /// What the device says in that time, put down at the open line.
    void speak(int milliseconds);
};

class DeviceBench::Line : public platform::SerialLine {
public:
    Line(std::shared_ptr<Wire> wire, std::function<void()> received)
        : wire_(std::move(wire))
        , received_(std::move(received)) {
        wire_->lines.push_back(this);
    }
    ~Line() override { std::erase(wire_->lines, this); }
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;

    int CommPort() const override { return port_; }
    void setCommPort(int number) override { port_ = number; }
    void setSettings(const QString&) override {}
    void setInputLen(int) override {}
    void setRThreshold(int) override {}
    bool PortOpen() const override { return open_; }
    bool setPortOpen(bool wanted) override {
        const bool free = wire_->open() == nullptr || wire_->open() == this;
        open_ = wanted && wire_->plugged && port_ == DeviceBench::port && free;
        waiting_.clear();
        return open_ == wanted;
    }
    QByteArray Input() override { return std::exchange(waiting_, {}); }
    qsizetype InBufferCount() const override { return waiting_.size(); }
    platform::Written Output(QByteArrayView bytes) override {
        if (!open_) {
            return platform::Written::Closed;
        }
        if (!wire_->plugged) {
            return platform::Written::Cut;
        }
        wire_->sent += bytes.toByteArray();
        wire_->device.receive(bytes);
        return platform::Written::Whole;
    }
    void waitForInput(std::chrono::microseconds longest) override {
        waited_ += longest;
        const auto whole = std::chrono::duration_cast<std::chrono::milliseconds>(waited_);
        if (whole.count() > 0) {
            waited_ -= whole;
            wire_->speak(static_cast<int>(whole.count()));
        }
    }

    void hear(const QByteArray& bytes) { waiting_ += bytes; }
    void tell() const {
        if (!waiting_.isEmpty()) {
            received_();
        }
    }

private:
    std::shared_ptr<Wire> wire_;
    std::function<void()> received_;
    int port_ = 0;
    bool open_ = false;
    QByteArray waiting_;
    std::chrono::microseconds waited_{0};
};

DeviceBench::Line* DeviceBench::Wire::open() const {
    const auto found = std::find_if(lines.begin(), lines.end(), [](Line* line) { return line->PortOpen(); });
    return found == lines.end() ? nullptr : *found;
}

void DeviceBench::Wire::speak(int milliseconds) {
    const QByteArray said = device.advance(milliseconds);
    if (Line* line = open(); line != nullptr && plugged) {
        line->hear(said);
    }
}

DeviceBench::DeviceBench(simulator::Kd device)
    : wire_(std::make_shared<Wire>(Wire{std::move(device), true, {}, {}})) {}

DeviceBench::~DeviceBench() = default;

link::LinkLines DeviceBench::lines() {
    link::LinkLines made;
    made.make = [wire = wire_](QObject*, std::function<void()> received) {
        return std::make_unique<Line>(wire, std::move(received));
    };
    return made;
}

void DeviceBench::pass(int milliseconds) {
    constexpr int kBeat = 50;
    for (int passed = 0; passed < milliseconds; passed += kBeat) {
        wire_->speak(kBeat);
        if (const Line* line = wire_->open()) {
            line->tell();
        }
    }
}

void DeviceBench::plug(bool in) {
    wire_->plugged = in;
}

bool DeviceBench::isPlugged() const {
    return wire_->plugged;
}

simulator::Kd& DeviceBench::device() {
    return wire_->device;
}

QByteArray DeviceBench::takeSent() {
    return std::exchange(wire_->sent, {});
}

} // namespace benthor::tests
