#include "firmware/processlist.h"

#include <QtTest>

using namespace benthor::firmware;

class TestProcessList : public QObject {
    Q_OBJECT

private slots:
    void theOrderIsByNameThenById() {
        QCOMPARE(
            processNames(inListOrder({{5, 1, "b"}, {30, 1, "a"}, {4, 1, "B"}, {3, 1, "c"}, {6, 1, "b"}})),
            "a\nB\nb\nb\nc\n");
        const auto sorted = inListOrder({{100, 1, "x"}, {20, 1, "X"}, {3, 1, "x"}});
        QCOMPARE(sorted[0].id, 3);
        QCOMPARE(sorted[1].id, 20);
        QCOMPARE(sorted[2].id, 100);
    }

    void countsAreTold() {
        QCOMPARE(programCount(0, 0), "0 programs");
        QCOMPARE(programCount(1, 1), "1 program");
        QCOMPARE(programCount(123, 123), "123 programs");
        QCOMPARE(programCount(123, 4), "4 of 123 programs");
        QCOMPARE(programCount(1, 0), "0 of 1 program");
    }

    void aFilterLooksAtNameAndNumber_data() {
        QTest::addColumn<QString>("filter");
        QTest::addColumn<bool>("fits");
        QTest::newRow("none") << "" << true;
        QTest::newRow("blanks") << "  " << true;
        QTest::newRow("part of the name") << "EDIT" << true;
        QTest::newRow("trimmed") << " edit " << true;
        QTest::newRow("other name") << "zip" << false;
        QTest::newRow("start of the number") << "12" << true;
        QTest::newRow("rest of the number") << "23" << false;
    }

    void aFilterLooksAtNameAndNumber() {
        QFETCH(QString, filter);
        QTEST(fitsFilter({123, 1, QStringLiteral("My Editor")}, filter), "fits");
    }
};

QTEST_GUILESS_MAIN(TestProcessList)
#include "test_processlist.moc"
