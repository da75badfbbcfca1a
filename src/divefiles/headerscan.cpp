#include "divefiles/headerscan.h"

#include "platform/textformat.h"

#include <optional>
#include <string>
#include <string_view>

namespace benthor::divefiles {

namespace {

constexpr int kRounds = 1000;
constexpr int kCommaBytes = 6;     ///< within which a value line's comma stands, itself included
constexpr int kValueBytes = 13;    ///< of a value with its CR
constexpr int kCylinderBytes = 18; ///< of the cylinder's value with its CR
constexpr int kVersionBytes = 13;
constexpr qsizetype kFieldBytes = 9; ///< of one field of a Gas or Tissue line
constexpr double kIntervalLimit = 100;
constexpr char kCr = '\r';

const QByteArray kNoVersion = QByteArrayLiteral("Null");
const QByteArray kUsualInterval = QByteArrayLiteral("10");
const QByteArray kNoStart = QByteArrayLiteral("140000000");
const QByteArray kNoFinish = QByteArrayLiteral("150000000");

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
bool isNumberByte(char c) {
    return isDigit(c) || c == '.';
}
bool isAnyByte(char) {
    return true;
}
using AcceptByte = bool (*)(char);

/// The file as the scan sees it: zero bytes behind its end.
class ByteReader {
public:
    explicit ByteReader(QByteArrayView bytes)
        : bytes_(bytes) {}
    char next() { return atEnd() ? '\0' : bytes_[next_++]; }
    bool atEnd() const { return next_ >= bytes_.size(); }

private:
    QByteArrayView bytes_;
    qsizetype next_ = 0;
};

class Scan {
public:
    explicit Scan(QByteArrayView file)
        : reader_(file) {}

    HeaderScan run() {
        std::string scratch;
        for (int round = 0; round < kRounds && result_.outcome == ScanOutcome::Finished; ++round) {
            scratch += reader_.next();
            // Emptied at every match, the text can hold a keyword only at its end.
            for (const Keyword& keyword : kKeywords) {
                if (scratch.back() == keyword.word.back() && scratch.ends_with(keyword.word)) {
                    (this->*keyword.read)();
                    scratch.clear();
                    break;
                }
            }
        }
        return std::move(result_);
    }

private:
    struct Keyword {
        std::string_view word;
        void (Scan::*read)();
    };
    static const std::array<Keyword, 16> kKeywords;

    void readVersion() {
        QByteArray version;
        for (int i = 0; i < kVersionBytes; ++i) {
            const char c = reader_.next();
            if (c == kCr) {
                break;
            }
            version += c;
        }
        beginDive(version);
    }

    void readInterval() {
        if (!versionSeen_) {
            beginDive(kNoVersion);
        }
        const std::optional<QByteArray> value = restOfLine(isNumberByte);
        if (value) {
            intervalSeen_ = true;
            const bool tooLong = platform::leadingNumber(QByteArrayView(*value)) >= kIntervalLimit;
            put(HeaderField::Interval, tooLong ? kUsualInterval : *value);
        }
    }

    void readSerial() {
        if (const std::optional<QByteArray> value = restOfLine(isAnyByte)) {
            put(HeaderField::Serial, *value);
        }
    }

    void readStart() {
        if (!versionSeen_) {
            result_.outcome = ScanOutcome::VersionMissing;
            return;
        }
        supplyInterval();
        startSeen_ = true;
        if (const std::optional<QByteArray> code = value(isDigit, kValueBytes)) {
            startcode_ = *code;
            put(HeaderField::Start, startcode_);
        }
    }

    void readFinish() {
        supplyStart();
        if (!versionSeen_ || !intervalSeen_) {
            return;
        }
        finishSeen_ = true;
        if (const std::optional<QByteArray> code = value(isDigit, kValueBytes)) {
            act(PutFinish{startcode_, *code});
        }
    }

    void readMaxDepth() {
        if (!finishSeen_ && versionSeen_) {
            supplyStart();
            supplyInterval();
            finishSeen_ = true;
            act(PutFinish{startcode_, kNoFinish});
        }
        readNumber(HeaderField::MaxD);
    }

    void readStatus() { readNumber(HeaderField::Status); }
    void readDescend() { readNumber(HeaderField::Descend); }
    void readDAtmos() { readNumber(HeaderField::DAtmos); }
    void readDStack() { readNumber(HeaderField::DStack); }
    void readDUsage() { readNumber(HeaderField::DUsage); }
    void readOtu() { readNumber(HeaderField::Otu); }

