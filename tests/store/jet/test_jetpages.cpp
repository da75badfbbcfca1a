#include "platform/files.h"
#include "store/readjet/jetpages.h"
#include "store/readjet/jettext.h"

#include <QTemporaryDir>
#include <QtEndian>
#include <QtTest>

using namespace benthor;
using readjet::Fault;
using readjet::JetPages;

namespace {

constexpr int kPage = 4096;

QByteArray number16(quint16 value) {
    QByteArray bytes(2, '\0');
    qToLittleEndian(value, bytes.data());
    return bytes;
}

QByteArray number32(quint32 value) {
    QByteArray bytes(4, '\0');
    qToLittleEndian(value, bytes.data());
    return bytes;
}

/// A file of that form, page by page.
class MadeFile {
public:
    MadeFile() {
        QByteArray head = number32(0x100) + "Standard Jet DB";
        head += QByteArray("\0\1", 2);
        add(head);
        add({});
        add({});
    }
    int add(QByteArray bytes) {
        bytes.resize(kPage, '\0');
        bytes_ += bytes;
        return static_cast<int>(bytes_.size() / kPage) - 1;
    }
    /// A page of rows, laid from its end on.
    int addRows(const QList<QByteArray>& rows, const QByteArray& owner = "LVAL", quint16 flags = 0) {
        QByteArray page(kPage, '\0');
        page[0] = 1;
        page.replace(4, 4, owner);
        page.replace(12, 2, number16(static_cast<quint16>(rows.size())));
        qsizetype end = kPage;
        for (qsizetype i = 0; i < rows.size(); ++i) {
            end -= rows.at(i).size();
            page.replace(end, rows.at(i).size(), rows.at(i));
            page.replace(14 + 2 * i, 2, number16(static_cast<quint16>(end) | flags));
        }
        return add(page);
    }
    QByteArray& bytes() { return bytes_; }
    std::string write() const {
        const QString path = folder_.filePath(QStringLiteral("made.mdb"));
        if (!platform::writeFileWhole(path, bytes_)) {
            qFatal("no file");
        }
        return path.toStdString();
    }

private:
    QTemporaryDir folder_;
    QByteArray bytes_;
};

quint32 pointerTo(int page, int slot) {
    return static_cast<quint32>(page) << 8 | static_cast<quint32>(slot);
}

/// What stands in a row for a long value.
std::string standIn(quint32 length, quint32 pointer, const QByteArray& inRow = {}) {
    return (number32(length) + number32(pointer) + number32(0) + inRow).toStdString();
}

template <class Work> QString faultOf(Work work) {
    try {
        work();
    } catch (const Fault& fault) {
        return QString::fromUtf8(fault.what());
    }
    return {};
}

} // namespace

class TestJetPages : public QObject {
    Q_OBJECT

private slots:
    void longValuesComeWhole();
    void longValuesThatDoNotFitTogetherAreFaults_data();
    void longValuesThatDoNotFitTogetherAreFaults();
    void aRowLiesWithinItsPage();
    void theCountOfRowsStandsOnTheDefinitionPage();
    void aDefinitionWithoutEndIsAFault();
    void aFileThatIsCutOffIsNamed();
    void textIsDecodedOrIsNone_data();
    void textIsDecodedOrIsNone();
    void textOfTheOldestFormHasItsCodePage();
};

void TestJetPages::longValuesComeWhole() {
    MadeFile made;
    const QByteArray text(3 * 3000 + 1500, 'n');
    quint32 next = 0;
    for (int piece = 3; piece >= 0; --piece) {
        next = pointerTo(made.addRows({"of another text", number32(next) + text.mid(piece * 3000, 3000)}), 1);
    }
    const int one = made.addRows({"a single piece"});
    JetPages pages(made.write());
    QCOMPARE(pages.longValue(standIn(static_cast<quint32>(text.size()), next)), text.toStdString());
    QCOMPARE(pages.longValue(standIn(0x40000000 | 14, pointerTo(one, 0))), "a single piece");
    QCOMPARE(pages.longValue(standIn(0x80000000 | 5, 0, "short")), "short");
    QCOMPARE(pages.longValue(standIn(0x80000000, 0)), "");
    QCOMPARE(pages.longValue(standIn(0, 0)), "");
}

void TestJetPages::longValuesThatDoNotFitTogetherAreFaults_data() {
    QTest::addColumn<quint32>("length");
    QTest::addColumn<quint32>("pointer");
    // Page 3 holds, in its slots: a piece that points to itself, one that is empty and points to itself, and
    // one that ends the chain. Page 4 belongs to a table.
    QTest::newRow("turns back upon itself, empty") << 100U << pointerTo(3, 1);
    QTest::newRow("ends too early") << 100U << pointerTo(3, 2);
    QTest::newRow("beyond the file") << 100U << pointerTo(99, 0);
    QTest::newRow("no such row") << 100U << pointerTo(3, 9);
    QTest::newRow("a table's page") << 5U << pointerTo(4, 0);
    QTest::newRow("no page of rows") << 5U << pointerTo(2, 0);
    QTest::newRow("a single piece that is too short") << (0x40000000U | 99) << pointerTo(3, 2);
    QTest::newRow("longer than any") << 0x3FFFFFFFU << pointerTo(3, 0);
    QTest::newRow("in the row, and longer than it") << (0x80000000U | 7) << 0U;
}

void TestJetPages::longValuesThatDoNotFitTogetherAreFaults() {
    QFETCH(quint32, length);
    QFETCH(quint32, pointer);
    MadeFile made;
    made.addRows({number32(pointerTo(3, 0)) + "round", number32(pointerTo(3, 1)), number32(0) + "end"});
    made.addRows({number32(0) + "a row"}, number32(7));
    JetPages pages(made.write());
    QVERIFY(!faultOf([&] { pages.longValue(standIn(length, pointer)); }).isEmpty());
    QVERIFY(!faultOf([&] { pages.longValue("short"); }).isEmpty());
}

