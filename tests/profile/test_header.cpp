#include "profile/header.h"

#include <QtTest>

using namespace benthor::profile;

class TestHeader : public QObject {
    Q_OBJECT

private slots:
    void theOverrideOfTheRunGoesBeforeTheTable();
    void anOverrideThatIsNoUnitIsPassedOver();
    void metricShowsWholeMetres();
    void feetShowHundredths();
    void fieldsGoToTheirBoxes();
    void aNullGivesAnEmptyBox();
};

void TestHeader::theOverrideOfTheRunGoesBeforeTheTable() {
    QCOMPARE(resolveUnit("Feet", "metre"), "Feet");
    QCOMPARE(resolveUnit("metre", "Feet"), "metre");
    QVERIFY(isFeet("Feet"));
    QVERIFY(!isFeet("metre"));
}

void TestHeader::anOverrideThatIsNoUnitIsPassedOver() {
    QCOMPARE(resolveUnit("", "Feet"), "Feet");
    QCOMPARE(resolveUnit("feet", "metre"), "metre");
    QCOMPARE(resolveUnit("", "fathoms"), "fathoms");
    QVERIFY(!isFeet("fathoms"));
}

void TestHeader::metricShowsWholeMetres() {
    DiveRow row;
    row.maxdepth = QStringLiteral("23.400");
    row.startdate = QDateTime(QDate(2017, 9, 27), QTime(3, 34, 38));
    row.finisheddate = QDateTime(QDate(2017, 9, 27), QTime(4, 15, 45));
    HeaderBoxes boxes = headerBoxes("D0000001", row, false);
    QCOMPARE(boxes.txtmaxdepth, "23");
    QCOMPARE(boxes.lblmaxdepth, "metres");
    QCOMPARE(boxes.txttimedown, "27/Sep/2017 03:34:38");
    QCOMPARE(boxes.finished, "27/Sep/2017 04:15:45");
    row.maxdepth = QStringLiteral("8.5");
    QCOMPARE(headerBoxes("D0000001", row, false).txtmaxdepth, "8"); // ties to even
    row.maxdepth = QStringLiteral("9.5");
    QCOMPARE(headerBoxes("D0000001", row, false).txtmaxdepth, "10");
}

void TestHeader::feetShowHundredths() {
    DiveRow row;
    row.maxdepth = QStringLiteral("9.5");
    row.startdate = QDateTime(QDate(2017, 9, 27), QTime(3, 34, 38));
    row.finisheddate = row.startdate;
    const HeaderBoxes boxes = headerBoxes("D0000001", row, true);
    QCOMPARE(boxes.txtmaxdepth, "31.17");
    QCOMPARE(boxes.lblmaxdepth, "Feet");
    QCOMPARE(boxes.txttimedown, "27/Sep/2017 03:34:38");
    QCOMPARE(boxes.finished, "");
}

void TestHeader::fieldsGoToTheirBoxes() {
    DiveRow row;
    row.duration = QStringLiteral("41:7");
    row.dbtxtname = QStringLiteral("11A2B3Creef.txt");
    row.interval = QStringLiteral("10");
    row.version = QStringLiteral("V3.12");
    row.otu = QStringLiteral("12");
    row.datmos = QStringLiteral("1013");
    row.dusage = QStringLiteral("5400");
    row.location = QStringLiteral("reef.txt");
    const HeaderBoxes boxes = headerBoxes("D0000042", row, false);
    QCOMPARE(boxes.txtdiveid, "D0000042");
    QCOMPARE(boxes.txtduration, "41:7");
    QCOMPARE(boxes.divefilename, "11A2B3Creef.txt");
    QCOMPARE(boxes.txtinterval, "10");
    QCOMPARE(boxes.txtversion, "V3.12");
    QCOMPARE(boxes.txtotu, "12");
    QCOMPARE(boxes.txtatmos, "1013");
    QCOMPARE(boxes.txtdusageh, "5400");
    QCOMPARE(boxes.caption, "RB Profile - reef.txt");
}

void TestHeader::aNullGivesAnEmptyBox() {
    for (const bool feet : {false, true}) {
        const HeaderBoxes boxes = headerBoxes("D0000001", DiveRow(), feet);
        for (const QString& box :
             {boxes.txtduration, boxes.txtmaxdepth, boxes.txttimedown, boxes.txtinterval, boxes.txtversion,
              boxes.txtotu, boxes.txtatmos, boxes.txtdusageh, boxes.finished}) {
            QCOMPARE(box, "");
        }
        QCOMPARE(boxes.caption, "RB Profile - ");
    }
}

QTEST_GUILESS_MAIN(TestHeader)
#include "test_header.moc"
