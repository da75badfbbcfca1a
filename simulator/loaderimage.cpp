// An image on its way into the loader's memories.

#include "simulator/loader.h"

namespace benthor::simulator {

namespace {

constexpr char kMark = '&';
constexpr qsizetype kRecord = 128;
constexpr int kProgramSteps = 8;

/// Where an image ends whose transfer ended in these bytes. The marks may have been held up on the line and
/// then come all together, so its records tell how many of them there are; without any it is two.
qsizetype imageEnd(QByteArrayView received) {
    const qsizetype ahead = received.startsWith('*') ? 1 : 0;
    for (qsizetype end = received.size() - 2; end >= 0 && received[end] == kMark; --end) {
        if (end % kRecord == ahead) {
            return end;
        }
    }
    return received.size() - 2;
}

std::uint32_t sumOf(QByteArrayView bytes) {
    std::uint32_t sum = 0;
    for (const char byte : bytes) {
        sum += static_cast<unsigned char>(byte);
    }
    return sum;
}

} // namespace

void Loader::begin(QByteArrayView bytes) {
    state_ = State::Taking;
    hangs_ = false;
    withheld_.clear();
    asked_ = false;
    opening_.clear();
    received_.clear();
    take(bytes);
}

void Loader::take(QByteArrayView bytes) {
    const auto reached = [this](int limit) { return limit >= 0 && received_.size() >= limit; };
    for (const char byte : bytes) {
        received_ += byte;
        if (reached(faults.dropOutAfter)) {
            dropOut();
        } else if (reached(faults.endEarlyAfter)) {
            endEarly();
        } else {
            continue;
        }
        deafFor_ = deafMilliseconds; // the rest of the image is still on its way
        return;
    }
}

void Loader::endTransfer() {
    image = received_.first(imageEnd(received_));
    note("image " + QByteArray::number(image.size()) + " bytes");
    state_ = State::Verdict;
    toldSums_ = 0;
    lastKey_ = 0;
    hangs_ = faults.silentEnd;
    tellSum();
}

void Loader::dropOut() {
    note("dropped out after " + QByteArray::number(received_.size()) + " bytes");
    state_ = State::Reprogramming;
    lastKey_ = 0;
    say(page());
}

void Loader::endEarly() {
    note("ended early after " + QByteArray::number(received_.size()) + " bytes");
    state_ = State::Prompt;
    lastKey_ = 0;
    say(memoryLines(programmed));
}

void Loader::wantSecondGo() {
    note("not the same");
    faults.secondGo = false;
    programmed.fill(false);
    state_ = State::Reprogramming;
    beaconsLeft_ = secondGoBeacons;
    nextBeacon_ = now_;
}

QByteArray Loader::checkOfImage() const {
    const std::optional<std::uint16_t> own = receivedCheck(image);
    if (!own && !foreignCheck.isEmpty() && !faults.wrongCheck) {
        return foreignCheck;
    }
    const std::uint32_t value = own                      ? *own
                                : foreignCheck.isEmpty() ? sumOf(image)
                                                         : foreignCheck.toUInt(nullptr, 16);
    const std::uint32_t told = (value + (faults.wrongCheck ? 1 : 0)) & 0xFFFF;
    return QByteArray::number(told, 16).toUpper().rightJustified(4, '0');
}

/// Its own leading "&" counts, the marks at the end do not.
void Loader::tellSum() {
    const bool wrong = faults.wrongSums == LoaderFaults::always || toldSums_ < faults.wrongSums;
    ++toldSums_;
    const std::uint32_t sum = kMark + sumOf(image) - (wrong ? 1 : 0);
    say(sumLine(sum));
}

void Loader::programStep() {
    while (state_ == State::Programming &&
           now_ - began_ >= (step_ + 1) * programMilliseconds / kProgramSteps) {
        program(step_++);
    }
}

/// Each memory is erased and programmed; then the data are compared.
void Loader::program(int step) {
    const auto memory = static_cast<std::size_t>(step / 2);
    if (memory < programmed.size()) {
        const bool erases = step % 2 == 0;
        if (!erases && faults.leftErased == static_cast<char>('A' + memory)) {
            return;
        }
        programmed[memory] = !erases;
        say(erases ? erasedLine(memory) : programmedLine(memory));
    } else if (step < kProgramSteps - 1) {
        if (faults.secondGo) {
            wantSecondGo();
        } else {
            say(compareLine());
        }
    } else {
        check = checkOfImage();
        state_ = State::Done;
        note("programmed");
        say(checkLine(type_, check));
    }
}

} // namespace benthor::simulator
