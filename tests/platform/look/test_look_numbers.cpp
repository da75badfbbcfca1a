#include "platform/look/look.h"
#include "platform/look/widgets/numberlabel.h"

#include <QtTest>

using namespace benthor::look;

class TestLookNumbers : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void numberAndUnitArePartedWhereTheUnitBegins_data();
    void numberAndUnitArePartedWhereTheUnitBegins();
    void theLabelKeepsItsTextAsItWasGiven();
    void theLabelMakesRoomForItsCaption();
    void theLabelGrowsWithItsText();
    void totalsTakeAnyLineEnd_data();
    void totalsTakeAnyLineEnd();
    void aSingleLineIsWrappedAsAPlainText();
    void emptyTotalsTakeNoRoomAcross();
};

void TestLookNumbers::initTestCase() {
    apply(*qApp);
}

void TestLookNumbers::numberAndUnitArePartedWhereTheUnitBegins_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("unit");
    const auto row = [](const char* text, const char* number, const char* unit) {
        QTest::newRow(text) << QString::fromUtf8(text) << QString::fromUtf8(number)
                            << QString::fromUtf8(unit);
    };
    row("21m ", "21", "m");
    row("12ft", "12", "ft");
    row("41mins", "41", "mins");
    row("10secs", "10", "secs");
    row("1013mBar", "1013", "mBar");
    row("63 metres", "63", "metres");
    row("147 dives", "147", "dives");
    row("3 of 8 files", "3", "of 8 files");
    row("1.30bar", "1.30", "bar");
    row("85%", "85", "%");
    row("13\u00b0C", "13", "\u00b0C");
    row("-5C", "-5", "C");
    row(" ^18", "^18", "");
    row(" ^18m", "^18", "m");
    row("92:35", "92:35", "");
    row(":7", ":7", "");
    row("141", "141", "");
    row("1.30", "1.30", "");
    row("27/Jul/2017 09:50:02", "27/Jul/2017 09:50:02", "");
    row("14/09/2019 10:42:17", "14/09/2019 10:42:17", "");
    row("Jul/27/2017 09:50:02", "Jul/27/2017 09:50:02", "");
    row("D0000001", "D0000001", "");
    row("July26.txt", "July26.txt", "");
    row("NX50", "NX50", "");
    row("TX18/45", "TX18/45", "");
    row("18/45", "18/45", "");
    row("V2.91", "V2.91", "");
    row("7B3E", "7B3E", "");
    row("m", "m", "");
    row("", "", "");
    row("   ", "", "");
}

void TestLookNumbers::numberAndUnitArePartedWhereTheUnitBegins() {
    QFETCH(QString, text);
    const NumberAndUnit parts = splitNumberAndUnit(text);
    QTEST(parts.number, "number");
    QTEST(parts.unit, "unit");
}

void TestLookNumbers::theLabelKeepsItsTextAsItWasGiven() {
    NumberLabel label(24);
    label.setText(QStringLiteral("21m "));
    QCOMPARE(label.text(), QStringLiteral("21m "));
    label.grab();
    QCOMPARE(label.text(), QStringLiteral("21m "));
}

void TestLookNumbers::theLabelMakesRoomForItsCaption() {
    NumberLabel bare(24);
    bare.setText(QStringLiteral("21m "));
    NumberLabel captioned(24);
    captioned.setText(QStringLiteral("21m "));
    captioned.setCaption(QStringLiteral("Depth"));
    QVERIFY(captioned.sizeHint().height() > bare.sizeHint().height());
}

void TestLookNumbers::theLabelGrowsWithItsText() {
    NumberLabel label(24);
    label.setText(QStringLiteral("21m "));
    const int narrow = label.sizeHint().width();
    label.setText(QStringLiteral("121m "));
    QVERIFY(label.sizeHint().width() > narrow);
    label.setNumberSize(40);
    QVERIFY(label.sizeHint().width() > narrow);
}

void TestLookNumbers::totalsTakeAnyLineEnd_data() {
    QTest::addColumn<QString>("end");
    QTest::newRow("CR LF") << QStringLiteral("\r\n");
    QTest::newRow("LF") << QStringLiteral("\n");
    QTest::newRow("CR") << QStringLiteral("\r");
}

void TestLookNumbers::totalsTakeAnyLineEnd() {
    QFETCH(QString, end);
    TotalsLabel one;
    one.setText(QStringLiteral("System has a total of : ") + end + QStringLiteral("147 dives"));
    TotalsLabel both;
    both.setText(one.text() + end + QStringLiteral("Your last dive was on : ") + end +
                 QStringLiteral("14/09/2019 10:42:17"));
    QVERIFY(one.sizeHint().width() > 0);
    QVERIFY(both.sizeHint().width() > one.sizeHint().width() + 200);
    QCOMPARE(both.sizeHint().height(), one.sizeHint().height());
}

void TestLookNumbers::aSingleLineIsWrappedAsAPlainText() {
    TotalsLabel label;
    label.setText(
        QStringLiteral("Modify Gas list as required. Make sure KD is in PC Link and Connected appears."));
    QVERIFY(label.heightForWidth(150) > label.heightForWidth(2000));
    label.setText(QStringLiteral("System has a total of : \n147 dives"));
    QCOMPARE(label.heightForWidth(150), label.heightForWidth(2000));
}

void TestLookNumbers::emptyTotalsTakeNoRoomAcross() {
    TotalsLabel label;
    QCOMPARE(label.sizeHint().width(), 0);
    label.setText(QStringLiteral("\r\n"));
    QCOMPARE(label.sizeHint().width(), 0);
}

QTEST_MAIN(TestLookNumbers)
#include "test_look_numbers.moc"
