#pragma once

#include "exports/wholedive.h"
#include "profile/decoder.h"

#include <QByteArrayList>
#include <QRandomGenerator>

namespace benthor::tests {

/// A dive as the store would give it, without a store. Its fields can be changed before it is taken whole.
class MadeDive {
public:
    explicit MadeDive(const QString& id = QStringLiteral("D0000001")) {
        set("DiveID", id);
        set("UserName", QStringLiteral("KD00123"));
        set("Suit", QStringLiteral("KD00123"));
        set("startdate", QStringLiteral("2004-09-03 10:20:30"));
        set("finisheddate", QStringLiteral("2004-09-03 11:01:37"));
        set("Duration", QStringLiteral("41:7"));
        set("MaxDepth", QStringLiteral("23.400"));
        set("Version", QStringLiteral("V3.12"));
        set("Interval", QStringLiteral("10"));
        set("systemid", QStringLiteral("KD3"));
        set("datmos", QStringLiteral("1013"));
        set("dbtxtname", QStringLiteral("dive.txt"));
    }

    /// Null where there is no value.
    MadeDive& set(const char* field, const std::optional<QString>& value) {
        for (auto& [name, old] : dive_.store) {
            if (name == QLatin1String(field)) {
                old = value;
                return *this;
            }
        }
        dive_.store.emplace_back(QLatin1String(field), value);
        return *this;
    }
    /// Per cent; the depth in tenths of a metre.
    MadeDive& gas(const QString& nitrogen, const QString& helium = QStringLiteral("0"),
                  const QString& depth = QStringLiteral("660")) {
        dive_.gases.push_back({{QStringLiteral("diveid"), QStringLiteral("D0000001")},
                               {QStringLiteral("Gastype"), QString::number(dive_.gases.size())},
                               {QStringLiteral("GasN2"), nitrogen},
                               {QStringLiteral("GasHe"), helium},
                               {QStringLiteral("gasmod"), depth},
                               {QStringLiteral("Gasstat"), QStringLiteral("1")}});
        return *this;
    }
    MadeDive& buddy(const QString& name) {
        dive_.buddies += name;
        return *this;
    }
    /// Lines of the profile without their line ends.
    MadeDive& records(const QByteArrayList& lines) {
        dive_.file = "ver=V3.12\r\nProfile\r\nTime,Depth,Mix\r\n" + lines.join("\r\n") + "\r\nEnd\r\n";
        return *this;
    }
    MadeDive& file(const QByteArray& bytes) {
        dive_.file = bytes;
        return *this;
    }

    exports::WholeDive whole() const {
        exports::WholeDive dive = dive_;
        dive.figures = exports::figuresOf(dive.store);
        std::vector<profile::GasRow> rows;
        for (const exports::StoreFields& gas : dive.gases) {
            profile::GasRow& row = rows.emplace_back();
            for (const auto& [name, value] : gas) {
                row.push_back(value);
            }
        }
        profile::readgaslist(rows, false, dive.gasArrays);
        if (dive.file) {
            dive.profile = profile::decodeProfile(*dive.file, false);
        }
        if (dive.samples() < 1) {
            dive.withoutSamples = QStringLiteral("Its file holds no sample.");
        }
        return dive;
    }

private:
    exports::WholeDive dive_;
};

/// Records with every letter that a device writes, each there or not; what the decoder makes of them is
/// finite and, but for the temperature, not below 0.
class RandomRecords {
public:
    explicit RandomRecords(quint32 seed)
        : random_(seed) {}

    QByteArrayList make(int records, int gases) {
        letters_.clear();
        for (const char letter : QByteArray("BCDEFGHIJNOPQRSTUVWXYZxyzvtf")) {
            if (below(3) != 0) {
                letters_ += letter;
            }
        }
        QByteArrayList lines;
        for (int k = 0; k < records; ++k) {
            lines += record(gases);
        }
        return lines;
    }
    int below(int limit) { return random_.bounded(limit); }

private:
    QByteArray number(int limit) { return QByteArray::number(below(limit)); }

    QByteArray record(int gases) {
        QByteArray line = "," + number(2048) + ',' + (below(5) == 0 ? number(gases) : QByteArray("0")) + ',' +
                          number(200) + ",M" + number(2) + ",T" + QByteArray::number(below(35) - 3) +
                          (below(3) == 0 ? ",C" : ",A") + number(60);
        for (const char letter : letters_) {
            if (below(10) != 0) {
                line += QByteArray(",") + letter + number(letter == 'N' ? 20 : 300) +
                        (below(20) == 0 ? QByteArray(".125") : QByteArray());
            }
        }
        static const QByteArrayList words{"PREDIVE", "LOW CELL", "ASCENT", "DECO", "CELL A FAIL",  "surface",
                                          "HIGH",    " deco ",   "<&>",    "a; b", "CELL \xE4 \"'"};
        for (; below(4) == 0;) {
            line += ',' + words[below(static_cast<int>(words.size()))];
        }
        return line;
    }

    QRandomGenerator random_;
    QByteArray letters_;
};

} // namespace benthor::tests
