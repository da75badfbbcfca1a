#include "store/jet/frames.h"
#include "store/jet/utf8.h"
#include "tests/store/jet/framewriter.h"

#include <QtTest>

using namespace benthor;
using namespace benthor::tests;
using store::FrameStream;
using Event = store::FrameStream::Event;

namespace {

/// A table of two fields with two rows, and one in another file.
std::string sound() {
    FrameWriter head('J');
    head.number<std::uint16_t>(store::pipe::kVersion).number<std::uint16_t>(1);
    head.name("main").number<std::uint64_t>(2).number<std::uint16_t>(2);
    head.number<std::uint8_t>(1).number<std::uint32_t>(8).name("DiveID");
    head.number<std::uint8_t>(3).number<std::uint32_t>(0).name("startdate");
    head.number<std::uint16_t>(1).name("far");
    return head.frame() + FrameWriter('R').value("D0000001").value("12345678").frame() +
           FrameWriter('R').value("").null().frame() + FrameWriter('E').number<std::uint64_t>(2).frame() +
           FrameWriter('Z').frame();
}

/// All events of a stream that comes in pieces of `size` bytes.
QList<Event> eventsOf(const std::string& bytes, std::size_t size, FrameStream& stream) {
    QList<Event> events;
    for (std::size_t at = 0; at < bytes.size(); at += size) {
        stream.add(std::string_view(bytes).substr(at, size));
        for (Event event = stream.next(); event != Event::NeedsMore; event = stream.next()) {
            events += event;
        }
    }
    return events;
}

/// What is wrong with a stream; empty where nothing is.
QString faultOf(const std::string& bytes) {
    try {
        FrameStream stream;
        eventsOf(bytes, bytes.size(), stream);
    } catch (const platform::StoreError& error) {
        return error.text();
    }
    return {};
}

} // namespace

class TestJetFrames : public QObject {
    Q_OBJECT

private slots:
    void theRowsComeWhateverThePieces();
    void nullAndEmptyAreTwo();
    void whatIsNotAsItShouldBeIsAFault_data();
    void whatIsNotAsItShouldBeIsAFault();
    void aLengthBeyondAllMeasureIsRefusedBeforeItsBytesCome();
    void aFaultIsTheSendersSentenceWithoutControlCharacters();
    void fewerRowsThanTheTableCountsAreNamed();
    void utf8IsToldFromWhatIsNone_data();
    void utf8IsToldFromWhatIsNone();
};

void TestJetFrames::theRowsComeWhateverThePieces() {
    const std::string bytes = sound();
    const QList<Event> all{Event::Head, Event::Row, Event::Row, Event::TableEnd, Event::End};
    for (std::size_t size = 1; size <= bytes.size(); ++size) {
        FrameStream stream;
        QCOMPARE(eventsOf(bytes, size, stream), all);
        QCOMPARE(stream.head().tables.size(), 1U);
        QCOMPARE(stream.head().tables[0].name, "main");
        QCOMPARE(stream.head().tables[0].rows, 2U);
        QCOMPARE(stream.head().tables[0].fields[0].name, "DiveID");
        QCOMPARE(stream.head().tables[0].fields[0].size, 8U);
        QVERIFY(stream.head().tables[0].fields[1].kind == store::pipe::Kind::Date);
        QCOMPARE(stream.head().elsewhere, std::vector<std::string>{"far"});
        QCOMPARE(stream.head().rows(), 2U);
    }
}

void TestJetFrames::nullAndEmptyAreTwo() {
    FrameStream stream;
    stream.add(sound());
    QVERIFY(stream.next() == Event::Head);
    QVERIFY(stream.next() == Event::Row);
    QVERIFY(stream.row()[0] == "D0000001");
    QVERIFY(stream.row()[1] == "12345678");
    QVERIFY(stream.next() == Event::Row);
    QVERIFY(stream.row()[0].has_value() && stream.row()[0]->empty());
    QVERIFY(!stream.row()[1].has_value());
}

