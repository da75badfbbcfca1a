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
        : m_bytes(bytes) {}
    char next() { return atEnd() ? '\0' : m_bytes[m_next++]; }
    bool atEnd() const { return m_next >= m_bytes.size(); }

private:
    QByteArrayView m_bytes;
    qsizetype m_next = 0;
};

class Scan {
public:
    explicit Scan(QByteArrayView file)
        : m_reader(file) {}

    HeaderScan run() {
        std::string scratch;
        for (int round = 0; round < kRounds && m_result.outcome == ScanOutcome::Finished; ++round) {
            scratch += m_reader.next();
            // Emptied at every match, the text can hold a keyword only at its end.
            for (const Keyword& keyword : kKeywords) {
                if (scratch.back() == keyword.word.back() && scratch.ends_with(keyword.word)) {
                    (this->*keyword.read)();
                    scratch.clear();
                    break;
                }
            }
        }
        return std::move(m_result);
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
            const char c = m_reader.next();
            if (c == kCr) {
                break;
            }
            version += c;
        }
        beginDive(version);
    }

    void readInterval() {
        if (!m_versionSeen) {
            beginDive(kNoVersion);
        }
        const std::optional<QByteArray> value = restOfLine(isNumberByte);
        if (value) {
            m_intervalSeen = true;
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
        if (!m_versionSeen) {
            m_result.outcome = ScanOutcome::VersionMissing;
            return;
        }
        supplyInterval();
        m_startSeen = true;
        if (const std::optional<QByteArray> code = value(isDigit, kValueBytes)) {
            m_startcode = *code;
            put(HeaderField::Start, m_startcode);
        }
    }

    void readFinish() {
        supplyStart();
        if (!m_versionSeen || !m_intervalSeen) {
            return;
        }
        m_finishSeen = true;
        if (const std::optional<QByteArray> code = value(isDigit, kValueBytes)) {
            act(PutFinish{m_startcode, *code});
        }
    }

    void readMaxDepth() {
        if (!m_finishSeen && m_versionSeen) {
            supplyStart();
            supplyInterval();
            m_finishSeen = true;
            act(PutFinish{m_startcode, kNoFinish});
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
    void readProfile() { ++m_result.profiles; }

    /// A value line in its two steps: the comma, then the value up to its CR. Nothing when either is out of
    /// its range.
    std::optional<QByteArray> value(AcceptByte accept, int limit) {
        bool comma = false;
        for (int i = 0; i < kCommaBytes && !comma; ++i) {
            comma = m_reader.next() == ',';
        }
        if (!comma) {
            return std::nullopt;
        }
        QByteArray text;
        for (int i = 0; i < limit; ++i) {
            const char c = m_reader.next();
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
        while (!m_reader.atEnd()) {
            const char c = m_reader.next();
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
            const char c = m_reader.next();
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
                m_result.outcome = fault;
                return;
            }
        }
    }

    void beginDive(const QByteArray& version) {
        m_versionSeen = true;
        act(NewDive{version});
    }

    void supplyInterval() {
        if (!m_intervalSeen) {
            m_intervalSeen = true;
            put(HeaderField::Interval, kUsualInterval);
        }
    }

    void supplyStart() {
        if (!m_startSeen && m_versionSeen) {
            m_startSeen = true;
            m_startcode = kNoStart;
            put(HeaderField::Start, m_startcode);
        }
    }

    void put(HeaderField field, const QByteArray& text) { act(PutField{field, text}); }

    void act(HeaderAction action) {
        if (m_versionSeen) {
            m_result.actions.push_back(std::move(action));
        }
    }

    ByteReader m_reader;
    HeaderScan m_result;
    bool m_versionSeen = false;
    bool m_intervalSeen = false;
    bool m_startSeen = false;
    bool m_finishSeen = false;
    QByteArray m_startcode; ///< empty when the line's value was lost
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
