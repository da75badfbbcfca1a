#include "simulator/kd.h"

#include <algorithm>
#include <array>

namespace benthor::simulator {

namespace {

constexpr char kEscape = 27;
constexpr int kSaveMilliseconds = 700; ///< between "Wait.." and the mark that it is done
constexpr int kCodeOfDiveZero = 47;
constexpr qsizetype kPositionOfY = 222; ///< in a setup, counted from 1
constexpr qsizetype kGasBlock = 160;
const QByteArray kLineEnd = "\r\n";
const QByteArray kBookEnd = " * * ";

QByteArray padded(int number, int width) {
    return QByteArray::number(number).rightJustified(width, '0');
}

/// All of a dive's text that stands ahead of its samples.
QByteArray head(const QByteArray& dive) {
    const qsizetype profile = dive.indexOf("Profile");
    return profile < 0 ? dive : dive.first(profile);
}

} // namespace

QByteArray newSetup() {
    struct Mix {
        int oxygen, helium, depth;
        bool on;
    };
    constexpr std::array<Mix, 10> mixes{{{21, 0, 660, true},
                                         {99, 0, 60, true},
                                         {80, 0, 97, false},
                                         {50, 0, 220, true},
                                         {40, 0, 300, false},
                                         {36, 0, 344, false},
                                         {32, 0, 400, false},
                                         {18, 35, 788, true},
                                         {14, 50, 1042, false},
                                         {11, 65, 1354, false}}};
    QByteArray text;
    for (std::size_t gas = 0; gas < mixes.size(); ++gas) {
        const Mix& mix = mixes[gas];
        text += static_cast<char>('A' + gas);
        text += padded(100 - mix.oxygen - mix.helium, 3) + ' ' + padded(mix.helium, 3) + ' ' +
                padded(mix.depth, 4) + ' ' + (mix.on ? '1' : '0') + ' ';
    }
    text += "K0802345071 L0 M2 N0 O1 P130 Q0 R0 S1 T100 U024 V120 W030 X1 Y1 Z";
    return text + kEscape;
}

Kd::Kd(std::vector<QByteArray> dives, QByteArray version)
    : dives_(std::move(dives))
    , version_(std::move(version)) {
    memory.setup = newSetup();
}

bool Kd::thirdVersion() const {
    return version_.toUpper().startsWith("V3.");
}

void Kd::receive(QByteArrayView bytes) {
    if (faults.silent || now_ < asleepUntil_) {
        return;
    }
    if (loader) {
        loader->receive(bytes);
        advanceLoader(0);
        return;
    }
    received_ += bytes.toByteArray();
    lastReceived_ = now_;
    while (!received_.isEmpty() && (body_ == Body::None ? takeCommand() : takeBody())) {
    }
}

/// False when the command has not come whole.
bool Kd::takeCommand() {
    const char letter = received_.front();
    switch (letter) {
    case 'D':
        return takeDive();
    case 'S':
        return takeInterval();
    case 'A':
        return takeName();
    default:
        break;
    }
    received_.remove(0, 1);
    switch (letter) {
    case 'M':
        reply(directory(dives_.size()));
        break;
    case 'C':
        reply(directory(std::min<std::size_t>(1, dives_.size())));
        break;
    case 'H':
        if (!thirdVersion()) {
            reply(memory.setup.first(kPositionOfY)); // a device's own text ends at "Y"
        }
        break;
    case 'R':
        reply(interval());
        break;
    case 'J':
        reply(readingsLine("R0000"));
        break;
    case 'L':
        body_ = Body::Logo;
        reply("l");
        break;
    case 'G':
        body_ = Body::Setup;
        reply("g");
        break;
    case 'B':
        body_ = Body::Book;
        reply("b");
        break;
    case 'Q':
        reply("Wait..");
        asleepUntil_ = now_ + restartMilliseconds;
        break;
    default:
        return true; // what is left of a line end, or no command
    }
    log_.emplace_back(1, letter);
    return true;
}

bool Kd::takeDive() {
    if (received_.size() < 2) {
        return false;
    }
    const auto code = static_cast<unsigned char>(received_.at(1));
    received_.remove(0, 2);
    if (code == 'y') {
        log_.emplace_back("Dy");
        QByteArray all;
        for (const QByteArray& dive : dives_) {
            all += dive;
        }
        reply(all + "backsenddone");
        return true;
    }
    const int number = code - kCodeOfDiveZero;
    log_.push_back("D " + QByteArray::number(number));
    sendDive(number);
    return true;
}

void Kd::sendDive(int number) {
    if (number < 1 || number > static_cast<int>(dives_.size())) {
        return;
    }
    const QByteArray& text = dives_[static_cast<std::size_t>(number - 1)];
    if (faults.breakOffAfter >= 0 && faults.breakOffAfter < text.size()) {
        reply(text.first(faults.breakOffAfter) + "PPPPPPPPPPPP");
    } else {
        reply(text);
    }
}

bool Kd::takeInterval() {
    const qsizetype end = received_.indexOf("F\r\n");
    if (end < 0) {
        return received_.size() > 20 ? (received_.remove(0, 1), true) : false;
    }
    const QByteArray digits = received_.mid(1, end - 1);
    received_.remove(0, end + 3);
    log_.push_back("S " + digits);
    bool number = false;
    const int seconds = digits.toInt(&number);
    reply("s");
    if (number && seconds >= 1 && seconds <= 240) {
        memory.interval = seconds;
        reply("Wait..", 100);
        reply("+^+" + padded(seconds, 5), kSaveMilliseconds);
    }
    return true;
}

bool Kd::takeName() {
    constexpr qsizetype kNameLength = 32;
    const qsizetype end = received_.indexOf(kLineEnd);
    if (end < 0) {
        return received_.size() > 200 ? (received_.remove(0, 1), true) : false;
    }
    const QByteArray line = received_.first(end);
    received_.remove(0, end + kLineEnd.size());
    log_.emplace_back("A");
    reply("a");
    if (line.startsWith("A^")) {
        memory.username = line.mid(2, kNameLength);
        reply("Wait..", 100);
        reply("+++", kSaveMilliseconds);
    }
    return true;
}

bool Kd::takeBody() {
    const QByteArray mark = body_ == Body::Book ? kBookEnd : QByteArray(1, kEscape);
    const qsizetype end = received_.indexOf(mark);
    if (end < 0) {
        return false;
    }
    const QByteArray body = received_.first(end);
    received_.remove(0, end + mark.size());
    endBody(body);
    return true;
}

void Kd::endBody(const QByteArray& body) {
    const QByteArray length = QByteArray::number(body.size()) + " bytes";
    QByteArray done = "+++";
    switch (body_) {
    case Body::Logo:
        memory.logo = body;
        log_.push_back("logo " + length);
        break;
    case Body::Book:
        memory.book = body.endsWith(kEscape) ? body.chopped(1) : body;
        log_.push_back("book " + QByteArray::number(memory.book.size()) + " bytes");
        break;
    case Body::Setup: {
        const QByteArray setup = body.startsWith("   ") ? body.sliced(3) : body;
        if (!isSetup(setup)) {
            log_.push_back("setup refused, " + length);
            body_ = Body::None;
            return;
        }
        memory.setup = setup + kEscape;
        log_.push_back("setup " + length);
        done = "+=+";
        break;
    }
    case Body::None:
        break;
    }
    body_ = Body::None;
    reply("Wait..", 100);
    reply(done, kSaveMilliseconds);
}

void Kd::reply(const QByteArray& bytes, int afterMilliseconds) {
    std::int64_t due = now_ + faults.delayMilliseconds + afterMilliseconds;
    if (pieces_.empty()) {
        sent_ = 0;
    } else {
        due = std::max(due, pieces_.back().due);
    }
    if (faults.pieces < 1) {
        pieces_.push_back({due, bytes});
        return;
    }
    for (qsizetype at = 0; at < bytes.size(); at += faults.pieces) {
        pieces_.push_back({due, bytes.mid(at, faults.pieces)});
        due += faults.pauseMilliseconds;
    }
}

QByteArray Kd::directory(std::size_t dives) const {
    QByteArray text;
    if (!productWord.isEmpty()) {
        text += productWord + kLineEnd;
    }
    for (std::size_t dive = 0; dive < dives; ++dive) {
        const QByteArray lines = head(dives_[dive]);
        const qsizetype firstEnd = lines.indexOf(kLineEnd);
        text += "ver=" + version_ + (firstEnd < 0 ? kLineEnd : lines.sliced(firstEnd));
    }
    return text + "End";
}

/// A device that keeps a diver alive takes no setup whose fields do not stand where they must.
bool Kd::isSetup(const QByteArray& body) {
    if (body.size() != kPositionOfY + 3 || body.indexOf('Y') != kPositionOfY - 1 || !body.endsWith('Z')) {
        return false;
    }
    for (qsizetype gas = 0; gas < kGasBlock / 16; ++gas) {
        const QByteArray block = body.mid(16 * gas, 16);
        bool nitrogen = false;
        bool helium = false;
        bool depth = false;
        const int sum = block.mid(1, 3).toInt(&nitrogen) + block.mid(5, 3).toInt(&helium);
        block.mid(9, 4).toInt(&depth);
        if (block[0] != 'A' + gas || !nitrogen || !helium || !depth || sum > 100 || sum < 0) {
            return false;
        }
    }
    return true;
}

/// Fields parted by commas; those from the fourth on lead with a letter of their own.
QByteArray Kd::readingsLine(const QByteArray& lead) const {
    QByteArray line = lead + ',' + padded(readings.depthcount, 4) + ", 1 ," + padded(readings.ppo2, 4) +
                      ",M0000,T" + padded(readings.celsius, 4) +
                      ",A00214,B00130,C00131,D00143,E00168,F00831,G00302,H00130,I00129,J" +
                      padded(readings.ceiling, 5);
    for (const QByteArray& alarm : readings.alarms) {
        line += ',' + alarm;
    }
    return line + kLineEnd;
}

/// Two filler characters and three digits behind the letter; then the values of the head-up display, whose
/// letters stand nowhere ahead of them, and so not in a word of the product either.
QByteArray Kd::interval() const {
    QByteArray text = "r00" + padded(memory.interval, 3);
    for (std::size_t value = 0; value < memory.hud.size(); ++value) {
        text += static_cast<char>('A' + value) + padded(memory.hud[value], 3);
    }
    return text + productWord;
}

QByteArray Kd::spoilt(const QByteArray& bytes) {
    if (faults.dropEvery < 1 && faults.flipEvery < 1) {
        return bytes;
    }
    QByteArray result;
    for (const char byte : bytes) {
        ++sent_;
        if (faults.dropEvery > 0 && sent_ % static_cast<std::uint64_t>(faults.dropEvery) == 0) {
            continue;
        }
        const bool flip = faults.flipEvery > 0 && sent_ % static_cast<std::uint64_t>(faults.flipEvery) == 0;
        result += static_cast<char>(flip ? byte ^ 1 : byte);
    }
    return result;
}

void Kd::advanceLoader(int milliseconds) {
    if (!loader) {
        return;
    }
    const QByteArray said = loader->advance(milliseconds);
    if (!said.isEmpty()) {
        reply(said);
    }
    for (const QByteArray& entry : loader->takeLog()) {
        log_.push_back(entry);
    }
    if (loader->over()) {
        memory.image = image();
        loader.reset();
        asleepUntil_ = now_ + restartMilliseconds;
    }
}

void Kd::hold(int milliseconds) {
    now_ += milliseconds;
    if (loader) {
        loader->hold(milliseconds);
    }
    nextBeacon_ = now_ + quietMilliseconds;
}

QByteArray Kd::advance(int milliseconds) {
    now_ += milliseconds;
    advanceLoader(milliseconds);
    if (faults.silent) {
        pieces_.clear();
        return {};
    }
    if (body_ != Body::None && now_ - lastReceived_ > bodyMilliseconds) {
        body_ = Body::None;
        received_.clear();
    }
    QByteArray out;
    while (!pieces_.empty() && pieces_.front().due <= now_) {
        out += pieces_.front().bytes;
        pieces_.pop_front();
        beacons_ = 0;
        nextBeacon_ = now_ + quietMilliseconds;
    }
    const bool idle =
        !loader && pieces_.empty() && body_ == Body::None && received_.isEmpty() && now_ >= asleepUntil_;
    if (idle && unaskedMilliseconds > 0 && now_ >= nextUnasked_) {
        out += readingsLine("R-001");
        nextUnasked_ = now_ + unaskedMilliseconds;
    }
    if (idle && now_ >= nextBeacon_) {
        if (beacons_ == 0) {
            out += productWord;
        }
        beacons_ = (beacons_ + 1) % beaconsInARun;
        out += "PP";
        nextBeacon_ = now_ + beaconMilliseconds;
    }
    return spoilt(out);
}

} // namespace benthor::simulator