void TestJetPages::aRowLiesWithinItsPage() {
    MadeFile made;
    const int page = made.addRows({"first", "second one"}, number32(7));
    const int flagged = made.addRows({"gone"}, number32(7), 0xC000);
    JetPages pages(made.write());
    QCOMPARE(pages.slotsOf(static_cast<quint32>(page)), 2U);
    const readjet::RowPlace place = pages.placeOf(static_cast<quint32>(page), 1);
    QCOMPARE(pages.page(static_cast<quint32>(page)).substr(place.start, place.size), "second one");
    QVERIFY(!place.deleted && !place.elsewhere);
    QCOMPARE(pages.ownerOf(static_cast<quint32>(page)), 7U);
    const readjet::RowPlace gone = pages.placeOf(static_cast<quint32>(flagged), 0);
    QVERIFY(gone.deleted && gone.elsewhere);
    QCOMPARE(gone.size, 4U);
    // An offset among the slots, one behind the row before it, and more slots than a page can hold.
    for (const auto& [at, value] : {std::pair{14, 15}, std::pair{16, 4095}, std::pair{12, 3000}}) {
        MadeFile bad = MadeFile();
        bad.addRows({"first", "second one"}, number32(7));
        bad.bytes().replace(3 * kPage + at, 2, number16(static_cast<quint16>(value)));
        JetPages damaged(bad.write());
        QVERIFY(!faultOf([&] { damaged.placeOf(3, 0), damaged.placeOf(3, 1); }).isEmpty());
    }
}

void TestJetPages::theCountOfRowsStandsOnTheDefinitionPage() {
    MadeFile made;
    QByteArray definition(kPage, '\0');
    definition[0] = 2;
    definition.replace(16, 4, number32(70000));
    const int page = made.add(definition);
    JetPages pages(made.write());
    QCOMPARE(pages.rowsOf(static_cast<quint32>(page)), 70000U);
    QVERIFY(!faultOf([&] { pages.rowsOf(1); }).isEmpty());
}

void TestJetPages::aDefinitionWithoutEndIsAFault() {
    MadeFile made;
    QByteArray definition(kPage, '\0');
    definition[0] = 2;
    definition.replace(4, 4, number32(4));
    made.add(definition);
    definition.replace(4, 4, number32(3));
    made.add(definition);
    JetPages pages(made.write());
    QVERIFY(faultOf([&] { pages.rowsOf(3); }).contains(QLatin1String("no end")));
}

void TestJetPages::aFileThatIsCutOffIsNamed() {
    MadeFile made;
    made.bytes().chop(1);
    QVERIFY(faultOf([&] { const JetPages pages(made.write()); }).contains(QLatin1String("cut off")));
    made.bytes().truncate(10);
    QVERIFY(faultOf([&] { const JetPages pages(made.write()); }).contains(QLatin1String("cut off")));
    made.bytes() = QByteArray(3 * kPage, 'x');
    QCOMPARE(faultOf([&] { const JetPages pages(made.write()); }), "It is no Jet file.");
    QVERIFY(!faultOf([] { const JetPages pages("/no such file"); }).isEmpty());
    QVERIFY(!faultOf([] { const JetPages pages("/"); }).isEmpty());
}

void TestJetPages::textIsDecodedOrIsNone_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    const auto wide = [](const QString& text) {
        return QByteArray(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
    };
    QTest::newRow("empty") << QByteArray() << "";
    QTest::newRow("two bytes a letter") << wide(QStringLiteral("Île — 🤿\r\n")) << "Île — 🤿\r\n";
    QTest::newRow("one byte a letter") << QByteArray("\xff\xfe"
                                                     "caf\xe9 \r")
                                       << "café \r";
    QTest::newRow("by turns") << QByteArray("\xff\xfe"
                                            "ab\x00\x14\x20\x00"
                                            "cd",
                                            10)
                              << "ab—cd";
    QTest::newRow("packed and empty") << QByteArray("\xff\xfe") << "";
    QTest::newRow("half a letter") << QByteArray("a") << "(none)";
    QTest::newRow("half a letter at the end of a turn") << QByteArray("\xff\xfe"
                                                                      "ab\x00\x14",
                                                                      6)
                                                        << "(none)";
    QTest::newRow("half a pair") << wide(QStringLiteral("a🤿")).chopped(2) << "(none)";
    QTest::newRow("the second half alone") << QByteArray("\x3f\xdd", 2) << "(none)";
    QTest::newRow("a first half before a letter") << QByteArray("\x3e\xd8"
                                                                "a\0",
                                                                4)
                                                  << "(none)";
}

void TestJetPages::textIsDecodedOrIsNone() {
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    const auto decoded = readjet::textOfJet4(bytes.toStdString());
    QCOMPARE(decoded ? QString::fromStdString(*decoded) : QStringLiteral("(none)"), text);
}

void TestJetPages::textOfTheOldestFormHasItsCodePage() {
    QCOMPARE(readjet::textOfJet3("caf\xe9 \x97", 1252).value_or("(none)"), "café —");
    QCOMPARE(readjet::textOfJet3("caf\xe9", 0).value_or("(none)"), "café");
    QCOMPARE(readjet::textOfJet3("\xcf\xf0", 1251).value_or("(none)"), "Пр");
    QVERIFY(!readjet::textOfJet3("\x81", 1252));
    QVERIFY(!readjet::textOfJet3("a", 9999));
}

QTEST_GUILESS_MAIN(TestJetPages)
#include "test_jetpages.moc"