void TestJetFrames::whatIsNotAsItShouldBeIsAFault_data() {
    QTest::addColumn<QByteArray>("bytes");
    const auto add = [](const char* name, const std::string& bytes) {
        QTest::newRow(name) << QByteArray::fromStdString(bytes);
    };
    const std::string good = sound();
    const std::string head = good.substr(0, store::firstframe(good)->body.size() + store::pipe::kFrameHead);
    const auto oneText = [](std::uint8_t kind) {
        FrameWriter made('J');
        made.number<std::uint16_t>(1).number<std::uint16_t>(1).name("t").number<std::uint64_t>(1);
        made.number<std::uint16_t>(1).number<std::uint8_t>(kind).number<std::uint32_t>(0).name("f");
        return made.number<std::uint16_t>(0).frame();
    };
    add("no frame at all", "garbage that somebody wrote");
    add("a row before the head", FrameWriter('R').frame());
    add("two heads", head + head);
    add("an end before the last table's", head + FrameWriter('Z').frame());
    add("a row behind the last table", good.substr(0, good.size() - 5) + FrameWriter('R').frame());
    add("anything behind the end", good + FrameWriter('Z').frame());
    add("another version", FrameWriter('J').number<std::uint16_t>(7).number<std::uint32_t>(0).frame());
    add("a head that is too short", FrameWriter('J').number<std::uint16_t>(1).frame());
    add("a head that is too long",
        FrameWriter('J').number<std::uint16_t>(1).number<std::uint64_t>(0).frame());
    add("a field of no kind", oneText(9));
    add("a table without fields", FrameWriter('J')
                                      .number<std::uint16_t>(1)
                                      .number<std::uint16_t>(1)
                                      .name("t")
                                      .number<std::uint64_t>(1)
                                      .number<std::uint16_t>(0)
                                      .number<std::uint16_t>(0)
                                      .frame());
    add("a name that is no text", FrameWriter('J')
                                      .number<std::uint16_t>(1)
                                      .number<std::uint16_t>(0)
                                      .number<std::uint16_t>(1)
                                      .name("\xff\xff")
                                      .frame());
    add("a row that is too short", head + FrameWriter('R').value("D").frame());
    add("a row that is too long", head + FrameWriter('R').value("D").null().null().frame());
    add("a value that is longer than its row", head + FrameWriter('R').number<std::uint32_t>(99).frame());
    add("a date of three bytes", head + FrameWriter('R').null().value("abc").frame());
    add("a text that cannot be decoded", oneText(1) + FrameWriter('R').value("caf\xe9").frame());
    add("a number of letters", oneText(2) + FrameWriter('R').value("seven").frame());
    add("a number of nothing", oneText(2) + FrameWriter('R').value("").frame());
    add("a truth of two", oneText(4) + FrameWriter('R').value("\x02").frame());
    add("a count of rows that is wrong", head + FrameWriter('E').number<std::uint64_t>(2).frame());
}

void TestJetFrames::whatIsNotAsItShouldBeIsAFault() {
    QFETCH(QByteArray, bytes);
    QVERIFY(!faultOf(bytes.toStdString()).isEmpty());
}

void TestJetFrames::aLengthBeyondAllMeasureIsRefusedBeforeItsBytesCome() {
    for (const char mark : {'J', 'R', 'E', 'Z', 'F'}) {
        const std::string bytes = std::string(1, mark) + "\xff\xff\xff\xff";
        QVERIFY_EXCEPTION_THROWN(store::firstframe(bytes), platform::StoreError);
        QVERIFY(!store::firstframe(bytes.substr(0, 4)));
    }
    QVERIFY(!store::firstframe({}));
}

void TestJetFrames::aFaultIsTheSendersSentenceWithoutControlCharacters() {
    QCOMPARE(faultOf(FrameWriter('F').text("The file is\n encrypted.\x1b").frame()),
             "The file is  encrypted.");
    QCOMPARE(faultOf(FrameWriter('F').text("").frame()), "It cannot be read.");
}

void TestJetFrames::fewerRowsThanTheTableCountsAreNamed() {
    const std::string good = sound();
    const std::string first = FrameWriter('R').value("").null().frame();
    std::string fewer = good;
    fewer.replace(fewer.find(first), first.size(), "");
    const std::string two = FrameWriter('E').number<std::uint64_t>(2).frame();
    fewer.replace(fewer.find(two), two.size(), FrameWriter('E').number<std::uint64_t>(1).frame());
    QCOMPARE(faultOf(fewer), "The table \"main\" has 2 rows by its own count, and 1 were found.");
}

void TestJetFrames::utf8IsToldFromWhatIsNone_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("is");
    QTest::newRow("nothing") << QByteArray() << true;
    QTest::newRow("letters") << QByteArray("naïve — 🤿 \x7f") << true;
    QTest::newRow("the last character") << QByteArray("\xf4\x8f\xbf\xbf") << true;
    QTest::newRow("beyond the last character") << QByteArray("\xf4\x90\x80\x80") << false;
    QTest::newRow("a surrogate") << QByteArray("\xed\xa0\x80") << false;
    QTest::newRow("the letter before the surrogates") << QByteArray("\xed\x9f\xbf") << true;
    QTest::newRow("two bytes for one") << QByteArray("\xc1\x81") << false;
    QTest::newRow("three bytes for two") << QByteArray("\xe0\x9f\xbf") << false;
    QTest::newRow("four bytes for three") << QByteArray("\xf0\x8f\xbf\xbf") << false;
    QTest::newRow("a byte that only goes on") << QByteArray("\x80") << false;
    QTest::newRow("cut off") << QByteArray("\xe2\x80") << false;
    QTest::newRow("not gone on with") << QByteArray("\xe2\x80z") << false;
    QTest::newRow("five bytes") << QByteArray("\xf8\x88\x80\x80\x80") << false;
}

void TestJetFrames::utf8IsToldFromWhatIsNone() {
    QFETCH(QByteArray, bytes);
    QFETCH(bool, is);
    QCOMPARE(store::isUtf8(bytes.toStdString()), is);
}

QTEST_GUILESS_MAIN(TestJetFrames)
#include "test_jetframes.moc"
