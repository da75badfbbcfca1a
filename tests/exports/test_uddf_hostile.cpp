// Whatever a damaged store or file holds, the file is well-formed; whatever a device does not take is told.

#include "exports/exporterror.h"
#include "tests/exports/uddfworld.h"
#include "tests/support/smalldisk.h"

using namespace benthor;
using namespace benthor::exports;
using tests::Element;
using tests::MadeDive;
using tests::Written;

namespace {

/// Every character that XML cannot hold or reads as something else.
QString hostileText() {
    QString text = QStringLiteral("a<b>&\"'\t]]> <!-- --> <?x ?> &#0; &amp; ä \U0001F420 ");
    for (char16_t code = 0; code < u' '; ++code) {
        text += QChar(code);
    }
    for (const char16_t code : {0x7F, 0x85, 0xD800, 0xD800, 0x20, 0xDC00, 0x2028, 0xFEFF, 0xFFFE, 0xFFFF}) {
        text += QChar(code);
    }
    return text + QChar(0xDBFF);
}

MadeDive smallDive(const QString& id = QStringLiteral("D0000001")) {
    return MadeDive(id).gas("79").records({",100,0,70,M0,T20,A500"});
}

/// Takes as many bytes as it is told and no more.
class ShortDevice : public QIODevice {
public:
    explicit ShortDevice(qint64 room)
        : room_(room) {
        open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    }
    qint64 taken() const { return taken_; }

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char*, qint64 size) override {
        const qint64 fits = std::min(size, room_ - taken_);
        if (fits <= 0) {
            setErrorString(QStringLiteral("no space"));
            return -1;
        }
        taken_ += fits;
        return fits;
    }

private:
    qint64 room_, taken_ = 0;
};

void writeDives(QIODevice& device, int dives) {
    UddfWriter writer(device, QStringLiteral("2.0"), QDateTime({2026, 1, 2}, {3, 4, 5}, Qt::UTC));
    writer.begin();
    for (int number = 1; number <= dives; ++number) {
        writer.add(smallDive(QStringLiteral("D%1").arg(number, 7, 10, QLatin1Char('0'))).whole());
    }
    writer.end();
}

} // namespace

class TestUddfHostile : public QObject {
    Q_OBJECT

private slots:
    void hostileTextsInEveryField();
    void replacedCharactersAreCounted();
    void whatXmlHoldsStays();
    void notesOfMegabytes();
    void identifiersOfADamagedStore();
    void identifiersThatMeetEachOther();
    void readingsBelowZeroAreLeftOut();
    void numbersWithoutMeasure();
    void yearsBeyondTheCalendar();
    void longNamesEnd();
    void longAlarmTexts();
    void moreGasesThanNumbers();
    void damagedBytesAlwaysGiveAFile();
    void aDeviceThatIsFullIsTold();
    void aDeviceThatTakesLittleAtATimeGetsAll();
    void aDiskThatIsFullIsTold();
    void theOfficialSchemaTakesIt();
};

void TestUddfHostile::hostileTextsInEveryField() {
    MadeDive dive = smallDive(hostileText()).buddy(hostileText());
    for (const char* const field :
         {"Suit", "UserName", "Version", "systemid", "site", "divenote", "sitenote", "Coments", "Location",
          "startdate", "finisheddate", "Duration", "MaxDepth", "Interval", "datmos", "otu", "dbtxtname"}) {
        dive.set(field, hostileText());
    }
    QByteArray token;
    for (char code = 1; code < ' '; ++code) {
        token += code == '\r' ? ' ' : code;
    }
    dive.records({",100,0,70,M0,T20,A500,<&>]]>" + token + "\x7F\xFF\xFE\xC0\x80,\xED\xA0\x80x"});
    dive.gas(hostileText(), hostileText(), hostileText());
    const Written written({dive, dive});
    QCOMPARE(written.broken(), QString());
    QCOMPARE(tests::divesOf(written.root).size(), size_t{2});
    QVERIFY(written.bytes.isValidUtf8());
}

