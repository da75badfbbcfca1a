#include "store/jet/jetdates.h"

#include <QtTest>

using namespace benthor;

namespace {
QString textOf(const std::optional<std::string>& text) {
    return text ? QString::fromStdString(*text) : QStringLiteral("(none)");
}
} // namespace

class TestJetDates : public QObject {
    Q_OBJECT

private slots:
    void daysBecomeADate_data();
    void daysBecomeADate();
    void everySecondOfADayComesBack();
    void textsBecomeADateOrStay_data();
    void textsBecomeADateOrStay();
    void textsThatAColumnForDatesWouldChangeAreKnown();
};

void TestJetDates::daysBecomeADate_data() {
    QTest::addColumn<double>("days");
    QTest::addColumn<QString>("date");
    QTest::newRow("the first day") << 0.0 << "1899-12-30 00:00:00";
    QTest::newRow("a time without a day") << 0.75 << "1899-12-30 18:00:00";
    QTest::newRow("1970") << 25569.0 << "1970-01-01 00:00:00";
    QTest::newRow("a leap day") << 38046.5 << "2004-02-29 12:00:00";
    QTest::newRow("the day before the first, at six") << -1.25 << "1899-12-29 06:00:00";
    QTest::newRow("under half a second") << 1.0 + 0.49 / 86400 << "1899-12-31 00:00:00";
    QTest::newRow("over half a second") << 1.0 + 0.51 / 86400 << "1899-12-31 00:00:01";
    QTest::newRow("a second that ends the day") << 1.0 + 86399.6 / 86400 << "1900-01-01 00:00:00";
    QTest::newRow("the same before the first day") << -1.0 - 86399.6 / 86400 << "1899-12-30 00:00:00";
    QTest::newRow("the first year") << -657434.0 << "0100-01-01 00:00:00";
    QTest::newRow("the last second") << 2958465.0 + 86399.0 / 86400 << "9999-12-31 23:59:59";
    QTest::newRow("beyond the last") << 2958466.0 << "(none)";
    QTest::newRow("rounded beyond the last") << 2958465.0 + 86399.9 / 86400 << "(none)";
    QTest::newRow("before the first year") << -657435.0 << "(none)";
    QTest::newRow("no number") << std::nan("") << "(none)";
    QTest::newRow("without end") << std::numeric_limits<double>::infinity() << "(none)";
}

void TestJetDates::daysBecomeADate() {
    QFETCH(double, days);
    QFETCH(QString, date);
    QCOMPARE(textOf(store::datetext(days)), date);
}

void TestJetDates::everySecondOfADayComesBack() {
    const QDate day(2004, 9, 3);
    const double days = 38233; // from 30 December 1899
    QCOMPARE(QDate(1899, 12, 30).daysTo(day), 38233);
    for (int second = 0; second < 86400; ++second) {
        const QString expected = QDateTime(day, QTime(0, 0).addSecs(second), Qt::UTC)
                                     .toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        if (textOf(store::datetext(days + second / 86400.0)) != expected) {
            QCOMPARE(textOf(store::datetext(days + second / 86400.0)), expected);
        }
    }
}

void TestJetDates::textsBecomeADateOrStay_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("date");
    QTest::newRow("a date") << "Sep/03/2004 17:17:16"
                            << "2004-09-03 17:17:16";
    QTest::newRow("in capitals") << "DEC/31/1999 00:00:00"
                                 << "1999-12-31 00:00:00";
    QTest::newRow("a leap day") << "feb/29/2004 23:59:59"
                                << "2004-02-29 23:59:59";
    for (const char* const none :
         {"", "Sep/03/2004", "Sep/3/2004 17:17:16", "Sep/03/2004 17:17:16\r", " Sep/03/2004 17:17:16",
          "Sept/03/2004 17:17:1", "Sep-03-2004 17:17:16", "Feb/29/2005 10:00:00", "Sep/31/2004 10:00:00",
          "Sep/03/2004 24:00:00", "Sep/03/2004 10:60:00", "Sep/03/2004 10:00:60", "Foo/03/2004 10:00:00",
          "Sep/xx/2004 10:00:00", "03/Sep/2004 10:00:00", "2004-09-03 17:17:16", "Sep/00/2004 10:00:00"}) {
        QTest::newRow(none) << QString::fromLatin1(none) << "(none)";
    }
}

void TestJetDates::textsBecomeADateOrStay() {
    QFETCH(QString, text);
    QFETCH(QString, date);
    QCOMPARE(textOf(store::datefromtext(text.toStdString())), date);
}

void TestJetDates::textsThatAColumnForDatesWouldChangeAreKnown() {
    for (const char* const number :
         {"007", "12", "1e5", " 4 ", "+1.50", ".5", "-3", "9999999999999999999999"}) {
        QVERIFY2(store::looksnumeric(number), number);
    }
    for (const char* const other : {"", " ", "2004-09-03", "12 o'clock", "1.2.3", "-", "e", "0x10", "1 2"}) {
        QVERIFY2(!store::looksnumeric(other), other);
    }
}

QTEST_GUILESS_MAIN(TestJetDates)
#include "test_jetdates.moc"
