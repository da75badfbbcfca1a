#pragma once

#include "divefiles/importer.h"
#include "exports/exporterror.h"
#include "exports/wholedive.h"
#include "profile/decoder.h"
#include "tests/support/programfixture.h"

#include <QBuffer>

namespace benthor::tests {

/// A folder with a store, into which dives are put row by row.
class ExportWorld : public ProgramFixture {
public:
    /// A dive with its file, and a row in each of the tables gas and tissue. `start` as the store has it;
    /// empty for none.
    void addDive(const QString& id, const QString& start, const QByteArray& file = goodDive(),
                 const QString& serial = QStringLiteral("KD00123")) const {
        const QString name = QString::number(++files_) + QStringLiteral(".txt");
        put(QStringLiteral("dbtxt"), name, file);
        process().database.execute(platform::sqlWith("INSERT INTO main (DiveID, Suit, startdate, "
                                                     "\"Interval\", MaxDepth, Duration, dbtxtname) VALUES ('",
                                                     id, "', '", serial, "', '", start,
                                                     "', '10', '23.400', '41:7', '", name, "')"));
        process().database.execute(
            platform::sqlWith("INSERT INTO gas VALUES ('", id, "', '0', '79', '0', '660', '1')"));
    }
    static void set(const char* sql) { process().database.execute(sql); }
    exports::WholeDive dive(const QString& id = QStringLiteral("D0000001")) const {
        return exports::DiveReader(process().database, folder).read(id).value();
    }

private:
    mutable int files_ = 0;
};

/// A dive file of these records ("depth,gas,po2,M0,T18,A500" and what else may follow).
inline QByteArray diveFile(const QByteArrayList& records) {
    QByteArray text = "Profile\r\nTime,Depth,Mix\r\n";
    for (const QByteArray& record : records) {
        text += "," + record + "\r\n";
    }
    return text + "End\r\n";
}

/// A dive that no store holds, of these records, with an interval of 10 s.
inline exports::WholeDive looseDive(const QByteArrayList& records) {
    exports::WholeDive dive;
    dive.file = diveFile(records);
    dive.fileName = QStringLiteral("1.txt");
    dive.profile = profile::decodeProfile(*dive.file, false);
    dive.figures.id = QStringLiteral("D0000001");
    dive.figures.interval = 10;
    return dive;
}

/// All that a format makes of dives.
template <typename Format>
QByteArray written(Format&& format, QBuffer& buffer, const std::vector<const exports::WholeDive*>& dives) {
    buffer.open(QIODevice::WriteOnly);
    format.begin();
    for (const exports::WholeDive* const dive : dives) {
        format.add(*dive);
    }
    format.end();
    return buffer.data();
}

/// Takes so many bytes and no more, as a disk that fills up.
class SmallDevice : public QIODevice {
public:
    explicit SmallDevice(qint64 most)
        : left_(most) {
        open(WriteOnly | Unbuffered);
    }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char*, qint64 count) override {
        const qint64 taken = std::min(count, left_);
        left_ -= taken;
        if (taken == 0 && count > 0) {
            setErrorString(QStringLiteral("full"));
            return -1;
        }
        return taken;
    }

private:
    qint64 left_;
};

/// How many of all sizes of a disk below `size` let a format pass without a word. `work` gets the device.
template <typename Work> int silentLosses(qint64 size, Work work) {
    int silent = 0;
    for (qint64 most = 0; most < size; most += std::max<qint64>(1, size / 97)) {
        SmallDevice device(most);
        try {
            work(device);
            ++silent;
        } catch (const exports::ExportError&) { // as it is to be
        }
    }
    return silent;
}

} // namespace benthor::tests