    void readCylinder() {
        if (const std::optional<QByteArray> text = value(isAnyByte, kCylinderBytes)) {
            put(HeaderField::HpCylinder, *text);
        }
    }

    void readGas() { readFields<AddGas>(ScanOutcome::GasTooMany); }
    void readTissue() { readFields<AddTissue>(ScanOutcome::TissueTooMany); }
    void readProfile() { ++result_.profiles; }

    /// A value line in its two steps: the comma, then the value up to its CR. Nothing when either is out of
    /// its range.
    std::optional<QByteArray> value(AcceptByte accept, int limit) {
        bool comma = false;
        for (int i = 0; i < kCommaBytes && !comma; ++i) {
            comma = reader_.next() == ',';
        }
        if (!comma) {
            return std::nullopt;
        }
        QByteArray text;
        for (int i = 0; i < limit; ++i) {
            const char c = reader_.next();
            if (c == kCr) {
                return text;
            }
            if (accept(c)) {
                text += c;
            }
        }
        return std::nullopt;
    }

    /// What stands before the next CR. Nothing when the file ends first: zero bytes would follow for ever.
    std::optional<QByteArray> restOfLine(AcceptByte accept) {
        QByteArray text;
        while (!reader_.atEnd()) {
            const char c = reader_.next();
            if (c == kCr) {
                return text;
            }
            if (accept(c)) {
                text += c;
            }
        }
        return std::nullopt;
    }

    void readNumber(HeaderField field) {
        if (const std::optional<QByteArray> number = value(isNumberByte, kValueBytes)) {
            put(field, *number);
        }
    }

    /// A Gas or Tissue line. Zero bytes behind the end of the file fill the field, so this ends.
    template <typename Row> void readFields(ScanOutcome fault) {
        Row row;
        size_t field = 0;
        for (;;) {
            const char c = reader_.next();
            if (c == kCr) {
                row.fields[field] += c;
                act(std::move(row));
                return;
            }
            if (c == ',') {
                ++field;
            } else if (c != ' ') {
                row.fields[field] += c;
            }
            if (field >= row.fields.size() || row.fields[field].size() > kFieldBytes) {
                result_.outcome = fault;
                return;
            }
        }
    }

    void beginDive(const QByteArray& version) {
        versionSeen_ = true;
        act(NewDive{version});
    }

    void supplyInterval() {
        if (!intervalSeen_) {
            intervalSeen_ = true;
            put(HeaderField::Interval, kUsualInterval);
        }
    }

    void supplyStart() {
        if (!startSeen_ && versionSeen_) {
            startSeen_ = true;
            startcode_ = kNoStart;
            put(HeaderField::Start, startcode_);
        }
    }

    void put(HeaderField field, const QByteArray& text) { act(PutField{field, text}); }

    void act(HeaderAction action) {
        if (versionSeen_) {
            result_.actions.push_back(std::move(action));
        }
    }

    ByteReader reader_;
    HeaderScan result_;
    bool versionSeen_ = false;
    bool intervalSeen_ = false;
    bool startSeen_ = false;
    bool finishSeen_ = false;
    QByteArray startcode_; ///< empty when the line's value was lost
};

const std::array<Scan::Keyword, 16> Scan::kKeywords{{
    {"ver=", &Scan::readVersion},
    {"Recint=", &Scan::readInterval},
    {"SN=", &Scan::readSerial},
    {"Start", &Scan::readStart},
    {"Finish", &Scan::readFinish},
    {"Status", &Scan::readStatus},
    {"Descend", &Scan::readDescend},
    {"DAtmos", &Scan::readDAtmos},
    {"DStack", &Scan::readDStack},
    {"DUsage", &Scan::readDUsage},
    {"MaxD", &Scan::readMaxDepth},
    {"OTU", &Scan::readOtu},
    {"HPCylinder", &Scan::readCylinder},
    {"Gas", &Scan::readGas},
    {"Tissue", &Scan::readTissue},
    {"Profile", &Scan::readProfile},
}};

} // namespace

HeaderScan scanheader(QByteArrayView file) {
    return Scan(file).run();
}

} // namespace benthor::divefiles
