#include "simulator/loader.h"

#include <algorithm>
#include <utility>

namespace benthor::simulator {

namespace {

constexpr int kStep = 10; ///< milliseconds; the time between two looks at the clock
constexpr char kMark = '&';
constexpr char kStar = '*';
constexpr qsizetype kMostKeys = 16; ///< more than that right behind "&" is an image
const QByteArray kKeys = "129QRYNyn";

} // namespace

Loader::Loader(FirmwareType type)
    : type_(type) {}

// --- time

QByteArray Loader::advance(int milliseconds) {
    hold(milliseconds);
    return std::exchange(out_, {});
}

void Loader::hold(int milliseconds) {
    for (int left = milliseconds; left > 0 && !over(); left -= kStep) {
        pass(std::min(left, kStep));
    }
}

void Loader::pass(int milliseconds) {
    now_ += milliseconds;
    const std::int64_t silence = now_ - lastReceived_;
    if (silence >= deafFor_) {
        deafFor_ = 0;
    }
    if (!opening_.isEmpty() && silence >= openMilliseconds) {
        settleOpening();
    }
    if (state_ == State::Taking) {
        if (silence >= endMilliseconds && received_.endsWith("&&")) {
            endTransfer();
        } else if (silence >= dropMilliseconds) {
            dropOut();
        }
    }
    if (state_ == State::Restarting && now_ - began_ >= restartMilliseconds) {
        state_ = State::Prompt;
        beaconsLeft_ = endless;
        nextBeacon_ = now_;
    }
    programStep();
    beacon();
}

void Loader::beacon() {
    if (beaconsLeft_ == 0 || state_ == State::Restarting || now_ < nextBeacon_) {
        return;
    }
    // A run that ends asks for the data again, and is large whatever the beacon is.
    put(beaconsLeft_ != endless || large ? largeBeacon() : smallBeacon());
    nextBeacon_ = now_ + beaconMilliseconds;
    if (beaconsLeft_ != endless) {
        --beaconsLeft_;
    }
}

// --- keys

void Loader::receive(QByteArrayView bytes) {
    if (bytes.isEmpty()) {
        return;
    }
    beaconsLeft_ = 0;
    lastReceived_ = now_;
    keys(bytes);
}

void Loader::keys(QByteArrayView bytes) {
    for (qsizetype at = 0; at < bytes.size(); ++at) {
        if (state_ == State::Taking) {
            take(bytes.sliced(at));
            return;
        }
        if (deafFor_ > 0 || over() || state_ == State::Restarting) {
            return;
        }
        if (opening_.isEmpty()) {
            key(bytes[at]);
        } else {
            open(bytes[at]);
        }
    }
}

void Loader::key(char byte) {
    const char before = std::exchange(lastKey_, byte);
    if (answer(byte)) {
        return;
    }
    if (byte == kMark) {
        mark(before);
    } else if (byte == kStar && before == kMark &&
               (state_ == State::Reprogramming || state_ == State::Verdict)) {
        begin("*");
    } else if (kKeys.contains(byte)) {
        if (byte != '9' || before != '9') {
            note(QByteArray("loader ") + byte);
        }
        command(byte);
    } else if (byte != '\r' && byte != '\n') {
        note("noise");
        deafFor_ = noiseMilliseconds; // data out of place, or a wrong speed: no key may be found in it
    }
}

/// Takes the answer when something was asked.
bool Loader::answer(char byte) {
    if (!asked_ || byte == kMark) {
        return false;
    }
    asked_ = false;
    if (byte == 'Y') {
        note("erased");
        for (std::size_t memory = 0; memory < programmed.size(); ++memory) {
            programmed[memory] = false;
            say(erasedLine(memory));
        }
    } else if (byte == 'N') {
        note("kept");
        say(keptLine());
    }
    return byte == 'Y' || byte == 'N';
}

void Loader::mark(char before) {
    if (state_ == State::Programming) {
        return;
    }
    if (state_ == State::Verdict) {
        note("loader &");
        tellSum();
    } else if (before == '9') {
        note("loader &");
        say(page());
    } else if (state_ == State::Reprogramming) {
        opening_ = QByteArray(1, kMark);
    }
}

void Loader::command(char byte) {
    switch (byte) {
    case '1':
        if (state_ != State::Programming && !hangs_) {
            say(page());
        }
        break;
    case '2':
        goOn();
        break;
    case 'R':
        if (state_ == State::Prompt) {
            state_ = State::Reprogramming;
        }
        break;
    case 'Q':
        restart();
        break;
    case 'y':
    case 'n':
        if (state_ == State::Verdict) {
            verdict(byte == 'y');
        }
        break;
    default:
        break; // the nines alone, or an answer to nothing
    }
}

/// What was held back is said after all.
void Loader::goOn() {
    hangs_ = false;
    out_ += std::exchange(withheld_, {});
}

void Loader::verdict(bool good) {
    hangs_ = good && faults.silentAfterY;
    withheld_.clear();
    if (good) {
        state_ = State::Programming;
        began_ = now_;
        step_ = 0;
    } else {
        state_ = State::Reprogramming;
        say(page());
    }
}

/// A memory that is erased holds nothing that could be started.
void Loader::restart() {
    hangs_ = false;
    withheld_.clear();
    say(restartLine());
    const bool whole = std::all_of(programmed.begin(), programmed.end(), [](bool one) { return one; });
    state_ = whole ? State::Over : State::Restarting;
    began_ = now_;
}

void Loader::open(char byte) {
    if (byte == kStar && opening_.count(kMark) == opening_.size()) {
        begin("*");
        return;
    }
    opening_ += byte;
    const bool isData = std::any_of(opening_.begin() + 1, opening_.end(),
                                    [](char one) { return one != kMark && !kKeys.contains(one); });
    if (isData && opening_.size() > kMostKeys) {
        begin(QByteArray(opening_).sliced(1));
    }
}

/// No image came: it was the key.
void Loader::settleOpening() {
    const QByteArray came = std::exchange(opening_, {});
    note("loader &");
    say(eraseQuestion());
    asked_ = true;
    lastKey_ = kMark;
    keys(QByteArrayView(came).sliced(1));
}

// --- words

QByteArray Loader::page() const {
    const bool inMode = state_ == State::Reprogramming || state_ == State::Verdict;
    return inMode ? modePage(type_) : promptPage(type_, programmed, check);
}

void Loader::put(const QByteArray& bytes) {
    (hangs_ ? withheld_ : out_) += bytes;
}

void Loader::say(const QByteArray& line) {
    put(line + "\r\n");
}

void Loader::note(const QByteArray& entry) {
    log_.push_back(entry);
}

std::vector<QByteArray> Loader::takeLog() {
    return std::exchange(log_, {});
}

} // namespace benthor::simulator