void TestUddfHostile::replacedCharactersAreCounted() {
    const auto lostOf = [](const MadeDive& dive) {
        return Written(dive).report.lost.count(QStringLiteral("characters that XML cannot hold"));
    };
    QCOMPARE(lostOf(smallDive()), size_t{0});
    for (const char* const field :
         {"divenote", "sitenote", "Coments", "site", "Suit", "Version", "systemid"}) {
        QCOMPARE(lostOf(smallDive().set(field, QStringLiteral("a\x01b"))), size_t{1});
        QCOMPARE(lostOf(smallDive().set(field, QStringLiteral("a b"))), size_t{0});
    }
    QCOMPARE(lostOf(smallDive().buddy(QString(QChar(0xD800)))), size_t{1});
    QCOMPARE(lostOf(smallDive().records({",1,0,0,M0,T0,A1,a\x01z"})), size_t{1});
    const Written two({smallDive("D0000001").set("site", QStringLiteral("a\x01")), smallDive("D0000002")});
    QCOMPARE(two.report.lost.at(QStringLiteral("characters that XML cannot hold")), 1);
}

void TestUddfHostile::whatXmlHoldsStays() {
    const QString line = QStringLiteral("\ttab <&>\"' ]]> \U0001F420 ä\u0085\u2028\uFEFF end ");
    const Written written(smallDive().set("divenote", line));
    QCOMPARE(written.dive()["informationafterdive"]["notes"]["para"].text, line);
    for (int code = 0; code <= 0xFFFF; ++code) {
        // What the definition of XML 1.0 names, one half of a pair alone being none of them.
        const bool holds = code == 0x9 || code == 0xA || (code >= 0x20 && code <= 0xD7FF) ||
                           (code >= 0xE000 && code <= 0xFFFD);
        bool changed = false;
        const QString text(QChar(static_cast<char16_t>(code)));
        const QString expected = holds ? text : QString(code == 0xD ? u'\n' : QChar(0xFFFD));
        QCOMPARE(xmlText(text, changed), expected);
        QCOMPARE(changed, !holds && code != 0xD);
    }
    bool replaced = false;
    QCOMPARE(xmlText(QStringLiteral("a\r\nb"), replaced), QStringLiteral("a\n\nb"));
    QVERIFY(!replaced);
    QCOMPARE(xmlText(QString(QChar(0xDC00)) + QChar(0xD800), replaced), QStringLiteral("\uFFFD\uFFFD"));
    QVERIFY(replaced);
}

void TestUddfHostile::notesOfMegabytes() {
    constexpr int kSize = 4 * 1024 * 1024;
    const QString note(kSize, u'<');
    const Written one(smallDive().set("divenote", note));
    QCOMPARE(one.broken(), QString());
    QCOMPARE(one.dive()["informationafterdive"]["notes"]["para"].text, note);
    const Written lines(smallDive().set("divenote", QStringLiteral("ab\n").repeated(kSize / 3)));
    QCOMPARE(lines.error, QString());
    QCOMPARE(lines.dive()["informationafterdive"]["notes"].children.size(), size_t{kSize / 3});
}

void TestUddfHostile::identifiersOfADamagedStore() {
    const QStringList ids{"D0000001", "D0000001", "d0000001", "",         " ",     "..",      "-1",   "D 1",
                          "ä",        "D\n1",     "_",        "D0000001", "\"'<>", "mix-0-1", "owner"};
    std::vector<MadeDive> dives;
    for (const QString& id : ids) {
        dives.push_back(smallDive(id));
    }
    dives.push_back(smallDive(QString(100000, u'x')));
    dives.push_back(smallDive(QString(100001, u'x')));
    const Written written(dives);
    QCOMPARE(written.broken(), QString());
    QCOMPARE(tests::divesOf(written.root).size(), dives.size());
    QCOMPARE(written.dive(0).attributes["id"], QStringLiteral("d-D0000001"));
    QCOMPARE(written.dive(1).attributes["id"], QStringLiteral("d-D0000001-1"));
    QVERIFY(written.report.musts.contains(
        "D0000001: no identifier of its own that the file can hold; d-D0000001-1 stands for it"));
    QVERIFY(written.report.musts.contains(
        ": no identifier of its own that the file can hold; d--1 stands for it"));
}

