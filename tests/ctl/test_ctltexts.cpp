#include "ctl/looking.h"
#include "ctl/stats.h"
#include "ctl/table.h"

#include <QJsonArray>
#include <QtTest>

#include <clocale>

using namespace benthor;
using namespace benthor::ctl;

namespace {

exports::DiveFigures figuresOf(const QDateTime& start, double seconds, double depth, double otu) {
    exports::DiveFigures figures;
    figures.start = start;
    figures.duration = seconds;
    figures.maxdepth = depth;
    figures.otu = otu;
    return figures;
}

QDateTime moment(int year, int month) {
    return {QDate(year, month, 15), QTime(8, 0), Qt::UTC};
}

} // namespace

/// What people read: tables, texts, totals.
class TestCtlTexts : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(std::setlocale(LC_CTYPE, "C.UTF-8") != nullptr); }

    void nothingMovesTheCursor();
    void widthsAreThoseOfATerminal();
    void columnsStandBelowEachOther();
    void longLinesAreCutOnATerminalAlone();
    void durations();
    void totalsByYearAndMonth();
    void nothingAtAllIsZero();
};

void TestCtlTexts::nothingMovesTheCursor() {
    QCOMPARE(shownText(QStringLiteral("a\x1b[31m\r\n\tb\x7f")), QStringLiteral("a [31m   b "));
    QCOMPARE(shownText(QStringLiteral("a\u202e\u2066\u2028\u0085b")), QStringLiteral("a    b"));
    const QString plain = QStringLiteral("Höhle 洞窟 \U0001F42C e\u0301");
    QCOMPARE(shownText(plain), plain);
}

void TestCtlTexts::widthsAreThoseOfATerminal() {
    QCOMPARE(displayWidth(u"abc"), 3);
    QCOMPARE(displayWidth(u"洞窟"), 4);
    QCOMPARE(displayWidth(u"e\u0301"), 1);
    QCOMPARE(displayWidth(QStringLiteral("\U0001F42C")), 2);
    QCOMPARE(displayWidth(u""), 0);
}

void TestCtlTexts::columnsStandBelowEachOther() {
    Table table({QStringLiteral("ID"), QStringLiteral(">Max"), QStringLiteral("Name")});
    table.add({QStringLiteral("1"), QStringLiteral("7 m"), QStringLiteral("洞")});
    table.add({QStringLiteral("22"), QStringLiteral("123.4 m"), QString()});
    table.add({QStringLiteral("洞窟"), QString(), QStringLiteral("b\n")});
    QCOMPARE(table.lines(0),
             QStringList({"ID        Max  Name", "1         7 m  洞", "22    123.4 m", "洞窟           b"}));
}

void TestCtlTexts::longLinesAreCutOnATerminalAlone() {
    Table table({QStringLiteral("Name")});
    table.add({QStringLiteral("abcdef")});
    table.add({QStringLiteral("洞窟洞窟")});
    table.add({QStringLiteral("abcde")});
    QCOMPARE(table.lines(5), QStringList({"Name", "abcd…", "洞窟…", "abcde"}));
    QCOMPARE(table.lines(4), QStringList({"Name", "abc…", "洞…", "abc…"}));
    QCOMPARE(table.lines(0), QStringList({"Name", "abcdef", "洞窟洞窟", "abcde"}));
}

void TestCtlTexts::durations() {
    QCOMPARE(durationWords(std::nullopt), QString());
    QCOMPARE(durationWords(0), QStringLiteral("0:00"));
    QCOMPARE(durationWords(67), QStringLiteral("1:07"));
    QCOMPARE(durationWords(36000), QStringLiteral("600:00"));
}

void TestCtlTexts::totalsByYearAndMonth() {
    Statistics statistics;
    statistics.add(figuresOf(moment(2008, 7), 60, 20, 0.1));
    statistics.add(figuresOf(moment(2008, 7), 30, 30.5, 0.2));
    statistics.add(figuresOf(moment(2008, 12), 10, 5, 1));
    statistics.add(figuresOf(moment(2006, 1), 5, 7, 0));
    statistics.add(figuresOf(QDateTime(), 1000, 99, 50));
    statistics.add({}); // nothing but that there was a dive
    const QJsonObject json = statistics.json();
    const auto totals = [](int dives, int seconds, double depth, double otu) {
        return QJsonObject{{"dives", dives}, {"seconds", seconds}, {"max_depth_m", depth}, {"otu", otu}};
    };
    const auto with = [](QJsonObject object, const char* name, const QJsonValue& value) {
        object.insert(QLatin1String(name), value);
        return object;
    };
    QJsonObject expected = totals(6, 1105, 99, 51.3);
    expected.insert(QStringLiteral("years"), QJsonArray{with(totals(1, 5, 7, 0), "year", 2006),
                                                        with(totals(3, 100, 30.5, 1.3), "year", 2008)});
    expected.insert(QStringLiteral("months"), QJsonArray{with(totals(1, 5, 7, 0), "month", "2006-01"),
                                                         with(totals(2, 90, 30.5, 0.3), "month", "2008-07"),
                                                         with(totals(1, 10, 5, 1), "month", "2008-12")});
    QCOMPARE(json, expected);
    QCOMPARE(statistics.lines(),
             QStringList({"         Dives  Duration     Max   OTU", "All          6     18:25    99 m  51.3",
                          "2006         1      0:05     7 m     0", "2008         3      1:40  30.5 m   1.3",
                          "2006-01      1      0:05     7 m     0", "2008-07      2      1:30  30.5 m   0.3",
                          "2008-12      1      0:10     5 m     1"}));
}

void TestCtlTexts::nothingAtAllIsZero() {
    const QJsonObject json = Statistics().json();
    QCOMPARE(json, QJsonObject({{"dives", 0},
                                {"seconds", 0},
                                {"max_depth_m", QJsonValue::Null},
                                {"otu", 0},
                                {"years", QJsonArray()},
                                {"months", QJsonArray()}}));
}

QTEST_APPLESS_MAIN(TestCtlTexts)
#include "test_ctltexts.moc"
