#include "store/readjet/jetpages.h"
#include "store/readjet/jetvalues.h"

#include <QtTest>

#include <bit>

using namespace benthor;
using store::pipe::Kind;

namespace {

// The kinds as a Jet file numbers them.
enum Type {
    Bool = 1,
    Byte = 2,
    Int = 3,
    Long = 4,
    Money = 5,
    Float = 6,
    Double = 7,
    DateTime = 8,
    Binary = 9,
    Text = 10,
    Ole = 11,
    Memo = 12,
    Identifier = 15,
    Numeric = 16,
    BigNumber = 19,
};

template <class Number> std::string bytesOf(Number value) {
    const auto bytes = std::bit_cast<std::array<char, sizeof(Number)>>(value);
    return {bytes.data(), bytes.size()};
}

} // namespace

class TestJetValues : public QObject {
    Q_OBJECT

private slots:
    void numbersBecomeTheirDigits_data();
    void numbersBecomeTheirDigits();
    void bytesAndDatesTravelAsTheyAre();
    void anIdentifierBecomesItsUsualText();
    void aValueOfAnotherSizeIsAFault();
    void aNumberThatIsNoneIsAFault();
    void everyKindIsKnownOrNamed();
};

void TestJetValues::numbersBecomeTheirDigits_data() {
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("digits");
    const auto add = [](const char* name, int type, const std::string& bytes, const char* digits) {
        QTest::newRow(name) << type << QByteArray::fromStdString(bytes) << QString::fromLatin1(digits);
    };
    add("byte", Byte, bytesOf(std::uint8_t{255}), "255");
    add("int", Int, bytesOf(std::int16_t{-32768}), "-32768");
    add("long", Long, bytesOf(std::int32_t{-2147483647 - 1}), "-2147483648");
    add("big", BigNumber, bytesOf(std::int64_t{-9007199254740993}), "-9007199254740993");
    add("float", Float, bytesOf(0.1F), "0.1");
    add("double", Double, bytesOf(-1234.5678), "-1234.5678");
    add("large double", Double, bytesOf(1e300), "1e+300");
    add("money", Money, bytesOf(std::int64_t{125000}), "12.5");
    add("whole money", Money, bytesOf(std::int64_t{-70000}), "-7");
    add("the least part of money", Money, bytesOf(std::int64_t{-1}), "-0.0001");
    add("the least money", Money, bytesOf(std::numeric_limits<std::int64_t>::min()), "-922337203685477.5808");
}

void TestJetValues::numbersBecomeTheirDigits() {
    QFETCH(int, type);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, digits);
    QVERIFY(readjet::kindOf(type) == Kind::Number);
    QCOMPARE(QString::fromStdString(readjet::plainValue(bytes.toStdString(), type)), digits);
}

void TestJetValues::bytesAndDatesTravelAsTheyAre() {
    QCOMPARE(readjet::plainValue(bytesOf(38233.5), DateTime), bytesOf(38233.5));
    QCOMPARE(readjet::plainValue(std::string("\0\xff", 2), Binary), std::string("\0\xff", 2));
    QCOMPARE(readjet::plainValue("", Binary), "");
}

void TestJetValues::anIdentifierBecomesItsUsualText() {
    const std::string bytes("\x78\x56\x34\x12\xbc\x9a\xf0\xde\x01\x23\x45\x67\x89\xab\xcd\xef", 16);
    QCOMPARE(QString::fromStdString(readjet::plainValue(bytes, Identifier)),
             "{12345678-9ABC-DEF0-0123-456789ABCDEF}");
}

void TestJetValues::aValueOfAnotherSizeIsAFault() {
    for (const int type : {Byte, Int, Long, Money, Float, Double, DateTime, Identifier, BigNumber}) {
        QVERIFY_EXCEPTION_THROWN(readjet::plainValue("abc", type), readjet::Fault);
        QVERIFY_EXCEPTION_THROWN(readjet::plainValue("", type), readjet::Fault);
    }
    QVERIFY_EXCEPTION_THROWN(readjet::requireSize("abc", Numeric), readjet::Fault);
}

void TestJetValues::aNumberThatIsNoneIsAFault() {
    QVERIFY_EXCEPTION_THROWN(readjet::plainValue(bytesOf(std::nan("")), Double), readjet::Fault);
    QVERIFY_EXCEPTION_THROWN(readjet::plainValue(bytesOf(std::numeric_limits<float>::infinity()), Float),
                             readjet::Fault);
}

void TestJetValues::everyKindIsKnownOrNamed() {
    QVERIFY(readjet::kindOf(Bool) == Kind::Truth);
    QVERIFY(readjet::kindOf(DateTime) == Kind::Date);
    for (const int type : {Text, Memo, Identifier}) {
        QVERIFY(readjet::kindOf(type) == Kind::Text);
    }
    for (const int type : {Binary, Ole}) {
        QVERIFY(readjet::kindOf(type) == Kind::Bytes);
    }
    QVERIFY(readjet::kindOf(Numeric) == Kind::Number);
    for (const int type : {0, 13, 14, 17, 20, 255}) {
        QVERIFY(!readjet::kindOf(type));
    }
}

QTEST_GUILESS_MAIN(TestJetValues)
#include "test_jetvalues.moc"