void TestUddfHostile::identifiersThatMeetEachOther() {
    // What is made up for one dive may be another's own; gases and groups carry the names of dives, too.
    std::vector<MadeDive> dives;
    for (const char* const id : {"A", "A-1", "A", "A-1", "A-1-1", "A-1-0", "2004-09-03", "of-A"}) {
        dives.push_back(smallDive(QString::fromLatin1(id)).set("startdate", std::nullopt));
    }
    dives.push_back(smallDive("B"));
    const Written written(dives);
    QCOMPARE(written.broken(), QString());
    QCOMPARE(tests::divesOf(written.root).size(), dives.size());
    for (size_t number = 0; number < dives.size(); ++number) { // samples are made before the name is known
        const QString name = written.dive(number).attributes.value("id").mid(2);
        const Element& lead = *written.dive(number)["samples"].all("waypoint").at(0);
        QCOMPARE(lead["switchmix"].attributes.value("ref"), "mix-" + name + "-0");
    }
}

void TestUddfHostile::readingsBelowZeroAreLeftOut() {
    const Written written(
        smallDive().records({",-5,0,-70,M0,T-300,C-6,F-1,G-2,H-3,D-4,E-5,I-6", ",5,0,70,M0,T3,A6,F1"}));
    QCOMPARE(written.broken(), QString());
    const Element& point = *written.dive()["samples"].all("waypoint").at(1);
    QCOMPARE(point.children.size(), size_t{2}); // depth and divetime
    QCOMPARE(point["depth"].text, QStringLiteral("0"));
    QCOMPARE(written.report.lost.at(QStringLiteral("readings that cannot be")), 1);
    QCOMPARE(written.dive()["informationafterdive"]["lowesttemperature"].text, QStringLiteral("276.15"));
}

void TestUddfHostile::numbersWithoutMeasure() {
    const QByteArray nines(30, '9');
    const QByteArray huge = ',' + nines + ',' + nines + ',' + nines + ",M1,T" + nines + ",C" + nines + ",F" +
                            nines + ",E" + nines + ",I" + nines + ",N" + nines;
    const QByteArray tiny = ",0.0000001,0,0.001,M0,T0.4,C0.00000000001,F0.0000000001,I0.1";
    const Written written(smallDive()
                              .records({huge, tiny})
                              .set("MaxDepth", "1e300")
                              .set("datmos", "1e300")
                              .set("Duration", "9999999:9999999"));
    QCOMPARE(written.broken(), QString());
    QCOMPARE(written.report.lost.at(QStringLiteral("readings that cannot be")), 1);
    QVERIFY(written.report.musts.contains("D0000001: no depth; 0 stands for it"));
    QVERIFY(written.lostKinds().contains("field datmos"));
}

void TestUddfHostile::yearsBeyondTheCalendar() {
    for (const char* const start : {"0000-01-01 00:00:00", "12345-01-01 10:00:00", "-0004-01-01 10:00:00",
                                    "9999-12-31 23:59:59", "0001-01-01 00:00:00", "2004-02-30 10:00:00"}) {
        QCOMPARE(Written(smallDive().set("startdate", start)).broken(), QString());
    }
}

void TestUddfHostile::longNamesEnd() {
    QString name(UddfParts::kLongestName - 1, u'x');
    name += QStringLiteral("\U0001F420 and more");
    const Written written(smallDive().set("site", name).buddy(name).set("Version", name));
    QCOMPARE(written.broken(), QString());
    QCOMPARE(written.root["divesite"]["site"]["name"].text, name.left(UddfParts::kLongestName - 1));
    QCOMPARE(written.report.lost.at(QStringLiteral("the rest of long names")), 1);
}

