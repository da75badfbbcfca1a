#include "wirereaders.h"

#include <algorithm>
#include <cmath>

namespace {

class Bytes {
public:
    explicit Bytes(const QByteArray& text)
        : text_(text) {}

    /// Behind the end there are zero bytes.
    char next() { return at_ < text_.size() ? text_[at_++] : '\0'; }

private:
    const QByteArray& text_;
    qsizetype at_ = 0;
};

QByteArray digitsAndPoint(const QByteArray& value) {
    QByteArray kept;
    for (const char c : value) {
        if ((c >= '0' && c <= '9') || c == '.') {
            kept += c;
        }
    }
    return kept;
}

/// The bytes up to CR, or none when there is no CR within `limit`.
bool untilReturn(Bytes& bytes, int limit, QByteArray& value) {
    value.clear();
    for (int i = 0; i < limit; ++i) {
        const char c = bytes.next();
        if (c == '\r') {
            return true;
        }
        value += c;
    }
    return false;
}

void commaValue(Bytes& bytes, const QByteArray& keyword, HeadScan& scan) {
    bool comma = false;
    for (int i = 0; i < 6 && !comma; ++i) {
        comma = bytes.next() == ',';
    }
    QByteArray value;
    const bool any = keyword == "HPCylinder";
    if (comma && untilReturn(bytes, any ? 18 : 13, value)) {
        scan.values[keyword] = any ? value.mid(1, 4) : digitsAndPoint(value);
    }
}

void fieldLine(Bytes& bytes, int fields, QList<QList<QByteArray>>& rows, bool& broken) {
    QList<QByteArray> row{{}};
    for (char c = bytes.next(); c != '\r'; c = bytes.next()) {
        if (c == ',') {
            row.append(QByteArray());
        } else if (c != ' ') {
            row.last() += c;
        }
        if (row.size() > fields || row.last().size() > 9) {
            broken = true;
            return;
        }
    }
    rows.append(row);
}

const QList<QByteArray> keywords = {"ver=",       "Recint=", "SN=",    "Start",  "Finish", "Status",
                                    "Descend",    "DAtmos",  "DStack", "DUsage", "MaxD",   "OTU",
                                    "HPCylinder", "Gas",     "Tissue", "Profile"};

void act(Bytes& bytes, const QByteArray& keyword, int round, HeadScan& scan) {
    scan.found[keyword] += 1;
    if (scan.roundsatprofile >= 0) {
        scan.actionsbehindprofile += 1;
    }
    QByteArray value;
    if (keyword == "Profile") {
        scan.roundsatprofile = round;
    } else if (keyword == "Gas") {
        fieldLine(bytes, 5, scan.gases, scan.broken);
    } else if (keyword == "Tissue") {
        fieldLine(bytes, 3, scan.tissues, scan.broken);
    } else if (keyword.endsWith('=')) {
        if (untilReturn(bytes, 13, value)) {
            scan.values[keyword] = keyword == "Recint=" ? digitsAndPoint(value) : value.trimmed();
        }
    } else {
        commaValue(bytes, keyword, scan);
    }
}

bool numeric(const QByteArray& text) {
    bool ok = false;
    text.toDouble(&ok);
    return ok;
}

struct Label {
    QByteArray name;
    int skip;
    int longest;
    char lowest; ///< digit that is kept; 0: everything is
};

/// Writes the column at a carriage return within the longest length; returns where the reading stood.
qsizetype takeColumn(const QByteArray& text, qsizetype at, const Label& label,
                     QMap<QByteArray, QByteArray>& columns) {
    QByteArray value;
    for (int i = 0; i < label.longest && at < text.size(); ++i, ++at) {
        if (text[at] == '\r') {
            columns[label.name] = value;
            break;
        }
        if (label.lowest == 0 || (text[at] >= label.lowest && text[at] <= '9')) {
            value += text[at];
        }
    }
    return at;
}

} // namespace

HeadScan scanHead(const QByteArray& text) {
    HeadScan scan;
    Bytes bytes(text);
    // Looked at after each byte and emptied at each match, a keyword is in it exactly when it ends with it.
    QByteArray seen;
    for (int round = 0; round < 1000 && !scan.broken; ++round) {
        seen += bytes.next();
        for (const QByteArray& keyword : keywords) {
            if (seen.endsWith(keyword)) {
                seen.clear();
                act(bytes, keyword, round, scan);
                break;
            }
        }
    }
    return scan;
}

