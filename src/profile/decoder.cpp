#include "profile/decoder.h"

#include "profile/recorddecoder.h"

namespace benthor::profile {

namespace {

constexpr qsizetype kMostHeaderBytes = 10000;
constexpr int kMostLines = 32100;
constexpr int kMostCommasInPeace = 39;
constexpr int kLeastCommas = 3;
constexpr QByteArrayView kProfileWord("Profile");
constexpr QByteArrayView kEndWord("End");

enum class Byte : unsigned char { Ordinary, Comma, LineEnd, LastOfEnd };

constexpr std::array<Byte, 256> byteClasses() {
    std::array<Byte, 256> classes{};
    classes[','] = Byte::Comma;
    classes['\r'] = Byte::LineEnd;
    classes['d'] = Byte::LastOfEnd;
    return classes;
}

constexpr std::array<Byte, 256> kByteClasses = byteClasses();

class Reader {
public:
    Reader(QByteArrayView bytes, DiveProfile& profile, bool feet, const DecoderHooks& hooks)
        : at_(bytes.begin())
        , end_(bytes.end())
        , profile_(profile)
        , hooks_(hooks)
        , line_(profile.alarms.grown)
        , records_(profile, feet) {}

    void read() {
        if (!scanHeader()) {
            return;
        }
        if (at_ == end_) { // the byte behind the word
            endOfFile();
            return;
        }
        ++at_;
        readLines();
    }

private:
    bool scanHeader();
    void readLines();
    bool skipOrdinaryBytes();
    bool endField();
    bool endLine();
    bool completesEnd() const;

    bool stop(ReadingEnd why) {
        profile_.end = why;
        return false;
    }
    bool endOfFile() {
        show(QStringLiteral("end of file unexpected"));
        return stop(ReadingEnd::EndOfFile);
    }
    bool mayGoOn() { return !hooks_.yield || hooks_.yield() || stop(ReadingEnd::Stopped); }
    void show(const QString& message) {
        profile_.messages += message;
        if (hooks_.message) {
            hooks_.message(message);
        }
    }

    const char* at_;
    const char* const end_;
    const char* field_ = nullptr; ///< first byte of the field being read
    DiveProfile& profile_;
    const DecoderHooks& hooks_;
    LineFields line_;
    RecordDecoder records_;
    int lines_ = 0;
};

bool Reader::scanHeader() {
    const char* lineBegin = at_;
    for (qsizetype count = 0; count < kMostHeaderBytes; ++count) {
        if (at_ == end_) {
            return endOfFile();
        }
        const char byte = *at_++;
        if (byte == '\r' || byte == '\n') {
            lineBegin = at_;
        }
        if (!mayGoOn()) {
            return false;
        }
        if (byte == kProfileWord.back() && QByteArrayView(lineBegin, at_).endsWith(kProfileWord)) {
            break;
        }
    }
    return true;
}

void Reader::readLines() {
    field_ = at_;
    while (skipOrdinaryBytes()) {
        bool goesOn = true;
        switch (kByteClasses[static_cast<unsigned char>(*at_++)]) {
        case Byte::Comma:
            goesOn = endField();
            break;
        case Byte::LineEnd:
            goesOn = endLine();
            break;
        case Byte::LastOfEnd:
            goesOn = !completesEnd() || stop(ReadingEnd::EndWord);
            break;
        case Byte::Ordinary:
            break;
        }
        if (!goesOn) {
            return;
        }
    }
    endOfFile();
}

/// False when no byte is left.
bool Reader::skipOrdinaryBytes() {
    const char* at = at_; // a local stays in a register
    while (at != end_ && kByteClasses[static_cast<unsigned char>(*at)] == Byte::Ordinary) {
        ++at;
    }
    at_ = at;
    return at != end_;
}

bool Reader::endField() {
    line_.close(QByteArrayView(field_, at_ - 1));
    field_ = at_;
    line_.next();
    if (line_.last() > kMostCommasInPeace) {
        show(QStringLiteral("Errors - Too many parameter  !"));
    }
    if (line_.last() >= kFields) {
        return stop(ReadingEnd::Fault);
    }
    return mayGoOn();
}

bool Reader::endLine() {
    line_.close(QByteArrayView(field_, at_ - 1));
    field_ = at_;
    if (!mayGoOn()) {
        return false;
    }
    ++lines_;
    if (lines_ > kMostLines) {
        return stop(ReadingEnd::TooManyLines);
    }
    if (lines_ > 1 && line_.last() >= kLeastCommas && !records_.decode(line_)) {
        return stop(ReadingEnd::Fault);
    }
    line_.clearfields();
    if (profile_.malformed && lines_ % 10 == 0 && hooks_.malformedtenthline) {
        hooks_.malformedtenthline();
    }
    return true;
}

/// Whether the byte just read, a "d", completes the word in its field. A grown field may have begun it lines
/// ago.
bool Reader::completesEnd() const {
    const QByteArrayView read(field_, at_);
    if (read.size() >= kEndWord.size()) {
        return read.endsWith(kEndWord);
    }
    if (line_.last() < kFirstGrownField) {
        return false;
    }
    const QByteArrayView before = line_.grown(line_.last());
    const qsizetype missing = kEndWord.size() - read.size();
    return kEndWord.endsWith(read) && before.endsWith(kEndWord.first(missing));
}

} // namespace

DiveProfile decodeProfile(QByteArrayView bytes, bool feet, const DecoderHooks& hooks) {
    DiveProfile profile;
    Reader(bytes, profile, feet, hooks).read();
    return profile;
}

} // namespace benthor::profile