void TestUddfHostile::longAlarmTexts() {
    const auto lost = [](int length) {
        const QByteArray token(length, 'x');
        const Written written(smallDive().records({",1,0,70,M0,T0,A1," + token}));
        return written.report.lost.count(QStringLiteral("the rest of long alarm texts"));
    };
    QCOMPARE(lost(255), size_t{0});
    QCOMPARE(lost(256), size_t{1});
}

void TestUddfHostile::moreGasesThanNumbers() {
    MadeDive dive = smallDive();
    for (int gas = 0; gas < 40; ++gas) {
        dive.gas(QString::number(gas));
    }
    const Written written(dive);
    QCOMPARE(written.broken(), QString());
    QCOMPARE(written.root["gasdefinitions"].all("mix").size(), size_t{31});
    QCOMPARE(written.report.lost.at(QStringLiteral("gases beyond number 30")), 1);
}

void TestUddfHostile::damagedBytesAlwaysGiveAFile() {
    tests::RandomRecords random(11);
    std::vector<MadeDive> dives;
    for (int number = 0; number < 200; ++number) {
        QByteArray bytes = "Profile\r\nx\r\n" + random.make(40, 12).join("\r\n") + "\r\nEnd";
        for (int hit = 0; hit < 30; ++hit) {
            bytes[random.below(static_cast<int>(bytes.size()))] = static_cast<char>(random.below(256));
        }
        dives.push_back(MadeDive(QString::number(number)).gas("79").file(bytes));
    }
    const Written written(dives);
    QCOMPARE(written.broken(), QString());
    QCOMPARE(tests::divesOf(written.root).size(), dives.size());
}

void TestUddfHostile::aDeviceThatIsFullIsTold() {
    QByteArray whole;
    QBuffer buffer(&whole);
    buffer.open(QIODevice::WriteOnly);
    writeDives(buffer, 300);
    QVERIFY(whole.size() > 200000); // more pieces than one
    for (const qint64 room : {qint64{0}, qint64{1}, qint64{70000}, whole.size() - 1}) {
        ShortDevice device(room);
        try {
            writeDives(device, 300);
            QFAIL("a device that took not all bytes was passed over");
        } catch (const ExportError& error) {
            QCOMPARE(error.text(), QStringLiteral("The file cannot be written: no space."));
        }
        QCOMPARE(device.taken(), room);
    }
    ShortDevice enough(whole.size());
    writeDives(enough, 300);
    QCOMPARE(enough.taken(), whole.size());
}

void TestUddfHostile::aDeviceThatTakesLittleAtATimeGetsAll() {
    class Slow : public QBuffer {
    protected:
        qint64 writeData(const char* data, qint64 size) override {
            return QBuffer::writeData(data, std::min<qint64>(size, 7));
        }
    };
    QByteArray whole;
    QBuffer buffer(&whole);
    buffer.open(QIODevice::WriteOnly);
    writeDives(buffer, 3);
    Slow slow;
    slow.open(QIODevice::WriteOnly);
    writeDives(slow, 3);
    QCOMPARE(slow.data(), whole);
}

void TestUddfHostile::aDiskThatIsFullIsTold() {
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("dives.uddf")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    const tests::SmallDisk disk(4096);
    // Small enough to wait in the file's own buffer until the end.
    QVERIFY_THROWS_EXCEPTION(ExportError, writeDives(file, 6));
}

void TestUddfHostile::theOfficialSchemaTakesIt() {
    const QString schema = qEnvironmentVariable("UDDF_XSD");
    if (schema.isEmpty()) {
        QSKIP("UDDF_XSD names no schema: the file was not checked against the official one");
    }
    tests::RandomRecords random(3);
    MadeDive dive = smallDive().gas("20", "60").records(random.make(200, 4));
    dive.set("site", "Blue Hole").buddy("Anna").buddy("Ben van Dyk").set("divenote", "One\nTwo");
    for (const Written& written :
         {Written({dive, smallDive("D0000002"), MadeDive("")}), Written(std::vector<MadeDive>{})}) {
        QCOMPARE(tests::invalid(written.bytes, schema), QString());
    }
}

QTEST_GUILESS_MAIN(TestUddfHostile)
#include "test_uddf_hostile.moc"