QStringList rowFaults(const HeadScan& scan) {
    QStringList faults;
    const auto check = [&faults](bool good, const char* what) {
        if (!good) {
            faults << QString::fromLatin1(what);
        }
    };
    const QByteArray version = scan.values.value("ver=");
    const QByteArray interval = scan.values.value("Recint=");
    check(!scan.broken, "line");
    check(version.size() >= 2 && version.size() <= 8, "version");
    check(interval.size() <= 3 && numeric(interval), "interval");
    check(!scan.values.value("Start").isEmpty(), "start");
    check(scan.values.value("Finish").toULongLong() > scan.values.value("Start").toULongLong(), "finish");
    check(!scan.values.value("MaxD").isEmpty() && scan.values.value("MaxD").size() <= 8, "depth");
    check(!scan.gases.isEmpty(), "no gas");
    check(!scan.tissues.isEmpty(), "no tissue");
    for (const QList<QByteArray>& row : scan.gases) {
        check(row.size() == 5, "gas fields");
        check(row.value(0).size() == 4 && numeric(row.value(0)), "gas number");
        check(row.value(1).size() <= 3 && numeric(row.value(1)), "nitrogen");
        check(row.value(2).size() <= 3 && numeric(row.value(2)), "helium");
        check(row.value(3).size() <= 4 && numeric(row.value(3)), "depth of the gas");
        // The return stays in the last field.
        check(row.value(4).size() + 1 <= 4 && numeric(row.value(4)), "state of the gas");
    }
    for (const QList<QByteArray>& row : scan.tissues) {
        check(row.size() == 3, "tissue fields");
        check(row.value(0).size() == 4 && numeric(row.value(0)), "tissue number");
        check(row.value(1).size() <= 3 && numeric(row.value(1)), "tissue nitrogen");
        check(row.value(2).size() + 1 <= 4 && numeric(row.value(2)), "tissue helium");
    }
    return faults;
}

QMap<QByteArray, QByteArray> walkDirectory(const QByteArray& text) {
    // Of the interval, the walk drops zeros as well.
    static const QList<Label> labels = {
        {"Recint=", 0, 5, '1'}, {"Start", 8, 13, '0'}, {"Finish", 8, 13, '0'},      {"MaxD", 8, 7, 0},
        {"Status", 8, 7, '0'},  {"OTU", 8, 7, '0'},    {"Descend prob", 8, 7, '0'}, {"HPCylinder", 8, 11, 0},
        {"DStack", 8, 5, 0},    {"DUsage", 8, 5, 0},   {"DAtmos", 8, 7, 0}};
    QMap<QByteArray, QByteArray> columns;
    QByteArray seen;
    for (qsizetype at = 0; at < text.size(); ++at) {
        seen += text[at];
        if (seen.endsWith("ver")) {
            columns["ver"] = QByteArray::number(columns.value("ver").toInt() + 1);
            seen.clear();
        }
        const auto label = std::find_if(labels.begin(), labels.end(), [&](const Label& candidate) {
            return seen.endsWith(candidate.name);
        });
        if (label != labels.end()) {
            seen.clear();
            at = takeColumn(text, at + label->skip, *label, columns);
        }
    }
    return columns;
}

DecodedProfile decodeProfile(const QByteArray& text) {
    DecodedProfile profile;
    const qsizetype mark = text.indexOf("Profile");
    QList<QByteArray> fields{{}};
    bool firstline = true;
    bool wrapped = false;
    for (qsizetype at = mark + 8; mark >= 0 && at < text.size(); ++at) {
        const char c = text[at];
        if (c == ',') {
            fields.append(QByteArray());
        } else if (c != '\r') {
            fields.last() += c;
            if (fields.last().contains("End")) {
                profile.ended = true;
                break;
            }
        } else {
            profile.mostfields = std::max(profile.mostfields, static_cast<int>(fields.size()));
            if (firstline) {
                firstline = false;
            } else if (fields.size() < 4) {
                profile.dropped += 1;
            } else {
                DecodedRecord record{fields, std::round(fields[1].toInt() * 9.375) / 100};
                record.depth += wrapped && record.depth < 100 ? 192 : 0;
                wrapped = record.depth > 150;
                profile.records.append(record);
            }
            fields = {QByteArray()};
        }
    }
    return profile;
}
